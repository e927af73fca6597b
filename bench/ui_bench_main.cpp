// The main of the benchmark programs on the window layer: a headless application whose
// settings go to the test folders, then the benchmarks.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
