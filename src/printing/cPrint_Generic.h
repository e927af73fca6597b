// The pages of a grid screen: the title lines, the headings with a rule beneath them and
// the rows, on as many pages as it takes with the title and headings on each; the voyage
// plan in two lines a way point; Main's page in its two blocks.
#pragma once

#include <QPainter>
#include <QRect>
#include <string>

#include "printing/M_Print.h"
#include "printing/cPrint_Define.h"

class QPagedPaintDevice;

namespace kelmoran {

class cPrint_Generic {
  public:
    // Set by the gateway before printing.
    PrintArea Area;
    PrintFonts Fonts;
    QRect My_rTitle;
    std::string sOwner;

    // Takes the job's content: the columns' printed widths and the font factor that fits
    // the table on the page (Test_Heading_Widths and Test_Data_Widths in one).
    void Initialize_Dimensions(const GridPrint& print);
    const TableFit& Fit() const { return fit_; }

    // Every page of a grid (one entry a line) or of the voyage plan (two).
    void Print_Generic_Data(QPainter& p, QPagedPaintDevice& device, const GridPrint& print);
    void Print_NavPlan(QPainter& p, QPagedPaintDevice& device, const GridPrint& plan) {
        Print_Generic_Data(p, device, plan);
    }
    // Main's page: the titles, then the day's block beside the Moon's.
    void Print_Splash(QPainter& p, const SplashPrint& page);

    // Pages the last print had.
    int32_t Pages = 0;

  private:
    void Draw_Title(QPainter& p, const std::vector<std::string>& titles) const;
    int32_t Draw_Headings(QPainter& p, const GridPrint& print, int32_t top) const;
    void Draw_Cell(QPainter& p, const GridPrint& print, size_t column, const QRect& cell,
                   const std::string& text, bool secondLine, uint32_t ink) const;
    void Draw_Page_Number(QPainter& p, int32_t page, int32_t pages) const;

    TableFit fit_;
    int32_t lineHeight_ = 0;
    int32_t headingHeight_ = 0;
};

}  // namespace kelmoran
