// The ship's clocks along a voyage: the zone the ship keeps on each day of the plan (the
// plan's Ship_Time table, minutes east of Greenwich, one entry a day from Plan_Start),
// worked out from the longitude or taken from the plan's way points, and written back
// into the plan as way points that carry the clock changes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace clox_text {
inline constexpr const char* Retarded = "Clocks Retarded";
inline constexpr const char* Advanced = "Clocks Advanced";
inline constexpr const char* DateChange = "Date Change";
inline constexpr const char* AndClocks = " and Clocks";
inline constexpr const char* Separator = ": ";
inline constexpr const char* MenuCalculate = "&Calculate Ship Time";
inline constexpr const char* MenuApply = "&Apply to Voyage Plan";
inline constexpr const char* MenuTake = "&Take Ship Time from Plan";
}  // namespace clox_text

// Half a minute of a day: a way point this close to a clock change takes its text.
inline constexpr double kCloxTolerance = 0.00034722222222222224;
// One minute of a day: added to a change that would fall exactly on midnight UT.
inline constexpr double kOneMinute = 0.0006944444444444445;

// The days of the voyage: one entry from Plan_Start for each day up to Plan_End.
int Clox_Day_Count(const VoyagePlan& plan);

// The moment of entry `day`: Plan_Start + day × 1440 minutes.
double Clox_Entry_Time(const VoyagePlan& plan, int day);

// The minutes of a zone label "GMT", "Z+5.5", "Z-12"; none for other text.
std::optional<int32_t> Parse_Zone_Text(const std::string& text);

// The zone (minutes east) the ship keeps from each row on: the ETD's zone, changed at each
// row whose Description carries a clock change ("Clocks Advanced: Z+2" and the like).
int32_t Row_Ship_Time(const VoyagePlan& plan, int row);
// The zone in force after a row of that Description, `zone` being the one before it.
int32_t Ship_Time_After(const std::string& description, int32_t zone);

// The text of a change from zone `before` to zone `after` (minutes east), or "" when
// they are equal: "Clocks Retarded", "Clocks Advanced", "Date Change" or
// "Date Change and Clocks", then ": " and the zone label of `after`.
std::string Clock_Change_Text(int32_t before, int32_t after);

// "&Calculate Ship Time": each day's zone is the nominal zone of the longitude on the
// plan at the day's moment, Round(degrees ÷ 15) hours, east positive. A ship keeps the
// zone of its longitude, and at the date line that is ±12 hours at most: from 172.5° E to
// the line the zone is Z+12, from the line to 172.5° W it is Z-12, and the crossing is a
// change of date with the clocks unchanged. A zone above 12.5 hours either way (which
// the rounding cannot give for a longitude within ±180°) has 60 minutes taken off its
// size. An undo step (Clocks) first.
void Calculate_Ship_Time(VoyagePlan& plan);

// "&Take Ship Time from Plan": each day takes the zone of the plan's row in force then.
// Without `undoStep` no undo state is taken (the screen filling a table it has not got).
void Take_Ship_Time_From_Plan(VoyagePlan& plan, bool undoStep = true);

// "&Apply to Voyage Plan": each day whose zone differs from the one before (the first
// from the ETD's zone) becomes a clock change in the plan. Within the window of the day
// (10 hours before to 14 hours after its moment) the change goes to the first way point
// there; with no way point in the window a new row is made at the day's moment, at the
// position of the plan then. The row takes the change's text in its Description. An undo
// step (Voyage) first; the plan is recalculated.
void Apply_To_Voyage_Plan(VoyagePlan& plan);

}  // namespace kelmoran
