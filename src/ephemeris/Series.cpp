// The long-series objects: the Earth and the Sun, the Moon, the planets and Pluto.
#include "ephemeris/Series.h"

#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <string>

namespace kelmoran {

namespace {

// The long series are reduced with π to the last bit of a double, not with the 15-figure
// value of Units.h that the rest of the program shares.
constexpr double kFullPi = std::numbers::pi;
constexpr double kFullTwoPi = 2.0 * std::numbers::pi;
constexpr double kArcsecond = std::numbers::pi / 648000.0;

double Reduce_Angle(double a) {
    return a - kFullTwoPi * std::floor(a / kFullTwoPi);
}

// The accuracy level carried in a double: below 0.5 (or not a number) full, below 1.5
// reduced, else fast.
SeriesAccuracy Level_Of(double accuracy) {
    if (!(accuracy >= 0.5)) return kAccuracyFull;
    return accuracy < 1.5 ? kAccuracyReduced : kAccuracyFast;
}

// ---- Truncation of VSOP87 at accuracy 1 ----
//
// A term A cos(B + C tau) of the series of tau^p is dropped when A x 0.2^p, its largest
// size from 1800 to 2200 (|tau| <= 0.2), moves the body by less than a bound as seen from
// the Earth at its closest: the bound is kReducedAngle radians times the least distance
// from the Earth (AU) for a term of R, and kReducedAngle times the smaller of 1 and least
// distance / mean distance from the Sun for a term of L or B. The Earth's own terms use the
// least distance of any body from it (Venus, 0.26 AU). Measured against the full series at
// 1,500 dates from 1800 to 2200, the largest differences are 0.43" heliocentric and 0.46"
// geocentric (Saturn), with 3,526 of the 31,577 terms: about a ninth of the cost (the
// benchmark of the ten bodies' places, bench/places.cpp, runs some twelve times faster at
// accuracy 1 than at 0).
// Outside those years the dropped terms grow with the powers of tau (Saturn's to 400" by
// 2000 BC, the Earth's to 100"), so there accuracy 1 is the full series.
constexpr double kReducedSpan = 0.2;
constexpr double kReducedAngle = 1.0e-7;  // 0.02"

bool Within_Reduced_Span(double tau) {
    return std::fabs(tau) <= kReducedSpan;
}

struct Reduction {
    double leastDistance;  // from the Earth, AU
    double meanDistance;   // from the Sun, AU
    double Angle() const { return kReducedAngle * std::fmin(1.0, leastDistance / meanDistance); }
    double Radius() const { return kReducedAngle * leastDistance; }
};

// Per body 4 .. 10 (Mercury .. Uranus, Neptune before Uranus), and the Earth.
constexpr std::array<Reduction, 7> kPlanetReduction = {{{0.55, 0.387},
                                                        {0.26, 0.723},
                                                        {0.37, 1.524},
                                                        {3.9, 5.203},
                                                        {8.0, 9.537},
                                                        {28.8, 30.07},
                                                        {17.3, 19.19}}};
constexpr Reduction kEarthReduction = {0.26, 1.0};

const char* Blob_Of(int body) {
    switch (body) {
        case body::Venus:
            return "vsop87d_venus";
        case body::Mars:
            return "vsop87d_mars";
        case body::Jupiter:
            return "vsop87d_jupiter";
        case body::Saturn:
            return "vsop87d_saturn";
        case body::Neptune:
            return "vsop87d_neptune";
        case body::Uranus:
            return "vsop87d_uranus";
        default:
            return "vsop87d_mercury";
    }
}

// ---- Precession of the ecliptic (Laskar 1986, A&A 157, 59), the precession to which
// VSOP87 version D is referred, with the polynomials as ELP/MPP02 gives them (Chapront and
// Francou 2002): P and Q of the pole of the mean ecliptic of date, and the general
// precession in longitude p_A, arcseconds, T in Julian centuries of TT from J2000.0.
constexpr std::array<double, 6> kEclipticP = {0.0,           0.10180391e-4,  0.47020439e-6,
                                              -0.5417367e-9, -0.2507948e-11, 0.463486e-14};
constexpr std::array<double, 6> kEclipticQ = {0.0,           -0.113469002e-3, 0.12372674e-6,
                                              0.12654170e-8, -0.1371808e-11,  -0.320334e-14};
constexpr std::array<double, 5> kPrecessionLongitude = {0.0, 5029.0966, 1.1120, 0.000077,
                                                        -0.00002353};

template <std::size_t N>
double Polynomial(const std::array<double, N>& c, double T) {
    double v = 0.0;
    for (std::size_t k = N; k-- > 0;) v = v * T + c[k];
    return v;
}

// Obliquity of the ecliptic of J2000.0 on the equator as VSOP87 takes it, 23°26'21.41136".
constexpr double kObliquityJ2000 = 84381.41136 * kArcsecond;

// Rotates a vector from the mean ecliptic and equinox of date (T centuries of TT) to the
// mean equator and equinox of J2000.0.
void Ecliptic_Of_Date_To_J2000(double T, double& x, double& y, double& z) {
    // Count longitudes from the departure point of J2000.0 on the ecliptic of date.
    const double pA = Polynomial(kPrecessionLongitude, T) * kArcsecond;
    const double c = std::cos(pA), s = std::sin(pA);
    const double x1 = c * x + s * y, y1 = -s * x + c * y, z1 = z;
    // The ecliptic of date onto the ecliptic of J2000.0.
    const double P = Polynomial(kEclipticP, T), Q = Polynomial(kEclipticQ, T);
    const double w = std::sqrt(std::fmax(0.0, 1.0 - P * P - Q * Q));
    const double xe = (1.0 - 2.0 * P * P) * x1 + 2.0 * P * Q * y1 + 2.0 * P * w * z1;
    const double ye = 2.0 * P * Q * x1 + (1.0 - 2.0 * Q * Q) * y1 - 2.0 * Q * w * z1;
    const double ze = -2.0 * P * w * x1 + 2.0 * Q * w * y1 + (1.0 - 2.0 * P * P - 2.0 * Q * Q) * z1;
    // Ecliptic to equator.
    const double ce = std::cos(kObliquityJ2000), se = std::sin(kObliquityJ2000);
    x = xe;
    y = ye * ce - ze * se;
    z = ye * se + ze * ce;
}

// ---- The Moon ----
//
// Truncations of ELP/MPP02 (bounds on amplitude x span^p, p the power of T, which is the
// largest size of a term over that many centuries about J2000.0): accuracy 1 keeps terms
// from 0.003" in longitude and latitude and 3 m in distance over 2 centuries (1800 to
// 2200), accuracy 2 from 1" and 1 km over 40 centuries, so that the searches that run on
// it hold at every date. Measured against the full series from 1800 to 2200: accuracy 1
// within 0.16", accuracy 2 within 10" (2,087 and 195 of the 35,901 terms, about a
// seventeenth and a two-hundredth of the cost); over years -9999 to 9999, accuracy 1
// within 30", accuracy 2 within 30" (with 162 terms cut over 2 centuries alone it would
// be 190" out at 10000 BC).
constexpr double kMoonSpan = 2.0;
constexpr double kMoonReducedAngle = 0.003;
constexpr double kMoonReducedKm = 0.003;
constexpr double kMoonFastAngle = 1.0;
constexpr double kMoonFastKm = 1.0;
constexpr double kMoonFastSpan = 40.0;

// The Moon's longitude is carried from the departure point of J2000.0 to the mean equinox
// of date by the same precession in longitude as the Earth's series (kPrecessionLongitude,
// without ELP/MPP02's own fitted correction of -0.29965"/cy), so that the Sun and the Moon
// share one equinox of date.

// Light time: kilometres of light a Julian century.
constexpr double kLightKmPerCentury = 299792.458 * 86400.0 * 36525.0;

// Number of the largest terms of longitude and latitude that give the rate of motion for
// the light time (the rest changes it by less than 0.1 %).
constexpr std::size_t kRateTerms = 24;

// Rate of the sum of the first terms of a series of T^0, arcseconds a century.
double Head_Rate(const ElpCoordinate& c, double T) {
    const std::size_t n = std::min<std::size_t>(kRateTerms, c.start[1]);
    double rate = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        const double* t = &c.terms[6 * i];
        const double phase = t[1] + T * (t[2] + T * (t[3] + T * (t[4] + T * t[5])));
        const double speed = t[2] + T * (2.0 * t[3] + T * (3.0 * t[4] + T * 4.0 * t[5]));
        rate += t[0] * std::cos(phase) * speed;
    }
    return rate;
}

}  // namespace

