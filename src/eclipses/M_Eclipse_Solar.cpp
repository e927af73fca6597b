#include "eclipses/M_Eclipse_Solar.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Angles.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"

namespace kelmoran {

using namespace eclipse;

namespace {

constexpr double kContactTolerance = 5.7870370370370366e-5;  // five seconds

struct Vec3 {
    double x = 0.0, y = 0.0, z = 0.0;
};
Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
Vec3 operator*(double s, const Vec3& a) {
    return {s * a.x, s * a.y, s * a.z};
}
double Dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
double Norm(const Vec3& a) {
    return std::sqrt(Dot(a, a));
}

// A body's place as a vector in the Earth-fixed frame (x to the Greenwich meridian on the
// equator, z to the north pole): its longitude there is -GHA. `distance` in km.
Vec3 Earth_Fixed(const BodyPlace& place, double distance) {
    const double c = std::cos(place.Dec) * distance;
    return {c * std::cos(place.GHA), -c * std::sin(place.GHA), std::sin(place.Dec) * distance};
}

// The Earth's radius at geodetic latitude `lat` as a fraction of EarthRadius.
double Radius_At_Latitude(double lat) {
    return 0.9983271 + 0.0016764 * std::cos(2.0 * lat) - 0.0000035 * std::cos(4.0 * lat);
}

// The plane triangle between the axis points of two instants and the Earth's centre:
// p and q the axis distances, theta the angle between them, c the path between them.
struct AxisTriangle {
    double p = 0.0, q = 0.0, theta = 0.0, c = 0.0;
};

AxisTriangle Triangle_Of(const EclipseInstant& r0, const EclipseInstant& r1) {
    AxisTriangle t;
    t.theta = Fold_Pi(r1.PositionAngle - r0.PositionAngle);
    t.p = r0.AxisDistance;
    t.q = r1.AxisDistance;
    t.c = std::sqrt(std::max(0.0, t.p * t.p + t.q * t.q - 2.0 * t.p * t.q * std::cos(t.theta)));
    return t;
}

}  // namespace

EclipseInstant Instant_From_Places(const BodyPlace& sun, const BodyPlace& moon, double t) {
    EclipseInstant r;
    r.Sun = sun;
    r.Moon = moon;
    r.Time = t;
    const double dS = sun.Distance * AU;
    const double dM = moon.Distance;
    const double L = dS - dM;
    const double dRA = moon.RA - sun.RA;
    r.Separation = Arc_Cos(std::sin(sun.Dec) * std::sin(moon.Dec) +
                           std::cos(moon.Dec) * std::cos(sun.Dec) * std::cos(dRA));
    const double D = std::sqrt(dS * dS + dM * dM - 2.0 * dS * dM * std::cos(r.Separation));
    r.AxisDistance = D > 0.0 ? dS * dM * std::sin(r.Separation) / D : 0.0;
    if (L > 0.0) {
        r.UmbraVertex = (SunRadius / SunMinusMoon - 1.0) * L;
        // The absolute value keeps the radius positive where the cone ends short of the
        // Earth (an annular eclipse).
        r.UmbraRadius = std::fabs(r.UmbraVertex + EarthRadius - dM) * SunMinusMoon / L;
        const double v = L * MoonRadius / SunPlusMoon;
        r.PenumbraRadius = (v + dM) * SunPlusMoon / L;
    }
    double pa = kTwoPi - Atan2_R8(std::sin(-dRA), std::cos(sun.Dec) * std::tan(moon.Dec) -
                                                      std::cos(-dRA) * std::sin(sun.Dec));
    if (pa >= kTwoPi) pa -= kTwoPi;
    r.PositionAngle = pa;
    return r;
}

EclipseInstant Eclipse_Instant(double t, SeriesAccuracy accuracy) {
    const EarthFrame frame = Calc_EarthFrame(t);
    return Instant_From_Places(Calc_Sun(accuracy, frame), Calc_Moon(accuracy, frame), t);
}

EclipseInstant Eclipse_Instant(double t, const EclipseWindow& window) {
    BodyPlace sun, moon;
    window.Places(t, sun, moon);
    return Instant_From_Places(sun, moon, t);
}

namespace {

// The search for the greatest eclipse on the instants of `instantAt`; `missMargin` km is
// added to the Earth's radius in the test that the shadow misses, and `descend` asks for
// the final descent to the second.
template <typename InstantAt>
GreatestEclipse Greatest_On(double t, const InstantAt& instantAt, double missMargin, bool descend) {
    GreatestEclipse g;
    const double step0 = MinuteDays;
    double c = 0.0;
    for (int pass = 0; pass < 30; ++pass) {
        const EclipseInstant r0 = instantAt(t);
        const EclipseInstant r1 = instantAt(t + step0);
        const AxisTriangle tri = Triangle_Of(r0, r1);
        if (!(tri.c > 0.0)) break;
        c = tri.c;
        double A = Arc_Sin(tri.q * std::sin(tri.theta) / tri.c);
        const double B = Arc_Sin(tri.p * std::sin(tri.theta) / tri.c);
        // The arcsine gives the acute reading only: the angles of the triangle tell when
        // the angle at the first point is obtuse (the least distance is behind).
        if (std::fabs(B + tri.theta - A) < kOneArcminute) A = kPi - A;
        const double step = tri.p * std::cos(A) / tri.c * step0;
        const double least = tri.p * std::sin(A);
        t += step;
        if (std::fabs(least) - r0.PenumbraRadius > EarthRadius + missMargin) {
            g.Missed = true;
            break;
        }
        if (std::fabs(step) <= step0) break;
    }
    g.Speed = c / step0;
    if (!g.Missed && descend) {
        // Descent to the second on the axis distance.
        double here = instantAt(t).AxisDistance;
        bool moved = false;
        for (int i = 0; i < 600; ++i) {
            const double before = instantAt(t - SecondDays).AxisDistance;
            if (!(before < here)) break;
            t -= SecondDays;
            here = before;
            moved = true;
        }
        for (int i = 0; i < 600 && !moved; ++i) {
            const double after = instantAt(t + SecondDays).AxisDistance;
            if (!(after < here)) break;
            t += SecondDays;
            here = after;
        }
    }
    g.Time = t;
    return g;
}

}  // namespace

GreatestEclipse Greatest_Solar_Eclipse(double t, SeriesAccuracy accuracy) {
    // The fast places may be some 200 km out: a graze is not given up on them.
    const auto at = [accuracy](double x) { return Eclipse_Instant(x, accuracy); };
    return Greatest_On(t, at, accuracy == kAccuracyFast ? 400.0 : 0.0, accuracy != kAccuracyFast);
}

GreatestEclipse Greatest_Solar_Eclipse(double t, const EclipseWindow& window) {
    const auto at = [&window](double x) { return Eclipse_Instant(x, window); };
    return Greatest_On(t, at, 0.0, true);
}

EclipseInstant Solar_Contact(const std::string& name, double t) {
    return Solar_Contact(name, t, EclipseWindow(t));
}

EclipseInstant Solar_Contact(const std::string& name, double t, const EclipseWindow& window) {
    const bool ingress = name.size() >= 2 && name.compare(name.size() - 2, 2, "In") == 0;
    double previous = 0.0;
    for (int pass = 0; pass < 40; ++pass) {
        const EclipseInstant r0 = Eclipse_Instant(t, window);
        const EclipseInstant r1 = Eclipse_Instant(t + SecondDays, window);
        const AxisTriangle tri = Triangle_Of(r0, r1);
        if (!(tri.c > 0.0)) break;
        const double A = Arc_Sin(tri.q * std::sin(tri.theta) / tri.c);
        const double along = tri.p * std::cos(A);
        const double across = tri.p * std::sin(A);
        double rho = r1.PenumbraRadius + EarthRadius;
        if (name == "UmbIn" || name == "UmbOut") rho = r1.UmbraRadius + EarthRadius;
        if (name == "TotalIn" || name == "TotalOut") rho = EarthRadius - r1.UmbraRadius;
        double correction;
        if ((across > 0.0 && across <= rho) || std::fabs(across) <= rho) {
            const double dist = std::sqrt(rho * rho - across * across);
            correction = (along - dist) / (tri.c / SecondDays);
        } else {
            // The path misses the circle here: feel for it by halving steps.
            correction = previous == 0.0 ? SecondDays : -previous / 2.0;
        }
        t = ingress ? t + correction : t - correction;
        previous = correction;
        if (std::fabs(correction) < kContactTolerance) break;
    }
    return Eclipse_Instant(t, window);
}

std::string Solar_Eclipse_Test(EclipseRow& row, EclipseInstants& instants, EclipseSpeed& speed,
                               int32_t bias) {
    if (!std::isfinite(row.PhaseJD)) return {};
    // A first pass on the fast places; only a shadow that may touch the Earth is searched
    // again on the full series.
    const GreatestEclipse rough = Greatest_Solar_Eclipse(row.PhaseJD, kAccuracyFast);
    if (rough.Missed) return {};
    const EclipseWindow window(rough.Time);
    const GreatestEclipse found = Greatest_Solar_Eclipse(rough.Time, window);
    if (found.Missed || !(found.Speed > 0.0)) return {};

    const double T = found.Time;
    const EclipseInstant R = Eclipse_Instant(T, window);
    const double g = R.AxisDistance;
    const double s = found.Speed;
    const bool annular = R.Moon.Distance - EarthRadius > R.UmbraVertex;
    if (R.PenumbraRadius + EarthRadius < g) return {};

    row.FirstContact = row.PartialStart = row.TotalStart = row.Maximum = EclipseEvent{};
    row.TotalEnd = row.PartialEnd = row.LastContact = EclipseEvent{};
    instants = EclipseInstants{};

    std::string kind = "Partial Solar Eclipse";
    double h = std::sqrt(std::pow(R.PenumbraRadius + EarthRadius, 2) - g * g) / s;
    row.FirstContact.Time = T - h;
    row.LastContact.Time = T + h;
    if (!(R.UmbraRadius + EarthRadius < g)) {
        kind = "Total Solar Eclipse";
        h = std::sqrt(std::pow(R.UmbraRadius + EarthRadius, 2) - g * g) / s;
        row.PartialStart.Time = T - h;
        row.PartialEnd.Time = T + h;
        if (!(EarthRadius - R.UmbraRadius < g)) {
            // The whole umbra lies on the Earth's disc.
            h = std::sqrt(std::pow(EarthRadius - R.UmbraRadius, 2) - g * g) / s;
            row.TotalStart.Time = T - h;
            row.TotalEnd.Time = T + h;
        }
    }
    if (annular) kind.replace(kind.find("Solar"), 5, "Annular");

    row.Maximum.Time = T;
    row.Maximum.UmbraRadius = R.UmbraRadius;
    row.Maximum.PenumbraRadius = R.PenumbraRadius;
    row.Maximum.MoonSD = EarthRadius;
    row.DateLabel = Eclipse_Date_Label(T, bias);
    instants[kInstantMaximum] = R;

    const auto contact = [&](const char* name, EclipseEvent& event, int index) {
        instants[index] = Solar_Contact(name, event.Time, window);
        event.Time = instants[index].Time;
    };
    contact("PenIn", row.FirstContact, kInstantPenIn);
    contact("PenOut", row.LastContact, kInstantPenOut);
    if (row.PartialStart.Time != 0.0) {
        contact("UmbIn", row.PartialStart, kInstantUmbIn);
        contact("UmbOut", row.PartialEnd, kInstantUmbOut);
    }
    if (row.TotalStart.Time != 0.0) {
        contact("TotalIn", row.TotalStart, kInstantTotalIn);
        contact("TotalOut", row.TotalEnd, kInstantTotalOut);
    }

    // Total at the greatest eclipse, but the umbral cone ends short of the plane of the
    // Earth's centre at the first or last contact: annular near the ends of the path. The
    // Earth's radius is deliberately not taken from the distance here.
    if (kind.find("Total") != std::string::npos && !annular) {
        const EclipseInstant& in = instants[kInstantPenIn];
        const EclipseInstant& out = instants[kInstantPenOut];
        if (in.Moon.Distance > in.UmbraVertex || out.Moon.Distance > out.UmbraVertex)
            kind = "Hybrid Solar Eclipse";
    }

    row.Gamma = R.AxisDistance / EarthRadius;
    row.Maximum.Gamma = static_cast<float>(row.Gamma);
    speed.Speed = s;
    speed.Annular = annular ? -1 : 0;
    speed.Kind = kind;
    return kind;
}

bool Circle_Intersection(double d, double r, double& atEarth, double& atShadow) {
    atEarth = 0.0;
    atShadow = 0.0;
    const double E = EarthPlusAirSingle;
    if (!(d > 0.0 && r > 0.0) || !(r + d > E) || !(std::fabs(d - r) < E)) return false;
    atEarth = Arc_Cos((d * d + E * E - r * r) / (d * 12837.613042539653));
    atShadow = Arc_Cos((r * r + d * d - E * E) / (2.0 * r * d));
    return true;
}

namespace {

// The unit vector of the shadow axis towards the Sun, with the unit vectors east and
// north of it that span the shadow plane, all Earth-fixed.
struct ShadowFrame {
    Vec3 axis, east, north, moon;
};

ShadowFrame Frame_Of(const BodyPlace& sun, const BodyPlace& moon) {
    ShadowFrame f;
    const Vec3 s = Earth_Fixed(sun, sun.Distance * AU);
    f.moon = Earth_Fixed(moon, moon.Distance);
    const Vec3 d = s - f.moon;
    const double n = Norm(d);
    f.axis = n > 0.0 ? (1.0 / n) * d : Vec3{0.0, 0.0, 1.0};
    const double h = std::hypot(f.axis.x, f.axis.y);
    f.east = h > 0.0 ? Vec3{-f.axis.y / h, f.axis.x / h, 0.0} : Vec3{0.0, 1.0, 0.0};
    f.north = {f.axis.y * f.east.z - f.axis.z * f.east.y, f.axis.z * f.east.x - f.axis.x * f.east.z,
               f.axis.x * f.east.y - f.axis.y * f.east.x};
    return f;
}

}  // namespace

bool Shadow_Point_Place(const EclipseInstant& instant, double distance, double positionAngle,
                        GeoPoint& place) {
    const ShadowFrame f = Frame_Of(instant.Sun, instant.Moon);
    const Vec3 p =
        distance * std::sin(positionAngle) * f.east + distance * std::cos(positionAngle) * f.north;
    // The line p + s axis on the ellipsoid x² + y² + z² / GeocentricFactor = EarthRadius²,
    // the root nearer the Sun.
    const double k = 1.0 / GeocentricFactor;
    const double a = f.axis.x * f.axis.x + f.axis.y * f.axis.y + k * f.axis.z * f.axis.z;
    const double b = 2.0 * (p.x * f.axis.x + p.y * f.axis.y + k * p.z * f.axis.z);
    const double c = p.x * p.x + p.y * p.y + k * p.z * p.z - EarthRadius * EarthRadius;
    const double disc = b * b - 4.0 * a * c;
    if (!(disc >= 0.0) || !(a > 0.0)) return false;
    const double s = (-b + std::sqrt(disc)) / (2.0 * a);
    const Vec3 q = p + s * f.axis;
    const double geocentric = std::atan2(q.z, std::hypot(q.x, q.y));
    place.Lat = std::atan(std::tan(geocentric) / GeocentricFactor);
    place.Lon = std::atan2(q.y, q.x);
    return true;
}

ShadowPlane::ShadowPlane(const EclipseInstant& instant) {
    const ShadowFrame f = Frame_Of(instant.Sun, instant.Moon);
    const auto put = [](double* to, const Vec3& v) {
        to[0] = v.x;
        to[1] = v.y;
        to[2] = v.z;
    };
    put(axis_, f.axis);
    put(east_, f.east);
    put(north_, f.north);
    // The axis meets the plane at the Moon less its component along the axis.
    const Vec3 foot = f.moon - Dot(f.moon, f.axis) * f.axis;
    axisEast_ = Dot(foot, f.east);
    axisNorth_ = Dot(foot, f.north);
}

GeoPoint ShadowPlane::Surface(double x, double y, double z) const {
    GeoPoint place;
    const double geocentric = std::atan2(z, std::hypot(x, y));
    place.Lat = std::atan(std::tan(geocentric) / GeocentricFactor);
    place.Lon = std::atan2(y, x);
    return place;
}

bool ShadowPlane::Place(double east, double north, GeoPoint& place, double& height) const {
    const double p[3] = {east * east_[0] + north * north_[0], east * east_[1] + north * north_[1],
                         east * east_[2] + north * north_[2]};
    const double k = 1.0 / GeocentricFactor;
    const double a = axis_[0] * axis_[0] + axis_[1] * axis_[1] + k * axis_[2] * axis_[2];
    const double b = 2.0 * (p[0] * axis_[0] + p[1] * axis_[1] + k * p[2] * axis_[2]);
    const double c = p[0] * p[0] + p[1] * p[1] + k * p[2] * p[2] - EarthRadius * EarthRadius;
    const double disc = b * b - 4.0 * a * c;
    if (!(disc >= 0.0) || !(a > 0.0)) return false;
    height = (-b + std::sqrt(disc)) / (2.0 * a);
    place = Surface(p[0] + height * axis_[0], p[1] + height * axis_[1], p[2] + height * axis_[2]);
    return true;
}

GeoPoint ShadowPlane::Limb(double east, double north) const {
    const double n = std::hypot(east, north);
    const double ue = n > 0.0 ? east / n : 1.0, un = n > 0.0 ? north / n : 0.0;
    const double u[3] = {ue * east_[0] + un * north_[0], ue * east_[1] + un * north_[1],
                         ue * east_[2] + un * north_[2]};
    // Along t·u the line grazes the ellipsoid where the discriminant of Place is 0.
    const double k = 1.0 / GeocentricFactor;
    const double a = axis_[0] * axis_[0] + axis_[1] * axis_[1] + k * axis_[2] * axis_[2];
    const double ua = u[0] * axis_[0] + u[1] * axis_[1] + k * u[2] * axis_[2];
    const double uu = u[0] * u[0] + u[1] * u[1] + k * u[2] * u[2];
    const double t = EarthRadius * std::sqrt(a / std::max(1e-12, a * uu - ua * ua));
    const double h = -t * ua / a;
    return Surface(t * u[0] + h * axis_[0], t * u[1] + h * axis_[1], t * u[2] + h * axis_[2]);
}

bool ShadowPlane::Project(double x, double y, double z, double& east, double& north) const {
    east = x * east_[0] + y * east_[1] + z * east_[2];
    north = x * north_[0] + y * north_[1] + z * north_[2];
    return x * axis_[0] + y * axis_[1] + z * axis_[2] > 0.0;
}

EclipseInstant Interpolate_Instant(const EclipseInstant& a, const EclipseInstant& b, double f) {
    const auto lerp = [f](double x, double y) { return x + (y - x) * f; };
    const auto place = [&](const BodyPlace& p, const BodyPlace& q) {
        BodyPlace r;
        double gha = q.GHA;
        if (gha < p.GHA) gha += kTwoPi;
        double ra0 = p.RA, ra1 = q.RA;
        if (ra1 < kPi / 2.0 && ra0 > 1.5 * kPi) ra1 += kTwoPi;
        if (ra0 < kPi / 2.0 && ra1 > 1.5 * kPi) ra0 += kTwoPi;
        r.GHA = Reduce_2Pi(lerp(p.GHA, gha));
        r.RA = Reduce_2Pi(lerp(ra0, ra1));
        r.Dec = lerp(p.Dec, q.Dec);
        r.Distance = lerp(p.Distance, q.Distance);
        return r;
    };
    return Instant_From_Places(place(a.Sun, b.Sun), place(a.Moon, b.Moon), lerp(a.Time, b.Time));
}

namespace {

// The observer against the two cones at one moment.
struct ObserverShadow {
    double axisDistance = 0.0;  // km, the observer from the shadow axis
    double penumbra = 0.0;      // km, the penumbral cone's radius in the observer's plane
    double umbra = 0.0;         // km, the umbral cone's, negative beyond its vertex
    double sunAltitude = 0.0;   // radians, geometric, of the Sun's centre
};

ObserverShadow Observer_Against_Cones(double t, const EclipseWindow& window, const Vec3& observer,
                                      const Vec3& zenith) {
    BodyPlace sun, moon;
    window.Places(t, sun, moon);
    const ShadowFrame f = Frame_Of(sun, moon);
    const Vec3 sunVec = Earth_Fixed(sun, sun.Distance * AU);
    const double L = Norm(sunVec - f.moon);
    const Vec3 rel = observer - f.moon;
    const double z = -Dot(rel, f.axis);  // beyond the Moon, away from the Sun
    const Vec3 perp = rel + z * f.axis;
    ObserverShadow o;
    o.axisDistance = Norm(perp);
    // Cones that touch the Sun and the Moon outside (penumbra) and inside (umbra).
    const double sinP = (SunRadius + MoonRadius) / L;
    const double sinU = (SunRadius - MoonRadius) / L;
    const double tanP = sinP / std::sqrt(1.0 - sinP * sinP);
    const double tanU = sinU / std::sqrt(1.0 - sinU * sinU);
    o.penumbra = (z + MoonRadius / sinP) * tanP;
    o.umbra = (MoonRadius / sinU - z) * tanU;
    const Vec3 toSun = sunVec - observer;
    o.sunAltitude = Arc_Sin(Dot(toSun, zenith) / Norm(toSun));
    return o;
}

}  // namespace

LocalEclipse Local_Solar_Eclipse(double lat, double lon, double from, double to) {
    LocalEclipse result;
    if (!(to > from) || !(to - from < 1.0)) return result;
    const double geocentric = std::atan(GeocentricFactor * std::tan(lat));
    const double radius = Radius_At_Latitude(lat) * EarthRadius;
    const Vec3 observer{radius * std::cos(geocentric) * std::cos(lon),
                        radius * std::cos(geocentric) * std::sin(lon),
                        radius * std::sin(geocentric)};
    const Vec3 zenith{std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
    const EclipseWindow window(0.5 * (from + to));
    const auto at = [&](double t) { return Observer_Against_Cones(t, window, observer, zenith); };
    const auto outsidePenumbra = [&](double t) {
        const ObserverShadow o = at(t);
        return o.axisDistance - o.penumbra;
    };
    const auto outsideUmbra = [&](double t) {
        const ObserverShadow o = at(t);
        return o.axisDistance - std::fabs(o.umbra);
    };

    // The least distance from the axis: samples two minutes apart, then golden sections.
    const double stepDays = 2.0 * MinuteDays;
    const int samples = static_cast<int>(std::ceil((to - from) / stepDays));
    double best = from;
    double bestValue = at(from).axisDistance;
    for (int i = 1; i <= samples; ++i) {
        const double t = std::min(to, from + i * stepDays);
        const double v = at(t).axisDistance;
        if (v < bestValue) {
            bestValue = v;
            best = t;
        }
    }
    double lo = std::max(from, best - stepDays), hi = std::min(to, best + stepDays);
    const double golden = 0.381966011250105;
    while (hi - lo > 0.1 * SecondDays) {
        const double m1 = lo + golden * (hi - lo), m2 = hi - golden * (hi - lo);
        if (at(m1).axisDistance < at(m2).axisDistance)
            hi = m2;
        else
            lo = m1;
    }
    const double tMax = 0.5 * (lo + hi);
    const ObserverShadow atMax = at(tMax);
    result.Maximum = tMax;
    result.SunAltitude = atMax.sunAltitude;
    if (!(atMax.axisDistance < atMax.penumbra)) {
        result.Maximum = 0.0;
        return result;
    }
    result.Eclipsed = true;
    // The fraction of the Sun's diameter covered: 0 on the penumbral cone, 1 on the umbral
    // one (whose radius is negative beyond its vertex, where the eclipse is annular).
    result.Magnitude = (atMax.penumbra - atMax.axisDistance) / (atMax.penumbra - atMax.umbra);

    // A root of `f` between a (f < 0 side known) and the end `b`: walk out in steps until
    // the sign changes, then bisection and secant steps to a tenth of a second.
    const auto root = [&](const auto& f, double inside, double edge) {
        const double dir = edge > inside ? 1.0 : -1.0;
        double a = inside, fa = f(a);
        double b = a;
        double fb = fa;
        while (fb < 0.0 && dir * (edge - b) > 0.0) {
            a = b;
            fa = fb;
            b = dir > 0 ? std::min(edge, b + stepDays) : std::max(edge, b - stepDays);
            fb = f(b);
        }
        if (fb < 0.0) return b;  // still inside at the end of the window
        for (int i = 0; i < 60 && std::fabs(b - a) > 0.1 * SecondDays; ++i) {
            double m = a - fa * (b - a) / (fb - fa);
            if (!(m > std::min(a, b) && m < std::max(a, b)) || i % 3 == 2) m = 0.5 * (a + b);
            const double fm = f(m);
            if (fm < 0.0) {
                a = m;
                fa = fm;
            } else {
                b = m;
                fb = fm;
            }
        }
        return 0.5 * (a + b);
    };
    const double margin = 0.25;  // days beyond the window that the walk may go
    result.FirstContact = root(outsidePenumbra, tMax, from - margin);
    result.LastContact = root(outsidePenumbra, tMax, to + margin);
    if (atMax.axisDistance < std::fabs(atMax.umbra)) {
        result.Central = true;
        result.Annular = atMax.umbra < 0.0;
        result.SecondContact = root(outsideUmbra, tMax, result.FirstContact);
        result.ThirdContact = root(outsideUmbra, tMax, result.LastContact);
    }

    // Seen if the Sun's upper limb with refraction (34' + 16') is up at some moment of it.
    const double horizon = -50.0 * kOneArcminute;
    for (double t = result.FirstContact;; t += stepDays) {
        const double tt = std::min(t, result.LastContact);
        if (at(tt).sunAltitude > horizon) {
            result.Visible = true;
            break;
        }
        if (tt >= result.LastContact) break;
    }
    return result;
}

}  // namespace kelmoran
