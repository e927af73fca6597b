// Apparent places of the planets and Pluto. Sources: light time, aberration and the
// conversion to FK5 after J. Meeus, Astronomical Algorithms, 2nd ed., ch. 23, 32 and 33;
// heliocentric places by VSOP87 version D (Planet_Fast, PlanetSeries, EarthSeries).
#include "ephemeris/Planets.h"

#include <cmath>

#include "ephemeris/Angles.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Units.h"

namespace kelmoran {

namespace {

// Light time for one AU, in thousands of Julian years (0.0057755183 days / 365250).
constexpr double kLightTimePerAU = 1.58125073237509e-08;

// First guess of the light time of bodies 4 .. 10, in thousands of Julian years: one AU's
// light time times a typical distance (1, 1, 1.7, 5.3, 9.3, 30.1 and 20 AU).
double First_Light_Time(int body) {
    switch (body) {
        case body::Mars:
            return 2.688126245037653e-08;
        case body::Jupiter:
            return 8.380628881587977e-08;
        case body::Saturn:
            return 1.470563181108834e-07;
        case body::Neptune:
            return 4.7595647044490214e-07;
        case body::Uranus:
            return 3.16250146475018e-07;
        default:
            return kLightTimePerAU;
    }
}

// Geocentric rectangular place of a heliocentric L, B, R seen from the Earth at X, Y, Z.
void Geocentric(double L, double B, double R, double X, double Y, double Z, double& x, double& y,
                double& z) {
    const double cosB = std::cos(B);
    x = R * cosB * std::cos(L) - X;
    y = R * cosB * std::sin(L) - Y;
    z = R * std::sin(B) - Z;
}

}  // namespace

void Calc_Planet(BodyPlace& place, int body, SeriesAccuracy accuracy, const EarthFrame& frame,
                 float& earthDistance) {
    if (body < body::Mercury || body > body::Uranus) body = body::Mercury;
    if (accuracy != kAccuracyFull && accuracy != kAccuracyReduced) accuracy = kAccuracyFast;
    const double tau = frame.TT / 10.0;

    // The Earth at the moment of observation.
    double X = 0.0, Y = 0.0, Z = 0.0;
    EarthSeries::Instance().EarthRect(accuracy, frame.TT, X, Y, Z);
    earthDistance = static_cast<float>(std::sqrt(X * X + Y * Y + Z * Z));

    // Light time, always on the fast series.
    double taup = tau - First_Light_Time(body);
    double L = 0.0, B = 0.0, R = 0.0;
    double x = 0.0, y = 0.0, z = 0.0;
    for (int pass = 0; pass < 4; ++pass) {
        Planet_Fast(body, taup, L, B, R);
        Geocentric(L, B, R, X, Y, Z, x, y, z);
        taup = tau - kLightTimePerAU * std::sqrt(x * x + y * y + z * z);
    }

    // The final heliocentric place at the retarded moment.
    if (accuracy == kAccuracyFull) {
        PlanetSeries::For(body).PlaceFull(taup, L, B, R);
    } else if (accuracy == kAccuracyReduced) {
        PlanetSeries::For(body).PlaceReduced(taup, L, B, R);
    }
    Geocentric(L, B, R, X, Y, Z, x, y, z);
    const double rho = std::sqrt(x * x + y * y);
    const double theta = kPi + Atan2_R4(static_cast<float>(Y), static_cast<float>(X));
    double lambda = Atan2_R4(static_cast<float>(y), static_cast<float>(x));
    double beta = std::atan(z / rho);

    // Annual aberration, with the e-terms of the Earth's orbit.
    const double t = 10.0 * taup;
    const double e = 0.016708634 - 4.2037e-05 * t - 1.267e-07 * t * t;
    const double perihelion = (102.93735 + 1.71946 * t + 0.00046 * t * t) / kDegreesPerRadian;
    constexpr double kappa = 9.93650849745413e-05;  // 20.49552"
    lambda +=
        kappa * (e * std::cos(perihelion - lambda) - std::cos(theta - lambda)) / std::cos(beta);
    beta -= kappa * std::sin(beta) * (std::sin(theta - lambda) - e * std::sin(perihelion - lambda));

    // From the dynamical frame of VSOP87 to FK5.
    const double lp = lambda - (1.397 * t + 0.00031 * t * t) / kDegreesPerRadian;
    const double cosLp = std::cos(lp);
    const double sinLp = std::sin(lp);
    const double dLambda =
        (-0.09033 + 0.03916 * (cosLp + sinLp) * std::tan(beta)) / kArcsecPerRadian;
    const double dBeta = 0.03916 * (cosLp - sinLp) / kArcsecPerRadian;
    lambda += frame.NutLong + dLambda;
    beta += dBeta;

    // To the true equator of date.
    const double sinL = std::sin(lambda);
    place.RA = Atan2_R4(
        static_cast<float>(sinL * frame.CosObliquity - std::tan(beta) * frame.SinObliquity),
        static_cast<float>(std::cos(lambda)));
    place.GHA = Hour_Angle_Of(frame.GAST, place.RA);
    place.Dec =
        Arc_Sin(std::sin(beta) * frame.CosObliquity + std::cos(beta) * frame.SinObliquity * sinL);
    place.Distance = std::sqrt(x * x + y * y + z * z);
}

void Calc_Pluto(BodyPlace& place, const EarthFrame& frame, float& earthDistance) {
    // Obliquity of J2000.0: ecliptic to equator.
    constexpr double kCosEps0 = 0.917482062;
    constexpr double kSinEps0 = 0.397777156;
    const double tau = frame.TT / 10.0;
    double X = 0.0, Y = 0.0, Z = 0.0;
    EarthSeries::Instance().SunJ2000(tau, X, Y, Z);

    const PlutoSeries& pluto = PlutoSeries::Instance();
    double taup = tau - 4.82281473374401e-07;  // 30.5 AU of light
    double x = 0.0, y = 0.0, z = 0.0, delta = 0.0;
    for (int pass = 0; pass < 4; ++pass) {
        double L = 0.0, B = 0.0, R = 0.0;
        pluto.Place(taup, L, B, R);
        const double cosB = std::cos(B);
        const double sinB = std::sin(B);
        const double sinL = std::sin(L);
        x = R * cosB * std::cos(L) + X;
        y = R * (cosB * sinL * kCosEps0 - sinB * kSinEps0) + Y;
        z = R * (cosB * sinL * kSinEps0 + sinB * kCosEps0) + Z;
        delta = std::sqrt(x * x + y * y + z * z);
        // Three passes refine the light time; the fourth evaluation is the place itself.
        if (pass < 3) taup = tau - delta * 0.0057755183 / 365250.0;
    }

    double ra = Atan2_R4(static_cast<float>(y), static_cast<float>(x));
    double dec = delta > 0.0 ? Arc_Sin(z / delta) : 0.0;
    Calc_Star_Place(0, ra, dec, frame.JD);
    place.RA = ra;
    place.Dec = dec;
    place.Distance = delta;
    place.GHA = Hour_Angle_Of(frame.GAST, ra);
    earthDistance = static_cast<float>(std::sqrt(X * X + Y * Y + Z * Z));
}

}  // namespace kelmoran
