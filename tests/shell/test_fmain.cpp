// The main window headless: its menu bar, the Main screen's picture and the version box.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTimer>

#include "shell/SplashScreen.h"
#include "shell/fMain.h"

namespace kelmoran {
namespace {

QStringList Top_Level_Titles(fMain& w) {
    QStringList titles;
    for (QAction* a : w.menuBar()->actions()) titles << a->text();
    return titles;
}

TEST(fMain, MenuBarHasEveryEntryWithItsCaption) {
    fMain w;
    const QStringList titles = Top_Level_Titles(w);
    const QStringList expected = {"    &File    ", "    &Options    ", "    &Screen    ",
                                  "    Reset &Time    ", "    &Find Star    ", "    &Undo",
                                  "    &Redo", "    &Help    ", "Print Book"};
    EXPECT_EQ(titles, expected);

    EXPECT_EQ(w.File_Action(11)->text(), "E&xit");
    EXPECT_TRUE(w.File_Action(2)->isSeparator());
    // Main is showing: its own entry is hidden, Reset Time enabled, Undo disabled.
    EXPECT_FALSE(w.Window_Action(kMainScreenIndex)->isVisible());
    EXPECT_TRUE(w.Window_Action(0)->isVisible());
    EXPECT_TRUE(w.Reset_Time_Action()->isEnabled());
    EXPECT_FALSE(w.Undo_Action(0)->isEnabled());
    EXPECT_EQ(w.Help_Action(4)->text(), "&Version Info");
    // Screens that are not part of the program yet are present but disabled.
    EXPECT_EQ(w.Window_Action(0)->text(), "&AltAz");
    EXPECT_TRUE(w.Window_Action(0)->isEnabled());
    EXPECT_FALSE(w.Window_Action(1)->isEnabled());  // Clocks
    EXPECT_EQ(w.Window_Action(9)->text(), "Sights");
    EXPECT_FALSE(w.Window_Action(9)->isEnabled());
}

TEST(fMain, MainScreenPaintsThePageOfTheDay) {
    fMain w;
    w.resize(800, 500);
    w.show();
    QApplication::processEvents();
    auto* splash = dynamic_cast<SplashScreen*>(w.Current_Ui_Screen());
    ASSERT_NE(splash, nullptr);
    EXPECT_EQ(splash->MyJD(), Shell.CurrentJD);

    QStringList labels;
    for (const MainLine& l : splash->Page().Day) labels << QString::fromStdString(l.Label);
    for (const char* want : {"Sunrise", "Sunset", "Mer.Pass.", "Aries @ 12:00",
                             "Morning Twighlights Start", "Evening Twilights End"})
        EXPECT_TRUE(labels.contains(QString::fromUtf8(want))) << want;
    EXPECT_FALSE(splash->Page().Moon.empty());

    // Something dark has been drawn on the white picture.
    const QImage& pic = splash->Picture();
    int dark = 0;
    for (int y = 0; y < pic.height(); y += 2)
        for (int x = 0; x < pic.width(); x += 2)
            if (qGray(pic.pixel(x, y)) < 100) ++dark;
    EXPECT_GT(dark, 200);

    // Reset Time brings the screen to the computer's clock again.
    Shell.CurrentJD = 0.0;
    Update_All_Screens("");
    EXPECT_EQ(splash->MyJD(), 0.0);
    w.Reset_Time_Action()->trigger();
    EXPECT_GT(splash->MyJD(), 9000.0);
}

TEST(fMain, VersionInfoShowsTheVersionBox) {
    fMain w;
    QString title, text;
    QTimer::singleShot(0, [&] {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* box = qobject_cast<QMessageBox*>(top); box && box->isVisible()) {
                title = box->windowTitle();
                text = box->text();
                box->accept();
            }
    });
    w.Help_Action(4)->trigger();
    EXPECT_EQ(title, "Kelmoran Version");
    EXPECT_TRUE(text.startsWith("This is version  ")) << text.toStdString();
}

}  // namespace
}  // namespace kelmoran

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    // The settings file goes to a test folder, never to the user's own.
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
