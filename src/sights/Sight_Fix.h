// The fix from the position lines of the used sights, and its confidence ellipse.
//
// Everything is relative to the DR at the fix time: each line is its azimuth and
// intercept against the DR of its own sight, so the dead reckoning carries it to the fix
// time. The crossing is worked on the plotting sheet's pixel scale (feet of the
// perpendiculars in whole pixels), so that a lone line and a near-parallel pair carry the
// sheet's rounding. Offsets come out as a change of latitude and a departure in radians;
// on the sheet x grows to the east and y to the south.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "sights/Sights.h"

namespace kelmoran {

// One column per sight row: azimuth in degrees, intercept in degrees (positive away) and
// the use mark (1.0 when the sight takes part).
struct Line_Table {
    std::vector<double> Az;
    std::vector<double> Int;
    std::vector<double> Use;
};

// Confidence factors of the ellipse by the menu's item: "Large" 98%, "Medium" 90%,
// "Small" 67%.
enum class Ellipse_Size { Large = 0, Medium = 1, Small = 2 };
inline constexpr std::array<double, 3> kEllipseFactor = {2.797149896621704, 2.145966053009033,
                                                         1.489068627357483};
inline constexpr std::array<const char*, 3> kEllipseSizeNames = {"Large", "Medium", "Small"};

// The words of the kind of position.
namespace fix_text {
inline constexpr const char* Fix = "Fix";
inline constexpr const char* ITP = "ITP";
inline constexpr const char* MeanITP = "Mean ITP";
inline constexpr const char* DR = "DR";
}  // namespace fix_text

// Fills `table` from the used sights and replaces each pair of lines that run nearly the
// same way or nearly opposite (azimuths within 10° or within 10° of reciprocal) by their
// mean, in at most 50 passes. Returns the number of pairs that cross well in the last pass.
int Merge_Close_Lines(const SightSet& set, Line_Table& table);

// The fix as the plain mean of all pairwise crossings of the lines marked in `table`, on
// a sheet of `plotScale` pixels per second of arc. With no pair, the intercept terminal
// point of the last marked line. `dLat`, `dDep` in radians (north, east positive).
void Intersect_Lines(const Line_Table& table, double& dLat, double& dDep, float plotScale);

// The least-squares error ellipse of the used sights round the offsets `dLat`, `dDep`
// (radians): semi-axes in minutes of arc, the angle in radians. False (nothing to draw)
// with fewer than three sights, with A·C - B² of zero or with A = C.
bool Error_Ellipse(const SightSet& set, double dLat, double dDep, Ellipse_Size size,
                   double& semiAxis1, double& semiAxis2, float& angle);

struct Sheet_Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Sheet_Point&, const Sheet_Point&) = default;
};

// The ellipse on the sheet: 361 points, t = 0 .. 360 degrees, the first moving the pen.
// (cx, cy) is the centre of the plot, which stands for the DR of the fix time.
std::vector<Sheet_Point> Plot_Confidence_Ellipse(int cx, int cy, float plotScale, double dLat,
                                                 double dDep, double semiAxis1,
                                                 double semiAxis2, float angle);

// The final position from the DR of the fix time (`fixLat`, `fixLong`, radians) and the
// offsets: a latitude beyond a pole is folded back (the longitude is left as it is), the
// longitude by the departure over the cosine of the mean latitude, within ±π.
void Calc_Final_Position(float fixLat, float fixLong, double dLat, double dDep, float& lat,
                         float& lon);

// The kind of position: "Fix" when some pair of used sights cuts between 10° and 170° (or
// 190° and 350°); else "ITP" for one sight, "Mean ITP" for more, "DR" for none.
std::string Test_Posn_Validity(const SightSet& set);

// Everything the plotting sheet shows of the fix, worked at one repaint.
struct Fix_Result {
    double dLat = 0;          // radians from the DR of the fix time
    double dDep = 0;
    int Good_Pairs = 0;
    bool Has_Ellipse = false;
    double Semi_Axis1 = 0;    // minutes of arc
    double Semi_Axis2 = 0;
    float Angle = 0;          // radians
    float Fix_Lat = 0;        // the final position, radians
    float Fix_Longt = 0;
    std::string Type_of_Fix;  // "Fix", "ITP", "Mean ITP", "DR"
    bool DR_Warning = false;  // the position service marked the fix time's DR
    Line_Table Lines;
    std::vector<Sheet_Point> Ellipse;  // empty without an ellipse
    std::array<Sheet_Point, 4> Cross{};  // two strokes: [0]-[1] and [2]-[3]
    Sheet_Point Circle_Centre;           // circle of radius 10 pixels round the fix
};
inline constexpr int kFixCircleRadius = 10;
inline constexpr int kFixCrossHalf = 15;

// The fix of the set on a sheet of `width` by `height` pixels at `plotScale` pixels per
// second of arc: merge, crossing, ellipse with three or more lines that cross well, final
// position and its warning, and the kind of position. With no used sight the DR of the
// fix time stands.
Fix_Result Calc_Fix(const SightSet& set, float plotScale, int width, int height,
                    Ellipse_Size size);

}  // namespace kelmoran
