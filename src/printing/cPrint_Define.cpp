#include "printing/cPrint_Define.h"

#include <QFontMetrics>
#include <QPageLayout>
#include <QPrinter>
#include <algorithm>
#include <cmath>

namespace kelmoran {

namespace {

QFont Print_Font(double pixels, bool bold) {
    QFont f(kPrintFamily);
    f.setPixelSize(std::max(static_cast<int>(std::lround(pixels)), 1));
    f.setBold(bold);
    // No ligatures: "fi" stays two letters, so that the PDF's text reads and searches as
    // it prints.
    f.setStyleStrategy(QFont::PreferNoShaping);
    return f;
}

// Sizes of the fonts in points: a table reads at 8 points on paper, whatever the width
// of the page; a table too wide for that is printed smaller (Define_Generic_Fonts).
constexpr double kStdPoints = 8.0;
constexpr double kTitlePoints = 14.0;
constexpr double kSmallPoints = 6.5;

}  // namespace

PrinterDetails cPrint_Define::Get_Printer_Details(QPrinter& printer) {
    fullPage_ = printer.fullPage();
    const int dpi = printer.resolution();
    const QPageLayout layout = printer.pageLayout();
    const QRect full = layout.fullRectPixels(dpi);
    const QRect paint = layout.paintRectPixels(dpi);
    const int minimum = static_cast<int>(std::lround(kMinimumMarginMM / 25.4 * dpi));
    PrinterDetails d;
    d.PageWidth = full.width();
    d.PageHeight = full.height();
    d.DpiX = printer.logicalDpiX();
    d.DpiY = printer.logicalDpiY();
    d.OffsetX = std::max({paint.left(), full.width() - paint.right() - 1, minimum});
    d.OffsetY = std::max({paint.top(), full.height() - paint.bottom() - 1, minimum});
    printer.setFullPage(true);
    return d;
}

PrintArea cPrint_Define::Set_Printer_Scalling(const PrinterDetails& details,
                                              const std::string& job) const {
    return Printable_Area(details, job);
}

PrintFonts cPrint_Define::Define_Printer_Fonts(const PrinterDetails& details) const {
    // Points to device pixels, in the vertical resolution.
    const double px = details.DpiY > 0 ? details.DpiY / 72.0 : 1.0;
    PrintFonts f;
    f.pStdFont = Print_Font(kStdPoints * px, false);
    f.pHdrFont = Print_Font(kStdPoints * px, true);
    f.pTitleFont = Print_Font(kTitlePoints * px, true);
    f.pSmallFont = Print_Font(kSmallPoints * px, false);
    f.pVertFont = Print_Font(kStdPoints * px, false);
    f.pGreekFont = Print_Font(kStdPoints * px, false);
    f.OriginalFont = Print_Font(kStdPoints * px, false);
    return f;
}

PrintFonts cPrint_Define::Define_Generic_Fonts(const PrintFonts& fonts, float factor) const {
    if (factor >= 1.0f) return fonts;
    PrintFonts f = fonts;
    for (QFont* font : {&f.pStdFont, &f.pHdrFont, &f.pGreekFont, &f.pVertFont}) {
        font->setPixelSize(std::max(static_cast<int>(std::lround(font->pixelSize() * factor)), 1));
    }
    return f;
}

QRect cPrint_Define::Define_rTitle(const PrintArea& area, const PrintFonts& fonts,
                                   int32_t lines) const {
    const QFontMetrics title(fonts.pTitleFont);
    const QFontMetrics hdr(fonts.pHdrFont);
    const int height = lines <= 0 ? 0
                                  : title.height() * 3 / 2 +
                                        (lines - 1) * hdr.height() * 3 / 2 + hdr.height() / 2;
    return QRect(area.Left, area.Top, area.pWidth, height);
}

void cPrint_Define::Restore_Printer(QPrinter& printer) { printer.setFullPage(fullPage_); }

}  // namespace kelmoran
