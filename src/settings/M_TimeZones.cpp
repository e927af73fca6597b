// Time zones, summer time, the zone labels of the date controls and the Time tab.
#include "settings/M_TimeZones.h"

#include <array>
#include <cstdlib>

#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

DstRule SummerStart;
DstRule SummerEnd;
int32_t WeekdayShift = 0;

namespace {

// The first day of the Gregorian calendar, 15 October 1582 at 00:00, as a day count.
double Gregorian_Reform_Day() {
    MySystemTime d;
    d.wYear = 1582;
    d.wMonth = 10;
    d.wDay = 15;
    d.wHour = 0;
    return Calc_JD(d, false);
}

MySystemTime Date_Of(int32_t year, int32_t month, int32_t day, int32_t hour) {
    MySystemTime d;
    d.wYear = static_cast<int16_t>(year);
    d.wMonth = static_cast<int16_t>(month);
    d.wDay = static_cast<int16_t>(day);
    d.wHour = static_cast<int16_t>(hour);
    d.wMinute = 0;
    d.wSecond = 0;
    return d;
}

int32_t Month_Length(int32_t month, int32_t year, bool julian) {
    switch (month) {
        case 2:
            return Is_Leap_Year(year, julian) ? 29 : 28;
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        default:
            return 31;
    }
}

// A weekday number brought into 1 .. 7.
int32_t Wrap_Weekday(int32_t w) {
    w %= 7;
    if (w < 1) w += 7;
    return w;
}

void Replace_All(std::string& s, const std::string& from, const std::string& to) {
    for (size_t at = s.find(from); at != std::string::npos; at = s.find(from, at + to.size()))
        s.replace(at, from.size(), to);
}

bool Far_Year(int32_t year) {
    return year < -1000 || year > 2100;
}

// Copies one of the computer's changes into a rule, in the program's weekday count: the
// computer's number less WeekdayShift, brought into 1 .. 7.
DstRule Rule_From(const ZoneChange& change, int32_t bias) {
    DstRule r;
    r.Month = change.Month;
    r.Weekday = Wrap_Weekday(change.Weekday - WeekdayShift);
    r.Week = change.Week;
    r.Hour = change.Hour;
    r.Bias = bias;
    return r;
}

bool Has_Rules() {
    return SummerStart.Month > 0 && SummerEnd.Month > 0;
}

int32_t Bias_Of(const TimeTabOffset& o) {
    const int32_t magnitude = o.Hours * 60 + o.Minutes;
    return o.Negative ? -magnitude : magnitude;
}

}  // namespace

void Read_System_TimeZone(const SystemZone& zone) {
    TZ_Bias = zone.DaylightInForce ? zone.DaylightBias : zone.StandardBias;
    const int32_t programWeekday = Weekday_Of_JD(Calc_JD(zone.NowUTC, false));
    WeekdayShift = zone.NowWeekday - programWeekday;

    SummerStart = DstRule{};
    SummerEnd = DstRule{};
    if (zone.DaylightDate.Month <= 0 || zone.StandardDate.Month <= 0) {
        // No summer time. Both rules stay empty but for the bias, which is the standard
        // one, so that "Restore Default" comes back to it.
        SummerStart.Bias = zone.StandardBias;
        SummerEnd.Bias = zone.StandardBias;
        return;
    }
    SummerStart = Rule_From(zone.DaylightDate, zone.DaylightBias);
    SummerEnd = Rule_From(zone.StandardDate, zone.StandardBias);
    Compute_Rule_Date(zone.NowUTC.wYear, SummerStart);
    Compute_Rule_Date(zone.NowUTC.wYear, SummerEnd);
}

