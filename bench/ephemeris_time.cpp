// The most called function of the program: the Earth frame of a moment.
#include <benchmark/benchmark.h>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Time_Calcs.h"

namespace {

void BM_Calc_EarthFrame(benchmark::State& state) {
    double jd = 9000.123;
    for (auto _ : state) {
        benchmark::DoNotOptimize(kelmoran::Calc_EarthFrame(jd));
        jd += 0.0137;
    }
}
BENCHMARK(BM_Calc_EarthFrame);

void BM_Calc_GAST(benchmark::State& state) {
    double jd = 9000.123;
    for (auto _ : state) {
        benchmark::DoNotOptimize(kelmoran::Calc_GAST(jd));
        jd += 0.0137;
    }
}
BENCHMARK(BM_Calc_GAST);

void BM_JD_Round_Trip(benchmark::State& state) {
    double jd = -12345.678;
    for (auto _ : state) {
        const kelmoran::MySystemTime t = kelmoran::JD_To_Date(jd);
        benchmark::DoNotOptimize(kelmoran::Calc_JD(t, false));
        jd += 1.37;
    }
}
BENCHMARK(BM_JD_Round_Trip);

}  // namespace
