// The date-and-time strip's model: layout, field choice, the calendar record and its steps.
#include "shell/cDates.h"

#include <cmath>
#include <cstdio>

#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

DateMetrics Date_Metrics;

namespace {

constexpr int32_t kGap = 4;        // between the labels of a group
constexpr int32_t kGroupGap = 16;  // between the date and the time groups
constexpr int32_t kFramePad = 6;   // inside the 3-D frame
constexpr int16_t kYearLimit = 9999;

// Floor division and its remainder, for carries of any sign.
int32_t Floor_Div(int32_t a, int32_t b) {
    return a >= 0 ? a / b : -((-a + b - 1) / b);
}

}  // namespace

cDates::cDates() {
    painted_.wYear = 0;
}

cDates::~cDates() {
    if (Edit.Editing && Edit.Control == this) {
        Edit.Buffer.clear();
        End_Edit(true);
    }
}

// ---------------------------------------------------------------- configuration

void cDates::Configure(DatesForm form, cDatesOwner* owner, int32_t width, int32_t x, int32_t y) {
    MyOwner = owner;
    Form = form;
    MyWidth = width;
    Position_DateGrid(x, y);
}

void cDates::Configure_Standard_Dates(bool minutesOnly, cDatesOwner* owner, int32_t width) {
    MyDayReqd = kTrue;
    RoundToMinute = minutesOnly ? kTrue : kFalse;
    ClipSeconds = RoundToMinute;
    Configure(DatesForm::Standard, owner, width, 152, 5);
}

void cDates::Configure_Lunation_Dates(cDatesOwner* owner, int32_t width) {
    Caption = "Moon Phases for ";
    ClipTime = kTrue;
    Configure(DatesForm::Lunation, owner, width, 152, 5);
}

void cDates::Configure_NavPlan_Dates(int32_t index, cDatesOwner* owner) {
    MyIndex = index;
    RoundToMinute = ClipSeconds = ShortNames = kTrue;
    Configure(DatesForm::NavPlan, owner, 0, 0, 0);
}

void cDates::Configure_Sight_Dates(cDatesOwner* owner, int32_t width) {
    ShortNames = MyDayReqd = kTrue;
    Configure(DatesForm::Sight, owner, width, 125, 2);
}

void cDates::Configure_for_DTG(int32_t index, cDatesOwner* owner) {
    MyIndex = index;
    MyDTGstatus = RoundToMinute = ClipSeconds = kTrue;
    Configure(DatesForm::DTG, owner, 0, 0, 0);
}

void cDates::Configure_Almanac_Dates(cDatesOwner* owner, int32_t width) {
    MyDayReqd = kTrue;
    Configure(DatesForm::Almanac, owner, width, 152, 5);
}

void cDates::Configure_StarPlot_Dates(cDatesOwner* owner, int32_t width) {
    ShortNames = kTrue;
    Configure(DatesForm::StarPlot, owner, width, 25, 2);
}

void cDates::Clip_Seconds(bool on) {
    ClipSeconds = on ? kTrue : kFalse;
    Set_HotSpots();
}

void cDates::Clip_Time(bool on) {
    ClipTime = on ? kTrue : kFalse;
    Set_HotSpots();
}

void cDates::Set_HotSpots() {
    Position_DateGrid(MyFrame.Left, MyFrame.Top);
}

