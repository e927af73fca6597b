// Start of the settings suite that runs on the window layer.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <ctime>

int main(int argc, char** argv) {
    // The computer's zone for this run, before Qt first asks for it.
    ::setenv("TZ", "Australia/Sydney", 1);
    ::tzset();
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
