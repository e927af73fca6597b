// The body service: altitudes and azimuths of the Sun, Moon and planets against the Swiss
// Ephemeris for observers and moments spread over the globe and two centuries; the edge
// cases of the reduction; and when the body table recomputes.
#include <gtest/gtest.h>
#include <swephexp.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Bodies.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Time_Calcs.h"
#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "stars/M_Resources.h"

namespace kelmoran {
namespace {

constexpr double kArcsec = 206264.806247096;
constexpr double kDegrees = 57.2957795130823;
constexpr double kTwoPi = 6.28318530717959;

double Angle_Diff(double a, double b) {
    return std::remainder(a - b, kTwoPi) * kArcsec;
}

// A deterministic spread of values in 0 .. 1.
struct Spread {
    uint64_t state = 0x9E3779B97F4A7C15ull;
    double Next() {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<double>(state >> 11) / 9007199254740992.0;
    }
};

// Pressure, temperature, index error (minutes of arc) and height of eye (metres).
void Set_Corrections(float pressure, float temp, float indexError, float heightOfEye) {
    Settings.Pressure = pressure;
    Settings.Temp = temp;
    Settings.IndexError = indexError;
    Settings.HtOfEye = heightOfEye;
    Compute_Derived_Settings();
}

void Observe_From(float lat, float lon) {
    Settings.PositionMethod = 0;
    Settings.ObserverLat = lat;
    Settings.ObserverLong = lon;
    Reset_AltAz();
}

class BodyService : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
        Load_Star_Tables();
    }
    static void TearDownTestSuite() { swe_close(); }
    void SetUp() override { Set_Corrections(1010.0f, 10.0f, 0.0f, 0.0f); }
};

const std::vector<std::pair<int32_t, int>> kSolarSystem = {
    {body::SunLowerLimb, SE_SUN}, {body::MoonLowerLimb, SE_MOON}, {body::Mercury, SE_MERCURY},
    {body::Venus, SE_VENUS},      {body::Mars, SE_MARS},          {body::Jupiter, SE_JUPITER},
    {body::Saturn, SE_SATURN},    {body::Neptune, SE_NEPTUNE},    {body::Uranus, SE_URANUS},
    {body::Pluto, SE_PLUTO}};

// The library's apparent place of a body at `ut` (Julian Date, UT), geocentric or for an
// observer at sea level: RA, Dec radians, distance in AU.
void Swe_Place(int planet, double ut, double lat, double lon, bool topocentric, double xx[6]) {
    int flags = SEFLG_SWIEPH | SEFLG_EQUATORIAL;
    if (topocentric) {
        swe_set_topo(lon * kDegrees, lat * kDegrees, 0.0);
        flags |= SEFLG_TOPOCTR;
    }
    char err[256] = "";
    ASSERT_GE(swe_calc_ut(ut, planet, flags, xx, err), 0) << err;
}

// The library's airless altitude and azimuth (from North through East) of a place.
void Swe_Alt_Az(double ut, double lat, double lon, double xx[6], double& alt, double& az) {
    double geopos[3] = {lon * kDegrees, lat * kDegrees, 0.0};
    double xaz[3];
    swe_azalt(ut, SE_EQU2HOR, geopos, 0.0, 10.0, xx, xaz);
    alt = xaz[1] / kDegrees;
    az = std::fmod(xaz[0] / kDegrees + kTwoPi / 2, kTwoPi);  // the library counts from South
}

// A moment from 1900 to 2100 and an observer anywhere but within 1.5 degrees of a pole.
void Next_Case(Spread& spread, double& jd, float& lat, float& lon) {
    jd = (-100.0 + 200.0 * spread.Next()) * 365.25;
    lat = static_cast<float>(std::asin(2.0 * spread.Next() - 1.0) * 0.98);
    lon = static_cast<float>((spread.Next() - 0.5) * kTwoPi);
}

