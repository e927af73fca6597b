// The almanac's pages against the Swiss Ephemeris: every hourly place on 30 pages from 1900 to
// 2100, the working value within 0'.1 and the printed text within one unit of 0'.1 of the
// reference rounded the same way; the rules of rounding; the tables of twilight and moonrise.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>

#include "almanac/cAlmanac.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Series.h"
#include "ephemeris/Time_Calcs.h"
#include "settings/M_Formatting.h"
#include "stars/M_Resources.h"
#include "swe_events.h"

namespace kelmoran {
namespace {

using namespace testing_support;

// Minutes of arc of an angle text "  5° 12'.3" or "12° 05'.0 S" (sign by the name).
double Parse_Minutes(const std::string& text) {
    const size_t deg = text.find("°");
    const double d = std::stod(text.substr(0, deg));
    std::string m = text.substr(deg + 3);  // "° " is three bytes
    m.erase(m.find('\''), 1);
    double v = d * 60.0 + std::stod(m);
    if (text.size() >= 2 && text.substr(text.size() - 2) == " S") v = -v;
    return v;
}

// Minutes of arc of a Dec text, named by the working value where the text names no hemisphere.
double Signed_Minutes(const std::string& text, double working) {
    return std::copysign(std::fabs(Parse_Minutes(text)), working);
}

// Difference of two angles in minutes of arc, folded into -10800 .. 10800.
double Arcmin_Diff(double a, double b) {
    return std::remainder(a - b, 2.0 * M_PI) * kArcmin;
}

// Tenths of a minute between a printed value and the reference rounded the same way.
double Printed_Units(double printedMinutes, double reference, bool circle) {
    const double d = Round_Even(printedMinutes * 10.0) - Round_Even(reference * kArcmin * 10.0);
    return std::fabs(circle ? std::remainder(d, 216000.0) : d);
}

// The Swiss Ephemeris' name of a star's Bayer designation: ",alCMa", ",al-1Cen".
std::string Swe_Star_Key(const DesignationEntry& d, bool withIndex) {
    static const std::map<char, const char*> kGreek = {
        {'a', "al"}, {'b', "be"}, {'g', "ga"},  {'d', "de"},  {'e', "ep"},  {'z', "ze"},
        {'h', "et"}, {'q', "th"}, {'i', "io"},  {'k', "ka"},  {'l', "la"},  {'m', "mu"},
        {'n', "nu"}, {'x', "xi"}, {'o', "omi"}, {'p', "pi"},  {'r', "rh"},  {'s', "si"},
        {'t', "ta"}, {'u', "up"}, {'f', "ph"},  {'c', "chi"}, {'y', "psi"}, {'w', "ome"}};
    std::string key = std::string(",") + kGreek.at(d.BayerLetter);
    if (withIndex && d.BayerIndex != ' ') key += std::string("-") + d.BayerIndex;
    return key + Constellation_Abbrev[d.Constellation];
}

bool Swe_Star(const std::string& key, double jd, double& ra, double& dec) {
    char name[64];
    std::snprintf(name, sizeof name, "%s", key.c_str());
    double xx[6];
    char err[256] = "";
    swe_set_delta_t_userdef(Get_DeltaT(DeltaT_Year(jd)) / 86400.0);
    if (swe_fixstar2_ut(name, kJ2000 + jd, SEFLG_SWIEPH | SEFLG_EQUATORIAL, xx, err) < 0)
        return false;
    ra = xx[0] / kDeg;
    dec = xx[1] / kDeg;
    return true;
}

struct Worst {
    double unrounded = 0.0, units = 0.0;
    void Add(double minutes, double u) {
        unrounded = std::max(unrounded, std::fabs(minutes));
        units = std::max(units, u);
    }
};

class AlmanacPage : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        Open_Swiss_Ephemeris();
        Load_Star_Tables();
    }
    void TearDown() override { swe_set_delta_t_userdef(SE_DELTAT_AUTOMATIC); }
};

