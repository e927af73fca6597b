#include "almanac/Almanac_Book.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "stars/M_Resources.h"

namespace kelmoran {

namespace {

constexpr int32_t kMargin = 40;
constexpr int32_t kTitleTop = 30;
constexpr int32_t kTitleHeight = 24;
constexpr int32_t kHeadTop = 70;
constexpr int32_t kHeadHeight = 16;

// Degrees per hour of Aries (the sidereal rate) and of the Moon's tabulated hour angle.
constexpr double kAriesPerDay = 360.98564736629;
constexpr double kMoonPerHour = 14.0 + 19.0 / 60.0;

// Minutes of arc rounded to the tenth (halves up, as the tables are read), as "3° 45'.0".
std::string Arc_Text(double minutes) {
    const long tenths = std::lround(std::floor(minutes * 10.0 + 0.5 + 1e-9));
    char buf[48];
    std::snprintf(buf, sizeof buf, "%ld° %02ld'.%ld", tenths / 600, (tenths % 600) / 10,
                  tenths % 10);
    return buf;
}

// Minutes of arc to the tenth, signed when asked: "+12'.3", "-0'.4", "5'.9".
std::string Minutes_Text(double minutes, bool sign) {
    const double r = std::floor(std::fabs(minutes) * 10.0 + 0.5 + 1e-9) / 10.0;
    char buf[48];
    const char* s = !sign ? "" : (minutes < 0.0 && r > 0.0 ? "-" : "+");
    std::snprintf(buf, sizeof buf, "%s%.0f'.%d", s, std::floor(r),
                  static_cast<int>(std::lround((r - std::floor(r)) * 10.0)));
    return buf;
}

// An altitude in minutes of arc, as the tables head their rows: "5° 35'".
std::string Altitude_Text(double minutes) {
    const long m = std::lround(minutes);
    char buf[48];
    std::snprintf(buf, sizeof buf, "%ld° %02ld'", m / 60, m % 60);
    return buf;
}

class BookPage {
  public:
    BookPage(const std::string& title, const std::string& subtitle = {}) {
        page_.Width = kBookPageWidth;
        page_.Height = kBookPageHeight;
        Text(kMargin, kTitleTop, kBookPageWidth - 2 * kMargin, kTitleHeight, title, PageFont::Title,
             PageAlign::Centre);
        if (!subtitle.empty())
            Text(kMargin, kTitleTop + kTitleHeight, kBookPageWidth - 2 * kMargin, kHeadHeight,
                 subtitle, PageFont::Label, PageAlign::Centre);
    }
    void Text(int32_t x, int32_t y, int32_t w, int32_t h, std::string text,
              PageFont font = PageFont::Value, PageAlign align = PageAlign::Right) {
        if (!text.empty()) page_.Texts.push_back({x, y, w, h, std::move(text), font, align});
    }
    void Line(int32_t x1, int32_t y1, int32_t x2, int32_t y2, bool heavy = false) {
        page_.Lines.push_back({x1, y1, x2, y2, heavy});
    }
    // A table's headings (one or two rows) over columns of the given widths from `x`, with
    // rules above and below; returns the top of the first row.
    int32_t Head(int32_t x, int32_t y, const std::vector<int32_t>& widths,
                 const std::vector<std::string>& top, const std::vector<std::string>& bottom) {
        int32_t left = x;
        for (size_t c = 0; c < widths.size(); ++c) {
            if (c < top.size())
                Text(left, y, widths[c], kHeadHeight, top[c], PageFont::Heading, PageAlign::Centre);
            if (c < bottom.size())
                Text(left, y + kHeadHeight, widths[c], kHeadHeight, bottom[c], PageFont::Label,
                     PageAlign::Centre);
            left += widths[c];
        }
        Line(x, y - 3, left, y - 3, true);
        const int32_t under = y + 2 * kHeadHeight + 2;
        Line(x, under, left, under, true);
        return under + 3;
    }
    PagePicture Take() { return std::move(page_); }

