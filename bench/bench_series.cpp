// Cost of the long-series objects at each accuracy level. The dates step through 1800 to
// 2200 so that no two calls are alike.
#include <benchmark/benchmark.h>

#include "ephemeris/Series.h"

namespace {

using namespace kelmoran;

// Julian centuries of TT, stepping a little over 37 days a call through 1800 .. 2200.
double Next_T(double& t) {
    t += 0.001013;
    if (t > 2.0) t -= 4.0;
    return t;
}

void BM_SunPlace(benchmark::State& state) {
    EarthSeries& earth = EarthSeries::Instance();
    double t = -2.0;
    for (auto _ : state) {
        double lon = Next_T(t), lat = static_cast<double>(state.range(0)), dist;
        earth.SunPlace(lon, lat, dist);
        benchmark::DoNotOptimize(lon);
    }
}
BENCHMARK(BM_SunPlace)->Arg(0)->Arg(1)->Arg(2);

void BM_EarthRect(benchmark::State& state) {
    EarthSeries& earth = EarthSeries::Instance();
    double t = -2.0;
    for (auto _ : state) {
        double x, y, z;
        earth.EarthRect(static_cast<SeriesAccuracy>(state.range(0)), Next_T(t), x, y, z);
        benchmark::DoNotOptimize(x);
    }
}
BENCHMARK(BM_EarthRect)->Arg(0)->Arg(1)->Arg(2);

void BM_SunJ2000(benchmark::State& state) {
    EarthSeries& earth = EarthSeries::Instance();
    double t = -2.0;
    for (auto _ : state) {
        double x, y, z;
        earth.SunJ2000(Next_T(t) / 10.0, x, y, z);
        benchmark::DoNotOptimize(x);
    }
}
BENCHMARK(BM_SunJ2000);

void BM_MoonPlace(benchmark::State& state) {
    MoonSeries& moon = MoonSeries::Instance();
    double t = -2.0;
    for (auto _ : state) {
        double lon = Next_T(t), lat = static_cast<double>(state.range(0)), dist;
        moon.MoonPlace(lon, lat, dist);
        benchmark::DoNotOptimize(lon);
    }
}
BENCHMARK(BM_MoonPlace)->Arg(0)->Arg(1)->Arg(2);

// One planet (body number in range(0)) at accuracy range(1).
void BM_Planet(benchmark::State& state) {
    PlanetSeries& planet = PlanetSeries::For(static_cast<int>(state.range(0)));
    const bool full = state.range(1) == 0;
    double t = -2.0;
    for (auto _ : state) {
        double L, B, R;
        if (full) {
            planet.PlaceFull(Next_T(t) / 10.0, L, B, R);
        } else {
            planet.PlaceReduced(Next_T(t) / 10.0, L, B, R);
        }
        benchmark::DoNotOptimize(L);
    }
}
BENCHMARK(BM_Planet)->ArgsProduct({{4, 5, 6, 7, 8, 9, 10}, {0, 1}});

void BM_Pluto(benchmark::State& state) {
    PlutoSeries& pluto = PlutoSeries::Instance();
    double t = -2.0;
    for (auto _ : state) {
        double L, B, R;
        pluto.Place(Next_T(t) / 10.0, L, B, R);
        benchmark::DoNotOptimize(L);
    }
}
BENCHMARK(BM_Pluto);

// What one screen of bodies asks of the series at one accuracy: the Sun, the Moon, the
// Earth and each of the seven planets once, and Pluto with the Sun in J2000.0.
void BM_AllBodies(benchmark::State& state) {
    const int level = static_cast<int>(state.range(0));
    double t = -2.0;
    for (auto _ : state) {
        const double T = Next_T(t);
        double lon = T, lat = level, dist;
        EarthSeries::Instance().SunPlace(lon, lat, dist);
        double mlon = T, mlat = level, mdist;
        MoonSeries::Instance().MoonPlace(mlon, mlat, mdist);
        double x, y, z;
        EarthSeries::Instance().EarthRect(level, T, x, y, z);
        for (int body = body::Mercury; body <= body::Uranus; ++body) {
            double L, B, R;
            if (level == 0) {
                PlanetSeries::For(body).PlaceFull(T / 10.0, L, B, R);
            } else {
                PlanetSeries::For(body).PlaceReduced(T / 10.0, L, B, R);
            }
            benchmark::DoNotOptimize(L);
        }
        EarthSeries::Instance().SunJ2000(T / 10.0, x, y, z);
        double L, B, R;
        PlutoSeries::Instance().Place(T / 10.0, L, B, R);
        benchmark::DoNotOptimize(lon + mlon + x + L);
    }
}
BENCHMARK(BM_AllBodies)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace
