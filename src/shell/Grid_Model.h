// The grid of a table screen without any window system: its columns (titles, widths,
// alignment, which are on show and in what order), the rectangles of its cells, the scroll
// state by whole rows and whole columns, the cell cursor, highlighting and the dragging of
// a column's width. The drawing layer (cMainForm) paints what this model says and sends
// the mouse and the keys back to it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "shell/Geometry.h"

namespace kelmoran {

// One column of a screen's table.
struct ColumnDef {
    std::string Long;       // title when it fits
    std::string Short;      // title when the long one does not fit
    int32_t Align = 0;      // 0 left, 1 right, 2 centred
    std::string Sample;     // text whose measure gives the starting width ("" the title)
    bool Shown = true;      // on show when the screen is first opened
    bool Available = true;  // its data exists: only then is it offered or shown
};

// The column tables by screen key ("AltAz", "Clox", "Planets", "Lunations"); the altitude
// titles of AltAz column 3 and Solar Bodies column 5 are `altitude` (long, short). Other
// keys give an empty table. AltAz's Tycho column (16) is not available: no table of Tycho
// numbers is among the star data.
std::vector<ColumnDef> Column_Table(const std::string& key, const std::string& altitudeLong,
                                    const std::string& altitudeShort);

// Highest column number of a grid screen: AltAz 17, Clox 11, Planets 15, Splash 5,
// Lunations 9; -1 for others.
int32_t All_Columns_Of(const std::string& key);

// Virtual key codes the grid acts on.
namespace vkey {
inline constexpr int32_t Tab = 9;
inline constexpr int32_t Enter = 13;
inline constexpr int32_t Space = 32;
inline constexpr int32_t PageUp = 33;
inline constexpr int32_t PageDown = 34;
inline constexpr int32_t End = 35;
inline constexpr int32_t Home = 36;
inline constexpr int32_t Left = 37;
inline constexpr int32_t Up = 38;
inline constexpr int32_t Right = 39;
inline constexpr int32_t Down = 40;
}  // namespace vkey

// What a move of the cursor did.
enum class CursorMove { Ignored, Moved, ToDates, FromDates };

// Width of the row-number margin at the left of every grid.
inline constexpr int32_t kRowIndexMargin = 25;
// Gap added to the longest text by the automatic widths.
inline constexpr int32_t kAutoWidthGap = 10;
// Narrowest width a column can be dragged to.
inline constexpr int32_t kMinColumnWidth = 16;

class GridModel {
  public:
    // Measures a text in the grid's font (bold for headings), in pixels.
    using Measure = std::function<int32_t(const std::string& text, bool bold)>;

    // Sets the grid up for screen `key` from its column table; widths from the samples.
    void Setup(const std::string& key, std::vector<ColumnDef> table, Measure measure);

    // --- fields ---
    std::string Key;
    int32_t AllColumns = -1;    // highest column number
    int32_t ColmsInUse = -1;    // highest position in use among the visible columns
    int32_t Bottomlabels = -1;  // highest data row index
    std::vector<std::vector<std::string>> MyColmTitles;  // [column][0 long, 1 short]
    std::vector<int32_t> MyColmWidths;                   // by column number
    std::vector<int32_t> MyStartWidths;                  // the widths of the opening layout
    std::vector<int32_t> MyMinWidth;
    std::vector<int16_t> MyColmVisible;
    std::vector<int16_t> MyColmAvailable;  // by column: non-zero when its data exists
    std::vector<int32_t> MyColmPtr;        // position -> column number, visible ones first
    std::vector<int32_t> MyColmFormat;
    std::vector<std::vector<std::string>> MyDataLabels;  // [column][row]
    std::vector<uint32_t> MyRowColours;  // [row] text colour as 0xRRGGBB; none or 0 black
    std::vector<std::vector<Rect>> MyLabelsRect;         // [position][row], unscrolled
    std::vector<Rect> MyHeadingRect;                     // [position], unscrolled
    bool AutoSize = false;  // "Auto-Size Columns": the total is scaled to the screen
    bool ShipTimeMenu = false;  // Clocks offers its ship-time items (a voyage is followed)

    // Geometry: the grid's area in the screen's picture; the headings at its top, then
    // rows of RowHeight.
    int32_t GridTop = 0;
    int32_t ClientWidth = 0;
    int32_t ClientHeight = 0;
    int32_t RowHeight = 18;
    int32_t HeadingHeight = 20;

    // Cursor and scroll: true rows and columns count from the data's start, apparent ones
    // from the first on show. VScroll is the first row on show, HScroll the first position.
    int32_t MyTrueRow = 0, MyApparentRow = 0, MyTrueColm = 0, MyApparentColm = 0;
    int32_t MyVScroll = 0, MyHScroll = 0;
    bool CursorInDates = false;  // the cursor has left the grid for the date strip

    // Highlighting, by position and by row.
    std::vector<bool> HighlightedColms;
    std::vector<bool> HighlightedRows;
    bool HighlightingColumns = false, HighlightingRows = false, HighlightingAll = false;

    // A drag of a column's width in progress.
    bool Resizing = false;
    int32_t ResizePos = -1;   // position whose right edge is dragged
    int32_t ResizeLineX = 0;  // where the dashed line stands, picture pixels

    // --- columns ---
    // Writes the visible columns in order into MyColmPtr, then the hidden ones, and
    // rebuilds the working arrays.
    void Column_Set_ColmPtr();
    // ColmsInUse, the heading and cell rectangles for the present widths and rows.
    void Columns_Set_Working_Arrays();
    // New cell texts, [column][row]; `rows` rows.
    void Set_Data(std::vector<std::vector<std::string>> labels, int32_t rows);
    // Title of a position as painted: long if it fits the width, else short.
    std::string Heading_Text(int32_t position) const;
    // Width of a column measured from its sample text, or its title without one.
    int32_t Sample_Width(int32_t column) const;

