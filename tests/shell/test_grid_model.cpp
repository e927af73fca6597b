// The grid model without a window: column tables, the order of columns, hiding and
// inserting, widths, the cursor's moves and scrolling, highlighting and dragging a width.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "shell/Grid_Model.h"

namespace kelmoran {
namespace {

// A font of fixed pitch: 7 pixels a character, 8 in bold.
int32_t Fixed_Pitch(const std::string& s, bool bold) {
    return static_cast<int32_t>(s.size()) * (bold ? 8 : 7);
}

GridModel Make(const std::string& key, int32_t rows = 0, int32_t width = 900,
               int32_t height = 600) {
    GridModel g;
    g.ClientWidth = width;
    g.ClientHeight = height;
    g.GridTop = 40;
    g.RowHeight = 18;
    g.HeadingHeight = 20;
    g.Setup(key, Column_Table(key, "Apparent Altitude", "App. Alt."), Fixed_Pitch);
    std::vector<std::vector<std::string>> labels(static_cast<size_t>(g.AllColumns + 1));
    for (int32_t c = 0; c <= g.AllColumns; ++c)
        for (int32_t r = 0; r < rows; ++r)
            labels[static_cast<size_t>(c)].push_back("c" + std::to_string(c) + "r" +
                                                     std::to_string(r));
    g.Set_Data(labels, rows);
    return g;
}

TEST(GridColumns, TablesMatchTheHighestColumnOfEachScreen) {
    for (const char* key : {"AltAz", "Clox", "Planets", "Lunations"}) {
        const auto t = Column_Table(key, "A", "a");
        EXPECT_EQ(static_cast<int32_t>(t.size()) - 1, All_Columns_Of(key)) << key;
        for (const ColumnDef& c : t) EXPECT_FALSE(c.Long.empty()) << key;
    }
    EXPECT_EQ(All_Columns_Of("Splash"), 5);
    EXPECT_TRUE(Column_Table("NavPlan", "", "").empty());

    const auto altaz = Column_Table("AltAz", "Sextant Altitude", "Sex. Alt.");
    EXPECT_EQ(altaz[3].Long, "Sextant Altitude");
    EXPECT_EQ(altaz[3].Short, "Sex. Alt.");
    // AltAz opens with Name, altitude, azimuth and magnitude.
    std::set<int> shown;
    for (size_t i = 0; i < altaz.size(); ++i)
        if (altaz[i].Shown) shown.insert(static_cast<int>(i));
    EXPECT_EQ(shown, (std::set<int>{2, 3, 4, 9}));

    // The altitude title is the one handed in, on Solar Bodies as on AltAz.
    EXPECT_EQ(Column_Table("Planets", "Observed Altitude", "Obs. Alt.")[5].Short, "Obs. Alt.");
}

TEST(GridColumns, PointersPutVisibleColumnsFirstAndRectanglesFollowWidths) {
    GridModel g = Make("AltAz", 5);
    EXPECT_EQ(g.ColmsInUse, 3);
    EXPECT_EQ(std::vector<int32_t>(g.MyColmPtr.begin(), g.MyColmPtr.begin() + 5),
              (std::vector<int32_t>{2, 3, 4, 9, 0}));
    EXPECT_EQ(g.MyColmPtr.size(), 18u);
    // Each position starts where the one before ends, after the row-number margin.
    int32_t left = kRowIndexMargin;
    for (int32_t p = 0; p <= g.ColmsInUse; ++p) {
        const Rect& h = g.MyHeadingRect[static_cast<size_t>(p)];
        EXPECT_EQ(h.Left, left);
        EXPECT_EQ(h.Width(),
                  g.MyColmWidths[static_cast<size_t>(g.MyColmPtr[static_cast<size_t>(p)])]);
        for (int32_t r = 0; r < 5; ++r) {
            const Rect& cell = g.MyLabelsRect[static_cast<size_t>(p)][static_cast<size_t>(r)];
            EXPECT_EQ(cell.Left, h.Left);
            EXPECT_EQ(cell.Top, g.Rows_Top() + r * g.RowHeight);
        }
        left = h.Right;
    }
    // Widths come from the samples, or the title in bold when there is none.
    EXPECT_EQ(g.MyColmWidths[4], Fixed_Pitch(" 000\u00B0.0 T ", false));
    EXPECT_EQ(g.MyColmWidths[9], Fixed_Pitch(" Magnitude ", true));
}

TEST(GridColumns, DataPastTheLastColumnIsKeptWithoutAHeading) {
    GridModel g = Make("AltAz");
    std::vector<std::vector<std::string>> labels(19, std::vector<std::string>(2, "x"));
    labels[18] = {"12", "40"};  // body numbers
    g.Set_Data(labels, 2);
    ASSERT_EQ(g.MyDataLabels.size(), 19u);
    EXPECT_EQ(g.MyDataLabels[18][1], "40");
    EXPECT_EQ(g.MyColmPtr.size(), 18u);
    // Short columns are filled out to the rows.
    g.Set_Data({{"a"}}, 3);
    EXPECT_EQ(g.MyDataLabels[0].size(), 3u);
    EXPECT_EQ(g.MyDataLabels[17].size(), 3u);
}

TEST(GridColumns, HeadingUsesShortTitleWhenLongDoesNotFit) {
    GridModel g = Make("AltAz", 1);
    g.MyColmWidths[3] = Fixed_Pitch("Apparent Altitude", true) + 4;
    g.Columns_Set_Working_Arrays();
    EXPECT_EQ(g.Heading_Text(1), "Apparent Altitude");
    g.MyColmWidths[3] = 60;
    g.Columns_Set_Working_Arrays();
    EXPECT_EQ(g.Heading_Text(1), "App. Alt.");
    EXPECT_EQ(g.Heading_Text(9), "");
}

TEST(GridHideInsert, HideAndInsertAtAPosition) {
    GridModel g = Make("AltAz", 3);
    // Every hidden column but Tycho, which has no data.
    EXPECT_EQ(g.Menu_Insert_AddRemove().size(), 13u);
    g.mnuHide(1);  // the altitude
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{2, 4, 9}));
    const auto items = g.Menu_Insert_AddRemove();
    EXPECT_NE(std::find(items.begin(), items.end(), "Apparent Altitude"), items.end());
    EXPECT_TRUE(g.mnuInsert("Henry Draper", 1));
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{2, 14, 4, 9}));
    EXPECT_FALSE(g.mnuInsert("Henry Draper", 0));  // already on show
    EXPECT_TRUE(g.mnuInsert("Designation", 99));   // past the end: last
    EXPECT_EQ(g.Visible_Columns().back(), 0);
    // Highlighted columns are hidden together.
    g.Highlight_Column_Start(0);
    g.Highlight_Column_Change(1);
    g.mnuHide(3);
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{4, 9, 0}));
}

