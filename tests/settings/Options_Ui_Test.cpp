// The Options dialogue, the help pop-ups and the first-visit messages, headless, with real
// clicks and keys on the painted windows; pictures of every tab under <build>/options.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QTest>

#include "ephemeris/Units.h"
#include "settings/Options.h"
#include "settings/OptionsWindow.h"
#include "shell/HelpPopup.h"
#include "shell/M_Edit.h"
#include "shell/M_Help.h"
#include "shell/SplashScreen.h"
#include "shell/Ui_Screens.h"

namespace kelmoran {
namespace {

using namespace ui_test;

// The n-th hot rectangle of the page with help key `key`.
Rect Hot(const OptionsWindow& w, const std::string& key, int n = 0) {
    for (const OptionsHot& h : w.Hots())
        if (h.HelpKey == key && n-- == 0) return h.Area;
    ADD_FAILURE() << "no hot spot " << key;
    return {};
}

void Click(OptionsWindow& w, const Rect& r, Qt::MouseButton b = Qt::LeftButton) {
    QTest::mouseClick(w.Canvas(), b, {}, Centre(r));
    QApplication::processEvents();
}

void Type(OptionsWindow& w, const char* keys) {
    QTest::keyClicks(w.Canvas(), keys);
    QTest::keyClick(w.Canvas(), Qt::Key_Return);
    QApplication::processEvents();
}

// A mouse move over the canvas, as the window system delivers it.
void Move(OptionsWindow& w, QPoint at) {
    QMouseEvent e(QEvent::MouseMove, at, w.Canvas()->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                  Qt::NoModifier);
    QApplication::sendEvent(w.Canvas(), &e);
}

void Open_Tab(OptionsWindow& w, const std::string& name) {
    for (size_t i = 0; i < w.Tab_Names().size(); ++i)
        if (w.Tab_Names()[i] == name) return Click(w, w.Tab_Rect(static_cast<int32_t>(i)));
    ADD_FAILURE() << "no tab " << name;
}

class OptionsUi : public ::testing::Test {
  protected:
    void SetUp() override {
        TZ_Bias = 60;
        Settings.AutoTimeZone = 0;
        Settings.HelpLevel = 0;
        Settings.PositionMethod = 0;
        main.resize(1000, 640);
        main.show();
        QApplication::processEvents();
    }
    void TearDown() override { Settings.HelpLevel = 0; }
    fMain main;
};

TEST_F(OptionsUi, EachScreenShowsItsTabsAndEveryTabPaints) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
        {"AltAz", {"Bodies", "Columns", "Observer", "Position", "Time", "Misc"}},
        {"Planets", {"Body", "Columns", "Observer", "Position", "Time", "Misc"}},
        {"Clox", {"Columns", "Observer", "Position", "Time", "Misc"}},
        {"Splash", {"Observer", "Position", "Time", "Misc"}},
        {"NavPlan", {"Columns", "Position", "Voy Plan", "Times", "Misc"}},
        {"Lunations", {"Columns", "Time", "Position", "Misc"}},
        {"Sights", {"Filter", "Observer", "Time", "Position", "Misc"}}};
    for (const auto& [key, tabs] : cases) {
        // The table screens that exist are opened first: their columns are the list.
        const int index = Window_Index_Of(key);
        if (index >= 0 && index < kGridScreenCount && main.Screen_Available(index))
            Open_Screen(main, index);
        OptionsWindow w(&main, key, "");
        w.show();
        EXPECT_EQ(w.Tab_Names(), tabs) << key;
        for (const std::string& tab : tabs) {
            Open_Tab(w, tab);
            ASSERT_NE(w.Tab(), nullptr);
            EXPECT_EQ(w.Tab()->Name(), tab);
            if (tab != "Columns" || Shell.ScreenName == key)
                EXPECT_FALSE(w.Hots().empty()) << key << " " << tab;
            const std::string name = key + "_" + tab;
            Save_Png(w.Canvas()->grab().toImage(), "options", name.c_str());
        }
        w.Cancel_Click();
    }
}

