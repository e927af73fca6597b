// The Star Atlas with every Hipparcos star loaded: a replot and repaint after a zoom, a drag
// step within the third, and Find Star's search of a name.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QWidget>

#include "shell/M_Kelmoran.h"
#include "stars/FindStar_Model.h"
#include "stars/M_Resources.h"
#include "stars/PlotOptions_Model.h"
#include "stars/PlotStarsWindow.h"

namespace kelmoran {
namespace {

// An atlas of 960 by 720 showing every star of the catalogue.
PlotStars& Full_Atlas(const char* view) {
    static QWidget window;
    static PlotStars* form = [] {
        window.resize(960, 720);
        Load_Star_Tables();
        Load_Star_Tier(4);
        Shell.CurrentJD = 9800.4;
        auto* f = new PlotStars(&window);
        return f;
    }();
    Atlas_Options().View = view;
    Atlas_Options().BackgroundEntry = 7;
    Atlas_Options().MainStarEntry = 0;
    form->SetDates();
    form->Configure_Form();
    return *form;
}

// Zooms in and out in turn about a point right of the middle, replotting each time, and
// repainting unless `plotOnly`.
void Zoom_In_And_Out(benchmark::State& state, const char* view, bool plotOnly) {
    PlotStars& atlas = Full_Atlas(view);
    const int32_t x = atlas.Plot().View.BitmapWidth / 2 + 100, y = atlas.Plot().View.BitmapHeight / 2;
    int kind = 1;
    for (auto _ : state) {
        atlas.Plot().Zoom_At(kind, x, y);
        if (!plotOnly) atlas.DrawBitMaps();
        kind = 3 - kind;
    }
    state.counters["stars"] = static_cast<double>(atlas.Plot().Points.size());
}

void BM_Atlas_Zoom_Replot_Repaint(benchmark::State& state) {
    Zoom_In_And_Out(state, "Equatorial", false);
}
BENCHMARK(BM_Atlas_Zoom_Replot_Repaint)->Unit(benchmark::kMillisecond);

void BM_Atlas_Zoom_Replot_Only(benchmark::State& state) {
    Zoom_In_And_Out(state, "Equatorial", true);
}
BENCHMARK(BM_Atlas_Zoom_Replot_Only)->Unit(benchmark::kMillisecond);

void BM_Atlas_Zoom_Replot_Repaint_Visible(benchmark::State& state) {
    Zoom_In_And_Out(state, "VisibleStars", false);
}
BENCHMARK(BM_Atlas_Zoom_Replot_Repaint_Visible)->Unit(benchmark::kMillisecond);

void BM_Atlas_Drag_Step(benchmark::State& state) {
    PlotStars& atlas = Full_Atlas("NorthStars");
    atlas.Plot().Zoom_At(1, atlas.Plot().View.BitmapWidth / 2, atlas.Plot().View.BitmapHeight / 2);
    atlas.DrawBitMaps();
    const Rect sky = atlas.Sky_Rect();
    int32_t x = (sky.Left + sky.Right) / 2, y = (sky.Top + sky.Bottom) / 2, dx = 3;
    atlas.SysMsg_MouseDown(1, 0, x, y);
    const int32_t redraws = atlas.Redraws;
    for (auto _ : state) {
        x += dx;
        if (x > sky.Right - 200 || x < sky.Left + 200) dx = -dx;
        atlas.SysMsg_MouseMove(1, 0, x, y);
    }
    atlas.SysMsg_MouseUp(1, 0, x, y);
    if (atlas.Redraws != redraws) state.SkipWithError("the drag left the third");
}
BENCHMARK(BM_Atlas_Drag_Step)->Unit(benchmark::kMicrosecond);

void BM_FindStar_Name_Search(benchmark::State& state) {
    Full_Atlas("Equatorial");
    static FindStarModel model;
    model.Set_Limit(8, Shell.CurrentJD);
    const char* names[] = {"Sirius", "Polaris", "Zubenelgenubi", "Alpha Centauri", "Vega"};
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(model.Find_in_AllNames(names[i]));
        i = (i + 1) % 5;
    }
}
BENCHMARK(BM_FindStar_Name_Search)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelmoran
