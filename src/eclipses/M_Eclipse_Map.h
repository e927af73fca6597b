// The world map of the eclipse window: a Mercator map 1418 by 970 pixels at its natural
// size, reaching from latitude 78.18 N to 75.27 S and from longitude 168.83 W eastwards
// round the world, drawn from the coastline table at any scale. Everything here is in the
// map's natural pixels; the window multiplies by its scale in each direction.
//
// The layers a window paints: the land, a graticule, the night side, and for a solar
// eclipse the shadows of one minute or the complete path, for a lunar eclipse where the
// Moon is below the horizon.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "eclipses/M_Eclipse.h"
#include "eclipses/M_Eclipse_Solar.h"

namespace kelmoran {

namespace eclipse_map {
inline constexpr double Width = 1418.0;    // natural pixels
inline constexpr double Height = 970.0;
inline constexpr double XPerDegree = 3.9388887882232666;
inline constexpr double XOfGreenwich = 665.0;
inline constexpr double YOfEquator = 510.0;
inline constexpr double MerPartsPerPixel = 15.241240501403809;  // minutes of arc
inline constexpr double TopLatitude = 78.17581176757812;         // degrees
inline constexpr double FootLatitude = -75.26909637451172;
inline constexpr double LeftLongitude = -168.8292999267578;
inline constexpr double WrapEast = 191.5;   // longitudes beyond are taken 360 west
inline constexpr double WrapWest = -168.5;  // and below, 360 east
}  // namespace eclipse_map

struct MapPoint {
    double X = 0.0;
    double Y = 0.0;
};
using MapRing = std::vector<MapPoint>;

// x of longitude `lon` (degrees east), wrapped into the map: 0 .. 1418.
double Map_X(double lon);
// y of latitude `lat` (degrees north) from the meridional parts of the sailing formulae.
double Map_Y(double lat);
// The latitude (degrees) at `y`; the inverse of Map_Y.
double Map_Latitude(double y);
// Screen pixels at scale factors `scale`: rounded by the usual rule.
int32_t Screen_Map_X(double lon, float scale);
int32_t Screen_Map_Y(double lat, float scale);

// A closed ring of places (radians) as map outlines: the longitudes taken continuously, and
// the ring copied a whole map width east or west where the copy reaches the map. A ring
// that goes once round the Earth encloses a pole (the one on the side of its mean latitude)
// and is closed along it.
std::vector<MapRing> Map_Rings(const std::vector<GeoPoint>& ring);
// The same for an open line (no closing, no pole).
std::vector<MapRing> Map_Lines(const std::vector<GeoPoint>& line);

// The land of the coastline table as map outlines (made once).
const std::vector<MapRing>& Coastline_Rings();
// Rings and points in the coastline table.
int32_t Coastline_Ring_Count();
int32_t Coastline_Point_Count();

// Graticule: meridians every `step` degrees and parallels every `step` degrees within the map.
struct Graticule {
    std::vector<MapRing> Lines;
    std::vector<std::pair<MapPoint, std::string>> Labels;  // at the map's left and bottom edges
};
Graticule Map_Graticule(int step);

// The altitude of the Sun's centre at the day and night edge, radians, for the Sun at
// `distance` AU: its semi-diameter, 34.5' of refraction and 25.952".
double Day_Night_Altitude(double distance);
// Where a body at declination `dec` and Greenwich hour angle `gha` (radians) is below
// altitude `h0`, as map outlines: the edge from cos H = (sin h0 - sin φ sin δ) /
// (cos φ cos δ), latitude by latitude every `stepMinutes` minutes of arc.
std::vector<MapRing> Below_Horizon(double dec, double gha, double h0, int stepMinutes = 10);

// The outline on the Earth of the penumbra (`umbra` false) or the umbra of `instant`, the
// cone's radius taken at the height of each point; where the shadow reaches past the
// Earth's outline the edge follows the outline. Empty when the shadow misses the Earth.
std::vector<GeoPoint> Shadow_Outline(const EclipseInstant& instant, bool umbra, int points = 72);

// The map of a solar eclipse at one minute, or its complete path.
struct SolarMap {
    std::vector<MapRing> Night;
    std::vector<MapRing> Penumbra;     // the minute's shadows
    std::vector<MapRing> Umbra;
    std::vector<MapRing> PathPartial;  // the complete path: every minute's penumbra
    std::vector<MapRing> PathTotal;    // the umbra's band
    std::vector<MapRing> Limits;       // the northern and southern limits of the penumbra
    MapPoint SubSolar;
    int32_t Minutes = 0;               // minutes stepped for the path
};
// At MyJD `t`, `instant` being the geometry there; the night side with it.
SolarMap Solar_Minute_Map(const EclipseInstant& instant);
// The complete path of the eclipse of `row` (its contacts), stepped every minute from the
// first contact to the last, and the night side at the greatest eclipse. `yield`, when
// given, is called between minutes (a long loop keeps the display alive).
SolarMap Solar_Path_Map(const EclipseRow& row, void (*yield)() = nullptr);

// The map of a lunar eclipse at MyJD `t`: where the Moon is below the horizon (the
// eclipse is not seen) and the sub-lunar point.
struct LunarMap {
    std::vector<MapRing> MoonDown;
    MapPoint SubLunar;
};
LunarMap Lunar_Eclipse_Map(double t);

}  // namespace kelmoran