TEST_F(OptionsUi, ObserverUnitsRefusalsAndCancelOfThreeTabs) {
    Settings.UseMetres = kTrue;
    Settings.HtOfEye = 3.0f;
    Settings.Temp = 10.0f;
    Settings.UseCelsius = kTrue;
    Filters.ShowBody = 1;
    const int32_t bias = TZ_Bias;
    OptionsWindow w(&main, "Planets", "Observer");
    w.show();
    QApplication::processEvents();

    // Metres to feet changes the text only.
    Click(w, Hot(w, "Dip", 2));
    EXPECT_EQ(Settings.HtOfEye, 3.0f);
    EXPECT_EQ(Observer_Text("HtOfEye"), "9.8");

    // 50 °C is refused with a beep; 25 is taken and the refraction follows.
    const int beeps = w.Beeps;
    Click(w, Hot(w, "NNN.N"));
    Type(w, "50");
    EXPECT_EQ(w.Beeps, beeps + 1);
    EXPECT_EQ(Settings.Temp, 10.0f);
    Click(w, Hot(w, "NNN.N"));
    Type(w, "25");
    EXPECT_EQ(Settings.Temp, 25.0f);
    EXPECT_NEAR(RefractionFactor, 283.0 / 1010.0 * Settings.Pressure / 298.0, 1e-5);

    // Body tab and Time tab.
    Open_Tab(w, "Body");
    Click(w, Hot(w, "Body", 6));  // Mars
    EXPECT_EQ(Filters.ShowBody, 6);
    Open_Tab(w, "Time");
    Click(w, Hot(w, "TZ", 1));  // the hours
    Type(w, "05");
    EXPECT_EQ(TZ_Bias, 300);

    w.Cancel_Click();
    EXPECT_EQ(Settings.UseMetres, kTrue);
    EXPECT_EQ(Settings.Temp, 10.0f);
    EXPECT_EQ(Filters.ShowBody, 1);
    EXPECT_EQ(TZ_Bias, bias);
    EXPECT_NEAR(RefractionFactor, Settings.Pressure * 0.28019801980198 / 283.0, 1e-6);
    EXPECT_EQ(Options_Flags.ObserverChanged, 0);
}

TEST_F(OptionsUi, FilterAltitudeItemReselectsAsTwoPointFive) {
    {
        OptionsWindow w(&main, "Sights", "Filter");
        w.show();
        myComboView* alt = w.Tab()->Combos[1];
        Click(w, alt->Box);
        ASSERT_TRUE(alt->ListVisible);
        QTest::mouseClick(alt->List_Window(), Qt::LeftButton, {}, Centre(alt->HighlightRect(2)));
        QApplication::processEvents();
        EXPECT_NEAR(SightsFilter.AltLimit * kArcminPerRadian, 2.0, 1e-4);
        w.OK_Click();
    }
    OptionsWindow again(&main, "Sights", "Filter");
    EXPECT_EQ(again.Tab()->Combos[1]->Text, "    2'.5");
    again.Cancel_Click();
}

TEST_F(OptionsUi, ChoosingDRSetsAnUnsetFixTimeAndObserverChangeRecomputesOnlyMain) {
    // AltAz has been shown and is up to date; Main is showing.
    Open_Screen(main, 0);
    auto* altaz = dynamic_cast<cGeneralForm*>(main.Current_Ui_Screen());
    main.Window_Action(kMainScreenIndex)->trigger();
    QApplication::processEvents();
    const int altazCalcs = altaz->Calculations;
    int mainPages = 0;
    RowSources saved = Row_Sources();
    Row_Sources().Main = [&](double jd, bool s) {
        ++mainPages;
        return saved.Main(jd, s);
    };

    Settings.FixTime = 0;
    OptionsWindow w(&main, "Splash", "Position");
    w.show();
    Click(w, Hot(w, "DR By Co/ Spd"));
    EXPECT_EQ(Settings.PositionMethod, 1);
    EXPECT_EQ(Settings.FixTime, Shell.CurrentJD);
    Save_Png(w.Canvas()->grab().toImage(), "options", "Splash_Position_DR");
    Click(w, Hot(w, "Fix Posn"));
    Open_Tab(w, "Observer");
    Click(w, Hot(w, "Dip"));
    Type(w, "12");
    w.OK_Click();
    Row_Sources() = saved;
    EXPECT_EQ(mainPages, 1);
    EXPECT_EQ(altaz->Calculations, altazCalcs);
    EXPECT_EQ(Shell.Up_To_Date(screen_key::AltAz), kFalse);
    EXPECT_EQ(Shell.Up_To_Date(screen_key::Splash), kTrue);
}

