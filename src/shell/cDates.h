// The date-and-time strip: the day, month, year, hour, minute and second labels with the
// zone label that sit on top of nearly every screen. This is its model: the calendar
// record, its carries and borrows, the layout of its hot rectangles, the choice of field
// under the mouse and the events to the owner. The drawing layer paints it (cDatesView).
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "ephemeris/Time_Calcs.h"
#include "shell/Geometry.h"
#include "shell/M_Edit.h"

namespace kelmoran {

class cDates;
struct DateControlState;

// The widths measured once at start, in the strip's bold font, from which the label
// rectangles are laid out; and the height of a title line.
struct DateMetrics {
    int32_t Zero = 12;             // "0"
    int32_t TwoZeros = 24;         // "00"
    int32_t Colon = 6;             // ":"
    int32_t Wednesday = 110;       // the longest weekday
    int32_t Thur = 48;             // the longest short weekday
    int32_t BC = 28;               // "BC"
    int32_t September = 112;       // the longest month name
    int32_t June = 50;             // room for a short month name
    int32_t Zone = 60;             // room for the zone label ("Z+10.5", "GMT", "ET")
    int32_t RowHeight = 29;        // a title line: the height of a bold "0" × 1.6, rounded
    int32_t SmallHeight = 15;      // a line of the 13-pixel font ("Julian" under the date)
    int32_t LabelWidth = 150;      // "Moon Phases for "
    int32_t DepartureWidth = 190;  // "Time of departure "
};

// Set by the drawing layer's Measure_Fixed_Layout at start; core tests use the defaults.
extern DateMetrics Date_Metrics;

// The owner's handlers of the strip's events.
class cDatesOwner {
  public:
    virtual ~cDatesOwner() = default;
    // The moment shown changed; `jd` is in zone time, days since the epoch.
    virtual void MyDates_DateChange(cDates& sender, double jd) = 0;
    // The control moved to the Julian (true) or the Gregorian calendar.
    virtual void MyDates_CalenderChg(cDates& sender, bool julian) = 0;
    // The control's zone moved (summer time), `minutes` as TZ_Bias.
    virtual void MyDates_TZChange(cDates& sender, int32_t minutes) = 0;
    // The owner's picture is to be let go before a pop-up, and taken back after it.
    virtual void MyDates_ReleaseBitmap(cDates&) {}
    virtual void MyDates_RestoreBitmap(cDates&) {}
    // A control in date-time-group form changed; `moment` in zone time.
    virtual void DTG_Change(double /*moment*/, int32_t /*index*/) {}
    // The form on which edits of the strip are drawn.
    virtual EditCanvas* Edit_Form() = 0;
    // Scroll offsets of owners whose strips scroll with their content.
    virtual int32_t Scroll_X() const { return 0; }
    virtual int32_t Scroll_Y() const { return 0; }
    // "fMain", "Sights", "Almanac" or "PlotStars".
    virtual std::string Owner_Type() const = 0;
    // Options' time tab, asked for by "Time Zone" of the strip's pop-up.
    virtual void Open_Time_Options() {}
};

// The layouts of the strip, one for each Configure_* call.
enum class DatesForm { Standard, Lunation, NavPlan, Sight, DTG, Almanac, StarPlot };

// Names of the edit fields of the strip, in the order of the layout.
inline constexpr std::array<const char*, 6> kDateFields = {"Day",  "Month",  "Year",
                                                           "Hour", "Minute", "Second"};

class cDates : public cEditTarget {
  public:
    using DateRecord = ::kelmoran::MySystemTime;

    cDates();
    ~cDates() override;

    // --- fields ---
    DateRecord MySystemTime;  // the record shown, zone time; no year 0
    int16_t JulDates = 0;     // the control's calendar: non-zero Julian
    double MyJD = 0.0;        // the moment in zone time
    Rect MyDayLabel, MyMonthLabel, MyYearLabel, MyHourLabel, MyMinuteLabel, MySecondLabel;
    Rect MyLMTlabel, MyBClabel, MyWeekdayLabel, MyJulianLabel;
    Rect MyDateGrid, MyTimeGrid;
    Rect MyFrame;  // the 3-D frame round the whole strip
    std::string MyLMT_Text = "GMT";
    int32_t MyDTGzone = 0;
    int16_t MyDTGstatus = 0;  // non-zero: the strip stands in date-time-group form
    std::string ClassType = "Dates";
    int16_t OptionsFlag = 0;
    cDatesOwner* MyOwner = nullptr;
    int32_t MyIndex = 0;
    int16_t MyDayReqd = 0;
    int32_t MyRectOffset = 0;
    int16_t MyDateIsDisabled = 0;
    int16_t ClipSeconds = 0;         // the seconds are removed
    int16_t ClipTime = 0;            // hours, minutes and seconds are removed
    int16_t RoundToMinute = 0;       // minutes-only mode
    int32_t Bias = 0;                // minutes, as TZ_Bias, for this control
    int16_t ShortNames = 0;          // narrow forms: "Thur", "Sep"
    int16_t IsShared = 0;            // this strip's calendar is the program-wide Shared_JulDates
    int16_t FollowsSummerTime = -1;  // summer time moves this control's zone
    DatesForm Form = DatesForm::Standard;
    std::string Caption;  // text before the strip ("Moon Phases for ")
    int32_t MyWidth = 0;  // room the owner gives the strip, pixels

