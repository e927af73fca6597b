// The apparent places of the planets and Pluto, their magnitudes and phase angles, and the
// fast heliocentric series of the planets.
#pragma once

#include "ephemeris/Body_Place.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Series.h"

namespace kelmoran {

// Apparent RA, Dec (true equator and equinox of date), geocentric distance (AU) and GHA of
// planet `body` (4 .. 10; any other number is taken as Mercury) at the frame's moment.
// Light time is found on the fast series; the final heliocentric place is by the planet's
// PlanetSeries at accuracy 0 (full) and 1 (reduced), by the fast series at accuracy 2
// (which never touches a PlanetSeries). Then annual aberration, FK5 and nutation.
// `earthDistance` receives the Earth's radius vector in AU. Accuracy against a modern
// ephemeris (DE431) from 1800 to 2200: levels 0 and 1 within 0.8" for Mercury to Saturn
// and 3" for Uranus and Neptune (the limit of VSOP87 itself); level 2 within 2' (Mercury)
// to 20' (Jupiter), the truncation of the fast series.
void Calc_Planet(BodyPlace& place, int body, SeriesAccuracy accuracy, const EarthFrame& frame,
                 float& earthDistance);

// Apparent place of Pluto (body 11) at the frame's moment, by its long series referred to
// J2000.0 with light time, then carried to the moment like a star without proper motion.
// `earthDistance` receives the Sun's geocentric distance in AU. Within 0.3" from 1800 to
// 2200 and 30" over years -2000 .. 3000 with the series of Pluto as it stands.
void Calc_Pluto(BodyPlace& place, const EarthFrame& frame, float& earthDistance);

// Visual magnitude of `body` (0 .. 11) at `t` Julian centuries of TT from J2000.0.
// `earthSunDistance` is the Earth's radius vector (AU); `geocentricDistance` the body's
// distance from the Earth in AU. For the rows of the Sun and Moon (0 .. 3) the geocentric
// distance is replaced, in and out, by the Moon's distance in AU from Moon_Distance, and
// no phase angle is worked. `phaseAngle` receives the phase angle in degrees (0 for the
// Sun and Moon rows, and 0 when the three distances make no triangle). Magnitudes to
// about 0.1.
float Calc_Magnitude(double t, int body, float earthSunDistance, double& geocentricDistance,
                     float& phaseAngle);

// Fast heliocentric series of the planets: truncations of VSOP87 version D (ecliptic and
// equinox of date) to their largest terms. `tau` in thousands of Julian years of TT from
// J2000.0. L, B in radians (L in 0 .. 2π), R in AU. From 1800 to 2200 the longitude is
// within 1' of the full series for Mercury and Venus, 6' for Mars, 19' for Jupiter and
// 3' to 8' for Saturn, Neptune and Uranus; far from J2000 the missing powers of tau grow
// (up to 2.5 degrees for Saturn at year -2000).
void Mercury_Fast(double tau, double& L, double& B, double& R);
void Venus_Fast(double tau, double& L, double& B, double& R);
void Mars_Fast(double tau, double& L, double& B, double& R);
void Jupiter_Fast(double tau, double& L, double& B, double& R);
void Saturn_Fast(double tau, double& L, double& B, double& R);
void Neptune_Fast(double tau, double& L, double& B, double& R);
void Uranus_Fast(double tau, double& L, double& B, double& R);

// The radius vector alone (AU) of the same series.
double Mercury_R_Fast(double tau);
double Venus_R_Fast(double tau);
double Mars_R_Fast(double tau);
double Jupiter_R_Fast(double tau);
double Saturn_R_Fast(double tau);
double Neptune_R_Fast(double tau);
double Uranus_R_Fast(double tau);

// The fast series of planet `body` (4 .. 10; any other number is taken as Mercury).
void Planet_Fast(int body, double tau, double& L, double& B, double& R);
double Planet_R_Fast(int body, double tau);

}  // namespace kelmoran
