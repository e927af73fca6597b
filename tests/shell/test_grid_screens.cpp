// The table screens headless, driven by real key and mouse events on the main window: each
// screen from the Screen menu, the date through its strip, the cursor, the heading pop-up,
// widths and scrolling on made-up rows; then the program's own rows, with pictures of them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <algorithm>
#include <cstdio>

#include "settings/M_Formatting.h"
#include "shell/Screen_Cases.h"
#include "shell/SplashScreen.h"
#include "shell/Ui_Screens.h"

namespace kelmoran {
namespace {

using namespace ui_test;
using namespace testing_dates;

std::string Stamp(double jd) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.3f", jd);
    return buf;
}

// Rows made from the moment, so that a change of date shows in the cells: row r of AltAz
// has the day count plus r in column 3 and a sort key that falls with r in column 3 and
// rises in column 9.
AltAzRows Fake_AltAz(double jd, bool catalogue) {
    AltAzRows t;
    t.Rows = 30;
    t.Labels.assign(19, std::vector<std::string>(30));
    t.SortKeys.assign(19, std::vector<double>(30, 0.0));
    for (size_t r = 0; r < 30; ++r) {
        t.Labels[2][r] = "Body " + std::to_string(r);
        t.Labels[3][r] = Stamp(jd + static_cast<double>(r));
        t.Labels[14][r] = catalogue ? std::to_string(1000 + r) : "";
        t.Labels[18][r] = std::to_string(r);
        t.SortKeys[3][r] = 100.0 - static_cast<double>(r);
        t.SortKeys[9][r] = static_cast<double>(r % 7);
        t.BodyNumbers.push_back(static_cast<int32_t>(r));
    }
    return t;
}

std::vector<int32_t> Fake_Sort(const AltAzRows& rows, int32_t column, bool ascending) {
    std::vector<int32_t> order(static_cast<size_t>(rows.Rows));
    for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int32_t>(i);
    const auto& key = rows.SortKeys[static_cast<size_t>(column)];
    std::stable_sort(order.begin(), order.end(), [&](int32_t a, int32_t b) {
        const double ka = key[static_cast<size_t>(a)], kb = key[static_cast<size_t>(b)];
        return ascending ? ka < kb : ka > kb;
    });
    return order;
}

TableRows Fake_Table(double jd, int32_t rows, int32_t columns) {
    TableRows t;
    t.Rows = rows;
    t.Labels.assign(static_cast<size_t>(columns),
                    std::vector<std::string>(static_cast<size_t>(rows)));
    for (int32_t r = 0; r < rows; ++r) t.Labels[0][static_cast<size_t>(r)] = Stamp(jd + r);
    return t;
}

// The main window at a given size, Greenwich time, with keys and clicks on its client area.
class Window : public ::testing::Test {
  protected:
    void Make(int width, int height) {
        TZ_Bias = 0;
        Settings.AutoTimeZone = 0;
        w = std::make_unique<fMain>();
        w->resize(width, height);
        w->show();
        QApplication::processEvents();
        client = w->Client();
    }
    cGeneralForm* Open(int index) { return Open_Screen(*w, index); }
    void Key(Qt::Key key, Qt::KeyboardModifiers mods = {}) { QTest::keyClick(client, key, mods); }
    void Click(const Rect& r, Qt::MouseButton b = Qt::LeftButton) {
        QTest::mouseClick(client, b, {}, Centre(r));
    }
    void Wheel_Day(cDatesView& strip, int delta = 120) {
        Wheel(client, Centre(strip.Field_Rect("Day")), delta);
    }
    std::unique_ptr<fMain> w;
    QWidget* client = nullptr;
};

class GridScreens : public Window {
  protected:
    void SetUp() override {
        saved_ = Row_Sources();
        RowSources& s = Row_Sources();
        s.AltAz = [this](double jd, bool c) {
            ++altazCalls;
            catalogueAsked = catalogueAsked || c;
            return Fake_AltAz(jd, c);
        };
        s.Sort = Fake_Sort;
        s.Title = [] { return ColumnTitle{"Observed Altitude", "Obs. Alt."}; };
        s.Planets = [](double jd, int32_t rows, bool) { return Fake_Table(jd, rows, 16); };
        s.Lunations = [](double jd) { return Fake_Table(jd, 12, 10); };
        Make(900, 600);
    }
    void TearDown() override {
        w.reset();
        Row_Sources() = saved_;
    }
    int altazCalls = 0;
    bool catalogueAsked = false;

