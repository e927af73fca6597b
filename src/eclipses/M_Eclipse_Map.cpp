#include "eclipses/M_Eclipse_Map.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Embedded_Data.h"
#include "eclipses/M_Eclipse_Lunar.h"
#include "ephemeris/Units.h"
#include "voyage/Navigation.h"

namespace kelmoran {

using namespace eclipse;
using namespace eclipse_map;

namespace {

constexpr double kMapTurn = 360.0 * XPerDegree;  // one turn of longitude in pixels: 1418

double Unwrapped_X(double lon) {
    return lon * XPerDegree + XOfGreenwich;
}

// `ring` (natural x not wrapped) and its copies a turn east or west, those that reach the map.
void Add_Copies(MapRing ring, std::vector<MapRing>& out) {
    if (ring.size() < 2) return;
    double lo = ring[0].X, hi = ring[0].X;
    for (const MapPoint& p : ring) {
        lo = std::min(lo, p.X);
        hi = std::max(hi, p.X);
    }
    for (int k = -2; k <= 2; ++k) {
        const double off = k * kMapTurn;
        if (hi + off < 0.0 || lo + off > Width) continue;
        MapRing copy = ring;
        for (MapPoint& p : copy) p.X += off;
        out.push_back(std::move(copy));
    }
}

// Longitudes in degrees taken continuously along `points` (radians).
std::vector<double> Continuous_Longitudes(const std::vector<GeoPoint>& points) {
    std::vector<double> lon(points.size());
    double previous = 0.0;
    for (size_t i = 0; i < points.size(); ++i) {
        double l = points[i].Lon * kDegreesPerRadian;
        if (i > 0) l -= 360.0 * std::round((l - previous) / 360.0);
        lon[i] = l;
        previous = l;
    }
    return lon;
}

}  // namespace

double Map_X(double lon) {
    if (lon > WrapEast) lon -= 360.0;
    if (lon < WrapWest) lon += 360.0;
    return Unwrapped_X(lon);
}

double Map_Y(double lat) {
    const float m = Mer_Parts(static_cast<float>(lat / kDegreesPerRadian));
    return YOfEquator - m / MerPartsPerPixel;
}

double Map_Latitude(double y) {
    double lo = -89.999, hi = 89.999;
    for (int i = 0; i < 50; ++i) {
        const double mid = 0.5 * (lo + hi);
        if (Map_Y(mid) > y)
            lo = mid;
        else
            hi = mid;
    }
    return 0.5 * (lo + hi);
}

int32_t Screen_Map_X(double lon, float scale) {
    return static_cast<int32_t>(std::lround(scale * Map_X(lon)));
}

int32_t Screen_Map_Y(double lat, float scale) {
    return static_cast<int32_t>(std::lround(scale * Map_Y(lat)));
}

std::vector<MapRing> Map_Rings(const std::vector<GeoPoint>& ring) {
    std::vector<MapRing> out;
    if (ring.size() < 3) return out;
    const std::vector<double> lon = Continuous_Longitudes(ring);
    MapRing r;
    r.reserve(ring.size() + 2);
    double meanLat = 0.0;
    for (size_t i = 0; i < ring.size(); ++i) {
        const double lat = ring[i].Lat * kDegreesPerRadian;
        meanLat += lat;
        r.push_back({Unwrapped_X(lon[i]), Map_Y(lat)});
    }
    // Once round the Earth: the closing step does not bring the longitude back.
    double closing = lon.front() - lon.back();
    closing -= 360.0 * std::round(closing / 360.0);
    if (std::fabs(lon.back() + closing - lon.front()) > 180.0) {
        const double poleY = Map_Y(meanLat >= 0.0 ? 90.0 : -90.0);
        r.push_back({r.back().X, poleY});
        r.push_back({r.front().X, poleY});
    }
    Add_Copies(std::move(r), out);
    return out;
}

std::vector<MapRing> Map_Lines(const std::vector<GeoPoint>& line) {
    std::vector<MapRing> out;
    if (line.size() < 2) return out;
    const std::vector<double> lon = Continuous_Longitudes(line);
    MapRing r;
    for (size_t i = 0; i < line.size(); ++i)
        r.push_back({Unwrapped_X(lon[i]), Map_Y(line[i].Lat * kDegreesPerRadian)});
    Add_Copies(std::move(r), out);
    return out;
}

namespace {

// The coastline table (tools/coastline): uint32 ring count; per ring uint32 point count,
// then int16 longitude and latitude in hundredths of a degree, little-endian. Longitudes
// run continuously round a ring (beyond ±180 where a ring crosses the 180th meridian), and
// a ring round a pole is closed along it.
struct CoastTable {
    std::vector<MapRing> rings;
    int32_t ringCount = 0;
    int32_t pointCount = 0;
};

const CoastTable& Coast() {
    static const CoastTable table = [] {
        CoastTable t;
        const auto data = Embedded_Data("coastline");
        size_t at = 0;
        const auto u32 = [&](uint32_t& v) {
            if (at + 4 > data.size()) return false;
            v = static_cast<uint32_t>(data[at]) | static_cast<uint32_t>(data[at + 1]) << 8 |
                static_cast<uint32_t>(data[at + 2]) << 16 | static_cast<uint32_t>(data[at + 3]) << 24;
            at += 4;
            return true;
        };
        const auto i16 = [&](size_t k) {
            return static_cast<int16_t>(static_cast<uint16_t>(data[k] | data[k + 1] << 8));
        };
        uint32_t rings = 0;
        if (!u32(rings)) return t;
        for (uint32_t i = 0; i < rings; ++i) {
            uint32_t n = 0;
            if (!u32(n) || at + 4ull * n > data.size()) break;
            MapRing r;
            r.reserve(n);
            for (uint32_t k = 0; k < n; ++k, at += 4)
                r.push_back({Unwrapped_X(i16(at) / 100.0), Map_Y(i16(at + 2) / 100.0)});
            ++t.ringCount;
            t.pointCount += static_cast<int32_t>(n);
            Add_Copies(std::move(r), t.rings);
        }
        return t;
    }();
    return table;
}

}  // namespace

const std::vector<MapRing>& Coastline_Rings() {
    return Coast().rings;
}

int32_t Coastline_Ring_Count() {
    return Coast().ringCount;
}

int32_t Coastline_Point_Count() {
    return Coast().pointCount;
}

Graticule Map_Graticule(int step) {
    Graticule g;
    step = std::clamp(step, 1, 90);
    const double west = LeftLongitude, east = LeftLongitude + 360.0;
    for (int lon = -180; lon <= 180; lon += step) {
        for (double l : {double(lon), lon + 360.0}) {
            if (l < west || l > east) continue;
            const double x = Unwrapped_X(l);
            g.Lines.push_back({{x, 0.0}, {x, Height}});
            const int shown = lon == -180 ? 180 : lon;
            g.Labels.push_back({{x, Height},
                                std::to_string(std::abs(shown)) + "\xC2\xB0" +
                                    (shown > 0 && shown < 180 ? "E" : shown < 0 ? "W" : "")});
        }
    }
    for (int lat = -90 + step; lat < 90; lat += step) {
        if (lat > TopLatitude || lat < FootLatitude) continue;
        const double y = Map_Y(lat);
        g.Lines.push_back({{0.0, y}, {Width, y}});
        g.Labels.push_back({{0.0, y}, std::to_string(std::abs(lat)) + "\xC2\xB0" +
                                          (lat > 0 ? "N" : lat < 0 ? "S" : "")});
    }
    return g;
}

double Day_Night_Altitude(double distance) {
    return -SunRadiusAU / distance - 34.5 * kOneArcminute - 25.952 * kOneArcsecond;
}

std::vector<MapRing> Below_Horizon(double dec, double gha, double h0, int stepMinutes) {
    std::vector<MapRing> out;
    stepMinutes = std::clamp(stepMinutes, 1, 600);
    // The longitude opposite the body, and the half-width of the part below the horizon.
    const double centre = (kPi - gha) * kDegreesPerRadian;
    std::vector<std::pair<double, double>> edge;  // latitude, half-width, degrees
    const int top = 90 * 60 - 1;
    for (int m = -top;; m += stepMinutes) {
        if (m > top) m = top;
        const double lat = m / 60.0 / kDegreesPerRadian;
        const double cosH =
            (std::sin(h0) - std::sin(lat) * std::sin(dec)) / (std::cos(lat) * std::cos(dec));
        const double H = cosH >= 1.0 ? 0.0 : cosH <= -1.0 ? kPi : std::acos(cosH);
        edge.push_back({m / 60.0, 180.0 - H * kDegreesPerRadian});
        if (m == top) break;
    }
    MapRing r;
    r.reserve(2 * edge.size());
    for (const auto& [lat, w] : edge) r.push_back({Unwrapped_X(centre + w), Map_Y(lat)});
    for (auto it = edge.rbegin(); it != edge.rend(); ++it)
        r.push_back({Unwrapped_X(centre - it->second), Map_Y(it->first)});
    Add_Copies(std::move(r), out);
    return out;
}

namespace {

// A shadow cone of one instant and the plane it is worked in.
struct ShadowCone {
    ShadowCone(const EclipseInstant& instant, bool umbra)
        : plane(instant), umbra(umbra), dM(instant.Moon.Distance),
          L(instant.Sun.Distance * AU - instant.Moon.Distance), vertex(instant.UmbraVertex),
          penumbraVertex(L * MoonRadius / SunPlusMoon) {}

