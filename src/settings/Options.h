// The Options dialogue without any window system: which tabs a screen shows, the values
// every tab writes straight into shared state, the refusals, the copy that "Cancel" puts
// back, the changed flags, and the steps that run when the dialogue closes with OK.
//
// The painted tabs (OptionsWindow) call only what is here; the screens follow through
// Options_Unload, which turns the flags into the least work: a recalculation only where a
// flag asks for one.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "shell/Screen_Rows.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

class GridModel;

// The internal names of the tabs, as the program switches tasks by them.
namespace options_tab {
inline constexpr const char* Bodies = "Bodies";
inline constexpr const char* Body = "Body";
inline constexpr const char* Columns = "Columns";
inline constexpr const char* Filter = "Filter";
inline constexpr const char* Misc = "Misc";
inline constexpr const char* Observer = "Observer";
inline constexpr const char* Position = "Position";
inline constexpr const char* Time = "Time";
inline constexpr const char* Times = "Times";
inline constexpr const char* VoyPlan = "Voy Plan";
}  // namespace options_tab

// The tabs of the screen `ownerKey`, in the order of its tab strip; an unknown key gets
// Main's.
std::vector<std::string> Options_Tabs(const std::string& ownerKey);

// The changed flags, each a 16-bit boolean set by a tab.
struct OptionsFlags {
    int16_t ColumnsChanged = 0;
    int16_t BodiesChanged = 0;
    int16_t ObserverChanged = 0;
    int16_t PositionChanged = 0;
    int16_t PositionMethodChanged = 0;
    int16_t TimeChanged = 0;
    int16_t SpeedsChanged = 0;
    int16_t BodyOrIntervalChanged = 0;
    int16_t ResetMessages = 0;
    int16_t FilterChanged = 0;
    int16_t TitleChanged = 0;  // the altitude columns' titles are to be redrawn
};
extern OptionsFlags Options_Flags;

// The column choices of a grid: which columns show, in what order, and auto-size.
struct ColumnChoices {
    std::vector<int16_t> Visible;
    std::vector<int32_t> Order;
    bool AutoSize = false;
};
ColumnChoices Take_Column_Choices(const GridModel& grid);
void Put_Column_Choices(GridModel& grid, const ColumnChoices& c);

// What "Cancel" puts back. The grid is the calling screen's (null when it has none).
struct OptionsCopy {
    SettingsRecord Settings;
    Plan_Header Header;
    float DefaultSpeed = 0;
    int32_t Bias = 0;
    ColumnChoices Columns;
    BodyFilters Filters;
    SightsFilterState SightFilter;
};

// The dialogue's session: opened for one screen, closed by OK or Cancel.
struct OptionsSession {
    std::string Owner;           // the calling screen's key
    std::vector<std::string> Tabs;
    int32_t CurrentTab = 0;
    GridModel* Grid = nullptr;   // the calling screen's grid, or null
    OptionsCopy Copy;
};
extern OptionsSession Options;

// Opens a session for `ownerKey` on tab `tab` ("" or unknown: the first), taking the copy
// (Cancel_Preparation) and clearing the flags.
void Options_Open(const std::string& ownerKey, const std::string& tab, GridModel* grid);
void Cancel_Preparation();
// Puts the copy back, recomputes IndexErrorRad, DipRad and RefractionFactor and clears
// the flags.
void Cancel_Invoke();

// What the unload asks of the program beyond the shell's own state. The window layer (or
// a test) sets the ones it can serve; an unset one is skipped.
struct OptionsHooks {
    std::function<void()> Clear_Clox_Current;      // the Clocks' data-is-current array
    std::function<void()> Push_Undo;               // one undo state of Voyage and Clocks
    std::function<void()> Refilter_Sights;         // Sights runs its filter again
    std::function<void()> Draw_After_Column_Changes;
    std::function<void()> Redraw_Titles;           // altitude and body titles
    std::function<void()> First_Use_Reset;
    // The screen ticks of the Columns tab that belong to a screen's own state (Clocks
    // "12:00 Position" and " Twilights", Voyage "Additional Remarks"), by caption.
    std::function<bool(const std::string& caption)> Tick_Value;
    std::function<void(const std::string& caption, bool on)> Set_Tick;
};
extern OptionsHooks Options_Hooks;

