#include "voyage/Plan_Undo.h"

#include "settings/SettingsRecord.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

cPlanUndo Plan_Undo;

cPlanUndo::State cPlanUndo::Capture(const VoyagePlan& plan, Undo_Type type,
                                    const std::string& key) {
    State s;
    s.Type = type;
    s.Key = key.empty() ? Shell.ScreenName : key;
    if (type == Undo_Type::Voyage) {
        s.Header = plan.Header;
        s.Way_Points = plan.Way_Points;
        s.Texts = plan.Texts;
    } else {
        s.Ship_Time = plan.Ship_Time;
    }
    return s;
}

void cPlanUndo::Restore(const State& s, VoyagePlan& plan) {
    if (s.Type == Undo_Type::Voyage) {
        plan.Header = s.Header;
        plan.Way_Points = s.Way_Points;
        plan.Texts = s.Texts;
    } else if (s.Type == Undo_Type::Clocks) {
        plan.Ship_Time = s.Ship_Time;
    }
}

void cPlanUndo::Push(std::deque<State>& stack, State s) {
    stack.push_front(std::move(s));
    if (stack.size() > kSlots) stack.pop_back();
}

void cPlanUndo::Push_Plan_State(const VoyagePlan& plan, bool planChanged,
                                const std::string& key) {
    Push(undo_, Capture(plan, Undo_Type::Voyage, key));
    redo_.clear();
    if (planChanged) Shell.PlanChanged = kTrue;
    Refresh();
}

void cPlanUndo::Push_Clox_State(const VoyagePlan& plan, const std::string& key) {
    Push(undo_, Capture(plan, Undo_Type::Clocks, key));
    redo_.clear();
    Refresh();
}

Undo_Type cPlanUndo::Move(std::deque<State>& from, std::deque<State>& to, VoyagePlan& plan) {
    if (from.empty()) return Undo_Type::None;
    State top = std::move(from.front());
    from.pop_front();
    Push(to, Capture(plan, top.Type, top.Key));
    Restore(top, plan);
    if (top.Type == Undo_Type::Voyage) Shell.PlanChanged = kTrue;
    return top.Type;
}

Undo_Type cPlanUndo::Undo(VoyagePlan& plan) {
    const Undo_Type t = Move(undo_, redo_, plan);
    Refresh();
    return t;
}

Undo_Type cPlanUndo::Redo(VoyagePlan& plan) {
    const Undo_Type t = Move(redo_, undo_, plan);
    Refresh();
    return t;
}

void cPlanUndo::Reset() {
    undo_.clear();
    redo_.clear();
    Refresh();
}

void cPlanUndo::Refresh() const {
    const bool screen =
        Shell.ScreenName == screen_key::NavPlan || Shell.ScreenName == screen_key::Clox;
    Shell.Menus.mnuUndo[0].Enabled = screen && !undo_.empty();
    Shell.Menus.mnuUndo[1].Enabled = screen && !redo_.empty();
}

void mnuUndo_Click(int index) {
    const auto& item = Shell.Menus.mnuUndo[index == 0 ? 0 : 1];
    if (!item.Visible || !item.Enabled) return;
    Kill_Activities();
    const Undo_Type t = index == 0 ? Plan_Undo.Undo(Voyage) : Plan_Undo.Redo(Voyage);
    if (Shell.CurrentScreen) Shell.CurrentScreen->CalcDates();
    // The screens that follow the plan move with it.
    if (t == Undo_Type::Voyage && Settings.PositionMethod == 2) Update_All_Screens(Shell.ScreenName);
    if (Shell.Host) {
        Shell.Host->Menus_Changed();
        Shell.Host->Repaint();
    }
}

}  // namespace kelmoran
