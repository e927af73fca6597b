// The table screens headless, driven by real key and mouse events on the main window:
// opening each screen from the Screen menu, changing the date through its strip, the
// cursor, the heading pop-up (hide, insert, widths, sorts), dragging a width, scrolling,
// and computing only the screen that shows.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>
#include <cstdio>

#include "ephemeris/Bodies.h"
#include "ephemeris/Time_Calcs.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "shell/SplashScreen.h"
#include "shell/cGeneralForm.h"
#include "shell/fMain.h"
#include "voyage/Position_Methods.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {
namespace {

QPoint Centre(const Rect& r) {
    return QPoint((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
}

// Rows made from the moment, so that a change of date shows in the cells: row r of AltAz
// has the day count plus r in column 3 and a sort key that falls with r in column 3 and
// rises in column 9.
AltAzRows Fake_AltAz(double jd, bool catalogue) {
    AltAzRows t;
    t.Rows = 30;
    t.Labels.assign(19, std::vector<std::string>(30));
    t.SortKeys.assign(19, std::vector<double>(30, 0.0));
    for (int r = 0; r < 30; ++r) {
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.3f", jd + r);
        t.Labels[2][static_cast<size_t>(r)] = "Body " + std::to_string(r);
        t.Labels[3][static_cast<size_t>(r)] = buf;
        t.Labels[14][static_cast<size_t>(r)] = catalogue ? std::to_string(1000 + r) : "";
        t.Labels[18][static_cast<size_t>(r)] = std::to_string(r);
        t.SortKeys[3][static_cast<size_t>(r)] = 100.0 - r;
        t.SortKeys[9][static_cast<size_t>(r)] = r % 7;
        t.BodyNumbers.push_back(r);
    }
    return t;
}

std::vector<int32_t> Fake_Sort(const AltAzRows& rows, int32_t column, bool ascending) {
    std::vector<int32_t> order(static_cast<size_t>(rows.Rows));
    for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int32_t>(i);
    const auto& key = rows.SortKeys[static_cast<size_t>(column)];
    std::stable_sort(order.begin(), order.end(), [&](int32_t a, int32_t b) {
        return ascending ? key[static_cast<size_t>(a)] < key[static_cast<size_t>(b)]
                         : key[static_cast<size_t>(a)] > key[static_cast<size_t>(b)];
    });
    return order;
}

TableRows Fake_Table(double jd, int32_t rows, int32_t columns) {
    TableRows t;
    t.Rows = rows;
    t.Labels.assign(static_cast<size_t>(columns),
                    std::vector<std::string>(static_cast<size_t>(rows)));
    for (int32_t r = 0; r < rows; ++r) {
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.3f", jd + r);
        t.Labels[0][static_cast<size_t>(r)] = buf;
    }
    return t;
}

class GridScreens : public ::testing::Test {
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
        s.Planets = [this](double jd, int32_t rows, bool) {
            ++planetsCalls;
            return Fake_Table(jd, rows, 16);
        };
        s.Lunations = [](double jd) { return Fake_Table(jd, 12, 10); };
        TZ_Bias = 0;
        Settings.AutoTimeZone = 0;
        w = std::make_unique<fMain>();
        w->resize(900, 600);
        w->show();
        QApplication::processEvents();
        client = w->Client();
    }
    void TearDown() override {
        w.reset();
        Row_Sources() = saved_;
    }
    cGeneralForm* Open(int index) {
        w->Window_Action(index)->trigger();
        QApplication::processEvents();
        return dynamic_cast<cGeneralForm*>(w->Current_Ui_Screen());
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers mods = {}) { QTest::keyClick(client, key, mods); }
    void Wheel(QPoint at, int delta) {
        QWheelEvent e(at, client->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(client, &e);
    }
    // The texts of column `column` on show, top to bottom.
    static std::vector<std::string> Column_Texts(const cGeneralForm& f, int32_t column) {
        return f.Grid().MyDataLabels[static_cast<size_t>(column)];
    }

    std::unique_ptr<fMain> w;
    QWidget* client = nullptr;
    int altazCalls = 0;
    int planetsCalls = 0;
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
    // Solar Bodies has as many rows as fill the screen.
    EXPECT_EQ(planets->Grid().Bottomlabels + 1, planets->Grid().Page_Rows());

    // A change of date on Solar Bodies leaves AltAz alone until it is shown again.
    const int before = altazCalls;
    Wheel(Centre(planets->MyDates().Field_Rect("Day")), 120);
    EXPECT_EQ(altazCalls, before);
    EXPECT_EQ(planets->MyJD(), Shell.CurrentJD);
    Wheel(Centre(planets->MyDates().Field_Rect("Day")), 120);
    EXPECT_EQ(altazCalls, before);
    Open(0);
    EXPECT_EQ(altazCalls, before + 1);  // once, however many changes were missed
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
    char want[64];
    std::snprintf(want, sizeof want, "%.3f", start);
    EXPECT_EQ(altaz->Grid().MyDataLabels[3][0], want);
    // Day up by one with the wheel, then by typing into the hour field.
    Wheel(Centre(altaz->MyDates().Field_Rect("Day")), 120);
    EXPECT_DOUBLE_EQ(Shell.CurrentJD, start + 1.0);
    std::snprintf(want, sizeof want, "%.3f", start + 1.0);
    EXPECT_EQ(altaz->Grid().MyDataLabels[3][0], want);

    const int hourBefore = altaz->MyDates().MySystemTime.wHour;
    const int newHour = (hourBefore + 5) % 24;
    QTest::mouseClick(client, Qt::LeftButton, {}, Centre(altaz->MyDates().Field_Rect("Hour")));
    char digits[8];
    std::snprintf(digits, sizeof digits, "%02d", newHour);
    QTest::keyClicks(client, digits);
    Key(Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(altaz->MyDates().MySystemTime.wHour, newHour);
    EXPECT_EQ(altaz->MyJD(), Shell.CurrentJD);
    std::snprintf(want, sizeof want, "%.3f", Shell.CurrentJD);
    EXPECT_EQ(altaz->Grid().MyDataLabels[3][0], want);
    EXPECT_NE(Shell.CurrentJD, start + 1.0);
}

TEST_F(GridScreens, CursorKeysUpIntoTheStripAndDownBack) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    GridModel& g = altaz->Grid();
    EXPECT_TRUE(Shell.CursorShown);
    EXPECT_EQ(g.MyTrueRow, 0);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    Key(Qt::Key_Right);
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
    QTest::mouseClick(client, Qt::LeftButton, {}, Centre(cell));
    EXPECT_EQ(g.MyTrueRow, 3);
    EXPECT_EQ(g.MyTrueColm, 1);
    EXPECT_EQ(qGray(altaz->Picture().pixel(cell.Left + 1, (cell.Top + cell.Bottom) / 2)), 0);
}

TEST_F(GridScreens, SortByAColumnAndRestoreOrder) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    std::vector<std::string> pick = {"Sort Ascending"};
    altaz->Menu_Chooser = [&](const std::vector<std::string>& items) {
        EXPECT_NE(std::find(items.begin(), items.end(), pick.front()), items.end());
        return pick.front();
    };
    const GridModel& g = altaz->Grid();
    // Column 3 (position 1) has keys that fall with the row: ascending reverses the rows.
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(1)));
    EXPECT_EQ(g.MyDataLabels[2].front(), "Body 29");
    EXPECT_EQ(g.MyDataLabels[2].back(), "Body 0");
    // The sort holds when the date changes.
    Wheel(Centre(altaz->MyDates().Field_Rect("Day")), 120);
    EXPECT_EQ(g.MyDataLabels[2].front(), "Body 29");
    pick = {"Sort Descending"};
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(3)));  // magnitude
    for (size_t r = 1; r < altaz->Row_Order().size(); ++r) {
        const auto& key = altaz->AltAz_Data().SortKeys[9];
        EXPECT_GE(key[static_cast<size_t>(altaz->Row_Order()[r - 1])],
                  key[static_cast<size_t>(altaz->Row_Order()[r])]);
    }
    pick = {"Restore Order"};
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(0)));
    for (int r = 0; r < 30; ++r)
        EXPECT_EQ(g.MyDataLabels[2][static_cast<size_t>(r)], "Body " + std::to_string(r));
}

