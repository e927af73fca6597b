// Earth orientation for a moment: Terrestrial Time, nutation, the true obliquity of the
// ecliptic and Greenwich apparent sidereal time (the GHA of Aries), computed once into
// one record that every body calculation begins with.
#pragma once

namespace kelmoran {

// The moment's time arguments and Earth orientation. All angles in radians.
struct EarthFrame {
    double JD = 0.0;             // MyJD as passed in: days of UT from J2000.0
    double T = 0.0;              // JD / 36525: Julian centuries of UT from J2000.0
    double TT = 0.0;             // T + ΔT / 3.15576e9: Julian centuries of TT from J2000.0
    double TrueObliquity = 0.0;  // mean obliquity + nutation in obliquity
    double CosObliquity = 1.0;   // cos(TrueObliquity)
    double SinObliquity = 0.0;   // sin(TrueObliquity)
    double NutLong = 0.0;        // nutation in longitude, Δψ
    double NutObl = 0.0;         // nutation in obliquity, Δε
    double GAST = 0.0;           // Greenwich apparent sidereal time, 0 .. 2π
};

// Seconds in a Julian century: converts ΔT into centuries.
inline constexpr double kSecondsPerJulianCentury = 3.15576e9;

// The Earth frame of day number `jd` (MyJD, UT). Nutation and obliquity are taken at TT,
// mean sidereal time at UT. Accuracy: nutation within 0.015" of the full IAU 1980 theory
// from 1800 to 2200; GAST within 0.005 s of time of the IAU 1982 mean sidereal time plus
// the 1994 equation of the equinoxes. Far from J2000 (years -9999, 9999) the polynomials
// run unguarded.
EarthFrame Calc_EarthFrame(double jd);

// Greenwich apparent sidereal time (radians, 0 .. 2π) of day number `jd` alone, with the
// nutation taken at UT rather than TT.
double Calc_GAST(double jd);

// Nutation in longitude and obliquity by the 1980 IAU theory (63 terms), and the true
// obliquity of the ecliptic by Laskar's polynomial; `t` in Julian centuries from J2000.0,
// all results in radians.
void Calc_Nutation(double t, double& trueObliquity, double& nutLong, double& nutObl);

// Mean sidereal time at Greenwich (radians, not reduced) for UT day number `d` and
// centuries `t` = d / 36525.
double Mean_Sidereal_Time(double d, double t);

// Takes off 2π x Int(a / 2π), Int being the floor: the result lies in 0 .. 2π.
double Reduce_2Pi(double a);

}  // namespace kelmoran
