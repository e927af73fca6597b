#include "voyage/cNavPlan_Model.h"

#include <cmath>
#include <cstdio>

#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"
#include "voyage/M_Clox.h"
#include "voyage/Plan_Text.h"

namespace kelmoran {

namespace {

constexpr const char* kEmpty = "  ";  // a cell with nothing in it
constexpr const char* kLockMark = " * ";

const std::string& Blank() {
    static const std::string b = kEmpty;
    return b;
}

float Fixed_Speed(const Plan_Header& h, int32_t k) {
    return k == 0 ? h.Fixed_Speed_1 : (k == 1 ? h.Fixed_Speed_2 : h.Fixed_Speed_3);
}

// "dd/ HH:mm" of a moment (UT) in the zone of `zone` minutes.
std::string Day_Time(double t, int32_t zone) {
    const double shown = std::nearbyint((t + zone / 1440.0) * 1440.0) / 1440.0;
    return Format_Date_Mask(JD_To_Date(shown), mask::DayTimeHM);
}

// Hours as "00d/ 00h 00m", whole minutes.
std::string Duration_Text(double hours) {
    if (!std::isfinite(hours) || hours < 0) hours = 0;
    const long minutes = std::lround(hours * 60.0);
    char buf[40];
    std::snprintf(buf, sizeof buf, "%02ldd/ %02ldh %02ldm", minutes / 1440, minutes / 60 % 24,
                  minutes % 60);
    return buf;
}

std::string Distance_Text(float miles) { return Format_Number(miles, mask::Distance); }

bool Has_Next_Valid(const VoyagePlan& plan, int32_t r) {
    for (int32_t i = r + 1; i < plan.Row_Count(); ++i)
        if (plan.Way_Points[static_cast<size_t>(i)].Row_Valid) return true;
    return false;
}

}  // namespace

std::string Fixed_Speed_Title(const Plan_Header& header, int32_t column) {
    const int32_t k = (column - navplan_col::FixedEta1) / 2;
    const bool eta = (column - navplan_col::FixedEta1) % 2 == 0;
    return std::string(eta ? "ETA " : "TTG ") +
           Format_Number(Fixed_Speed(header, k), mask::SpeedFlexible) + navplan_text::SpeedSuffix;
}

std::vector<ColumnDef> NavPlan_Columns(const Plan_Header& header) {
    const std::string position = " 000\u00B0 00'.0 W ";
    const std::string time = " * 00/ 00:00   ";
    const std::string duration = "  00d/ 00h 00m  ";
    const std::string distance = " 00,000'.0 ";
    std::vector<ColumnDef> t = {
        {"WPt", "WPt", 2, " 000 ", true},
        {"ID", "ID", 0, " WWWWWW ", true},
        {"Description", "Desc", 0, " Description of the way point ", true},
        {"Latitude", "Lat", 1, position, true},
        {"Longitude", "Long", 1, position, true},
        {"Speed", "Speed", 1, " 00.00 Kts ", true},
        {"Course", "Course", 1, " 000\u00B0.0 T ", true},
        {"Distance", "Dist", 1, distance, true},
        {"Total Dist.", "Total", 1, distance, true},
        {"E.T.A.", "ETA", 1, time, true},
        {"Time to go", "TTG", 1, duration, true},
        {"Dist to go", "DTG", 1, distance, true},
    };
    for (int32_t k = 0; k < 3; ++k) {
        const int32_t c = navplan_col::FixedEta1 + 2 * k;
        t.push_back({Fixed_Speed_Title(header, c), "ETA@", 1, time, k == 0});
        t.push_back({Fixed_Speed_Title(header, c + 1), "TTG@", 1, duration, k == 0});
    }
    t.push_back({"Mag Co", "Mag Co", 1, " 000\u00B0.0 M ", true});
    t.push_back({"Ship Time", "Ship", 1, " Z+12.00 ", true});
    t.push_back({"LMT @ WPt", "LMT", 1, time, true});
    return t;
}

NavPlan_Page Populate_MainData(const VoyagePlan& plan, bool remarks) {
    NavPlan_Page page;
    const int32_t n = plan.Row_Count();
    for (int32_t r = 0; r < n; ++r) {
        page.Lines.push_back({r, false});
        const Way_Point& w = plan.Way_Points[static_cast<size_t>(r)];
        if (remarks && (w.Row_Valid || !w.Remarks.empty())) page.Lines.push_back({r, true});
    }
    const size_t lines = page.Lines.size();
    page.Labels.assign(navplan_col::Count, std::vector<std::string>(lines, Blank()));
    const int32_t last = plan.Last_Valid_Row();
    const float lastRunning =
        last >= 0 ? plan.Way_Points[static_cast<size_t>(last)].Running_Time : 0.0f;
    const int32_t zone = plan.Header.ETD_Minutes;
    int32_t number = 0;
    int32_t shipZone = plan.Header.ETD_Minutes;  // the ship's zone, row by row
    for (size_t i = 0; i < lines; ++i) {
        const NavPlan_Line& line = page.Lines[i];
        const Way_Point& w = plan.Way_Points[static_cast<size_t>(line.Row)];
        auto cell = [&](int32_t c) -> std::string& { return page.Labels[static_cast<size_t>(c)][i]; };
        if (line.Remarks) {
            cell(navplan_col::Description) = w.Remarks;
            continue;
        }
        shipZone = Ship_Time_After(w.Description, shipZone);
        if (!w.Row_Valid) continue;
        const Way_Point_Text& text = plan.Texts[static_cast<size_t>(line.Row)];
        const bool leg = Has_Next_Valid(plan, line.Row);
        cell(navplan_col::WPt) = std::to_string(++number);
        if (!w.ID.empty()) cell(navplan_col::ID) = Way_Point_ID_Text(w.ID);
        if (!w.Description.empty()) cell(navplan_col::Description) = w.Description;
        cell(navplan_col::Latitude) = text.Lat;
        cell(navplan_col::Longitude) = text.Long;
        if (leg) {
            cell(navplan_col::Speed) = Format_Number(w.Speed, mask::Speed) + kKtsSuffix;
            cell(navplan_col::Course) = Format_Course(w.Course) + mask::TrueSuffix;
            cell(navplan_col::Distance) = Distance_Text(w.Distance);
            cell(navplan_col::MagCo) = Format_Magnetic_Course(w.Course - w.Variation);
        }
        cell(navplan_col::TotalDist) = Distance_Text(w.Total_Distance);
        cell(navplan_col::ETA) = (w.Row_Locked ? kLockMark : "") + Day_Time(w.Time, zone);
        const double toGo = lastRunning - w.Running_Time;
        cell(navplan_col::TimeToGo) = Duration_Text(toGo);
        cell(navplan_col::DistToGo) = Distance_Text(w.Distance_To_Go);
        for (int32_t k = 0; k < 3; ++k) {
            const float v = Fixed_Speed(plan.Header, k);
            if (!(v > 0)) continue;
            const double hours = w.Distance_To_Go / v;
            cell(navplan_col::FixedEta1 + 2 * k) = Day_Time(w.Time + hours / 24.0, zone);
            cell(navplan_col::FixedTtg1 + 2 * k) = Duration_Text(hours);
        }
        cell(navplan_col::ShipTime) = Zone_Text(shipZone);
        // Local mean time: the longitude in hours added to UT.
        cell(navplan_col::LMT) = Day_Time(w.Time + w.Long / kTwoPi, 0);
    }
    return page;
}

NavPlan_Cell_Edit NavPlan_Edit_For(const VoyagePlan& plan, const NavPlan_Line& line,
                                   int32_t column, const std::string& shown) {
    NavPlan_Cell_Edit e;
    if (line.Row < 0 || line.Row >= plan.Row_Count()) return e;
    const Way_Point& w = plan.Way_Points[static_cast<size_t>(line.Row)];
    e.Text = shown == kEmpty ? std::string() : shown;
    if (line.Remarks) {
        if (column == navplan_col::Description) e.Field = "Remarks";
        return e;
    }
    switch (column) {
        case navplan_col::ID: e.Field = "ID"; e.Text = w.ID; break;
        case navplan_col::Description: e.Field = "Desc"; e.Text = w.Description; break;
        case navplan_col::Latitude: e.Field = "Lat"; e.Value = w.Lat; e.Alignment = 2; break;
        case navplan_col::Longitude: e.Field = "Long"; e.Value = w.Long; e.Alignment = 2; break;
        case navplan_col::Speed: e.Field = "Speed"; e.Value = w.Speed; e.Alignment = 2; break;
        case navplan_col::Course:
            e.Field = "Course";
            e.Value = w.Course;
            e.Alignment = 2;
            break;
        case navplan_col::MagCo: {
            double m = w.Course - w.Variation;
            if (m < 0) m += 360;
            if (m >= 360) m -= 360;
            e.Field = "Course";
            e.Value = m;
            e.Text = Format_Magnetic_Course(m);
            e.Alignment = 2;
            break;
        }
        case navplan_col::Distance: e.Field = "Dist"; e.Value = w.Distance; e.Alignment = 2; break;
        case navplan_col::ETA:
            // The time of the first row is the ETD, and a locked row keeps its time.
            if (line.Row > 0 && w.Row_Valid && !w.Row_Locked) {
                e.Field = "ETA";
                e.Alignment = 2;
            }
            break;
        default: break;
    }
    if (e.Field.empty()) e.Text.clear();
    return e;
}

double NavPlan_Typed_Eta(double value, double near, int32_t zoneMinutes) {
    const double zoneNear = near + zoneMinutes / 1440.0;
    MySystemTime d = JD_To_Date(zoneNear);
    int32_t day = static_cast<int32_t>(std::floor(value + 1e-9));
    const double fraction = value - day;
    if (day < 1) day = d.wDay;
    double best = 0;
    double bestGap = -1;
    // The typed day in the months round that of `near` (two each way, for a day that a
    // short month lacks).
    for (int32_t step = -2; step <= 2; ++step) {
        MySystemTime m = d;
        int32_t month = d.wMonth + step;
        int32_t year = d.wYear;
        if (month < 1) {
            month += 12;
            --year;
        } else if (month > 12) {
            month -= 12;
            ++year;
        }
        if (year == 0) year = step < 0 ? -1 : 1;
        if (day > Get_Month_Length(month, year)) continue;
        m.wYear = static_cast<int16_t>(year);
        m.wMonth = static_cast<int16_t>(month);
        m.wDay = static_cast<int16_t>(day);
        m.wHour = m.wMinute = m.wSecond = m.wMilliseconds = 0;
        const double t = Calc_JD(m, false) + fraction;
        const double gap = std::fabs(t - zoneNear);
        if (bestGap < 0 || gap < bestGap) {
            bestGap = gap;
            best = t;
        }
    }
    return best - zoneMinutes / 1440.0;
}

bool NavPlan_Commit(VoyagePlan& plan, const NavPlan_Line& line, int32_t column, double value,
                    const std::string& text) {
    const int32_t r = line.Row;
    if (r < 0 || r >= plan.Row_Count()) return false;
    const Way_Point& w = plan.Way_Points[static_cast<size_t>(r)];
    if (line.Remarks) {
        plan.Edit_Remarks(r, text);
        return true;
    }
    switch (column) {
        case navplan_col::ID: plan.Edit_ID(r, text); return true;
        case navplan_col::Description: plan.Edit_Description(r, text); return true;
        case navplan_col::Latitude: plan.Edit_Position(r, value, w.Long); return true;
        case navplan_col::Longitude: plan.Edit_Position(r, w.Lat, value); return true;
        case navplan_col::Speed:
            if (!(value >= 0) || value >= 100) return false;
            plan.Edit_Speed(r, static_cast<float>(value));
            return true;
        case navplan_col::Course: plan.Edit_Course(r, static_cast<float>(value)); return true;
        case navplan_col::MagCo: plan.Edit_Mag_Course(r, static_cast<float>(value)); return true;
        case navplan_col::Distance: plan.Edit_Distance(r, static_cast<float>(value)); return true;
        case navplan_col::ETA:
            return plan.Edit_Row_ETA(r, NavPlan_Typed_Eta(value, w.Time, plan.Header.ETD_Minutes));
        default: return false;
    }
}

bool NavPlan_Clear_Cell(VoyagePlan& plan, const NavPlan_Line& line, int32_t column) {
    const int32_t r = line.Row;
    if (r < 0 || r >= plan.Row_Count()) return false;
    const Way_Point& w = plan.Way_Points[static_cast<size_t>(r)];
    if (line.Remarks) {
        if (column != navplan_col::Description) return false;
        plan.Edit_Remarks(r, "");
        return true;
    }
    switch (column) {
        case navplan_col::Latitude:
        case navplan_col::Longitude:
            if (w.Lat == 0 && w.Long == 0) return false;
            plan.Edit_Position(r, 0, 0);
            return true;
        case navplan_col::ID:
            if (w.ID.empty()) return false;
            plan.Edit_ID(r, "");
            return true;
        case navplan_col::Description:
            if (w.Description.empty()) return false;
            plan.Edit_Description(r, "");
            return true;
        default: return false;
    }
}

std::vector<std::string> NavPlan_Row_Menu(const VoyagePlan& plan, int32_t row, bool remarks) {
    if (row < 0 || row >= plan.Row_Count()) return {};
    const Way_Point& w = plan.Way_Points[static_cast<size_t>(row)];
    if (!w.Row_Valid && w.Description.empty() && w.Remarks.empty()) return {};
    return {plan_text::InsertRow,
            plan_text::DeleteRow,
            plan_text::ClearWayPoint,
            w.Row_Locked ? plan_text::UnLock : plan_text::Lock,
            navplan_text::Hide,
            remarks ? navplan_text::HideRemarks : navplan_text::DisplayRemarks,
            navplan_text::SpeedOptions};
}

std::string Speed_Box_Text(float speed) {
    return std::string(navplan_text::SpeedPrefix) + Format_Number(speed, mask::SpeedFlexible) +
           navplan_text::SpeedSuffix;
}

}  // namespace kelmoran
