// The main window headless: its menu bar, the Main screen's picture, the version box, the
// questions at exit and a file named on the command line.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <deque>

#include "settings/SettingsRecord.h"
#include "shell/SplashScreen.h"
#include "shell/Ui_Screens.h"
#include "voyage/Voyage_File.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {
namespace {

TEST(fMain, MenuBarHasEveryEntryWithItsCaption) {
    fMain w;
    QStringList titles;
    for (QAction* a : w.menuBar()->actions()) titles << a->text();
    const QStringList expected = {"    &File    ",       "    &Options    ",   "    &Screen    ",
                                  "    Reset &Time    ", "    &Find Star    ", "    &Undo",
                                  "    &Redo",           "    &Help    ",      "Print Book"};
    EXPECT_EQ(titles, expected);

    EXPECT_EQ(w.File_Action(11)->text(), "E&xit");
    EXPECT_TRUE(w.File_Action(2)->isSeparator());
    // Main is showing: its own entry is hidden, Reset Time enabled, Undo disabled.
    EXPECT_FALSE(w.Window_Action(kMainScreenIndex)->isVisible());
    EXPECT_TRUE(w.Window_Action(0)->isVisible());
    EXPECT_TRUE(w.Reset_Time_Action()->isEnabled());
    EXPECT_FALSE(w.Undo_Action(0)->isEnabled());
    EXPECT_EQ(w.Help_Action(4)->text(), "&Version Info");
    // Every screen of the menu can be opened.
    EXPECT_EQ(w.Window_Action(0)->text(), "&AltAz");
    EXPECT_TRUE(w.Window_Action(0)->isEnabled());
    EXPECT_TRUE(w.Window_Action(1)->isEnabled());  // Clocks
    EXPECT_EQ(w.Window_Action(9)->text(), "Sights");
    EXPECT_TRUE(w.Window_Action(9)->isEnabled());
}

TEST(fMain, MainScreenPaintsThePageOfTheDay) {
    fMain w;
    w.resize(800, 500);
    w.show();
    QApplication::processEvents();
    auto* splash = dynamic_cast<SplashScreen*>(w.Current_Ui_Screen());
    ASSERT_NE(splash, nullptr);
    EXPECT_EQ(splash->MyJD(), Shell.CurrentJD);
    EXPECT_FALSE(splash->Page().Day.empty());
    EXPECT_FALSE(splash->Page().Moon.empty());

    EXPECT_GT(ui_test::Dark_Pixels(splash->Picture(), splash->Picture().rect()), 800);

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

// Answers the message boxes as a user would: OK by a mouse click on its button, Cancel by
// the Escape key. Each box's title and text are kept.
class BoxAnswerer {
  public:
    explicit BoxAnswerer(std::deque<QMessageBox::StandardButton> answers)
        : answers_(std::move(answers)) {
        timer_.setInterval(10);
        QObject::connect(&timer_, &QTimer::timeout, [this] { Answer(); });
        timer_.start();
    }
    QStringList Asked;

  private:
    void Answer() {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QMessageBox*>(top);
            if (!box || !box->isVisible()) continue;
            Asked << box->windowTitle() + "|" + box->text();
            const QMessageBox::StandardButton a =
                answers_.empty() ? QMessageBox::Ok : answers_.front();
            if (!answers_.empty()) answers_.pop_front();
            if (a == QMessageBox::Cancel)
                QTest::keyClick(box, Qt::Key_Escape);
            else
                QTest::mouseClick(box->button(a), Qt::LeftButton);
            return;
        }
    }
    std::deque<QMessageBox::StandardButton> answers_;
    QTimer timer_;
};

TEST(fMain, ExitAsksAboutSightsThenThePlanAndCancelKeepsTheWindow) {
    const QString sights =
        "Exiting|Changes to Sights have not been saved\r\n\nAbandon changes?\n\n";
    const QString plan = "Exiting|Voyage Plan has been changed\r\n\nAbandon changes?\n";
    fMain w;
    w.show();
    QApplication::processEvents();
    Shell.SightsChanged = kTrue;
    Shell.PlanChanged = kTrue;
    {  // Cancel at the first question is driven through the shell with fake screens
        BoxAnswerer user({QMessageBox::Ok, QMessageBox::Cancel});
        EXPECT_FALSE(w.close());
        EXPECT_EQ(user.Asked, (QStringList{sights, plan}));
        EXPECT_TRUE(w.isVisible());
        EXPECT_NE(Shell.CurrentScreen, nullptr);
    }
    {
        BoxAnswerer user({QMessageBox::Ok, QMessageBox::Ok});
        EXPECT_TRUE(w.close());
        EXPECT_EQ(user.Asked, (QStringList{sights, plan}));
        EXPECT_FALSE(w.isVisible());
        EXPECT_EQ(Shell.CurrentScreen, nullptr);  // the screens are let go only now
    }
    Shell.SightsChanged = kFalse;
    Shell.PlanChanged = kFalse;
}

// A file named on the command line: a plan opens on the Voyage screen; a damaged plan or a
// file of another kind gets its message and the program goes on as it started.
TEST(fMain, CommandLinePlanOpensOnTheVoyageScreen) {
    const QString folder = QDir(KELMORAN_BINARY_DIR).filePath("command_line");
    QDir(folder).mkpath(".");
    const std::string good = QDir(folder).filePath("Channel.Voy").toStdString();
    VoyagePlan plan;
    plan.New_Plan(9828.5, 6.0f);
    plan.Header.Title = "Channel crossing";
    std::string message;
    ASSERT_TRUE(Save_Plan(good, plan, Settings, message)) << message;
    QFile damaged(QDir(folder).filePath("Damaged.Voy"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("not a voyage plan");
    damaged.close();

    fMain w;
    w.show();
    {
        BoxAnswerer user({});
        w.Open_Command_Line_File(damaged.fileName());
        w.Open_Command_Line_File(QDir(folder).filePath("notes.txt"));
        ASSERT_EQ(user.Asked.size(), 2);
        EXPECT_TRUE(user.Asked[1].contains("is neither")) << user.Asked[1].toStdString();
        EXPECT_EQ(Shell.ScreenName, screen_key::Splash);
        EXPECT_NE(Voyage.Header.Title, "Channel crossing");
    }
    w.Open_Command_Line_File(QString::fromStdString(good));
    EXPECT_EQ(Shell.ScreenName, screen_key::NavPlan);
    EXPECT_EQ(Voyage.Header.Title, "Channel crossing");
    QApplication::processEvents();
    ui_test::Save_Png(w.Current_Ui_Screen()->Picture(), "command_line", "voyage");
}

}  // namespace
}  // namespace kelmoran
