// The Sights window with seven sights in a set of eight rows: the eighth sight's azimuth
// committed by Enter, to the reduced row, the fix and the repainted plotting sheet.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStandardPaths>
#include <chrono>

#include "ui_bench.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "shell/M_Edit.h"
#include "shell/M_Kelmoran.h"
#include "sights/M_Sights.h"
#include "sights/SightsWindow.h"
#include "stars/M_Resources.h"
#include "voyage/Position_Methods.h"

namespace {

using namespace kelmoran;
using bench::Send_Key;

void BM_SightEnterToRepaintedSheet(benchmark::State& state) {
    Load_Star_Tables();
    Settings = SettingsRecord{};
    Settings.ObserverLat = static_cast<float>(34.4 / kDegreesPerRadian);
    Settings.ObserverLong = static_cast<float>(-51.6 / kDegreesPerRadian);
    Settings.PositionMethod = kFixPosition;
    Settings.HtOfEye = 3;
    Compute_Derived_Settings();
    SightsFilter.AltLimit = static_cast<float>(60.0 / kArcminPerRadian);
    SightsFilter.AzLimit = 20.0f;
    SightsFilter.StarCount = 280;
    SightsFilter.DaylightStars = kTrue;
    TZ_Bias = 0;
    Shell.CurrentJD = 8830.5 + 23.0 / 24.0;  // 2024 March 5, 23:00 UT: evening twilight
    auto* w = new SightsWindow(7);
    w->show();
    QApplication::processEvents();
    SightSet& set = w->Set();
    for (int r = 0; r < 8; ++r) {
        Sight_Record& s = set.Sights[r];
        s.Sight_Time = Shell.CurrentJD + r / 1440.0;
        s.Sextant_Alt = static_cast<float>((25.0 + 4 * r) / kDegreesPerRadian);
        s.Sight_Az = static_cast<float>(r * 45);
        s.Row_Used = s.Alt_Entered = kTrue;
        s.Az_Entered = r < 7 ? kTrue : kFalse;
        Reduce_Sight(set, r, false);
    }
    QWidget* client = w->Client();
    for (auto _ : state) {
        state.PauseTiming();
        QPoint at((w->Layout().Cell(7, kColAz).Left + w->Layout().Cell(7, kColAz).Right) / 2,
                  (w->Layout().Cell(7, kColAz).Top + w->Layout().Cell(7, kColAz).Bottom) / 2);
        QMouseEvent press(QEvent::MouseButtonPress, at, client->mapToGlobal(at), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(client, &press);
        for (const char* k : {"3", "1", "5", "0"}) Send_Key(client, k[0], k);
        state.ResumeTiming();
        Send_Key(client, Qt::Key_Return, "\r");
        client->repaint();
    }
    Shell.SightsChanged = kFalse;
    delete w;
}
BENCHMARK(BM_SightEnterToRepaintedSheet)->Unit(benchmark::kMillisecond);

}  // namespace