// The reduction alone: the library's places and sidereal time go into Calc_AltAz.
TEST_F(BodyService, ReductionAgainstTheSwissEphemeris) {
    double worstAlt = 0, worstAz = 0, worstLimb = 0;
    Spread spread;
    for (int k = 0; k < 100; ++k) {
        double jd;
        float lat, lon;
        Next_Case(spread, jd, lat, lon);
        const double ut = kJ2000 + jd;
        const double gast = swe_sidtime(ut) * 15.0 / kDegrees;
        for (auto [b, planet] : kSolarSystem) {
            double geo[6], topo[6], alt, az;
            Swe_Place(planet, ut, lat, lon, false, geo);
            const double ra = geo[0] / kDegrees, dec = geo[1] / kDegrees;
            const double distance = geo[2] * (b == body::MoonLowerLimb ? 149597870.7 : 1.0);
            double gha = gast - ra;
            if (gha < 0) gha += kTwoPi;
            AltAzResult a;
            Calc_AltAz(a, b, lat, lon, BodyPlace{ra, dec, distance, gha});

            // The geocentric altitude of the centre.
            Swe_Alt_Az(ut, lat, lon, geo, alt, az);
            const double dAlt = std::fabs(Angle_Diff(a.TrueAlt, alt));
            EXPECT_LT(dAlt, 2.0) << "body " << b << " at " << jd;
            worstAlt = std::max(worstAlt, dAlt);

            // The azimuth carries the parallax in azimuth: it is the topocentric one. Near
            // the zenith an azimuth means little, so its error is weighed by cos(alt).
            Swe_Place(planet, ut, lat, lon, true, topo);
            Swe_Alt_Az(ut, lat, lon, topo, alt, az);
            const double dAz = std::fabs(Angle_Diff(a.Azimuth, az)) * std::cos(alt);
            EXPECT_LT(dAz, 2.0) << "body " << b << " at " << jd;
            worstAz = std::max(worstAz, dAz);

            // The airless altitude of the limb against the topocentric centre less the
            // semi-diameter seen from the observer. Taking the Moon's parallax at the limb's
            // altitude rather than the centre's leaves up to about 15" times sin(alt).
            const double sd = b == body::MoonLowerLimb
                                  ? std::asin(1737.92808633851 / (topo[2] * 149597870.7))
                                  : a.SD;
            const double dLimb = std::fabs(Angle_Diff(a.SextantAlt - a.Refraction, alt - sd));
            EXPECT_LT(dLimb, b == body::MoonLowerLimb ? 20.0 : 2.0) << "body " << b << " at " << jd;
            worstLimb = std::max(worstLimb, dLimb);
        }
    }
    std::printf(
        "reduction: largest true altitude %.3f\", azimuth %.3f\" (x cos alt), "
        "limb altitude %.3f\"\n",
        worstAlt, worstAz, worstLimb);
}

// The whole road: our places of the Sun, Moon and planets and our sidereal time, through
// the body table, against the library's altitude and azimuth at the same moment.
TEST_F(BodyService, BodyTableAgainstTheSwissEphemeris) {
    std::vector<int32_t> list;
    for (auto [b, p] : kSolarSystem) list.push_back(b);
    double worstAlt = 0, worstAz = 0;
    Spread spread;
    for (int k = 0; k < 100; ++k) {
        double jd;
        float lat, lon;
        Next_Case(spread, jd, lat, lon);
        Observe_From(lat, lon);
        Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);
        const double ut = kJ2000 + jd;
        // The same instant for both: the library takes our ΔT.
        swe_set_delta_t_userdef(Get_DeltaT(DeltaT_Year(jd)) / 86400.0);
        for (auto [b, planet] : kSolarSystem) {
            double xx[6], alt, az;
            Swe_Place(planet, ut, lat, lon, false, xx);
            Swe_Alt_Az(ut, lat, lon, xx, alt, az);
            const double dAlt = std::fabs(Angle_Diff(Bodies[b].TrueAlt, alt));
            Swe_Place(planet, ut, lat, lon, true, xx);
            Swe_Alt_Az(ut, lat, lon, xx, alt, az);
            const double dAz = std::fabs(Angle_Diff(Bodies[b].Azimuth, az)) * std::cos(alt);
            EXPECT_LT(dAlt, 5.0) << "body " << b << " at " << jd;
            EXPECT_LT(dAz, 5.0) << "body " << b << " at " << jd;
            worstAlt = std::max(worstAlt, dAlt);
            worstAz = std::max(worstAz, dAz);
        }
    }
    swe_set_delta_t_userdef(SE_DELTAT_AUTOMATIC);
    std::printf("body table: largest true altitude %.3f\", azimuth %.3f\" (x cos alt)\n", worstAlt,
                worstAz);
}