// The steps of the dialogue's close with OK, in their order (the edit is ended and the
// controls released by the window before this).
void Options_Unload();

// ---- Observer ----------------------------------------------------------------------------

namespace observer_field {
inline constexpr const char* HtOfEye = "HtOfEye";
inline constexpr const char* IndexError = "IndexError";
inline constexpr const char* Temp = "Temp";
inline constexpr const char* Pressure = "Pressure";
}  // namespace observer_field

// Feet in a metre, and inches of mercury in a millibar, as the tab converts them.
inline constexpr double kFeetPerMetre = 3.2808429;
inline constexpr double kInHgPerMb = 0.02983;

// The value of a field in the unit shown (height in m or ft, index error without its sign,
// temperature in °C or °F, pressure in Mb or In Hg), and its text by the field's mask.
double Observer_Shown_Value(const std::string& field);
std::string Observer_Text(const std::string& field);
// The two unit choices of a field, and which is in force (0 or 1).
std::array<const char*, 2> Observer_Units(const std::string& field);
int32_t Observer_Unit(const std::string& field);
// A unit choice: the shown text changes, the stored value does not, except the index
// error, whose sign is the choice ("On the Arc" negative).
void Observer_Set_Unit(const std::string& field, int32_t choice);
// The end of an edit of a field, `shown` in the unit shown. False (a beep, the old value
// kept) for a temperature under -50 °C or at or above 50 °C, a negative height or a
// pressure of zero or less.
bool Observer_Commit(const std::string& field, double shown);
// "(Standard Values: 10°C/ 1010mb)" by the units in force.
std::string Standard_Values_Line();

// ---- Position ----------------------------------------------------------------------------

// A choice of method 0, 1 or 2 at the moment `jd` (UT). Choosing DR sets FixTime to `jd`
// when unset; moving to the fix puts the position at `jd` into the fix. False (nothing
// changed) for "D.R. by plan" when it cannot be chosen.
bool Position_Choose(int32_t method, double jd);
// Whether "D.R. by plan" can be chosen at `jd`, and the lines of its help.
bool Position_Plan_Enabled(double jd);
std::vector<std::string> Position_Plan_Reason(double jd);
// The fix, the course and speed, the fix's time, by the tab's edits.
void Position_Set_Fix(double lat, double lon);
void Position_Set_Course(double degrees);
bool Position_Set_Speed(double knots);
void Position_Set_Fix_Time(double jd);
// The plan lines of "D.R. by plan": the plan's name in double quotes, and the ETD and ETA
// lines, time " @ " position.
std::array<std::string, 3> Position_Plan_Lines();

// ---- Voyage speeds and times ------------------------------------------------------------

// "Default Speed" and "Fixed Speed " 1 to 3; false (a beep) below 0.01 or from 100 kn.
bool Voyage_Set_Default_Speed(float knots);
bool Voyage_Set_Fixed_Speed(int32_t which, float knots);
// "Reset Plan": every unlocked row after the last locked one takes the default speed.
void Voyage_Reset_Plan_Speeds();
// The ETD and ETA of the plan in zone time and their zone minutes; a change of an hour or
// minute offset moves the zone of that time.
struct VoyageTimes {
    double ETD = 0, ETA = 0;             // zone time, MyJD
    int32_t ETDZone = 0, ETAZone = 0;    // minutes
};
VoyageTimes Voyage_Times();
bool Voyage_Set_Zone(bool eta, int32_t minutes);

// ---- Filter ------------------------------------------------------------------------------

inline constexpr std::array<const char*, 5> kFilterStarTexts = {"  209", "  280", "  504",
                                                                 " 1520", " 4683"};
inline constexpr std::array<int32_t, 5> kFilterStarCounts = {209, 280, 504, 1520, 4683};
inline constexpr std::array<const char*, 9> kFilterAltTexts = {
    "    0'.5", "    1'.0", "    2'.5", "    5'   ", "  10'   ",
    "  30'   ", "  60'   ", "120'   ",  "600'   "};
