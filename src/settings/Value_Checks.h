// The ranges that numbers read from the program's files must lie in before they are used:
// User.Dat, the voyage file and the sight file carry no check of their own, so a damaged
// or hand-made file could otherwise hand a calculation a NaN, an infinite time or a count
// that no allocation can meet. Each test is what the number means: a moment within the
// years the date controls offer, an angle on the globe, a speed a ship can make, the
// entries the Options screen allows.
#pragma once

#include <cmath>
#include <cstdint>

#include "settings/SettingsRecord.h"

namespace kelmoran {

// A ship's speed, knots: the speed fields hold up to 99.99, a fixed speed one more.
inline constexpr float kMaxShipSpeed = 100.0f;
// The slowest leg speed a plan accepts (below it the ETA edits refuse too).
inline constexpr float kMinLegSpeed = 0.01f;
// Zone biases, minutes either side of UT.
inline constexpr int32_t kMaxZoneBias = 1440;

// v lies in [lo, hi]; false for NaN.
inline bool Within(double v, double lo, double hi) { return v >= lo && v <= hi; }

// The first and last moments (MyJD) the date controls offer: 1 January 9999 BC, 0h, and
// the end of 31 December 9999, in either calendar, with a day to spare.
double First_Moment();
double Last_Moment();
// A moment within them.
bool Is_Moment(double jd);

// A latitude (radians) within the poles; a longitude (radians) within a turn either way.
bool Is_Latitude(double lat);
bool Is_Longitude(double lon);
// A leg or fix speed: zero (none given) or from kMinLegSpeed to kMaxShipSpeed knots.
bool Is_Ship_Speed(double knots);
// A zone bias in minutes.
bool Is_Zone_Bias(int32_t minutes);

// Replaces every field of `record` that lies outside what it means by its first-run
// value, and `bias` likewise; returns the number of values replaced. Flags stay as they
// are (any value is a flag), the plan path is not touched.
int Check_Settings(SettingsRecord& record, int32_t& bias);

}  // namespace kelmoran
