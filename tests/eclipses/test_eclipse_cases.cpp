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

TEST(EclipseFill, KindTextsOfTheYears) {
    EclipseTable t;
    Fill_Lunation_Year(2023, 0, t);
    // A hybrid, a penumbral lunar, an annular with the axis on the Earth, a partial lunar.
    EXPECT_EQ(Kinds(t), (std::vector<std::string>{"Hybrid Solar Eclipse", "Penumbral Lunar Eclipse",
                                                  "Total Annular Eclipse", "Lunar Eclipse"}));
    // 2018: three partial solar eclipses that only graze the Earth, two total lunar ones.
    // The February one has the Moon far enough for its umbral cone to end short of the
    // Earth, and its kind keeps the annular word.
    Fill_Lunation_Year(2018, 0, t);
    ASSERT_EQ(t.Count, 5);
    EXPECT_EQ(Kinds(t), (std::vector<std::string>{"Lunar Eclipse", "Partial Annular Eclipse",
                                                  "Partial Solar Eclipse", "Lunar Eclipse",
                                                  "Partial Solar Eclipse"}));
    const double publishedGamma[5] = {0.0, 1.2117, 1.3542, 0.0, 1.1476};
    for (int i = 0; i < t.Count; ++i) {
        if (t.Rows[i].IsNewMoon == 0) continue;
        EXPECT_NEAR(t.Rows[i].Gamma, publishedGamma[i], 0.001) << i;
        EXPECT_EQ(t.Rows[i].PartialStart.Time, 0.0);  // the umbra misses the Earth
        EXPECT_EQ(t.Rows[i].TotalStart.Time, 0.0);
        EXPECT_LT(t.Rows[i].FirstContact.Time, t.Rows[i].Maximum.Time);
        EXPECT_GT(t.Rows[i].LastContact.Time, t.Rows[i].Maximum.Time);
    }
    EXPECT_EQ(t.Speed[0].Kind, "Lunar Eclipse");
    EXPECT_NE(t.Rows[0].TotalStart.Time, 0.0);
    EXPECT_EQ(t.Rows[0].DateLabel, "31st of January 2018");
}

TEST(EclipseFill, AnnularCentralKeepsAPositiveUmbra) {
    EclipseTable t;
    Fill_Lunation_Year(2023, 0, t);
    const int i = 2;  // 2023 October 14
    ASSERT_EQ(t.Speed[i].Kind, "Total Annular Eclipse");
    const EclipseInstant& m = t.Instants[i][kInstantMaximum];
    EXPECT_LT(m.UmbraVertex, m.Moon.Distance - eclipse::EarthRadius);  // the cone ends short
    EXPECT_GT(m.UmbraRadius, 0.0);
    EXPECT_GT(t.Rows[i].Maximum.UmbraRadius, 0.0);
    EXPECT_NEAR(t.Rows[i].Gamma, 0.3753, 0.002);  // published Gamma 0.3753
    EXPECT_NE(t.Speed[i].Annular, 0);
    // The whole antumbra on the disc: every contact happens, in time order.
    const EclipseRow& r = t.Rows[i];
    const double order[7] = {r.FirstContact.Time, r.PartialStart.Time, r.TotalStart.Time,
                             r.Maximum.Time,      r.TotalEnd.Time,     r.PartialEnd.Time,
                             r.LastContact.Time};
    for (int k = 1; k < 7; ++k) EXPECT_LT(order[k - 1], order[k]);
    EXPECT_EQ(r.DateLabel, "14th of October 2023");
    EXPECT_EQ(r.IsNewMoon, -1);
    // The contacts kept as instants sit on their circles.
    EXPECT_NEAR(t.Instants[i][kInstantPenIn].AxisDistance,
                t.Instants[i][kInstantPenIn].PenumbraRadius + eclipse::EarthRadius, 5.0);
    EXPECT_NEAR(t.Instants[i][kInstantTotalOut].AxisDistance,
                eclipse::EarthRadius - t.Instants[i][kInstantTotalOut].UmbraRadius, 5.0);
}

