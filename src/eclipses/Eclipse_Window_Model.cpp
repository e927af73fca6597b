#include "eclipses/Eclipse_Window_Model.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "eclipses/M_Eclipse_Lunar.h"
#include "eclipses/M_Eclipse_Solar.h"
#include "ephemeris/Bodies.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"

namespace kelmoran {

using namespace eclipse;

std::string Eclipse_Time_Text(double t, int32_t bias) {
    if (t == 0.0 || !std::isfinite(t)) return {};
    return Format_Time_Of_Day(Zone_Minute(t, bias), false);
}

namespace {

std::string Minutes_Text(double days) {
    const double seconds = std::round(days * 86400.0);
    const int m = static_cast<int>(seconds / 60.0);
    const int s = static_cast<int>(seconds - 60.0 * m);
    return std::to_string(m) + "m " + Format_Number(s, "00") + "s";
}

std::string Degrees_Text(double radians) {
    return Format_Number(radians * kDegreesPerRadian, "#0.0") + "\xC2\xB0";
}

}  // namespace

std::vector<EclipsePanelLine> Eclipse_Panel_Lines(const EclipseTable& table, int i,
                                                  int32_t bias) {
    std::vector<EclipsePanelLine> lines;
    if (i < 0 || i >= table.Count) return lines;
    const EclipseRow& r = table.Rows[static_cast<size_t>(i)];
    const EclipseSpeed& sp = table.Speed[static_cast<size_t>(i)];
    const auto at = [bias](const EclipseEvent& e) { return Eclipse_Time_Text(e.Time, bias); };
    if (Is_Solar(r)) {
        lines.push_back({"Solar Eclipse", r.DateLabel, {}});
        lines.push_back({"Partial phase start:", at(r.FirstContact), {}});
        lines.push_back({"Total phase start:", at(r.PartialStart), {}});
        lines.push_back({"Maximim Eclipse", at(r.Maximum), {}});
        lines.push_back({"Total phase end:", at(r.PartialEnd), {}});
        lines.push_back({"Partial phase end:", at(r.LastContact), {}});
    } else {
        lines.push_back({"Lunar Eclipse", r.DateLabel, {}});
        lines.push_back({"Penumbral phase start:", at(r.FirstContact), {}});
        lines.push_back({"Partial phase start:", at(r.PartialStart), {}});
        lines.push_back({"Maximim Eclipse", at(r.Maximum), {}});
        lines.push_back({"Partial phase end:", at(r.PartialEnd), {}});
        lines.push_back({"Penumbral phase end:", at(r.LastContact), {}});
    }
    lines.push_back({sp.Kind, {}, {}});
    lines.push_back({"Gamma:", Format_Number(r.Gamma, "0.0000"), {}});
    if (Is_Solar(r) && r.PartialStart.Time != 0.0) {
        // At the place of greatest eclipse: the Moon's apparent diameter against the
        // Sun's, and how long the central phase lasts there.
        const EclipseInstant& m = table.Instants[static_cast<size_t>(i)][kInstantMaximum];
        const double dS = m.Sun.Distance * AU;
        const double ratio = (MoonRadius / (m.Moon.Distance - EarthRadius)) / (SunRadius / dS);
        lines.push_back({"Diameter ratio:", Format_Number(ratio, "0.0000"), "< 1 = Annular Eclipse"});
        GeoPoint g;
        if (Shadow_Point_Place(m, m.AxisDistance, m.PositionAngle, g)) {
            const LocalEclipse l =
                Local_Solar_Eclipse(g.Lat, g.Lon, r.FirstContact.Time, r.LastContact.Time);
            if (l.Central && l.SecondContact != 0.0 && l.ThirdContact != 0.0)
                lines.push_back({"Duration:", Minutes_Text(l.ThirdContact - l.SecondContact),
                                 "Duration of the Total Eclipse"});
            lines.push_back({"Greatest at:", Format_Lat(g.Lat, 0, false) + " " +
                                                 Format_Long(g.Lon, 0, false), {}});
        }
    } else if (!Is_Solar(r) && r.TotalStart.Time != 0.0) {
        lines.push_back({"Total phase:", at(r.TotalStart) + " - " + at(r.TotalEnd), {}});
        lines.push_back({"Duration:", Minutes_Text(r.TotalEnd.Time - r.TotalStart.Time),
                         "Duration of the Total Eclipse"});
    }
    return lines;
}

std::string Eclipse_Print_Title(const EclipseTable& table, int i, int32_t bias) {
    if (i < 0 || i >= table.Count) return {};
    const EclipseRow& r = table.Rows[static_cast<size_t>(i)];
    return table.Speed[static_cast<size_t>(i)].Kind + " @ " + Eclipse_Time_Text(r.Maximum.Time, bias);
}

std::vector<EclipsePanelLine> Eclipse_Print_Lines(const EclipseTable& table, int i, int32_t bias) {
    std::vector<EclipsePanelLine> lines;
    if (i < 0 || i >= table.Count) return lines;
    const EclipseRow& r = table.Rows[static_cast<size_t>(i)];
    const std::array<std::pair<const char*, const EclipseEvent*>, 7> phases = {{
        {"Start of Penumbral Phase", &r.FirstContact},
        {"Start of Partial Phase", &r.PartialStart},
        {"Start of Total Phase", &r.TotalStart},
        {"Maximim Eclipse", &r.Maximum},
        {"End of Total Phase", &r.TotalEnd},
        {"End of Partial Phase", &r.PartialEnd},
        {"End of Penumbral Phase", &r.LastContact},
    }};
    for (const auto& [label, event] : phases)
        lines.push_back({label, Eclipse_Time_Text(event->Time, bias), {}});
    return lines;
}

LocalPanel Eclipse_Local_Lines(const EclipseTable& table, int i, double lat, double lon,
                               int32_t bias) {
    LocalPanel out;
    if (i < 0 || i >= table.Count) return out;
    const EclipseRow& r = table.Rows[static_cast<size_t>(i)];
    out.Lines.push_back({"At " + Format_Lat(lat, 0, false) + " " + Format_Long(lon, 0, false),
                         {}, {}});
    if (Is_Solar(r)) {
        const LocalEclipse l =
            Local_Solar_Eclipse(lat, lon, r.FirstContact.Time, r.LastContact.Time);
        out.Seen = l.Eclipsed && l.Visible;
        if (!l.Eclipsed) {
            out.Lines.push_back({"No eclipse here", {}, {}});
            return out;
        }
        out.Lines.push_back({out.Seen ? "Seen here" : "Below the horizon here", {}, {}});
        out.Lines.push_back({"Begins:", Eclipse_Time_Text(l.FirstContact, bias), {}});
        if (l.Central)
            out.Lines.push_back({l.Annular ? "Annular from:" : "Total from:",
                                 Eclipse_Time_Text(l.SecondContact, bias), {}});
        out.Lines.push_back({"Maximum:", Eclipse_Time_Text(l.Maximum, bias), {}});
        if (l.Central)
            out.Lines.push_back({l.Annular ? "Annular to:" : "Total to:",
                                 Eclipse_Time_Text(l.ThirdContact, bias), {}});
        out.Lines.push_back({"Ends:", Eclipse_Time_Text(l.LastContact, bias), {}});
        out.Lines.push_back({"Magnitude:", Format_Number(l.Magnitude, "0.000"), {}});
        out.Lines.push_back({"Sun's altitude:", Degrees_Text(l.SunAltitude), {}});
        return out;
    }
    // A lunar eclipse has the same times everywhere: the question is whether the Moon is up.
    const EclipseWindow window(r.Maximum.Time);
    const auto altitude = [&](double t) {
        BodyPlace sun, moon;
        window.Places(t, sun, moon);
        AltAzResult a;
        Calc_AltAz(a, 3, static_cast<float>(lat), static_cast<float>(lon), moon);
        return std::pair<double, double>(a.TrueAlt, moon.Distance);
    };
    const double from = r.FirstContact.Time != 0.0 ? r.FirstContact.Time : r.Maximum.Time;
    const double to = r.LastContact.Time != 0.0 ? r.LastContact.Time : r.Maximum.Time;
    for (double t = from;; t += 10.0 * MinuteDays) {
        const double tt = std::min(t, to);
        const auto [alt, distance] = altitude(tt);
        // The Moon's upper limb on the horizon: its parallax against refraction and its radius.
        const double horizon = -std::asin(EarthRadius / distance) + 50.0 * kOneArcminute;
        if (alt > horizon) {
            out.Seen = true;
            break;
        }
        if (tt >= to) break;
    }
    out.Lines.push_back({out.Seen ? "Seen here" : "Moon below the horizon here", {}, {}});
    out.Lines.push_back({"Moon's altitude at max:", Degrees_Text(altitude(r.Maximum.Time).first), {}});
    return out;
}

EclipseMinutes Eclipse_Minutes(const EclipseTable& table, int i) {
    EclipseMinutes m;
    if (i < 0 || i >= table.Count) return m;
    const EclipseRow& r = table.Rows[static_cast<size_t>(i)];
    const auto minute = [](double t) { return Zone_Minute(t, 0); };
    m.Start = minute(r.Maximum.Time);
    m.First = r.FirstContact.Time != 0.0 ? std::ceil(r.FirstContact.Time * 1440.0) / 1440.0
                                         : m.Start;
    m.Last = r.LastContact.Time != 0.0 ? std::floor(r.LastContact.Time * 1440.0) / 1440.0
                                       : m.Start;
    m.Start = std::clamp(m.Start, m.First, std::max(m.First, m.Last));
    return m;
}

double Step_Eclipse_Minute(const EclipseMinutes& m, double t, int steps) {
    const double minute = Round_Even(t * 1440.0) + steps;
    return std::clamp(minute / 1440.0, m.First, std::max(m.First, m.Last));
}

int Eclipse_Row_At_Cell(const EclipseTable& table, int month, int column, int32_t bias) {
    if (column < 1 || column > 9 || month < 1 || month > 12) return -1;
    const int phase = (column - 1) % 4;
    const int group = (column - 1) / 4;  // 0 the first of its phase in the month, 1 the second
    if (column != 9 && phase != 0 && phase != 2) return -1;
    for (int i = 0; i < table.Count; ++i) {
        const EclipseRow& r = table.Rows[static_cast<size_t>(i)];
        const double zone = Zone_Minute(r.PhaseJD, bias);
        if (JD_To_Date(zone).wMonth != month) continue;
        if (column == 9) return i;
        if (Is_Solar(r) != (phase == 0)) continue;
        // The second of a phase in its month when the same phase a lunation earlier is in
        // the same month.
        const double before = Zone_Minute(Refine_Phase(r.PhaseJD - 29.530589, phase), bias);
        const int g = JD_To_Date(before).wMonth == month ? 1 : 0;
        if (g == group) return i;
    }
    return -1;
}

LunarPlan Lunar_Eclipse_Plan(const EclipseRow& row, int32_t bias) {
    LunarPlan plan;
    const EclipseEvent& m = row.Maximum;
    plan.UmbraRadius = m.UmbraRadius * kArcminPerRadian;
    plan.PenumbraRadius = m.PenumbraRadius * kArcminPerRadian;
    plan.MoonRadius = m.MoonSD * kArcminPerRadian;
    const auto moon = [&](const EclipseEvent& e, const char* name) {
        if (e.Time == 0.0) return;
        plan.Moons.push_back({-e.DeltaGHA * kArcminPerRadian, e.DeltaDec * kArcminPerRadian,
                              std::string(name) + " " + Eclipse_Time_Text(e.Time, bias)});
    };
    moon(row.FirstContact, "Pen In");
    moon(row.Maximum, "Max");
    moon(row.LastContact, "Pen Out");
    // The penumbra and the Moon beyond it, with the Moon's diameter to spare.
    plan.Extent = plan.PenumbraRadius + 2.0 * plan.MoonRadius;
    for (const LunarPlanMoon& p : plan.Moons)
        plan.Extent = std::max(plan.Extent, std::max(std::fabs(p.X), std::fabs(p.Y)) +
                                                2.0 * plan.MoonRadius);
    return plan;
}

SolarPlan Solar_Eclipse_Plan(const EclipseTable& table, int i, int32_t bias) {
    SolarPlan plan;
    if (i < 0 || i >= table.Count || !Is_Solar(table.Rows[static_cast<size_t>(i)])) return plan;
    const EclipseInstants& at = table.Instants[static_cast<size_t>(i)];
    const EclipseInstant& max = at[kInstantMaximum];
    plan.EarthRadius = EarthRadius;
    // Each shadow in the plane of the greatest eclipse, which turns little in the hours.
    const ShadowPlane plane(max);
    const double polar = EarthRadius * std::sqrt(GeocentricFactor);
    plan.NorthPole = plane.Project(0.0, 0.0, polar, plan.PoleX, plan.PoleY);
    if (!plan.NorthPole) plane.Project(0.0, 0.0, -polar, plan.PoleX, plan.PoleY);
    const auto shadow = [&](const EclipseInstant& e, const char* name) {
        if (e.Time == 0.0) return;
        const ShadowPlane own(e);
        plan.Shadows.push_back({own.AxisEast(), own.AxisNorth(), e.PenumbraRadius, e.UmbraRadius,
                                std::string(name) + " " + Eclipse_Time_Text(e.Time, bias)});
    };
    shadow(at[kInstantPenIn], "Pen In");
    shadow(max, "Max");
    shadow(at[kInstantPenOut], "Pen Out");
    plan.Extent = EarthRadius * 1.15;
    for (const SolarPlanShadow& s : plan.Shadows)
        plan.Extent = std::max(plan.Extent, std::max(std::fabs(s.X), std::fabs(s.Y)) + s.Penumbra);
    return plan;
}

}  // namespace kelmoran
