#include "sights/SightCalcWindow.h"

#include <QActionGroup>
#include <QMenuBar>
#include <QPainter>
#include <algorithm>

#include "printing/cPrint_Gateway.h"
#include "shell/Drawing.h"

namespace kelmoran {

namespace {

constexpr int kLineHeight = 17;
constexpr int kTitleWidth = 190;
constexpr int kValueWidth = 130;
constexpr int kRightWidth = 150;
constexpr int kColumnWidth = kTitleWidth + kValueWidth + kRightWidth + 20;
constexpr int kTop = 12;

// The line at which the second column begins: the body's block.
int Second_Column_Start(const SightCalc_Sheet& s) {
    for (int i = 0; i < s.Calc_Lines; ++i)
        if (s.My_rTxt[static_cast<size_t>(i)] == "Julian Day" ||
            s.My_rTxt[static_cast<size_t>(i)] == "GHA")
            return i;
    return (s.Calc_Lines + 1) / 2;
}

}  // namespace

SightCalcWindow::SightCalcWindow(const SightSet& set, QWidget* parent)
    : QMainWindow(parent), set_(set) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle("Sight");
    setFont(Drawing().Normal);
    Build_Menus();
    resize(2 * kColumnWidth + 20, 600);
}

QAction* SightCalcWindow::Menu_Action(const std::string& caption) const {
    const auto it = actions_.find(caption);
    return it == actions_.end() ? nullptr : it->second;
}

void SightCalcWindow::Build_Menus() {
    namespace t = sightcalc_text;
    QMenuBar* bar = menuBar();
    auto add = [&](QMenu* menu, const char* caption, bool checked, QActionGroup* group) {
        QAction* a = menu->addAction(caption);
        a->setCheckable(true);
        a->setChecked(checked);
        if (group) group->addAction(a);
        actions_[caption] = a;
        connect(a, &QAction::triggered, this, [this] {
            Options_From_Menus();
            Trigger_ReCalc(row_);
        });
    };
    QMenu* detail = bar->addMenu(t::MenuDetail);
    add(detail, t::AstroData, options_.Astro_Data, nullptr);
    add(detail, t::Errors, options_.Show_Errors, nullptr);
    QMenu* position = bar->addMenu(t::MenuPosition);
    auto* dr = new QActionGroup(this);
    add(position, t::DRByMercator, options_.DR_Route == Sailing_Route::Mercator, dr);
    add(position, t::DRByPlane, options_.DR_Route == Sailing_Route::Plane, dr);
    position->addSeparator();
    auto* obs = new QActionGroup(this);
    add(position, t::ObsByMercator, options_.Obs_Route == Sailing_Route::Mercator, obs);
    add(position, t::ObsByPlane, options_.Obs_Route == Sailing_Route::Plane, obs);
    position->addSeparator();
    auto* ellipsoid = new QActionGroup(this);
    add(position, t::Clarke, options_.Clarke, ellipsoid);
    add(position, t::WGS84, !options_.Clarke, ellipsoid);
    QMenu* sight = bar->addMenu(t::MenuSight);
    add(sight, t::Tabular, options_.Tabular_Refraction, nullptr);
    add(sight, t::Augmentation, options_.Augmentation, nullptr);
    add(sight, t::LatCorrn, options_.Lat_Correction, nullptr);
    add(sight, t::Parallax, options_.Parallax, nullptr);
    // The sheet on one page: to the printer, or to a PDF file where none is installed.
    QAction* print = bar->addAction("    &Print    ");
    connect(print, &QAction::triggered, this,
            [this] { Print_Or_Save(Print_Content(), !Print_Hooks().Printers_Available(), this); });
}

PagesPrint SightCalcWindow::Print_Content() const {
    PagesPrint print;
    print.Job = print_job::SightCalc;
    print.Word = "Sight Calc";
    print.Count = 1;
    const QSize size = picture_.size();
    print.Paint = [this, size](QPainter& p, const QRectF& area, int32_t) {
        const double scale = std::min(area.width() / size.width(), area.height() / size.height());
        p.save();
        p.translate(area.left() + (area.width() - size.width() * scale) / 2.0, area.top());
        p.scale(scale, scale);
        Paint_Sheet(p, size);
        p.restore();
    };
    return print;
}

