// The fix from position lines and its confidence ellipse.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "settings/SettingsRecord.h"
#include "sights/Sight_Fix.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {
namespace {

constexpr float kScale = 0.2f;                  // pixels per second of arc
constexpr double kPixel = 1.0 / kScale / 60.0;  // one pixel of the sheet in minutes

struct Line {
    float Az;       // degrees
    float Minutes;  // intercept, positive away
};

SightSet Set_Of(const std::vector<Line>& lines) {
    Settings = SettingsRecord{};
    Settings.PositionMethod = kFixPosition;
    Settings.ObserverLat = 0.8f;
    Settings.ObserverLong = -0.3f;
    SightSet set(6);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Sight_Record& s = set.Sights[i];
        s.Row_Used = s.Has_Body = kTrue;
        s.Line_Az = lines[i].Az;
        s.Intercept = static_cast<float>(lines[i].Minutes / kMinPerRad);
    }
    set.Fix_Sight.DR_Lat = 0.8f;
    set.Fix_Sight.DR_Long = -0.3f;
    return set;
}

Fix_Result Fix_Of(const std::vector<Line>& lines, Ellipse_Size size = Ellipse_Size::Medium) {
    return Calc_Fix(Set_Of(lines), kScale, 800, 600, size);
}

double Minutes(double radians) {
    return radians * kMinPerRad;
}

TEST(SightFix, NoSightLeavesTheDR) {
    const Fix_Result fix = Fix_Of({});
    EXPECT_EQ(fix.Type_of_Fix, "DR");
    EXPECT_EQ(fix.Fix_Lat, 0.8f);
    EXPECT_EQ(fix.Fix_Longt, -0.3f);
    EXPECT_FALSE(fix.Has_Ellipse);
    EXPECT_EQ(fix.Circle_Centre, (Sheet_Point{400, 300}));
    EXPECT_EQ(fix.Cross[0], (Sheet_Point{385, 300}));
    EXPECT_EQ(fix.Cross[3], (Sheet_Point{400, 315}));
}

// One or two lines: the label and the position, never an ellipse.
TEST(SightFix, OneAndTwoLines) {
    const double c45 = std::cos(45.0 / kDegPerRad), root2 = std::sqrt(2.0f);
    const struct {
        std::vector<Line> Lines;
        const char* Type;
        double dLat, dDep, Tolerance;
    } cases[] = {
        // 6'.0 away from 045: the foot of the perpendicular 6 miles on 225.
        {{{45.0f, 6.0f}}, "ITP", -6 * c45, -6 * c45, kPixel / 2},
        // 045 2' towards and 225 4' away: lines 2 and 4 miles on 045, their mean at 3.
        {{{45.0f, -2.0f}, {225.0f, 4.0f}}, "Mean ITP", 3 * c45, 3 * c45, kPixel / 2},
        // North body 3' towards, east body 2' away: exactly the corner 3 N, 2 W, either way
        // round; half a degree off the cardinals by the general crossing.
        {{{0.0f, -3.0f}, {90.0f, 2.0f}}, "Fix", 3, -2, 1e-5},
        {{{90.0f, 2.0f}, {0.0f, -3.0f}}, "Fix", 3, -2, 1e-5},
        {{{0.5f, -3.0f}, {90.5f, 2.0f}}, "Fix", 3, -2, 0.05},
        // West body 1' away (1 mile east) and 045 1'.414 towards (x + y = 2).
        {{{270.0f, 1.0f}, {45.0f, -static_cast<float>(root2)}}, "Fix", 1, 1, 1e-4},
    };
    for (const auto& c : cases) {
        const Fix_Result fix = Fix_Of(c.Lines);
        EXPECT_EQ(fix.Type_of_Fix, c.Type) << c.Lines[0].Az;
        EXPECT_FALSE(fix.Has_Ellipse);
        EXPECT_TRUE(fix.Ellipse.empty());
        EXPECT_NEAR(Minutes(fix.dLat), c.dLat, c.Tolerance) << c.Type << " " << c.Lines[0].Az;
        EXPECT_NEAR(Minutes(fix.dDep), c.dDep, c.Tolerance) << c.Type << " " << c.Lines[0].Az;
    }
    EXPECT_EQ(Fix_Of({{0.0f, -3.0f}, {90.0f, 2.0f}}).Good_Pairs, 1);
}

