// User.Dat: where it lives, how it is read at start and written at exit, the first-run
// defaults, and the values worked out from the settings record at every load.
//
// The file is the settings record in file order (little-endian), the default plan's path as
// a 16-bit byte count and that many single-byte ANSI characters, then TZ_Bias as a 32-bit
// signed integer. There is no signature and no version: a short file leaves the missing tail
// at zero, an empty or missing file is a first run.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "settings/SettingsRecord.h"

namespace kelmoran {

// ---- folders ----------------------------------------------------------------------------

// The user's documents folder (may be empty where the system has none).
extern std::string DocumentsFolder;
// The folder of User.Dat, ending in the path separator.
extern std::string UserFolder;

// What the platform tells of its folders. The window layer fills it (settings/User_Folders.h,
// from the system's standard locations); tests give their own.
struct PlatformFolders {
    std::string Documents;  // the user's documents folder, or ""
    std::string AppData;    // the user's application-data folder, or "" if there is none
    std::string Program;    // the folder of the program itself
};

// Sets DocumentsFolder, and UserFolder to AppData + "/Tarnely/" when the platform has an
// application-data folder (it need not exist yet), else to Program + "/User/".
void Find_User_Folder(const PlatformFolders& folders);

// The full name of the settings file: UserFolder + "User.Dat".
std::string User_Dat_Path();

// ---- values worked out from the record ---------------------------------------------------

// Index error and dip in radians, and the refraction scale (1 at 1010 mb and 10 °C), all
// 32-bit floats as the altitude corrections use them.
extern float IndexErrorRad;     // IndexError / kArcminPerRadian
extern float DipRad;            // 1.758 × √HtOfEye / kArcminPerRadian (a negative height as 0)
extern float RefractionFactor;  // Pressure × 0.28019801980198 / (Temp + 273); 1 if undefined

// Recomputes IndexErrorRad, DipRad and RefractionFactor from Settings (at every load and at
// every Cancel of Options).
void Compute_Derived_Settings();

// The working copies of the Sights filter and of the Star Atlas flag, taken from the record
// at load and written back to it at save.
struct SightsFilterState {
    float AltLimit = 0;         // altitude limit, radians
    float AzLimit = 0;          // azimuth limit, degrees
    int32_t StarCount = 0;      // stars tested, brightest first
    int16_t DaylightStars = 0;  // 16-bit boolean: "Include Stars during Daylight"
};
extern SightsFilterState SightsFilter;
extern int16_t AtlasShowRA;  // 16-bit boolean: the Star Atlas shows right ascension

// ---- the default voyage plan ---------------------------------------------------------------

// What Load_User_Dat asks of the voyage plan. The voyage module (or the program's start-up)
// sets both; while one is unset, that step does nothing.
struct DefaultPlanHooks {
    // Reads the voyage file at `path` (UTF-8) as the current plan.
    std::function<void(const std::string& path)> Read_Plan;
    // Makes the empty plan.
    std::function<void()> Make_Empty_Plan;
};
extern DefaultPlanHooks Default_Plan_Hooks;

// ---- loading and saving -------------------------------------------------------------------

// Size of a file whose plan path is empty: record, 2-byte count, bias.
inline constexpr std::size_t kUserDatMinimumBytes = kSettingsFixedBytes + 2 + 4;

// Arms the Non-Recurring Messages: the shell's ShowIntro and every screen's IntroPending.
void First_Use_Reset();

// Every field of Settings at its first-run value (fix 51°19'.3 N 0°00'.0, course 45°, 8.5
// knots, 1010 mb, 10 °C, limits 120' and 90°, 280 stars, metres, °C, millibars, daylight
// stars), TZ_Bias 0.
void Set_First_Run_Defaults();
// The record of a first run, as Set_First_Run_Defaults puts it in Settings.
SettingsRecord First_Run_Settings();

// The bytes of User.Dat for a record and a bias. The plan path is written as ANSI; a path
// longer than 65535 bytes is cut there.
std::vector<unsigned char> Encode_User_Dat(const SettingsRecord& record, int32_t bias);

// Reads the bytes of User.Dat into a record that starts all zero and a bias that starts at
// 0: whatever the bytes do not reach stays zero. Never fails.
void Decode_User_Dat(std::span<const unsigned char> bytes, SettingsRecord& record,
                     int32_t& bias);

// Reads User.Dat into Settings and TZ_Bias; a missing or empty file is a first run
// (First_Use_Reset, the folder made, the defaults). Then: SimplifiedRiseSet made 0 or 1
// (non-zero clears the spare byte), the derived values, the working copies of the filter,
// and the default plan read or the empty plan made through Default_Plan_Hooks. Returns
// true if the settings came from the file, false on a first run.
bool Load_User_Dat();

// Writes Settings and TZ_Bias to User.Dat after taking back the working copies: the
// altitude limit in whole minutes of arc (halves to even: 0'.5 is saved as 0), the azimuth
// limit, the daylight-stars and Atlas flags. SightStarCount is written as it was read. The
// old file is replaced only by a complete new one. Returns false if it could not be
// written (the old file then stays as it was); the program does not report it.
bool Save_User_Dat();

// Writes `bytes` to `path` through a new file in the same folder, flushed to the disk and
// then renamed over the old one, so that a full disk, a failed write or a kill leaves
// either the old file or the new one, never a part. The new file has no name while it is
// written (one fixed name, `path` + ".tmp", only for the instant before the rename), and
// it keeps the permissions of the file it replaces. True only when the file then reads
// back exactly as `bytes`.
bool Write_File_Replacing(const std::string& path, std::span<const unsigned char> bytes);

}  // namespace kelmoran
