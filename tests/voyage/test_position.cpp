// The position methods: the fixed position, dead reckoning by course and speed with its
// 365-day limit and pole guard, and dead reckoning along the plan with its fall-backs.
#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"
#include "voyage_test.h"

namespace kelmoran {
namespace {

using namespace voyage_test;

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

// What Get_Position answers, compared as a whole.
struct Pos {
    float lat = 0, lon = 0, course = 0, speed = 0;
    bool operator==(const Pos&) const = default;
};
std::ostream& operator<<(std::ostream& o, const Pos& p) {
    return o << p.lat << " " << p.lon << " " << p.course << " " << p.speed;
}

Pos At(const SettingsRecord& s, const VoyagePlan& plan, double t, Pos p = {}) {
    Get_Position(s, plan, t, p.lat, p.lon, p.course, p.speed);
    return p;
}

// Three legs from 50°N 5°W at 10 knots, an invalid row in the middle, two blank rows after.
VoyagePlan Three_Legs() {
    Reset_Shell(nullptr);
    return Plan_Of({{50, -5}, {48, -7}, {0, 0}, {45, -9}, {44, -20}}, 7, 8000.25);
}

TEST(PositionMethods, FixedPositionLeavesCourseAndSpeed) {
    const SettingsRecord s = Fix_At(51.3216666666667, 0.5, 45, 8.5, 2010.15, kFixPosition);
    const Pos kept{s.ObserverLat, s.ObserverLong, 123.0f, 4.5f};
    EXPECT_EQ(At(s, VoyagePlan{}, 9999.0, {0, 0, 123.0f, 4.5f}), kept);
    SettingsRecord odd = s;  // an unknown method is taken as the fixed position
    odd.PositionMethod = 7;
    EXPECT_EQ(At(odd, VoyagePlan{}, 0.0, {0, 0, 123.0f, 4.5f}), kept);
}

TEST(PositionMethods, CourseAndSpeedTrack) {
    const double t0 = 5000.0;
    const SettingsRecord s = Fix_At(10, 20, 45, 12, t0, kDRCourseSpeed);
    const VoyagePlan none;
    // At the fix time the fix comes back, with its course and speed.
    EXPECT_EQ(At(s, none, t0), (Pos{s.ObserverLat, s.ObserverLong, 45.0f, 12.0f}));
    // One day on 045 at 12 knots: 288 miles, dLat 203.6'.
    Pos p = At(s, none, t0 + 1);
    EXPECT_NEAR((p.lat - s.ObserverLat) * kMinutesPerRadian, 288 * std::cos(45 * kDeg), 1e-2);
    EXPECT_GT(p.lon, s.ObserverLong);
    // 365.0 days after (due east, clear of the poles): still a true DR; 365.01 either way:
    // the fix with the marker and speed 0.
    const SettingsRecord e = Fix_At(10, 20, 90, 12, t0, kDRCourseSpeed);
    p = At(e, none, t0 + 365.0);
    EXPECT_FALSE(Is_DR_Error(p.course));
    EXPECT_NE(p.lon, e.ObserverLong);
    for (double t : {t0 + 365.01, t0 - 365.01}) {
        p = At(s, none, t);
        EXPECT_TRUE(Is_DR_Error(p.course));
        EXPECT_EQ((Pos{p.lat, p.lon, 0, p.speed}), (Pos{s.ObserverLat, s.ObserverLong, 0, 0}));
    }
    // Before the fix the track is run backwards, course kept: a mirror image in latitude.
    p = At(s, none, t0 - 0.5);
    EXPECT_LT(p.lat, s.ObserverLat);
    EXPECT_LT(p.lon, s.ObserverLong);
    EXPECT_EQ(p.course, 45.0f);
    EXPECT_NEAR(At(s, none, t0 + 0.5).lat - s.ObserverLat, s.ObserverLat - p.lat, 1e-6);
    // A westerly course runs west along the parallel.
    const SettingsRecord w = Fix_At(10, 20, 270, 12, t0, kDRCourseSpeed);
    p = At(w, none, t0 + 1);
    EXPECT_LT(p.lon, w.ObserverLong);
    EXPECT_EQ(p.lat, w.ObserverLat);
}

TEST(PositionMethods, PoleGuard) {
    // Course 000 at 20 knots from 89°N: after one day the track has reached the pole.
    const SettingsRecord s = Fix_At(89, 30, 0, 20, 100.0, kDRCourseSpeed);
    Pos p = At(s, VoyagePlan{}, 101.0);
    EXPECT_TRUE(Is_DR_Error(p.course));
    EXPECT_EQ((Pos{p.lat, p.lon, 0, p.speed}),
              (Pos{static_cast<float>(1.5707963267949 - 1.0 / 206264.806247096), 0, 0, 0}));
    // The same southward from 89°S, and backwards in time on 180 from 89°N.
    p = At(Fix_At(-89, 30, 180, 20, 100.0, kDRCourseSpeed), VoyagePlan{}, 101.0);
    EXPECT_LT(p.lat, -1.5707f);
    EXPECT_TRUE(Is_DR_Error(p.course));
    EXPECT_TRUE(Is_DR_Error(At(Fix_At(89, 30, 180, 20, 100.0, kDRCourseSpeed), {}, 99.0).course));
    EXPECT_FALSE(Is_DR_Error(At(s, VoyagePlan{}, 100.1).course));  // short of the pole
}

TEST(PositionMethods, AlongThePlan) {
    const VoyagePlan p = Three_Legs();
    const SettingsRecord s = Fix_At(0, 0, 0, 0, 0, kDRByPlan);
    const auto& w = p.Way_Points;
    auto row = [&](size_t i) {
        return Pos{static_cast<float>(w[i].Lat), static_cast<float>(w[i].Long), w[i].Course,
                   w[i].Speed};
    };
    // At Plan_Start, at each way point's time and at Plan_End: that way point with the leg
    // that begins there (the invalid row 2 is stepped over); the final one keeps its own.
    EXPECT_DOUBLE_EQ(w[0].Time, p.Plan_Start());
    EXPECT_DOUBLE_EQ(p.Plan_End(), w[4].Time);
    for (size_t i : {0, 1, 3, 4}) EXPECT_EQ(At(s, p, w[i].Time), row(i)) << i;
    EXPECT_FALSE(Is_DR_Error(At(s, p, p.Plan_End()).course));
    // Half-way along leg 1 -> 3 the DR lies between them.
    Pos d = At(s, p, (w[1].Time + w[3].Time) / 2);
    EXPECT_LT(d.lat, w[1].Lat);
    EXPECT_GT(d.lat, w[3].Lat);
    EXPECT_EQ(d.course, w[1].Course);
    // Just before the next way point the DR is close to it: the course is held to 0.1°,
    // which over this 500-mile leg is worth about 0.4 mile.
    d = At(s, p, w[4].Time - 1e-7);
    EXPECT_NEAR(d.lat, w[4].Lat, 0.5 / 3437.7);
    EXPECT_NEAR(d.lon, w[4].Long, 0.5 / 3437.7 / std::cos(w[4].Lat));
    // Before the start: the first way point; after the end: the last valid row, not the
    // blank rows; both with the marker and speed 0.
    for (auto [t, i] : {std::pair{p.Plan_Start() - 1.0 / 1440, size_t{0}},
                        std::pair{p.Plan_End() + 3, size_t{4}}}) {
        d = At(s, p, t);
        EXPECT_TRUE(Is_DR_Error(d.course));
        EXPECT_EQ((Pos{d.lat, d.lon, 0, d.speed}), (Pos{row(i).lat, row(i).lon, 0, 0})) << i;
    }
}

TEST(PositionMethods, WordsByCondition) {
    VoyagePlan p = Three_Legs();
    SettingsRecord s = Fix_At(0, 0, 0, 0, 100.0, kDRCourseSpeed);
    auto popup = [&](Position_Spot spot, double t) { return Position_Popup_Words(spot, s, p, t); };
    EXPECT_EQ(popup(Position_Spot::DRbyTrack, 465.5).front(), "Positions using Co/ Dist");
    EXPECT_EQ(popup(Position_Spot::DRbyTrack, 466.0).back(), "(Failure)");
    EXPECT_EQ(Atlas_Position_Error(s, p, 465.01), "Track can only be used for 365 days");
    EXPECT_EQ(Atlas_Position_Error(s, p, 465.0), "");
    EXPECT_EQ(Sight_Position_Word(s, p, 500.0), "Track Expired");
    EXPECT_EQ(Sight_Position_Word(s, p, 104.0), "Position Error");
    s.PositionMethod = kDRByPlan;
    const double start = p.Plan_Start(), end = p.Plan_End();
    EXPECT_EQ(Sight_Position_Word(s, p, end + 1), "Plan Expired");
    EXPECT_EQ(Sight_Position_Word(s, p, start - 1), "Before Plan");
    EXPECT_EQ(Atlas_Position_Error(s, p, start - 1), "First Way Point position in use");
    EXPECT_EQ(popup(Position_Spot::DR_Error, end + 1).back(), "Final Way Point position in use");
    EXPECT_EQ(popup(Position_Spot::DRbyPlan, start).front(), "Voyage plan in use");
    // "D.R. by plan" needs the plan in use to be the default plan, and a time within it.
    EXPECT_FALSE(DR_By_Plan_Allowed(s, p, start));
    EXPECT_EQ(popup(Position_Spot::Disabled_DRbyPlan, start).front(), "Default plan not set");
    p.Header.Path = s.DefaultPlanFile = "/plans/a.Voy";
    EXPECT_TRUE(DR_By_Plan_Allowed(s, p, start));
    EXPECT_FALSE(DR_By_Plan_Allowed(s, p, end + 0.1));
    EXPECT_EQ(popup(Position_Spot::Disabled_DRbyPlan, start - 1).front(),
              "Current time is prior to plan starting");
}

}  // namespace
}  // namespace kelmoran
