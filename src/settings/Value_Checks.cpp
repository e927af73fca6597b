// The ranges of the numbers read from the program's files.
#include "settings/Value_Checks.h"

#include <algorithm>

#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "stars/Catalogue_Limits.h"

namespace kelmoran {

namespace {

MySystemTime Date_Of(int16_t year, int16_t month, int16_t day, int16_t hour, int16_t minute,
                     int16_t second) {
    MySystemTime t;
    t.wYear = year;
    t.wMonth = month;
    t.wDay = day;
    t.wHour = hour;
    t.wMinute = minute;
    t.wSecond = second;
    return t;
}

// Replaces `field` by `fallback` unless `ok`; counts the replacement.
template <typename T>
void Keep_If(bool ok, T& field, T fallback, int& replaced) {
    if (ok) return;
    field = fallback;
    ++replaced;
}

}  // namespace

// Either calendar of the date controls, the earlier start and the later end, with a day
// to spare for the zones.
double First_Moment() {
    const MySystemTime first = Date_Of(-9999, 1, 1, 0, 0, 0);
    static const double jd = std::min(Calc_JD(first, true), Calc_JD(first, false)) - 1.0;
    return jd;
}

double Last_Moment() {
    const MySystemTime last = Date_Of(9999, 12, 31, 23, 59, 59);
    static const double jd = std::max(Calc_JD(last, true), Calc_JD(last, false)) + 1.0;
    return jd;
}

bool Is_Moment(double jd) { return Within(jd, First_Moment(), Last_Moment()); }
bool Is_Latitude(double lat) { return Within(lat, -kHalfPi - 1e-6, kHalfPi + 1e-6); }
bool Is_Longitude(double lon) { return Within(lon, -kTwoPi - 1e-6, kTwoPi + 1e-6); }
bool Is_Ship_Speed(double knots) {
    return knots == 0 || Within(knots, kMinLegSpeed, kMaxShipSpeed);
}
bool Is_Zone_Bias(int32_t minutes) { return minutes >= -kMaxZoneBias && minutes <= kMaxZoneBias; }

int Check_Settings(SettingsRecord& s, int32_t& bias) {
    const SettingsRecord d = First_Run_Settings();
    int n = 0;
    Keep_If(Is_Latitude(s.ObserverLat), s.ObserverLat, d.ObserverLat, n);
    Keep_If(Is_Longitude(s.ObserverLong), s.ObserverLong, d.ObserverLong, n);
    Keep_If(Within(s.FixCourse, 0, 360), s.FixCourse, d.FixCourse, n);
    Keep_If(Is_Ship_Speed(s.FixSpeed), s.FixSpeed, d.FixSpeed, n);
    Keep_If(Is_Moment(s.FixTime), s.FixTime, d.FixTime, n);
    // The entries of the Options screen: "###0.0" mb, -50 to 50 °C, "#0.0" minutes of
    // index error, "##0.0" metres (or feet) of height of eye.
    Keep_If(Within(s.Pressure, 0, 9999.9), s.Pressure, d.Pressure, n);
    Keep_If(Within(s.Temp, -50, 50), s.Temp, d.Temp, n);
    Keep_If(Within(s.IndexError, -99.9, 99.9), s.IndexError, d.IndexError, n);
    Keep_If(Within(s.HtOfEye, 0, 999.9), s.HtOfEye, d.HtOfEye, n);
    Keep_If(Within(s.PositionMethod, 0, 2), s.PositionMethod, d.PositionMethod, n);
    // The filter lists: 0'.5 to 600' (0'.5 comes back as 0), 5° to 90°, and star counts
    // within the catalogue (0, as a short file leaves it, tests no star).
    Keep_If(Within(s.SightAltLimit, 0, 600), s.SightAltLimit, d.SightAltLimit, n);
    Keep_If(Within(s.SightAzLimit, 0, 180), s.SightAzLimit, d.SightAzLimit, n);
    Keep_If(Within(s.HelpLevel, 0, 3), s.HelpLevel, d.HelpLevel, n);
    Keep_If(Within(s.SightStarCount, 0, kTier4End), s.SightStarCount, d.SightStarCount, n);
    Keep_If(Is_Zone_Bias(bias), bias, int32_t{0}, n);
    return n;
}

}  // namespace kelmoran
