// The eclipse window headless, driven by real clicks: opened from a marked cell of 2024's
// Moon Phases, stepped through the year's eclipses, the plan of a lunar eclipse, and the
// complete path of two total eclipses read back from the painted map. Pictures of each go
// to <build>/shots for looking at.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <cmath>

#include "eclipses/EclipseScreenWindow.h"
#include "eclipses/M_Eclipse_Solar.h"
#include "printing/cPrint_Gateway.h"
#include "shell/Screen_Cases.h"
#include "shell/Ui_Screens.h"

namespace kelmoran {
namespace {

using namespace ui_test;
using namespace testing_dates;

EclipseScreenWindow* Open_Eclipse_Window() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* e = dynamic_cast<EclipseScreenWindow*>(w); e && e->isVisible()) return e;
    return nullptr;
}

void Click(EclipseScreenWindow* w, const std::string& caption) {
    const QRect r = w->Control_Rect(caption);
    ASSERT_FALSE(r.isEmpty()) << caption;
    QTest::mouseClick(w, Qt::LeftButton, {}, r.center());
}

int Find_Row(const EclipseTable& t, bool solar, int month) {
    for (int i = 0; i < t.Count; ++i)
        if (Is_Solar(t.Rows[i]) == solar && JD_To_Date(t.Rows[i].PhaseJD).wMonth == month) return i;
    return -1;
}

