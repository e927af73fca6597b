#include "voyage/CloxView.h"

#include <cmath>

#include "settings/SettingsRecord.h"
#include "voyage/M_Clox.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

CloxView::CloxView(QWidget* window, cSubClass* hook)
    : cGeneralForm(screen_key::Clox, window, hook) {}

void CloxView::CalcDates() {
    Take_Strip_Moment();
    ++Calculations;
    GridModel& g = Grid();
    g.ShipTimeMenu = Settings.PositionMethod == kDRByPlan;
    rows_ = Clox_Rows(myJD_, myUseSeconds);
    g.MyRowColours.assign(rows_.Sunday.size(), 0);
    for (size_t r = 0; r < rows_.Sunday.size(); ++r)
        if (rows_.Sunday[r]) g.MyRowColours[r] = kSundayRed;
    g.Set_Data(rows_.Labels, rows_.Rows);
    g.Widen_To_Data();  // a date with its " *" may be wider than the sample
    g.Columns_Set_Working_Arrays();
    SetScrollBars();
    Draw();
}

void CloxView::After_Change() {
    CalcDates();
    if (Shell.Host) {
        Plan_Undo.Refresh();
        Shell.Host->Menus_Changed();
        Shell.Host->Repaint();
    }
}

void CloxView::Calc_Ship_Time() {
    Calculate_Ship_Time(Voyage);
    After_Change();
}

void CloxView::Apply_To_Voyage() {
    Apply_To_Voyage_Plan(Voyage);
    After_Change();
}

void CloxView::Use_Plan_For_Ship_Time() {
    Take_Ship_Time_From_Plan(Voyage);
    After_Change();
}

void CloxView::Menu_PopUp(const std::string& caption) {
    const bool byPlan = Settings.PositionMethod == kDRByPlan;
    if (caption == "Apply to Voyage") {
        if (byPlan) Apply_To_Voyage();
    } else if (caption == "Calc Ship Time") {
        if (byPlan) Calc_Ship_Time();
    } else if (caption == "Use Plan for Ship Time") {
        if (byPlan) Use_Plan_For_Ship_Time();
    } else {
        cGeneralForm::Menu_PopUp(caption);
    }
}

bool CloxView::Edit_Ship_Time(int32_t firstKey) {
    GridModel& g = Grid();
    const auto row = static_cast<size_t>(g.MyTrueRow);
    if (!rows_.ByPlan || g.Cursor_Column() != kCloxShipColumn || row >= rows_.Zone.size())
        return false;
    if (Edit.Editing) End_Edit();
    EditRequest r;
    r.Form = this;
    r.Control = this;
    r.Class = "CellEdit";
    r.Field = "Clox";
    r.Cell = g.Cursor_Rect();
    r.Alignment = 2;
    r.Value = rows_.Zone[row] / 60.0;
    r.Text = g.MyDataLabels[kCloxShipColumn][row];
    r.Row = static_cast<int32_t>(row);
    Begin_Edit(r);
    if (firstKey) Edit_Key_Press(firstKey);
    return true;
}

void CloxView::Edit_Commit(const EditSession& s, double value, const std::string&) {
    const auto row = static_cast<size_t>(s.Row);
    if (row >= Voyage.Ship_Time.size()) return;
    const auto minutes = static_cast<int32_t>(std::lround(value * 60.0));
    if (minutes == Voyage.Ship_Time[row]) return;
    Plan_Undo.Push_Clox_State(Voyage);
    Voyage.Ship_Time[row] = minutes;
    After_Change();
}

void CloxView::SysMsg_KeyDown(int32_t key, int32_t shift) {
    if (Edit.Editing && key != vk::Return) End_Edit();
    if ((key == vk::Return || key == vk::F2) && !Edit.Editing) {
        Edit_Ship_Time(0);
        return;
    }
    cGeneralForm::SysMsg_KeyDown(key, shift);
}

void CloxView::SysMsg_KeyPress(int32_t character) {
    if (Edit.Editing || character < 32 || character > 255) return;
    Edit_Ship_Time(character);
}

}  // namespace kelmoran
