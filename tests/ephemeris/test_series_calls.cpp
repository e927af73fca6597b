// Which places touch the planets' long series, counted through ld --wrap.
#include <gtest/gtest.h>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Planets.h"

namespace {
int full_calls = 0;
int reduced_calls = 0;
}  // namespace

// The operations' mangled names, as the linker sees them: const member functions taking
// (double, double&, double&, double&), whose object pointer comes first.
extern "C" {
void __real__ZNK8kelmoran12PlanetSeries9PlaceFullEdRdS1_S1_(const void*, double, double*, double*,
                                                            double*);
void __real__ZNK8kelmoran12PlanetSeries12PlaceReducedEdRdS1_S1_(const void*, double, double*,
                                                                double*, double*);
void __wrap__ZNK8kelmoran12PlanetSeries9PlaceFullEdRdS1_S1_(const void* self, double tau, double* L,
                                                            double* B, double* R) {
    ++full_calls;
    __real__ZNK8kelmoran12PlanetSeries9PlaceFullEdRdS1_S1_(self, tau, L, B, R);
}
void __wrap__ZNK8kelmoran12PlanetSeries12PlaceReducedEdRdS1_S1_(const void* self, double tau,
                                                                double* L, double* B, double* R) {
    ++reduced_calls;
    __real__ZNK8kelmoran12PlanetSeries12PlaceReducedEdRdS1_S1_(self, tau, L, B, R);
}
}

namespace kelmoran {
namespace {

TEST(SeriesCalls, OnlyTheLastStepOfAPlanetTouchesTheLongSeries) {
    int calls = 0;
    for (double jd = -20000.0; jd < 20000.0; jd += 997.0) {
        const EarthFrame f = Calc_EarthFrame(jd);
        for (int b = body::Mercury; b <= body::Uranus; ++b) {
            BodyPlace p;
            float earthDistance = 0;
            const int before = full_calls + reduced_calls;
            Calc_Planet(p, b, kAccuracyFast, f, earthDistance);
            ASSERT_EQ(full_calls + reduced_calls, before) << b;
            Calc_Planet(p, b, kAccuracyFull, f, earthDistance);
            Calc_Planet(p, b, kAccuracyReduced, f, earthDistance);
            ++calls;
            // One long evaluation a planet at accuracy 0 and 1; light time runs on the fast
            // series.
            ASSERT_EQ(full_calls, calls);
            ASSERT_EQ(reduced_calls, calls);
        }
    }
    // Magnitudes never touch them.
    for (int b = 0; b <= body::Pluto; ++b) {
        double D = 1.3;
        float phase = 0;
        Calc_Magnitude(0.2, b, 1.0f, D, phase);
    }
    EXPECT_EQ(full_calls + reduced_calls, 2 * calls);
}

}  // namespace
}  // namespace kelmoran
