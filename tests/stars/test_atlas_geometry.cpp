// The atlas maps: their edge cases, the inverse map, zoom about a point and the drag.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "ephemeris/Units.h"
#include "stars/M_Constellations.h"
#include "stars/M_Plotting.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"

namespace kelmoran {
namespace {

const char* const kViews[] = {"Equatorial", "VisibleStars", "NorthStars", "SouthStars"};

class AtlasGeometry : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        Load_Star_Tables();
        Compute_Star_Places(kMag6End, 9000.25);
    }
    void SetUp() override {
        plot.Set_Picture(800, 560, 8);
        plot.View.BackgroundLimit = kMag6End;
        plot.View.Latitude = 0.8;
        plot.View.LST = 1.3;
    }
    // The pixel of a place, or (0, 0).
    std::pair<int32_t, int32_t> Pixel(double ra, double dec) const {
        int32_t x = 0, y = 0;
        plot.Map(ra, dec, x, y);
        return {x, y};
    }
    AtlasPlot plot;
};

TEST_F(AtlasGeometry, EdgeCasesOfTheMaps) {
    // The horizon takes no refraction; just above it does, and more than higher up.
    EXPECT_EQ(Refracted_Altitude(0.0), 0.0);
    EXPECT_EQ(Refracted_Altitude(-0.01), -0.01);
    EXPECT_GT(Refracted_Altitude(1e-6) - 1e-6, Refracted_Altitude(0.5) - 0.5);

    // A pole plots at the centre of its polar view, and not at all in the other.
    plot.Switch_Projection("NorthStars");
    EXPECT_EQ(Pixel(1.0, kHalfPi), std::make_pair(plot.View.CentreX, plot.View.CentreY));
    EXPECT_EQ(Pixel(1.0, -0.2), std::make_pair(0, 0));
    plot.Switch_Projection("SouthStars");
    EXPECT_EQ(Pixel(4.0, -kHalfPi), std::make_pair(plot.View.CentreX, plot.View.CentreY));

    // RA 0 lies π / ScaleX right of the centre when CentreRA is π.
    plot.Switch_Projection("Equatorial");
    ASSERT_FLOAT_EQ(plot.View.CentreRA, 3.1415927f);
    const auto [x, y] = Pixel(0.0, 0.0);
    EXPECT_NEAR(x - plot.View.BitmapWidth / 2, kPi / plot.View.ScaleX, 0.5);
    EXPECT_EQ(y, plot.View.BitmapHeight / 2);

    // Labels take room once: a second one over the first gives way, one beside it does not.
    LabelRoom room(600, 400);
    EXPECT_TRUE(room.Take({100, 100, 160, 112}));
    EXPECT_FALSE(room.Take({150, 105, 200, 117}));
    EXPECT_TRUE(room.Take({162, 100, 220, 112}));

    // The zoom caps at 2048 and floors at 1, in both kinds of view.
    for (const char* view : {"Equatorial", "NorthStars"}) {
        plot.Switch_Projection(view);
        for (int i = 0; i < 14; ++i) plot.Zoom_At(1, plot.View.BitmapWidth / 2, plot.View.BitmapHeight / 2);
        EXPECT_EQ(plot.View.Zoom, 2048) << view;
        for (int i = 0; i < 14; ++i) plot.Zoom_At(2, plot.View.BitmapWidth / 2, plot.View.BitmapHeight / 2);
        EXPECT_EQ(plot.View.Zoom, 1) << view;
    }
}

TEST_F(AtlasGeometry, ScreenToSkyInvertsEveryMap) {
    for (const char* view : kViews) {
        for (int zoom : {1, 8}) {
            plot.Switch_Projection(view);
            for (int z = 1; z < zoom; z *= 2) plot.Zoom_At(1, plot.View.BitmapWidth / 2 + 40, plot.View.BitmapHeight / 2 - 30);
            int checked = 0;
            for (size_t s = 12; s < plot.Points.size(); ++s) {
                const PlotPoint& p = plot.Points[s];
                if (p.X == 0 && p.Y == 0) continue;
                const SkyPoint sky = plot.Screen_To_Sky(p.X, p.Y);
                // A pixel on the edge of the band of declination may fall just outside it.
                const double edge = 2.0 * plot.View.ScaleY;
                if (plot.View.IsEquatorial && (sky.Dec < plot.View.DecMin + edge || sky.Dec > plot.View.DecMax - edge)) continue;
                ASSERT_TRUE(sky.OnMap) << view << " star " << s;
                const auto [x, y] = Pixel(sky.RA, sky.Dec);
                EXPECT_LE(std::abs(x - p.X), 1) << view << " zoom " << zoom << " star " << s;
                EXPECT_LE(std::abs(y - p.Y), 1) << view << " zoom " << zoom << " star " << s;
                ++checked;
            }
            EXPECT_GT(checked, zoom == 1 ? 1000 : 5) << view;
        }
    }
}

