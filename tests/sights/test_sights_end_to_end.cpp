// Sights made from a known position by independent libraries, identified and reduced by
// the program from a dead reckoning some miles off, and crossed into a fix.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <tuple>
#include <vector>

#include "ephemeris/Series.h"
#include "sight_support.h"
#include "sights/M_Sights.h"
#include "sights/Sight_Fix.h"
#include "sights/Sights.h"
#include "stars/M_Resources.h"
// The reference libraries last: their headers define macros such as OK.
#include "sight_reference.h"

namespace kelmoran {
namespace {

using namespace testing_support;

constexpr float kPlotScale = 0.2f;  // pixels per second of arc: 1 pixel is 0.083 mile

struct Reference_Set {
    double Lat = 0, Lon = 0;  // true position, radians
    std::vector<int> Bodies;
    std::vector<double> Times;         // MyJD
    std::vector<double> Hs;            // sextant altitude before rounding, radians
    std::vector<float> Az;             // azimuth as entered, whole degrees
    float Near_Lat = 0, Near_Lon = 0;  // a DR within 5 miles
    float Far_Lat = 0, Far_Lon = 0;    // a DR 20 to 40 miles off
};

// Bodies 15° to 65° high whose lines cut at 30° or more, or run reciprocal within 5°.
bool Make_Set(std::mt19937& rng, int wanted, Reference_Set& set) {
    std::uniform_real_distribution<double> day(1827.0, 11322.0);  // 2005 .. 2030
    std::uniform_real_distribution<double> latDeg(-60.0, 60.0), lonDeg(-180.0, 180.0);
    std::uniform_int_distribution<int> coin(0, 1);
    const double jd0 = day(rng);
    set.Lat = latDeg(rng) / kDegreesPerRadian;
    set.Lon = lonDeg(rng) / kDegreesPerRadian;
    // The Sun, Moon and planets take every other place of the pool among the stars.
    std::vector<int> solar = {coin(rng), 2 + coin(rng), 4, 5, 6, 7, 8}, starList, pool;
    for (const MainStarRow& row : MainStars) starList.push_back(row.Star);
    std::shuffle(solar.begin(), solar.end(), rng);
    std::shuffle(starList.begin(), starList.end(), rng);
    for (std::size_t k = 0; k < starList.size(); ++k) {
        if (k < solar.size()) pool.push_back(solar[k]);
        pool.push_back(starList[k]);
    }
    std::vector<double> azimuths;
    for (const int body : pool) {
        if (static_cast<int>(set.Bodies.size()) == wanted) break;
        const double t = jd0 + set.Bodies.size() * 2.0 / 1440.0;
        Observed o;
        if (!Reference_Sight(body, t, set.Lat, set.Lon, Settings.Pressure, Settings.Temp, o))
            continue;
        const double altDeg = o.Alt * kDegreesPerRadian;
        if (altDeg < 15 || altDeg > 65) continue;
        const bool fits = std::all_of(azimuths.begin(), azimuths.end(), [&](double a) {
            const double sep = std::fmod(std::fabs(a - o.Az), 180.0);
            return std::min(sep, 180.0 - sep) >= 30.0 || std::fabs(std::fabs(a - o.Az) - 180) <= 5;
        });
        if (!fits) continue;
        azimuths.push_back(o.Az);
        set.Bodies.push_back(body);
        set.Times.push_back(t);
        set.Hs.push_back(o.Alt + DipRad + IndexErrorRad);
        set.Az.push_back(static_cast<float>(std::fmod(std::nearbyint(o.Az), 360.0)));
    }
    if (set.Bodies.size() < 3) return false;
    std::uniform_real_distribution<double> course(0.0, 360.0), near(0.0, 5.0), far(20.0, 40.0);
    for (auto [lat, lon, miles] : {std::tuple{&set.Near_Lat, &set.Near_Lon, &near},
                                   std::tuple{&set.Far_Lat, &set.Far_Lon, &far}}) {
        *lat = static_cast<float>(set.Lat);
        *lon = static_cast<float>(set.Lon);
        const float distance = static_cast<float>((*miles)(rng));
        Sail_To_Position(*lat, *lon, static_cast<float>(course(rng)), distance);
    }
    return true;
}

void Enter_Sights(SightSet& set, const Reference_Set& ref, const std::vector<double>& noise) {
    set.Clear();
    for (std::size_t i = 0; i < ref.Bodies.size(); ++i)
        Enter_Row(set, static_cast<int>(i), ref.Times[i],
                  ref.Hs[i] + (noise.empty() ? 0 : noise[i]), ref.Az[i]);
    set.Fix_Sight.Sight_Time = ref.Times.back();
}

double Fix_Error_Miles(SightSet& set, const Reference_Set& ref) {
    float course = 0, speed = 0;
    Get_Position(set.Fix_Sight.Sight_Time, set.Fix_Sight.DR_Lat, set.Fix_Sight.DR_Long, course,
                 speed);
    const Fix_Result fix = Calc_Fix(set, kPlotScale, 800, 800, Ellipse_Size::Medium);
    const double dLat = (fix.Fix_Lat - ref.Lat) * kArcminPerRadian;
    const double dLon =
        std::remainder(fix.Fix_Longt - ref.Lon, kTwoPi) * kArcminPerRadian * std::cos(ref.Lat);
    return std::hypot(dLat, dLon);
}

class SightsEndToEnd : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        Load_Star_Tables();
        Observer_At(0.0f, 0.0f, -1.5f, 4.0f);
        std::mt19937 rng(20240517u);
        while (sets.size() < 50) {
            Reference_Set ref;
            if (Make_Set(rng, 3 + static_cast<int>(sets.size()) % 4, ref)) sets.push_back(ref);
        }
    }
    static std::vector<Reference_Set> sets;
};
std::vector<Reference_Set> SightsEndToEnd::sets;