TEST(EclipseWindow, OpensFromMoonPhasesAndStepsThroughTheYear) {
    Observe_From(32.78, -96.80);  // Dallas, in the path of April 2024
    auto main = std::make_unique<fMain>();
    main->resize(1000, 640);
    main->show();
    QApplication::processEvents();
    Observe_From(32.78, -96.80);
    cGeneralForm* lunations = Open_Screen(*main, 3);
    ASSERT_NE(lunations, nullptr);
    Shell.CurrentJD = Moment(2024, 6, 1, 12) - 1.0;
    Update_All_Screens("");
    Wheel(main->Client(), Centre(lunations->MyDates().Field_Rect("Day")), 120);
    QApplication::processEvents();
    ASSERT_EQ(Eclipses.Count, 4);  // 2024: March penumbral, April total, September, October annular

    // A click on the marked New Moon of April.
    const GridModel& g = lunations->Grid();
    ASSERT_EQ(g.MyDataLabels[1][3].rfind("* ", 0), 0u) << g.MyDataLabels[1][3];
    int position = -1;
    for (int p = 0; p <= g.ColmsInUse; ++p)
        if (g.MyColmPtr[p] == 1) position = p;
    ASSERT_GE(position, 0);
    QTest::mouseClick(main->Client(), Qt::LeftButton, {}, Centre(g.Cell_On_Screen(position, 3)));
    QApplication::processEvents();
    EclipseScreenWindow* w = Open_Eclipse_Window();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->Current(), Find_Row(Eclipses, true, 4));
    ASSERT_GE(w->Panel().size(), 6u);
    EXPECT_EQ(w->Panel()[0].Time, "8th of April 2024");
    EXPECT_EQ(w->Panel()[3].Time, "18:17");
    // Dallas sees it total from 18:40:43 UT.
    ASSERT_GE(w->Local_Panel().size(), 4u);
    EXPECT_EQ(w->Local_Panel()[1].Label, "Seen here");
    EXPECT_EQ(w->Local_Panel()[3].Label, "Total from:");
    EXPECT_EQ(w->Local_Panel()[3].Time, "18:41");
    EXPECT_EQ(w->Tooltip_At(w->Control_Rect("Path of Eclipse").center()),
              "Complete Eclipse coverage\n(Slow)");
    Save_Png(w->Picture(), "shots", "eclipse_2024_april_minute");
    {
        // "Print &Eclipse" of Moon Phases, with no printer: the eclipse under the cursor to
        // a PDF file, read back.
        const QString pdf = QDir(KELMORAN_BINARY_DIR).filePath("shots/eclipse_2024_april_print");
        const PrintHooks saved = Print_Hooks();
        Print_Hooks().Printers_Available = [] { return false; };
        Print_Hooks().Pdf_Path = [&](QWidget*, const std::string&) { return (pdf + ".pdf").toStdString(); };
        ASSERT_EQ(main->File_Action(9)->text(), "Print &Eclipse");
        main->File_Action(9)->trigger();
        Print_Hooks() = saved;
        QProcess text;
        text.start("pdftotext", {"-layout", pdf + ".pdf", "-"});
        text.waitForFinished(60000);
        const QString page = QString::fromUtf8(text.readAllStandardOutput());
        EXPECT_TRUE(page.contains(Q(Eclipse_Print_Title(Eclipses, w->Current(), TZ_Bias))));
        EXPECT_TRUE(page.contains(QRegularExpression("Maximim Eclipse\\s+18:17"))) << page.toStdString();
        EXPECT_TRUE(page.contains("End of Penumbral Phase"));
        QProcess::execute("pdftoppm", {"-r", "50", "-png", pdf + ".pdf", pdf});
    }
    // Its plan: the Earth's disc as the Sun sees it, and no path to be had there.
    Click(w, "Show Plan");
    EXPECT_TRUE(w->Showing_Plan());
    EXPECT_FALSE(w->Control_Enabled("Path of Eclipse"));
    Save_Png(w->Picture(), "shots", "eclipse_2024_april_plan");
    Click(w, "Show Map");

    // "Next Eclipse" to the end of the year, then round to its first.
    const int april = w->Current();
    Click(w, "Next Eclipse");
    Click(w, "Next Eclipse");
    EXPECT_EQ(w->Current(), Eclipses.Count - 1);
    Click(w, "Next Eclipse");
    EXPECT_EQ(w->Current(), 0);
    Click(w, "Previous Eclipse");
    EXPECT_EQ(w->Current(), Eclipses.Count - 1);
    // October's annular eclipse, one minute on from its greatest.
    const double start = w->Minute();
    Click(w, ">");
    EXPECT_NEAR(w->Minute() - start, 1.0 / 1440.0, 1e-9);
    Save_Png(w->Picture(), "shots", "eclipse_2024_october_annular_minute");

    // The penumbral eclipse of March: its plan.
    Click(w, "Next Eclipse");
    ASSERT_EQ(w->Current(), 0);
    EXPECT_FALSE(w->Control_Enabled("Path of Eclipse"));
    Save_Png(w->Picture(), "shots", "eclipse_2024_march_lunar_map");
    Click(w, "Show Plan");
    EXPECT_TRUE(w->Showing_Plan());
    // The plan shows something where the Moon at maximum stands.
    EXPECT_GT(Dark_Pixels(w->Picture(), w->Map_Rect()), 200);
    Save_Png(w->Picture(), "shots", "eclipse_2024_march_lunar_plan");
    Click(w, "Show Map");
    EXPECT_FALSE(w->Showing_Plan());

    // Enter on the marked cell opens April's again.
    w->close();
    QApplication::processEvents();
    QTest::keyClick(main->Client(), Qt::Key_Return);
    QApplication::processEvents();
    w = Open_Eclipse_Window();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->Current(), april);
    // A day on in the strip fills the table again: the window keeps its eclipse; a year on,
    // it shows the new year's first.
    Wheel(main->Client(), Centre(lunations->MyDates().Field_Rect("Day")), 120);
    QApplication::processEvents();
    EXPECT_EQ(w->Current(), april);
    EXPECT_EQ(w->Panel()[0].Time, "8th of April 2024");
    Wheel(main->Client(), Centre(lunations->MyDates().Field_Rect("Year")), 120);
    QApplication::processEvents();
    EXPECT_EQ(w->Current(), 0);
    EXPECT_EQ(w->Panel()[0].Time.substr(w->Panel()[0].Time.size() - 4), "2025");
    w->close();
    QApplication::processEvents();
    Wheel(main->Client(), Centre(lunations->MyDates().Field_Rect("Year")), -120);
    QApplication::processEvents();

    // The row pop-up of October (a quarter's cell) offers its eclipse.
    std::vector<std::string> offered;
    lunations->Menu_Chooser = [&](const std::vector<std::string>& items) {
        offered = items;
        return std::string("Show Eclipse");
    };
    QTest::mouseClick(main->Client(), Qt::RightButton, {},
                      Centre(g.Cell_On_Screen(position + 1, 9)));
    QApplication::processEvents();
    ASSERT_FALSE(offered.empty());
    EXPECT_EQ(offered.front(), "Show Eclipse");
    w = Open_Eclipse_Window();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->Current(), Find_Row(Eclipses, true, 10));
    w->close();
    main.reset();
}

TEST(EclipseWindow, PlanOfTheTotalLunarEclipseOf2025) {
    Observe_From(-33.87, 151.21);  // Sydney
    Fill_Lunation_Year(2025, 0, Eclipses);
    const int row = Find_Row(Eclipses, false, 3);
    ASSERT_GE(row, 0);
    EclipseScreenWindow w(Eclipses);
    w.show();
    w.Show_Row(row);
    ASSERT_EQ(w.Panel()[3].Label, "Maximim Eclipse");
    EXPECT_EQ(w.Panel()[3].Time, "06:59");
    Save_Png(w.Picture(), "shots", "eclipse_2025_march_lunar_map");
    Click(&w, "Show Plan");
    ASSERT_TRUE(w.Showing_Plan());
    // At maximum the Moon is inside the umbra: its centre is painted in the Moon's umbral colour.
    const LunarPlan plan = Lunar_Eclipse_Plan(Eclipses.Rows[row], 0);
    ASSERT_EQ(plan.Moons.size(), 3u);
    EXPECT_LT(std::hypot(plan.Moons[1].X, plan.Moons[1].Y) + plan.MoonRadius, plan.UmbraRadius);
    Save_Png(w.Picture(), "shots", "eclipse_2025_march_lunar_plan");
}