  private:
    RowSources saved_;
};

TEST_F(GridScreens, EachScreenOpensFromTheMenuAndComputesOnlyWhenShown) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    EXPECT_EQ(Shell.ScreenName, "AltAz");
    EXPECT_FALSE(w->Window_Action(0)->isVisible());
    EXPECT_TRUE(w->Find_Star_Action()->isEnabled());
    EXPECT_TRUE(w->Reset_Time_Action()->isEnabled());
    EXPECT_EQ(altaz->Grid().Bottomlabels, 29);
    EXPECT_EQ(altaz->Grid().MyColmTitles[3][0], "Observed Altitude");
    EXPECT_EQ(altazCalls, 1);

    cGeneralForm* planets = Open(4);
    ASSERT_NE(planets, nullptr);
    EXPECT_EQ(planets->ClassType(), "Planets");
    EXPECT_FALSE(w->Find_Star_Action()->isEnabled());
    EXPECT_FALSE(w->Reset_Time_Action()->isEnabled());
    EXPECT_EQ(planets->Grid().Bottomlabels + 1, planets->Grid().Page_Rows());  // fills the screen

    // Two changes of date on Solar Bodies leave AltAz alone; shown again, it computes once.
    const int before = altazCalls;
    Wheel_Day(planets->MyDates());
    EXPECT_EQ(planets->MyJD(), Shell.CurrentJD);
    Wheel_Day(planets->MyDates());
    EXPECT_EQ(altazCalls, before);
    Open(0);
    EXPECT_EQ(altazCalls, before + 1);
    EXPECT_EQ(altaz->MyJD(), Shell.CurrentJD);

    cGeneralForm* lunations = Open(3);
    ASSERT_NE(lunations, nullptr);
    EXPECT_EQ(lunations->MyDates().Caption, "Moon Phases for ");
    EXPECT_EQ(lunations->Grid().Bottomlabels, 11);
    EXPECT_EQ(lunations->Grid().ColmsInUse, 9);
    Open(2);
    EXPECT_EQ(Shell.ScreenName, "Splash");
}

TEST_F(GridScreens, DateChangedThroughTheStripReachesTheCells) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    const double start = Shell.CurrentJD;
    EXPECT_EQ(altaz->Grid().MyDataLabels[3][0], Stamp(start));
    // Day up by one with the wheel, then by typing into the hour field.
    Wheel_Day(altaz->MyDates());
    EXPECT_DOUBLE_EQ(Shell.CurrentJD, start + 1.0);
    EXPECT_EQ(altaz->Grid().MyDataLabels[3][0], Stamp(start + 1.0));

    const int newHour = (altaz->MyDates().MySystemTime.wHour + 5) % 24;
    Click(altaz->MyDates().Field_Rect("Hour"));
    QTest::keyClicks(client, QString::asprintf("%02d", newHour));
    Key(Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(altaz->MyDates().MySystemTime.wHour, newHour);
    EXPECT_EQ(altaz->MyJD(), Shell.CurrentJD);
    EXPECT_EQ(altaz->Grid().MyDataLabels[3][0], Stamp(Shell.CurrentJD));
    EXPECT_NE(Shell.CurrentJD, start + 1.0);
}

TEST_F(GridScreens, CursorKeysUpIntoTheStripAndDownBack) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    GridModel& g = altaz->Grid();
    EXPECT_TRUE(Shell.CursorShown);
    EXPECT_EQ(g.MyTrueRow, 0);
    for (Qt::Key k : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right}) Key(k);
    EXPECT_EQ(g.MyTrueRow, 2);
    EXPECT_EQ(g.MyTrueColm, 1);
    Key(Qt::Key_Up);
    Key(Qt::Key_Up);
    EXPECT_FALSE(g.CursorInDates);
    Key(Qt::Key_Up);
    EXPECT_TRUE(g.CursorInDates);
    EXPECT_FALSE(Shell.CursorShown);
    Key(Qt::Key_Down);
    EXPECT_FALSE(g.CursorInDates);
    EXPECT_TRUE(Shell.CursorShown);
    EXPECT_EQ(g.MyTrueRow, 0);

    // Page Down, End and Home; Tab and Shift+Tab across the columns.
    Key(Qt::Key_PageDown);
    EXPECT_EQ(g.MyTrueRow, std::min(g.Page_Rows(), g.Bottomlabels));
    Key(Qt::Key_End);
    EXPECT_EQ(g.MyTrueRow, g.Bottomlabels);
    EXPECT_EQ(g.MyVScroll, g.Highest_VScroll());
    Key(Qt::Key_Home);
    EXPECT_EQ(g.MyVScroll, 0);
    Key(Qt::Key_Tab);
    Key(Qt::Key_Tab);
    EXPECT_EQ(g.MyTrueColm, 3);
    Key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(g.MyTrueColm, 2);

    // A click on a cell puts the cursor there; the picture shows it in black.
    const Rect cell = g.Cell_On_Screen(1, 3);
    Click(cell);
    EXPECT_EQ(g.MyTrueRow, 3);
    EXPECT_EQ(g.MyTrueColm, 1);
    EXPECT_EQ(qGray(altaz->Picture().pixel(cell.Left + 1, (cell.Top + cell.Bottom) / 2)), 0);
}

