#include "almanac/Sun_Events.h"

#include <algorithm>
#include <cmath>

#include "almanac/Event_Search.h"
#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Series.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

using namespace event_search;

Sun_Day_State Sun_Day;
int32_t Moving = 0;

namespace {

constexpr double kHalfArcsec = 4.848136995860841e-06 / 2.0;
// 2π and π rounded to single precision: the upper tests of the hour-angle passes.
constexpr double kTwoPiSingle = 6.2831854820251465;
constexpr double kPiSingle = 3.1415927410125732;
// Seconds are written only for thresholds above -3°.
constexpr double kSecondsThreshold = -0.10471975803375244 / 2.0;
constexpr double kSunSemiDiameter = 0.00465241752803144;  // radians at one AU (959.63")
constexpr double kSolarParallax = 8.794;                  // seconds of arc at one AU
constexpr double kFlattening = 298.25722;
constexpr double kStepTolerance = 0.0005 / kArcsecPerRadian;  // the walker's end, radians

BodyPlace Sun_Place(double t, SeriesAccuracy accuracy) {
    return Calc_Sun(accuracy, Calc_EarthFrame(t));
}

// Refraction at the sea horizon and the dip together, for the actual values.
double Horizon_Refraction_And_Dip() {
    return static_cast<double>(Refraction_Apparent(-DipRad)) + DipRad;
}

// The true altitude of the centre at which the upper limb touches the observer's horizon,
// with the actual values, for latitude `lat` and the Sun at `r` AU.
double Actual_Sun_Horizon(double lat, double r, double refractionAndDip) {
    const double s = std::sin(lat);
    const double rho = 1.0 - s * s / kFlattening;
    return (kSolarParallax * rho / kArcsecPerRadian - kSunSemiDiameter) / r - refractionAndDip;
}

// Hour-angle pass: the moment at which the local hour angle of the Sun (GHA `gha` at `t`)
// reaches the meridian angle `h` of the morning or the evening. `d` receives the change of
// hour angle, -π .. π. With `singleBounds` the tests against 2π and π are on their 32-bit
// values, as the interpolated passes make them.
double Hour_Angle_Step(double t, double gha, double lon, double h, bool morning, double& d,
                       bool singleBounds) {
    if (morning) h = kTwoPi - h;
    double lha = gha + lon;
    if (lha < 0.0) lha += kTwoPi;
    if (lha > (singleBounds ? kTwoPiSingle : kTwoPi)) lha -= kTwoPi;
    d = h - lha;
    if (d > (singleBounds ? kPiSingle : kPi)) d -= kTwoPi;
    if (d < -kPi) d += kTwoPi;
    return t + d / kTwoPi;
}

// The bounds of a search on one side of noon.
void Side_Bounds(bool morning, double& lo, double& hi) {
    lo = morning ? Sun_Day.Sun_Before.Time : Sun_Day.Sun_Noon.Time;
    hi = morning ? Sun_Day.Sun_Noon.Time : Sun_Day.Sun_After.Time;
}

std::string Two_Digits(int v) {
    return Format_Number(v, mask::TwoDigits);
}

}  // namespace

void event_search::Observer_Track::At(double t) {
    if (Known && Moving == 0) return;
    float course = 0.0f, speed = 0.0f;
    Get_Position(t, Lat, Long, course, speed);
    Known = true;
}

void Set_Moving() {
    Moving = Settings.PositionMethod != kFixPosition ? 1 : 0;
}

uint8_t SimpleRise() {
    return static_cast<uint8_t>(Settings.SimplifiedRiseSet);
}

bool Actual_Rise_Values() {
    return SimpleRise() == 1;
}

