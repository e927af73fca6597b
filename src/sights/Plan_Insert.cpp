// A position of the Sights screen put into the voyage plan.
#include "sights/Plan_Insert.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "sights/Sight_Fix.h"
#include "voyage/Plan_Undo.h"

namespace kelmoran {

namespace {

constexpr double kHalfMinute = 0.5 / 1440.0;
constexpr const char* kCrLf = "\r\n";

// The words a former insert may have left in a description, longest first so that
// "Mean ITP" goes before "ITP" could break it.
constexpr std::array<const char*, 4> kInsertWords = {plan_insert_text::CelestialFix,
                                                     fix_text::MeanITP, fix_text::ITP,
                                                     fix_text::DR};

void Place(Way_Point& w, float lat, float lon) {
    w.Lat = std::clamp(static_cast<double>(lat), -kHalfPi, kHalfPi);
    w.Long = lon;
    w.Position_Done = kFalse;
    w.Mer_Parts = 0;
}

// The last valid row before `r`, or -1.
int Valid_Before(const VoyagePlan& plan, int r) {
    for (int i = r - 1; i >= 0; --i)
        if (plan.Way_Points[static_cast<size_t>(i)].Row_Valid) return i;
    return -1;
}

}  // namespace

std::string Plan_Fix_Word(const std::string& typeOfFix) {
    return typeOfFix == fix_text::Fix ? plan_insert_text::CelestialFix : typeOfFix;
}

std::string Plan_Description(const std::string& former, const std::string& typeOfFix) {
    std::string d = former;
    for (const char* word : kInsertWords) {
        const std::string w = word;
        for (size_t at = d.find(w); at != std::string::npos; at = d.find(w)) d.erase(at, w.size());
    }
    // What a former insert joined on goes with it.
    while (!d.empty() && (d.back() == ' ' || d.back() == '/')) d.pop_back();
    const std::string word = Plan_Fix_Word(typeOfFix);
    return d.empty() ? word : d + "/ " + word;
}

int Plan_Row_At(const VoyagePlan& plan, double t) {
    for (int i = 0; i < plan.Row_Count(); ++i) {
        const Way_Point& w = plan.Way_Points[static_cast<size_t>(i)];
        if (w.Row_Valid && std::fabs(w.Time - t) <= kHalfMinute) return i;
    }
    return -1;
}

std::string Replace_Prompt(const VoyagePlan& plan, int row, double t, int32_t bias) {
    const MySystemTime date = JD_To_Date(t + bias / 1440.0);
    std::string text = plan_insert_text::Exists + std::string("(") +
                       Format_Date_Mask(date, "dd mmm yyyy HH:mm") + ")" + kCrLf +
                       plan_insert_text::Change;
    if (row >= 0 && row < plan.Row_Count() && plan.Way_Points[static_cast<size_t>(row)].Row_Locked)
        text += std::string(kCrLf) + plan_insert_text::Unlock + std::to_string(row + 1) + "!";
    return text;
}

Insert_Result Insert_Position_In_Plan(
    VoyagePlan& plan, double t, float lat, float lon, const std::string& typeOfFix,
    int32_t bias, const std::function<bool(const std::string&, const std::string&)>& ask) {
    plan.Test_Wpts_Valid();
    const int existing = Plan_Row_At(plan, t);
    if (existing >= 0) {
        if (ask && !ask(Replace_Prompt(plan, existing, t, bias), plan_insert_text::Title))
            return Insert_Result::Declined;
        Plan_Undo.Push_Plan_State(plan, true, screen_key::NavPlan);
        Way_Point& w = plan.Way_Points[static_cast<size_t>(existing)];
        Place(w, lat, lon);
        w.Description = Plan_Description(w.Description, typeOfFix);
        w.Row_Locked = kFalse;
        for (Way_Point& p : plan.Way_Points) p.Position_Done = kFalse;
        plan.Recalc_Plan();
        return Insert_Result::Replaced;
    }

    Plan_Undo.Push_Plan_State(plan, true, screen_key::NavPlan);
    // After the last way point reached before the time; a blank row there is taken.
    int r = 0;
    for (int i = 0; i < plan.Row_Count(); ++i) {
        const Way_Point& w = plan.Way_Points[static_cast<size_t>(i)];
        if (w.Row_Valid && w.Time < t) r = i + 1;
    }
    const bool anyValid = plan.Any_Way_Point_In_Use();
    if (r >= plan.Row_Count() || (anyValid && plan.Way_Points[static_cast<size_t>(r)].Row_Valid)) {
        plan.Way_Points.insert(plan.Way_Points.begin() + r, Way_Point{});
        plan.Texts.insert(plan.Texts.begin() + r, Way_Point_Text{});
    }
    const int before = Valid_Before(plan, r);
    Way_Point& w = plan.Way_Points[static_cast<size_t>(r)];
    Place(w, lat, lon);
    w.Description = Plan_Description(w.Description, typeOfFix);
    w.Row_Locked = kTrue;
    if (before >= 0) {
        w.Speed = plan.Way_Points[static_cast<size_t>(before)].Speed;
        w.Show = plan.Way_Points[static_cast<size_t>(before)].Show;
    } else {
        w.Speed = plan.Header.Default_Speed;
        plan.Header.Plan_Start = t;
    }
    for (Way_Point& p : plan.Way_Points) p.Position_Done = kFalse;
    plan.Test_Wpts_Valid();
    plan.Recalc_Plan();

    // The legs from the last locked way point (or the start) take the speed that reaches
    // the new way point at its time.
    if (before >= 0) {
        int l = 0;
        for (int i = r - 1; i > 0; --i)
            if (plan.Way_Points[static_cast<size_t>(i)].Row_Locked) {
                l = i;
                break;
            }
        const Way_Point& from = plan.Way_Points[static_cast<size_t>(l)];
        const double hours = (t - from.Time) * 24.0;
        const double v = (plan.Way_Points[static_cast<size_t>(r)].Total_Distance -
                          from.Total_Distance) / hours;
        if (std::isfinite(v) && v >= 0.01) {
            for (int i = l; i < r; ++i) plan.Way_Points[static_cast<size_t>(i)].Speed =
                                            static_cast<float>(v);
            plan.Recalc_Plan();
        }
    }
    return Insert_Result::Inserted;
}

}  // namespace kelmoran
