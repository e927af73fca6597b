// Where the observer is at a moment: the one answer for every screen, the almanac, the
// clocks, the eclipse map, the atlas and the sights. Three methods, chosen in the
// settings (PositionMethod): 0 the fixed position, 1 dead reckoning by course and speed
// from a fix at a time, 2 dead reckoning along the default voyage plan.
//
// A returned course of exactly 999.0 with speed 0 marks a position that is no true dead
// reckoning (a track older than 365 days, a time outside the plan, a track that reached a
// pole); every caller that shows a position tests for it.
#pragma once

#include <string>
#include <vector>

#include "settings/SettingsRecord.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

inline constexpr int kFixPosition = 0;
inline constexpr int kDRCourseSpeed = 1;
inline constexpr int kDRByPlan = 2;
// The marker course of a position that is no true dead reckoning.
inline constexpr float kNoDRCourse = 999.0f;
// A track by course and speed is used up to this many days from its fix (365 exactly is
// still valid).
inline constexpr double kTrackDays = 365.0;

// The observer's position at `t` (MyJD, UT) by the settings' method, from the settings'
// fix and the plan in use (Voyage). `lat`, `lon` radians are always written (longitude
// within -π .. π); `course` (degrees true) and `speed` (knots) are written for methods 1
// and 2 and their fall-backs, and keep the caller's values with method 0. Allocates
// nothing and never fails.
void Get_Position(double t, float& lat, float& lon, float& course, float& speed);

// The same from a given settings record and plan.
void Get_Position(const SettingsRecord& settings, const VoyagePlan& plan, double t, float& lat,
                  float& lon, float& course, float& speed);

// True when `course` is the marker of a position that is no true dead reckoning.
inline bool Is_DR_Error(float course) { return course == kNoDRCourse; }

// The words of the position pop-ups and warnings, by the condition that selects them.
namespace position_text {
inline constexpr const char* FixPosition = "Fix Position";
inline constexpr const char* DRCourseSpeed = "D.R. using Course/ Speed";
inline constexpr const char* DRByPlan = "D.R. by plan";
inline constexpr const char* CurrentPosition = "Current Position";
inline constexpr const char* CourseSpeed = "          Co./ Speed";
inline constexpr const char* DRError = "DR Error";
inline constexpr const char* ErrorCalculating = "Error calculating position";
inline constexpr const char* TrackExpired = "Track Expired";
inline constexpr const char* PositionError = "Position Error";
inline constexpr const char* PlanExpired = "Plan Expired";
inline constexpr const char* BeforePlan = "Before Plan";
inline constexpr const char* TrackFrom = "Track from the";
inline constexpr const char* MenuDRByPlan = "D.R. by Plan";
inline constexpr const char* MenuDoNotDR = "Do not D.R.";
}  // namespace position_text

// The hot spots of a screen's position display.
enum class Position_Spot {
    Position,          // method 0
    DRbyPlan,          // "DRbyPlan Position"
    DRbyTrack,         // "DRbyTrack Position"
    DR_Error,          // "DR Error"
    Disabled_DRbyPlan  // the Options item "D.R. by plan": why it cannot be chosen, or, when
                       // it can, the words of the enabled item
};

// The lines of the pop-up of hot spot `spot` for the moment `t`, with the settings and
// the plan in use; empty when that spot has nothing to say then.
std::vector<std::string> Position_Popup_Words(Position_Spot spot, const SettingsRecord& settings,
                                              const VoyagePlan& plan, double t);

// Whether "D.R. by plan" may be chosen: the plan in use is the default plan (its path is
// the default plan's path) and `t` lies within it.
bool DR_By_Plan_Allowed(const SettingsRecord& settings, const VoyagePlan& plan, double t);

// The Star Atlas status line under "Error calculating position" for a marked position
// at `t`; empty if the position is a true one.
std::string Atlas_Position_Error(const SettingsRecord& settings, const VoyagePlan& plan,
                                 double t);

// The word of a Sights row whose position came back marked, at the sight's time `t`.
std::string Sight_Position_Word(const SettingsRecord& settings, const VoyagePlan& plan,
                                double t);

}  // namespace kelmoran