Sun_Alt_Values Sun_Alt_Record(float lat, float lon, const BodyPlace& place) {
    const double phi = lat;
    double lha = place.GHA + lon;
    if (lha < 0.0) lha += kTwoPi;
    const double h = Altitude(phi, 0.0, lha, place.Dec);
    const float az = Atan2_R4(static_cast<float>(std::sin(kTwoPi - lha)),
                              static_cast<float>(std::cos(phi) * std::tan(place.Dec) -
                                                 std::sin(phi) * std::cos(kTwoPi - lha)));
    double refraction = 0.0, sd = 0.0, parallax = 0.0, dip = 0.0;
    if (!Actual_Rise_Values()) {
        refraction = 34.0 / kArcminPerRadian;
        sd = -16.0 / kArcminPerRadian;
    } else {
        const double r = place.Distance;
        const double hp = kSolarParallax / r / kArcsecPerRadian;
        sd = -kSunSemiDiameter / r;
        const double s = std::sin(phi);
        const double rho = 1.0 - s * s / kFlattening;
        refraction = Refraction_Apparent(-DipRad);
        dip = DipRad;
        const double dphi = phi - std::atan(std::tan(phi) / 0.9933064579963684);
        const double d = dphi * std::cos(static_cast<double>(az));
        parallax =
            Arc_Sin(std::cos(dphi) * rho * hp * std::cos(d + (-dip - refraction)) / std::cos(d));
    }
    Sun_Alt_Values v;
    v.True_Alt = static_cast<float>(h);
    v.Apparent_Alt = static_cast<float>(h - sd - parallax + refraction + dip);
    v.Az = az;
    v.Distance_Copy = static_cast<float>(place.Distance);
    v.Total_Correction = v.True_Alt - v.Apparent_Alt;
    v.Refraction = static_cast<float>(refraction);
    return v;
}

void Sun_MerPasses(std::span<const double> days, std::vector<Sun_Sample>& passes) {
    passes.assign(days.empty() ? 0 : 2 * days.size() + 1, Sun_Sample{});
    Observer_Track obs;
    for (size_t k = 0; k < passes.size(); ++k) {
        double t = 0.0;
        if (k == 0)
            t = days[0] - 0.5;
        else if (k == 1)
            t = passes[0].Time + 0.5;
        else
            t = 2.0 * passes[k - 1].Time - passes[k - 2].Time;
        const bool lower = k % 2 == 0;
        for (int pass = 0; pass < 50; ++pass) {
            obs.At(t);
            const BodyPlace sun = Sun_Place(t, kAccuracyFast);
            const double lha = Wrap_Pi(Reduce_2Pi(sun.GHA + obs.Long + (lower ? kPi : 0.0)));
            t -= lha / kTwoPi;
            if (std::fabs(lha) < kHalfArcsec) break;
        }
        obs.At(t);
        Sun_Sample& s = passes[k];
        s.Time = t;
        s.Place = Sun_Place(t, kAccuracyFull);
        const Sun_Alt_Values v = Sun_Alt_Record(obs.Lat, obs.Long, s.Place);
        s.True_Alt = v.True_Alt;
        s.Apparent_Alt = v.Apparent_Alt;
        s.Az = v.Az;
        s.Distance_Copy = v.Distance_Copy;
        s.Total_Correction = v.Total_Correction;
        s.Refraction = v.Refraction;
    }
}

Sun_Interpolated Interpolate_Sun(double t) {
    const Sun_Sample& a = t < Sun_Day.Sun_Noon.Time ? Sun_Day.Sun_Before : Sun_Day.Sun_Noon;
    const Sun_Sample& b = t < Sun_Day.Sun_Noon.Time ? Sun_Day.Sun_Noon : Sun_Day.Sun_After;
    const double span = b.Time - a.Time;
    const double f = span != 0.0 ? (t - a.Time) / span : 0.0;
    // The Sun's offset from sidereal time is -RA; it changes slowly and evenly.
    const double dra = Wrap_Pi(b.Place.RA - a.Place.RA);
    const double ra = a.Place.RA + f * dra;
    Sun_Interpolated s;
    s.GHA = Reduce_2Pi(Calc_GAST(t) - ra);
    s.Dec = a.Place.Dec + f * (b.Place.Dec - a.Place.Dec);
    s.Distance = a.Place.Distance + f * (b.Place.Distance - a.Place.Distance);
    return s;
}

