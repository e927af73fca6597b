// The Sights window with real keys and the mouse: star sights made from a known position
// by an independent library are typed into an empty set, identified, reduced and crossed
// on the plotting sheet; the working sheet, the pop-ups and the plan insert.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTest>
#include <cmath>

#include "ephemeris/Series.h"
#include "printing/cPrint_Gateway.h"
#include "shell/M_Edit.h"
#include "shell/Ui_Screens.h"
#include "sight_support.h"
#include "sights/Plan_Insert.h"
#include "sights/PlotSheetView.h"
#include "sights/SightCalcWindow.h"
#include "sights/SightsWindow.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"
#include "voyage/Plan_Undo.h"
// The reference library last: its headers define macros such as OK.
#include "sight_reference.h"
#undef OK

namespace kelmoran {
namespace {

using namespace testing_support;
using namespace ui_test;

// The known position, and a DR three miles off it.
constexpr double kLat = 0.6;    // radians, 34°.4 N
constexpr double kLon = -0.9;   // 51°.6 W
constexpr double kT0 = 8830.5;  // 2024 March 5, 00:00 UT (MyJD), evening twilight there

struct Typed_Sight {
    int Star = 0;
    double T = 0;    // MyJD, whole seconds
    double Hs = 0;   // radians
    double Az = 0;   // degrees as typed, one decimal
};

class SightsWindowTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        Load_Star_Tables();
        Measure_Fixed_Layout();
    }
    void SetUp() override {
        Reset_Shell(nullptr);
        TZ_Bias = 0;
        Observer_At(static_cast<float>(kLat + 3.0 / kArcminPerRadian),
                    static_cast<float>(kLon), 0.0f, 3.0f);
        Settings.SightsTabDown = 0;
        Plan_Undo.Reset();
        Shell.CurrentJD = kT0 + 23.0 / 24.0;
        w = new SightsWindow(6);
        w->Message_Answer = [this](const std::string& text, const std::string& title,
                                   MsgButtons) {
            asked.push_back(title + "|" + text);
            return answer;
        };
        w->show();
        QApplication::processEvents();
        client = w->Client();
    }
    void TearDown() override {
        Shell.SightsChanged = kFalse;
        delete w;
    }

    // Main stars 20° to 60° high whose lines cut at 25° or more, 97 seconds apart in time
    // from 23:00 UT.
    std::vector<Typed_Sight> Make_Sights(int wanted) {
        std::vector<Typed_Sight> out;
        for (const MainStarRow& row : MainStars) {
            if (static_cast<int>(out.size()) == wanted) break;
            Typed_Sight s;
            s.Star = row.Star;
            s.T = kT0 + 23.0 / 24.0 + (out.size() * 97.0) / 86400.0;
            Observed o;
            if (!Reference_Sight(s.Star, s.T, kLat, kLon, Settings.Pressure, Settings.Temp, o))
                continue;
            if (o.Alt * kDegreesPerRadian < 20 || o.Alt * kDegreesPerRadian > 60) continue;
            bool apart = true;
            for (const Typed_Sight& t : out) {
                const double d = std::fabs(std::remainder(t.Az - o.Az, 180.0));
                apart = apart && d >= 25;
            }
            if (!apart) continue;
            s.Hs = o.Alt + DipRad + IndexErrorRad;
            s.Az = std::nearbyint(o.Az * 10) / 10;
            out.push_back(s);
        }
        return out;
    }

    void Click(const Rect& r) { QTest::mouseClick(client, Qt::LeftButton, {}, Centre(r)); }
    void Type(const std::string& keys) { QTest::keyClicks(client, QString::fromStdString(keys)); }
    void Key(Qt::Key k, Qt::KeyboardModifiers m = {}) { QTest::keyClick(client, k, m); }

    // Types a sight into `row`: the time field after field, Tab, the altitude in degrees
    // and minutes to two places, Tab, the azimuth, Enter.
    void Type_Sight(int row, const Typed_Sight& s) {
        Click(w->Row_Dates(row).MyDayLabel);
        const MySystemTime d = JD_To_Date(s.T);
        char time[40];
        std::snprintf(time, sizeof time, "%02d%02d%02d%02d", d.wDay, d.wHour, d.wMinute,
                      d.wSecond);
        Type(time);
        Key(Qt::Key_Tab);
        const double minutes = s.Hs * kDegreesPerRadian * 60.0;
        const int deg = static_cast<int>(minutes / 60);
        char alt[24];
        std::snprintf(alt, sizeof alt, "%d %05.2f", deg, minutes - deg * 60.0);
        Type(alt);
        Key(Qt::Key_Tab);
        char az[8];
        std::snprintf(az, sizeof az, "%04d", static_cast<int>(std::nearbyint(s.Az * 10)));
        Type(az);
        Key(Qt::Key_Return);
    }

