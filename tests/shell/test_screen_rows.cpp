// The rows of AltAz, Main, Solar Bodies and Moon Phases against the body service, the
// rise-and-set modules, the phase series and an independent ephemeris.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "almanac/Moon_Events.h"
#include "almanac/Sun_Events.h"
#include "almanac/cAlmanac.h"
#include "eclipses/M_Eclipse.h"
#include "ephemeris/Moon_Phases.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"
#include "shell/Screen_Cases.h"
#include "stars/M_Resources.h"
#include "voyage/VariationModel.h"

// After the program's headers: the library defines macros such as OK.
#include <swephexp.h>

namespace kelmoran {
namespace {

using testing_dates::Moment;
using testing_dates::Observe_From;

constexpr double kDeg = 1.0 / testing_dates::kRadian;

// Degrees and minutes of a cell such as "  45° 30'.2", "-3° 07'.5" or "12° 00'.0 S", as
// radians (south and a leading minus negative).
double Parse_Angle(const std::string& cell) {
    const size_t deg = cell.find("°");
    if (deg == std::string::npos) return NAN;
    const std::string head = cell.substr(0, deg);
    const bool minus = head.find('-') != std::string::npos;
    const double d = std::stod(head.substr(head.find_first_of("0123456789")));
    size_t p = deg + 2;
    while (p < cell.size() && cell[p] == ' ') ++p;
    const size_t quote = cell.find('\'', p);
    double m = std::stod(cell.substr(p, quote - p));
    if (quote + 1 < cell.size() && cell[quote + 1] == '.') {
        size_t q = quote + 2;
        std::string tenths;
        while (q < cell.size() && std::isdigit(static_cast<unsigned char>(cell[q])))
            tenths += cell[q++];
        if (!tenths.empty()) m += std::stod("0." + tenths);
    }
    double a = (d + m / 60.0) * kDeg;
    if (minus || cell.find(" S") != std::string::npos) a = -a;
    return a;
}

double Arc_Minutes_Between(double a, double b) {
    return std::fabs(std::remainder(a - b, kTwoPi)) / kDeg * 60.0;
}

class ScreenRows : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
        Load_Star_Tables();
    }
    static void TearDownTestSuite() { swe_close(); }
    void SetUp() override { Observe_From(50.0, -5.0); }
};

// ------------------------------------------------------------------------------ AltAz

// Evening in the Channel: the Sun is down, the stars are out.
const double kEvening = Moment(2024, 3, 15, 21, 30);