TEST_F(BodyService, EdgeCases) {
    // A star at the poles: the altitude is the declination, and nothing fails.
    for (float pole : {1.5707964f, -1.5707964f}) {
        AltAzResult a;
        Calc_AltAz(a, 12, pole, 0.3f, BodyPlace{1.0, 0.5, 0.0, 2.0});
        EXPECT_NEAR(a.TrueAlt, pole > 0 ? 0.5 : -0.5, 1e-6);
        EXPECT_TRUE(std::isfinite(a.Azimuth) && std::isfinite(a.SextantAlt));
        Calc_AltAz(a, body::MoonLowerLimb, pole, 0.3f, BodyPlace{1.0, 0.5, 380000.0, 2.0});
        EXPECT_TRUE(std::isfinite(a.Azimuth) && std::isfinite(a.SextantAlt)) << pole;
        EXPECT_GE(a.Azimuth, 0.0f);
        EXPECT_LT(a.Azimuth, kTwoPi);
    }

    // A star has no semi-diameter: the sextant reads refraction, dip and index error only.
    Set_Corrections(1010.0f, 10.0f, 2.0f, 9.0f);
    AltAzResult a;
    Calc_AltAz(a, 40, 0.7f, -1.1f, BodyPlace{0.0, 0.4, 0.0, 1.9});
    EXPECT_EQ(a.SD, 0.0f);
    EXPECT_GT(a.Refraction, 0.0f);
    EXPECT_NEAR(a.SextantAlt, a.TrueAlt + a.Refraction + DipRad + IndexErrorRad, 1e-7);
    EXPECT_NEAR(a.TotalCorrection, a.TrueAlt - a.SextantAlt, 1e-7);

    // At or below -1 degree no refraction is applied; just above it is.
    Set_Corrections(1010.0f, 10.0f, 0.0f, 0.0f);
    const double oneDegree = 1.0 / kDegrees;
    for (double h : {-1.0 * oneDegree - 1e-6, -5.0 * oneDegree, -1.0 * oneDegree + 1e-4}) {
        // A star on the lower meridian of an observer on the equator stands at its
        // declination less 90 degrees.
        Calc_AltAz(a, 12, 0.0f, 0.0f, BodyPlace{0.0, kTwoPi / 4 + h, 0.0, kTwoPi / 2});
        EXPECT_NEAR(a.TrueAlt, h, 1e-6);
        if (h <= -oneDegree) {
            EXPECT_EQ(a.Refraction, 0.0f) << h * kDegrees;
        } else {
            EXPECT_GT(a.Refraction, 0.0f) << h * kDegrees;
        }
        EXPECT_NEAR(a.SextantAlt, a.TrueAlt + a.Refraction, 1e-7);
    }

    // The limbs: the upper limb stands above the centre by the semi-diameter.
    AltAzResult upper, lower;
    BodyPlace sun{0.0, 0.2, 1.0, 0.3};
    Calc_AltAz(upper, body::SunUpperLimb, 0.5f, 0.0f, sun);
    Calc_AltAz(lower, body::SunLowerLimb, 0.5f, 0.0f, sun);
    EXPECT_NEAR(upper.SD * kArcsec, -959.63, 0.05);
    EXPECT_NEAR(lower.SD * kArcsec, 959.63, 0.05);
    EXPECT_NEAR((upper.SextantAlt - upper.Refraction) - (lower.SextantAlt - lower.Refraction),
                2 * 959.63 / kArcsec, 0.1 / kArcsec);
    // The Moon's semi-diameter grows with its altitude.
    AltAzResult low, high;
    Calc_AltAz(low, body::MoonLowerLimb, 0.0f, 0.0f, BodyPlace{0.0, 0.0, 384400.0, kTwoPi / 4});
    Calc_AltAz(high, body::MoonLowerLimb, 0.0f, 0.0f, BodyPlace{0.0, 0.0, 384400.0, 0.0});
    EXPECT_NEAR(low.SD * kArcsec, 1737.92810 / 384400.0 * kArcsec, 0.01);
    EXPECT_GT(high.SD, low.SD * 1.016f);
}

