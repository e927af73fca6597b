#include "voyage/Position_Methods.h"

#include <cmath>

#include "ephemeris/Units.h"
#include "voyage/Navigation.h"

namespace kelmoran {

namespace {

constexpr int kFallBack = 99;

// The last row whose valid flag is set, walking down from the highest index; row 0 if
// none is.
const Way_Point& Final_Row(const VoyagePlan& plan) {
    for (int i = plan.Row_Count() - 1; i > 0; --i)
        if (plan.Way_Points[static_cast<size_t>(i)].Row_Valid)
            return plan.Way_Points[static_cast<size_t>(i)];
    return plan.Way_Points.front();
}

// The row that starts the leg holding `t`: the last valid row at or before `t`.
int Leg_Row(const VoyagePlan& plan, double t) {
    const auto& w = plan.Way_Points;
    const int n = plan.Row_Count();
    int r = 0;
    for (int i = 0; i < n; ++i) {
        if (w[static_cast<size_t>(i)].Row_Valid && w[static_cast<size_t>(i)].Time >= t) {
            r = i;
            break;
        }
    }
    if (r > 0 && w[static_cast<size_t>(r - 1)].Time == t && w[static_cast<size_t>(r - 1)].Row_Valid)
        --r;
    while ((w[static_cast<size_t>(r)].Time > t || !w[static_cast<size_t>(r)].Row_Valid) && r > 0)
        --r;
    return r;
}

}  // namespace

void Get_Position(const SettingsRecord& s, const VoyagePlan& plan, double t, float& lat,
                  float& lon, float& course, float& speed) {
    int m = s.PositionMethod;
    if (m != kDRCourseSpeed && m != kDRByPlan) m = kFixPosition;
    if (m == kDRByPlan && plan.Way_Points.empty()) m = kFixPosition;

    if (m == kDRCourseSpeed && !(std::fabs(s.FixTime - t) <= kTrackDays)) {
        lat = s.ObserverLat;
        lon = s.ObserverLong;
        m = kFallBack;
    }
    if (m == kDRByPlan) {
        if (t < plan.Plan_Start()) {
            lat = static_cast<float>(plan.Way_Points.front().Lat);
            lon = static_cast<float>(plan.Way_Points.front().Long);
            m = kFallBack;
        } else if (t > plan.Plan_End()) {
            const Way_Point& f = Final_Row(plan);
            lat = static_cast<float>(f.Lat);
            lon = static_cast<float>(f.Long);
            m = kFallBack;
        }
    }

    if (m == kFixPosition) {
        lat = s.ObserverLat;
        lon = s.ObserverLong;
    } else if (m == kFallBack) {
        course = kNoDRCourse;
        speed = 0;
    } else if (m == kDRCourseSpeed) {
        lat = s.ObserverLat;
        lon = s.ObserverLong;
        speed = s.FixSpeed;
        course = s.FixCourse;
        float d = static_cast<float>(speed * 24.0 * (t - s.FixTime));
        float c = static_cast<float>(course / kDegreesPerRadian);
        if (d < 0) {
            // Before the fix the track is run backwards.
            c = static_cast<float>(c + kPi);
            if (c >= kTwoPi) c = static_cast<float>(c - kTwoPi);
            d = -d;
        }
        if (DR_Step(lat, lon, c, d, c > kPi, true)) {
            course = kNoDRCourse;
            speed = 0;
        }
    } else {
        const Way_Point& w = plan.Way_Points[static_cast<size_t>(Leg_Row(plan, t))];
        lat = static_cast<float>(w.Lat);
        lon = static_cast<float>(w.Long);
        course = w.Course;
        speed = w.Speed;
        const float c = static_cast<float>(course / kDegreesPerRadian);
        const float d = static_cast<float>((t - w.Time) * (speed * 24.0));
        if (d != 0) DR_Step(lat, lon, c, d, course > 180.0f, false);
    }
    Normalise_Long(lon);
}

void Get_Position(double t, float& lat, float& lon, float& course, float& speed) {
    Get_Position(Settings, Voyage, t, lat, lon, course, speed);
}

bool DR_By_Plan_Allowed(const SettingsRecord& s, const VoyagePlan& plan, double t) {
    return !s.DefaultPlanFile.empty() && plan.Header.Path == s.DefaultPlanFile &&
           t >= plan.Plan_Start() && t <= plan.Plan_End();
}

std::vector<std::string> Position_Popup_Words(Position_Spot spot, const SettingsRecord& s,
                                              const VoyagePlan& plan, double t) {
    switch (spot) {
        case Position_Spot::Position:
            return {"Position is fixed", "Use Options to amend"};
        case Position_Spot::DRbyPlan:
            if (t > plan.Plan_End()) return {"Voyage has expired"};
            if (t < plan.Plan_Start()) return {"Date is prior to voyage starting"};
            return {"Voyage plan in use", ". Data is for", "position at the time of the event"};
        case Position_Spot::DRbyTrack:
            if (std::fabs(s.FixTime - t) < 366.0) return {"Positions using Co/ Dist"};
            return {"D.R. by Co/ Dist.", "(Failure)"};
        case Position_Spot::DR_Error:
            if (s.PositionMethod == kDRCourseSpeed) return {"Track can only be used for 365 days"};
            if (s.PositionMethod == kDRByPlan) {
                if (t > plan.Plan_End())
                    return {"Voyage has expired", "Final Way Point position in use"};
                if (t < plan.Plan_Start())
                    return {"Date is prior to voyage starting", "First Way Point position in use"};
            }
            return {};
        case Position_Spot::Disabled_DRbyPlan:
            if (s.DefaultPlanFile.empty() || plan.Header.Path != s.DefaultPlanFile)
                return {"Default plan not set", "Use Voyage screen to load/ set and select one"};
            if (t > plan.Plan_End())
                return {"Current plan has expired. Date/ time in use",
                        "must be during voyage to allow option"};
            if (t < plan.Plan_Start()) return {"Current time is prior to plan starting"};
            return {" Position will be calculated from the plan for the duration of the voyage ",
                    "Final position will be used as the Fix Position after plan expires"};
    }
    return {};
}

std::string Atlas_Position_Error(const SettingsRecord& s, const VoyagePlan& plan, double t) {
    if (s.PositionMethod == kDRCourseSpeed && std::fabs(s.FixTime - t) > kTrackDays)
        return "Track can only be used for 365 days";
    if (s.PositionMethod == kDRByPlan) {
        if (t > plan.Plan_End()) return "Final Way Point position in use";
        if (t < plan.Plan_Start()) return "First Way Point position in use";
    }
    return "";
}

std::string Sight_Position_Word(const SettingsRecord& s, const VoyagePlan& plan, double t) {
    if (s.PositionMethod == kDRCourseSpeed)
        return std::fabs(t - s.FixTime) > kTrackDays ? position_text::TrackExpired
                                                     : position_text::PositionError;
    if (s.PositionMethod == kDRByPlan) {
        if (t > plan.Plan_End()) return position_text::PlanExpired;
        if (t < plan.Plan_Start()) return position_text::BeforePlan;
    }
    return position_text::PositionError;
}

}  // namespace kelmoran