void cDates::Position_DateGrid(int32_t x, int32_t y) {
    const DateMetrics& m = Date_Metrics;
    const int32_t h = m.RowHeight;
    MyDayLabel = MyMonthLabel = MyYearLabel = MyHourLabel = MyMinuteLabel = MySecondLabel = {};
    MyLMTlabel = MyBClabel = MyWeekdayLabel = MyJulianLabel = MyDateGrid = MyTimeGrid = {};

    int32_t left = x + kFramePad;
    const int32_t top = y + kFramePad;
    if (Form == DatesForm::DTG) {
        // "12/ 08:30 Z+1": day, hour, minute and the zone, in the 13-pixel font's room.
        MyDayLabel = {left, top, left + m.TwoZeros, top + h};
        left = MyDayLabel.Right + m.Colon + kGap;
        MyHourLabel = {left, top, left + m.TwoZeros, top + h};
        MyMinuteLabel = {MyHourLabel.Right + m.Colon, top, MyHourLabel.Right + m.Colon + m.TwoZeros,
                         top + h};
        MyLMTlabel = {MyMinuteLabel.Right + kGap, top, MyMinuteLabel.Right + kGap + m.Zone,
                      top + h};
        MyDateGrid = MyDayLabel;
        MyTimeGrid = MyHourLabel.United(MyLMTlabel);
        MyFrame = {x, y, MyLMTlabel.Right + kFramePad, top + h + kFramePad};
        return;
    }
    if (ClassType == "EtdDates")
        left += m.DepartureWidth;
    else if (!Caption.empty())
        left += m.LabelWidth;
    if (Form == DatesForm::Lunation) {
        MyYearLabel = {left, top, left + 2 * m.TwoZeros, top + h};
        MyBClabel = {MyYearLabel.Right + kGap, top, MyYearLabel.Right + kGap + m.BC, top + h};
        MyDateGrid = MyYearLabel.United(MyBClabel);
        MyFrame = {x, y, MyBClabel.Right + kFramePad, top + h + kFramePad};
        return;
    }
    if (MyDayReqd) {
        MyWeekdayLabel = {left, top, left + (ShortNames ? m.Thur : m.Wednesday), top + h};
        left = MyWeekdayLabel.Right + kGap;
    }
    MyDayLabel = {left, top, left + m.TwoZeros, top + h};
    left = MyDayLabel.Right + kGap;
    MyMonthLabel = {left, top, left + (ShortNames ? m.June : m.September), top + h};
    left = MyMonthLabel.Right + kGap;
    MyYearLabel = {left, top, left + 2 * m.TwoZeros, top + h};
    MyBClabel = {MyYearLabel.Right + kGap, top, MyYearLabel.Right + kGap + m.BC, top + h};
    // The date group holds the weekday too: a click on it is nearest to the day.
    MyDateGrid = MyWeekdayLabel.United(MyDayLabel).United(MyBClabel);
    // "Julian" stands under the year.
    MyJulianLabel = {MyDayLabel.Left, top + h, MyBClabel.Right, top + h + m.SmallHeight};

    int32_t timeLeft = MyBClabel.Right + kGroupGap;
    int32_t timeTop = top;
    if (!ClipTime) {
        const int32_t seconds = ClipSeconds ? 0 : m.Colon + m.TwoZeros;
        const int32_t timeWidth = 2 * m.TwoZeros + m.Colon + seconds + kGap + m.Zone;
        // No room beside the date: the time goes under it.
        if (MyWidth > 0 && timeLeft + timeWidth + kFramePad > MyWidth) {
            // Clear of the calendar line, with room for the outline round the time.
            timeLeft = MyDayLabel.Left;
            timeTop = MyJulianLabel.Bottom + kGap;
        }
        MyHourLabel = {timeLeft, timeTop, timeLeft + m.TwoZeros, timeTop + h};
        MyMinuteLabel = {MyHourLabel.Right + m.Colon, timeTop,
                         MyHourLabel.Right + m.Colon + m.TwoZeros, timeTop + h};
        Rect last = MyMinuteLabel;
        if (!ClipSeconds) {
            MySecondLabel = {MyMinuteLabel.Right + m.Colon, timeTop,
                             MyMinuteLabel.Right + m.Colon + m.TwoZeros, timeTop + h};
            last = MySecondLabel;
        }
        MyLMTlabel = {last.Right + kGap, timeTop, last.Right + kGap + m.Zone, timeTop + h};
        MyTimeGrid = MyHourLabel.United(MyLMTlabel);
    }
    const Rect all = MyDateGrid.United(MyJulianLabel).United(MyTimeGrid).United(MyWeekdayLabel);
    MyFrame = {x, y, all.Right + kFramePad, all.Bottom + kFramePad};
}

std::vector<std::string> cDates::Fields_Shown() const {
    std::vector<std::string> fields;
    for (const char* f : kDateFields)
        if (!Field_Rect(f).Empty()) fields.push_back(f);
    return fields;
}

Rect cDates::Field_Rect(const std::string& field) const {
    if (field == "Day") return MyDayLabel;
    if (field == "Month") return MyMonthLabel;
    if (field == "Year") return MyYearLabel;
    if (field == "Hour") return MyHourLabel;
    if (field == "Minute") return MyMinuteLabel;
    if (field == "Second") return MySecondLabel;
    return {};
}

// ---------------------------------------------------------------- mouse and editing

