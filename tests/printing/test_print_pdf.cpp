// Prints of the grid screens, Main and the voyage plan written to PDF headless through the
// program's menus, read back with Poppler (pdftotext, pdfinfo) and drawn to PNG for looking
// at (<build>/print_pages/).
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>

#include "printing/cPrint_Gateway.h"
#include "shell/Screen_Cases.h"
#include "shell/Ui_Screens.h"

namespace kelmoran {
namespace {

using namespace testing_dates;

QString Tool(const QString& tool, const QStringList& args) {
    QProcess p;
    p.start(tool, args);
    p.waitForFinished(60000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

class PrintPdf : public ::testing::Test {
  protected:
    void SetUp() override {
        Settings.AutoTimeZone = 0;
        w = std::make_unique<fMain>();
        Observe_From(50.0, -4.0);
        w->resize(1000, 700);
        w->show();
        Shell.CurrentJD = Moment(2024, 3, 20, 21, 30);
        Update_All_Screens("");
        QDir(KELMORAN_BINARY_DIR).mkpath("print_pages");
    }
    void TearDown() override { w.reset(); Print_Hooks() = saved_; }
    // Saves the current screen through "Save as PDF..." as `name`; the pages as text.
    QStringList Save(const char* name) {
        path_ = QDir(KELMORAN_BINARY_DIR).filePath(QString("print_pages/") + name);
        Print_Hooks().Pdf_Path = [this](QWidget*, const std::string&) {
            return (path_ + ".pdf").toStdString();
        };
        w->Save_PDF_Action()->trigger();
        return Read();
    }
    QStringList Read() {
        Tool("pdftoppm", {"-r", "60", "-png", "-l", "3", path_ + ".pdf", path_});
        QStringList pages =
            Tool("pdftotext", {"-layout", path_ + ".pdf", "-"}).split('\f', Qt::SkipEmptyParts);
        for (QString& page : pages) page.replace(QRegularExpression(" +"), " ");
        return pages;
    }
    QString Info(const char* field) {
        for (const QString& l : Tool("pdfinfo", {path_ + ".pdf"}).split('\n'))
            if (l.startsWith(field)) return l.mid(l.indexOf(':') + 1).trimmed();
        return {};
    }
    std::unique_ptr<fMain> w;
    QString path_;
    PrintHooks saved_ = Print_Hooks();
};

TEST_F(PrintPdf, AltAzPrintsEveryRowInOrderWithTitleAndHeadingsOnEachPage) {
    Filters.BodyFilterMode = 1;
    Filters.StarCount = 4683;  // every star brighter than 6
    Filters.AboveTenOnly = 0;
    cGeneralForm* altaz = ui_test::Open_Screen(*w, 0);
    const GridModel& g = altaz->Grid();
    const QStringList pages = Save("altaz");
    EXPECT_EQ(Info("Title:"), "Kelmoran ~ Celestial Data");
    ASSERT_GT(pages.size(), 10);
    const int rows = g.Bottomlabels + 1, perPage = pages[0].count('\n') ;
    ASSERT_GT(rows, 4000);
    EXPECT_EQ(Info("Pages:").toInt(), pages.size());
    int row = 0, fullPages = 0;
    for (const QString& page : pages) {
        EXPECT_TRUE(page.contains("50° 00'.0 N/ 4° 00'.0 W")) << row;
        EXPECT_TRUE(page.contains("Wednesday 20 March 2024 21:30 GMT")) << row;
        EXPECT_TRUE(page.contains("Apparent Altitude") && page.contains("Magnitude")) << row;
        const int first = row;
        for (const QString& line : page.split('\n'))
            if (row < rows && line.contains(Q(g.MyDataLabels[2][size_t(row)]).simplified()) &&
                line.contains(Q(g.MyDataLabels[3][size_t(row)]).simplified()))
                ++row;
        fullPages += row - first >= (perPage - 12) ? 1 : 0;
    }
    EXPECT_EQ(row, rows);  // every row, in order
    EXPECT_GE(fullPages, pages.size() - 1);

    // All eighteen columns fit across one page, on its side and smaller: every page holds
    // them all and none spills over the right margin.
    for (int32_t c = 0; c <= g.AllColumns; ++c) altaz->Grid().MyColmVisible[size_t(c)] = -1;
    altaz->Grid().Column_Set_ColmPtr();
    const QStringList wide = Save("altaz_18_columns");
    for (const QString& page : wide)
        for (const char* h : {"Designation", "Constellation", "Tycho", "Radius", "Right Ascension"})
            EXPECT_TRUE(page.contains(h)) << h;
    const QImage png(path_ + "-01.png");
    ASSERT_GT(png.width(), png.height());
    const int margin = png.width() * 9 / 297;
    EXPECT_EQ(ui_test::Dark_Pixels(png, QRect(png.width() - margin + 2, 0, margin - 2, png.height())), 0);

    // Two columns highlighted: only they print.
    altaz->Grid().Highlight_Column_Start(2);
    altaz->Grid().Highlight_Column_Change(3);
    const QStringList two = Save("altaz_two_columns");
    EXPECT_TRUE(two[0].contains("Name") && two[0].contains("Apparent Altitude"));
    EXPECT_FALSE(two[0].contains("Designation") || two[0].contains("Azimiuth"));
}

TEST_F(PrintPdf, MoonPhasesMainAndThePlan) {
    cGeneralForm* moon = ui_test::Open_Screen(*w, 3);
    QStringList pages = Save("moon_phases_2024");
    ASSERT_EQ(pages.size(), 1);
    EXPECT_TRUE(pages[0].contains("Lunar Phases for 2024"));
    int eclipses = 0;
    const GridModel& g = moon->Grid();
    for (int32_t r = 0; r <= g.Bottomlabels; ++r) {
        const QString e = Q(g.MyDataLabels[9][size_t(r)]).simplified();
        if (e.trimmed().isEmpty()) continue;
        ++eclipses;
        EXPECT_TRUE(pages[0].contains(QRegularExpression("\n *" + Q(g.MyDataLabels[0][size_t(r)]) +
                                                         " .*" + QRegularExpression::escape(e))));
    }
    EXPECT_EQ(eclipses, 4);  // March, April, September, October 2024

    ui_test::Open_Screen(*w, 2);
    pages = Save("main");
    EXPECT_EQ(Info("Title:"), "Kelmoran ~ General Data");
    EXPECT_TRUE(pages[0].contains("Sunrise") && pages[0].contains("Previous "));

    // The plan: each way point on one line and its remark on the next.
    VoyagePlan plan;
    plan.New_Plan(Shell.CurrentJD, 8.0f);
    for (int i = 0; i < 3; ++i) {
        plan.Edit_Position(i, (50.0 - i) / kRadian, (-5.0 - i) / kRadian);
        plan.Edit_ID(i, std::string(1, char('A' + i)) + "pt");
        plan.Edit_Remarks(i, "remark " + std::to_string(i));
    }
    plan.Recalc_Plan();
    Voyage = plan;
    ui_test::Open_Screen(*w, 5);
    pages = Save("voyage_plan");
    EXPECT_EQ(Info("Title:"), "Kelmoran ~ Voyage Plan");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(pages[0].contains(QRegularExpression(
            QString("%1pt .*\\n.*remark %2").arg(QChar('A' + i)).arg(i))));
}

TEST_F(PrintPdf, WithoutAPrinterPrintSaysSoAndSaveAsPdfStillWorks) {
    Print_Hooks().Printers_Available = [] { return false; };
    ui_test::Open_Screen(*w, 4);
    QString said;
    QTimer::singleShot(0, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            said = box->text();
            box->accept();
        }
    });
    w->File_Action(9)->trigger();
    EXPECT_EQ(said, "\r\nThere is no printer available.");
    const QStringList pages = Save("solar_bodies");
    ASSERT_EQ(pages.size(), 1);
    EXPECT_TRUE(pages[0].contains("Sun's Lower Limb"));
    EXPECT_EQ(Info("Title:"), "Kelmoran ~ Planets");

    // With a printer, "Print" goes through the print dialogue, whose "Print to File (PDF)"
    // writes the same pages.
    Print_Hooks().Printers_Available = [] { return true; };
    Print_Hooks().Print_Dialog = [this](QPrinter& printer, QWidget*) {
        printer.setOutputFileName(path_ + "_dialog.pdf");
        return true;
    };
    w->File_Action(9)->trigger();
    path_ += "_dialog";
    EXPECT_EQ(Read(), pages);

    ui_test::Open_Screen(*w, 1);
    EXPECT_TRUE(Save("clocks")[0].contains("Twilight times for 50° 00'.0 N/ 4° 00'.0 W"));
    EXPECT_EQ(Info("Title:"), "Kelmoran ~ Twilights");
}

}  // namespace
}  // namespace kelmoran
