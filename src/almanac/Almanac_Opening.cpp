#include "almanac/Almanac_Opening.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "settings/M_Formatting.h"

namespace kelmoran {

namespace {

// Vertical layout, page units: the heading line, two rows of column headings, then three
// days of 24 hours in groups of six, then the foot.
constexpr int32_t kMargin = 10;
constexpr int32_t kTitleTop = 6;
constexpr int32_t kTitleHeight = 20;
constexpr int32_t kHead1 = 32;       // names of the bodies and tables
constexpr int32_t kHead2 = 48;       // GHA, Dec, ...
constexpr int32_t kHeadHeight = 15;
constexpr int32_t kTableTop = 66;
constexpr int32_t kRow = 13;         // an hour
constexpr int32_t kGroupGap = 4;     // after each six hours
constexpr int32_t kDayGap = 8;       // between days
constexpr int32_t kDayHeight = 24 * kRow + 3 * kGroupGap;
constexpr int32_t kTableBottom = kTableTop + 3 * kDayHeight + 2 * kDayGap + 4;
constexpr int32_t kFootRow = 15;
constexpr int32_t kPageHeight = kTableBottom + 6 * kFootRow + 12;

// Columns shared by both pages: the day and the hour of GMT.
constexpr int32_t kDayLeft = kMargin, kDayWidth = 34;
constexpr int32_t kHourLeft = kDayLeft + kDayWidth, kHourWidth = 24;
constexpr int32_t kFirstColumn = kHourLeft + kHourWidth + 6;

constexpr int32_t kAngleWidth = 82;  // "359° 59'.9"
constexpr int32_t kDecWidth = 76;    // "S 23° 26'.1"
constexpr int32_t kSmallWidth = 34;  // v, d, HP
constexpr int32_t kTimeWidth = 50;   // "06:12", and the heading "Nautical"
constexpr int32_t kGap = 8;

int32_t Hour_Top(int32_t hour) {
    const int32_t day = hour / 24, h = hour % 24;
    return kTableTop + day * (kDayHeight + kDayGap) + h * kRow + (h / 6) * kGroupGap;
}

std::string Upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

std::string Year_Text(int32_t year) {
    return year < 0 ? std::to_string(-year) + " BC" : std::to_string(year);
}

// The weekday as the heading abbreviates it: "TUE.", "THURS.".
std::string Weekday_Abbreviation(const std::string& name) {
    const std::string upper = Upper(name);
    const size_t length = upper.rfind("THU", 0) == 0 ? 5 : 3;
    return upper.substr(0, length) + ".";
}

class Page {
  public:
    explicit Page(int32_t width) { picture_.Width = width; picture_.Height = kPageHeight; }

    void Text(int32_t x, int32_t y, int32_t w, int32_t h, std::string text,
              PageFont font = PageFont::Value, PageAlign align = PageAlign::Right) {
        if (text.empty()) return;
        picture_.Texts.push_back({x, y, w, h, std::move(text), font, align});
    }
    void Line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, bool heavy = false) {
        picture_.Lines.push_back({x1, y1, x2, y2, heavy});
    }
    // A heading centred over columns [x, x + w) on the first heading row, with a rule under
    // it, and the headings of the columns on the second row.
    void Heading(int32_t x, int32_t w, const std::string& name) {
        Text(x, kHead1, w, kHeadHeight, name, PageFont::Heading, PageAlign::Centre);
    }
    void Sub_Heading(int32_t x, int32_t w, const std::string& name) {
        Text(x, kHead2, w, kHeadHeight, name, PageFont::Label, PageAlign::Centre);
    }
    void Value(int32_t x, int32_t w, int32_t hour, std::string text,
               PageAlign align = PageAlign::Right) {
        Text(x, Hour_Top(hour), w, kRow, std::move(text), PageFont::Value, align);
    }
    // The day and hour columns and the frame of the page: rules at the head, between the
    // days and at the foot of the hourly table.
    void Frame(const std::array<AlmanacDay, 3>& days, const std::string& heading,
               int32_t tableRight) {
        Text(kMargin, kTitleTop, picture_.Width - 2 * kMargin, kTitleHeight, heading,
             PageFont::Title, PageAlign::Centre);
        Text(kHourLeft - 4, kHead2, kHourWidth + 8, kHeadHeight, "GMT", PageFont::Label,
             PageAlign::Centre);
        Line(kMargin, kHead1 - 2, tableRight, kHead1 - 2, true);
        Line(kMargin, kTableTop - 3, tableRight, kTableTop - 3, true);
        for (int32_t d = 0; d < 3; ++d) {
            const int32_t top = Hour_Top(24 * d);
            Text(kDayLeft, top, kDayWidth, kRow + 2, std::to_string(days[d].Day),
                 PageFont::Heading, PageAlign::Left);
            Text(kDayLeft, top + kRow + 2, kDayWidth, kRow, days[d].Weekday.substr(0, 3),
                 PageFont::Label, PageAlign::Left);
            for (int32_t h = 0; h < 24; ++h) {
                char hh[4];
                std::snprintf(hh, sizeof hh, "%02d", h);
                Value(kHourLeft, kHourWidth, 24 * d + h, hh, PageAlign::Centre);
            }
            if (d > 0) Line(kMargin, top - kDayGap / 2 - 1, tableRight, top - kDayGap / 2 - 1, true);
        }
        Line(kMargin, kTableBottom, tableRight, kTableBottom, true);
    }
    // A rule down the page between columns, from the headings to the foot.
    void Column_Rule(int32_t x, int32_t top = kHead1 - 2, int32_t bottom = kTableBottom) {
        Line(x, top, x, bottom);
    }
    PagePicture Take() { return std::move(picture_); }