// The third item sets 2 although it reads 2'.5: kept as the program always had it.
inline constexpr std::array<float, 9> kFilterAltValues = {0.5f, 1, 2, 5, 10, 30, 60, 120, 600};
inline constexpr std::array<const char*, 5> kFilterAzTexts = {"  5°", "10°", "20°", "45°", "90°"};
inline constexpr std::array<float, 5> kFilterAzValues = {5, 10, 20, 45, 90};
// The item of the present limit (looked up by value), and a choice.
int32_t Filter_Alt_Index();
int32_t Filter_Az_Index();
int32_t Filter_Star_Index();
void Filter_Set_Alt(int32_t index);
void Filter_Set_Az(int32_t index);
void Filter_Set_Stars(int32_t index);
void Filter_Set_Daylight(bool on);
void Filter_Set_Tab_Down(bool on);

// ---- Bodies and Body ---------------------------------------------------------------------

inline constexpr std::array<const char*, 5> kBodiesModes = {
    "Main Stars Only", "To Magnitude 3.5", "Constellation", "By S.H.A./ Dec.",
    "By Obs. Alt./ Azimuth"};
inline constexpr std::array<const char*, 7> kRadiusTexts = {" 10'", " 20'", " 30'", " 45'",
                                                             " 60'", "120'", "600'"};
inline constexpr std::array<int32_t, 7> kRadiusValues = {10, 20, 30, 45, 60, 120, 600};
inline constexpr std::array<const char*, 8> kMagTexts = {"  3.5", "   4", "   5", "   6",
                                                         "   7", "   8", "   9", " 10"};
inline constexpr std::array<int32_t, 8> kMagCounts = {280,   504,    1520,   4683,
                                                      14289, 42078, 120549, 328869};
inline constexpr std::array<const char*, 12> kBodyChoices = {
    "Sun's Upper Limb", "Sun's Lower Limb", "Moon's Upper Limb", "Moon's Lower Limb",
    "Mercury",          "Venus",            "Mars",              "Jupiter",
    "Saturn",           "Neptune",          "Uranus",            "Pluto"};
inline constexpr std::array<const char*, 6> kIntervals = {"Year", "Month",  "Day",
                                                          "Hour", "Minute", "Second"};
int32_t Radius_Index();
int32_t Mag_Index();
// Each sets the Bodies flag when it changes something.
void Bodies_Set_Tick(int16_t& flag, bool on);
void Bodies_Set_Mode(int32_t mode);
void Bodies_Set_Constellation(int32_t number);
void Bodies_Set_Radius(int32_t index);
void Bodies_Set_Mag(int32_t index);
void Bodies_Set_Centre(float a, float b);
// The Body tab: each sets the body-or-interval flag.
void Body_Set(int32_t number);
void Body_Set_Interval(int32_t index);
void Body_Set_Seconds(bool on);
int32_t Interval_Index();

// ---- Columns -----------------------------------------------------------------------------

// The lines of the Columns list: every available column of the grid, in the grid's order
// (visible first), with its long title and tick.
struct ColumnLine {
    int32_t Column = 0;
    std::string Title;
    bool Shown = false;
};
std::vector<ColumnLine> Columns_List(const GridModel& grid);
// A tick on line `line`: shows or hides that column (the last shown one stays).
void Columns_Toggle(GridModel& grid, int32_t line);
// The carry of a label: line `from` is moved to stand at line `to`.
void Columns_Move(GridModel& grid, int32_t from, int32_t to);
void Columns_Set_AutoSize(GridModel& grid, bool on);
// "Cyrilic Characters for Designations" of AltAz: a 16-bit boolean of the run.
extern int16_t Use_Cyrillic;

// ---- Misc --------------------------------------------------------------------------------

inline constexpr std::array<const char*, 4> kHelpLevels = {
    "Full", "Normal + Full Description of Terms", "Normal Level", "Minimum"};
inline constexpr const char* kStandardRiseSet = "\"Standard\" values for Rising and Setting";
inline constexpr const char* kReinstateMessages = "Reinstate Initial Non-Recurring Messages";
void Misc_Set_Help_Level(int32_t level);
void Misc_Set_Standard_RiseSet(bool on);
void Misc_Set_Reinstate(bool on);

}  // namespace kelmoran
