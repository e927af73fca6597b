// Start-up cost of the star tables, and the lookups that the lists run for every row.
#include <benchmark/benchmark.h>

#include <numeric>
#include <vector>

#include "ephemeris/Bodies.h"
#include "settings/SettingsRecord.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"

namespace {

using namespace kelmoran;

// Every table the program loads at start: names, designations, constellation stars,
// constellations, the base tier, the main stars and the main bodies.
void BM_Load_Star_Tables(benchmark::State& state) {
    for (auto _ : state) {
        Catalogue.clear();
        Load_Star_Tables();
        benchmark::DoNotOptimize(Catalogue.data());
    }
}
BENCHMARK(BM_Load_Star_Tables)->Unit(benchmark::kMillisecond);

// The deeper tiers from their data files, all three.
void BM_Load_Deeper_Tiers(benchmark::State& state) {
    Load_Star_Tables();
    for (auto _ : state) {
        Catalogue.clear();
        Load_Star_Tier(1);
        benchmark::DoNotOptimize(Load_Star_Tier(4));
    }
}
BENCHMARK(BM_Load_Deeper_Tiers)->Unit(benchmark::kMillisecond);

// Names and designations of the whole base tier.
void BM_Star_Names_Base_Tier(benchmark::State& state) {
    Catalogue.clear();
    Load_Star_Tables();
    for (auto _ : state) {
        for (int32_t s = 12; s <= kBaseTierEnd; ++s) benchmark::DoNotOptimize(Star_Names_Of(s));
    }
}
BENCHMARK(BM_Star_Names_Base_Tier)->Unit(benchmark::kMillisecond);

// The stars of the base tier as a body list.
std::vector<int32_t> Base_Tier_List() {
    Catalogue.clear();
    Load_Star_Tables();
    std::vector<int32_t> list(kBaseTierEnd - 11);
    std::iota(list.begin(), list.end(), 12);
    Settings.PositionMethod = 0;
    Settings.ObserverLat = 0.8f;
    Settings.ObserverLong = -0.1f;
    return list;
}

// Every star of the base tier at a new moment with every place stale (a slow star's
// interval runs to centuries, so each place is marked stale first, outside the timing):
// all places, altitudes and azimuths; the names were filled once before.
void BM_Calc_Bodies_New_Moment(benchmark::State& state) {
    std::vector<int32_t> list = Base_Tier_List();
    double jd = 9000.0;
    Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);
    for (auto _ : state) {
        state.PauseTiming();
        for (BodyRecord& r : Bodies) r.PositionJD = BodyRecord::kNeverJD;
        jd += 1.0;
        state.ResumeTiming();
        Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);
    }
}
BENCHMARK(BM_Calc_Bodies_New_Moment)->Unit(benchmark::kMillisecond);

// The same moment for another observer: altitudes and azimuths only.
void BM_Calc_Bodies_New_Observer(benchmark::State& state) {
    std::vector<int32_t> list = Base_Tier_List();
    const double jd = 9000.0;
    Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);
    float lat = 0.8f;
    for (auto _ : state) {
        lat = -lat;
        Settings.ObserverLat = lat;
        Reset_AltAz();
        Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);
    }
}
BENCHMARK(BM_Calc_Bodies_New_Observer)->Unit(benchmark::kMillisecond);

}  // namespace
