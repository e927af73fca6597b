// The main of the headless window suites. Each suite program keeps its settings file in a
// home folder of its own, so that suites run side by side never read each other's User.Dat.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

int main(int argc, char** argv) {
    QTemporaryDir home;
    if (home.isValid()) qputenv("HOME", home.path().toLocal8Bit());
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
