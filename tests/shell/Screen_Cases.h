// Moments, the observer and an expired voyage plan shared by the screen suites.
#pragma once

#include "ephemeris/Bodies.h"
#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "shell/Date_Record.h"
#include "shell/Screen_Rows.h"
#include "voyage/Position_Methods.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran::testing_dates {

constexpr double kRadian = 57.2957795130823;

inline double Moment(int y, int mo, int d, int h, int mi = 0) {
    return Calc_JD(Date(y, mo, d, h, mi, 0), false);
}

// A fixed observer at `lat`, `lon` degrees with 1010 hPa and 10°C, Greenwich time.
inline void Observe_From(double lat, double lon) {
    Settings = SettingsRecord{};
    Settings.ObserverLat = static_cast<float>(lat / kRadian);
    Settings.ObserverLong = static_cast<float>(lon / kRadian);
    Settings.Pressure = 1010.0f;
    Settings.Temp = 10.0f;
    Settings.PositionMethod = kFixPosition;
    Compute_Derived_Settings();
    TZ_Bias = 0;
    Filters = BodyFilters{};
}

// A plan of two way points from 50°N 5°W at 10 knots, begun ten days before `day` and
// ended before it; dead reckoning by it from now on.
inline void Sail_Expired_Plan(double day) {
    VoyagePlan plan;
    plan.New_Plan(day - 10.0, 10.0f);
    plan.Way_Points.assign(4, Way_Point{});
    const double pts[2][2] = {{50, -5}, {48, -7}};
    for (size_t i = 0; i < 2; ++i) {
        plan.Way_Points[i].Lat = pts[i][0] / kRadian;
        plan.Way_Points[i].Long = pts[i][1] / kRadian;
        plan.Way_Points[i].Speed = 10.0f;
    }
    plan.Test_Wpts_Valid();
    plan.Recalc_Plan();
    Voyage = plan;
    Settings.PositionMethod = kDRByPlan;
}

}  // namespace kelmoran::testing_dates
