// Sextant altitudes made from a known position by independent libraries: the Swiss
// Ephemeris for the Sun, Moon and planets (topocentric apparent places, its own
// refraction), ERFA's full ICRS-to-observed chain for the catalogue's stars.
#pragma once

#include <erfa.h>
#include <swephexp.h>

#include <cmath>

#include "ephemeris/Series.h"
#include "ephemeris/Time_Calcs.h"
#include "stars/M_Resources.h"

namespace kelmoran::testing_support {

inline constexpr double kDeg = 57.2957795130823;
inline constexpr double kAuKm = 149597870.7;
inline constexpr double kSunRadiusKm = 696000.0;
inline constexpr double kMoonRadiusKm = 1737.4;
// Mean radii of the planets Mercury to Saturn, km (IAU 2015).
inline constexpr double kPlanetRadiusKm[] = {2439.7, 6051.8, 3389.5, 69911.0, 58232.0};
// The Swiss Ephemeris's numbers of the program's bodies 0 .. 8.
inline constexpr int kSwePlanet[] = {SE_SUN,   SE_SUN,  SE_MOON,    SE_MOON,  SE_MERCURY,
                                     SE_VENUS, SE_MARS, SE_JUPITER, SE_SATURN};

struct Observed {
    double Alt = 0;  // observed (refracted) altitude of the limb or centre, radians
    double Az = 0;   // true azimuth, degrees from north
};

inline void Open_Reference() {
    static const bool opened = [] {
        swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
        return true;
    }();
    (void)opened;
}

// The observed altitude of `body` (0 .. 8 limbs and planets, a planet by its lower limb; 12
// and up a star) at `jd` (MyJD, UT) from `lat`, `lon` (radians) at sea level. False on failure.
inline bool Reference_Sight(int body, double jd, double lat, double lon, double pressure,
                            double temperature, Observed& out) {
    Open_Reference();
    const double jdUT = jd + 2451545.0;
    if (body >= 12) {
        const CatalogueStar& s = Catalogue[body];
        double aob, zob, hob, dob, rob, eo;
        const int rc =
            eraAtco13(s.RA, s.Dec, s.PmRA, s.PmDec, 0, 0, jdUT, 0, 0, lon, lat, 0, 0, 0, pressure,
                      temperature, 0.5, 0.55, &aob, &zob, &hob, &dob, &rob, &eo);
        if (rc < 0) return false;
        out.Alt = 1.5707963267948966 - zob;
        out.Az = aob * kDeg;
        return true;
    }
    if (body < 0 || body > 8) return false;
    double geo[3] = {lon * kDeg, lat * kDeg, 0};
    swe_set_topo(geo[0], geo[1], geo[2]);
    double xx[6] = {};
    char err[256] = "";
    if (swe_calc_ut(jdUT, kSwePlanet[body], SEFLG_SWIEPH | SEFLG_EQUATORIAL | SEFLG_TOPOCTR, xx,
                    err) < 0)
        return false;
    double xaz[3] = {};
    swe_azalt(jdUT, SE_EQU2HOR, geo, 0, 0, xx, xaz);
    out.Az = std::fmod(xaz[0] + 180.0, 360.0);
    const double radius = body <= 1   ? kSunRadiusKm
                          : body <= 3 ? kMoonRadiusKm
                                      : kPlanetRadiusKm[body - 4];
    const double sd = std::asin(radius / (xx[2] * kAuKm)) * kDeg;
    const double trueAlt = xaz[1] + ((body == 0 || body == 2) ? sd : -sd);
    out.Alt = swe_refrac(trueAlt, pressure, temperature, SE_TRUE_TO_APP) / kDeg;
    return true;
}

// The Greenwich hour angle (radians) of the geocentric apparent place of `body` (0 .. 8) at
// `jd`: apparent sidereal time less the apparent right ascension.
inline double Reference_GHA(int body, double jd) {
    Open_Reference();
    if (body < 0 || body > 8) return 0;
    const double jdUT = jd + 2451545.0;
    double xx[6] = {};
    char err[256] = "";
    swe_calc_ut(jdUT, kSwePlanet[body], SEFLG_SWIEPH | SEFLG_EQUATORIAL, xx, err);
    const double gha = std::fmod(swe_sidtime(jdUT) * 15.0 - xx[0] + 720.0, 360.0);
    return gha / kDeg;
}

}  // namespace kelmoran::testing_support
