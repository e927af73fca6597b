// One opening of the almanac (three days), a whole year of openings, and the Sun's and
// Moon's rows of the Main screen for a fixed observer.
#include <benchmark/benchmark.h>

#include "almanac/Moon_Events.h"
#include "almanac/Sun_Events.h"
#include "almanac/cAlmanac.h"
#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "stars/M_Resources.h"

namespace {

using namespace kelmoran;

constexpr double kFirstPage = 9131.5;  // 2025 January 1, 0h

void BM_Almanac_Page(benchmark::State& state) {
    Load_Star_Tables();
    cAlmanac page;
    double jd = kFirstPage;
    for (auto _ : state) {
        page.MyJD(jd);
        benchmark::DoNotOptimize(page.MySunCol()[0].GHA.data());
        jd += 3.0;
    }
}
BENCHMARK(BM_Almanac_Page)->Unit(benchmark::kMillisecond);

void BM_Almanac_Year(benchmark::State& state) {
    Load_Star_Tables();
    cAlmanac page;
    for (auto _ : state) {
        for (double jd = kFirstPage; jd < kFirstPage + 365.0; jd += 3.0) {
            page.MyJD(jd);
            benchmark::DoNotOptimize(page.MyMoonCol()[0].GHA.data());
        }
    }
}
BENCHMARK(BM_Almanac_Year)->Unit(benchmark::kMillisecond);

void BM_Main_Sun_And_Moon_Rows(benchmark::State& state) {
    Settings.PositionMethod = 0;
    Settings.ObserverLat = 0.9f;
    Settings.ObserverLong = -0.1f;
    Settings.Pressure = 1010.0f;
    Settings.Temp = 10.0f;
    Compute_Derived_Settings();
    double jd = kFirstPage;
    for (auto _ : state) {
        Sun_Row sun = Main_Sun_Rows(jd, 0, false);
        Moon_Rows_Result moon = Moon_Rows(jd, 0, false);
        benchmark::DoNotOptimize(sun[0].data());
        benchmark::DoNotOptimize(moon.Texts[0].data());
        jd += 1.0;
    }
}
BENCHMARK(BM_Main_Sun_And_Moon_Rows)->Unit(benchmark::kMillisecond);

}  // namespace
