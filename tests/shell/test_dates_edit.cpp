// The date strip's calendar and layout, and the edit engine's handlers, without a window:
// a fake form measures every character as 10 pixels and counts beeps.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "settings/M_Formatting.h"
#include "settings/M_TimeZones.h"
#include "settings/SettingsRecord.h"
#include "shell/Date_Record.h"
#include "shell/M_Edit.h"
#include "shell/M_Kelmoran.h"
#include "shell/cDates.h"
#include "shell/cLatLong.h"

namespace kelmoran {
namespace {

class FakeForm : public EditCanvas {
  public:
    int32_t Text_Width(FontKind, const std::string& text) override {
        int32_t n = 0;
        for (unsigned char c : text)
            if ((c & 0xC0) != 0x80) ++n;
        return 10 * n;
    }
    void Repaint_Edit(const Rect&) override { ++repaints; }
    void Beep() override { ++beeps; }
    int beeps = 0, repaints = 0;
};

class Owner : public cDatesOwner {
  public:
    void MyDates_DateChange(cDates&, double jd) override { changes.push_back(jd); }
    void MyDates_CalenderChg(cDates&, bool julian) override { calendars.push_back(julian); }
    void MyDates_TZChange(cDates&, int32_t m) override { zones.push_back(m); }
    EditCanvas* Edit_Form() override { return &form; }
    std::string Owner_Type() const override { return "fMain"; }
    FakeForm form;
    std::vector<double> changes;
    std::vector<bool> calendars;
    std::vector<int32_t> zones;
};

using testing_dates::Date;
using testing_dates::Type_Through_Fields;

// The date and time of a record, for comparisons that leave out the weekday.
std::string S(const MySystemTime& t) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay,
                  t.wHour, t.wMinute, t.wSecond);
    return buf;
}

void Type(const std::string& keys) {
    for (char c : keys) Edit_Key_Press(static_cast<unsigned char>(c));
}

struct Strip : ::testing::Test {
    void SetUp() override {
        Edit = EditSession{};
        Shell.Editing = kFalse;
        dates.Configure_Standard_Dates(false, &owner, 1000);
    }
    void Load(int y, int m, int d, int h = 12, int mi = 0, int s = 0, bool julian = false) {
        dates.Set_Calendar(julian);
        dates.Set_LMT(Date(y, m, d, h, mi, s), false);
    }
    std::string Shown() const { return S(dates.MySystemTime); }
    Owner owner;
    cDates dates;
};

TEST_F(Strip, StepsCarryBorrowSkipYearZeroAndStopAtTheEnds) {
    // Year 1 minus one and 9999 plus one are stepped in Main's strip by the window tests.
    struct Step {
        MySystemTime from;
        bool julian;
        const char* field;
        int32_t by;
        MySystemTime to;
    };
    const Step steps[] = {
        {Date(-1, 6, 1), true, "Year", 1, Date(1, 6, 1)},
        {Date(1, 6, 1), true, "Year", -3, Date(-3, 6, 1)},
        {Date(-9999, 1, 1, 0, 0, 0), true, "Year", -5, Date(-9999, 1, 1, 0, 0, 0)},
        {Date(1999, 12, 31, 23, 59, 59), false, "Second", 1, Date(2000, 1, 1, 0, 0, 0)},
        {Date(2000, 1, 1, 0, 0, 0), false, "Minute", -1, Date(1999, 12, 31, 23, 59, 0)},
        {Date(2001, 3, 1, 0, 30), false, "Hour", -1, Date(2001, 2, 28, 23, 30)},
        {Date(2000, 1, 31), false, "Day", 1, Date(2000, 2, 1)},
        {Date(2000, 2, 1), false, "Day", 29, Date(2000, 3, 1)},  // past 29 February
        {Date(2000, 3, 1), false, "Month", -3, Date(1999, 12, 1)},
        {Date(1999, 12, 1), false, "Month", 13, Date(2001, 1, 1)},
        // A borrow from 1 January AD 1 goes to 31 December 1 BC.
        {Date(1, 1, 1, 0, 0, 0), true, "Day", -1, Date(-1, 12, 31, 0, 0, 0)},
        // Nothing goes past the ends of the range: the time stays at the last second.
        {Date(9999, 12, 31, 23, 59, 59), false, "Second", 1, Date(9999, 12, 31, 23, 59, 59)},
        {Date(9999, 12, 30, 23, 30, 0), false, "Hour", 48, Date(9999, 12, 31, 23, 59, 59)},
        {Date(-9999, 1, 1, 0, 0, 10), true, "Minute", -1, Date(-9999, 1, 1, 0, 0, 0)},
    };
    for (const Step& s : steps) {
        Load(s.from.wYear, s.from.wMonth, s.from.wDay, s.from.wHour, s.from.wMinute, s.from.wSecond,
             s.julian);
        dates.Increment_Field(s.field, s.by);
        EXPECT_EQ(Shown(), S(s.to)) << S(s.from) << " " << s.field << " " << s.by;
    }
    // Large steps land where a day count says they should.
    Load(2010, 5, 17, 6);
    const double before = dates.My_JD();
    dates.IncrementDay(1000);
    EXPECT_DOUBLE_EQ(dates.My_JD() - before, 1000.0);
    dates.IncrementMinute(-1440 * 3);
    EXPECT_DOUBLE_EQ(dates.My_JD() - before, 997.0);
}

