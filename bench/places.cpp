// Cost of one apparent place: each body at accuracies 0, 1 and 2, and the Sun, Moon and
// eight planets together, as a screen of bodies computes them at one moment.
#include <benchmark/benchmark.h>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Sun.h"

namespace {

using namespace kelmoran;

// Moments a little apart, so that nothing is cached between calls (the first call of a
// long series, which builds the object, happens outside the timing).
class Moments {
  public:
    Moments() {
        for (int i = 0; i < kCount; ++i) frames_[i] = Calc_EarthFrame(9000.123 + 0.731 * i);
    }
    const EarthFrame& Next() { return frames_[next_++ % kCount]; }

  private:
    static constexpr int kCount = 64;
    EarthFrame frames_[kCount];
    unsigned next_ = 0;
};

void BM_Sun(benchmark::State& state) {
    const SeriesAccuracy a = static_cast<SeriesAccuracy>(state.range(0));
    Moments m;
    benchmark::DoNotOptimize(Calc_Sun(a, m.Next()));
    for (auto _ : state) benchmark::DoNotOptimize(Calc_Sun(a, m.Next()));
}
BENCHMARK(BM_Sun)->Arg(0)->Arg(1)->Arg(2);

void BM_Moon(benchmark::State& state) {
    const SeriesAccuracy a = static_cast<SeriesAccuracy>(state.range(0));
    Moments m;
    benchmark::DoNotOptimize(Calc_Moon(a, m.Next()));
    for (auto _ : state) benchmark::DoNotOptimize(Calc_Moon(a, m.Next()));
}
BENCHMARK(BM_Moon)->Arg(0)->Arg(1)->Arg(2);

// Arguments: body, accuracy.
void BM_Planet(benchmark::State& state) {
    const int b = static_cast<int>(state.range(0));
    const SeriesAccuracy a = static_cast<SeriesAccuracy>(state.range(1));
    Moments m;
    BodyPlace p;
    float earthDistance = 0;
    Calc_Planet(p, b, a, m.Next(), earthDistance);
    for (auto _ : state) {
        Calc_Planet(p, b, a, m.Next(), earthDistance);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_Planet)->ArgsProduct({{4, 5, 6, 7, 8, 9, 10}, {0, 1, 2}});

void BM_Pluto(benchmark::State& state) {
    Moments m;
    BodyPlace p;
    float sunDistance = 0;
    Calc_Pluto(p, m.Next(), sunDistance);
    for (auto _ : state) {
        Calc_Pluto(p, m.Next(), sunDistance);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_Pluto);

// The Sun, the Moon and the seven planets with Pluto at one accuracy, with magnitudes.
void BM_All_Ten(benchmark::State& state) {
    const SeriesAccuracy a = static_cast<SeriesAccuracy>(state.range(0));
    Moments m;
    for (auto _ : state) {
        const EarthFrame& f = m.Next();
        benchmark::DoNotOptimize(Calc_Sun(a, f));
        benchmark::DoNotOptimize(Calc_Moon(a, f));
        for (int b = body::Mercury; b <= body::Pluto; ++b) {
            BodyPlace p;
            float earthDistance = 0;
            if (b == body::Pluto) {
                Calc_Pluto(p, f, earthDistance);
            } else {
                Calc_Planet(p, b, a, f, earthDistance);
            }
            double D = p.Distance;
            float phase = 0;
            benchmark::DoNotOptimize(Calc_Magnitude(f.TT, b, earthDistance, D, phase));
        }
    }
}
BENCHMARK(BM_All_Ten)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void BM_Star_Place(benchmark::State& state) {
    double jd = 9000.5;
    double ra = 0, dec = 0;
    Calc_Star_Place(0, ra, dec, jd);
    double ra0 = 0.1;
    for (auto _ : state) {
        ra = ra0;
        dec = 0.3;
        Calc_Star_Place(0, ra, dec, jd);
        benchmark::DoNotOptimize(ra);
        ra0 += 0.001;
    }
}
BENCHMARK(BM_Star_Place);

}  // namespace
