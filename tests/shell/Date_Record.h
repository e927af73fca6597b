// A date record of the strip's tests, its weekday left as it comes.
#pragma once

#include <cstdint>

#include "ephemeris/Time_Calcs.h"

namespace kelmoran::testing_dates {

inline MySystemTime Date(int y, int m, int d, int h = 12, int mi = 0, int s = 0) {
    MySystemTime t;
    t.wYear = static_cast<int16_t>(y);
    t.wMonth = static_cast<int16_t>(m);
    t.wDay = static_cast<int16_t>(d);
    t.wHour = static_cast<int16_t>(h);
    t.wMinute = static_cast<int16_t>(mi);
    t.wSecond = static_cast<int16_t>(s);
    return t;
}

}  // namespace kelmoran::testing_dates
