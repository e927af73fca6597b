// The long series: objects that evaluate the full solutions of the Earth, the Moon, the
// planets and Pluto from the built-in tables. Each object is made on first use and kept to
// the end of the program; none holds state that a caller sees.
//
// Units: `t` is Julian centuries of Terrestrial Time from J2000.0, `tau` thousands of
// Julian years of TT (t / 10). Angles in radians, distances in astronomical units unless
// said otherwise.
#pragma once

#include <cstdint>

#include "ephemeris/Series_Tables.h"

namespace kelmoran {

// Accuracy of a position call: 0 the full series, 1 the reduced series, 2 the fast route.
using SeriesAccuracy = int32_t;
inline constexpr SeriesAccuracy kAccuracyFull = 0;
inline constexpr SeriesAccuracy kAccuracyReduced = 1;
inline constexpr SeriesAccuracy kAccuracyFast = 2;

// Body numbers of the Sun, Moon and planets.
namespace body {
inline constexpr int SunUpperLimb = 0;
inline constexpr int SunLowerLimb = 1;
inline constexpr int MoonUpperLimb = 2;
inline constexpr int MoonLowerLimb = 3;
inline constexpr int Mercury = 4;
inline constexpr int Venus = 5;
inline constexpr int Mars = 6;
inline constexpr int Jupiter = 7;
inline constexpr int Saturn = 8;
inline constexpr int Neptune = 9;  // deliberately before Uranus
inline constexpr int Uranus = 10;
inline constexpr int Pluto = 11;
inline constexpr int FirstStar = 12;
}  // namespace body

// The Earth (VSOP87 version D, heliocentric, ecliptic and equinox of date, the equinox
// moving by Laskar's 1986 precession). Accuracy from 1800 to 2200 against the JPL-based
// Swiss Ephemeris: 0.15" at accuracy 0 and 1; the five-term head of accuracy 2 leaves out
// terms of up to 72" (the largest, the third of L0). Accuracy 1 keeps about a seventh of
// the Earth's terms from 1800 to 2200 and is the full series outside those years.
class EarthSeries {
  public:
    static EarthSeries& Instance();

    // The Sun's geometric geocentric rectangular coordinates, mean equator and equinox of
    // J2000.0, AU, at `tau`: the series of accuracy 1 rotated by the precession of the
    // ecliptic. Within 0.2" from 1800 to 2200, 20" from 4000 BC to AD 8000 and 500" at
    // 10000 BC, where the precession polynomials part from the integration.
    void SunJ2000(double tau, double& x, double& y, double& z) const;
    // The Earth's heliocentric rectangular coordinates, ecliptic of date, AU, at `t`;
    // accuracy 0 the full series, 1 the reduced one, 2 the five-term head of the Sun's
    // fast route.
    void EarthRect(SeriesAccuracy accuracy, double t, double& x, double& y, double& z) const;
    // The Sun's apparent ecliptic place of date without nutation (aberration and the
    // conversion to FK5 applied). In: lon = `t`, lat = the accuracy (0 or 1) as a double.
    // Out: lon (0 .. 2π), lat in radians, dist in AU. Within 0.1" from 1800 to 2200.
    // Accuracy 2 (or more) gives the five-term head.
    void SunPlace(double& lon, double& lat, double& dist) const;

  private:
    EarthSeries();
    // L, B, R of the Earth at `tau` by accuracy: 0 full, 1 reduced, 2 the five-term head.
    void Earth_LBR(SeriesAccuracy accuracy, double tau, double& L, double& B, double& R) const;
    VsopBody full_;
    VsopBody reduced_;
};

// The Moon (ELP/MPP02, fitted to DE405), referred to the equinox of date of the Earth's
// series. From 1800 to 2200 within 0.1" of the JPL-based Swiss Ephemeris at accuracy 0
// and 1, within 20" at accuracy 2; distance within 10 m (geometric). Cost: accuracy 0 all
// 35,901 terms (under 1 ms), 1 about 2,100 terms, 2 about 160 (under 5 µs).
class MoonSeries {
  public:
    static MoonSeries& Instance();

    // The Moon's geocentric ecliptic place of date, apparent but for nutation (light time
    // and aberration included). In: lon = `t`, lat = the accuracy (0, 1 or 2) as a double.
    // Out: lon (0 .. 2π), lat in radians, dist in kilometres (geometric).
    void MoonPlace(double& lon, double& lat, double& dist) const;

  private:
    MoonSeries();
    ElpMoon full_;
    ElpMoon reduced_;
    ElpMoon fast_;
};

// One planet (bodies 4 .. 10), VSOP87 version D: heliocentric L (0 .. 2π), B (radians,
// ecliptic and equinox of date) and R (AU) at `tau`. For Mars to Neptune the series carries
// a table of corrections fitted to the Swiss Ephemeris files (JPL's long integration; see
// tools/vsop_corrections), added at both levels: VSOP87 alone is within 1" of the
// integration for a few centuries only (3.5" for Neptune and 2" for Uranus by 1800, 50" to
// 100" for Jupiter to Neptune by 2000 BC, degrees for Jupiter and Saturn by 10000 BC).
// With them, heliocentric, within 0.7" from 2000 BC to AD 3000 and 30" over years -10000
// to 10000 (Mars: 4000 BC to AD 6000, 7"). The reduced series stay within 0.5" of the full
// ones from 1800 to 2200, heliocentric and as seen from the Earth, at about a ninth of the
// cost; outside those years accuracy 1 is the full series.
class PlanetSeries {
  public:
    // The object of body 4 .. 10; any other number gives Mercury's.
    static PlanetSeries& For(int body);

    void PlaceReduced(double tau, double& L, double& B, double& R) const;  // accuracy 1
    void PlaceFull(double tau, double& L, double& B, double& R) const;     // accuracy 0

  private:
    explicit PlanetSeries(int body);
    // Adds the table's corrections at tau and reduces L to 0 .. 2π.
    void Correct(double tau, double& L, double& B, double& R) const;
    int body_;
    VsopBody full_;
    VsopBody reduced_;
    ChebyshevTable corrections_;  // empty for Mercury and Venus
};

// Pluto: heliocentric geometric L (0 .. 2π), B (radians, ecliptic and equinox of J2000.0)
// and R (AU) at `tau`, from Chebyshev segments fitted to the Swiss Ephemeris files for
// about 10200 BC to AD 10200 (within 0.08"). Dates outside take the nearest end of the
// table; never fails.
class PlutoSeries {
  public:
    static PlutoSeries& Instance();

    void Place(double tau, double& L, double& B, double& R) const;

  private:
    PlutoSeries();
    ChebyshevTable table_;
};

}  // namespace kelmoran
