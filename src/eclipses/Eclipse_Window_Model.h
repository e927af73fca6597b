// What the eclipse window shows, worked out without the window: the lines of its text
// panel, the minute chosen with "Select Time", the eclipse under a cell of the Moon Phases
// table, the circumstances at the observer's position and the plan of a lunar eclipse.
// The window paints these; it computes nothing itself.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "eclipses/M_Eclipse.h"

namespace kelmoran {

// One line of the text panel: its words and its time (blank where the phase does not occur).
struct EclipsePanelLine {
    std::string Label;
    std::string Time;
    std::string Tip;  // the tooltip of the line, or empty
};

// True for a row found as a solar eclipse.
inline bool Is_Solar(const EclipseRow& row) { return row.IsNewMoon != 0; }

// Zone time of MyJD `t` (UT) with `bias` minutes, rounded to the minute by the banker's
// rule, as "HH:mm"; "" for a time of 0 (an event that does not happen).
std::string Eclipse_Time_Text(double t, int32_t bias);

// The text panel of row `i` of `table`, in order: the title ("Solar Eclipse" or "Lunar
// Eclipse" with the date label), the phases' starts, "Maximim Eclipse", the phases' ends;
// then the kind, Gamma, and for a central solar eclipse the ratio of the diameters and the
// duration of the central phase at greatest eclipse, for a total lunar eclipse its total
// phase.
std::vector<EclipsePanelLine> Eclipse_Panel_Lines(const EclipseTable& table, int i,
                                                  int32_t bias);

// The print's title: the kind with " @ " before the zone time of greatest eclipse
// ("Total Solar Eclipse @ 18:17"); and its table, the seven phases' starts and ends in
// order with their zone times ("" where a phase does not occur).
std::string Eclipse_Print_Title(const EclipseTable& table, int i, int32_t bias);
std::vector<EclipsePanelLine> Eclipse_Print_Lines(const EclipseTable& table, int i, int32_t bias);

// The eclipse as seen from the observer at geodetic `lat`, `lon` (radians).
struct LocalPanel {
    std::vector<EclipsePanelLine> Lines;  // the panel's block for the observer
    bool Seen = false;
};
LocalPanel Eclipse_Local_Lines(const EclipseTable& table, int i, double lat, double lon,
                               int32_t bias);

// The first and last minutes that "Select Time" may show for row `i` (MyJD, whole minutes
// of UT), and the minute it starts on (the greatest eclipse).
struct EclipseMinutes {
    double First = 0.0;
    double Last = 0.0;
    double Start = 0.0;
};
EclipseMinutes Eclipse_Minutes(const EclipseTable& table, int i);
// `t` moved by `steps` minutes and held within the eclipse's minutes.
double Step_Eclipse_Minute(const EclipseMinutes& m, double t, int steps);

// The row of `table` whose eclipse is marked in the Moon Phases cell of month `month`
// (1 .. 12) and grid column `column` (1 .. 4 the first New, First Quarter, Full, Last
// Quarter of the month, 5 .. 8 the second, 9 the month's eclipses: its first), with zone
// bias `bias`; -1 when the cell holds no eclipse.
int Eclipse_Row_At_Cell(const EclipseTable& table, int month, int column, int32_t bias);

// The plan of a lunar eclipse: the Earth's shadow at the centre and the Moon at the start
// of the penumbral phase, at maximum and at its end, in minutes of arc from the shadow's
// centre (x east to the left, so negative east; y north).
struct LunarPlanMoon {
    double X = 0.0;
    double Y = 0.0;
    std::string Label;  // "Pen In 14:22", "Max 16:00", "Pen Out 17:38"
};
struct LunarPlan {
    double UmbraRadius = 0.0;     // minutes of arc
    double PenumbraRadius = 0.0;  // minutes of arc
    double MoonRadius = 0.0;      // minutes of arc
    double Extent = 0.0;          // half the side of the square the plan shows, minutes of arc
    std::vector<LunarPlanMoon> Moons;
};
LunarPlan Lunar_Eclipse_Plan(const EclipseRow& row, int32_t bias);

// The plan of a solar eclipse: the Earth's disc as the Sun sees it (the plane through the
// Earth's centre square to the shadow axis, km, x east, y north), its poles, and the Moon's
// penumbra and umbra at the first contact, the greatest eclipse and the last contact. It
// shows the shadow's track plainly where the map cannot: over a pole.
struct SolarPlanShadow {
    double X = 0.0;
    double Y = 0.0;
    double Penumbra = 0.0;  // km
    double Umbra = 0.0;     // km
    std::string Label;      // "Pen In 15:42", "Max 18:17", "Pen Out 20:52"
};
struct SolarPlan {
    double EarthRadius = 0.0;  // km
    double PoleX = 0.0;        // the pole that faces the Sun, km
    double PoleY = 0.0;
    bool NorthPole = true;     // which pole that is
    double Extent = 0.0;       // half the side of the square the plan shows, km
    std::vector<SolarPlanShadow> Shadows;
};
SolarPlan Solar_Eclipse_Plan(const EclipseTable& table, int i, int32_t bias);

}  // namespace kelmoran
