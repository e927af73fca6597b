#include "shell/cGeneralForm.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>
#include <QStyleHints>
#include <algorithm>
#include <numeric>

#include "printing/cPrint_Gateway.h"
#include "eclipses/EclipseScreenWindow.h"
#include "settings/SettingsRecord.h"
#include "shell/cSubClass.h"

namespace kelmoran {

namespace {

// Height of a row of the grid and of the headings.
constexpr int32_t kGridRowHeight = 18;
constexpr int32_t kHeadingHeight = 22;
// The line between the strip and the grid that holds the warning.
constexpr int32_t kWarningLine = 22;
constexpr const char* kInsertPrefix = "Insert Column/";
constexpr const char* kAutoSize = "Auto-Size Columns";
// Thickness of the hook's scroll bars.
constexpr int32_t kScrollBarRoom = 16;

bool Is_Catalogue_Column(int32_t column) {
    return column >= 14 && column <= 16;
}

constexpr const char* kShowEclipse = "Show Eclipse";

// The eclipse row of the Moon Phases cell under the cursor: a phase marked "* ", or the
// month's Eclipses cell; -1 for any other cell.
int Eclipse_Under_Cursor(const GridModel& g) {
    const int32_t column = g.Cursor_Column();
    const int32_t row = g.MyTrueRow;
    if (column < 1 || row < 0 || static_cast<size_t>(column) >= g.MyDataLabels.size() ||
        static_cast<size_t>(row) >= g.MyDataLabels[static_cast<size_t>(column)].size())
        return -1;
    const std::string& text = g.MyDataLabels[static_cast<size_t>(column)][static_cast<size_t>(row)];
    if (column == 9 ? text.empty() : text.rfind("* ", 0) != 0) return -1;
    return Eclipse_Row_At_Cell(Eclipses, row + 1, column, TZ_Bias);
}

}  // namespace

RowSources& Row_Sources() {
    static RowSources sources = Screen_Row_Sources();
    return sources;
}

cGeneralForm::cGeneralForm(const std::string& key, QWidget* window, cSubClass* hook)
    : DateStripScreen(key, window, QSize(900, 600)), hook_(hook), form_(grid_) {
    if (key_ == screen_key::Lunations)
        myDates_.Configure_Lunation_Dates(this, picture_.width());
    else
        myDates_.Configure_Standard_Dates(false, this, picture_.width());
    Set_Geometry();
    ColumnTitle altitude{"Apparent Altitude", "App. Alt."};
    if (Row_Sources().Title) altitude = Row_Sources().Title();
    grid_.Setup(key_, Column_Table(key_, altitude.Long, altitude.Short), cMainForm::Font_Measure());
}

void cGeneralForm::Set_Geometry() {
    // The window's scroll bars stand over the right and bottom edges of the picture: the
    // grid keeps clear of them, so that no row or column is hidden under a bar.
    const int32_t bar = hook_ ? kScrollBarRoom : 0;
    grid_.ClientWidth = picture_.width() - bar;
    grid_.ClientHeight = picture_.height() - bar;
    grid_.GridTop = myDates_.MyFrame.Bottom + kWarningLine;
    grid_.RowHeight = kGridRowHeight;
    grid_.HeadingHeight = kHeadingHeight;
}

void cGeneralForm::Restore_Layout() {
    Set_Geometry();
    grid_.Columns_Set_Working_Arrays();
}

void cGeneralForm::Load() {
    if (!Load_Moment()) grid_.Columns_Set_Working_Arrays();
    // The cursor is placed on a valid cell when the screen comes up.
    grid_.Move_Cursor(0);
    Shell.CursorShown = kTrue;
    if (hook_) {
        hook_->ScreenKey = key_;
        hook_->VScroll_Primer();
        hook_->HScroll_Primer();
    }
    SetScrollBars();
    Draw();
    if (Shell.Host) Shell.Host->Repaint();
}

void cGeneralForm::CalcDates() {
    Take_Strip_Moment();
    const RowSources& rows = Row_Sources();
    ++Calculations;
    if (rows.Title) {
        const ColumnTitle t = rows.Title();
        const size_t altitudeColumn = key_ == screen_key::AltAz ? 3 : 5;
        if (key_ != screen_key::Lunations && altitudeColumn < grid_.MyColmTitles.size())
            grid_.MyColmTitles[altitudeColumn] = {t.Long, t.Short};
    }
    if (key_ == screen_key::AltAz) {
        // The filters by constellation and by point may load deeper tiers of the
        // catalogue first: an hourglass meanwhile.
        const bool deep = Filters.BodyFilterMode >= 2;
        if (deep) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        altaz_ = rows.AltAz ? rows.AltAz(myJD_, catalogueNumbers_) : AltAzRows{};
        if (deep) QGuiApplication::restoreOverrideCursor();
        drWarning_ = altaz_.DRwarning;
        Apply_AltAz(true);
    } else {
        TableRows t;
        if (key_ == screen_key::Planets && rows.Planets)
            t = rows.Planets(myJD_, grid_.Page_Rows(), myUseSeconds);
        else if (key_ == screen_key::Lunations && rows.Lunations)
            t = rows.Lunations(myJD_);
        if (key_ == screen_key::Lunations) Eclipses_Refilled();
        drWarning_ = t.DRwarning;
        grid_.Set_Data(std::move(t.Labels), t.Rows);
    }
    if (!widened_ && grid_.Bottomlabels >= 0) {
        widened_ = true;
        grid_.Widen_To_Data();
    }
    SetScrollBars();
    Draw();
}

void cGeneralForm::Apply_AltAz(bool freshRows) {
    const int32_t n = altaz_.Rows;
    // The cell texts go to the grid by moving, not copying: the rows just calculated come
    // in their natural order; on a new sort the grid's own texts are rearranged.
    std::vector<std::vector<std::string>> natural;
    std::vector<int32_t> position;  // where each natural row stands in `natural`
    if (freshRows) {
        natural = std::move(altaz_.Labels);
        altaz_.Labels.clear();
        position.resize(static_cast<size_t>(std::max(n, 0)));
        std::iota(position.begin(), position.end(), 0);
    } else {
        natural = std::move(grid_.MyDataLabels);
        grid_.MyDataLabels.clear();
        position.assign(static_cast<size_t>(std::max(n, 0)), 0);
        for (size_t i = 0; i < order_.size() && i < position.size(); ++i)
            position[static_cast<size_t>(order_[i])] = static_cast<int32_t>(i);
    }
    order_.resize(static_cast<size_t>(std::max(n, 0)));
    std::iota(order_.begin(), order_.end(), 0);
    if (sortColumn_ >= 0 && Row_Sources().Sort) {
        std::vector<int32_t> sorted = Row_Sources().Sort(altaz_, sortColumn_, sortAscending_);
        if (sorted.size() == order_.size()) order_ = std::move(sorted);
    }
    std::vector<std::vector<std::string>> labels(natural.size());
    for (size_t c = 0; c < natural.size(); ++c) {
        auto& column = natural[c];
        labels[c].reserve(order_.size());
        for (int32_t r : order_) {
            const auto at = static_cast<size_t>(position[static_cast<size_t>(r)]);
            labels[c].push_back(at < column.size() ? std::move(column[at]) : std::string());
        }
    }
    grid_.Set_Data(std::move(labels), n);
}

void cGeneralForm::Sort_By(int32_t column, bool ascending) {
    if (key_ != screen_key::AltAz) return;
    sortColumn_ = column;
    sortAscending_ = ascending;
    Apply_AltAz(false);
    SetScrollBars();
    Draw();
}

void cGeneralForm::Insert_Column(const std::string& title) {
    const int32_t at = popupPosition_ < 0 ? grid_.ColmsInUse + 1 : popupPosition_;
    if (!grid_.mnuInsert(title, at)) return;
    // The catalogue numbers are worked out the first time one of their columns is shown.
    if (key_ == screen_key::AltAz && !catalogueNumbers_) {
        const int32_t column =
            grid_.MyColmPtr[static_cast<size_t>(std::clamp(at, 0, grid_.ColmsInUse))];
        if (Is_Catalogue_Column(column)) {
            catalogueNumbers_ = true;
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            CalcDates();
            QGuiApplication::restoreOverrideCursor();
        }
    }
}

std::vector<std::string> cGeneralForm::Heading_Menu(int32_t) const {
    std::vector<std::string> items = grid_.Menus_Create_Columns();
    if (menuEclipse_ >= 0) items.insert(items.begin(), {kShowEclipse, "-"});
    items.push_back("-");
    items.push_back(kAutoSize);
    for (const std::string& title : grid_.Menu_Insert_AddRemove())
        items.push_back(kInsertPrefix + title);
    return items;
}

void cGeneralForm::Show_Heading_Menu(int32_t position, int32_t x, int32_t y) {
    popupPosition_ = position;
    const std::vector<std::string> items = Heading_Menu(position);
    std::string chosen;
    if (Menu_Chooser) {
        chosen = Menu_Chooser(items);
    } else {
        QMenu menu;
        QMenu* insert = nullptr;
        for (const std::string& item : items) {
            if (item == "-") {
                menu.addSeparator();
            } else if (item.rfind(kInsertPrefix, 0) == 0) {
                if (!insert) insert = menu.addMenu("Insert Column");
                insert->addAction(Q(item.substr(std::string(kInsertPrefix).size())))
                    ->setData(Q(item));
            } else {
                QAction* a = menu.addAction(Q(item));
                a->setData(Q(item));
                if (item == kAutoSize) {
                    a->setCheckable(true);
                    a->setChecked(grid_.AutoSize);
                }
            }
        }
        const QPoint at = window_ ? window_->mapToGlobal(QPoint(x, y)) : QPoint(x, y);
        if (QAction* a = menu.exec(at)) chosen = a->data().toString().toStdString();
    }
    if (!chosen.empty()) Menu_PopUp(chosen);
}

void cGeneralForm::Menu_PopUp(const std::string& caption) {
    const int32_t pos = popupPosition_;
    const int32_t column =
        pos >= 0 && pos <= grid_.ColmsInUse ? grid_.MyColmPtr[static_cast<size_t>(pos)] : -1;
    if (caption == kShowEclipse) {
        if (menuEclipse_ >= 0) Show_Eclipse_Window(window_, menuEclipse_);
        return;
    }
    if (caption == "Hide") {
        grid_.mnuHide(pos);
    } else if (caption == "Reset Width") {
        grid_.Reset_Width(pos);
    } else if (caption == "Reset All Widths") {
        grid_.Reset_All_Widths();
    } else if (caption == "Sort Ascending") {
        if (column >= 0) Sort_By(column, true);
    } else if (caption == "Sort Descending") {
        if (column >= 0) Sort_By(column, false);
    } else if (caption == "Restore Order") {
        Restore_Order();
    } else if (caption == kAutoSize) {
        grid_.AutoSize = !grid_.AutoSize;
        if (!grid_.AutoSize) grid_.Reset_All_Widths();
        grid_.Columns_Set_Working_Arrays();
    } else if (caption.rfind(kInsertPrefix, 0) == 0) {
        Insert_Column(caption.substr(std::string(kInsertPrefix).size()));
    } else {
        return;
    }
    SetScrollBars();
    Draw();
}

void cGeneralForm::mnuAutoWidthAll() {
    grid_.mnuAutoWidthAll();
    SetScrollBars();
    Draw();
}

void cGeneralForm::mnuAutoWidth(int32_t position) {
    grid_.mnuAutoWidth(position);
    SetScrollBars();
    Draw();
}

void cGeneralForm::Kill_Activities(const CursorState&) {
    // The cursor and scroll state live in the grid model of this screen; what is ended
    // here are the gestures in progress.
    if (grid_.Resizing) grid_.Resize_End();
    grid_.HighlightingColumns = false;
    grid_.HighlightingRows = false;
    SetScrollBars();
}

void cGeneralForm::SetScrollBars() {
    if (!hook_ || !visible_) return;
    hook_->ScreenKey = key_;
    hook_->Small_Change = 1;
    hook_->Set_VScroll_Info(grid_.Bottomlabels, grid_.Page_Rows());
    hook_->Set_VPos(grid_.MyVScroll);
    hook_->ColumnRects = grid_.MyHeadingRect;
    int32_t onShow = 0;
    for (int32_t p = grid_.MyHScroll; p <= grid_.ColmsInUse; ++p)
        if (grid_.Heading_On_Screen(p).Right <= grid_.ClientWidth) ++onShow;
    hook_->ColumnsOnShow = std::max(onShow, 1);
    const int32_t total =
        grid_.MyHeadingRect.empty() ? 0 : grid_.MyHeadingRect.back().Right - kRowIndexMargin;
    hook_->Set_HScroll_Info(total - 1, grid_.ClientWidth - kRowIndexMargin);
    hook_->Set_HPos(-grid_.Scroll_DX());
}

void cGeneralForm::Resize(QSize size) {
    const int32_t oldPage = grid_.Page_Rows();
    if (!Resize_Picture(size)) return;
    Set_Geometry();
    grid_.Columns_Set_Working_Arrays();
    // Solar Bodies has as many rows as fill the screen.
    if (key_ == screen_key::Planets && grid_.Page_Rows() != oldPage && Shell.Up_To_Date(key_))
        CalcDates();
    SetScrollBars();
    Draw();
}

void cGeneralForm::Draw() {
    {
        QPainter p(&picture_);
        p.fillRect(QRect(0, myDates_.MyFrame.Bottom, picture_.width(), picture_.height()),
                   Qt::white);
        if (drWarning_) form_.Draw_DR_Warning(p, myDates_.MyFrame.Bottom);
        form_.Draw_MainBitmap(p, Shell.CursorShown && !grid_.CursorInDates && visible_);
    }
    myDates_.Paint_Dates(false);
    if (grid_.CursorInDates) {
        // The cursor stands on the date strip: its frame is outlined.
        QPainter p(&picture_);
        QPen pen(Qt::black);
        pen.setWidth(2);
        pen.setStyle(Qt::DotLine);
        p.setPen(pen);
        const Rect f = myDates_.MyFrame;
        p.drawRect(QRect(f.Left + 1, f.Top + 1, f.Width() - 2, f.Height() - 2));
    }
    if (window_) window_->update();
}

void cGeneralForm::SysMsg_VChange(int32_t pos) {
    grid_.Scroll_Rows(pos - grid_.MyVScroll);
    Draw();
}

void cGeneralForm::SysMsg_hScrollColmShift(int32_t colm) {
    grid_.Scroll_To_Position(colm);
    Draw();
}

void cGeneralForm::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    if (Click_Into_Edit(button, x, y)) return;
    if (y < grid_.GridTop) {
        myDates_.MouseDown(x, y, button, shift);
        return;
    }
    if (Edit.Editing && Shell.Host) Shell.Host->End_Edit(true);
    const int32_t heading = grid_.Heading_At(x, y);
    if (button == mouse::Right) {
        int32_t pos = heading;
        if (pos < 0 && grid_.Row_At(x, y) >= 0 && x >= kRowIndexMargin) pos = grid_.Position_Near(x);
        // On Moon Phases a month with an eclipse offers it on the row's pop-up.
        const int32_t month = heading < 0 ? grid_.Row_At(x, y) : -1;
        menuEclipse_ = key_ == screen_key::Lunations && month >= 0
                           ? Eclipse_Row_At_Cell(Eclipses, month + 1, 9, TZ_Bias)
                           : -1;
        if (pos >= 0) Show_Heading_Menu(pos, x, y);
        return;
    }
    if (button != mouse::Left) return;
    const int32_t divider = grid_.Divider_At(x, y);
    // A second click on the same line between headings, or in the corner, soon after the
    // first: the width fits the column's texts (all columns from the corner).
    const qint64 now = clock_.isValid() ? clock_.elapsed() : -1;
    const bool twice =
        now >= 0 && now - lastClick_ <= QGuiApplication::styleHints()->mouseDoubleClickInterval();
    const int32_t spot = divider >= 0 ? divider : (grid_.In_Corner(x, y) ? -2 : -3);
    const bool doubleClick = twice && spot == lastSpot_ && spot != -3;
    if (!clock_.isValid()) clock_.start();
    lastClick_ = clock_.elapsed();
    lastSpot_ = doubleClick ? -3 : spot;
    if (doubleClick) {
        grid_.Resizing = false;
        grid_.Highlight_All(false);
        if (spot >= 0)
            mnuAutoWidth(spot);
        else
            mnuAutoWidthAll();
        return;
    }
    if (grid_.Press(x, y, divider, heading)) {
        Shell.CursorShown = kTrue;
        if (key_ == screen_key::Lunations) {
            // A click on a marked cell opens its eclipse.
            const int eclipse = Eclipse_Under_Cursor(grid_);
            if (eclipse >= 0) {
                Draw();
                Show_Eclipse_Window(window_, eclipse);
                return;
            }
        }
    }
    Draw();
}

