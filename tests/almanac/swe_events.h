// The Swiss Ephemeris as the reference of the rise, set and page tests: geocentric
// apparent places of date and the true altitude of a body's centre, with the program's
// own ΔT so that both sides speak of the same instant.
#pragma once

#include <swephexp.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "ephemeris/Time_Calcs.h"
#include "ephemeris/swe_reference.h"

namespace kelmoran::testing_support {

inline constexpr double kDeg = kDegreesPerRadian;
inline constexpr double kArcmin = 3437.74677078494;
inline constexpr double kAuKm = 149597870.7;

// Day number of 0h UT of a Gregorian date.
inline double Day_Of(int y, int m, int d) {
    MySystemTime t;
    t.wYear = static_cast<int16_t>(y);
    t.wMonth = static_cast<int16_t>(m);
    t.wDay = static_cast<int16_t>(d);
    t.wHour = 0;
    return Calc_JD(t, false);
}

// Apparent geocentric RA, Dec (radians, true equator and equinox of date), distance (AU)
// and GHA of `planet` at day number `jd` (UT), the library using our ΔT.
struct SwePlace {
    double RA = 0, Dec = 0, Distance = 0, GHA = 0;
};
inline SwePlace Swe_Place_At(double jd, int planet) {
    Open_Swiss_Ephemeris();
    swe_set_delta_t_userdef(Get_DeltaT(DeltaT_Year(jd)) / 86400.0);
    double xx[6] = {0, 0, 0, 0, 0, 0};
    char err[256] = "";
    const double ut = kJ2000 + jd;
    swe_calc_ut(ut, planet, SEFLG_SWIEPH | SEFLG_EQUATORIAL, xx, err);
    SwePlace p;
    p.RA = xx[0] / kDeg;
    p.Dec = xx[1] / kDeg;
    p.Distance = xx[2];
    const double gast = swe_sidtime(ut) * 15.0 / kDeg;
    p.GHA = std::fmod(gast - p.RA + 4.0 * M_PI, 2.0 * M_PI);
    return p;
}

// True geocentric altitude of the centre (radians) for an observer at `lat`, `lon`.
inline double Swe_True_Alt(double jd, int planet, double lat, double lon,
                           double* distAu = nullptr) {
    const SwePlace p = Swe_Place_At(jd, planet);
    if (distAu) *distAu = p.Distance;
    return std::asin(std::sin(lat) * std::sin(p.Dec) +
                     std::cos(lat) * std::cos(p.Dec) * std::cos(p.GHA + lon));
}

// The root of f (a signed altitude difference) between lo and hi, where it changes sign,
// by bisection to a hundredth of a second.
template <class F>
double Bisect(F f, double lo, double hi) {
    double flo = f(lo);
    while (hi - lo > 0.01 / 86400.0) {
        const double mid = 0.5 * (lo + hi);
        const double fm = f(mid);
        if ((fm > 0) == (flo > 0)) {
            lo = mid;
            flo = fm;
        } else {
            hi = mid;
        }
    }
    return 0.5 * (lo + hi);
}

// Every crossing of a threshold `horizon(distanceKm)` by the Moon's true altitude between
// `start` and `end`: a scan by ten minutes and bisection.
struct MoonCrossing {
    double Time;
    bool Rise;
    double Rate;  // minutes of arc a minute of time
};
template <class H>
std::vector<MoonCrossing> Swe_Moon_Crossings(double start, double end, double lat, double lon,
                                             H horizon) {
    auto f = [&](double t) {
        double dist = 0;
        const double h = Swe_True_Alt(t, SE_MOON, lat, lon, &dist);
        return h - horizon(dist * kAuKm);
    };
    std::vector<MoonCrossing> out;
    for (double a = start, fa = f(a); a < end;) {
        const double b = std::min(end, a + 10.0 / 1440.0), fb = f(b);
        if ((fa > 0) != (fb > 0)) {
            const double t = Bisect(f, a, b);
            out.push_back(
                {t, fb > 0, std::fabs(f(t + 30.0 / 86400.0) - f(t - 30.0 / 86400.0)) * kArcmin});
        }
        a = b;
        fa = fb;
    }
    return out;
}

// A small deterministic generator of test cases.
struct Lcg {
    unsigned long long s = 88172645463325252ull;
    double Next() {
        s = s * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<double>(s >> 11) / 9007199254740992.0;
    }
    double Range(double lo, double hi) { return lo + (hi - lo) * Next(); }
};

}  // namespace kelmoran::testing_support
