// Time zones and summer time. Every time the program shows is zone time: UT + TZ_Bias
// minutes. The bias is typed by the user, or, with Settings.AutoTimeZone set, follows the
// computer's zone and its summer-time rule: a date moved across a rule date moves the bias.
//
// The computer's zone comes to this module as data (SystemZone); the window layer reads it
// from the system (settings/System_TimeZone.h). The date controls use the functions on
// DateControlState, which holds the part of a date control that these rules act on.
#pragma once

#include <cstdint>
#include <string>

#include "ephemeris/Time_Calcs.h"

namespace kelmoran {

// A summer-time change: the rule, and its date worked out for one year.
struct DstRule {
    int32_t Month = 0;    // month of the change, 1 .. 12; 0: no rule
    int32_t Weekday = 0;  // weekday of the change, 1 = Sunday .. 7 = Saturday
    int32_t Week = 0;     // 1 .. 4: that weekday's number in the month; 5: the last one
    int32_t Hour = 0;     // hour of the change, zone time before it
    int32_t Year = 0;     // year for which Day and Moment were last worked out
    int32_t Day = 0;      // day of the month found by Compute_Rule_Date
    int32_t Bias = 0;     // TZ_Bias, minutes, that holds after this change
    double Moment = 0;    // the moment of the change, zone time, days since the epoch
    int16_t Valid = 0;    // 16-bit boolean: the record comes from the computer
};

// The start and the end of summer time of the computer's zone; both empty (Month 0) for a
// zone without summer time.
extern DstRule SummerStart;
extern DstRule SummerEnd;

// The computer's weekday number less the program's (1 = Sunday), found when the zone is
// read; it turns the computer's weekday count into the program's.
extern int32_t WeekdayShift;

// One change of the computer's zone, in the computer's own weekday count.
struct ZoneChange {
    int32_t Month = 0;    // 1 .. 12; 0: the zone has no such change
    int32_t Weekday = 0;  // the computer's weekday number of the change
    int32_t Week = 0;     // 1 .. 4, or 5 for the last one of the month
    int32_t Hour = 0;     // zone time before the change, whole hours
};

// What the computer tells of its zone. Biases are minutes, local = UT + bias.
struct SystemZone {
    int32_t StandardBias = 0;
    int32_t DaylightBias = 0;       // equals StandardBias in a zone without summer time
    bool DaylightInForce = false;   // summer time holds now
    ZoneChange DaylightDate;        // start of summer time (Month 0: no summer time)
    ZoneChange StandardDate;        // end of summer time
    MySystemTime NowUTC;            // the computer's UTC date and time
    int32_t NowWeekday = 0;         // the computer's weekday number of NowUTC
};

// Takes the computer's zone: TZ_Bias = the bias in force now; WeekdayShift; and, if the
// zone has summer time, SummerStart (Bias = DaylightBias) and SummerEnd (Bias =
// StandardBias), their weekdays moved into the program's count, worked out for the
// current year. A zone without summer time leaves both rules empty.
void Read_System_TimeZone(const SystemZone& zone);

// Works out `rule`'s day and moment in `year` (Gregorian calendar): sets Year, Day, Moment
// and Valid. For a year up to 1915 or from 2100, or a rule with no month, the Moment is
// 1 January of the year at 00:00, so that summer time is never applied to such dates.
void Compute_Rule_Date(int32_t year, DstRule& rule);

// The words of a rule, "Last Sunday in March"; "Manual Entry" if it is not Valid.
std::string Rule_Text(const DstRule& rule);

// The zone label of a bias for a date of `year`: Format_TZ_Text, but "ET" in place of "Z"
// and "GMT" for a year outside -1000 .. 2100, where Universal Time has no meaning.
std::string Zone_Label(int32_t bias, int32_t year);

// ---- date controls ----------------------------------------------------------------------

// The part of a date control that the zone and calendar rules act on. The control owns one
// and calls the functions below on it; they never paint and never raise events themselves:
// their result tells the control what to raise and what to repaint.
struct DateControlState {
    MySystemTime Date;          // the control's date record, zone time
    int16_t JulDates = 0;       // non-zero: the control's calendar is the Julian
    double MyJD = 0;            // the day count of Date under JulDates
    std::string MyLMT_Text = "GMT";  // the zone label: "GMT", "Z+1", "ET", "ET+1" ...
    int32_t Bias = 0;           // minutes, as TZ_Bias, for this control
    bool RoundToMinute = false; // minutes-only mode
    // Summer time applies to this control. The ETD and ETA controls of a voyage set it only
    // while both of the plan's times are empty; every other control leaves it set.
    bool FollowsSummerTime = true;
};

// What Test_Date_for_LMT_Change found, for the control to act on.
struct LmtChange {
    bool ToJulian = false;       // raise CalenderChg(True): the control is now Julian
    bool LabelChanged = false;   // the zone label changed between "ET" and "Z"/"GMT"
    bool BiasChanged = false;    // raise TZChange(Bias) and Paint_Dates(True)
    bool RepaintDue() const { return ToJulian || LabelChanged || BiasChanged; }
};

// Re-decides, after a change of the control's date, its calendar, zone label and summer
// time:
// 1. A Gregorian date before 15 October 1582 (not in November or December 1582) puts the
//    control on the Julian calendar (the fields stay as typed).
// 2. Years -1000 .. 2100 turn an "ET" label back into "Z" (with a sign) or "GMT"; other
//    years turn "Z" and "GMT" into "ET".
// 3. With Settings.AutoTimeZone set and FollowsSummerTime: the rules are worked out for
//    the control's year if need be, and a bias equal to one rule's bias moves to the other
//    when the date lies on the other side of the rule dates (northern order when the start
//    comes before the end in the year, southern otherwise). A bias that equals neither is
//    one set by hand and is left alone; so is every bias in a year where the rules have no
//    meaning (both moments on 1 January).
// On entry MyJD holds the day count of Date under JulDates; it is worked out again
// whenever the calendar or the label changed.
LmtChange Test_Date_for_LMT_Change(DateControlState& control);

// Stores a bias in the control and its label (by Zone_Label for the control's year).
void My_TZ_Bias(DateControlState& control, int32_t minutes);

// Loads the control from a date record: in minutes-only mode seconds of 30 or more step
// the minute up (carrying through hour, day, month and year in the control's calendar)
// and seconds become 0. Sets MyJD.
void Set_LMT(DateControlState& control, const MySystemTime& date);

// ---- the Time tab of Options ----------------------------------------------------------------

namespace time_tab_text {
inline constexpr const char* LocalTime = "Local Time";
inline constexpr const char* LocalTimeOffset = "Local Time Offset";
inline constexpr const char* SummerStarts = "Summer Time Starts:  ";
inline constexpr const char* SummerEnds = "Summer Time Ends:  ";
inline constexpr const char* NoDaylightSaving = "Daylight saving time is not used";
inline constexpr const char* ManualSettings = "Manual Settings in use";
inline constexpr const char* Disable = "Disable";
inline constexpr const char* RestoreDefault = "Restore Default";
inline constexpr const char* ManualEntry = "Manual Entry";
inline constexpr const char* FieldClass = "Tb_Time";
inline constexpr const char* HourField = "Hour";
inline constexpr const char* MinutesField = "Minutes";
inline constexpr const char* FieldMask = "00";
}  // namespace time_tab_text

// The line of one rule: "Summer Time Starts:  29 Mar '26 @ 01:00 (Last Sunday in March)".
std::string Rule_Line(const char* caption, const DstRule& rule);

// The lines about the rule that the tab shows under the offset: with AutoTimeZone set and
// rules present, the start line and the end line; with AutoTimeZone set and no rule,
// "Daylight saving time is not used"; with it clear, "Manual Settings in use" (one line).
struct TimeTabLines {
    std::string First;
    std::string Second;  // empty when there is one line
};
TimeTabLines Time_Tab_Lines();

// Which of the two buttons the tab shows: "Disable" with AutoTimeZone set, "Restore
// Default" with it clear.
const char* Time_Tab_Button();

// The offset shown by the tab: sign, hours and minutes of TZ_Bias.
struct TimeTabOffset {
    bool Negative = false;
    int32_t Hours = 0;
    int32_t Minutes = 0;
};
TimeTabOffset Time_Tab_Offset(int32_t bias);

// "Disable": clears AutoTimeZone.
void Time_Tab_Disable();

// "Restore Default": sets AutoTimeZone and TZ_Bias to the summer bias if `currentJD` is at
// or after SummerStart.Moment and before SummerEnd.Moment, else to the winter one (the
// northern order is assumed, for southern zones too). Without rules the bias stays.
void Time_Tab_Restore_Default(double currentJD);

// A click on the sign: TZ_Bias changes sign and AutoTimeZone is cleared. The tab keeps
// `offset` (so that a sign can be chosen while the bias is 0).
void Time_Tab_Flip_Sign(TimeTabOffset& offset);

// The end of an edit of the "Hour" or "Minutes" field: false (a beep, nothing changed) for
// hours above 12 or minutes above 59 or below 0. Hours of 12 force minutes to 0; minutes
// above 0 with hours at 12 bring the hours down to 11. TZ_Bias is set from the offset and
// AutoTimeZone is cleared.
bool Time_Tab_Edit_Hours(TimeTabOffset& offset, int32_t hours);
bool Time_Tab_Edit_Minutes(TimeTabOffset& offset, int32_t minutes);

}  // namespace kelmoran
