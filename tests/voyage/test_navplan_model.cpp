// The cells of the Voyage screen without a window: a typed ETA placed in the nearest month,
// the cells that can be edited, and what a committed ETA does to the plan.
#include <gtest/gtest.h>

#include "ephemeris/Time_Calcs.h"
#include "voyage/cNavPlan_Model.h"
#include "voyage/voyage_test.h"

namespace kelmoran {
namespace {

double Jd(int16_t y, int16_t m, int16_t d, double hours) {
    MySystemTime t;
    t.wYear = y;
    t.wMonth = m;
    t.wDay = d;
    t.wHour = t.wMinute = t.wSecond = t.wMilliseconds = 0;
    return Calc_JD(t, false) + hours / 24.0;
}

TEST(NavPlanModel, ATypedEtaFallsInTheNearestMonth) {
    // "1/ 02:00" typed beside 31 January 23:00 is the next day, not 1 January.
    EXPECT_NEAR(NavPlan_Typed_Eta(1 + 2 / 24.0, Jd(2026, 1, 31, 23), 0), Jd(2026, 2, 1, 2), 1e-9);
    // "31/ 22:00" beside 1 March: February has no 31st, and 31 January is nearer than
    // 31 March.
    EXPECT_NEAR(NavPlan_Typed_Eta(31 + 22 / 24.0, Jd(2026, 3, 1, 1), 0), Jd(2026, 1, 31, 22),
                1e-9);
    // Hours alone keep the day; the zone is taken off.
    EXPECT_NEAR(NavPlan_Typed_Eta(18 / 24.0, Jd(2026, 6, 10, 9), 120), Jd(2026, 6, 10, 16), 1e-9);
}

TEST(NavPlanModel, TheEtaOfARowSetsTheSpeedsBeforeIt) {
    VoyagePlan plan = voyage_test::Plan_Of({{50, -5}, {49, -10}, {45, -20}}, 6, 9000.0, 6.0f);
    const NavPlan_Line first{0, false}, second{1, false}, third{2, false};
    EXPECT_TRUE(NavPlan_Edit_For(plan, first, navplan_col::ETA, "x").Field.empty());  // the ETD
    EXPECT_EQ(NavPlan_Edit_For(plan, third, navplan_col::ETA, "x").Field, "ETA");
    EXPECT_TRUE(NavPlan_Edit_For(plan, third, navplan_col::TotalDist, "x").Field.empty());

    // Arrive at the third a day later than planned: both legs slow down alike.
    const double eta = plan.Way_Points[2].Time + 1;
    const MySystemTime d = JD_To_Date(eta);
    ASSERT_TRUE(NavPlan_Commit(plan, third, navplan_col::ETA,
                               d.wDay + (d.wHour + d.wMinute / 60.0) / 24.0, ""));
    EXPECT_NEAR(plan.Way_Points[2].Time, eta, 1.5 / 1440);
    EXPECT_EQ(plan.Way_Points[0].Speed, plan.Way_Points[1].Speed);
    EXPECT_LT(plan.Way_Points[0].Speed, 6.0f);

    // Locked, its time is kept; an ETA before the row it runs from is refused.
    plan.Lock_Row(1, true);
    EXPECT_TRUE(NavPlan_Edit_For(plan, second, navplan_col::ETA, "x").Field.empty());
    const MySystemTime early = JD_To_Date(plan.Way_Points[1].Time - 0.5);
    EXPECT_FALSE(NavPlan_Commit(plan, third, navplan_col::ETA,
                                early.wDay + early.wHour / 24.0, ""));
}

}  // namespace
}  // namespace kelmoran