TEST_F(BodyService, RecomputesWhatIsStale) {
    Observe_From(0.6f, -0.2f);
    std::vector<int32_t> list = {body::SunLowerLimb, 12, 13};
    const double jd = 9000.25;
    Calc_Bodies(0, 2, list, jd);
    ASSERT_EQ(Bodies[12].PositionJD, jd);
    EXPECT_EQ(Bodies[12].Names.Name, "Sirius");
    EXPECT_TRUE(Bodies[12].NamesDone);
    EXPECT_GE(Bodies[12].Interval, 7.0);
    EXPECT_EQ(Bodies[body::SunLowerLimb].Interval, 0.0);
    EXPECT_FLOAT_EQ(Bodies[12].Magnitude, Catalogue[12].Mag / 1000.0f);

    // Within its interval a star keeps its place; the Sun is computed afresh; both get a
    // new altitude.
    Bodies[12].Texts = {"cached"};
    float sunAlt = Bodies[body::SunLowerLimb].TrueAlt, starAlt = Bodies[12].TrueAlt;
    Calc_Bodies(0, 2, list, jd + 0.5);
    EXPECT_EQ(Bodies[12].PositionJD, jd);
    EXPECT_EQ(Bodies[12].Texts.size(), 1u);
    EXPECT_EQ(Bodies[12].AltAzJD, jd + 0.5);
    EXPECT_NE(Bodies[12].TrueAlt, starAlt);
    EXPECT_EQ(Bodies[body::SunLowerLimb].PositionJD, jd + 0.5);
    EXPECT_NE(Bodies[body::SunLowerLimb].TrueAlt, sunAlt);
    // Beyond it the place is recomputed and the texts emptied.
    Calc_Bodies(0, 2, list, jd + Bodies[12].Interval + 1.0);
    EXPECT_EQ(Bodies[12].PositionJD, jd + Bodies[12].Interval + 1.0);
    EXPECT_TRUE(Bodies[12].Texts.empty());

    // A change of the observer alone: altitudes recomputed, places kept.
    double now = Bodies[12].PositionJD;
    starAlt = Bodies[12].TrueAlt;
    Observe_From(-0.6f, 2.0f);
    Calc_Bodies(1, 1, list, now);
    EXPECT_EQ(Bodies[12].PositionJD, now);
    EXPECT_EQ(Bodies[12].AltAzJD, now);
    EXPECT_NE(Bodies[12].TrueAlt, starAlt);
    EXPECT_NE(Bodies[13].AltAzJD, now) << "only the listed range is computed";

    // The GHA is that of the moment, whichever way it was reached.
    const EarthFrame f = Calc_EarthFrame(now);
    EXPECT_NEAR(std::remainder(Bodies[12].GHA - (f.GAST - Bodies[12].RA), kTwoPi), 0.0, 1e-12);

    // Bodies that the catalogue does not hold are passed over.
    std::vector<int32_t> odd = {-4, Catalogue_Upper() + 1, 14};
    Calc_Bodies(0, 2, odd, now);
    EXPECT_EQ(Bodies[14].PositionJD, now);
    Calc_Bodies(0, 5, std::vector<int32_t>{}, now);
}

}  // namespace
}  // namespace kelmoran