// ---- EarthSeries ----

EarthSeries& EarthSeries::Instance() {
    static EarthSeries earth;
    return earth;
}

EarthSeries::EarthSeries()
    : full_(VsopBody::Load("vsop87d_earth")),
      reduced_(full_.Truncated(kReducedSpan, kEarthReduction.Angle(), kEarthReduction.Radius())) {}

void EarthSeries::Earth_LBR(SeriesAccuracy accuracy, double tau, double& L, double& B,
                            double& R) const {
    if (accuracy <= kAccuracyFull || (accuracy == kAccuracyReduced && !Within_Reduced_Span(tau))) {
        full_.Evaluate(tau, L, B, R);
    } else if (accuracy == kAccuracyReduced) {
        reduced_.Evaluate(tau, L, B, R);
    } else {
        // The head of VSOP87D for the Earth: the leading two terms of L0 and of L1, the
        // leading three of R0 and one of R1, no latitude.
        const double w = 6283.0758499914 * tau;
        L = 1.75347045673 + 0.03341656456 * std::cos(4.66925680417 + w) +
            tau * (6283.31966747491 + 0.00206058863 * std::cos(2.67823455584 + w));
        L = Reduce_Angle(L);
        B = 0.0;
        R = 1.00013988799 + 0.01670699626 * std::cos(3.09846350771 + w) +
            0.00013956023 * std::cos(3.0552460962 + 2.0 * w) +
            tau * 0.00103018608 * std::cos(1.10748969588 + w);
    }
}

