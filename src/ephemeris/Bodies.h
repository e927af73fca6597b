// The body service: one numbering of the Sun, Moon, planets and catalogue stars for every
// screen, the table of their computed places, and the reduction of a place to the altitude
// and azimuth that an observer sees, with every correction in one order.
//
// Body numbers: 0 Sun's upper limb, 1 Sun (lower limb), 2 Moon's upper limb, 3 Moon (lower
// limb), 4 Mercury, 5 Venus, 6 Mars, 7 Jupiter, 8 Saturn, 9 Neptune, 10 Uranus, 11 Pluto,
// 12 and up the stars of the catalogue (stars/M_Resources.h).
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "ephemeris/Body_Place.h"
#include "ephemeris/Series.h"
#include "stars/M_Stars.h"

namespace kelmoran {

// The names of the first twelve rows, as tables show them.
inline constexpr std::array<const char*, 12> kBodyNames = {
    "Sun's UL", "Sun",     "Moon's UL", "Moon",    "Mercury", "Venus",
    "Mars",     "Jupiter", "Saturn",    "Neptune", "Uranus",  "Pluto"};

// A body's computed data. Angles in radians.
struct BodyRecord {
    double RA = 0.0;               // apparent right ascension
    double Dec = 0.0;              // apparent declination
    double GHA = 0.0;              // Greenwich hour angle
    double PositionJD = kNeverJD;  // MyJD of RA, Dec, Magnitude and Distance
    double AltAzJD = kNeverJD;     // MyJD of the altitude and azimuth
    double Interval = 0.0;         // days for which RA and Dec may stand (0 for the solar system)
    float Magnitude = 0.0f;        // visual magnitude
    float Distance = 0.0f;         // AU for the Sun and planets, km for the Moon; unused for stars
    float TrueAlt = 0.0f;          // geocentric altitude of the centre
    float SextantAlt = 0.0f;       // the altitude a sextant would read
    float Azimuth = 0.0f;          // true azimuth from North through East
    float SD = 0.0f;               // semi-diameter, signed by the limb (negative: upper limb)
    std::vector<std::string> Texts;  // cached cell texts, emptied when the place changes
    StarNames Names;                 // a star's names, filled on first need
    bool NamesDone = false;

    // A moment that no date has: a record starts stale.
    static constexpr double kNeverJD = -1.0e30;
};

// The public body table, rows 0 .. highest body in use.
extern std::vector<BodyRecord> Bodies;

// The result of Calc_AltAz, 32-bit floats in radians.
struct AltAzResult {
    float TrueAlt = 0.0f;          // geocentric altitude of the centre
    float SextantAlt = 0.0f;       // observed altitude: limb, parallax, refraction, dip, index
    float Azimuth = 0.0f;          // from North through East, 0 .. 2π
    float SD = 0.0f;               // semi-diameter with the sign of the limb
    float TotalCorrection = 0.0f;  // TrueAlt - SextantAlt
    float Refraction = 0.0f;       // 0 when the altitude is at or below -1 degree
};

// Sizes the body table to rows 0 .. `highest` (keeping the rows there are) and sets each
// new star's Interval from its proper motion (Place_Interval). Stars beyond the loaded
// catalogue keep an Interval of 0.
void Build_Bodies(int32_t highest);

// Computes the bodies list[first] .. list[last] at `jd` (MyJD, UT) for the observer that
// Get_Position gives at jd: the place of each body that is stale (older than its
// Interval), its magnitude, names of a star on first need, and the altitude and azimuth
// when they are not of jd. The table grows to hold the highest body asked for. Bodies
// outside the loaded catalogue or below 0 are skipped.
void Calc_Bodies(int32_t first, int32_t last, std::span<const int32_t> list, double jd);

// After a change of the observer's position: every altitude and azimuth is stale.
void Reset_AltAz();

// Altitude and azimuth of body `body` at `place` (RA unused; Dec, Distance and GHA, the
// latter possibly above 2π) for an observer at geodetic `latitude` and `longitude` (radians,
// north and east positive). In order: local hour angle; geocentric altitude and azimuth of
// the centre; for the Sun, Moon and planets the semi-diameter (signed by the limb; for the
// Moon augmented with altitude) and the parallax in altitude and azimuth with the
// difference of geodetic and geocentric latitude; refraction above -1 degree
// (Refraction_True); dip and index error. A star has no semi-diameter or parallax.
// Accuracy: the geocentric altitude and azimuth are exact but for 32-bit rounding (about
// 0.02"); the Moon's parallax within about 1".
void Calc_AltAz(AltAzResult& result, int32_t body, float latitude, float longitude,
                const BodyPlace& place);

}  // namespace kelmoran
