// The geometry of a solar eclipse, worked directly in kilometres with a cone model of the
// Moon's shadow (no Besselian elements): at each instant the distance of the shadow axis
// from the Earth's centre and the radii of the umbra and penumbra in the plane through the
// Earth's centre; the greatest eclipse and the contacts by plane triangles between two
// nearby instants; the circumstances at one observer from the same cones.
//
// Times are MyJD (days of UT from J2000.0).
#pragma once

#include <string>

#include "eclipses/M_Eclipse.h"
#include "ephemeris/Series.h"

namespace kelmoran {

// The geometry at MyJD `t`, the Sun and the Moon by the series at `accuracy` (0 full,
// 1 reduced, 2 fast). Distances in km, angles in radians. Full accuracy places the axis
// within a few metres of the series' own error (0.1" in the Moon: about 0.2 km at the
// Earth); accuracy 2 within about 200 km.
EclipseInstant Eclipse_Instant(double t, SeriesAccuracy accuracy = kAccuracyFull);
// The same with the places of an eclipse's window (full accuracy, at a fraction of the cost).
EclipseInstant Eclipse_Instant(double t, const EclipseWindow& window);

// The speed of the shadow, km a day, and the result of the search for greatest eclipse.
struct GreatestEclipse {
    double Time = 0.0;    // MyJD of the least axis distance (to the second)
    double Speed = 0.0;   // km a day, the axis point's motion in the plane
    bool Missed = false;  // true when the shadow passes clear of the Earth
};

// The greatest eclipse near `t` by plane triangles between instants one minute apart.
// On the fast places (accuracy 2) this is the rough pass, which gives up only on a shadow
// that passes 400 km clear of the Earth's limb; at other accuracies and on a window's places
// it ends with a descent in one-second steps on the axis distance.
GreatestEclipse Greatest_Solar_Eclipse(double t, SeriesAccuracy accuracy);
GreatestEclipse Greatest_Solar_Eclipse(double t, const EclipseWindow& window);

// Tries the New Moon of `row.PhaseJD` as a solar eclipse. Returns the kind ("Partial
// Solar Eclipse", "Total Solar Eclipse", "Hybrid Solar Eclipse", "Partial Annular
// Eclipse", "Total Annular Eclipse") or the empty text. On an eclipse the row gets its
// Maximum, the contacts that happen (the others stay 0), Gamma and DateLabel (zone time
// with `bias` minutes); `instants` the seven instants; `speed` the shadow's speed, the
// annular flag and the kind. With no eclipse the row's events are left as they were.
// Accuracy against the Swiss Ephemeris from 1900 to 2100: greatest eclipse within 1 min,
// contacts within 1 min, Gamma within 0.01.
std::string Solar_Eclipse_Test(EclipseRow& row, EclipseInstants& instants, EclipseSpeed& speed,
                               int32_t bias);

// The contact `name` ("PenIn", "PenOut", "UmbIn", "UmbOut", "TotalIn", "TotalOut")
// refined from MyJD `t` until the correction is under 5 seconds; the instant there.
// The contacts are the moments when the axis point is the sum (or for "Total" the
// difference) of the Earth's radius and the shadow's radius from the Earth's centre.
EclipseInstant Solar_Contact(const std::string& name, double t);
EclipseInstant Solar_Contact(const std::string& name, double t, const EclipseWindow& window);

// The crossing of the Earth's disc with its air (radius EarthPlusAir, as a 32-bit float)
// and a shadow circle of radius `r` whose centre is `d` from the Earth's centre, all in
// km: the half-angles at the Earth's centre and at the shadow's centre between the line
// of centres and the crossing, radians. Where the circles do not cut both stay 0 and the
// result is false.
bool Circle_Intersection(double d, double r, double& atEarth, double& atShadow);

// A place on the Earth, geodetic latitude and longitude east, radians.
struct GeoPoint {
    double Lat = 0.0;
    double Lon = 0.0;
};

// Where the line through a point of the shadow plane, parallel to the shadow axis, meets
// the Earth's sunward surface. The point is `distance` km from the Earth's centre in the
// direction `positionAngle` (radians from north through east, as PositionAngle of the
// instant; the axis point itself is AxisDistance at PositionAngle). Returns false (and
// leaves `place`) when the line misses the Earth. The Earth is the ellipsoid of the map
// (GeocentricFactor); accuracy a few hundred metres.
bool Shadow_Point_Place(const EclipseInstant& instant, double distance, double positionAngle,
                        GeoPoint& place);

// The plane through the Earth's centre square to the shadow axis at one instant, with its
// east and north directions (east square to the axis and to the Earth's axis, north the
// third of the right-handed set with the axis pointing to the Sun). The map's shadow
// outlines are worked in this plane, then carried along the axis to the Earth.
class ShadowPlane {
  public:
    explicit ShadowPlane(const EclipseInstant& instant);
    // The point where the shadow axis crosses the plane, km east and north of the centre.
    double AxisEast() const { return axisEast_; }
    double AxisNorth() const { return axisNorth_; }
    // The plane point (`east`, `north`, km) carried along the axis to the Earth's sunward
    // surface (the ellipsoid of the map); `height` gets the distance travelled, km towards
    // the Moon. False when the line misses the Earth.
    bool Place(double east, double north, GeoPoint& place, double& height) const;
    // The place on the Earth's outline, as seen along the axis, in the direction of the
    // plane point (`east`, `north`) from the centre (where the line grazes the Earth).
    GeoPoint Limb(double east, double north) const;
    // An Earth-fixed point (km; x to Greenwich on the equator, z to the north pole) in the
    // plane: its east and north; true when it faces the Sun.
    bool Project(double x, double y, double z, double& east, double& north) const;

