// The shell's update cycle, change of screen, menus and exit, with fake screens and a
// fake platform.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "settings/SettingsRecord.h"
#include "shell/Date_Record.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Plan_Undo.h"

namespace kelmoran {
namespace {

using ::testing::ElementsAre;

// A grid screen that counts its calculations and follows the protocol's flag rules.
class FakeScreen : public cScreen {
  public:
    explicit FakeScreen(std::string key) : key_(std::move(key)) {}

    std::string ClassType() const override { return key_; }
    void Load() override {
        if (!Shell.Up_To_Date(key_)) {
            SetDates();
            CalcDates();
        }
        Shell.Up_To_Date(key_) = kTrue;
    }
    void Force_Update() override {
        ++forced;
        if (Shell.Up_To_Date(key_)) return;
        SetDates();
        CalcDates();
        Shell.Up_To_Date(key_) = kTrue;
    }
    void SetDates() override { myJD = Shell.CurrentJD; }
    void CalcDates() override {
        ++calculations;
        shownJD = myJD;
    }
    void Menu_PopUp(const std::string&) override {}
    void Restore_Layout() override {}
    void Kill_Activities(const CursorState& s) override {
        ++killed;
        cursor = s;
    }
    void Set_Visible(bool v) override { visible = v; }
    void mnuPrint() override { ++printed; }

    double myJD = -1, shownJD = -1;
    int calculations = 0, forced = 0, killed = 0, printed = 0;
    bool visible = false;
    CursorState cursor;

  private:
    std::string key_;
};

class FakeHost : public ShellHost {
  public:
    MsgAnswer Message_Box(const std::string& text, const std::string& title, MsgButtons) override {
        asked.push_back(title + "|" + text);
        if (answers.empty()) return MsgAnswer::OK;
        const MsgAnswer a = answers.front();
        answers.erase(answers.begin());
        return a;
    }
    MySystemTime Now_UTC() override { return now; }
    std::unique_ptr<cScreen> Make_Screen(const std::string& key) override {
        ++made[key];
        auto s = std::make_unique<FakeScreen>(key);
        screens[key] = s.get();
        return s;
    }
    bool Screen_Available(int i) override { return i != 6; }
    void Open_Separate_Screen(int i) override { opened.push_back(i); }
    void End_Edit(bool commit) override {
        edits.push_back(commit);
        Shell.Editing = kFalse;
    }
    void Repaint() override {}
    void Menus_Changed() override {}
    void Unload_Main() override { ++unloads; }
    void Save_Settings() override { ++saves; }
    bool Open_Help_File() override { return helpExists; }
    void Open_Mail() override {}
    void Open_Updates_Page() override {}

    MySystemTime now;
    std::vector<MsgAnswer> answers;
    std::vector<std::string> asked;
    std::map<std::string, int> made;
    std::map<std::string, FakeScreen*> screens;
    std::vector<int> opened;
    std::vector<bool> edits;
    int unloads = 0, saves = 0;
    bool helpExists = true;
};

class FakePlan : public PlanFileActions {
  public:
    std::string Plan_File_Name() const override { return name; }
    std::string Default_Plan_Name() const override { return defaultName; }
    void Set_Default_Plan_Name(const std::string& n) override { defaultName = n; }
    bool Any_Way_Point_In_Use() const override { return inUse; }
    void New_Plan() override { Log("new"); }
    bool Open_Plan() override { return Log("open"); }
    bool Save_Plan(const std::string& n) override { return Log("save " + n); }
    bool Save_Plan_As() override {
        if (!saveAsGives.empty()) name = saveAsGives;
        return Log("save as") && !saveAsGives.empty();
    }
    void Read_Default_Plan() override { Log("read default"); }
    void Empty_Undo_Stacks() override { Log("undo emptied"); }
    void Clear_Clox_Current() override { Log("clox cleared"); }
    void Calculate_Ship_Time() override { Log("calc ship time"); }
    void Apply_To_Voyage_Plan() override { Log("apply"); }
    bool Log(const std::string& what) {
        log.push_back(what);
        return true;
    }

