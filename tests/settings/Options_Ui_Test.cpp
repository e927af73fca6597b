// The Options dialogue, the help pop-ups and the first-visit messages, headless, with real
// clicks and keys on the painted windows; pictures of every tab under <build>/options.
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>
#include <QListWidget>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include "ephemeris/Units.h"
#include "settings/Options.h"
#include "settings/OptionsWindow.h"
#include "shell/HelpPopup.h"
#include "shell/HelpWindow.h"
#include "shell/M_Edit.h"
#include "shell/M_Help.h"
#include "shell/SplashScreen.h"
#include "shell/Ui_Screens.h"

namespace kelmoran {
namespace {

using namespace ui_test;

// The suite keeps its settings file in a home folder of its own: what its tests set (a
// zone, units, help levels) must not reach the suites that run beside or after it.
class PrivateHome : public ::testing::Environment {
  public:
    void SetUp() override {
        dir_ = std::make_unique<QTemporaryDir>();
        old_ = qgetenv("HOME");
        qputenv("HOME", dir_->path().toUtf8());
    }
    void TearDown() override { qputenv("HOME", old_); }

  private:
    std::unique_ptr<QTemporaryDir> dir_;
    QByteArray old_;
};
[[maybe_unused]] ::testing::Environment* const kPrivateHome =
    ::testing::AddGlobalTestEnvironment(new PrivateHome);

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
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
        EXPECT_EQ(w.Tab_Names(), tabs) << key;
        for (const std::string& tab : tabs) {
            Open_Tab(w, tab);
            ASSERT_NE(w.Tab(), nullptr);
            EXPECT_EQ(w.Tab()->Name(), tab);
            if (tab != "Columns" || Shell.ScreenName == key) {
                EXPECT_FALSE(w.Hots().empty()) << key << " " << tab;
            }
            const std::string name = key + "_" + tab;
            Save_Png(w.Canvas()->grab().toImage(), "options", name.c_str());
        }
        w.Cancel_Click();
    }
}

