// The row calculations of the table screens for one change of the date: AltAz with the
// stars brighter than magnitude 7 listed, Main, a screen of Solar Bodies and a year of
// Moon Phases.
#include "shell/Screen_Rows.h"

#include <benchmark/benchmark.h>

#include "settings/SettingsRecord.h"
#include "stars/M_Resources.h"

namespace {

using namespace kelmoran;

constexpr double kStart = 8840.4;  // 2024 March 15, evening UT

void Observer() {
    Settings = SettingsRecord{};
    Settings.ObserverLat = 0.87266f;  // 50° N
    Settings.ObserverLong = -0.08727f;
    Settings.Pressure = 1010.0f;
    Settings.Temp = 10.0f;
    Filters = BodyFilters{};
    if (Catalogue.empty()) Load_Star_Tables();
}

// One step of the date strip per iteration: `state.range(0)` minutes, so that an hour's
// step keeps the stars' places and a week's step recomputes them.
void BM_AltAz_Rows_Magnitude7(benchmark::State& state) {
    Observer();
    Filters.BodyFilterMode = 1;
    Filters.StarCount = 14289;  // "   7"
    Filters.AboveTenOnly = static_cast<int16_t>(state.range(1) ? -1 : 0);
    double jd = kStart;
    AltAz_Rows(jd, false);
    const double step = static_cast<double>(state.range(0)) / 1440.0;
    for (auto _ : state) {
        jd += step;
        AltAzRows rows = AltAz_Rows(jd, false);
        benchmark::DoNotOptimize(rows.Rows);
        state.counters["rows"] = rows.Rows;
    }
}
BENCHMARK(BM_AltAz_Rows_Magnitude7)
    ->Args({60, 1})
    ->Args({60, 0})
    ->Args({20160, 1})
    ->Unit(benchmark::kMillisecond);

void BM_AltAz_Sort(benchmark::State& state) {
    Observer();
    Filters.BodyFilterMode = 1;
    Filters.StarCount = 14289;
    const AltAzRows rows = AltAz_Rows(kStart, false);
    for (auto _ : state) benchmark::DoNotOptimize(AltAz_Sort(rows, 3, false).data());
}
BENCHMARK(BM_AltAz_Sort)->Unit(benchmark::kMillisecond);

void BM_Main_Rows(benchmark::State& state) {
    Observer();
    double jd = kStart;
    for (auto _ : state) {
        jd += 1.0;
        benchmark::DoNotOptimize(Main_Rows(jd, false).Day.size());
    }
}
BENCHMARK(BM_Main_Rows)->Unit(benchmark::kMillisecond);

void BM_Planets_Rows(benchmark::State& state) {
    Observer();
    Filters.ShowBody = 3;
    double jd = kStart;
    for (auto _ : state) {
        jd += 1.0;
        benchmark::DoNotOptimize(Planets_Rows(jd, 40, false).Rows);
    }
}
BENCHMARK(BM_Planets_Rows)->Unit(benchmark::kMillisecond);

void BM_Lunations_Rows(benchmark::State& state) {
    Observer();
    double jd = kStart;
    for (auto _ : state) {
        jd += 365.25;
        benchmark::DoNotOptimize(Lunations_Rows(jd).Rows);
    }
}
BENCHMARK(BM_Lunations_Rows)->Unit(benchmark::kMillisecond);

}  // namespace
