// Printing of pages that are set in page units: the Almanac window's opening and the
// tables of the book ("Print Book"). Each page is scaled to the printable area (keeping its
// shape) and centred in it, the binding margin at the left, with its number at the foot.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "almanac/Almanac_Opening.h"
#include "printing/M_Print.h"

class QPainter;
class QRectF;
class QPrinter;
class QWidget;

namespace kelmoran {

struct PagesPrint {
    std::string Job = print_job::Book;  // print_job::Almanac for the window's opening
    std::string Word;                   // of the document's name: "Increments and Corrections"
    int32_t Count = 0;                  // pages
    // Page `index` (0 .. Count - 1), made when it is printed.
    std::function<PagePicture(int32_t index)> Page;
    // Or a page that paints itself into the printable `area` (device pixels), for pages
    // that are more than texts and rules (the eclipse's map).
    std::function<void(QPainter& p, const QRectF& area, int32_t index)> Paint;
    // Called before each page with the pages done; false stops the print (Cancel).
    std::function<bool(int32_t done, int32_t total)> Progress;
};

// Prints the pages on `p`, which paints on `printer`; the pages printed.
int32_t Print_Pages(QPainter& p, QPrinter& printer, const PrintArea& area, const PagesPrint& pages);

// The items of "Print Book": "Dip etc", "Almanac", "Increments and Corrections",
// "Refraction", "Moon Corrections", "Monthly Stars", "Complete Almanac". The daily pages
// run from `firstDay` (0h UT) for `days` days; the monthly stars and the complete almanac
// are for `year`.
PagesPrint Book_Item(const std::string& item, double firstDay, int32_t days, int32_t year,
                     bool julian);

// The Almanac window's opening that starts at `jd` (0h UT): its left and right page.
PagesPrint Almanac_Opening_Print(double jd, const MySystemTime& first, int32_t monthLength);

class AlmanacWindow;
// "Print" of the Almanac window: its opening to the printer, or to a PDF file where there
// is no printer.
void Print_Almanac_Opening(AlmanacWindow& window);

}  // namespace kelmoran
