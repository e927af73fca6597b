// The Almanac window, driven with real keys and looked at as a picture: its own date, Tab
// and the arrows between the fields, stepping across a month's end, and an opening whose
// every text fits the box the layout gives it.
#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QTest>

#include "../shell/Ui_Screens.h"
#include "almanac/AlmanacWindow.h"
#include "shell/M_Edit.h"

namespace kelmoran {
namespace {

using ui_test::Save_Png;

// 2026 November 29, 0h UT, as the program counts days.
constexpr double k29Nov2026 = 9828.5;

TEST(AlmanacWindow, KeysStepTheDateAndTheWindowKeepsItsOwn) {
    fMain main;
    main.show();
    main.Window_Action(Window_Index_Of(screen_key::Almanac))->trigger();
    AlmanacWindow* w = main.Show_Almanac();
    ASSERT_TRUE(w->isVisible());
    w->resize(1100, 760);
    w->Start_At(k29Nov2026 + 0.7);  // any moment of the day starts the opening at its 0h
    EXPECT_DOUBLE_EQ(w->MyJD(), k29Nov2026);
    EXPECT_EQ(w->Heading(), "2026 NOVEMBER 29, 30, DECEMBER 1 (SUN., MON., TUE.)");

    QWidget* client = w->Client();
    client->setFocus();
    QTest::keyClick(client, Qt::Key_Tab);
    ASSERT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Field, "Day");
    QTest::keyClick(client, Qt::Key_Right);
    EXPECT_EQ(Edit.Field, "Month");
    QTest::keyClick(client, Qt::Key_Left);
    EXPECT_EQ(Edit.Field, "Day");
    QTest::keyClick(client, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(Edit.Field, "Year");
    QTest::keyClick(client, Qt::Key_Tab);
    EXPECT_EQ(Edit.Field, "Day");
    // "+" steps the day: the opening runs across the month's end.
    QTest::keyClick(client, '+');
    QTest::keyClick(client, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(w->MyJD(), k29Nov2026 + 1.0);
    EXPECT_EQ(w->Days()[0].Day, 30);
    EXPECT_EQ(w->Days()[1].Day, 1);
    EXPECT_EQ(w->Days()[2].Day, 2);
    EXPECT_EQ(w->Heading(), "2026 NOVEMBER 30, DECEMBER 1, 2 (MON., TUE., WED.)");
    // Typed fields: a complete month moves on to the year, a complete day to the month.
    // 31 December runs into the next year.
    QTest::keyClick(client, Qt::Key_Tab);
    QTest::keyClick(client, Qt::Key_Right);
    QTest::keyClicks(client, "Dec");
    EXPECT_EQ(Edit.Field, "Year");
    QTest::keyClick(client, Qt::Key_Left);
    QTest::keyClick(client, Qt::Key_Left);
    QTest::keyClicks(client, "31");
    EXPECT_EQ(Edit.Field, "Month");
    QTest::keyClick(client, Qt::Key_Return);
    EXPECT_EQ(w->Heading(), "2026 DECEMBER 31, 2027 JANUARY 1, 2 (THURS., FRI., SAT.)");

    // Main's moment moves; the Almanac's does not.
    const double shown = w->MyJD();
    MyDates_DateChange(screen_key::Splash, Shell.CurrentJD + 40.0);
    EXPECT_DOUBLE_EQ(w->MyJD(), shown);

    QApplication::processEvents();
    Save_Png(w->Picture(), "almanac", "window");
    // Scrolled to the foot of the pages.
    QTest::keyClick(client, Qt::Key_End);
    Save_Png(w->Picture(), "almanac", "window_foot");
    // Large enough for the whole opening.
    w->resize(1900, 1260);
    QApplication::processEvents();
    Save_Png(w->Picture(), "almanac", "window_opening");
    w->close();
}

// No text of either page runs out of its box: nothing is clipped or overlaps its
// neighbour, whatever the figures of the day.
TEST(AlmanacWindow, EveryTextFitsItsBox) {
    AlmanacWindow w;
    for (double jd : {k29Nov2026, -36524.5 /* 1900 Jan 1 */, 146096.5 /* 2400 Jan 1 */}) {
        w.Start_At(jd);
        for (const PagePicture* page : {&w.Left_Page(), &w.Right_Page()}) {
            EXPECT_GT(page->Texts.size(), 600u);
            for (const PageText& t : page->Texts) {
                QFont f("DejaVu Serif");
                f.setPixelSize(t.Font == PageFont::Title ? 15 : t.Font == PageFont::Heading ? 12 : 11);
                f.setBold(t.Font == PageFont::Title || t.Font == PageFont::Heading);
                f.setItalic(t.Font == PageFont::Label);
                EXPECT_LE(QFontMetricsF(f).horizontalAdvance(Q(t.Text)), t.W + 0.5)
                    << t.Text << " at " << t.X << "," << t.Y;
                EXPECT_LE(t.X + t.W, page->Width) << t.Text;
                EXPECT_LE(t.Y + t.H, page->Height) << t.Text;
            }
        }
    }
}

}  // namespace
}  // namespace kelmoran