    QRgb Sheet_Pixel(const Sheet_Point& p) const {
        return w->Picture().pixel(w->Sheet_Area().Left + p.x, w->Sheet_Area().Top + p.y);
    }

    SightsWindow* w = nullptr;
    QWidget* client = nullptr;
    std::vector<std::string> asked;
    MsgAnswer answer = MsgAnswer::OK;
};

double Miles_Off(float lat, float lon) {
    return std::hypot((lat - kLat) * kArcminPerRadian,
                      std::remainder(lon - kLon, kTwoPi) * kArcminPerRadian * std::cos(kLat));
}

TEST_F(SightsWindowTest, ThreeStarsTypedGiveTheRightBodiesAndAFixAtTheKnownPosition) {
    const std::vector<Typed_Sight> sights = Make_Sights(3);
    ASSERT_EQ(sights.size(), 3u);
    for (int r = 0; r < 3; ++r) Type_Sight(r, sights[static_cast<size_t>(r)]);
    EXPECT_FALSE(Edit.Editing);

    // The same rows reduced by the core alone.
    SightSet core(6);
    core.Fix_Sight = w->Set().Fix_Sight;
    for (int r = 0; r < 3; ++r) {
        const Typed_Sight& s = sights[static_cast<size_t>(r)];
        Enter_Row(core, r, w->Set().Sights[r].Sight_Time, w->Set().Sights[r].Sextant_Alt,
                  static_cast<float>(s.Az));
        Reduce_Sight(core, r, false);
        const Sight_Record& row = w->Set().Sights[r];
        EXPECT_NEAR(row.Sight_Time, s.T, 1e-9) << r;
        EXPECT_NEAR(row.Sextant_Alt, s.Hs, 0.06 / kArcminPerRadian) << r;
        EXPECT_EQ(row.Body_Id, s.Star) << r;
        EXPECT_EQ(w->Combo(r).Text, StarPlaces[s.Star].Name) << r;
        EXPECT_EQ(row.Intercept, core.Sights[r].Intercept) << r;
        EXPECT_EQ(Sight_Cell_Text(w->Set(), r, kColIntercept),
                  core.Candidates[r][core.Sights[r].Candidate_No].Intercept_Text);
    }
    const Sheet_Plot& plot = w->Plot();
    EXPECT_EQ(plot.Fix.Type_of_Fix, "Fix");
    EXPECT_LT(Miles_Off(static_cast<float>(w->Fix_Position().Latitude()),
                        static_cast<float>(w->Fix_Position().Longitude())),
              0.3);
    EXPECT_GT(Dark_Pixels(w->Picture(), To_QRect(w->Fix_Label_Rect())), 10);
    // The cross where the core's geometry puts it, painted in the fix's colour.
    const Fix_Result core_fix = Calc_Fix(w->Set(), w->Plot_Scale(), w->Sheet_Area().Width(),
                                         w->Sheet_Area().Height(), w->Ellipse());
    EXPECT_EQ(plot.Fix.Circle_Centre, core_fix.Circle_Centre);
    const Sheet_Point c = core_fix.Circle_Centre;
    EXPECT_EQ(Sheet_Pixel({c.x + 12, c.y}), kFixColour);
    EXPECT_EQ(Sheet_Pixel({c.x, c.y - 13}), kFixColour);

    // The ellipse at each size: the semi-axes in the ratio of the factors, redrawn.
    ASSERT_TRUE(plot.Fix.Has_Ellipse);
    const double large = plot.Fix.Semi_Axis1;
    w->Ellipse_Action(Ellipse_Size::Small)->trigger();
    EXPECT_NEAR(w->Plot().Fix.Semi_Axis1 / large, kEllipseFactor[2] / kEllipseFactor[0], 1e-6);
    int painted = 0;
    for (const Sheet_Point& e : w->Plot().Fix.Ellipse) painted += Sheet_Pixel(e) == kEllipseColour;
    EXPECT_GT(painted, 180);
    Save_Png(w->grab().toImage(), "sights", "sights_three_stars_fix");
    {
        // "&Print" with no printer: the same window on a PDF page, its words read back.
        const QString pdf = QDir(KELMORAN_BINARY_DIR).filePath("sights/sights_print");
        const PrintHooks saved = Print_Hooks();
        Print_Hooks().Printers_Available = [] { return false; };
        Print_Hooks().Pdf_Path = [&](QWidget*, const std::string&) { return (pdf + ".pdf").toStdString(); };
        w->mnuPrint();
        Print_Hooks() = saved;
        QProcess text;
        text.start("pdftotext", {"-layout", pdf + ".pdf", "-"});
        text.waitForFinished(60000);
        const QString page = QString::fromUtf8(text.readAllStandardOutput());
        EXPECT_TRUE(page.contains("Obs. Time")) << page.toStdString();
        EXPECT_TRUE(page.contains(Q(plot.Fix.Type_of_Fix))) << page.toStdString();
        QProcess::execute("pdftoppm", {"-r", "60", "-png", pdf + ".pdf", pdf});
    }

    // The working sheet of the second row: the table's intercept to 0'.1 in the full form,
    // and the rounding-error line in the simplified form.
    Click(w->Layout().Cell(1, kColAlt));
    Key(Qt::Key_Escape);
    w->Calculations_Action()->trigger();
    SightCalcWindow* calc = w->Calc_Window();
    ASSERT_NE(calc, nullptr);
    QApplication::processEvents();
    const SightCalc_Sheet& full = calc->Sheet();
    EXPECT_EQ(full.MySightNo, 1);
    const int at = full.Find("Intercept");
    ASSERT_GE(at, 0);
    EXPECT_EQ(full.My_rDat[at], Intercept_Text(w->Set().Sights[1].Intercept * kArcminPerRadian,
                                               " Away", " Towards"));
    Save_Png(calc->grab().toImage(), "sights", "working_sheet_full");
    {
        // Its print carries the same lines.
        const QString pdf = QDir(KELMORAN_BINARY_DIR).filePath("sights/working_sheet_print");
        cPrint_Gateway gateway;
        ASSERT_TRUE(gateway.Save_PDF(calc->Print_Content(), (pdf + ".pdf").toStdString()));
        QProcess text;
        text.start("pdftotext", {"-layout", pdf + ".pdf", "-"});
        text.waitForFinished(60000);
        const QString page = QString::fromUtf8(text.readAllStandardOutput());
        EXPECT_TRUE(page.contains("Intercept")) << page.toStdString();
        QProcess::execute("pdftoppm", {"-r", "60", "-png", pdf + ".pdf", pdf});
    }
    calc->Menu_Action(sightcalc_text::Errors)->trigger();
    calc->Menu_Action(sightcalc_text::AstroData)->trigger();
    EXPECT_FALSE(calc->Sheet().My_AstroData);
    EXPECT_GE(calc->Sheet().Find("(Rounding Error"), 0);
    EXPECT_GE(calc->Sheet().Find("(Total Rounding Errors"), 0);
    QApplication::processEvents();
    Save_Png(calc->grab().toImage(), "sights", "working_sheet_simplified");
    // A change of row works the sheet again.
    Click(w->Layout().Cell(2, kColAz));
    Key(Qt::Key_Escape);
    EXPECT_EQ(calc->Sheet().MySightNo, 2);
}

