// The painted controls headless, driven by real key and mouse events on real widgets: the
// date strip of the Main screen through fMain's hook, a strip, a lat/long pair and a combo
// on a form of their own; and pictures of them written under the build folder.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <memory>

#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "shell/Date_Record.h"
#include "shell/M_Edit.h"
#include "shell/SplashScreen.h"
#include "shell/Ui_Screens.h"
#include "shell/cDatesView.h"
#include "shell/cLatLongView.h"
#include "shell/cSubClass.h"
#include "shell/myComboView.h"

namespace kelmoran {
namespace {

constexpr double kDeg = 57.2957795130823;

using testing_dates::Date;
using testing_dates::Type_Through_Fields;
using namespace ui_test;

// Writes the window as it shows to <build>/screenshots/<name>.png.
void Save_Screenshot(QWidget& w, const char* name) {
    Save_Png(w.grab().toImage(), "screenshots", name);
}

// ------------------------------------------------------------ the Main screen's strip

class MainStrip : public ::testing::Test {
  protected:
    void SetUp() override {
        // A fixed zone: no summer time moves the strip's zone under these tests.
        TZ_Bias = 0;
        Settings.AutoTimeZone = 0;
        w.resize(1000, 600);
        w.show();
        QApplication::processEvents();
        splash = dynamic_cast<SplashScreen*>(w.Current_Ui_Screen());
        ASSERT_NE(splash, nullptr);
        client = w.Client();
    }
    // Shows `date` on Main, as a Reset Time would.
    void Show(const MySystemTime& date, bool julian = false) {
        Shell.CalendarChoice = julian ? kTrue : kFalse;
        Shell.CurrentJD = Calc_JD(date, julian);
        Update_All_Screens("");
        QApplication::processEvents();
    }
    cDatesView& Strip() { return splash->MyDates(); }
    void Click(const char* field, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(client, button, {}, Centre(Strip().Field_Rect(field)));
    }
    void Type(const char* keys) { QTest::keyClicks(client, keys); }
    void Key(Qt::Key key) { QTest::keyClick(client, key); }
    void Wheel_On(const char* field, int delta) {
        Wheel(client, Centre(Strip().Field_Rect(field)), delta);
    }
    // The moment reached the shell and the screen, and the screen shows it.
    void Expect_Moment(const MySystemTime& date, bool julian = false) {
        EXPECT_DOUBLE_EQ(Shell.CurrentJD, Calc_JD(date, julian));
        EXPECT_EQ(splash->MyJD(), Shell.CurrentJD);
        EXPECT_EQ(Strip().MySystemTime.wYear, date.wYear);
        EXPECT_EQ(Strip().MySystemTime.wMonth, date.wMonth);
        EXPECT_EQ(Strip().MySystemTime.wDay, date.wDay);
    }

    // Main's page was worked out again for the moment the shell holds.
    void Expect_Page_Of_Moment() {
        const MainPage want = Main_Rows(Shell.CurrentJD, false);
        ASSERT_EQ(splash->Page().Day.size(), want.Day.size());
        for (size_t i = 0; i < want.Day.size(); ++i)
            EXPECT_EQ(splash->Page().Day[i].Value, want.Day[i].Value) << want.Day[i].Label;
    }

