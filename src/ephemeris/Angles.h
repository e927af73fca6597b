// Total angle helpers: inverse trigonometric functions that never raise and never return
// a value outside their range for a rounding slip in the argument. Every calculation of
// the program that takes an arcsine, an arccosine or a two-argument arctangent uses them.
#pragma once

namespace kelmoran {

// Arcsine in radians, -π/2 .. π/2. For |x| < 1 arctan(x / √(1 - x²)); for |x| exactly 1
// ±1.5707963267949; for |x| above 1 (or NaN) 0.
double Arc_Sin(double x);

// Arccosine in radians, 0 .. π. For |x| < 1 π/2 - arctan(x / √(1 - x²)); for |x| of 1 or
// above (and NaN) 0, so Arc_Cos(-1) is 0 as well.
double Arc_Cos(double x);

// Two-argument arctangent of y over x in 0 .. 2π, in 64-bit arithmetic. Both arguments 0
// give 0; x = 0 gives π/2 for positive y and 3π/2 for negative y; y = 0 with negative x
// gives π. Accuracy that of std::atan.
double Atan2_R8(double y, double x);

// The same in 32-bit floats, arguments and result: about 7 significant digits, that is
// about 0.05" for a result near a whole number of radians. The design keeps it where
// thousands of places are computed at one moment.
float Atan2_R4(float y, float x);

}  // namespace kelmoran
