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

#include "settings/SettingsRecord.h"
#include "shell/cGeneralForm.h"
#include "shell/fMain.h"

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

}  // namespace
}  // namespace kelmoran

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