    fMain w;
    SplashScreen* splash = nullptr;
    QWidget* client = nullptr;
};

TEST_F(MainStrip, LettersAndDigitsTypedIntoTheStripReachCurrentJD) {
    Show(Date(2010, 7, 4, 9, 15, 30));
    Shell.Up_To_Date(screen_key::AltAz) = kTrue;
    Click("Month");
    ASSERT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Field, "Month");
    Type("M");
    Key(Qt::Key_Return);
    EXPECT_FALSE(Edit.Editing);
    Expect_Moment(Date(2010, 3, 4, 9, 15, 30));
    Expect_Page_Of_Moment();
    // The change went round by Update_All_Screens: Main counts as up to date, the others
    // are to catch up.
    EXPECT_EQ(Shell.Up_To_Date(screen_key::AltAz), kFalse);
    EXPECT_EQ(Shell.Up_To_Date(screen_key::Splash), kTrue);
}

TEST_F(MainStrip, AWholeDateTypedFieldAfterFieldInAZone) {
    // An hour and a half east of Greenwich: the strip shows zone time, CurrentJD is UT.
    TZ_Bias = 90;
    Show(Date(2010, 7, 4, 9, 15, 30));
    EXPECT_EQ(Strip().MyLMT_Text, Format_TZ_Text(90));
    EXPECT_EQ(Strip().MySystemTime.wHour, 10);
    EXPECT_EQ(Strip().MySystemTime.wMinute, 45);
    const double zone = 90.0 / 1440.0;

    // Each field completes and the next opens: "15", "MAR", "1999", "07", "45", "12".
    Click("Day");
    Type_Through_Fields([&](const char* k) { Type(k); }, {"15", "Month", "MAR", "Year", "1999",
                                                          "Hour", "07", "Minute", "45", "Second"});
    Type("12");
    EXPECT_FALSE(Edit.Editing);  // the last field ends the edit
    EXPECT_DOUBLE_EQ(Shell.CurrentJD, Calc_JD(Date(1999, 3, 15, 7, 45, 12), false) - zone);
    EXPECT_EQ(splash->MyJD(), Shell.CurrentJD);
    Expect_Page_Of_Moment();

    // Tab and Space commit what was typed and move on; Backspace takes a digit back.
    Click("Day");
    Type("2");
    Key(Qt::Key_Tab);
    EXPECT_EQ(Edit.Field, "Month");
    EXPECT_EQ(Strip().MySystemTime.wDay, 2);
    Key(Qt::Key_Space);
    EXPECT_EQ(Edit.Field, "Year");
    Type("185");
    Key(Qt::Key_Backspace);
    Type("6");
    Key(Qt::Key_Return);
    EXPECT_DOUBLE_EQ(Shell.CurrentJD, Calc_JD(Date(186, 3, 2, 7, 45, 12), true) - zone);
    EXPECT_NE(Shell.CalendarChoice, 0);  // a date before the reform is Julian
    TZ_Bias = 0;
}

TEST_F(MainStrip, AChangeOfZoneFromTheStripWorksMainOutInTheNewZone) {
    Show(Date(2024, 3, 15, 21, 0, 0));
    const MainPage before = splash->Page();
    // The strip raises its zone event, as at a change of summer time.
    splash->MyDates_TZChange(Strip(), 120);
    EXPECT_EQ(TZ_Bias, 120);
    Expect_Page_Of_Moment();
    bool moved = false;
    for (size_t i = 0; i < before.Day.size() && i < splash->Page().Day.size(); ++i)
        moved |= before.Day[i].Value != splash->Page().Day[i].Value;
    EXPECT_TRUE(moved) << "Main's times stayed in the old zone";
}

TEST_F(MainStrip, TheCasesOfTheStripTypedWithRealKeys) {
    struct Case {
        MySystemTime from;
        bool julian;
        const char *field, *keys;
        Qt::Key end;
        MySystemTime to;
        bool toJulian;
    };
    const MySystemTime july = Date(2010, 7, 4, 9, 15, 30);
    const Case cases[] = {
        {july, false, "Month", "J", Qt::Key_Return, Date(2010, 1, 4, 9, 15, 30), false},
        {july, false, "Year", "93", Qt::Key_Return, Date(1993, 7, 4, 9, 15, 30), false},
        {july, false, "Year", "07", Qt::Key_Return, Date(2007, 7, 4, 9, 15, 30), false},
        {july, false, "Month", "ju", Qt::Key_Return, Date(2010, 6, 4, 9, 15, 30), false},
        {july, false, "Month", "OCT", Qt::Key_Escape, Date(2010, 10, 4, 9, 15, 30), false},
        // In the Julian calendar two digits are a year of the first century.
        {Date(1000, 7, 4), true, "Year", "07", Qt::Key_Return, Date(7, 7, 4), true},
        // A day keeps to its month; in February a 3 begins no day.
        {Date(2000, 2, 10), false, "Day", "29", Qt::Key_Escape, Date(2000, 2, 29), false},
        {Date(2011, 4, 10), false, "Day", "39", Qt::Key_Escape, Date(2011, 4, 30), false},
        {Date(2011, 2, 10), false, "Day", "3", Qt::Key_Escape, Date(2011, 2, 3), false},
        // "+" in Day at a month's end rolls the month; "-" in Month from 31 March ends on
        // February's last day.
        {Date(2011, 1, 31), false, "Day", "+", Qt::Key_Escape, Date(2011, 2, 1), false},
        {Date(2011, 3, 31), false, "Month", "-", Qt::Key_Escape, Date(2011, 2, 28), false},
        {Date(2012, 3, 31), false, "Month", "-", Qt::Key_Escape, Date(2012, 2, 29), false},
        // Year 1 minus one step is 1 BC; 9999 plus one stays.
        {Date(1, 6, 1), true, "Year", "-", Qt::Key_Escape, Date(-1, 6, 1), true},
        {Date(9999, 6, 1), false, "Year", "+", Qt::Key_Escape, Date(9999, 6, 1), false},
        // 29 February 1900: refused in the Gregorian calendar, allowed in the Julian.
        {Date(1900, 2, 10), false, "Day", "29", Qt::Key_Escape, Date(1900, 2, 28), false},
        {Date(1900, 2, 10), true, "Day", "29", Qt::Key_Escape, Date(1900, 2, 29), true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.field) + " " + c.keys + " from " + std::to_string(c.from.wYear));
        Show(c.from, c.julian);
        Click(c.field);
        Type(c.keys);
        Key(c.end);
        Expect_Moment(c.to, c.toJulian);
    }
}

TEST_F(MainStrip, EscapeAndAnEmptyEditLeaveTheMoment) {
    Show(Date(2011, 6, 15, 10, 20, 30));
    const double before = Shell.CurrentJD;
    Click("Year");
    Type("18");
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Edit.Editing);
    EXPECT_EQ(Shell.CurrentJD, before);
    Click("Hour");
    Key(Qt::Key_Return);
    EXPECT_EQ(Shell.CurrentJD, before);
    // A click elsewhere on the strip with nothing typed changes nothing either.
    Click("Minute");
    Click("Second");
    Key(Qt::Key_Escape);
    EXPECT_EQ(Shell.CurrentJD, before);
    // Keys with no edit open are swallowed on Main.
    Type("5+");
    EXPECT_EQ(Shell.CurrentJD, before);
}

