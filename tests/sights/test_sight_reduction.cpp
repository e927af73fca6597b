// Reduction of a sight and identification of the body.
#include <gtest/gtest.h>

#include <cmath>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Series.h"
#include "ephemeris/Sun.h"
#include "sight_support.h"
#include "sights/M_Sights.h"
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
    EXPECT_NEAR(std::fabs(lower.SD) * kMinPerRad, 16.0, 0.3);
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
    EXPECT_EQ(Intercept_Text(static_cast<float>(0.04 / kMinPerRad)), "Nil ");
    EXPECT_EQ(Intercept_Text(static_cast<float>(1.23 / kMinPerRad)), "1'.2 away");
    EXPECT_EQ(Intercept_Text(static_cast<float>(-12.36 / kMinPerRad)), "12'.4 towards");
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
        SightsFilter.AltLimit = static_cast<float>(600.0 / kMinPerRad);
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
    const double west10 = (set.Sights[0].DR_Long - kLon) * kMinPerRad * std::cos(kLat);
    EXPECT_NEAR(west10, -10.0, 0.05);
    EXPECT_EQ(set.DR_Warning[0], kFalse);
    Enter(1, 8830.5 + 400, 0.5f, 100.0f);
    EXPECT_EQ(set.DR_Warning[1], kTrue);
}

}  // namespace
}  // namespace kelmoran
