#include "voyage/M_Clox.h"

#include <cmath>
#include <cstdlib>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Navigation.h"
#include "voyage/Plan_Text.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

// A voyage of more than ten years is not sailed; the table stops there.
constexpr int kMaxDays = 3660;

// The plan's own position at `t`, whatever the settings' method.
void Plan_Position(const VoyagePlan& plan, double t, float& lat, float& lon) {
    SettingsRecord s;
    s.PositionMethod = kDRByPlan;
    float course = 0;
    float speed = 0;
    Get_Position(s, plan, t, lat, lon, course, speed);
}

}  // namespace

int Clox_Day_Count(const VoyagePlan& plan) {
    const double span = plan.Plan_End() - plan.Plan_Start();
    if (!(span > 0)) return 1;
    return static_cast<int>(std::min(std::floor(span), static_cast<double>(kMaxDays - 1))) + 1;
}

double Clox_Entry_Time(const VoyagePlan& plan, int day) {
    return plan.Plan_Start() + day * 1440.0 / 1440.0;
}

std::optional<int32_t> Parse_Zone_Text(const std::string& text) {
    if (text == "GMT") return 0;
    if (text.size() < 3 || text[0] != 'Z' || (text[1] != '+' && text[1] != '-')) return {};
    char* end = nullptr;
    const double hours = std::strtod(text.c_str() + 2, &end);
    if (end == text.c_str() + 2 || *end != '\0' || !(hours >= 0 && hours <= 24)) return {};
    const int32_t minutes = static_cast<int32_t>(std::lround(hours * 60.0));
    return text[1] == '-' ? -minutes : minutes;
}

int32_t Ship_Time_After(const std::string& d, int32_t zone) {
    const std::string markers[] = {clox_text::Retarded, clox_text::Advanced,
                                   clox_text::DateChange};
    for (const std::string& m : markers) {
        const std::size_t at = d.rfind(m);
        if (at == std::string::npos) continue;
        const std::size_t colon = d.find(clox_text::Separator, at);
        if (colon == std::string::npos) continue;
        std::string value = d.substr(colon + 2);
        const std::size_t stop = value.find_first_of("; ");
        if (stop != std::string::npos) value.resize(stop);
        if (auto z = Parse_Zone_Text(value)) zone = *z;
        break;
    }
    return zone;
}

int32_t Row_Ship_Time(const VoyagePlan& plan, int row) {
    int32_t zone = plan.Header.ETD_Minutes;
    for (int i = 0; i <= row && i < plan.Row_Count(); ++i)
        zone = Ship_Time_After(plan.Way_Points[static_cast<size_t>(i)].Description, zone);
    return zone;
}

std::string Clock_Change_Text(int32_t before, int32_t after) {
    const int32_t diff = after - before;
    if (diff == 0) return "";
    std::string text;
    if (std::abs(diff) > 720) {
        // Across the date line the zone moves by about a day; what is left over is a
        // change of the clocks as well.
        const int32_t rest = diff > 0 ? diff - 1440 : diff + 1440;
        text = clox_text::DateChange;
        if (rest != 0) text += clox_text::AndClocks;
    } else {
        text = diff < 0 ? clox_text::Retarded : clox_text::Advanced;
    }
    return text + clox_text::Separator + Zone_Text(after);
}

void Calculate_Ship_Time(VoyagePlan& plan) {
    Plan_Undo.Push_Clox_State(plan);
    const int days = Clox_Day_Count(plan);
    plan.Ship_Time.assign(static_cast<size_t>(days), 0);
    for (int d = 0; d < days; ++d) {
        float lat = 0;
        float lon = 0;
        Plan_Position(plan, Clox_Entry_Time(plan, d), lat, lon);
        int32_t zone = static_cast<int32_t>(Round_Even(lon * kDegreesPerRadian / 15.0, 0)) * 60;
        const double hours = std::abs(zone) / 60.0;
        if (hours > 12.5) zone += zone > 0 ? -60 : 60;
        plan.Ship_Time[static_cast<size_t>(d)] = zone;
    }
}

void Take_Ship_Time_From_Plan(VoyagePlan& plan, bool undoStep) {
    if (undoStep) Plan_Undo.Push_Clox_State(plan);
    const int days = Clox_Day_Count(plan);
    plan.Ship_Time.assign(static_cast<size_t>(days), plan.Header.ETD_Minutes);
    for (int d = 0; d < days; ++d) {
        const double t = Clox_Entry_Time(plan, d);
        int row = 0;
        for (int i = 0; i < plan.Row_Count(); ++i) {
            const Way_Point& w = plan.Way_Points[static_cast<size_t>(i)];
            if (w.Row_Valid && w.Time <= t) row = i;
        }
        plan.Ship_Time[static_cast<size_t>(d)] = Row_Ship_Time(plan, row);
    }
}

void Apply_To_Voyage_Plan(VoyagePlan& plan) {
    Plan_Undo.Push_Plan_State(plan, true);
    int32_t before = plan.Header.ETD_Minutes;
    const std::vector<int32_t> table = plan.Ship_Time;
    for (std::size_t d = 0; d < table.size(); ++d) {
        const int32_t zone = table[d];
        const std::string text = Clock_Change_Text(before, zone);
        before = zone;
        if (text.empty()) continue;
        double t = Clox_Entry_Time(plan, static_cast<int>(d));
        if (t - std::floor(t) == 0.5) t += kOneMinute;
        // The first way point within the window takes the change.
        const double from = t - 10.0 / 24.0;
        const double to = t + 14.0 / 24.0;
        for (const Way_Point& w : plan.Way_Points) {
            if (w.Row_Valid && w.Time >= from && w.Time <= to) {
                t = w.Time;
                break;
            }
        }
        int match = -1;
        int after = -1;
        for (int i = 0; i < plan.Row_Count(); ++i) {
            const Way_Point& w = plan.Way_Points[static_cast<size_t>(i)];
            if (!w.Row_Valid) continue;
            if (std::fabs(w.Time - t) <= kCloxTolerance) {
                match = i;
                break;
            }
            if (w.Time < t) after = i;
        }
        if (match >= 0) {
            std::string& desc = plan.Way_Points[static_cast<size_t>(match)].Description;
            desc = desc.empty() ? text : desc + "; " + text;
            continue;
        }
        if (after < 0 || plan.Row_Count() >= 32767) continue;
        float lat = 0;
        float lon = 0;
        Plan_Position(plan, t, lat, lon);
        Way_Point w;
        w.Lat = lat;
        w.Long = lon;
        w.Speed = plan.Way_Points[static_cast<size_t>(after)].Speed;
        w.Show = plan.Way_Points[static_cast<size_t>(after)].Show;
        w.Description = text;
        plan.Way_Points.insert(plan.Way_Points.begin() + after + 1, w);
        plan.Texts.insert(plan.Texts.begin() + after + 1, Way_Point_Text{});
        for (Way_Point& x : plan.Way_Points) x.Position_Done = kFalse;
        plan.Test_Wpts_Valid();
        plan.Recalc_Plan();
    }
    plan.Recalc_Plan();
}

}  // namespace kelmoran