TEST(EclipseFill, PenumbralLunarEclipseHasNoUmbralTimes) {
    EclipseTable t;
    Fill_Lunation_Year(2023, 0, t);
    const EclipseRow& r = t.Rows[1];  // 2023 May 5
    ASSERT_EQ(t.Speed[1].Kind, "Penumbral Lunar Eclipse");
    EXPECT_EQ(r.PartialStart.Time, 0.0);
    EXPECT_EQ(r.PartialEnd.Time, 0.0);
    EXPECT_EQ(r.TotalStart.Time, 0.0);
    EXPECT_EQ(r.TotalEnd.Time, 0.0);
    EXPECT_LT(r.FirstContact.Time, r.Maximum.Time);
    EXPECT_GT(r.LastContact.Time, r.Maximum.Time);
    EXPECT_EQ(r.IsNewMoon, 0);
    // The partial lunar eclipse of 2023 October 28 keeps its total times zero.
    EXPECT_NE(t.Rows[3].PartialStart.Time, 0.0);
    EXPECT_EQ(t.Rows[3].TotalStart.Time, 0.0);
    EXPECT_EQ(t.Rows[3].TotalEnd.Time, 0.0);
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
    // The Moon sits on the circle of each contact.
    const EclipseEvent& in = r->TotalStart;
    EclipseEvent check = in;
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
        // The refined moment against the Swiss Ephemeris's elongation, in TT.
        const double jdTT = p.UT + kJ2000 + Get_DeltaT(DeltaT_Year(p.UT)) / 86400.0;
        double sun[6], moon[6];
        char err[256];
        swe_calc(jdTT, SE_SUN, SEFLG_SWIEPH, sun, err);
        swe_calc(jdTT, SE_MOON, SEFLG_SWIEPH, moon, err);
        const double e = std::remainder(moon[0] - sun[0] - 90.0 * p.Phase, 360.0);
        worst = std::max(worst, std::fabs(e / 12.19) * 1440.0);  // minutes
        EXPECT_EQ(p.Eclipse.empty(), p.EclipseRow < 0);
    }
    swe_close();
    // Rounded to the minute: within a minute of the true phase.
    EXPECT_LT(worst, 1.0);
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
        const std::vector<LunationPhase> east = Fill_Lunation_Year(year, bias, t);
        EXPECT_LT(east.back().UT, ut);  // no cell this year
        const std::vector<LunationPhase> next = Fill_Lunation_Year(year + 1, bias, t);
        EXPECT_EQ(next.front().Phase, 0);  // but the first of the next year
        EXPECT_EQ(next.front().UT, ut);
        EXPECT_EQ(next.front().Month, 1);
        EXPECT_EQ(next.front().Day, 1);
    }
    EXPECT_EQ(found, 1);
}

TEST(EclipseFill, MinuteRoundingIsToEvenAtHalves) {
    EXPECT_EQ(Zone_Minute(10.5 / 1440.0, 0) * 1440.0, 10.0);
    EXPECT_EQ(Zone_Minute(11.5 / 1440.0, 0) * 1440.0, 12.0);
    EXPECT_EQ(Zone_Minute(10.5 / 1440.0, 60) * 1440.0, 70.0);
    EXPECT_NEAR(Zone_Minute(10.51 / 1440.0, 0) * 1440.0, 11.0, 1e-9);
}

TEST(EclipseTexts, DateLabels) {
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
}

TEST(EclipseTexts, NextAndPreviousWrapAround) {
    EclipseTable t;
    EXPECT_EQ(Next_Eclipse(t), 0);
    EXPECT_EQ(Previous_Eclipse(t), 0);
    t.Count = 3;
    EXPECT_EQ(Next_Eclipse(t), 1);
    EXPECT_EQ(Next_Eclipse(t), 2);
    EXPECT_EQ(Next_Eclipse(t), 0);
    EXPECT_EQ(Previous_Eclipse(t), 2);
    EXPECT_EQ(Previous_Eclipse(t), 1);
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

TEST(EclipseGeometry, WindowPlacesStayWithTheFullSeries) {
    for (double centre : {-913000.0, 8864.26, 200000.0}) {  // 500 BC, 2024, AD 2547
        const EclipseWindow window(centre);
        for (double h : {-6.0, -3.0, 0.0, 2.0, 6.0}) {
            const double t = centre + h / 24.0;
            BodyPlace sun, moon;
            window.Places(t, sun, moon);
            const EarthFrame f = Calc_EarthFrame(t);
            const BodyPlace s = Calc_Sun(kAccuracyFull, f), m = Calc_Moon(kAccuracyFull, f);
            EXPECT_NEAR(std::remainder(sun.RA - s.RA, 6.283185307179586), 0.0, 0.05 * kArcsec);
            EXPECT_NEAR(sun.Dec, s.Dec, 0.05 * kArcsec);
            EXPECT_NEAR(std::remainder(moon.RA - m.RA, 6.283185307179586), 0.0, 0.05 * kArcsec)
                << centre << " " << h;
            EXPECT_NEAR(moon.Dec, m.Dec, 0.05 * kArcsec) << centre << " " << h;
            EXPECT_NEAR(moon.Distance, m.Distance, 0.05);
        }
    }
}

TEST(EclipseGeometry, PhaseRefinementConverges) {
    for (int phase = 0; phase < 4; ++phase) {
        const double series = Phase_Before(9000.0, 69.0 / 3.15576e9, static_cast<MoonPhase>(phase));
        const double refined = Refine_Phase(series + 0.3, phase);  // seven hours out
        EXPECT_LT(std::fabs(Phase_Error(refined, phase)), 1.0 * kArcsec);
        EXPECT_NEAR(refined, series, 30.0 / 86400.0);
    }
}

}  // namespace
}  // namespace kelmoran
