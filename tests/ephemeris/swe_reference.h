// Reference places from the Swiss Ephemeris, shared by the accuracy tests.
#pragma once

#include <erfa.h>
#include <swephexp.h>

#include <algorithm>
#include <cmath>

#include "ephemeris/Units.h"

namespace kelmoran::testing_support {

inline constexpr double kJ2000JD = 2451545.0;

// Opens the ephemeris files once per program.
inline void Open_Swiss_Ephemeris() {
    static const bool opened = [] {
        swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
        return true;
    }();
    (void)opened;
}

// swe_calc at `jdTT` (Julian Date, TT) with `flags` added to the Swiss Ephemeris files.
// out[0], out[1] in radians (as given with SEFLG_XYZ), out[2] as the library gives it (AU).
inline bool Swe_Place(double jdTT, int planet, int flags, double out[3]) {
    Open_Swiss_Ephemeris();
    double xx[6] = {0, 0, 0, 0, 0, 0};
    char err[256] = "";
    const int rc = swe_calc(jdTT, planet, SEFLG_SWIEPH | flags, xx, err);
    const double scale = (flags & SEFLG_XYZ) ? 1.0 : kDegreesPerRadian;
    out[0] = xx[0] / scale;
    out[1] = xx[1] / scale;
    out[2] = xx[2];
    return rc >= 0 && (rc & SEFLG_SWIEPH) != 0;
}

// The reference's apparent place (light time and aberration, without the deflection of
// light) at J2000.0, carried to the true equator and equinox of date by the IAU 1976/1980
// precession-nutation (eraPnm80): the program's own models of the Earth's orientation, so
// that only the ephemeris and the aberration are compared. out[0] RA, out[1] Dec, radians.
inline bool Swe_Place_In_Program_Frame(double jdTT, int planet, double out[2]) {
    double j2000[3];
    if (!Swe_Place(jdTT, planet, SEFLG_EQUATORIAL | SEFLG_J2000 | SEFLG_NOGDEFL, j2000))
        return false;
    double p[3], q[3], rnpb[3][3];
    eraS2c(j2000[0], j2000[1], p);
    eraPnm80(2451545.0, jdTT - 2451545.0, rnpb);
    eraRxp(rnpb, p, q);
    eraC2s(q, &out[0], &out[1]);
    out[0] = eraAnp(out[0]);
    return true;
}

// Difference of two angles in seconds of arc, folded into -648000 .. 648000.
inline double Arcsec_Diff(double a, double b) {
    return std::remainder(a - b, 2.0 * 3.14159265358979323846) * kArcsecPerRadian;
}

// Angle between two directions (longitude, latitude or RA, Dec; radians), in arcseconds.
inline double Separation(double lon1, double lat1, double lon2, double lat2) {
    return eraSeps(lon1, lat1, lon2, lat2) * kArcsecPerRadian;
}

// Angle between two vectors, in arcseconds.
inline double Separation(const double* a, const double* b) {
    double pa[3] = {a[0], a[1], a[2]}, pb[3] = {b[0], b[1], b[2]};
    return eraSepp(pa, pb) * kArcsecPerRadian;
}

// Keeps the largest magnitude of what it is given.
struct Largest {
    double value = 0.0;
    void operator()(double x) { value = std::max(value, std::fabs(x)); }
};

}  // namespace kelmoran::testing_support
