#include "almanac/cAlmanac.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "almanac/Event_Search.h"
#include "almanac/Moon_Events.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Moon_Phases.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Series.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "stars/M_Resources.h"

namespace kelmoran {

using namespace event_search;

const std::array<int, cAlmanac::kLatitudeRows> cAlmanac::kLatitudes = {
    72, 70, 68, 66,  64,  62,  60,  58,  56,  54,  52,  50,  45,  40,  35,  30,
    20, 10, 0,  -10, -20, -30, -35, -40, -45, -50, -52, -54, -56, -58, -60, -62};

const std::array<const char*, cAlmanac::kLatitudeRows> cAlmanac::kLatitudeLabels = {
    "N  72°", "N  70°", "68°", "66°",    "64°", "62°",    "60°",    "N  58°",
    "56°",    "54°",    "52°", "50°",    "45°", "N  40°", "35°",    "30°",
    "20°",    "N  10°", "0°",  "S  10°", "20°", "30°",    "35°",    "40°",
    "45°",    "S  50°", "52°", "54°",    "56°", "58°",    "S  60°", "S  62°"};

namespace {

constexpr double kHour = 0.041666666666666664;  // day
constexpr double kTenthsInCircle = 216000.0;
constexpr double kFiftyMinutes = 0.0145444106310606;
constexpr double kNauticalTwilight = -0.20943951606750488;
constexpr double kCivilTwilight = -0.10471975803375244;
constexpr double kMoonRefraction = 0.009890199094634532;  // 34'
constexpr double kMoonCycleRate = 0.964444444444444;      // cycles of hour angle a day
constexpr double kMoonNodeStep = 12.0;                    // hours between full places
constexpr double kKmPerAu = 149597870.0;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr const char* kNone = "  -  ";
constexpr const char* kAwkwardNone = "-    ";

// An angle in tenths of a minute of arc, rounded (halves to even).
double Tenths(double radians) {
    return Round_Even(radians * kArcminPerRadian * 10.0);
}

// The text of an hour angle held as tenths of a minute: 0 .. 359°, padded.
std::string Angle_Tenths_Text(double tenths) {
    return Format_Angle(tenths / 10.0 / kArcminPerRadian, 1, true);
}

// A declination, with its hemisphere name or without it.
std::string Dec_Text(double dec, bool withName) {
    std::string text = Format_Lat(dec, 1, true);
    if (!withName) text.resize(text.size() - 2);
    return text;
}

// "N" or "S", as the declination's text names it.
std::string Hemisphere(double dec) {
    const std::string text = Format_Lat(dec, 1, false);
    return text.substr(text.size() - 1);
}

// Four-point Lagrange interpolation of y at x within nodes 0, 1, 2, 3 (x measured in node
// steps from node 1).
double Lagrange4(const double y[4], double x) {
    const double a = x + 1.0, b = x, c = x - 1.0, d = x - 2.0;
    return -y[0] * b * c * d / 6.0 + y[1] * a * c * d / 2.0 - y[2] * a * b * d / 2.0 +
           y[3] * a * b * c / 6.0;
}

// Places of a body at the full series every 12 hours, carried to each hour: `first` and
// `last` are the hours wanted (relative to the page's 0h), `place(t)` the full place at
// moment t, `frameGAST(h)` the sidereal time of hour h.
template <class Place, class Gast>
void Hourly_From_Nodes(double jd, int first, int last, Place place, Gast gast, BodyPlace* out) {
    const int step = static_cast<int>(kMoonNodeStep);
    const int n0 = static_cast<int>(std::floor(static_cast<double>(first) / step)) - 1;
    const int n1 = static_cast<int>(std::ceil(static_cast<double>(last) / step)) + 1;
    std::vector<double> ra, dec, dist;
    for (int n = n0; n <= n1; ++n) {
        const BodyPlace p = place(jd + n * step * kHour);
        double r = p.RA;
        if (!ra.empty()) r = ra.back() + Wrap_Pi(r - ra.back());
        ra.push_back(r);
        dec.push_back(p.Dec);
        dist.push_back(p.Distance);
    }
    for (int h = first; h <= last; ++h) {
        const int k = static_cast<int>(std::floor(static_cast<double>(h) / step)) - n0;
        const double x = static_cast<double>(h) / step - (n0 + k);
        const size_t s = static_cast<size_t>(k - 1);
        BodyPlace p;
        p.RA = Reduce_2Pi(Lagrange4(&ra[s], x));
        p.Dec = Lagrange4(&dec[s], x);
        p.Distance = Lagrange4(&dist[s], x);
        p.GHA = Hour_Angle_Of(gast(h), p.RA);
        out[h - first] = p;
    }
}

// The Moon at each hour `first` .. `last` (relative to the page's 0h) at the accuracy of
// the full series: the reduced series at every hour, plus the full series' excess over it,
// which changes slowly, taken at 24-hour nodes and carried to the hour by the same
// four-point interpolation. Interpolating the places themselves would leave the Moon's
// fast terms up to 2" out; the excess alone keeps each hour within 0.01" of the full
// place. `frameAt(h)` is the earth frame of hour h.
template <class Frame>
void Hourly_Moon_Corrected(int first, int last, Frame frameAt, BodyPlace* out) {
    constexpr int step = 24;
    const int n0 = static_cast<int>(std::floor(static_cast<double>(first) / step)) - 1;
    const int n1 = static_cast<int>(std::ceil(static_cast<double>(last) / step)) + 1;
    std::vector<double> ra, dec, dist;
    for (int n = n0; n <= n1; ++n) {
        const EarthFrame frame = frameAt(n * step);
        const BodyPlace full = Calc_Moon(kAccuracyFull, frame);
        const BodyPlace reduced = Calc_Moon(kAccuracyReduced, frame);
        ra.push_back(Wrap_Pi(full.RA - reduced.RA));
        dec.push_back(full.Dec - reduced.Dec);
        dist.push_back(full.Distance - reduced.Distance);
    }
    for (int h = first; h <= last; ++h) {
        const int k = static_cast<int>(std::floor(static_cast<double>(h) / step)) - n0;
        const double x = static_cast<double>(h) / step - (n0 + k);
        const size_t s = static_cast<size_t>(k - 1);
        const EarthFrame frame = frameAt(h);
        BodyPlace p = Calc_Moon(kAccuracyReduced, frame);
        p.RA = Reduce_2Pi(p.RA + Lagrange4(&ra[s], x));
        p.Dec += Lagrange4(&dec[s], x);
        p.Distance += Lagrange4(&dist[s], x);
        p.GHA = Hour_Angle_Of(frame.GAST, p.RA);
        out[h - first] = p;
    }
}

// "0'.0" of a value of minutes.
std::string Minutes_Text(double minutes, const char* mask) {
    return Format_Number(Round_Even(minutes, 1), mask);
}

}  // namespace

// ------------------------------------------------------------------ shared Moon values

double Moon_Age_At(double jd) {
    if (!std::isfinite(jd)) return 0.0;
    const double deltaT = Get_DeltaT(DeltaT_Year(jd)) / kSecondsPerJulianCentury;
    double age = Round_Even(jd - New_Moon_Before(jd, deltaT));
    if (age >= 28.0) {
        const double next = New_Moon_Before(jd + 32.0, deltaT);
        if (next <= jd) age = Round_Even(jd - next);
    }
    return age;
}

double Moon_Illuminated_Fraction(const BodyPlace& sun, const BodyPlace& moon) {
    const double psi = Arc_Cos(std::sin(sun.Dec) * std::sin(moon.Dec) +
                               std::cos(sun.Dec) * std::cos(moon.Dec) * std::cos(sun.RA - moon.RA));
    const double rs = sun.Distance * kKmPerAu, rm = moon.Distance;
    double i = std::atan(rs * std::sin(psi) / (rm - rs * std::cos(psi)));
    if (i < 0.0) i += kPi;
    const double k = Round_Even((1.0 + std::cos(i)) / 2.0, 2);
    return std::isfinite(k) ? k : 0.0;
}

std::string Illumination_Text(double fraction) {
    return fraction == 1.0 ? std::string("Full ") : Format_Number(fraction, "##0%");
}

// ------------------------------------------------------------------ the page

std::string cAlmanac::HrMins_Ex(double minutes) {
    double m = Round_Even(minutes);
    m -= 1440.0 * std::floor(m / 1440.0);
    const int whole = static_cast<int>(m);
    return Format_Number(whole / 60, mask::TwoDigits) + ":" +
           Format_Number(whole % 60, mask::TwoDigits);
}

std::string cAlmanac::Tabulated_Angle_Text(double radians) {
    double tenths = Tenths(Reduce_2Pi(radians));
    if (tenths >= kTenthsInCircle) tenths -= kTenthsInCircle;
    return Angle_Tenths_Text(tenths);
}

double cAlmanac::Moon_MerPassAlt(bool upper, double dec, double lat, double r) {
    const double h = upper ? kPi / 2.0 - std::fabs(lat - dec) : std::fabs(lat + dec) - kPi / 2.0;
    return h + kMoonRadiusKm / r - Arc_Sin(6378.137 / r) + kMoonRefraction;
}

void cAlmanac::MyJD(double jd) {
    jd_ = jd;
    Places();
    Populate_Sun_MerPasses();
    Calc_Sun_Twilights();
    Populate_Moon_MerPasses();
    Calc_Moon_Rise_Times();
    Sun_Column();
    Moon_Column();
    Aries_Column();
    Planet_Data();
    StellarData();
    CalcMoonPhase();
}

void cAlmanac::Places() {
    for (int h = 0; h < kFrameHours; ++h) {
        frames_[static_cast<size_t>(h)] = Calc_EarthFrame(jd_ + h * kHour);
        if (h <= kHours)
            sunPlaces_[static_cast<size_t>(h)] =
                Calc_Sun(kAccuracyFull, frames_[static_cast<size_t>(h)]);
    }
    auto gast = [this](int h) {
        return h >= 0 && h < kFrameHours ? frames_[static_cast<size_t>(h)].GAST
                                         : Calc_GAST(jd_ + h * kHour);
    };
    // The Moon beyond the printed hours serves only the passages and the rises of the
    // tables, printed to the minute: there the reduced series is enough.
    Hourly_From_Nodes(
        jd_, -kMoonBefore, kMoonAfter,
        [](double t) { return Calc_Moon(kAccuracyReduced, Calc_EarthFrame(t)); }, gast,
        moonPlaces_.data());
    // The printed hours and the three beyond them at the full series' accuracy.
    const auto frameAt = [this](int h) {
        return h >= 0 && h < kFrameHours ? frames_[static_cast<size_t>(h)]
                                         : Calc_EarthFrame(jd_ + h * kHour);
    };
    Hourly_Moon_Corrected(0, kFrameHours - 1, frameAt, &moonPlaces_[kMoonBefore]);
    for (size_t p = 0; p < kPlanets.size(); ++p) {
        const int body = kPlanets[p];
        Hourly_From_Nodes(
            jd_, 0, kHours,
            [body](double t) {
                BodyPlace place;
                float earth = 0.0f;
                Calc_Planet(place, body, kAccuracyFull, Calc_EarthFrame(t), earth);
                return place;
            },
            gast, planetPlaces_[p].data());
    }
}

cAlmanac::Interp cAlmanac::Interpolate_Sun_Data(double hour) const {
    const int i = std::clamp(static_cast<int>(std::floor(hour)), 0, kHours - 1);
    const double f = hour - i;
    const BodyPlace& a = sunPlaces_[static_cast<size_t>(i)];
    const BodyPlace& b = sunPlaces_[static_cast<size_t>(i + 1)];
    Interp s;
    s.GHA = Reduce_2Pi(a.GHA + f * Reduce_2Pi(b.GHA - a.GHA));
    s.Dec = a.Dec + f * (b.Dec - a.Dec);
    s.Distance = a.Distance + f * (b.Distance - a.Distance);
    return s;
}

cAlmanac::Interp cAlmanac::Interpolate_Moon_Data(double hour) const {
    const int i = std::clamp(static_cast<int>(std::floor(hour)), -kMoonBefore, kMoonAfter - 1);
    const double f = hour - i;
    const BodyPlace& a = moonPlaces_[static_cast<size_t>(i + kMoonBefore)];
    const BodyPlace& b = moonPlaces_[static_cast<size_t>(i + 1 + kMoonBefore)];
    Interp s;
    s.GHA = Reduce_2Pi(a.GHA + f * Reduce_2Pi(b.GHA - a.GHA));
    s.Dec = a.Dec + f * (b.Dec - a.Dec);
    s.Distance = a.Distance + f * (b.Distance - a.Distance);
    return s;
}

// ------------------------------------------------------------------ the Sun

void cAlmanac::Populate_Sun_MerPasses() {
    auto equation = [](double hours) {
        const double e = std::fabs(hours);
        int m = static_cast<int>(std::floor(e * 60.0));
        double s = Round_Even((e * 60.0 - m) * 60.0);
        if (s == 60.0) {
            s = 0.0;
            ++m;
        }
        return std::string(" ") + (m < 10 ? kPadUnit : "") + std::to_string(m) + " " +
               Format_Number(s, mask::TwoDigits);
    };
    constexpr double kHoursPerRadian = 3.8197186342054867;
    for (int i = 0; i < kDays; ++i) {
        // The equation of time is the Sun's hour angle's excess over the mean Sun's.
        const double e00 = (sunPlaces_[static_cast<size_t>(24 * i)].GHA - kPi) * kHoursPerRadian;
        const double e12 =
            Wrap_Pi(sunPlaces_[static_cast<size_t>(24 * i + 12)].GHA) * kHoursPerRadian;
        double pass = 12.0 - e12;
        pass -= 24.0 * std::floor(pass / 24.0);
        sunPass_[static_cast<size_t>(i)] = pass;
        Daily_MP& d = daily_[static_cast<size_t>(i)];
        d.Eqn00 = equation(e00);
        d.Eqn12 = equation(e12);
        d.MerPass = HrMins_Ex(pass * 60.0);
    }
}

double cAlmanac::Get_Time_for_SunAlt(double alt, bool morning, double lat, double noon) const {
    double t = noon;
    bool solved = false;
    for (int pass = 0; pass < 50; ++pass) {
        const Interp s = Interpolate_Sun_Data(t);
        double h = Meridian_Angle(alt, lat, s.Dec);
        if (h == 0.0) return kNaN;
        if (morning) h = kTwoPi - h;
        const double dt = Wrap_Pi(h - s.GHA) / kTwoPi * 24.0;
        t += dt;
        if (std::fabs(dt) < kSecondOfTime * 24.0) {
            solved = true;
            break;
        }
    }
    if (!solved) return kNaN;
    if (t - noon >= 0.6 * 24.0) t -= 24.0;
    if (noon - t >= 0.6 * 24.0) t += 24.0;
    return t;
}

double cAlmanac::Almanac_Awkward_Body(bool moon, double lat, double alt, double from, double to,
                                      bool rising) const {
    // Hours: the altitude of the Sun, or of the Moon's upper limb, less the threshold.
    auto f = [&](double hour) {
        const Interp p = moon ? Interpolate_Moon_Data(hour) : Interpolate_Sun_Data(hour);
        double h = Altitude(lat, 0.0, p.GHA, p.Dec);
        if (moon)
            h -= Arc_Sin(6378.137 / p.Distance) - kMoonRadiusKm / p.Distance - kMoonRefraction;
        return h - alt;
    };
    // A quarter of the body's day, then 10 minutes.
    const double day = moon ? 24.0 / kMoonCycleRate : 24.0;
    for (double step : {day / 4.0, 0.006944444444444445 * 24.0}) {
        double a = from, fa = f(a);
        while (a < to) {
            const double b = std::min(to, a + step), fb = f(b);
            if ((fa < 0.0 && fb >= 0.0 && rising) || (fa >= 0.0 && fb < 0.0 && !rising)) {
                double lo = a, hi = b;
                while (hi - lo > kSecondOfTime * 24.0) {
                    const double mid = (lo + hi) / 2.0;
                    if ((f(mid) >= 0.0) == rising)
                        hi = mid;
                    else
                        lo = mid;
                }
                return (lo + hi) / 2.0;
            }
            a = b;
            fa = fb;
        }
    }
    return kNaN;
}

void cAlmanac::Calc_Sun_Twilights() {
    const double thresholds[3] = {kNauticalTwilight, kCivilTwilight, -kFiftyMinutes};
    for (int row = 0; row < kLatitudeRows; ++row) {
        const double lat = kLatitudes[static_cast<size_t>(row)] * kOneDegree;
        for (int i = 0; i < kDays; ++i) {
            const double noon = 24.0 * i + sunPass_[static_cast<size_t>(i)];
            const double dm = Interpolate_Sun_Data(noon).Dec;
            const double d1 = Interpolate_Sun_Data(noon - 12.0).Dec;
            const double d2 = Interpolate_Sun_Data(noon + 12.0).Dec;
            const double noonAlt = kPi / 2.0 - std::fabs(lat - dm);
            const double before = std::fabs(lat + d1) - kPi / 2.0;
            const double after = std::fabs(lat + d2) - kPi / 2.0;
            std::string am[3], pm[3];
            for (int k = 0; k < 3; ++k) {
                const double alt = thresholds[k];
                for (bool morning : {true, false}) {
                    const double night = morning ? before : after;
                    const bool exists = noonAlt - alt >= 0.0 && night - alt < 0.0;
                    // Near the threshold at a passage the declination's change decides.
                    const bool awkward = std::fabs(noonAlt - alt) < kOneDegree ||
                                         std::fabs(night - alt) < kOneDegree;
                    double t = exists ? Get_Time_for_SunAlt(alt, morning, lat, noon) : kNaN;
                    std::string text = kNone;
                    if (!std::isnan(t)) {
                        text = HrMins_Ex((t - 24.0 * i) * 60.0);
                    } else if (awkward) {
                        t = morning
                                ? Almanac_Awkward_Body(false, lat, alt, noon - 12.0, noon, true)
                                : Almanac_Awkward_Body(false, lat, alt, noon, noon + 12.0, false);
                        text = std::isnan(t) ? kAwkwardNone : HrMins_Ex((t - 24.0 * i) * 60.0);
                    }
                    (morning ? am : pm)[k] = text;
                }
            }
            AM_Cells& a = am_[static_cast<size_t>(row)][static_cast<size_t>(i)];
            a.Nautical = am[0];
            a.Civil = am[1];
            a.Sunrise = am[2];
            PM_Cells& p = pm_[static_cast<size_t>(row)][static_cast<size_t>(i)];
            p.Sunset = pm[2];
            p.Civil = pm[1];
            p.Nautical = pm[0];
        }
    }
}

void cAlmanac::Sun_Column() {
    double sumDec = 0.0;
    for (int h = 1; h <= kHours; ++h)
        sumDec += std::fabs(sunPlaces_[static_cast<size_t>(h)].Dec -
                            sunPlaces_[static_cast<size_t>(h - 1)].Dec);
    other_.SunD = Minutes_Text(sumDec * kArcminPerRadian / kHours, "0'.0");
    other_.SunSD =
        Minutes_Text(0.00465241752803144 / sunPlaces_[36].Distance * kArcminPerRadian, "00'.0");
    std::string lastName;
    for (int h = 0; h < kHours; ++h) {
        // The adjusted GHA: the mean of this hour's and the next's, less 7.5°, which lets
        // a reader add 15° an hour without a v correction.
        double g0 = sunPlaces_[static_cast<size_t>(h)].GHA;
        double g1 = sunPlaces_[static_cast<size_t>(h + 1)].GHA;
        if (std::fabs(g1 - g0) > kPi) (g0 < g1 ? g0 : g1) += kTwoPi;
        const double gha = Reduce_2Pi((g0 + g1) / 2.0 - 7.5 * kOneDegree);
        sunTabGHA_[static_cast<size_t>(h)] = gha;
        double tenths = Tenths(gha);
        if (tenths == kTenthsInCircle) tenths = 0.0;
        if (tenths < 0.0) tenths += kTenthsInCircle;
        Body_Row& r = sun_[static_cast<size_t>(h)];
        r.GHA = Angle_Tenths_Text(tenths);
        const double dec = sunPlaces_[static_cast<size_t>(h)].Dec;
        const std::string name = Hemisphere(dec);
        const bool withName = h % 12 == 0 || name != lastName;
        r.Dec = Dec_Text(dec, withName);
        r.Marker = withName ? name : "";
        lastName = name;
    }
}

// ------------------------------------------------------------------ the Moon

void cAlmanac::Moon_Column() {
    for (int i = 0; i < kDays; ++i)
        other_.MoonSD[static_cast<size_t>(i)] = Minutes_Text(
            kMoonRadiusKm / Moon_Place(12 + 24 * i).Distance * kArcminPerRadian, "00'.0");
    std::string lastName;
    for (int h = 0; h < kHours; ++h) {
        const BodyPlace& p = Moon_Place(h);
        const BodyPlace& next = Moon_Place(h + 1);
        Moon_Row& r = moon_[static_cast<size_t>(h)];
        const double g0 = Tenths(p.GHA), g1 = Tenths(next.GHA);
        r.GHA = Angle_Tenths_Text(g0);
        double v = (g1 - g0) / 10.0 - 859.0;
        if (v < 0.0) v += 21600.0;
        r.v = Minutes_Text(v, "#0'.0");
        const std::string name = Hemisphere(p.Dec);
        const bool withName = h % 24 == 0 || name != lastName;
        r.Dec = Dec_Text(p.Dec, withName);
        r.Flag = withName ? name : "";
        lastName = name;
        r.d = Minutes_Text(std::fabs(Tenths(next.Dec) - Tenths(p.Dec)) / 10.0, "#0'.0");
        r.HP = Minutes_Text(Arc_Sin(6378.137 / p.Distance) * kArcminPerRadian, "00'.0");
    }
}

void cAlmanac::Calc_Moon_Upper_MerPass() {
    for (int h = -kMoonBefore; h < kMoonAfter; ++h) {
        const double a = Wrap_Pi(Moon_Place(h).GHA), b = Wrap_Pi(Moon_Place(h + 1).GHA);
        if (a < 0.0 && b >= 0.0 && b - a < kPi) moonPassages_.emplace_back(h - a / (b - a), true);
    }
}

void cAlmanac::Calc_Moon_Lower_MerPass() {
    for (int h = -kMoonBefore; h < kMoonAfter; ++h) {
        const double a = Wrap_Pi(Moon_Place(h).GHA - kPi), b = Wrap_Pi(Moon_Place(h + 1).GHA - kPi);
        if (a < 0.0 && b >= 0.0 && b - a < kPi) moonPassages_.emplace_back(h - a / (b - a), false);
    }
}

void cAlmanac::Populate_Moon_MerPasses() {
    moonPassages_.clear();
    Calc_Moon_Upper_MerPass();
    Calc_Moon_Lower_MerPass();
    std::sort(moonPassages_.begin(), moonPassages_.end());
    // Refine each passage on the hourly places to within a second.
    for (auto& [t, upper] : moonPassages_) {
        for (int pass = 0; pass < 10; ++pass) {
            const double lha = Wrap_Pi(Interpolate_Moon_Data(t).GHA - (upper ? 0.0 : kPi));
            const double dt = -lha / (kTwoPi * kMoonCycleRate) * 24.0;
            t += dt;
            if (std::fabs(dt) < kSecondOfTime * 24.0) break;
        }
    }
    for (int i = 0; i < kDays; ++i) {
        moonPass_[static_cast<size_t>(i)] = {-1.0, -1.0};
        for (const auto& [t, upper] : moonPassages_) {
            if (t < 24.0 * i || t >= 24.0 * (i + 1)) continue;
            double& slot = moonPass_[static_cast<size_t>(i)][upper ? 0 : 1];
            if (slot < 0.0) slot = t - 24.0 * i;
        }
        Daily_MP& d = daily_[static_cast<size_t>(i)];
        const auto& p = moonPass_[static_cast<size_t>(i)];
        d.MoonUpper = p[0] < 0.0 ? kNone : HrMins_Ex(p[0] * 60.0);
        d.MoonLower = p[1] < 0.0 ? kNone : HrMins_Ex(p[1] * 60.0);
    }
}

double cAlmanac::Get_Time_Of_MoonAlt0(double lat, double from, double to, bool rise) const {
    double t = (from + to) / 2.0;
    for (int pass = 0; pass < 50; ++pass) {
        const Interp p = Interpolate_Moon_Data(t);
        const double horizon =
            Arc_Sin(6378.137 / p.Distance) - kMoonRadiusKm / p.Distance - kMoonRefraction;
        double h = Meridian_Angle(horizon, lat, p.Dec);
        if (h == 0.0) return kNaN;
        if (rise) h = kTwoPi - h;
        const double next =
            std::clamp(t + Wrap_Pi(h - p.GHA) / (kTwoPi * kMoonCycleRate) * 24.0, from, to);
        const double dt = next - t;
        t = next;
        if (std::fabs(dt) < kSecondOfTime * 24.0) return t;
    }
    return t;
}

void cAlmanac::Moon_Time_Sequence(int row) {
    const double lat = kLatitudes[static_cast<size_t>(row)] * kOneDegree;
    for (int i = 0; i < kDays; ++i) {
        am_[static_cast<size_t>(row)][static_cast<size_t>(i)].Moonrise = kNone;
        pm_[static_cast<size_t>(row)][static_cast<size_t>(i)].Moonset = kNone;
    }
    std::array<bool, kDays> riseDone{}, setDone{};
    for (size_t k = 0; k + 1 < moonPassages_.size(); ++k) {
        const auto [ta, upperA] = moonPassages_[k];
        const auto [tb, upperB] = moonPassages_[k + 1];
        const Interp pa = Interpolate_Moon_Data(ta), pb = Interpolate_Moon_Data(tb);
        const bool va = IsMoonVisible(Moon_MerPassAlt(upperA, pa.Dec, lat, pa.Distance));
        const bool vb = IsMoonVisible(Moon_MerPassAlt(upperB, pb.Dec, lat, pb.Distance));
        if (va == vb) continue;
        const bool rise = vb;
        double t = Get_Time_Of_MoonAlt0(lat, ta, tb, rise);
        if (std::isnan(t)) t = Almanac_Awkward_Body(true, lat, 0.0, ta, tb, rise);
        if (std::isnan(t) || t < 0.0 || t >= 24.0 * kDays) continue;
        const int day = static_cast<int>(t / 24.0);
        bool& done = (rise ? riseDone : setDone)[static_cast<size_t>(day)];
        if (done) continue;
        done = true;
        const std::string text = HrMins_Ex((t - 24.0 * day) * 60.0);
        if (rise)
            am_[static_cast<size_t>(row)][static_cast<size_t>(day)].Moonrise = text;
        else
            pm_[static_cast<size_t>(row)][static_cast<size_t>(day)].Moonset = text;
    }
}

void cAlmanac::Calc_Moon_Rise_Times() {
    for (int row = 0; row < kLatitudeRows; ++row) Moon_Time_Sequence(row);
}

void cAlmanac::CalcMoonPhase() {
    const double age = Moon_Age_At(jd_);
    for (int i = 0; i < kDays; ++i) {
        age_[static_cast<size_t>(i)] = age + i;
        const int h = 12 + 24 * i;
        const double k =
            Moon_Illuminated_Fraction(sunPlaces_[static_cast<size_t>(h)], Moon_Place(h));
        phase_[static_cast<size_t>(i)] = k * 100.0;
        daily_[static_cast<size_t>(i)].Age = Format_Number(age + i, "#0d");
        daily_[static_cast<size_t>(i)].Vis = Illumination_Text(k);
    }
}

// ------------------------------------------------------------------ Aries, planets, stars

void cAlmanac::Aries_Column() {
    for (int h = 0; h < kHours; ++h)
        aries_[static_cast<size_t>(h)] = Tabulated_Angle_Text(frames_[static_cast<size_t>(h)].GAST);
}

void cAlmanac::Planet_Data() {
    for (size_t p = 0; p < kPlanets.size(); ++p) {
        Planet_Column& col = planets_[p];
        const auto& places = planetPlaces_[p];
        std::string lastName;
        for (int h = 0; h < kHours; ++h) {
            const BodyPlace& b = places[static_cast<size_t>(h)];
            Body_Row& r = col.Rows[static_cast<size_t>(h)];
            r.GHA = Tabulated_Angle_Text(b.GHA);
            const std::string name = Hemisphere(b.Dec);
            const bool withName = h % 24 == 0 || name != lastName;
            r.Dec = Dec_Text(b.Dec, withName);
            r.Marker = withName ? name : "";
            lastName = name;
        }
        // v: the mean excess of the hourly change of the rounded GHA over 15°; d: the mean
        // hourly change of the rounded declination; both over the page.
        double turns = 0.0, moved = 0.0;
        for (int h = 0; h + 1 < kHours; ++h) {
            double g = Tenths(places[static_cast<size_t>(h + 1)].GHA) -
                       Tenths(places[static_cast<size_t>(h)].GHA);
            if (g < 0.0) g += kTenthsInCircle;
            turns += g / 10.0 - 900.0;
            moved += std::fabs(Tenths(places[static_cast<size_t>(h + 1)].Dec) -
                               Tenths(places[static_cast<size_t>(h)].Dec)) /
                     10.0;
        }
        col.v = Minutes_Text(turns / (kHours - 1), "0'.0");
        col.d = Minutes_Text(moved / (kHours - 1), "0'.0");
        // Magnitude at the middle of the page.
        BodyPlace mid;
        float earth = 0.0f, phase = 0.0f;
        Calc_Planet(mid, kPlanets[p], kAccuracyFull, frames_[36], earth);
        double distance = mid.Distance;
        const double mag =
            Round_Even(Calc_Magnitude(frames_[36].TT, kPlanets[p], earth, distance, phase), 1);
        col.Magnitude = (mag > 0.0 ? "+" : "") + Format_Number(mag, "0.0");
        // The middle day's passage: where the GHA turns through 0.
        col.MerPass = kNone;
        for (int h = 24; h < 48; ++h) {
            const double a = Wrap_Pi(places[static_cast<size_t>(h)].GHA);
            const double b = Wrap_Pi(places[static_cast<size_t>(h + 1)].GHA);
            if (a < 0.0 && b >= 0.0 && b - a < kPi) {
                col.MerPass = HrMins_Ex((h - 24 - a / (b - a)) * 60.0);
                break;
            }
        }
    }
}

void cAlmanac::StellarData() {
    const double gast = frames_[36].GAST;
    double pass = (kTwoPi - gast) / 15.0410687160047 * kDegreesPerRadian + 12.0;
    if (pass >= 24.0) pass -= 24.0;
    other_.AriesMerPass = HrMins_Ex(pass * 60.0);

    if (Catalogue.empty()) Load_Star_Tables();
    stars_.clear();
    starSHA_.clear();
    starDec_.clear();
    const double middle = jd_ + 1.5;
    for (const MainStarRow& m : MainStars) {
        if (m.Star <= 0) continue;
        double ra = 0.0, dec = 0.0;
        Calc_Star_Place(m.Star, ra, dec, middle);
        const double sha = Reduce_2Pi(kTwoPi - ra);
        starSHA_.push_back(sha);
        starDec_.push_back(dec);
        stars_.push_back({m.Name, Tabulated_Angle_Text(sha), Dec_Text(dec, true)});
    }
}

}  // namespace kelmoran
