// The body service: altitudes and azimuths of the Sun, Moon and planets against the Swiss
// Ephemeris for observers and moments spread over the globe and two centuries; the edge
// cases of the reduction; and when the body table recomputes.
#include <gtest/gtest.h>
#include <swephexp.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tuple>
#include <vector>

#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Bodies.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Time_Calcs.h"
#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "stars_test.h"

namespace kelmoran {
namespace {

using namespace stars_test;

double Angle_Diff(double a, double b) {
    return std::remainder(a - b, kTwoPi) * kArcsec;
}

// Index error (minutes of arc) and height of eye (metres), at 1010 hPa and 10 °C.
void Set_Corrections(float indexError, float heightOfEye) {
    Settings.Pressure = 1010.0f;
    Settings.Temp = 10.0f;
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

class BodyService : public SweSuite {
  protected:
    void SetUp() override { Set_Corrections(0.0f, 0.0f); }
};

// The library's apparent place (RA, Dec radians, distance AU) of a body at `ut` (Julian
// Date, UT), geocentric or for an observer at sea level, with its airless altitude and
// azimuth (from North through East) there.
struct SwePlace {
    double xx[6], alt, az;
};
SwePlace Swe_Place(int planet, double ut, double lat, double lon, bool topocentric) {
    SwePlace p{};
    double geopos[3] = {lon * kDegrees, lat * kDegrees, 0.0}, xaz[3];
    swe_set_topo(geopos[0], geopos[1], 0.0);
    char err[256] = "";
    const int flags = SEFLG_SWIEPH | SEFLG_EQUATORIAL | (topocentric ? SEFLG_TOPOCTR : 0);
    EXPECT_GE(swe_calc_ut(ut, planet, flags, p.xx, err), 0) << err;
    swe_azalt(ut, SE_EQU2HOR, geopos, 0.0, 10.0, p.xx, xaz);
    p.alt = xaz[1] / kDegrees;
    p.az = std::fmod(xaz[0] / kDegrees + kTwoPi / 2, kTwoPi);  // the library counts from South
    return p;
}

// For 100 observers anywhere but within 1.5° of a pole and moments from 1900 to 2100,
// two roads against the library's places. The reduction alone: the library's place and
// sidereal time go into Calc_AltAz. The whole road: our places and sidereal time, through
// the body table, with the library on our ΔT. The true altitude is geocentric; the azimuth
// carries the parallax in azimuth, so it is the topocentric one, weighed by cos(alt) as an
// azimuth near the zenith means little.
TEST_F(BodyService, AgainstTheSwissEphemeris) {
    const std::vector<std::pair<int32_t, int>> bodies = {
        {body::SunLowerLimb, SE_SUN}, {body::MoonLowerLimb, SE_MOON}, {body::Mercury, SE_MERCURY},
        {body::Venus, SE_VENUS},      {body::Mars, SE_MARS},          {body::Jupiter, SE_JUPITER},
        {body::Saturn, SE_SATURN},    {body::Neptune, SE_NEPTUNE},    {body::Uranus, SE_URANUS},
        {body::Pluto, SE_PLUTO}};
    std::vector<int32_t> list;
    for (auto [b, p] : bodies) list.push_back(b);
    double worst[5] = {};  // reduction: altitude, azimuth, limb; body table: altitude, azimuth
    uint64_t state = 0x9E3779B97F4A7C15ull;
    auto next = [&state] {
        state = state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<double>(state >> 11) / 9007199254740992.0;
    };
    for (int k = 0; k < 100; ++k) {
        const double jd = (-100.0 + 200.0 * next()) * 365.25, ut = kJ2000 + jd;
        const float lat = static_cast<float>(std::asin(2.0 * next() - 1.0) * 0.98);
        const float lon = static_cast<float>((next() - 0.5) * kTwoPi);
        Observe_From(lat, lon);
        Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);
        swe_set_delta_t_userdef(Get_DeltaT(DeltaT_Year(jd)) / 86400.0);
        const double gast = swe_sidtime(ut) * 15.0 / kDegrees;
        for (auto [b, planet] : bodies) {
            const SwePlace geo = Swe_Place(planet, ut, lat, lon, false);
            const SwePlace topo = Swe_Place(planet, ut, lat, lon, true);
            const double ra = geo.xx[0] / kDegrees, dec = geo.xx[1] / kDegrees;
            const double distance = geo.xx[2] * (b == body::MoonLowerLimb ? 149597870.7 : 1.0);
            AltAzResult a;
            Calc_AltAz(a, b, lat, lon,
                       BodyPlace{ra, dec, distance, std::fmod(gast - ra + kTwoPi, kTwoPi)});
            // The airless limb against the topocentric centre less the semi-diameter seen from
            // the observer. Taking the Moon's parallax at the limb's altitude rather than the
            // centre's leaves up to about 15" times sin(alt).
            const double sd = b == body::MoonLowerLimb
                                  ? std::asin(1737.92808633851 / (topo.xx[2] * 149597870.7))
                                  : a.SD;
            const double cosAlt = std::cos(topo.alt);
            const double d[5] = {std::fabs(Angle_Diff(a.TrueAlt, geo.alt)),
                                 std::fabs(Angle_Diff(a.Azimuth, topo.az)) * cosAlt,
                                 std::fabs(Angle_Diff(a.SextantAlt - a.Refraction, topo.alt - sd)),
                                 std::fabs(Angle_Diff(Bodies[b].TrueAlt, geo.alt)),
                                 std::fabs(Angle_Diff(Bodies[b].Azimuth, topo.az)) * cosAlt};
            const double limits[5] = {2.0, 2.0, b == body::MoonLowerLimb ? 20.0 : 2.0, 5.0, 5.0};
            for (int i = 0; i < 5; ++i) {
                EXPECT_LT(d[i], limits[i]) << "check " << i << ", body " << b << " at " << jd;
                worst[i] = std::max(worst[i], d[i]);
            }
        }
    }
    swe_set_delta_t_userdef(SE_DELTAT_AUTOMATIC);
    std::printf(
        "reduction: largest true altitude %.3f\", azimuth %.3f\" (x cos alt), "
        "limb altitude %.3f\"\nbody table: largest true altitude %.3f\", azimuth %.3f\" "
        "(x cos alt)\n",
        worst[0], worst[1], worst[2], worst[3], worst[4]);
}

TEST_F(BodyService, EdgeCases) {
    // A star at the poles: the altitude is the declination, and nothing fails.
    for (float pole : {1.5707964f, -1.5707964f}) {
        AltAzResult a;
        Calc_AltAz(a, 12, pole, 0.3f, BodyPlace{1.0, 0.5, 0.0, 2.0});
        EXPECT_NEAR(a.TrueAlt, pole > 0 ? 0.5 : -0.5, 1e-6);
        EXPECT_TRUE(std::isfinite(a.Azimuth) && std::isfinite(a.SextantAlt));
        Calc_AltAz(a, body::MoonLowerLimb, pole, 0.3f, BodyPlace{1.0, 0.5, 380000.0, 2.0});
        EXPECT_TRUE(std::isfinite(a.SextantAlt) && a.Azimuth >= 0.0f && a.Azimuth < kTwoPi) << pole;
    }

    // A star has no semi-diameter: the sextant reads refraction, dip and index error only.
    Set_Corrections(2.0f, 9.0f);
    AltAzResult a;
    Calc_AltAz(a, 40, 0.7f, -1.1f, BodyPlace{0.0, 0.4, 0.0, 1.9});
    EXPECT_TRUE(a.SD == 0.0f && a.Refraction > 0.0f);
    EXPECT_NEAR(a.SextantAlt, a.TrueAlt + a.Refraction + DipRad + IndexErrorRad, 1e-7);
    EXPECT_NEAR(a.TotalCorrection, a.TrueAlt - a.SextantAlt, 1e-7);

    // At or below -1° no refraction is applied; just above it is. A star on the lower
    // meridian of an observer on the equator stands at its declination less 90°.
    Set_Corrections(0.0f, 0.0f);
    const double oneDegree = 1.0 / kDegrees;
    for (double h : {-oneDegree - 1e-6, -5.0 * oneDegree, -oneDegree + 1e-4}) {
        Calc_AltAz(a, 12, 0.0f, 0.0f, BodyPlace{0.0, kTwoPi / 4 + h, 0.0, kTwoPi / 2});
        EXPECT_NEAR(a.TrueAlt, h, 1e-6);
        EXPECT_TRUE(h > -oneDegree ? a.Refraction > 0.0f : a.Refraction == 0.0f) << h * kDegrees;
        EXPECT_NEAR(a.SextantAlt, a.TrueAlt + a.Refraction, 1e-7);
    }

    // The limbs: the upper limb stands above the centre by the semi-diameter.
    AltAzResult upper, lower, low, high;
    const BodyPlace sun{0.0, 0.2, 1.0, 0.3};
    Calc_AltAz(upper, body::SunUpperLimb, 0.5f, 0.0f, sun);
    Calc_AltAz(lower, body::SunLowerLimb, 0.5f, 0.0f, sun);
    EXPECT_NEAR(upper.SD * kArcsec, -959.63, 0.05);
    EXPECT_NEAR(lower.SD * kArcsec, 959.63, 0.05);
    EXPECT_NEAR((upper.SextantAlt - upper.Refraction) - (lower.SextantAlt - lower.Refraction),
                2 * 959.63 / kArcsec, 0.1 / kArcsec);
    // The Moon's semi-diameter grows with its altitude.
    Calc_AltAz(low, body::MoonLowerLimb, 0.0f, 0.0f, BodyPlace{0.0, 0.0, 384400.0, kTwoPi / 4});
    Calc_AltAz(high, body::MoonLowerLimb, 0.0f, 0.0f, BodyPlace{0.0, 0.0, 384400.0, 0.0});
    EXPECT_NEAR(low.SD * kArcsec, 1737.92810 / 384400.0 * kArcsec, 0.01);
    EXPECT_GT(high.SD, low.SD * 1.016f);
}

TEST_F(BodyService, RecomputesWhatIsStale) {
    Observe_From(0.6f, -0.2f);
    std::vector<int32_t> list = {body::SunLowerLimb, 12, 13};
    const double jd = 9000.25;
    Calc_Bodies(0, 2, list, jd);  // the table grows to its size here
    const BodyRecord& sirius = Bodies[12];
    const BodyRecord& sun = Bodies[body::SunLowerLimb];
    ASSERT_EQ(sirius.PositionJD, jd);
    EXPECT_EQ(std::tuple(sirius.Names.Name, sirius.NamesDone, sun.Interval),
              std::tuple("Sirius", true, 0.0));
    EXPECT_GE(sirius.Interval, 7.0);
    EXPECT_FLOAT_EQ(sirius.Magnitude, Catalogue[12].Mag / 1000.0f);

    // Within its interval a star keeps its place and texts; the Sun is computed afresh;
    // both get a new altitude.
    Bodies[12].Texts = {"cached"};
    float sunAlt = sun.TrueAlt, starAlt = sirius.TrueAlt;
    Calc_Bodies(0, 2, list, jd + 0.5);
    EXPECT_EQ(std::tuple(sirius.PositionJD, sirius.Texts.size(), sirius.AltAzJD, sun.PositionJD),
              std::tuple(jd, 1u, jd + 0.5, jd + 0.5));
    EXPECT_TRUE(sirius.TrueAlt != starAlt && sun.TrueAlt != sunAlt);
    // Beyond it the place is recomputed and the texts emptied.
    Calc_Bodies(0, 2, list, jd + sirius.Interval + 1.0);
    EXPECT_EQ(std::tuple(sirius.PositionJD, sirius.Texts.size()),
              std::tuple(jd + sirius.Interval + 1.0, 0u));

    // A change of the observer alone: altitudes recomputed, places kept, only the listed
    // range computed.
    const double now = sirius.PositionJD;
    starAlt = sirius.TrueAlt;
    Observe_From(-0.6f, 2.0f);
    Calc_Bodies(1, 1, list, now);
    EXPECT_EQ(std::tuple(sirius.PositionJD, sirius.AltAzJD), std::tuple(now, now));
    EXPECT_TRUE(sirius.TrueAlt != starAlt && Bodies[13].AltAzJD != now);
    // The GHA is that of the moment, whichever way it was reached.
    EXPECT_NEAR(std::remainder(sirius.GHA - (Calc_EarthFrame(now).GAST - sirius.RA), kTwoPi), 0.0,
                1e-12);

    // Bodies that the catalogue does not hold are passed over.
    Calc_Bodies(0, 2, std::vector<int32_t>{-4, Catalogue_Upper() + 1, 14}, now);
    EXPECT_EQ(Bodies[14].PositionJD, now);
    Calc_Bodies(0, 5, std::vector<int32_t>{}, now);
}

}  // namespace
}  // namespace kelmoran
