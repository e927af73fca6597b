#include "almanac/Moon_Events.h"

#include <algorithm>
#include <cmath>

#include "almanac/Event_Search.h"
#include "almanac/Sun_Events.h"
#include "almanac/cAlmanac.h"
#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Bodies.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Series.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"

namespace kelmoran {

using namespace event_search;

std::vector<Moon_Sample> Moon_Day;

namespace {

constexpr double kWalkStep = 0.020833333333333336;  // 30 minutes
constexpr double kFineGap = 0.03;                   // seconds of arc
constexpr double kHalfArcsec = 4.848136995860841e-06 / 2.0;
constexpr double kHalfLunarDay = 0.5175;  // days between successive passages, about

BodyPlace Moon_Place(double t, SeriesAccuracy accuracy) {
    return Calc_Moon(accuracy, Calc_EarthFrame(t));
}

// The meridian passage (upper, or lower) nearest to the estimate `t`, by hour-angle passes
// on the Moon's fast place for the observer at the moment under trial.
double Moon_Passage(double t, bool upper, Observer_Track& obs) {
    for (int pass = 0; pass < 50; ++pass) {
        obs.At(t);
        const BodyPlace moon = Moon_Place(t, kAccuracyFast);
        const double lha = Wrap_Pi(Reduce_2Pi(moon.GHA + obs.Long + (upper ? 0.0 : kPi)));
        t -= lha / kMoon_GHA_Rate;
        if (std::fabs(lha) < kHalfArcsec) break;
    }
    return t;
}

}  // namespace

double Moon_Horizon(float lat, double r) {
    double rho = 1.0, refraction = 34.0 / kArcminPerRadian;
    if (Actual_Rise_Values()) {
        const double s = std::sin(static_cast<double>(lat));
        rho = 1.0 - s * s / 298.25722;
        refraction = static_cast<double>(Refraction_Apparent(-DipRad)) + DipRad;
    }
    return (rho * kEarthRadiusKm - kMoonRadiusKm) / r - refraction;
}

BodyPlace Interpolate_Moon(double t) {
    BodyPlace p;
    if (Moon_Day.empty()) return p;
    if (Moon_Day.size() == 1) {
        p = Moon_Day[0].Place;
        p.GHA = Reduce_2Pi(Calc_GAST(t) - p.RA);
        return p;
    }
    size_t i = 0;
    while (i + 2 < Moon_Day.size() && t >= Moon_Day[i + 1].Time) ++i;
    const Moon_Sample& a = Moon_Day[i];
    const Moon_Sample& b = Moon_Day[i + 1];
    const double span = b.Time - a.Time;
    const double f = span != 0.0 ? (t - a.Time) / span : 0.0;
    p.RA = Reduce_2Pi(a.Place.RA + f * Wrap_Pi(b.Place.RA - a.Place.RA));
    p.Dec = a.Place.Dec + f * (b.Place.Dec - a.Place.Dec);
    p.Distance = a.Place.Distance + f * (b.Place.Distance - a.Place.Distance);
    p.GHA = Reduce_2Pi(Calc_GAST(t) - p.RA);
    return p;
}

void Fill_Moon_Day(double dayStart, double dayEnd) {
    Observer_Track obs;
    std::vector<std::pair<double, bool>> passes;  // time, upper
    double t = Moon_Passage(dayStart - 0.6, true, obs);
    passes.emplace_back(t, true);
    while (passes.back().first < dayEnd && passes.size() < 12) {
        const bool upper = !passes.back().second;
        t = Moon_Passage(passes.back().first + kHalfLunarDay, upper, obs);
        passes.emplace_back(t, upper);
    }
    while (passes.size() > 2 && passes[1].first <= dayStart) passes.erase(passes.begin());

    Moon_Day.clear();
    for (const auto& [time, upper] : passes) {
        obs.At(time);
        Moon_Sample s;
        s.Time = time;
        s.Upper = upper;
        s.Place = Moon_Place(time, kAccuracyFull);
        s.True_Alt = static_cast<float>(Altitude(obs.Lat, obs.Long, s.Place.GHA, s.Place.Dec));
        s.Horizon = static_cast<float>(Moon_Horizon(obs.Lat, s.Place.Distance));
        AltAzResult a;
        Calc_AltAz(a, body::MoonUpperLimb, obs.Lat, obs.Long, s.Place);
        s.Apparent_Alt = a.SextantAlt - IndexErrorRad;
        Moon_Day.push_back(s);
    }
}

double Moon_Alt0_Time(const Moon_Sample& earlier, const Moon_Sample& later) {
    const double lo = earlier.Time, hi = later.Time;
    const bool rise = earlier.True_Alt <= earlier.Horizon;
    Observer_Track obs;

    // Hour-angle passes on the interpolated place.
    double t = (lo + hi) / 2.0;
    obs.At(t);
    for (int pass = 0; pass < 50; ++pass) {
        if (pass > 0 && pass < 3) obs.At(t);
        const BodyPlace p = Interpolate_Moon(t);
        double h = Meridian_Angle(Moon_Horizon(obs.Lat, p.Distance), obs.Lat, p.Dec);
        if (h == 0.0) break;
        if (rise) h = kTwoPi - h;
        const double lha = Wrap_2Pi(p.GHA + obs.Long);
        const double next = std::clamp(t + Wrap_Pi(h - lha) / kMoon_GHA_Rate, lo, hi);
        const double dt = next - t;
        t = next;
        if (std::fabs(dt) / kSecondOfTime < 0.1) break;
    }

    // Walk on the altitude in half hours towards the crossing, then refine.
    auto f = [&](double time) {
        obs.At(time);
        const BodyPlace p = Interpolate_Moon(time);
        return Altitude(obs.Lat, obs.Long, p.GHA, p.Dec) - Moon_Horizon(obs.Lat, p.Distance);
    };
    double value = f(t);
    // Below the horizon a rising Moon is ahead in time, a setting one behind.
    const double step = (value < 0.0) == rise ? kWalkStep : -kWalkStep;
    t = Walk_While_Same_Side(f, t, value, step, lo, hi, 50);
    bool first = true;
    t = Refine_Crossing(
        f, t, value, step, lo, hi,
        [&first](double s) {
            const double shrunk = first ? s / 4.0 : s / 10.0;
            first = false;
            return shrunk;
        },
        [](double s, double) { return std::fabs(s) < kSecondOfTime / 4.0; });

    // Passes on the full place: a secant on the altitude error.
    double lastT = 0.0, lastE = 0.0;
    for (int pass = 0; pass < 10; ++pass) {
        obs.At(t);
        const BodyPlace p = Moon_Place(t, kAccuracyFull);
        AltAzResult a;
        Calc_AltAz(a, body::MoonUpperLimb, obs.Lat, obs.Long, p);
        const double e = a.TrueAlt - Moon_Horizon(obs.Lat, p.Distance);
        if (std::fabs(e) * kArcsecPerRadian <= kFineGap) break;
        double rate = 0.0;  // change of altitude, radians a day
        if (pass > 0 && t != lastT) rate = (e - lastE) / (t - lastT);
        if (rate == 0.0) {
            const double lha = p.GHA + obs.Long;
            rate = -kMoon_GHA_Rate * std::cos(static_cast<double>(obs.Lat)) * std::cos(p.Dec) *
                   std::sin(lha) / std::max(1.0e-6, std::cos(static_cast<double>(a.TrueAlt)));
            if (rate == 0.0) break;
        }
        lastT = t;
        lastE = e;
        t = std::clamp(t - e / rate, lo, hi);
    }
    return t;
}

Moon_Rows_Result Moon_Rows(double moment, int32_t bias, bool seconds) {
    Set_Moving();
    const Event_Text_Style style = Main_Day_Style(moment, bias, seconds);
    const double dayStart = style.Day - 0.5 - bias / 1440.0;
    const double dayEnd = dayStart + 1.0;
    Fill_Moon_Day(dayStart, dayEnd);

    // The events of the day, in time order.
    double riseT = 0.0, setT = 0.0;
    for (size_t i = 0; i + 1 < Moon_Day.size(); ++i) {
        const Moon_Sample& a = Moon_Day[i];
        const Moon_Sample& b = Moon_Day[i + 1];
        const bool aUp = a.True_Alt > a.Horizon, bUp = b.True_Alt > b.Horizon;
        if (aUp == bUp) continue;
        const double t = Moon_Alt0_Time(a, b);
        if (t < dayStart || t >= dayEnd) continue;
        double& slot = bUp ? riseT : setT;
        if (slot == 0.0) slot = t;
    }
    constexpr float kHorizonAlt = 0.0f;  // seconds may be shown
    Moon_Rows_Result r;
    const bool setFirst = setT != 0.0 && riseT != 0.0 && setT < riseT;
    r.Titles = setFirst ? std::array<std::string, 2>{kMoonset, kMoonrise}
                        : std::array<std::string, 2>{kMoonrise, kMoonset};
    r.Moments = setFirst ? std::array<double, 2>{setT, riseT} : std::array<double, 2>{riseT, setT};
    for (int i = 0; i < 2; ++i) r.Texts[i] = Event_Text(r.Moments[i], kHorizonAlt, style);

    // The upper passage nearest the middle of the day.
    const double middle = dayStart + 0.5;
    const Moon_Sample* passage = nullptr;
    for (const Moon_Sample& s : Moon_Day)
        if (s.Upper && (!passage || std::fabs(s.Time - middle) < std::fabs(passage->Time - middle)))
            passage = &s;
    r.Passage_Title = DipRad != 0.0f ? kPassageObsAlt : kPassageAppAlt;
    if (passage) {
        r.Passage_Time = passage->Time;
        r.Passage_Alt = passage->Apparent_Alt;
        r.Passage_Time_Text = Event_Text(passage->Time, kHorizonAlt, style);
        r.Passage_Alt_Text = passage->Apparent_Alt < 0.0f
                                 ? std::string(kNoEvent)
                                 : Format_Angle(passage->Apparent_Alt, 1, false) + kUpperLimb;
    } else {
        r.Passage_Time_Text = kNoEvent;
        r.Passage_Alt_Text = kNoEvent;
    }

    // Age and illumination, by the page's own rules.
    r.Age = Moon_Age_At(moment);
    const EarthFrame frame = Calc_EarthFrame(moment);
    r.Phase =
        Moon_Illuminated_Fraction(Calc_Sun(kAccuracyFull, frame), Calc_Moon(kAccuracyFull, frame)) *
        100.0;
    return r;
}

}  // namespace kelmoran
