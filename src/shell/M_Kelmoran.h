// The shell's shared state and its update cycle: the one moment of all screens, the
// screen that is showing, the flags that say which screens are up to date, the menus, and
// the operations that change screen, broadcast a change, reset the time and end the run.
//
// Nothing here needs a window system: a screen is an object with the operations of
// cScreen, and everything the shell asks of the platform (message boxes, the clock, a
// repaint, making a screen) goes through ShellHost.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "ephemeris/Time_Calcs.h"

namespace kelmoran {

// 16-bit Booleans of shared state.
inline constexpr int16_t kTrue = -1;
inline constexpr int16_t kFalse = 0;

// Keys of the screens, used all through the program as literals.
namespace screen_key {
inline constexpr const char* AltAz = "AltAz";
inline constexpr const char* Clox = "Clox";
inline constexpr const char* Splash = "Splash";
inline constexpr const char* Lunations = "Lunations";
inline constexpr const char* Planets = "Planets";
inline constexpr const char* NavPlan = "NavPlan";
inline constexpr const char* Almanac = "Almanac";
inline constexpr const char* PlotStars = "PlotStars";
inline constexpr const char* Sights = "Sights";
}  // namespace screen_key

// The six grid screens by their index in the Screen menu (mnuWindow 0 .. 5); 6 is a
// separator and 7 .. 9 open the screens with windows of their own.
inline constexpr int kGridScreenCount = 6;
inline constexpr std::array<const char*, 10> kWindowMenuKeys = {
    screen_key::AltAz,  screen_key::Clox,    screen_key::Splash,    screen_key::Lunations,
    screen_key::Planets, screen_key::NavPlan, "",                   screen_key::Almanac,
    screen_key::PlotStars, screen_key::Sights};
inline constexpr int kMainScreenIndex = 2;

// Index in the Screen menu of a screen's key, or -1.
int Window_Index_Of(const std::string& key);

// The cursor and scroll state of the current screen, handed to it by Kill_Activities.
struct CursorState {
    int32_t MyTrueRow = -1;
    int32_t MyApparentRow = -1;
    int32_t MyTrueColm = -1;
    int32_t MyApparentColm = -1;
    int32_t MyHScroll = 0;
    int32_t MyVScroll = 0;
};

// What every grid screen offers the shell.
class cScreen {
public:
    virtual ~cScreen() = default;