void cGeneralForm::SysMsg_MouseMove(int32_t button, int32_t, int32_t x, int32_t y) {
    if (window_) {
        const bool onDivider = grid_.Resizing || grid_.Divider_At(x, y) >= 0;
        window_->setCursor(onDivider ? Qt::SplitHCursor : Qt::ArrowCursor);
    }
    if ((button & mouse::Left) && grid_.Drag_To(x, y)) Draw();
}

void cGeneralForm::SysMsg_MouseUp(int32_t button, int32_t, int32_t x, int32_t) {
    if (button != mouse::Left) return;
    if (grid_.End_Gestures(x)) SetScrollBars();
    Draw();
}

void cGeneralForm::SysMsg_MouseScroll(int32_t delta, int32_t, int32_t x, int32_t y) {
    const int32_t steps = Wheel_Notches(delta);
    if (!steps) return;
    if (y < grid_.GridTop) {
        myDates_.MouseScroll(x, y, steps);
        return;
    }
    // The wheel scrolls the rows, a row at a time, three to a notch.
    grid_.Scroll_Rows(-3 * steps);
    SetScrollBars();
    Draw();
}

void cGeneralForm::SysMsg_KeyDown(int32_t key, int32_t shift) {
    switch (key) {
        case vkey::Up:
        case vkey::Down:
        case vkey::Left:
        case vkey::Right:
        case vkey::Tab: {
            if (!Shell.CursorShown && !grid_.CursorInDates) {
                // With no cursor, Down brings it on to the grid.
                if (key != vkey::Down) return;
                grid_.Move_Cursor(0);
                Shell.CursorShown = kTrue;
                break;
            }
            int32_t k = key;
            if (key == vkey::Tab && (shift & mouse::Shift)) k = vkey::Left;
            const CursorMove m = grid_.Move_Cursor(k);
            if (m == CursorMove::ToDates) Shell.CursorShown = kFalse;
            if (m == CursorMove::FromDates) Shell.CursorShown = kTrue;
            break;
        }
        case vkey::PageUp:
        case vkey::PageDown:
            if (Edit.Editing && Shell.Host) Shell.Host->End_Edit(true);
            grid_.Page(key);
            break;
        case vkey::Home:
        case vkey::End:
            grid_.Full_Scroll(key == vkey::End);
            break;
        case vkey::Enter: {
            // Enter on a marked Moon Phases cell opens its eclipse.
            const int eclipse = key_ == screen_key::Lunations ? Eclipse_Under_Cursor(grid_) : -1;
            if (eclipse < 0) return;
            Show_Eclipse_Window(window_, eclipse);
            return;
        }
        default:
            return;
    }
    SetScrollBars();
    Draw();
}

void cGeneralForm::mnuPrint() { Print_Grid(grid_, myJD_, false, window_); }

void cGeneralForm::mnuSave_PDF() { Print_Grid(grid_, myJD_, true, window_); }

void cGeneralForm::mnuPrint_Eclipse() {
    // The eclipse under the cursor, else the one the eclipse window shows; to a PDF file
    // where no printer is installed.
    Print_Eclipse(window_, Eclipse_Under_Cursor(grid_), !Print_Hooks().Printers_Available());
}

}  // namespace kelmoran