TEST_F(MainStrip, ThePopUpChangesBCToADAndTheCalendarPast1900) {
    std::vector<std::string> offered;
    Strip().Menu_Chooser = [&](const std::vector<std::string>& captions) {
        offered = captions;
        return std::string("AD");
    };
    Show(Date(-100, 6, 1), true);
    Click("Year", Qt::RightButton);
    EXPECT_EQ(offered, (std::vector<std::string>{"Use Gregorian Calender", "AD"}));
    Expect_Moment(Date(100, 6, 1), true);
    EXPECT_EQ(Shell.CalendarChoice, kTrue);

    Show(Date(-3000, 6, 1), true);
    Click("Year", Qt::RightButton);
    Expect_Moment(Date(3000, 6, 1), false);
    EXPECT_EQ(Shell.CalendarChoice, kFalse);

    // On the zone label the pop-up offers the time zone as well.
    Strip().Menu_Chooser = [&](const std::vector<std::string>& captions) {
        offered = captions;
        return std::string("Use Julian Calender");
    };
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(Strip().MyLMTlabel));
    EXPECT_EQ(offered, (std::vector<std::string>{"Use Julian Calender", "BC", "Time Zone"}));
    EXPECT_EQ(Shell.CalendarChoice, kTrue);
    Expect_Moment(Date(3000, 6, 1), true);  // the same fields, read in the Julian calendar
}

TEST_F(MainStrip, TheWheelStepsTheFieldUnderTheMouse) {
    Show(Date(2011, 12, 31, 23, 0, 0));
    const double before = Shell.CurrentJD;
    Wheel_On("Day", 120);
    Expect_Moment(Date(2012, 1, 1, 23, 0, 0));
    EXPECT_DOUBLE_EQ(Shell.CurrentJD - before, 1.0);
    Wheel_On("Hour", -240);
    EXPECT_NEAR(Shell.CurrentJD - before, 1.0 - 2.0 / 24.0, 1e-9);
    Wheel_On("Month", 60);  // half a notch does nothing yet
    EXPECT_NEAR(Shell.CurrentJD - before, 1.0 - 2.0 / 24.0, 1e-9);
    Wheel_On("Month", 60);
    Expect_Moment(Date(2012, 2, 1, 21, 0, 0));
}

TEST_F(MainStrip, AClickInAnOpenEditPlacesTheCaretAndScreenshots) {
    Show(Date(2026, 9, 23, 14, 5, 9));
    Save_Screenshot(w, "main_date_strip");
    const QImage& pic = splash->Picture();
    EXPECT_GT(Dark_Pixels(pic, To_QRect(Strip().MyMonthLabel)), 30);
    EXPECT_GT(Dark_Pixels(pic, To_QRect(Strip().MyWeekdayLabel)), 30);

    Click("Year");
    Type("19");
    Key(Qt::Key_Home);
    EXPECT_EQ(Edit.Position, 0);
    const int caretHome = Caret_X();
    QTest::mouseClick(client, Qt::LeftButton, {}, QPoint(Caret_X() + 30, Centre(Edit.Cell).y()));
    EXPECT_EQ(Edit.Position, 2);
    EXPECT_GT(Caret_X(), caretHome);
    // The caret is drawn: a dark bar at its x in the picture.
    QApplication::processEvents();
    EXPECT_GT(Dark_Pixels(pic, QRect(Caret_X(), Edit.Cell.Top + 4, 2, Edit.Cell.Height() - 8)),
              Edit.Cell.Height() - 10);
    Save_Screenshot(w, "date_edit_caret");
    Key(Qt::Key_Escape);
}

// ------------------------------------------------------------ controls on a form

class Form : public QWidget,
             public PictureForm,
             public cDatesOwner,
             public cLatLongOwner,
             public SysMsgSink {
  public:
    // The layout is measured first, as the program does at start.
    Form()
        : picture((Measure_Fixed_Layout(), QImage(620, 320, QImage::Format_RGB32))),
          hook(this),
          dates(this),
          pair(this),
          combo(this) {
        picture.fill(Qt::white);
        resize(picture.size());
        hook.SubClass(this);
        dates.ClassType = "Dates";
        pair.ClassOwner = this;
        pair.ClassOwnerType = "Options";
    }

    QImage& Form_Picture() override { return picture; }
    QWidget* Form_Window() const override { return const_cast<Form*>(this); }
    void Redraw_Cell(const Rect&) override {
        dates.Paint_Dates(false);
        pair.Draw_Layout();
        for (cLatLong* p : morePairs) p->Draw_Layout();
    }

    void MyDates_DateChange(cDates&, double jd) override { changes.push_back(jd); }
    void MyDates_CalenderChg(cDates&, bool julian) override { calendars.push_back(julian); }
    void MyDates_TZChange(cDates&, int32_t) override {}
    void MyDates_ReleaseBitmap(cDates&) override { bitmaps += "release "; }
    void MyDates_RestoreBitmap(cDates&) override { bitmaps += "restore "; }
    void Open_Time_Options() override { ++timeOptions; }
    void DTG_Change(double moment, int32_t index) override {
        dtgChanges.emplace_back(moment, index);
    }
    EditCanvas* Edit_Form() override { return this; }
    std::string Owner_Type() const override { return "fMain"; }
    void LatLong_Change(cLatLong&) override { ++pairChanges; }

    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override {
        if (Edit.Editing && Edit.Cell.Contains(x, y)) {
            Edit_Click(x);
            return;
        }
        combo.myCombo::SysMsg_MouseDown(x, y);
        if (dates.MyFrame.Contains(x, y)) {
            dates.MouseDown(x, y, button, shift);
            return;
        }
        if (pair.MouseDown(x, y)) return;
        for (cLatLong* p : morePairs)
            if (p->MouseDown(x, y)) return;
    }
    void SysMsg_KeyDown(int32_t key, int32_t) override {
        if (Edit.Editing)
            Edit_Key_Down(key);
        else if (combo.HasFocus)
            combo.Display_List_By_KeyDown(key);
    }
    void SysMsg_KeyPress(int32_t c) override { Edit_Key_Press(c); }

    void Click(const Rect& r, Qt::MouseButton b = Qt::LeftButton) {
        QTest::mouseClick(this, b, {}, Centre(r));
    }
    void Keys(const char* keys) { QTest::keyClicks(this, keys); }
    void Key(Qt::Key key) { QTest::keyClick(this, key); }

    QImage picture;
    cSubClass hook;
    cDatesView dates;
    cLatLongView pair;
    myComboView combo;
    std::vector<cLatLong*> morePairs;  // pairs of a test's own, clicked after `pair`
    std::vector<double> changes;
    std::vector<bool> calendars;
    std::string bitmaps;
    int timeOptions = 0;
    std::vector<std::pair<double, int32_t>> dtgChanges;
    int pairChanges = 0;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.drawImage(0, 0, picture);
    }
};

