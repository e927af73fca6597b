#include "voyage/cNavPlanView.h"

#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <set>

#include "printing/cPrint_Gateway.h"
#include "settings/SettingsRecord.h"
#include "shell/cSubClass.h"
#include "voyage/Plan_Text.h"
#include "voyage/Plan_Undo.h"

namespace kelmoran {

namespace {

constexpr int32_t kGridRowHeight = 18;
constexpr int32_t kHeadingHeight = 22;
constexpr int32_t kScrollBarRoom = 16;
constexpr int32_t kStripGap = 4;
constexpr int32_t kSpeedBoxWidth = 140;
constexpr const char* kResetWidth = "Reset Width";
constexpr const char* kResetAllWidths = "Reset All Widths";
constexpr const char* kInsertPrefix = "Insert Column/";

bool Is_Cursor_Key(int32_t key) {
    return key == vkey::Up || key == vkey::Down || key == vkey::Left || key == vkey::Right ||
           key == vkey::Tab;
}

}  // namespace

Options_Opener& OpenOptions() {
    static Options_Opener opener;
    return opener;
}

cNavPlan::cNavPlan(QWidget* window, cSubClass* hook)
    : window_(window),
      hook_(hook),
      picture_(QSize(900, 600), QImage::Format_RGB32),
      form_(grid_),
      etd_(this),
      eta_(this) {
    picture_.fill(Qt::white);
    etd_.ClassType = "EtdDates";
    eta_.ClassType = "EtaDates";
    eta_.Caption = "Time of arrival";
    for (cDatesView* d : {&etd_, &eta_}) {
        d->FollowsSummerTime = 0;  // the plan keeps its own zones
        d->Configure_NavPlan_Dates(d == &etd_ ? 0 : 1, this);
    }
    Set_Geometry();
    grid_.Setup(ClassType(), NavPlan_Columns(Voyage.Header), cMainForm::Font_Measure());
}

void cNavPlan::Set_Geometry() {
    etd_.MyWidth = picture_.width();
    eta_.MyWidth = picture_.width();
    etd_.Position_DateGrid(kStripGap, kStripGap);
    eta_.Position_DateGrid(kStripGap, etd_.MyFrame.Bottom + kStripGap);
    const Rect& f = eta_.MyFrame;
    speedBox_ = {f.Right + 12, f.Top, f.Right + 12 + kSpeedBoxWidth, f.Bottom};
    const int32_t bar = hook_ ? kScrollBarRoom : 0;
    grid_.ClientWidth = picture_.width() - bar;
    grid_.ClientHeight = picture_.height() - bar;
    grid_.GridTop = f.Bottom + 2 * kStripGap;
    grid_.RowHeight = kGridRowHeight;
    grid_.HeadingHeight = kHeadingHeight;
}

void cNavPlan::Restore_Layout() {
    Set_Geometry();
    grid_.Columns_Set_Working_Arrays();
}

void cNavPlan::Load() {
    if (window_ && window_->size() != picture_.size()) Resize(window_->size());
    CalcDates();
    grid_.Move_Cursor(0);
    Shell.CursorShown = kTrue;
    if (hook_) {
        hook_->ScreenKey = ClassType();
        hook_->VScroll_Primer();
        hook_->HScroll_Primer();
    }
    Draw();
    if (Shell.Host) Shell.Host->Repaint();
}

void cNavPlan::Force_Update() {
    // The plan does not follow the shared moment; only its texts are brought up to date.
    Populate();
}

void cNavPlan::CalcDates() {
    Set_Dates();
    Populate();
}

void cNavPlan::Set_Dates() {
    const Plan_Header& h = Voyage.Header;
    const bool none = !Voyage.Any_Way_Point_In_Use();
    const struct {
        cDatesView& Strip;
        double Time;
        int32_t Zone;
    } strips[] = {{etd_, h.Plan_Start, h.ETD_Minutes}, {eta_, h.Plan_End, h.ETA_Minutes}};
    for (const auto& s : strips) {
        s.Strip.MyDateIsDisabled = none ? kTrue : kFalse;
        s.Strip.Set_Calendar(Shell.CalendarChoice != 0);
        s.Strip.My_TZ_Bias(s.Zone);
        s.Strip.MyTime(s.Time + s.Zone / 1440.0);
    }
    Reset_LMT();
}

void cNavPlan::Reset_LMT() {
    etd_.MyLMT_Text = Zone_Text(Voyage.Header.ETD_Minutes);
    eta_.MyLMT_Text = Zone_Text(Voyage.Header.ETA_Minutes);
}

void cNavPlan::Populate() {
    page_ = Populate_MainData(Voyage, remarks_);
    for (int32_t c = navplan_col::FixedEta1; c <= navplan_col::FixedTtg3; ++c)
        grid_.MyColmTitles[static_cast<size_t>(c)][0] = Fixed_Speed_Title(Voyage.Header, c);
    grid_.Set_Data(page_.Labels, static_cast<int32_t>(page_.Lines.size()));
    grid_.MyRowColours.assign(page_.Lines.size(), 0);
    for (size_t i = 0; i < page_.Lines.size(); ++i)
        if (page_.Lines[i].Remarks) grid_.MyRowColours[i] = kRemarksInk;
    grid_.Columns_Set_Working_Arrays();
    Draw();
}

void cNavPlan::Resize(QSize size) {
    if (size.isEmpty() || size == picture_.size()) return;
    picture_ = QImage(size, QImage::Format_RGB32);
    picture_.fill(Qt::white);
    Set_Geometry();
    grid_.Columns_Set_Working_Arrays();
    Draw();
}

void cNavPlan::Paint_Speed(QPainter& p) {
    const DrawingObjects& d = Drawing();
    p.fillRect(To_QRect(speedBox_), d.Face);
    Draw_3D_Frame(p, speedBox_, false);
    p.setFont(d.Large);
    p.setPen(Qt::black);
    Draw_Aligned(p, speedBox_, Q(Speed_Box_Text(Voyage.Header.Default_Speed)), 1);
}

void cNavPlan::Draw() {
    {
        QPainter p(&picture_);
        p.fillRect(picture_.rect(), Qt::white);
        form_.Draw_MainBitmap(p, Shell.CursorShown && visible_ && !Edit.Editing);
        Paint_Speed(p);
        etd_.Draw(p);
        eta_.Draw(p);
        Draw_Open_Edit(p);
    }
    if (hook_ && visible_) {
        hook_->ScreenKey = ClassType();
        hook_->Small_Change = 1;
        hook_->Set_VScroll_Info(grid_.Bottomlabels, grid_.Page_Rows());
        hook_->Set_VPos(grid_.MyVScroll);
    }
    if (window_) window_->update();
}

void cNavPlan::Redraw_Cell(const Rect& cell) {
    if (Edit.Editing && Edit.Form == this) {
        // Only the edit's own cell changes while it is typed into.
        QPainter p(&picture_);
        p.setClipRect(To_QRect(cell).adjusted(-1, -1, 1, 1));
        Draw_Open_Edit(p);
        return;
    }
    // An edit that closed with a commit has had the whole picture drawn already.
    if (drawnAfterCommit_) {
        drawnAfterCommit_ = false;
        return;
    }
    Draw();
}

void cNavPlan::Kill_Activities(const CursorState&) {
    if (grid_.Resizing) grid_.Resize_End();
    grid_.HighlightingColumns = false;
    grid_.HighlightingRows = false;
}

void cNavPlan::After_Plan_Change() {
    Set_Dates();
    Populate();
    // A plan that the screens follow moves every position they show.
    if (Settings.PositionMethod == 2) Update_All_Screens(ClassType());
    if (Shell.Host) {
        Plan_Undo.Refresh();
        Shell.Host->Menus_Changed();
        Shell.Host->Repaint();
    }
}

// ---------------------------------------------------------------- strips and speed box

void cNavPlan::MyDates_DateChange(cDates& sender, double jd) {
    if (&sender == &etd_) {
        Voyage.Edit_ETD(jd, Voyage.Header.ETD_Minutes);
    } else {
        const Plan_Message m = Voyage.Edit_Main_ETA(jd, Voyage.Header.ETA_Minutes);
        if (!m.Text.empty()) {
            if (Show_Message) {
                Show_Message(m);
            } else if (Shell.Host) {
                Shell.Host->Message_Box(m.Text, m.Title, MsgButtons::OK);
            }
        }
    }
    // The strips show the plan as it now stands (a refused ETA goes back).
    After_Plan_Change();
}

void cNavPlan::MyDates_CalenderChg(cDates&, bool julian) {
    kelmoran::MyDates_CalenderChg(ClassType(), julian ? kTrue : kFalse);
    Set_Dates();
    Draw();
}

void cNavPlan::MyDates_TZChange(cDates& sender, int32_t minutes) {
    Plan_Undo.Push_Plan_State(Voyage, true);
    Plan_Header& h = Voyage.Header;
    int16_t& zone = &sender == &etd_ ? h.ETD_Minutes : h.ETA_Minutes;
    zone = static_cast<int16_t>(std::clamp(minutes, -1440, 1440));
    (&sender == &etd_ ? h.ETD_Zone : h.ETA_Zone) = Zone_Text(zone);
    After_Plan_Change();
}

void cNavPlan::Open_Time_Options() {
    if (!OpenOptions()) return;
    if (OpenOptions()(window_, ClassType(), "Time")) After_Plan_Change();
}

void cNavPlan::Edit_Speed() {
    if (Edit.Editing) End_Edit();
    EditRequest r;
    r.Form = this;
    r.Control = this;
    r.Class = "CellEdit";
    r.Field = "Speed";
    r.Cell = speedBox_;
    r.Font = FontKind::Large;
    r.Alignment = 1;
    r.Value = Voyage.Header.Default_Speed;
    r.Text = Speed_Box_Text(Voyage.Header.Default_Speed);
    editColumn_ = -2;
    Begin_Edit(r);
}

// ---------------------------------------------------------------- cells

int32_t cNavPlan::Cursor_Line_Row() const {
    const auto line = static_cast<size_t>(grid_.MyTrueRow);
    return line < page_.Lines.size() ? page_.Lines[line].Row : -1;
}

bool cNavPlan::Edit_Cell(int32_t firstKey) {
    const auto line = static_cast<size_t>(grid_.MyTrueRow);
    if (line >= page_.Lines.size() || grid_.CursorInDates) return false;
    const int32_t column = grid_.Cursor_Column();
    if (column < 0 || column >= navplan_col::Count) return false;
    const std::string& shown = page_.Labels[static_cast<size_t>(column)][line];
    const NavPlan_Cell_Edit e = NavPlan_Edit_For(Voyage, page_.Lines[line], column, shown);
    if (e.Field.empty()) return false;
    if (Edit.Editing) End_Edit();
    EditRequest r;
    r.Form = this;
    r.Control = this;
    r.Class = "CellEdit";
    r.Field = e.Field;
    r.Cell = grid_.Cursor_Rect();
    r.Font = FontKind::Normal;
    r.Alignment = e.Alignment;
    r.Value = e.Value;
    r.Text = e.Text;
    r.Row = static_cast<int32_t>(line);
    editColumn_ = column;
    Begin_Edit(r);
    if (firstKey) Edit_Key_Press(firstKey);
    return true;
}

void cNavPlan::Edit_Commit(const EditSession& s, double value, const std::string& text) {
    if (editColumn_ == -2) {
        if (value >= 100) {
            Beep();
            return;
        }
        Voyage.Set_Speeds(static_cast<float>(value));
    } else {
        const auto line = static_cast<size_t>(s.Row);
        if (line >= page_.Lines.size() ||
            !NavPlan_Commit(Voyage, page_.Lines[line], editColumn_, value, text)) {
            Beep();
            return;
        }
    }
    After_Plan_Change();
    drawnAfterCommit_ = true;
}

// ---------------------------------------------------------------- menus

int32_t cNavPlan::Selected_Count(int32_t row) const {
    std::set<int32_t> rows;
    for (size_t i = 0; i < grid_.HighlightedRows.size() && i < page_.Lines.size(); ++i)
        if (grid_.HighlightedRows[i] && page_.Lines[i].Row >= row) rows.insert(page_.Lines[i].Row);
    return rows.count(row) ? static_cast<int32_t>(rows.size()) : 1;
}

void cNavPlan::Show_Menu(const std::vector<std::string>& items, int32_t x, int32_t y) {
    Last_Menu = items;
    if (items.empty()) return;
    std::string chosen;
    if (Menu_Chooser) {
        chosen = Menu_Chooser(items);
    } else {
        QMenu menu;
        QMenu* insert = nullptr;
        const std::string prefix = kInsertPrefix;
        for (const std::string& item : items) {
            if (item == "-") {
                menu.addSeparator();
            } else if (item.rfind(prefix, 0) == 0) {
                if (!insert) insert = menu.addMenu("Insert Column");
                insert->addAction(Q(item.substr(prefix.size())))->setData(Q(item));
            } else {
                menu.addAction(Q(item))->setData(Q(item));
            }
        }
        const QPoint at = window_ ? window_->mapToGlobal(QPoint(x, y)) : QPoint(x, y);
        if (QAction* a = menu.exec(at)) chosen = a->data().toString().toStdString();
    }
    if (!chosen.empty()) Menu_PopUp(chosen);
}

void cNavPlan::Menu_PopUp(const std::string& caption) {
    const int32_t r = menuRow_;
    const int32_t count = Selected_Count(r);
    if (caption == plan_text::InsertRow) {
        Voyage.Insert_Rows(r, count);
    } else if (caption == plan_text::DeleteRow) {
        Voyage.Delete_Rows(r, count);
    } else if (caption == plan_text::ClearWayPoint) {
        Voyage.Clear_Rows(r, count);
    } else if (caption == plan_text::Lock || caption == plan_text::UnLock) {
        Voyage.Lock_Row(r, caption == plan_text::Lock);
    } else if (caption == navplan_text::Hide) {
        grid_.mnuHide(menuPosition_);
    } else if (caption == navplan_text::HideRemarks || caption == navplan_text::DisplayRemarks) {
        remarks_ = caption == navplan_text::DisplayRemarks;
    } else if (caption == navplan_text::SpeedOptions) {
        if (OpenOptions()) OpenOptions()(window_, ClassType(), "Voy Plan");
    } else if (caption == kResetWidth) {
        grid_.Reset_Width(menuPosition_);
    } else if (caption == kResetAllWidths) {
        grid_.Reset_All_Widths();
    } else if (caption.rfind(kInsertPrefix, 0) == 0) {
        grid_.mnuInsert(caption.substr(std::string(kInsertPrefix).size()), menuPosition_);
    } else {
        return;
    }
    grid_.Clear_Highlights();
    After_Plan_Change();
}

// ---------------------------------------------------------------- mouse and keys

std::string cNavPlan::Help_Key(int32_t x, int32_t y) const {
    const bool none = !Voyage.Any_Way_Point_In_Use();
    if (etd_.MyFrame.Contains(x, y)) return none ? navplan_text::EtdDisabled : "Main ETD";
    if (eta_.MyFrame.Contains(x, y)) return none ? navplan_text::EtaDisabled : "Main ETA";
    if (speedBox_.Contains(x, y)) return "Default Speed";
    if (grid_.Divider_At(x, y) >= 0) return "Drag Colm";
    const int32_t pos = grid_.Heading_At(x, y);
    if (pos < 0 || pos >= static_cast<int32_t>(grid_.MyColmPtr.size())) return {};
    // A column's words go by its title; the fixed speeds' by their short one.
    const auto column = static_cast<size_t>(grid_.MyColmPtr[static_cast<size_t>(pos)]);
    const bool fixed = column >= static_cast<size_t>(navplan_col::FixedEta1) &&
                       column <= static_cast<size_t>(navplan_col::FixedTtg3);
    return grid_.MyColmTitles[column][fixed ? 1 : 0];
}

void cNavPlan::SysMsg_VChange(int32_t pos) {
    grid_.Scroll_Rows(pos - grid_.MyVScroll);
    Draw();
}

void cNavPlan::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    if (Edit.Editing && Edit.Form == this && button == mouse::Left && Edit.Cell.Contains(x, y)) {
        Edit_Click(x);
        return;
    }
    for (cDatesView* d : {&etd_, &eta_}) {
        if (d->MyFrame.Contains(x, y)) {
            d->MouseDown(x, y, button, shift);
            Draw();
            return;
        }
    }
    if (speedBox_.Contains(x, y)) {
        if (button == mouse::Left) Edit_Speed();
        Draw();
        return;
    }
    if (y < grid_.GridTop) return;
    if (Edit.Editing) End_Edit();
    const int32_t heading = grid_.Heading_At(x, y);
    if (button == mouse::Right) {
        if (heading >= 0) {
            menuPosition_ = heading;
            std::vector<std::string> items = {
                navplan_text::Hide, kResetWidth, kResetAllWidths, "-",
                remarks_ ? navplan_text::HideRemarks : navplan_text::DisplayRemarks};
            // The hidden columns, the other fixed speeds among them, can come back.
            for (const std::string& title : grid_.Menu_Insert_AddRemove())
                items.push_back(kInsertPrefix + title);
            Show_Menu(items, x, y);
            return;
        }
        const auto line = static_cast<size_t>(grid_.Row_At(x, y));
        if (line >= page_.Lines.size()) return;
        grid_.Cursor_To(x, y);
        menuRow_ = page_.Lines[line].Row;
        menuPosition_ = grid_.MyTrueColm;
        std::vector<std::string> items = NavPlan_Row_Menu(Voyage, menuRow_, remarks_);
        // Without an Options dialogue there is nowhere for "Speed Options" to go.
        if (!OpenOptions()) std::erase(items, std::string(navplan_text::SpeedOptions));
        Draw();
        Show_Menu(items, x, y);
        return;
    }
    if (button != mouse::Left) return;
    if (grid_.Press(x, y, grid_.Divider_At(x, y), heading)) Shell.CursorShown = kTrue;
    Draw();
}