double Sun_Step_Search(float alt, double t, bool morning) {
    double lo = 0.0, hi = 0.0;
    Side_Bounds(morning, lo, hi);
    Observer_Track obs;
    auto f = [&](double time) {
        obs.At(time);
        const Sun_Interpolated s = Interpolate_Sun(time);
        return Altitude(obs.Lat, obs.Long, s.GHA, s.Dec) - alt;
    };
    t = std::clamp(t, lo, hi);
    double value = f(t);
    // Away from noon the altitude falls: walk while still above the threshold.
    double step = (morning ? -1.0 : 1.0) / 24.0;
    if (value > 0.0) t = Walk_While_Same_Side(f, t, value, step, lo, hi, 20);
    return Refine_Crossing(
        f, t, value, step, lo, hi, [](double s) { return s / 10.0; },
        [](double, double v) { return std::fabs(v) <= kStepTolerance; });
}

double Sun_Alt_Event(float alt, bool morning) {
    const Sun_Sample& noon = Sun_Day.Sun_Noon;
    const Sun_Sample& side = morning ? Sun_Day.Sun_Before : Sun_Day.Sun_After;
    double lo = 0.0, hi = 0.0;
    Side_Bounds(morning, lo, hi);
    Observer_Track obs;

    // Coarse: the meridian angle on the mean declination of the half day.
    double t = (noon.Time + side.Time) / 2.0;
    obs.At(t);
    const double meanDec = (noon.Place.Dec + side.Place.Dec) / 2.0;
    int pass = 0;
    for (; pass < 100; ++pass) {
        const double h = Meridian_Angle(alt, obs.Lat, meanDec);
        if (h == 0.0) break;
        const double next = noon.Time + (morning ? -h : h) / kTwoPi;
        const bool done = std::fabs(next - t) <= kMinuteOfTime;
        t = next;
        if (done) break;
        obs.At(t);
    }

    // Interpolated hour-angle passes.
    for (; pass < 100; ++pass) {
        obs.At(t);
        const Sun_Interpolated s = Interpolate_Sun(t);
        const double h = Meridian_Angle(alt, obs.Lat, s.Dec);
        if (h == 0.0) break;
        double d = 0.0;
        const double next = Hour_Angle_Step(t, s.GHA, obs.Long, h, morning, d, true);
        const bool done = std::fabs(next - t) < kSecondOfTime;
        t = next;
        if (done) break;
    }

    // Exact: the walker brings the moment close, then passes on the full place.
    t = Sun_Step_Search(alt, t, morning);
    for (pass = 0; pass < 100; ++pass) {
        obs.At(t);
        const BodyPlace sun = Sun_Place(t, kAccuracyFull);
        const double h = Meridian_Angle(alt, obs.Lat, sun.Dec);
        if (h == 0.0) break;
        double d = 0.0;
        const double next =
            std::clamp(Hour_Angle_Step(t, sun.GHA, obs.Long, h, morning, d, false), lo, hi);
        const bool done = std::fabs(next - t) < kSecondOfTime;
        t = next;
        if (done) break;
    }
    return t;
}

Event_Text_Style Main_Day_Style(double moment, int32_t bias, bool seconds) {
    Event_Text_Style style;
    style.Screen = Event_Screen::Main;
    style.Bias = bias;
    style.Seconds = seconds;
    style.Day = std::floor(moment + bias / 1440.0 + 0.5);
    return style;
}

