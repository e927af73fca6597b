// Prints to PDF files: AltAz with every star brighter than magnitude 7 above 10° (about 6,000 rows),
// the columns fitted, the pages laid out and drawn (the rows worked out once beforehand); and
// a whole year's almanac.
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

// "Complete Almanac" for 2026 to a PDF file: title, contents, 122 openings of daily pages
// and the book's tables, every page worked out and drawn.
void BM_Complete_Almanac_To_PDF(benchmark::State& state) {
    if (Catalogue.empty()) Load_Star_Tables();
    const std::string path = QDir::temp().filePath("kelmoran_bench_book.pdf").toStdString();
    cPrint_Gateway gateway;
    for (auto _ : state)
        benchmark::DoNotOptimize(
            gateway.Save_PDF(Book_Item("Complete Almanac", 0.0, 0, 2026, false), path));
    state.counters["pages"] = gateway.Pages;
    QFile::remove(QString::fromStdString(path));
}
BENCHMARK(BM_Complete_Almanac_To_PDF)->Unit(benchmark::kSecond)->Iterations(1);

}  // namespace
