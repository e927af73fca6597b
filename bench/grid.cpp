// The AltAz screen with the stars brighter than magnitude 7 listed: a key press in the
// date strip (the Day field stepped with "+", then back with "-") to the repainted picture,
// through the main window's own key handling.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStandardPaths>
#include <chrono>

#include "ui_bench.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "shell/M_Edit.h"
#include "shell/cGeneralForm.h"
#include "shell/fMain.h"
#include "voyage/Position_Methods.h"

namespace {

using namespace kelmoran;
using bench::Send_Key;

void Click(QWidget* w, QPoint at) {
    QMouseEvent press(QEvent::MouseButtonPress, at, w->mapToGlobal(at), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, at, w->mapToGlobal(at), Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(w, &release);
}

void BM_AltAzDateKeyToPicture(benchmark::State& state) {
    fMain w;
    Settings.ObserverLat = static_cast<float>(50.0 / kDegreesPerRadian);
    Settings.ObserverLong = static_cast<float>(-5.0 / kDegreesPerRadian);
    Settings.PositionMethod = kFixPosition;
    Settings.AutoTimeZone = 0;
    TZ_Bias = 0;
    Compute_Derived_Settings();
    // "To Magnitude 3.5" mode with the list at "   7": every star brighter than 7.
    Filters = BodyFilters{};
    Filters.BodyFilterMode = 1;
    Filters.StarCount = 14289;
    w.resize(1100, 750);
    w.show();
    QApplication::processEvents();
    // A fixed moment, 2024 March 15 in the evening (UT), as the row benchmarks use, so that
    // the figures do not move with the hour at which they are taken.
    Shell.CurrentJD = 8840.4;
    w.Window_Action(0)->trigger();
    QApplication::processEvents();
    auto* altaz = dynamic_cast<cGeneralForm*>(w.Current_Ui_Screen());
    if (!altaz) {
        state.SkipWithError("AltAz did not open");
        return;
    }
    QWidget* client = w.Client();
    const Rect day = altaz->MyDates().Field_Rect("Day");
    Click(client, QPoint((day.Left + day.Right) / 2, (day.Top + day.Bottom) / 2));
    if (!Edit.Editing) {
        state.SkipWithError("the Day field did not open");
        return;
    }
    // The share of the row calculation itself, shown as a counter beside the total.
    static double rowsMs = 0;
    static bool wrapped = false;
    if (!wrapped) {
        wrapped = true;
        auto inner = Row_Sources().AltAz;
        Row_Sources().AltAz = [inner](double jd, bool catalogue) {
            const auto t0 = std::chrono::steady_clock::now();
            AltAzRows r = inner(jd, catalogue);
            rowsMs +=
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0)
                    .count();
            return r;
        };
    }
    rowsMs = 0;
    const int before = altaz->Calculations;
    bool up = true;
    for (auto _ : state) {
        Send_Key(client, up ? Qt::Key_Plus : Qt::Key_Minus, up ? "+" : "-");
        up = !up;
        benchmark::DoNotOptimize(altaz->Picture().constBits());
    }
    if (altaz->Calculations - before != static_cast<int>(state.iterations()))
        state.SkipWithError("a key press did not recompute the rows");
    state.counters["rows_ms"] = rowsMs / static_cast<double>(state.iterations());
    state.counters["rows"] = altaz->Grid().Bottomlabels + 1;
}
BENCHMARK(BM_AltAzDateKeyToPicture)->Unit(benchmark::kMillisecond);

}  // namespace
