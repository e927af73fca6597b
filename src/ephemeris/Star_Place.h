// Apparent places of stars: from the catalogue place at J2000.0 to the apparent right
// ascension and declination of a moment, in one pass (proper motion, precession in
// ecliptic coordinates, nutation, annual aberration). What depends only on the moment is
// kept in one shared record, so thousands of stars at one moment cost little each.
#pragma once

#include <cstdint>

namespace kelmoran {

// The quantities of one moment shared by all stars. Angles in radians.
struct StarFrame {
    double JD;          // the moment (MyJD) for which the record stands
    double NutLong;     // nutation in longitude
    double Ecc;         // eccentricity of the Earth's orbit
    double Perihelion;  // longitude of the perihelion of the Earth's orbit
    double SunLong;     // true longitude of the Sun (low accuracy, about 0.01 degree)
    double PiNode;      // longitude of the node of the ecliptic of date on that of J2000.0
    double GenPrec;     // accumulated general precession in longitude
    double CosEta;      // cos and sin of the inclination between those two ecliptics
    double SinEta;
    double CosObl;  // cos and sin of the true obliquity
    double SinObl;
};

// The shared record. It starts with a JD that no moment has (NaN), so the first call
// fills it; Calc_Star_Place refreshes it whenever its JD differs from the moment asked.
// Callers must not keep a reference across calls at different moments.
StarFrame& Shared_Star_Frame();

// A star's catalogue values at J2000.0: RA, Dec in radians, proper motions in radians per
// Julian year (that in RA not multiplied by cos Dec).
struct StarMotion {
    float RA = 0.0f;
    float Dec = 0.0f;
    float PmRA = 0.0f;
    float PmDec = 0.0f;
};

// Where Calc_Star_Place finds a catalogue row by star number: true and the row's values,
// or false for a number the catalogue doesn't hold. The catalogue installs it when it is
// loaded; until then (or with nullptr) every star number reads as a row of zeros.
using StarLookup = bool (*)(int32_t index, StarMotion& star);
void Set_Star_Lookup(StarLookup lookup);

// Apparent RA (0 .. 2π) and Dec of date at `jd` (MyJD). With `index` above 0, the star of
// that catalogue number (its RA, Dec and proper motions; motion linear in the years from
// J2000.0) and `ra`, `dec` are outputs only. With `index` 0, `ra` and `dec` are read as a
// place at J2000.0 without proper motion and replaced by the apparent place. Radians.
// Precession and nutation are taken at UT (no ΔT). Within 0.2" of a rigorous
// reduction (IAU 1976 precession, IAU 1980 nutation, aberration from the Earth's velocity)
// over years 1800 .. 2200, the 32-bit arctangents included.
void Calc_Star_Place(int32_t index, double& ra, double& dec, double jd);

}  // namespace kelmoran