TEST_F(SightsWindowTest, OneSightIsAnITPAndFiveMakeAFixWithItsEllipse) {
    const std::vector<Typed_Sight> sights = Make_Sights(5);
    ASSERT_GE(sights.size(), 4u);
    Type_Sight(0, sights[0]);
    EXPECT_EQ(w->Plot().Fix.Type_of_Fix, "ITP");
    EXPECT_EQ(w->Plot().Lines.size(), 1u);
    for (size_t r = 1; r < sights.size(); ++r) Type_Sight(static_cast<int>(r), sights[r]);
    EXPECT_EQ(w->Plot().Fix.Type_of_Fix, "Fix");
    EXPECT_EQ(w->Plot().Lines.size(), sights.size());
    EXPECT_TRUE(w->Plot().Fix.Has_Ellipse);
    Save_Png(w->grab().toImage(), "sights", "sights_five_fix_ellipse");
    // The wheel over the sheet draws it a quarter closer at a notch.
    const float scale = w->Plot_Scale();
    Wheel(client, Centre(w->Sheet_Area()), 120);
    EXPECT_NEAR(w->Plot_Scale() / scale, 1.25, 1e-5);
    // Delete strikes out the sight of the row under the cursor.
    const int last = static_cast<int>(sights.size()) - 1;
    Key(Qt::Key_Delete);
    EXPECT_EQ(w->Set().Sights[last].Row_Used, 0);
    EXPECT_EQ(w->Plot().Lines.size(), sights.size() - 1);

    // "&New Set" with unsaved sights asks first; Cancel keeps them, OK clears them.
    answer = MsgAnswer::Cancel;
    w->File_Action(0)->trigger();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0], "Sights Warning|Unsaved information will be lost");
    EXPECT_NE(w->Set().Sights[0].Row_Used, 0);
    answer = MsgAnswer::OK;
    w->File_Action(0)->trigger();
    EXPECT_EQ(w->Set().Sights[0].Row_Used, 0);
    EXPECT_EQ(w->Plot().Fix.Type_of_Fix, "DR");
}