    // The screen's key ("Splash", "AltAz", ...).
    virtual std::string ClassType() const = 0;
    // Makes the screen current: catches up with CurrentJD if its UpToDate flag is clear,
    // sets the flag and asks for a repaint.
    virtual void Load() = 0;
    // If the screen's UpToDate flag is clear: SetDates, CalcDates, repaint, set the flag.
    virtual void Force_Update() = 0;
    // Brings the screen's date control into line with CurrentJD, TZ_Bias, CalendarChoice.
    virtual void SetDates() = 0;
    // Recomputes all rows for the screen's moment and repaints.
    virtual void CalcDates() = 0;
    // Carries out a pop-up menu item, named by its caption.
    virtual void Menu_PopUp(const std::string& caption) = 0;
    // Brings back the screen's column layout of this run.
    virtual void Restore_Layout() = 0;
    // Ends every gesture in progress (column drag, highlighting) and takes over the
    // cursor and scroll state; then sets its scroll bars.
    virtual void Kill_Activities(const CursorState& state) = 0;
    // Shows or hides the screen: a screen is hidden, never destroyed, when another takes
    // over.
    virtual void Set_Visible(bool visible) = 0;
    // "&Print" and "Print &Eclipse" of the File menu.
    virtual void mnuPrint() = 0;
    virtual void mnuPrint_Eclipse() {}
    // "Save as PDF...": the pages of "&Print" to a file chosen in a file dialogue.
    virtual void mnuSave_PDF() {}
};

// The answers and buttons of a message box.
enum class MsgButtons { OK, OKCancel, YesNoCancel };
enum class MsgAnswer { OK, Cancel, Yes, No };

// What the voyage plan tells the File menu, and what the File menu asks of the plan.
// The voyage module provides it; until then the shell has none.
class PlanFileActions {
public:
    virtual ~PlanFileActions() = default;
    virtual std::string Plan_File_Name() const = 0;       // "" if the plan has no file
    virtual std::string Default_Plan_Name() const = 0;    // the settings' default plan
    virtual void Set_Default_Plan_Name(const std::string& name) = 0;
    virtual bool Any_Way_Point_In_Use() const = 0;
    virtual void New_Plan() = 0;                          // mnuNewPlan of the Voyage screen
    virtual bool Open_Plan() = 0;                         // file dialogue, then read
    virtual bool Save_Plan(const std::string& name) = 0;  // to the plan's own name
    virtual bool Save_Plan_As() = 0;                      // file dialogue, then write
    virtual void Read_Default_Plan() = 0;
    virtual void Empty_Undo_Stacks() = 0;
    virtual void Clear_Clox_Current() = 0;  // empties the Clox data-is-current array
    // The Clocks screen's items.
    virtual void Calculate_Ship_Time() = 0;
    virtual void Apply_To_Voyage_Plan() = 0;
};

// Everything the shell needs of the platform. fMain provides it; tests give a fake.
class ShellHost {
public:
    virtual ~ShellHost() = default;
    virtual MsgAnswer Message_Box(const std::string& text, const std::string& title,
                                  MsgButtons buttons) = 0;
    // The computer's clock, in UTC.
    virtual MySystemTime Now_UTC() = 0;
    // Makes the grid screen of that key, or returns null if this build has none yet.
    virtual std::unique_ptr<cScreen> Make_Screen(const std::string& key) = 0;
    // Whether Make_Screen can make it, or (7 .. 9) the separate screen can be opened.
    virtual bool Screen_Available(int windowIndex) = 0;
    // Opens (or brings up) Almanac (7), Star Atlas (8) or Sights (9).
    virtual void Open_Separate_Screen(int windowIndex) = 0;
    // The Star Atlas and Sights windows' updates, when they are open.
    virtual void Update_Atlas() {}
    virtual void Update_Sights() {}
    // Ends an open edit, committing it or not.
    virtual void End_Edit(bool commit) = 0;
    // Removes the help pop-up and stops its timer; erases the cell cursor.
    virtual void Remove_Help_Popup() {}
    virtual void Erase_Cursor() {}
    // Asks for a repaint of the main window and rewrites its menus from the model.
    virtual void Repaint() = 0;
    virtual void Menus_Changed() = 0;
    // Shows the current screen's non-recurring message.
    virtual void Show_Intro_Message() {}
    // Closes the main window (which runs the exit sequence).
    virtual void Unload_Main() = 0;
    // Writes the settings back (at exit).
    virtual void Save_Settings() = 0;
    // Opens a help file, a mail message or a web page; false if it could not.
    virtual bool Open_Help_File() = 0;
    virtual void Open_Mail() = 0;
    virtual void Open_Updates_Page() = 0;
};

struct MenuItem {
    std::string Caption;
    bool Visible = true;
    bool Enabled = true;
};

// The menus of the main window as state; fMain mirrors them.
struct MenuModel {
    std::array<MenuItem, 12> mnuFile;
    std::array<MenuItem, 10> mnuWindow;
    MenuItem mnuOptions;
    MenuItem mnuUpdate;
    MenuItem mnuSearch;
    std::array<MenuItem, 2> mnuUndo;
    std::array<MenuItem, 5> mnuHelp;
    std::array<MenuItem, 7> mnuBook;
    std::array<MenuItem, 3> mnuPopUp1;

    MenuModel();
};

// The screens that hold an UpToDate flag.
inline constexpr std::array<const char*, 8> kUpToDateKeys = {
    screen_key::Almanac, screen_key::AltAz,   screen_key::Clox,      screen_key::Sights,
    screen_key::Splash,  screen_key::Planets, screen_key::PlotStars, screen_key::Lunations};

// The shared state of the shell. One instance, `Shell`, lives for the whole run.
struct ShellState {
    double CurrentJD = 0.0;        // the moment of all screens, MyJD in UT
    int16_t CalendarChoice = 0;    // non-zero: the date controls use the Julian calendar
    std::string ScreenName;        // key of the grid screen that is showing
    std::string NewScreenType;     // key handed to a screen while it is being made
    cScreen* CurrentScreen = nullptr;
    std::array<std::unique_ptr<cScreen>, kGridScreenCount> Screens;  // by mnuWindow index

