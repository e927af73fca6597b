#include "printing/cPrint_Gateway.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include "printing/cPrint_Generic.h"
#include "shell/File_Dialogs.h"
#include "shell/M_Kelmoran.h"
#include "shell/Screen_Rows.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace {

constexpr const char* kPrintTitle = "Print";

PrintHooks Default_Hooks() {
    PrintHooks h;
    h.Printers_Available = [] { return !QPrinterInfo::availablePrinterNames().isEmpty(); };
    h.Print_Dialog = [](QPrinter& printer, QWidget* parent) {
        QPrintDialog dialog(&printer, parent);
        return dialog.exec() == QDialog::Accepted;
    };
    h.Pdf_Path = [](QWidget* parent, const std::string& documentName) {
        QString name = QString::fromStdString(documentName);
        name.replace(" ~ ", " - ");
        const QString path = Save_File_Name(parent, "Save as PDF", "PDF Files (*.pdf)", name + ".pdf");
        if (path.isEmpty()) return std::string();
        return (path.endsWith(".pdf", Qt::CaseInsensitive) ? path : path + ".pdf").toStdString();
    };
    return h;
}

// The document's name: the job's word, or the word a run of pages gives itself.
std::string Document_Name(const PrintContent& content, const std::string& job) {
    const auto* pages = std::get_if<PagesPrint>(&content);
    if (pages && !pages->Word.empty()) return print_text::DocumentPrefix + pages->Word;
    return Print_Document_Name(job);
}

}  // namespace

PrintHooks& Print_Hooks() {
    static PrintHooks hooks = Default_Hooks();
    return hooks;
}

std::string cPrint_Gateway::Job(const PrintContent& content) const {
    if (!My_sOwner.empty()) return My_sOwner;
    if (const auto* grid = std::get_if<GridPrint>(&content))
        if (!grid->Owner.empty()) return grid->Owner;
    if (std::holds_alternative<SplashPrint>(content)) return screen_key::Splash;
    if (const auto* pages = std::get_if<PagesPrint>(&content)) return pages->Job;
    return Print_Job_Name(My_sOwner, Shell.ScreenName);
}

bool cPrint_Gateway::Start_Printing(const PrintContent& content, QWidget* parent) {
    if (!Print_Hooks().Printers_Available()) {
        if (Shell.Host) Shell.Host->Message_Box(print_text::NoPrinter, kPrintTitle, MsgButtons::OK);
        return false;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(Document_Name(content, Job(content))));
    Choose_Orientation(printer, content);
    if (!Print_Hooks().Print_Dialog(printer, parent)) return false;
    return Begin_Printing(printer, content);
}

bool cPrint_Gateway::Save_PDF(const PrintContent& content, const std::string& path) {
    if (path.empty()) return false;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(path));
    Choose_Orientation(printer, content);
    return Begin_Printing(printer, content);
}

void cPrint_Gateway::Choose_Orientation(QPrinter& printer, const PrintContent& content) {
    const auto* grid = std::get_if<GridPrint>(&content);
    if (!grid) return;
    const std::string job = Job(content);
    cPrint_Generic probe;
    const PrinterDetails details = Define.Get_Printer_Details(printer);
    Define.Restore_Printer(printer);
    probe.Area = Define.Set_Printer_Scalling(details, job);
    probe.Fonts = Define.Define_Printer_Fonts(details);
    probe.Initialize_Dimensions(*grid);
    if (Prefer_Landscape(probe.Fit())) printer.setPageOrientation(QPageLayout::Landscape);
}

bool cPrint_Gateway::Ask_And_Save_PDF(const PrintContent& content, QWidget* parent) {
    return Save_PDF(content, Print_Hooks().Pdf_Path(parent, Document_Name(content, Job(content))));
}

bool cPrint_Gateway::Begin_Printing(QPrinter& printer, const PrintContent& content) {
    const std::string job = Job(content);
    const auto* pages = std::get_if<PagesPrint>(&content);
    const QString name = QString::fromStdString(Document_Name(content, job));
    printer.setDocName(name);
    printer.setCreator("Kelmoran");
    const PrinterDetails details = Define.Get_Printer_Details(printer);
    cPrint_Generic page;
    page.sOwner = job;
    page.Area = Define.Set_Printer_Scalling(details, job);
    page.Fonts = Define.Define_Printer_Fonts(details);
    const auto* grid = std::get_if<GridPrint>(&content);
    const auto* splash = std::get_if<SplashPrint>(&content);
    const size_t titles = grid ? grid->Titles.size() : splash ? splash->Titles.size() : 0;
    page.My_rTitle = Define.Define_rTitle(page.Area, page.Fonts, static_cast<int32_t>(titles));
    if (grid) page.Initialize_Dimensions(*grid);

    QPainter p;
    if (!p.begin(&printer)) {
        Define.Restore_Printer(printer);
        return false;
    }
    if (grid)
        page.Print_Generic_Data(p, printer, *grid);
    else if (splash)
        page.Print_Splash(p, *splash);
    else
        page.Pages = Print_Pages(p, printer, page.Area, *pages);
    p.end();
    Pages = page.Pages;
    Define.Restore_Printer(printer);
    return true;
}

void Print_Or_Save(const PrintContent& content, bool toPdf, QWidget* parent) {
    cPrint_Gateway gateway;
    if (toPdf)
        gateway.Ask_And_Save_PDF(content, parent);
    else
        gateway.Start_Printing(content, parent);
}

void Print_Grid(const GridModel& grid, double jd, bool toPdf, QWidget* parent) {
    GridPrint print = Collect_Data(grid);
    print.Titles = Decide_Generic_Title(grid.Key, jd);
    Print_Or_Save(print, toPdf, parent);
}

void Print_Main_Page(const MainPage& page, double jd, bool toPdf, QWidget* parent) {
    Print_Or_Save(Splash_Print(page, jd), toPdf, parent);
}

void Print_Voyage_Plan(const VoyagePlan& plan, const GridModel* grid, bool toPdf,
                       QWidget* parent) {
    Print_Or_Save(NavPlan_Print(plan, grid), toPdf, parent);
}

}  // namespace kelmoran