    // The heading pop-up of this screen.
    std::vector<std::string> Menus_Create_Columns() const;
    // The "Insert Column" items: the long titles of the hidden columns whose data exists.
    std::vector<std::string> Menu_Insert_AddRemove() const;
    // Marks a column's data as existing or not (a table loaded later makes it available);
    // a column that becomes unavailable is hidden.
    void Set_Column_Available(int32_t column, bool available);
    // Hides the highlighted columns, or the one at `position` when none is; on Clocks the
    // date stays and the twilights are hidden on both sides of noon.
    void mnuHide(int32_t position);
    // Makes the column of that long title visible at `position`; false if none is hidden
    // and available.
    bool mnuInsert(const std::string& title, int32_t position);
    void Reset_Width(int32_t position);
    void Reset_All_Widths();
    // Width of the column at `position` (or all visible) to its longest text or its short
    // title, with a gap.
    void mnuAutoWidth(int32_t position);
    void mnuAutoWidthAll();
    // Widens, in the opening layout too, every column whose texts do not fit its width:
    // run on the first rows of a screen, whose texts may be longer than the samples.
    void Widen_To_Data();
    // Scales the visible widths so that they fill the screen's width when AutoSize is on.
    void Auto_Size_To_Screen();
    // Columns on show: numbers of the visible columns in order.
    std::vector<int32_t> Visible_Columns() const;

    // --- geometry and hit tests (x, y in picture pixels) ---
    // Offsets of the scrolled grid: pixels to add to an unscrolled rectangle.
    int32_t Scroll_DX() const;
    int32_t Scroll_DY() const;
    // Rows whose whole height fits under the headings.
    int32_t Page_Rows() const;
    int32_t Rows_Top() const { return GridTop + HeadingHeight; }
    Rect Heading_On_Screen(int32_t position) const;
    Rect Cell_On_Screen(int32_t position, int32_t row) const;
    // The position of the heading at (x, y), or -1.
    int32_t Heading_At(int32_t x, int32_t y) const;
    // The data row at (x, y) (cells or row numbers), or -1.
    int32_t Row_At(int32_t x, int32_t y) const;
    // The position whose right edge is within 3 pixels of x on the headings, or -1.
    int32_t Divider_At(int32_t x, int32_t y) const;
    bool In_Corner(int32_t x, int32_t y) const;
    bool In_Row_Index(int32_t x, int32_t y) const;

    // --- scrolling ---
    void Scroll_Rows(int32_t by);
    void Scroll_To_Position(int32_t position);
    // Scrolls so that position `p` lies within the width on show.
    void Bring_Position_Into_View(int32_t p);
    // The last position that is scrolled to the left.
    int32_t Highest_HScroll() const;
    int32_t Highest_VScroll() const;

    // --- cursor ---
    // Moves the cell cursor by a key (Up, Down, Left, Right, Tab as Right; 0 only
    // places it on a valid cell). Enter, Space and codes 48 .. 148 are ignored.
    CursorMove Move_Cursor(int32_t key);
    // Page Up/Down: a page of rows and the cursor with them; Home/End: to the ends.
    void Page(int32_t key);
    void Full_Scroll(bool toEnd);
    // Puts the cursor on the cell at (x, y); false if none is there.
    bool Cursor_To(int32_t x, int32_t y);
    Rect Cursor_Rect() const;
    int32_t Cursor_Column() const;  // column number under the cursor

    // --- highlighting ---
    void Highlight_Column_Start(int32_t position);
    void Highlight_Column_Change(int32_t position);
    void Highlight_Row_Start(int32_t row);
    void Highlight_Row_Change(int32_t row);
    void Highlight_All(bool on);
    void Clear_Highlights();
    // Column numbers of the highlighted positions.
    std::vector<int32_t> Get_Highlighted_Columns() const;
    bool Is_Highlighted(int32_t position, int32_t row) const;

    // --- width by dragging ---
    void Resize_Start(int32_t position, int32_t x);
    void Resize_MoveLine(int32_t x);
    // Stores the new width, not below the minimum.
    void Resize_End();

    // --- the gestures of the left button ---
    // A left press at (x, y), on the divider `divider` or the heading `heading` (or -1):
    // begins dragging the divider, highlighting the column, all, or the row; or moves the
    // cursor to the cell and clears the highlights. True when the cursor moved.
    bool Press(int32_t x, int32_t y, int32_t divider, int32_t heading);
    // The position of the column whose heading on screen lies at or right of `x`.
    int32_t Position_Near(int32_t x) const;
    // The mouse moved to (x, y) with the left button down: the divider being dragged
    // follows it, or the highlighted columns or rows reach it. False when no gesture is
    // under way (nothing to draw again).
    bool Drag_To(int32_t x, int32_t y);
    // The left button went up at `x`: a divider being dragged takes its width there and
    // every highlighting gesture ends. True when a width changed.
    bool End_Gestures(int32_t x);

  private:
    Measure measure_;
    std::vector<std::string> samples_;
    int32_t highlightAnchor_ = -1;
    std::vector<int32_t> positionWidths_;
    int32_t Text_Width(const std::string& s, bool bold) const;
    void Clip_Cursor();
    // MyColmPtr after columns were hidden: those on show in their order, then the rest.
    void Keep_Order_After_Hiding();
};

}  // namespace kelmoran