TEST_F(ScreenRows, AltAzMainStarsAndPlanetsAgreeWithTheBodyService) {
    const AltAzRows rows = AltAz_Rows(kEvening, true);
    ASSERT_GT(rows.Rows, 7);
    for (const auto& column : rows.Labels) ASSERT_EQ(column.size(), rows.BodyNumbers.size());
    EXPECT_FALSE(rows.DRwarning);

    // Natural order: Sun's and Moon's upper limbs, Mercury .. Saturn, then the navigational
    // stars brightest first, just those at 10° or more.
    const std::vector<int32_t> head = {0, 2, 4, 5, 6, 7, 8};
    EXPECT_TRUE(std::equal(head.begin(), head.end(), rows.BodyNumbers.begin()));
    EXPECT_TRUE(std::is_sorted(rows.BodyNumbers.begin() + 7, rows.BodyNumbers.end()));
    const std::set<int32_t> listed(rows.BodyNumbers.begin(), rows.BodyNumbers.end());
    for (int32_t s : MainBodies)
        EXPECT_TRUE(s < 12 || (listed.count(s) == 1) == (Bodies[s].TrueAlt >= 10.0 * kDeg)) << s;

    // Every cell is the body's record by its format; magnetic bearings by the variation.
    Variation_Answer field;
    Variation_Model().Calc({kEvening, Settings.ObserverLat, Settings.ObserverLong}, field);
    const double tenth = 0.051 * kDeg / 60.0;
    for (size_t i = 0; i < rows.BodyNumbers.size(); ++i) {
        const int32_t n = rows.BodyNumbers[i];
        const BodyRecord& b = Bodies[n];
        const auto cell = [&](int c) { return rows.Labels[static_cast<size_t>(c)][i]; };
        EXPECT_EQ(cell(18), std::to_string(n));
        if (n < 12 && b.SextantAlt < 0.0f) {
            for (int c : {3, 4, 8, 11, 12}) EXPECT_EQ(cell(c), "- ");
        } else {
            EXPECT_NEAR(Parse_Angle(cell(3)), b.SextantAlt, tenth);
            EXPECT_NEAR(Parse_Angle(cell(12)), b.TrueAlt, tenth);
            EXPECT_EQ(cell(4), Format_Number(b.Azimuth / kDeg, "000°.0 T"));
            EXPECT_EQ(cell(8), Format_Magnetic_Course((b.Azimuth - field.Variation) / kDeg));
            EXPECT_EQ(cell(11), Format_Number((b.TrueAlt - b.SextantAlt) / kDeg * 60, "#0'.0"));
        }
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(cell(5)), b.GHA), 0.051);
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(cell(6)), kTwoPi - b.RA), 0.051);
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(cell(7)), b.Dec), 0.051);
        EXPECT_EQ(cell(13), Format_RA(b.RA, 1, true));
        EXPECT_TRUE(n <= 3 || cell(9) == Format_Number(b.Magnitude, "#0.0")) << cell(9);
        if (n < 12) continue;
        EXPECT_EQ(cell(2), b.Names.Name);
        EXPECT_EQ(cell(10), "0'.0");
        EXPECT_TRUE(cell(14).empty() || Star_Of_HD(std::stoi(cell(14))) == n) << cell(14);
        EXPECT_TRUE(cell(15).empty() || Star_Of_Hip(std::stoi(cell(15))) == n) << cell(15);
    }
    EXPECT_EQ(rows.Labels[2][0], "Sun's UL");
    EXPECT_EQ(rows.Labels[3][0], "- ");  // 21:30 in March

    // The planets and the Moon against the Swiss Ephemeris.
    const std::map<int32_t, int> reference = {{2, SE_MOON}, {4, SE_MERCURY}, {5, SE_VENUS},
                                              {6, SE_MARS}, {7, SE_JUPITER}, {8, SE_SATURN}};
    const double ut = kJ2000 + kEvening, gast = swe_sidtime(ut) * 15.0 * kDeg;
    for (size_t i = 0; i < 7; ++i) {
        const auto it = reference.find(rows.BodyNumbers[i]);
        if (it == reference.end()) continue;
        double xx[6];
        char err[256] = "";
        ASSERT_GE(swe_calc_ut(ut, it->second, SEFLG_SWIEPH | SEFLG_EQUATORIAL, xx, err), 0);
        const double ra = xx[0] * kDeg, dec = xx[1] * kDeg;
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(rows.Labels[5][i]), gast - ra), 0.3) << i;
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(rows.Labels[6][i]), kTwoPi - ra), 0.3) << i;
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(rows.Labels[7][i]), dec), 0.3) << i;
    }
}

