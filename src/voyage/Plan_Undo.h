// Undo and redo of the voyage plan and of the ship times of the Clocks screen. Two stacks
// of whole states, each holding at most twelve; a push empties the redo stack and the
// oldest state falls off when a thirteenth is pushed.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "voyage/Voyage_Plan.h"

namespace kelmoran {

// What a saved state holds: 1 the plan's way points and texts, 2 the Clocks rows.
enum class Undo_Type : int16_t { None = 0, Voyage = 1, Clocks = 2 };

class cPlanUndo {
public:
    static constexpr std::size_t kSlots = 12;

    // Records the plan before a change of the Voyage screen (or of Options that touches
    // it). With `planChanged` the shell's PlanChanged flag is set. `key` is the screen's
    // key; empty means the screen that is showing.
    void Push_Plan_State(const VoyagePlan& plan, bool planChanged, const std::string& key = "");
    // Records the Clocks rows (the plan's ship-time table) before a change.
    void Push_Clox_State(const VoyagePlan& plan, const std::string& key = "");
    // Moves the present state (of the type of the top state) to the redo stack and
    // restores the top of the undo stack into `plan`. The type restored, None if the
    // stack was empty. The caller recalculates and redraws its screen.
    Undo_Type Undo(VoyagePlan& plan);
    // The reverse.
    Undo_Type Redo(VoyagePlan& plan);
    // Empties both stacks (a new or loaded plan).
    void Reset();
    // Enables "    &Undo" and "    &Redo" of the shell's menus by the counts.
    void Refresh() const;

    std::size_t Undo_Count() const { return undo_.size(); }
    std::size_t Redo_Count() const { return redo_.size(); }

private:
    struct State {
        Undo_Type Type = Undo_Type::None;
        std::string Key;
        Plan_Header Header;
        std::vector<Way_Point> Way_Points;
        std::vector<Way_Point_Text> Texts;
        std::vector<int32_t> Ship_Time;
    };
    static State Capture(const VoyagePlan& plan, Undo_Type type, const std::string& key);
    static void Restore(const State& s, VoyagePlan& plan);
    static void Push(std::deque<State>& stack, State s);
    static Undo_Type Move(std::deque<State>& from, std::deque<State>& to, VoyagePlan& plan);

    std::deque<State> undo_;
    std::deque<State> redo_;
};

// The program's one pair of stacks.
extern cPlanUndo Plan_Undo;

// "    &Undo" (0) and "    &Redo" (1) of the menu bar, and Ctrl+Z, Ctrl+Y: on Voyage and
// Clocks only, when the stack has a state. The screen showing recalculates and the menus
// are rewritten.
void mnuUndo_Click(int index);

}  // namespace kelmoran
