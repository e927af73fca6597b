// Start-up cost of the star tables, and the lookups that the lists run for every row.
#include <benchmark/benchmark.h>

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

}  // namespace