TEST_F(GridScreens, HideAndInsertThroughTheHeadingPopUp) {
    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    std::string pick;
    std::vector<std::string> offered;
    altaz->Menu_Chooser = [&](const std::vector<std::string>& items) {
        offered = items;
        return pick;
    };
    const GridModel& g = altaz->Grid();
    pick = "Hide";
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(2)));  // azimuth
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{2, 3, 9}));
    EXPECT_NE(std::find(offered.begin(), offered.end(), "Restore Order"), offered.end());

    // Henry Draper inserted at the first position: its numbers are worked out then.
    EXPECT_FALSE(catalogueAsked);
    pick = "Insert Column/Henry Draper";
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(0)));
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{14, 2, 3, 9}));
    EXPECT_TRUE(catalogueAsked);
    EXPECT_EQ(g.MyDataLabels[14][0], "1000");

    // Highlight two headings by dragging, then hide both.
    QTest::mousePress(client, Qt::LeftButton, {}, Centre(g.Heading_On_Screen(0)));
    QTest::mouseMove(client, Centre(g.Heading_On_Screen(1)));
    QMouseEvent move(QEvent::MouseMove, Centre(g.Heading_On_Screen(1)),
                     client->mapToGlobal(Centre(g.Heading_On_Screen(1))), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(client, &move);
    QTest::mouseRelease(client, Qt::LeftButton, {}, Centre(g.Heading_On_Screen(1)));
    EXPECT_EQ(g.Get_Highlighted_Columns(), (std::vector<int32_t>{14, 2}));
    pick = "Hide";
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(3)));
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{3, 9}));

    // With every column shown, the pop-up offers no insert item.
    cGeneralForm* lunations = Open(3);
    ASSERT_NE(lunations, nullptr);
    lunations->Menu_Chooser = [&](const std::vector<std::string>& items) {
        offered = items;
        return std::string();
    };
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(lunations->Grid().Heading_On_Screen(0)));
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
    const QPoint grab(h.Right, (h.Top + h.Bottom) / 2);
    QTest::mousePress(client, Qt::LeftButton, {}, grab);
    EXPECT_TRUE(g.Resizing);
    const QPoint to(h.Left - 40, grab.y());
    QMouseEvent move(QEvent::MouseMove, to, client->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(client, &move);
    // The dashed line stands at the minimum, drawn in black across the rows.
    EXPECT_EQ(g.ResizeLineX, h.Left + kMinColumnWidth);
    int dark = 0;
    for (int y = g.Rows_Top(); y < g.Rows_Top() + 60; ++y)
        if (qGray(planets->Picture().pixel(g.ResizeLineX, y)) < 60) ++dark;
    EXPECT_GT(dark, 10);
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
    // A double click as the window system delivers it: press, release, double-click
    // press, release.
    auto double_click = [&](QPoint at) {
        QTest::mouseClick(client, Qt::LeftButton, {}, at);
        QTest::mouseDClick(client, Qt::LeftButton, {}, at);
        QTest::mouseRelease(client, Qt::LeftButton, {}, at);
    };
    // Column 2 ("Body 0" .. "Body 29") at position 0: its line gets a double click.
    const Rect h = g.Heading_On_Screen(0);
    double_click(QPoint(h.Right, (h.Top + h.Bottom) / 2));
    int32_t longest = measure("Name", true);
    for (const std::string& t : g.MyDataLabels[2]) longest = std::max(longest, measure(t, false));
    EXPECT_EQ(g.MyColmWidths[2], longest + kAutoWidthGap);
    EXPECT_FALSE(g.Resizing);

    // In the corner: every visible column.
    double_click(QPoint(5, g.GridTop + 5));
    for (int32_t c : g.Visible_Columns()) {
        int32_t w = measure(g.MyColmTitles[static_cast<size_t>(c)][1], true);
        for (const std::string& t : g.MyDataLabels[static_cast<size_t>(c)])
            w = std::max(w, measure(t, false));
        EXPECT_EQ(g.MyColmWidths[static_cast<size_t>(c)], w + kAutoWidthGap) << c;
    }
    EXPECT_FALSE(g.HighlightingAll);

    // "Auto-Size Columns" scales the visible columns to the screen's width.
    altaz->Menu_Chooser = [](const std::vector<std::string>&) {
        return std::string("Auto-Size Columns");
    };
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(0)));
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
    Wheel(QPoint(200, g.Rows_Top() + 40), -120);
    EXPECT_EQ(g.MyVScroll, std::min(3, g.Highest_VScroll()));
    // The row numbers follow the scroll.
    w->Hook().ScrollProc(Qt::Vertical, ScrollAction::LineDown);
    EXPECT_EQ(g.MyVScroll, std::min(4, g.Highest_VScroll()));

    cGeneralForm* planets = Open(4);
    const GridModel& p = planets->Grid();
    ASSERT_GT(p.Highest_HScroll(), 0);
    w->Hook().ScrollProc(Qt::Horizontal, ScrollAction::LineDown);
    EXPECT_EQ(p.MyHScroll, 1);
    // Whole columns: the first on show stands at the margin.
    EXPECT_EQ(p.Heading_On_Screen(1).Left, kRowIndexMargin);
}