TEST_F(ScreenRows, AltAzAltitudeTitleLimbsAndFilters) {
    EXPECT_EQ(Altitude_Title().Long, "Apparent Altitude");
    Settings.HtOfEye = 3.0f;
    EXPECT_EQ(Altitude_Title().Short, "Obs. Alt.");
    Settings.IndexError = -1.5f;
    EXPECT_EQ(Altitude_Title().Long, "Sextant Altitude");
    Compute_Derived_Settings();

    // Without the 10° filter every navigational star comes, and the Sun shows its
    // negative altitude.
    const AltAzRows high = AltAz_Rows(kEvening, false);
    Filters.AboveTenOnly = 0;
    const AltAzRows all = AltAz_Rows(kEvening, false);
    EXPECT_EQ(all.Rows, 7 + kMainStarCount);
    EXPECT_GT(all.Rows, high.Rows);
    EXPECT_EQ(all.Labels[3][0][0], '-');
    EXPECT_LT(Parse_Angle(all.Labels[3][0]), 0.0);

    // The lower limbs and the minor planets; the Moon's limbs lie two semi-diameters apart.
    Filters.SunLowerLimb = Filters.MoonLowerLimb = Filters.MinorPlanets = -1;
    const AltAzRows limbs = AltAz_Rows(kEvening, false);
    EXPECT_EQ(limbs.Rows, all.Rows + 3);
    const std::vector<int32_t> head = {1, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    EXPECT_TRUE(std::equal(head.begin(), head.end(), limbs.BodyNumbers.begin()));
    EXPECT_EQ(limbs.Labels[2][1], "Moon");
    const double upper = Parse_Angle(all.Labels[12][1]) - Parse_Angle(all.Labels[3][1]);
    const double lower = Parse_Angle(limbs.Labels[12][1]) - Parse_Angle(limbs.Labels[3][1]);
    EXPECT_NEAR(std::fabs(lower - upper), 2.0 * Parse_Angle("0° " + limbs.Labels[10][1]),
                0.25 * kDeg / 60.0);
}

TEST_F(ScreenRows, AltAzSortAndRestore) {
    Filters.AboveTenOnly = 0;
    const AltAzRows rows = AltAz_Rows(kEvening, false);
    for (int column : {2, 3, 4, 7, 9, 12}) {
        for (bool up : {true, false}) {
            const std::vector<int32_t> order = AltAz_Sort(rows, column, up);
            EXPECT_TRUE(std::is_permutation(order.begin(), order.end(),
                                            AltAz_Sort(rows, -1, true).begin()));
            // Names by their text, altitudes by the angle shown, the others by the record.
            const auto value = [&](int32_t r) {
                const std::string& text = rows.Labels[static_cast<size_t>(column)][r];
                return column == 3 || column == 12 ? Parse_Angle(text)
                                                   : rows.SortKeys[static_cast<size_t>(column)][r];
            };
            for (size_t k = 1; k < order.size(); ++k) {
                if (column == 2) {
                    const std::string &a = rows.Labels[2][order[k - 1]],
                                      &b = rows.Labels[2][order[k]];
                    EXPECT_TRUE(up ? a <= b : a >= b) << a << " / " << b;
                } else {
                    EXPECT_TRUE(up ? value(order[k - 1]) <= value(order[k]) + 1e-9
                                   : value(order[k - 1]) >= value(order[k]) - 1e-9);
                }
            }
        }
    }
    // By magnitude the Sun and the Moon come first; "Restore Order" is the natural order.
    const std::vector<int32_t> bright = AltAz_Sort(rows, 9, true);
    EXPECT_EQ(rows.BodyNumbers[static_cast<size_t>(bright[0])], 0);
    EXPECT_EQ(rows.BodyNumbers[static_cast<size_t>(bright[1])], 2);
    const std::vector<int32_t> natural = AltAz_Sort(rows, -1, true);
    for (size_t i = 0; i < natural.size(); ++i) EXPECT_EQ(natural[i], static_cast<int32_t>(i));
}

TEST_F(ScreenRows, AltAzByPointAndConstellation) {
    Filters.AboveTenOnly = 0;
    AltAz_Rows(kEvening, false);
    int32_t star = 12;
    while (Bodies[star].TrueAlt < 30.0 * kDeg) ++star;
    const auto has = [](const AltAzRows& rows, int32_t b) {
        return std::find(rows.BodyNumbers.begin(), rows.BodyNumbers.end(), b) -
               rows.BodyNumbers.begin();
    };
    // A star well up found by its altitude and azimuth, and by its SHA and Dec; only stars
    // within the radius are listed.
    Filters.BodyFilterMode = 4;
    Filters.CentreA = Bodies[star].TrueAlt;
    Filters.CentreB = Bodies[star].Azimuth;
    const AltAzRows byAltAz = AltAz_Rows(kEvening, false);
    EXPECT_LT(has(byAltAz, star), byAltAz.Rows);
    for (size_t i = 0; i < byAltAz.BodyNumbers.size(); ++i) {
        EXPECT_GE(byAltAz.BodyNumbers[i], 12);
        EXPECT_LE(std::stod(byAltAz.Labels[17][i]), 10.0);
    }
    Filters.BodyFilterMode = 3;
    Filters.CentreA = static_cast<float>(kTwoPi - Bodies[star].RA);
    Filters.CentreB = static_cast<float>(Bodies[star].Dec);
    const AltAzRows bySha = AltAz_Rows(kEvening, false);
    ASSERT_LT(has(bySha, star), bySha.Rows);
    EXPECT_EQ(bySha.Labels[17][static_cast<size_t>(has(bySha, star))], "0'.0");

    // Stars to magnitude 8 need the second tier: it is loaded by the rows, when it exists.
    Filters.BodyFilterMode = 1;
    Filters.StarCount = 42078;
    if (Catalogue_Upper() < kTier2End) {
        EXPECT_EQ(AltAz_Loads_Tiers(), Star_Tier_Available(2));
        const AltAzRows deep = AltAz_Rows(kEvening, false);
        EXPECT_EQ(Catalogue_Upper() >= kTier2End, Star_Tier_Available(2));
        EXPECT_EQ(deep.Rows, 7 + Catalogue_Upper() - 11);
    }
    EXPECT_FALSE(AltAz_Loads_Tiers());

    // A constellation lists its designated stars and nothing else.
    Filters.BodyFilterMode = 2;
    Filters.ConstelChoice = 56;
    const AltAzRows constel = AltAz_Rows(kEvening, false);
    int32_t expected = 0;
    for (int32_t s : Constellation_Stars[56].Stars) {
        if (s == 0) break;
        expected += s >= 12 && s <= Catalogue_Upper();
    }
    EXPECT_EQ(constel.Rows, expected);
    for (int32_t b : constel.BodyNumbers) EXPECT_EQ(Bodies[b].Names.Constellation, 56);
}

// ------------------------------------------------------------------------------- Main

const double kSummerDay = Moment(2023, 6, 21, 10, 0);

std::map<std::string, std::string> Values(const std::vector<MainLine>& lines) {
    std::map<std::string, std::string> m;
    for (const MainLine& l : lines)
        if (!m.count(l.Label)) m[l.Label] = l.Value;
    return m;
}

TEST_F(ScreenRows, MainDayAndMoonMatchTheCoreCalculations) {
    Settings.HtOfEye = 2.0f;
    Compute_Derived_Settings();
    TZ_Bias = 60;
    const MainPage page = Main_Rows(kSummerDay, false);
    EXPECT_FALSE(page.DRwarning);

    std::string labels;
    for (const MainLine& l : page.Day) labels += l.Label + "|";
    EXPECT_EQ(labels,
              "Position|Variation |Magnetic Dip|Morning Twighlights Start|Astronomical|Nautical|"
              "Civil|Sunrise|Aries @ 12:00|Mer.Pass.|Mer. Pass. (Obs. Alt.)|Sunset|"
              "Evening Twilights End|Civil|Nautical|Astronomical|");

    const Sun_Row sun = Main_Sun_Rows(kSummerDay, 60, false);
    const std::vector<size_t> at = {4, 5, 6, 7, 9, 11, 13, 14, 15};
    for (size_t k = 0; k < at.size(); ++k) EXPECT_EQ(page.Day[at[k]].Value, sun[k]) << k;
    // At 50°N on midsummer's day astronomical twilight never ends.
    EXPECT_EQ(page.Day[4].Value, kNoEvent);
    EXPECT_NE(page.Day[7].Value, kNoEvent);

    // Meridian altitude of the Sun's upper limb, near 90° - 50° + 23°.4 + 16'.
    const Sun_Sample& noon = Sun_Day.Sun_Noon;
    AltAzResult a;
    Calc_AltAz(a, 0, Settings.ObserverLat, Settings.ObserverLong, noon.Place);
    EXPECT_NEAR(Parse_Angle(page.Day[10].Value), a.SextantAlt, 0.051 / 60.0 * kDeg);
    EXPECT_NEAR(Parse_Angle(page.Day[10].Value), (63.44 + 0.27) * kDeg, 0.1 * kDeg);

    // Aries at 12:00 zone time, that is 11:00 UT.
    const double ariesUT = Moment(2023, 6, 21, 11, 0);
    EXPECT_LT(Arc_Minutes_Between(Parse_Angle(page.Day[8].Value),
                                  swe_sidtime(kJ2000 + ariesUT) * 15.0 * kDeg),
              0.2);

    const Moon_Rows_Result moon = Moon_Rows(kSummerDay, 60, false);
    ASSERT_GE(page.Moon.size(), 8u);
    const std::vector<MainLine> events = {{moon.Titles[0], moon.Texts[0]},
                                          {moon.Titles[1], moon.Texts[1]},
                                          {"Mer.Pass.", moon.Passage_Time_Text},
                                          {moon.Passage_Title, moon.Passage_Alt_Text}};
    for (size_t k = 0; k < events.size(); ++k)
        EXPECT_EQ(page.Moon[k].Label + page.Moon[k].Value, events[k].Label + events[k].Value);
    const auto v = Values(page.Moon);
    EXPECT_EQ(v.at("Age"), Format_Number(Moon_Age_At(moon.Passage_Time), "#0") + " d");
    // Three days after the New Moon of 18 June: a thin crescent.
    EXPECT_EQ(v.at("Age"), "3 d");
    const int lit = std::stoi(v.at("Phase"));
    EXPECT_GT(lit, 3);
    EXPECT_LT(lit, 25);

    // The phases either side: consecutive in the order of a lunation, a quarter apart.
    const std::vector<std::string> names = {"New Moon", "First Quarter", "Full Moon",
                                            "Last Quarter"};
    int prev = -1, next = -1;
    for (int p = 0; p < 4; ++p) {
        if (v.count("Previous " + names[p])) prev = p;
        if (v.count("Next " + names[p])) next = p;
    }
    EXPECT_EQ(prev, 0);
    EXPECT_EQ(next, 1);
}

TEST_F(ScreenRows, MainSecondsAndThePositionRows) {
    const MainPage plain = Main_Rows(kSummerDay, false);
    const MainPage seconds = Main_Rows(kSummerDay, true);
    ASSERT_EQ(plain.Day.size(), seconds.Day.size());
    EXPECT_EQ(plain.Day[7].Value.size() + 3, seconds.Day[7].Value.size());  // sunrise
    EXPECT_EQ(plain.Day[6].Value, seconds.Day[6].Value);  // twilights never show seconds

    // A course and speed from a fix: "Current Position" and "Co./ Speed".
    Settings.PositionMethod = kDRCourseSpeed;
    Settings.FixTime = kSummerDay - 1.0;
    Settings.FixCourse = 270.0f;
    Settings.FixSpeed = 6.5f;
    const MainPage dr = Main_Rows(kSummerDay, false);
    EXPECT_EQ(dr.Day[0].Label, "Current Position");
    EXPECT_EQ(dr.Day[1].Label, position_text::CourseSpeed);
    EXPECT_EQ(dr.Day[1].Value, "270° T  6.5 Kts");
    // 156 miles west of 5°W along 50°N.
    EXPECT_NE(dr.Day[0].Value, plain.Day[0].Value);
    EXPECT_FALSE(dr.DRwarning);
}

TEST_F(ScreenRows, MainDRErrorForAnExpiredPlan) {
    Reset_Shell(nullptr);
    testing_dates::Sail_Expired_Plan(kSummerDay);
    const VoyagePlan& plan = Voyage;
    ASSERT_LT(plan.Plan_End(), kSummerDay);
    const MainPage expired = Main_Rows(kSummerDay, false);
    EXPECT_TRUE(expired.DRwarning);
    EXPECT_EQ(expired.Day[1].Value, "DR Error");
    const TableRows bodies = Planets_Rows(kSummerDay, 2, false);
    EXPECT_TRUE(bodies.DRwarning);
    EXPECT_EQ(bodies.Labels[2][0], "DR Error");
    EXPECT_EQ(bodies.Labels[3][0], " -");
    EXPECT_TRUE(AltAz_Rows(kSummerDay, false).DRwarning);

    // Within the plan there is no warning.
    const double during = (plan.Plan_Start() + plan.Plan_End()) / 2.0;
    const MainPage sailing = Main_Rows(during, false);
    EXPECT_FALSE(sailing.DRwarning);
    EXPECT_EQ(sailing.Day[0].Label, "Current Position");
    EXPECT_NE(sailing.Day[1].Value, "DR Error");
    Voyage = VoyagePlan{};
}

// ------------------------------------------------------------------------ Solar Bodies

TEST_F(ScreenRows, SolarBodiesMonthsAndYearsKeepTheDay) {
    Filters.ShowBody = 1;
    Filters.IntervalUnit = "Month";
    const TableRows months = Planets_Rows(Moment(2023, 1, 31, 12), 14, false);
    ASSERT_EQ(months.Rows, 14);
    const std::vector<std::string> dates = {"31 Jan 2023", "28 Feb 2023", "31 Mar 2023",
                                            "30 Apr 2023", "31 May 2023", "30 Jun 2023"};
    for (size_t i = 0; i < dates.size(); ++i) EXPECT_EQ(months.Labels[0][i], dates[i]);
    EXPECT_EQ(months.Labels[0][12], "31 Jan 2024");
    EXPECT_EQ(months.Labels[0][13], "29 Feb 2024");
    for (const std::string& t : months.Labels[1]) EXPECT_EQ(t, "12:00");

    Filters.IntervalUnit = "Year";
    const TableRows years = Planets_Rows(Moment(2024, 2, 29, 6), 5, false);
    EXPECT_EQ(years.Labels[0][1], "28 Feb 2025");
    EXPECT_EQ(years.Labels[0][4], "29 Feb 2028");
}

TEST_F(ScreenRows, SolarBodiesTheMoonByTheHour) {
    Filters.ShowBody = 3;
    Filters.IntervalUnit = "Hour";
    TZ_Bias = -300;
    const double start = Moment(2023, 6, 21, 10, 0);
    const TableRows rows = Planets_Rows(start, 24, false);
    ASSERT_EQ(rows.Rows, 24);
    EXPECT_EQ(rows.Labels[1][0], "05:00");
    EXPECT_EQ(rows.Labels[1][23], "04:00");
    EXPECT_EQ(rows.Labels[0][23], "22 Jun 2023");
    for (int32_t r = 0; r < rows.Rows; r += 5) {
        const size_t i = static_cast<size_t>(r);
        const double ut = kJ2000 + start + r / 24.0;
        double xx[6];
        char err[256] = "";
        ASSERT_GE(swe_calc_ut(ut, SE_MOON, SEFLG_SWIEPH | SEFLG_EQUATORIAL, xx, err), 0) << err;
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(rows.Labels[10][i]), xx[1] * kDeg), 0.3);
        const double gha = swe_sidtime(ut) * 15.0 * kDeg - xx[0] * kDeg;
        EXPECT_LT(Arc_Minutes_Between(Parse_Angle(rows.Labels[8][i]), gha), 0.3);
        // Kilometres for the Moon, within 10 km of the reference's geometric distance.
        std::string km = rows.Labels[11][i];
        ASSERT_EQ(km.substr(km.size() - 3), " Km");
        km.erase(std::remove(km.begin(), km.end(), ','), km.end());
        double geometric[6];
        ASSERT_GE(swe_calc_ut(ut, SE_MOON, SEFLG_SWIEPH | SEFLG_TRUEPOS, geometric, err), 0);
        EXPECT_NEAR(std::stod(km), geometric[2] * 149597870.7, 10.0);
        EXPECT_NE(rows.Labels[12][i].find("'."), std::string::npos);
    }
    // Seconds of arc: four decimals of the azimuth, and seconds in the angles.
    Filters.ShowSecondsOfArc = -1;
    const TableRows fine = Planets_Rows(start, 1, false);
    EXPECT_EQ(fine.Labels[6][0].size(), rows.Labels[6][0].size() + 3);
    EXPECT_NE(fine.Labels[8][0].find('"'), std::string::npos);

    // A planet: astronomical units and seconds of semi-diameter.
    Filters.ShowBody = 7;
    const TableRows jupiter = Planets_Rows(start, 1, false);
    EXPECT_NE(jupiter.Labels[11][0].find(" Au"), std::string::npos);
    EXPECT_NE(jupiter.Labels[12][0].find('"'), std::string::npos);
    EXPECT_FALSE(jupiter.Labels[13][0].empty());
}

