#include "stars/M_Constellations.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Embedded_Data.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Units.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"

namespace kelmoran {

// The label positions (S.H.A., Dec in degrees, rounded to whole degrees with halves to
// even), rows 1 .. 89; row 89 is Serpens Cauda.
const std::array<std::array<int16_t, 2>, 90> ConstellationLabel = {{
    {0, 0},      {350, 41},  {209, -28}, {123, -79}, {20, -9},   {65, 4},    {103, -54},
    {323, 23},   {277, 43},  {142, 32},  {287, -38}, {280, 72},  {231, 19},  {169, 40},
    {257, -23},  {246, 7},   {44, -19},  {214, -60}, {342, 62},  {155, -44}, {27, 68},
    {329, -4},   {198, -79}, {133, -61}, {270, -36}, {169, 26},  {78, -41},  {123, 34},
    {174, -20},  {188, -14}, {172, -60}, {54, 40},   {50, 14},   {284, -58}, {110, 63},
    {42, 9},     {298, -19}, {321, -31}, {254, 24},  {21, -45},  {99, 30},   {307, -49},
    {205, -20},  {327, -70}, {39, -54},  {23, 47},   {203, 18},  {205, 35},  {276, -17},
    {130, -20},  {131, -43}, {240, 47},  {77, 38},   {278, -76}, {46, -33},  {255, 0},
    {173, -70},  {117, -48}, {65, -81},  {102, -3},  {278, 5},   {68, -65},  {15, 20},
    {308, 46},   {345, -46}, {268, -56}, {345, 8},   {23, -31},  {246, -38}, {228, -32},
    {299, -62},  {63, 19},   {73, -29},  {107, -33}, {358, -31}, {80, -9},   {124, 12},
    {208, -2},   {295, 15},  {75, -49},  {328, 33},  {121, -67}, {6, -60},   {196, 52},
    {125, 75},   {216, -48}, {161, 0},   {239, -69}, {65, 24},   {87, -1},
}};

namespace {

template <typename T>
T Read(const unsigned char* p) {
    T v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

struct BoundaryCache {
    double JD = std::nan("");
    std::vector<std::vector<std::pair<double, double>>> Lines;  // RA, Dec of date
};

// Adds `s` unless an end is off the map; across the wrap of "Equatorial" the second end
// moves by the wrap width.
void Add_Segment(const AtlasPlot& plot, std::vector<Segment>& out, int32_t x1, int32_t y1,
                 int32_t x2, int32_t y2) {
    if ((x1 == 0 && y1 == 0) || (x2 == 0 && y2 == 0)) return;
    if (plot.View.IsEquatorial) {
        const double wrap = plot.Wrap_Width();
        if (x2 - x1 > wrap / 2) x2 -= static_cast<int32_t>(std::lround(wrap));
        if (x1 - x2 > wrap / 2) x2 += static_cast<int32_t>(std::lround(wrap));
    }
    out.push_back({x1, y1, x2, y2});
}

}  // namespace

int32_t Highest_Figure_Star() {
    int32_t highest = 0;
    for (const ConstellationLine& l : Constellation_Lines()) highest = std::max({highest, l.A, l.B});
    return highest;
}

const std::vector<ConstellationLine>& Constellation_Lines() {
    static const std::vector<ConstellationLine> lines = [] {
        std::vector<ConstellationLine> v;
        const auto blob = Embedded_Data("constellation_lines");
        for (size_t i = 0; i + 8 <= blob.size(); i += 8)
            v.push_back({Read<int32_t>(blob.data() + i), Read<int32_t>(blob.data() + i + 4)});
        return v;
    }();
    return lines;
}

std::vector<Segment> Constellation_Line_Segments(const AtlasPlot& plot) {
    std::vector<Segment> out;
    const auto& pts = plot.Points;
    // An end beyond the stars plotted is mapped from its place, if that has been computed.
    auto end = [&](int32_t s, int32_t& x, int32_t& y) {
        x = y = 0;
        if (s >= 0 && static_cast<size_t>(s) < pts.size()) {
            x = pts[static_cast<size_t>(s)].X;
            y = pts[static_cast<size_t>(s)].Y;
        } else if (s >= 0 && static_cast<size_t>(s) < StarPlaces.size() && StarPlaces[static_cast<size_t>(s)].Done) {
            plot.Map(StarPlaces[static_cast<size_t>(s)].RA, StarPlaces[static_cast<size_t>(s)].Dec, x, y);
        }
        return x != 0 && y != 0;
    };
    for (const ConstellationLine& l : Constellation_Lines()) {
        int32_t ax = 0, ay = 0, bx = 0, by = 0;
        if (!end(l.A, ax, ay) || !end(l.B, bx, by)) continue;
        Add_Segment(plot, out, ax, ay, bx, by);
    }
    return out;
}

std::vector<Segment> Constellation_Boundary_Segments(const AtlasPlot& plot, double jd) {
    static BoundaryCache cache;
    // The boundaries move with precession: a day's change is far below a pixel.
    if (!(std::fabs(cache.JD - jd) < 1.0)) {
        cache.JD = jd;
        cache.Lines.clear();
        const auto blob = Embedded_Data("constellation_bounds");
        for (size_t at = 0; at + 2 <= blob.size();) {
            const uint16_t n = Read<uint16_t>(blob.data() + at);
            at += 2;
            std::vector<std::pair<double, double>> line;
            for (uint16_t k = 0; k < n && at + 8 <= blob.size(); ++k, at += 8) {
                double ra = Read<float>(blob.data() + at), dec = Read<float>(blob.data() + at + 4);
                Calc_Star_Place(0, ra, dec, jd);
                line.emplace_back(ra, dec);
            }
            cache.Lines.push_back(std::move(line));
        }
    }
    std::vector<Segment> out;
    for (const auto& line : cache.Lines) {
        int32_t px = 0, py = 0;
        for (size_t k = 0; k < line.size(); ++k) {
            int32_t x = 0, y = 0;
            plot.Map(line[k].first, line[k].second, x, y);
            if (k > 0) Add_Segment(plot, out, px, py, x, y);
            px = x;
            py = y;
        }
    }
    return out;
}

std::vector<LabelSpot> Constellation_Label_Spots(const AtlasPlot& plot) {
    std::vector<LabelSpot> out;
    const bool full = plot.View.Zoom >= 4;
    for (size_t k = 1; k <= 89; ++k) {
        const double ra = (360.0 - ConstellationLabel[k][0]) * kOneDegree;
        const double dec = ConstellationLabel[k][1] * kOneDegree;
        LabelSpot spot;
        if (!plot.Map(ra, dec, spot.X, spot.Y)) continue;
        if (k == 89) {
            spot.Text = full ? "Serpens" : "Ser";
        } else {
            spot.Text = full ? Constellation_Name[k] : Constellation_Abbrev[k];
        }
        out.push_back(std::move(spot));
    }
    return out;
}

}  // namespace kelmoran
