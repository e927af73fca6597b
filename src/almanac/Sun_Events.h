// The Sun's events of a day for the observer of the Main and Clocks screens: the upper and
// lower meridian passages, sunrise and sunset, and the starts and ends of civil, nautical
// and astronomical twilight, as text for the grids.
//
// The observer may be moving: every search asks Get_Position for the moment under trial
// (when Moving is set), so that an event is right for the place where the ship will be
// when it happens. The searches run on cheap places first (the fast route of the Sun, then
// straight-line interpolation between the day's three passages) and finish on the Sun's
// place at full accuracy.
//
// Times are MyJD (days of UT from J2000.0); angles radians; the zone bias minutes, shown
// time = UT + bias.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "ephemeris/Body_Place.h"
#include "ephemeris/Units.h"

namespace kelmoran {

// The Sun at one meridian passage of the observer.
struct Sun_Sample {
    BodyPlace Place;                // apparent place at full accuracy at Time
    float True_Alt = 0.0f;          // geocentric altitude of the centre
    float Apparent_Alt = 0.0f;      // the upper limb as the observer sees it (Sun_Alt_Record)
    float Az = 0.0f;                // true bearing, 0 .. 2π
    float Distance_Copy = 0.0f;     // the Sun's distance, AU
    float Total_Correction = 0.0f;  // True_Alt - Apparent_Alt
    float Refraction = 0.0f;        // the refraction applied
    double Time = 0.0;              // moment of the passage
};

// The day under calculation: the upper passage and the lower passages either side.
struct Sun_Day_State {
    Sun_Sample Sun_Noon;
    Sun_Sample Sun_Before;
    Sun_Sample Sun_After;
};
extern Sun_Day_State Sun_Day;

// Non-zero when the position method can give different positions at different times
// (any method but the fixed position). With it zero a search asks Get_Position once.
extern int32_t Moving;
// Moving from the settings' position method.
void Set_Moving();

// The setting "Simplified Rising & Setting" as its byte: 1 when the actual values are
// used, any other value for the standard values.
uint8_t SimpleRise();

// True when the setting "'Standard' values for Rising and Setting" is off (SimpleRise is
// 1): sunrise, sunset, moonrise and moonset then use the actual refraction at the
// sea horizon, the dip, the body's own semi-diameter and parallax, and the figure of the
// Earth. Otherwise the standard values: 34' of refraction and 16' of semi-diameter.
bool Actual_Rise_Values();

// Threshold altitudes of the centre, radians (32-bit values).
inline constexpr float kAstronomicalAlt = -0.3141592741f;  // -18°
inline constexpr float kNauticalAlt = -0.2094395160f;      // -12°
inline constexpr float kCivilAlt = -0.1047197580f;         // -6°
// -50': 34' of refraction and 16' of semi-diameter, the standard sunrise.
inline constexpr float kStandardSunriseAlt = static_cast<float>(-50.0 / kArcminPerRadian);

// The six values of Sun_Alt_Record, in order.
struct Sun_Alt_Values {
    float True_Alt = 0.0f;
    float Apparent_Alt = 0.0f;
    float Az = 0.0f;
    float Distance_Copy = 0.0f;
    float Total_Correction = 0.0f;
    float Refraction = 0.0f;
};

// The Sun's altitude record for an observer at `lat`, `lon` (radians, north and east
// positive) and the Sun at `place` (GHA and Dec, Distance in AU). True_Alt is the
// geocentric altitude of the centre; Apparent_Alt the upper limb as the observer sees it:
// with the standard values True_Alt + 50'; with the actual values True_Alt plus the
// semi-diameter (959.63" at one AU), less the parallax (8.794" at one AU, with the figure
// of the Earth), plus the refraction at the sea horizon and the dip. Apparent_Alt is 0
// when the upper limb touches the observer's horizon.
Sun_Alt_Values Sun_Alt_Record(float lat, float lon, const BodyPlace& place);

// Fills `passes` with the Sun's meridian passages around the days whose upper passages are
// estimated by `days` (MyJD): for n days 2n + 1 samples, lower, upper, lower, ... Each
// passage is found by hour-angle passes on the Sun's fast route for the observer's position
// at the moment under trial, to half a second of arc; then its sample is filled with the
// place at full accuracy and Sun_Alt_Record. Estimates may be up to about 6 hours out.
void Sun_MerPasses(std::span<const double> days, std::vector<Sun_Sample>& passes);

// The Sun's GHA (0 .. 2π), declination and distance (AU) at `t`, by straight lines between
// the samples of Sun_Day, the hour angle through the sidereal time of `t` itself: within
// about 1" of the full place over the day.
struct Sun_Interpolated {
    double GHA = 0.0;
    double Dec = 0.0;
    double Distance = 0.0;
};
Sun_Interpolated Interpolate_Sun(double t);

// The moment in the morning (before Sun_Noon) or the evening (after it) at which the Sun's
// true altitude of the centre is `alt`, for the moving observer: coarse passes on the
// mean declination, hour-angle passes on Interpolate_Sun, then Sun_Step_Search and final
// hour-angle passes on the full place, to under a second of time. The caller has seen that
// the altitude is crossed on that side.
double Sun_Alt_Event(float alt, bool morning);

// The walker on the true altitude: from `t` by steps of one hour towards `alt` (back in
// time for the morning), then back and forth with each step a tenth of the last, until
// the altitude is within 0.0005" of `alt` or the bounds of Sun_Day stop it. Returns the
// moment of the last pass.
double Sun_Step_Search(float alt, double t, bool morning);

// How an event is written.
enum class Event_Screen { Main, Clocks };
struct Event_Text_Style {
    Event_Screen Screen = Event_Screen::Main;
    int32_t Bias = 0;      // zone minutes
    bool Seconds = false;  // the screen's seconds option; twilights never show seconds
    double Day = 0.0;      // Main: the zone date shown, as floor(zone MyJD + 0.5)
};

// The style of Main's rows for the zone day (bias minutes) that holds `moment`.
Event_Text_Style Main_Day_Style(double moment, int32_t bias, bool seconds);

// The text of a moment (UT) as the screens write an event: zone time "HH:mm", or
// "HH:mm:ss" when seconds are asked and `alt` is above -3°; on Main an event whose zone
// date is not the day shown is preceded by its day of the month and "/ ". A moment of 0
// gives "    -".
std::string Event_Text(double t, float alt, const Event_Text_Style& style);

// The text of the no-event cell.
inline constexpr const char* kNoEvent = "    -";

// The event of threshold `alt` in the morning or the evening of Sun_Day, as text; "    -"
// when the Sun stays on one side of the threshold on that side of noon. `moment`, if given,
// receives the moment (0 for none).
std::string Twilight_Text(float alt, bool morning, const Event_Text_Style& style,
                          double* moment = nullptr);

// Sunrise (`morning`) or sunset of Sun_Day as text: with the standard values the moment
// of true altitude -50'; with the actual values the moment at which Apparent_Alt is 0,
// found by hour-angle passes, a walk on the altitude and final passes on the full place.
std::string Sun_Rise_Set(bool morning, const Event_Text_Style& style, double* moment = nullptr);

// The nine columns of a day: morning twilights -18°, -12°, -6°, sunrise, the upper
// passage, sunset, evening twilights -6°, -12°, -18°.
using Sun_Row = std::array<std::string, 9>;
inline constexpr std::array<const char*, 9> kSunColumnTitles = {
    "Astronomical AM", "Nautical AM", "Civil AM",    "Sunrise",        "Mer.Pass.",
    "Sunset",          "Civil PM",    "Nautical PM", "Astronomical PM"};

// The row of Main for the zone day that holds `moment` (bias in minutes): Sun_Day is left
// holding that day's passages (for the meridian altitude).
Sun_Row Main_Sun_Rows(double moment, int32_t bias, bool seconds);

// One day of the Clocks screen: the estimate of its upper passage (MyJD) and its bias.
struct Clox_Day {
    double Noon = 0.0;
    int32_t Bias = 0;
};
// The rows of the Clocks screen for consecutive days: one run of Sun_MerPasses, then each
// day with its triple of passages as Sun_Day. Twilights never show seconds.
std::vector<Sun_Row> Clox_Sun_Row(std::span<const Clox_Day> days, bool seconds);

}  // namespace kelmoran
