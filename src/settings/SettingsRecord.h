// The user's settings: the record kept in User.Dat, with the time-zone bias stored behind
// it, and the values derived from them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kelmoran {

// The settings record in file order. Every number is little-endian in the file; the
// in-memory layout is the file's up to DefaultPlanFile (checked below).
struct SettingsRecord {
    float ObserverLat = 0;      // fix latitude, radians, north positive
    float ObserverLong = 0;     // fix longitude, radians, east positive
    float FixCourse = 0;        // course for DR, degrees true
    float FixSpeed = 0;         // speed for DR, knots
    double FixTime = 0;         // moment of the fix, MyJD
    float Pressure = 0;         // millibars
    float Temp = 0;             // degrees Celsius
    float IndexError = 0;       // minutes of arc; negative "On the Arc", positive "Off the Arc"
    float HtOfEye = 0;          // metres
    int32_t PositionMethod = 0; // 0 fix position, 1 DR by course and speed, 2 DR by plan
    float SightAltLimit = 0;    // Sights filter, altitude limit, minutes of arc
    float SightAzLimit = 0;     // Sights filter, azimuth limit, degrees
    int32_t HelpLevel = 0;      // 0 full .. 3 minimum
    int32_t SightStarCount = 0; // stars tested by the Sights filter at the start of a run
    uint8_t SimplifiedRiseSet = 0;  // 0: 'Standard' values for rising and setting ticked
    uint8_t Spare = 0;              // forced to 0 at load when SimplifiedRiseSet is non-zero
    uint8_t ShowRA = 0;             // Star Atlas shows right ascension
    uint8_t SightsTabDown = 0;      // Tab moves down through Sights
    int16_t AutoTimeZone = 0;       // non-zero: the time zone follows the computer
    int16_t UseMetres = 0;          // non-zero: height of eye in metres, else feet
    int16_t UseCelsius = 0;         // non-zero: temperature in °C, else °F
    uint8_t UseMillibars = 0;       // non-zero: pressure in Mb, else inches of mercury
    uint8_t DaylightStars = 0;      // non-zero: include stars during daylight
    std::string DefaultPlanFile;    // path of the default voyage plan (16-bit length + bytes)
};

// Size of the fixed part of the record, before the plan path.
inline constexpr std::size_t kSettingsFixedBytes = 72;

static_assert(offsetof(SettingsRecord, FixTime) == 16);
static_assert(offsetof(SettingsRecord, PositionMethod) == 40);
static_assert(offsetof(SettingsRecord, SimplifiedRiseSet) == 60);
static_assert(offsetof(SettingsRecord, AutoTimeZone) == 64);
static_assert(offsetof(SettingsRecord, DaylightStars) == 71);

// The program's settings, read at start and written at exit.
extern SettingsRecord Settings;

// Shown local time = UT + TZ_Bias minutes. Stored in User.Dat behind the record.
extern int32_t TZ_Bias;

}  // namespace kelmoran