TEST(GridHideInsert, InsertListIsEmptyWhenAllAreVisible) {
    GridModel g = Make("Lunations", 12);
    EXPECT_TRUE(g.Menu_Insert_AddRemove().empty());
    g.mnuHide(9);
    EXPECT_EQ(g.Menu_Insert_AddRemove(), (std::vector<std::string>{"Eclipses"}));
}

TEST(GridHideInsert, TychoIsOfferedOnlyOnceItsNumbersExist) {
    GridModel g = Make("AltAz", 3);
    const auto offered = [&g] {
        const auto items = g.Menu_Insert_AddRemove();
        return std::find(items.begin(), items.end(), "Tycho") != items.end();
    };
    // No Tycho table: not offered, not insertable by its title, and never brought on show
    // by inserting everything else.
    EXPECT_FALSE(offered());
    EXPECT_FALSE(g.mnuInsert("Tycho", 0));
    while (!g.Menu_Insert_AddRemove().empty())
        ASSERT_TRUE(g.mnuInsert(g.Menu_Insert_AddRemove().front(), 0));
    EXPECT_EQ(g.ColmsInUse, 16);
    const auto shown = g.Visible_Columns();
    EXPECT_EQ(std::find(shown.begin(), shown.end(), 16), shown.end());
    // The column stays in the model: a table loaded later makes it available and it goes
    // in like any other; losing the table again takes it off the screen.
    g.Set_Column_Available(16, true);
    EXPECT_EQ(g.Menu_Insert_AddRemove(), (std::vector<std::string>{"Tycho"}));
    EXPECT_TRUE(g.mnuInsert("Tycho", 2));
    EXPECT_EQ(g.MyColmPtr[2], 16);
    g.Set_Column_Available(16, false);
    EXPECT_EQ(g.ColmsInUse, 16);
    EXPECT_EQ(g.MyColmPtr[2], shown[2]);
    EXPECT_TRUE(g.Menu_Insert_AddRemove().empty());
}

TEST(GridHideInsert, ClocksMirrorsTwilightsAndKeepsTheDate) {
    GridModel g = Make("Clox", 30);
    g.mnuHide(2);  // morning astronomical twilight: the evening one goes too
    EXPECT_FALSE(g.MyColmVisible[2]);
    EXPECT_FALSE(g.MyColmVisible[10]);
    g.mnuHide(g.ColmsInUse - 1);  // evening nautical (9): morning nautical (3) goes too
    EXPECT_FALSE(g.MyColmVisible[3]);
    EXPECT_FALSE(g.MyColmVisible[9]);
    // Hide everything but one, then that one: the date stays.
    g.Highlight_All(true);
    g.mnuHide(0);
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{0}));
    g.mnuHide(0);
    EXPECT_EQ(g.Visible_Columns(), (std::vector<int32_t>{0}));
    EXPECT_EQ(g.ColmsInUse, 0);
    // Another screen keeps its last column rather than none.
    GridModel a = Make("AltAz", 2);
    a.Highlight_All(true);
    a.mnuHide(0);
    EXPECT_EQ(a.ColmsInUse, 0);
}

