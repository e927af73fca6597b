// The print decisions without a printer: document names, the printable area and scale,
// the columns of a grid, their fit on the page, page breaks and the titles.
#include <gtest/gtest.h>

#include "printing/M_Print.h"
#include "shell/M_Kelmoran.h"
#include "shell/Screen_Cases.h"
#include "voyage/cNavPlan_Model.h"

namespace kelmoran {
namespace {

using namespace testing_dates;

TEST(PrintLayout, DocumentNamesAndTheAreaByJob) {
    EXPECT_EQ(Print_Document_Name(Print_Job_Name("", "AltAz")), "Kelmoran ~ Celestial Data");
    EXPECT_EQ(Print_Document_Name("Clox"), "Kelmoran ~ Twilights");
    EXPECT_EQ(Print_Document_Name(Print_Job_Name("SightCalc", "AltAz")), "Kelmoran ~ Sight Calc");
    // A4 at 600 dpi with a 100-pixel offset; the Almanac binds with three offsets at the left.
    const PrinterDetails a4{4960, 7016, 600, 600, 100, 120};
    const PrintArea grid = Printable_Area(a4, "AltAz");
    EXPECT_EQ(grid.Left, 100);
    EXPECT_EQ(grid.pWidth, 4760);
    EXPECT_EQ(grid.pHeight, 7016 - 240);
    EXPECT_FLOAT_EQ(grid.ScaleX, 4760.0f / 1363.0f);
    EXPECT_NEAR(grid.WidthMM, 210.0, 0.1);
    const PrintArea almanac = Printable_Area(a4, "Almanac");
    EXPECT_EQ(almanac.Left, 300);
    EXPECT_FLOAT_EQ(almanac.ScaleX, 4560.0f / 1527.0f);
    EXPECT_FLOAT_EQ(Printable_Area(PrinterDetails{4960, 7016, 600, 300, 100, 100}, "Star Atlas").ScaleY,
                    4760.0f / 797.0f / 2.0f);
}

TEST(PrintLayout, HighlightedColumnsOnlyAndAWideTableShrunkOntoThePage) {
    GridModel g;
    g.Setup("AltAz", Column_Table("AltAz", "Apparent Altitude", "App. Alt."),
            [](const std::string& s, bool) { return int32_t(s.size() * 7); });
    g.Set_Data(std::vector<std::vector<std::string>>(19, {"a", "bb", "ccc"}), 3);
    GridPrint all = Collect_Data(g);
    ASSERT_EQ(all.Columns.size(), 4u);  // Name, altitude, azimuth, magnitude on first opening
    EXPECT_EQ(all.Columns[1].Heading, "Apparent Altitude");
    EXPECT_EQ(all.Cells[2][3], "ccc");
    g.Highlight_Column_Start(1);
    g.Highlight_Column_Change(2);
    const GridPrint two = Collect_Data(g);
    ASSERT_EQ(two.Columns.size(), 2u);
    EXPECT_EQ(two.Columns[0].Column, 3);
    EXPECT_EQ(two.Columns[1].Column, 4);

    // Widths: the screen's at the scale, or the widest text and the gap; too wide, smaller.
    const PrintMeasure m = [](const std::string& s, bool bold) { return int32_t(s.size()) * (bold ? 12 : 10); };
    const TableFit fit = Fit_Columns(two, m, 2.0f, 10000, 8);
    EXPECT_FLOAT_EQ(fit.FontFactor, 1.0f);
    EXPECT_EQ(fit.Widths[0], std::max(2 * two.Columns[0].ScreenWidth, 17 * 12 + 8));
    const TableFit narrow = Fit_Columns(all, m, 2.0f, fit.Total / 3, 8);
    EXPECT_LT(narrow.FontFactor, 1.0f);
    EXPECT_LE(narrow.Total, fit.Total / 3);
    EXPECT_GE(narrow.Total, fit.Total / 3 - 4);
}

TEST(PrintLayout, PagesKeepEachEntryWhole) {
    auto pages = Paginate(25, 1, 10, 100);
    ASSERT_EQ(pages.size(), 3u);
    EXPECT_EQ(pages[2].First, 20);
    EXPECT_EQ(pages[2].Last, 24);
    pages = Paginate(10, 2, 10, 95);  // four way points a page, never one split
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].Last, 7);
    EXPECT_EQ(Paginate(0, 1, 10, 100).size(), 1u);
    EXPECT_EQ(Paginate(3, 1, 50, 20).size(), 3u);  // a row a page however small
}

TEST(PrintLayout, TitlesByScreen) {
    Observe_From(-33.5, 151.25);
    TZ_Bias = 600;
    Shell.CalendarChoice = 0;
    const auto altaz = Decide_Generic_Title("AltAz", Moment(2024, 3, 20, 21, 30));
    ASSERT_EQ(altaz.size(), 2u);
    EXPECT_EQ(altaz[0], "33° 30'.0 S/  151° 15'.0  E");
    EXPECT_EQ(altaz[1], "Thursday 21 March 2024  07:30 Z+10");
    EXPECT_EQ(Decide_Generic_Title("Lunations", Moment(2024, 3, 1, 0))[0], "Lunar Phases for 2024");
    Shell.CalendarChoice = 1;
    EXPECT_EQ(Decide_Generic_Title("Lunations", Moment(-43, 3, 1, 0))[0],
              "Lunar Phases for 43 BC ~ Julian Calendar");
    Shell.CalendarChoice = 0;
    Filters.ShowBody = 3;
    EXPECT_EQ(Decide_Generic_Title("Planets", 0.0)[0], "Moon's Lower Limb");
    EXPECT_EQ(Clox_Title(true, 45.0f, 6.5f, ""), "Twilight Data:  Course 045°.0 T/ 6.5 Kts");
    Sail_Expired_Plan(Moment(2024, 3, 20, 0));
    EXPECT_EQ(Decide_Generic_Title("Clox", Moment(2024, 3, 9, 0))[0], "Twilight times for DR Error");  // before the voyage
}

TEST(PrintLayout, TheVoyagePlanInTwoLinesAWayPoint) {
    Sail_Expired_Plan(Moment(2024, 3, 20, 0));
    Voyage.Way_Points[0].Remarks = "Leave harbour";
    const GridPrint p = NavPlan_Print(Voyage);
    const NavPlan_Page screen = Populate_MainData(Voyage, true);
    ASSERT_EQ(p.LinesPerRow, 2);
    ASSERT_EQ(p.Cells.size(), 4u);  // two way points, the empty rows after them left out
    ASSERT_EQ(p.Columns[3].Column, navplan_col::Latitude);
    EXPECT_EQ(p.Cells[0][3], screen.Labels[navplan_col::Latitude][0]);
    EXPECT_EQ(p.Cells[1][2], "Leave harbour");
    EXPECT_EQ(p.Cells[0][5], screen.Labels[navplan_col::Speed][0]);
    EXPECT_EQ(p.Cells[2][5], "");  // the last way point starts no leg: no blanks
    EXPECT_EQ(p.Titles[0], "Untitled");
}

}  // namespace
}  // namespace kelmoran