  private:
    GeoPoint Surface(double x, double y, double z) const;
    double axis_[3] = {0.0, 0.0, 1.0};
    double east_[3] = {0.0, 1.0, 0.0};
    double north_[3] = {1.0, 0.0, 0.0};
    double axisEast_ = 0.0;
    double axisNorth_ = 0.0;
};

// The instant at fraction `f` (0 .. 1) of the way from `a` to `b`: the Sun's and Moon's
// places interpolated linearly (GHA and RA across the 0 .. 2π wrap), then the geometry of
// Eclipse_Instant worked on them. For steps of a minute the error is a few metres.
EclipseInstant Interpolate_Instant(const EclipseInstant& a, const EclipseInstant& b, double f);

// The geometry of Eclipse_Instant from given places of the Sun and Moon at MyJD `t`.
EclipseInstant Instant_From_Places(const BodyPlace& sun, const BodyPlace& moon, double t);

// The eclipse as seen from one place.
struct LocalEclipse {
    bool Eclipsed = false;      // the observer enters the penumbra at all
    bool Visible = false;       // some of it happens with the Sun above the horizon
    bool Central = false;       // the observer enters the umbra (total or annular there)
    bool Annular = false;       // the central phase is annular
    double FirstContact = 0.0;  // MyJD; 0 where it does not happen
    double SecondContact = 0.0;
    double Maximum = 0.0;
    double ThirdContact = 0.0;
    double LastContact = 0.0;
    double Magnitude = 0.0;    // fraction of the Sun's diameter covered at maximum
    double SunAltitude = 0.0;  // radians, geometric, at maximum
};

// The circumstances of a solar eclipse at geodetic latitude `lat` and longitude `lon`
// (radians, east positive), sea level, between `from` and `to` (MyJD; the eclipse's
// first and last contacts on the Earth serve). Method: the observer's place and the
// Sun's and Moon's centres are taken as vectors in an Earth-fixed frame; at each moment the
// observer's distance from the shadow axis is set against the radii of the penumbral and
// umbral cones in the plane through the observer square to the axis. Those cones are the
// lines that touch both the Sun and the Moon, so the observer stands on a cone exactly when
// the limbs touch: the contacts are the roots of (distance - radius), found by bisection
// then secant steps to 0.1 s, and the maximum is the least distance from the axis. The
// eclipse is visible when the Sun's upper limb, with 34' of refraction, is above the
// horizon at some moment between the first and last contacts. Places by an EclipseWindow;
// contact times within a few seconds of the limb geometry of the Swiss Ephemeris.
LocalEclipse Local_Solar_Eclipse(double lat, double lon, double from, double to);

}  // namespace kelmoran
