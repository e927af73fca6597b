#include "printing/M_Print.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "ephemeris/Time_Calcs.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Plan_Text.h"
#include "voyage/Position_Methods.h"
#include "voyage/cNavPlan_Model.h"

namespace kelmoran {

namespace {

// The words of the document names by job.
struct JobWord {
    const char* Job;
    const char* Word;
};
constexpr std::array<JobWord, 10> kJobWords = {{{print_job::Almanac, "Almanac"},
                                                {screen_key::AltAz, "Celestial Data"},
                                                {screen_key::Clox, "Twilights"},
                                                {print_job::EclipseMap, "Eclipse"},
                                                {screen_key::NavPlan, "Voyage Plan"},
                                                {screen_key::Planets, "Planets"},
                                                {print_job::StarAtlas, "Star Atlas"},
                                                {print_job::Sights, "Sights"},
                                                {screen_key::Splash, "General Data"},
                                                {print_job::SightCalc, "Sight Calc"}}};

// The bodies of Solar Bodies by their full names.
constexpr std::array<const char*, 12> kBodyLongNames = {
    "Sun's Upper Limb", "Sun's Lower Limb", "Moon's Upper Limb", "Moon's Lower Limb",
    "Mercury",          "Venus",            "Mars",              "Jupiter",
    "Saturn",           "Neptune",          "Uranus",            "Pluto"};

constexpr double kMilesFormatLimit = 99999.0;

// The plan's columns that print when no screen gives its own choice.
constexpr std::array<int32_t, 13> kNavPlanPrinted = {
    navplan_col::WPt,       navplan_col::ID,       navplan_col::Description,
    navplan_col::Latitude,  navplan_col::Longitude, navplan_col::Speed,
    navplan_col::Course,    navplan_col::MagCo,    navplan_col::Distance,
    navplan_col::TotalDist, navplan_col::ETA,      navplan_col::TimeToGo,
    navplan_col::DistToGo};

// Hours as "1d 04h 30m", or "04h 30m" under a day.
std::string Duration_Text(double hours) {
    const long minutes = std::lround(std::max(hours, 0.0) * 60.0);
    const long days = minutes / 1440;
    char buf[40];
    if (days > 0)
        std::snprintf(buf, sizeof buf, "%ldd %02ldh %02ldm", days, minutes % 1440 / 60, minutes % 60);
    else
        std::snprintf(buf, sizeof buf, "%02ldh %02ldm", minutes / 60, minutes % 60);
    return buf;
}

std::string Miles_Text(double miles) {
    return Format_Number(std::min(miles, kMilesFormatLimit), "##,##0'.0");
}

}  // namespace

std::string Print_Job_Name(const std::string& owner, const std::string& screenName) {
    return owner.empty() ? screenName : owner;
}

std::string Print_Document_Name(const std::string& job) {
    for (const JobWord& w : kJobWords)
        if (job == w.Job) return std::string(print_text::DocumentPrefix) + w.Word;
    return std::string(print_text::DocumentPrefix) + job;
}

int32_t Reference_Width(const std::string& job) {
    if (job == print_job::StarAtlas) return kAtlasReferenceWidth;
    if (job == print_job::Almanac || job == print_job::Book) return kAlmanacReferenceWidth;
    return kGridReferenceWidth;
}

PrintArea Printable_Area(const PrinterDetails& printer, const std::string& job) {
    PrintArea a;
    const bool bound = job == print_job::Almanac || job == print_job::Book;
    a.Left = bound ? 3 * printer.OffsetX : printer.OffsetX;
    a.Top = printer.OffsetY;
    a.pWidth = std::max(printer.PageWidth - a.Left - printer.OffsetX, 1);
    a.pHeight = std::max(printer.PageHeight - 2 * printer.OffsetY, 1);
    const float ref = static_cast<float>(Reference_Width(job));
    a.ScaleX = static_cast<float>(a.pWidth) / ref;
    a.ScaleY = printer.DpiX > 0 ? a.ScaleX * static_cast<float>(printer.DpiY) /
                                      static_cast<float>(printer.DpiX)
                                : a.ScaleX;
    if (printer.DpiX > 0) a.WidthMM = printer.PageWidth * 25.4 / printer.DpiX;
    if (printer.DpiY > 0) a.HeightMM = printer.PageHeight * 25.4 / printer.DpiY;
    return a;
}

std::vector<PrintColumn> Print_Columns(const GridModel& grid) {
    std::vector<PrintColumn> out;
    std::vector<int32_t> columns = grid.Get_Highlighted_Columns();
    if (columns.empty()) columns = grid.Visible_Columns();
    for (int32_t c : columns) {
        const auto i = static_cast<size_t>(c);
        if (c < 0 || i >= grid.MyColmTitles.size()) continue;
        PrintColumn col;
        col.Column = c;
        col.Heading = grid.MyColmTitles[i].empty() ? std::string() : grid.MyColmTitles[i][0];
        col.ScreenWidth = i < grid.MyColmWidths.size() ? grid.MyColmWidths[i] : 0;
        col.Align = i < grid.MyColmFormat.size() ? grid.MyColmFormat[i] : 0;
        out.push_back(col);
    }
    return out;
}

GridPrint Collect_Data(const GridModel& grid) {
    GridPrint print;
    print.Owner = grid.Key;
    print.Columns = Print_Columns(grid);
    print.Inks = grid.MyRowColours;
    const int32_t rows = grid.Bottomlabels + 1;
    print.Cells.assign(static_cast<size_t>(std::max(rows, 0)), {});
    for (int32_t r = 0; r < rows; ++r) {
        auto& line = print.Cells[static_cast<size_t>(r)];
        line.reserve(print.Columns.size());
        for (const PrintColumn& col : print.Columns) {
            const auto& texts = grid.MyDataLabels[static_cast<size_t>(col.Column)];
            line.push_back(static_cast<size_t>(r) < texts.size() ? texts[static_cast<size_t>(r)]
                                                                  : std::string());
        }
    }
    return print;
}

TableFit Fit_Columns(const GridPrint& print, const PrintMeasure& measure, float scale,
                     int32_t pWidth, int32_t gap) {
    TableFit fit;
    const size_t n = print.Columns.size();
    std::vector<int32_t> widest(n, 0);
    for (size_t c = 0; c < n; ++c) widest[c] = measure(print.Columns[c].Heading, true);
    for (const auto& line : print.Cells)
        for (size_t c = 0; c < n && c < line.size(); ++c)
            if (!line[c].empty()) widest[c] = std::max(widest[c], measure(line[c], false));
    double total = 0.0;
    std::vector<double> w(n);
    for (size_t c = 0; c < n; ++c) {
        w[c] = std::max(static_cast<double>(print.Columns[c].ScreenWidth) * scale,
                        static_cast<double>(widest[c] + gap));
        total += w[c];
    }
    if (total > pWidth && total > 0.0) fit.FontFactor = static_cast<float>(pWidth / total);
    fit.Widths.resize(n);
    for (size_t c = 0; c < n; ++c) {
        fit.Widths[c] = static_cast<int32_t>(std::floor(w[c] * fit.FontFactor));
        fit.Total += fit.Widths[c];
    }
    return fit;
}

std::vector<PageSpan> Paginate(int32_t lines, int32_t linesPerRow, int32_t lineHeight,
                               int32_t bodyHeight) {
    linesPerRow = std::max(linesPerRow, 1);
    const int32_t entryHeight = std::max(lineHeight, 1) * linesPerRow;
    const int32_t perPage = std::max(bodyHeight / entryHeight, 1) * linesPerRow;
    std::vector<PageSpan> pages;
    for (int32_t first = 0; first < lines; first += perPage)
        pages.push_back({first, std::min(first + perPage, lines) - 1});
    if (pages.empty()) pages.push_back({0, -1});
    return pages;
}

std::string Title_Date(double zoneJD, bool julian, int32_t bias) {
    const int16_t keep = Shared_JulDates;
    Shared_JulDates = julian ? kTrue : kFalse;
    // Rounded to the minute first, so that 08:59:45 is titled 09:00 of the right day.
    const MySystemTime d = JD_To_Date(std::round(zoneJD * 1440.0) / 1440.0);
    Shared_JulDates = keep;
    char time[16];
    std::snprintf(time, sizeof time, "%02d:%02d", d.wHour, d.wMinute);
    std::string s = Weekday_Name(d.wDayOfWeek) + " " + std::to_string(d.wDay) + " " +
                    Month_Name(d.wMonth) + " " + std::to_string(std::abs(d.wYear));
    if (d.wYear < 0) s += " BC";
    if (julian) s += " (Julian)";
    return s + "  " + time + " " + Format_TZ_Text(bias);
}

std::string Title_Position(double lat, double lon) {
    return Format_Lat(lat, 1, false) + "/  " + Format_Long(lon, 1, false);
}

std::string Clox_Title(bool byPlan, float course, float speed, const std::string& position) {
    if (byPlan)
        return "Twilight Data:  Course " + Format_Number(course, "000°.0") + " T/ " +
               Format_Number(speed, "#0.0#") + " Kts";
    return "Twilight times for " + position;
}

std::vector<std::string> Decide_Generic_Title(const std::string& key, double jd) {
    const bool julian = Shell.CalendarChoice != 0;
    const double zoneJD = jd + TZ_Bias / 1440.0;
    float lat = 0, lon = 0, course = 0, speed = 0;
    Get_Position(jd, lat, lon, course, speed);
    const bool drError = Settings.PositionMethod != kFixPosition && Is_DR_Error(course);
    const std::string position = drError ? "DR Error" : Title_Position(lat, lon);

    if (key == screen_key::AltAz || key == screen_key::Splash)
        return {position, Title_Date(zoneJD, julian, TZ_Bias)};
    if (key == screen_key::Planets) {
        const auto body = static_cast<size_t>(std::clamp(Filters.ShowBody, 0, 11));
        return {kBodyLongNames[body], position};
    }
    if (key == screen_key::Lunations) {
        const int16_t keep = Shared_JulDates;
        Shared_JulDates = julian ? kTrue : kFalse;
        const int year = JD_To_Date(zoneJD).wYear;
        Shared_JulDates = keep;
        std::string t = "Lunar Phases for " + std::to_string(std::abs(year));
        if (year < 0) t += " BC";
        if (julian) t += " ~ Julian Calendar";
        return {t};
    }
    if (key == screen_key::Clox) {
        const bool byPlan = Settings.PositionMethod == kDRByPlan && !drError;
        return {Clox_Title(byPlan, course, speed, position)};
    }
    return {Title_Date(zoneJD, julian, TZ_Bias)};
}

std::vector<std::string> Decide_NavPlan_Titles(const VoyagePlan& plan) {
    const Plan_Header& h = plan.Header;
    const bool julian = Shell.CalendarChoice != 0;
    std::vector<std::string> t;
    t.push_back(h.Title.empty() ? std::string("Untitled") : h.Title);
    const double etd = h.Plan_Start + h.ETD_Minutes / 1440.0;
    const double eta = h.Plan_End + h.ETA_Minutes / 1440.0;
    float distance = 0;
    const int last = plan.Last_Valid_Row();
    if (last >= 0) distance = plan.Way_Points[static_cast<size_t>(last)].Total_Distance;
    t.push_back("Departure " + Title_Date(etd, julian, h.ETD_Minutes) + "     Arrival " +
                Title_Date(eta, julian, h.ETA_Minutes));
    t.push_back("Distance " + Miles_Text(distance) + "     Time " +
                Duration_Text((h.Plan_End - h.Plan_Start) * 24.0) + "     Default Speed " +
                Format_Number(h.Default_Speed, "#0.0#") + " Kts");
    return t;
}

GridPrint NavPlan_Print(const VoyagePlan& plan, const GridModel* grid) {
    GridPrint p;
    p.Owner = screen_key::NavPlan;
    p.Titles = Decide_NavPlan_Titles(plan);
    p.LinesPerRow = 2;
    const std::vector<ColumnDef> table = NavPlan_Columns(plan.Header);
    if (grid) {
        p.Columns = Print_Columns(*grid);
    } else {
        for (int32_t c : kNavPlanPrinted) {
            const ColumnDef& d = table[static_cast<size_t>(c)];
            p.Columns.push_back({c, d.Long, 0, d.Align});
        }
    }
    // The screen's texts of every row, each followed by its remarks.
    const NavPlan_Page page = Populate_MainData(plan, true);
    const int last = plan.Last_Valid_Row();
    for (size_t i = 0; i < page.Lines.size(); ++i) {
        const NavPlan_Line& line = page.Lines[i];
        if (line.Row > last) break;
        const bool remarksFollow = i + 1 < page.Lines.size() && page.Lines[i + 1].Remarks &&
                                   page.Lines[i + 1].Row == line.Row;
        for (size_t k = 0; k < (remarksFollow ? 2u : 1u); ++k) {
            std::vector<std::string> cells;
            for (const PrintColumn& c : p.Columns) {
                const std::string& text = page.Labels[static_cast<size_t>(c.Column)][i + k];
                cells.push_back(text == "  " ? std::string() : text);
            }
            p.Cells.push_back(std::move(cells));
        }
        if (!remarksFollow) p.Cells.emplace_back(p.Columns.size());
        if (remarksFollow) ++i;
    }
    return p;
}

SplashPrint Splash_Print(const MainPage& page, double jd) {
    SplashPrint s;
    s.Titles = Decide_Generic_Title(screen_key::Splash, jd);
    s.Day = page.Day;
    s.Moon = page.Moon;
    s.DRwarning = page.DRwarning;
    return s;
}

}  // namespace kelmoran