std::string cDates::Field_At(int32_t x, int32_t y) const {
    y -= MyRectOffset;
    for (const char* f : kDateFields)
        if (Field_Rect(f).Contains(x, y)) return f;
    // Between the labels: the nearer one by the midpoints of the gaps.
    auto mid = [](const Rect& a, const Rect& b) { return (a.Right + b.Left) / 2; };
    if (MyDateGrid.Contains(x, y) && !MyDayLabel.Empty()) {
        if (x < mid(MyDayLabel, MyMonthLabel)) return "Day";
        if (x < mid(MyMonthLabel, MyYearLabel)) return "Month";
        return "Year";
    }
    if (MyDateGrid.Contains(x, y) && !MyYearLabel.Empty()) return "Year";
    if (MyTimeGrid.Contains(x, y) && !MyHourLabel.Empty()) {
        if (x < mid(MyHourLabel, MyMinuteLabel)) return "Hour";
        if (MySecondLabel.Empty()) return "Minute";
        if (x < mid(MyMinuteLabel, MySecondLabel)) return "Minute";
        return "Second";
    }
    return "";
}

std::string cDates::MouseDown(int32_t x, int32_t y, int32_t button, int32_t /*shift*/) {
    if (Shell.Editing || Edit.Editing) End_Edit();
    if (MyDateIsDisabled) return "";
    if (button == 2) {
        const Rect frame = MyFrame.Offset(0, MyRectOffset);
        if (frame.Contains(x, y))
            Menus_Create_Dates(x, y, MyLMTlabel.Offset(0, MyRectOffset).Contains(x, y));
        return "";
    }
    const std::string field = Field_At(x, y);
    if (!field.empty()) Begin_Editing(field);
    return field;
}

bool cDates::MouseScroll(int32_t x, int32_t y, int32_t steps) {
    if (MyDateIsDisabled || steps == 0) return false;
    if (!MyFrame.Offset(0, MyRectOffset).Contains(x, y)) return false;
    std::string field = Field_At(x, y);
    if (field.empty()) field = Edit.Editing && Edit.Control == this ? Edit.Field : "Day";
    if (Edit.Editing) End_Edit();
    InvalidAreaCheck(false);
    Increment_Field(field, steps);
    CalcDates();
    return true;
}

std::string cDates::Field_Text(const std::string& field) const {
    char buf[16];
    if (field == "Day") return std::to_string(MySystemTime.wDay);
    if (field == "Month")
        return ShortNames ? Month_Short_Name(MySystemTime.wMonth) : Month_Name(MySystemTime.wMonth);
    if (field == "Year") return std::to_string(std::abs(MySystemTime.wYear));
    int32_t v = 0;
    if (field == "Hour")
        v = MySystemTime.wHour;
    else if (field == "Minute")
        v = MySystemTime.wMinute;
    else if (field == "Second")
        v = MySystemTime.wSecond;
    std::snprintf(buf, sizeof buf, "%02d", v);
    return buf;
}

std::string cDates::Weekday_Text() const {
    // 1 = Sunday; the narrow forms keep four letters for Thursday, three for the others.
    static const char* const kNarrow[] = {"Sun", "Mon", "Tue", "Wed", "Thur", "Fri", "Sat"};
    if (!MyDayReqd) return "";
    const int16_t weekday = Weekday_Of_JD(Calc_JD(MySystemTime, JulDates != 0));
    if (ShortNames) return kNarrow[(weekday + 6) % 7];
    return Weekday_Name(weekday);
}

std::string cDates::Era_Text() const {
    if (MySystemTime.wYear < 0) return "BC";
    if (MySystemTime.wYear < 1000) return "AD";
    return "";
}

std::string cDates::Julian_Text() const {
    return JulDates || Before_Reform() ? "Julian       " : "";
}

std::string cDates::Caption_Text() const {
    return ClassType == "EtdDates" ? "Time of departure" : Caption;
}

const Rect& cDates::First_Label() const {
    if (!MyWeekdayLabel.Empty()) return MyWeekdayLabel;
    return MyDayLabel.Empty() ? MyYearLabel : MyDayLabel;
}

std::string cDates::DTG_Text() const {
    char buf[48];
    std::snprintf(buf, sizeof buf, "%02d/ %02d:%02d %s", MySystemTime.wDay, MySystemTime.wHour,
                  MySystemTime.wMinute, MyLMT_Text.c_str());
    return buf;
}

