#include "voyage/Voyage_Plan.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "settings/Value_Checks.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Navigation.h"
#include "voyage/Plan_Text.h"
#include "voyage/Plan_Undo.h"
#include "voyage/VariationModel.h"

namespace kelmoran {

VoyagePlan Voyage;

namespace {

constexpr int kFreshRows = 11;
constexpr int kMaxRows = 32767;  // the file holds the highest row index as a signed 16-bit

bool In_Range(const VoyagePlan& p, int r) { return r >= 0 && r < p.Row_Count(); }

}  // namespace

std::string Way_Point_ID_Text(const std::string& id) {
    if (id == "R" || id == "r") return "Ra";
    if (id == "G" || id == "g") return "GPS";
    if (id == "V" || id == "v") return "Vis";
    if (id == "F" || id == "f") return "Fix";
    return id;
}

VoyagePlan::VoyagePlan() {
    Way_Points.resize(kFreshRows);
    Texts.resize(kFreshRows);
    Header.Title = plan_text::Untitled;
    Header.Path = plan_text::Untitled;
}

void VoyagePlan::New_Plan(double nowJD, float fixSpeed) {
    const Plan_Header old = Header;
    Header = Plan_Header{};
    Header.Plan_Start = std::nearbyint(nowJD * 1440.0) / 1440.0;
    Header.Plan_End = Header.Plan_Start;
    Header.Default_Speed = old.Default_Speed != 0 ? old.Default_Speed : fixSpeed;
    Header.Fixed_Speed_1 = old.Fixed_Speed_1;
    Header.Fixed_Speed_2 = old.Fixed_Speed_2;
    Header.Fixed_Speed_3 = old.Fixed_Speed_3;
    if (Header.Fixed_Speed_1 == 0) {
        Header.Fixed_Speed_1 = Header.Default_Speed - 1;
        if (!(Header.Fixed_Speed_1 > 0)) Header.Fixed_Speed_1 = 9.5f;
    }
    if (Header.Fixed_Speed_2 == 0) Header.Fixed_Speed_2 = std::min(Header.Fixed_Speed_1 + 1, 99.0f);
    if (Header.Fixed_Speed_3 == 0) Header.Fixed_Speed_3 = Header.Fixed_Speed_2 + 1;
    const int32_t zone = std::clamp<int32_t>(TZ_Bias, -1440, 1440);
    Header.ETD_Minutes = static_cast<int16_t>(zone);
    Header.ETA_Minutes = static_cast<int16_t>(zone);
    Header.ETD_Zone = Zone_Text(zone);
    Header.ETA_Zone = Header.ETD_Zone;
    Header.Title = plan_text::Untitled;
    Header.Path = plan_text::Untitled;
    Way_Points.assign(kFreshRows, Way_Point{});
    Texts.assign(kFreshRows, Way_Point_Text{});
    Extra_List.clear();
    Last_Value = 0;
    Ship_Time.clear();
    Shell.PlanChanged = kFalse;
    Recalc_Plan();
}

void VoyagePlan::Test_Wpts_Valid() {
    for (Way_Point& w : Way_Points)
        w.Row_Valid = (!w.ID.empty() || w.Lat != 0 || w.Long != 0) ? kTrue : kFalse;
}

int VoyagePlan::Last_Valid_Row() const {
    for (int i = Row_Count() - 1; i >= 0; --i)
        if (Way_Points[static_cast<size_t>(i)].Row_Valid) return i;
    return -1;
}

bool VoyagePlan::Any_Way_Point_In_Use() const { return Last_Valid_Row() >= 0; }

void VoyagePlan::Recalc_Plan() {
    const int n = Row_Count();
    if (n == 0) {
        Header.Plan_End = Header.Plan_Start;
        return;
    }
    Texts.resize(static_cast<size_t>(n));
    // Meridional parts, cleared sums, and the default speed for legs that have none.
    for (int i = 0; i < n; ++i) {
        Way_Point& w = Way_Points[static_cast<size_t>(i)];
        w.Total_Distance = 0;
        w.Running_Time = 0;
        if (!w.Row_Valid) w.Distance = 0;
        if (!(w.Lat != 0 && w.Position_Done)) w.Mer_Parts = 0;
        if (w.Lat != 0 && w.Mer_Parts == 0) w.Mer_Parts = Mer_Parts(static_cast<float>(w.Lat));
        if (i != n - 1 && w.Leg_Type != 'D' && w.Speed == 0) w.Speed = Header.Default_Speed;
    }
    // Course and distance of each leg, from one valid row to the next.
    for (int i = 0; i < n; ++i) {
        Way_Point& a = Way_Points[static_cast<size_t>(i)];
        if (!a.Row_Valid) continue;
        int j = i + 1;
        while (j < n && !Way_Points[static_cast<size_t>(j)].Row_Valid) ++j;
        if (j >= n) {
            a.Distance = 0;
            break;
        }
        const Way_Point& b = Way_Points[static_cast<size_t>(j)];
        if (a.Position_Done && b.Position_Done) continue;
        if (a.Lat == b.Lat && a.Long == b.Long) {
            a.Distance = 0;
        } else {
            Leg_Course_Distance(a, b, a.Course, a.Distance);
        }
    }
    for (Way_Point& w : Way_Points)
        if (w.Row_Valid) w.Position_Done = kTrue;
    // Running distance and time, the time and variation of each row.
    float d = 0;
    float h = 0;
    for (int i = 0; i < n; ++i) {
        Way_Point& w = Way_Points[static_cast<size_t>(i)];
        if (i > 0) {
            const Way_Point& p = Way_Points[static_cast<size_t>(i - 1)];
            d += p.Distance;
            // A "D" leg with no speed runs for its own leg time; no speed and no distance
            // adds nothing.
            if (p.Speed != 0) {
                h += p.Distance / p.Speed;
            } else if (p.Leg_Type == 'D') {
                h += p.Leg_Time;
            }
        }
        w.Total_Distance = static_cast<float>(Round_Even(d, 1));
        w.Running_Time = static_cast<float>(Round_Even(h * 60.0, 1) / 60.0);
        w.Time = Header.Plan_Start + h / 24.0;
        w.Distance = static_cast<float>(Round_Even(w.Distance, 1));
        if (w.Distance == 0 && w.Leg_Type != 'D') {
            w.Leg_Time = 0;
        } else if (w.Speed != 0) {
            w.Leg_Time = static_cast<float>(Round_Even(w.Distance / w.Speed * 60.0, 0) / 60.0);
        }
        if (w.Row_Valid) {
            Variation_Answer ans;
            Variation_Model().Calc({w.Time, static_cast<float>(w.Lat), static_cast<float>(w.Long)},
                                   ans);
            w.Variation = static_cast<float>(Round_Even(ans.Variation * kDegreesPerRadian, 1));
        }
    }
    Header.Plan_End = Way_Points.back().Time;
    // Rows after the last valid row, and rows in a gap, take the time and variation of the
    // row that follows them.
    const int last = Last_Valid_Row();
    if (last >= 0) {
        for (int i = last + 1; i < n; ++i) {
            Way_Points[static_cast<size_t>(i)].Time = Way_Points[static_cast<size_t>(last)].Time;
            Way_Points[static_cast<size_t>(i)].Variation =
                Way_Points[static_cast<size_t>(last)].Variation;
        }
        for (int i = last - 1; i >= 0; --i) {
            Way_Point& w = Way_Points[static_cast<size_t>(i)];
            if (w.Row_Valid) continue;
            w.Time = Way_Points[static_cast<size_t>(i + 1)].Time;
            w.Variation = Way_Points[static_cast<size_t>(i + 1)].Variation;
        }
    }
    const float total = Way_Points.back().Total_Distance;
    for (int i = 0; i < n; ++i) {
        Way_Point& w = Way_Points[static_cast<size_t>(i)];
        w.Distance_To_Go = total - w.Total_Distance;
        Fill_Row_Text(w, Texts[static_cast<size_t>(i)]);
    }
}

void VoyagePlan::Changed() { Plan_Undo.Push_Plan_State(*this, true); }

void VoyagePlan::Revalidate() {
    std::vector<int16_t> before;
    before.reserve(Way_Points.size());
    for (const Way_Point& w : Way_Points) before.push_back(w.Row_Valid);
    Test_Wpts_Valid();
    bool moved = false;
    for (size_t i = 0; i < Way_Points.size(); ++i)
        if ((before[i] != 0) != (Way_Points[i].Row_Valid != 0)) moved = true;
    // When rows start or stop holding a way point the legs join other rows.
    if (moved)
        for (Way_Point& w : Way_Points) w.Position_Done = kFalse;
}

void VoyagePlan::Edit_Speed(int r, float speed) {
    if (!In_Range(*this, r) || !Is_Ship_Speed(speed)) return;
    Changed();
    Way_Points[static_cast<size_t>(r)].Speed = speed;
    Recalc_Plan();
}

Plan_Message VoyagePlan::Edit_Main_ETA(double etaZoneJD, int16_t zoneMinutes) {
    const double eta = etaZoneJD - zoneMinutes / 1440.0;
    const int n = Row_Count();
    int l = 0;
    for (int i = n - 1; i >= 0; --i) {
        if (Way_Points[static_cast<size_t>(i)].Row_Locked) {
            l = i;
            break;
        }
    }
    const double start = l == 0 ? Header.Plan_Start : Way_Points[static_cast<size_t>(l)].Time;
    const double hours = (eta - start) * 24.0;
    if (hours == 0 || !std::isfinite(hours)) return {};
    const double v = Way_Points[static_cast<size_t>(l)].Distance_To_Go / hours;
    if (v < 0.01) return {plan_text::SpeedTooLow, plan_text::InputError};
    const float vf = static_cast<float>(v);
    bool same = true;
    for (int i = l; i < n; ++i)
        if (Way_Points[static_cast<size_t>(i)].Speed != vf) same = false;
    if (same) return {plan_text::SpeedChangeTooSmall, ""};
    Changed();
    for (int i = l; i < n; ++i) Way_Points[static_cast<size_t>(i)].Speed = vf;
    Header.ETA_Minutes = zoneMinutes;
    Header.ETA_Zone = Zone_Text(zoneMinutes);
    Recalc_Plan();
    return {};
}

bool VoyagePlan::Edit_Row_ETA(int r, double etaJD) {
    if (!In_Range(*this, r) || r == 0) return false;
    int l = 0;
    for (int i = r - 1; i > 0; --i) {
        if (Way_Points[static_cast<size_t>(i)].Row_Locked) {
            l = i;
            break;
        }
    }
    const Way_Point& wl = Way_Points[static_cast<size_t>(l)];
    if (!(etaJD > wl.Time)) return false;
    const double dist = Way_Points[static_cast<size_t>(r)].Total_Distance - wl.Total_Distance;
    const double v = dist / (etaJD - wl.Time) / 24.0;
    if (!(v >= 0.01) || !std::isfinite(v)) return false;
    Changed();
    for (int i = l; i < r; ++i) Way_Points[static_cast<size_t>(i)].Speed = static_cast<float>(v);
    Recalc_Plan();
    return true;
}

void VoyagePlan::Set_Speeds(float speed) {
    if (!Is_Ship_Speed(speed)) return;
    Changed();
    Header.Default_Speed = speed;
    int first = -1;
    for (int i = 0; i < Row_Count(); ++i) {
        if (Way_Points[static_cast<size_t>(i)].Row_Locked) {
            first = i;
            break;
        }
    }
    for (int i = first + 1; i < Row_Count(); ++i) Way_Points[static_cast<size_t>(i)].Speed = speed;
    Recalc_Plan();
}

void VoyagePlan::Edit_ETD(double etdZoneJD, int16_t zoneMinutes) {
    const double start = etdZoneJD - zoneMinutes / 1440.0;
    if (!std::isfinite(start)) return;
    if (start != Header.Plan_Start || zoneMinutes != Header.ETD_Minutes) Changed();
    Header.Plan_Start = start;
    Header.ETD_Minutes = zoneMinutes;
    Header.ETD_Zone = Zone_Text(zoneMinutes);
    Recalc_Plan();
}

void VoyagePlan::Edit_Position(int r, double lat, double lon) {
    if (!In_Range(*this, r) || !std::isfinite(lat) || !std::isfinite(lon)) return;
    Changed();
    Way_Point& w = Way_Points[static_cast<size_t>(r)];
    const bool wasValid = w.Row_Valid != 0;
    w.Lat = std::clamp(lat, -kHalfPi, kHalfPi);
    float l = static_cast<float>(lon);
    Normalise_Long(l);
    w.Long = std::fabs(lon) <= kPi ? lon : l;
    w.Position_Done = kFalse;
    w.Mer_Parts = 0;
    Revalidate();
    if (!wasValid && w.Row_Valid && r > 0) {
        w.Speed = Way_Points[static_cast<size_t>(r - 1)].Speed;
        w.Show = Way_Points[static_cast<size_t>(r - 1)].Show;
    }
    Recalc_Plan();
}

void VoyagePlan::Sail_From(int r, float courseDeg, float distance) {
    if (!In_Range(*this, r) || !std::isfinite(courseDeg) || !std::isfinite(distance)) return;
    Changed();
    if (r == Row_Count() - 1) {
        if (Row_Count() >= kMaxRows) return;
        Way_Points.emplace_back();
        Texts.emplace_back();
    }
    const Way_Point* from = &Way_Points[static_cast<size_t>(r)];
    if (!from->Row_Valid) {
        for (int i = r - 1; i >= 0; --i) {
            if (!Way_Points[static_cast<size_t>(i)].ID.empty()) {
                from = &Way_Points[static_cast<size_t>(i)];
                break;
            }
        }
    }
    float lat = static_cast<float>(from->Lat);
    float lon = static_cast<float>(from->Long);
    Sail_To_Position(lat, lon, courseDeg, std::fabs(distance));
    Way_Point& w = Way_Points[static_cast<size_t>(r)];
    w.Course = courseDeg;
    w.Distance = std::fabs(distance);
    Way_Point& next = Way_Points[static_cast<size_t>(r + 1)];
    const bool wasValid = next.Row_Valid != 0;
    next.Lat = lat;
    next.Long = lon;
    next.Position_Done = kFalse;
    next.Mer_Parts = 0;
    w.Position_Done = kFalse;
    Revalidate();
    if (!wasValid && next.Row_Valid) {
        next.Speed = w.Speed;
        next.Show = w.Show;
    }
    Recalc_Plan();
}

void VoyagePlan::Edit_Course(int r, float courseDeg) {
    if (!In_Range(*this, r)) return;
    Sail_From(r, courseDeg, Way_Points[static_cast<size_t>(r)].Distance);
}

void VoyagePlan::Edit_Distance(int r, float distance) {
    if (!In_Range(*this, r)) return;
    Sail_From(r, Way_Points[static_cast<size_t>(r)].Course, distance);
}

void VoyagePlan::Edit_Mag_Course(int r, float magCourseDeg) {
    if (!In_Range(*this, r)) return;
    float c = Way_Points[static_cast<size_t>(r)].Variation + magCourseDeg;
    if (c >= 360) c -= 360;
    if (c < 0) c += 360;
    Sail_From(r, c, Way_Points[static_cast<size_t>(r)].Distance);
}

void VoyagePlan::Edit_ID(int r, const std::string& id) {
    if (!In_Range(*this, r)) return;
    Changed();
    Way_Point& w = Way_Points[static_cast<size_t>(r)];
    const bool wasValid = w.Row_Valid != 0;
    w.ID = id;
    Revalidate();
    if (!wasValid && w.Row_Valid && r > 0) {
        w.Speed = Way_Points[static_cast<size_t>(r - 1)].Speed;
        w.Show = Way_Points[static_cast<size_t>(r - 1)].Show;
    }
    Recalc_Plan();
}

void VoyagePlan::Edit_Description(int r, const std::string& text) {
    if (!In_Range(*this, r)) return;
    Changed();
    Way_Points[static_cast<size_t>(r)].Description = text;
    Recalc_Plan();
}

void VoyagePlan::Edit_Remarks(int r, const std::string& text) {
    if (!In_Range(*this, r)) return;
    Changed();
    Way_Points[static_cast<size_t>(r)].Remarks = text;
    Recalc_Plan();
}

void VoyagePlan::Insert_Rows(int r, int count) {
    if (r < 0 || r > Row_Count() || count <= 0) return;
    count = std::min(count, kMaxRows - Row_Count());
    if (count <= 0) return;
    Changed();
    Way_Points.insert(Way_Points.begin() + r, static_cast<size_t>(count), Way_Point{});
    Texts.insert(Texts.begin() + r, static_cast<size_t>(count), Way_Point_Text{});
    for (Way_Point& w : Way_Points) w.Position_Done = kFalse;
    Test_Wpts_Valid();
    Recalc_Plan();
}

void VoyagePlan::Delete_Rows(int r, int count) {
    if (!In_Range(*this, r) || count <= 0) return;
    count = std::min(count, Row_Count() - r);
    Changed();
    Way_Points.erase(Way_Points.begin() + r, Way_Points.begin() + r + count);
    Texts.erase(Texts.begin() + r, Texts.begin() + r + count);
    if (Way_Points.empty()) {
        Way_Points.emplace_back();
        Texts.emplace_back();
    }
    for (Way_Point& w : Way_Points) w.Position_Done = kFalse;
    Test_Wpts_Valid();
    Recalc_Plan();
}

void VoyagePlan::Clear_Rows(int r, int count) {
    if (!In_Range(*this, r) || count <= 0) return;
    count = std::min(count, Row_Count() - r);
    Changed();
    for (int i = r; i < r + count; ++i) {
        Way_Points[static_cast<size_t>(i)] = Way_Point{};
        Texts[static_cast<size_t>(i)] = Way_Point_Text{};
    }
    for (Way_Point& w : Way_Points) w.Position_Done = kFalse;
    Test_Wpts_Valid();
    Recalc_Plan();
}

void VoyagePlan::Lock_Row(int r, bool locked) {
    if (!In_Range(*this, r)) return;
    Changed();
    Way_Points[static_cast<size_t>(r)].Row_Locked = locked ? kTrue : kFalse;
}

}  // namespace kelmoran