TEST_F(GridScreens, SortByAColumnAndRestoreOrder) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    std::string pick = "Sort Ascending";
    altaz->Menu_Chooser = [&](const std::vector<std::string>& items) {
        EXPECT_NE(std::find(items.begin(), items.end(), pick), items.end());
        return pick;
    };
    const GridModel& g = altaz->Grid();
    // Column 3 (position 1) has keys that fall with the row: ascending reverses the rows,
    // and the sort holds when the date changes.
    Click(g.Heading_On_Screen(1), Qt::RightButton);
    EXPECT_EQ(g.MyDataLabels[2].back(), "Body 0");
    Wheel_Day(altaz->MyDates());
    EXPECT_EQ(g.MyDataLabels[2].front(), "Body 29");
    pick = "Sort Descending";
    Click(g.Heading_On_Screen(3), Qt::RightButton);  // magnitude
    const auto& key = altaz->AltAz_Data().SortKeys[9];
    for (size_t r = 1; r < altaz->Row_Order().size(); ++r)
        EXPECT_GE(key[static_cast<size_t>(altaz->Row_Order()[r - 1])],
                  key[static_cast<size_t>(altaz->Row_Order()[r])]);
    pick = "Restore Order";
    Click(g.Heading_On_Screen(0), Qt::RightButton);
    for (size_t r = 0; r < 30; ++r) EXPECT_EQ(g.MyDataLabels[2][r], "Body " + std::to_string(r));
}

TEST_F(GridScreens, HideAndInsertThroughTheHeadingPopUp) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    std::string pick = "Hide";
    std::vector<std::string> offered;
    const auto chooser = [&](const std::vector<std::string>& items) {
        offered = items;
        return pick;
    };
    altaz->Menu_Chooser = chooser;
    const GridModel& g = altaz->Grid();
    Click(g.Heading_On_Screen(2), Qt::RightButton);  // azimuth
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{2, 3, 9}));
    EXPECT_NE(std::find(offered.begin(), offered.end(), "Restore Order"), offered.end());

    // Henry Draper inserted at the first position: its numbers are worked out then.
    EXPECT_FALSE(catalogueAsked);
    pick = "Insert Column/Henry Draper";
    Click(g.Heading_On_Screen(0), Qt::RightButton);
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{14, 2, 3, 9}));
    EXPECT_TRUE(catalogueAsked);
    EXPECT_EQ(g.MyDataLabels[14][0], "1000");

    // Highlight two headings by dragging, then hide both.
    const QPoint from = Centre(g.Heading_On_Screen(0)), to = Centre(g.Heading_On_Screen(1));
    QTest::mousePress(client, Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, client->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(client, &move);
    QTest::mouseRelease(client, Qt::LeftButton, {}, to);
    EXPECT_EQ(g.Get_Highlighted_Columns(), (std::vector<int32_t>{14, 2}));
    pick = "Hide";
    Click(g.Heading_On_Screen(3), Qt::RightButton);
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{3, 9}));

    // With every column shown, the pop-up offers no insert item and no sort.
    cGeneralForm* lunations = Open(3);
    ASSERT_NE(lunations, nullptr);
    pick.clear();
    lunations->Menu_Chooser = chooser;
    Click(lunations->Grid().Heading_On_Screen(0), Qt::RightButton);
    EXPECT_EQ(std::count_if(offered.begin(), offered.end(),
                            [](const std::string& s) { return s.rfind("Insert Column/", 0) == 0; }),
              0);
    EXPECT_EQ(std::find(offered.begin(), offered.end(), "Sort Ascending"), offered.end());
}

