// The position methods: the fixed position, dead reckoning by course and speed with its
// 365-day limit and pole guard, and dead reckoning along the plan with its fall-backs.
#include <gtest/gtest.h>

#include <cmath>

#include "shell/M_Kelmoran.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {
namespace {

constexpr double kDeg = 1.0 / 57.2957795130823;

SettingsRecord Fix_At(double latDeg, double lonDeg, float course, float speed, double time,
                      int method) {
    SettingsRecord s;
    s.ObserverLat = static_cast<float>(latDeg * kDeg);
    s.ObserverLong = static_cast<float>(lonDeg * kDeg);
    s.FixCourse = course;
    s.FixSpeed = speed;
    s.FixTime = time;
    s.PositionMethod = method;
    return s;
}

// A three-leg plan from 50°N 5°W at 10 knots, with an invalid row in the middle and two
// blank rows at the end.
VoyagePlan Three_Legs() {
    Reset_Shell(nullptr);
    VoyagePlan p;
    p.New_Plan(8000.25, 10.0f);
    p.Way_Points.assign(7, Way_Point{});
    const double pts[5][2] = {{50, -5}, {48, -7}, {0, 0}, {45, -9}, {44, -20}};
    for (int i = 0; i < 5; ++i) {
        p.Way_Points[static_cast<size_t>(i)].Lat = pts[i][0] * kDeg;
        p.Way_Points[static_cast<size_t>(i)].Long = pts[i][1] * kDeg;
        p.Way_Points[static_cast<size_t>(i)].Speed = 10.0f;
    }
    p.Test_Wpts_Valid();
    p.Recalc_Plan();
    return p;
}

TEST(PositionMethods, FixedPositionLeavesCourseAndSpeed) {
    const SettingsRecord s = Fix_At(51.3216666666667, 0.5, 45, 8.5, 2010.15, kFixPosition);
    float lat = 0, lon = 0, course = 123.0f, speed = 4.5f;
    Get_Position(s, VoyagePlan{}, 9999.0, lat, lon, course, speed);
    EXPECT_EQ(lat, s.ObserverLat);
    EXPECT_EQ(lon, s.ObserverLong);
    EXPECT_EQ(course, 123.0f);
    EXPECT_EQ(speed, 4.5f);
    // An unknown method is taken as the fixed position.
    SettingsRecord odd = s;
    odd.PositionMethod = 7;
    Get_Position(odd, VoyagePlan{}, 0.0, lat, lon, course, speed);
    EXPECT_EQ(lat, s.ObserverLat);
    EXPECT_EQ(course, 123.0f);
}

TEST(PositionMethods, CourseAndSpeedTrack) {
    const double t0 = 5000.0;
    const SettingsRecord s = Fix_At(10, 20, 45, 12, t0, kDRCourseSpeed);
    float lat, lon, course, speed;
    // At the fix time the fix comes back, with the fix's course and speed.
    Get_Position(s, VoyagePlan{}, t0, lat, lon, course, speed);
    EXPECT_EQ(lat, s.ObserverLat);
    EXPECT_EQ(lon, s.ObserverLong);
    EXPECT_EQ(course, 45.0f);
    EXPECT_EQ(speed, 12.0f);
    // One day on 045 at 12 knots: 288 miles, dLat 203.6'.
    Get_Position(s, VoyagePlan{}, t0 + 1, lat, lon, course, speed);
    EXPECT_NEAR((lat - s.ObserverLat) * 3437.74677078494, 288 * std::cos(45 * kDeg), 1e-2);
    EXPECT_GT(lon, s.ObserverLong);
    // 365.0 days after (due east, clear of the poles): still a true DR; 365.01: the fix
    // with the marker.
    const SettingsRecord e = Fix_At(10, 20, 90, 12, t0, kDRCourseSpeed);
    Get_Position(e, VoyagePlan{}, t0 + 365.0, lat, lon, course, speed);
    EXPECT_FALSE(Is_DR_Error(course));
    EXPECT_NE(lon, e.ObserverLong);
    Get_Position(s, VoyagePlan{}, t0 + 365.01, lat, lon, course, speed);
    EXPECT_TRUE(Is_DR_Error(course));
    EXPECT_EQ(speed, 0.0f);
    EXPECT_EQ(lat, s.ObserverLat);
    EXPECT_EQ(lon, s.ObserverLong);
    Get_Position(s, VoyagePlan{}, t0 - 365.01, lat, lon, course, speed);
    EXPECT_TRUE(Is_DR_Error(course));
    // Before the fix the track is run backwards: south-west of the fix, course kept.
    Get_Position(s, VoyagePlan{}, t0 - 0.5, lat, lon, course, speed);
    EXPECT_LT(lat, s.ObserverLat);
    EXPECT_LT(lon, s.ObserverLong);
    EXPECT_EQ(course, 45.0f);
    // Forward and backward runs are mirror images in latitude.
    float latF, lonF;
    Get_Position(s, VoyagePlan{}, t0 + 0.5, latF, lonF, course, speed);
    EXPECT_NEAR(latF - s.ObserverLat, s.ObserverLat - lat, 1e-6);
    // A westerly course runs west.
    const SettingsRecord w = Fix_At(10, 20, 270, 12, t0, kDRCourseSpeed);
    Get_Position(w, VoyagePlan{}, t0 + 1, lat, lon, course, speed);
    EXPECT_LT(lon, w.ObserverLong);
    EXPECT_EQ(lat, w.ObserverLat);
}

TEST(PositionMethods, PoleGuard) {
    // Course 000 at 20 knots from 89°N: after one day the track has reached the pole.
    const SettingsRecord s = Fix_At(89, 30, 0, 20, 100.0, kDRCourseSpeed);
    float lat, lon, course, speed;
    Get_Position(s, VoyagePlan{}, 101.0, lat, lon, course, speed);
    EXPECT_EQ(lat, static_cast<float>(1.5707963267949 - 1.0 / 206264.806247096));
    EXPECT_EQ(lon, 0.0f);
    EXPECT_TRUE(Is_DR_Error(course));
    EXPECT_EQ(speed, 0.0f);
    // The same southward from 89°S, and backwards in time on 180 from 89°N.
    Get_Position(Fix_At(-89, 30, 180, 20, 100.0, kDRCourseSpeed), VoyagePlan{}, 101.0, lat, lon,
                 course, speed);
    EXPECT_LT(lat, -1.5707f);
    EXPECT_TRUE(Is_DR_Error(course));
    Get_Position(Fix_At(89, 30, 180, 20, 100.0, kDRCourseSpeed), VoyagePlan{}, 99.0, lat, lon,
                 course, speed);
    EXPECT_TRUE(Is_DR_Error(course));
    // Short of the pole the DR is a true one.
    Get_Position(s, VoyagePlan{}, 100.1, lat, lon, course, speed);
    EXPECT_FALSE(Is_DR_Error(course));
}

TEST(PositionMethods, AlongThePlan) {
    const VoyagePlan p = Three_Legs();
    SettingsRecord s = Fix_At(0, 0, 0, 0, 0, kDRByPlan);
    const auto& w = p.Way_Points;
    float lat, lon, course, speed;
    // The first way point at Plan_Start, with the first leg's course and speed.
    EXPECT_DOUBLE_EQ(w[0].Time, p.Plan_Start());
    Get_Position(s, p, p.Plan_Start(), lat, lon, course, speed);
    EXPECT_EQ(lat, static_cast<float>(w[0].Lat));
    EXPECT_EQ(lon, static_cast<float>(w[0].Long));
    EXPECT_EQ(course, w[0].Course);
    EXPECT_EQ(speed, w[0].Speed);
    // Exactly at a way point's time: that way point, with the leg that begins there.
    Get_Position(s, p, w[1].Time, lat, lon, course, speed);
    EXPECT_EQ(lat, static_cast<float>(w[1].Lat));
    EXPECT_EQ(lon, static_cast<float>(w[1].Long));
    EXPECT_EQ(course, w[1].Course);
    // The invalid row 2 is stepped over: row 3 starts the next leg.
    Get_Position(s, p, w[3].Time, lat, lon, course, speed);
    EXPECT_EQ(lat, static_cast<float>(w[3].Lat));
    EXPECT_EQ(course, w[3].Course);
    // Half-way along leg 1 -> 3 the DR lies between them.
    Get_Position(s, p, (w[1].Time + w[3].Time) / 2, lat, lon, course, speed);
    EXPECT_LT(lat, w[1].Lat);
    EXPECT_GT(lat, w[3].Lat);
    EXPECT_EQ(course, w[1].Course);
    // Just before the next way point the DR is close to it: the leg's course is held to one
    // decimal of a degree, which over this 500-mile leg is worth about 0.4 mile.
    Get_Position(s, p, w[4].Time - 1e-7, lat, lon, course, speed);
    EXPECT_NEAR(lat, w[4].Lat, 0.5 / 3437.7);
    EXPECT_NEAR(lon, w[4].Long, 0.5 / 3437.7 / std::cos(w[4].Lat));
    // Exactly at Plan_End: the final way point with its own course and speed.
    EXPECT_DOUBLE_EQ(p.Plan_End(), w[4].Time);
    Get_Position(s, p, p.Plan_End(), lat, lon, course, speed);
    EXPECT_EQ(lat, static_cast<float>(w[4].Lat));
    EXPECT_EQ(course, w[4].Course);
    EXPECT_EQ(speed, w[4].Speed);
    EXPECT_FALSE(Is_DR_Error(course));
    // One minute before the start: the first way point and the marker.
    Get_Position(s, p, p.Plan_Start() - 1.0 / 1440, lat, lon, course, speed);
    EXPECT_EQ(lat, static_cast<float>(w[0].Lat));
    EXPECT_TRUE(Is_DR_Error(course));
    EXPECT_EQ(speed, 0.0f);
    // After the end: the last valid row (not the blank rows after it).
    Get_Position(s, p, p.Plan_End() + 3, lat, lon, course, speed);
    EXPECT_EQ(lat, static_cast<float>(w[4].Lat));
    EXPECT_EQ(lon, static_cast<float>(w[4].Long));
    EXPECT_TRUE(Is_DR_Error(course));
}

TEST(PositionMethods, WordsByCondition) {
    const VoyagePlan p = Three_Legs();
    SettingsRecord s = Fix_At(0, 0, 0, 0, 100.0, kDRCourseSpeed);
    EXPECT_EQ(Position_Popup_Words(Position_Spot::DRbyTrack, s, p, 100.0 + 365.5).front(),
              "Positions using Co/ Dist");
    EXPECT_EQ(Position_Popup_Words(Position_Spot::DRbyTrack, s, p, 100.0 + 366.0).back(),
              "(Failure)");
    EXPECT_EQ(Atlas_Position_Error(s, p, 100.0 + 365.01), "Track can only be used for 365 days");
    EXPECT_EQ(Atlas_Position_Error(s, p, 100.0 + 365.0), "");
    EXPECT_EQ(Sight_Position_Word(s, p, 100.0 + 400), "Track Expired");
    EXPECT_EQ(Sight_Position_Word(s, p, 100.0 + 4), "Position Error");
    s.PositionMethod = kDRByPlan;
    EXPECT_EQ(Sight_Position_Word(s, p, p.Plan_End() + 1), "Plan Expired");
    EXPECT_EQ(Sight_Position_Word(s, p, p.Plan_Start() - 1), "Before Plan");
    EXPECT_EQ(Atlas_Position_Error(s, p, p.Plan_Start() - 1), "First Way Point position in use");
    EXPECT_EQ(Position_Popup_Words(Position_Spot::DR_Error, s, p, p.Plan_End() + 1).back(),
              "Final Way Point position in use");
    EXPECT_EQ(Position_Popup_Words(Position_Spot::DRbyPlan, s, p, p.Plan_Start()).front(),
              "Voyage plan in use");
    // "D.R. by plan" needs the plan in use to be the default plan, and a time within it.
    EXPECT_FALSE(DR_By_Plan_Allowed(s, p, p.Plan_Start()));
    EXPECT_EQ(Position_Popup_Words(Position_Spot::Disabled_DRbyPlan, s, p, p.Plan_Start())
                  .front(),
              "Default plan not set");
    VoyagePlan q = p;
    q.Header.Path = "/plans/a.Voy";
    s.DefaultPlanFile = "/plans/a.Voy";
    EXPECT_TRUE(DR_By_Plan_Allowed(s, q, q.Plan_Start()));
    EXPECT_FALSE(DR_By_Plan_Allowed(s, q, q.Plan_End() + 0.1));
    EXPECT_EQ(
        Position_Popup_Words(Position_Spot::Disabled_DRbyPlan, s, q, q.Plan_Start() - 1).front(),
        "Current time is prior to plan starting");
}

}  // namespace
}  // namespace kelmoran