TEST(SightFix, CloseLinesMerge) {
    Line_Table table;
    EXPECT_EQ(Merge_Close_Lines(Set_Of({{45.0f, -2.0f}, {225.0f, 4.0f}}), table), 0);
    EXPECT_EQ(table.Az[0], table.Az[1]);
    EXPECT_EQ(table.Int[0], table.Int[1]);
    // 358° 2' towards and 182° 2' away both stand 2 miles north of the DR.
    EXPECT_EQ(Merge_Close_Lines(Set_Of({{358.0f, -2.0f}, {182.0f, 2.0f}, {90.0f, 1.0f}}), table),
              2);
    EXPECT_NEAR(std::fmod(table.Az[0], 180.0), 0.0, 1e-5);
    double dLat = 0, dDep = 0;
    Intersect_Lines(table, dLat, dDep, kScale);
    EXPECT_NEAR(Minutes(dLat), 2.0, 0.01);
    EXPECT_NEAR(Minutes(dDep), -1.0, 0.01);
    // A cut of 170° is a good pair for merging, but not for the label.
    EXPECT_EQ(Merge_Close_Lines(Set_Of({{10.0f, 1.0f}, {180.0f, 2.0f}}), table), 1);
    EXPECT_EQ(Test_Posn_Validity(Set_Of({{10.0f, 1.0f}, {180.0f, 2.0f}})), "Mean ITP");
    EXPECT_EQ(Test_Posn_Validity(Set_Of({{10.0f, 1.0f}, {179.0f, 2.0f}})), "Fix");
    EXPECT_EQ(Test_Posn_Validity(Set_Of({{10.0f, 1.0f}, {200.0f, 2.0f}})), "Fix");
}

TEST(SightFix, EllipseByTheFormulaeOnAHandWorkedSet) {
    // Azimuths 000, 060, 135 with intercepts 2' towards, 1' away, 0'.5 away, round offsets
    // of 1'.5 N and 0'.8 W. By hand: A = 1.75, B = -0.066987, C = 1.25, D = 0.0308926,
    // E = -0.0203263, F = 0.00145833 (degrees); dL = 0.0261799, dM = -0.0139626;
    // S² = |F - dL·D - dM·E| = 0.000365707, S = 1.14749; θ = atan(-0.267949) ÷ 2 = -7°.5;
    // B ÷ sin 2θ = 0.258819; Medium K = 2.145966: a1 = K·S ÷ √1.758819 = 1.85678,
    // a2 = K·S ÷ √1.241181 = 2.21032 minutes.
    const SightSet set = Set_Of({{0.0f, -2.0f}, {60.0f, 1.0f}, {135.0f, 0.5f}});
    const double dL = 1.5 / kMinPerRad, dM = -0.8 / kMinPerRad;
    double a1 = 0, a2 = 0, l1 = 0, l2 = 0, s1 = 0, s2 = 0;
    float angle = 0;
    ASSERT_TRUE(Error_Ellipse(set, dL, dM, Ellipse_Size::Medium, a1, a2, angle));
    EXPECT_NEAR(angle, -7.5 / kDegPerRad, 1e-6);
    EXPECT_NEAR(a1, 1.85678, 2e-5);
    EXPECT_NEAR(a2, 2.21032, 2e-5);
    // The three sizes scale by their factors.
    Error_Ellipse(set, dL, dM, Ellipse_Size::Large, l1, l2, angle);
    Error_Ellipse(set, dL, dM, Ellipse_Size::Small, s1, s2, angle);
    EXPECT_NEAR(l1 / a1, 2.797149896621704 / 2.145966053009033, 1e-9);
    EXPECT_NEAR(s2 / a2, 1.489068627357483 / 2.145966053009033, 1e-9);
    // The outline: 361 points; t = 0 lies a1 along the angle from the centre.
    const auto points = Plot_Confidence_Ellipse(400, 300, kScale, 0.0, 0.0, a1, a2, angle);
    ASSERT_EQ(points.size(), 361u);
    EXPECT_EQ(points.front(), points.back());
    EXPECT_EQ(points[0].x, 400 + std::lround(a1 * std::sin(angle) * kScale * 60.0));
    EXPECT_EQ(points[0].y, 300 - std::lround(a1 * std::cos(angle) * kScale * 60.0));
}