TEST_F(Strip, MonthLengthsFollowTheControlsCalendar) {
    struct Length {
        bool julian;
        int month, year, days;
    };
    for (const Length& l :
         {Length{false, 2, 1900, 28}, Length{false, 2, 2000, 29}, Length{false, 2, 2001, 28},
          Length{false, 9, 2001, 30}, Length{false, 12, 2001, 31}, Length{true, 2, 1900, 29},
          Length{true, 2, 2000, 29}}) {
        dates.Set_Calendar(l.julian);
        EXPECT_EQ(dates.Get_Month_Length(l.month, l.year), l.days) << l.month << "/" << l.year;
    }
    Load(2011, 2, 14);
    EXPECT_EQ(dates.DateGet("MonthLength"), 28);
    EXPECT_EQ(dates.DateGet("NextDay"), 15);
    Load(2011, 2, 28);
    EXPECT_EQ(dates.DateGet("NextDay"), 1);
    Load(2011, 3, 1);
    EXPECT_EQ(dates.DateGet("PreviousDay"), 28);
}

TEST_F(Strip, DateSetKeepsTheSignOfTheYearAndTrimsTheDay) {
    Load(-44, 3, 15, 12, 0, 0, true);
    dates.DateSet("Year", 100);
    EXPECT_EQ(dates.MySystemTime.wYear, -100);
    dates.DateSet("Year", 0);
    EXPECT_EQ(dates.MySystemTime.wYear, -1);
    Load(2011, 1, 31);
    dates.DateSet("Month", 2);
    EXPECT_EQ(Shown(), S(Date(2011, 2, 28)));
}

TEST_F(Strip, ChangingEraBeforeTheReformGoesOverToTheJulianCalendar) {
    // (100 BC and 3000 BC to AD are driven through a real pop-up in the window tests.)
    Load(1600, 1, 1);
    dates.ChangeAD_BC();
    EXPECT_EQ(owner.calendars, std::vector<bool>{true});
}

TEST_F(Strip, MinutesOnlyModeRoundsToTheWholeMinute) {
    dates.Configure_Standard_Dates(true, &owner, 1000);
    dates.Set_LMT(Date(2011, 12, 31, 23, 59, 30), false);
    EXPECT_EQ(Shown(), S(Date(2012, 1, 1, 0, 0, 0)));
    dates.MyTime(Calc_JD(Date(2011, 7, 4, 12, 34, 29), false));
    EXPECT_EQ(Shown(), S(Date(2011, 7, 4, 12, 34, 0)));
}

TEST_F(Strip, TheMouseTakesTheFieldUnderItOrTheNearest) {
    const Rect day = dates.MyDayLabel, month = dates.MyMonthLabel, year = dates.MyYearLabel;
    const int32_t y = day.Top + 3;
    EXPECT_LT(day.Right, month.Left);
    EXPECT_EQ(dates.Field_At(day.Left + 1, y), "Day");
    EXPECT_EQ(dates.Field_At(month.Left + 1, y), "Month");
    // In the gap: the nearer side of the midpoint.
    EXPECT_EQ(dates.Field_At(day.Right + 1, y), "Day");
    EXPECT_EQ(dates.Field_At(month.Left - 1, y), "Month");
    EXPECT_EQ(dates.Field_At(year.Right + 2, y), "Year");
    EXPECT_EQ(dates.Field_At(dates.MyWeekdayLabel.Left + 1, y), "Day");  // in the date group
    EXPECT_EQ(dates.Field_At(dates.MySecondLabel.Left + 1, dates.MySecondLabel.Top + 1), "Second");
    EXPECT_EQ(dates.Field_At(dates.MyLMTlabel.Left + 1, dates.MyLMTlabel.Top + 1), "Second");
    EXPECT_EQ(dates.Field_At(2, 2), "");
    // The vertical offset of the control moves every rectangle.
    dates.MyRectOffset = 100;
    EXPECT_EQ(dates.Field_At(day.Left + 1, y), "");
    EXPECT_EQ(dates.Field_At(day.Left + 1, y + 100), "Day");
    // With no room beside the date the time goes under it.
    dates.Configure_Standard_Dates(false, &owner, 400);
    EXPECT_GE(dates.MyHourLabel.Top, dates.MyDayLabel.Bottom);
}