void Compute_Rule_Date(int32_t year, DstRule& rule) {
    const bool hasMonth = rule.Month >= 1 && rule.Month <= 12;
    int32_t day = 1;
    if (hasMonth) {
        const int32_t d0 = rule.Week == 5 ? Month_Length(rule.Month, year, false) : 1;
        const int32_t w = Weekday_Of_JD(Calc_JD(Date_Of(year, rule.Month, d0, 0), false));
        if (rule.Week != 5) {
            // The first such weekday of the month, then whole weeks on. The weeks are added
            // after the step back into the month, not before it: otherwise the "2nd Sunday"
            // of a month that begins after a Sunday would come out as the first one.
            day = rule.Weekday - w + 1;
            if (day < 1) day += 7;
            day += (rule.Week - 1) * 7;
        } else {
            day = rule.Weekday + d0 - w;
            if (day > d0) day -= 7;
        }
    }
    if (year <= 1915 || year >= 2100 || !hasMonth)
        rule.Moment = Calc_JD(Date_Of(year, 1, 1, 0), false);
    else
        rule.Moment = Calc_JD(Date_Of(year, rule.Month, day, rule.Hour), false);
    rule.Year = year;
    rule.Day = day;
    // A rule without a month has not come from the computer and stays so.
    if (hasMonth) rule.Valid = kTrue;
}

std::string Rule_Text(const DstRule& rule) {
    if (!rule.Valid) return time_tab_text::ManualEntry;
    static constexpr std::array<const char*, 5> kOrdinals = {"1st ", "2nd ", "3rd ", "4th ",
                                                             "Last "};
    std::string s;
    if (rule.Week >= 1 && rule.Week <= 5) s = kOrdinals[static_cast<size_t>(rule.Week - 1)];
    return s + Weekday_Name(rule.Weekday) + " in " + Month_Name(rule.Month);
}

std::string Zone_Label(int32_t bias, int32_t year) {
    std::string label = Format_TZ_Text(bias);
    if (Far_Year(year)) {
        Replace_All(label, "GMT", "ET");
        Replace_All(label, "Z", "ET");
    }
    return label;
}

LmtChange Test_Date_for_LMT_Change(DateControlState& c) {
    LmtChange r;
    MySystemTime& d = c.Date;

    // 1. The calendar: no Gregorian date before the reform.
    if (d.wYear < 1583 && c.JulDates == 0 && !(d.wYear == 1582 && d.wMonth >= 11)) {
        if (Calc_JD(d, false) < Gregorian_Reform_Day()) {
            c.JulDates = kTrue;
            r.ToJulian = true;
        }
    }

    // 2. The label: far dates have no meaningful Universal Time.
    const std::string before = c.MyLMT_Text;
    if (!Far_Year(d.wYear)) {
        if (c.MyLMT_Text.find("ET") != std::string::npos) {
            const bool signed_ = c.MyLMT_Text.find_first_of("+-") != std::string::npos;
            Replace_All(c.MyLMT_Text, "ET", signed_ ? "Z" : "GMT");
        }
    } else {
        Replace_All(c.MyLMT_Text, "GMT", "ET");
        Replace_All(c.MyLMT_Text, "Z", "ET");
    }
    r.LabelChanged = c.MyLMT_Text != before;
    if (r.ToJulian || r.LabelChanged) c.MyJD = Calc_JD(d, c.JulDates != 0);

    // 3. Summer time.
    if (!Settings.AutoTimeZone || !c.FollowsSummerTime) return r;
    if (d.wYear != SummerStart.Year) {
        Compute_Rule_Date(d.wYear, SummerStart);
        Compute_Rule_Date(d.wYear, SummerEnd);
    }
    const double S = SummerStart.Moment;
    const double E = SummerEnd.Moment;
    const double D = c.MyJD;
    // Both moments on 1 January: the rules mean nothing in this year.
    if (S == E) return r;
    const bool summer = S < E ? (S <= D && D <= E) : !(E <= D && D <= S);
    int32_t bias = c.Bias;
    if (summer && c.Bias == SummerEnd.Bias)
        bias = SummerStart.Bias;
    else if (!summer && c.Bias == SummerStart.Bias)
        bias = SummerEnd.Bias;
    if (bias != c.Bias) {
        c.Bias = bias;
        c.MyLMT_Text = Zone_Label(bias, d.wYear);
        r.BiasChanged = true;
    }
    return r;
}