void cDates::Begin_Editing(const std::string& field) {
    Rect cell = Field_Rect(field).Offset(0, MyRectOffset);
    if (cell.Empty() || !MyOwner) return;
    const std::string owner = MyOwner->Owner_Type();
    if (owner == "Sights" || owner == "Almanac" || ClassType == "EtaDates" ||
        ClassType == "EtdDates")
        cell = cell.Offset(-MyOwner->Scroll_X(), -MyOwner->Scroll_Y());
    EditRequest r;
    r.Form = MyOwner->Edit_Form();
    r.Control = this;
    r.Class = "Dates";
    r.Field = field;
    r.Cell = cell;
    r.Font = Form == DatesForm::DTG ? FontKind::Bold : FontKind::Large;
    r.Alignment = 1;
    r.Value = DateGet(field);
    r.Text = Field_Text(field);
    r.Row = MyIndex;
    Begin_Edit(r);
}

std::array<std::string, 3> cDates::Menu_Captions() const {
    return {JulDates ? "Use Gregorian Calender" : "Use Julian Calender",
            MySystemTime.wYear < 0 ? "AD" : "BC", "Time Zone"};
}

void cDates::Menu_Choice(const std::string& caption) {
    if (caption == "AD" || caption == "BC") {
        ChangeAD_BC();
    } else if (caption == "Use Julian Calender" || caption == "Use Gregorian Calender") {
        // Before 15 October 1582 the calendar stays Julian.
        const bool julian = caption == "Use Julian Calender" || Before_Reform();
        if (julian == (JulDates != 0)) return;
        Set_Calendar(julian);
        if (MyOwner) MyOwner->MyDates_CalenderChg(*this, julian);
        // The fields stay as they are and are read in the new calendar.
        CalcDates();
    } else if (caption == "Time Zone") {
        if (MyOwner) MyOwner->Open_Time_Options();
    }
}

// ---------------------------------------------------------------- calendar

bool cDates::Before_Reform() const {
    // The first day of the Gregorian calendar, 15 October 1582 at 00:00.
    DateRecord reform;
    reform.wYear = 1582;
    reform.wMonth = 10;
    reform.wDay = 15;
    reform.wHour = reform.wMinute = reform.wSecond = reform.wMilliseconds = 0;
    static const double kReformDay = Calc_JD(reform, false);
    return Calc_JD(MySystemTime, false) < kReformDay;
}

void cDates::Set_Calendar(bool julian) {
    JulDates = julian ? kTrue : kFalse;
    if (IsShared) Shared_JulDates = JulDates;
}

int16_t cDates::Get_Month_Length(int32_t month, int32_t year) const {
    switch (month) {
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        case 2:
            return Is_Leap_Year(year, JulDates != 0) ? 29 : 28;
        default:
            return 31;
    }
}

void cDates::Trim_Day() {
    const int16_t length = Get_Month_Length(MySystemTime.wMonth, MySystemTime.wYear);
    if (MySystemTime.wDay > length) MySystemTime.wDay = length;
    if (MySystemTime.wDay < 1) MySystemTime.wDay = 1;
}

void cDates::Validate() {
    auto& t = MySystemTime;
    if (t.wYear == 0) t.wYear = -1;
    if (t.wYear > kYearLimit) t.wYear = kYearLimit;
    if (t.wYear < -kYearLimit) t.wYear = -kYearLimit;
    if (t.wMonth < 1) t.wMonth = 1;
    if (t.wMonth > 12) t.wMonth = 12;
    Trim_Day();
    if (t.wHour < 0 || t.wHour > 23) t.wHour = 0;
    if (t.wMinute < 0 || t.wMinute > 59) t.wMinute = 0;
    if (t.wSecond < 0 || t.wSecond > 59) t.wSecond = 0;
    t.wMilliseconds = 0;
}

void cDates::Announce() {
    My_JD();
    if (MyDTGstatus) {
        if (MyOwner) MyOwner->DTG_Change(MyJD, MyIndex);
        Paint_DTG();
        return;
    }
    if (MyOwner) MyOwner->MyDates_DateChange(*this, MyJD);
    Paint_Dates(false);
}

void cDates::CalcDates() {
    Validate();
    Test_Date_for_LMT_Change();
    Announce();
}

void cDates::ChangeAD_BC() {
    MySystemTime.wYear = static_cast<int16_t>(-MySystemTime.wYear);
    if (MySystemTime.wYear > 1900 && JulDates) {
        Set_Calendar(false);
        if (MyOwner) MyOwner->MyDates_CalenderChg(*this, false);
    }
    CalcDates();
}

