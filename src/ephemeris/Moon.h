// The apparent place of the Moon, from the long lunar series, and a short series of the
// Moon's distance used for its magnitude.
#pragma once

#include "ephemeris/Body_Place.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Series.h"

namespace kelmoran {

// Apparent RA, Dec (true equator and equinox of date), distance (kilometres, centre to
// centre) and GHA of the Moon at the frame's moment. The MoonSeries answers at every
// accuracy: 0 within a few seconds of arc, 1 and 2 progressively coarser, 2 within a
// fraction of a minute of arc.
BodyPlace Calc_Moon(SeriesAccuracy accuracy, const EarthFrame& frame);

// The Moon's geocentric distance in kilometres at `t` Julian centuries (TT) from J2000.0:
// the 18 largest periodic terms of ELP2000-82 in distance and three small terms in t.
// Within 100 km of a modern ephemeris from 1800 to 2200, 350 km over years -2000 .. 3000.
double Moon_Distance(double t);

}  // namespace kelmoran
