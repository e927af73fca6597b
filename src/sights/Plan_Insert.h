// "Insert Position in Plan": the position of the Sights screen (fix, ITP, mean ITP or DR)
// goes into the voyage plan at the fix time, as a new way point in time order or over the
// position of a way point already at that time, with one undo step, and the plan is
// recalculated.
#pragma once

#include <functional>
#include <string>

#include "shell/M_Kelmoran.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace plan_insert_text {
inline constexpr const char* Exists = "A Way Point already exists for ";
inline constexpr const char* Change = "Do you want to change the Latitude/ Longitude?";
inline constexpr const char* Unlock = "THIS WILL UNLOCK WAY POINT ";
inline constexpr const char* Title = "Replace Way Point position?";
inline constexpr const char* CelestialFix = "Celestial Fix";
}  // namespace plan_insert_text

// The word of a kind of position in a plan's description: "Celestial Fix" for "Fix", the
// others as they are.
std::string Plan_Fix_Word(const std::string& typeOfFix);

// The description of a row after an insert: the word, after "/ " when the row has a
// description; any word of a former insert in the description is first taken out.
std::string Plan_Description(const std::string& former, const std::string& typeOfFix);

// The row of `plan` whose time is `t` (to the half minute), or -1.
int Plan_Row_At(const VoyagePlan& plan, double t);

// The question asked before the position of row `row` is replaced: the time (zone time by
// `bias` minutes) in brackets, and the unlock warning for a locked row.
std::string Replace_Prompt(const VoyagePlan& plan, int row, double t, int32_t bias);

enum class Insert_Result { Inserted, Replaced, Declined };

// Puts the position `lat`, `lon` (radians) of kind `typeOfFix` at time `t` (MyJD, UT)
// into `plan`. A way point at that time is offered for replacement through `ask` (the
// prompt and its title; true to go on): its position and description change and it is
// unlocked. Otherwise a new way point goes in time order, locked at that time, the legs
// before it from the last locked way point taking the speed that reaches it then. One
// undo step is recorded before the change, and the plan is recalculated.
Insert_Result Insert_Position_In_Plan(
    VoyagePlan& plan, double t, float lat, float lon, const std::string& typeOfFix,
    int32_t bias, const std::function<bool(const std::string&, const std::string&)>& ask);

}  // namespace kelmoran