TEST(GridWidths, ResetAutoAndScaleToScreen) {
    GridModel g = Make("Planets", 4);
    g.MyColmWidths[1] = 200;
    g.Columns_Set_Working_Arrays();
    g.Reset_Width(1);
    EXPECT_EQ(g.MyColmWidths[1], g.MyStartWidths[1]);
    g.MyColmWidths[0] = g.MyColmWidths[2] = 300;
    g.Reset_All_Widths();
    EXPECT_EQ(g.MyColmWidths, g.MyStartWidths);

    // Automatic width: the longest cell or the short title, plus the gap.
    g.MyDataLabels[6][2] = std::string(30, 'x');
    g.mnuAutoWidth(6);
    EXPECT_EQ(g.MyColmWidths[6], 30 * 7 + kAutoWidthGap);
    g.mnuAutoWidthAll();
    EXPECT_EQ(g.MyColmWidths[11], Fixed_Pitch("Distance", true) + kAutoWidthGap);

    g.AutoSize = true;
    g.ClientWidth = 1200;
    g.Columns_Set_Working_Arrays();
    const int32_t right = g.MyHeadingRect.back().Right;
    EXPECT_LE(right, 1200);
    EXPECT_GT(right, 1200 - 20);  // rounding down loses under a pixel a column
}

TEST(GridWidths, FirstRowsWidenColumnsThatDoNotFit) {
    GridModel g = Make("Lunations", 12);
    const std::vector<int32_t> before = g.MyColmWidths;
    g.MyDataLabels[9][2] = "Penumbral Lunar Eclipse and more";
    g.Widen_To_Data();
    EXPECT_EQ(g.MyColmWidths[9],
              Fixed_Pitch("Penumbral Lunar Eclipse and more", false) + kAutoWidthGap);
    // Reset Width goes back to the widened width, not below it.
    g.Reset_Width(9);
    EXPECT_EQ(g.MyColmWidths[9], g.MyStartWidths[9]);
    // Columns whose texts fit keep their widths.
    EXPECT_EQ(g.MyColmWidths[1], before[1]);
}

TEST(GridWidths, DragStopsAtTheMinimum) {
    GridModel g = Make("AltAz", 3);
    const Rect h = g.Heading_On_Screen(1);
    EXPECT_EQ(g.Divider_At(h.Right + 2, h.Top + 5), 1);
    g.Resize_Start(1, h.Right);
    g.Resize_MoveLine(h.Left - 50);  // past the left edge: width below zero
    EXPECT_EQ(g.ResizeLineX, h.Left + kMinColumnWidth);
    g.Resize_End();
    EXPECT_FALSE(g.Resizing);
    EXPECT_EQ(g.MyColmWidths[3], kMinColumnWidth);
    EXPECT_EQ(g.MyHeadingRect[2].Left, h.Left + kMinColumnWidth);
    // A wider drag is taken as it is.
    g.Resize_Start(1, g.Heading_On_Screen(1).Right);
    g.Resize_MoveLine(h.Left + 150);
    g.Resize_End();
    EXPECT_EQ(g.MyColmWidths[3], 150);
}

TEST(GridCursor, UpAtTheTopGoesToTheDatesAndDownReturns) {
    GridModel g = Make("AltAz", 40, 900, 300);
    const int32_t page = g.Page_Rows();
    ASSERT_LT(page, 40);
    EXPECT_EQ(g.Move_Cursor(0), CursorMove::Moved);
    EXPECT_EQ(g.Move_Cursor(vkey::Up), CursorMove::ToDates);
    EXPECT_TRUE(g.CursorInDates);
    EXPECT_TRUE(g.Cursor_Rect().Empty());
    EXPECT_EQ(g.Move_Cursor(vkey::Left), CursorMove::Ignored);
    EXPECT_EQ(g.Move_Cursor(vkey::Down), CursorMove::FromDates);
    EXPECT_FALSE(g.CursorInDates);
    EXPECT_EQ(g.MyTrueRow, 0);

    // Down to the bottom of the page scrolls by one row.
    for (int i = 0; i < page; ++i) g.Move_Cursor(vkey::Down);
    EXPECT_EQ(g.MyTrueRow, page);
    EXPECT_EQ(g.MyVScroll, 1);
    EXPECT_EQ(g.MyApparentRow, page - 1);
    // Up from apparent row 0 with rows above scrolls back rather than leaving.
    for (int i = 0; i < page - 1; ++i) g.Move_Cursor(vkey::Up);
    EXPECT_EQ(g.MyApparentRow, 0);
    EXPECT_EQ(g.Move_Cursor(vkey::Up), CursorMove::Moved);
    EXPECT_EQ(g.MyVScroll, 0);
    EXPECT_EQ(g.MyTrueRow, 0);
    // The last row stops the cursor.
    g.Full_Scroll(true);
    EXPECT_EQ(g.MyTrueRow, 39);
    g.Move_Cursor(vkey::Down);
    EXPECT_EQ(g.MyTrueRow, 39);
    EXPECT_EQ(g.MyVScroll, g.Highest_VScroll());
}