  private:
    PagePicture page_;
};

// Texts of a row in columns of the given widths from `x`.
void Row(BookPage& page, int32_t x, int32_t y, int32_t h, const std::vector<int32_t>& widths,
         const std::vector<std::string>& cells) {
    for (size_t c = 0; c < widths.size() && c < cells.size(); ++c) {
        page.Text(x, y, widths[c] - 6, h, cells[c]);
        x += widths[c];
    }
}

}  // namespace

double Increment_Sun_Planets(int32_t minute, int32_t second) {
    return (minute * 60 + second) * 0.25;
}

double Increment_Aries(int32_t minute, int32_t second) {
    return (minute * 60 + second) * kAriesPerDay / 86400.0 * 60.0;
}

double Increment_Moon(int32_t minute, int32_t second) {
    return (minute * 60 + second) * kMoonPerHour / 3600.0 * 60.0;
}

double Increment_Correction(int32_t minute, double v) {
    return v * (minute + 0.5) / 60.0;
}

PagePicture Increments_Page(int32_t minute) {
    char title[48];
    std::snprintf(title, sizeof title, "%dm INCREMENTS AND CORRECTIONS", minute);
    BookPage page(title);
    char mm[8];
    std::snprintf(mm, sizeof mm, "%02d", minute);
    const std::vector<int32_t> w = {44, 92, 92, 92, 14, 54, 58, 54, 58, 54, 58};
    const int32_t top = page.Head(kMargin, kHeadTop, w,
                                  {mm, "SUN", "ARIES", "MOON", "", "v", "", "v", "", "v", ""},
                                  {"s", "PLANETS", "", "", "", "or d", "Corr", "or d", "Corr",
                                   "or d", "Corr"});
    const int32_t row = 16;
    for (int32_t s = 0; s <= 60; ++s) {
        char ss[8];
        std::snprintf(ss, sizeof ss, "%02d", s);
        const int32_t y = top + s * row + (s / 5) * 2;
        std::vector<std::string> cells = {ss, Arc_Text(Increment_Sun_Planets(minute, s)),
                                          Arc_Text(Increment_Aries(minute, s)),
                                          Arc_Text(Increment_Moon(minute, s)), ""};
        for (int32_t c = 0; c < 3; ++c) {
            const double v = c * 6.0 + s * 0.1;
            cells.push_back(Minutes_Text(v, false));
            cells.push_back(Minutes_Text(Increment_Correction(minute, v), false));
        }
        Row(page, kMargin, y, row, w, cells);
    }
    return page.Take();
}

PagePicture Dip_Page() {
    BookPage page("DIP, AND ALTITUDE CORRECTIONS OF THE SUN, STARS AND PLANETS",
                  "Dip of the sea horizon = -1'.758 x square root of the height of eye in metres");
    // Dip: heights of eye by half metres, with feet beside them.
    const std::vector<int32_t> dw = {70, 70, 70};
    int32_t y = page.Head(kMargin, kHeadTop + 10, dw, {"Ht. of", "Ht. of", "Dip"},
                          {"Eye m", "Eye ft", ""});
    for (int32_t i = 1; i <= 60; ++i) {
        const double metres = i * 0.5;
        char m[16], ft[16];
        std::snprintf(m, sizeof m, "%.1f", metres);
        std::snprintf(ft, sizeof ft, "%.1f", metres / 0.3048);
        Row(page, kMargin, y, 16, dw, {m, ft, Minutes_Text(-1.758 * std::sqrt(metres), true)});
        y += 16 + (i % 5 == 0 ? 2 : 0);
    }
    // The Sun's limbs (semi-diameter 16'.1 in October to March, 15'.9 in April to
    // September) and stars and planets, by apparent altitude.
    const int32_t x = kMargin + 250;
    const std::vector<int32_t> aw = {70, 66, 66, 66, 66, 76};
    y = page.Head(x, kHeadTop + 10, aw,
                  {"App.", "Oct-Mar", "Oct-Mar", "Apr-Sept", "Apr-Sept", "Stars"},
                  {"Alt.", "Lower", "Upper", "Lower", "Upper", "Planets"});
    const std::array<double, 30> alts = {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 22, 24, 26, 28,
                                         30, 33, 36, 40, 45, 50, 55, 60, 65, 70, 75, 80, 85, 90, 0};
    for (size_t i = 0; i + 1 < alts.size(); ++i) {
        const double a = alts[i];
        const double r = -Refraction_Table(static_cast<float>(a * kOneDegree)) * kArcminPerRadian;
        Row(page, x, y, 16, aw,
            {Altitude_Text(a * 60.0), Minutes_Text(r + 16.1, true), Minutes_Text(r - 16.1, true),
             Minutes_Text(r + 15.9, true), Minutes_Text(r - 15.9, true), Minutes_Text(r, true)});
        y += 16 + (i % 5 == 4 ? 2 : 0);
    }
    return page.Take();
}

std::vector<PagePicture> Refraction_Pages() {
    // The starts of the printed rows, read back from the table itself: a row starts where
    // the refraction takes its tabulated value at the row's own altitude.
    static constexpr std::array<double, 161> kStarts = {
        0,    3,    6,    9,    12,   15,   18,   21,   24,   27,   30,   33,   36,   39,   42,
        45,   48,   51,   54,   57,   60,   63,   66,   69,   72,   75,   78,   81,   84,   87,
        90,   95,   100,  105,  110,  115,  120,  125,  130,  135,  140,  145,  150,  155,  160,
        165,  170,  175,  180,  185,  190,  195,  200,  205,  210,  215,  220,  225,  230,  235,
        240,  245,  250,  255,  260,  265,  270,  275,  280,  285,  290,  295,  300,  305,  310,
        315,  320,  325,  330,  335,  340,  345,  350,  355,  360,  370,  380,  390,  400,  410,
        420,  430,  440,  450,  460,  470,  480,  490,  500,  510,  520,  530,  540,  550,  560,
        570,  580,  590,  595,  607,  620,  632,  646,  659,  674,  689,  704,  720,  737,  755,
        773,  792,  812,  833,  856,  879,  903,  929,  956,  985,  1015, 1047, 1081, 1117, 1156,
        1196, 1240, 1287, 1337, 1391, 1449, 1512, 1580, 1654, 1734, 1822, 1918, 2023, 2138, 2265,
        2406, 2562, 2734, 2934, 3136, 3369, 3626, 3906, 4209, 4532, 4872};
    const std::array<double, 6> temps = {-20, -10, 0, 20, 30, 40};
    const std::array<double, 4> pressures = {970, 990, 1030, 1050};
    auto scale = [](double pressure, double temp) { return pressure * 0.28019801980198 / (temp + 273.0); };
    std::vector<PagePicture> pages;
    const int32_t perPage = 81;
    for (int32_t first = 0; first < static_cast<int32_t>(kStarts.size()); first += perPage) {
        BookPage page("REFRACTION",
                      "Mean refraction at 10 °C and 1010 mb, and its corrections for other "
                      "temperatures and pressures");
        std::vector<int32_t> w = {74, 62};
        std::vector<std::string> top = {"App.", "Mean"}, bottom = {"Alt.", "Refr."};
        for (double t : temps) {
            w.push_back(52);
            top.push_back(t == temps.front() ? "Temp." : "");
            bottom.push_back(std::to_string(static_cast<int>(t)) + "°");
        }
        for (double p : pressures) {
            w.push_back(54);
            top.push_back(p == pressures.front() ? "Press." : "");
            bottom.push_back(std::to_string(static_cast<int>(p)));
        }
        int32_t y = page.Head(kMargin, kHeadTop, w, top, bottom);
        for (int32_t i = first; i < first + perPage && i < static_cast<int32_t>(kStarts.size()); ++i) {
            const double r =
                Refraction_Table(static_cast<float>(kStarts[i] / kArcminPerRadian)) * kArcminPerRadian;
            std::vector<std::string> cells = {Altitude_Text(kStarts[i]), Minutes_Text(r, false)};
            for (double t : temps) cells.push_back(Minutes_Text(-r * (scale(1010, t) - 1.0), true));
            for (double p : pressures) cells.push_back(Minutes_Text(-r * (scale(p, 10) - 1.0), true));
            Row(page, kMargin, y, 12, w, cells);
            y += 12 + ((i + 1) % 5 == 0 ? 1 : 0);
        }
        pages.push_back(page.Take());
    }
    return pages;
}

double Moon_Altitude_Correction(double ha, double hp, bool upperLimb) {
    // As the reduction works a Moon sight: refraction of the apparent altitude, the
    // semi-diameter (0.2725 of the parallax's sine, the Moon's radius in the Earth's: IAU)
    // augmented for the Moon's nearness, and the parallax of the centre's zenith distance.
    const double refraction = Refraction_Apparent(static_cast<float>(ha));
    const double observed = ha - refraction;
    const double sinHP = std::sin(hp);
    const double sd0 = std::asin(0.2725 * sinHP);
    const double sd = sd0 * (1.0 + sinHP * std::sin(observed));
    const double limb = upperLimb ? -sd : sd;
    const double zd = kHalfPi - observed - limb;
    const double parallax = std::asin(sinHP * std::sin(zd));
    return (-refraction + limb + parallax) * kArcminPerRadian;
}

std::vector<PagePicture> Moon_Correction_Pages() {
    std::vector<PagePicture> pages;
    const std::array<double, 16> hps = {54.0, 54.5, 55.0, 55.5, 56.0, 56.5, 57.0, 57.5,
                                        58.0, 58.5, 59.0, 59.5, 60.0, 60.5, 61.0, 61.5};
    for (int32_t part = 0; part < 2; ++part) {
        BookPage page("ALTITUDE CORRECTION TABLES - MOON",
                      part == 0 ? "Apparent altitude 0° to 45°: lower limb, and upper limb below it"
                                : "Apparent altitude 45° to 90°: lower limb, and upper limb below it");
        std::vector<int32_t> w = {54};
        std::vector<std::string> top = {"App."}, bottom = {"Alt."};
        for (double hp : hps) {
            w.push_back(44);
            top.push_back(hp == hps.front() ? "H.P." : "");
            char buf[16];
            std::snprintf(buf, sizeof buf, "%.1f", hp);
            bottom.push_back(buf);
        }
        int32_t y = page.Head(kMargin - 16, kHeadTop, w, top, bottom);
        for (int32_t a = part * 45 + (part == 0 ? 0 : 1); a <= part * 45 + 45; ++a) {
            for (int32_t upper = 0; upper < 2; ++upper) {
                std::vector<std::string> cells = {upper ? "U" : Altitude_Text(a * 60.0)};
                for (double hp : hps)
                    cells.push_back(Minutes_Text(
                        Moon_Altitude_Correction(a * kOneDegree, hp / kArcminPerRadian, upper == 1),
                        false));
                Row(page, kMargin - 16, y, 10, w, cells);
                y += 10;
            }
            if (a % 5 == 4) y += 2;
        }
        pages.push_back(page.Take());
    }
    return pages;
}

std::vector<PagePicture> Monthly_Stars_Pages(int32_t year, bool julian) {
    if (Catalogue.empty()) Load_Star_Tables();
    std::array<double, 12> firsts{};
    for (int32_t m = 0; m < 12; ++m) {
        MySystemTime date;
        date.wYear = static_cast<int16_t>(year);
        date.wMonth = static_cast<int16_t>(m + 1);
        date.wDay = 1;
        date.wHour = 0;
        firsts[m] = Calc_JD(date, julian);
    }
    std::vector<const MainStarRow*> stars;
    for (const MainStarRow& s : MainStars)
        if (s.Star > 0) stars.push_back(&s);
    std::vector<PagePicture> pages;
    // Four months to a page: SHA and Dec of each star on the first of the month.
    static constexpr std::array<const char*, 3> kSpans = {" JANUARY - APRIL", " MAY - AUGUST",
                                                          " SEPTEMBER - DECEMBER"};
    for (int32_t part = 0; part < 3; ++part) {
        BookPage page("STARS, " + std::to_string(year) + kSpans[part],
                      "SHA and Dec on the first of each month, 0h UT");
        std::vector<int32_t> w = {96};
        std::vector<std::string> top = {"Name"}, bottom = {""};
        for (int32_t m = part * 4; m < part * 4 + 4; ++m) {
            w.push_back(76);
            w.push_back(82);
            top.push_back(Month_Short_Name(m + 1));
            top.push_back("");
            bottom.push_back("SHA");
            bottom.push_back("Dec");
        }
        int32_t y = page.Head(kMargin, kHeadTop, w, top, bottom);
        for (size_t i = 0; i < stars.size(); ++i) {
            page.Text(kMargin, y, w[0], 15, stars[i]->Name, PageFont::Value, PageAlign::Left);
            int32_t x = kMargin + w[0];
            for (int32_t m = part * 4; m < part * 4 + 4; ++m) {
                double ra = 0.0, dec = 0.0;
                Calc_Star_Place(stars[i]->Star, ra, dec, firsts[m]);
                page.Text(x, y, w[1] - 6, 15, Arc_Text(Reduce_2Pi(kTwoPi - ra) * kArcminPerRadian));
                page.Text(x + w[1], y, w[2] - 6, 15, Format_Lat(dec, 1, true));
                x += w[1] + w[2];
            }
            y += 15 + (i % 5 == 4 ? 3 : 0);
        }
        pages.push_back(page.Take());
    }
    return pages;
}

PagePicture Book_Title_Page(int32_t year) {
    BookPage page("");
    const std::string y = year < 0 ? std::to_string(-year) + " BC" : std::to_string(year);
    page.Text(0, 300, kBookPageWidth, 40, "THE NAUTICAL ALMANAC", PageFont::Title, PageAlign::Centre);
    page.Text(0, 350, kBookPageWidth, 40, "FOR THE YEAR " + y, PageFont::Title, PageAlign::Centre);
    page.Text(0, 430, kBookPageWidth, 20, "computed by Kelmoran", PageFont::Label, PageAlign::Centre);
    page.Line(200, 410, kBookPageWidth - 200, 410, true);
    return page.Take();
}

PagePicture Book_Contents_Page(int32_t year,
                               const std::vector<std::pair<std::string, int32_t>>& parts) {
    BookPage page("CONTENTS", year < 0 ? std::to_string(-year) + " BC" : std::to_string(year));
    int32_t y = 120;
    for (const auto& [name, first] : parts) {
        page.Text(kMargin + 60, y, 480, 20, name, PageFont::Value, PageAlign::Left);
        page.Text(kMargin + 540, y, 120, 20, "page " + std::to_string(first), PageFont::Value,
                  PageAlign::Right);
        y += 24;
    }
    return page.Take();
}

}  // namespace kelmoran