TEST_F(SightsWindowTest, ARowBeyondThePlansEndShowsItsWarningAsAPopUp) {
    // A plan that ends a day before the sights, used for the DR.
    Voyage.New_Plan(kT0 - 3, 10.0f);
    Voyage.Edit_Position(0, kLat, kLon);
    Voyage.Edit_Position(1, kLat + 0.01, kLon);
    Settings.PositionMethod = kDRByPlan;
    Shell.Up_To_Date(screen_key::Sights) = kFalse;
    w->Force_Update();
    const std::vector<Typed_Sight> sights = Make_Sights(1);
    ASSERT_EQ(sights.size(), 1u);
    Type_Sight(0, sights[0]);
    ASSERT_NE(w->Set().DR_Warning[0], 0);
    QTest::mouseMove(client, Centre(w->Layout().Cell(0, kColIntercept)));
    QTest::qWait(400);
    EXPECT_EQ(w->Popup_Lines(), std::vector<std::string>{"Plan Expired"});
    Save_Png(w->grab().toImage(), "sights", "sights_plan_expired_popup");
    Settings.PositionMethod = kFixPosition;
}

TEST_F(SightsWindowTest, ThePositionGoesIntoThePlanAsANewRowOrOverAWayPointThen) {
    const std::vector<Typed_Sight> sights = Make_Sights(3);
    for (int r = 0; r < 3; ++r) Type_Sight(r, sights[static_cast<size_t>(r)]);
    const double t = w->Set().Fix_Sight.Sight_Time;
    // A plan of two way points either side of the fix time.
    Voyage.New_Plan(t - 0.5, 8.0f);
    Voyage.Edit_Position(0, kLat - 0.02, kLon - 0.02);
    Voyage.Edit_Position(1, kLat + 0.02, kLon + 0.02);
    Plan_Undo.Reset();
    ASSERT_LT(Voyage.Way_Points[0].Time, t);
    ASSERT_GT(Voyage.Way_Points[1].Time, t);

    w->Insert_Action()->trigger();
    EXPECT_TRUE(asked.empty());
    const Way_Point& fix = Voyage.Way_Points[1];
    EXPECT_EQ(fix.Description, "Celestial Fix");
    EXPECT_NEAR(fix.Lat, w->Plot().Fix.Fix_Lat, 1e-7);
    EXPECT_NEAR(fix.Time, t, 1.0 / 1440);
    EXPECT_NE(fix.Row_Locked, 0);
    EXPECT_NEAR(Voyage.Way_Points[2].Lat, kLat + 0.02, 1e-9);
    EXPECT_EQ(Plan_Undo.Undo_Count(), 1u);
    EXPECT_NE(Shell.PlanChanged, 0);

    // Again at the same time: the way point is there, locked; Cancel leaves it.
    answer = MsgAnswer::Cancel;
    w->Insert_Action()->trigger();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].substr(0, asked[0].find('|')), "Replace Way Point position?");
    EXPECT_NE(asked[0].find("A Way Point already exists for ("), std::string::npos);
    EXPECT_NE(asked[0].find("THIS WILL UNLOCK WAY POINT 2!"), std::string::npos);
    EXPECT_EQ(Plan_Undo.Undo_Count(), 1u);
    answer = MsgAnswer::OK;
    w->Insert_Action()->trigger();
    EXPECT_EQ(Voyage.Way_Points[1].Row_Locked, 0);
    EXPECT_EQ(Voyage.Way_Points[1].Description, "Celestial Fix");
    EXPECT_EQ(Voyage.Row_Count(), 12);
    // Each insert is one step back.
    EXPECT_EQ(Plan_Undo.Undo(Voyage), Undo_Type::Voyage);
    EXPECT_EQ(Plan_Undo.Undo(Voyage), Undo_Type::Voyage);
    EXPECT_EQ(Voyage.Row_Count(), 11);
    EXPECT_NEAR(Voyage.Way_Points[1].Lat, kLat + 0.02, 1e-9);
}

}  // namespace
}  // namespace kelmoran