    std::string name, defaultName, saveAsGives;
    bool inUse = false;
    std::vector<std::string> log;
};

class ShellTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Settings = SettingsRecord{};
        TZ_Bias = 0;
        Reset_Shell(&host);
        Shell.Plan = &plan;
        Shell.CurrentJD = 9000.25;
        Create_Main_Screen();
    }
    void TearDown() override { Reset_Shell(nullptr); }

    FakeScreen& Screen(const char* key) { return *host.screens.at(key); }
    // The captions of File menu items, joined by "|".
    static std::string Captions(std::initializer_list<size_t> items) {
        std::string s;
        for (size_t i : items) s += (s.empty() ? "" : "|") + Shell.Menus.mnuFile[i].Caption;
        return s;
    }

    FakeHost host;
    FakePlan plan;
};

TEST_F(ShellTest, StartUpShowsMainComputedOnce) {
    EXPECT_EQ(Shell.ScreenName, "Splash");
    EXPECT_EQ(host.made["Splash"], 1);
    EXPECT_EQ(Screen("Splash").calculations, 1);
    EXPECT_EQ(Screen("Splash").shownJD, 9000.25);
    EXPECT_FALSE(Shell.Menus.mnuWindow[kMainScreenIndex].Visible);
    EXPECT_TRUE(Shell.Menus.mnuSearch.Enabled);  // enabled at start
    EXPECT_TRUE(Shell.Menus.mnuUpdate.Enabled);
    EXPECT_FALSE(Shell.Menus.mnuUndo[0].Enabled);
}

TEST_F(ShellTest, ScreensAreMadeOnceHiddenNotDestroyedAndMenusFollow) {
    mnuWindow_Click(0);  // AltAz
    FakeScreen* altaz = host.screens.at("AltAz");
    EXPECT_EQ(Shell.CurrentScreen, altaz);
    EXPECT_FALSE(Screen("Splash").visible);
    EXPECT_TRUE(altaz->visible);
    EXPECT_TRUE(Shell.Menus.mnuSearch.Enabled);
    EXPECT_TRUE(Shell.Menus.mnuUpdate.Enabled);
    EXPECT_FALSE(Shell.Menus.mnuWindow[0].Visible);
    EXPECT_TRUE(Shell.Menus.mnuWindow[kMainScreenIndex].Visible);

    mnuWindow_Click(1);  // Clocks
    EXPECT_FALSE(Shell.Menus.mnuSearch.Enabled);
    EXPECT_FALSE(Shell.Menus.mnuUpdate.Enabled);
    // Undo and redo follow what the stacks hold, and only here and on Voyage.
    EXPECT_FALSE(Shell.Menus.mnuUndo[0].Enabled);
    Plan_Undo.Push_Clox_State(Voyage);
    EXPECT_TRUE(Shell.Menus.mnuUndo[0].Enabled);
    EXPECT_FALSE(Shell.Menus.mnuUndo[1].Enabled);

    mnuWindow_Click(0);
    EXPECT_EQ(host.made["AltAz"], 1);
    EXPECT_EQ(Shell.CurrentScreen, altaz);  // the same object, kept while hidden
    EXPECT_FALSE(Shell.Menus.mnuUndo[0].Enabled);
    Plan_Undo.Reset();

    // Separate windows change nothing of the grid screens.
    mnuWindow_Click(8);
    EXPECT_THAT(host.opened, ElementsAre(8));
    EXPECT_EQ(Shell.CurrentScreen, altaz);
}

TEST_F(ShellTest, KillActivitiesEndsTheEditAndHandsOverTheCursor) {
    Shell.Editing = kTrue;
    Shell.Cursor.MyTrueRow = 7;
    Shell.Cursor.MyHScroll = 3;
    mnuWindow_Click(0);
    EXPECT_THAT(host.edits, ElementsAre(true));
    EXPECT_EQ(Screen("Splash").killed, 1);
    EXPECT_EQ(Screen("Splash").cursor.MyTrueRow, 7);
    EXPECT_EQ(Screen("Splash").cursor.MyHScroll, 3);
}