TEST_F(GridScreens, AWidthDraggedToZeroStopsAtTheMinimum) {
    cGeneralForm* planets = Open(4);
    ASSERT_NE(planets, nullptr);
    const GridModel& g = planets->Grid();
    const Rect h = g.Heading_On_Screen(1);
    const QPoint grab(h.Right, (h.Top + h.Bottom) / 2), to(h.Left - 40, grab.y());
    QTest::mousePress(client, Qt::LeftButton, {}, grab);
    EXPECT_TRUE(g.Resizing);
    QMouseEvent move(QEvent::MouseMove, to, client->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(client, &move);
    // The dashed line stands at the minimum, drawn in black across the rows.
    EXPECT_EQ(g.ResizeLineX, h.Left + kMinColumnWidth);
    EXPECT_GT(Dark_Pixels(planets->Picture(), QRect(g.ResizeLineX, g.Rows_Top(), 1, 60)), 10);
    QTest::mouseRelease(client, Qt::LeftButton, {}, to);
    EXPECT_FALSE(g.Resizing);
    EXPECT_EQ(g.MyColmWidths[1], kMinColumnWidth);
    EXPECT_EQ(g.Heading_On_Screen(2).Left, h.Left + kMinColumnWidth);
}

TEST_F(GridScreens, DoubleClicksFitWidthsAndTheAutoSizeItemFillsTheScreen) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    const GridModel& g = altaz->Grid();
    const auto measure = cMainForm::Font_Measure();
    // As the window system delivers it: press, release, double-click press, release.
    auto double_click = [&](QPoint at) {
        QTest::mouseClick(client, Qt::LeftButton, {}, at);
        QTest::mouseDClick(client, Qt::LeftButton, {}, at);
        QTest::mouseRelease(client, Qt::LeftButton, {}, at);
    };
    auto fitted = [&](int32_t c, const std::string& title) {
        int32_t w = measure(title, true);
        for (const std::string& t : g.MyDataLabels[static_cast<size_t>(c)])
            w = std::max(w, measure(t, false));
        return w + kAutoWidthGap;
    };
    // On the line of column 2 at position 0: that column; in the corner: every visible one.
    const Rect h = g.Heading_On_Screen(0);
    double_click(QPoint(h.Right, (h.Top + h.Bottom) / 2));
    EXPECT_EQ(g.MyColmWidths[2], fitted(2, "Name"));
    EXPECT_FALSE(g.Resizing);
    double_click(QPoint(5, g.GridTop + 5));
    for (int32_t c : g.Visible_Columns())
        EXPECT_EQ(g.MyColmWidths[static_cast<size_t>(c)],
                  fitted(c, g.MyColmTitles[static_cast<size_t>(c)][1]))
            << c;
    EXPECT_FALSE(g.HighlightingAll);

    // "Auto-Size Columns" scales the visible columns to the screen's width.
    altaz->Menu_Chooser = [](const std::vector<std::string>&) {
        return std::string("Auto-Size Columns");
    };
    Click(g.Heading_On_Screen(0), Qt::RightButton);
    EXPECT_TRUE(g.AutoSize);
    EXPECT_LE(g.MyHeadingRect.back().Right, g.ClientWidth);
    EXPECT_GT(g.MyHeadingRect.back().Right, g.ClientWidth - 10);
}

TEST_F(GridScreens, AScreenMadeBeforeTheWindowGrewFillsItWhenShownAgain) {
    cGeneralForm* planets = Open(4);
    ASSERT_NE(planets, nullptr);
    const int32_t rowsBefore = planets->Grid().Bottomlabels;
    Open(0);
    w->resize(1000, 800);
    QApplication::processEvents();
    Open(4);
    EXPECT_EQ(planets->Picture().size(), client->size());
    // Solar Bodies has more rows for the taller window, and none lies under the bar.
    EXPECT_GT(planets->Grid().Bottomlabels, rowsBefore);
    const GridModel& g = planets->Grid();
    EXPECT_LE(g.Rows_Top() + g.Page_Rows() * g.RowHeight, client->height() - 16);
}

TEST_F(GridScreens, WheelAndBarsScrollByRowsAndColumns) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    const GridModel& g = altaz->Grid();
    ASSERT_GT(g.Highest_VScroll(), 0);
    Wheel(client, QPoint(200, g.Rows_Top() + 40), -120);
    EXPECT_EQ(g.MyVScroll, std::min(3, g.Highest_VScroll()));
    w->Hook().ScrollProc(Qt::Vertical, ScrollAction::LineDown);
    EXPECT_EQ(g.MyVScroll, std::min(4, g.Highest_VScroll()));

    const GridModel& p = Open(4)->Grid();
    ASSERT_GT(p.Highest_HScroll(), 0);
    w->Hook().ScrollProc(Qt::Horizontal, ScrollAction::LineDown);
    EXPECT_EQ(p.MyHScroll, 1);
    // Whole columns: the first on show stands at the margin.
    EXPECT_EQ(p.Heading_On_Screen(1).Left, kRowIndexMargin);
}