// ------------------------------------------------------------------------- Moon Phases

// The zone-time months of the Full Moons of a year, from the phase series.
std::vector<int> Full_Moon_Months(int year) {
    std::vector<int> months;
    const double start = Moment(year, 1, 1, 0), end = Moment(year + 1, 1, 1, 0);
    const double deltaT = Get_DeltaT(year - 2000) / (36525.0 * 86400.0);
    for (double t = Full_Moon_Before(end, deltaT); t >= start;
         t = Full_Moon_Before(t - 1.0, deltaT))
        months.push_back(JD_To_Date(t).wMonth);
    return months;
}

TEST_F(ScreenRows, MoonPhasesYearWithTwoFullMoonsInAMonth) {
    int year = 0, month = 0;
    for (int y = 2015; y < 2060 && year == 0; ++y) {
        const std::vector<int> m = Full_Moon_Months(y);
        for (size_t i = 1; i < m.size(); ++i)
            if (m[i] == m[i - 1]) year = y, month = m[i];
    }
    ASSERT_NE(year, 0);
    const TableRows rows = Lunations_Rows(Moment(year, 6, 1, 12));
    ASSERT_EQ(rows.Rows, 12);
    EXPECT_EQ(rows.Labels[0][0], "January");
    EXPECT_EQ(rows.Labels[0][11], "December");
    const size_t r = static_cast<size_t>(month - 1);
    ASSERT_FALSE(rows.Labels[3][r].empty());
    ASSERT_FALSE(rows.Labels[7][r].empty()) << year << "/" << month;
    auto day = [](const std::string& cell) {
        return std::stoi(cell.substr(cell.find_first_of("0123456789")));
    };
    EXPECT_LT(day(rows.Labels[3][r]), day(rows.Labels[7][r]));

    // Every Full Moon of the year is in the table once.
    size_t fulls = 0;
    for (size_t m = 0; m < 12; ++m)
        fulls += !rows.Labels[3][m].empty() + !rows.Labels[7][m].empty();
    EXPECT_EQ(fulls, Full_Moon_Months(year).size());
}

