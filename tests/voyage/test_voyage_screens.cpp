// The Voyage and Clocks screens headless, driven by real keys and clicks on the main
// window: a passage typed into an empty plan, Delete, the row menu, undo and redo across
// both screens, the plan items of the File menu, and the Clocks across the date line.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QTest>
#include <fstream>
#include <iterator>

#include "settings/SettingsRecord.h"
#include "shell/Ui_Screens.h"
#include "voyage/CloxView.h"
#include "voyage/Plan_Undo.h"
#include "voyage/cNavPlanView.h"
#include "voyage/voyage_test.h"

namespace kelmoran {
namespace {

using namespace ui_test;
using voyage_test::kDeg;

class VoyageScreens : public ::testing::Test {
  protected:
    void SetUp() override {
        dir = QDir(KELMORAN_BINARY_DIR).filePath("voyage/files");
        QDir(dir).removeRecursively();
        QDir().mkpath(dir);
        w = std::make_unique<fMain>();
        // Greenwich, fixed position, no default plan, whatever the settings file held.
        TZ_Bias = 0;
        Settings.AutoTimeZone = 0;
        Settings.PositionMethod = 0;
        Settings.DefaultPlanFile.clear();
        w->resize(1100, 640);
        w->show();
        QApplication::processEvents();
        client = w->Client();
        Voyage = VoyagePlan{};
        Voyage.New_Plan(9800.0, 6.0f);
        Plan_Undo.Reset();
        w->Plan_Files().Choose_File = [this](bool, const std::string&, const std::string& f) {
            filters.push_back(f);
            return chosen;
        };
    }
    void TearDown() override {
        // The settings are written back at exit: leave none of this test's in them.
        Settings.PositionMethod = 0;
        Settings.DefaultPlanFile.clear();
        w.reset();
    }

    cNavPlan* Open_Voyage() {
        w->Window_Action(5)->trigger();
        auto* v = dynamic_cast<cNavPlan*>(w->Current_Ui_Screen());
        v->Show_Message = [this](const Plan_Message& m) { messages.push_back(m.Text); };
        return v;
    }
    // A click on the cell of grid line `line`, column `column`.
    void Click(GridModel& g, int line, int column) {
        int pos = 0;
        while (g.MyColmPtr[static_cast<size_t>(pos)] != column) ++pos;
        g.Scroll_To_Position(pos);
        QTest::mouseClick(client, Qt::LeftButton, {}, Centre(g.Cell_On_Screen(pos, line)));
    }
    // The click, then the keys and Enter.
    void Type(cNavPlan* v, int line, int column, const char* keys) {
        Click(v->Grid(), line, column);
        QTest::keyClicks(client, keys);
        QTest::keyClick(client, Qt::Key_Return);
    }
    std::vector<std::string> Row_Menu(cNavPlan* v, int line) {
        v->Menu_Chooser = [](const std::vector<std::string>&) { return std::string(); };
        v->Grid().Scroll_To_Position(0);
        QTest::mouseClick(client, Qt::RightButton, {},
                          Centre(v->Grid().Cell_On_Screen(1, line)));
        return v->Last_Menu;
    }
    // The five way points of a passage from the Lizard to Madeira by the Azores.
    void Type_Passage(cNavPlan* v) {
        const char* pts[5][3] = {{"1", "49 58", "-5 12"},
                                 {"2", "48 30", "-10 0"},
                                 {"3", "44 0", "-20 0"},
                                 {"4", "38 32", "-28 38"},
                                 {"5", "32 38", "-16 55"}};
        for (int i = 0; i < 5; ++i) {
            Type(v, i, navplan_col::ID, pts[i][0]);
            Type(v, i, navplan_col::Latitude, pts[i][1]);
            Type(v, i, navplan_col::Longitude, pts[i][2]);
        }
        Type(v, 0, navplan_col::Speed, "5.5");
        Type(v, 1, navplan_col::Speed, "7");
    }
    void Expect_Screen_Shows_Plan(cNavPlan* v) {
        const NavPlan_Page page = Populate_MainData(Voyage, v->Remarks_Shown());
        EXPECT_EQ(v->Grid().MyDataLabels, page.Labels);
    }

