// The Moon's phases: the published worked example, the search, and the Swiss Ephemeris.
#include <gtest/gtest.h>
#include <swephexp.h>

#include <cmath>
#include <cstdio>

#include "ephemeris/Moon_Phases.h"
#include "ephemeris/Time_Calcs.h"

namespace kelmoran {
namespace {

constexpr double kMinute = 1.0 / 1440.0;

TEST(MoonPhases, WorkedExampleOfTheMethod) {
    // The published figures have five decimals of a day. The New Moon of 1977 February:
    // k = -283, JDE 2443192.65118; the first Last Quarter of 2044 (k = 544.75): 2467636.49186.
    const auto published = [](double jde) { return std::round(jde * 1.0e5); };
    EXPECT_EQ(published(Phase_Of_Lunation(-283.0, MoonPhase::New) + kJ2000), 244319265118.0);
    EXPECT_EQ(published(Phase_Of_Lunation(544.75, MoonPhase::LastQuarter) + kJ2000),
              246763649186.0);
}

TEST(MoonPhases, SearchStepsBackToTheLastPhaseAtOrBeforeTheTarget) {
    const double deltaT = 64.0 / 3.15576e9;
    for (int p = 0; p < 4; ++p) {
        const MoonPhase phase = static_cast<MoonPhase>(p);
        for (double k = -1300.0; k <= 1300.0; k += 97.0) {
            const double at = Phase_Of_Lunation(k + 0.25 * p, phase) - deltaT * 36525.0;
            const double next = Phase_Of_Lunation(k + 1.0 + 0.25 * p, phase) - deltaT * 36525.0;
            // Exactly at the phase, that phase; any moment up to the next, the same phase.
            EXPECT_DOUBLE_EQ(Phase_Before(at, deltaT, phase), at);
            EXPECT_DOUBLE_EQ(Phase_Before(at + 0.001, deltaT, phase), at);
            EXPECT_DOUBLE_EQ(Phase_Before(next - 0.001, deltaT, phase), at);
            EXPECT_DOUBLE_EQ(Phase_Before(next, deltaT, phase), next);
        }
    }
    const double t = 8765.4321;
    EXPECT_EQ(New_Moon_Before(t, deltaT), Phase_Before(t, deltaT, MoonPhase::New));
    EXPECT_EQ(Full_Moon_Before(t, deltaT), Phase_Before(t, deltaT, MoonPhase::Full));
    EXPECT_EQ(Quarter_Before(t, deltaT, false), Phase_Before(t, deltaT, MoonPhase::FirstQuarter));
    EXPECT_EQ(Quarter_Before(t, deltaT, true), Phase_Before(t, deltaT, MoonPhase::LastQuarter));
}

// Swiss Ephemeris: the Moon's apparent longitude less the Sun's less the phase, degrees.
double Swe_Elongation_Error(double jdTT, double phaseDeg) {
    double sun[6], moon[6];
    char err[256];
    swe_calc(jdTT, SE_SUN, SEFLG_SWIEPH, sun, err);
    swe_calc(jdTT, SE_MOON, SEFLG_SWIEPH, moon, err);
    return std::remainder(moon[0] - sun[0] - phaseDeg, 360.0);
}

TEST(MoonPhases, EveryPhaseFrom1900To2100WithinAMinuteOfTheSwissEphemeris) {
    swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
    const double first = std::ceil((Calc_JD({1900, 1, 0, 1, 0, 0, 0, 0}, false)) / kSynodicMonth);
    const double last = std::floor(Calc_JD({2100, 12, 0, 31, 0, 0, 0, 0}, false) / kSynodicMonth);
    double worst[4] = {0, 0, 0, 0};
    int count = 0;
    for (double k = first; k <= last; k += 1.0) {
        for (int p = 0; p < 4; ++p) {
            const double ours = Phase_Of_Lunation(k + 0.25 * p, static_cast<MoonPhase>(p));
            // Newton's method on the elongation, from our moment, at the mean rate.
            double jd = ours + kJ2000;
            for (int i = 0; i < 8; ++i) {
                const double e = Swe_Elongation_Error(jd, 90.0 * p);
                jd -= e / 12.190749;
                if (std::fabs(e) < 1e-7) break;
            }
            const double diff = std::fabs(ours + kJ2000 - jd);
            worst[p] = std::max(worst[p], diff);
            ++count;
        }
    }
    swe_close();
    std::printf(
        "%d phases; largest differences in seconds: New %.1f, First Quarter %.1f, "
        "Full %.1f, Last Quarter %.1f\n",
        count, worst[0] * 86400.0, worst[1] * 86400.0, worst[2] * 86400.0, worst[3] * 86400.0);
    EXPECT_GT(count, 9900);
    for (double w : worst) EXPECT_LT(w, kMinute);
}

}  // namespace
}  // namespace kelmoran