void cDates::Step_Second(int32_t by) {
    int32_t s = MySystemTime.wSecond + by;
    const int32_t carry = Floor_Div(s, 60);
    MySystemTime.wSecond = static_cast<int16_t>(s - carry * 60);
    if (carry) Step_Minute(carry);
}

void cDates::Step_Minute(int32_t by) {
    int32_t m = MySystemTime.wMinute + by;
    const int32_t carry = Floor_Div(m, 60);
    MySystemTime.wMinute = static_cast<int16_t>(m - carry * 60);
    if (carry) Step_Hour(carry);
}

void cDates::Step_Hour(int32_t by) {
    auto& t = MySystemTime;
    int32_t h = t.wHour + by;
    const int32_t carry = Floor_Div(h, 24);
    t.wHour = static_cast<int16_t>(h - carry * 24);
    if (!carry) return;
    // A step that stops at an end of the year range leaves the time at the last second of
    // 31 December 9999, or the first of 1 January 9999 BC.
    if (!Step_Day(carry)) {
        const bool last = carry > 0;
        t.wHour = static_cast<int16_t>(last ? 23 : 0);
        t.wMinute = static_cast<int16_t>(last ? 59 : 0);
        t.wSecond = static_cast<int16_t>(last ? 59 : 0);
    }
}

bool cDates::Step_Day(int32_t by) {
    auto& t = MySystemTime;
    int32_t day = t.wDay + by;
    bool inRange = true;
    // Whole months at a time; a step stops at the ends of the year range.
    for (int guard = 0; guard < 200000; ++guard) {
        const int32_t length = Get_Month_Length(t.wMonth, t.wYear);
        if (day > length) {
            const int16_t before = t.wYear;
            const int16_t month = t.wMonth;
            Step_Month(1);
            if (t.wMonth == month && t.wYear == before) {  // at 9999 December
                day = length;
                inRange = false;
                break;
            }
            day -= length;
        } else if (day < 1) {
            const int16_t month = t.wMonth;
            const int16_t before = t.wYear;
            Step_Month(-1);
            if (t.wMonth == month && t.wYear == before) {
                day = 1;
                inRange = false;
                break;
            }
            day += Get_Month_Length(t.wMonth, t.wYear);
        } else {
            break;
        }
    }
    t.wDay = static_cast<int16_t>(day);
    return inRange;
}

void cDates::Step_Month(int32_t by) {
    int32_t m = MySystemTime.wMonth - 1 + by;
    const int32_t carry = Floor_Div(m, 12);
    const int16_t year = MySystemTime.wYear;
    if (carry) {
        Step_Year(carry);
        if (MySystemTime.wYear == year) return;  // the end of the range: no change
    }
    MySystemTime.wMonth = static_cast<int16_t>(m - carry * 12 + 1);
}

void cDates::Step_Year(int32_t by) {
    const int32_t y = MySystemTime.wYear;
    // Count on the astronomers' numbering, where year 0 is 1 BC, so that 0 is skipped.
    int32_t astro = y < 0 ? y + 1 : y;
    astro += by;
    int32_t next = astro <= 0 ? astro - 1 : astro;
    if (next > kYearLimit) next = kYearLimit;
    if (next < -kYearLimit) next = -kYearLimit;
    MySystemTime.wYear = static_cast<int16_t>(next);
}

void cDates::IncrementSecond(int32_t by) {
    Step_Second(by);
    Test_Date_for_LMT_Change();
}
void cDates::IncrementMinute(int32_t by) {
    Step_Minute(by);
    Test_Date_for_LMT_Change();
}
void cDates::IncrementHour(int32_t by) {
    Step_Hour(by);
    Test_Date_for_LMT_Change();
}
void cDates::IncrementDay(int32_t by) {
    Step_Day(by);
    Test_Date_for_LMT_Change();
}
void cDates::IncrementMonth(int32_t by) {
    Step_Month(by);
    Test_Date_for_LMT_Change();
}
void cDates::IncrementYear(int32_t by) {
    Step_Year(by);
    Test_Date_for_LMT_Change();
}

void cDates::Increment_Field(const std::string& field, int32_t by) {
    if (field == "Day") {
        IncrementDay(by);
    } else if (field == "Month") {
        Step_Month(by);
        Trim_Day();  // a shorter month takes the day to its last
        Test_Date_for_LMT_Change();
    } else if (field == "Year") {
        Step_Year(by);
        Trim_Day();
        Test_Date_for_LMT_Change();
    } else if (field == "Hour") {
        IncrementHour(by);
    } else if (field == "Minute") {
        IncrementMinute(by);
    } else if (field == "Second") {
        IncrementSecond(by);
    }
}