// ------------------------------------------------------------ the screens with their rows

// The screens with the program's own row calculations, for an observer at 50° N, 5° W;
// pictures of them go to <build>/shots.
class LiveScreens : public Window {
  protected:
    void SetUp() override {
        Observe_From(50.0, -5.0);
        Make(1000, 640);
        Observe_From(50.0, -5.0);  // whatever the test folder's settings file said
    }
    void TearDown() override {
        w.reset();
        Voyage = VoyagePlan{};
        Filters = BodyFilters{};
    }
    // Puts the shared moment a day before `jd`, then steps the day up with the wheel over
    // the strip of the screen showing, as the user would.
    void Go_To(cDatesView& strip, double jd) {
        Shell.CurrentJD = jd - 1.0;
        Update_All_Screens("");
        Wheel_Day(strip);
        QApplication::processEvents();
    }
};

TEST_F(LiveScreens, AltAzRowsAgreeWithTheBodyService) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    const double evening = Moment(2024, 3, 15, 21, 30);
    Go_To(altaz->MyDates(), evening);
    ASSERT_DOUBLE_EQ(Shell.CurrentJD, evening);
    EXPECT_EQ(altaz->MyJD(), evening);
    const GridModel& g = altaz->Grid();
    ASSERT_GT(g.Bottomlabels, 10);
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{2, 3, 4, 9}));

    // Each row against the body service asked afresh for that body and moment.
    int stars = 0, planets = 0;
    for (size_t i = 0; i <= static_cast<size_t>(g.Bottomlabels); ++i) {
        const int32_t b = std::stoi(g.MyDataLabels[18][i]);
        Calc_Bodies(0, 0, std::vector<int32_t>{b}, evening);
        const BodyRecord& rec = Bodies[static_cast<size_t>(b)];
        planets += b >= 4 && b < 12;
        if (b >= 12) {
            ++stars;
            EXPECT_EQ(g.MyDataLabels[2][i], rec.Names.Name);
            EXPECT_GE(rec.TrueAlt, static_cast<float>(10.0 / kRadian));
        }
        if (b >= 12 || rec.SextantAlt >= 0.0f) {
            EXPECT_EQ(g.MyDataLabels[4][i], Format_Number(rec.Azimuth * kRadian, "000°.0 T")) << b;
            EXPECT_EQ(g.MyDataLabels[3][i], Format_Angle(std::fabs(rec.SextantAlt), 1, true)) << b;
        } else {
            EXPECT_EQ(g.MyDataLabels[3][i], "- ");
        }
    }
    EXPECT_EQ(planets, 5);
    EXPECT_GT(stars, 10);

    // The catalogue columns inserted after the last, for the picture; Tycho, with no
    // numbers in the catalogue, is not offered.
    std::string pick;
    altaz->Menu_Chooser = [&](const std::vector<std::string>&) { return pick; };
    for (const char* title : {"Henry Draper", "Hipparchos", "Constellation"}) {
        pick = std::string("Insert Column/") + title;
        QTest::mouseClick(client, Qt::RightButton, {},
                          QPoint(g.Heading_On_Screen(g.ColmsInUse).Left + 5, g.GridTop + 5));
    }
    EXPECT_EQ(g.ColmsInUse, 6);
    EXPECT_FALSE(g.MyDataLabels[14].back().empty());
    Key(Qt::Key_Down);
    EXPECT_GT(Dark_Pixels(altaz->Picture(), altaz->Picture().rect()), 4000);
    Save_Png(altaz->Picture(), "shots", "altaz");
}

TEST_F(LiveScreens, ModeFourWithNoStarInTheRadiusGivesAnEmptyTable) {
    // A point a little above the horizon due north, with a radius of ten minutes.
    Filters.BodyFilterMode = 4;
    Filters.LimitRadius = 10;
    Filters.AboveTenOnly = 0;
    Filters.CentreA = static_cast<float>(1.0 / kRadian);
    Filters.CentreB = 0.0f;
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    Go_To(altaz->MyDates(), Moment(2024, 3, 15, 21, 30));
    EXPECT_EQ(altaz->Grid().Bottomlabels, -1);
    // Keys and the cursor on an empty table do nothing harmful.
    for (Qt::Key k : {Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown}) Key(k);
    EXPECT_TRUE(altaz->Grid().Cursor_Rect().Empty());
}

