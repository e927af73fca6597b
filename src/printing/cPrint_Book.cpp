#include "printing/cPrint_Book.h"

#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <cmath>
#include <memory>

#include "almanac/AlmanacWindow.h"
#include "almanac/Almanac_Book.h"
#include "settings/M_Formatting.h"

namespace kelmoran {

namespace {

// The daily pages of `days` days from `firstDay`: two pages an opening of three days. The
// opening of the page asked for is worked once and kept for its other page.
struct DailyPages {
    double FirstDay = 0.0;
    bool Julian = false;
    int32_t Openings = 0;
    int32_t Worked = -1;
    cAlmanac Almanac;
    std::array<AlmanacDay, 3> Days{};
    std::string Heading;

    PagePicture Page(int32_t index) {
        const int32_t opening = index / 2;
        if (opening != Worked) {
            const double jd = FirstDay + 3.0 * opening;
            Almanac.MyJD(jd);
            MySystemTime date;
            int32_t monthLength = 0;
            {
                const CalendarScope scope(Julian);
                date = JD_To_Date(jd + 0.25);
                monthLength = Get_Month_Length(date.wMonth, date.wYear);
            }
            date.wDayOfWeek = Weekday_Of_JD(jd + 0.25);
            Days = Get_sDay(date, monthLength);
            Heading = Almanac_Heading(date, monthLength);
            Worked = opening;
        }
        return index % 2 == 0 ? Almanac_Left_Page(Almanac, Days, Heading)
                              : Almanac_Right_Page(Almanac, Days, Heading);
    }
};

// A book part: its title for the contents and its pages.
struct Part {
    std::string Title;
    int32_t Count = 0;
    std::function<PagePicture(int32_t)> Page;
};

Part Fixed_Part(const std::string& title, std::vector<PagePicture> pages) {
    auto shared = std::make_shared<std::vector<PagePicture>>(std::move(pages));
    return {title, static_cast<int32_t>(shared->size()),
            [shared](int32_t i) { return (*shared)[static_cast<size_t>(i)]; }};
}

Part Daily_Part(double firstDay, int32_t days, bool julian) {
    auto daily = std::make_shared<DailyPages>();
    daily->FirstDay = firstDay;
    daily->Julian = julian;
    daily->Openings = std::max(1, (days + 2) / 3);
    return {"Daily pages", 2 * daily->Openings, [daily](int32_t i) { return daily->Page(i); }};
}

Part Increments_Part() {
    return {"Increments and Corrections", 60, [](int32_t i) { return Increments_Page(i); }};
}

// Parts one after another as one run of pages.
PagesPrint Join(const std::string& word, std::vector<Part> parts) {
    auto all = std::make_shared<std::vector<Part>>(std::move(parts));
    PagesPrint print;
    print.Word = word;
    for (const Part& p : *all) print.Count += p.Count;
    print.Page = [all](int32_t index) {
        for (const Part& p : *all) {
            if (index < p.Count) return p.Page(index);
            index -= p.Count;
        }
        return PagePicture{};
    };
    return print;
}

double First_Of_Year(int32_t year, bool julian) {
    MySystemTime date;
    date.wYear = static_cast<int16_t>(year);
    date.wMonth = 1;
    date.wDay = 1;
    date.wHour = 0;
    return Calc_JD(date, julian);
}

}  // namespace

int32_t Print_Pages(QPainter& p, QPrinter& printer, const PrintArea& area, const PagesPrint& pages) {
    QFont small("DejaVu Serif");
    small.setPixelSize(std::max(8, static_cast<int>(std::lround(10.0 * area.ScaleY))));
    int32_t printed = 0;
    for (int32_t i = 0; i < pages.Count; ++i) {
        if (pages.Progress && !pages.Progress(i, pages.Count)) break;
        // The page's number takes a line at the foot of the printable area.
        const double foot = small.pixelSize() * 2.0;
        if (pages.Paint) {
            if (printed > 0) printer.newPage();
            pages.Paint(p, QRectF(area.Left, area.Top, area.pWidth, area.pHeight - foot), i);
        } else {
            const PagePicture page = pages.Page(i);
            if (page.Width <= 0 || page.Height <= 0) continue;
            if (printed > 0) printer.newPage();
            const double scale = std::min(area.pWidth / static_cast<double>(page.Width),
                                          (area.pHeight - foot) / static_cast<double>(page.Height));
            const double x = area.Left + (area.pWidth - page.Width * scale) / 2.0;
            Paint_Page(p, page, scale, x, area.Top);
        }
        p.setFont(small);
        p.setPen(Qt::black);
        p.drawText(QRectF(area.Left, area.Top + area.pHeight - foot, area.pWidth, foot),
                   Qt::AlignCenter, QString::number(i + 1));
        ++printed;
    }
    return printed;
}

PagesPrint Book_Item(const std::string& item, double firstDay, int32_t days, int32_t year,
                     bool julian) {
    if (item == "Dip etc") return Join(item, {Fixed_Part(item, {Dip_Page()})});
    if (item == "Almanac") return Join(item, {Daily_Part(firstDay, days, julian)});
    if (item == "Increments and Corrections") return Join(item, {Increments_Part()});
    if (item == "Refraction") return Join(item, {Fixed_Part(item, Refraction_Pages())});
    if (item == "Moon Corrections") return Join(item, {Fixed_Part(item, Moon_Correction_Pages())});
    if (item == "Monthly Stars")
        return Join(item, {Fixed_Part(item, Monthly_Stars_Pages(year, julian))});
    // "Complete Almanac": the year in a nautical almanac's order, behind its title page and
    // contents.
    const double first = First_Of_Year(year, julian);
    const int32_t length = static_cast<int32_t>(std::lround(First_Of_Year(year + (year == -1 ? 2 : 1), julian) - first));
    std::vector<Part> body = {Fixed_Part("Dip, and altitude corrections of the Sun, stars and planets", {Dip_Page()}),
                              Daily_Part(first, length, julian),
                              Fixed_Part("Stars, month by month", Monthly_Stars_Pages(year, julian)),
                              Increments_Part(),
                              Fixed_Part("Refraction", Refraction_Pages()),
                              Fixed_Part("Altitude corrections of the Moon", Moon_Correction_Pages())};
    std::vector<std::pair<std::string, int32_t>> contents;
    int32_t page = 3;  // after the title page and the contents
    for (const Part& p : body) {
        contents.emplace_back(p.Title, page);
        page += p.Count;
    }
    body.insert(body.begin(), {Fixed_Part("Title", {Book_Title_Page(year)}),
                               Fixed_Part("Contents", {Book_Contents_Page(year, contents)})});
    return Join(item, std::move(body));
}

PagesPrint Almanac_Opening_Print(double jd, const MySystemTime& first, int32_t monthLength) {
    auto almanac = std::make_shared<cAlmanac>();
    almanac->MyJD(jd);
    const auto days = Get_sDay(first, monthLength);
    const std::string heading = Almanac_Heading(first, monthLength);
    PagesPrint print;
    print.Job = print_job::Almanac;
    print.Word = "Almanac";
    print.Count = 2;
    print.Page = [almanac, days, heading](int32_t i) {
        return i == 0 ? Almanac_Left_Page(*almanac, days, heading)
                      : Almanac_Right_Page(*almanac, days, heading);
    };
    return print;
}

}  // namespace kelmoran