void cDates::DateSet(const std::string& field, int32_t value) {
    auto& t = MySystemTime;
    auto v16 = [](int32_t v, int32_t lo, int32_t hi) {
        return static_cast<int16_t>(v < lo ? lo : (v > hi ? hi : v));
    };
    if (field == "Day") {
        t.wDay = v16(value, 1, Get_Month_Length(t.wMonth, t.wYear));
    } else if (field == "Month") {
        t.wMonth = v16(value, 1, 12);
        Trim_Day();
    } else if (field == "Year") {
        int32_t y = std::abs(value);
        if (y > kYearLimit) y = kYearLimit;
        if (y == 0) {
            y = -1;
        } else if (t.wYear < 0) {
            y = -y;  // the sign of the year is kept
        }
        t.wYear = static_cast<int16_t>(y);
        Trim_Day();
    } else if (field == "Hour") {
        t.wHour = v16(value, 0, 23);
    } else if (field == "Minute") {
        t.wMinute = v16(value, 0, 59);
    } else if (field == "Second") {
        t.wSecond = v16(value, 0, 59);
    } else {
        return;
    }
    Test_Date_for_LMT_Change();
}

int32_t cDates::DateGet(const std::string& field) const {
    const auto& t = MySystemTime;
    if (field == "Day") return t.wDay;
    if (field == "Month") return t.wMonth;
    if (field == "Year") return t.wYear;
    if (field == "Hour") return t.wHour;
    if (field == "Minute") return t.wMinute;
    if (field == "Second") return t.wSecond;
    if (field == "MonthLength") return Get_Month_Length(t.wMonth, t.wYear);
    if (field == "NextDay") return t.wDay >= Get_Month_Length(t.wMonth, t.wYear) ? 1 : t.wDay + 1;
    if (field == "PreviousDay") {
        if (t.wDay > 1) return t.wDay - 1;
        const int32_t month = t.wMonth == 1 ? 12 : t.wMonth - 1;
        int32_t year = t.wMonth == 1 ? t.wYear - 1 : t.wYear;
        if (year == 0) year = -1;
        return Get_Month_Length(month, year);
    }
    return 0;
}

double cDates::My_JD() {
    MyJD = Calc_JD(MySystemTime, JulDates != 0);
    return MyJD;
}

void cDates::MyTime(double dayCount) {
    if (!std::isfinite(dayCount)) dayCount = 0.0;
    if (RoundToMinute) dayCount = std::nearbyint(dayCount / (1.0 / 1440.0)) * 0.000694444444444444;
    // The conversion back follows this control's calendar; a moment before the Gregorian
    // calendar began is read in the Julian, which the zone test then takes up, so that the
    // fields keep the moment that was given.
    const int16_t shared = Shared_JulDates;
    Shared_JulDates = JulDates;
    MySystemTime = JD_To_Date(dayCount);
    if (!JulDates && Before_Reform()) {
        Shared_JulDates = kTrue;
        MySystemTime = JD_To_Date(dayCount);
    }
    Shared_JulDates = shared;
    MyJD = dayCount;
    Test_Date_for_LMT_Change();
}

void cDates::InvalidAreaCheck(bool repaint) {
    const auto& now = MySystemTime;
    const auto& was = painted_;
    Rect dirty;
    auto check = [&](bool changed, const Rect& r) {
        if (changed && !r.Empty()) {
            const Rect moved = r.Offset(0, MyRectOffset);
            Invalidate(moved);
            dirty = dirty.United(moved);
        }
    };
    check(now.wDay != was.wDay, MyDayLabel);
    check(now.wDay != was.wDay || now.wMonth != was.wMonth || now.wYear != was.wYear,
          MyWeekdayLabel);
    check(now.wMonth != was.wMonth, MyMonthLabel);
    check(now.wYear != was.wYear, MyYearLabel.United(MyBClabel));
    check(now.wHour != was.wHour, MyHourLabel);
    check(now.wMinute != was.wMinute, MyMinuteLabel);
    check(now.wSecond != was.wSecond, MySecondLabel);
    if (repaint && !dirty.Empty()) Paint_Dates(true);
}

void cDates::Edit_Commit(const EditSession& s, double value, const std::string&) {
    DateSet(s.Field, static_cast<int32_t>(value));
    CalcDates();
}

}  // namespace kelmoran