TEST_F(Strip, InvalidAreaCheckNamesOnlyTheLabelsThatChanged) {
    struct Spy : cDates {
        void Invalidate(const Rect& r) override { rects.push_back(r); }
        std::vector<Rect> rects;
    } spy;
    spy.Configure_Standard_Dates(false, &owner, 1000);
    spy.Set_LMT(Date(2011, 7, 4, 12, 34, 45), false);
    spy.Paint_Dates(false);
    spy.IncrementSecond(1);
    spy.InvalidAreaCheck(false);
    ASSERT_EQ(spy.rects.size(), 1u);
    EXPECT_EQ(spy.rects[0], spy.MySecondLabel);
    spy.rects.clear();
    spy.IncrementSecond(14);  // 12:35:00: minute and second
    spy.InvalidAreaCheck(false);
    EXPECT_EQ(spy.rects.size(), 2u);
}

TEST_F(Strip, LabelsStandLeftToRightFourPixelsApart) {
    dates.Configure_Standard_Dates(false, &owner, 2000);
    const Rect order[] = {dates.MyWeekdayLabel, dates.MyDayLabel, dates.MyMonthLabel,
                          dates.MyYearLabel, dates.MyBClabel};
    for (size_t i = 1; i < std::size(order); ++i) EXPECT_EQ(order[i].Left - order[i - 1].Right, 4);
    // The time reads hour, colon, minute, colon, second, then the zone, on the date's line.
    EXPECT_GT(dates.MyHourLabel.Left, dates.MyBClabel.Right);
    EXPECT_EQ(dates.MyHourLabel.Top, dates.MyDayLabel.Top);
    EXPECT_EQ(dates.MyMinuteLabel.Left - dates.MyHourLabel.Right, Date_Metrics.Colon);
    EXPECT_EQ(dates.MySecondLabel.Left - dates.MyMinuteLabel.Right, Date_Metrics.Colon);
    EXPECT_EQ(dates.MyLMTlabel.Left - dates.MySecondLabel.Right, 4);
    EXPECT_TRUE(dates.MyFrame.Contains(dates.MyLMTlabel.Right - 1, dates.MyLMTlabel.Top));
}