    // --- configuration ---
    void Configure_Standard_Dates(bool minutesOnly, cDatesOwner* owner, int32_t width);
    void Configure_Lunation_Dates(cDatesOwner* owner, int32_t width);
    void Configure_NavPlan_Dates(int32_t index, cDatesOwner* owner);
    void Configure_Sight_Dates(cDatesOwner* owner, int32_t width);
    void Configure_for_DTG(int32_t index, cDatesOwner* owner);
    void Configure_Almanac_Dates(cDatesOwner* owner, int32_t width);
    void Configure_StarPlot_Dates(cDatesOwner* owner, int32_t width);

    void Clip_Seconds(bool on);
    void Clip_Time(bool on);
    // Lays out the label rectangles from the measured widths, top left at (x, y).
    void Position_DateGrid(int32_t x, int32_t y);
    // Recomputes the hot rectangles for the present width.
    void Set_HotSpots();

    // --- painting: the drawing layer overrides these ---
    virtual void Draw_Date_Outlines() {}
    virtual void Paint_DTG() { Remember_Painted(); }
    virtual void Paint_Dates(bool /*repaint*/) { Remember_Painted(); }
    // Asks the owner's window to repaint part of the strip.
    virtual void Invalidate(const Rect&) {}
    // The strip's pop-up menu; the drawing layer shows it and calls Menu_Choice.
    virtual void Menus_Create_Dates(int32_t /*x*/, int32_t /*y*/, bool /*onZone*/) {}

    // --- mouse and editing ---
    // Picks the field at (x, y) in the owner's pixels, or "" for none.
    std::string Field_At(int32_t x, int32_t y) const;
    // A mouse button went down on the strip: ends an open edit, then opens the field under
    // the point (button 1) or the pop-up (button 2). Returns the field opened, or "".
    std::string MouseDown(int32_t x, int32_t y, int32_t button, int32_t shift);
    // The wheel over the strip: steps the field under the point by `steps`.
    bool MouseScroll(int32_t x, int32_t y, int32_t steps);
    void Begin_Editing(const std::string& field);
    // The captions offered by the pop-up and the action of one of them.
    std::array<std::string, 3> Menu_Captions() const;
    void Menu_Choice(const std::string& caption);

    // --- calendar ---
    void CalcDates();
    void ChangeAD_BC();
    void Test_Date_for_LMT_Change();
    void IncrementSecond(int32_t by);
    void IncrementMinute(int32_t by);
    void IncrementHour(int32_t by);
    void IncrementDay(int32_t by);
    void IncrementMonth(int32_t by);
    void IncrementYear(int32_t by);
    // Steps a field by name ("Day" .. "Second"); Month trims the day to the month's length.
    void Increment_Field(const std::string& field, int32_t by);
    int16_t Get_Month_Length(int32_t month, int32_t year) const;
    void DateSet(const std::string& field, int32_t value);
    int32_t DateGet(const std::string& field) const;
    void My_TZ_Bias(int32_t minutes);
    void Set_LMT(const DateRecord& date, bool repaint);
    // Loads the control from a day count in zone time.
    void MyTime(double dayCount);
    double My_JD();
    // Invalidates the labels that changed since the last paint; `repaint` paints at once.
    void InvalidAreaCheck(bool repaint);
    // The date lies before 15 October 1582, when the Gregorian calendar began.
    bool Before_Reform() const;
    // Sets the calendar, keeping the program-wide copy when this strip is the shared one.
    void Set_Calendar(bool julian);

    // The text of a field as shown ("Day" plain digits, "Month" the name, times by "00").
    std::string Field_Text(const std::string& field) const;
    // The words painted round the fields: the day of the week when the strip shows it
    // ("Wednesday", or "Thur" in the narrow forms), the era ("BC" for years before Christ, "AD" for
    // the early years after, else nothing), the calendar line under the date ("Julian       " or
    // blanks), the caption before the strip, and the date-time group ("12/ 08:30 Z+1").
    std::string Weekday_Text() const;
    std::string Era_Text() const;
    std::string Julian_Text() const;
    std::string Caption_Text() const;
    std::string DTG_Text() const;
    // The leftmost label of the date: the weekday, the day or (year only) the year.
    const Rect& First_Label() const;
    Rect Field_Rect(const std::string& field) const;
    // The fields that the layout shows, in order.
    std::vector<std::string> Fields_Shown() const;
    // The record as last painted.
    const DateRecord& Painted() const { return painted_; }

    // cEditTarget
    void Edit_Commit(const EditSession& s, double value, const std::string& text) override;

  protected:
    void Remember_Painted() { painted_ = MySystemTime; }

  private:
    void Configure(DatesForm form, cDatesOwner* owner, int32_t width, int32_t x, int32_t y);
    void Validate();
    void Announce();
    DateControlState Zone_State() const;
    void Take_Zone_State(const DateControlState& s);
    void Step_Second(int32_t by);
    void Step_Minute(int32_t by);
    void Step_Hour(int32_t by);
    // Steps the day; false when the step stopped at an end of the year range.
    bool Step_Day(int32_t by);
    void Step_Month(int32_t by);
    void Step_Year(int32_t by);
    void Trim_Day();

    DateRecord painted_;
};

}  // namespace kelmoran
