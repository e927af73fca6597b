// What a print looks like, decided without any printer: the document name of each job,
// the printable area and the scale against the screen's reference widths, the columns a
// grid prints and their fitted widths, the titles of each screen, the rows of the voyage
// plan in two lines a way point, the blocks of Main, and the page breaks. The painting
// layer (cPrint_Generic) only draws what these say.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "shell/Grid_Model.h"
#include "shell/Screen_Rows.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

// Job names of the windows with their own prints; the grid screens print under their key.
namespace print_job {
inline constexpr const char* Book = "Book Print";
inline constexpr const char* Almanac = "Almanac";
inline constexpr const char* StarAtlas = "Star Atlas";
inline constexpr const char* Sights = "Sights";
inline constexpr const char* SightCalc = "SightCalc";
inline constexpr const char* EclipseMap = "EclipseMap";
}  // namespace print_job

namespace print_text {
inline constexpr const char* NoPrinter = "\r\nThere is no printer available.";
inline constexpr const char* DocumentPrefix = "Kelmoran ~ ";
}  // namespace print_text

// Widths of the screen that a full page's width stands for, by kind of job.
inline constexpr int32_t kGridReferenceWidth = 1363;
inline constexpr int32_t kAtlasReferenceWidth = 797;
inline constexpr int32_t kAlmanacReferenceWidth = 1527;

// The job of a print: `owner` as given, or the current screen's key when it is empty.
std::string Print_Job_Name(const std::string& owner, const std::string& screenName);

// "Kelmoran ~ " and the job's word ("Celestial Data" for AltAz, "Twilights" for Clox, ...).
std::string Print_Document_Name(const std::string& job);

// The reference width of a job: 797 the Star Atlas, 1527 the Almanac and the book pages,
// 1363 every other job.
int32_t Reference_Width(const std::string& job);

// The page as the printer gives it, in device pixels.
struct PrinterDetails {
    int32_t PageWidth = 0;   // the whole sheet
    int32_t PageHeight = 0;
    int32_t DpiX = 0;        // resolution, pixels per inch
    int32_t DpiY = 0;
    int32_t OffsetX = 0;     // the unprintable edge (the physical offset) on each side
    int32_t OffsetY = 0;
};

// Where a job may print, in device pixels, and its scale against the screen.
struct PrintArea {
    int32_t Left = 0;      // the printable area's top left corner on the sheet
    int32_t Top = 0;
    int32_t pWidth = 0;    // printable width and height
    int32_t pHeight = 0;
    float ScaleX = 1.0f;   // printer pixels for one pixel of the screen
    float ScaleY = 1.0f;
    double WidthMM = 0.0;  // the sheet in millimetres
    double HeightMM = 0.0;
};

// The sheet less the offset on both sides; the Almanac and the book pages take three
// times the offset at the binding side (the left). ScaleX is the printable width over the
// job's reference width, ScaleY the same for the vertical resolution.
PrintArea Printable_Area(const PrinterDetails& printer, const std::string& job);

// One printed column of a grid.
struct PrintColumn {
    int32_t Column = 0;       // the column number of the grid
    std::string Heading;      // its long title
    int32_t ScreenWidth = 0;  // its width on the screen, pixels
    int32_t Align = 0;        // 0 left, 1 right, 2 centred
};

// What a grid print shows: title lines, the columns in their order and the cells by row
// and printed column. `LinesPerRow` lines of Cells make one entry that is never split over
// two pages (the voyage plan prints two a way point).
struct GridPrint {
    std::string Owner;
    std::vector<std::string> Titles;
    std::vector<PrintColumn> Columns;
    std::vector<std::vector<std::string>> Cells;  // [line][printed column]
    std::vector<uint32_t> Inks;  // [line] text colour as 0xRRGGBB (Sundays red); none black
    int32_t LinesPerRow = 1;
};

// The columns to print: the highlighted ones if any are, otherwise all on show, in the
// order they stand.
std::vector<PrintColumn> Print_Columns(const GridModel& grid);
// Those columns with the cells of every row.
GridPrint Collect_Data(const GridModel& grid);

// Measures a text in the job's font at its starting size, in printer pixels (bold for
// the headings).
using PrintMeasure = std::function<int32_t(const std::string& text, bool bold)>;

// The printed widths: each column as wide as its screen width at `scale`, or as its
// widest heading or cell and `gap` when that is wider. A table wider than `pWidth` is
// printed smaller (the scale corrected to the page): FontFactor shrinks the font and every
// width alike, so that it is never printed on two pages across.
struct TableFit {
    std::vector<int32_t> Widths;
    float FontFactor = 1.0f;
    int32_t Total = 0;
};
TableFit Fit_Columns(const GridPrint& print, const PrintMeasure& measure, float scale,
                     int32_t pWidth, int32_t gap);

// A table that would print at less than four fifths of its size across a standing page
// goes on a page turned on its side.
inline constexpr float kLandscapeBelow = 0.8f;
inline bool Prefer_Landscape(const TableFit& portrait) {
    return portrait.FontFactor < kLandscapeBelow;
}

// The entries of each page: lines First .. Last (inclusive) of Cells.
struct PageSpan {
    int32_t First = 0;
    int32_t Last = -1;
};

// Page breaks for `lines` lines of `lineHeight` in `bodyHeight` (the page less its title
// and headings), keeping each entry of `linesPerRow` lines whole. At least one entry goes
// on a page however small; no lines make one empty page.
std::vector<PageSpan> Paginate(int32_t lines, int32_t linesPerRow, int32_t lineHeight,
                               int32_t bodyHeight);

// --- titles ---

// A moment in zone time (days, CurrentJD + TZ_Bias / 1440) as a title shows it:
// "Tuesday 5 March 2024  14:05 Z+1", " BC" after the year before AD 1 and " (Julian)" in
// the Julian calendar.
std::string Title_Date(double zoneJD, bool julian, int32_t bias);

// "41° 23'.0 N/  12° 20'.0 W" of a position in radians.
std::string Title_Position(double lat, double lon);

// The title lines of a grid screen at `jd` (UT) by its key. AltAz and Splash: the
// observer's position and the time; Planets: the body's name; Lunations: "Lunar Phases
// for " and the year, with " BC" and " ~ Julian Calendar" when they apply; Clox: the
// course and speed of the plan, or the position. A position the reckoning cannot give
// reads "DR Error".
std::vector<std::string> Decide_Generic_Title(const std::string& key, double jd);

// Clocks: "Twilight Data:  Course 045°.0 T/ 6.5 Kts" when a plan is in use (`byPlan`),
// else "Twilight times for " and the position text.
std::string Clox_Title(bool byPlan, float course, float speed, const std::string& position);

// The voyage plan's titles: its title, then the departure, the arrival, the distance and
// the default speed.
std::vector<std::string> Decide_NavPlan_Titles(const VoyagePlan& plan);

// The voyage plan as it prints: one entry a way point in two lines, the row with its leg
// as the Voyage screen shows it, and under it its remarks. The columns are those of the
// screen's `grid` (highlighted or on show), or without one the way point, its position,
// the leg (speed, course, magnetic course, distance), the running distance, the time of
// arrival and the time and distance to go. Rows after the last way point do not print.
GridPrint NavPlan_Print(const VoyagePlan& plan, const GridModel* grid = nullptr);

// Main's page: the titles and its two blocks, the day at the observer and the Moon.
struct SplashPrint {
    std::vector<std::string> Titles;
    std::vector<MainLine> Day;
    std::vector<MainLine> Moon;
    bool DRwarning = false;
};
SplashPrint Splash_Print(const MainPage& page, double jd);

}  // namespace kelmoran
