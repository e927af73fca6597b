#include "shell/Grid_Model.h"

#include <algorithm>
#include <cmath>

namespace kelmoran {

namespace {

// Sample texts of the starting widths.
constexpr const char* kDateSample = "00 May '00 ";
constexpr const char* kTimeSample = " 00:00:00 ";
constexpr const char* kMonthSample = "September";
constexpr const char* kPositionSample = " 41\u00B0 23' N/   12\u00B0 20' W ";
constexpr const char* kVoyageTimeSample = " * 00/ 00:00   ";
constexpr const char* kEclipseSample = "Lunar/Total Solar Eclipse";
constexpr const char* kAngleSample = " 000\u00B0 00'.0 ";
constexpr const char* kAltitudeSample = " -00\u00B0 00'.0 ";
constexpr const char* kDeclinationSample = " 00\u00B0 00'.0 N ";
constexpr const char* kLongitudeSample = " 000\u00B0 00'.0 W ";
constexpr const char* kPhaseSample = " * 00 00:00 ";

}  // namespace

int32_t All_Columns_Of(const std::string& key) {
    if (key == "AltAz") return 17;
    if (key == "Clox") return 11;
    if (key == "Planets") return 15;
    if (key == "Splash") return 5;
    if (key == "Lunations") return 9;
    return -1;
}

std::vector<ColumnDef> Column_Table(const std::string& key, const std::string& altitudeLong,
                                    const std::string& altitudeShort) {
    if (key == "AltAz") {
        return {
            {"Designation", "Desig", 2, "", false},
            {"Constellation", "Constel", 0, "", false},
            {"Name", "Name", 0, " Kaus Australis ", true},
            {altitudeLong, altitudeShort, 1, kAltitudeSample, true},
            {"Azimiuth", "Az", 1, " 000\u00B0.0 T ", true},
            {"G.H.A.", "GHA", 1, kAngleSample, false},
            {"S.H.A.", "SHA", 1, kAngleSample, false},
            {"Declination", "Dec", 1, kDeclinationSample, false},
            {"Magnetic", "Mag Az", 1, " 000\u00B0.0 M ", false},
            {"Magnitude", "Mag", 1, "", true},
            {"Semi-Diameter", "SD", 1, " 00'.0 ", false},
            {"Total Correction", "TCorr", 1, " -00'.0 ", false},
            {"True  Altitude", "True Alt.", 1, kAltitudeSample, false},
            {"Right Ascension", "RA", 1, " 00h 00m 00s ", false},
            {"Henry Draper", "HD", 1, " 000000 ", false},
            {"Hipparchos", "Hip", 1, " 000000 ", false},
            // No table of Tycho numbers is among the star data: the column is kept for
            // when one is, and is neither offered nor shown until then.
            {"Tycho", "Tycho", 1, " 0000-00000-0 ", false, false},
            {"Radius", "R", 1, " 000'.0 ", false},
        };
    }
    if (key == "Clox") {
        std::vector<ColumnDef> t = {
            {"Date", "Date", 0, "Wed " + std::string(kDateSample), true},
            {"Position @ 12:00", "12:00 Posn", 1, kPositionSample, true},
        };
        for (const char* title : {"Astronomical", "Nautical", "Civil", "Sunrise", "Noon", "Sunset",
                                  "Civil", "Nautical", "Astronomical"})
            t.push_back({title, title, 1, kTimeSample, true});
        t.push_back({"Ship Time", "ST", 1, kVoyageTimeSample, true});
        return t;
    }
    if (key == "Planets") {
        return {
            {"Date", "Date", 0, kDateSample, true},
            {"Time", "Time", 1, kTimeSample, true},
            {"Latitude", "Latitude", 1, kDeclinationSample, true},
            {"Longitude", "Longitude", 1, kLongitudeSample, true},
            {"True Altitude", "True Alt", 1, kAltitudeSample, true},
            {altitudeLong, altitudeShort, 1, kAltitudeSample, true},
            {"Azimuth", "Az", 1, " 000\u00B0.0 T ", true},
            {"Right Ascension", "RA", 1, " 00h 00m 00s ", true},
            {"GHA", "GHA", 1, kAngleSample, true},
            {"SHA", "SHA", 1, kAngleSample, true},
            {"Declination", "Declination", 1, kDeclinationSample, true},
            {"Distance", "Distance", 1, " 000,000 Km ", true},
            {"Semi-Diameter", "SD", 1, " 00'.00 ", true},
            {"Magnitude", "Magnitude", 1, "", true},
            {"Aries", "Aries", 1, kAngleSample, true},
            {"Total Correction", "T.C.", 1, " -00'.0 ", true},
        };
    }
    if (key == "Lunations") {
        std::vector<ColumnDef> t = {{"Month", "Month", 0, kMonthSample, true}};
        for (int group = 0; group < 2; ++group) {
            t.push_back({"New", "New", 1, kPhaseSample, true});
            t.push_back({"First Quarter", "1st Qtr", 1, kPhaseSample, true});
            t.push_back({"Full", "Full", 1, kPhaseSample, true});
            t.push_back({"Last Quarter", "3rd Qtr", 1, kPhaseSample, true});
        }
        t.push_back({"Eclipses", "Eclipses", 0, kEclipseSample, true});
        return t;
    }
    return {};
}

int32_t GridModel::Text_Width(const std::string& s, bool bold) const {
    if (measure_) return measure_(s, bold);
    return static_cast<int32_t>(s.size()) * 7;
}

void GridModel::Setup(const std::string& key, std::vector<ColumnDef> table, Measure measure) {
    Key = key;
    measure_ = std::move(measure);
    AllColumns = static_cast<int32_t>(table.size()) - 1;
    const size_t n = table.size();
    MyColmTitles.assign(n, {"", ""});
    MyColmWidths.assign(n, 0);
    MyStartWidths.assign(n, 0);
    MyMinWidth.assign(n, kMinColumnWidth);
    MyColmVisible.assign(n, 0);
    MyColmAvailable.assign(n, 0);
    MyColmFormat.assign(n, 0);
    samples_.assign(n, "");
    for (size_t c = 0; c < n; ++c) {
        MyColmTitles[c] = {table[c].Long, table[c].Short.empty() ? table[c].Long : table[c].Short};
        MyColmFormat[c] = table[c].Align;
        MyColmAvailable[c] = table[c].Available ? -1 : 0;
        MyColmVisible[c] = table[c].Shown && table[c].Available ? -1 : 0;
        samples_[c] = table[c].Sample;
        MyStartWidths[c] = MyColmWidths[c] = Sample_Width(static_cast<int32_t>(c));
    }
    MyDataLabels.assign(n, {});
    Bottomlabels = -1;
    MyTrueRow = MyTrueColm = MyVScroll = MyHScroll = 0;
    MyApparentRow = MyApparentColm = 0;
    CursorInDates = false;
    Column_Set_ColmPtr();
}

int32_t GridModel::Sample_Width(int32_t column) const {
    if (column < 0 || column > AllColumns) return 0;
    const auto c = static_cast<size_t>(column);
    const std::string& sample = samples_[c];
    // With no sample, the title is the measure, in the heading's bold face.
    const int32_t w = sample.empty() ? Text_Width(" " + MyColmTitles[c][0] + " ", true)
                                     : Text_Width(sample, false);
    return std::max(w, MyMinWidth[c]);
}

void GridModel::Column_Set_ColmPtr() {
    MyColmPtr.clear();
    for (int32_t c = 0; c <= AllColumns; ++c)
        if (MyColmVisible[static_cast<size_t>(c)]) MyColmPtr.push_back(c);
    for (int32_t c = 0; c <= AllColumns; ++c)
        if (!MyColmVisible[static_cast<size_t>(c)]) MyColmPtr.push_back(c);
    Columns_Set_Working_Arrays();
}

void GridModel::Columns_Set_Working_Arrays() {
    ColmsInUse = -1;
    for (int16_t v : MyColmVisible)
        if (v) ++ColmsInUse;
    if (AutoSize) Auto_Size_To_Screen();
    const auto positions = static_cast<size_t>(std::max(ColmsInUse + 1, 0));
    positionWidths_.assign(positions, 0);
    MyHeadingRect.assign(positions, Rect{});
    const auto rows = static_cast<size_t>(std::max(Bottomlabels + 1, 0));
    MyLabelsRect.assign(positions, std::vector<Rect>(rows));
    int32_t left = kRowIndexMargin;
    for (size_t p = 0; p < positions; ++p) {
        const int32_t w = MyColmWidths[static_cast<size_t>(MyColmPtr[p])];
        positionWidths_[p] = w;
        MyHeadingRect[p] = {left, GridTop, left + w, GridTop + HeadingHeight};
        int32_t top = GridTop + HeadingHeight;
        for (size_t r = 0; r < rows; ++r) {
            MyLabelsRect[p][r] = {left, top, left + w, top + RowHeight};
            top += RowHeight;
        }
        left += w;
    }
    HighlightedColms.resize(positions, false);
    HighlightedRows.resize(rows, false);
    MyHScroll = std::clamp(MyHScroll, 0, Highest_HScroll());
    MyVScroll = std::clamp(MyVScroll, 0, Highest_VScroll());
    Clip_Cursor();
}

void GridModel::Set_Data(std::vector<std::vector<std::string>> labels, int32_t rows) {
    // Columns past AllColumns are data without a heading (AltAz keeps its body numbers
    // in column 18).
    labels.resize(std::max(labels.size(), static_cast<size_t>(AllColumns + 1)));
    for (auto& column : labels) column.resize(static_cast<size_t>(std::max(rows, 0)));
    MyDataLabels = std::move(labels);
    Bottomlabels = rows - 1;
    HighlightedRows.assign(static_cast<size_t>(std::max(rows, 0)), false);
    Columns_Set_Working_Arrays();
}

std::string GridModel::Heading_Text(int32_t position) const {
    if (position < 0 || position > ColmsInUse) return "";
    const auto c = static_cast<size_t>(MyColmPtr[static_cast<size_t>(position)]);
    const int32_t room = MyColmWidths[c] - 4;
    if (Text_Width(MyColmTitles[c][0], true) <= room) return MyColmTitles[c][0];
    return MyColmTitles[c][1];
}

std::vector<int32_t> GridModel::Visible_Columns() const {
    return std::vector<int32_t>(MyColmPtr.begin(), MyColmPtr.begin() + std::max(ColmsInUse + 1, 0));
}

std::vector<std::string> GridModel::Menus_Create_Columns() const {
    std::vector<std::string> items = {"Hide", "Reset Width", "Reset All Widths"};
    if (Key == "AltAz") {
        items.insert(items.end(), {"-", "Sort Ascending", "Sort Descending", "Restore Order"});
    } else if (Key == "Clox" && ShipTimeMenu) {
        items.insert(items.end(), {"-", "Apply to Voyage", "Calc Ship Time",
                                   "Use Plan for Ship Time"});
    }
    return items;
}

std::vector<std::string> GridModel::Menu_Insert_AddRemove() const {
    std::vector<std::string> items;
    for (int32_t c = 0; c <= AllColumns; ++c)
        if (!MyColmVisible[static_cast<size_t>(c)] && MyColmAvailable[static_cast<size_t>(c)])
            items.push_back(MyColmTitles[static_cast<size_t>(c)][0]);
    return items;
}

void GridModel::Set_Column_Available(int32_t column, bool available) {
    if (column < 0 || column > AllColumns) return;
    const auto c = static_cast<size_t>(column);
    MyColmAvailable[c] = available ? -1 : 0;
    if (available || !MyColmVisible[c]) return;
    MyColmVisible[c] = 0;
    Keep_Order_After_Hiding();
}

void GridModel::mnuHide(int32_t position) {
    std::vector<int32_t> columns = Get_Highlighted_Columns();
    if (columns.empty() && position >= 0 && position <= ColmsInUse)
        columns.push_back(MyColmPtr[static_cast<size_t>(position)]);
    for (int32_t c : columns) {
        MyColmVisible[static_cast<size_t>(c)] = 0;
        // On Clocks a twilight is hidden on both sides of noon.
        if (Key == "Clox" && ((c >= 2 && c <= 5) || (c >= 7 && c <= 10)))
            MyColmVisible[static_cast<size_t>(12 - c)] = 0;
    }
    // Clocks always keeps its date; any other screen keeps at least one column.
    if (Key == "Clox") {
        MyColmVisible[0] = -1;
    } else if (std::none_of(MyColmVisible.begin(), MyColmVisible.end(),
                            [](int16_t v) { return v != 0; }) &&
               !columns.empty()) {
        MyColmVisible[static_cast<size_t>(columns.front())] = -1;
    }
    Keep_Order_After_Hiding();
}

void GridModel::Keep_Order_After_Hiding() {
    Clear_Highlights();
    // The columns left on show keep the order the user gave them.
    std::vector<int32_t> order;
    for (int32_t c : MyColmPtr)
        if (MyColmVisible[static_cast<size_t>(c)]) order.push_back(c);
    for (int32_t c = 0; c <= AllColumns; ++c)
        if (!MyColmVisible[static_cast<size_t>(c)]) order.push_back(c);
    MyColmPtr = order;
    Columns_Set_Working_Arrays();
}

bool GridModel::mnuInsert(const std::string& title, int32_t position) {
    int32_t column = -1;
    for (int32_t c = 0; c <= AllColumns; ++c)
        if (!MyColmVisible[static_cast<size_t>(c)] && MyColmAvailable[static_cast<size_t>(c)] &&
            MyColmTitles[static_cast<size_t>(c)][0] == title) {
            column = c;
            break;
        }
    if (column < 0) return false;
    MyColmVisible[static_cast<size_t>(column)] = -1;
    // The order of the visible columns with the new one standing at `position`.
    std::vector<int32_t> order = Visible_Columns();
    position = std::clamp(position, 0, static_cast<int32_t>(order.size()));
    order.insert(order.begin() + position, column);
    for (int32_t c = 0; c <= AllColumns; ++c)
        if (!MyColmVisible[static_cast<size_t>(c)]) order.push_back(c);
    MyColmPtr = order;
    Clear_Highlights();
    Columns_Set_Working_Arrays();
    return true;
}

void GridModel::Reset_Width(int32_t position) {
    if (position < 0 || position > ColmsInUse) return;
    const auto c = static_cast<size_t>(MyColmPtr[static_cast<size_t>(position)]);
    MyColmWidths[c] = MyStartWidths[c];
    Columns_Set_Working_Arrays();
}

void GridModel::Reset_All_Widths() {
    MyColmWidths = MyStartWidths;
    Columns_Set_Working_Arrays();
}

void GridModel::mnuAutoWidth(int32_t position) {
    if (position < 0 || position > ColmsInUse) return;
    const auto c = static_cast<size_t>(MyColmPtr[static_cast<size_t>(position)]);
    int32_t w = Text_Width(MyColmTitles[c][1], true);
    for (const std::string& s : MyDataLabels[c]) w = std::max(w, Text_Width(s, false));
    MyColmWidths[c] = std::max(w + kAutoWidthGap, MyMinWidth[c]);
    Columns_Set_Working_Arrays();
}

void GridModel::mnuAutoWidthAll() {
    for (int32_t p = 0; p <= ColmsInUse; ++p) {
        const auto c = static_cast<size_t>(MyColmPtr[static_cast<size_t>(p)]);
        int32_t w = Text_Width(MyColmTitles[c][1], true);
        for (const std::string& s : MyDataLabels[c]) w = std::max(w, Text_Width(s, false));
        MyColmWidths[c] = std::max(w + kAutoWidthGap, MyMinWidth[c]);
    }
    Columns_Set_Working_Arrays();
}

void GridModel::Widen_To_Data() {
    for (int32_t c = 0; c <= AllColumns; ++c) {
        const auto i = static_cast<size_t>(c);
        int32_t w = 0;
        for (const std::string& s : MyDataLabels[i]) w = std::max(w, Text_Width(s, false));
        if (w == 0) continue;
        w += kAutoWidthGap;
        if (w > MyStartWidths[i]) MyStartWidths[i] = w;
        if (w > MyColmWidths[i]) MyColmWidths[i] = w;
    }
    Columns_Set_Working_Arrays();
}

void GridModel::Auto_Size_To_Screen() {
    const int32_t room = ClientWidth - kRowIndexMargin;
    int64_t total = 0;
    for (int32_t c : Visible_Columns()) total += MyColmWidths[static_cast<size_t>(c)];
    if (room <= 0 || total <= 0) return;
    const double scale = static_cast<double>(room) / static_cast<double>(total);
    for (int32_t c : Visible_Columns()) {
        auto& w = MyColmWidths[static_cast<size_t>(c)];
        w = std::max(static_cast<int32_t>(std::floor(w * scale)),
                     MyMinWidth[static_cast<size_t>(c)]);
    }
}

int32_t GridModel::Scroll_DX() const {
    if (MyHScroll <= 0 || MyHeadingRect.empty()) return 0;
    return kRowIndexMargin - MyHeadingRect[static_cast<size_t>(MyHScroll)].Left;
}

int32_t GridModel::Scroll_DY() const {
    return -MyVScroll * RowHeight;
}

int32_t GridModel::Page_Rows() const {
    const int32_t room = ClientHeight - Rows_Top();
    return std::max(room / std::max(RowHeight, 1), 1);
}

Rect GridModel::Heading_On_Screen(int32_t position) const {
    if (position < 0 || position > ColmsInUse) return {};
    return MyHeadingRect[static_cast<size_t>(position)].Offset(Scroll_DX(), 0);
}

Rect GridModel::Cell_On_Screen(int32_t position, int32_t row) const {
    if (position < 0 || position > ColmsInUse || row < 0 || row > Bottomlabels) return {};
    return MyLabelsRect[static_cast<size_t>(position)][static_cast<size_t>(row)].Offset(
        Scroll_DX(), Scroll_DY());
}

int32_t GridModel::Heading_At(int32_t x, int32_t y) const {
    if (y < GridTop || y >= Rows_Top() || x < kRowIndexMargin) return -1;
    for (int32_t p = MyHScroll; p <= ColmsInUse; ++p)
        if (Heading_On_Screen(p).Contains(x, y)) return p;
    return -1;
}

int32_t GridModel::Row_At(int32_t x, int32_t y) const {
    if (y < Rows_Top() || x < 0) return -1;
    const int32_t r = (y - Rows_Top()) / std::max(RowHeight, 1) + MyVScroll;
    return r <= Bottomlabels ? r : -1;
}

int32_t GridModel::Divider_At(int32_t x, int32_t y) const {
    if (y < GridTop || y >= Rows_Top()) return -1;
    for (int32_t p = MyHScroll; p <= ColmsInUse; ++p)
        if (std::abs(Heading_On_Screen(p).Right - x) <= 3) return p;
    return -1;
}

bool GridModel::In_Corner(int32_t x, int32_t y) const {
    return x >= 0 && x < kRowIndexMargin && y >= GridTop && y < Rows_Top();
}

bool GridModel::In_Row_Index(int32_t x, int32_t y) const {
    return x >= 0 && x < kRowIndexMargin && Row_At(x, y) >= 0;
}

int32_t GridModel::Highest_HScroll() const {
    if (ColmsInUse < 0) return 0;
    const int32_t room = ClientWidth - kRowIndexMargin;
    const int32_t right = MyHeadingRect[static_cast<size_t>(ColmsInUse)].Right;
    for (int32_t p = 0; p <= ColmsInUse; ++p)
        if (right - MyHeadingRect[static_cast<size_t>(p)].Left <= room) return p;
    return ColmsInUse;
}

int32_t GridModel::Highest_VScroll() const {
    return std::max(Bottomlabels + 1 - Page_Rows(), 0);
}

void GridModel::Scroll_Rows(int32_t by) {
    MyVScroll = std::clamp(MyVScroll + by, 0, Highest_VScroll());
    MyApparentRow = MyTrueRow - MyVScroll;
}

void GridModel::Scroll_To_Position(int32_t position) {
    MyHScroll = std::clamp(position, 0, Highest_HScroll());
    MyApparentColm = MyTrueColm - MyHScroll;
}

void GridModel::Bring_Position_Into_View(int32_t p) {
    if (p < 0 || p > ColmsInUse) return;
    if (p < MyHScroll) {
        MyHScroll = p;
    } else {
        const int32_t room = ClientWidth - kRowIndexMargin;
        const int32_t right = MyHeadingRect[static_cast<size_t>(p)].Right;
        while (MyHScroll < p && right - MyHeadingRect[static_cast<size_t>(MyHScroll)].Left > room)
            ++MyHScroll;
    }
    MyApparentColm = MyTrueColm - MyHScroll;
}

void GridModel::Clip_Cursor() {
    MyTrueRow = std::clamp(MyTrueRow, 0, std::max(Bottomlabels, 0));
    MyTrueColm = std::clamp(MyTrueColm, 0, std::max(ColmsInUse, 0));
    MyApparentRow = MyTrueRow - MyVScroll;
    MyApparentColm = MyTrueColm - MyHScroll;
}

CursorMove GridModel::Move_Cursor(int32_t key) {
    if (key == vkey::Enter || key == vkey::Space || (key >= 48 && key <= 148))
        return CursorMove::Ignored;
    Clip_Cursor();
    CursorMove result = CursorMove::Moved;
    switch (key) {
        case vkey::Up:
            if (CursorInDates) return CursorMove::Ignored;
            if (MyApparentRow > 0) {
                --MyTrueRow;
            } else if (MyTrueRow > 0) {
                --MyTrueRow;
                --MyVScroll;
            } else {
                // At the true top the cursor leaves the grid for the date strip.
                CursorInDates = true;
                return CursorMove::ToDates;
            }
            break;
        case vkey::Down:
            if (CursorInDates) {
                CursorInDates = false;
                MyTrueRow = MyVScroll;
                result = CursorMove::FromDates;
            } else if (MyTrueRow < Bottomlabels) {
                ++MyTrueRow;
                if (MyTrueRow - MyVScroll >= Page_Rows()) ++MyVScroll;
            }
            break;
        case vkey::Left:
            if (CursorInDates) return CursorMove::Ignored;
            if (MyTrueColm > 0) --MyTrueColm;
            break;
        case vkey::Right:
        case vkey::Tab:
            if (CursorInDates) return CursorMove::Ignored;
            if (MyTrueColm < ColmsInUse) ++MyTrueColm;
            break;
        case 0:
            CursorInDates = false;
            break;
        default:
            return CursorMove::Ignored;
    }
    // The row and the column on show hold the cursor.
    if (MyTrueRow < MyVScroll) MyVScroll = MyTrueRow;
    if (MyTrueRow - MyVScroll >= Page_Rows()) MyVScroll = MyTrueRow - Page_Rows() + 1;
    MyVScroll = std::clamp(MyVScroll, 0, Highest_VScroll());
    MyApparentRow = MyTrueRow - MyVScroll;
    Bring_Position_Into_View(MyTrueColm);
    return result;
}

void GridModel::Page(int32_t key) {
    const int32_t n = Page_Rows();
    const int32_t by = key == vkey::PageUp ? -n : n;
    MyVScroll = std::clamp(MyVScroll + by, 0, Highest_VScroll());
    MyTrueRow = std::clamp(MyTrueRow + by, 0, std::max(Bottomlabels, 0));
    MyApparentRow = MyTrueRow - MyVScroll;
}

void GridModel::Full_Scroll(bool toEnd) {
    MyVScroll = toEnd ? Highest_VScroll() : 0;
    MyTrueRow = toEnd ? std::max(Bottomlabels, 0) : 0;
    MyApparentRow = MyTrueRow - MyVScroll;
}

bool GridModel::Cursor_To(int32_t x, int32_t y) {
    const int32_t row = Row_At(x, y);
    if (row < 0 || x < kRowIndexMargin) return false;
    for (int32_t p = MyHScroll; p <= ColmsInUse; ++p)
        if (Cell_On_Screen(p, row).Contains(x, y)) {
            MyTrueRow = row;
            MyTrueColm = p;
            CursorInDates = false;
            Clip_Cursor();
            return true;
        }
    return false;
}

Rect GridModel::Cursor_Rect() const {
    if (CursorInDates) return {};
    return Cell_On_Screen(MyTrueColm, MyTrueRow);
}

int32_t GridModel::Cursor_Column() const {
    if (MyTrueColm < 0 || MyTrueColm > ColmsInUse) return -1;
    return MyColmPtr[static_cast<size_t>(MyTrueColm)];
}

void GridModel::Highlight_Column_Start(int32_t position) {
    Clear_Highlights();
    if (position < 0 || position > ColmsInUse) return;
    HighlightingColumns = true;
    highlightAnchor_ = position;
    HighlightedColms[static_cast<size_t>(position)] = true;
}

void GridModel::Highlight_Column_Change(int32_t position) {
    if (!HighlightingColumns || position < 0 || position > ColmsInUse) return;
    std::fill(HighlightedColms.begin(), HighlightedColms.end(), false);
    for (int32_t p = std::min(position, highlightAnchor_);
         p <= std::max(position, highlightAnchor_); ++p)
        HighlightedColms[static_cast<size_t>(p)] = true;
}

void GridModel::Highlight_Row_Start(int32_t row) {
    Clear_Highlights();
    if (row < 0 || row > Bottomlabels) return;
    HighlightingRows = true;
    highlightAnchor_ = row;
    HighlightedRows[static_cast<size_t>(row)] = true;
}

void GridModel::Highlight_Row_Change(int32_t row) {
    if (!HighlightingRows || row < 0 || row > Bottomlabels) return;
    std::fill(HighlightedRows.begin(), HighlightedRows.end(), false);
    for (int32_t r = std::min(row, highlightAnchor_); r <= std::max(row, highlightAnchor_); ++r)
        HighlightedRows[static_cast<size_t>(r)] = true;
}

void GridModel::Highlight_All(bool on) {
    Clear_Highlights();
    HighlightingAll = on;
}

void GridModel::Clear_Highlights() {
    std::fill(HighlightedColms.begin(), HighlightedColms.end(), false);
    std::fill(HighlightedRows.begin(), HighlightedRows.end(), false);
    HighlightingAll = HighlightingColumns = HighlightingRows = false;
    highlightAnchor_ = -1;
}

std::vector<int32_t> GridModel::Get_Highlighted_Columns() const {
    std::vector<int32_t> columns;
    for (int32_t p = 0; p <= ColmsInUse; ++p)
        if (HighlightingAll || HighlightedColms[static_cast<size_t>(p)])
            columns.push_back(MyColmPtr[static_cast<size_t>(p)]);
    return columns;
}

bool GridModel::Is_Highlighted(int32_t position, int32_t row) const {
    if (HighlightingAll) return true;
    if (position >= 0 && position <= ColmsInUse && HighlightedColms[static_cast<size_t>(position)])
        return true;
    return row >= 0 && row <= Bottomlabels && HighlightedRows[static_cast<size_t>(row)];
}

void GridModel::Resize_Start(int32_t position, int32_t x) {
    if (position < 0 || position > ColmsInUse) return;
    Resizing = true;
    ResizePos = position;
    ResizeLineX = x;
}

void GridModel::Resize_MoveLine(int32_t x) {
    if (!Resizing) return;
    // The line never goes left of the minimum width.
    const Rect h = Heading_On_Screen(ResizePos);
    const int32_t c = MyColmPtr[static_cast<size_t>(ResizePos)];
    ResizeLineX = std::max(x, h.Left + MyMinWidth[static_cast<size_t>(c)]);
}

void GridModel::Resize_End() {
    if (!Resizing) return;
    Resizing = false;
    const Rect h = Heading_On_Screen(ResizePos);
    const auto c = static_cast<size_t>(MyColmPtr[static_cast<size_t>(ResizePos)]);
    MyColmWidths[c] = std::max(ResizeLineX - h.Left, MyMinWidth[c]);
    ResizePos = -1;
    Columns_Set_Working_Arrays();
}

int32_t GridModel::Position_Near(int32_t x) const {
    for (int32_t p = MyHScroll; p <= ColmsInUse; ++p)
        if (x < Heading_On_Screen(p).Right) return p;
    return ColmsInUse;
}

bool GridModel::Press(int32_t x, int32_t y, int32_t divider, int32_t heading) {
    if (divider >= 0) {
        Resize_Start(divider, x);
    } else if (heading >= 0) {
        Highlight_Column_Start(heading);
    } else if (In_Corner(x, y)) {
        Highlight_All(!HighlightingAll);
    } else if (In_Row_Index(x, y)) {
        Highlight_Row_Start(Row_At(x, y));
    } else if (Cursor_To(x, y)) {
        Clear_Highlights();
        return true;
    }
    return false;
}

bool GridModel::Drag_To(int32_t x, int32_t y) {
    if (Resizing) {
        Resize_MoveLine(x);
    } else if (HighlightingColumns) {
        Highlight_Column_Change(Position_Near(x));
    } else if (HighlightingRows) {
        const int32_t row = Row_At(x, std::max(y, Rows_Top()));
        Highlight_Row_Change(row < 0 ? Bottomlabels : row);
    } else {
        return false;
    }
    return true;
}

bool GridModel::End_Gestures(int32_t x) {
    const bool resized = Resizing;
    if (Resizing) {
        Resize_MoveLine(x);
        Resize_End();
    }
    HighlightingColumns = false;
    HighlightingRows = false;
    return resized;
}

}  // namespace kelmoran
