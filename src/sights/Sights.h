// A set of sights: the rows of observations with the record of the fix time, the list of
// candidate bodies of each row, and the binary .Sight file with the comparison a loaded
// file makes against the user's settings.
//
// Units: times in days since the epoch of the program (MyJD, UT) unless a field says zone
// time; altitudes, intercepts and DR positions in radians; azimuths in degrees true.
// Every 16-bit flag is 0 or -1 (all ones).
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "settings/SettingsRecord.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

static_assert(std::endian::native == std::endian::little,
              "sight records are copied to and from the file byte for byte");

#pragma pack(push, 4)
// One row of the table of sights, and the record of the fix time: 76 bytes, the layout of
// the file.
struct Sight_Record {
    int32_t Sight_Day = 0;     // entered date and time, in the zone in use
    int32_t Sight_Month = 0;
    int32_t Sight_Year = 0;
    int32_t Sight_Hour = 0;
    int32_t Sight_Minute = 0;
    int32_t Sight_Second = 0;
    double Sight_Time = 0;     // UT: the entered time less the zone bias ÷ 1440, MyJD
    float Sextant_Alt = 0;     // Hs, radians, held rounded to 0'.1
    float Sight_Az = 0;        // azimuth as entered, degrees
    int32_t Candidate_No = -1; // selected candidate; -1 none matches; -2 none and Sun up
    float DR_Lat = 0;          // DR at Sight_Time, radians
    float DR_Long = 0;
    int32_t Body_Id = 0;       // the body selected
    float Sun_Alt = 0;         // the Sun's altitude at the sight, radians
    float Intercept = 0;       // of the selected body, radians, positive away
    float Line_Az = 0;         // azimuth of the selected body, degrees
    int16_t Row_Used = 0;      // set at the first entry in the row
    int16_t Has_Body = 0;      // a body is selected: the row takes part in the plot
    int16_t Az_Entered = 0;
    int16_t Alt_Entered = 0;
};
#pragma pack(pop)
static_assert(sizeof(Sight_Record) == 76);
static_assert(offsetof(Sight_Record, Sight_Time) == 24);
static_assert(offsetof(Sight_Record, Candidate_No) == 40);
static_assert(offsetof(Sight_Record, Line_Az) == 64);
static_assert(offsetof(Sight_Record, Row_Used) == 68);

// A body that fits a row's sight.
struct Sight_Candidate {
    int32_t Body_Id = 0;
    float Cand_Intercept = 0;  // radians, positive away
    float Cand_Az = 0;         // degrees, rounded to five decimals
    float Cand_Mag = 0;        // visual magnitude
    std::string Name;          // "Sun's UL", "Venus", a star's name or designation
    std::string Name2;         // a star's designation and constellation when it has a name
    std::string Intercept_Text;  // "##0'.0" and " away"/" towards", or "Nil "
    std::string Az_Text;         // "000°.0 T"
    std::string Line_Text;       // the position line's bearings, "045°/ 225°"
    std::string Mag_Text;        // "#0.0"
};
using Candidate_List = std::vector<Sight_Candidate>;

// The fix record at moment `jd` (UT): its time, its date and time fields in the zone of
// `bias` minutes, and the DR then.
void Set_Fix_Time(Sight_Record& fix, double jd, int32_t bias);

// Rows of the table for a work area `height` pixels high: (height - 221) ÷ 160 in whole
// numbers, held between 6 and 14 (7 to 15 rows).
int32_t Max_Sight(int32_t height);

// What the sights ask of the screen that shows them: the message boxes, and the steps of
// a load that touch the rest of the program. Tests give their own.
class SightsHost {
public:
    virtual ~SightsHost() = default;
    virtual MsgAnswer Message_Box(const std::string& text, const std::string& title,
                                  MsgButtons buttons) = 0;
    // A row was reset to the blank record: its controls show it empty.
    virtual void Row_Blanked(int row) { (void)row; }
    // A row has been reduced: repaint its label, the plot and its altitude text, and let
    // an open working sheet of that row recompute.
    virtual void Row_Reduced(int row) { (void)row; }
    // The default plan named by the accepted settings is to be read, under the heading
    // "Voyage Plan".
    virtual void Load_Plan(const std::string& path) { (void)path; }
    // The accepted settings replace the old ones: the screen redoes its data.
    virtual void Settings_Accepted() {}
    // After a load: re-paint the date control, the fix display and the plot.
    virtual void Load_Done() {}
};

