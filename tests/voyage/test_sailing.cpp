// Sailing formulae: the edge cases of the rhumb-line arithmetic, and a voyage across the
// Pacific and the date line checked leg by leg against GeographicLib's rhumb lines.
#include <gtest/gtest.h>

#include <GeographicLib/Ellipsoid.hpp>
#include <GeographicLib/Rhumb.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <tuple>

#include "settings/M_Formatting.h"
#include "voyage/Navigation.h"
#include "voyage_test.h"

namespace kelmoran {
namespace {

using namespace voyage_test;

// Course and distance of the leg between two points given in degrees.
std::pair<float, float> Leg(double lat1, double lon1, double lat2, double lon2) {
    Way_Point a, b;
    a.Lat = lat1 * kDeg, a.Long = lon1 * kDeg, b.Lat = lat2 * kDeg, b.Long = lon2 * kDeg;
    a.Mer_Parts = Mer_Parts(static_cast<float>(a.Lat));
    b.Mer_Parts = Mer_Parts(static_cast<float>(b.Lat));
    std::pair<float, float> out{-1.0f, -1.0f};
    Leg_Course_Distance(a, b, out.first, out.second);
    return out;
}

// Miles along a parallel for a dLong in minutes.
double Along(double latDeg, double dLongMin) {
    return dLongMin * Length_Degree_Long(latDeg * kDeg) / Length_Degree_Lat(latDeg * kDeg);
}

TEST(Sailing, LegCourseDistanceEdges) {
    struct Case {
        double lat1, lon1, lat2, lon2;
        float course;
        double miles;
    };
    const Case cases[] = {{30, 179, 30, -179, 90.0f, Along(30, 120)},  // the short way east
                          {30, -179, 30, 179, 270.0f, Along(30, 120)},
                          {-45, 10, -45, 9, 270.0f, Along(-45, 60)},  // DMP 0, going west
                          {10, 20, 11, 20, 0.0f, 60.0},
                          {11, 20, 10, 20, 180.0f, 60.0},
                          {0, 0, 0, 180, 90.0f, Along(0, 10800)}};  // dLong 180° stays east
    for (const Case& c : cases) {
        const auto [course, miles] = Leg(c.lat1, c.lon1, c.lat2, c.lon2);
        EXPECT_FLOAT_EQ(course, c.course) << c.lat1 << " " << c.lon1 << " " << c.lon2;
        EXPECT_NEAR(miles, c.miles, 1e-3) << c.lat1 << " " << c.lon1 << " " << c.lon2;
    }
    EXPECT_NEAR(Leg(30, 179, 30, -179).second, 120.0 * std::cos(30 * kDeg), 1.0);  // sphere
    EXPECT_EQ(Leg(12.5, -40, 12.5, -40), std::make_pair(0.0f, 0.0f));  // identical points
}

TEST(Sailing, ForwardRhumbLineEdges) {
    auto sail = [](double latDeg, float lon, float course, float miles) {
        float lat = static_cast<float>(latDeg * kDeg);
        Sail_To_Position(lat, lon, course, miles);
        return std::pair{lat, lon};
    };
    // From 89°50' on 000 (or 180 in the south) for 60 miles the track stops at 89°59'.9.
    const float north = sail(89.0 + 50.0 / 60.0, 0.3f, 0.0f, 60.0f).first;
    EXPECT_EQ(north, static_cast<float>(59.9 / kMinutesPerRadian + 89.0 / 57.2957795130823));
    EXPECT_NEAR(north / kDeg * 60.0, 89 * 60 + 59.9, 1e-3);
    EXPECT_NEAR(sail(-(89.0 + 50.0 / 60.0), 0.3f, 180.0f, 60.0f).first / kDeg * 60.0,
                -(89 * 60 + 59.9), 1e-3);

    // Course 090 leaves the latitude bit for bit, by both forward routines; 270 goes west.
    const float lat0 = static_cast<float>(0.7123456);
    const auto east = sail(lat0 / kDeg, 0.1f, 90.0f, 100.0f);
    EXPECT_TRUE(Bits(east.first) == Bits(lat0) && east.second > 0.1f);
    EXPECT_LT(sail(lat0 / kDeg, 0.1f, 270.0f, 100.0f).second, 0.1f);
    float lat = lat0, lon = 0.1f;
    DR_Step(lat, lon, static_cast<float>(90.0 / 57.2957795130823), 100.0f, false, true);
    EXPECT_EQ(Bits(lat), Bits(lat0));
    EXPECT_NEAR((lon - 0.1f) * kMinutesPerRadian, 100.0 * Long_Scale_At_Lat(lat0), 1e-2);

    // A step across the date line comes out on the other side, normalised.
    lat = 0, lon = static_cast<float>(179.9 * kDeg);
    DR_Step(lat, lon, static_cast<float>(90.0 * kDeg), 60.0f, false, false);
    EXPECT_NEAR(lon / kDeg, -179.1, 0.01);

    // Without the pole guard (the position methods show it) the latitude runs on.
    lat = static_cast<float>(89.0 * kDeg);
    EXPECT_FALSE(DR_Step(lat, lon, 0.0f, 480.0f, false, false));
    EXPECT_GT(lat, 1.5707964f);
}

TEST(Sailing, MeridionalPartsAndNormalising) {
    for (float pole : {1.5707964f, -1.5707964f}) {
        EXPECT_EQ(Mer_Parts(pole), std::copysign(46183.3f, pole));
        EXPECT_EQ(Mer_Parts_Tables(pole), std::copysign(91885.59f, pole));
    }
    EXPECT_NEAR(Mer_Parts(0.0f), 0.0f, 1e-9);
    // Against GeographicLib's isometric latitude (in minutes), on WGS 84 and on the
    // spheroid of the printed tables (e = 0.08248339904, Clarke 1880).
    const GeographicLib::Ellipsoid& wgs = GeographicLib::Ellipsoid::WGS84();
    const double e2 = 0.08248339904 * 0.08248339904;
    const GeographicLib::Ellipsoid clarke(6378249.145, 1.0 - std::sqrt(1.0 - e2));
    for (double d : {-80.0, -45.0, -10.0, 5.0, 33.3, 60.0, 75.0, 88.0}) {
        const float lat = static_cast<float>(d * kDeg);
        EXPECT_NEAR(Mer_Parts(lat), wgs.IsometricLatitude(lat / kDeg) * 60.0, 0.02) << d;
        EXPECT_NEAR(Mer_Parts_Tables(lat), clarke.IsometricLatitude(lat / kDeg) * 60.0, 0.02) << d;
    }

    // Input, expected and tolerance: only |Long| > π is brought back; NaN becomes 0.
    const float pi = 3.1415927f;
    const struct {
        float in;
        double out, tol;
    } longs[] = {{3.2f, 3.2 - 6.28318530717959, 1e-6},
                 {-pi, -pi, 0},
                 {pi, pi, 0},
                 {-20.0f, -20.0 + 3 * 6.28318530717959, 1e-5},
                 {NAN, 0, 0}};
    for (const auto& c : longs) {
        float lon = c.in;
        Normalise_Long(lon);
        EXPECT_NEAR(lon, c.out, c.tol) << c.in;
    }
    float lon = 1e30f;  // absurd input ends quickly, within range
    Normalise_Long(lon);
    EXPECT_LE(std::fabs(lon), pi);
}

TEST(Sailing, BearingFromComponentsQuadrants) {
    const double pi = 3.14159265358979;
    const struct {
        float x, y;
        double bearing;
    } cases[] = {{-1, 1, 7 * pi / 4}, {-1, -1, 5 * pi / 4}, {1, -1, 3 * pi / 4}, {1, 1, pi / 4},
                 {0, 0, 0},           {0, -2, pi},          {0, 2, 0},           {3, 0, pi / 2},
                 {-3, 0, 3 * pi / 2}};
    for (const auto& c : cases)
        EXPECT_EQ(Bearing_From_Components(c.x, c.y), static_cast<float>(c.bearing))
            << c.x << " " << c.y;
}

TEST(Sailing, WorkingSheetRoutes) {
    // 10 hours at 12 knots on 045 from 40°N 30°W, worked both ways.
    const double lat0 = 40 * kDeg, lon0 = -30 * kDeg;
    auto dr = [&](Sailing_Route route, bool tables) {
        return Work_DR(lat0, lon0, 0.0, 10.0 / 24.0, 45.0, 12.0, route, tables);
    };
    const Sailing_Work m = dr(Sailing_Route::Mercator, false);
    EXPECT_EQ(std::tuple(m.Run_Hours, m.Distance, m.DLat, m.DMP, m.DLong),
              std::tuple(10.0, 120.0, 84.9, Round_Even(m.MP_DR - m.MP_Original, 5),
                         Round_Even(m.DMP * std::tan(45 * kDeg), 1)));
    EXPECT_NEAR(m.DR_Long, lon0 + m.DLong / kMinutesPerRadian, 1e-12);
    EXPECT_NE(dr(Sailing_Route::Mercator, true).MP_DR, m.MP_DR);  // Clarke parts differ
    const Sailing_Work p = dr(Sailing_Route::Plane, false);
    EXPECT_EQ(std::tuple(p.Departure, p.Cos_Mean_Lat),
              std::tuple(84.9, Round_Even(std::cos((lat0 + p.DR_Lat) / 2), 5)));
    EXPECT_NEAR(m.DLong, p.DLong, 0.5);  // the two routes agree to a few tenths
    // Due west: DMP is zero and dLong comes from the mean latitude, negative.
    const Sailing_Work e = Work_Sailing(lat0, lon0, 270.0, 60.0, Sailing_Route::Mercator, false);
    EXPECT_EQ(std::tuple(e.DMP, e.DLong), std::tuple(0.0, -Round_Even(60.0 / std::cos(lat0), 2)));
    // Across the date line the longitude comes back within ±π.
    const Sailing_Work x = Work_Sailing(0, 179.5 * kDeg, 90.0, 60.0, Sailing_Route::Plane, false);
    EXPECT_NEAR(x.DR_Long / kDeg, -179.5, 1e-9);
}

// Japan to San Francisco by Hawaii, across 180° and with one leg along a parallel, against
// GeographicLib's rhumb lines on WGS 84. Our mile is a minute of latitude, so the library's
// metres are divided by the meridian arc per minute of the leg's dLat or, along a parallel,
// by one minute of the meridional radius of curvature.
TEST(Sailing, PacificVoyageAgainstGeographicLib) {
    const double pts[20][2] = {{35.0, 140.0},  {36.5, 145.0},  {38.0, 150.5},  {40.0, 156.0},
                               {41.5, 162.0},  {42.0, 168.0},  {42.0, 174.5},  {41.0, 179.5},
                               {39.5, -175.0}, {37.0, -170.0}, {34.0, -165.0}, {30.0, -160.5},
                               {25.0, -158.0}, {21.3, -157.9}, {23.0, -150.0}, {27.0, -142.0},
                               {31.0, -135.0}, {34.0, -128.0}, {36.5, -124.0}, {37.8, -122.5}};
    Reset_Shell(nullptr);
    VoyagePlan plan = Plan_Of({}, 20, 9000.0, 12.0f);
    for (size_t i = 0; i < 20; ++i)
        plan.Way_Points[i].Lat = pts[i][0] * kDeg, plan.Way_Points[i].Long = pts[i][1] * kDeg;
    plan.Test_Wpts_Valid();
    plan.Recalc_Plan();

    const GeographicLib::Rhumb rhumb(GeographicLib::Constants::WGS84_a(),
                                     GeographicLib::Constants::WGS84_f());
    const GeographicLib::Ellipsoid& ell = GeographicLib::Ellipsoid::WGS84();
    double hours = 0, worstCourse = 0, worstMiles = 0;
    for (size_t i = 0; i + 1 < 20; ++i) {
        const Way_Point& w = plan.Way_Points[i];
        double s12, azi;
        rhumb.Inverse(pts[i][0], pts[i][1], pts[i + 1][0], pts[i + 1][1], s12, azi);
        if (azi < 0) azi += 360;
        const double dLatMin = (pts[i + 1][0] - pts[i][0]) * 60.0;
        const double miles =
            dLatMin == 0
                ? s12 / (ell.MeridionalCurvatureRadius(pts[i][0]) * kDeg / 60.0)
                : s12 * dLatMin /
                      (ell.MeridianDistance(pts[i + 1][0]) - ell.MeridianDistance(pts[i][0]));
        worstCourse = std::max(worstCourse, std::fabs(w.Course - azi));
        worstMiles = std::max(worstMiles, std::fabs(w.Distance - miles));
        EXPECT_NEAR(w.Course, azi, 0.1) << "leg " << i;
        EXPECT_NEAR(w.Distance, miles, 0.1) << "leg " << i;
        hours += w.Distance / w.Speed;
        EXPECT_NEAR(plan.Way_Points[i + 1].Time, plan.Plan_Start() + hours / 24.0, 1e-6);
    }
    std::printf("Pacific legs: worst course %.4f deg, worst distance %.4f mile\n", worstCourse,
                worstMiles);
    EXPECT_TRUE(plan.Way_Points[7].Course > 90.0f && plan.Way_Points[7].Course < 180.0f);  // east
    EXPECT_EQ(plan.Way_Points[5].Course, 90.0f);
    EXPECT_DOUBLE_EQ(plan.Plan_End(), plan.Way_Points[19].Time);
    EXPECT_NEAR(plan.Way_Points[0].Distance_To_Go, plan.Way_Points[19].Total_Distance, 1e-3);
}

}  // namespace
}  // namespace kelmoran