std::string Event_Text(double t, float alt, const Event_Text_Style& style) {
    if (t == 0.0) return kNoEvent;
    const double zone = t + style.Bias / 1440.0;
    const bool seconds = style.Seconds && alt > kSecondsThreshold;
    std::string text = Format_Time_Of_Day(zone, seconds);
    if (style.Screen == Event_Screen::Main) {
        const double unit = seconds ? 86400.0 : 1440.0;
        const double shown = std::round(zone * unit) / unit;
        if (std::floor(shown + 0.5) != style.Day)
            text = Two_Digits(JD_To_Date(shown).wDay) + "/ " + text;
    }
    return text;
}

std::string Twilight_Text(float alt, bool morning, const Event_Text_Style& style, double* moment) {
    const Sun_Sample& noon = Sun_Day.Sun_Noon;
    const Sun_Sample& side = morning ? Sun_Day.Sun_Before : Sun_Day.Sun_After;
    double t = 0.0;
    if (side.True_Alt < alt && noon.True_Alt >= alt)
        t = Sun_Alt_Event(alt, morning);
    else if (side.True_Alt == alt)
        t = side.Time;
    else if (noon.True_Alt == alt)
        t = noon.Time;
    if (moment) *moment = t;
    return Event_Text(t, alt, style);
}

namespace {

// Sunrise or sunset with the actual values: the moment at which the upper limb touches
// the observer's horizon, between noon and the lower passage on that side.
double Actual_Rise_Set(bool morning) {
    const Sun_Sample& noon = Sun_Day.Sun_Noon;
    const Sun_Sample& side = morning ? Sun_Day.Sun_Before : Sun_Day.Sun_After;
    double lo = 0.0, hi = 0.0;
    Side_Bounds(morning, lo, hi);
    Observer_Track obs;
    const double refractionAndDip = Horizon_Refraction_And_Dip();

    // Hour-angle passes on the interpolated place, the horizon of the noon distance.
    double t = (noon.Time + side.Time) / 2.0;
    obs.At(t);
    const double h0 = Actual_Sun_Horizon(obs.Lat, noon.Place.Distance, refractionAndDip);
    for (int pass = 0; pass < 50; ++pass) {
        if (pass > 0 && pass < 3) obs.At(t);
        const Sun_Interpolated s = Interpolate_Sun(t);
        const double h = Meridian_Angle(h0, obs.Lat, s.Dec);
        if (h == 0.0) break;
        double d = 0.0;
        t = std::clamp(Hour_Angle_Step(t, s.GHA, obs.Long, h, morning, d, false), lo, hi);
        if (std::fabs(d) < 1.0 / kArcminPerRadian) break;
    }

    // A walk on the altitude against the horizon of the moment.
    auto f = [&](double time) {
        obs.At(time);
        const Sun_Interpolated s = Interpolate_Sun(time);
        return Altitude(obs.Lat, obs.Long, s.GHA, s.Dec) -
               Actual_Sun_Horizon(obs.Lat, s.Distance, refractionAndDip);
    };
    double value = f(t);
    const double rising = morning ? 1.0 : -1.0;  // sign of the altitude's change
    double step = 10.0 * kMinuteOfTime;
    if (std::fabs(value) < 2.0 / kDegreesPerRadian) {
        // The hour-angle difference that the gap stands for, at least a second.
        const Sun_Interpolated s = Interpolate_Sun(t);
        const double rate =
            kTwoPi * std::max(0.05, std::cos(static_cast<double>(obs.Lat)) * std::cos(s.Dec));
        step = std::max(kSecondOfTime, std::fabs(value) / rate);
    }
    // Below the horizon a rising Sun is ahead in time, a setting one behind.
    step *= (value < 0.0 ? rising : -rising);
    t = Walk_While_Same_Side(f, t, value, step, lo, hi, 400);
    t = Refine_Crossing(
        f, t, value, step, lo, hi,
        [](double s) { return std::fabs(s) >= kMinuteOfTime ? s / 20.0 : s / 4.0; },
        [](double s, double) { return std::fabs(s) < kSecondOfTime / 4.0; });

    // Final hour-angle passes on the full place.
    for (int pass = 0; pass < 10; ++pass) {
        obs.At(t);
        const BodyPlace sun = Sun_Place(t, kAccuracyFull);
        const double horizon = Actual_Sun_Horizon(obs.Lat, sun.Distance, refractionAndDip);
        const double h = Meridian_Angle(horizon, obs.Lat, sun.Dec);
        if (h == 0.0) break;
        double d = 0.0;
        t = std::clamp(Hour_Angle_Step(t, sun.GHA, obs.Long, h, morning, d, false), lo, hi);
        if (std::fabs(d) < 1.0 / kArcsecPerRadian) break;
    }
    return t;
}

}  // namespace