// The data of the Sights screen while the program runs.
struct SightSet {
    std::vector<Sight_Record> Sights;           // rows 0 .. Max_Sight
    std::vector<Candidate_List> Candidates;     // by row
    std::vector<int16_t> DR_Warning;            // by row: the DR came back with the marker
    Sight_Record Fix_Sight;                     // time of the fix and the DR then
    int32_t My_TZ_Bias = 0;                     // zone of the entered times
    std::string Path;                           // the file of the set, "" before a save
    bool Loaded = false;                        // the set came from a file
    SightsHost* Host = nullptr;

    // Rows 0 .. maxSight, all blank.
    explicit SightSet(int32_t maxSight = 6);
    int32_t Max_Sight() const { return static_cast<int32_t>(Sights.size()) - 1; }
    // "&New Set": every row blank, the candidate lists empty, the path forgotten.
    void Clear();
    // Resets row `row` to the blank record with an empty candidate list.
    void Blank_Row(int row);
};

// The words of the sights' message boxes and file dialogues.
namespace sights_text {
inline constexpr const char* NotSaved = "Current data has not been saved";
inline constexpr const char* NotSavedTitle = "Sights Warining";
inline constexpr const char* Unsaved = "Unsaved information will be lost";
inline constexpr const char* UnsavedTitle = "Sights Warning";
inline constexpr const char* Accept = "Accept values for the loaded sights?";
inline constexpr const char* DifferencesTitle = "Differences in User Settings";
inline constexpr const char* FileFilter = "Sight Files (*.Sight)";
inline constexpr const char* FilePattern = "*.Sight";
inline constexpr const char* AllFilter = "All Files (*.*)";
inline constexpr const char* AllPattern = "*.*";
inline constexpr const char* OpenTitle = "Open Sight File";
inline constexpr const char* SaveTitle = "Save Sights As";
inline constexpr const char* Extension = ".Sight";
inline constexpr const char* PlanHeading = "Voyage Plan";
}  // namespace sights_text

// Offsets of the file: the zone bias, the three filter limits, the fix record, the
// calendar flag, the observer record and then the default plan's path (16-bit length and
// ANSI bytes); the rows follow the path.
inline constexpr std::size_t kSightFixOffset = 16;
inline constexpr std::size_t kSightCalendarOffset = 92;
inline constexpr std::size_t kSightObserverOffset = 94;
inline constexpr std::size_t kSightPathOffset = 166;

// The bytes of a .Sight file for `set`, with the filter limits (SightsFilter), the
// calendar flag (Shell.CalendarChoice) and the observer record of `settings`.
std::vector<unsigned char> Encode_Sights(const SightSet& set, const SettingsRecord& settings);

// Writes the set to `path` (a new file in the same folder, flushed, then renamed over the
// old one: an interruption leaves the old file whole), clears the unsaved flag of the
// sights (Shell.SightsChanged) and keeps the path. False if it could not be written; the
// flag and the path are then left as they were.
bool Save_Sights(SightSet& set, const std::string& path);

// What a load did.
enum class Load_Result {
    Cancelled_Unsaved,  // the unsaved warning was answered Cancel: nothing read
    Unreadable,         // the file could not be opened: nothing changed
    Cancelled,          // the differences were answered Cancel: rows stay, settings stay
    Accepted,           // differences answered Yes: the file's settings are in use
    Kept,               // differences answered No: the settings stay
    Same                // no differences: nothing asked
};

// Reads the .Sight file at `path` into `set` with every step of the load: the unsaved
// warning, the row count (Int((length - 166) ÷ 76), held at the set's Max_Sight), rows not
// used and rows beyond reset blank, each row with a body reduced again, the comparison
// with the settings and its question, and the fix time, bias and DR put in use.
Load_Result Load_Sights(SightSet& set, const std::string& path);
// The same on the bytes of a file.
Load_Result Load_Sights_Bytes(SightSet& set, std::span<const unsigned char> bytes,
                              const std::string& path);

// The lines of the differences between the settings of a loaded file (`file`, its zone
// bias `fileBias`) and the settings in use (`now`, `nowBias`), each ended with CR LF;
// empty when they agree.
std::string Settings_Differences(const SettingsRecord& file, int32_t fileBias,
                                 const SettingsRecord& now, int32_t nowBias);

// The file name of a first save: the fix date by "DD MMM YY" and ".Sight"
// ("05 Mar 24.Sight"), in `folder` (which ends in a separator, or is empty).
std::string Sight_File_Name(const Sight_Record& fix, const std::string& folder);

}  // namespace kelmoran
