// The geometry of the plotting sheet of the Sights screen: its scale, the graticule and the
// scale bar, each position line through its foot with its arrow towards the body and its
// label, the marks of a transferred line, and the fix, ITP or DR with its ellipse exactly
// as the fix calculation returns them. Painting is the drawing layer's; everything here is
// in pixels of the sheet, origin at its top left, x to the east and y to the south, and
// the centre of the sheet stands for the DR at the fix time.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "shell/Geometry.h"
#include "sights/Sight_Fix.h"

namespace kelmoran {

// The step of the graticule in minutes of arc and the interval of its labels in steps.
struct Graticule_Scale {
    double Step = 1.0;
    int Label_Interval = 1;
};

// With x = 100 ÷ plotScale ÷ 60 (minutes of arc for 100 pixels) the step is 0'.1 when
// x ≤ 0.25, 0'.5 when x ≤ 0.75, 1' when x ≤ 1.5, 5' when x ≤ 7.5, 10' when x ≤ 12.5, 30'
// when x < 45, else 60'. Labels go on every second step when the steps stand closer than
// 70 pixels.
Graticule_Scale Calc_Graticule_Scale(float plotScale);

// A label of the scale bar for `minutes` on a bar of steps of `step` minutes: "#0'.0"
// below 5', "#0'" below 60', whole degrees ("1°") at 60'; "0" at the start.
std::string Scale_Label(double minutes, double step);

// The sheet's scale in pixels per second of arc for the set: the feet of the lines, the
// fix and its ellipse fill at most four tenths of the smaller side, and at least one
// minute of arc is shown that way.
float Choose_Plot_Scale(const SightSet& set, int width, int height, Ellipse_Size size);

struct Sheet_Text {
    Rect Box;
    std::string Text;
};

// One position line on the sheet.
struct Sheet_Line {
    int Row = 0;
    Sheet_Point Foot;        // the intercept terminal point
    Sheet_Point End1, End2;  // where the line leaves the sheet
    bool Crosses = false;    // some part of the line lies on the sheet
    // The arrow towards the body: its tail on the line, its head, and the two barbs.
    Sheet_Point Arrow_Tail, Arrow_Head, Barb1, Barb2;
    // A line carried from the DR of its own time to that of the fix time is marked by a
    // pair of chevrons at each of these points, pointing along the line.
    bool Transferred = false;
    std::array<Sheet_Point, 2> Transfer_Marks{};
    double Line_Dx = 1, Line_Dy = 0;  // unit direction of the line on the sheet
    Sheet_Text Label;                 // the body's name beside the foot
};

// Everything the sheet shows, worked at one repaint.
struct Sheet_Plot {
    int Width = 0, Height = 0;
    float Plot_Scale = 0;
    Graticule_Scale Grid;
    std::vector<int> Grid_X, Grid_Y;  // the graticule's lines, through the centre
    int Scale_Step_Pixels = 0;        // the scale bar: steps of the graticule's step
    int Scale_Steps = 0;
    Sheet_Point Scale_Start;          // left end of the bar, on its base line
    std::vector<Sheet_Text> Scale_Labels;
    Sheet_Point Centre;               // the DR at the fix time
    std::vector<Sheet_Line> Lines;
    Fix_Result Fix;                   // the fix, ellipse and kind of position
    Sheet_Text Fix_Label;             // Type_of_Fix beside the cross
};

// Width in pixels of a text in the sheet's font, and the font's height.
struct Sheet_Font {
    std::function<int(const std::string&)> Width;
    int Height = 15;
};

// The label of a line whose foot is at `foot`, the foot lying at `azimuth` radians from
// the centre: the eight sectors bounded at 0.3927, 1.178, 1.964, 2.749, 3.534, 4.32, 5.11
// and 5.891 radians give the corner of the foot it stands at; where the line runs through
// that corner it goes to the free corner beyond the foot, so that no line crosses its own
// label. A line that runs to the top of the sheet has its label raised 1.25 text heights.
Rect Label_Box(Sheet_Point foot, double azimuth, int textWidth, int textHeight);

// The sheet for `set` at `plotScale` on `width` by `height` pixels with the ellipse of
// `size`: graticule, scale bar, lines and fix.
Sheet_Plot PreparePlot(const SightSet& set, int width, int height, float plotScale,
                       Ellipse_Size size, const Sheet_Font& font);

}  // namespace kelmoran