TEST_F(ShellTest, ABroadcastComputesOnlyTheScreenThatShows) {
    mnuWindow_Click(0);
    mnuWindow_Click(kMainScreenIndex);
    FakeScreen& altaz = Screen("AltAz");
    FakeScreen& main = Screen("Splash");
    const int altazBefore = altaz.calculations;
    const int mainBefore = main.calculations;

    // Two date changes made on Main, its own source: hidden AltAz does nothing.
    MyDates_DateChange("Splash", 9100.0);
    MyDates_DateChange("Splash", 9200.0);
    EXPECT_EQ(altaz.calculations, altazBefore);
    EXPECT_EQ(main.forced, 0);

    // Reopened, it catches up once, in Load.
    mnuWindow_Click(0);
    EXPECT_EQ(altaz.calculations, altazBefore + 1);
    EXPECT_EQ(altaz.shownJD, 9200.0);
    EXPECT_EQ(main.calculations, mainBefore);
}

TEST_F(ShellTest, DateChangeTakesTheZoneOffAndResetTimeForcesTheCurrentScreen) {
    TZ_Bias = 60;
    MyDates_DateChange("Splash", 9100.5);
    EXPECT_DOUBLE_EQ(Shell.CurrentJD, 9100.5 - 60 / 1440.0);
    EXPECT_TRUE(Shell.Up_To_Date("Splash"));

    // Main set the date and is up to date, but Reset Time has no source: it is forced.
    host.now = testing_dates::Date(2026, 11, 21, 6);
    const int before = Screen("Splash").calculations;
    Reset_Time();
    EXPECT_EQ(Screen("Splash").calculations, before + 1);
    EXPECT_DOUBLE_EQ(Screen("Splash").shownJD, Calc_JD(host.now, false));
}

TEST_F(ShellTest, UpdateFreezeHidesAChangeUntilTheNextOne) {
    FakeScreen& main = Screen("Splash");
    Shell.UpdateFreeze = kTrue;
    Shell.CurrentJD = 9500.0;
    Update_All_Screens("");
    EXPECT_NE(main.shownJD, 9500.0);
    Shell.UpdateFreeze = kFalse;
    EXPECT_NE(main.shownJD, 9500.0);  // clearing the freeze alone tells nobody
    Shell.CurrentJD = 9600.0;
    Update_All_Screens("");
    EXPECT_EQ(main.shownJD, 9600.0);
}

TEST_F(ShellTest, TheAlmanacKeepsItsOwnDateAndOpenWindowsAreTold) {
    Shell.Up_To_Date("Almanac") = kTrue;
    Update_All_Screens("");
    Update_All_Screens("AltAz");
    EXPECT_TRUE(Shell.Up_To_Date("Almanac"));
    EXPECT_TRUE(Shell.Up_To_Date("AltAz"));
    EXPECT_FALSE(Shell.Up_To_Date("Sights"));
    EXPECT_FALSE(Shell.Up_To_Date("PlotStars"));
    Update_All_Screens("Almanac");
    EXPECT_TRUE(Shell.Up_To_Date("Almanac"));
    EXPECT_FALSE(Shell.Up_To_Date("AltAz"));

    // The plan's times are marked stale unless the position comes from the plan.
    Shell.PlanTimesStale = kFalse;
    Settings.PositionMethod = 2;
    Update_All_Screens("");
    EXPECT_FALSE(Shell.PlanTimesStale);
    Settings.PositionMethod = 1;
    Update_All_Screens("");
    EXPECT_TRUE(Shell.PlanTimesStale);
}

