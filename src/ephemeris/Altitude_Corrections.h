// Corrections of an altitude that don't depend on the body: dip of the horizon, index
// error and atmospheric refraction (from an apparent altitude, from a true altitude, and
// by the printed table of mean refraction that the working of a sight can follow).
//
// Sign convention: sextant altitude = true centre altitude - semi-diameter (signed by the
// limb) - parallax + refraction + DipRad + IndexErrorRad; an index error is positive when
// the instrument reads high.
#pragma once

namespace kelmoran {

// The values derived from the settings stand beside the settings record (IndexErrorRad,
// DipRad and RefractionFactor in settings/File_IO.h, recomputed by Compute_Derived_Settings
// whenever the settings change). The refraction routes below are scaled by
// RefractionFactor, the atmospheric scale: Pressure x 283 / 1010 / (Temp + 273), 1 at
// 1010 mb and 10 °C.

// Refraction (radians, positive) for an apparent altitude `h` in radians, scaled by
// RefractionFactor: Bennett's formula (within about 0.1' above 5 degrees), and below
// 2.5 degrees brought to the printed tables (33.8' at the horizon).
float Refraction_Apparent(float h);

// Refraction (radians) for a true, airless altitude `h` in radians, that is the amount to
// add to reach the apparent altitude; scaled by RefractionFactor. Below 555' it is refined
// so that it inverts Refraction_Apparent to about 0.01'.
float Refraction_True(double h);

// Refraction (radians) by the printed table of mean refraction for an apparent altitude
// `h` in radians, interpolated within the row; above 84.1 degrees by a formula. Not
// scaled by RefractionFactor. A negative altitude gives Refraction_Apparent(0).
float Refraction_Table(float h);

}  // namespace kelmoran
