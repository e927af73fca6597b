// The shell's shared state, its update cycle, the change of screen, the menus' state and
// the exit sequence.
#include "shell/M_Kelmoran.h"

#include <cstdio>
#include <string_view>

#include "settings/SettingsRecord.h"
#include "voyage/Plan_Undo.h"

namespace kelmoran {

ShellState Shell;

namespace {

// The separator caption of a menu item.
constexpr const char* kSeparator = "-";

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

void Rewrite_Menus() {
    Menus_Set_For_Screen();
    if (Shell.Host) Shell.Host->Menus_Changed();
}

}  // namespace

MenuModel::MenuModel() {
    const char* file[] = {"&New",  "&Open Voyage", kSeparator, "Cl&ear Default Plan",
                          "Set as &Default Plan", kSeparator, "&Save", "Save &As",
                          kSeparator, "&Print", kSeparator, "E&xit"};
    for (size_t i = 0; i < mnuFile.size(); ++i) mnuFile[i].Caption = file[i];
    const char* window[] = {"&AltAz", "&Clocks", "&Main", "Moon &Phases", "&Solar Bodies",
                            "&Voyage", kSeparator, "Almanac", "Star Atlas", "Sights"};
    for (size_t i = 0; i < mnuWindow.size(); ++i) mnuWindow[i].Caption = window[i];
    mnuOptions.Caption = "    &Options    ";
    mnuUpdate.Caption = "    Reset &Time    ";
    mnuSearch.Caption = "    &Find Star    ";
    mnuUndo[0] = {"    &Undo", true, false};
    mnuUndo[1] = {"    &Redo", true, false};
    const char* help[] = {"&Show", "Beginner's Guide", "&Contact", "Check for &Updates",
                          "&Version Info"};
    for (size_t i = 0; i < mnuHelp.size(); ++i) mnuHelp[i].Caption = help[i];
    const char* book[] = {"Dip etc",       "Almanac",       "Increments and Corrections",
                          "Refraction",    "Moon Corrections", "Monthly Stars",
                          "Complete Almanac"};
    for (size_t i = 0; i < mnuBook.size(); ++i) mnuBook[i].Caption = book[i];
    const char* popup1[] = {"Apply to Voyage", "Calc Ship Time", "Use Plan for Ship Time"};
    for (size_t i = 0; i < mnuPopUp1.size(); ++i) mnuPopUp1[i].Caption = popup1[i];
}

int Window_Index_Of(const std::string& key) {
    if (key.empty()) return -1;
    for (size_t i = 0; i < kWindowMenuKeys.size(); ++i)
        if (key == kWindowMenuKeys[i]) return static_cast<int>(i);
    return -1;
}

int16_t& ShellState::Up_To_Date(const std::string& key) {
    for (size_t i = 0; i < kUpToDateKeys.size(); ++i)
        if (key == kUpToDateKeys[i]) return UpToDate[i];
    static int16_t scratch = 0;
    scratch = 0;
    return scratch;
}

void Reset_Shell(ShellHost* host) {
    Shell = ShellState{};
    Shell.Host = host;
}

void Update_All_Screens(const std::string& source) {
    if (Shell.UpdateFreeze) return;
    // The Almanac keeps its own date: its flag is only ever set here, never cleared.
    for (const char* key : kUpToDateKeys)
        if (std::string_view(key) != screen_key::Almanac) Shell.Up_To_Date(key) = kFalse;
    if (Settings.PositionMethod != 2) Shell.PlanTimesStale = kTrue;
    if (!source.empty()) Shell.Up_To_Date(source) = kTrue;

    if (Shell.CurrentScreen && Shell.CurrentScreen->ClassType() != source)
        Shell.CurrentScreen->Force_Update();
    if (Shell.Host) {
        if (Shell.AtlasOpen && !Shell.Up_To_Date(screen_key::PlotStars)) Shell.Host->Update_Atlas();
        if (Shell.SightsOpen && !Shell.Up_To_Date(screen_key::Sights)) Shell.Host->Update_Sights();
    }
}

void Reset_Time() {
    if (Shell.Host) {
        Shell.Host->End_Edit(true);
        Shell.CurrentJD = Calc_JD(Shell.Host->Now_UTC(), false);
    }
    // An empty source: no screen counts as up to date, so the current one is forced.
    Update_All_Screens("");
}

void Kill_Activities() {
    if (Shell.Host) {
        if (Shell.Editing) Shell.Host->End_Edit(true);
        if (Shell.CursorShown) Shell.Host->Erase_Cursor();
        Shell.Host->Remove_Help_Popup();
    }
    if (Shell.CurrentScreen) Shell.CurrentScreen->Kill_Activities(Shell.Cursor);
}

void Set_Reset_Time_Enabled() {
    Shell.Menus.mnuUpdate.Enabled =
        Shell.ScreenName == screen_key::Splash || Shell.ScreenName == screen_key::AltAz;
}

void Select_Screen(int index) {
    if (index < 0 || index >= kGridScreenCount || !Shell.Host) return;
    auto& slot = Shell.Screens[static_cast<size_t>(index)];
    if (!slot) {
        Shell.NewScreenType = kWindowMenuKeys[static_cast<size_t>(index)];
        slot = Shell.Host->Make_Screen(Shell.NewScreenType);
        if (!slot) return;  // this screen is not part of the program yet
    }
    if (Shell.CurrentScreen && Shell.CurrentScreen != slot.get())
        Shell.CurrentScreen->Set_Visible(false);
    Shell.CurrentScreen = slot.get();
    Shell.ScreenName = Shell.CurrentScreen->ClassType();
    Shell.Menus.mnuSearch.Enabled = index == 0;

    // AwakenModule: bring the screen on to the window.
    Shell.CurrentScreen->Restore_Layout();
    Shell.CurrentScreen->Set_Visible(true);
    Shell.CurrentScreen->Load();
    Shell.Host->Repaint();
    Menus_Set_For_Screen();
    Set_Reset_Time_Enabled();

    for (size_t i = 0; i < Shell.Menus.mnuWindow.size(); ++i)
        Shell.Menus.mnuWindow[i].Visible = static_cast<int>(i) != index;
    Shell.Host->Menus_Changed();
    if (Shell.ShowIntro) Shell.Host->Show_Intro_Message();
}

void mnuWindow_Click(int index) {
    Kill_Activities();
    if (index >= 6) {
        if (!Shell.Host || index == 6 || index > 9) return;
        if (Shell.Editing) Shell.Host->End_Edit(true);
        Shell.Host->Open_Separate_Screen(index);
        return;
    }
    Select_Screen(index);
}

void Create_Main_Screen() {
    if (!Shell.Host) return;
    for (size_t i = 0; i < Shell.Menus.mnuWindow.size(); ++i)
        Shell.Menus.mnuWindow[i].Enabled =
            i != 6 && Shell.Host->Screen_Available(static_cast<int>(i));
    // Find Star is enabled at start; after a change of screen only on AltAz.
    Select_Screen(kMainScreenIndex);
    Shell.Menus.mnuSearch.Enabled = true;
    Shell.Host->Menus_Changed();
}

void Menus_Set_For_Screen() {
    auto& f = Shell.Menus.mnuFile;
    for (int i = 0; i <= 8; ++i) f[static_cast<size_t>(i)].Enabled = false;
    f[1].Visible = true;
    f[2].Visible = true;
    f[2].Caption = kSeparator;
    f[9].Caption = "&Print";
    f[9].Enabled = true;

    const bool byPlan = Settings.PositionMethod == 2;
    const std::string& key = Shell.ScreenName;
    if (key == screen_key::Lunations) {
        f[1].Caption = "&Print Data";
        f[1].Visible = true;
        f[1].Enabled = true;  // the table of the year prints from here
        f[9].Caption = "Print &Eclipse";
        f[9].Enabled = true;
    } else if (key == screen_key::Clox) {
        f[1].Caption = "&Calculate Ship Time";
        f[2].Caption = "&Apply to Voyage Plan";
        f[3].Caption = "&Take Ship Time from Plan";
        f[4].Caption = kSeparator;
        for (int i = 1; i <= 4; ++i) {
            f[static_cast<size_t>(i)].Visible = true;
            f[static_cast<size_t>(i)].Enabled = byPlan;
        }
    } else {
        f[1].Caption = "&Open";
    }

    if (key == screen_key::NavPlan) {
        const PlanFileActions* plan = Shell.Plan;
        const std::string name = plan ? plan->Plan_File_Name() : std::string();
        const std::string defaultName = plan ? plan->Default_Plan_Name() : std::string();
        if (Contains(name, ".Voy")) {
            f[3].Caption = name != defaultName ? "Restore Default Plan" : "&Remove as Default";
            f[3].Visible = true;
        } else {
            f[3].Visible = false;
        }
        f[4].Caption = "Set as &Default Plan";
        if (name.empty()) {
            f[4].Visible = true;
        } else if (name == defaultName) {
            f[4].Visible = false;
        } else {
            f[4].Caption = "Replace as the &Default Plan";
            f[4].Visible = plan && plan->Any_Way_Point_In_Use();
        }
        if (!name.empty()) {
            if (byPlan) {
                f[4].Caption = "Do not D.R.";
                f[4].Visible = true;
            } else if (name == defaultName) {
                f[4].Caption = "D.R. by Plan";
                f[4].Visible = true;
            }
        }
        for (int i = 0; i <= 8; ++i) f[static_cast<size_t>(i)].Enabled = true;
    }

    // Undo and redo: on Voyage and Clocks, by what their stacks hold.
    Plan_Undo.Refresh();
}

void File_Menu_Action(int index) {
    if (index == 10) {
        if (Shell.Host) Shell.Host->Unload_Main();
        return;
    }
    if (index < 0 || index >= static_cast<int>(Shell.Menus.mnuFile.size())) return;
    Kill_Activities();
    const std::string caption = Shell.Menus.mnuFile[static_cast<size_t>(index)].Caption;
    PlanFileActions* plan = Shell.Plan;
    ShellHost* host = Shell.Host;

    if (caption == "E&xit") {
        if (host) host->Unload_Main();
        return;
    }
    if (caption == "&Print" || caption == "&Print Data") {
        if (Shell.CurrentScreen) Shell.CurrentScreen->mnuPrint();
        return;
    }
    if (caption == "Print &Eclipse") {
        if (Shell.CurrentScreen) Shell.CurrentScreen->mnuPrint_Eclipse();
        return;
    }
    if (!plan) return;

    if (Shell.ScreenName == screen_key::Clox) {
        if (caption == "&Calculate Ship Time") {
            plan->Calculate_Ship_Time();
        } else if (caption == "&Apply to Voyage Plan") {
            plan->Apply_To_Voyage_Plan();
        } else if (caption == "&Take Ship Time from Plan") {
            plan->Clear_Clox_Current();
            if (Shell.CurrentScreen) Shell.CurrentScreen->CalcDates();
        }
        return;
    }

    bool rewrite = false;
    if (caption == "&New") {
        plan->New_Plan();
        plan->Empty_Undo_Stacks();
        Settings.PositionMethod = 0;
        rewrite = true;
    } else if (caption == "&Open") {
        if (plan->Open_Plan()) {
            Settings.PositionMethod = 0;
            plan->Empty_Undo_Stacks();
        }
        rewrite = true;
    } else if (caption == "&Remove as Default") {
        plan->Set_Default_Plan_Name("");
        if (Settings.PositionMethod == 2) Settings.PositionMethod = 0;
        rewrite = true;
    } else if (caption == "Restore Default Plan") {
        if (Shell.PlanChanged && host) {
            const MsgAnswer a = host->Message_Box(shell_text::PlanChangedSave, shell_text::Exiting,
                                                  MsgButtons::YesNoCancel);
            if (a == MsgAnswer::Cancel) return;
            if (a == MsgAnswer::Yes) {
                const std::string name = plan->Plan_File_Name();
                if (!name.empty()) plan->Save_Plan(name);
                else plan->Save_Plan_As();
            }
        }
        plan->Read_Default_Plan();
        plan->Empty_Undo_Stacks();
        rewrite = true;
    } else if (caption == "Set as &Default Plan" || caption == "Replace as the &Default Plan" ||
               caption == "D.R. by Plan" || caption == "Do not D.R.") {
        if (caption == "D.R. by Plan") {
            Settings.PositionMethod = 2;
        } else if (caption == "Do not D.R.") {
            Settings.PositionMethod = 0;
        } else {
            bool saved = !plan->Plan_File_Name().empty();
            if (!saved) saved = plan->Save_Plan_As();
            if (!saved) {
                if (host)
                    host->Message_Box(shell_text::MustSaveFirst, shell_text::SaveCancelled,
                                      MsgButtons::OK);
            } else {
                plan->Set_Default_Plan_Name(plan->Plan_File_Name());
            }
        }
        plan->Clear_Clox_Current();
        Update_All_Screens("All");
        rewrite = true;
    } else if (caption == "&Save" || caption == "Save &As") {
        const std::string name = plan->Plan_File_Name();
        if (index == 6 && Contains(name, ".Voy")) plan->Save_Plan(name);
        else plan->Save_Plan_As();
        rewrite = true;
    }
    if (rewrite) Rewrite_Menus();
}

std::string Version_Text() {
    char buf[64];
    std::snprintf(buf, sizeof buf, "This is version  %d.%d.%d", KELMORAN_VERSION_MAJOR,
                  KELMORAN_VERSION_MINOR, KELMORAN_VERSION_PATCH);
    return buf;
}

void mnuHelp_Click(int index) {
    ShellHost* host = Shell.Host;
    if (!host) return;
    switch (index) {
        case 0:
            if (!host->Open_Help_File()) {
                host->Message_Box(shell_text::HelpDeleted, shell_text::FileDeleted, MsgButtons::OK);
                Shell.Menus.mnuHelp[0].Visible = false;
                host->Menus_Changed();
            }
            break;
        case 2: host->Open_Mail(); break;
        case 3: host->Open_Updates_Page(); break;
        case 4: host->Message_Box(Version_Text(), kVersionTitle, MsgButtons::OK); break;
        default: break;  // "Beginner's Guide" does nothing here
    }
}

bool Query_Exit() {
    ShellHost* host = Shell.Host;
    if (!host) return true;
    if (Shell.SightsChanged &&
        host->Message_Box(shell_text::SightsNotSaved, shell_text::Exiting, MsgButtons::OKCancel) ==
            MsgAnswer::Cancel)
        return false;
    if (Shell.PlanChanged &&
        host->Message_Box(shell_text::PlanChangedAbandon, shell_text::Exiting,
                          MsgButtons::OKCancel) == MsgAnswer::Cancel)
        return false;
    return true;
}

void Shut_Down() {
    ShellHost* host = Shell.Host;
    if (host && Shell.Editing) host->End_Edit(false);
    Shell.Editing = kFalse;
    if (host) {
        host->Remove_Help_Popup();
        host->Save_Settings();
    }
    Shell.CurrentScreen = nullptr;
    // The screens are destroyed only now, at exit.
    for (auto it = Shell.Screens.rbegin(); it != Shell.Screens.rend(); ++it) it->reset();
}

void MyDates_DateChange(const std::string& key, double zoneJD) {
    Shell.CurrentJD = zoneJD - TZ_Bias / 1440.0;
    Update_All_Screens(key);
}

void MyDates_CalenderChg(const std::string& key, int16_t julian) {
    Shell.CalendarChoice = julian;
    Update_All_Screens(key);
}

void MyDates_TZChange(const std::string& key, int32_t bias) {
    TZ_Bias = bias;
    Update_All_Screens(key);
}

}  // namespace kelmoran