TEST_F(AlmanacPage, HourlyPlacesAgainstTheSwissEphemeris) {
    static const int kSwePlanet[4] = {SE_VENUS, SE_MARS, SE_JUPITER, SE_SATURN};
    std::map<std::string, Worst> worst;
    Worst polar, pair;
    // A GHA (on the circle) and a Dec (its name from the working value, which is printed
    // on the first row of a day and on a change only).
    const auto gha = [&](const char* name, double ours, double ref, const std::string& text) {
        worst[name].Add(Arcmin_Diff(ours, ref), Printed_Units(Parse_Minutes(text), ref, true));
    };
    const auto dec = [&](const char* name, double ours, double ref, const std::string& text) {
        worst[name].Add((ours - ref) * kArcmin,
                        Printed_Units(Signed_Minutes(text, ours), ref, false));
    };
    cAlmanac page;
    Lcg rng;
    for (int k = 0; k < 30; ++k) {
        const double jd = Day_Of(1900, 1, 1) + std::floor(k * 2435.0 + rng.Range(0.0, 2400.0));
        page.MyJD(jd);
        for (int h = 0; h < cAlmanac::kHours; ++h) {
            const double t = jd + h / 24.0;
            const size_t row = static_cast<size_t>(h);
            // The Sun: the tabulated GHA is the mean of this hour's and the next's less 7.5°.
            const SwePlace s0 = Swe_Place_At(t, SE_SUN), s1 = Swe_Place_At(t + 1.0 / 24.0, SE_SUN);
            const double refTab = s0.GHA + Arcmin_Diff(s1.GHA, s0.GHA) / kArcmin / 2.0 - 7.5 / kDeg;
            gha("Sun GHA", page.Sun_Tabulated_GHA(h), refTab, page.MySunCol()[row].GHA);
            dec("Sun Dec", page.Sun_Place(h).Dec, s0.Dec, page.MySunCol()[row].Dec);
            const SwePlace m = Swe_Place_At(t, SE_MOON);
            gha("Moon GHA", page.Moon_Place(h).GHA, m.GHA, page.MyMoonCol()[row].GHA);
            dec("Moon Dec", page.Moon_Place(h).Dec, m.Dec, page.MyMoonCol()[row].Dec);
            gha("Aries GHA", page.Frame(h).GAST, swe_sidtime(kJ2000 + t) * 15.0 / kDeg,
                page.MyAriesCol()[row]);
            const cAlmanac::Planet_Column* cols[4] = {&page.MyVenusCol(), &page.MyMarsCol(),
                                                      &page.MyJupiterCol(), &page.MySaturnCol()};
            for (int p = 0; p < 4; ++p) {
                const SwePlace ref = Swe_Place_At(t, kSwePlanet[p]);
                gha("Planet GHA", page.Planet_Place(p, h).GHA, ref.GHA, cols[p]->Rows[row].GHA);
                dec("Planet Dec", page.Planet_Place(p, h).Dec, ref.Dec, cols[p]->Rows[row].Dec);
            }
        }
        // The stars, for the middle of the page.
        int row = 0;
        for (const MainStarRow& star : MainStars) {
            const DesignationEntry& d = Designations[Find_Designation_Row(star.Star)];
            double ra = 0, dec = 0;
            EXPECT_TRUE(Swe_Star(Swe_Star_Key(d, true), jd + 1.5, ra, dec) ||
                        Swe_Star(Swe_Star_Key(d, false), jd + 1.5, ra, dec))
                << star.Name;
            const cAlmanac::Star_Row& text = page.MyStarCol()[static_cast<size_t>(row)];
            EXPECT_EQ(text.Name, star.Name);
            const double sha = 2.0 * M_PI - ra;
            const double dSha = Arcmin_Diff(page.Star_SHA(row), sha);
            const double dDec = (page.Star_Dec(row) - dec) * kArcmin;
            if (star.Name == "Rigil Kent") {
                // The library files alpha Centauri as the pair's centre, the catalogue as its
                // bright component (about 25" apart): that star is held to its own limit.
                pair.Add(std::hypot(dSha * std::cos(dec), dDec), 0.0);
                EXPECT_LT(std::fabs(dSha * std::cos(dec)), 0.5);
                EXPECT_LT(std::fabs(dDec), 0.5);
                ++row;
                continue;
            }
            // Within 10° of the pole (Polaris, 30' from it) the SHA turns up to a hundred
            // times faster than the star moves on the sky: it is compared along the sky.
            const double along = std::fabs(dec) > 80.0 / kDeg ? std::cos(dec) : 1.0;
            const double units = Printed_Units(Parse_Minutes(text.SHA), sha, true);
            if (along != 1.0) polar.Add(dSha, units);
            worst["Star SHA"].Add(dSha * along, units * along);
            worst["Star Dec"].Add(dDec, Printed_Units(Parse_Minutes(text.Dec), dec, false));
            ++row;
        }
    }
    std::printf(
        "Star SHA within 10 deg of the pole, as tabulated: largest difference %.4f', "
        "printed %.0f units of 0'.1\n",
        polar.unrounded, polar.units);
    std::printf("Rigil Kent, catalogue's bright component against the library's star: %.3f'\n",
                pair.unrounded);
    for (const auto& [name, w] : worst) {
        std::printf("%-10s largest difference %.4f', printed %.0f unit of 0'.1\n", name.c_str(),
                    w.unrounded, w.units);
        EXPECT_LE(w.unrounded, 0.1) << name;
        EXPECT_LE(w.units, 1.0) << name;
    }
}

