// Where every print begins: the printer is asked for (or, with none, the message that
// there is none), the page and its scale are found, the fonts of the job made, the page
// class given its values and its pages printed. Every print can also go to a PDF file
// chosen in a file dialogue, the same pages with no printer installed.
#pragma once

#include <functional>
#include <string>
#include <variant>

#include "printing/M_Print.h"
#include "printing/cPrint_Book.h"
#include "printing/cPrint_Define.h"

class QPrinter;
class QWidget;

namespace kelmoran {

struct MainPage;
class VoyagePlan;

// What a job prints: a grid (the voyage plan is one, two lines a way point), Main's page,
// or pages set in page units (the Almanac's opening and the book).
using PrintContent = std::variant<GridPrint, SplashPrint, PagesPrint>;

// The platform's side, which tests replace: whether any printer is installed, the print
// dialogue (true when the user chose to print), and the file dialogue of "Save as PDF..."
// ("" when cancelled).
struct PrintHooks {
    std::function<bool()> Printers_Available;
    std::function<bool(QPrinter& printer, QWidget* parent)> Print_Dialog;
    std::function<std::string(QWidget* parent, const std::string& documentName)> Pdf_Path;
};
PrintHooks& Print_Hooks();

class cPrint_Gateway {
  public:
    // `owner` is the job's name; empty for the grid screens, whose key is then used.
    explicit cPrint_Gateway(std::string owner = {}) : My_sOwner(std::move(owner)) {}

    // "Print": asks for a printer and prints; with no printer, the message and nothing
    // more. False when nothing was printed.
    bool Start_Printing(const PrintContent& content, QWidget* parent);
    // "Save as PDF...": the same pages to the file `path`.
    bool Save_PDF(const PrintContent& content, const std::string& path);
    // "Save as PDF..." with the file dialogue first.
    bool Ask_And_Save_PDF(const PrintContent& content, QWidget* parent);

    // Prints `content` on a printer that is set up: the document name, the page, the
    // fonts, then the page class's own routine.
    bool Begin_Printing(QPrinter& printer, const PrintContent& content);

    std::string My_sOwner;
    cPrint_Define Define;
    // Pages of the last job.
    int32_t Pages = 0;

  private:
    std::string Job(const PrintContent& content) const;
    // Turns the sheet for a grid that would print much smaller across a standing page.
    void Choose_Orientation(QPrinter& printer, const PrintContent& content);
};

// "Print" (`toPdf` false) or "Save as PDF..." of any content, as a new job.
void Print_Or_Save(const PrintContent& content, bool toPdf, QWidget* parent);
// The grid screens' "Print" and "Save as PDF...": what `grid` shows at `jd` with the
// screen's titles. `toPdf` asks for a file instead of a printer.
void Print_Grid(const GridModel& grid, double jd, bool toPdf, QWidget* parent);
// Main's page at `jd`.
void Print_Main_Page(const MainPage& page, double jd, bool toPdf, QWidget* parent);
// The voyage plan, two lines a way point, in the columns of the Voyage screen's `grid`
// (or the usual ones without it).
void Print_Voyage_Plan(const VoyagePlan& plan, const GridModel* grid, bool toPdf,
                       QWidget* parent);

}  // namespace kelmoran