  private:
    PagePicture picture_;
};

// A column of GHA and Dec by the hour, with its heading: the Dec's hemisphere letter is in
// the text on the rows where the page prints it.
void Body_Columns(Page& page, int32_t x, const std::string& name,
                  const std::array<cAlmanac::Body_Row, cAlmanac::kHours>& rows) {
    page.Heading(x, kAngleWidth + kDecWidth, name);
    page.Sub_Heading(x, kAngleWidth, "GHA");
    page.Sub_Heading(x + kAngleWidth, kDecWidth, "Dec");
    for (int32_t h = 0; h < cAlmanac::kHours; ++h) {
        page.Value(x, kAngleWidth, h, rows[h].GHA);
        page.Value(x + kAngleWidth, kDecWidth, h, rows[h].Dec);
    }
}

}  // namespace

const PageText* PagePicture::Find(const std::string& text) const {
    for (const PageText& t : Texts)
        if (t.Text == text) return &t;
    return nullptr;
}

std::array<AlmanacDay, cAlmanac::kDays> Get_sDay(const MySystemTime& first, int32_t monthLength) {
    std::array<AlmanacDay, cAlmanac::kDays> days;
    for (int32_t i = 0; i < cAlmanac::kDays; ++i) {
        int32_t day = first.wDay + i;
        if (monthLength > 0 && day > monthLength) day -= monthLength;
        days[i].Day = day;
        days[i].Weekday = Weekday_Name((first.wDayOfWeek - 1 + i) % 7 + 1);
    }
    return days;
}

std::string Almanac_Heading(const MySystemTime& first, int32_t monthLength) {
    const auto days = Get_sDay(first, monthLength);
    std::string text = Year_Text(first.wYear) + " " + Upper(Month_Name(first.wMonth)) + " ";
    for (int32_t i = 0; i < cAlmanac::kDays; ++i) {
        if (i > 0) {
            text += ", ";
            if (days[i].Day < days[i - 1].Day) {
                // Into the next month, and at December's end the next year.
                const int32_t month = first.wMonth % 12 + 1;
                if (month == 1) text += Year_Text(first.wYear == -1 ? 1 : first.wYear + 1) + " ";
                text += Upper(Month_Name(month)) + " ";
            }
        }
        text += std::to_string(days[i].Day);
    }
    text += " (";
    for (int32_t i = 0; i < cAlmanac::kDays; ++i)
        text += (i ? ", " : "") + Weekday_Abbreviation(days[i].Weekday);
    return text + ")";
}

