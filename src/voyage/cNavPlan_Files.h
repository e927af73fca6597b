// The plan items of the File menu as the program carries them out: the file dialogues of
// the voyage files ("Voyage Files (*.Voy)", or "Clox Files (*.Clox)" from the Clocks
// screen), reading and writing through the voyage file routines, the default plan, a new
// plan, and the Clocks screen's ship-time items. The shell decides by the captions what to
// call; this does it.
#pragma once

#include <functional>
#include <string>

#include "shell/M_Kelmoran.h"

class QWidget;

namespace kelmoran {

class cNavPlan_Files : public PlanFileActions {
  public:
    explicit cNavPlan_Files(QWidget* parent = nullptr) : parent_(parent) {}

    std::string Plan_File_Name() const override;
    std::string Default_Plan_Name() const override;
    void Set_Default_Plan_Name(const std::string& name) override;
    bool Any_Way_Point_In_Use() const override;
    void New_Plan() override;
    bool Open_Plan() override;
    // Reads the plan at `path` (chosen, or named on the command line); its message if it
    // cannot be read, and the plan in use is kept.
    bool Open_Plan_File(const std::string& path);
    bool Save_Plan(const std::string& name) override;
    bool Save_Plan_As() override;
    void Read_Default_Plan() override;
    void Empty_Undo_Stacks() override;
    void Clear_Clox_Current() override;
    void Calculate_Ship_Time() override;
    void Apply_To_Voyage_Plan() override;

    // "Import Route (GPX)..." and "Export Route (GPX)..." of the Voyage screen's File menu.
    void Import_Route();
    void Export_Route();

    // The file dialogue: (saving, title, filter) to a path, "" when cancelled. Tests put
    // their own in place of Qt's dialogue.
    std::function<std::string(bool save, const std::string& title, const std::string& filter)>
        Choose_File;

  private:
    std::string Ask_File(bool save, const std::string& title) const;
    std::string Ask_File(bool save, const std::string& title, const std::string& filter) const;
    void Show_Error(const std::string& message) const;
    void Plan_Replaced() const;

    QWidget* parent_ = nullptr;
};

}  // namespace kelmoran