namespace kelmoran {
namespace {

TEST_F(SightsWindowTest, ABodyChosenInTheDropDownStaysAndTabCanMoveDown) {
    SightsFilter.AltLimit = static_cast<float>(120.0 / kArcminPerRadian);
    SightsFilter.AzLimit = 90.0f;
    SightsFilter.StarCount = 1520;
    const std::vector<Typed_Sight> sights = Make_Sights(1);
    Type_Sight(0, sights[0]);
    const Candidate_List& list = w->Set().Candidates[0];
    ASSERT_GE(list.size(), 2u);
    for (size_t k = 1; k < list.size(); ++k)
        EXPECT_LE(std::fabs(list[k - 1].Cand_Intercept), std::fabs(list[k].Cand_Intercept));
    // The list opens on the row's body cell; Down and Enter take the second body.
    Click(w->Layout().Cell(0, kColBody));
    ASSERT_TRUE(w->Combo(0).ListVisible);
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_FALSE(w->Combo(0).ListVisible);
    const int32_t chosen = list[1].Body_Id;
    EXPECT_EQ(w->Set().Sights[0].Body_Id, chosen);
    EXPECT_EQ(w->Combo(0).Text, list[1].Name);
    // A new filter runs the reductions again: the chosen body stays chosen.
    w->Refilter();
    EXPECT_EQ(w->Set().Sights[0].Body_Id, chosen);

    // "Tab moves down through Sights": from the time of row 0 to the time of row 1.
    Settings.SightsTabDown = 1;
    Click(w->Row_Dates(0).MyDayLabel);
    Key(Qt::Key_Escape);
    Key(Qt::Key_Tab);
    ASSERT_TRUE(Edit.Editing);
    EXPECT_EQ(Edit.Row, 1);
    EXPECT_EQ(Edit.Field, "Day");
    Key(Qt::Key_Escape);
    Settings.SightsTabDown = 0;
}

TEST_F(SightsWindowTest, ASavedSetOpensAgainAndAskOfDifferentSettings) {
    const std::vector<Typed_Sight> sights = Make_Sights(3);
    for (int r = 0; r < 3; ++r) Type_Sight(r, sights[static_cast<size_t>(r)]);
    const std::string path = std::string(KELMORAN_BINARY_DIR) + "/sights/window_set.Sight";
    std::string suggested;
    w->File_Chooser = [&](bool save, const std::string& s) {
        if (save) suggested = s;
        return path;
    };
    w->File_Action(3)->trigger();  // "Save &As"
    EXPECT_NE(suggested.find("06 Mar 24.Sight"), std::string::npos) << suggested;
    EXPECT_EQ(Shell.SightsChanged, 0);
    w->File_Action(0)->trigger();
    ASSERT_EQ(w->Plot().Fix.Type_of_Fix, "DR");

    // The same settings: nothing is asked and the rows come back with their bodies.
    w->File_Action(1)->trigger();
    EXPECT_TRUE(asked.empty());
    for (int r = 0; r < 3; ++r) EXPECT_EQ(w->Set().Sights[r].Body_Id, sights[r].Star) << r;
    EXPECT_EQ(w->Plot().Fix.Type_of_Fix, "Fix");
    EXPECT_EQ(w->Row_Dates(1).MySystemTime.wSecond, JD_To_Date(sights[1].T).wSecond);
    // A different height of eye is asked about; No keeps the settings.
    Settings.HtOfEye = 5.0f;
    Compute_Derived_Settings();
    answer = MsgAnswer::No;
    EXPECT_EQ(w->Open_File(path), Load_Result::Kept);
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_NE(asked[0].find("Differences in User Settings|Ht of Eye will change"),
              std::string::npos);
    EXPECT_EQ(Settings.HtOfEye, 5.0f);
}

}  // namespace
}  // namespace kelmoran

