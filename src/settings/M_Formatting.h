// The text forms of angles, times, zones and numbers that every screen, cell and printed
// page shows. Every text is a std::string holding UTF-8 (the degree sign is U+00B0); the
// files of the program store single-byte ANSI text (Windows-1252), converted at the file
// boundary only by Ansi_To_Utf8 / Utf8_To_Ansi.
//
// Rounding everywhere in this module is to the even neighbour at exact halves, done on the
// value before it is written. The columns of the screens line up by these strings, blanks
// included: the blank unit of the padded forms is "  ", which in the screens' proportional
// font is as wide as one digit.
//
// All functions are total: a non-finite value gives a text (never a throw), and a value
// far outside its range is brought into it as each function says.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "ephemeris/Time_Calcs.h"

namespace kelmoran {

// Sets Shared_JulDates for the life of the object and puts it back after.
class CalendarScope {
  public:
    explicit CalendarScope(bool julian) : saved_(Shared_JulDates) {
        Shared_JulDates = julian ? int16_t{-1} : int16_t{0};
    }
    ~CalendarScope() { Shared_JulDates = saved_; }
    CalendarScope(const CalendarScope&) = delete;
    CalendarScope& operator=(const CalendarScope&) = delete;

  private:
    int16_t saved_;
};


// ---------------------------------------------------------------------------------------
// Rounding and the number mask
// ---------------------------------------------------------------------------------------

// x rounded to `places` decimals (0 .. 15), halves to the even neighbour: x is scaled by
// 10^places in double precision and the scaled value is rounded, so a half is a half of
// the scaled double (0.125 to two places gives 0.12, 0.375 gives 0.38, 2.5 to none gives
// 2). A value too large to have decimals, or non-finite, is returned as it is.
double Round_Even(double x, int places = 0);

// The one number-mask formatter of the program. Mask characters:
//   "0"  a digit that is always written (leading or trailing zero if need be);
//   "#"  a digit written only if significant (no leading zeros; after the decimal point,
//        trailing zeros are left out);
//   "."  the decimal point (the first one; a later "." is literal);
//   ","  between integer digit places: group the integer part by thousands with ",";
//   "%"  the value is multiplied by 100 (the "%" is written);
//   any other character (or one quoted by "\") stands as itself, where it stands.
// Digits of the integer part that the mask has no room for are written at its first digit
// place ("0" of 1234 gives "1234"). The value is rounded, halves to even, to the count of
// decimal places of the mask. A negative value gets "-" in front of the whole text, unless
// it rounds to zero. Non-finite values are taken as 0.
// Examples: "##0'.0" of 12.34 is "12'.3"; "000°.0 T" of 45 is "045°.0 T";
// "##,##0'.0" of 1234.56 is "1,234'.6"; "#0.0#" of 5.2 is "5.2" and of 5.256 "5.26";
// "#0.##" of 5 is "5." (the point is always written).
std::string Format_Number(double value, std::string_view mask);

// A date and time by a date mask (day count in zone time, the calendar of the caller):
//   "d" day of the month, "dd" two digits; "ddd" "Sun", "dddd" "Sunday";
//   "m"/"mm" month, or minute when it follows an hour token or precedes a seconds token;
//   "mmm" "Jan", "mmmm" "January"; "n"/"nn" minute; "yy" last two digits of the year
//   (by "0000"), "yyyy" or "y" the whole year; "h"/"hh"/"H"/"HH" hour (24-hour clock);
//   "s"/"ss" second; "\" quotes the next character; any other character stands as itself.
// The record's fields are used as they are (no rounding: that is for the caller).
// Examples: "dd/ HH:mm" of 5 March 08:30 is "05/ 08:30"; "HH:mm:ss" of 23:59:59 is
// "23:59:59".
std::string Format_Date_Mask(const MySystemTime& date, std::string_view mask);

// The time of day held by a fraction of a civil day (0 is midnight) by a date mask of hours,
// minutes and seconds: the fraction is taken modulo 1 and rounded to the whole second,
// halves to even; 24:00:00 becomes 00:00:00.
std::string Format_Day_Fraction(double fraction, std::string_view mask);

// Masks used across the screens, written once here.
namespace mask {
inline constexpr const char* Course = "000°.0";           // course, start of angle edits
inline constexpr const char* CourseMagnetic = "000°.0 M"; // magnetic course
inline constexpr const char* TrueSuffix = " T";           // suffix of a true course
inline constexpr const char* Distance = "##,##0'.0";      // nautical miles on Voyage rows
inline constexpr const char* DistanceShort = "##0'.0";    // miles, short form
inline constexpr const char* Speed = "#0.00";             // speed
inline constexpr const char* SpeedOne = "#0.0";           // speed, one decimal
inline constexpr const char* SpeedFlexible = "#0.0#";     // speed, one or two decimals
inline constexpr const char* IndexError = "#0.0";         // index error
inline constexpr const char* HeightOfEye = "##0.0";       // height of eye
inline constexpr const char* Temperature = "##0.0";       // temperature
inline constexpr const char* Pressure = "###0.0";         // pressure
inline constexpr const char* TimeHM = "HH:mm";            // way-point and event times
inline constexpr const char* TimeHMS = "HH:mm:ss";        // event times with seconds
inline constexpr const char* DayTimeHM = "dd/ HH:mm";     // way-point time, another day
inline constexpr const char* TwoDigits = "00";            // hours, minutes, seconds
inline constexpr const char* Year4 = "0000";              // year for its last two digits
}  // namespace mask

// Speed suffixes: " Kts" after two decimals, "   Kts" when one decimal is enough.
inline constexpr const char* kKtsSuffix = " Kts";
inline constexpr const char* kKtsSuffixShort = "   Kts";

// Duration suffixes: days, hours, minutes. A value under 10 is padded in front by "  ".
inline constexpr const char* kDaysSuffix = "d ";
inline constexpr const char* kHoursSuffix = "h ";
inline constexpr const char* kMinutesSuffix = "m";

// The blank unit of padded forms: two blanks, as wide as one digit on the screen.
inline constexpr const char* kPadUnit = "  ";

// ---------------------------------------------------------------------------------------
// Angles
// ---------------------------------------------------------------------------------------

// Minutes of arc by `places`: 0 "00'", 1 "00'.0", 2 "00'.00", 3 "00'.000"; any other
// count gives "" (callers keep to 0 .. 3).
std::string Format_Minutes(double minutes, int places);

// An angle in radians as 0 .. 359 whole degrees, "° ", then Format_Minutes: "45° 30'.0".
// The angle is first brought into 0 .. 360 degrees; minutes that round to 60 carry into
// the degrees, and 360 becomes 0. `pad`: "  " in front under 100 degrees and another
// "  " under 10. Used for GHA, SHA, azimuth and bearings.
std::string Format_Angle(double radians, int places, bool pad);

// An angle in radians as whole degrees, "° ", minutes by "00'", one blank, seconds by
// Format_Minutes with the apostrophe made a double quote: "45° 30' 15.0\"". A negative
// angle has 360 added once. Seconds and minutes carry. Padded as Format_Angle.
std::string Format_Angle_DMS(double radians, int places, bool pad);

// A right ascension in radians (negative: 24 h added once) as "#0h ", "00m ", then the
// seconds by `places`: 0 "00s", 1 "00.0s", 2 "00.00s", 3 "00.000s", any other "00.0000s".
// Seconds carry through minutes and hours; 24 h becomes 0 h. `pad`: "  " in front under
// 10 hours.
std::string Format_RA(double radians, int places, bool pad);

// A right ascension in radians as "#0h " and the minutes rounded to whole ones by "00m ".
std::string Format_RA_HM(double radians, bool pad);

// A latitude or declination in radians: whole degrees, "° ", Format_Minutes, " N" or " S".
// A value beyond a pole is folded by ±180°. Minutes that round to 60 carry. 0 prints north
// (the test is on the unrounded value: -0.0001' prints "0° 00'.0 S"). `pad`: "  " in
// front under 10 degrees.
std::string Format_Lat(double radians, int places, bool pad);

// The minutes part of a latitude in radians by Format_Minutes; a rounded 60 becomes 0
// (without carry, since the degrees are not part of this text).
std::string Format_Lat_Minutes(double radians, int places);

// A latitude in radians with seconds: as Format_Angle_DMS on |x| (no folding), then " N"
// only for a value above 0 and " S" otherwise (the equator prints " S" here).
std::string Format_Lat_DMS(double radians, int places, bool pad);

// A longitude in radians: whole degrees, "° ", Format_Minutes, then "  E" (two blanks) or
// " W" for a negative value. Padded as Format_Angle.
std::string Format_Long(double radians, int places, bool pad);

// A true course in degrees by "000°.0" (no suffix: callers add " T" where it is shown). A
// course that rounds to 360.0 prints as "000°.0".
std::string Format_Course(double degrees);

// A magnetic course in degrees by "000°.0 M", brought into 0 .. 360 by a single ±360 after
// rounding to one decimal.
std::string Format_Magnetic_Course(double degrees);

// ---------------------------------------------------------------------------------------
// Times and zones
// ---------------------------------------------------------------------------------------

// The label of a zone bias in minutes: "GMT" for 0, else "Z+" or "Z-" and the hours: whole
// hours plainly ("Z+1"), fractions at most to 2 decimals ("Z-5.5", "Z+0.33").
std::string Format_TZ_Text(int32_t bias);

// Hours (the sign is dropped) as "00:00", minutes rounded to whole ones with carry.
std::string Format_HM(double hours);

// The time of day of a day count (days from noon) as "HH:mm:ss", or, without `seconds`,
// rounded to the whole minute and "HH:mm" (23:59:40 gives "00:00").
std::string Format_Time_Of_Day(double jd, bool seconds);

// The day of the month and the short month name of a day count, "5 Mar". The calendar is
// Julian if `julian` is set or the day lies before AD 1 January 1, else Gregorian.
std::string Format_Day_Month(double jd, bool julian);

// Names: month 1 .. 12 ("January", "Jan"), weekday 1 (Sunday) .. 7 ("Sunday", "Sun").
// Out of range gives "".
std::string Month_Name(int month);
std::string Month_Short_Name(int month);
std::string Weekday_Name(int weekday);
std::string Weekday_Short_Name(int weekday);

// ---------------------------------------------------------------------------------------
// Greek letters of star designations
// ---------------------------------------------------------------------------------------

// The catalogue's Latin letter of a Greek letter as a short name ("a": "Alp") or the full
// name ("a": "Alpha"). An unknown letter gives "".
std::string Greek_Short(char letter);
std::string Greek_Full(char letter);

// ---------------------------------------------------------------------------------------
// Text of the files
// ---------------------------------------------------------------------------------------

// Single-byte Windows-1252 text of a file to UTF-8. Undefined bytes 0x81, 0x8D, 0x8F, 0x90,
// 0x9D are taken as the Latin-1 control characters of the same number.
std::string Ansi_To_Utf8(std::string_view ansi);

// UTF-8 to Windows-1252 for a file. A character that Windows-1252 cannot hold, or a broken
// UTF-8 sequence, becomes "?".
std::string Utf8_To_Ansi(std::string_view utf8);

}  // namespace kelmoran