std::string Sun_Rise_Set(bool morning, const Event_Text_Style& style, double* moment) {
    if (!Actual_Rise_Values()) return Twilight_Text(kStandardSunriseAlt, morning, style, moment);
    const Sun_Sample& noon = Sun_Day.Sun_Noon;
    const Sun_Sample& side = morning ? Sun_Day.Sun_Before : Sun_Day.Sun_After;
    double t = 0.0;
    if (side.Apparent_Alt == 0.0f)
        t = side.Time;
    else if (noon.Apparent_Alt == 0.0f)
        t = noon.Time;
    else if (noon.Apparent_Alt > 0.0f && side.Apparent_Alt < 0.0f)
        t = Actual_Rise_Set(morning);
    if (moment) *moment = t;
    return Event_Text(t, kStandardSunriseAlt, style);
}

namespace {

Sun_Row Day_Row(const Event_Text_Style& style) {
    constexpr float kNoonAlt = 1.5707964f;  // the passage is no twilight: seconds allowed
    Sun_Row row;
    row[0] = Twilight_Text(kAstronomicalAlt, true, style);
    row[1] = Twilight_Text(kNauticalAlt, true, style);
    row[2] = Twilight_Text(kCivilAlt, true, style);
    row[3] = Sun_Rise_Set(true, style);
    row[4] = Event_Text(Sun_Day.Sun_Noon.Time, kNoonAlt, style);
    row[5] = Sun_Rise_Set(false, style);
    row[6] = Twilight_Text(kCivilAlt, false, style);
    row[7] = Twilight_Text(kNauticalAlt, false, style);
    row[8] = Twilight_Text(kAstronomicalAlt, false, style);
    return row;
}

}  // namespace

Sun_Row Main_Sun_Rows(double moment, int32_t bias, bool seconds) {
    Set_Moving();
    const Event_Text_Style style = Main_Day_Style(moment, bias, seconds);
    const double noon = style.Day - bias / 1440.0;
    std::vector<Sun_Sample> passes;
    Sun_MerPasses(std::span<const double>(&noon, 1), passes);
    Sun_Day.Sun_Before = passes[0];
    Sun_Day.Sun_Noon = passes[1];
    Sun_Day.Sun_After = passes[2];
    return Day_Row(style);
}

std::vector<Sun_Row> Clox_Sun_Row(std::span<const Clox_Day> days, bool seconds) {
    Set_Moving();
    std::vector<double> noons;
    noons.reserve(days.size());
    for (const Clox_Day& d : days) noons.push_back(d.Noon);
    std::vector<Sun_Sample> passes;
    Sun_MerPasses(noons, passes);
    std::vector<Sun_Row> rows;
    rows.reserve(days.size());
    for (size_t i = 0; i < days.size(); ++i) {
        Sun_Day.Sun_Before = passes[2 * i];
        Sun_Day.Sun_Noon = passes[2 * i + 1];
        Sun_Day.Sun_After = passes[2 * i + 2];
        Event_Text_Style style;
        style.Screen = Event_Screen::Clocks;
        style.Bias = days[i].Bias;
        style.Seconds = seconds;
        rows.push_back(Day_Row(style));
    }
    return rows;
}

}  // namespace kelmoran