// The complete path painted on the map against the local circumstances: places on the
// centre line are central (total, or annular for an annular eclipse) and painted as the
// band; places across the shadow's motion by three of its radii are not.
void Check_Path(int year, int month, const char* shot, int onMap) {
    Observe_From(0.0, 0.0);
    EclipseTable& t = Eclipses;
    Fill_Lunation_Year(year, 0, t);
    const int row = Find_Row(t, true, month);
    ASSERT_GE(row, 0);
    t.Current = row;
    EclipseScreenWindow w(t);
    w.resize(2600, 1860);
    w.show();
    w.Show_Row(row);
    Click(&w, "Path of Eclipse");
    ASSERT_TRUE(w.Showing_Path());
    const QImage& picture = w.Picture();
    const QRgb total = Total_Band_Colour().rgb();
    const auto painted = [&](double lat, double lon) {
        const QPoint c = w.Map_Pixel(lat, lon);
        int n = 0;
        for (int dy = -2; dy <= 2; ++dy)
            for (int dx = -2; dx <= 2; ++dx) n += picture.pixel(c.x() + dx, c.y() + dy) == total;
        return n;
    };
    const EclipseRow& r = t.Rows[row];
    const EclipseWindow window(r.Maximum.Time);
    int inside = 0, outside = 0;
    for (int k = 0; k < 20; ++k) {
        const double f = 0.12 + 0.76 * k / 19.0;
        const double time = r.PartialStart.Time + f * (r.PartialEnd.Time - r.PartialStart.Time);
        const EclipseInstant i = Eclipse_Instant(time, window);
        const ShadowPlane plane(i);
        GeoPoint g;
        double h = 0.0;
        ASSERT_TRUE(plane.Place(plane.AxisEast(), plane.AxisNorth(), g, h));
        const double lat = g.Lat * kRadian, lon = g.Lon * kRadian;
        const LocalEclipse on = Local_Solar_Eclipse(g.Lat, g.Lon, r.FirstContact.Time, r.LastContact.Time);
        EXPECT_TRUE(on.Central) << lat << " " << lon;
        EXPECT_EQ(on.Annular, t.Speed[row].Annular != 0) << lat << " " << lon;
        if (lat > eclipse_map::TopLatitude - 1.0) continue;  // beyond the map
        EXPECT_GE(painted(lat, lon), 13) << lat << " " << lon;  // coast lines cross some
        ++inside;
        // Off the path: across the shadow's motion by three of its radii and 100 km.
        const ShadowPlane next(Eclipse_Instant(time + 1.0 / 1440.0, window));
        const double de = next.AxisEast() - plane.AxisEast(), dn = next.AxisNorth() - plane.AxisNorth();
        const double side = (k % 2 ? 1.0 : -1.0) * (3.0 * i.UmbraRadius + 100.0) / std::hypot(de, dn);
        GeoPoint o;
        if (!plane.Place(plane.AxisEast() - side * dn, plane.AxisNorth() + side * de, o, h)) continue;
        const double olat = o.Lat * kRadian, olon = o.Lon * kRadian;
        if (olat > eclipse_map::TopLatitude - 1.0) continue;
        const LocalEclipse off = Local_Solar_Eclipse(o.Lat, o.Lon, r.FirstContact.Time, r.LastContact.Time);
        EXPECT_FALSE(off.Central) << olat << " " << olon;
        EXPECT_EQ(painted(olat, olon), 0) << olat << " " << olon;
        ++outside;
    }
    EXPECT_GE(inside, onMap);
    EXPECT_GE(outside, onMap - 2);
    w.resize(1180, 720);
    QApplication::processEvents();
    Save_Png(w.Picture(), "shots", shot);
}

TEST(EclipseWindow, CompletePathOf2024CoversTheTotalPlaces) {
    Check_Path(2024, 4, "eclipse_2024_april_path", 20);
}

TEST(EclipseWindow, CompletePathOf2017CoversTheTotalPlaces) {
    Check_Path(2017, 8, "eclipse_2017_august_path", 20);
}

// An annular path over the North Pole, off the top of the map and back.
TEST(EclipseWindow, CompletePathOf2021JuneCoversTheAnnularPlaces) {
    Check_Path(2021, 6, "eclipse_2021_june_annular_path", 9);
}

}  // namespace
}  // namespace kelmoran