TEST_F(ShellTest, ExitAsksForSightsThenPlanAndCancelAtEitherStops) {
    Shell.SightsChanged = kTrue;
    Shell.PlanChanged = kTrue;

    host.answers = {MsgAnswer::OK, MsgAnswer::OK};
    EXPECT_TRUE(Query_Exit());
    ASSERT_EQ(host.asked.size(), 2u);
    EXPECT_EQ(host.asked[0],
              "Exiting|Changes to Sights have not been saved\r\n\nAbandon changes?\n\n");
    EXPECT_EQ(host.asked[1], "Exiting|Voyage Plan has been changed\r\n\nAbandon changes?\n");

    host.asked.clear();
    host.answers = {MsgAnswer::Cancel};
    EXPECT_FALSE(Query_Exit());
    EXPECT_EQ(host.asked.size(), 1u);

    host.asked.clear();
    host.answers = {MsgAnswer::OK, MsgAnswer::Cancel};
    EXPECT_FALSE(Query_Exit());
    EXPECT_EQ(host.asked.size(), 2u);

    Shell.SightsChanged = kFalse;
    Shell.PlanChanged = kFalse;
    host.asked.clear();
    EXPECT_TRUE(Query_Exit());
    EXPECT_TRUE(host.asked.empty());

    Shell.Editing = kTrue;
    Shut_Down();
    EXPECT_THAT(host.edits, ElementsAre(false));  // an open edit ends without commit
    EXPECT_EQ(host.saves, 1);
    EXPECT_EQ(Shell.CurrentScreen, nullptr);
}

TEST_F(ShellTest, FileMenuByScreen) {
    const auto& f = Shell.Menus.mnuFile;
    // Main: Open, disabled with the rest of 0..8; Print stays.
    EXPECT_EQ(Captions({1, 9}), "&Open|&Print");
    EXPECT_FALSE(f[1].Enabled);
    EXPECT_TRUE(f[9].Enabled);
    mnuWindow_Click(3);  // Moon Phases
    EXPECT_EQ(Captions({1, 9}), "&Print Data|Print &Eclipse");
    mnuWindow_Click(1);  // Clocks: items follow the position method
    EXPECT_EQ(Captions({1, 2, 3, 4}),
              "&Calculate Ship Time|&Apply to Voyage Plan|&Take Ship Time from Plan|-");
    EXPECT_FALSE(f[1].Enabled);
    Settings.PositionMethod = 2;
    Menus_Set_For_Screen();
    EXPECT_TRUE(f[1].Enabled);
    EXPECT_TRUE(f[3].Enabled);
    File_Menu_Action(3);
    EXPECT_THAT(plan.log, ElementsAre("clox cleared"));
}

TEST_F(ShellTest, VoyageFileMenuFollowsThePlanAndItsDefault) {
    const auto& f = Shell.Menus.mnuFile;
    mnuWindow_Click(5);
    // A plan without a file: no default item, "Set as &Default Plan" shown.
    EXPECT_FALSE(f[3].Visible);
    EXPECT_EQ(f[4].Caption, "Set as &Default Plan");
    EXPECT_TRUE(f[4].Visible);
    for (int i = 0; i <= 8; ++i) EXPECT_TRUE(f[static_cast<size_t>(i)].Enabled) << i;

    // The default plan itself, not by plan: "&Remove as Default" and "D.R. by Plan".
    plan.name = plan.defaultName = "/home/n/Biscay.Voy";
    Menus_Set_For_Screen();
    EXPECT_EQ(Captions({3, 4}), "&Remove as Default|D.R. by Plan");
    EXPECT_TRUE(f[3].Visible);
    File_Menu_Action(4);
    EXPECT_EQ(Settings.PositionMethod, 2);
    EXPECT_EQ(f[4].Caption, "Do not D.R.");

    // Another plan: "Replace as the &Default Plan" only with way points in use.
    Settings.PositionMethod = 0;
    plan.name = "/home/n/Azores.Voy";
    Menus_Set_For_Screen();
    EXPECT_EQ(Captions({3, 4}), "Restore Default Plan|Replace as the &Default Plan");
    EXPECT_FALSE(f[4].Visible);
    plan.inUse = true;
    Menus_Set_For_Screen();
    EXPECT_TRUE(f[4].Visible);
}

