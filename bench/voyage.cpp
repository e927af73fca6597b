// The voyage plan's recalculation for 100 way points, and the position service along it.
#include <benchmark/benchmark.h>

#include <cmath>

#include "ephemeris/Units.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Position_Methods.h"
#include "voyage/Voyage_Plan.h"

namespace {

using namespace kelmoran;

// A zig-zag of 100 way points westward across the North Atlantic at 12 knots.
VoyagePlan Hundred_Points() {
    Reset_Shell(nullptr);
    VoyagePlan p;
    p.New_Plan(9000.0, 12.0f);
    p.Way_Points.assign(100, Way_Point{});
    p.Texts.assign(100, Way_Point_Text{});
    const double deg = 1.0 / kDegreesPerRadian;
    for (int i = 0; i < 100; ++i) {
        Way_Point& w = p.Way_Points[static_cast<size_t>(i)];
        w.Lat = (45.0 + 3.0 * std::sin(i * 0.7)) * deg;
        w.Long = (-5.0 - 0.6 * i) * deg;
        w.Speed = 12.0f;
    }
    p.Test_Wpts_Valid();
    p.Recalc_Plan();
    return p;
}

void BM_Recalc_Plan_100(benchmark::State& state) {
    VoyagePlan p = Hundred_Points();
    for (auto _ : state) {
        // Every position is new, as after loading a file.
        for (Way_Point& w : p.Way_Points) w.Position_Done = 0;
        p.Recalc_Plan();
        benchmark::DoNotOptimize(p.Plan_End());
    }
}
BENCHMARK(BM_Recalc_Plan_100);

void BM_Get_Position_10000(benchmark::State& state) {
    const VoyagePlan p = Hundred_Points();
    SettingsRecord s;
    s.PositionMethod = kDRByPlan;
    const double t0 = p.Plan_Start();
    const double step = (p.Plan_End() - t0) / 10000.0;
    for (auto _ : state) {
        float lat = 0, lon = 0, course = 0, speed = 0;
        for (int i = 0; i < 10000; ++i) {
            Get_Position(s, p, t0 + i * step, lat, lon, course, speed);
            benchmark::DoNotOptimize(lat);
            benchmark::DoNotOptimize(lon);
        }
    }
}
BENCHMARK(BM_Get_Position_10000)->Unit(benchmark::kMillisecond);

}  // namespace
