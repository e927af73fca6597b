// The geometry of the plotting sheet.
#include "sights/PlotSheet.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"

namespace kelmoran {

namespace {

constexpr int kArrowOffset = 40;   // the arrow's tail, along the line from the foot
constexpr int kArrowLength = 18;
constexpr int kBarbLength = 6;
constexpr int kTransferOffset = 70;  // the chevrons of a transferred line
constexpr int kLabelGap = 6;
constexpr int kScaleMargin = 12;    // the scale bar from the sheet's bottom left corner

int Round_Int(double v) { return static_cast<int>(std::lround(v)); }

// Where the line through (x0, y0) with direction (dx, dy) leaves the rectangle
// 0 .. w by 0 .. h, both ways. False when it misses the rectangle.
bool Clip_Line(double x0, double y0, double dx, double dy, int w, int h, Sheet_Point& a,
               Sheet_Point& b) {
    double lo = -1e12, hi = 1e12;
    auto slab = [&](double p, double d, double max) {
        if (std::fabs(d) < 1e-12) return p >= 0 && p <= max;
        double t1 = (0 - p) / d, t2 = (max - p) / d;
        if (t1 > t2) std::swap(t1, t2);
        lo = std::max(lo, t1);
        hi = std::min(hi, t2);
        return lo <= hi;
    };
    if (!slab(x0, dx, w) || !slab(y0, dy, h)) return false;
    a = {Round_Int(x0 + lo * dx), Round_Int(y0 + lo * dy)};
    b = {Round_Int(x0 + hi * dx), Round_Int(y0 + hi * dy)};
    return true;
}

// The name of a line's body as the sheet shows it: the Sun and the Moon by their short
// names, the others by the candidate's name.
std::string Sheet_Name(const Sight_Candidate& c) {
    return c.Body_Id < 4 && !c.Name2.empty() ? c.Name2 : c.Name;
}

double Centre_Of(const Rect& r, bool x) {
    return x ? (r.Left + r.Right) / 2.0 : (r.Top + r.Bottom) / 2.0;
}

}  // namespace

Graticule_Scale Calc_Graticule_Scale(float plotScale) {
    Graticule_Scale g;
    const double x = plotScale > 0 ? 100.0 / plotScale / 60.0 : 1e9;
    if (x <= 0.25)
        g.Step = 0.1;
    else if (x <= 0.75)
        g.Step = 0.5;
    else if (x <= 1.5)
        g.Step = 1;
    else if (x <= 7.5)
        g.Step = 5;
    else if (x <= 12.5)
        g.Step = 10;
    else if (x < 45)
        g.Step = 30;
    else
        g.Step = 60;
    const double pixels = g.Step * 60.0 * plotScale;
    g.Label_Interval = pixels < 70 ? 2 : 1;
    return g;
}

std::string Scale_Label(double minutes, double step) {
    if (minutes == 0) return "0";
    if (step < 5) return Format_Number(minutes, "#0'.0");
    if (step < 60) return Format_Number(minutes, "#0'");
    return Format_Number(minutes / 60.0, "#0") + "\u00B0";
}

float Choose_Plot_Scale(const SightSet& set, int width, int height, Ellipse_Size size) {
    // The extent, in seconds of arc, of what the sheet is to hold: a minute at least.
    double extent = 60.0;
    for (int row = 0; row <= set.Max_Sight(); ++row) {
        const Sight_Record& s = set.Sights[row];
        if (s.Has_Body == 0) continue;
        extent = std::max(extent, std::fabs(s.Intercept) * kArcsecPerRadian);
    }
    // The fix at a fine scale first: its offset and ellipse do not depend on the scale
    // beyond the rounding of a pixel.
    const Fix_Result f = Calc_Fix(set, 1.0f, width, height, size);
    extent = std::max(extent, std::hypot(f.dLat, f.dDep) * kArcsecPerRadian +
                                  std::max(f.Semi_Axis1, f.Semi_Axis2) * 60.0);
    const double room = 0.4 * std::max(std::min(width, height), 10);
    return static_cast<float>(room / extent);
}

Rect Label_Box(Sheet_Point foot, double azimuth, int w, int h) {
    double a = std::fmod(azimuth, kTwoPi);
    if (a < 0) a += kTwoPi;
    // The line runs (cos a, sin a) on the sheet: of the four quadrants round the foot, the
    // two whose signs multiply against those of its direction hold none of it.
    const double c = std::cos(a), s = std::sin(a);
    const double away_x = std::sin(a), away_y = -std::cos(a);  // from the DR through the foot
    int sx = 1, sy = 1;
    if (a < 0.3927 || a >= 5.891) {  // north: across the sheet, the label above
        sx = 1;
        sy = -1;
    } else if (a < 1.178) {  // north-east
        sx = 1;
        sy = -1;
    } else if (a < 1.964) {  // east: the line runs to the top, the label raised on its right
        sx = 1;
        sy = -1;
    } else if (a < 2.749) {  // south-east
        sx = 1;
        sy = 1;
    } else if (a < 3.534) {  // south: the label below
        sx = 1;
        sy = 1;
    } else if (a < 4.32) {  // south-west
        sx = -1;
        sy = 1;
    } else if (a < 5.11) {  // west: to the top, the label raised on its left
        sx = -1;
        sy = -1;
    } else {  // north-west
        sx = -1;
        sy = -1;
    }
    const double cs = c * s;
    if (std::fabs(cs) > 1e-9 && (cs > 0) == (sx * sy > 0)) {
        // The sector's quadrant holds the line: of the two free ones, the one beyond the
        // foot as seen from the DR.
        const int q = cs > 0 ? -1 : 1;
        if (away_x + q * away_y >= -away_x - q * away_y) {
            sx = 1;
            sy = q;
        } else {
            sx = -1;
            sy = -q;
        }
    }
    const int lift = std::abs(a - kHalfPi) < 0.3927 || std::abs(a - 3 * kHalfPi) < 0.3927
                         ? Round_Int(0.25 * h)
                         : 0;  // a line to the top: its label 1.25 heights up
    const int left = sx > 0 ? foot.x + kLabelGap : foot.x - kLabelGap - w;
    const int top = sy > 0 ? foot.y + kLabelGap / 2 : foot.y - kLabelGap / 2 - h - lift;
    return {left, top, left + w, top + h};
}

Sheet_Plot PreparePlot(const SightSet& set, int width, int height, float plotScale,
                       Ellipse_Size size, const Sheet_Font& font) {
    Sheet_Plot p;
    p.Width = width;
    p.Height = height;
    p.Plot_Scale = plotScale;
    p.Grid = Calc_Graticule_Scale(plotScale);
    p.Centre = {Round_Int(width / 2.0), Round_Int(height / 2.0)};
    auto textWidth = [&](const std::string& s) {
        return font.Width ? font.Width(s) : 8 * static_cast<int>(s.size());
    };

    // The graticule: lines a step apart through the centre.
    const double stepPx = p.Grid.Step * 60.0 * plotScale;
    if (stepPx >= 4) {
        for (int k = -static_cast<int>(p.Centre.x / stepPx); p.Centre.x + k * stepPx <= width;
             ++k)
            p.Grid_X.push_back(Round_Int(p.Centre.x + k * stepPx));
        for (int k = -static_cast<int>(p.Centre.y / stepPx); p.Centre.y + k * stepPx <= height;
             ++k)
            p.Grid_Y.push_back(Round_Int(p.Centre.y + k * stepPx));
    }
    // The scale bar along the bottom, at most four tenths of the width.
    p.Scale_Step_Pixels = Round_Int(stepPx);
    p.Scale_Steps =
        stepPx > 0 ? std::clamp(static_cast<int>(0.4 * width / stepPx), 1, 10) : 0;
    p.Scale_Start = {kScaleMargin, height - kScaleMargin};
    for (int k = 0; k <= p.Scale_Steps; k += p.Grid.Label_Interval) {
        const std::string text = Scale_Label(k * p.Grid.Step, p.Grid.Step);
        const int w = textWidth(text);
        const int x = p.Scale_Start.x + Round_Int(k * stepPx);
        p.Scale_Labels.push_back(
            {{x - w / 2, p.Scale_Start.y - 8 - font.Height, x - w / 2 + w, p.Scale_Start.y - 8},
             text});
    }

    for (int row = 0; row <= set.Max_Sight(); ++row) {
        const Sight_Record& s = set.Sights[row];
        const Candidate_List& list = set.Candidates[row];
        if (s.Has_Body == 0 || s.Candidate_No < 0 ||
            s.Candidate_No >= static_cast<int32_t>(list.size()))
            continue;
        const Sight_Candidate& c = list[s.Candidate_No];
        Sheet_Line L;
        L.Row = row;
        // Seconds of arc towards the body; a line away from it turns the azimuth round.
        double i = -static_cast<double>(c.Cand_Intercept) * kArcsecPerRadian;
        const double bodyAz = c.Cand_Az / kDegreesPerRadian;
        double az = bodyAz;
        if (i < 0) {
            az += kPi;
            if (az >= kTwoPi) az -= kTwoPi;
            i = -i;
        }
        const double fx = p.Centre.x + std::sin(az) * i * plotScale;
        const double fy = p.Centre.y - std::cos(az) * i * plotScale;
        L.Foot = {Round_Int(fx), Round_Int(fy)};
        // The line runs at the azimuth + 90°: on the sheet (cos Az, sin Az).
        L.Line_Dx = std::cos(bodyAz);
        L.Line_Dy = std::sin(bodyAz);
        L.Crosses = Clip_Line(fx, fy, L.Line_Dx, L.Line_Dy, width, height, L.End1, L.End2);
        const std::string name = Sheet_Name(c);
        L.Label = {Label_Box(L.Foot, az, textWidth(name), font.Height), name};
        // The arrow stands on the line on the side away from the label.
        const double lx = Centre_Of(L.Label.Box, true) - fx, ly = Centre_Of(L.Label.Box, false) - fy;
        const double side = (lx * L.Line_Dx + ly * L.Line_Dy) > 0 ? -1.0 : 1.0;
        const double tx = fx + side * kArrowOffset * L.Line_Dx;
        const double ty = fy + side * kArrowOffset * L.Line_Dy;
        const double ux = std::sin(bodyAz), uy = -std::cos(bodyAz);
        const double hx = tx + kArrowLength * ux, hy = ty + kArrowLength * uy;
        L.Arrow_Tail = {Round_Int(tx), Round_Int(ty)};
        L.Arrow_Head = {Round_Int(hx), Round_Int(hy)};
        L.Barb1 = {Round_Int(hx - kBarbLength * ux + kBarbLength * 0.6 * uy),
                   Round_Int(hy - kBarbLength * uy - kBarbLength * 0.6 * ux)};
        L.Barb2 = {Round_Int(hx - kBarbLength * ux - kBarbLength * 0.6 * uy),
                   Round_Int(hy - kBarbLength * uy + kBarbLength * 0.6 * ux)};
        L.Transferred = s.DR_Lat != set.Fix_Sight.DR_Lat || s.DR_Long != set.Fix_Sight.DR_Long;
        L.Transfer_Marks = {
            Sheet_Point{Round_Int(fx - side * kTransferOffset * L.Line_Dx),
                        Round_Int(fy - side * kTransferOffset * L.Line_Dy)},
            Sheet_Point{Round_Int(fx + side * (kArrowOffset + kTransferOffset) * L.Line_Dx),
                        Round_Int(fy + side * (kArrowOffset + kTransferOffset) * L.Line_Dy)}};
        p.Lines.push_back(std::move(L));
    }

    p.Fix = Calc_Fix(set, plotScale, width, height, size);
    const Sheet_Point at = p.Fix.Circle_Centre;
    const int w = textWidth(p.Fix.Type_of_Fix);
    p.Fix_Label = {{at.x + kFixCrossHalf + 2, at.y - kFixCrossHalf - font.Height,
                    at.x + kFixCrossHalf + 2 + w, at.y - kFixCrossHalf},
                   p.Fix.Type_of_Fix};
    return p;
}

}  // namespace kelmoran
