// The moments of the Moon's phases by the periodic series of J. Meeus, Astronomical
// Algorithms, 2nd ed. (1998), ch. 49: a mean phase from the lunation number, then the
// published periodic terms of the phase and the 14 planetary terms, with no iteration over
// positions. The Moon Phases table, the Moon's age and the eclipse search start from here.
//
// Lunation number k: 0 is the New Moon of 2000 January 6; whole numbers are New Moons,
// k + 0.25 First Quarter, k + 0.5 Full Moon, k + 0.75 Last Quarter.
#pragma once

namespace kelmoran {

// The phases, in the order of a lunation. The value is the quarter of the lunation number.
enum class MoonPhase { New = 0, FirstQuarter = 1, Full = 2, LastQuarter = 3 };

// Days in the mean synodic month used to find the lunation number.
inline constexpr double kSynodicMonth = 29.530588861;

// Moment of the phase of lunation number `k` (whole number plus the phase's quarter) in
// Terrestrial Time, days from J2000.0 (JDE - 2451545.0). Accuracy: the method's own, a few
// seconds of time (at most about 20 s) against a modern ephemeris from 1900 to 2100.
double Phase_Of_Lunation(double k, MoonPhase phase);

// The last moment of the phase at or before `target`. `target` and the result are MyJD
// (days of UT from J2000.0); `deltaT` is ΔT = TT - UT in Julian centuries, subtracted from
// the series' TT. Never fails: the search only steps back a lunation at a time.
double New_Moon_Before(double target, double deltaT);
double Full_Moon_Before(double target, double deltaT);
// First Quarter when `last` is false, Last Quarter when it is true.
double Quarter_Before(double target, double deltaT, bool last);

// The same for any phase by its number.
double Phase_Before(double target, double deltaT, MoonPhase phase);

}  // namespace kelmoran