TEST_F(Strip, EachConfigurationHasItsPlaceAndFields) {
    using Fields = std::vector<std::string>;
    const Fields all = {"Day", "Month", "Year", "Hour", "Minute", "Second"};
    const Fields noSecond(all.begin(), all.end() - 1);
    using Configure = std::function<void(cDates&)>;
    struct Case {
        const char* name;
        Configure configure;
        int32_t left, top;
        Fields fields;
    };
    const Case cases[] = {
        {"standard", [&](cDates& d) { d.Configure_Standard_Dates(false, &owner, 1000); }, 152, 5,
         all},
        {"minutes only", [&](cDates& d) { d.Configure_Standard_Dates(true, &owner, 1000); }, 152, 5,
         noSecond},
        {"lunations", [&](cDates& d) { d.Configure_Lunation_Dates(&owner, 1000); }, 152, 5,
         Fields{"Year"}},
        {"sights", [&](cDates& d) { d.Configure_Sight_Dates(&owner, 1000); }, 125, 2, all},
        {"almanac", [&](cDates& d) { d.Configure_Almanac_Dates(&owner, 1000); }, 152, 5, all},
        {"atlas", [&](cDates& d) { d.Configure_StarPlot_Dates(&owner, 1000); }, 25, 2, all},
        {"voyage row", [&](cDates& d) { d.Configure_NavPlan_Dates(7, &owner); }, 0, 0, noSecond},
        {"date-time group", [&](cDates& d) { d.Configure_for_DTG(3, &owner); }, 0, 0,
         Fields{"Day", "Hour", "Minute"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        cDates d;
        c.configure(d);
        EXPECT_EQ(d.MyFrame.Left, c.left);
        EXPECT_EQ(d.MyFrame.Top, c.top);
        EXPECT_EQ(d.Fields_Shown(), c.fields);
        // Every field shown can be clicked to open its own edit.
        for (const std::string& f : d.Fields_Shown())
            EXPECT_EQ(d.Field_At((d.Field_Rect(f).Left + d.Field_Rect(f).Right) / 2,
                                 (d.Field_Rect(f).Top + d.Field_Rect(f).Bottom) / 2),
                      f);
    }
    cDates lunation;
    lunation.Configure_Lunation_Dates(&owner, 1000);
    EXPECT_EQ(lunation.Caption_Text(), "Moon Phases for ");
    EXPECT_GE(lunation.MyYearLabel.Left, 152 + Date_Metrics.LabelWidth);
    cDates row;
    row.Configure_NavPlan_Dates(7, &owner);
    EXPECT_EQ(row.MyIndex, 7);
    EXPECT_NE(row.RoundToMinute, 0);
    EXPECT_EQ(row.Weekday_Text(), "");  // no weekday on a row: nothing asked for it
    row.ClassType = "EtdDates";
    row.Set_HotSpots();
    EXPECT_EQ(row.Caption_Text(), "Time of departure");
    EXPECT_GE(row.MyDayLabel.Left, Date_Metrics.DepartureWidth);
}

TEST_F(Strip, TheWordsRoundTheFields) {
    struct Words {
        MySystemTime date;
        bool julian;
        const char *weekday, *era, *julianMark;
    };
    // 1 January 2000 was a Saturday; 4 October 1582 in the Julian calendar a Thursday, and
    // the next day, 15 October, a Friday. A Gregorian year 2000 read as Julian is marked.
    const Words cases[] = {{Date(2000, 1, 1), false, "Saturday", "", ""},
                           {Date(1582, 10, 4), true, "Thursday", "", "Julian       "},
                           {Date(-44, 3, 15), true, nullptr, "BC", nullptr},
                           {Date(800, 12, 25), true, nullptr, "AD", nullptr},
                           {Date(2000, 1, 1), true, nullptr, nullptr, "Julian       "}};
    const auto check = [](const char* want, const std::string& got, const MySystemTime& d) {
        if (want) {
            EXPECT_EQ(got, want) << S(d);
        }
    };
    for (const Words& w : cases) {
        Load(w.date.wYear, w.date.wMonth, w.date.wDay, 12, 0, 0, w.julian);
        check(w.weekday, dates.Weekday_Text(), w.date);
        check(w.era, dates.Era_Text(), w.date);
        check(w.julianMark, dates.Julian_Text(), w.date);
    }
    Load(-44, 3, 15, 12, 0, 0, true);
    EXPECT_EQ(dates.Field_Text("Year"), "44");
    dates.ShortNames = kTrue;
    Load(1970, 1, 1);
    EXPECT_EQ(dates.Weekday_Text(), "Thur");
    EXPECT_EQ(dates.Field_Text("Month"), "Jan");
    dates.ShortNames = kFalse;
    EXPECT_EQ(dates.Field_Text("Month"), "January");
}

TEST_F(Strip, TheGregorianCalendarBeginsOn15October1582) {
    // On the first day of the reform the Gregorian calendar can be chosen.
    Load(1582, 10, 15, 0, 0, 0, true);
    owner.calendars.clear();
    dates.Menu_Choice("Use Gregorian Calender");
    EXPECT_EQ(dates.JulDates, 0);
    EXPECT_EQ(owner.calendars, std::vector<bool>{false});
    EXPECT_EQ(dates.Julian_Text(), "");
    // On the day before it cannot.
    Load(1582, 10, 14, 23, 59, 59, true);
    owner.calendars.clear();
    dates.Menu_Choice("Use Gregorian Calender");
    EXPECT_NE(dates.JulDates, 0);
    EXPECT_TRUE(owner.calendars.empty());
    // The captions follow the state.
    EXPECT_EQ(dates.Menu_Captions()[0], "Use Gregorian Calender");
    EXPECT_EQ(dates.Menu_Captions()[1], "BC");
    dates.ChangeAD_BC();
    EXPECT_EQ(dates.Menu_Captions()[1], "AD");
    EXPECT_EQ(dates.Menu_Captions()[2], "Time Zone");
}

TEST_F(Strip, AMomentBeforeTheReformLoadsInTheJulianCalendar) {
    dates.Set_Calendar(false);
    const double moment = Calc_JD(Date(1000, 7, 4, 6, 30), true);
    dates.MyTime(moment);
    EXPECT_EQ(Shown(), S(Date(1000, 7, 4, 6, 30)));
    EXPECT_NE(dates.JulDates, 0);
    EXPECT_EQ(owner.calendars, std::vector<bool>{true});
    EXPECT_DOUBLE_EQ(dates.My_JD(), moment);
    // The day before the reform and the reform itself, loaded on the Gregorian calendar;
    // the Julian calendar stays with a control that has it, on any date.
    struct Case {
        bool startJulian;
        MySystemTime date;
        bool julian;
    };
    for (const Case& c :
         {Case{false, Date(1582, 10, 4, 12), true}, Case{false, Date(1582, 10, 15, 12), false},
          Case{true, Date(2011, 7, 4, 12), true}}) {
        dates.Set_Calendar(c.startJulian);
        dates.MyTime(Calc_JD(c.date, c.julian));
        EXPECT_EQ(Shown(), S(c.date));
        EXPECT_EQ(dates.JulDates != 0, c.julian) << S(c.date);
    }
}

TEST_F(Strip, AStepAcrossASummerTimeRuleMovesTheZoneAtOnce) {
    // Summer time from the last Sunday of March at 01:00 to the last Sunday of October at
    // 02:00, one hour east; in 2011 those are 27 March and 30 October.
    const int16_t autoZone = Settings.AutoTimeZone;
    Settings.AutoTimeZone = kTrue;
    SummerStart = DstRule{3, 1, 5, 1, 0, 0, 60, 0.0, kTrue};
    SummerEnd = DstRule{10, 1, 5, 2, 0, 0, 0, 0.0, kTrue};
    dates.My_TZ_Bias(0);
    Load(2011, 3, 26, 12);
    owner.zones.clear();
    dates.IncrementDay(1);  // the moment after the step is in summer
    EXPECT_EQ(owner.zones, std::vector<int32_t>{60});
    EXPECT_EQ(dates.Bias, 60);
    EXPECT_EQ(dates.MyLMT_Text, Format_TZ_Text(60));
    dates.IncrementHour(-12);  // 27 March 00:00, before the change at 01:00
    EXPECT_EQ(owner.zones, (std::vector<int32_t>{60, 0}));
    EXPECT_EQ(dates.MyLMT_Text, "GMT");
    // Typed into the strip: the day of the end of summer and the day after it.
    Load(2011, 10, 29, 12);
    dates.My_TZ_Bias(60);
    owner.zones.clear();
    dates.Begin_Editing("Day");
    Type("31");
    EXPECT_EQ(owner.zones, std::vector<int32_t>{0});
    Edit_Escape();
    // A bias set by hand is never touched.
    dates.My_TZ_Bias(-300);
    owner.zones.clear();
    dates.IncrementMonth(-6);
    EXPECT_TRUE(owner.zones.empty());
    SummerStart = DstRule{};
    SummerEnd = DstRule{};
    Settings.AutoTimeZone = autoZone;
}

// --------------------------------------------------------------- the date handler
// (letters, two-digit years and day limits are typed into Main's strip by the window tests)

TEST_F(Strip, DigitsCompleteAFieldAndMoveOn) {
    Load(2010, 4, 10);
    dates.Begin_Editing("Day");
    // Day 4, above 3, is final; hour 2 then 5 takes the 5, final; minute 7, 6 or more, at once.
    Type_Through_Fields(Type, {"4", "Month", "1", "Month", "2", "Year", "1999", "Hour", "25",
                               "Minute", "7", "Second"});
    Type("42");
    EXPECT_FALSE(Edit.Editing);  // the last field ends the edit
    EXPECT_EQ(Shown(), S(Date(1999, 12, 4, 5, 7, 42)));
}

TEST_F(Strip, PlusStepsTheFieldAndKeepsTheEditOpen) {
    Load(2011, 1, 31);
    dates.Begin_Editing("Day");
    owner.changes.clear();
    Type("+");
    EXPECT_EQ(Shown(), S(Date(2011, 2, 1)));
    EXPECT_EQ(owner.changes.size(), 1u);
    EXPECT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Text, "1");
    Edit_Escape();
}

TEST_F(Strip, AClickElsewhereCommitsWhatWasTyped) {
    Load(2011, 6, 15, 10, 20, 30);
    owner.changes.clear();
    dates.Begin_Editing("Minute");
    End_Edit();  // nothing typed: nothing changes
    EXPECT_TRUE(owner.changes.empty());
    dates.Begin_Editing("Hour");
    Type("1");
    End_Edit();
    EXPECT_EQ(dates.MySystemTime.wHour, 1);
    EXPECT_FALSE(Shell.Editing);
    ASSERT_EQ(owner.changes.size(), 1u);
    EXPECT_DOUBLE_EQ(owner.changes[0], Calc_JD(Date(2011, 6, 15, 1, 20, 30), false));
}

TEST_F(Strip, TheEditOfAFieldTakesItsTextAndItsPlace) {
    struct ScrolledOwner : Owner {
        std::string type = "Sights";
        int32_t Scroll_X() const override { return 30; }
        int32_t Scroll_Y() const override { return 40; }
        std::string Owner_Type() const override { return type; }
    } scrolled;
    dates.Configure_Sight_Dates(&scrolled, 1000);
    dates.MyRectOffset = 7;
    Load(2011, 9, 5, 8, 4, 3);
    dates.Begin_Editing("Month");
    EXPECT_EQ(Edit.Class, "Dates");
    EXPECT_EQ(Edit.Alignment, 1);
    EXPECT_EQ(Edit.Text, "Sep");  // the narrow form's name
    EXPECT_EQ(Edit.Cell, dates.MyMonthLabel.Offset(-30, 7 - 40));
    EXPECT_EQ(Edit.Form, &scrolled.form);
    dates.Begin_Editing("Minute");
    EXPECT_EQ(Edit.Text, "04");
    // Main's strip does not scroll.
    scrolled.type = "fMain";
    dates.Begin_Editing("Day");
    EXPECT_EQ(Edit.Text, "5");
    EXPECT_EQ(Edit.Cell, dates.MyDayLabel.Offset(0, 7));
    Edit_Escape();
}

// --------------------------------------------------------------- other handlers

class Target : public cEditTarget {
  public:
    void Edit_Commit(const EditSession& s, double v, const std::string& t) override {
        field = s.Field;
        value = v;
        text = t;
        ++commits;
    }
    std::string field, text;
    double value = 0;
    int commits = 0;
};

constexpr double kDeg = 57.2957795130823;

struct Engine : ::testing::Test {
    void SetUp() override { Edit = EditSession{}; }
    void Open(const std::string& cls, const std::string& field, double value,
              const std::string& text = "", int32_t align = 2) {
        EditRequest r;
        r.Form = &form;
        r.Control = &target;
        r.Class = cls;
        r.Field = field;
        r.Cell = {100, 10, 200, 30};
        r.Alignment = align;
        r.Value = value;
        r.Text = text;
        Begin_Edit(r);
    }
    FakeForm form;
    Target target;
};

TEST_F(Engine, EachHandlerTakesItsFormBeepsAtTheRestAndCommits) {
    struct Case {
        const char *cls, *field;
        double start;
        const char *startText, *keys;
        int beeps;          // beeps the keys raise
        const char* shown;  // the edit's text after the keys, or null
        bool commit;        // Return, else Escape
        double value;       // committed
        const char* text;   // committed text, or null
    };
    const double nan = std::nan("");
    const Case cases[] = {
        {"CellEdit", "Lat", 10.5 / kDeg, "", "41 23.5-", 0, "41\u00B0 23'.5 S", true,
         -(41 + 23.5 / 60) / kDeg, nullptr},
        // Three places of degrees then the minutes; no third digit of minutes, two decimals.
        {"CellEdit", "Long", 0, "", "123456.678", 2, nullptr, true, (123 + 45.67 / 60) / kDeg,
         nullptr},
        {"CellEdit", "Long", 0, "", "181d60", 2, nullptr, false, nan, nullptr},  // 181°, 60'
        // Only the hemisphere typed: the size stays.
        {"CellEdit", "Long", 20.25 / kDeg, "", "-", 0, nullptr, true, -20.25 / kDeg, nullptr},
        {"CellEdit", "Course", 45.0, "045\u00B0.0 T", "27.3m", 0, "275\u00B0.3 M", true, 275.3,
         "275\u00B0.3 M"},
        {"Options", "Course", 0.0, "000\u00B0.0", "437", 2, nullptr, false, nan, nullptr},
        {"CellEdit", "Speed", 0, "", "12,5713", 2, nullptr, true, 12.57, nullptr},  // 3 decimals
        {"CellEdit", "Dist", 0, "", "123.4", 0, nullptr, true, 123.4, nullptr},
        {"Observer", "Temp", 0, "", "-0.5", 0, nullptr, true, -0.5, nullptr},
        {"Observer", "Pressure", 0, "", "-", 1, nullptr, false, nan, nullptr},
        {"CellEdit", "Clox", 0, "GMT", "-5.5", 0, "Z-5.5", true, -5.5, "Z-5.5"},
        {"CellEdit", "WptNo", 0, "", "g", 0, nullptr, true, nan, "GPS"},
        {"CellEdit", "WptNo", 0, "", "1234", 1, nullptr, true, 123, nullptr},
        {"Tb_Time", "Hour", 0, "", "213", 2, nullptr, true, 1, nullptr},
        {"CellEdit", "Duration", 0, "0d ", "2d5h30m", 0, "2d 5h 30m", true,
         2 + 5 / 24.0 + 30 / 1440.0, nullptr},
        {"CellEdit", "ETA", 0, "08:00", "12/08301", 1, "12/ 08:30", true, 12 + 8.5 / 24.0, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.cls) + " " + c.field + " " + c.keys);
        Open(c.cls, c.field, c.start, c.startText);
        const int before = form.beeps;
        for (char k : std::string(c.keys)) Edit_Key_Press(static_cast<unsigned char>(k));
        EXPECT_EQ(form.beeps - before, c.beeps);
        if (c.shown) {
            EXPECT_EQ(Edit_Display_Text(), c.shown);
        }
        if (!c.commit) {
            Edit_Escape();
            continue;
        }
        Edit_Key_Down(vk::Return);
        if (!std::isnan(c.value)) {
            EXPECT_NEAR(target.value, c.value, 1e-12 * std::max(1.0, std::fabs(c.value)));
        }
        if (c.text) {
            EXPECT_EQ(target.text, c.text);
        }
    }
}