TEST_F(OptionsUi, AHelpLevelChangeActsInTheOpenDialogue) {
    OptionsWindow w(&main, "AltAz", "Misc");
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    const Rect level0 = Hot(w, "Help Level 0");
    Move(w, Centre(level0));
    EXPECT_TRUE(w.Popup().Timer_Running());
    w.Popup().Tick();
    EXPECT_TRUE(w.Popup().Shown());
    Save_Png(w.Canvas()->grab().toImage(), "options", "popup_Misc");
    Click(w, Hot(w, "Help Level 3"));
    EXPECT_FALSE(w.Popup().Shown());  // the click removed it
    EXPECT_EQ(Settings.HelpLevel, 3);
    Move(w, Centre(level0));
    w.Popup().Tick();
    EXPECT_FALSE(w.Popup().Shown());  // a Normal hint: not at Minimum
    w.Cancel_Click();
    EXPECT_EQ(Settings.HelpLevel, 0);
}

TEST_F(OptionsUi, MainRowPopUpShowsOnceAndGoesOnAClick) {
    auto* splash = dynamic_cast<SplashScreen*>(main.Current_Ui_Screen());
    ASSERT_NE(splash, nullptr);
    size_t sunrise = 0;
    while (sunrise < splash->Page().Day.size() && splash->Page().Day[sunrise].Label != "Sunrise")
        ++sunrise;
    ASSERT_LT(sunrise, splash->Page().Day.size());
    // The line's rectangle, found by scanning down the day block.
    QPoint at;
    for (int y = 0; y < 600 && at.isNull(); ++y) {
        bool moon = false;
        size_t i = 0;
        if (splash->Line_At(60, y, moon, i) && !moon && i == sunrise) at = QPoint(60, y + 5);
    }
    ASSERT_FALSE(at.isNull());
    HelpPopup& pop = main.Popup();
    const int shows = pop.Shows;
    QTest::mouseMove(main.Client(), at);
    EXPECT_TRUE(pop.Timer_Running());
    EXPECT_FALSE(pop.Shown());
    QTest::qWait(400);  // one tick of the window's timer
    ASSERT_TRUE(pop.Shown());
    EXPECT_EQ(pop.Lines(), (std::vector<std::string>{"Altitude of Upper Limb = 0\u00B0"}));
    Save_Png(main.grab().toImage(), "options", "popup_Main");
    QTest::mouseMove(main.Client(), at + QPoint(20, 0));
    QTest::qWait(300);
    EXPECT_EQ(pop.Shows, shows + 1);  // no second box
    QTest::mouseClick(main.Client(), Qt::LeftButton, {}, at + QPoint(20, 0));
    EXPECT_FALSE(pop.Shown());

    // Minimum: the term has no box; the date strip's input hint has.
    Settings.HelpLevel = 3;
    QTest::mouseMove(main.Client(), at + QPoint(40, 0));
    pop.Tick();
    EXPECT_FALSE(pop.Shown());
    QTest::mouseMove(main.Client(), Centre(splash->MyDates().MyDayLabel));
    pop.Tick();
    ASSERT_TRUE(pop.Shown());
    EXPECT_EQ(pop.Lines(), (std::vector<std::string>{"## or +/-", "<Spc> or <Tab> to move"}));
}

TEST(FirstUse, MainsMessageOnceThenNoneUntilMiscArmsThemAgain) {
    {
        fMain first;  // makes the folder and, at its end, User.Dat
    }
    QFile::remove(QString::fromStdString(User_Dat_Path()));
    {
        fMain w;  // no User.Dat: a first run
        EXPECT_EQ(w.Intros_Shown, 1);
        ASSERT_NE(w.Intro_Box(), nullptr);
        EXPECT_EQ(w.Intro_Box()->windowTitle().toStdString(), kIntroCaption);
        EXPECT_EQ(w.Intro_Box()->text().toStdString(), Get_FirstUse_Message("Splash"));
        Open_Screen(w, kMainScreenIndex == 0 ? 1 : 0);  // AltAz's own message
        EXPECT_EQ(w.Intros_Shown, 2);
        w.Window_Action(kMainScreenIndex)->trigger();
        EXPECT_EQ(w.Intros_Shown, 2);  // Main's was shown already
    }
    {
        fMain w;  // User.Dat exists now
        EXPECT_EQ(w.Intros_Shown, 0);
        OptionsWindow o(&w, "Splash", "Misc");
        Click(o, Hot(o, "Misc", 0));  // "Reinstate Initial Non-Recurring Messages"
        o.OK_Click();
        Open_Screen(w, 0);
        EXPECT_EQ(w.Intros_Shown, 1);
    }
}

}  // namespace
}  // namespace kelmoran
