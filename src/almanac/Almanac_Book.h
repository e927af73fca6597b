// The tables of the printed almanac that are not daily pages, set as pages of the same
// kind (PagePicture, in page units) so that the print frame prints them like the daily
// pages: the increments and corrections, dip, refraction, the Moon's altitude
// corrections, the stars month by month, and the title and contents of a year's book.
#pragma once

#include <string>
#include <vector>

#include "almanac/Almanac_Opening.h"

namespace kelmoran {

// A book page is a standing page of these page units; the print scales it to the paper.
inline constexpr int32_t kBookPageWidth = 820;
inline constexpr int32_t kBookPageHeight = 1160;

// Increments of hour angle for `minute` (0 .. 59) and `second` (0 .. 60) of time past the
// hour, in minutes of arc, unrounded:
//   Sun and planets  15° an hour (0'.25 a second);
//   Aries            the sidereal rate, 360.98564736629° a day (IAU 1982, as the
//                    Explanatory Supplement gives it): 15° 02'.4643 an hour;
//   Moon             14° 19'.0 an hour, the rate the almanac's v is counted from.
double Increment_Sun_Planets(int32_t minute, int32_t second);
double Increment_Aries(int32_t minute, int32_t second);
double Increment_Moon(int32_t minute, int32_t second);
// The v or d correction of the page for `minute`: v (or d) times the middle of the
// minute, v (m + 0.5) / 60, in minutes of arc, unrounded.
double Increment_Correction(int32_t minute, double v);

// The page of increments and corrections for `minute` (0 .. 59): seconds 00 to 60 down the
// page, with the Sun and planets, Aries and the Moon, and three columns of v or d from 0'.0
// to 18'.0 with their corrections.
PagePicture Increments_Page(int32_t minute);

// "Dip etc": dip of the sea horizon by height of eye (1'.758 times the square root of the
// height in metres, as the program corrects a sight), and the corrections of the Sun's
// limbs and of stars and planets by apparent altitude, from the printed mean refraction.
PagePicture Dip_Page();

// The printed table of mean refraction, its 161 rows, with the corrections for other
// temperatures (at 1010 mb) and pressures (at 10 °C) that the program's atmospheric scale
// gives (pressure x 283 / 1010 / (temperature + 273)). Two pages.
std::vector<PagePicture> Refraction_Pages();

// The Moon's altitude corrections by apparent altitude (0° to 90°) and horizontal parallax
// (54'.0 to 61'.5): refraction, parallax in altitude and semi-diameter of the lower limb,
// and the difference for the upper limb.
std::vector<PagePicture> Moon_Correction_Pages();
// The Moon's total correction of a lower-limb (or upper-limb) apparent altitude `ha`
// (radians) for horizontal parallax `hp` (radians), in minutes of arc.
double Moon_Altitude_Correction(double ha, double hp, bool upperLimb);

// The navigational stars' SHA and Dec on the first of each month of `year`, in the
// calendar `julian`.
std::vector<PagePicture> Monthly_Stars_Pages(int32_t year, bool julian);

// The title page of a year's almanac and its contents, from the titles and first pages of
// its parts.
PagePicture Book_Title_Page(int32_t year);
PagePicture Book_Contents_Page(int32_t year, const std::vector<std::pair<std::string, int32_t>>& parts);

}  // namespace kelmoran