// The page interpolates the planets between 12-hour places and corrects the Moon's reduced
// series by the full series' excess at 24-hour places: every hour stays with the full series,
// the Moon within 0.1", the planets within 0.5" (a twelfth of the table's last unit).
TEST_F(AlmanacPage, HourlyPlacesFollowTheFullSeries) {
    const auto arcsec = [](double a, double b) { return std::fabs(Arcmin_Diff(a, b)) * 60.0; };
    double worstMoon = 0.0, worstPlanet = 0.0, worstMoonKm = 0.0;
    cAlmanac page;
    for (double jd : {Day_Of(1903, 5, 17), Day_Of(2009, 12, 30), Day_Of(2098, 8, 2)}) {
        page.MyJD(jd);
        for (int h = 0; h <= cAlmanac::kHours; ++h) {
            const EarthFrame frame = Calc_EarthFrame(jd + h / 24.0);
            const BodyPlace moon = Calc_Moon(kAccuracyFull, frame), &m = page.Moon_Place(h);
            worstMoon = std::max({worstMoon, arcsec(m.GHA, moon.GHA), arcsec(m.RA, moon.RA),
                                  arcsec(m.Dec, moon.Dec)});
            worstMoonKm = std::max(worstMoonKm, std::fabs(m.Distance - moon.Distance));
            for (int p = 0; p < 4; ++p) {
                BodyPlace full;
                float earth = 0.0f;
                Calc_Planet(full, cAlmanac::kPlanets[static_cast<size_t>(p)], kAccuracyFull, frame,
                            earth);
                const BodyPlace& ours = page.Planet_Place(p, h);
                worstPlanet =
                    std::max({worstPlanet, arcsec(ours.GHA, full.GHA), arcsec(ours.Dec, full.Dec)});
            }
        }
    }
    std::printf("Hourly places against the full series: Moon %.3f\" (%.3f km), planets %.3f\"\n",
                worstMoon, worstMoonKm, worstPlanet);
    EXPECT_LT(worstMoon, 0.1);
    EXPECT_LT(worstMoonKm, 0.01);
    EXPECT_LT(worstPlanet, 0.5);
}

TEST_F(AlmanacPage, RoundingRules) {
    // A rounded 360° prints 0°.
    EXPECT_EQ(cAlmanac::Tabulated_Angle_Text(2.0 * M_PI - 1.0e-7), "    0° 00'.0");
    EXPECT_EQ(cAlmanac::HrMins_Ex(1439.6), "00:00");
    EXPECT_EQ(cAlmanac::HrMins_Ex(605.0), "10:05");

    cAlmanac page;
    page.MyJD(Day_Of(2024, 3, 19));
    // The change from one printed GHA to the next, in minutes of arc.
    const auto step = [](const std::string& a, const std::string& b) {
        return std::fmod(Parse_Minutes(b) - Parse_Minutes(a) + 21600.0, 21600.0);
    };
    for (int h = 0; h + 1 < cAlmanac::kHours; ++h) {
        const size_t i = static_cast<size_t>(h);
        const cAlmanac::Moon_Row &a = page.MyMoonCol()[i], &b = page.MyMoonCol()[i + 1];
        // The Moon's d and v are differences of the printed figures.
        const double dd = Signed_Minutes(b.Dec, page.Moon_Place(h + 1).Dec) -
                          Signed_Minutes(a.Dec, page.Moon_Place(h).Dec);
        EXPECT_EQ(a.d, Format_Number(std::fabs(Round_Even(dd * 10.0)) / 10.0, "#0'.0")) << h;
        EXPECT_EQ(a.v, Format_Number(Round_Even(step(a.GHA, b.GHA) - 859.0, 1), "#0'.0")) << h;
        // The Sun's adjusted GHA goes on by 15° an hour, but for the change of the
        // equation of time (at most 0'.31 an hour) and the rounding.
        EXPECT_NEAR(step(page.MySunCol()[i].GHA, page.MySunCol()[i + 1].GHA), 900.0, 0.3 + 1e-9)
            << h;
        // The hemisphere is named on the first row of each day and on a change only.
        if ((h + 1) % 24 == 0) {
            EXPECT_FALSE(b.Flag.empty());
        }
        if (!b.Flag.empty()) {
            EXPECT_EQ(b.Dec.back(), b.Flag[0]);
        } else {
            EXPECT_NE(b.Dec.back(), 'N');
            EXPECT_NE(b.Dec.back(), 'S');
        }
    }
    // The equinox: the Sun's declination changes its name within the page.
    int named = 0;
    for (const auto& r : page.MySunCol()) named += r.Marker.empty() ? 0 : 1;
    EXPECT_EQ(named, 7);  // six 12-hour rows and the change
    EXPECT_EQ(page.MyDailyMPdata()[0].Age.back(), 'd');
}