    std::array<int16_t, kUpToDateKeys.size()> UpToDate{};
    int16_t UpdateFreeze = 0;
    int16_t SightsChanged = 0;
    int16_t PlanChanged = 0;
    int16_t SightsOpen = 0;
    int16_t AtlasOpen = 0;
    int16_t PlanTimesStale = 0;    // the plan's times are to be recomputed
    int16_t ShowIntro = 0;
    std::array<int16_t, kGridScreenCount> IntroPending{};
    // The messages of the Almanac, the Star Atlas and Sights (Screen menu 7, 8, 9).
    std::array<int16_t, 3> IntroPendingSeparate{};
    int16_t Editing = 0;
    int16_t CursorShown = 0;
    CursorState Cursor;

    MenuModel Menus;

    ShellHost* Host = nullptr;
    PlanFileActions* Plan = nullptr;

    // The UpToDate flag of a key; a key without one yields a scratch flag.
    int16_t& Up_To_Date(const std::string& key);
};

extern ShellState Shell;

// Gives the shared state its start shape (a fresh ShellState with `host`).
void Reset_Shell(ShellHost* host);

// Tells all screens that the shared state has changed; `source` is the key of the screen
// that made the change (it counts as up to date), or empty.
void Update_All_Screens(const std::string& source);

// CurrentJD = the computer's UTC clock (proleptic Gregorian); every screen catches up.
void Reset_Time();

// Ends every activity on the current screen and hands it the cursor and scroll state.
void Kill_Activities();

// The Screen menu: 0 .. 5 change the grid screen, 7 .. 9 open a separate window.
void mnuWindow_Click(int index);

// Makes grid screen `index` current, making it on first use.
void Select_Screen(int index);

// Start-up: makes the Main screen ("Splash") and shows it.
void Create_Main_Screen();

// Rewrites the File, Undo, Find Star and Reset Time items for the current screen.
void Menus_Set_For_Screen();

// Reset Time is enabled only on Main and AltAz.
void Set_Reset_Time_Enabled();

// A click on File menu item `index`, acted on by the caption it bears now.
void File_Menu_Action(int index);

// The Help menu.
void mnuHelp_Click(int index);

// The version and its message.
std::string Version_Text();
inline constexpr const char* kVersionTitle = "Kelmoran Version";

// The exit questions; false if the user cancelled and the program keeps running.
bool Query_Exit();

// The rest of the exit sequence: ends an edit, releases the screens, saves the settings.
void Shut_Down();

// A date control of screen `key` changed the moment (`zoneJD` in zone time), the calendar
// or the zone: the shared state takes the change and every other screen is told.
void MyDates_DateChange(const std::string& key, double zoneJD);
void MyDates_CalenderChg(const std::string& key, int16_t julian);
void MyDates_TZChange(const std::string& key, int32_t bias);

// The exact words of the shell's message boxes.
namespace shell_text {
inline constexpr const char* Exiting = "Exiting";
inline constexpr const char* SightsNotSaved =
    "Changes to Sights have not been saved\r\n\nAbandon changes?\n\n";
inline constexpr const char* PlanChangedAbandon =
    "Voyage Plan has been changed\r\n\nAbandon changes?\n";
inline constexpr const char* PlanChangedSave = "Voyage Plan has been changed\r\n\nSave changes?\n";
inline constexpr const char* MustSaveFirst =
    "A plan must be saved before it can be set as the default\r\n";
inline constexpr const char* SaveCancelled = "Save Cancelled";
inline constexpr const char* HelpDeleted =
    "\r\nThe Help File, Kelmoran Help.html has been deleted.\r\n";
inline constexpr const char* FileDeleted = "File Deleted";
inline constexpr const char* HelpFileName = "Kelmoran Help.html";
}  // namespace shell_text

}  // namespace kelmoran
