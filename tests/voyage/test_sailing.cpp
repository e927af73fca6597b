// Sailing formulae: the edge cases of the rhumb-line arithmetic, and a voyage across the
// Pacific and the date line checked leg by leg against GeographicLib's rhumb lines.
#include <GeographicLib/Ellipsoid.hpp>
#include <GeographicLib/Rhumb.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Navigation.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {
namespace {

constexpr double kDeg = 1.0 / 57.2957795130823;

Way_Point Point(double latDeg, double lonDeg) {
    Way_Point w;
    w.Lat = latDeg * kDeg;
    w.Long = lonDeg * kDeg;
    w.Mer_Parts = Mer_Parts(static_cast<float>(w.Lat));
    return w;
}

uint32_t Bits(float f) {
    uint32_t u;
    std::memcpy(&u, &f, sizeof u);
    return u;
}

TEST(Sailing, LegCourseDistanceEdges) {
    // 179°E to 179°W on one parallel: the short way, 120' east, along the parallel.
    float course = -1, dist = -1;
    Leg_Course_Distance(Point(30, 179), Point(30, -179), course, dist);
    EXPECT_FLOAT_EQ(course, 90.0f);
    const double lat = 30 * kDeg;
    EXPECT_NEAR(dist, 120.0 * Length_Degree_Long(lat) / Length_Degree_Lat(lat), 1e-3);
    EXPECT_NEAR(dist, 120.0 * std::cos(lat), 1.0);  // about the departure on a sphere
    // And back west across the meridian.
    Leg_Course_Distance(Point(30, -179), Point(30, 179), course, dist);
    EXPECT_FLOAT_EQ(course, 270.0f);

    // Identical points: course 0.0 and distance 0.
    Leg_Course_Distance(Point(12.5, -40), Point(12.5, -40), course, dist);
    EXPECT_EQ(course, 0.0f);
    EXPECT_EQ(dist, 0.0f);

    // Exactly zero DMP with a westward dLong takes the parallel branch: 270.0.
    Leg_Course_Distance(Point(-45, 10), Point(-45, 9), course, dist);
    EXPECT_FLOAT_EQ(course, 270.0f);
    EXPECT_NEAR(dist, 60.0 * Length_Degree_Long(-45 * kDeg) / Length_Degree_Lat(-45 * kDeg),
                1e-3);

    // A meridian leg: distance is the latitude difference in minutes.
    Leg_Course_Distance(Point(10, 20), Point(11, 20), course, dist);
    EXPECT_FLOAT_EQ(course, 0.0f);
    EXPECT_NEAR(dist, 60.0, 1e-3);
    Leg_Course_Distance(Point(11, 20), Point(10, 20), course, dist);
    EXPECT_FLOAT_EQ(course, 180.0f);

    // A dLong of exactly 180° keeps its sign: east.
    Way_Point a = Point(0, 0), b = Point(0, 0);
    b.Long = 10800.0 / 3437.74677078494;
    Leg_Course_Distance(a, b, course, dist);
    EXPECT_FLOAT_EQ(course, 90.0f);
}

TEST(Sailing, ForwardRhumbLineEdges) {
    // From 89°50'N on 000 for 60 miles the track stops at 89°59'.9N.
    float lat = static_cast<float>((89.0 + 50.0 / 60.0) * kDeg), lon = 0.3f;
    Sail_To_Position(lat, lon, 0.0f, 60.0f);
    EXPECT_EQ(lat, static_cast<float>(59.9 / 3437.74677078494 + 89.0 / 57.2957795130823));
    EXPECT_NEAR(lat / kDeg * 60.0, 89 * 60 + 59.9, 1e-3);
    // The same southwards.
    lat = static_cast<float>(-(89.0 + 50.0 / 60.0) * kDeg);
    Sail_To_Position(lat, lon, 180.0f, 60.0f);
    EXPECT_NEAR(lat / kDeg * 60.0, -(89 * 60 + 59.9), 1e-3);

    // Course 090: the latitude is left bit for bit, by both forward routines.
    const float lat0 = static_cast<float>(0.7123456);
    lat = lat0;
    lon = 0.1f;
    Sail_To_Position(lat, lon, 90.0f, 100.0f);
    EXPECT_EQ(Bits(lat), Bits(lat0));
    EXPECT_GT(lon, 0.1f);
    lat = lat0;
    lon = 0.1f;
    DR_Step(lat, lon, static_cast<float>(90.0 / 57.2957795130823), 100.0f, false, true);
    EXPECT_EQ(Bits(lat), Bits(lat0));
    EXPECT_NEAR((lon - 0.1f) * 3437.74677078494, 100.0 * Long_Scale_At_Lat(lat0), 1e-2);
    // 270 goes west.
    lat = lat0;
    lon = 0.1f;
    Sail_To_Position(lat, lon, 270.0f, 100.0f);
    EXPECT_LT(lon, 0.1f);

    // A step across the date line comes out on the other side, normalised.
    lat = 0;
    lon = static_cast<float>(179.9 * kDeg);
    DR_Step(lat, lon, static_cast<float>(90.0 * kDeg), 60.0f, false, false);
    EXPECT_NEAR(lon / kDeg, -179.1, 0.01);

    // The pole guard stops a DR one second of arc short of the pole with longitude 0;
    // without the guard the latitude runs on.
    lat = static_cast<float>(89.0 * kDeg);
    lon = 1.0f;
    EXPECT_TRUE(DR_Step(lat, lon, 0.0f, 480.0f, false, true));
    EXPECT_EQ(lat, static_cast<float>(1.5707963267949 - 1.0 / 206264.806247096));
    EXPECT_EQ(lon, 0.0f);
    lat = static_cast<float>(89.0 * kDeg);
    EXPECT_FALSE(DR_Step(lat, lon, 0.0f, 480.0f, false, false));
    EXPECT_GT(lat, 1.5707964f);
}

TEST(Sailing, MeridionalPartsAndNormalising) {
    EXPECT_EQ(Mer_Parts(static_cast<float>(1.5707963267949)), 46183.3f);
    EXPECT_EQ(Mer_Parts(static_cast<float>(-1.5707963267949)), -46183.3f);
    EXPECT_EQ(Mer_Parts_Tables(static_cast<float>(1.5707963267949)), 91885.59f);
    EXPECT_EQ(Mer_Parts_Tables(static_cast<float>(-1.5707963267949)), -91885.59f);
    EXPECT_NEAR(Mer_Parts(0.0f), 0.0f, 1e-9);
    // Against GeographicLib's isometric latitude (in minutes), on WGS 84 and on the
    // spheroid of the printed tables (e = 0.08248339904, Clarke 1880).
    const GeographicLib::Ellipsoid& wgs = GeographicLib::Ellipsoid::WGS84();
    const double e2 = 0.08248339904 * 0.08248339904;
    const GeographicLib::Ellipsoid clarke(6378249.145, 1.0 - std::sqrt(1.0 - e2));
    for (double d : {-80.0, -45.0, -10.0, 5.0, 33.3, 60.0, 75.0, 88.0}) {
        const float lat = static_cast<float>(d * kDeg);
        const double deg = lat / kDeg;
        EXPECT_NEAR(Mer_Parts(lat), wgs.IsometricLatitude(deg) * 60.0, 0.02) << d;
        EXPECT_NEAR(Mer_Parts_Tables(lat), clarke.IsometricLatitude(deg) * 60.0, 0.02) << d;
    }

    float lon = 3.2f;
    Normalise_Long(lon);
    EXPECT_NEAR(lon, 3.2 - 6.28318530717959, 1e-6);
    EXPECT_NEAR(lon, -3.083, 1e-3);
    lon = -3.1415927f;
    Normalise_Long(lon);
    EXPECT_EQ(lon, -3.1415927f);
    lon = 3.1415927f;
    Normalise_Long(lon);
    EXPECT_EQ(lon, 3.1415927f);
    lon = -20.0f;
    Normalise_Long(lon);
    EXPECT_NEAR(lon, -20.0 + 3 * 6.28318530717959, 1e-5);
    lon = 1e30f;  // absurd input ends quickly, within range
    Normalise_Long(lon);
    EXPECT_LE(std::fabs(lon), 3.1415927f);
    lon = NAN;
    Normalise_Long(lon);
    EXPECT_EQ(lon, 0.0f);
}

TEST(Sailing, BearingFromComponentsQuadrants) {
    const double pi = 3.14159265358979;
    EXPECT_FLOAT_EQ(Bearing_From_Components(-1, 1), static_cast<float>(7 * pi / 4));
    EXPECT_FLOAT_EQ(Bearing_From_Components(-1, -1), static_cast<float>(5 * pi / 4));
    EXPECT_FLOAT_EQ(Bearing_From_Components(1, -1), static_cast<float>(3 * pi / 4));
    EXPECT_FLOAT_EQ(Bearing_From_Components(1, 1), static_cast<float>(pi / 4));
    EXPECT_EQ(Bearing_From_Components(0, 0), 0.0f);
    EXPECT_EQ(Bearing_From_Components(0, -2), 3.1415927f);
    EXPECT_EQ(Bearing_From_Components(0, 2), 0.0f);
    EXPECT_EQ(Bearing_From_Components(3, 0), 1.5707964f);
    EXPECT_EQ(Bearing_From_Components(-3, 0), static_cast<float>(4.712389024096076));
}

TEST(Sailing, WorkingSheetRoutes) {
    // 10 hours at 12 knots on 045 from 40°N 30°W, worked both ways.
    const double lat0 = 40 * kDeg, lon0 = -30 * kDeg;
    const Sailing_Work m =
        Work_DR(lat0, lon0, 0.0, 10.0 / 24.0, 45.0, 12.0, Sailing_Route::Mercator, false);
    EXPECT_DOUBLE_EQ(m.Run_Hours, 10.0);
    EXPECT_DOUBLE_EQ(m.Distance, 120.0);
    EXPECT_DOUBLE_EQ(m.DLat, 84.9);
    EXPECT_DOUBLE_EQ(m.DMP, Round_Even(m.MP_DR - m.MP_Original, 5));
    EXPECT_DOUBLE_EQ(m.DLong, Round_Even(m.DMP * std::tan(45 * kDeg), 1));
    const Sailing_Work p =
        Work_DR(lat0, lon0, 0.0, 10.0 / 24.0, 45.0, 12.0, Sailing_Route::Plane, false);
    EXPECT_DOUBLE_EQ(p.Departure, 84.9);
    EXPECT_DOUBLE_EQ(p.Cos_Mean_Lat, Round_Even(std::cos((lat0 + p.DR_Lat) / 2), 5));
    // The two routes agree to a few tenths over such a run.
    EXPECT_NEAR(m.DLong, p.DLong, 0.5);
    EXPECT_NEAR(m.DR_Long, lon0 + m.DLong / 3437.74677078494, 1e-12);
    // Due east: DMP is zero and dLong comes from the mean latitude, westward negative.
    const Sailing_Work e = Work_Sailing(lat0, lon0, 270.0, 60.0, Sailing_Route::Mercator, false);
    EXPECT_DOUBLE_EQ(e.DMP, 0.0);
    EXPECT_DOUBLE_EQ(e.DLong, -Round_Even(60.0 / std::cos(lat0), 2));
    // Clarke parts differ from WGS 84 ones.
    const Sailing_Work c =
        Work_DR(lat0, lon0, 0.0, 10.0 / 24.0, 45.0, 12.0, Sailing_Route::Mercator, true);
    EXPECT_NE(c.MP_DR, m.MP_DR);
    // Across the date line the longitude comes back within ±π.
    const Sailing_Work x =
        Work_Sailing(0, 179.5 * kDeg, 90.0, 60.0, Sailing_Route::Plane, false);
    EXPECT_NEAR(x.DR_Long / kDeg, -179.5, 1e-9);
}

// A voyage from Japan to San Francisco by Hawaii, across the 180° meridian, with one leg
// exactly along a parallel. Each leg's course is compared with GeographicLib's rhumb line
// on WGS 84. The program measures distance in minutes of latitude (one nautical mile is
// one minute of arc of latitude, whatever its length in metres), so GeographicLib's
// length in metres is expressed in that unit: divided by the meridian arc of the leg's
// latitude difference per minute, or, along a parallel, by the length of one minute of
// latitude there (the meridional radius of curvature).
TEST(Sailing, PacificVoyageAgainstGeographicLib) {
    const double pts[20][2] = {
        {35.0, 140.0},  {36.5, 145.0},  {38.0, 150.5},  {40.0, 156.0},  {41.5, 162.0},
        {42.0, 168.0},  {42.0, 174.5},  {41.0, 179.5},  {39.5, -175.0}, {37.0, -170.0},
        {34.0, -165.0}, {30.0, -160.5}, {25.0, -158.0}, {21.3, -157.9}, {23.0, -150.0},
        {27.0, -142.0}, {31.0, -135.0}, {34.0, -128.0}, {36.5, -124.0}, {37.8, -122.5}};
    Reset_Shell(nullptr);
    VoyagePlan plan;
    plan.New_Plan(9000.0, 12.0f);
    plan.Way_Points.assign(20, Way_Point{});
    plan.Texts.assign(20, Way_Point_Text{});
    for (int i = 0; i < 20; ++i) {
        plan.Way_Points[static_cast<size_t>(i)].Lat = pts[i][0] * kDeg;
        plan.Way_Points[static_cast<size_t>(i)].Long = pts[i][1] * kDeg;
        plan.Way_Points[static_cast<size_t>(i)].Speed = 12.0f;
    }
    plan.Test_Wpts_Valid();
    plan.Recalc_Plan();

    const GeographicLib::Rhumb rhumb(GeographicLib::Constants::WGS84_a(),
                                     GeographicLib::Constants::WGS84_f());
    const GeographicLib::Ellipsoid& ell = GeographicLib::Ellipsoid::WGS84();
    const double pi = 3.14159265358979323846;
    double hours = 0;
    double worstCourse = 0, worstMiles = 0;
    for (int i = 0; i + 1 < 20; ++i) {
        const Way_Point& w = plan.Way_Points[static_cast<size_t>(i)];
        double s12, azi;
        rhumb.Inverse(pts[i][0], pts[i][1], pts[i + 1][0], pts[i + 1][1], s12, azi);
        if (azi < 0) azi += 360;
        double miles;
        const double dLatMin = (pts[i + 1][0] - pts[i][0]) * 60.0;
        if (dLatMin == 0) {
            const double minute = ell.MeridionalCurvatureRadius(pts[i][0]) * pi / 10800.0;
            miles = s12 / minute;
        } else {
            const double arc =
                ell.MeridianDistance(pts[i + 1][0]) - ell.MeridianDistance(pts[i][0]);
            miles = s12 * dLatMin / arc;
        }
        worstCourse = std::max(worstCourse, std::fabs(w.Course - azi));
        worstMiles = std::max(worstMiles, std::fabs(w.Distance - miles));
        EXPECT_NEAR(w.Course, azi, 0.1) << "leg " << i;
        EXPECT_NEAR(w.Distance, miles, 0.1) << "leg " << i;
        hours += w.Distance / w.Speed;
        EXPECT_NEAR(plan.Way_Points[static_cast<size_t>(i + 1)].Time,
                    plan.Plan_Start() + hours / 24.0, 1e-6);
    }
    std::printf("Pacific legs: worst course %.4f deg, worst distance %.4f mile\n", worstCourse,
                worstMiles);
    // The date-line leg goes east the short way.
    EXPECT_GT(plan.Way_Points[7].Course, 90.0f);
    EXPECT_LT(plan.Way_Points[7].Course, 180.0f);
    EXPECT_EQ(plan.Way_Points[5].Course, 90.0f);
    EXPECT_DOUBLE_EQ(plan.Plan_End(), plan.Way_Points[19].Time);
    EXPECT_NEAR(plan.Way_Points[0].Distance_To_Go, plan.Way_Points[19].Total_Distance, 1e-3);
}

}  // namespace
}  // namespace kelmoran
