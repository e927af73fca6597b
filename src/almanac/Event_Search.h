// Pieces shared by the searches for rising, setting and twilight: the observer's position
// along the search, the altitude of a place, and the walker that steps towards a crossing.
#pragma once

#include <algorithm>
#include <cmath>

#include "ephemeris/Angles.h"
#include "ephemeris/Units.h"

namespace kelmoran::event_search {

inline constexpr double kMinuteOfTime = 0.0006944444444444445;   // day
inline constexpr double kSecondOfTime = 1.1574074074074073e-05;  // day

// The observer's position along one search: asked of Get_Position at the first moment,
// and then again only while the position method moves the observer.
struct Observer_Track {
    float Lat = 0.0f;
    float Long = 0.0f;
    bool Known = false;
    // Position at `t` (asks Get_Position unless known and not Moving).
    void At(double t);
};

// Geocentric altitude (radians) of a body at `gha`, `dec` for an observer at `lat`, `lon`.
inline double Altitude(double lat, double lon, double gha, double dec) {
    return Arc_Sin(std::sin(lat) * std::sin(dec) +
                   std::cos(lat) * std::cos(dec) * std::cos(gha + lon));
}

// The hour angle (0 .. π) at which a body of declination `dec` stands at altitude `alt`
// for latitude `lat`; 0 when it never does (Arc_Cos' answer outside -1 .. 1).
inline double Meridian_Angle(double alt, double lat, double dec) {
    return Arc_Cos((std::sin(alt) - std::sin(lat) * std::sin(dec)) /
                   (std::cos(lat) * std::cos(dec)));
}

// An angle brought into -π .. π by one turn either way.
inline double Wrap_Pi(double a) {
    if (a > kPi) a -= kTwoPi;
    if (a < -kPi) a += kTwoPi;
    return a;
}

// An angle brought into 0 .. 2π by one turn either way.
inline double Wrap_2Pi(double a) {
    if (a < 0.0) a += kTwoPi;
    if (a > kTwoPi) a -= kTwoPi;
    return a;
}

// Steps `t` by `step`, held within `lo` .. `hi`, for at most `passes` steps while `f`
// (a signed altitude difference) keeps the sign it has in `value`; stops at a bound.
// Returns the last moment; `value` receives f there.
template <class F>
double Walk_While_Same_Side(F& f, double t, double& value, double step, double lo, double hi,
                            int passes) {
    const bool above = value > 0.0;
    for (int i = 0; i < passes; ++i) {
        const double next = std::clamp(t + step, lo, hi);
        if (next == t) break;
        t = next;
        value = f(t);
        if ((value > 0.0) != above) break;
    }
    return t;
}

// After a first walk: reverses and shrinks the step by `shrink(step)` and walks again,
// until `done(step, value)` says the crossing is held closely enough, the step has
// vanished, or 60 reversals were spent. Returns the last moment.
template <class F, class Shrink, class Done>
double Refine_Crossing(F& f, double t, double& value, double step, double lo, double hi,
                       Shrink shrink, Done done) {
    for (int turn = 0; turn < 60 && !done(step, value); ++turn) {
        step = -shrink(step);
        if (std::fabs(step) < 1.0e-10) break;
        t = Walk_While_Same_Side(f, t, value, step, lo, hi, 50);
    }
    return t;
}

}  // namespace kelmoran::event_search