// ------------------------------------------------------------ the screens with their rows

constexpr double kRadian = 57.2957795130823;

double Moment(int year, int month, int day, int hour, int minute = 0) {
    MySystemTime d;
    d.wYear = static_cast<int16_t>(year);
    d.wMonth = static_cast<int16_t>(month);
    d.wDay = static_cast<int16_t>(day);
    d.wHour = static_cast<int16_t>(hour);
    d.wMinute = static_cast<int16_t>(minute);
    return Calc_JD(d, false);
}

// The screens with the program's own row calculations, for an observer at 50° N, 5° W.
class LiveScreens : public ::testing::Test {
  protected:
    void SetUp() override {
        Settings = SettingsRecord{};
        Settings.ObserverLat = static_cast<float>(50.0 / kRadian);
        Settings.ObserverLong = static_cast<float>(-5.0 / kRadian);
        Settings.Pressure = 1010.0f;
        Settings.Temp = 10.0f;
        Settings.PositionMethod = kFixPosition;
        Settings.AutoTimeZone = 0;
        Compute_Derived_Settings();
        TZ_Bias = 0;
        Filters = BodyFilters{};
        w = std::make_unique<fMain>();
        // The settings file of the test folder must not move the observer.
        Settings.ObserverLat = static_cast<float>(50.0 / kRadian);
        Settings.ObserverLong = static_cast<float>(-5.0 / kRadian);
        Settings.PositionMethod = kFixPosition;
        Settings.AutoTimeZone = 0;
        TZ_Bias = 0;
        Compute_Derived_Settings();
        w->resize(1000, 640);
        w->show();
        QApplication::processEvents();
        client = w->Client();
    }
    void TearDown() override {
        w.reset();
        Voyage = VoyagePlan{};
        Filters = BodyFilters{};
    }
    cGeneralForm* Open(int index) {
        w->Window_Action(index)->trigger();
        QApplication::processEvents();
        return dynamic_cast<cGeneralForm*>(w->Current_Ui_Screen());
    }
    // Puts the shared moment a day before `jd`, then steps the day up with the wheel over
    // the strip of the screen showing, as the user would.
    void Go_To(cDatesView& strip, double jd) {
        Shell.CurrentJD = jd - 1.0;
        Update_All_Screens("");
        const QPoint at = Centre(strip.Field_Rect("Day"));
        QWheelEvent e(at, client->mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(client, &e);
        QApplication::processEvents();
    }

    std::unique_ptr<fMain> w;
    QWidget* client = nullptr;
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
    for (int32_t r = 0; r <= g.Bottomlabels; ++r) {
        const size_t i = static_cast<size_t>(r);
        const int32_t b = std::stoi(g.MyDataLabels[18][i]);
        const std::vector<int32_t> one = {b};
        Calc_Bodies(0, 0, one, evening);
        const BodyRecord& rec = Bodies[static_cast<size_t>(b)];
        if (b >= 4 && b < 12) ++planets;
        if (b >= 12) {
            ++stars;
            EXPECT_EQ(g.MyDataLabels[2][i], rec.Names.Name);
            EXPECT_GE(rec.TrueAlt, static_cast<float>(10.0 / kRadian));
        }
        if (b >= 12 || rec.SextantAlt >= 0.0f) {
            EXPECT_EQ(g.MyDataLabels[4][i], Format_Number(rec.Azimuth * kRadian, "000°.0 T"))
                << "body " << b;
            EXPECT_EQ(g.MyDataLabels[3][i], Format_Angle(std::fabs(rec.SextantAlt), 1, true))
                << "body " << b;
        } else {
            EXPECT_EQ(g.MyDataLabels[3][i], "- ");
        }
    }
    EXPECT_EQ(planets, 5);
    EXPECT_GT(stars, 10);

    // Sorting by altitude through the heading pop-up, and back.
    std::string pick = "Sort Descending";
    altaz->Menu_Chooser = [&](const std::vector<std::string>&) { return pick; };
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(1)));
    const auto& keys = altaz->AltAz_Data().SortKeys[3];
    for (size_t r = 1; r < altaz->Row_Order().size(); ++r)
        EXPECT_GE(keys[static_cast<size_t>(altaz->Row_Order()[r - 1])],
                  keys[static_cast<size_t>(altaz->Row_Order()[r])]);
    EXPECT_NE(g.MyDataLabels[18][0], "0");
    pick = "Restore Order";
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(g.Heading_On_Screen(1)));
    EXPECT_EQ(g.MyDataLabels[18][0], "0");  // the Sun first again
}