TEST(StripOnAForm, MinutesOnlyModeShowsTheRoundedMinute) {
    Form f;
    f.dates.Configure_Standard_Dates(true, &f, f.width());
    f.dates.Set_LMT(Date(2011, 7, 4, 12, 34, 45), true);
    EXPECT_EQ(f.dates.Field_Text("Hour"), "12");
    EXPECT_EQ(f.dates.Field_Text("Minute"), "35");
    EXPECT_TRUE(f.dates.MySecondLabel.Empty());
    EXPECT_EQ(f.dates.Fields_Shown().back(), "Minute");
    f.show();
    f.Click(f.dates.MyMinuteLabel);
    f.Keys("+");
    f.Key(Qt::Key_Escape);
    ASSERT_EQ(f.changes.size(), 1u);
    EXPECT_DOUBLE_EQ(f.changes[0], Calc_JD(Date(2011, 7, 4, 12, 36, 0), false));
}

TEST(StripOnAForm, ThePopUpRaisesACalendarEventOnlyWhenAYearPasses1900) {
    Form f;
    f.show();
    f.dates.Configure_Standard_Dates(false, &f, f.width());
    std::vector<std::string> offered;
    std::string choice = "AD";
    f.dates.Menu_Chooser = [&](const std::vector<std::string>& captions) {
        offered = captions;
        return choice;
    };

    // 100 BC to AD 100: the calendar stays Julian and no event is raised.
    f.dates.Set_Calendar(true);
    f.dates.Set_LMT(Date(-100, 6, 1), true);
    f.calendars.clear();
    f.Click(f.dates.MyYearLabel, Qt::RightButton);
    EXPECT_EQ(offered, (std::vector<std::string>{"Use Gregorian Calender", "AD"}));
    EXPECT_EQ(f.bitmaps, "release restore ");
    EXPECT_EQ(f.dates.MySystemTime.wYear, 100);
    EXPECT_TRUE(f.calendars.empty());
    EXPECT_NE(f.dates.JulDates, 0);
    ASSERT_EQ(f.changes.size(), 1u);
    EXPECT_DOUBLE_EQ(f.changes.back(), Calc_JD(Date(100, 6, 1), true));

    // 3000 BC to AD 3000 on the Julian calendar: one event, to the Gregorian.
    f.dates.Set_LMT(Date(-3000, 6, 1), true);
    f.Click(f.dates.MyDayLabel, Qt::RightButton);
    EXPECT_EQ(f.dates.MySystemTime.wYear, 3000);
    EXPECT_EQ(f.calendars, std::vector<bool>{false});
    EXPECT_EQ(f.dates.JulDates, 0);
    EXPECT_DOUBLE_EQ(f.changes.back(), Calc_JD(Date(3000, 6, 1), false));

    // On the zone label "Time Zone" is offered too, and opens the time options.
    choice = "Time Zone";
    f.Click(f.dates.MyLMTlabel, Qt::RightButton);
    EXPECT_EQ(offered, (std::vector<std::string>{"Use Julian Calender", "BC", "Time Zone"}));
    EXPECT_EQ(f.timeOptions, 1);
    // A right click off the strip offers nothing.
    offered.clear();
    QTest::mouseClick(&f, Qt::RightButton, {}, QPoint(5, f.height() - 5));
    EXPECT_TRUE(offered.empty());
}

TEST(StripOnAForm, TheWordsArePaintedWhereTheyBelong) {
    Form f;
    f.dates.Configure_Standard_Dates(false, &f, f.width());
    const QRect era = To_QRect(f.dates.MyBClabel);
    const QRect julian = To_QRect(f.dates.MyJulianLabel);
    // A year before Christ on the Julian calendar: "BC" and "Julian" are painted.
    f.dates.Set_Calendar(true);
    f.dates.Set_LMT(Date(-44, 3, 15), true);
    EXPECT_GT(Dark_Pixels(f.picture, era), 20);
    EXPECT_GT(Dark_Pixels(f.picture, julian), 10);
    Save_Screenshot(f, "date_strip_bc_julian");
    // A Gregorian year of our time: neither (painting over the same picture).
    f.dates.Set_Calendar(false);
    f.dates.Set_LMT(Date(2026, 9, 23), true);
    EXPECT_EQ(Dark_Pixels(f.picture, era), 0);
    EXPECT_EQ(Dark_Pixels(f.picture, julian), 0);
    // A disabled strip is drawn in grey and takes no clicks.
    f.dates.MyDateIsDisabled = kTrue;
    f.dates.Paint_Dates(false);
    EXPECT_EQ(Dark_Pixels(f.picture, To_QRect(f.dates.MyMonthLabel)), 0);
    f.show();
    f.Click(f.dates.MyDayLabel);
    EXPECT_FALSE(Edit.Editing);
}

