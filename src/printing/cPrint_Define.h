// The printer's side of a job: the sheet, its resolution and unprintable edges in device
// pixels, the printable area and scale of the job, and the fonts of the job (DejaVu in
// place of the Windows faces; Greek letters by their code points).
#pragma once

#include <QFont>
#include <QRect>
#include <string>
#include <vector>

#include "printing/M_Print.h"

class QPrinter;

namespace kelmoran {

// The fonts handed to a page class.
struct PrintFonts {
    QFont pStdFont;    // the cells
    QFont pHdrFont;    // headings, bold
    QFont pTitleFont;  // the first title line
    QFont pSmallFont;  // page numbers, notes
    QFont pVertFont;   // text that a page draws turned on its side
    QFont pGreekFont;  // the Greek letters of designations
    QFont OriginalFont;
};

// The narrowest margin a page keeps, even where the device could print to the edge (a PDF).
inline constexpr double kMinimumMarginMM = 10.0;

class cPrint_Define {
  public:
    // Sheet size, resolution and margins of `printer`, in device pixels; puts the printer
    // in full-page mode so that the painter's origin is the sheet's corner.
    PrinterDetails Get_Printer_Details(QPrinter& printer);
    // The printable area and scale of `job`.
    PrintArea Set_Printer_Scalling(const PrinterDetails& details, const std::string& job) const;
    // The job's fonts in the printer's pixels.
    PrintFonts Define_Printer_Fonts(const PrinterDetails& details) const;
    // The grid fonts shrunk (or kept) by `factor`, as a table that is wider than the page
    // needs.
    PrintFonts Define_Generic_Fonts(const PrintFonts& fonts, float factor) const;
    // The rectangle of the title lines at the top of the printable area.
    QRect Define_rTitle(const PrintArea& area, const PrintFonts& fonts, int32_t lines) const;
    // Puts the printer's page mode back after the job.
    void Restore_Printer(QPrinter& printer);

  private:
    bool fullPage_ = false;
};

// The family that stands in for the Windows faces.
inline constexpr const char* kPrintFamily = "DejaVu Sans";

}  // namespace kelmoran