TEST_F(ShellTest, RestoreDefaultPlanAsksAboutAChangedPlan) {
    mnuWindow_Click(5);
    plan.name = "/home/n/Azores.Voy";
    plan.defaultName = "/home/n/Biscay.Voy";
    Menus_Set_For_Screen();
    Shell.PlanChanged = kTrue;

    host.answers = {MsgAnswer::Cancel};
    File_Menu_Action(3);
    EXPECT_TRUE(plan.log.empty());
    ASSERT_EQ(host.asked.size(), 1u);
    EXPECT_EQ(host.asked[0], "Exiting|Voyage Plan has been changed\r\n\nSave changes?\n");

    host.answers = {MsgAnswer::Yes};
    File_Menu_Action(3);
    EXPECT_THAT(plan.log, ElementsAre("save /home/n/Azores.Voy", "read default", "undo emptied"));
}

TEST_F(ShellTest, SetAsDefaultNeedsASavedPlan) {
    mnuWindow_Click(5);
    File_Menu_Action(4);  // no file name, and Save As is cancelled
    ASSERT_EQ(host.asked.size(), 1u);
    EXPECT_EQ(host.asked[0],
              "Save Cancelled|A plan must be saved before it can be set as the default\r\n");
    EXPECT_EQ(plan.defaultName, "");

    plan.saveAsGives = "/home/n/New.Voy";
    File_Menu_Action(4);
    EXPECT_EQ(plan.defaultName, "/home/n/New.Voy");
    // Every screen is forced after it.
    EXPECT_FALSE(Shell.Up_To_Date("Splash"));
}

TEST_F(ShellTest, VoyageNewOpenRemoveAndSaveActByCaption) {
    const auto& f = Shell.Menus.mnuFile;
    mnuWindow_Click(5);
    Settings.PositionMethod = 2;
    File_Menu_Action(0);  // "&New"
    EXPECT_THAT(plan.log, ElementsAre("new", "undo emptied"));
    EXPECT_EQ(Settings.PositionMethod, 0);

    plan.log.clear();
    Settings.PositionMethod = 1;
    File_Menu_Action(1);  // "&Open"
    EXPECT_THAT(plan.log, ElementsAre("open", "undo emptied"));
    EXPECT_EQ(Settings.PositionMethod, 0);

    // The default plan while dead reckoning by it: removing it stops that.
    plan.log.clear();
    plan.name = plan.defaultName = "/home/n/Biscay.Voy";
    Settings.PositionMethod = 2;
    Menus_Set_For_Screen();
    ASSERT_EQ(Captions({3, 4}), "&Remove as Default|Do not D.R.");
    File_Menu_Action(3);
    EXPECT_EQ(plan.defaultName, "");
    EXPECT_EQ(Settings.PositionMethod, 0);
    // The menus are rewritten: the plan is no longer the default one.
    EXPECT_EQ(f[3].Caption, "Restore Default Plan");

    // "&Save" to the plan's own voyage file, else Save As; "Save &As" always asks.
    File_Menu_Action(6);
    File_Menu_Action(7);
    plan.name = "/home/n/notes.txt";
    File_Menu_Action(6);
    EXPECT_THAT(plan.log, ElementsAre("save /home/n/Biscay.Voy", "save as", "save as"));
}

TEST_F(ShellTest, HelpMenu) {
    mnuHelp_Click(4);
    ASSERT_EQ(host.asked.size(), 1u);
    EXPECT_EQ(host.asked[0].rfind("Kelmoran Version|This is version  ", 0), 0u);
    host.helpExists = false;
    mnuHelp_Click(0);
    EXPECT_EQ(host.asked[1],
              "File Deleted|\r\nThe Help File, Kelmoran Help.html has been deleted.\r\n");
    EXPECT_FALSE(Shell.Menus.mnuHelp[0].Visible);
    File_Menu_Action(11);
    EXPECT_EQ(host.unloads, 1);
}

}  // namespace
}  // namespace kelmoran
