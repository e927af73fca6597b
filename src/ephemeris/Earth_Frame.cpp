// Earth orientation: nutation (IAU 1980), obliquity (Laskar) and sidereal time (IAU 1982).
//
// Sources:
//  - Nutation: the 1980 IAU theory of nutation (P. K. Seidelmann, "1980 IAU Theory of
//    Nutation: the final report of the IAU Working Group on Nutation", Celestial Mechanics
//    27, 79-106, 1982), as tabulated in the Explanatory Supplement to the Astronomical
//    Almanac (1992), table 3.222.1, truncated to the 63 terms whose amplitude in longitude
//    is at least 0.0003" (J. Meeus, Astronomical Algorithms, 2nd ed., table 22.A).
//  - Fundamental arguments D, M, M', F, Omega: Meeus, ch. 22, with the program's own t^2
//    coefficient of D (0.00019142 degrees, a tenth of the published one).
//  - Mean obliquity: J. Laskar, Astronomy and Astrophysics 157, 68 (1986).
//  - Mean sidereal time: the IAU 1982 expression (Aoki et al., A&A 105, 359, 1982) in the
//    form of Meeus eq. 12.4, with the program's own t^2 coefficient 0.0003887933 degrees.
#include "ephemeris/Earth_Frame.h"

#include <cmath>

#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"

