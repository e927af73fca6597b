// Identifying and reducing one sight against the stars brighter than magnitude 6, and the
// fix with its ellipse from eight sights.
#include <benchmark/benchmark.h>

#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "sights/M_Sights.h"
#include "sights/Sight_Fix.h"
#include "stars/Catalogue_Limits.h"
#include "stars/M_Resources.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {
namespace {

void Observer() {
    Settings = SettingsRecord{};
    Settings.Pressure = 1010.0f;
    Settings.Temp = 10.0f;
    Settings.HtOfEye = 4.0f;
    Settings.PositionMethod = kFixPosition;
    Settings.ObserverLat = 0.7f;
    Settings.ObserverLong = -0.2f;
    Compute_Derived_Settings();
    SightsFilter.AltLimit = static_cast<float>(10.0 / kArcminPerRadian);
    SightsFilter.AzLimit = 20.0f;
    SightsFilter.DaylightStars = kTrue;
}

void BM_Reduce_Sight_Stars_To_Magnitude_6(benchmark::State& state) {
    Load_Star_Tables();
    Observer();
    SightsFilter.StarCount = kMag6End;
    SightSet set(6);
    Sight_Record& s = set.Sights[0];
    s.Sight_Time = 8830.5;  // midnight
    s.Sextant_Alt = 0.6f;
    s.Sight_Az = 250.0f;
    s.Row_Used = s.Alt_Entered = s.Az_Entered = kTrue;
    Check_Stars_Size(s.Sight_Time);
    for (auto _ : state) {
        Reduce_Sight(set, 0, false);
        benchmark::DoNotOptimize(set.Sights[0].Intercept);
    }
    state.counters["candidates"] = static_cast<double>(set.Candidates[0].size());
}
BENCHMARK(BM_Reduce_Sight_Stars_To_Magnitude_6)->Unit(benchmark::kMicrosecond);

void BM_Fix_With_Ellipse_Eight_Sights(benchmark::State& state) {
    Observer();
    SightSet set(14);
    const float az[8] = {12.0f, 57.0f, 101.0f, 148.0f, 190.0f, 233.0f, 281.0f, 322.0f};
    const float minutes[8] = {3.1f, -2.4f, 0.7f, -4.2f, 1.9f, 2.2f, -0.6f, -3.3f};
    for (int i = 0; i < 8; ++i) {
        Sight_Record& s = set.Sights[i];
        s.Row_Used = s.Has_Body = kTrue;
        s.Line_Az = az[i];
        s.Intercept = static_cast<float>(minutes[i] / kArcminPerRadian);
    }
    set.Fix_Sight.DR_Lat = 0.7f;
    set.Fix_Sight.DR_Long = -0.2f;
    for (auto _ : state) {
        Fix_Result fix = Calc_Fix(set, 0.2f, 800, 600, Ellipse_Size::Medium);
        benchmark::DoNotOptimize(fix.Fix_Lat);
    }
}
BENCHMARK(BM_Fix_With_Ellipse_Eight_Sights)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelmoran
