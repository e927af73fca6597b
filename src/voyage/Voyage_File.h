// The voyage file (.Voy, also offered as .Clox on the Clocks screen) and the default plan.
//
// Layout, little-endian, no magic and no version, strings as a 16-bit byte count and then
// that many single-byte (Windows-1252) characters:
//   header: Plan_Start f64, ETD minutes i16, ETD zone string, Plan_End f64, ETA minutes
//     i16, ETA zone string, reserved i16, Fixed_Speed_1..3 and Default_Speed f32, highest
//     row index N i16, highest index of the extra list i16, title, path, third text;
//   rows 0 .. N: Lat f32, Long f32, Speed f32, 12 reserved bytes, Remarks, ID (a single
//     blank for a row that holds no way point), Description, Show i16, second flag i16,
//     third flag i16, Row_Locked i16, Leg_Type char, second type char;
//   the extra list of strings; one further 16-bit value.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "settings/SettingsRecord.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

// The words of the voyage files and of the default plan.
namespace voyage_file_text {
inline constexpr const char* Filter = "Voyage Files (*.Voy)";
inline constexpr const char* Pattern = "*.Voy";
inline constexpr const char* Extension = ".Voy";
inline constexpr const char* CloxFilter = "Clox Files (*.Clox)";
inline constexpr const char* CloxPattern = "*.Clox";
inline constexpr const char* OpenTitle = "Open Voyage File";
inline constexpr const char* SaveAsTitle = "Save Voyage File As";
inline constexpr const char* ReplaceExisting = "Replace Existing File";
inline constexpr const char* AlreadyExists = "File Already Exists";
inline constexpr const char* MustSaveFirst = "A plan must be saved before it can be set as the default";
inline constexpr const char* SaveCancelled = "Save Cancelled";
inline constexpr const char* PlanChanged = "Voyage Plan has been changed";
inline constexpr const char* SaveChangesQ = "Save changes?";
inline constexpr const char* Exiting = "Exiting";
inline constexpr const char* SaveChangesNew = "Save Changes?";
inline constexpr const char* PlanChangedTitle = "Voyage Plan Changed";
inline constexpr const char* SetDefault = "Set as &Default Plan";
inline constexpr const char* ReplaceDefault = "Replace as the &Default Plan";
inline constexpr const char* RemoveDefault = "&Remove as Default";
inline constexpr const char* RestoreDefault = "Restore Default Plan";
// Our own words for a file that cannot be used.
inline constexpr const char* NotReadable = "The voyage file could not be read";
inline constexpr const char* Damaged = "The file is damaged or is not a voyage file";
inline constexpr const char* NotWritten = "The voyage file could not be written";
}  // namespace voyage_file_text

// The bytes of `plan` in the file's layout. Strings of the plan are UTF-8 and are written
// as Windows-1252.
std::vector<unsigned char> Encode_Plan(const VoyagePlan& plan);

// Reads the bytes of a file into `out` (its header, rows, texts, list and last value;
// Lat and Long widened to 64 bits). False, with `out` untouched, when the bytes are not a
// whole voyage file: too short, a negative or impossible count, or bytes left over.
bool Decode_Plan(std::span<const unsigned char> bytes, VoyagePlan& out);

// Load_Plan: reads file `path` into `plan`. On success the plan is marked as named, no
// row has Position_Done (every meridional part is worked again), the plan is
// recalculated, the shell's PlanChanged is cleared and the undo stacks are emptied. On
// failure `plan` is unchanged and `message` holds the words to show.
bool Load_Plan(const std::string& path, VoyagePlan& plan, std::string& message);

// Save_Plan: writes `plan` to `path` (".Voy" is added to a name without it). The file is
// first written in full to a temporary file in the same folder, flushed to the disk and
// then renamed over the old one, so an interruption leaves the previous file whole. On
// success the plan's path is the new one, it is marked as named and PlanChanged cleared;
// if the plan was the default plan, the default path follows it to the new name.
bool Save_Plan(const std::string& path, VoyagePlan& plan, SettingsRecord& settings,
               std::string& message);

// A file name with ".Voy" added when it has no extension of that name.
std::string With_Voy_Extension(const std::string& path);

// True if the plan in use is the default plan.
bool Is_Default_Plan(const VoyagePlan& plan, const SettingsRecord& settings);

// "&Remove as Default": the default path becomes empty and a PositionMethod of 2 goes
// back to 0.
void Remove_As_Default(SettingsRecord& settings);

// "Set as &Default Plan" for a plan that has a file of its own: the default path becomes
// the plan's path. False, with the words to show under "Save Cancelled", when the plan is
// unsaved or "Untitled" (the caller offers Save As first and calls again).
bool Set_As_Default(const VoyagePlan& plan, SettingsRecord& settings, std::string& message);

// The default plan at start: read the settings' default plan when the path is set and
// the file exists; otherwise (or if it cannot be read) a fresh plan at `nowJD`. The name
// stays in the settings either way.
void Read_Default_Plan(VoyagePlan& plan, const SettingsRecord& settings, double nowJD);

}  // namespace kelmoran
