// The eclipse window's map: the complete path of a total solar eclipse computed and painted
// (target under 1 s), one minute's shadows (under 20 ms), the map redrawn at a new window
// size (under 30 ms).
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "eclipses/EclipseMapView.h"
#include "eclipses/M_Eclipse_Map.h"

namespace {

using namespace kelmoran;

// The total eclipse of 2024 April 8 from the year's search.
const EclipseRow& April_2024(EclipseInstant* maximum = nullptr) {
    static EclipseTable table;
    static int row = [] {
        Fill_Lunation_Year(2024, 0, table);
        for (int i = 0; i < table.Count; ++i)
            if (Is_Solar(table.Rows[i]) && table.Rows[i].PartialStart.Time != 0.0) return i;
        return 0;
    }();
    if (maximum) *maximum = table.Instants[row][kInstantMaximum];
    return table.Rows[row];
}

void Paint(QImage& image, const EclipseMapLayers& layers, float scale) {
    const QPainterPath coast = Coastline_Path(scale, scale);
    QPainter p(&image);
    Paint_Eclipse_Map(p, image.rect(), scale, scale, coast, layers);
}

void BM_Complete_Path_Computed_And_Painted(benchmark::State& state) {
    const EclipseRow& row = April_2024();
    QImage image(1100, 752, QImage::Format_RGB32);
    for (auto _ : state) {
        EclipseMapLayers layers;
        layers.Path = Solar_Path_Map(row);
        layers.ShowPath = true;
        Paint(image, layers, 1100.0f / 1418.0f);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_Complete_Path_Computed_And_Painted)->Unit(benchmark::kMillisecond);

void BM_One_Minute_Footprint(benchmark::State& state) {
    EclipseInstant max;
    const EclipseRow& row = April_2024(&max);
    const EclipseWindow window(row.Maximum.Time);
    for (auto _ : state) {
        const EclipseInstant i = Eclipse_Instant(row.Maximum.Time + 1.0 / 1440.0, window);
        benchmark::DoNotOptimize(Solar_Minute_Map(i));
    }
}
BENCHMARK(BM_One_Minute_Footprint)->Unit(benchmark::kMillisecond);

void BM_Map_Redrawn_At_New_Size(benchmark::State& state) {
    EclipseInstant max;
    April_2024(&max);
    EclipseMapLayers layers;
    layers.Minute = Solar_Minute_Map(max);
    int width = 900;
    for (auto _ : state) {
        width = width == 900 ? 1300 : 900;  // a new size each time: the coast path is rebuilt
        const float scale = static_cast<float>(width / 1418.0);
        QImage image(width, static_cast<int>(970 * scale), QImage::Format_RGB32);
        Paint(image, layers, scale);
        benchmark::DoNotOptimize(image.constBits());
    }
}
BENCHMARK(BM_Map_Redrawn_At_New_Size)->Unit(benchmark::kMillisecond);

}  // namespace
