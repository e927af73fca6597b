// Helpers shared by the voyage tests: angles, bit patterns and plans built from positions.
#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "shell/M_Kelmoran.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran::voyage_test {

constexpr double kDeg = 1.0 / 57.2957795130823;
constexpr double kMinutesPerRadian = 3437.74677078494;

inline uint32_t Bits(float f) {
    uint32_t u;
    std::memcpy(&u, &f, sizeof u);
    return u;
}

// A recalculated plan of `rows` rows from `start`, its first rows at the
// given positions (degrees); rows take the plan's default speed.
inline VoyagePlan Plan_Of(std::initializer_list<std::pair<double, double>> pts, int rows = 11,
                          double start = 9000.0, float speed = 10.0f) {
    VoyagePlan p;
    p.New_Plan(start, speed);
    p.Way_Points.assign(static_cast<size_t>(rows), Way_Point{});
    p.Texts.assign(static_cast<size_t>(rows), Way_Point_Text{});
    size_t i = 0;
    for (const auto& [lat, lon] : pts) {
        p.Way_Points[i].Lat = lat * kDeg;
        p.Way_Points[i++].Long = lon * kDeg;
    }
    p.Test_Wpts_Valid();
    p.Recalc_Plan();
    return p;
}

}  // namespace kelmoran::voyage_test