TEST(StripOnAForm, ADateTimeGroupEditsDayHourAndMinute) {
    Form f;
    f.show();
    f.dates.Configure_for_DTG(4, &f);
    f.dates.My_TZ_Bias(60);
    f.dates.Set_LMT(Date(2011, 7, 12, 8, 30, 10), true);
    EXPECT_EQ(f.dates.DTG_Text(), "12/ 08:30 Z+1");
    f.Click(f.dates.MyHourLabel);
    ASSERT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Field, "Hour");
    f.Keys("21");  // the group is complete, the minute opens
    EXPECT_EQ(Edit.Field, "Minute");
    f.Key(Qt::Key_Escape);
    // The row's owner hears of it through DTG_Change, not DateChange.
    EXPECT_TRUE(f.changes.empty());
    ASSERT_EQ(f.dtgChanges.size(), 1u);
    EXPECT_EQ(f.dtgChanges[0].second, 4);
    EXPECT_DOUBLE_EQ(f.dtgChanges[0].first, Calc_JD(Date(2011, 7, 12, 21, 30, 0), false));
    EXPECT_EQ(f.dates.DTG_Text(), "12/ 21:30 Z+1");
}

TEST(LatLongOnAForm, AnglesTypedIntoTheLatitude) {
    Form f;
    f.show();
    f.pair.ResetDecPlaces(2);
    f.pair.Set_Latitude(10.0 / kDeg);
    f.pair.Set_Longitude(-20.5 / kDeg);
    f.pair.MyLatLongPosn(20, 120);
    f.pair.DrawMe();
    EXPECT_EQ(f.pair.LatString, Format_Lat(10.0 / kDeg, 2, false));
    EXPECT_EQ(f.pair.LongtString, Format_Long(-20.5 / kDeg, 2, false));

    QTest::mouseClick(&f, Qt::LeftButton, {},
                      QPoint(f.pair.MyLatRect.Left + 8, Centre(f.pair.MyLatRect).y()));
    ASSERT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Field, "Lat");
    EXPECT_EQ(Edit.Class, "Options");
    f.Keys("95");  // above 90: a beep, and the 5 is not taken
    EXPECT_EQ(f.Beeps, 1);
    EXPECT_EQ(Edit_Display_Text(), "9\u00B0 N");
    f.Keys("0 6");  // 90° 6' is past the pole as well
    EXPECT_EQ(f.Beeps, 2);
    for (int i = 0; i < 3; ++i) f.Key(Qt::Key_Backspace);
    f.Keys("4 60");  // minutes of 60
    EXPECT_EQ(f.Beeps, 3);
    EXPECT_EQ(Edit_Display_Text(), "4\u00B0 6' N");
    f.Key(Qt::Key_Escape);
    EXPECT_DOUBLE_EQ(f.pair.Latitude(), 10.0 / kDeg);
    EXPECT_EQ(f.pairChanges, 0);

    QTest::mouseClick(&f, Qt::LeftButton, {},
                      QPoint(f.pair.MyLatRect.Left + 8, Centre(f.pair.MyLatRect).y()));
    f.Keys("45 560");  // a third digit of minutes
    EXPECT_EQ(f.Beeps, 4);
    f.Keys(".25-");
    QApplication::processEvents();
    Save_Screenshot(f, "latlong_edit");
    f.Key(Qt::Key_Return);
    EXPECT_NEAR(f.pair.Latitude() * kDeg, -(45 + 56.25 / 60), 1e-12);
    EXPECT_EQ(f.pair.LatString, Format_Lat(f.pair.Latitude(), 2, false));
    EXPECT_EQ(f.pairChanges, 1);

    // A click on the hemisphere letter of the longitude flips it to the east.
    f.Click(f.pair.Hemisphere_Rect(false));
    EXPECT_DOUBLE_EQ(f.pair.Longitude(), 20.5 / kDeg);
    EXPECT_FALSE(Edit.Editing);
    EXPECT_EQ(f.pairChanges, 2);
}

