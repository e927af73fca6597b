// The world map of the eclipse window: its transform, the coastline table, the day and night
// edge, the shadows' outlines, and the model of the window's panel.
#include <gtest/gtest.h>

#include <cmath>

#include "eclipses/Eclipse_Window_Model.h"
#include "eclipses/M_Eclipse_Map.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"

namespace kelmoran {
namespace {

using namespace eclipse_map;

TEST(EclipseMap, CornersWrapAndInverse) {
    EXPECT_NEAR(Map_Y(TopLatitude), 0.0, 0.02);
    EXPECT_NEAR(Map_Y(FootLatitude), Height, 0.02);
    // The left edge's longitude lies west of the wrap: it shows at the right edge, where
    // the map closes on itself; the wrap's own longitude is just inside the left edge.
    EXPECT_NEAR(Map_X(LeftLongitude), Width, 1e-3);
    EXPECT_NEAR(Map_X(WrapWest), (WrapWest - LeftLongitude) * XPerDegree, 1e-3);
    EXPECT_LT(Map_X(WrapWest), 1.5);
    EXPECT_NEAR(Map_Y(0.0), YOfEquator, 1e-9);
    // 191.6 E is past the eastern wrap: drawn as 168.4 W, at the map's left.
    EXPECT_NEAR(Map_X(191.6), Map_X(191.6 - 360.0), 1e-9);
    EXPECT_LT(Map_X(191.6), 20.0);
    EXPECT_GT(Map_X(191.4), Width - 20.0);
    EXPECT_NEAR(Map_X(-168.6), Map_X(191.4), 1e-9);
    EXPECT_EQ(Screen_Map_X(0.0, 2.0f), 1330);
    for (double lat : {-70.0, -30.0, 12.5, 60.0}) EXPECT_NEAR(Map_Latitude(Map_Y(lat)), lat, 1e-4);
}

TEST(EclipseMap, CoastlineTableHoldsTheContinentsInPlace) {
    EXPECT_GT(Coastline_Ring_Count(), 1000);
    EXPECT_GT(Coastline_Point_Count(), 50000);
    // Every ring reaches the map; no outline runs off far beyond a turn of longitude (a
    // ring left wrapped at the 180th meridian would span the map).
    double widest = 0.0;
    for (const MapRing& r : Coastline_Rings()) {
        double lo = r[0].X, hi = r[0].X;
        for (const MapPoint& p : r) {
            lo = std::min(lo, p.X);
            hi = std::max(hi, p.X);
        }
        EXPECT_TRUE(hi >= 0.0 && lo <= Width);
        widest = std::max(widest, hi - lo);
    }
    EXPECT_LE(widest, Width + 1.0);  // Antarctica, once round
}

// Whether the map point lies inside any of `rings` (even-odd on each ring).
bool Inside(const std::vector<MapRing>& rings, MapPoint q) {
    for (const MapRing& r : rings) {
        bool in = false;
        for (size_t i = 0, j = r.size() - 1; i < r.size(); j = i++)
            if ((r[i].Y > q.Y) != (r[j].Y > q.Y) &&
                q.X < (r[j].X - r[i].X) * (q.Y - r[i].Y) / (r[j].Y - r[i].Y) + r[i].X)
                in = !in;
        if (in) return true;
    }
    return false;
}

TEST(EclipseMap, DayNightEdgeAtAnEquinoxRunsThroughThePoles) {
    // The Sun on the equator over 30 E: the geometric edge is the meridians 60 W and 120 E.
    const double gha = -30.0 * kOneDegree + kTwoPi;
    const std::vector<MapRing> night = Below_Horizon(0.0, gha, 0.0, 10);
    for (double lat = FootLatitude + 0.5; lat < TopLatitude; lat += 7.0) {
        for (double edge : {-60.0, 120.0}) {
            const double x = Map_X(edge), y = Map_Y(lat);
            const bool east = Inside(night, {x + 1.0, y}), west = Inside(night, {x - 1.0, y});
            EXPECT_NE(east, west) << lat << " " << edge;  // the edge within a pixel
        }
        EXPECT_TRUE(Inside(night, {Map_X(-150.0), Map_Y(lat)}));
        EXPECT_FALSE(Inside(night, {Map_X(30.0), Map_Y(lat)}));
    }
    // In June the Arctic has no night and the Antarctic no day.
    const std::vector<MapRing> june = Below_Horizon(23.4 * kOneDegree, 1.0, Day_Night_Altitude(1.0));
    for (double lon = -160.0; lon < 190.0; lon += 20.0) {
        EXPECT_FALSE(Inside(june, {Map_X(lon), Map_Y(75.0)})) << lon;
        EXPECT_TRUE(Inside(june, {Map_X(lon), Map_Y(-74.0)})) << lon;
    }
    // The edge's altitude: the Sun's semi-diameter, refraction 34.5' and 25.952".
    EXPECT_NEAR(Day_Night_Altitude(1.0) * kArcminPerRadian, -(16.0 + 34.5 + 0.43), 0.05);
}

TEST(EclipseMap, ShadowOutlinesOfTheTotalEclipseOf2024) {
    EclipseTable table;
    Fill_Lunation_Year(2024, 0, table);
    const auto& rows = table.Rows;
    int april = -1;
    for (int i = 0; i < table.Count; ++i)
        if (Is_Solar(rows[i]) && std::fabs(rows[i].PhaseJD - 8864.3) < 2.0) april = i;
    ASSERT_GE(april, 0);
    const EclipseInstant& max = table.Instants[april][kInstantMaximum];
    // The umbra near 25.3 N 104.1 W at greatest eclipse, about 200 km across; the penumbra
    // about 7000 km across; the sub-solar point near 7.6 N 94 W.
    const SolarMap m = Solar_Minute_Map(max);
    ASSERT_FALSE(m.Umbra.empty());
    EXPECT_TRUE(Inside(m.Umbra, {Map_X(-104.1), Map_Y(25.3)}));
    EXPECT_FALSE(Inside(m.Umbra, {Map_X(-104.1), Map_Y(27.5)}));
    EXPECT_TRUE(Inside(m.Penumbra, {Map_X(-80.0), Map_Y(40.0)}));
    EXPECT_FALSE(Inside(m.Penumbra, {Map_X(10.0), Map_Y(50.0)}));
    EXPECT_NEAR(m.SubSolar.X, Map_X(-94.1), 4.0);
    EXPECT_NEAR(m.SubSolar.Y, Map_Y(7.6), 4.0);

    // The panel: the phases in order with their times, all of them for this total eclipse.
    const std::vector<EclipsePanelLine> lines = Eclipse_Panel_Lines(table, april, 0);
    ASSERT_GE(lines.size(), 6u);
    EXPECT_EQ(lines[0].Label, "Solar Eclipse");
    EXPECT_EQ(lines[0].Time, "8th of April 2024");
    EXPECT_EQ(lines[3].Label, "Maximim Eclipse");
    EXPECT_EQ(lines[3].Time, "18:17");
    for (int k = 1; k <= 5; ++k) EXPECT_EQ(lines[k].Time.size(), 5u) << lines[k].Label;
    // The Moon Phases cells: the New Moon of April and the Eclipses column find the row.
    EXPECT_EQ(Eclipse_Row_At_Cell(table, 4, 1, 0), april);
    EXPECT_EQ(Eclipse_Row_At_Cell(table, 4, 9, 0), april);
    EXPECT_EQ(Eclipse_Row_At_Cell(table, 4, 5, 0), -1);  // no second New Moon in April
    EXPECT_EQ(Eclipse_Row_At_Cell(table, 4, 2, 0), -1);  // a quarter holds no eclipse
}

TEST(EclipseMap, PenumbralLunarEclipseLeavesItsUmbralPhasesBlank) {
    EclipseTable table;
    Fill_Lunation_Year(2024, 0, table);
    ASSERT_GT(table.Count, 0);
    // March 25: penumbral; the plan puts the Moon outside the umbra all through.
    int march = -1;
    for (int i = 0; i < table.Count; ++i)
        if (!Is_Solar(table.Rows[i]) && JD_To_Date(table.Rows[i].PhaseJD).wMonth == 3) march = i;
    ASSERT_GE(march, 0);
    const std::vector<EclipsePanelLine> lines = Eclipse_Panel_Lines(table, march, 60);
    EXPECT_EQ(lines[1].Label, "Penumbral phase start:");
    EXPECT_FALSE(lines[1].Time.empty());
    EXPECT_TRUE(lines[2].Time.empty());
    EXPECT_TRUE(lines[4].Time.empty());
    const LunarPlan plan = Lunar_Eclipse_Plan(table.Rows[march], 60);
    ASSERT_EQ(plan.Moons.size(), 3u);
    for (const LunarPlanMoon& m : plan.Moons)
        EXPECT_GT(std::hypot(m.X, m.Y) + 1e-9, plan.UmbraRadius + plan.MoonRadius) << m.Label;
    EXPECT_EQ(plan.Moons[1].Label.rfind("Max ", 0), 0u);
    // "Select Time" keeps within the eclipse.
    const EclipseMinutes mm = Eclipse_Minutes(table, march);
    EXPECT_EQ(Step_Eclipse_Minute(mm, mm.Last, 5), mm.Last);
    EXPECT_NEAR(Step_Eclipse_Minute(mm, mm.Start, -1), mm.Start - 1.0 / 1440.0, 1e-9);
}

}  // namespace
}  // namespace kelmoran