TEST(GridCursor, GuardKeysAndColumnsScrollWhole) {
    GridModel g = Make("Planets", 5, 400, 300);
    g.Move_Cursor(0);
    for (int32_t key : {vkey::Enter, vkey::Space, 48, 100, 148})
        EXPECT_EQ(g.Move_Cursor(key), CursorMove::Ignored) << key;
    EXPECT_EQ(g.Move_Cursor(149), CursorMove::Ignored);  // not a key of the grid
    g.Move_Cursor(vkey::Left);
    EXPECT_EQ(g.MyTrueColm, 0);
    for (int i = 0; i < 30; ++i) g.Move_Cursor(vkey::Tab);
    EXPECT_EQ(g.MyTrueColm, g.ColmsInUse);
    // The cursor's column is on show, and the grid stands on a column's edge.
    const Rect c = g.Cursor_Rect();
    EXPECT_GE(c.Left, kRowIndexMargin);
    EXPECT_LE(c.Right, 400);
    EXPECT_EQ(g.Heading_On_Screen(g.MyHScroll).Left, kRowIndexMargin);
    EXPECT_GT(g.MyHScroll, 0);
    EXPECT_EQ(g.MyApparentColm, g.MyTrueColm - g.MyHScroll);
    for (int i = 0; i < 30; ++i) g.Move_Cursor(vkey::Left);
    EXPECT_EQ(g.MyHScroll, 0);
}

TEST(GridCursor, PagesAndHitTests) {
    GridModel g = Make("Clox", 50, 900, 300);
    const int32_t page = g.Page_Rows();
    g.Move_Cursor(0);
    g.Page(vkey::PageDown);
    EXPECT_EQ(g.MyVScroll, page);
    EXPECT_EQ(g.MyTrueRow, page);
    g.Page(vkey::PageDown);
    g.Page(vkey::PageDown);
    g.Page(vkey::PageDown);
    EXPECT_EQ(g.MyVScroll, g.Highest_VScroll());
    EXPECT_EQ(g.MyTrueRow, 49);
    g.Page(vkey::PageUp);
    EXPECT_EQ(g.MyTrueRow, 49 - page);
    g.Full_Scroll(false);
    EXPECT_EQ(g.MyVScroll, 0);

    // A click picks the cell under it; scrolled rows are counted.
    g.Scroll_Rows(3);
    const Rect cell = g.Cell_On_Screen(2, 5);
    EXPECT_EQ(cell.Top, g.Rows_Top() + 2 * g.RowHeight);
    EXPECT_TRUE(g.Cursor_To(cell.Left + 2, cell.Top + 2));
    EXPECT_EQ(g.MyTrueRow, 5);
    EXPECT_EQ(g.MyTrueColm, 2);
    EXPECT_EQ(g.Row_At(3, cell.Top + 1), 5);
    EXPECT_TRUE(g.In_Row_Index(3, cell.Top + 1));
    EXPECT_TRUE(g.In_Corner(3, g.GridTop + 1));
    EXPECT_EQ(g.Heading_At(cell.Left + 1, g.GridTop + 1), 2);
    EXPECT_FALSE(g.Cursor_To(3, 3));
}

TEST(GridHighlight, ColumnsRowsAndAll) {
    GridModel g = Make("Planets", 10);
    g.Highlight_Column_Start(3);
    g.Highlight_Column_Change(1);
    EXPECT_EQ(g.Get_Highlighted_Columns(), (std::vector<int32_t>{1, 2, 3}));
    EXPECT_TRUE(g.Is_Highlighted(2, 0));
    g.Highlight_Row_Start(4);
    g.Highlight_Row_Change(6);
    EXPECT_TRUE(g.Get_Highlighted_Columns().empty());
    EXPECT_TRUE(g.Is_Highlighted(0, 5));
    EXPECT_FALSE(g.Is_Highlighted(0, 7));
    g.Highlight_All(true);
    EXPECT_EQ(g.Get_Highlighted_Columns().size(), 16u);
    g.Highlight_All(false);
    EXPECT_FALSE(g.Is_Highlighted(0, 0));
}

}  // namespace
}  // namespace kelmoran