void SightCalcWindow::Options_From_Menus() {
    namespace t = sightcalc_text;
    auto on = [this](const char* caption) { return actions_.at(caption)->isChecked(); };
    options_.Astro_Data = on(t::AstroData);
    options_.Show_Errors = on(t::Errors);
    options_.DR_Route = on(t::DRByMercator) ? Sailing_Route::Mercator : Sailing_Route::Plane;
    options_.Obs_Route = on(t::ObsByMercator) ? Sailing_Route::Mercator : Sailing_Route::Plane;
    options_.Clarke = on(t::Clarke);
    options_.Tabular_Refraction = on(t::Tabular);
    options_.Augmentation = on(t::Augmentation);
    options_.Lat_Correction = on(t::LatCorrn);
    options_.Parallax = on(t::Parallax);
}

void SightCalcWindow::Trigger_ReCalc(int row) {
    row_ = row;
    sheet_ = Calc_Data(set_, row, options_);
    setWindowTitle(QString("Sight %1").arg(row + 1));
    Draw();
    update();
}

void SightCalcWindow::Draw() {
    const int top = menuBar()->height();
    const QSize size(std::max(width(), 2 * kColumnWidth + 20), std::max(height() - top, 100));
    picture_ = QImage(size, QImage::Format_RGB32);
    picture_.fill(Qt::white);
    QPainter p(&picture_);
    Paint_Sheet(p, size);
}

// The headings and the lines of the working, in two columns, within `size`.
void SightCalcWindow::Paint_Sheet(QPainter& p, QSize size) const {
    const DrawingObjects& d = Drawing();
    int y = kTop;
    p.setFont(d.Bold);
    p.setPen(Qt::black);
    std::string heading;
    for (const std::string& h : sheet_.Headings) heading += h;
    if (!sheet_.Headings.empty()) {
        // "Sight" and the row, then the words of the form.
        Draw_Aligned(p, {10, y, size.width() - 10, y + kLineHeight},
                     Q(sheet_.Headings[0] + " " + std::to_string(row_ + 1)), 1);
        y += kLineHeight;
        for (size_t i = 1; i < sheet_.Headings.size(); ++i) {
            if (sheet_.Headings[i] == sightcalc_text::Nutations) continue;
            Draw_Aligned(p, {10, y, size.width() - 10, y + kLineHeight},
                         Q(sheet_.Headings[i]), 1);
            y += kLineHeight;
        }
    }
    y += 6;
    const int split = Second_Column_Start(sheet_);
    const int firstTop = y;
    for (int i = 0; i < sheet_.Calc_Lines; ++i) {
        const int column = i < split ? 0 : 1;
        if (i == split) y = firstTop;
        const int x = 10 + column * kColumnWidth;
        const std::string& title = sheet_.My_rTxt[static_cast<size_t>(i)];
        if (title == "in Longitude") {
            // The nutations stand under their own heading.
            p.setFont(d.Bold);
            p.setPen(Qt::black);
            Draw_Aligned(p, {x, y, x + kTitleWidth, y + kLineHeight}, sightcalc_text::Nutations,
                         0);
            y += kLineHeight;
        }
        const bool error = !title.empty() && title.front() == '(';
        p.setFont(title == "Intercept" ? d.Bold : d.Normal);
        p.setPen(error ? QColor(160, 0, 0) : QColor(Qt::black));
        Draw_Aligned(p, {x, y, x + kTitleWidth, y + kLineHeight}, Q(title), 0);
        Draw_Aligned(p, {x + kTitleWidth, y, x + kTitleWidth + kValueWidth, y + kLineHeight},
                     Q(sheet_.My_rDat[static_cast<size_t>(i)]), 2);
        p.setPen(QColor(60, 60, 60));
        Draw_Aligned(p,
                     {x + kTitleWidth + kValueWidth + 10, y,
                      x + kTitleWidth + kValueWidth + 10 + kRightWidth, y + kLineHeight},
                     Q(sheet_.My_sTxt[static_cast<size_t>(i)]), 0);
        y += kLineHeight;
    }
    if (!sheet_.Valid) {
        p.setPen(Qt::black);
        p.setFont(d.Normal);
        Draw_Aligned(p, {10, y, size.width() - 10, y + kLineHeight},
                     "No body is selected in this row", 1);
    }
}

void SightCalcWindow::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.drawImage(0, menuBar()->height(), picture_);
}

void SightCalcWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    Draw();
}

}  // namespace kelmoran