void EarthSeries::SunJ2000(double tau, double& x, double& y, double& z) const {
    double L, B, R;
    Earth_LBR(kAccuracyReduced, tau, L, B, R);
    x = -R * std::cos(B) * std::cos(L);
    y = -R * std::cos(B) * std::sin(L);
    z = -R * std::sin(B);
    Ecliptic_Of_Date_To_J2000(10.0 * tau, x, y, z);
}

void EarthSeries::EarthRect(SeriesAccuracy accuracy, double t, double& x, double& y,
                            double& z) const {
    double L, B, R;
    Earth_LBR(accuracy, t / 10.0, L, B, R);
    x = R * std::cos(B) * std::cos(L);
    y = R * std::cos(B) * std::sin(L);
    z = R * std::sin(B);
}

void EarthSeries::SunPlace(double& lon, double& lat, double& dist) const {
    const double T = lon;
    double L, B, R;
    Earth_LBR(Level_Of(lat), T / 10.0, L, B, R);
    // Geometric Sun, then the conversion to the FK5 system (0.09033" in longitude and
    // 0.03916" (cos - sin) in latitude) and the aberration, 20.4898" at one AU.
    double theta = Reduce_Angle(L + kFullPi);
    const double lambda1 = theta - (0.0243822496503608 * T + 5.41052068118242e-06 * T * T);
    theta -= 4.37932198146245e-07;
    double beta = -B + 1.89853037522495e-07 * (std::cos(lambda1) - std::sin(lambda1));
    theta -= 9.93373536319819e-05 / R;
    lon = Reduce_Angle(theta);
    lat = beta;
    dist = R;
}

