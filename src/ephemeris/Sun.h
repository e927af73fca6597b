// The apparent place of the Sun, by the full series of the Earth (accuracy 0 and 1) or by
// a five-term fast route of its own (accuracy 2), which all searches for rising, setting
// and twilight use first.
#pragma once

#include "ephemeris/Body_Place.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Series.h"

namespace kelmoran {

// Apparent RA, Dec (true equator and equinox of date), radius vector (AU) and GHA of the
// Sun at the frame's moment. Accuracy 2 takes the fast route (within 100" of a modern
// ephemeris from 1800 to 2200, half a degree at year -2000); 0 and 1 ask the EarthSeries
// (within a fraction of a second of arc, and a few seconds). Any accuracy other than 1 and
// 2 is taken as 0.
BodyPlace Calc_Sun(SeriesAccuracy accuracy, const EarthFrame& frame);

// The fast route. In: lon = TT in Julian centuries from J2000.0. Out: lon the apparent
// longitude of the Sun without nutation (FK5, aberration applied), lat the latitude, dist
// the radius vector in AU. Radians.
void Calc_Sun_Fast(double& lon, double& lat, double& dist);

// The head of VSOP87 (version D, heliocentric, ecliptic and equinox of date) for the Earth:
// two terms each of L0 and L1, three of R0 and one of R1, no latitude. `tau` in thousands
// of Julian years of TT from J2000.0; L in 0 .. 2π, B = 0, R in AU.
void Earth_Fast(double tau, double& L, double& B, double& R);

}  // namespace kelmoran
