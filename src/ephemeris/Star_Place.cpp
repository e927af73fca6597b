// Star apparent places. Sources: precession in ecliptic coordinates, aberration with the
// e-terms, and the low-accuracy Sun, J. Meeus, Astronomical Algorithms, 2nd ed., ch. 21,
// 23 and 25 (precession quantities of J. H. Lieske et al., A&A 58, 1, 1977); nutation by
// the 1980 IAU theory (Calc_Nutation).
#include "ephemeris/Star_Place.h"

#include <cmath>
#include <limits>

#include "ephemeris/Angles.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Units.h"

namespace kelmoran {

namespace {

constexpr double kAberration = 20.49552;  // seconds of arc
// Obliquity of J2000.0 (23°26'21.448").
constexpr double kCosEps0 = 0.917482062146321;
constexpr double kSinEps0 = 0.397777155753991;

StarFrame shared_frame{std::numeric_limits<double>::quiet_NaN(), 0, 0, 0, 0, 0, 0, 1, 0, 1, 0};
StarLookup star_lookup = nullptr;

void Refresh(StarFrame& f, double jd) {
    const double t = jd / 36525.0;
    const double t2 = t * t;
    const double t3 = t2 * t;
    double trueObliquity = 0.0;
    double nutObl = 0.0;
    Calc_Nutation(t, trueObliquity, f.NutLong, nutObl);
    const double l0 = 280.46646 + 36000.76983 * t + 0.0003032 * t2;
    const double m = (357.52911 + 35999.05029 * t - 0.0001537 * t2) / kDegreesPerRadian;
    const double c = (1.914602 - 0.004817 * t - 1.4e-05 * t2) * std::sin(m) +
                     (0.019993 - 0.000101 * t) * std::sin(2.0 * m) + 0.000289 * std::sin(3.0 * m);
    f.SunLong = (l0 + c) / kDegreesPerRadian;
    f.Ecc = 0.016708634 - 4.2037e-05 * t - 1.267e-07 * t2;
    f.Perihelion = (102.93735 + 1.71946 * t + 0.00046 * t2) / kDegreesPerRadian;
    const double eta = (47.0029 * t - 0.03302 * t2 + 6e-05 * t3) / kArcsecPerRadian;
    f.PiNode = (629554.9824 - 869.8089 * t + 0.03536 * t2) / kArcsecPerRadian;
    f.GenPrec = (5029.0966 * t + 1.11113 * t2 - 6e-06 * t3) / kArcsecPerRadian;
    f.CosEta = std::cos(eta);
    f.SinEta = std::sin(eta);
    f.CosObl = std::cos(trueObliquity);
    f.SinObl = std::sin(trueObliquity);
    f.JD = jd;
}

}  // namespace

StarFrame& Shared_Star_Frame() {
    return shared_frame;
}

void Set_Star_Lookup(StarLookup lookup) {
    star_lookup = lookup;
}

void Calc_Star_Place(int32_t index, double& ra, double& dec, double jd) {
    StarFrame& f = shared_frame;
    if (f.JD != jd) Refresh(f, jd);

    if (index > 0) {
        StarMotion s;
        if (star_lookup == nullptr || !star_lookup(index, s)) s = StarMotion{};
        ra = s.RA + s.PmRA * jd / 365.25;
        dec = s.Dec + s.PmDec * jd / 365.25;
    }

    // Equator to ecliptic of J2000.0.
    const double sinA = std::sin(ra);
    double lambda = Atan2_R4(static_cast<float>(sinA * kCosEps0 + std::tan(dec) * kSinEps0),
                             static_cast<float>(std::cos(ra)));
    double beta = Arc_Sin(std::sin(dec) * kCosEps0 - std::cos(dec) * kSinEps0 * sinA);

    // Precession to the ecliptic and mean equinox of date.
    const double d = f.PiNode - lambda;
    const double sinD = std::sin(d);
    const double cosB = std::cos(beta);
    const double sinB = std::sin(beta);
    const double a = cosB * f.CosEta * sinD - sinB * f.SinEta;
    const double b = cosB * std::cos(d);
    const double c = sinB * f.CosEta + cosB * f.SinEta * sinD;
    lambda = f.GenPrec + f.PiNode - Atan2_R4(static_cast<float>(a), static_cast<float>(b));
    beta = Arc_Sin(c);

    // Nutation, then annual aberration (with the e-terms of the Earth's elliptic orbit).
    lambda += f.NutLong;
    const double dLambda = (f.Ecc * kAberration * std::cos(f.Perihelion - lambda) -
                            kAberration * std::cos(f.SunLong - lambda)) /
                           std::cos(beta);
    const double dBeta = -kAberration * std::sin(beta) *
                         (std::sin(f.SunLong - lambda) - f.Ecc * std::sin(f.Perihelion - lambda));
    lambda += dLambda / kArcsecPerRadian;
    beta += dBeta / kArcsecPerRadian;

    // Ecliptic to the true equator of date.
    const double sinL = std::sin(lambda);
    double alpha = Atan2_R4(static_cast<float>(sinL * f.CosObl - std::tan(beta) * f.SinObl),
                            static_cast<float>(std::cos(lambda)));
    if (alpha < 0.0) alpha += kTwoPi;
    double delta = Arc_Sin(std::sin(beta) * f.CosObl + std::cos(beta) * f.SinObl * sinL);
    if (delta > kHalfPi) delta = 2.0 * kHalfPi - delta;
    if (delta < -kHalfPi) delta = -2.0 * kHalfPi - delta;
    ra = alpha;
    dec = delta;
}

}  // namespace kelmoran
