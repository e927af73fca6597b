// The painted controls headless, driven by real key and mouse events on real widgets: the
// date strip of the Main screen through fMain's hook, a strip, a lat/long pair and a combo
// on a form of their own; and pictures of them written under the build folder.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QTest>
#include <QWheelEvent>

#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "shell/Date_Record.h"
#include "shell/M_Edit.h"
#include "shell/SplashScreen.h"
#include "shell/cDatesView.h"
#include "shell/cLatLongView.h"
#include "shell/cSubClass.h"
#include "shell/fMain.h"
#include "shell/myComboView.h"

namespace kelmoran {
namespace {

constexpr double kDeg = 57.2957795130823;

using testing_dates::Date;

QPoint Centre(const Rect& r) {
    return QPoint((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
}

void Save_Screenshot(QWidget& w, const char* name) {
    const QString dir = QString(KELMORAN_BINARY_DIR) + "/screenshots";
    QDir().mkpath(dir);
    const QImage shot = w.grab().toImage();
    ASSERT_FALSE(shot.isNull());
    EXPECT_TRUE(shot.save(dir + "/" + name + ".png")) << name;
}

// How many pixels of a rectangle of an image are dark: something has been drawn there.
int Dark_Pixels(const QImage& image, const QRect& r) {
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (image.valid(x, y) && qGray(image.pixel(x, y)) < 80) ++n;
    return n;
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
    void Type(const char* keys) {
        for (const char* k = keys; *k; ++k) QTest::keyClick(client, *k);
    }
    void Key(Qt::Key key) { QTest::keyClick(client, key); }
    void Wheel(const char* field, int delta) {
        const QPoint at = Centre(Strip().Field_Rect(field));
        QWheelEvent e(at, client->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(client, &e);
    }
    // The moment reached the shell and the screen, and the screen shows it.
    void Expect_Moment(const MySystemTime& date, bool julian = false) {
        EXPECT_DOUBLE_EQ(Shell.CurrentJD, Calc_JD(date, julian));
        EXPECT_EQ(splash->MyJD(), Shell.CurrentJD);
        EXPECT_EQ(Strip().MySystemTime.wYear, date.wYear);
        EXPECT_EQ(Strip().MySystemTime.wMonth, date.wMonth);
        EXPECT_EQ(Strip().MySystemTime.wDay, date.wDay);
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
    // Main's page was worked out again for the new moment.
    const MainPage march = Main_Rows(Shell.CurrentJD, false);
    ASSERT_EQ(splash->Page().Day.size(), march.Day.size());
    for (size_t i = 0; i < march.Day.size(); ++i)
        EXPECT_EQ(splash->Page().Day[i].Value, march.Day[i].Value);
    // The change went round by Update_All_Screens: Main counts as up to date, the others
    // are to catch up.
    EXPECT_EQ(Shell.Up_To_Date(screen_key::AltAz), kFalse);
    EXPECT_EQ(Shell.Up_To_Date(screen_key::Splash), kTrue);

    Click("Month");
    Type("J");
    Key(Qt::Key_Return);
    Expect_Moment(Date(2010, 1, 4, 9, 15, 30));

    Show(Date(2010, 7, 4, 9, 15, 30));
    Click("Year");
    Type("93");
    Key(Qt::Key_Return);
    Expect_Moment(Date(1993, 7, 4, 9, 15, 30));
    Show(Date(2010, 7, 4, 9, 15, 30));
    Click("Year");
    Type("07");
    Key(Qt::Key_Return);
    Expect_Moment(Date(2007, 7, 4, 9, 15, 30));
}

TEST_F(MainStrip, PlusAndMinusRollTheMonth) {
    Show(Date(2011, 1, 31));
    Click("Day");
    Type("+");
    Expect_Moment(Date(2011, 2, 1));
    Key(Qt::Key_Escape);
    Show(Date(2011, 3, 31));
    Click("Month");
    Type("-");
    Expect_Moment(Date(2011, 2, 28));
    Key(Qt::Key_Escape);
    Show(Date(2012, 3, 31));
    Click("Month");
    Type("-");
    Expect_Moment(Date(2012, 2, 29));
    Key(Qt::Key_Escape);
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

TEST_F(MainStrip, YearsAtTheEndsOfTheRange) {
    Show(Date(1, 6, 1), true);
    Click("Year");
    Type("-");
    Key(Qt::Key_Escape);
    Expect_Moment(Date(-1, 6, 1), true);
    Show(Date(9999, 6, 1));
    Click("Year");
    Type("+");
    Key(Qt::Key_Escape);
    Expect_Moment(Date(9999, 6, 1));
}

TEST_F(MainStrip, TwentyNinthOfFebruary1900DependsOnTheCalendar) {
    Show(Date(1900, 2, 10));
    Click("Day");
    Type("29");
    Key(Qt::Key_Escape);
    Expect_Moment(Date(1900, 2, 28));
    Show(Date(1900, 2, 10), true);
    Click("Day");
    Type("29");
    Key(Qt::Key_Escape);
    Expect_Moment(Date(1900, 2, 29), true);
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
    // Before the reform the Gregorian calendar cannot be chosen.
    Show(Date(1500, 6, 1), true);
    Strip().Menu_Chooser = [](const std::vector<std::string>&) {
        return std::string("Use Gregorian Calender");
    };
    Click("Day", Qt::RightButton);
    EXPECT_EQ(Shell.CalendarChoice, kTrue);
    Expect_Moment(Date(1500, 6, 1), true);
}

TEST_F(MainStrip, TheWheelStepsTheFieldUnderTheMouse) {
    Show(Date(2011, 12, 31, 23, 0, 0));
    const double before = Shell.CurrentJD;
    Wheel("Day", 120);
    Expect_Moment(Date(2012, 1, 1, 23, 0, 0));
    EXPECT_DOUBLE_EQ(Shell.CurrentJD - before, 1.0);
    Wheel("Hour", -240);
    EXPECT_NEAR(Shell.CurrentJD - before, 1.0 - 2.0 / 24.0, 1e-9);
    Wheel("Month", 60);  // half a notch does nothing yet
    EXPECT_NEAR(Shell.CurrentJD - before, 1.0 - 2.0 / 24.0, 1e-9);
    Wheel("Month", 60);
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
    Form()
        : picture(620, 320, QImage::Format_RGB32),
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
    }

    void MyDates_DateChange(cDates&, double jd) override { changes.push_back(jd); }
    void MyDates_CalenderChg(cDates&, bool) override {}
    void MyDates_TZChange(cDates&, int32_t) override {}
    EditCanvas* Edit_Form() override { return this; }
    std::string Owner_Type() const override { return "fMain"; }
    void LatLong_Change(cLatLong&) override { ++pairChanges; }

    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override {
        if (Edit.Editing && Edit.Cell.Contains(x, y)) {
            Edit_Click(x);
            return;
        }
        combo.myCombo::SysMsg_MouseDown(x, y);
        if (dates.MyFrame.Contains(x, y))
            dates.MouseDown(x, y, button, shift);
        else
            pair.MouseDown(x, y);
    }
    void SysMsg_KeyDown(int32_t key, int32_t) override {
        if (Edit.Editing)
            Edit_Key_Down(key);
        else if (combo.HasFocus)
            combo.Display_List_By_KeyDown(key);
    }
    void SysMsg_KeyPress(int32_t c) override { Edit_Key_Press(c); }

    QImage picture;
    cSubClass hook;
    cDatesView dates;
    cLatLongView pair;
    myComboView combo;
    std::vector<double> changes;
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
    QTest::mouseClick(&f, Qt::LeftButton, {}, Centre(f.dates.MyMinuteLabel));
    QTest::keyClick(&f, '+');
    QTest::keyClick(&f, Qt::Key_Escape);
    ASSERT_EQ(f.changes.size(), 1u);
    EXPECT_DOUBLE_EQ(f.changes[0], Calc_JD(Date(2011, 7, 4, 12, 36, 0), false));
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
    QTest::keyClicks(&f, "95");  // above 90: a beep, and the 5 is not taken
    EXPECT_EQ(f.Beeps, 1);
    EXPECT_EQ(Edit_Display_Text(), "9\u00B0 N");
    QTest::keyClicks(&f, "0 6");  // 90° 6' is past the pole as well
    EXPECT_EQ(f.Beeps, 2);
    QTest::keyClick(&f, Qt::Key_Backspace);
    QTest::keyClick(&f, Qt::Key_Backspace);
    QTest::keyClick(&f, Qt::Key_Backspace);
    QTest::keyClicks(&f, "4 6");
    QTest::keyClick(&f, '0');  // minutes of 60
    EXPECT_EQ(f.Beeps, 3);
    EXPECT_EQ(Edit_Display_Text(), "4\u00B0 6' N");
    QTest::keyClick(&f, Qt::Key_Escape);
    EXPECT_DOUBLE_EQ(f.pair.Latitude(), 10.0 / kDeg);
    EXPECT_EQ(f.pairChanges, 0);

    QTest::mouseClick(&f, Qt::LeftButton, {},
                      QPoint(f.pair.MyLatRect.Left + 8, Centre(f.pair.MyLatRect).y()));
    QTest::keyClicks(&f, "45 5");
    QTest::keyClick(&f, '6');
    QTest::keyClick(&f, '0');  // a third digit of minutes
    EXPECT_EQ(f.Beeps, 4);
    QTest::keyClicks(&f, ".25-");
    QApplication::processEvents();
    Save_Screenshot(f, "latlong_edit");
    QTest::keyClick(&f, Qt::Key_Return);
    EXPECT_NEAR(f.pair.Latitude() * kDeg, -(45 + 56.25 / 60), 1e-12);
    EXPECT_EQ(f.pair.LatString, Format_Lat(f.pair.Latitude(), 2, false));
    EXPECT_EQ(f.pairChanges, 1);

    // A click on the hemisphere letter of the longitude flips it to the east.
    QTest::mouseClick(&f, Qt::LeftButton, {}, Centre(f.pair.Hemisphere_Rect(false)));
    EXPECT_DOUBLE_EQ(f.pair.Longitude(), 20.5 / kDeg);
    EXPECT_FALSE(Edit.Editing);
    EXPECT_EQ(f.pairChanges, 2);

    // The other layouts give their own strings and fields.
    f.pair.Set_SHA(-10.0 / kDeg);
    f.pair.MyShaDecPosn(20, 200);
    EXPECT_EQ(f.pair.Second_Field(), "SHA");
    EXPECT_EQ(f.pair.LongtString, Format_Angle(350.0 / kDeg, 2, false));
    f.pair.MyAltAzPosn(330, 120);
    EXPECT_GT(f.pair.MyLongtFrame.Top, f.pair.MyLatFrame.Top);
    f.pair.ResetDecPlaces(0);
    EXPECT_EQ(f.pair.AzString, Format_Angle(f.pair.Azimuth(), 0, false));
    f.pair.Draw_Layout();
    QApplication::processEvents();
    Save_Screenshot(f, "latlong_layouts");
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

    QTest::mouseClick(&f, Qt::LeftButton, {}, Centre(f.combo.Box));
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
    QTest::keyClick(&f, Qt::Key_Down);
    EXPECT_EQ(f.combo.MyHighlighter, 4);
    QTest::keyClick(&f, Qt::Key_Up);
    QTest::keyClick(&f, Qt::Key_Up);
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
    QTest::keyClick(&f, Qt::Key_Down);
    ASSERT_TRUE(f.combo.ListVisible);
    QTest::keyClick(&f, Qt::Key_Down);
    QTest::keyClick(&f, Qt::Key_Return);
    EXPECT_EQ(f.combo.Text, "Capella");
    QTest::keyClick(&f, Qt::Key_Down);
    QTest::keyClick(&f, Qt::Key_Up);
    QTest::keyClick(&f, Qt::Key_Escape);
    EXPECT_EQ(f.combo.Text, "Capella");
    EXPECT_EQ(events.size(), 2u);
    // Losing the focus closes the list.
    QTest::keyClick(&f, Qt::Key_Down);
    f.combo.TestFocus(false);
    EXPECT_FALSE(f.combo.ListVisible);
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
    void SysMsg_Resize(int32_t w, int32_t h) override { Add("Size", w, h, 0, 0); }
    void SysMsg_hScrollColmShift(int32_t c) override { log.push_back("Colm " + std::to_string(c)); }
    void Add(const char* what, int32_t a, int32_t b, int32_t x, int32_t y) {
        log.push_back(std::string(what) + " " + std::to_string(a) + " " + std::to_string(b) + " " +
                      std::to_string(x) + " " + std::to_string(y));
    }
    std::vector<std::string> log;
    int paints = 0;
};

TEST(Hook, MouseEventsCarryButtonShiftAndPosition) {
    QWidget window;
    window.resize(300, 200);
    Recorder r;
    cSubClass hook(&r);
    ASSERT_TRUE(hook.SubClass(&window));
    cSubClass second(&r);
    EXPECT_FALSE(second.SubClass(&window));  // hooked already: nothing happens
    window.show();
    QApplication::processEvents();
    EXPECT_TRUE(window.testAttribute(Qt::WA_OpaquePaintEvent));
    r.log.clear();
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

TEST(Hook, ScrollBarsStepByRowsPixelsOrWholeColumns) {
    QWidget window;
    window.resize(400, 300);
    Recorder r;
    cSubClass hook(&r);
    hook.SubClass(&window);
    window.show();
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

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
