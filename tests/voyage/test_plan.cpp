// The voyage plan: a fresh plan, the recalculation, the edits with their messages, the
// undo stacks, and the clocks' arithmetic.
#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <tuple>

#include "settings/M_Formatting.h"
#include "voyage/M_Clox.h"
#include "voyage/Navigation.h"
#include "voyage/Plan_Text.h"
#include "voyage/Plan_Undo.h"
#include "voyage_test.h"

namespace kelmoran {
namespace {

using namespace voyage_test;

class Plan : public ::testing::Test {
  protected:
    void SetUp() override {
        Reset_Shell(nullptr);
        Shell.ScreenName = screen_key::NavPlan;
        Plan_Undo.Reset();
    }
};

TEST_F(Plan, FreshPlanAndSmallPlans) {
    VoyagePlan p;
    p.New_Plan(1234.56789, 7.5f);
    const Plan_Header& h = p.Header;
    EXPECT_EQ(std::tuple(p.Row_Count(), h.Title, h.Path), std::tuple(11, "Untitled", "Untitled"));
    EXPECT_DOUBLE_EQ(p.Plan_Start(), std::nearbyint(1234.56789 * 1440) / 1440);
    EXPECT_DOUBLE_EQ(p.Plan_End(), p.Plan_Start());  // an empty plan
    EXPECT_EQ(std::tuple(h.Default_Speed, h.Fixed_Speed_1, h.Fixed_Speed_2, h.Fixed_Speed_3),
              std::tuple(7.5f, 6.5f, 7.5f, 8.5f));
    VoyagePlan slow;
    slow.New_Plan(0, 0.5f);
    EXPECT_EQ(slow.Header.Fixed_Speed_1, 9.5f);  // 0.5 - 1 is not above 0

    // One way point, or two in one place: distance and leg time 0, Plan_End at the start.
    const VoyagePlan one = Plan_Of({{10, 10}}), same = Plan_Of({{10, 10}, {10, 10}});
    EXPECT_EQ(std::tuple(one.Way_Points[0].Distance, one.Plan_End()),
              std::tuple(0.0f, one.Plan_Start()));
    EXPECT_EQ(std::tuple(same.Way_Points[0].Distance, same.Way_Points[0].Leg_Time),
              std::tuple(0.0f, 0.0f));
    // A row with an ID and no position is valid and sits at 0°, 0°.
    VoyagePlan id = Plan_Of({{1, 1}});
    id.Way_Points[1].ID = "X";
    id.Test_Wpts_Valid();
    id.Recalc_Plan();
    EXPECT_TRUE(id.Way_Points[1].Row_Valid);
    EXPECT_NEAR(id.Way_Points[0].Distance, std::hypot(60.0, 60.0), 0.5);
}

TEST_F(Plan, RecalculationSums) {
    const VoyagePlan p = Plan_Of({{50, -5}, {49, -5}, {49, -6}, {0, 0}, {47, -6}});
    const auto& w = p.Way_Points;
    EXPECT_EQ(std::tuple(w[0].Course, w[0].Distance, w[0].Leg_Time, w[1].Course),
              std::tuple(180.0f, 60.0f, 6.0f, 270.0f));
    // The gap row 3 is stepped over: row 2 runs to row 4; it and the rows after the last
    // take the times of the next valid row.
    EXPECT_EQ(std::tuple(w[2].Distance, w[3].Distance, w[4].Total_Distance),
              std::tuple(120.0f, 0.0f, 60.0f + w[1].Distance + 120.0f));
    EXPECT_EQ(std::tuple(w[3].Time, w[3].Variation, w[10].Time, p.Plan_End()),
              std::tuple(w[4].Time, w[4].Variation, w[4].Time, w[4].Time));
    const double hours = (60.0 + w[1].Distance + 120.0) / 10.0;
    EXPECT_NEAR(w[4].Running_Time, hours, 1e-3);
    EXPECT_NEAR((w[4].Time - p.Plan_Start()) * 24, hours, 1e-5);
    EXPECT_FLOAT_EQ(w[0].Distance_To_Go, w[4].Total_Distance);
    EXPECT_EQ(w[3].Speed, 10.0f);  // rows but the last get the default speed
    // Variation near the Channel is within a few degrees, held to a tenth.
    EXPECT_LT(std::fabs(w[0].Variation), 5.0f);
    EXPECT_EQ(w[0].Variation, static_cast<float>(Round_Even(w[0].Variation, 1)));
    // The texts of a row as shown.
    EXPECT_EQ(std::tuple(p.Texts[0].Lat, p.Texts[2].Long, p.Texts[3].Lat, p.Header.ETD_Zone),
              std::tuple("50° 00'.0 N", "    6° 00'.0 W", "", "GMT"));
}

TEST_F(Plan, SpeedAndEtaEdits) {
    VoyagePlan p = Plan_Of({{50, -5}, {49, -5}, {48, -5}, {47, -5}});
    auto& w = p.Way_Points;
    const double end0 = p.Plan_End();
    p.Edit_Speed(0, 20.0f);
    EXPECT_NEAR((end0 - p.Plan_End()) * 24, 3.0, 1e-4);  // 60 miles at 20 instead of 10
    EXPECT_EQ(Shell.PlanChanged, kTrue);

    // Main ETA in zone +60: the speeds are set to reach it (180 miles in 24 hours); the same
    // ETA again is too small a change; one before the last locked row changes nothing.
    const double eta = p.Plan_Start() + 1.0;
    EXPECT_TRUE(p.Edit_Main_ETA(eta + 60.0 / 1440.0, 60).Text.empty());
    EXPECT_FLOAT_EQ(w[0].Speed, 7.5f);
    EXPECT_NEAR(p.Plan_End(), eta, 1e-6);
    EXPECT_EQ(p.Edit_Main_ETA(eta + 60.0 / 1440.0, 60).Text,
              "Change in speed is too small to register");
    p.Lock_Row(1, true);
    const float speed = w[1].Speed;
    const Plan_Message m = p.Edit_Main_ETA(w[1].Time - 0.1, 0);
    EXPECT_EQ(std::tuple(m.Text, m.Title, w[1].Speed),
              std::tuple("Speed less than 0.01 Kts  ", "Input Error", speed));
    // With row 1 locked only rows from 1 on change: 120 miles in 6 hours.
    const float first = w[0].Speed;
    p.Edit_Main_ETA(w[1].Time + 0.25, 0);
    EXPECT_EQ(std::tuple(w[0].Speed, w[1].Speed), std::tuple(first, 20.0f));

    // The ETA of a row: speeds from the locked row above to the row before; 120 miles in 12
    // hours. Times before the start are dropped, speeds below 0.01 kn refused.
    p.Lock_Row(1, false);
    EXPECT_TRUE(p.Edit_Row_ETA(2, p.Plan_Start() + 0.5));
    EXPECT_EQ(std::tuple(w[0].Speed, w[1].Speed), std::tuple(10.0f, 10.0f));
    EXPECT_NEAR(w[2].Time, p.Plan_Start() + 0.5, 1e-6);
    EXPECT_FALSE(p.Edit_Row_ETA(2, p.Plan_Start() - 1));
    EXPECT_FALSE(p.Edit_Row_ETA(2, p.Plan_Start() + 1e6));

    // The speed box: every row after the first locked row.
    p.Lock_Row(1, true);
    p.Set_Speeds(5.0f);
    EXPECT_EQ(std::tuple(w[0].Speed, w[1].Speed, w[2].Speed, p.Header.Default_Speed),
              std::tuple(10.0f, 10.0f, 5.0f, 5.0f));

    // ETD in zone -120 moves the start and every time with it.
    const double t2 = w[2].Time - p.Plan_Start();
    p.Edit_ETD(9100.0, -120);
    EXPECT_DOUBLE_EQ(p.Plan_Start(), 9100.0 + 120.0 / 1440.0);
    EXPECT_NEAR(w[2].Time - p.Plan_Start(), t2, 1e-9);
}

TEST_F(Plan, PositionCourseAndRowEdits) {
    VoyagePlan p = Plan_Of({{50, -5}, {49, -5}});
    // A typed course and distance put the next row where the rhumb line ends.
    p.Edit_Distance(0, 120.0f);
    EXPECT_NEAR(p.Way_Points[1].Lat, 48 * kDeg, 1e-5);
    EXPECT_EQ(p.Way_Points[0].Distance, 120.0f);
    p.Edit_Course(0, 90.0f);
    EXPECT_NEAR(p.Way_Points[1].Lat, 50 * kDeg, 1e-6);
    EXPECT_FLOAT_EQ(p.Way_Points[0].Course, 90.0f);
    EXPECT_NEAR(p.Way_Points[0].Distance, 120.0f, 0.05f);
    // Magnetic course: the true course is the variation plus the value.
    p.Edit_Mag_Course(0, 180.0f - p.Way_Points[0].Variation);
    EXPECT_NEAR(p.Way_Points[0].Course, 180.0f, 0.051f);
    // Sailing from the last row grows the table.
    const int rows = p.Row_Count();
    p.Edit_Course(rows - 1, 0.0f);
    EXPECT_EQ(p.Row_Count(), rows + 1);

    // A position typed into an empty row makes it valid with the previous speed.
    VoyagePlan q = Plan_Of({{50, -5}, {49, -5}});
    q.Edit_Speed(1, 6.0f);
    q.Edit_Position(2, 48 * kDeg, -5 * kDeg);
    EXPECT_EQ(
        std::tuple(q.Way_Points[2].Row_Valid, q.Way_Points[2].Speed, q.Way_Points[1].Distance),
        std::tuple(kTrue, 6.0f, 60.0f));
    // Insert, clear and delete rows; legs join across them; the table keeps a row.
    q.Insert_Rows(1, 2);
    EXPECT_EQ(std::tuple(q.Row_Count(), q.Way_Points[0].Distance), std::tuple(13, 60.0f));
    q.Clear_Rows(3, 1);  // was row 1 (49°N)
    EXPECT_EQ(q.Way_Points[0].Distance, 120.0f);
    q.Delete_Rows(0, 3);
    EXPECT_EQ(std::tuple(q.Row_Count(), q.Way_Points[0].Row_Valid), std::tuple(10, kFalse));
    q.Delete_Rows(0, 100);
    EXPECT_EQ(q.Row_Count(), 1);
}

TEST_F(Plan, UndoAndRedo) {
    VoyagePlan p = Plan_Of({{50, -5}, {49, -5}});
    auto enabled = [] {
        return std::pair<bool, bool>(Shell.Menus.mnuUndo[0].Enabled,
                                     Shell.Menus.mnuUndo[1].Enabled);
    };
    EXPECT_EQ(enabled(), std::pair(false, false));
    const float start = p.Way_Points[0].Speed;
    // Twelve edits and twelve undos get back to the first state; no thirteenth.
    for (int i = 1; i <= 12; ++i) p.Edit_Speed(0, start + i);
    EXPECT_EQ(Plan_Undo.Undo_Count(), 12u);
    EXPECT_EQ(enabled(), std::pair(true, false));
    for (int i = 0; i < 12; ++i) EXPECT_EQ(Plan_Undo.Undo(p), Undo_Type::Voyage);
    EXPECT_EQ(p.Way_Points[0].Speed, start);
    EXPECT_EQ(Plan_Undo.Undo(p), Undo_Type::None);
    EXPECT_EQ(enabled(), std::pair(false, true));
    // Redo walks forward; a new push empties the redo stack; the 13th push drops the oldest.
    Plan_Undo.Redo(p);
    EXPECT_EQ(p.Way_Points[0].Speed, start + 1);
    p.Edit_Speed(0, 3.0f);
    EXPECT_EQ(Plan_Undo.Redo_Count(), 0u);
    for (int i = 0; i < 13; ++i) p.Edit_Speed(0, 4.0f + i);
    EXPECT_EQ(Plan_Undo.Undo_Count(), 12u);
    // A Clocks state restores the ship times only, even when undone on another screen.
    p.Ship_Time = {60, 120};
    Plan_Undo.Push_Clox_State(p, screen_key::Clox);
    p.Ship_Time = {0};
    const float speed = p.Way_Points[0].Speed;
    EXPECT_EQ(Plan_Undo.Undo(p), Undo_Type::Clocks);
    EXPECT_EQ(std::tuple(p.Ship_Time, p.Way_Points[0].Speed),
              std::tuple(std::vector<int32_t>{60, 120}, speed));
    Plan_Undo.Reset();  // loading or a new plan empties both
    EXPECT_EQ(enabled(), std::pair(false, false));
}

TEST_F(Plan, ClocksArithmetic) {
    const struct {
        int from, to;
        const char* text;
    } changes[] = {{0, 60, "Clocks Advanced: Z+1"},
                   {60, 0, "Clocks Retarded: GMT"},
                   {720, -720, "Date Change: Z-12"},
                   {720, -660, "Date Change and Clocks: Z-11"},
                   {-600, -600, ""}};
    for (const auto& c : changes) EXPECT_EQ(Clock_Change_Text(c.from, c.to), c.text);
    EXPECT_EQ(std::tuple(Parse_Zone_Text("Z-5.5"), Parse_Zone_Text("GMT"), Parse_Zone_Text("Z+x")),
              std::tuple(-330, 0, std::nullopt));

    // Westward across the Atlantic at 15 knots from 50°N 5°W to 40°N 70°W, GMT at the start.
    VoyagePlan p = Plan_Of({{50, -5}, {45, -35}, {40, -70}}, 11, 9000.0, 15.0f);
    ASSERT_GT(Clox_Day_Count(p), 5);
    const std::size_t undos = Plan_Undo.Undo_Count();
    Calculate_Ship_Time(p);
    ASSERT_EQ(static_cast<int>(p.Ship_Time.size()), Clox_Day_Count(p));
    EXPECT_EQ(p.Ship_Time.front(), 0);
    // The last day starts west of 60°W and east of 70°W: four or five hours slow.
    EXPECT_TRUE(p.Ship_Time.back() >= -300 && p.Ship_Time.back() <= -240) << p.Ship_Time.back();
    for (std::size_t d = 1; d < p.Ship_Time.size(); ++d)
        EXPECT_LE(p.Ship_Time[d], p.Ship_Time[d - 1]);  // clocks only go back, westward
    EXPECT_EQ(Plan_Undo.Undo_Count(), undos + 1);

    // Apply: each change becomes a way point with its text, on the track.
    const std::vector<int32_t> zones = p.Ship_Time;
    int changed = 0, marked = 0;
    for (std::size_t d = 1; d < zones.size(); ++d) changed += zones[d] != zones[d - 1];
    const int validBefore = p.Last_Valid_Row() + 1;
    Apply_To_Voyage_Plan(p);
    for (const Way_Point& w : p.Way_Points)
        marked += w.Description.find("Clocks Retarded: Z-") != std::string::npos;
    EXPECT_EQ(std::tuple(marked, p.Last_Valid_Row() + 1),
              std::tuple(changed, validBefore + changed));
    EXPECT_NEAR(p.Way_Points[static_cast<size_t>(p.Last_Valid_Row())].Total_Distance,
                p.Way_Points[0].Distance_To_Go, 1e-3);
    // Taking ship time from the plan gives back the same days' zones, but that a change may
    // land up to 14 hours after its day starts.
    p.Ship_Time.clear();
    Take_Ship_Time_From_Plan(p);
    ASSERT_EQ(p.Ship_Time.size(), zones.size());
    int differ = 0;
    for (std::size_t d = 0; d < zones.size(); ++d) differ += p.Ship_Time[d] != zones[d];
    EXPECT_LE(differ, changed);
}

// Eastward across 180° from midnight UT: the changes land one minute after midnight, the
// date line gives "Date Change", and applying again finds the rows it made and adds none.
TEST_F(Plan, ClocksAcrossTheDateLine) {
    VoyagePlan p = Plan_Of({{10, 170}, {10, -170}}, 2);
    p.Edit_ETD(9000.5 + 660.0 / 1440.0, 660);  // midnight UT, typed in zone +11
    ASSERT_DOUBLE_EQ(p.Plan_Start(), 9000.5);
    ASSERT_GT(Clox_Day_Count(p), 4);
    p.Ship_Time = {660, 720, -720, -720, -660};
    Apply_To_Voyage_Plan(p);
    ASSERT_EQ(p.Row_Count(), 5);
    const char* texts[] = {"Clocks Advanced: Z+12", "Date Change: Z-12", "Clocks Advanced: Z-11"};
    const int days[] = {1, 2, 4};
    for (size_t k = 0; k < 3; ++k) {
        const Way_Point& w = p.Way_Points[k + 1];
        EXPECT_EQ(std::tuple(w.Description, w.Row_Valid), std::tuple(texts[k], kTrue));
        // The row's time comes back from distances rounded to 0.1 mile: 18 s at 10 knots.
        EXPECT_NEAR(w.Time, 9000.5 + days[k] + kOneMinute, 0.25 * kOneMinute) << texts[k];
        EXPECT_NEAR(w.Lat / kDeg, 10.0, 1e-3);
    }
    EXPECT_GT(p.Way_Points[2].Long, 0.0);  // the date line is crossed on day 2 ...
    EXPECT_LT(p.Way_Points[3].Long, 0.0);  // ... and day 4 is east of it
    EXPECT_EQ(p.Way_Points[4].Description, "");
    Apply_To_Voyage_Plan(p);
    EXPECT_EQ(std::tuple(p.Row_Count(), p.Way_Points[2].Description),
              std::tuple(5, "Date Change: Z-12; Date Change: Z-12"));
}

}  // namespace
}  // namespace kelmoran