PagePicture Almanac_Left_Page(const cAlmanac& a, const std::array<AlmanacDay, 3>& days,
                              const std::string& heading) {
    const int32_t ariesX = kFirstColumn;
    const int32_t planetX = ariesX + kAngleWidth + kGap;
    const int32_t planetWidth = kAngleWidth + kDecWidth + kGap;
    const int32_t starX = planetX + 4 * planetWidth;
    const int32_t nameWidth = 92;
    const int32_t right = starX + nameWidth + kAngleWidth + kDecWidth + 4;
    Page page(right + kMargin);
    page.Frame(days, heading, right);

    page.Heading(ariesX, kAngleWidth, "ARIES");
    page.Sub_Heading(ariesX, kAngleWidth, "GHA");
    for (int32_t h = 0; h < cAlmanac::kHours; ++h) page.Value(ariesX, kAngleWidth, h, a.MyAriesCol()[h]);
    page.Column_Rule(ariesX - 3);

    const std::array<const cAlmanac::Planet_Column*, 4> planets = {
        &a.MyVenusCol(), &a.MyMarsCol(), &a.MyJupiterCol(), &a.MySaturnCol()};
    const std::array<const char*, 4> names = {"VENUS", "MARS", "JUPITER", "SATURN"};
    const std::array<const char*, 4> kPlanetNames = {"Venus", "Mars", "Jupiter", "Saturn"};
    for (size_t p = 0; p < planets.size(); ++p) {
        const int32_t x = planetX + static_cast<int32_t>(p) * planetWidth;
        Body_Columns(page, x, names[p], planets[p]->Rows);
        page.Column_Rule(x - 4);
    }

    // The stars of the middle day, down the page.
    page.Column_Rule(starX - 4);
    page.Heading(starX, nameWidth + kAngleWidth + kDecWidth, "STARS");
    page.Sub_Heading(starX, nameWidth, "Name");
    page.Sub_Heading(starX + nameWidth, kAngleWidth, "SHA");
    page.Sub_Heading(starX + nameWidth + kAngleWidth, kDecWidth, "Dec");
    const auto& stars = a.MyStarCol();
    for (size_t i = 0; i < stars.size() && i < static_cast<size_t>(cAlmanac::kHours); ++i) {
        const int32_t row = static_cast<int32_t>(i);
        page.Value(starX, nameWidth, row, stars[i].Name, PageAlign::Left);
        page.Value(starX + nameWidth, kAngleWidth, row, stars[i].SHA);
        page.Value(starX + nameWidth + kAngleWidth, kDecWidth, row, stars[i].Dec);
    }

    // The foot: Aries' passage; v, d and magnitude of each planet; their passages beside
    // the stars.
    const int32_t foot = kTableBottom + 6;
    page.Text(kMargin, foot, ariesX - kMargin, kFootRow, "Mer.Pass.", PageFont::Label,
              PageAlign::Left);
    page.Text(ariesX, foot, kAngleWidth, kFootRow, a.MyOtherData().AriesMerPass);
    page.Text(starX, foot, nameWidth + kAngleWidth + kDecWidth, kFootRow, "Mer.Pass.",
              PageFont::Heading, PageAlign::Centre);
    for (size_t p = 0; p < planets.size(); ++p) {
        const int32_t x = planetX + static_cast<int32_t>(p) * planetWidth;
        const cAlmanac::Planet_Column& col = *planets[p];
        page.Text(x, foot, kAngleWidth, kFootRow, "v  " + col.v, PageFont::Value,
                  PageAlign::Centre);
        page.Text(x + kAngleWidth, foot, kDecWidth, kFootRow, "d  " + col.d, PageFont::Value,
                  PageAlign::Centre);
        page.Text(x, foot + kFootRow, kAngleWidth + kDecWidth, kFootRow,
                  "Mag.  " + col.Magnitude, PageFont::Value, PageAlign::Centre);
        const int32_t y = foot + kFootRow * (1 + static_cast<int32_t>(p));
        page.Text(starX, y, nameWidth, kFootRow, kPlanetNames[p], PageFont::Value,
                  PageAlign::Left);
        page.Text(starX + nameWidth, y, kAngleWidth + kDecWidth, kFootRow, "M.P. " + col.MerPass,
                  PageFont::Value, PageAlign::Left);
    }
    return page.Take();
}

