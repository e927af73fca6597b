// Renders the table screens headless to PNG files under the build folder (shots/), for
// looking at: Main, AltAz with the catalogue columns inserted, Solar Bodies with the Moon by
// the hour, and Moon Phases for a year with eclipses. Each picture is checked for the
// parts a reader would look for first.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTest>

#include "ephemeris/Time_Calcs.h"
#include "settings/File_IO.h"
#include "settings/SettingsRecord.h"
#include "shell/SplashScreen.h"
#include "shell/cGeneralForm.h"
#include "shell/fMain.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {
namespace {

constexpr double kRadian = 57.2957795130823;

double Moment(int year, int month, int day, int hour) {
    MySystemTime d;
    d.wYear = static_cast<int16_t>(year);
    d.wMonth = static_cast<int16_t>(month);
    d.wDay = static_cast<int16_t>(day);
    d.wHour = static_cast<int16_t>(hour);
    return Calc_JD(d, false);
}

QString Shot_Path(const char* name) {
    QDir dir(KELMORAN_BINARY_DIR);
    dir.mkpath("shots");
    return dir.filePath(QString("shots/") + name);
}

// Pixels of the picture that are not white or the grey of the frames: text and lines.
int Ink(const QImage& pic) {
    int n = 0;
    for (int y = 0; y < pic.height(); y += 2)
        for (int x = 0; x < pic.width(); x += 2)
            if (qGray(pic.pixel(x, y)) < 90) ++n;
    return n;
}

class Shots : public ::testing::Test {
  protected:
    void SetUp() override {
        w = std::make_unique<fMain>();
        Settings.ObserverLat = static_cast<float>(50.0 / kRadian);
        Settings.ObserverLong = static_cast<float>(-5.0 / kRadian);
        Settings.PositionMethod = kFixPosition;
        Settings.AutoTimeZone = 0;
        TZ_Bias = 0;
        Compute_Derived_Settings();
        Filters = BodyFilters{};
        w->resize(1100, 700);
        w->show();
        QApplication::processEvents();
    }
    void TearDown() override { Filters = BodyFilters{}; }
    void Show_Moment(double jd) {
        Shell.CurrentJD = jd;
        Update_All_Screens("");
        QApplication::processEvents();
    }
    cGeneralForm* Open(int index) {
        w->Window_Action(index)->trigger();
        QApplication::processEvents();
        return dynamic_cast<cGeneralForm*>(w->Current_Ui_Screen());
    }
    std::unique_ptr<fMain> w;
};

TEST_F(Shots, MainAltAzSolarBodiesAndMoonPhases) {
    Show_Moment(Moment(2024, 3, 15, 21));
    auto* splash = dynamic_cast<SplashScreen*>(w->Current_Ui_Screen());
    ASSERT_NE(splash, nullptr);
    EXPECT_GT(Ink(splash->Picture()), 500);
    EXPECT_TRUE(splash->Picture().save(Shot_Path("main.png")));

    cGeneralForm* altaz = Open(0);
    ASSERT_NE(altaz, nullptr);
    std::string pick;
    altaz->Menu_Chooser = [&](const std::vector<std::string>&) { return pick; };
    for (const char* title : {"Henry Draper", "Hipparchos", "Tycho", "Constellation"}) {
        pick = std::string("Insert Column/") + title;
        QTest::mouseClick(w->Client(), Qt::RightButton, {},
                          QPoint(altaz->Grid().Heading_On_Screen(altaz->Grid().ColmsInUse).Left + 5,
                                 altaz->Grid().GridTop + 5));
    }
    EXPECT_EQ(altaz->Grid().ColmsInUse, 7);
    EXPECT_FALSE(altaz->Grid().MyDataLabels[14].back().empty());
    QTest::keyClick(w->Client(), Qt::Key_Down);
    QTest::keyClick(w->Client(), Qt::Key_Down);
    EXPECT_GT(Ink(altaz->Picture()), 1000);
    EXPECT_TRUE(altaz->Picture().save(Shot_Path("altaz.png")));

    Filters.ShowBody = 3;
    Filters.IntervalUnit = "Hour";
    cGeneralForm* planets = Open(4);
    ASSERT_NE(planets, nullptr);
    EXPECT_GT(planets->Grid().Bottomlabels, 10);
    EXPECT_TRUE(planets->Picture().save(Shot_Path("solar_bodies.png")));

    cGeneralForm* lunations = Open(3);
    ASSERT_NE(lunations, nullptr);
    Show_Moment(Moment(2024, 6, 1, 12));
    int eclipses = 0;
    for (const std::string& s : lunations->Grid().MyDataLabels[9]) eclipses += !s.empty();
    EXPECT_GE(eclipses, 2);
    EXPECT_TRUE(lunations->Picture().save(Shot_Path("moon_phases.png")));
}

}  // namespace
}  // namespace kelmoran

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