#include "shell/fMain.h"

namespace kelmoran {
namespace {

// The window as the program opens it: from the Screen menu, told of every change of the
// moment, its Options through the shell's hook; and lines carried by the dead reckoning.
TEST(SightsInTheProgram, TheScreenMenuOpensItAndTheUpdatesReachIt) {
    Load_Star_Tables();
    fMain main;
    main.show();
    Observer_At(static_cast<float>(kLat), static_cast<float>(kLon), 0.0f, 3.0f);
    Settings.PositionMethod = kDRCourseSpeed;  // 12 knots to the north-east
    Settings.FixCourse = 45.0f;
    Settings.FixSpeed = 12.0f;
    Settings.FixTime = kT0;
    TZ_Bias = 0;
    MyDates_DateChange(screen_key::Splash, kT0 + 23.0 / 24.0);
    main.Window_Action(9)->trigger();
    SightsWindow* w = main.Sights_Window();
    ASSERT_NE(w, nullptr);
    EXPECT_NE(Shell.SightsOpen, 0);
    EXPECT_TRUE(w->Options_Action()->isEnabled());  // the shell connects the dialogue
    EXPECT_DOUBLE_EQ(w->Set().Fix_Sight.Sight_Time, kT0 + 23.0 / 24.0);
    // A new moment on another screen moves the fix time and its DR.
    MyDates_DateChange(screen_key::Splash, kT0 + 23.5 / 24.0);
    EXPECT_DOUBLE_EQ(w->Set().Fix_Sight.Sight_Time, kT0 + 23.5 / 24.0);
    EXPECT_EQ(w->Strip().MySystemTime.wMinute, 30);

    // Three sights before the fix time, with the filter wide open: each line is carried
    // to the fix time and marked so.
    SightsFilter.AltLimit = static_cast<float>(120.0 / kArcminPerRadian);
    SightsFilter.AzLimit = 90.0f;
    QWidget* client = w->Client();
    for (int r = 0; r < 3; ++r) {
        QTest::mouseClick(client, Qt::LeftButton, {}, Centre(w->Row_Dates(r).MyDayLabel));
        QTest::keyClicks(client, QString::asprintf("0623%02d00", 2 * r));
        QTest::keyClick(client, Qt::Key_Tab);
        QTest::keyClicks(client, QString::asprintf("%d 10.0", 30 + 5 * r));
        QTest::keyClick(client, Qt::Key_Tab);
        QTest::keyClicks(client, QString::asprintf("%03d0", 120 * r + 20));
        QTest::keyClick(client, Qt::Key_Return);
    }
    ASSERT_EQ(w->Set().Sights[2].Row_Used, kTrue);
    ASSERT_EQ(w->Plot().Lines.size(), 3u);
    for (const Sheet_Line& l : w->Plot().Lines) EXPECT_TRUE(l.Transferred) << l.Row;
    Save_Png(w->grab().toImage(), "sights", "sights_transferred_lines");

    // The shell's Options hook: OK runs the filter again over the rows.
    int opened = 0;
    w->OpenOptions = [&](QWidget*, const std::string& owner, const std::string& tab) {
        EXPECT_EQ(owner, "Sights");
        EXPECT_EQ(tab, "Filter");
        ++opened;
        SightsFilter.AltLimit = static_cast<float>(0.5 / kArcminPerRadian);
        return true;
    };
    w->mnuOptions();
    EXPECT_EQ(opened, 1);
    for (int r = 0; r < 3; ++r) EXPECT_EQ(w->Set().Sights[r].Has_Body, 0) << r;
    Shell.SightsChanged = kFalse;
    Settings.PositionMethod = kFixPosition;
}

}  // namespace
}  // namespace kelmoran
