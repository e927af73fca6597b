// AltAz with every star brighter than magnitude 7 above 10° (about 6,000 rows) printed to
// a PDF file: the columns fitted, the pages laid out and drawn. The rows are worked out
// once beforehand.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QStandardPaths>

#include "printing/cPrint_Gateway.h"
#include "settings/SettingsRecord.h"
#include "shell/cMainForm.h"
#include "stars/M_Resources.h"

namespace {

using namespace kelmoran;

void BM_AltAz_Magnitude7_To_PDF(benchmark::State& state) {
    Settings = SettingsRecord{};
    Settings.ObserverLat = 0.87266f;  // 50° N
    Settings.ObserverLong = -0.08727f;
    Filters = BodyFilters{};
    Filters.BodyFilterMode = 1;
    Filters.StarCount = 14289;  // "   7"
    if (Catalogue.empty()) Load_Star_Tables();
    const double jd = 8840.4;  // 2024 March 15, evening UT
    const AltAzRows rows = AltAz_Rows(jd, false);
    GridModel grid;
    grid.Setup("AltAz", Column_Table("AltAz", "Apparent Altitude", "App. Alt."),
               cMainForm::Font_Measure());
    grid.Set_Data(rows.Labels, rows.Rows);
    GridPrint print = Collect_Data(grid);
    print.Titles = Decide_Generic_Title("AltAz", jd);
    const std::string path = QDir::temp().filePath("kelmoran_bench_altaz.pdf").toStdString();
    cPrint_Gateway gateway;
    for (auto _ : state) benchmark::DoNotOptimize(gateway.Save_PDF(print, path));
    state.counters["rows"] = rows.Rows;
    state.counters["pages"] = gateway.Pages;
    QFile::remove(QString::fromStdString(path));
}
BENCHMARK(BM_AltAz_Magnitude7_To_PDF)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
