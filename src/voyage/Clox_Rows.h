// The rows of the Clocks screen ("Clox"): one row a day, the date in zone time with its
// weekday, the position at noon, the twilights, sunrise, the meridian passage, sunset and
// the ship time. With the position method "D.R. by plan" the rows are the days of the
// voyage and each day is in the zone the ship keeps that day (the plan's Ship_Time);
// otherwise thirty days from the date shown, in the zone of the screens.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/Screen_Rows.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

// The number of days shown when no voyage is followed.
inline constexpr int32_t kCloxMonthDays = 30;
// The column of the ship time, the one column a user types into.
inline constexpr int32_t kCloxShipColumn = 11;

struct CloxRows : TableRows {
    std::vector<bool> Sunday;       // the row is a Sunday (painted red)
    std::vector<bool> ZoneChange;   // the zone differs from the day before (" *")
    std::vector<int32_t> Zone;      // the zone of each row, minutes east
    bool ByPlan = false;            // the rows are the days of the voyage
};

// The rows for the moment `jd` (MyJD, UT) under the settings in force and the plan in use
// (Voyage). When following the plan, a ship-time table that does not cover the voyage is
// first taken from the plan (without an undo step).
CloxRows Clox_Rows(double jd, bool seconds);

// The moment (UT) of row `row` as the rows are laid out now: the start of the voyage and a
// day per row, or midnight of the zone day shown and a day per row.
double Clox_Row_Time(double jd, int32_t row);

}  // namespace kelmoran