namespace kelmoran {

namespace {

// One term of the series: multiples of D, M, M', F, Omega; the sine coefficient in
// longitude and its rate per century; the cosine coefficient in obliquity and its rate.
// Units of 0.0001". Obliquity coefficients below 0.0003" are left out (zero).
struct NutationTerm {
    signed char d, m, mp, f, om;
    double sinLong, sinLongT, cosObl, cosOblT;
};

constexpr NutationTerm kNutation[63] = {
    { 0,  0,  0,  0,  1, -171996.0, -174.2,  92025.0,  8.9},
    { 0,  0,  0,  0,  2,    2062.0,    0.2,   -895.0,  0.5},
    { 0,  0, -2,  2,  1,      46.0,    0.0,    -24.0,  0.0},
    { 0,  0,  2, -2,  0,      11.0,    0.0,      0.0,  0.0},
    { 0,  0, -2,  2,  2,      -3.0,    0.0,      0.0,  0.0},
    {-1, -1,  1,  0,  0,      -3.0,    0.0,      0.0,  0.0},
    {-2,  0,  0,  2,  2,  -13187.0,   -1.6,   5736.0, -3.1},
    { 0,  1,  0,  0,  0,    1426.0,   -3.4,     54.0, -0.1},
    {-2,  1,  0,  2,  2,    -517.0,    1.2,    224.0, -0.6},
    {-2, -1,  0,  2,  2,     217.0,   -0.5,    -95.0,  0.3},
    {-2,  0,  0,  2,  1,     129.0,    0.1,    -70.0,  0.0},
    {-2,  0,  2,  0,  0,      48.0,    0.0,      0.0,  0.0},
    {-2,  0,  0,  2,  0,     -22.0,    0.0,      0.0,  0.0},
    { 0,  2,  0,  0,  0,      17.0,   -0.1,      0.0,  0.0},
    { 0,  1,  0,  0,  1,     -15.0,    0.0,      9.0,  0.0},
    {-2,  2,  0,  2,  2,     -16.0,    0.1,      7.0,  0.0},
    { 0, -1,  0,  0,  1,     -12.0,    0.0,      6.0,  0.0},
    { 2,  0, -2,  0,  1,      -6.0,    0.0,      3.0,  0.0},
    {-2, -1,  0,  2,  1,      -5.0,    0.0,      3.0,  0.0},
    {-2,  0,  2,  0,  1,       4.0,    0.0,      0.0,  0.0},
    {-2,  1,  0,  2,  1,       4.0,    0.0,      0.0,  0.0},
    {-1,  0,  1,  0,  0,      -4.0,    0.0,      0.0,  0.0},
    { 0,  0,  0,  2,  2,   -2274.0,   -0.2,    977.0, -0.5},
    { 0,  0,  1,  0,  0,     712.0,    0.1,     -7.0,  0.0},
    { 0,  0,  0,  2,  1,    -386.0,   -0.4,    200.0,  0.0},
    { 0,  0,  1,  2,  2,    -301.0,    0.0,    129.0, -0.1},
    {-2,  0,  1,  0,  0,    -158.0,    0.0,      0.0,  0.0},
    { 0,  0, -1,  2,  2,     123.0,    0.0,    -53.0,  0.0},
    { 2,  0,  0,  0,  0,      63.0,    0.0,      0.0,  0.0},
    { 0,  0,  1,  0,  1,      63.0,    0.1,    -33.0,  0.0},
    { 0,  0, -1,  0,  1,     -58.0,   -0.1,     32.0,  0.0},
    { 2,  0, -1,  2,  2,     -59.0,    0.0,     26.0,  0.0},
    { 0,  0,  1,  2,  1,     -51.0,    0.0,     27.0,  0.0},
    { 2,  0,  0,  2,  2,     -38.0,    0.0,     16.0,  0.0},
    { 0,  0,  2,  0,  0,      29.0,    0.0,      0.0,  0.0},
    {-2,  0,  1,  2,  2,      29.0,    0.0,    -12.0,  0.0},
    { 0,  0,  2,  2,  2,     -31.0,    0.0,     13.0,  0.0},
    { 0,  0,  0,  2,  0,      26.0,    0.0,      0.0,  0.0},
    { 0,  0, -1,  2,  1,      21.0,    0.0,    -10.0,  0.0},
    { 2,  0, -1,  0,  1,      16.0,    0.0,     -8.0,  0.0},
    {-2,  0,  1,  0,  1,     -13.0,    0.0,      7.0,  0.0},
    { 2,  0, -1,  2,  1,     -10.0,    0.0,      5.0,  0.0},
    {-2,  1,  1,  0,  0,      -7.0,    0.0,      0.0,  0.0},
    { 0,  1,  0,  2,  2,       7.0,    0.0,     -3.0,  0.0},
    { 0, -1,  0,  2,  2,      -7.0,    0.0,      3.0,  0.0},
    { 2,  0,  1,  2,  2,      -8.0,    0.0,      3.0,  0.0},
    { 2,  0,  1,  0,  0,       6.0,    0.0,      0.0,  0.0},
    {-2,  0,  2,  2,  2,       6.0,    0.0,     -3.0,  0.0},
    { 2,  0,  0,  0,  1,      -6.0,    0.0,      3.0,  0.0},
    { 2,  0,  0,  2,  1,      -7.0,    0.0,      3.0,  0.0},
    {-2,  0,  1,  2,  1,       6.0,    0.0,     -3.0,  0.0},
    {-2,  0,  0,  0,  1,      -5.0,    0.0,      3.0,  0.0},
    { 0, -1,  1,  0,  0,       5.0,    0.0,      0.0,  0.0},
    { 0,  0,  2,  2,  1,      -5.0,    0.0,      3.0,  0.0},
    {-2,  1,  0,  0,  0,      -4.0,    0.0,      0.0,  0.0},
    { 0,  0,  1, -2,  0,       4.0,    0.0,      0.0,  0.0},
    { 1,  0,  0,  0,  0,      -4.0,    0.0,      0.0,  0.0},
    { 0,  1,  1,  0,  0,      -3.0,    0.0,      0.0,  0.0},
    { 0,  0,  1,  2,  0,       3.0,    0.0,      0.0,  0.0},
    { 0, -1,  1,  2,  2,      -3.0,    0.0,      0.0,  0.0},
    { 2, -1, -1,  2,  2,      -3.0,    0.0,      0.0,  0.0},
    { 0,  0,  3,  2,  2,      -3.0,    0.0,      0.0,  0.0},
    { 2, -1,  0,  2,  2,      -3.0,    0.0,      0.0,  0.0},
};

double Argument(double deg) { return Reduce_2Pi(deg / kDegreesPerRadian); }

}  // namespace

double Reduce_2Pi(double a) {
    if (!std::isfinite(a)) return 0.0;
    const double r = a - kTwoPi * std::floor(a / kTwoPi);
    // A value a hair below a whole turn can round to 2π itself.
    return r < kTwoPi ? r : 0.0;
}

void Calc_Nutation(double t, double& trueObliquity, double& nutLong, double& nutObl) {
    const double t2 = t * t;
    const double t3 = t2 * t;
    const double d = Argument(297.85036 + 445267.11148 * t - 0.00019142 * t2 + t3 / 189474.0);
    const double m = Argument(357.52772 + 35999.05034 * t - 0.0001603 * t2 - t3 / 300000.0);
    const double mp = Argument(134.96298 + 477198.867398 * t + 0.0086972 * t2 + t3 / 56250.0);
    const double f = Argument(93.27191 + 483202.017538 * t - 0.0036825 * t2 + t3 / 327270.0);
    const double om = Argument(125.04452 - 1934.136261 * t + 0.0020708 * t2 + t3 / 450000.0);

    double dpsi = 0.0;
    double deps = 0.0;
    for (const NutationTerm& k : kNutation) {
        const double arg = k.d * d + k.m * m + k.mp * mp + k.f * f + k.om * om;
        dpsi += (k.sinLong + k.sinLongT * t) * std::sin(arg);
        if (k.cosObl != 0.0) deps += (k.cosObl + k.cosOblT * t) * std::cos(arg);
    }
    nutLong = dpsi / 10000.0 / kArcsecPerRadian;
    nutObl = deps / 10000.0 / kArcsecPerRadian;

    // Laskar's mean obliquity, U in units of 10000 Julian years.
    const double u = t / 100.0;
    const double poly =
        u * (-4680.93 +
             u * (-1.55 +
                  u * (1999.25 +
                       u * (-51.38 +
                            u * (-249.67 +
                                 u * (-39.05 + u * (7.12 + u * (27.87 + u * (5.79 + u * 2.45)))))))));
    const double meanObliquity = poly / kArcsecPerRadian + 0.409092804222329;
    trueObliquity = meanObliquity + nutObl;
}

double Mean_Sidereal_Time(double d, double t) {
    return 4.89496121273579 + 6.30038809898496 * d + 6.78572319469407e-6 * t * t -
           t * t * t / 2217919624.95142;
}

EarthFrame Calc_EarthFrame(double jd) {
    EarthFrame e;
    e.JD = jd;
    e.T = jd / 36525.0;
    e.TT = e.T + Get_DeltaT(DeltaT_Year(jd)) / kSecondsPerJulianCentury;
    Calc_Nutation(e.TT, e.TrueObliquity, e.NutLong, e.NutObl);
    e.CosObliquity = std::cos(e.TrueObliquity);
    e.SinObliquity = std::sin(e.TrueObliquity);
    // Apparent sidereal time: mean time plus the equation of the equinoxes.
    e.GAST = Reduce_2Pi(Mean_Sidereal_Time(e.JD, e.T) + e.NutLong * e.CosObliquity);
    return e;
}

double Calc_GAST(double jd) {
    const double t = jd / 36525.0;
    const double mean = Mean_Sidereal_Time(jd, t);
    double trueObliquity = 0.0;
    double nutLong = 0.0;
    double nutObl = 0.0;
    Calc_Nutation(t, trueObliquity, nutLong, nutObl);
    return Reduce_2Pi(mean + nutLong * std::cos(trueObliquity));
}

}  // namespace kelmoran
