// Visual magnitudes and phase angles. Sources: the magnitude expressions of the
// Astronomical Almanac as given by J. Meeus, Astronomical Algorithms, 2nd ed., ch. 41,
// with this program's own constants where they differ (Mercury's terms in i^2 and i^3,
// and the constants of bodies 9 and 10, which are kept as they stand); Saturn's rings
// by the method of ch. 45.
#include <cmath>

#include "ephemeris/Angles.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"

namespace kelmoran {

namespace {

constexpr double kKilometresPerAU = 149597870.0;

// Magnitude of Saturn with its rings: `S` the base term 5 log10(r D), `t` centuries, `tau`
// the retarded moment of the planet.
double Saturn_Magnitude(double S, double t, double tau) {
    double L = 0.0, B = 0.0, r = 0.0;
    Saturn_Fast(tau, L, B, r);
    double X = 0.0, Y = 0.0, Z = 0.0;
    EarthSeries::Instance().EarthRect(kAccuracyFast, t, X, Y, Z);
    const double cosB = std::cos(B);
    const double x = r * cosB * std::cos(L) - X;
    const double y = r * cosB * std::sin(L) - Y;
    const double z = r * std::sin(B) - Z;
    const double lambda = Atan2_R4(static_cast<float>(y), static_cast<float>(x));
    const double beta = std::atan(z / std::sqrt(x * x + y * y));

    // The ring plane: inclination and node on the ecliptic of date.
    const double ir = (28.075216 - 0.012998 * t + 4e-06 * t * t) / kDegreesPerRadian;
    const double node = (169.50847 + 1.394681 * t + 0.000412 * t * t) / kDegreesPerRadian;
    const double sinIr = std::sin(ir);
    const double cosIr = std::cos(ir);
    // Saturnicentric latitude of the Earth, as its absolute sine.
    const double sinBe = std::fabs(std::sin(
        Arc_Sin(sinIr * std::cos(beta) * std::sin(lambda - node) - cosIr * std::sin(beta))));

    // The heliocentric place corrected for the Sun's light time and aberration, for the
    // Saturnicentric longitude of the Sun.
    const double n = 1.98383722092562 + 0.0153082828692423 * t;
    const double lp = L - 0.000307003415425803 / r;
    const double bp = B - 1.33343154852367e-05 * std::cos(L - n) / r;
    auto ring_longitude = [&](double lon, double lat) {
        return Atan2_R8(sinIr * std::sin(lat) + cosIr * std::cos(lat) * std::sin(lon - node),
                        std::cos(lat) * std::cos(lon - node));
    };
    double dU = std::fabs(ring_longitude(lp, bp) - ring_longitude(lambda, beta));
    if (dU > kPi) dU = kTwoPi - dU;  // across the zero of longitude
    dU *= kDegreesPerRadian;
    return S - 8.88 + 0.044 * dU - 2.6 * sinBe + 1.25 * sinBe * sinBe;
}

}  // namespace

float Calc_Magnitude(double t, int body, float earthSunDistance, double& geocentricDistance,
                     float& phaseAngle) {
    double tau = t / 10.0 - earthSunDistance * 0.0057755183 / 365250.0;
    double r = 1.0;
    if (body <= body::MoonLowerLimb) {
        double L = 0.0, B = 0.0;
        Earth_Fast(tau, L, B, r);
        geocentricDistance = Moon_Distance(t) / kKilometresPerAU;
    } else if (body == body::Pluto) {
        tau = t / 10.0 - 4.82281473374401e-07;
        double L = 0.0, B = 0.0;
        PlutoSeries::Instance().Place(tau, L, B, r);
    } else {
        r = Planet_R_Fast(body, tau);
    }
    const double D = geocentricDistance;

    double i = 0.0;
    if (body > body::MoonLowerLimb) {
        const double es = earthSunDistance;
        const double cosI = (D * D + r * r - es * es) / (2.0 * r * D);
        if (std::fabs(cosI) < 1.0) i = std::acos(cosI) * kDegreesPerRadian;
    }
    phaseAngle = static_cast<float>(i);

    // A distance of 0 (no place yet) leaves the base term at 0 rather than infinite.
    const double S = r * D > 0.0 ? std::log(r * D) / 2.30258509299405 * 5.0 : 0.0;
    double m = 0.0;
    switch (body) {
        case body::SunUpperLimb:
        case body::SunLowerLimb:
            m = -26.74;
            break;
        case body::MoonUpperLimb:
        case body::MoonLowerLimb:
            m = S + 0.23 + 0.026 * i + 4e-09 * i * i * i * i;
            break;
        case body::Mercury:
            m = S - 0.42 + 0.038 * i + 0.000273 * i * i - 2e-06 * i * i * i;
            break;
        case body::Venus:
            m = S - 4.4 + 0.0009 * i + 0.000239 * i * i - 6.5e-07 * i * i * i;
            break;
        case body::Mars:
            m = S - 1.52 + 0.016 * i;
            break;
        case body::Jupiter:
            m = S - 9.4 + 0.005 * i;
            break;
        case body::Saturn:
            m = Saturn_Magnitude(S, t, tau);
            break;
        case body::Neptune:
            m = S - 7.19;
            break;
        case body::Uranus:
            m = S - 6.87;
            break;
        case body::Pluto:
            m = S - 1.0;
            break;
        default:
            m = S;
            break;
    }
    return static_cast<float>(m);
}

}  // namespace kelmoran
