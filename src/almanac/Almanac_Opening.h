// One opening of the almanac set as a printed nautical almanac sets it: the left page
// (Aries, the four navigational planets, the stars) and the right page (the Sun, the
// Moon, the latitude tables of twilight, sunrise and moonrise, and the daily table at the
// foot), three days of 24 hours down each page.
//
// The layout is a list of texts and rules in page units (one unit is one pixel of the
// screen at its normal size); the window paints it on its picture and a print scales it to
// the paper. Every value is cAlmanac's text, as the page computes and rounds it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "almanac/cAlmanac.h"
#include "ephemeris/Time_Calcs.h"

namespace kelmoran {

enum class PageFont {
    Value,    // the tabulated figures
    Heading,  // the names of the bodies and of the tables, bold
    Label,    // column headings and the hours
    Title,    // the line at the head of the page, bold and larger
};
enum class PageAlign { Left, Centre, Right };

struct PageText {
    int32_t X = 0, Y = 0, W = 0, H = 0;  // the box the text is set in
    std::string Text;
    PageFont Font = PageFont::Value;
    PageAlign Align = PageAlign::Right;
};

struct PageLine {
    int32_t X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    bool Heavy = false;  // the frame and the rules between days
};

struct PagePicture {
    int32_t Width = 0, Height = 0;
    std::vector<PageText> Texts;
    std::vector<PageLine> Lines;

    // The first text that reads `text` exactly, or nullptr.
    const PageText* Find(const std::string& text) const;
};

// A day of the opening: the day of the month and the name of the weekday.
struct AlmanacDay {
    int32_t Day = 0;
    std::string Weekday;  // "Tuesday"
};

// The three days of the opening from the date strip's record of the first day (its day of
// the week filled in) and the length of its month: the days of the month go on across the
// month's end (30, 31, 1).
std::array<AlmanacDay, cAlmanac::kDays> Get_sDay(const MySystemTime& first, int32_t monthLength);

// The heading line of the opening: "2026 NOVEMBER 24, 25, 26 (TUE., WED., THURS.)"; a
// month's end names both months ("2026 NOVEMBER 30, DECEMBER 1, 2 (MON., TUE., WED.)") and
// a year's end both years. Years before Christ as "45 BC".
std::string Almanac_Heading(const MySystemTime& first, int32_t monthLength);

PagePicture Almanac_Left_Page(const cAlmanac& page, const std::array<AlmanacDay, 3>& days,
                              const std::string& heading);
PagePicture Almanac_Right_Page(const cAlmanac& page, const std::array<AlmanacDay, 3>& days,
                               const std::string& heading);

}  // namespace kelmoran