    std::unique_ptr<fMain> w;
    QWidget* client = nullptr;
    std::vector<std::string> messages, filters;
    std::string chosen;
    QString dir;  // the files of the test, emptied first
};

TEST_F(VoyageScreens, APassageTypedIntoAnEmptyPlan) {
    cNavPlan* v = Open_Voyage();
    EXPECT_TRUE(Row_Menu(v, 0).empty());  // no menu on a row with no data
    const QPoint etd = Centre(v->EtdDates().MyFrame);
    EXPECT_EQ(v->Help_Key(etd.x(), etd.y()), "ETD Disabled");
    Type_Passage(v);
    EXPECT_EQ(v->Help_Key(etd.x(), etd.y()), "Main ETD");
    const auto& wp = Voyage.Way_Points;
    EXPECT_NEAR(wp[3].Lat, (38 + 32 / 60.0) * kDeg, 1e-9);
    EXPECT_NEAR(wp[3].Long, -(28 + 38 / 60.0) * kDeg, 1e-9);
    EXPECT_EQ(wp[0].Speed, 5.5f);
    EXPECT_EQ(wp[2].Speed, 6.0f);  // the default speed
    EXPECT_EQ(v->Grid().MyDataLabels[navplan_col::ID][4], "5");
    EXPECT_EQ(v->Grid().MyDataLabels[navplan_col::Speed][0], "5.50 Kts");
    Expect_Screen_Shows_Plan(v);

    // Lock row 3 by its menu, then move the main ETA a day on: only the rows after the
    // locked one change speed, and the plan arrives then.
    std::vector<std::string> menu = Row_Menu(v, 2);
    EXPECT_EQ(menu, (std::vector<std::string>{"Insert Row", "Delete Row", "Clear Way Point",
                                              "Lock", "Hide", "Display Remarks", "Speed Options"}));
    v->Menu_PopUp("Lock");
    EXPECT_TRUE(wp[2].Row_Locked);
    EXPECT_EQ(v->Grid().MyDataLabels[navplan_col::ETA][2].substr(0, 3), " * ");
    const double end = Voyage.Plan_End();
    const float speed = wp[2].Speed;
    Wheel(client, Centre(v->EtaDates().Field_Rect("Day")), 120);
    EXPECT_NEAR(Voyage.Plan_End(), end + 1, 1.0 / 1440);
    EXPECT_EQ(wp[0].Speed, 5.5f);
    EXPECT_EQ(wp[1].Speed, 7.0f);
    EXPECT_LT(wp[2].Speed, speed);
    EXPECT_EQ(wp[3].Speed, wp[2].Speed);
    Expect_Screen_Shows_Plan(v);
    // An ETA before the locked row's time cannot be met.
    Wheel(client, Centre(v->EtaDates().Field_Rect("Month")), -120);
    EXPECT_EQ(messages, std::vector<std::string>{"Speed less than 0.01 Kts  "});
    EXPECT_NEAR(Voyage.Plan_End(), end + 1, 1.0 / 1440);

    // Delete on a position empties the way point's position; the ID keeps the row.
    Click(v->Grid(), 4, navplan_col::Latitude);
    QTest::keyClick(client, Qt::Key_Delete);
    EXPECT_EQ(wp[4].Lat, 0.0);
    EXPECT_EQ(wp[4].Long, 0.0);
    EXPECT_TRUE(wp[4].Row_Valid);
    Expect_Screen_Shows_Plan(v);

    // The heading's menu brings back the hidden columns of the other fixed speeds.
    v->Menu_Chooser = [](const std::vector<std::string>& items) { return items.back(); };
    v->Grid().Scroll_To_Position(0);
    QTest::mouseClick(client, Qt::RightButton, {}, Centre(v->Grid().Heading_On_Screen(0)));
    EXPECT_EQ(v->Last_Menu.back(), "Insert Column/TTG 7.0 Kts");
    EXPECT_TRUE(v->Grid().MyColmVisible[navplan_col::FixedTtg3]);

    // Remarks on a line of their own under each way point.
    v->Menu_PopUp("Display Remarks");
    Type(v, 3, navplan_col::Description, "Bishop Rock abeam");
    EXPECT_EQ(wp[1].Remarks, "Bishop Rock abeam");
    Expect_Screen_Shows_Plan(v);
    v->Grid().Scroll_To_Position(0);
    v->Populate();
    Save_Png(v->Picture(), "voyage", "voyage_passage");
}

TEST_F(VoyageScreens, TwelveUndosAndTheClocksStateUndoneFromVoyage) {
    cNavPlan* v = Open_Voyage();
    EXPECT_FALSE(w->Undo_Action(0)->isEnabled());
    Type(v, 0, navplan_col::ID, "A");
    const VoyagePlan first = Voyage;
    for (int i = 1; i <= 12; ++i) Type(v, 0, navplan_col::Speed, std::to_string(i).c_str());
    for (int i = 0; i < 12; ++i) {
        ASSERT_TRUE(w->Undo_Action(0)->isEnabled()) << i;
        QTest::keyClick(client, Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_EQ(Voyage.Way_Points[0].Speed, first.Way_Points[0].Speed);
    EXPECT_FALSE(w->Undo_Action(0)->isEnabled());  // the thirteenth is not offered
    QTest::keyClick(client, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Voyage.Way_Points[0].Speed, 1.0f);

    // A ship time typed on Clocks is undone from Voyage.
    Settings.PositionMethod = 2;
    Type(v, 1, navplan_col::Latitude, "10");
    w->Window_Action(1)->trigger();
    auto* c = dynamic_cast<CloxView*>(w->Current_Ui_Screen());
    ASSERT_NE(c, nullptr);
    const std::vector<int32_t> before = Voyage.Ship_Time;
    Click(c->Grid(), 0, kCloxShipColumn);
    QTest::keyClicks(client, "-3");
    QTest::keyClick(client, Qt::Key_Return);
    EXPECT_EQ(Voyage.Ship_Time[0], -180);
    Open_Voyage();
    w->Undo_Action(0)->trigger();
    EXPECT_EQ(Voyage.Ship_Time, before);

    // A plan read from a file empties both stacks.
    chosen = (dir + "/undo.Voy").toStdString();
    w->File_Action(7)->trigger();
    w->File_Action(1)->trigger();
    EXPECT_FALSE(w->Undo_Action(0)->isEnabled());
    EXPECT_FALSE(w->Undo_Action(1)->isEnabled());
}

TEST_F(VoyageScreens, DefaultPlanCaptionsAndAFileReadBackByteForByte) {
    cNavPlan* v = Open_Voyage();
    auto caption = [this](int i) {
        return w->File_Action(i)->isVisible() ? w->File_Action(i)->text().toStdString() : "";
    };
    EXPECT_EQ(caption(3), "");
    EXPECT_EQ(caption(4), "Set as &Default Plan");
    Type_Passage(v);
    chosen = (dir + "/passage").toStdString();  // ".Voy" is added
    w->File_Action(4)->trigger();               // saved first, then the default
    EXPECT_EQ(filters, std::vector<std::string>{"Voyage Files (*.Voy)"});
    EXPECT_EQ(Settings.DefaultPlanFile, chosen + ".Voy");
    EXPECT_EQ(caption(3), "&Remove as Default");
    EXPECT_EQ(caption(4), "D.R. by Plan");
    w->File_Action(4)->trigger();
    EXPECT_EQ(Settings.PositionMethod, 2);
    EXPECT_EQ(caption(4), "Do not D.R.");
    w->File_Action(3)->trigger();  // removed: the method goes back to 0
    EXPECT_EQ(Settings.PositionMethod, 0);
    EXPECT_TRUE(Settings.DefaultPlanFile.empty());
    EXPECT_EQ(caption(4), "Replace as the &Default Plan");

    // Save As to a second name, read it back and save again: the same bytes.
    auto bytes = [](const std::string& p) {
        std::ifstream f(p, std::ios::binary);
        return std::vector<char>(std::istreambuf_iterator<char>(f), {});
    };
    chosen = (dir + "/copy.Voy").toStdString();
    w->File_Action(7)->trigger();
    const std::vector<char> saved = bytes(chosen);
    Voyage.New_Plan(9000, 5);
    w->File_Action(1)->trigger();
    EXPECT_EQ(Voyage.Way_Points[3].ID, "4");
    EXPECT_EQ(caption(3), "Restore Default Plan");
    w->File_Action(6)->trigger();
    EXPECT_EQ(bytes(chosen), saved);
}

TEST_F(VoyageScreens, ClocksAcrossTheDateLine) {
    // Fiji to American Samoa, eastward over the date line, from a Saturday.
    Voyage = voyage_test::Plan_Of({{-17.6, 177.4}, {-16.5, -178.0}, {-14.3, -168.0}}, 11,
                                  9800.0, 6.0f);
    Voyage.Header.ETD_Minutes = 720;
    Settings.PositionMethod = 2;
    w->Window_Action(1)->trigger();
    auto* c = dynamic_cast<CloxView*>(w->Current_Ui_Screen());
    ASSERT_NE(c, nullptr);
    EXPECT_TRUE(w->File_Action(1)->isEnabled());
    w->File_Action(1)->trigger();  // "&Calculate Ship Time"
    const std::vector<int32_t>& st = Voyage.Ship_Time;
    ASSERT_GE(st.size(), 4u);
    EXPECT_EQ(st.front(), 720);
    EXPECT_EQ(st.back(), -660);
    const auto cross = std::find(st.begin(), st.end(), -720) - st.begin();
    ASSERT_LT(static_cast<size_t>(cross), st.size());
    EXPECT_TRUE(c->Rows().ZoneChange[static_cast<size_t>(cross)]);
    EXPECT_EQ(c->Grid().MyDataLabels[0][static_cast<size_t>(cross)].substr(
                  c->Grid().MyDataLabels[0][static_cast<size_t>(cross)].size() - 2),
              " *");

    w->File_Action(2)->trigger();  // "&Apply to Voyage Plan"
    std::vector<std::string> changes;
    for (const Way_Point& p : Voyage.Way_Points)
        if (!p.Description.empty()) changes.push_back(p.Description);
    EXPECT_EQ(changes, (std::vector<std::string>{"Date Change: Z-12", "Clocks Advanced: Z-11"}));

    // Sundays are red in the picture.
    const auto sunday = std::find(c->Rows().Sunday.begin(), c->Rows().Sunday.end(), true) -
                        c->Rows().Sunday.begin();
    ASSERT_LT(static_cast<size_t>(sunday), c->Rows().Sunday.size());
    const Rect cell = c->Grid().Cell_On_Screen(0, static_cast<int32_t>(sunday));
    int red = 0;
    for (int x = cell.Left; x < cell.Right; ++x)
        for (int y = cell.Top; y < cell.Bottom; ++y) {
            const QColor p = c->Picture().pixelColor(x, y);
            red += p.red() > 150 && p.green() < 90 && p.blue() < 90;
        }
    EXPECT_GT(red, 5);
    Save_Png(c->Picture(), "voyage", "clocks_date_line");

    // On Voyage each change stands in its row's Description and Ship Time cells.
    cNavPlan* v = Open_Voyage();
    int seen = 0;
    for (size_t i = 0; i < v->Page().Lines.size(); ++i) {
        const Way_Point& p = Voyage.Way_Points[static_cast<size_t>(v->Page().Lines[i].Row)];
        if (p.Description.empty()) continue;
        EXPECT_EQ(v->Grid().MyDataLabels[navplan_col::Description][i], p.Description);
        EXPECT_EQ(v->Grid().MyDataLabels[navplan_col::ShipTime][i],
                  p.Description.substr(p.Description.find(": ") + 2));
        ++seen;
    }
    EXPECT_EQ(seen, 2);
    Save_Png(v->Picture(), "voyage", "voyage_clock_changes");
}

}  // namespace
}  // namespace kelmoran