TEST_F(Engine, AnglesOpenRoundedWithTheirSign) {
    Open("CellEdit", "Lat", 10.5 / kDeg);
    EXPECT_DOUBLE_EQ(Edit.Whole, 10.0);
    EXPECT_DOUBLE_EQ(Edit.Fraction, 30.0);
    // Minutes that round to 60 at two places carry into the degrees; the sign is kept.
    Open("CellEdit", "Lat", -(10 + 59.9996 / 60) / kDeg);
    EXPECT_DOUBLE_EQ(Edit.Whole, 11.0);
    EXPECT_DOUBLE_EQ(Edit.Fraction, 0.0);
    EXPECT_EQ(Edit.Sign, -1);
    Open("CellEdit", "Lat", (10 + 59.994 / 60) / kDeg);
    EXPECT_DOUBLE_EQ(Edit.Whole, 10.0);
    EXPECT_NEAR(Edit.Fraction, 59.99, 1e-9);
    Open("CellEdit", "Lat", 0.0);
    EXPECT_EQ(Edit.Sign, 1);
    Open("CellEdit", "Long", 0);
    Type("1234");
    EXPECT_EQ(Edit.Degrees, "123");
    EXPECT_EQ(Edit.Minutes, "4");
    Edit_Escape();
}

TEST_F(Engine, TheCaretFollowsTheAlignment) {
    // Every character is 10 pixels wide; the cell runs from 100 to 200.
    Open("CellEdit", "Speed", 0, "0.00", 2);
    EXPECT_EQ(Caret_X(), 200 - 2 - 40);  // at the start of the start text
    Type("12.5");
    EXPECT_EQ(Caret_X(), 200 - 2);
    Edit_Key_Down(vk::Home);
    EXPECT_EQ(Caret_X(), 200 - 2 - 40);
    Edit_Key_Down(vk::Right);
    EXPECT_EQ(Caret_X(), 200 - 2 - 30);
    // A click goes to the nearest boundary between characters.
    Edit_Click(200 - 2 - 14);
    EXPECT_EQ(Edit.Position, 3);
    Edit_Escape();
    Open("CellEdit", "Dist", 0, "", 0);
    Type("42");
    EXPECT_EQ(Caret_X(), 100 + 2 + 20);
    // Centred, as the strip's fields: the caret at the start of the centred text.
    Open("CellEdit", "Speed", 0, "0.00", 1);
    EXPECT_EQ(Caret_X(), 100 + (100 - 40) / 2);
    Type("12");
    EXPECT_EQ(Caret_X(), 100 + (100 - 20) / 2 + 20);
    Edit_Escape();
}

