#include "ephemeris/Moon_Phases.h"

#include <cmath>
#include <cstddef>
#include <iterator>

#include "ephemeris/Units.h"

namespace kelmoran {

namespace {

// Reduces degrees by 360 x Int(x / 360) (Int the floor) and turns them into radians.
double Degrees_To_Reduced_Radians(double deg) {
    return (deg - 360.0 * std::floor(deg / 360.0)) * kOneDegree;
}

// One periodic term: amplitude (days), power of E, and the multiples of M, M', F and Ω
// in its argument.
struct PhaseTerm {
    double amplitude;
    int powerE;
    int m, mPrime, f, omega;
};

// J. Meeus, Astronomical Algorithms, 2nd ed., ch. 49, the corrections for the New Moon.
constexpr PhaseTerm kNewMoonTerms[] = {
    {-0.40720, 0, 0, 1, 0, 0}, {0.17241, 1, 1, 0, 0, 0},    {0.01608, 0, 0, 2, 0, 0},
    {0.01039, 0, 0, 0, 2, 0},  {0.00739, 1, -1, 1, 0, 0},   {-0.00514, 1, 1, 1, 0, 0},
    {0.00208, 2, 2, 0, 0, 0},  {-0.00111, 0, 0, 1, -2, 0},  {-0.00057, 0, 0, 1, 2, 0},
    {0.00056, 1, 1, 2, 0, 0},  {-0.00042, 0, 0, 3, 0, 0},   {0.00042, 1, 1, 0, 2, 0},
    {0.00038, 1, 1, 0, -2, 0}, {-0.00024, 1, -1, 2, 0, 0},  {-0.00017, 0, 0, 0, 0, 1},
    {-0.00007, 0, 2, 1, 0, 0}, {0.00004, 0, 0, 2, -2, 0},   {0.00004, 0, 3, 0, 0, 0},
    {0.00003, 0, 1, 1, -2, 0}, {0.00003, 0, 0, 2, 2, 0},    {-0.00003, 0, 1, 1, 2, 0},
    {0.00003, 0, -1, 1, 2, 0}, {-0.00002, 0, -1, 1, -2, 0}, {-0.00002, 0, 1, 3, 0, 0},
    {0.00002, 0, 0, 4, 0, 0},
};

// The same source, the corrections for the Full Moon.
constexpr PhaseTerm kFullMoonTerms[] = {
    {-0.40614, 0, 0, 1, 0, 0}, {0.17302, 1, 1, 0, 0, 0},    {0.01614, 0, 0, 2, 0, 0},
    {0.01043, 0, 0, 0, 2, 0},  {0.00734, 1, -1, 1, 0, 0},   {-0.00515, 1, 1, 1, 0, 0},
    {0.00209, 2, 2, 0, 0, 0},  {-0.00111, 0, 0, 1, -2, 0},  {-0.00057, 0, 0, 1, 2, 0},
    {0.00056, 1, 1, 2, 0, 0},  {-0.00042, 0, 0, 3, 0, 0},   {0.00042, 1, 1, 0, 2, 0},
    {0.00038, 1, 1, 0, -2, 0}, {-0.00024, 1, -1, 2, 0, 0},  {-0.00017, 0, 0, 0, 0, 1},
    {-0.00007, 0, 2, 1, 0, 0}, {0.00004, 0, 0, 2, -2, 0},   {0.00004, 0, 3, 0, 0, 0},
    {0.00003, 0, 1, 1, -2, 0}, {0.00003, 0, 0, 2, 2, 0},    {-0.00003, 0, 1, 1, 2, 0},
    {0.00003, 0, -1, 1, 2, 0}, {-0.00002, 0, -1, 1, -2, 0}, {-0.00002, 0, 1, 3, 0, 0},
    {0.00002, 0, 0, 4, 0, 0},
};

// The same source, the corrections for the First and Last Quarters (before W).
constexpr PhaseTerm kQuarterTerms[] = {
    {-0.62801, 0, 0, 1, 0, 0}, {0.17172, 1, 1, 0, 0, 0},    {-0.01183, 1, 1, 1, 0, 0},
    {0.00862, 0, 0, 2, 0, 0},  {0.00804, 0, 0, 0, 2, 0},    {0.00454, 1, -1, 1, 0, 0},
    {0.00204, 2, 2, 0, 0, 0},  {-0.00180, 0, 0, 1, -2, 0},  {-0.00070, 0, 0, 1, 2, 0},
    {-0.00040, 0, 0, 3, 0, 0}, {-0.00034, 1, -1, 2, 0, 0},  {0.00032, 1, 1, 0, 2, 0},
    {0.00032, 1, 1, 0, -2, 0}, {-0.00028, 2, 2, 1, 0, 0},   {0.00027, 1, 1, 2, 0, 0},
    {-0.00017, 0, 0, 0, 0, 1}, {-0.00005, 0, -1, 1, -2, 0}, {0.00004, 0, 0, 2, 2, 0},
    {-0.00004, 0, 1, 1, 2, 0}, {0.00004, 0, -2, 1, 0, 0},   {0.00003, 0, 1, 1, -2, 0},
    {0.00003, 0, 3, 0, 0, 0},  {0.00002, 0, 0, 2, -2, 0},   {0.00002, 0, -1, 1, 2, 0},
    {-0.00002, 0, 1, 3, 0, 0},
};

// The same source, the 14 additional corrections common to all phases (the planetary
// arguments A1 .. A14), here with amplitude in days, phase and rate per lunation in radians.
struct PlanetaryTerm {
    double amplitude, phase, rate;
};
constexpr PlanetaryTerm kPlanetaryTerms[] = {
    {0.000325, 5.231973, 0.001875}, {0.000165, 4.396135, 0.000285}, {0.000164, 4.395263, 0.465163},
    {0.000126, 6.098529, 0.635518}, {0.00011, 1.477596, 0.317759},  {6.2e-05, 2.47383, 0.930326},
    {6e-05, 3.615275, 0.042826},    {5.6e-05, 2.702468, 0.127529},  {4.7e-05, 0.602488, 0.475798},
    {4.2e-05, 3.616148, 0.002126},  {4e-05, 5.084842, 0.03219},     {3.7e-05, 2.822546, 0.422337},
    {3.5e-05, 4.181111, 0.445288},  {2.3e-05, 5.786639, 0.062701},
};
// The T² term of A1, radians.
constexpr double kA1T2 = -0.0001600991;

template <std::size_t N>
double Sum_Terms(const PhaseTerm (&terms)[N], double E, double M, double Mp, double F, double Om) {
    double sum = 0.0;
    for (const PhaseTerm& t : terms) {
        double a = t.amplitude;
        if (t.powerE == 1) a *= E;
        if (t.powerE == 2) a *= E * E;
        sum += a * std::sin(t.m * M + t.mPrime * Mp + t.f * F + t.omega * Om);
    }
    return sum;
}

}  // namespace

double Phase_Of_Lunation(double k, MoonPhase phase) {
    const double T = k / 1236.85308721484;
    const double T2 = T * T;
    const double T3 = T2 * T;
    const double T4 = T3 * T;
    double jde = 5.09766 + kSynodicMonth * k + 0.00015437 * T2 - 1.5e-07 * T3 + 7.3e-10 * T4;
    const double E = 1.0 - 0.002516 * T - 7.4e-06 * T2;
    const double M =
        Degrees_To_Reduced_Radians(2.5534 + 29.1053567 * k - 1.4e-06 * T2 - 1.1e-07 * T3);
    const double Mp = Degrees_To_Reduced_Radians(201.5643 + 385.81693528 * k + 0.0107582 * T2 +
                                                 1.238e-05 * T3 - 5.8e-08 * T4);
    const double F = Degrees_To_Reduced_Radians(160.7108 + 390.67050284 * k - 0.0016118 * T2 -
                                                2.27e-06 * T3 + 1.1e-08 * T4);
    const double Om =
        Degrees_To_Reduced_Radians(124.7746 - 1.56375588 * k + 0.0020672 * T2 + 2.15e-06 * T3);

    switch (phase) {
        case MoonPhase::New:
            jde += Sum_Terms(kNewMoonTerms, E, M, Mp, F, Om);
            break;
        case MoonPhase::Full:
            jde += Sum_Terms(kFullMoonTerms, E, M, Mp, F, Om);
            break;
        case MoonPhase::FirstQuarter:
        case MoonPhase::LastQuarter: {
            jde += Sum_Terms(kQuarterTerms, E, M, Mp, F, Om);
            const double W = 0.00306 - 0.00038 * E * std::cos(M) + 0.00026 * std::cos(Mp) -
                             0.00002 * std::cos(Mp - M) + 0.00002 * std::cos(Mp + M) +
                             0.00002 * std::cos(2.0 * F);
            jde += phase == MoonPhase::FirstQuarter ? W : -W;
            break;
        }
    }

    for (std::size_t i = 0; i < std::size(kPlanetaryTerms); ++i) {
        const PlanetaryTerm& p = kPlanetaryTerms[i];
        double arg = p.phase + p.rate * k;
        if (i == 0) arg += kA1T2 * T2;
        jde += p.amplitude * std::sin(arg);
    }
    return jde;
}

double Phase_Before(double target, double deltaT, MoonPhase phase) {
    const double fraction = 0.25 * static_cast<int>(phase);
    double k = std::floor(target / kSynodicMonth) + fraction;
    // The starting lunation is at most one after the answer; the bound only guards a NaN
    // or an infinite target, for which the last moment computed is returned.
    double moment = 0.0;
    for (int guard = 0; guard < 4; ++guard) {
        moment = Phase_Of_Lunation(k, phase) - deltaT * 36525.0;
        if (moment <= target) break;
        k -= 1.0;
    }
    return moment;
}

double New_Moon_Before(double target, double deltaT) {
    return Phase_Before(target, deltaT, MoonPhase::New);
}

double Full_Moon_Before(double target, double deltaT) {
    return Phase_Before(target, deltaT, MoonPhase::Full);
}

double Quarter_Before(double target, double deltaT, bool last) {
    return Phase_Before(target, deltaT, last ? MoonPhase::LastQuarter : MoonPhase::FirstQuarter);
}

}  // namespace kelmoran
