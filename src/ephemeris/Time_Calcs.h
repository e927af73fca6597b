// Time scales and calendars: the program's day number, calendar dates in the Julian and
// Gregorian calendars, weekdays, and the difference between Universal and Terrestrial Time.
//
// The one time number of all calculation is MyJD: days of Universal Time since
// Julian Date 2451545.0, so 0.0 is 2000 January 1 at 12:00 UT. Where the user sees a
// "Julian Day" it is MyJD + 2451545.0.
//
// Calendar algorithms: J. Meeus, Astronomical Algorithms, 2nd ed. (1998), ch. 7, with the
// departures noted on each function, which are the program's own behaviour and are kept.
#pragma once

#include <cstdint>

namespace kelmoran {

// Offset of the program's day number from the Julian Date.
inline constexpr double kJ2000 = 2451545.0;

// A date and time in the layout of the operating system's SYSTEMTIME record. The year may
// be negative: -1 is 1 BC, -2 is 2 BC; there is no year 0 (the historians' numbering).
// Day of week is 1 for Sunday to 7 for Saturday.
struct MySystemTime {
    int16_t wYear = 2000;
    int16_t wMonth = 1;
    int16_t wDayOfWeek = 7;
    int16_t wDay = 1;
    int16_t wHour = 12;
    int16_t wMinute = 0;
    int16_t wSecond = 0;
    int16_t wMilliseconds = 0;

    friend bool operator==(const MySystemTime&, const MySystemTime&) = default;
};

// The program-wide copy of the calendar flag of the shared date control: -1 (true) when
// that control reads and writes the Julian calendar, 0 for the Gregorian. Before the
// control exists it is 0, so dates are Gregorian. JD_To_Date, Get_Month_Length and
// Weekday_Of_Date read it.
extern int16_t Shared_JulDates;

// Date and time to day number. `julian` chooses the calendar in which `date` is read.
// Departure kept on purpose: the Gregorian correction is computed from the absolute value
// of the astronomical year, so it is not the proleptic one for years before AD 1.
// Milliseconds are ignored; the day of week field is not read.
double Calc_JD(const MySystemTime& date, bool julian);

// Day number to date and time, rounded to the nearest whole second (milliseconds 0, day
// of week filled in). The calendar is the one of Shared_JulDates, except that every day
// before Julian Day 1721424 (AD 1 January 1) is given in the Julian calendar.
void JD_To_Date(double jd, MySystemTime& date);
MySystemTime JD_To_Date(double jd);

// True if `year` (historians' numbering, as held) is a leap year in the given calendar.
// The test is on the year as held: -4 (4 BC) is a leap year and -5 (5 BC) is not.
bool Is_Leap_Year(int32_t year, bool julian);

// Days in `month` (1..12) of `year`, in the calendar of Shared_JulDates.
int16_t Get_Month_Length(int32_t month, int32_t year);

// Weekday 1 (Sunday) .. 7 (Saturday) of a date read in the calendar of Shared_JulDates.
int16_t Weekday_Of_Date(const MySystemTime& date);

// Weekday 1 (Sunday) .. 7 (Saturday) of the civil day that holds day number `jd`.
int16_t Weekday_Of_JD(double jd);

// ΔT = TT - UT in seconds for an astronomical whole year counted in Julian years of 365.25
// days from J2000.0 (Int(MyJD / 365.25) + 2000), as a 32-bit float: yearly values from
// 1620 to 2015 (2008 takes the 70 s of the years after 2015, on purpose), 70 s to 2100,
// linear segments back to -600, a quadratic from -1000 to -601, and 0 outside
// -1000 .. 2100 (no extrapolation).
float Get_DeltaT(int32_t year);

// The astronomical whole year used to look up ΔT for a day number.
int32_t DeltaT_Year(double jd);

}  // namespace kelmoran
