// Reduction of a sight, identification of the body, and the fix with its ellipse.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Series.h"
#include "ephemeris/Sun.h"
#include "sight_support.h"
#include "sights/M_Sights.h"
#include "sights/Sight_Fix.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"

namespace kelmoran {
namespace {

constexpr float kLat = 0.7f, kLon = -0.2f;
const double kNoon = 8830.0 + 0.2 / kTwoPi;  // the Sun near its culmination

using namespace testing_support;

void Observer() {
    Observer_At(kLat, kLon, 0.0f, 3.0f);
    SightsFilter.AzLimit = 20.0f;
    SightsFilter.StarCount = 280;
}

// A sextant altitude that reduces to an intercept of nearly nothing for `code` at `place`.
float Sextant_For(int32_t code, const BodyPlace& place, float& az) {
    float hs = 0.5f;
    for (int k = 0; k < 4; ++k) {
        const Body_Test t = Test_Body(Prepare_Reduction(hs, kLat, kLon, 0.0f), code, place);
        hs += t.Alt_Diff;
        az = static_cast<float>(t.Zn_Deg);
    }
    return hs;
}

TEST(SightReduction, LimbsAndStars) {
    Observer();
    const BodyPlace sun = Calc_Sun(kAccuracyFull, Calc_EarthFrame(8830.0));  // March
    const Reduction_Work w = Prepare_Reduction(0.6f, kLat, kLon, 180.0f);
    const Body_Test upper = Test_Body(w, 0, sun), lower = Test_Body(w, 1, sun);
    EXPECT_LT(upper.SD, 0.0f);
    EXPECT_EQ(upper.SD, -lower.SD);
    // Twice SD, but for the parallax's small dependence on the limb (0.1").
    EXPECT_NEAR(upper.Alt_Diff - lower.Alt_Diff, 2 * std::fabs(lower.SD), 5e-7);
    EXPECT_NEAR(std::fabs(lower.SD) * kArcminPerRadian, 16.0, 0.3);
    EXPECT_GT(lower.Parallax, 0.0);
    const Body_Test star = Test_Body(w, 12, sun);  // the same place as a star
    EXPECT_EQ(star.SD, 0.0f);
    EXPECT_EQ(star.Parallax, 0.0);
    EXPECT_DOUBLE_EQ(star.Hc, 1.5707963267949 - star.Zc);
    // At the equator the radius is one.
    EXPECT_EQ(Test_Body(Prepare_Reduction(0.6f, 0.0f, kLon, 180.0f), 1, sun).Rho, 1.0);
}

TEST(SightReduction, TextsOfTheIntercept) {
    EXPECT_EQ(Intercept_Text(0.0f), "Nil ");
    EXPECT_EQ(Intercept_Text(static_cast<float>(0.04 / kArcminPerRadian)), "Nil ");
    EXPECT_EQ(Intercept_Text(static_cast<float>(1.23 / kArcminPerRadian)), "1'.2 away");
    EXPECT_EQ(Intercept_Text(static_cast<float>(-12.36 / kArcminPerRadian)), "12'.4 towards");
    EXPECT_EQ(Azimuth_Text(359.96), "000°.0 T");
    EXPECT_EQ(Azimuth_Text(45.04), "045°.0 T");
    EXPECT_EQ(Line_Bearings_Text(45.0), "135°/ 315°");
    EXPECT_EQ(Line_Bearings_Text(100.0), "010°/ 190°");
    EXPECT_EQ(Line_Bearings_Text(300.0), "030°/ 210°");
}

class Identification : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { Load_Star_Tables(); }
    void SetUp() override { Observer(); }
    SightSet set{6};
    void Enter(int row, double t, float hs, float az) {
        Enter_Row(set, row, t, hs, az);
        Reduce_Sight(set, row, false);
    }
    void Widen() {
        SightsFilter.AzLimit = 90.0f;
        SightsFilter.AltLimit = static_cast<float>(600.0 / kArcminPerRadian);
    }
};

TEST_F(Identification, AStarIsFoundAndKeptWhenTheLimitsWiden) {
    const double t = 8830.5;  // midnight
    Compute_Star_Places(SightsFilter.StarCount, t);
    const EarthFrame frame = Calc_EarthFrame(t);
    int32_t star = 0;
    float hs = 0, az = 0;
    for (const MainStarRow& row : MainStars) {  // the first navigational star well up
        star = row.Star;
        BodyPlace place;
        place.Dec = StarPlaces[star].Dec;
        place.GHA = std::fmod(frame.GAST - StarPlaces[star].RA + kTwoPi, kTwoPi);
        if ((hs = Sextant_For(star, place, az)) > 0.5f) break;
    }
    ASSERT_GT(hs, 0.5f);
    Enter(0, t, hs, std::nearbyint(az));
    ASSERT_EQ(set.Sights[0].Has_Body, kTrue);
    EXPECT_EQ(set.Sights[0].Body_Id, star);
    EXPECT_EQ(set.Candidates[0][set.Sights[0].Candidate_No].Intercept_Text, "Nil ");
    // Wider limits list more bodies, sorted by |intercept|; the star chosen stays chosen.
    Widen();
    Reduce_Sight(set, 0, false);
    EXPECT_GT(set.Candidates[0].size(), 1u);
    EXPECT_EQ(set.Sights[0].Body_Id, star);
    for (std::size_t k = 1; k < set.Candidates[0].size(); ++k)
        EXPECT_LE(std::fabs(set.Candidates[0][k - 1].Cand_Intercept),
                  std::fabs(set.Candidates[0][k].Cand_Intercept));
    // The main-star limit never finds a star outside the named list.
    SightsFilter.StarCount = kSightMainStars;
    Reduce_Sight(set, 0, false);
    for (const Sight_Candidate& c : set.Candidates[0])
        EXPECT_TRUE(c.Body_Id < 12 || Is_Main_Star(c.Body_Id)) << c.Body_Id;
}

TEST_F(Identification, TheSunAndAnEmptySkyByDayAndNight) {
    float az = 0;
    const float hs = Sextant_For(1, Calc_Sun(kAccuracyFull, Calc_EarthFrame(kNoon)), az);
    Enter(0, kNoon, hs, std::nearbyint(az));
    ASSERT_EQ(set.Sights[0].Has_Body, kTrue);
    EXPECT_EQ(set.Sights[0].Body_Id, 1);
    EXPECT_GT(set.Sights[0].Sun_Alt, 0.3f);
    // Nothing on the opposite bearing at that height: -2, the Sun being up.
    Enter(1, kNoon, hs, std::fmod(std::nearbyint(az) + 180.0f, 360.0f));
    EXPECT_EQ(set.Sights[1].Candidate_No, -2);
    EXPECT_EQ(set.Sights[1].Has_Body, 0);
    EXPECT_TRUE(set.Candidates[1].empty());
    Enter(2, kNoon + 0.5, 1.52f, 10.0f);  // by night the same empty sky gives -1
    EXPECT_EQ(set.Sights[2].Candidate_No, -1);
}

TEST_F(Identification, DaylightStarsOnlyWhenAskedFor) {
    Widen();
    for (const int32_t daylight : {kFalse, kTrue}) {
        SightsFilter.DaylightStars = daylight;
        Enter(0, kNoon, 0.5f, 120.0f);
        bool star = false;
        for (const Sight_Candidate& c : set.Candidates[0]) star = star || c.Body_Id >= 12;
        EXPECT_EQ(star, daylight == kTrue);
    }
}

TEST_F(Identification, EachRowTakesTheDROfItsOwnTime) {
    Settings.PositionMethod = kDRCourseSpeed;
    Settings.FixTime = 8830.5;
    Settings.FixCourse = 90.0f;
    Settings.FixSpeed = 10.0f;
    Enter(0, 8830.5 - 1.0 / 24, 0.5f, 100.0f);
    EXPECT_EQ(set.Sights[0].DR_Lat, kLat);
    // An hour before the fix on 090 at 10 knots: 10 miles west (the dLong by the spheroid's
    // degree lengths, within half a percent of the sphere's).
    const double west10 = (set.Sights[0].DR_Long - kLon) * kArcminPerRadian * std::cos(kLat);
    EXPECT_NEAR(west10, -10.0, 0.05);
    EXPECT_EQ(set.DR_Warning[0], kFalse);
    Enter(1, 8830.5 + 400, 0.5f, 100.0f);
    EXPECT_EQ(set.DR_Warning[1], kTrue);
}

// The fix from position lines and its confidence ellipse.

constexpr float kScale = 0.2f;                  // pixels per second of arc
constexpr double kPixel = 1.0 / kScale / 60.0;  // one pixel of the sheet in minutes

struct Line {
    float Az;       // degrees
    float Minutes;  // intercept, positive away
};

SightSet Set_Of(const std::vector<Line>& lines) {
    Settings = SettingsRecord{};
    Use_DR(0.8f, -0.3f);
    SightSet set(6);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        Sight_Record& s = set.Sights[i];
        s.Row_Used = s.Has_Body = kTrue;
        s.Line_Az = lines[i].Az;
        s.Intercept = static_cast<float>(lines[i].Minutes / kArcminPerRadian);
    }
    set.Fix_Sight.DR_Lat = 0.8f;
    set.Fix_Sight.DR_Long = -0.3f;
    return set;
}