TEST_F(Engine, AControlThatGoesAwayTakesItsOpenEditWithIt) {
    struct Pair : cLatLong, cLatLongOwner {
        EditCanvas* Edit_Form() override { return form; }
        void LatLong_Change(cLatLong&) override { ++changes; }
        FakeForm* form = nullptr;
        int changes = 0;
    };
    auto pair = std::make_unique<Pair>();
    pair->form = &form;
    pair->ClassOwner = pair.get();
    pair->MyLatLongPosn(10, 10);
    pair->Edit_Lat();
    Type("12");
    ASSERT_TRUE(Edit.Editing);
    pair.reset();
    EXPECT_FALSE(Edit.Editing);
    End_Edit();  // nothing left to commit to
    auto strip = std::make_unique<cDates>();
    Owner owner;
    strip->Configure_Standard_Dates(false, &owner, 1000);
    strip->Begin_Editing("Year");
    Type("19");
    strip.reset();
    EXPECT_FALSE(Edit.Editing);
    EXPECT_TRUE(owner.changes.empty());
}

TEST_F(Engine, DigitsOvertypeAndTextTakesWhatFits) {
    Open("CellEdit", "Dist", 0);
    Type("123.45");
    EXPECT_EQ(form.beeps, 1);
    // A digit typed at the caret overtypes the one under it; one past the form beeps.
    Edit_Key_Down(vk::Home);
    Type("9");
    EXPECT_EQ(Edit.Buffer, "923.4");
    Edit_Key_Down(vk::End);
    Edit_Key_Down(vk::Left);
    Type("7");
    EXPECT_EQ(Edit.Buffer, "923.7");
    Edit_Key_Down(vk::Left);
    Edit_Key_Down(vk::Left);
    Type("5");  // over the point: five whole digits are allowed in a distance
    EXPECT_EQ(Edit.Buffer, "92357");
    Edit_Key_Down(vk::Return);
    EXPECT_DOUBLE_EQ(target.value, 92357);

    Open("CellEdit", "WptNo", 0);
    EXPECT_EQ(Edit.Alignment, 2);  // left only for the first draw
    Edit_Escape();
    Open("CellEdit", "ID", 0, "", 0);
    Type("ABCDEFG");
    EXPECT_EQ(form.beeps, 2);
    Edit_Key_Down(vk::Left);
    Edit_Key_Down(vk::Delete);  // as Right then Backspace
    EXPECT_EQ(Edit.Buffer, "ABCDE");
    Edit_Key_Press(176);
    EXPECT_EQ(Edit.Buffer, "ABCDE\u00B0");
    EXPECT_EQ(Caret_X(), 100 + 2 + 60);
    Edit_Key_Down(vk::Return);
    EXPECT_EQ(target.text, "ABCDE\u00B0");
    // Moving in a title takes up its start text.
    Open("CellEdit", "Title", 0, "Passage", 0);
    Edit_Key_Down(vk::End);
    Type("s");
    Edit_Key_Down(vk::Return);
    EXPECT_EQ(target.text, "Passages");
}

TEST_F(Engine, TheKeyFilterPassesOnlyWhatTheClassTakes) {
    Open("CellEdit", "Dist", 0);
    EXPECT_FALSE(Edit_Key_Down(vk::F2));
    EXPECT_FALSE(Edit_Key_Down(vk::Tab));
    Edit_Key_Press(7);  // a control character is dropped
    EXPECT_TRUE(Edit.Buffer.empty());
    EXPECT_TRUE(Edit_Key_Down(vk::Escape));
    EXPECT_FALSE(Edit.Editing);
    EXPECT_EQ(target.commits, 0);
    Open("Tb_Time", "Hour", 0);
    EXPECT_TRUE(Edit_Key_Down(vk::F2));
    Edit_Escape();
}

TEST_F(Strip, F2InTheMonthIsNoLetter) {
    Load(2010, 7, 4);
    dates.Begin_Editing("Month");
    Type("a");
    EXPECT_TRUE(Edit_Key_Down(vk::F2));  // the strip takes F2, but it types nothing
    EXPECT_EQ(Edit.Buffer, "A");
    Edit_Key_Down(vk::Return);
    EXPECT_EQ(dates.MySystemTime.wMonth, 4);
}

}  // namespace
}  // namespace kelmoran