TEST(LatLongOnAForm, TheThreeLayoutsAndTheirEdits) {
    Form f;
    f.show();
    cLatLongView shaDec(&f), altAz(&f);
    for (cLatLongView* p : {&shaDec, &altAz}) {
        p->ClassOwner = &f;
        p->ClassOwnerType = "CellEdit";
        f.morePairs.push_back(p);
    }
    f.pair.Set_Latitude(-33.87 / kDeg);
    f.pair.Set_Longitude(151.21 / kDeg);
    f.pair.MyLatLongPosn(20, 20);
    shaDec.Set_SHA(-10.0 / kDeg);
    shaDec.Set_Declination(-16.72 / kDeg);
    shaDec.MyShaDecPosn(20, 110);
    altAz.Set_Altitude(-0.75 / kDeg);
    altAz.Set_Azimuth(271.5 / kDeg);
    altAz.MyAltAzPosn(330, 20);
    // The strings come from the formatting rules with the control's places.
    EXPECT_EQ(f.pair.LongtString, Format_Long(151.21 / kDeg, 2, false));
    EXPECT_EQ(shaDec.First_Field(), "Dec");
    EXPECT_EQ(shaDec.Second_Field(), "SHA");
    EXPECT_EQ(shaDec.LatString, Format_Lat(-16.72 / kDeg, 2, false));
    EXPECT_EQ(shaDec.LongtString, Format_Angle(350.0 / kDeg, 2, false));
    EXPECT_GT(altAz.MyLongtFrame.Top, altAz.MyLatFrame.Top);  // stacked
    altAz.ResetDecPlaces(0);
    EXPECT_EQ(altAz.AzString, Format_Angle(271.5 / kDeg, 0, false));
    EXPECT_EQ(altAz.AltString, "-" + Format_Angle(0.75 / kDeg, 0, false));
    f.pair.ResetDecPlaces(3);
    EXPECT_EQ(f.pair.LatString, Format_Lat(-33.87 / kDeg, 3, false));
    for (cLatLong* p : {static_cast<cLatLong*>(&f.pair), static_cast<cLatLong*>(&shaDec),
                        static_cast<cLatLong*>(&altAz)})
        p->Draw_Layout();
    QApplication::processEvents();
    Save_Screenshot(f, "latlong_layouts");

    // A click on the SHA opens an angle edit of three places of degrees; on the azimuth a
    // course edit in degrees.
    f.Click(shaDec.MyLongtRect);
    ASSERT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Field, "SHA");
    EXPECT_EQ(Edit.Class, "CellEdit");
    f.Keys("2583");
    f.Key(Qt::Key_Return);
    EXPECT_NEAR(shaDec.SHA() * kDeg, 258 + 3 / 60.0, 1e-12);
    f.Click(altAz.MyLongtRect);
    ASSERT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Field, "Az");
    f.Keys("0905");
    f.Key(Qt::Key_Return);
    EXPECT_NEAR(altAz.Azimuth() * kDeg, 90.5, 1e-12);
    // The altitude takes a sign, and stops at 90.
    f.Click(altAz.MyLatRect);
    EXPECT_EQ(Edit.Field, "Alt");
    const int beeps = f.Beeps;
    f.Keys("91");
    EXPECT_EQ(f.Beeps, beeps + 1);
    f.Keys(" 30-");
    f.Key(Qt::Key_Return);
    EXPECT_NEAR(altAz.Altitude() * kDeg, -9.5, 1e-12);
    EXPECT_EQ(f.pairChanges, 3);
    f.morePairs.clear();  // the pairs go before the form
}

TEST(ComboOnAForm, TheListFollowsMouseAndArrowsAndRaisesItsEvent) {
    Form f;
    f.show();
    f.combo.Name = "cmbStars";
    f.combo.Box = {20, 20, 220, 42};
    f.combo.SetList({"Sirius", "Canopus", "Arcturus", "Rigil Kentaurus", "Vega", "Capella"});
    f.combo.SetIndex(1);
    std::vector<std::string> events;
    f.combo.event1 = [&](myCombo& c) { events.push_back(c.Text); };
    EXPECT_EQ(f.combo.Text, "Canopus");

    f.Click(f.combo.Box);
    ASSERT_TRUE(f.combo.ListVisible);
    QWidget* list = f.combo.List_Window();
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->isVisible());
    EXPECT_EQ(list->geometry(), To_QRect(f.combo.List_Rect()));
    EXPECT_EQ(list->geometry().top(), f.combo.Box.Bottom);  // under the box
    EXPECT_EQ(f.combo.MyHighlighter, 1);

    // The highlight follows the mouse over the list, and the arrows.
    QTest::mouseMove(list, Centre(f.combo.HighlightRect(3)));
    EXPECT_EQ(f.combo.MyHighlighter, 3);
    f.Key(Qt::Key_Down);
    EXPECT_EQ(f.combo.MyHighlighter, 4);
    f.Key(Qt::Key_Up);
    f.Key(Qt::Key_Up);
    EXPECT_EQ(f.combo.MyHighlighter, 2);
    QApplication::processEvents();
    Save_Screenshot(f, "combo_open");
    EXPECT_TRUE(events.empty());

    // A click on a line takes it.
    QTest::mouseClick(list, Qt::LeftButton, {}, Centre(f.combo.HighlightRect(4)));
    EXPECT_FALSE(f.combo.ListVisible);
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(f.combo.Text, "Vega");
    EXPECT_EQ(events, (std::vector<std::string>{"Vega"}));

    // Keys open the list; Enter takes the highlight, Escape leaves the choice.
    f.Key(Qt::Key_Down);
    ASSERT_TRUE(f.combo.ListVisible);
    f.Key(Qt::Key_Down);
    f.Key(Qt::Key_Return);
    EXPECT_EQ(f.combo.Text, "Capella");
    f.Key(Qt::Key_Down);
    f.Key(Qt::Key_Up);
    f.Key(Qt::Key_Escape);
    EXPECT_EQ(f.combo.Text, "Capella");
    EXPECT_EQ(events.size(), 2u);
    // Losing the focus closes the list.
    f.Key(Qt::Key_Down);
    f.combo.TestFocus(false);
    EXPECT_FALSE(f.combo.ListVisible);
}

