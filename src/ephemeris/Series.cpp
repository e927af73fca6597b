// The long-series objects: the Earth and the Sun, the Moon, the planets and Pluto.
#include "ephemeris/Series.h"

#include <array>
#include <cmath>
#include <memory>
#include <numbers>

namespace kelmoran {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kArcsecond = std::numbers::pi / 648000.0;

double Reduce_Angle(double a) { return a - kTwoPi * std::floor(a / kTwoPi); }

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
// least distance of any body from it (Venus, 0.26 AU). Measured against the full series
// every 11 days from 1800 to 2200, the largest differences are 0.52" geocentric and 0.52"
// heliocentric (Mercury), with 3,500 of the 31,577 terms: about a ninth of the cost.
constexpr double kReducedSpan = 0.2;
constexpr double kReducedAngle = 1.0e-7;  // 0.02"

struct Reduction {
    double leastDistance;  // from the Earth, AU
    double meanDistance;   // from the Sun, AU
    double Angle() const { return kReducedAngle * std::fmin(1.0, leastDistance / meanDistance); }
    double Radius() const { return kReducedAngle * leastDistance; }
};

// Per body 4 .. 10 (Mercury .. Uranus, Neptune before Uranus), and the Earth.
constexpr std::array<Reduction, 7> kPlanetReduction = {
    {{0.55, 0.387}, {0.26, 0.723}, {0.37, 1.524}, {3.9, 5.203}, {8.0, 9.537}, {28.8, 30.07},
     {17.3, 19.19}}};
constexpr Reduction kEarthReduction = {0.26, 1.0};

const char* Blob_Of(int body) {
    switch (body) {
        case body::Venus: return "vsop87d_venus";
        case body::Mars: return "vsop87d_mars";
        case body::Jupiter: return "vsop87d_jupiter";
        case body::Saturn: return "vsop87d_saturn";
        case body::Neptune: return "vsop87d_neptune";
        case body::Uranus: return "vsop87d_uranus";
        default: return "vsop87d_mercury";
    }
}

// ---- Long-term precession (Vondrák, Capitaine and Wallace 2011, A&A 534, A22, with the
// corrigendum of 2012, A&A 541, C1): the poles of the mean ecliptic and of the mean equator
// of date as unit vectors in the mean equator and equinox of J2000.0. Valid for +/- 200
// millennia; within a few arcseconds over the historical period.

struct PeriodicTerm {
    double period;  // centuries
    double cosA, cosB, sinA, sinB;
};

// Ecliptic pole: P_A and Q_A, arcseconds (Vondrák et al. 2011, Table 1 and eq. 8).
constexpr std::array<double, 4> kPaPoly = {5851.607687, -0.1189000, -0.00028913, 0.000000101};
constexpr std::array<double, 4> kQaPoly = {-1600.886300, 1.1689818, -0.00000020, -0.000000437};
constexpr std::array<PeriodicTerm, 8> kEclipticTerms = {{
    {708.15, -5486.751211, -684.661560, 667.666730, -5523.863691},
    {2309.00, -17.127623, 2446.283880, -2354.886252, -549.747450},
    {1620.00, -617.517403, 399.671049, -428.152441, -310.998056},
    {492.20, 413.442940, -356.652376, 376.202861, 421.535876},
    {1183.00, 78.614193, -186.387003, 184.778874, -36.776172},
    {622.00, -180.732815, -316.800070, 335.321713, -145.278396},
    {882.00, -87.676083, 198.296701, -185.138669, -34.744450},
    {547.00, 46.140315, 101.135679, -120.972830, 22.885731},
}};

// Equator pole: X_A and Y_A, arcseconds (Vondrák et al. 2011, Table 2 and eq. 9).
constexpr std::array<double, 4> kXaPoly = {5453.282155, 0.4252841, -0.00037173, -0.000000152};
constexpr std::array<double, 4> kYaPoly = {-73750.930350, -0.7675452, -0.00018725, 0.000000231};
constexpr std::array<PeriodicTerm, 14> kEquatorTerms = {{
    {256.75, -819.940624, 75004.344875, 81491.287984, 1558.515853},
    {708.15, -8444.676815, 624.033993, 787.163481, 7774.939698},
    {274.20, 2600.009459, 1251.136893, 1251.296102, -2219.534038},
    {241.45, 2755.175630, -1102.212834, -1257.950837, -2523.969396},
    {2309.00, -167.659835, -2660.664980, -2966.799730, 247.850422},
    {492.20, 871.855056, 699.291817, 639.744522, -846.485643},
    {396.10, 44.769698, 153.167220, 131.600209, -1393.124055},
    {288.90, -512.313065, -950.865637, -445.040117, 368.526116},
    {231.10, -819.415595, 499.754645, 584.522874, 749.045012},
    {1610.00, -538.071099, -145.188210, -89.756563, 444.704518},
    {620.00, -189.793622, 558.116553, 524.429630, 235.934465},
    {157.87, -402.922932, -23.923029, -13.549067, 374.049623},
    {220.30, 179.516345, -165.405086, -210.157124, -171.330180},
    {1200.00, -9.814756, 9.344131, -44.919798, -22.899655},
}};

constexpr double kObliquityJ2000 = 84381.406 * kArcsecond;

// The two series of one pole, arcseconds, at t centuries of TT.
template <std::size_t N>
void Pole_Series(double t, const std::array<double, 4>& polyA, const std::array<double, 4>& polyB,
                 const std::array<PeriodicTerm, N>& terms, double& a, double& b) {
    a = polyA[0] + t * (polyA[1] + t * (polyA[2] + t * polyA[3]));
    b = polyB[0] + t * (polyB[1] + t * (polyB[2] + t * polyB[3]));
    for (const PeriodicTerm& term : terms) {
        const double w = kTwoPi * t / term.period;
        const double c = std::cos(w), s = std::sin(w);
        a += c * term.cosA + s * term.sinA;
        b += c * term.cosB + s * term.sinB;
    }
}

// Unit vector of the pole of the mean ecliptic of date.
std::array<double, 3> Ecliptic_Pole(double t) {
    double p, q;
    Pole_Series(t, kPaPoly, kQaPoly, kEclipticTerms, p, q);
    p *= kArcsecond;
    q *= kArcsecond;
    const double w = std::sqrt(std::fmax(0.0, 1.0 - p * p - q * q));
    const double s = std::sin(kObliquityJ2000), c = std::cos(kObliquityJ2000);
    return {p, -q * c - w * s, -q * s + w * c};
}

// Unit vector of the pole of the mean equator of date.
std::array<double, 3> Equator_Pole(double t) {
    double x, y;
    Pole_Series(t, kXaPoly, kYaPoly, kEquatorTerms, x, y);
    x *= kArcsecond;
    y *= kArcsecond;
    return {x, y, std::sqrt(std::fmax(0.0, 1.0 - x * x - y * y))};
}

std::array<double, 3> Cross(const std::array<double, 3>& a, const std::array<double, 3>& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Rotates a vector from the mean ecliptic and equinox of date (t centuries of TT) to the
// mean equator and equinox of J2000.0.
void Ecliptic_Of_Date_To_J2000(double t, double& x, double& y, double& z) {
    const std::array<double, 3> ez = Ecliptic_Pole(t);
    std::array<double, 3> ex = Cross(Equator_Pole(t), ez);  // towards the equinox of date
    const double n = std::sqrt(ex[0] * ex[0] + ex[1] * ex[1] + ex[2] * ex[2]);
    for (double& v : ex) v /= n;
    const std::array<double, 3> ey = Cross(ez, ex);
    const double a = x, b = y, c = z;
    x = a * ex[0] + b * ey[0] + c * ez[0];
    y = a * ex[1] + b * ey[1] + c * ez[1];
    z = a * ex[2] + b * ey[2] + c * ez[2];
}

// ---- The Moon ----
//
// Truncations of ELP/MPP02 (bounds on amplitude x 2^p, p the power of T, which is the
// largest size of a term from 1800 to 2200): accuracy 1 keeps terms from 0.0005" in
// longitude and latitude and 1 m in distance, accuracy 2 from 0.5" and 0.5 km.
constexpr double kMoonSpan = 2.0;
constexpr double kMoonReducedAngle = 0.0005;
constexpr double kMoonReducedKm = 0.001;
constexpr double kMoonFastAngle = 0.5;
constexpr double kMoonFastKm = 0.5;

// Precession in longitude from the departure point of J2000.0 to the mean equinox of date,
// arcseconds, as in ELP/MPP02 (Chapront and Francou 2002): the constant 5029.0966"/cy
// corrected by -0.29965"/cy for the fit to DE405.
constexpr std::array<double, 5> kMoonPrecession = {0.0, 5029.0966 - 0.29965, 1.1120, 0.000077,
                                                   -0.00002353};

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
    if (accuracy <= kAccuracyFull) {
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
    double theta = Reduce_Angle(L + kPi);
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
      fast_(full_.Truncated(kMoonSpan, kMoonFastAngle, kMoonFastKm)) {}

void MoonSeries::MoonPlace(double& lon, double& lat, double& dist) const {
    const double T = lon;
    const SeriesAccuracy level = Level_Of(lat);
    const ElpMoon& series = level == kAccuracyFull      ? full_
                            : level == kAccuracyReduced ? reduced_
                                                        : fast_;
    double V, U, r;
    series.Evaluate(T, V, U, r);
    const double* p = kMoonPrecession.data();
    const double precession = T * (p[1] + T * (p[2] + T * (p[3] + T * p[4]))) * kArcsecond;
    // Light time: the place is that of the moment the light left the Moon. Moving with the
    // Earth, the Moon shows no annual aberration beyond this (the two cancel to first order).
    const double* w = series.W1.data();
    const double lonRate = w[1] + T * (2.0 * w[2] + T * (3.0 * w[3] + T * 4.0 * w[4])) +
                           (p[1] + T * 2.0 * p[2] + Head_Rate(full_.vur[0], T)) * kArcsecond;
    const double latRate = Head_Rate(full_.vur[1], T) * kArcsecond;
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
                               kPlanetReduction[body - body::Mercury].Radius())) {}

void PlanetSeries::PlaceReduced(double tau, double& L, double& B, double& R) const {
    reduced_.Evaluate(tau, L, B, R);
}

void PlanetSeries::PlaceFull(double tau, double& L, double& B, double& R) const {
    full_.Evaluate(tau, L, B, R);
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