TEST_F(AtlasGeometry, ZoomKeepsThePointUnderTheMouse) {
    for (const char* view : kViews) {
        plot.Switch_Projection(view);
        // A point of the visible third away from the centre, zoomed in three times and out once.
        const int32_t mx = plot.View.BitmapWidth / 2 + 90, my = plot.View.BitmapHeight / 2 + 50;
        const SkyPoint sky = plot.Screen_To_Sky(mx, my);
        for (int kind : {1, 1, 1, 2}) {
            plot.Zoom_At(kind, mx, my);
            const auto [x, y] = Pixel(sky.RA, sky.Dec);
            EXPECT_LE(std::abs(x - mx), 1) << view << " zoom " << plot.View.Zoom;
            EXPECT_LE(std::abs(y - my), 1) << view << " zoom " << plot.View.Zoom;
        }
    }
}

TEST_F(AtlasGeometry, DragMovesTheWindowUntilItLeavesTheThird) {
    for (const char* view : {"Equatorial", "NorthStars", "VisibleStars"}) {
        plot.Switch_Projection(view);
        plot.Zoom_At(1, plot.View.BitmapWidth / 2, plot.View.BitmapHeight / 2);
        plot.Zoom_At(1, plot.View.BitmapWidth / 2, plot.View.BitmapHeight / 2);
        const int32_t third = plot.View.BitmapWidth / 3;
        // A sky point at a spot of the window, and where that spot is in the bitmap.
        const int32_t qx = 300, qy = 200;
        const SkyPoint sky = plot.Screen_To_Sky(plot.View.ScrollX + qx, plot.View.ScrollY + qy);
        const int32_t plots = plot.Plots;
        EXPECT_FALSE(plot.Drag(40, 25));
        EXPECT_EQ(plot.Plots, plots) << view;
        EXPECT_EQ(plot.View.ScrollX, third - 40);
        // Beyond the third: recentred and replotted, the sky still follows the mouse.
        EXPECT_TRUE(plot.Drag(third, 0));
        EXPECT_EQ(plot.Plots, plots + 1) << view;
        EXPECT_EQ(plot.View.ScrollX, third);
        const auto [x, y] = Pixel(sky.RA, sky.Dec);
        EXPECT_LE(std::abs(x - (third + qx + 40 + third)), 1) << view;
        EXPECT_LE(std::abs(y - (plot.View.ScrollY + qy + 25)), 1) << view;
    }
}

TEST_F(AtlasGeometry, ConstellationFiguresAndLabels) {
    Compute_Star_Places(Highest_Figure_Star(), 9000.25);
    plot.Switch_Projection("Equatorial");
    const auto lines = Constellation_Line_Segments(plot);
    // Every figure line is on the sky once at zoom 1; those across the wrap run over the
    // edge instead of across the whole map.
    EXPECT_EQ(lines.size(), Constellation_Lines().size());
    const double wrap = plot.Wrap_Width();
    int32_t overEdge = 0;
    for (const Segment& s : lines) {
        EXPECT_LE(std::abs(s.X2 - s.X1), wrap / 2);
        overEdge += std::abs(s.X2 - plot.View.BitmapWidth / 2) > wrap / 2 ? 1 : 0;
    }
    EXPECT_GT(overEdge, 0);
    EXPECT_GT(Constellation_Boundary_Segments(plot, 9000.25).size(), 5000u);

    // Abbreviations below zoom 4, full names from it; Serpens in two parts.
    plot.Switch_Projection("NorthStars");
    auto labels = Constellation_Label_Spots(plot);
    auto has = [&](const std::string& t) {
        return std::any_of(labels.begin(), labels.end(), [&](const LabelSpot& l) { return l.Text == t; });
    };
    EXPECT_TRUE(has("UMi"));
    EXPECT_TRUE(has("Ser"));
    for (int i = 0; i < 2; ++i) plot.Zoom_At(1, plot.View.CentreX, plot.View.CentreY);
    labels = Constellation_Label_Spots(plot);
    EXPECT_TRUE(has("Ursa Minor"));
    EXPECT_FALSE(has("UMi"));
}

}  // namespace
}  // namespace kelmoran
