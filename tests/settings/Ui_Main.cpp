// Start of the settings suite that runs on the window layer. The computer's zone for the
// run is Australia/Sydney, or the zone given as --zone=NAME (CTest runs the suite once more
// under Europe/London).
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "settings/Process_Zone.h"

namespace kelmoran {
std::string Process_Zone = "Australia/Sydney";
}

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i)
        if (std::strncmp(argv[i], "--zone=", 7) == 0) kelmoran::Process_Zone = argv[i] + 7;
    // The computer's zone for this run, before Qt first asks for it.
    ::setenv("TZ", kelmoran::Process_Zone.c_str(), 1);
    ::tzset();
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
