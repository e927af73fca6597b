// Date records of the strip's tests, their weekday left as it comes, and typing field by field.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>

#include "ephemeris/Time_Calcs.h"
#include "shell/M_Edit.h"

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

// Types each group of keys with `type` and expects the open edit to have moved on to the
// field named after it: {"15", "Month", "MAR", "Year", ...}.
template <class TypeKeys>
void Type_Through_Fields(TypeKeys type, std::initializer_list<const char*> keysThenField) {
    for (auto it = keysThenField.begin(); it + 1 < keysThenField.end(); it += 2) {
        type(it[0]);
        EXPECT_EQ(Edit.Field, it[1]) << it[0];
    }
}

}  // namespace kelmoran::testing_dates