// Intercepts from the true position (the rounding to 0'.1 and the refraction models);
// identification with the 10' limit from a DR within 5 miles; then from a DR 20 to 40 miles
// off (the 60' item of the filter) the rows keep their bodies and the fix is crossed.
TEST_F(SightsEndToEnd, RightBodiesAndFixWithinThreeTenthsOfAMile) {
    SightSet set(14);
    double worstTrue[3] = {0, 0, 0}, worst = 0, worstNear = 0;
    int count[3] = {0, 0, 0};
    const float tenMinutes = static_cast<float>(10.0 / kArcminPerRadian);
    for (const Reference_Set& ref : sets) {
        for (const bool fromTrue : {true, false}) {
            Use_DR(fromTrue ? static_cast<float>(ref.Lat) : ref.Near_Lat,
                   fromTrue ? static_cast<float>(ref.Lon) : ref.Near_Lon);
            SightsFilter.AltLimit = tenMinutes;
            Enter_Sights(set, ref, {});
            for (std::size_t i = 0; i < ref.Bodies.size(); ++i) {
                const int kind = ref.Bodies[i] < 4 ? 0 : ref.Bodies[i] < 12 ? 1 : 2;
                const Sight_Record& s = set.Sights[i];
                Reduce_Sight(set, static_cast<int>(i), false);
                EXPECT_TRUE(s.Has_Body != 0) << "body " << ref.Bodies[i];
                ASSERT_EQ(s.Body_Id, ref.Bodies[i]);
                EXPECT_LE(std::fabs(s.Intercept) * kArcminPerRadian, 5.5);
                if (fromTrue) {
                    worstTrue[kind] =
                        std::max(worstTrue[kind], std::fabs(s.Intercept * kArcminPerRadian));
                    ++count[kind];
                }
            }
        }
        worstNear = std::max(worstNear, Fix_Error_Miles(set, ref));
        Use_DR(ref.Far_Lat, ref.Far_Lon);
        SightsFilter.AltLimit = static_cast<float>(60.0 / kArcminPerRadian);
        for (std::size_t i = 0; i < ref.Bodies.size(); ++i) {
            Reduce_Sight(set, static_cast<int>(i), false);
            EXPECT_EQ(set.Sights[i].Body_Id, ref.Bodies[i]);
        }
        const double error = Fix_Error_Miles(set, ref);
        EXPECT_LT(error, 0.3);
        worst = std::max(worst, error);
    }
    std::printf(
        "largest intercept from the true position: Sun and Moon %.3f', planets %.3f', "
        "stars %.3f'\n",
        worstTrue[0], worstTrue[1], worstTrue[2]);
    for (const double w : worstTrue) EXPECT_LT(w, 0.1);
    std::printf(
        "50 sets, %d sights (%d Sun/Moon, %d planets, %d stars): largest fix error "
        "%.3f mile (%.3f from the DR within 5 miles)\n",
        count[0] + count[1] + count[2], count[0], count[1], count[2], worst, worstNear);
}

TEST_F(SightsEndToEnd, NoiseOfTwoTenthsOfAMinute) {
    SightSet set(14);
    std::mt19937 rng(77u);
    std::normal_distribution<double> noise(0.0, 0.2 / kArcminPerRadian);
    SightsFilter.AltLimit = static_cast<float>(60.0 / kArcminPerRadian);
    std::vector<double> errors;
    for (int draw = 0; draw < 10; ++draw) {
        for (const Reference_Set& ref : sets) {
            Use_DR(ref.Far_Lat, ref.Far_Lon);
            std::vector<double> n(ref.Bodies.size());
            for (double& v : n) v = noise(rng);
            Enter_Sights(set, ref, n);
            for (std::size_t i = 0; i < ref.Bodies.size(); ++i) {
                set.Sights[i].Has_Body = kTrue;  // the body chosen before stays chosen
                set.Sights[i].Body_Id = ref.Bodies[i];
                Reduce_Sight(set, static_cast<int>(i), false);
                ASSERT_EQ(set.Sights[i].Body_Id, ref.Bodies[i]);
            }
            errors.push_back(Fix_Error_Miles(set, ref));
        }
    }
    std::sort(errors.begin(), errors.end());
    const double median = errors[errors.size() / 2];
    const double p95 = errors[errors.size() * 95 / 100];
    std::printf(
        "%zu sets with 0'.2 noise: median fix error %.3f mile, 95th percentile %.3f, "
        "largest %.3f\n",
        errors.size(), median, p95, errors.back());
    EXPECT_LT(median, 0.25);
    EXPECT_LT(p95, 0.6);
}

}  // namespace
}  // namespace kelmoran
