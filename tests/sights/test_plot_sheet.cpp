// The plotting sheet's geometry, the table's Tab order and the words of a plan insert.
#include <gtest/gtest.h>

#include <cmath>

#include "ephemeris/Units.h"
#include "sights/Plan_Insert.h"
#include "sights/PlotSheet.h"
#include "sights/Sights_Table.h"

namespace kelmoran {
namespace {

TEST(PlotSheet, GraticuleStepsAndScaleLabelsByTheMinutesOfAHundredPixels) {
    // Minutes of arc per 100 pixels at the bounds of each step, and just past them.
    const std::vector<std::pair<double, double>> cases = {
        {0.249, 0.1}, {0.26, 0.5}, {0.749, 0.5}, {1.49, 1},  {1.6, 5},
        {7.49, 5},    {12.49, 10}, {44.9, 30},   {45.1, 60}, {400, 60}};
    for (auto [minutes, step] : cases) {
        const float scale = static_cast<float>(100.0 / 60.0 / minutes);
        EXPECT_EQ(Calc_Graticule_Scale(scale).Step, step) << minutes;
    }
    // Labels on every step when the steps stand 70 pixels apart or more.
    EXPECT_EQ(Calc_Graticule_Scale(100.0f / 60.0f).Label_Interval, 1);  // 1' in 100 px
    EXPECT_EQ(Calc_Graticule_Scale(100.0f / 60.0f / 1.45f).Label_Interval, 2);
    EXPECT_EQ(Scale_Label(0, 0.5), "0");
    EXPECT_EQ(Scale_Label(1.5, 0.5), "1'.5");
    EXPECT_EQ(Scale_Label(20, 10), "20'");
    EXPECT_EQ(Scale_Label(60, 60), "1°");
}

// Whether the line through `foot` with direction (dx, dy) passes through `box`.
bool Line_Hits(const Rect& box, Sheet_Point foot, double dx, double dy) {
    for (double t = -400; t <= 400; t += 0.5)
        if (box.Contains(static_cast<int>(std::lround(foot.x + t * dx)),
                         static_cast<int>(std::lround(foot.y + t * dy))))
            return true;
    return false;
}

TEST(PlotSheet, LabelsKeepClearOfTheirLinesInEverySector) {
    const Sheet_Point foot{300, 300};
    for (int deg = 0; deg < 360; deg += 5) {
        const double az = deg / kDegreesPerRadian;
        const Rect box = Label_Box(foot, az, 60, 15);
        // The line of a foot at azimuth az runs at az + 90°: on the sheet (cos az, sin az).
        EXPECT_FALSE(Line_Hits(box, foot, std::cos(az), std::sin(az))) << deg;
    }
}

TEST(SightsTable, TabMovesAcrossOrDownAndBack) {
    int row = 0, column = kColBody;
    Next_Sight_Cell(7, false, false, row, column);
    EXPECT_EQ(row, 1);
    EXPECT_EQ(column, kColTime);
    Next_Sight_Cell(7, false, true, row, column);
    EXPECT_EQ(row, 0);
    EXPECT_EQ(column, kColBody);
    row = 6, column = kColAlt;
    Next_Sight_Cell(7, true, false, row, column);
    EXPECT_EQ(row, 0);
    EXPECT_EQ(column, kColAz);
}

TEST(PlanInsert, TheDescriptionTakesTheWordOfTheLatestPositionOnly) {
    EXPECT_EQ(Plan_Description("", "Fix"), "Celestial Fix");
    EXPECT_EQ(Plan_Description("Off Lizard", "ITP"), "Off Lizard/ ITP");
    EXPECT_EQ(Plan_Description("Off Lizard/ Celestial Fix", "Mean ITP"), "Off Lizard/ Mean ITP");
    EXPECT_EQ(Plan_Description("Mean ITP", "DR"), "DR");
}

TEST(PlanInsert, AnEmptyPlanStartsAtTheFix) {
    VoyagePlan plan;
    plan.New_Plan(9000.0, 6.0f);
    EXPECT_EQ(Insert_Position_In_Plan(plan, 9000.25, 0.5f, -0.2f, "Fix", 0, nullptr),
              Insert_Result::Inserted);
    EXPECT_EQ(plan.Row_Count(), 11);
    EXPECT_NE(plan.Way_Points[0].Row_Valid, 0);
    EXPECT_DOUBLE_EQ(plan.Plan_Start(), 9000.25);
    EXPECT_EQ(plan.Way_Points[0].Description, "Celestial Fix");
}

}  // namespace
}  // namespace kelmoran