// ---- MoonSeries ----

MoonSeries& MoonSeries::Instance() {
    static MoonSeries moon;
    return moon;
}

MoonSeries::MoonSeries()
    : full_(ElpMoon::Load()),
      reduced_(full_.Truncated(kMoonSpan, kMoonReducedAngle, kMoonReducedKm)),
      fast_(full_.Truncated(kMoonFastSpan, kMoonFastAngle, kMoonFastKm)) {}

void MoonSeries::MoonPlace(double& lon, double& lat, double& dist) const {
    const double T = lon;
    const SeriesAccuracy level = Level_Of(lat);
    const ElpMoon& series = level == kAccuracyFull      ? full_
                            : level == kAccuracyReduced ? reduced_
                                                        : fast_;
    double V, U, r;
    series.Evaluate(T, V, U, r);
    const double* p = kPrecessionLongitude.data();
    const double precession = Polynomial(kPrecessionLongitude, T) * kArcsecond;
    // Light time: the place is that of the moment the light left the Moon. Moving with the
    // Earth, the Moon shows no annual aberration beyond this (the two cancel to first order).
    const double* w = series.W1.data();
    // At the fast level the mean motion stands for the true one (within 0.1").
    const bool fast = level == kAccuracyFast;
    const double lonRate =
        w[1] + T * (2.0 * w[2] + T * (3.0 * w[3] + T * 4.0 * w[4])) +
        (p[1] + T * 2.0 * p[2] + (fast ? 0.0 : Head_Rate(full_.vur[0], T))) * kArcsecond;
    const double latRate = fast ? 0.0 : Head_Rate(full_.vur[1], T) * kArcsecond;
    const double delay = r / kLightKmPerCentury;
    lon = Reduce_Angle(V + precession - lonRate * delay);
    lat = U - latRate * delay;
    dist = r;
}

// ---- PlanetSeries ----

PlanetSeries& PlanetSeries::For(int body) {
    if (body < body::Mercury || body > body::Uranus) body = body::Mercury;
    static std::array<std::unique_ptr<PlanetSeries>, 7> made;
    std::unique_ptr<PlanetSeries>& planet = made[body - body::Mercury];
    if (!planet) planet.reset(new PlanetSeries(body));
    return *planet;
}

PlanetSeries::PlanetSeries(int body)
    : body_(body),
      full_(VsopBody::Load(Blob_Of(body))),
      reduced_(full_.Truncated(kReducedSpan, kPlanetReduction[body - body::Mercury].Angle(),
                               kPlanetReduction[body - body::Mercury].Radius())),
      corrections_(ChebyshevTable::Load(std::string(Blob_Of(body)) + "_corrections")) {}

void PlanetSeries::Correct(double tau, double& L, double& B, double& R) const {
    double dL, dB, dR;
    corrections_.Evaluate_Within(tau, dL, dB, dR);
    L = Reduce_Angle(L + dL);
    B += dB;
    R += dR;
}

void PlanetSeries::PlaceReduced(double tau, double& L, double& B, double& R) const {
    (Within_Reduced_Span(tau) ? reduced_ : full_).Evaluate(tau, L, B, R);
    Correct(tau, L, B, R);
}

void PlanetSeries::PlaceFull(double tau, double& L, double& B, double& R) const {
    full_.Evaluate(tau, L, B, R);
    Correct(tau, L, B, R);
}

// ---- PlutoSeries ----

PlutoSeries& PlutoSeries::Instance() {
    static PlutoSeries pluto;
    return pluto;
}

PlutoSeries::PlutoSeries() : table_(ChebyshevTable::Load("pluto")) {}

void PlutoSeries::Place(double tau, double& L, double& B, double& R) const {
    double x, y, z;
    table_.Evaluate(tau, x, y, z);
    L = Reduce_Angle(std::atan2(y, x));
    B = std::atan2(z, std::hypot(x, y));
    R = std::sqrt(x * x + y * y + z * z);
}

}  // namespace kelmoran
