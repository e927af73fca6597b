#include "voyage/Clox_Rows.h"

#include <algorithm>
#include <cmath>

#include "almanac/Sun_Events.h"
#include "ephemeris/Time_Calcs.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "voyage/M_Clox.h"
#include "voyage/Plan_Text.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

constexpr int32_t kCloxColumns = 12;

// Midnight (MyJD, UT) of the civil day in zone `zone` that holds `t`.
double Zone_Midnight(double t, int32_t zone) {
    const double z = t + zone / 1440.0;
    return std::floor(z + 0.5) - 0.5 - zone / 1440.0;
}

bool By_Plan() { return Settings.PositionMethod == kDRByPlan; }

}  // namespace

double Clox_Row_Time(double jd, int32_t row) {
    if (By_Plan()) return Clox_Entry_Time(Voyage, row);
    return Zone_Midnight(jd, TZ_Bias) + row;
}

CloxRows Clox_Rows(double jd, bool seconds) {
    Clear_Vector_Upper_State();
    CloxRows out;
    out.ByPlan = By_Plan();
    int32_t days = kCloxMonthDays;
    if (out.ByPlan) {
        days = Clox_Day_Count(Voyage);
        if (Voyage.Ship_Time.size() != static_cast<size_t>(days))
            Take_Ship_Time_From_Plan(Voyage, false);
    }
    out.Rows = days;
    out.Labels.assign(kCloxColumns, std::vector<std::string>(static_cast<size_t>(days)));
    std::vector<Clox_Day> sunDays(static_cast<size_t>(days));
    int32_t before = out.ByPlan ? Voyage.Header.ETD_Minutes : TZ_Bias;
    for (int32_t d = 0; d < days; ++d) {
        const auto i = static_cast<size_t>(d);
        const int32_t zone = out.ByPlan ? Voyage.Ship_Time[i] : TZ_Bias;
        const double midnight = Zone_Midnight(Clox_Row_Time(jd, d), zone);
        const double noon = midnight + 0.5;
        sunDays[i] = {noon, zone};
        const double zoneDay = noon + zone / 1440.0;
        const int16_t weekday = Weekday_Of_JD(zoneDay);
        const bool change = zone != before;
        before = zone;
        out.Zone.push_back(zone);
        out.Sunday.push_back(weekday == 1);
        out.ZoneChange.push_back(change);
        out.Labels[0][i] = Weekday_Short_Name(weekday) + " " +
                           Format_Date_Mask(JD_To_Date(zoneDay), "dd mmm 'yy") +
                           (change ? " *" : "");
        float lat = 0, lon = 0, course = 0, speed = 0;
        // The last day of a voyage may end before its noon: the ship is then where the
        // plan ends.
        const double at = out.ByPlan ? std::min(noon, Voyage.Plan_End()) : noon;
        Get_Position(at, lat, lon, course, speed);
        if (Is_DR_Error(course) && Settings.PositionMethod != kFixPosition) {
            out.DRwarning = true;
            out.Labels[1][i] = position_text::DRError;
        } else {
            out.Labels[1][i] = Format_Lat(lat, 0, false) + "/ " + Format_Long(lon, 0, true);
        }
        out.Labels[kCloxShipColumn][i] = Zone_Text(zone);
    }
    const std::vector<Sun_Row> sun = Clox_Sun_Row(sunDays, seconds);
    for (size_t i = 0; i < sun.size(); ++i)
        for (size_t c = 0; c < 9; ++c) out.Labels[2 + c][i] = sun[i][c];
    return out;
}

}  // namespace kelmoran