TEST_F(LiveScreens, MoonPhasesYearWithTwoFullMoonsFillsTheSecondGroup) {
    cGeneralForm* lunations = Open(3);
    ASSERT_NE(lunations, nullptr);
    // August 2023 had full moons on the 1st and the 31st.
    Go_To(lunations->MyDates(), Moment(2023, 6, 1, 12));
    const GridModel& g = lunations->Grid();
    ASSERT_EQ(g.Bottomlabels, 11);
    EXPECT_EQ(g.MyDataLabels[0][7], "August");
    EXPECT_FALSE(g.MyDataLabels[3][7].empty());
    EXPECT_FALSE(g.MyDataLabels[7][7].empty());
    EXPECT_TRUE(g.MyDataLabels[7][5].empty());  // one full moon in June

    // A year with eclipses (their marks are checked with the rows).
    Go_To(lunations->MyDates(), Moment(2024, 6, 1, 12));
    EXPECT_GE(std::count_if(g.MyDataLabels[9].begin(), g.MyDataLabels[9].end(),
                            [](const std::string& s) { return !s.empty(); }),
              2);
    Save_Png(lunations->Picture(), "shots", "moon_phases");
}

TEST_F(LiveScreens, SolarBodiesTheMoonByTheHour) {
    Filters.ShowBody = 3;
    Filters.IntervalUnit = "Hour";
    cGeneralForm* planets = Open(4);
    ASSERT_NE(planets, nullptr);
    Go_To(planets->MyDates(), Moment(2024, 3, 15, 0));
    const GridModel& g = planets->Grid();
    ASSERT_GT(g.Bottomlabels, 10);
    // The rows step by the hour; distances in kilometres.
    EXPECT_NE(g.MyDataLabels[1][0], g.MyDataLabels[1][1]);
    for (size_t r = 0; r <= static_cast<size_t>(g.Bottomlabels); ++r)
        EXPECT_NE(g.MyDataLabels[11][r].find("Km"), std::string::npos);
    Save_Png(planets->Picture(), "shots", "solar_bodies");
}

TEST_F(LiveScreens, MainShowsTheDayOfTheCoreCalculationsAndTheDRError) {
    auto* splash = dynamic_cast<SplashScreen*>(w->Current_Ui_Screen());
    ASSERT_NE(splash, nullptr);
    const double day = Moment(2023, 6, 21, 9);
    Go_To(splash->MyDates(), day);
    ASSERT_EQ(splash->MyJD(), day);
    const MainPage want = Main_Rows(day, false);
    const MainPage& page = splash->Page();
    ASSERT_EQ(page.Day.size(), want.Day.size());
    for (size_t i = 0; i < want.Day.size(); ++i) {
        EXPECT_EQ(page.Day[i].Label, want.Day[i].Label);
        EXPECT_EQ(page.Day[i].Value, want.Day[i].Value) << want.Day[i].Label;
    }
    ASSERT_EQ(page.Moon.size(), want.Moon.size());
    for (size_t i = 0; i < want.Moon.size(); ++i) EXPECT_EQ(page.Moon[i].Value, want.Moon[i].Value);
    EXPECT_FALSE(page.DRwarning);
    EXPECT_GT(Dark_Pixels(splash->Picture(), splash->Picture().rect()), 2000);
    Save_Png(splash->Picture(), "shots", "main");
    auto red = [&] {
        int n = 0;
        const QImage& pic = splash->Picture();
        for (int y = 0; y < pic.height(); ++y)
            for (int x = 0; x < pic.width(); ++x) {
                const QRgb c = pic.pixel(x, y);
                n += qRed(c) > 200 && qGreen(c) < 80 && qBlue(c) < 80;
            }
        return n;
    };
    EXPECT_EQ(red(), 0);

    // A plan that ended ten days before: "DR Error" and its warning in red.
    Sail_Expired_Plan(day);
    ASSERT_LT(Voyage.Plan_End(), day);
    Go_To(splash->MyDates(), day);
    EXPECT_TRUE(splash->Page().DRwarning);
    EXPECT_EQ(splash->Page().Day[1].Value, "DR Error");
    EXPECT_GT(red(), 20);
}

}  // namespace
}  // namespace kelmoran
