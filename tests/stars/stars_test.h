// Helpers shared by the star tests.
#pragma once

#include <gtest/gtest.h>
#include <swephexp.h>

#include <string>

#include "ephemeris/Units.h"
#include "stars/M_Resources.h"

namespace kelmoran::stars_test {

constexpr double kArcsec = 206264.806247096;
constexpr double kDegrees = 57.2957795130823;

// The catalogue row of a navigational star by its almanac name, 0 if none.
inline int32_t Nav_Star(const std::string& name) {
    for (const auto& row : MainStars)
        if (row.Name == name) return row.Star;
    return 0;
}

// Suites that compare with the Swiss Ephemeris: its files, and our tables loaded.
class SweSuite : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
        Load_Star_Tables();
    }
    static void TearDownTestSuite() { swe_close(); }
};

}  // namespace kelmoran::stars_test
