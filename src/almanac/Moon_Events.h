// Moonrise, moonset and the Moon's meridian passage for the observer of the Main screen,
// who may be moving. The Moon moves so fast against the Sun that a day may hold no rise or
// no set, and their order within the day is not fixed: the rows are given in the order in
// which the events happen.
//
// Times are MyJD (days of UT from J2000.0); angles radians; distances of the Moon in
// kilometres; the zone bias minutes, shown time = UT + bias.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "ephemeris/Body_Place.h"

namespace kelmoran {

// The mean daily rate of the Moon's hour angle, 347°.2 a day, radians a day.
inline constexpr double kMoon_GHA_Rate = 6.059783162924313;
inline constexpr double kEarthRadiusKm = 6378.137;
inline constexpr double kMoonRadiusKm = 1737.92808633851;

// The Moon at one meridian passage of the observer, upper and lower in turn.
struct Moon_Sample {
    BodyPlace Place;            // apparent place at full accuracy at Time
    float True_Alt = 0.0f;      // geocentric altitude of the centre
    float Apparent_Alt = 0.0f;  // the upper limb as the observer reads it: the sextant
                                // altitude without index error (refraction, dip included)
    double Time = 0.0;          // moment of the passage
    float Horizon = 0.0f;       // Moon_Horizon at the passage: the limb is up when
                                // True_Alt is above it
    bool Upper = false;         // an upper passage
};

// The passages around the day under calculation, in time order: the first at or before
// the day's start, the last at or after its end.
extern std::vector<Moon_Sample> Moon_Day;

// The true altitude of the Moon's centre at which its upper limb stands on the horizon,
// for latitude `lat` and the Moon at `r` km: (ρ × 6378.137 − 1737.928) / r − R. With the
// actual values ρ = 1 − sin²φ / 298.25722 and R the refraction at the sea horizon and the
// dip together; with the standard values ρ = 1 and R = 34' (no latitude term).
double Moon_Horizon(float lat, double r);

// The Moon's place at `t` by straight lines between the two samples of Moon_Day that
// bracket it (the end pair beyond them), the hour angle through the sidereal time of `t`:
// within a few minutes of arc, for the first passes of the searches only.
BodyPlace Interpolate_Moon(double t);

// The moment between two successive samples at which the upper limb is on the horizon
// (the caller has seen that it crosses between them): hour-angle passes on Interpolate_Moon,
// a walk and its refinement to a quarter of a second, then passes on the full place with
// Calc_AltAz until the altitude is within 0.03" of the horizon (or 10 passes). Within a
// second of time of the full place, for the moving observer.
double Moon_Alt0_Time(const Moon_Sample& earlier, const Moon_Sample& later);

// Fills Moon_Day with the passages from the last one at or before `dayStart` to the first
// one at or after `dayEnd`, for the observer along the way.
void Fill_Moon_Day(double dayStart, double dayEnd);

// The Moon's block of Main for the zone day that holds a moment.
struct Moon_Rows_Result {
    // Two rows, "Moonrise" and "Moonset" in the order in which they happen ("Moonrise"
    // first when they don't both happen); "    -" for an event that doesn't happen.
    std::array<std::string, 2> Titles;
    std::array<std::string, 2> Texts;
    std::array<double, 2> Moments{};  // 0 for none
    // The upper passage of the day (the nearest to its middle when the day has none,
    // then with "dd/ " in front): its title by the dip, its time, and the upper limb's
    // altitude followed by "   UL", or "    -" when it is below the horizon.
    std::string Passage_Title;
    std::string Passage_Time_Text;
    std::string Passage_Alt_Text;
    double Passage_Time = 0.0;
    float Passage_Alt = 0.0f;
    // The Moon's age in whole days and its illuminated fraction in percent at the moment
    // shown: the same values as the almanac page's MyMoonAge and MyMoonPhase.
    double Age = 0.0;
    double Phase = 0.0;
};

inline constexpr const char* kMoonrise = "Moonrise";
inline constexpr const char* kMoonset = "Moonset";
inline constexpr const char* kPassageObsAlt = "Mer. Pass. (Obs. Alt.)";
inline constexpr const char* kPassageAppAlt = "Mer. Pass. (App. Alt.)";
inline constexpr const char* kUpperLimb = "   UL";

// Moonrise, moonset and the passage for the zone day (bias minutes) that holds `moment`,
// and the Moon's age and illumination at `moment`;
// `seconds` the screen's seconds option. Leaves Moon_Day holding that day's passages.
Moon_Rows_Result Moon_Rows(double moment, int32_t bias, bool seconds);

}  // namespace kelmoran