TEST_F(OptionsUi, AColumnCarriedByTheRightButtonTakesItsNewPlace) {
    auto* altaz = Open_Screen(main, 0);
    ASSERT_NE(altaz, nullptr);
    OptionsWindow w(&main, "AltAz", "Columns");
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    const std::vector<ColumnLine> before = Columns_List(altaz->Grid());
    const QPoint from = Centre(Hot(w, "Columns", 0)), to = Centre(Hot(w, "Columns", 2));
    QTest::mousePress(w.Canvas(), Qt::RightButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, w.Canvas()->mapToGlobal(to), Qt::NoButton,
                     Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(w.Canvas(), &move);
    Save_Png(w.Canvas()->grab().toImage(), "options", "AltAz_Columns_carry");
    QTest::mouseRelease(w.Canvas(), Qt::RightButton, {}, to);
    const std::vector<ColumnLine> after = Columns_List(altaz->Grid());
    ASSERT_EQ(after.size(), before.size());
    EXPECT_EQ(after[2].Column, before[0].Column);
    EXPECT_EQ(after[0].Column, before[1].Column);
    EXPECT_EQ(altaz->Grid().MyColmPtr[2], before[0].Column);  // the grid shows the new order
    w.Cancel_Click();
    EXPECT_EQ(Columns_List(altaz->Grid())[0].Column, before[0].Column);
}

TEST_F(OptionsUi, TheStripsTimeZoneItemOpensTheTimeTabWithUpdatesHeld) {
    auto* splash = dynamic_cast<SplashScreen*>(main.Current_Ui_Screen());
    ASSERT_NE(splash, nullptr);
    splash->MyDates().Menu_Chooser = [](const std::vector<std::string>& c) { return c.back(); };
    std::string tab;
    int16_t freeze = 0;
    QTimer::singleShot(0, [&] {
        if (auto* o = qobject_cast<OptionsWindow*>(QApplication::activeModalWidget())) {
            tab = o->Tab()->Name();
            freeze = Shell.UpdateFreeze;
            o->OK_Click();
        }
    });
    QTest::mouseClick(main.Client(), Qt::RightButton, {},
                      Centre(splash->MyDates().MyLMTlabel));
    EXPECT_EQ(tab, "Time");
    EXPECT_NE(freeze, 0);
    EXPECT_EQ(Shell.UpdateFreeze, 0);
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
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
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

TEST_F(OptionsUi, VoyageSpeedsAndZonesGoToThePlanAndCancelTakesThemBack) {
    Voyage.New_Plan(Shell.CurrentJD, 8.0f);
    const Plan_Header before = Voyage.Header;
    OptionsWindow w(&main, "NavPlan", "Voy Plan");
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    const int beeps = w.Beeps;
    ASSERT_EQ(w.Tab()->Name(), "Voy Plan");
    Click(w, Hot(w, "Default Speed"));
    EXPECT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Field, "Speed");
    Type(w, "0");
    EXPECT_EQ(w.Beeps, beeps + 1);  // below 0.01 knots
    Click(w, Hot(w, "Default Speed"));
    Type(w, "7.5");
    EXPECT_FLOAT_EQ(Voyage.Header.Default_Speed, 7.5f);
    Click(w, Hot(w, "Speed: Fixed Speeds", 1));
    Type(w, "12");
    EXPECT_FLOAT_EQ(Voyage.Header.Fixed_Speed_2, 12.0f);
    Open_Tab(w, "Times");
    Click(w, Hot(w, "TZ", 0));  // ETD hours
    Type(w, "03");
    EXPECT_EQ(Voyage.Header.ETD_Minutes, 180);
    Click(w, Hot(w, "Main ETD", 0));  // its sign
    EXPECT_EQ(Voyage.Header.ETD_Minutes, -180);
    w.Cancel_Click();
    EXPECT_EQ(Voyage.Header.Default_Speed, before.Default_Speed);
    EXPECT_EQ(Voyage.Header.Fixed_Speed_2, before.Fixed_Speed_2);
    EXPECT_EQ(Voyage.Header.ETD_Minutes, before.ETD_Minutes);
}

TEST_F(OptionsUi, FilterAltitudeItemReselectsAsTwoPointFive) {
    {
        OptionsWindow w(&main, "Sights", "Filter");
        w.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
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
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
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
    // A fresh home: no User.Dat yet.
    QTemporaryDir home;
    const QByteArray oldHome = qgetenv("HOME");
    qputenv("HOME", home.path().toUtf8());
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
        o.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&o));
        Click(o, Hot(o, "Misc", 0));  // "Reinstate Initial Non-Recurring Messages"
        o.OK_Click();
        Open_Screen(w, 0);
        EXPECT_EQ(w.Intros_Shown, 1);
    }
    qputenv("HOME", oldHome);
}

TEST(HelpBook, ShowOpensTheBookAndAMissingBookHidesShow) {
    Help_Book_Folder = KELMORAN_SOURCE_DIR "/help";
    fMain w;
    w.Help_Action(0)->trigger();
    HelpWindow* book = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets())
        if (auto* h = qobject_cast<HelpWindow*>(top); h && h->isVisible()) book = h;
    ASSERT_NE(book, nullptr);
    EXPECT_EQ(book->Browser()->documentTitle(), "Kelmoran Help");
    EXPECT_GE(book->Contents()->count(), 14);  // one page a screen and dialogue, and more
    Save_Png(book->grab().toImage(), "options", "help_book");
    // A word of another page: the contents keep the pages that have it.
    EXPECT_TRUE(book->Search("Hipparcos"));
    int shown = 0;
    for (int i = 0; i < book->Contents()->count(); ++i) shown += !book->Contents()->item(i)->isHidden();
    EXPECT_GE(shown, 1);
    EXPECT_LT(shown, book->Contents()->count());
    book->close();

    Help_Book_Folder = "/nonexistent/help";
    std::string seen;
    QTimer::singleShot(0, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            seen = box->windowTitle().toStdString() + "|" + box->text().toStdString();
            box->accept();
        }
    });
    w.Help_Action(0)->trigger();
    EXPECT_EQ(seen, "File Deleted|\r\nThe Help File, Kelmoran Help.html has been deleted.\r\n");
    EXPECT_FALSE(w.Help_Action(0)->isVisible());
    Help_Book_Folder.clear();
}

}  // namespace
}  // namespace kelmoran