TEST_F(ScreenRows, MoonPhasesEclipseMarks) {
    const TableRows rows = Lunations_Rows(Moment(2024, 7, 1, 0));
    int marks = 0;
    for (size_t m = 0; m < 12; ++m) {
        int inMonth = 0;
        for (size_t c = 1; c <= 8; ++c)
            if (rows.Labels[c][m].rfind("* ", 0) == 0) {
                ++inMonth;
                EXPECT_TRUE(c == 1 || c == 3 || c == 5 || c == 7);  // New or Full Moons only
            }
        marks += inMonth;
        const std::string& cell = rows.Labels[9][m];
        EXPECT_EQ(inMonth > 0, !cell.empty()) << m;
        EXPECT_TRUE(cell.empty() || cell.ends_with(" Eclipse")) << cell;
    }
    // The eclipse search of the same fill found exactly the marked phases, at least the
    // two of a year.
    EXPECT_EQ(marks, Eclipses.Count);
    EXPECT_GE(marks, 2);
}

// Every phase of the shown year is in the table, from its first week to its last, in the
// Julian and the Gregorian calendar; a year before AD 1 is shown in the Julian calendar
// whichever is chosen, so both choices give it the same phases and eclipses.
TEST_F(ScreenRows, MoonPhasesFillTheirWholeYearInEitherCalendar) {
    const int16_t chosen = Shared_JulDates;
    for (int year : {-9999, -1, 1, 2024, 9999}) {
        std::vector<LunationPhase> byCalendar[2];
        int eclipses[2] = {0, 0};
        for (int julian = 0; julian < 2; ++julian) {
            Shared_JulDates = julian ? kTrue : kFalse;
            EclipseTable table;
            const std::vector<LunationPhase> phases = Fill_Lunation_Year(year, 0, table);
            eclipses[julian] = table.Count;
            ASSERT_GE(phases.size(), 48u) << year << " julian " << julian;
            EXPECT_EQ(phases.front().Month, 1);
            EXPECT_LE(phases.front().Day, 8);
            EXPECT_EQ(phases.back().Month, 12);
            EXPECT_GE(phases.back().Day, 24) << year << " julian " << julian;
            for (size_t i = 1; i < phases.size(); ++i)
                EXPECT_EQ(phases[i].Phase, (phases[i - 1].Phase + 1) % 4) << year << " " << i;
            byCalendar[julian] = phases;
        }
        if (year < 1) {
            ASSERT_EQ(byCalendar[0].size(), byCalendar[1].size()) << year;
            for (size_t i = 0; i < byCalendar[0].size(); ++i)
                EXPECT_EQ(byCalendar[0][i].ZoneJD, byCalendar[1][i].ZoneJD);
            EXPECT_EQ(eclipses[0], eclipses[1]) << year;
        }
    }
    Shared_JulDates = chosen;
}