// The minutes of the day of a "HH:MM" cell, or -1 for a cell without a time.
int Cell_Minutes(const std::string& cell) {
    if (cell.size() != 5 || cell[2] != ':') return -1;
    return std::stoi(cell.substr(0, 2)) * 60 + std::stoi(cell.substr(3, 2));
}

TEST_F(AlmanacPage, LatitudeTables) {
    // 72°N in midsummer: no sunrise, sunset or twilight times.
    cAlmanac june;
    june.MyJD(Day_Of(2025, 6, 20));
    for (int d = 0; d < cAlmanac::kDays; ++d) {
        const auto& am = june.MyAmTwilights()[0][static_cast<size_t>(d)];
        const auto& pm = june.MyPmTwilights()[0][static_cast<size_t>(d)];
        for (const std::string* c :
             {&am.Nautical, &am.Civil, &am.Sunrise, &pm.Sunset, &pm.Civil, &pm.Nautical})
            EXPECT_EQ(Cell_Minutes(*c), -1) << *c;
    }

    // Against the reference at the meridian of Greenwich, to the printed minute (one minute
    // either way for a time near a half minute). The Moon: the upper limb on the horizon with
    // 34' of refraction.
    const auto moonHorizon = [](double r) {
        return std::asin(6378.137 / r) - 1737.92808633851 / r - 34.0 / kArcmin;
    };
    int compared = 0, moonCompared = 0;
    for (double jd : {Day_Of(1950, 2, 11), Day_Of(2003, 8, 30), Day_Of(2077, 11, 5)}) {
        cAlmanac page;
        page.MyJD(jd);
        for (int row = 0; row < cAlmanac::kLatitudeRows; ++row) {
            const double lat = cAlmanac::kLatitudes[static_cast<size_t>(row)] / kDeg;
            for (int d = 0; d < cAlmanac::kDays; ++d) {
                const auto& am =
                    page.MyAmTwilights()[static_cast<size_t>(row)][static_cast<size_t>(d)];
                const auto& pm =
                    page.MyPmTwilights()[static_cast<size_t>(row)][static_cast<size_t>(d)];
                const double start = jd + d;
                const double noon = start + page.MySunMerPasses()[static_cast<size_t>(d)] / 24.0;
                struct Cell {
                    const std::string* text;
                    double alt;
                    bool morning;
                };
                const Cell cells[] = {
                    {&am.Nautical, -12.0 / kDeg, true},   {&am.Civil, -6.0 / kDeg, true},
                    {&am.Sunrise, -50.0 / kArcmin, true}, {&pm.Sunset, -50.0 / kArcmin, false},
                    {&pm.Civil, -6.0 / kDeg, false},      {&pm.Nautical, -12.0 / kDeg, false}};
                for (const Cell& c : cells) {
                    auto f = [&](double t) { return Swe_True_Alt(t, SE_SUN, lat, 0.0) - c.alt; };
                    const double lo = c.morning ? noon - 0.5 : noon,
                                 hi = c.morning ? noon : noon + 0.5;
                    const bool exists =
                        c.morning ? (f(lo) < 0 && f(hi) >= 0) : (f(lo) >= 0 && f(hi) < 0);
                    const int ours = Cell_Minutes(*c.text);
                    EXPECT_EQ(exists, ours >= 0) << row << " " << d << " " << *c.text;
                    if (!exists || ours < 0) continue;
                    const double ref = (Bisect(f, lo, hi) - start) * 1440.0;
                    EXPECT_LE(std::fabs(std::remainder(ours - ref, 1440.0)), 1.0)
                        << row << " " << d << " " << *c.text;
                    ++compared;
                }
                const std::vector<MoonCrossing> moon =
                    Swe_Moon_Crossings(start, start + 1.0, lat, 0.0, moonHorizon);
                for (bool rise : {true, false}) {
                    const int ours = Cell_Minutes(rise ? am.Moonrise : pm.Moonset);
                    const auto it =
                        std::find_if(moon.begin(), moon.end(),
                                     [&](const MoonCrossing& e) { return e.Rise == rise; });
                    const double ref = it == moon.end() ? -1.0 : (it->Time - start) * 1440.0;
                    if (ref < 0 || ours < 0) {
                        // Only a crossing at the edge of the day may be judged either way.
                        const double m = ref >= 0 ? ref : ours;
                        EXPECT_TRUE((ref < 0) == (ours < 0) || m < 2.0 || m > 1438.0)
                            << row << " " << d << " " << rise;
                        continue;
                    }
                    EXPECT_LE(std::fabs(std::remainder(ours - ref, 1440.0)), 1.0)
                        << row << " " << d << " rise " << rise;
                    ++moonCompared;
                }
            }
        }
    }
    EXPECT_GT(compared, 1500);
    EXPECT_GT(moonCompared, 400);
}

}  // namespace
}  // namespace kelmoran
