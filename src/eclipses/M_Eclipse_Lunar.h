// The circumstances of a lunar eclipse. The Earth's shadow is a point on the sky opposite
// the Sun with the angular radii of its umbra and penumbra at the Moon's distance; the
// Moon's place relative to that point is followed by spherical right triangles. Two passes:
// a rough one on the fast places of the Sun and the Moon, and an exact one on the full
// series.
//
// Times are MyJD (days of UT from J2000.0); angles radians.
#pragma once

#include <string>

#include "eclipses/M_Eclipse.h"
#include "ephemeris/Series.h"

namespace kelmoran {

namespace eclipse {
inline constexpr double SunRadiusAU = 0.00465241752803144;  // the Sun's radius in AU
inline constexpr double FiveArcMinutes = 0.001454440993256867;
}  // namespace eclipse

// The shadow at `event.Time`, the Sun and the Moon at `accuracy` (0 full, 2 fast): the radii
// of the umbra and penumbra (seen from the Moon's sub-point, which widens them by about
// one part in sixty as the Earth's air does), the Moon's semi-diameter, the shadow's
// centre, the Moon's offset from it and its rates (from a second place one minute on);
// with WantGamma also the Separation and Gamma.
//
// DeltaDec and DeltaGHA are the Moon's offsets from the shadow's centre measured in the
// frame whose equator runs east-west through the shadow's centre: DeltaGHA is the great-
// circle arc along that equator (positive with the Moon east of the shadow) and DeltaDec the
// arc square to it, so that cos(Separation) = cos DeltaGHA x cos DeltaDec holds exactly
// at any declination. On the shadow's own meridian DeltaDec is the Moon's Dec less
// ShadowDec.
void Shadow_At(EclipseEvent& event, SeriesAccuracy accuracy);
// The same on the places of an eclipse's window (full accuracy).
void Shadow_At(EclipseEvent& event, const EclipseWindow& window);

// Moves `event` to the moment when the Moon's separation from the shadow's centre equals
// `target` (radians), or for the greatest eclipse (WantGamma set) is least. A right
// spherical triangle between the shadow's centre, the Moon and the foot of the Moon's
// track gives the leg k along the track to the target; the step goes to the contact on the
// Moon's side of the foot (ingress before the foot, egress after it). With `once` a single
// step; otherwise the shadow is computed again at `accuracy` and the step repeats until k
// lies between -1" and +2'. A target that the track does not reach takes the Moon to the
// foot. Within a second of time of the exact crossing at convergence.
void Lunar_Step(EclipseEvent& event, double target, bool once,
                SeriesAccuracy accuracy = kAccuracyFull);
void Lunar_Step(EclipseEvent& event, double target, bool once, const EclipseWindow& window);

// Tries the Full Moon of `row.PhaseJD` as a lunar eclipse. Returns "Lunar Eclipse",
// "Penumbral Lunar Eclipse" or the empty text. On an eclipse the row gets the Maximum and
// the contacts that happen (FirstContact and LastContact the penumbral phase, PartialStart
// and PartialEnd the umbral, TotalStart and TotalEnd the total; the others stay 0), Gamma
// and DateLabel (zone time, `bias` minutes); `speed` the Moon's speed relative to the
// shadow (radians a day) and the kind. Accuracy against the Swiss Ephemeris from 1900 to
// 2100: maximum within a minute, contacts within 3 minutes.
std::string Lunar_Eclipse_Test(EclipseRow& row, EclipseSpeed& speed, int32_t bias);

}  // namespace kelmoran