PagePicture Almanac_Right_Page(const cAlmanac& a, const std::array<AlmanacDay, 3>& days,
                               const std::string& heading) {
    const int32_t sunX = kFirstColumn;
    const int32_t moonX = sunX + kAngleWidth + kDecWidth + kGap;
    const int32_t latX = moonX + kAngleWidth + kSmallWidth + kDecWidth + 2 * kSmallWidth + 4 + kGap;
    const int32_t latWidth = 48;
    const int32_t cellX = latX + latWidth;
    const int32_t right = cellX + 6 * kTimeWidth + 4;
    Page page(right + kMargin);
    page.Frame(days, heading, right);

    Body_Columns(page, sunX, "SUN", a.MySunCol());
    page.Column_Rule(sunX - 3);
    page.Column_Rule(moonX - 4);
    page.Heading(moonX, kAngleWidth + kSmallWidth + kDecWidth + 2 * kSmallWidth + 4, "MOON");
    const std::array<int32_t, 5> moonCols = {kAngleWidth, kSmallWidth, kDecWidth, kSmallWidth,
                                             kSmallWidth + 4};
    const std::array<const char*, 5> moonHeads = {"GHA", "v", "Dec", "d", "HP"};
    std::array<int32_t, 5> moonLeft{};
    for (size_t c = 0, x = moonX; c < moonCols.size(); x += moonCols[c], ++c) {
        moonLeft[c] = static_cast<int32_t>(x);
        page.Sub_Heading(moonLeft[c], moonCols[c], moonHeads[c]);
    }
    for (int32_t h = 0; h < cAlmanac::kHours; ++h) {
        const cAlmanac::Moon_Row& r = a.MyMoonCol()[h];
        const std::array<const std::string*, 5> cells = {&r.GHA, &r.v, &r.Dec, &r.d, &r.HP};
        for (size_t c = 0; c < cells.size(); ++c) page.Value(moonLeft[c], moonCols[c], h, *cells[c]);
    }

    // The latitude tables: the morning above, the evening below. Twilight and the Sun's
    // rising and setting are the middle day's; the Moon's are given for each day.
    page.Column_Rule(latX - 4);
    const int32_t latRow = 14;
    const int32_t amTop = kTableTop;
    const int32_t pmHead = amTop + cAlmanac::kLatitudeRows * latRow + 6;
    const int32_t pmTop = pmHead + 2 * kHeadHeight + 6;
    auto cell_heads = [&](int32_t y1, int32_t y2, const std::array<const char*, 3>& sun,
                          const char* moon) {
        page.Text(latX, y2, latWidth, kHeadHeight, "Lat", PageFont::Label, PageAlign::Centre);
        page.Text(cellX, y1, 2 * kTimeWidth, kHeadHeight, "Twilight", PageFont::Label,
                  PageAlign::Centre);
        for (int32_t c = 0; c < 3; ++c) {
            const bool twilight = sun[c] != std::string("Sunrise") && sun[c] != std::string("Sunset");
            page.Text(cellX + c * kTimeWidth, twilight ? y2 : y1 + kHeadHeight / 2, kTimeWidth,
                      kHeadHeight, sun[c], PageFont::Label, PageAlign::Centre);
        }
        page.Text(cellX + 3 * kTimeWidth, y1, 3 * kTimeWidth, kHeadHeight, moon, PageFont::Label,
                  PageAlign::Centre);
        for (int32_t d = 0; d < 3; ++d)
            page.Text(cellX + (3 + d) * kTimeWidth, y2, kTimeWidth, kHeadHeight,
                      std::to_string(days[d].Day), PageFont::Label, PageAlign::Centre);
    };
    cell_heads(kHead1, kHead2, {"Nautical", "Civil", "Sunrise"}, "Moonrise");
    cell_heads(pmHead, pmHead + kHeadHeight, {"Sunset", "Civil", "Nautical"}, "Moonset");
    for (int32_t r = 0; r < cAlmanac::kLatitudeRows; ++r) {
        const auto& am = a.MyAmTwilights()[r];
        const auto& pm = a.MyPmTwilights()[r];
        const int32_t y1 = amTop + r * latRow, y2 = pmTop + r * latRow;
        for (int32_t y : {y1, y2})
            page.Text(latX, y, latWidth, latRow, cAlmanac::kLatitudeLabels[r], PageFont::Label,
                      PageAlign::Right);
        const std::array<const std::string*, 3> amCells = {&am[1].Nautical, &am[1].Civil,
                                                           &am[1].Sunrise};
        const std::array<const std::string*, 3> pmCells = {&pm[1].Sunset, &pm[1].Civil,
                                                           &pm[1].Nautical};
        for (int32_t c = 0; c < 3; ++c) {
            page.Text(cellX + c * kTimeWidth, y1, kTimeWidth, latRow, *amCells[c], PageFont::Value,
                      PageAlign::Centre);
            page.Text(cellX + c * kTimeWidth, y2, kTimeWidth, latRow, *pmCells[c], PageFont::Value,
                      PageAlign::Centre);
        }
        for (int32_t d = 0; d < 3; ++d) {
            page.Text(cellX + (3 + d) * kTimeWidth, y1, kTimeWidth, latRow, am[d].Moonrise,
                      PageFont::Value, PageAlign::Centre);
            page.Text(cellX + (3 + d) * kTimeWidth, y2, kTimeWidth, latRow, pm[d].Moonset,
                      PageFont::Value, PageAlign::Centre);
        }
        // A thin rule every fifth latitude keeps the eye on its row.
        if (r % 5 == 4 && r + 1 < cAlmanac::kLatitudeRows) {
            page.Line(latX, y1 + latRow, right, y1 + latRow);
            page.Line(latX, y2 + latRow, right, y2 + latRow);
        }
    }
    page.Line(latX - 4, pmHead - 3, right, pmHead - 3, true);
    page.Line(latX - 4, pmTop - 3, right, pmTop - 3, true);
    page.Column_Rule(cellX - 2);
    page.Column_Rule(cellX + 3 * kTimeWidth - 2);

    // The foot: SD and d of the Sun and the Moon, then the daily table of the Sun's
    // equation of time and passage and the Moon's passages, age and phase.
    const int32_t foot = kTableBottom + 6;
    const cAlmanac::Other_Data& other = a.MyOtherData();
    page.Text(sunX, foot, kAngleWidth + kDecWidth, kFootRow,
              "SD  " + other.SunSD + "     d  " + other.SunD, PageFont::Value, PageAlign::Centre);
    std::string moonSD = "SD ";
    for (const std::string& sd : other.MoonSD) moonSD += "  " + sd;
    page.Text(moonX, foot, latX - kGap - moonX, kFootRow, moonSD, PageFont::Value,
              PageAlign::Centre);

    // Columns of the daily table: Day | Eqn. of Time 00h, 12h | Mer. Pass. | Upper, Lower |
    // Age/ Vis.
    const int32_t dayW = 28, eqnW = 46, passW = 46, moonW = 46;
    const int32_t x0 = latX, x1 = x0 + dayW, x2 = x1 + 2 * eqnW, x3 = x2 + passW,
                  x4 = x3 + 2 * moonW, x5 = right;
    page.Text(x0, foot, x3 - x0, kFootRow, "SUN", PageFont::Heading, PageAlign::Centre);
    page.Text(x3, foot, x5 - x3, kFootRow, "MOON", PageFont::Heading, PageAlign::Centre);
    const int32_t h1 = foot + kFootRow, h2 = h1 + kFootRow;
    page.Text(x0, h2, dayW, kFootRow, "Day", PageFont::Label, PageAlign::Centre);
    page.Text(x1, h1, 2 * eqnW, kFootRow, "Eqn. of Time", PageFont::Label, PageAlign::Centre);
    page.Text(x1, h2, eqnW, kFootRow, "00h", PageFont::Label, PageAlign::Centre);
    page.Text(x1 + eqnW, h2, eqnW, kFootRow, "12h", PageFont::Label, PageAlign::Centre);
    page.Text(x2, h1, passW, kFootRow, "Mer.", PageFont::Label, PageAlign::Centre);
    page.Text(x2, h2, passW, kFootRow, "Pass.", PageFont::Label, PageAlign::Centre);
    page.Text(x3, h1, 2 * moonW, kFootRow, "Mer. Pass.", PageFont::Label, PageAlign::Centre);
    page.Text(x3, h2, moonW, kFootRow, "Upper", PageFont::Label, PageAlign::Centre);
    page.Text(x3 + moonW, h2, moonW, kFootRow, "Lower", PageFont::Label, PageAlign::Centre);
    page.Text(x4, h2, x5 - x4, kFootRow, "Age/ Vis", PageFont::Label, PageAlign::Centre);
    page.Line(x0, h2 + kFootRow, x5, h2 + kFootRow);
    page.Line(x3 - 2, foot, x3 - 2, h2 + 4 * kFootRow);
    for (int32_t d = 0; d < cAlmanac::kDays; ++d) {
        const cAlmanac::Daily_MP& m = a.MyDailyMPdata()[d];
        const int32_t y = h2 + kFootRow * (1 + d);
        page.Text(x0, y, dayW, kFootRow, std::to_string(days[d].Day), PageFont::Label,
                  PageAlign::Centre);
        page.Text(x1, y, eqnW, kFootRow, m.Eqn00, PageFont::Value, PageAlign::Centre);
        page.Text(x1 + eqnW, y, eqnW, kFootRow, m.Eqn12, PageFont::Value, PageAlign::Centre);
        page.Text(x2, y, passW, kFootRow, m.MerPass, PageFont::Value, PageAlign::Centre);
        page.Text(x3, y, moonW, kFootRow, m.MoonUpper, PageFont::Value, PageAlign::Centre);
        page.Text(x3 + moonW, y, moonW, kFootRow, m.MoonLower, PageFont::Value,
                  PageAlign::Centre);
        page.Text(x4, y, x5 - x4, kFootRow, m.Age + "  " + m.Vis, PageFont::Value,
                  PageAlign::Centre);
    }
    return page.Take();
}

}  // namespace kelmoran