Fix_Result Fix_Of(const std::vector<Line>& lines, Ellipse_Size size = Ellipse_Size::Medium) {
    return Calc_Fix(Set_Of(lines), kScale, 800, 600, size);
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
    const double c45 = std::cos(45.0 / kDegreesPerRadian), root2 = std::sqrt(2.0f);
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
    const double dL = 1.5 / kArcminPerRadian, dM = -0.8 / kArcminPerRadian;
    double a1 = 0, a2 = 0, l1 = 0, l2 = 0, s1 = 0, s2 = 0;
    float angle = 0;
    ASSERT_TRUE(Error_Ellipse(set, dL, dM, Ellipse_Size::Medium, a1, a2, angle));
    EXPECT_NEAR(angle, -7.5 / kDegreesPerRadian, 1e-6);
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
    ASSERT_TRUE(Error_Ellipse(cardinal, -1.0 / kArcminPerRadian, -1.0 / kArcminPerRadian,
                              Ellipse_Size::Medium, a1, a2, angle));
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
    const float drLat = static_cast<float>(89.9 / kDegreesPerRadian);
    for (const float sign : {1.0f, -1.0f}) {  // over the pole the latitude folds back
        Calc_Final_Position(sign * drLat, 1.0f, sign * 0.3 / kDegreesPerRadian, 0.0, lat, lon);
        EXPECT_NEAR(lat * kDegreesPerRadian, sign * 89.8, 1e-4);
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
