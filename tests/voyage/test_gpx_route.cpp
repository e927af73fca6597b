// Routes of chart plotters: GPX files written by hand read into the plan, a plan written
// out and read back, and the message of a file that cannot be used.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>

#include "shell/Ui_Screens.h"
#include "voyage/Gpx_Route.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Voyage_File.h"
#include "voyage/voyage_test.h"

namespace kelmoran {
namespace {

std::string Data(const char* name) {
    return std::string(KELMORAN_SOURCE_DIR) + "/tests/voyage/data/gpx/" + name;
}

constexpr double kMinute = 1.0 / 3437.74677078494;  // one minute of arc in radians

TEST(GpxRoute, ARouteWithNamesAndTimes) {
    VoyagePlan plan;
    std::string message;
    ASSERT_TRUE(Import_Gpx(Data("route.gpx"), plan, message)) << message;
    ASSERT_EQ(plan.Last_Valid_Row(), 2);  // the route, not the way point beside it
    EXPECT_EQ(plan.Way_Points[0].ID, "Hurst ");
    EXPECT_EQ(plan.Way_Points[0].Description, "Leave at high water");
    EXPECT_EQ(plan.Way_Points[1].ID, "NDLS");
    EXPECT_NEAR(plan.Way_Points[2].Lat, 49.66 * voyage_test::kDeg, 1e-12);
    // Departure and arrival as the plotter had them.
    EXPECT_NEAR(plan.Plan_Start(), 9680.75, 1e-6);  // 2026-07-04 06:00 UT
    EXPECT_NEAR(plan.Way_Points[1].Time, 9680.75 + 2 / 24.0, 1.0 / 1440);
    EXPECT_NEAR(plan.Way_Points[2].Time, 9680.75 + 11 / 24.0, 1.0 / 1440);

    // A track's points in both segments stand in for a route.
    ASSERT_TRUE(Import_Gpx(Data("track.gpx"), plan, message));
    EXPECT_EQ(plan.Last_Valid_Row(), 2);
    EXPECT_EQ(plan.Way_Points[2].ID, "Offing");
    EXPECT_EQ(plan.Way_Points[0].ID, "");  // no name, no ID

    ASSERT_TRUE(Import_Gpx(Data("points500.gpx"), plan, message));
    EXPECT_EQ(plan.Last_Valid_Row(), 499);
    EXPECT_EQ(plan.Way_Points[499].ID, "P500");
}

TEST(GpxRoute, FilesThatCannotBeUsedLeaveThePlanAlone) {
    VoyagePlan plan = voyage_test::Plan_Of({{10, 10}, {11, 12}});
    const std::vector<unsigned char> before = Encode_Plan(plan);
    std::string message;
    const std::pair<const char*, const char*> cases[] = {
        {"damaged.gpx", gpx_text::NotGpx},
        {"noroute.gpx", gpx_text::NoRoute},
        {"../wmm_test_values.csv", gpx_text::NotGpx},
        {"missing.gpx", gpx_text::NotRead}};
    for (const auto& [file, words] : cases) {
        EXPECT_FALSE(Import_Gpx(Data(file), plan, message)) << file;
        EXPECT_EQ(message, words) << file;
        EXPECT_EQ(Encode_Plan(plan), before) << file;
    }
}

TEST(GpxRoute, ExportedAndReadBack) {
    VoyagePlan plan = voyage_test::Plan_Of({{50.0123, -5.2}, {48.5, -10.25}, {-33.9, 18.4}});
    plan.Way_Points[0].ID = "LIZ";
    plan.Way_Points[1].ID = "12";
    plan.Way_Points[1].Description = "Off the shelf <200 m> & west";
    plan.Way_Points[1].Speed = 7.5f;
    plan.Recalc_Plan();
    const std::string path = std::string(KELMORAN_BINARY_DIR) + "/voyage/export.gpx";
    std::string message;
    ASSERT_TRUE(Export_Gpx(path, plan, message)) << message;
    VoyagePlan back;
    ASSERT_TRUE(Import_Gpx(path, back, message)) << message;
    for (int r = 0; r < 3; ++r) {
        const auto& a = plan.Way_Points[static_cast<size_t>(r)];
        const auto& b = back.Way_Points[static_cast<size_t>(r)];
        EXPECT_NEAR(a.Lat, b.Lat, 0.0001 * kMinute);
        EXPECT_NEAR(a.Long, b.Long, 0.0001 * kMinute);
        EXPECT_EQ(a.ID, b.ID);
        EXPECT_EQ(a.Description, b.Description);
        EXPECT_NEAR(a.Time, b.Time, 1.0 / 1440);
    }
    EXPECT_NEAR(back.Way_Points[1].Speed, 7.5f, 0.01);
    EXPECT_FALSE(Export_Gpx(path, VoyagePlan{}, message));
}

TEST(GpxRoute, TheMessageOfADamagedFileOnTheVoyageScreen) {
    fMain w;
    w.show();
    Voyage = voyage_test::Plan_Of({{10, 10}});
    w.Window_Action(5)->trigger();
    ASSERT_TRUE(w.Gpx_Import_Action()->isVisible());
    w.Plan_Files().Choose_File = [](bool, const std::string&, const std::string& filter) {
        EXPECT_EQ(filter, gpx_text::Filter);
        return Data("damaged.gpx");
    };
    // The box is looked at while it is up, then closed.
    QString shown;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (QWidget* box = QApplication::activeModalWidget()) {
            shown = box->windowTitle();
            ui_test::Save_Png(box->grab().toImage(), "voyage", "gpx_import_message");
            box->close();
        }
    });
    timer.start(50);
    w.Gpx_Import_Action()->trigger();
    EXPECT_EQ(shown, gpx_text::ImportTitle);
    EXPECT_EQ(Voyage.Last_Valid_Row(), 0);
}

}  // namespace
}  // namespace kelmoran