TEST_F(LiveScreens, ModeFourWithNoStarInTheRadiusGivesAnEmptyTable) {
    // A point a little above the horizon due north, with a radius of ten minutes: no star
    // of the list lies there at this moment.
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
    QTest::keyClick(client, Qt::Key_Down);
    QTest::keyClick(client, Qt::Key_End);
    QTest::keyClick(client, Qt::Key_PageDown);
    EXPECT_TRUE(altaz->Grid().Cursor_Rect().Empty() || altaz->Grid().Bottomlabels < 0);
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
    // In the months with one full moon the second group is empty.
    EXPECT_TRUE(g.MyDataLabels[7][5].empty());

    // A year with eclipses: the marks and the Eclipses column go together.
    Go_To(lunations->MyDates(), Moment(2024, 6, 1, 12));
    int marked = 0;
    for (size_t m = 0; m < 12; ++m) {
        bool mark = false;
        for (size_t c = 1; c <= 8; ++c) mark = mark || g.MyDataLabels[c][m].rfind("* ", 0) == 0;
        EXPECT_EQ(mark, !g.MyDataLabels[9][m].empty()) << m;
        marked += mark;
    }
    EXPECT_GE(marked, 2);
}

TEST_F(LiveScreens, SolarBodiesTheMoonByTheHour) {
    Filters.ShowBody = 3;
    Filters.IntervalUnit = "Hour";
    cGeneralForm* planets = Open(4);
    ASSERT_NE(planets, nullptr);
    Go_To(planets->MyDates(), Moment(2024, 3, 15, 0));
    const GridModel& g = planets->Grid();
    ASSERT_GT(g.Bottomlabels, 5);
    // Row 0 is the moment at the top; the rows step by the hour, distances in kilometres.
    EXPECT_NE(g.MyDataLabels[1][0], g.MyDataLabels[1][1]);
    for (int32_t r = 0; r <= g.Bottomlabels; ++r)
        EXPECT_NE(g.MyDataLabels[11][static_cast<size_t>(r)].find("Km"), std::string::npos);
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
    auto red = [&] {
        int n = 0;
        const QImage& pic = splash->Picture();
        for (int y = 0; y < pic.height(); ++y)
            for (int x = 0; x < pic.width(); ++x) {
                const QRgb c = pic.pixel(x, y);
                if (qRed(c) > 200 && qGreen(c) < 80 && qBlue(c) < 80) ++n;
            }
        return n;
    };
    EXPECT_EQ(red(), 0);

    // A plan that ended ten days before: "DR Error" and its warning in red.
    VoyagePlan plan;
    plan.New_Plan(day - 10.0, 10.0f);
    plan.Way_Points.assign(4, Way_Point{});
    const double pts[2][2] = {{50, -5}, {48, -7}};
    for (size_t i = 0; i < 2; ++i) {
        plan.Way_Points[i].Lat = pts[i][0] / kRadian;
        plan.Way_Points[i].Long = pts[i][1] / kRadian;
        plan.Way_Points[i].Speed = 10.0f;
    }
    plan.Test_Wpts_Valid();
    plan.Recalc_Plan();
    ASSERT_LT(plan.Plan_End(), day);
    Voyage = plan;
    Settings.PositionMethod = kDRByPlan;
    Go_To(splash->MyDates(), day);
    EXPECT_TRUE(splash->Page().DRwarning);
    EXPECT_EQ(splash->Page().Day[1].Value, "DR Error");
    EXPECT_GT(red(), 20);
}
}  // namespace
}  // namespace kelmoran

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
