// "Print Book": the almanac's tables, its daily pages and a whole year, through the print
// frame, with a progress dialogue that can stop a long print.
#include <QInputDialog>
#include <QProgressDialog>
#include <cmath>

#include "almanac/AlmanacWindow.h"
#include "printing/cPrint_Gateway.h"
#include "settings/M_Formatting.h"
#include "shell/fMain.h"

namespace kelmoran {

namespace {

// The print, or "Save as PDF..." where no printer is installed, with its progress shown.
void Print_Book_Pages(PagesPrint print, QWidget* parent) {
    QProgressDialog progress(QString("Printing %1...").arg(Q(print.Word)), "Cancel", 0,
                             print.Count, parent);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(300);
    print.Progress = [&progress](int32_t done, int32_t total) {
        progress.setMaximum(total);
        progress.setValue(done);
        return !progress.wasCanceled();
    };
    Print_Or_Save(print, !Print_Hooks().Printers_Available(), parent);
    progress.setValue(print.Count);
}

}  // namespace

void Print_Almanac_Opening(AlmanacWindow& w) {
    MySystemTime first = w.MyDates().MySystemTime;
    first.wDayOfWeek = Weekday_Of_JD(w.MyJD() + 0.25);
    const int32_t monthLength = w.MyDates().Get_Month_Length(first.wMonth, first.wYear);
    Print_Book_Pages(Almanac_Opening_Print(w.MyJD(), first, monthLength), &w);
}

void fMain::mnuBook_Click(int index) {
    Kill_Activities();
    if (index < 0 || index >= static_cast<int>(book_.size())) return;
    const std::string item = Shell.Menus.mnuBook[static_cast<size_t>(index)].Caption;
    // The daily pages start at the Almanac window's first day when it is open, else at the
    // day of the program's moment; the year is that day's.
    const bool julian = Shell.CalendarChoice != 0;
    double first = std::floor(Shell.CurrentJD - 0.5) + 0.5;
    if (almanac_ && almanac_->isVisible()) first = almanac_->MyJD();
    MySystemTime date;
    {
        const CalendarScope scope(julian);
        date = JD_To_Date(first + 0.25);
    }
    int32_t days = 3;
    int32_t year = date.wYear;
    bool ok = true;
    if (item == "Almanac") {
        days = QInputDialog::getInt(this, "Print Almanac", "Days to print from the first day shown:",
                                    3, 1, 366, 1, &ok);
    } else if (item == "Monthly Stars" || item == "Complete Almanac") {
        year = QInputDialog::getInt(this, Q(item), "Year:", year, -9999, 9999, 1, &ok);
        if (year == 0) year = 1;
    }
    if (!ok) return;
    Print_Book_Pages(Book_Item(item, first, days, year, julian), this);
}

}  // namespace kelmoran
