// The year's fill, the kinds and texts of the eclipses, and the small pieces of the shadow
// geometry, on cases that catch real faults.
#include <gtest/gtest.h>
#include <swephexp.h>

#include <cmath>
#include <string>
#include <vector>

#include "eclipses/M_Eclipse.h"
#include "eclipses/M_Eclipse_Lunar.h"
#include "eclipses/M_Eclipse_Solar.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Moon_Phases.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Time_Calcs.h"

namespace kelmoran {
namespace {

constexpr double kMinute = 1.0 / 1440.0;
constexpr double kArcsec = 1.0 / 206264.806247096;

std::vector<std::string> Kinds(const EclipseTable& t) {
    std::vector<std::string> k;
    for (int i = 0; i < t.Count; ++i) k.push_back(t.Speed[i].Kind);
    return k;
}

TEST(EclipseFill, Year2023AnnularAndPenumbral) {
    EclipseTable t;
    Fill_Lunation_Year(2023, 0, t);
    // A hybrid, a penumbral lunar, an annular with the axis on the Earth, a partial lunar.
    EXPECT_EQ(Kinds(t), (std::vector<std::string>{"Hybrid Solar Eclipse", "Penumbral Lunar Eclipse",
                                                  "Total Annular Eclipse", "Lunar Eclipse"}));
    ASSERT_EQ(t.Count, 4);
    // October 14: the umbral cone ends short of the Earth, yet the umbra's radius stays positive.
    const EclipseRow& a = t.Rows[2];
    const EclipseInstant& m = t.Instants[2][kInstantMaximum];
    EXPECT_LT(m.UmbraVertex, m.Moon.Distance - eclipse::EarthRadius);
    EXPECT_GT(m.UmbraRadius, 0.0);
    EXPECT_GT(a.Maximum.UmbraRadius, 0.0);
    EXPECT_NEAR(a.Gamma, 0.3753, 0.002);  // published Gamma 0.3753
    EXPECT_NE(t.Speed[2].Annular, 0);
    EXPECT_EQ(a.IsNewMoon, -1);
    EXPECT_EQ(a.DateLabel, "14th of October 2023");
    // The whole antumbra on the disc: every contact happens, in time order.
    const double order[7] = {a.FirstContact.Time, a.PartialStart.Time, a.TotalStart.Time,
                             a.Maximum.Time,      a.TotalEnd.Time,     a.PartialEnd.Time,
                             a.LastContact.Time};
    for (int k = 1; k < 7; ++k) EXPECT_LT(order[k - 1], order[k]);
    // The contacts kept as instants sit on their circles.
    const EclipseInstant& in = t.Instants[2][kInstantPenIn];
    const EclipseInstant& out = t.Instants[2][kInstantTotalOut];
    EXPECT_NEAR(in.AxisDistance, in.PenumbraRadius + eclipse::EarthRadius, 5.0);
    EXPECT_NEAR(out.AxisDistance, eclipse::EarthRadius - out.UmbraRadius, 5.0);

    // May 5, penumbral: no partial or total times; October 28, partial: no total times.
    const EclipseRow &pen = t.Rows[1], &part = t.Rows[3];
    EXPECT_EQ(pen.IsNewMoon, 0);
    for (double time : {pen.PartialStart.Time, pen.PartialEnd.Time, pen.TotalStart.Time,
                        pen.TotalEnd.Time, part.TotalStart.Time, part.TotalEnd.Time})
        EXPECT_EQ(time, 0.0);
    EXPECT_NE(part.PartialStart.Time, 0.0);
    EXPECT_LT(pen.FirstContact.Time, pen.Maximum.Time);
    EXPECT_GT(pen.LastContact.Time, pen.Maximum.Time);
}

TEST(EclipseFill, Year2018GrazingSolarEclipsesArePartial) {
    EclipseTable t;
    Fill_Lunation_Year(2018, 0, t);
    // Three solar eclipses that only graze the Earth, two total lunar ones. In February the
    // Moon is far enough for its umbral cone to end short of the Earth: the annular word stays.
    EXPECT_EQ(Kinds(t), (std::vector<std::string>{"Lunar Eclipse", "Partial Annular Eclipse",
                                                  "Partial Solar Eclipse", "Lunar Eclipse",
                                                  "Partial Solar Eclipse"}));
    ASSERT_EQ(t.Count, 5);
    const double publishedGamma[5] = {0.0, 1.2117, 1.3542, 0.0, 1.1476};
    for (int i = 0; i < t.Count; ++i) {
        const EclipseRow& r = t.Rows[i];
        if (r.IsNewMoon == 0) {
            EXPECT_NE(r.TotalStart.Time, 0.0) << i;
            continue;
        }
        EXPECT_NEAR(r.Gamma, publishedGamma[i], 0.001) << i;
        EXPECT_EQ(r.PartialStart.Time, 0.0);  // the umbra misses the Earth
        EXPECT_EQ(r.TotalStart.Time, 0.0);
        EXPECT_LT(r.FirstContact.Time, r.Maximum.Time);
        EXPECT_GT(r.LastContact.Time, r.Maximum.Time);
    }
    EXPECT_EQ(t.Rows[0].DateLabel, "31st of January 2018");
}

TEST(EclipseFill, LunarGammaAndContactsOfTheTotalEclipseOf2022November8) {
    EclipseTable t;
    Fill_Lunation_Year(2022, 0, t);
    const EclipseRow* r = nullptr;
    for (int i = 0; i < t.Count; ++i)
        if (t.Rows[i].DateLabel == "8th of November 2022") r = &t.Rows[i];
    ASSERT_NE(r, nullptr);
    EXPECT_NEAR(r->Gamma, 0.2570, 0.001);  // published Gamma 0.2570
    EXPECT_NEAR(r->Maximum.Gamma, 0.2570f, 0.001f);
    // At the start of totality the Moon sits on the circle of that contact.
    EclipseEvent check = r->TotalStart;
    check.WantGamma = -1;
    Shadow_At(check, kAccuracyFull);
    EXPECT_NEAR(check.Separation, check.UmbraRadius - check.MoonSD, 2.0 * kArcsec);
    EXPECT_LT(r->PartialStart.Time, r->TotalStart.Time);
    EXPECT_LT(r->TotalEnd.Time, r->PartialEnd.Time);
}

TEST(EclipseFill, NearMissLeavesTheRowAlone) {
    // The New Moon before the 2018 eclipse season: the shadow passes far from the Earth.
    EclipseRow row;
    row.PhaseJD = New_Moon_Before(6600.0, 69.0 / 3.15576e9);
    row.DateLabel = "kept";
    EclipseInstants instants;
    EclipseSpeed speed;
    EXPECT_EQ(Solar_Eclipse_Test(row, instants, speed, 0), "");
    EXPECT_EQ(row.DateLabel, "kept");
    EXPECT_EQ(row.Maximum.Time, 0.0);
    EXPECT_EQ(Lunar_Eclipse_Test(row, speed, 0), "");
    EXPECT_EQ(row.FirstContact.Time, 0.0);
}

TEST(EclipseFill, PhasesOfTheYearInZoneTime) {
    swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
    EclipseTable t;
    const std::vector<LunationPhase> phases = Fill_Lunation_Year(2024, 0, t);
    ASSERT_GE(phases.size(), 48u);
    ASSERT_LE(phases.size(), 51u);
    double worst = 0.0;
    for (size_t i = 0; i < phases.size(); ++i) {
        const LunationPhase& p = phases[i];
        if (i > 0) {
            EXPECT_GT(p.UT, phases[i - 1].UT);
        }
        EXPECT_EQ(JD_To_Date(p.ZoneJD).wYear, 2024);
        EXPECT_EQ(p.Eclipse.empty(), p.EclipseRow < 0);
        // The refined moment against the Swiss Ephemeris's elongation, in TT.
        const double jdTT = p.UT + kJ2000 + Get_DeltaT(DeltaT_Year(p.UT)) / 86400.0;
        double sun[6], moon[6];
        char err[256];
        swe_calc(jdTT, SE_SUN, SEFLG_SWIEPH, sun, err);
        swe_calc(jdTT, SE_MOON, SEFLG_SWIEPH, moon, err);
        const double e = std::remainder(moon[0] - sun[0] - 90.0 * p.Phase, 360.0);
        worst = std::max(worst, std::fabs(e / 12.19) * 1440.0);  // minutes
    }
    swe_close();
    EXPECT_LT(worst, 1.0);  // rounded to the minute: within a minute of the true phase
    // Four eclipses in 2024, in time order, each with its cell.
    EXPECT_EQ(t.Count, 4);
    EXPECT_EQ(t.Speed[1].Kind, "Total Solar Eclipse");
    EXPECT_EQ(t.Rows[1].DateLabel, "8th of April 2024");
}

TEST(EclipseFill, NewMoonPastMidnightOfTheYearGetsNoCell) {
    // A New Moon on December 31 after 10:00 UT falls in the next year at 14 hours east.
    const int32_t bias = 840;
    int found = 0;
    for (int year = 1900; year <= 2100 && found == 0; ++year) {
        const double newYear =
            Calc_JD({static_cast<int16_t>(year + 1), 1, 0, 1, 0, 0, 0, 0}, false);
        const double nm = New_Moon_Before(newYear, Get_DeltaT(year) / 3.15576e9);
        if (nm < newYear - 14.0 / 24.0) continue;
        ++found;
        EclipseTable t;
        const std::vector<LunationPhase> zone0 = Fill_Lunation_Year(year, 0, t);
        ASSERT_EQ(zone0.back().Phase, 0);
        const double ut = zone0.back().UT;
        EXPECT_LT(Fill_Lunation_Year(year, bias, t).back().UT, ut);  // no cell this year
        const std::vector<LunationPhase> next = Fill_Lunation_Year(year + 1, bias, t);
        EXPECT_EQ(next.front().Phase, 0);  // but the first of the next year
        EXPECT_EQ(next.front().UT, ut);
        EXPECT_EQ(next.front().Month, 1);
        EXPECT_EQ(next.front().Day, 1);
    }
    EXPECT_EQ(found, 1);
}

TEST(EclipseTexts, MinutesDateLabelsAndBrowsing) {
    // Zone minutes round half to even.
    EXPECT_EQ(Zone_Minute(10.5 / 1440.0, 0) * 1440.0, 10.0);
    EXPECT_EQ(Zone_Minute(11.5 / 1440.0, 0) * 1440.0, 12.0);
    EXPECT_EQ(Zone_Minute(10.5 / 1440.0, 60) * 1440.0, 70.0);
    EXPECT_NEAR(Zone_Minute(10.51 / 1440.0, 0) * 1440.0, 11.0, 1e-9);

    const double jd = Calc_JD({2017, 8, 0, 21, 18, 26, 0, 0}, false);
    EXPECT_EQ(Eclipse_Date_Label(jd, 0), "21st of August 2017");
    EXPECT_EQ(Eclipse_Date_Label(jd, 0, true), "21st of August '17");
    EXPECT_EQ(Eclipse_Date_Label(jd, 6 * 60), "22nd of August 2017");
    EXPECT_EQ(Eclipse_Date_Label(Calc_JD({812, 3, 0, 3, 12, 0, 0, 0}, false), 0),
              "3rd of March 0812");
    const std::pair<int, const char*> suffixes[] = {{1, "st"},  {2, "nd"},  {3, "rd"},  {4, "th"},
                                                    {11, "th"}, {12, "th"}, {13, "th"}, {21, "st"},
                                                    {22, "nd"}, {23, "rd"}, {30, "th"}, {31, "st"}};
    for (const auto& [day, suffix] : suffixes) EXPECT_STREQ(Ordinal_Suffix(day), suffix) << day;
    EXPECT_EQ(Join_Eclipse_Kinds("", "Lunar Eclipse"), "Lunar Eclipse");
    EXPECT_EQ(Join_Eclipse_Kinds("Lunar Eclipse", "Total Solar Eclipse"),
              "Lunar/Total Solar Eclipse");

    // "Next Eclipse" and "Previous Eclipse" wrap around; an empty table stays at 0.
    EclipseTable t;
    std::vector<int> steps = {Next_Eclipse(t), Previous_Eclipse(t)};
    t.Count = 3;
    for (int k = 0; k < 3; ++k) steps.push_back(Next_Eclipse(t));
    for (int k = 0; k < 2; ++k) steps.push_back(Previous_Eclipse(t));
    EXPECT_EQ(steps, (std::vector<int>{0, 0, 1, 2, 0, 2, 1}));
}

TEST(EclipseGeometry, CircleIntersection) {
    double atEarth = 1.0, atShadow = 1.0;
    ASSERT_TRUE(Circle_Intersection(6000.0, 3000.0, atEarth, atShadow));
    const double E = eclipse::EarthPlusAirSingle;
    // The crossing point seen from both centres: the same height above the line of centres,
    // and the two feet add up to d (to the rounding of the Earth's radius to 32 bits).
    EXPECT_NEAR(E * std::sin(atEarth), 3000.0 * std::sin(atShadow), 1e-3);
    EXPECT_NEAR(E * std::cos(atEarth) + 3000.0 * std::cos(atShadow), 6000.0, 1e-3);
    // Apart, or one inside the other: no crossing, and zeros.
    EXPECT_FALSE(Circle_Intersection(20000.0, 3000.0, atEarth, atShadow));
    EXPECT_EQ(atEarth, 0.0);
    EXPECT_EQ(atShadow, 0.0);
    EXPECT_FALSE(Circle_Intersection(1000.0, 100.0, atEarth, atShadow));
    EXPECT_FALSE(Circle_Intersection(0.0, 100.0, atEarth, atShadow));
}

TEST(EclipseGeometry, InterpolatedInstantsAcrossTheWrap) {
    // A minute of 2024 April 8 at which the Sun's GHA passes 0.
    double t = 8864.0;
    for (int i = 0; i < 1440; ++i, t += kMinute) {
        const EclipseInstant a = Eclipse_Instant(t, kAccuracyReduced);
        const EclipseInstant b = Eclipse_Instant(t + kMinute, kAccuracyReduced);
        if (b.Sun.GHA > a.Sun.GHA) continue;
        const EclipseInstant mid = Interpolate_Instant(a, b, 0.5);
        const EclipseInstant direct = Eclipse_Instant(t + 0.5 * kMinute, kAccuracyReduced);
        EXPECT_NEAR(mid.Sun.GHA, direct.Sun.GHA, 1e-7);
        EXPECT_NEAR(mid.Moon.RA, direct.Moon.RA, 1e-7);
        EXPECT_NEAR(mid.AxisDistance, direct.AxisDistance, 0.05);
        EXPECT_NEAR(mid.Time, t + 0.5 * kMinute, 1e-12);
        return;
    }
    FAIL() << "no wrap of the Sun's GHA found";
}

TEST(EclipseGeometry, WindowPlacesAndRefinedPhasesStayWithTheFullSeries) {
    for (double centre : {-913000.0, 8864.26, 200000.0}) {  // 500 BC, 2024, AD 2547
        const EclipseWindow window(centre);
        for (double h : {-6.0, -3.0, 0.0, 2.0, 6.0}) {
            const double t = centre + h / 24.0;
            BodyPlace sun, moon;
            window.Places(t, sun, moon);
            const EarthFrame f = Calc_EarthFrame(t);
            const BodyPlace s = Calc_Sun(kAccuracyFull, f), m = Calc_Moon(kAccuracyFull, f);
            for (const auto& [ours, full] : {std::pair{&sun, &s}, std::pair{&moon, &m}}) {
                EXPECT_NEAR(std::remainder(ours->RA - full->RA, 2.0 * M_PI), 0.0, 0.05 * kArcsec)
                    << centre << " " << h;
                EXPECT_NEAR(ours->Dec, full->Dec, 0.05 * kArcsec) << centre << " " << h;
            }
            EXPECT_NEAR(moon.Distance, m.Distance, 0.05);
        }
    }
    // The secant refinement converges from seven hours out onto the series' moment.
    for (int phase = 0; phase < 4; ++phase) {
        const double series = Phase_Before(9000.0, 69.0 / 3.15576e9, static_cast<MoonPhase>(phase));
        const double refined = Refine_Phase(series + 0.3, phase);
        EXPECT_LT(std::fabs(Phase_Error(refined, phase)), 1.0 * kArcsec);
        EXPECT_NEAR(refined, series, 30.0 / 86400.0);
    }
}

}  // namespace
}  // namespace kelmoran
