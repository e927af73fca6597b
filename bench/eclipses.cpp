// Filling the Moon Phases year: the phases refined on the reduced series and every New and
// Full Moon tried for an eclipse; and the parts of that work.
#include <benchmark/benchmark.h>

#include "eclipses/M_Eclipse.h"
#include "eclipses/M_Eclipse_Lunar.h"
#include "eclipses/M_Eclipse_Solar.h"

namespace {

using namespace kelmoran;

// 2024: a total and an annular solar eclipse, a penumbral and a partial lunar one.
void BM_Fill_Lunation_Year(benchmark::State& state) {
    EclipseTable table;
    for (auto _ : state) benchmark::DoNotOptimize(Fill_Lunation_Year(2024, 0, table));
}
BENCHMARK(BM_Fill_Lunation_Year)->Unit(benchmark::kMillisecond);

// A year with four eclipses, two of them total (2018).
void BM_Fill_Lunation_Year_2018(benchmark::State& state) {
    EclipseTable table;
    for (auto _ : state) benchmark::DoNotOptimize(Fill_Lunation_Year(2018, 0, table));
}
BENCHMARK(BM_Fill_Lunation_Year_2018)->Unit(benchmark::kMillisecond);

void BM_Refine_Phase(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Refine_Phase(8866.8, 0));
}
BENCHMARK(BM_Refine_Phase)->Unit(benchmark::kMicrosecond);

void BM_Solar_Eclipse_Test(benchmark::State& state) {
    EclipseRow row;
    EclipseInstants instants;
    EclipseSpeed speed;
    for (auto _ : state) {
        row = EclipseRow{};
        row.PhaseJD = 8864.265;  // 2024 April 8
        benchmark::DoNotOptimize(Solar_Eclipse_Test(row, instants, speed, 0));
    }
}
BENCHMARK(BM_Solar_Eclipse_Test)->Unit(benchmark::kMillisecond);

void BM_Lunar_Eclipse_Test(benchmark::State& state) {
    EclipseRow row;
    EclipseSpeed speed;
    for (auto _ : state) {
        row = EclipseRow{};
        row.PhaseJD = 8346.96;  // 2022 November 8, total
        benchmark::DoNotOptimize(Lunar_Eclipse_Test(row, speed, 0));
    }
}
BENCHMARK(BM_Lunar_Eclipse_Test)->Unit(benchmark::kMillisecond);

void BM_Eclipse_Instant_Full(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Eclipse_Instant(8863.28, kAccuracyFull));
}
BENCHMARK(BM_Eclipse_Instant_Full)->Unit(benchmark::kMicrosecond);

void BM_Eclipse_Instant_Reduced(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Eclipse_Instant(8863.28, kAccuracyReduced));
}
BENCHMARK(BM_Eclipse_Instant_Reduced)->Unit(benchmark::kMicrosecond);

void BM_Eclipse_Instant_Fast(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(Eclipse_Instant(8863.28, kAccuracyFast));
}
BENCHMARK(BM_Eclipse_Instant_Fast)->Unit(benchmark::kMicrosecond);

}  // namespace