void My_TZ_Bias(DateControlState& c, int32_t minutes) {
    c.Bias = minutes;
    c.MyLMT_Text = Zone_Label(minutes, c.Date.wYear);
}

void Set_LMT(DateControlState& c, const MySystemTime& date) {
    c.Date = date;
    MySystemTime& d = c.Date;
    if (c.RoundToMinute) {
        if (d.wSecond >= 30) {
            // One minute up, carried as far as it goes.
            if (++d.wMinute >= 60) {
                d.wMinute = 0;
                if (++d.wHour >= 24) {
                    d.wHour = 0;
                    if (++d.wDay > Month_Length(d.wMonth, d.wYear, c.JulDates != 0)) {
                        d.wDay = 1;
                        if (++d.wMonth > 12) {
                            d.wMonth = 1;
                            if (++d.wYear == 0) d.wYear = 1;  // 1 BC is followed by AD 1
                        }
                    }
                }
            }
        }
        d.wSecond = 0;
        d.wMilliseconds = 0;
    }
    c.MyJD = Calc_JD(d, c.JulDates != 0);
    d.wDayOfWeek = Weekday_Of_JD(c.MyJD);
}

std::string Rule_Line(const char* caption, const DstRule& rule) {
    const MySystemTime when = Date_Of(rule.Year, rule.Month, rule.Day, rule.Hour);
    return std::string(caption) + Format_Date_Mask(when, "d mmm 'yy @ HH:nn") + " (" +
           Rule_Text(rule) + ")";
}

TimeTabLines Time_Tab_Lines() {
    if (!Settings.AutoTimeZone) return {time_tab_text::ManualSettings, ""};
    if (!Has_Rules()) return {time_tab_text::NoDaylightSaving, ""};
    return {Rule_Line(time_tab_text::SummerStarts, SummerStart),
            Rule_Line(time_tab_text::SummerEnds, SummerEnd)};
}

const char* Time_Tab_Button() {
    return Settings.AutoTimeZone ? time_tab_text::Disable : time_tab_text::RestoreDefault;
}

TimeTabOffset Time_Tab_Offset(int32_t bias) {
    const int64_t magnitude = std::llabs(static_cast<int64_t>(bias));
    return {bias < 0, static_cast<int32_t>(magnitude / 60), static_cast<int32_t>(magnitude % 60)};
}

void Time_Tab_Disable() {
    Settings.AutoTimeZone = kFalse;
}

void Time_Tab_Restore_Default(double currentJD) {
    Settings.AutoTimeZone = kTrue;
    if (Has_Rules()) {
        const MySystemTime now = JD_To_Date(currentJD);
        if (now.wYear != SummerStart.Year) {
            Compute_Rule_Date(now.wYear, SummerStart);
            Compute_Rule_Date(now.wYear, SummerEnd);
        }
    }
    const bool summer = currentJD >= SummerStart.Moment && currentJD < SummerEnd.Moment;
    TZ_Bias = summer && Has_Rules() ? SummerStart.Bias : SummerEnd.Bias;
}

void Time_Tab_Flip_Sign(TimeTabOffset& offset) {
    offset.Negative = !offset.Negative;
    TZ_Bias = Bias_Of(offset);
    Settings.AutoTimeZone = kFalse;
}

bool Time_Tab_Edit_Hours(TimeTabOffset& offset, int32_t hours) {
    if (hours < 0 || hours > 12) return false;
    offset.Hours = hours;
    if (hours == 12) offset.Minutes = 0;
    TZ_Bias = Bias_Of(offset);
    Settings.AutoTimeZone = kFalse;
    return true;
}

bool Time_Tab_Edit_Minutes(TimeTabOffset& offset, int32_t minutes) {
    if (minutes < 0 || minutes > 59) return false;
    offset.Minutes = minutes;
    if (minutes > 0 && offset.Hours == 12) offset.Hours = 11;
    TZ_Bias = Bias_Of(offset);
    Settings.AutoTimeZone = kFalse;
    return true;
}

}  // namespace kelmoran
