// The apparent place of a body of the solar system for one moment, and the step that
// turns an apparent ecliptic place of date into it.
#pragma once

#include "ephemeris/Earth_Frame.h"

namespace kelmoran {

// Apparent geocentric place. Angles in radians; RA and GHA in 0 .. 2π. Distance is the
// radius vector in AU for the Sun, kilometres for the Moon, the geocentric distance in AU
// for a planet and Pluto.
struct BodyPlace {
    double RA = 0.0;
    double Dec = 0.0;
    double Distance = 0.0;
    double GHA = 0.0;
};

// Greenwich hour angle GAST + 2π - ra, less 2π if that is above 2π: the result lies in
// 0 .. 2π (2π itself only when ra is 0 and GAST is 2π).
double Hour_Angle_Of(double gast, double ra);

// The tail shared by the Sun and the Moon: nutation in longitude is added to the apparent
// longitude `lon` (radians, of date, without nutation), then the place is turned to the
// true equator of date with the frame's obliquity (64-bit arctangent) and the hour angle
// is taken from the frame's sidereal time. `lat` in radians; `dist` is stored as it is.
BodyPlace Place_From_Ecliptic(double lon, double lat, double dist, const EarthFrame& frame);

}  // namespace kelmoran