// The texts of every screen over the whole range of years, at the poles and on the date
// line: never a NaN or an infinity ("nan", "inf%").
TEST_F(ScreenRows, NoScreenShowsANaNOrAnInfinityFromYear9999BCTo9999) {
    const double first = Moment(-9999, 1, 1, 0), last = Moment(9999, 12, 31, 23);
    const double observers[4][2] = {{90, 180}, {-90, -180}, {0, 180}, {-45, -180}};
    auto clean = [](const std::string& text) {
        std::string lower = text;
        for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        return lower.find("nan") == std::string::npos && lower.find("inf") == std::string::npos;
    };
    auto check = [&](const std::vector<std::vector<std::string>>& labels, double jd) {
        for (const auto& column : labels)
            for (const std::string& cell : column) ASSERT_TRUE(clean(cell)) << jd << ": " << cell;
    };
    auto check_main = [&](double jd, bool seconds) {
        const MainPage page = Main_Rows(jd, seconds);
        for (const auto* block : {&page.Day, &page.Moon})
            for (const MainLine& line : *block)
                ASSERT_TRUE(clean(line.Value)) << jd << ": " << line.Label << line.Value;
    };
    // Moments no date control offers, as a damaged file could once set them.
    for (double jd : {1e20, -1e20, 1e300, 5e6, -5e6}) check_main(jd, false);
    // Each moment goes to one of the dearer screens in turn (Moon Phases, a year's fill,
    // to one in forty); Solar Bodies to all.
    constexpr int kMoments = 2000;
    for (int i = 0; i < kMoments; ++i) {
        const double jd = first + (last - first) * i / (kMoments - 1);
        Observe_From(observers[i % 4][0], observers[i / 4 % 4][1]);
        if (i % 4 == 0)
            check_main(jd, i % 8 == 0);
        else if (i % 40 == 1)
            check(Lunations_Rows(jd).Labels, jd);
        else
            check(AltAz_Rows(jd, false).Labels, jd);
        check(Planets_Rows(jd, 2, false).Labels, jd);
    }
}