TEST(SightFix, EllipseEdgeCases) {
    double a1 = 0, a2 = 0;
    float angle = 0;
    EXPECT_FALSE(Error_Ellipse(Set_Of({{0.0f, 1.0f}, {90.0f, 1.0f}}), 0, 0, Ellipse_Size::Medium,
                               a1, a2, angle));
    // 000, 090, 180, 270: A = C = 2, the angle has no direction.
    const SightSet square = Set_Of({{0.0f, 1.0f}, {90.0f, 1.0f}, {180.0f, 1.0f}, {270.0f, 2.0f}});
    EXPECT_FALSE(Error_Ellipse(square, 0, 0, Ellipse_Size::Medium, a1, a2, angle));
    // 000, 090, 180 and a second 000: B and sin 2θ are 0 but for rounding; the axes lie N-S
    // and E-W, K·S ÷ √A and K·S ÷ √C with A = 3, C = 1.
    const SightSet cardinal = Set_Of({{0.0f, 1.0f}, {90.0f, 1.0f}, {180.0f, -1.5f}, {0.0f, 1.2f}});
    ASSERT_TRUE(Error_Ellipse(cardinal, -1.0 / kMinPerRad, -1.0 / kMinPerRad, Ellipse_Size::Medium,
                              a1, a2, angle));
    EXPECT_NEAR(angle, 0.0f, 1e-9);
    EXPECT_NEAR(a2 / a1, std::sqrt(3.0), 1e-6);
    // A zero cocked hat 0.1 mile from the DR: a very small ellipse, growing with the DR's
    // distance (the offsets enter the residual in radians times 60).
    const Fix_Result fix =
        Fix_Of({{0.0f, -0.1f}, {90.0f, -0.1f}, {45.0f, -std::sqrt(0.02f)}}, Ellipse_Size::Large);
    ASSERT_TRUE(fix.Has_Ellipse);
    EXPECT_LT(fix.Semi_Axis1, 0.15);
    EXPECT_LT(fix.Semi_Axis2, 0.15);
    EXPECT_NEAR(Minutes(fix.dLat), 0.1, 1e-4);
    EXPECT_NEAR(Minutes(fix.dDep), 0.1, 1e-4);
    const Fix_Result far =
        Fix_Of({{0.0f, -10.0f}, {90.0f, -10.0f}, {45.0f, -std::sqrt(200.0f)}}, Ellipse_Size::Large);
    EXPECT_NEAR(far.Semi_Axis1 / fix.Semi_Axis1, 100.0, 0.5);
}

TEST(SightFix, PoleMeridianAndDRWarning) {
    float lat = 0, lon = 0;
    const float drLat = static_cast<float>(89.9 / kDegPerRad);
    for (const float sign : {1.0f, -1.0f}) {  // over the pole the latitude folds back
        Calc_Final_Position(sign * drLat, 1.0f, sign * 0.3 / kDegPerRad, 0.0, lat, lon);
        EXPECT_NEAR(lat * kDegPerRad, sign * 89.8, 1e-4);
        EXPECT_EQ(lon, 1.0f);
    }
    Calc_Final_Position(0.0f, 3.14f, 0.0, 0.01, lat, lon);  // across 180° back within ±π
    EXPECT_NEAR(lon, 3.15 - kTwoPi, 1e-6);

    SightSet set = Set_Of({{45.0f, 1.0f}});
    Settings.PositionMethod = kDRCourseSpeed;
    Settings.FixSpeed = 5.0f;
    set.Fix_Sight.Sight_Time = 400.0;  // more than 365 days from the track's start
    EXPECT_TRUE(Calc_Fix(set, kScale, 800, 600, Ellipse_Size::Small).DR_Warning);
    set.Fix_Sight.Sight_Time = 10.0;
    EXPECT_FALSE(Calc_Fix(set, kScale, 800, 600, Ellipse_Size::Small).DR_Warning);
}

}  // namespace
}  // namespace kelmoran
