// The program's fixed unit conversions. Angles are held in radians everywhere; these are the
// factors that turn them into the degrees, minutes and seconds of arc the user reads and
// types, and the multiples of π the arithmetic reduces by. The values are the program's own
// 15-figure literals, not std::numbers: the shown and stored figures are worked with exactly
// these, and a difference in the last bit can move a rounded figure.
#pragma once

namespace kelmoran {

// Degrees of arc in one radian (180/π): radians × kDegreesPerRadian = degrees.
inline constexpr double kDegreesPerRadian = 57.2957795130823;
// Minutes of arc in one radian (10800/π): radians × kArcminPerRadian = minutes of arc.
// One minute of latitude is one nautical mile, so this also turns radians into miles.
inline constexpr double kArcminPerRadian = 3437.74677078494;
// Seconds of arc in one radian (648000/π): radians × kArcsecPerRadian = seconds of arc.
inline constexpr double kArcsecPerRadian = 206264.806247096;

// One degree, one minute and one second of arc, in radians: a step or a margin of angle.
inline constexpr double kOneDegree = 1.0 / kDegreesPerRadian;
inline constexpr double kOneArcminute = 1.0 / kArcminPerRadian;
inline constexpr double kOneArcsecond = 1.0 / kArcsecPerRadian;

// π, a half circle (radians).
inline constexpr double kPi = 3.14159265358979;
// 2π, the whole circle (radians): the modulus of hour angles, longitudes and azimuths.
inline constexpr double kTwoPi = 6.28318530717959;
// π/2, a quarter circle (radians): the limit of latitude and declination, the zenith.
inline constexpr double kHalfPi = 1.5707963267949;

// The 32-bit roundings of π/2 and π, for the limit tests of latitudes and longitudes held
// as 32-bit floats.
inline constexpr float kHalfPiF = 1.5707964f;
inline constexpr float kPiF = 3.1415927f;

}  // namespace kelmoran