TEST(ComboOnAForm, AListWhoseWindowWentFirstIsLetGo) {
    struct Host : PictureForm {
        QImage picture{200, 100, QImage::Format_RGB32};
        QWidget* window = new QWidget;
        QImage& Form_Picture() override { return picture; }
        QWidget* Form_Window() const override { return window; }
        void Redraw_Cell(const Rect&) override {}
    } host;
    auto combo = std::make_unique<myComboView>(&host);
    combo->Box = {5, 5, 150, 25};
    combo->SetList({"Kochab", "Polaris"});
    combo->DisplayList();
    ASSERT_NE(combo->List_Window(), nullptr);
    delete host.window;  // takes the list window with it
    host.window = nullptr;
    EXPECT_EQ(combo->List_Window(), nullptr);
    combo->Restore_Original_Posn();  // closing a list that is gone does nothing
    combo.reset();
}

// ------------------------------------------------------------ the hook

class Recorder : public SysMsgSink {
  public:
    void SysMsg_VChange(int32_t pos) override { log.push_back("V " + std::to_string(pos)); }
    void SysMsg_HChange(int32_t pos) override { log.push_back("H " + std::to_string(pos)); }
    void SysMsg_MouseUp(int32_t b, int32_t s, int32_t x, int32_t y) override {
        Add("Up", b, s, x, y);
    }
    void SysMsg_MouseDown(int32_t b, int32_t s, int32_t x, int32_t y) override {
        Add("Down", b, s, x, y);
    }
    void SysMsg_MouseMove(int32_t b, int32_t s, int32_t x, int32_t y) override {
        Add("Move", b, s, x, y);
    }
    void SysMsg_MouseScroll(int32_t d, int32_t s, int32_t x, int32_t y) override {
        Add("Wheel", d, s, x, y);
    }
    void SysMsg_Paint() override { ++paints; }
    void SysMsg_SetCursor() override { ++cursors; }
    void SysMsg_FocusChange(int32_t active) override {
        log.push_back("Focus " + std::to_string(active));
    }
    void SysMsg_Resize(int32_t w, int32_t h) override { Add("Size", w, h, 0, 0); }
    void SysMsg_hScrollColmShift(int32_t c) override { log.push_back("Colm " + std::to_string(c)); }
    void Add(const char* what, int32_t a, int32_t b, int32_t x, int32_t y) {
        log.push_back(std::string(what) + " " + std::to_string(a) + " " + std::to_string(b) + " " +
                      std::to_string(x) + " " + std::to_string(y));
    }
    std::vector<std::string> log;
    int paints = 0;
    int cursors = 0;
};

// A window hooked to a recorder, shown, with the log of its showing cleared.
class HookedWindow : public ::testing::Test {
  protected:
    void SetUp() override {
        window.resize(300, 200);
        ASSERT_TRUE(hook.SubClass(&window));
        window.show();
        QApplication::processEvents();
        r.log.clear();
    }
    QWidget window;
    Recorder r;
    cSubClass hook{&r};
};

TEST_F(HookedWindow, MouseEventsCarryButtonShiftAndPosition) {
    cSubClass second(&r);
    EXPECT_FALSE(second.SubClass(&window));  // hooked already: nothing happens
    EXPECT_TRUE(window.testAttribute(Qt::WA_OpaquePaintEvent));
    QTest::mouseClick(&window, Qt::RightButton, Qt::ShiftModifier | Qt::ControlModifier,
                      QPoint(40, 50));
    QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(7, 8));
    EXPECT_EQ(r.log, (std::vector<std::string>{"Down 2 3 40 50", "Up 2 3 40 50", "Down 1 0 7 8",
                                               "Up 1 0 7 8"}));
    r.log.clear();
    QWheelEvent wheel(QPointF(11, 12), window.mapToGlobal(QPointF(11, 12)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&window, &wheel);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&window, &leave);
    window.resize(320, 210);
    QApplication::processEvents();
    ASSERT_GE(r.log.size(), 3u);
    EXPECT_EQ(r.log[0], "Wheel -120 2 11 12");
    EXPECT_EQ(r.log[1], "Move 0 0 -10 -10");
    EXPECT_EQ(r.log.back(), "Size 320 210 0 0");
    window.repaint();
    EXPECT_GT(r.paints, 0);
    hook.Release();
    EXPECT_TRUE(second.SubClass(&window));  // released: another may hook it
}

TEST_F(HookedWindow, FocusDoubleClicksButtonsHeldAndTheSpecialWindows) {
    QEvent on(QEvent::WindowActivate), off(QEvent::WindowDeactivate);
    QApplication::sendEvent(&window, &on);
    QApplication::sendEvent(&window, &off);
    // A double click is a button down; the middle button goes down but never up.
    QMouseEvent twice(QEvent::MouseButtonDblClick, QPointF(30, 40),
                      window.mapToGlobal(QPointF(30, 40)), Qt::LeftButton, Qt::LeftButton,
                      Qt::ShiftModifier);
    QApplication::sendEvent(&window, &twice);
    QTest::mouseClick(&window, Qt::MiddleButton, {}, QPoint(5, 6));
    // A move with the left button held and Ctrl down carries both, and sets the cursor.
    const int cursorsBefore = r.cursors;
    QMouseEvent drag(QEvent::MouseMove, QPointF(50, 60), window.mapToGlobal(QPointF(50, 60)),
                     Qt::NoButton, Qt::LeftButton, Qt::ControlModifier);
    QApplication::sendEvent(&window, &drag);
    EXPECT_EQ(r.log, (std::vector<std::string>{"Focus 1", "Focus 0", "Down 1 1 30 40",
                                               "Down 4 0 5 6", "Move 1 2 50 60"}));
    EXPECT_EQ(r.cursors, cursorsBefore + 1);

    // The "Increments" window keeps its width of 500.
    hook.ScreenKey = "Increments";
    window.resize(640, 240);
    QApplication::processEvents();
    EXPECT_EQ(window.width(), 500);
    EXPECT_EQ(window.height(), 240);
    // Moving the "Find Star" window raises a resize with its size.
    hook.ScreenKey = "Find Star";
    r.log.clear();
    QMoveEvent moved(QPoint(20, 30), QPoint(0, 0));
    QApplication::sendEvent(&window, &moved);
    EXPECT_EQ(r.log, (std::vector<std::string>{"Size 500 240 0 0"}));
}