void cNavPlan::SysMsg_MouseMove(int32_t button, int32_t, int32_t x, int32_t y) {
    if ((button & mouse::Left) && grid_.Drag_To(x, y)) Draw();
}

void cNavPlan::SysMsg_MouseUp(int32_t button, int32_t, int32_t x, int32_t) {
    if (button != mouse::Left) return;
    grid_.End_Gestures(x);
    Draw();
}

void cNavPlan::SysMsg_MouseScroll(int32_t delta, int32_t, int32_t x, int32_t y) {
    const int32_t steps = wheel_.Take(delta);
    if (!steps) return;
    for (cDatesView* d : {&etd_, &eta_}) {
        if (d->MyFrame.Contains(x, y)) {
            d->MouseScroll(x, y, steps);
            return;
        }
    }
    grid_.Scroll_Rows(-3 * steps);
    Draw();
}

void cNavPlan::SysMsg_KeyDown(int32_t key, int32_t shift) {
    if (Edit.Editing && (Is_Cursor_Key(key) || key == vkey::PageUp || key == vkey::PageDown))
        End_Edit();
    if (Is_Cursor_Key(key)) {
        int32_t k = key;
        if (key == vkey::Tab && (shift & mouse::Shift)) k = vkey::Left;
        // The strips are reached by the mouse: the cursor stays on the grid.
        if (grid_.Move_Cursor(k) == CursorMove::ToDates) grid_.Move_Cursor(vkey::Down);
        Shell.CursorShown = kTrue;
    } else if (key == vkey::PageUp || key == vkey::PageDown) {
        grid_.Page(key);
    } else if (key == vkey::Home || key == vkey::End) {
        grid_.Full_Scroll(key == vkey::End);
    } else if (key == vk::Delete) {
        const auto line = static_cast<size_t>(grid_.MyTrueRow);
        if (line < page_.Lines.size() &&
            NavPlan_Clear_Cell(Voyage, page_.Lines[line], grid_.Cursor_Column()))
            After_Plan_Change();
    } else if (key == vk::Return || key == vk::F2) {
        if (!Edit_Cell(0)) Beep();
    } else {
        return;
    }
    Draw();
}

void cNavPlan::SysMsg_KeyPress(int32_t character) {
    if (character < 32 || character > 255 || Edit.Editing) return;
    if (!Edit_Cell(character)) Beep();
}

void cNavPlan::mnuPrint() { Print_Voyage_Plan(Voyage, &grid_, false, window_); }

void cNavPlan::mnuSave_PDF() { Print_Voyage_Plan(Voyage, &grid_, true, window_); }

}  // namespace kelmoran