// Odd filters, intervals and far dates give tables, never a failure.
TEST_F(ScreenRows, OddInputGivesTables) {
    for (int32_t mode : {-1, 2, 3, 4, 9}) {
        Filters.BodyFilterMode = mode;
        Filters.ConstelChoice = mode == 2 ? 200 : 0;
        Filters.CentreA = NAN;
        Filters.StarCount = 999999;
        const AltAzRows rows = AltAz_Rows(kEvening, false);
        for (const auto& column : rows.Labels) EXPECT_EQ(column.size(), rows.BodyNumbers.size());
    }
    EXPECT_EQ(AltAz_Rows(NAN, false).Rows, 0);
    Filters = BodyFilters{};
    Filters.IntervalUnit = "Fortnight";
    EXPECT_EQ(Planets_Rows(kEvening, -5, false).Rows, 0);
    const TableRows hours = Planets_Rows(kEvening, 2, false);
    EXPECT_NE(hours.Labels[1][0], hours.Labels[1][1]);
    for (double jd : {-1.5e6, -7.3e5, 1.1e6}) {
        const MainPage page = Main_Rows(jd, true);
        EXPECT_GT(page.Day.size(), 10u);
        EXPECT_EQ(Lunations_Rows(jd).Rows, 12);
        Filters.IntervalUnit = "Month";
        EXPECT_EQ(Planets_Rows(jd, 3, false).Rows, 3);
    }
}

}  // namespace
}  // namespace kelmoran
