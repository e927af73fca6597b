// The Voyage screen with a plan of 500 way points: one speed typed into a cell and
// committed with Enter, from the keys to the repainted picture, through the main window's
// own key handling (the plan recalculates its 500 legs, times and variations).
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStandardPaths>
#include <cmath>

#include "ui_bench.h"
#include "ephemeris/Units.h"
#include "settings/SettingsRecord.h"
#include "shell/M_Edit.h"
#include "shell/fMain.h"
#include "voyage/cNavPlanView.h"

namespace {

using namespace kelmoran;
using bench::Send_Key;

void BM_VoyageSpeedKeyToPicture(benchmark::State& state) {
    fMain w;
    Settings.PositionMethod = 0;
    TZ_Bias = 0;
    w.resize(1100, 750);
    w.show();
    QApplication::processEvents();
    // 500 way points round the North Atlantic, from 2026 July 1.
    Voyage = VoyagePlan{};
    Voyage.New_Plan(9677.5, 6.0f);
    Voyage.Way_Points.assign(505, Way_Point{});
    Voyage.Texts.assign(505, Way_Point_Text{});
    for (size_t i = 0; i < 500; ++i) {
        const double a = 2 * kPi * static_cast<double>(i) / 500;
        Voyage.Way_Points[i].Lat = (30 + 10 * std::sin(a)) / kDegreesPerRadian;
        Voyage.Way_Points[i].Long = (-40 + 20 * std::cos(a)) / kDegreesPerRadian;
        Voyage.Way_Points[i].ID = std::to_string(i + 1);
    }
    Voyage.Test_Wpts_Valid();
    Voyage.Recalc_Plan();
    w.Window_Action(5)->trigger();
    QApplication::processEvents();
    auto* plan = dynamic_cast<cNavPlan*>(w.Current_Ui_Screen());
    if (!plan) {
        state.SkipWithError("Voyage did not open");
        return;
    }
    QWidget* client = w.Client();
    GridModel& g = plan->Grid();
    int pos = 0;
    while (g.MyColmPtr[static_cast<size_t>(pos)] != navplan_col::Speed) ++pos;
    const Rect cell = g.Cell_On_Screen(pos, 0);
    const QPoint at((cell.Left + cell.Right) / 2, (cell.Top + cell.Bottom) / 2);
    QMouseEvent press(QEvent::MouseButtonPress, at, client->mapToGlobal(at), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(client, &press);
    bool seven = true;
    for (auto _ : state) {
        Send_Key(client, seven ? Qt::Key_7 : Qt::Key_8, seven ? "7" : "8");
        Send_Key(client, Qt::Key_Return, "\r");
        seven = !seven;
        benchmark::DoNotOptimize(plan->Picture().constBits());
    }
    const float expected = seven ? 8.0f : 7.0f;
    if (Voyage.Way_Points[0].Speed != expected) state.SkipWithError("the speed was not typed");
}
BENCHMARK(BM_VoyageSpeedKeyToPicture)->Unit(benchmark::kMillisecond);

}  // namespace
