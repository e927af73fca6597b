// The constellations on the atlas: the figure lines joining their stars, the positions of
// their names, and the IAU boundaries, each turned into pixels through the atlas's map.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "stars/M_Plotting.h"

namespace kelmoran {

// A figure line: a pair of star indices.
struct ConstellationLine {
    int32_t A = 0, B = 0;
};
// The figure lines of the western sky culture, loaded on first use.
const std::vector<ConstellationLine>& Constellation_Lines();
// The faintest star the figures join: the atlas computes places at least that far.
int32_t Highest_Figure_Star();

// Where each constellation's name stands: S.H.A. and declination in whole degrees, rows 1
// to 88 by constellation number and row 89 the second part of Serpens.
extern const std::array<std::array<int16_t, 2>, 90> ConstellationLabel;

// A line on the bitmap.
struct Segment {
    int32_t X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
};

// The figure lines in the current plot: a line with an end not plotted is left out; in
// "Equatorial" a line across the wrap has one end moved by the wrap width so that it is
// drawn across the edge.
std::vector<Segment> Constellation_Line_Segments(const AtlasPlot& plot);

// The IAU boundaries precessed to `jd` (MyJD) in the current view, as short segments.
std::vector<Segment> Constellation_Boundary_Segments(const AtlasPlot& plot, double jd);

// The names: abbreviations below zoom 4, full names from zoom 4; each at its pixel.
struct LabelSpot {
    int32_t X = 0, Y = 0;
    std::string Text;
};
std::vector<LabelSpot> Constellation_Label_Spots(const AtlasPlot& plot);

}  // namespace kelmoran