    bool Valid() const { return L > 0.0; }

    // The cone's radius at `height` km from the plane towards the Moon.
    double Radius(double height) const {
        return umbra ? std::fabs(vertex + height - dM) * SunMinusMoon / L
                     : (penumbraVertex + dM - height) * SunPlusMoon / L;
    }

    // The cone's edge in the direction (`ue`, `un`) (a unit vector of the plane) from the
    // axis, on the Earth: the radius taken again at the height of the point found. False
    // when that edge is off the Earth (`place` then holds the last try).
    bool Edge(double ue, double un, GeoPoint& place) const {
        double r = Radius(umbra ? EarthRadius : 0.0);
        for (int pass = 0; pass < 3; ++pass) {
            double h = 0.0;
            if (!plane.Place(plane.AxisEast() + r * ue, plane.AxisNorth() + r * un, place, h))
                return false;
            r = Radius(h);
        }
        return true;
    }

    ShadowPlane plane;
    bool umbra;
    double dM, L, vertex, penumbraVertex;
};

}  // namespace

std::vector<GeoPoint> Shadow_Outline(const EclipseInstant& instant, bool umbra, int points) {
    std::vector<GeoPoint> out;
    const ShadowCone cone(instant, umbra);
    if (!cone.Valid() || points < 3) return out;
    bool hit = false;
    out.reserve(static_cast<size_t>(points));
    for (int k = 0; k < points; ++k) {
        const double psi = kTwoPi * k / points;
        GeoPoint g;
        if (cone.Edge(std::sin(psi), std::cos(psi), g)) {
            hit = true;
        } else {
            // Past the Earth's outline the edge follows the outline.
            const double r = cone.Radius(0.0);
            g = cone.plane.Limb(cone.plane.AxisEast() + r * std::sin(psi),
                                cone.plane.AxisNorth() + r * std::cos(psi));
        }
        out.push_back(g);
    }
    if (!hit) out.clear();
    return out;
}

namespace {

void Append(std::vector<MapRing>& to, std::vector<MapRing>&& from) {
    for (MapRing& r : from) to.push_back(std::move(r));
}

GeoPoint Sub_Point(const BodyPlace& p) {
    return {p.Dec, Fold_Pi(-p.GHA)};
}

MapPoint Map_Point(const GeoPoint& g) {
    return {Map_X(g.Lon * kDegreesPerRadian), Map_Y(g.Lat * kDegreesPerRadian)};
}

}  // namespace

SolarMap Solar_Minute_Map(const EclipseInstant& instant) {
    SolarMap m;
    m.Night = Below_Horizon(instant.Sun.Dec, instant.Sun.GHA,
                            Day_Night_Altitude(instant.Sun.Distance));
    m.Penumbra = Map_Rings(Shadow_Outline(instant, false));
    m.Umbra = Map_Rings(Shadow_Outline(instant, true, 48));
    m.SubSolar = Map_Point(Sub_Point(instant.Sun));
    return m;
}

namespace {

// The two points of a shadow's edge square to its motion in the plane (north and south
// limits), at heights that fit the cone.
struct EdgePair {
    GeoPoint left, right;
    bool leftOn = false, rightOn = false;
};

EdgePair Edge_Points(const EclipseInstant& i, double dirE, double dirN, bool umbra) {
    EdgePair e;
    const ShadowCone cone(i, umbra);
    const double n = std::hypot(dirE, dirN);
    if (!(n > 0.0) || !cone.Valid()) return e;
    const double ne = -dirN / n, nn = dirE / n;  // square to the motion
    e.leftOn = cone.Edge(ne, nn, e.left);
    e.rightOn = cone.Edge(-ne, -nn, e.right);
    return e;
}

}  // namespace

SolarMap Solar_Path_Map(const EclipseRow& row, void (*yield)()) {
    SolarMap m;
    const double first = row.FirstContact.Time, last = row.LastContact.Time;
    if (first == 0.0 || !(last > first) || last - first > 0.5) return m;
    const EclipseWindow window(row.Maximum.Time);
    // Every whole minute between the contacts, and the contacts themselves.
    std::vector<EclipseInstant> steps;
    steps.push_back(Eclipse_Instant(first, window));
    for (double minute = std::floor(first * 1440.0) + 1.0; minute < last * 1440.0; minute += 1.0)
        steps.push_back(Eclipse_Instant(minute / 1440.0, window));
    steps.push_back(Eclipse_Instant(last, window));
    m.Minutes = static_cast<int32_t>(steps.size());

    // The partial eclipse: every minute's penumbra, and the limits it sweeps.
    std::vector<GeoPoint> north, south;
    const auto flush = [&](std::vector<GeoPoint>& line) {
        if (line.size() >= 2) Append(m.Limits, Map_Lines(line));
        line.clear();
    };
    for (size_t k = 0; k < steps.size(); ++k) {
        Append(m.PathPartial, Map_Rings(Shadow_Outline(steps[k], false, 60)));
        const size_t a = k > 0 ? k - 1 : k, b = k + 1 < steps.size() ? k + 1 : k;
        const ShadowPlane pa(steps[a]), pb(steps[b]);
        const EdgePair e = Edge_Points(steps[k], pb.AxisEast() - pa.AxisEast(),
                                       pb.AxisNorth() - pa.AxisNorth(), false);
        if (e.leftOn) north.push_back(e.left); else flush(north);
        if (e.rightOn) south.push_back(e.right); else flush(south);
        if (yield && k % 16 == 15) yield();
    }
    flush(north);
    flush(south);

    // The central eclipse: the umbra's outline and the band between its edges, in finer
    // steps (interpolated) where the shadow meets the Earth's outline and moves fast.
    if (row.PartialStart.Time == 0.0) return m;
    EdgePair previousEdge;
    bool havePrevious = false;
    for (size_t k = 0; k + 1 < steps.size(); ++k) {
        const EclipseInstant& a = steps[k];
        const EclipseInstant& b = steps[k + 1];
        if (b.Time < row.PartialStart.Time - MinuteDays || a.Time > row.PartialEnd.Time + MinuteDays)
            continue;
        // Finer steps where the umbra cuts the Earth's outline (the band's ends) or runs near
        // it, where the shadow sweeps the ground fastest.
        double atEarth = 0.0, atShadow = 0.0;
        const bool cuts = Circle_Intersection(a.AxisDistance, a.UmbraRadius, atEarth, atShadow) ||
                          Circle_Intersection(b.AxisDistance, b.UmbraRadius, atEarth, atShadow);
        const double reach = std::max(a.AxisDistance + a.UmbraRadius, b.AxisDistance + b.UmbraRadius);
        const int parts = cuts || reach > 0.9 * EarthRadius ? 20 : 1;
        const ShadowPlane pa(a), pb(b);  // the motion over the minute
        for (int j = 0; j < parts; ++j) {
            const EclipseInstant i = j == 0 ? a : Interpolate_Instant(a, b, double(j) / parts);
            const std::vector<GeoPoint> outline = Shadow_Outline(i, true, 32);
            if (outline.empty()) {
                havePrevious = false;
                continue;
            }
            Append(m.PathTotal, Map_Rings(outline));
            const EdgePair e = Edge_Points(i, pb.AxisEast() - pa.AxisEast(),
                                           pb.AxisNorth() - pa.AxisNorth(), true);
            if (havePrevious && e.leftOn && e.rightOn && previousEdge.leftOn &&
                previousEdge.rightOn)
                Append(m.PathTotal,
                       Map_Rings({previousEdge.left, e.left, e.right, previousEdge.right}));
            previousEdge = e;
            havePrevious = true;
        }
    }
    return m;
}

LunarMap Lunar_Eclipse_Map(double t) {
    LunarMap m;
    const EclipseWindow window(t);
    BodyPlace sun, moon;
    window.Places(t, sun, moon);
    // Moonrise and moonset: the centre at 0.7275 of the horizontal parallax less 34'.
    const double parallax = std::asin(EarthRadius / moon.Distance);
    m.MoonDown = Below_Horizon(moon.Dec, moon.GHA, 0.7275 * parallax - 34.0 * kOneArcminute);
    m.SubLunar = Map_Point(Sub_Point(moon));
    return m;
}

}  // namespace kelmoran