TEST(Hook, TheColumnOfAPixelAndTheTenthColumnOfTheLunations) {
    // Ten headings 100 pixels wide from x = 25: centres at 50, 150, .. 950 from the first.
    std::vector<Rect> headings;
    for (int i = 0; i < 10; ++i) headings.push_back({25 + 100 * i, 0, 125 + 100 * i, 20});
    EXPECT_EQ(Find_HScroll_Colm(0, headings, false), 0);
    EXPECT_EQ(Find_HScroll_Colm(49, headings, false), 0);
    EXPECT_EQ(Find_HScroll_Colm(50, headings, false), 1);  // the centre itself is not right of it
    EXPECT_EQ(Find_HScroll_Colm(420, headings, false), 4);
    EXPECT_EQ(Find_HScroll_Colm(5000, headings, false), 9);
    EXPECT_EQ(Find_HScroll_Colm(5000, headings, true), 10);  // the tenth is reached
    headings.resize(6);
    EXPECT_EQ(Find_HScroll_Colm(5000, headings, true), 6);
    EXPECT_EQ(Find_HScroll_Colm(5000, {}, false), 0);
    // A step never goes past the last column, or the tenth on Lunations.
    headings.resize(10, Rect{});
    for (int i = 6; i < 10; ++i)
        headings[static_cast<size_t>(i)] = {25 + 100 * i, 0, 125 + 100 * i, 20};
    EXPECT_EQ(HScroll_Column_Step(9, ScrollAction::LineDown, 0, headings, 3, false), 9);
    EXPECT_EQ(HScroll_Column_Step(9, ScrollAction::LineDown, 0, headings, 3, true), 10);
    EXPECT_EQ(HScroll_Column_Step(8, ScrollAction::PageDown, 0, headings, 3, true), 10);
    EXPECT_EQ(HScroll_Column_Step(2, ScrollAction::PageUp, 0, headings, 3, false), 0);
    EXPECT_EQ(HScroll_Column_Step(5, ScrollAction::Top, 0, headings, 3, false), 0);
}

TEST_F(HookedWindow, ScrollBarsStepByRowsPixelsOrWholeColumns) {
    window.resize(400, 300);
    QApplication::processEvents();
    r.log.clear();
    hook.Set_VScroll_Info(99, 100);  // the range does not exceed the page: no bar
    EXPECT_FALSE(hook.VBar()->isVisibleTo(&window));
    hook.Set_VScroll_Info(199, 50);
    EXPECT_TRUE(hook.VBar()->isVisibleTo(&window));
    hook.Small_Change = 3;
    hook.ScrollProc(Qt::Vertical, ScrollAction::LineDown);
    hook.ScrollProc(Qt::Vertical, ScrollAction::PageDown);
    hook.ScrollProc(Qt::Vertical, ScrollAction::Bottom);
    hook.ScrollProc(Qt::Vertical, ScrollAction::ThumbTrack, 20);
    EXPECT_EQ(r.log, (std::vector<std::string>{"V 3", "V 53", "V 150", "V 20"}));
    // A real click on the bar's lower arrow goes the same way.
    r.log.clear();
    const QRect bar = hook.VBar()->geometry();
    QTest::mouseClick(hook.VBar(), Qt::LeftButton, {}, QPoint(bar.width() / 2, bar.height() - 4));
    ASSERT_FALSE(r.log.empty());
    EXPECT_EQ(r.log[0], "V 23");

    // A grid steps by whole columns.
    r.log.clear();
    hook.ScreenKey = "AltAz";
    hook.ColumnRects = {{25, 0, 125, 20},
                        {125, 0, 185, 20},
                        {185, 0, 305, 20},
                        {305, 0, 405, 20},
                        {405, 0, 505, 20}};
    hook.ColumnsOnShow = 2;
    hook.Set_HScroll_Info(480, 380);
    hook.ScrollProc(Qt::Horizontal, ScrollAction::LineDown);
    EXPECT_EQ(hook.HPos(), 100);
    hook.ScrollProc(Qt::Horizontal, ScrollAction::PageDown);
    hook.ScrollProc(Qt::Horizontal, ScrollAction::ThumbTrack, 170);
    hook.ScrollProc(Qt::Horizontal, ScrollAction::LineUp);
    EXPECT_EQ(r.log, (std::vector<std::string>{"Colm 1", "Colm 3", "Colm 2", "Colm 1"}));
    EXPECT_EQ(hook.HPos(), 100);  // the left of column 1
    hook.ScrollProc(Qt::Horizontal, ScrollAction::PageDown);
    EXPECT_EQ(hook.HPos(), 101);  // column 3 starts at 280, held to the bar's highest
    // The pixel screens step by 15 for a line.
    r.log.clear();
    hook.ScreenKey = "Almanac";
    hook.HScroll_Primer();
    hook.ScrollProc(Qt::Horizontal, ScrollAction::LineDown);
    EXPECT_EQ(r.log, (std::vector<std::string>{"H 15"}));
}

}  // namespace
}  // namespace kelmoran
