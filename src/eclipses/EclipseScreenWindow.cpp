#include "eclipses/EclipseScreenWindow.h"

#include "printing/cPrint_Gateway.h"

#include <QApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "eclipses/M_Eclipse_Solar.h"
#include "ephemeris/Units.h"
#include "settings/SettingsRecord.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

constexpr int kPanelWidth = 300;
constexpr int kHeadingHeight = 44;
constexpr int kMargin = 8;
constexpr int kLineHeight = 17;

QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

QFont Panel_Font(int pixels, bool bold = false) {
    QFont f("DejaVu Sans");
    f.setPixelSize(pixels);
    f.setBold(bold);
    return f;
}

void Keep_Display_Alive() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// The program's one eclipse window, while it is open.
QPointer<EclipseScreenWindow> theWindow;

}  // namespace

EclipseScreenWindow::EclipseScreenWindow(EclipseTable& table, QWidget* parent)
    : QWidget(parent, Qt::Window), table_(table) {
    setWindowTitle("Eclipse");
    setMinimumSize(900, 700);  // room for the whole panel and its legend
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    resize(1180, 720);
    Show_Row(table_.Current);
}

void EclipseScreenWindow::Show_Row(int row) {
    if (table_.Count <= 0) {
        lines_.clear();
        local_ = {};
        Layout();
        Redraw();
        return;
    }
    table_.Current = std::clamp(row, 0, table_.Count - 1);
    const EclipseRow& r = table_.Rows[static_cast<size_t>(table_.Current)];
    shownPhase_ = r.PhaseJD;
    lines_ = Eclipse_Panel_Lines(table_, table_.Current, TZ_Bias);
    minutes_ = Eclipse_Minutes(table_, table_.Current);
    minute_ = minutes_.Start;
    // The observer where the position method puts them at the greatest eclipse.
    float lat = 0.0f, lon = 0.0f, course = 0.0f, speed = 0.0f;
    Get_Position(r.Maximum.Time, lat, lon, course, speed);
    local_ = Eclipse_Local_Lines(table_, table_.Current, lat, lon, TZ_Bias);
    layers_.Observer = {Map_X(lon * kDegreesPerRadian), Map_Y(lat * kDegreesPerRadian)};
    layers_.HasObserver = true;
    layers_.Solar = Is_Solar(r);
    if (!layers_.Solar) path_ = false;
    layers_.Path = {};
    pathRow_ = -1;
    if (path_) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        layers_.Path = Solar_Path_Map(r, &Keep_Display_Alive);
        QGuiApplication::restoreOverrideCursor();
        pathRow_ = table_.Current;
        ++pathComputations_;
    }
    setWindowTitle(Q((layers_.Solar ? "Solar Eclipse - " : "Lunar Eclipse - ") + r.DateLabel));
    Compute_Minute();
    Layout();
    Redraw();
}

void EclipseScreenWindow::Table_Refilled() {
    for (int i = 0; i < table_.Count; ++i) {
        if (table_.Rows[static_cast<size_t>(i)].PhaseJD == shownPhase_) {
            table_.Current = i;
            if (pathRow_ >= 0) pathRow_ = i;
            return;
        }
    }
    Show_Row(0);
}

void EclipseScreenWindow::Compute_Minute() {
    if (table_.Count <= 0) return;
    if (layers_.Solar) {
        const EclipseWindow window(table_.Rows[static_cast<size_t>(table_.Current)].Maximum.Time);
        layers_.Minute = Solar_Minute_Map(Eclipse_Instant(minute_, window));
    } else {
        layers_.Lunar = Lunar_Eclipse_Map(minute_);
    }
}

void EclipseScreenWindow::Layout() {
    const QSize size = this->size();
    panelRect_ = QRect(0, 0, kPanelWidth, size.height());
    // The map keeps the shape of its natural size within the room there is.
    const int roomW = size.width() - kPanelWidth - kMargin;
    const int roomH = size.height() - kHeadingHeight - kMargin;
    sx_ = static_cast<float>(std::max(1, roomW) / eclipse_map::Width);
    sy_ = static_cast<float>(std::max(1, roomH) / eclipse_map::Height);
    sx_ = sy_ = std::min(sx_, sy_);
    mapRect_ = QRect(kPanelWidth, kHeadingHeight,
                     static_cast<int>(std::lround(sx_ * eclipse_map::Width)),
                     static_cast<int>(std::lround(sy_ * eclipse_map::Height)));

    const bool solar = table_.Count > 0 && layers_.Solar;
    const int top = 12 + kLineHeight * 23;
    const int w = (kPanelWidth - 3 * kMargin) / 2;
    controls_.clear();
    controls_.push_back({"Previous Eclipse", QRect(kMargin, top, w, 26), {}, table_.Count > 0});
    controls_.push_back({"Next Eclipse", QRect(2 * kMargin + w, top, w, 26), {}, table_.Count > 0});
    const int st = top + 50;
    controls_.push_back({"<", QRect(kMargin, st, 36, 26), "Step through Eclipse in\none minute increments",
                         table_.Count > 0});
    controls_.push_back({">", QRect(kPanelWidth - kMargin - 36, st, 36, 26),
                         "Step through Eclipse in\none minute increments", table_.Count > 0});
    controls_.push_back({"Path of Eclipse", QRect(kMargin, st + 36, kPanelWidth - 2 * kMargin, 26),
                         "Complete Eclipse coverage\n(Slow)", solar && !plan_, path_});
    controls_.push_back({"Show Plan", QRect(kMargin, st + 70, w, 26), {}, table_.Count > 0, plan_});
    controls_.push_back({"Show Map", QRect(2 * kMargin + w, st + 70, w, 26), {}, table_.Count > 0,
                         !plan_});
}

const EclipseScreenWindow::Control* EclipseScreenWindow::Control_Of(const std::string& caption) const {
    for (const Control& c : controls_)
        if (c.Caption == caption) return &c;
    return nullptr;
}

QRect EclipseScreenWindow::Control_Rect(const std::string& caption) const {
    const Control* c = Control_Of(caption);
    return c ? c->Box : QRect();
}

bool EclipseScreenWindow::Control_Enabled(const std::string& caption) const {
    const Control* c = Control_Of(caption);
    return c && c->Enabled;
}

std::string EclipseScreenWindow::Tooltip_At(QPoint at) const {
    for (const Control& c : controls_)
        if (c.Box.contains(at)) return c.Tip;
    // The panel's lines with a tooltip.
    int y = 12;
    for (const EclipsePanelLine& l : lines_) {
        if (QRect(kMargin, y, kPanelWidth - 2 * kMargin, kLineHeight).contains(at)) return l.Tip;
        y += kLineHeight;
    }
    return {};
}

QPoint EclipseScreenWindow::Map_Pixel(double lat, double lon) const {
    return {mapRect_.left() + Screen_Map_X(lon, sx_), mapRect_.top() + Screen_Map_Y(lat, sy_)};
}

void EclipseScreenWindow::Press(const std::string& caption) {
    const Control* c = Control_Of(caption);
    if (!c || !c->Enabled) {
        QApplication::beep();
        return;
    }
    if (caption == "Next Eclipse") {
        Next_Eclipse(table_);
        Show_Row(table_.Current);
        return;
    }
    if (caption == "Previous Eclipse") {
        Previous_Eclipse(table_);
        Show_Row(table_.Current);
        return;
    }
    if (caption == "<" || caption == ">") {
        minute_ = Step_Eclipse_Minute(minutes_, minute_, caption == "<" ? -1 : 1);
        Compute_Minute();
    } else if (caption == "Path of Eclipse") {
        path_ = !path_;
        if (path_ && pathRow_ != table_.Current) {
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
            layers_.Path = Solar_Path_Map(table_.Rows[static_cast<size_t>(table_.Current)],
                                          &Keep_Display_Alive);
            QGuiApplication::restoreOverrideCursor();
            pathRow_ = table_.Current;
            ++pathComputations_;
        }
    } else if (caption == "Show Plan") {
        plan_ = true;
    } else if (caption == "Show Map") {
        plan_ = false;
    }
    Layout();
    Redraw();
}

void EclipseScreenWindow::Paint_Control(QPainter& p, const Control& c) {
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(QPen(c.Enabled ? QColor(90, 90, 90) : QColor(180, 180, 180), 1));
    p.setBrush(c.Down ? QColor(200, 215, 235) : QColor(238, 238, 238));
    p.drawRoundedRect(QRectF(c.Box).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    p.setPen(c.Enabled ? Qt::black : QColor(160, 160, 160));
    p.setFont(Panel_Font(12, c.Down));
    QString text = Q(c.Caption);
    if (c.Caption == "<") text = QString::fromUtf8("\xE2\x97\x80");
    if (c.Caption == ">") text = QString::fromUtf8("\xE2\x96\xB6");
    p.drawText(c.Box, Qt::AlignCenter, text);
    p.setRenderHint(QPainter::Antialiasing, false);
}

void EclipseScreenWindow::Paint_Panel(QPainter& p) {
    p.fillRect(panelRect_, QColor(246, 246, 242));
    int y = 12;
    const int timeX = 178;
    for (size_t i = 0; i < lines_.size(); ++i) {
        const EclipsePanelLine& l = lines_[i];
        const bool title = i == 0;
        p.setFont(Panel_Font(title ? 14 : 12, title || l.Label == "Maximim Eclipse"));
        p.setPen(Qt::black);
        if (title) {
            p.drawText(QPoint(kMargin, y + 13), Q(l.Label));
            p.setFont(Panel_Font(12));
            p.drawText(QRect(110, y, kPanelWidth - 110 - kMargin, kLineHeight),
                       Qt::AlignRight | Qt::AlignVCenter, Q(l.Time));
            y += kLineHeight + 6;
            continue;
        }
        if (i == 6) y += 6;  // the lines beyond the phases
        p.drawText(QPoint(kMargin, y + 13), Q(l.Label));
        const int x = std::min(timeX, kMargin + p.fontMetrics().horizontalAdvance(Q(l.Label)) + 8);
        p.drawText(QRect(x, y, kPanelWidth - x - kMargin, kLineHeight),
                   Qt::AlignRight | Qt::AlignVCenter, Q(l.Time));
        y += kLineHeight;
    }
    if (!local_.Lines.empty()) {
        y += 8;
        p.setPen(QColor(160, 160, 160));
        p.drawLine(kMargin, y - 4, kPanelWidth - kMargin, y - 4);
        for (size_t i = 0; i < local_.Lines.size(); ++i) {
            const EclipsePanelLine& l = local_.Lines[i];
            p.setFont(Panel_Font(12, i == 0));
            p.setPen(i == 1 && local_.Seen ? QColor(0, 110, 0) : QColor(Qt::black));
            p.drawText(QPoint(kMargin, y + 13), Q(l.Label));
            p.drawText(QRect(timeX, y, kPanelWidth - timeX - kMargin, kLineHeight),
                       Qt::AlignRight | Qt::AlignVCenter, Q(l.Time));
            y += kLineHeight;
        }
    }
    for (const Control& c : controls_) Paint_Control(p, c);
    // "Select Time" and the minute shown, between its buttons.
    const QRect left = Control_Rect("<"), right = Control_Rect(">");
    p.setPen(Qt::black);
    p.setFont(Panel_Font(11));
    p.drawText(QRect(left.left(), left.top() - 18, 200, 16), Qt::AlignLeft | Qt::AlignVCenter,
               "Select Time");
    p.setFont(Panel_Font(14, true));
    p.drawText(QRect(left.right(), left.top(), right.left() - left.right(), left.height()),
               Qt::AlignCenter, Q(table_.Count > 0 ? Eclipse_Time_Text(minute_, TZ_Bias) : ""));

    // The legend.
    const bool solar = table_.Count > 0 && layers_.Solar;
    int ly = Control_Rect("Show Map").bottom() + 14;
    for (const LegendEntry& e : Eclipse_Legend(solar, path_, plan_)) {
        Paint_Legend_Swatch(p, QRect(kMargin, ly, 26, 16), e.Key);
        p.setPen(Qt::black);
        p.setFont(Panel_Font(11));
        int ty = ly;
        for (const std::string& phrase : e.Phrases) {
            p.drawText(QPoint(kMargin + 34, ty + 12), Q(phrase));
            ty += 14;
        }
        ly = std::max(ly + 22, ty + 6);
    }
}

void EclipseScreenWindow::Redraw() {
    if (picture_.size() != size()) picture_ = QImage(size(), QImage::Format_RGB32);
    picture_.fill(QColor(252, 252, 250));
    QPainter p(&picture_);
    Paint_Panel(p);
    // The headings over the map or the plan.
    p.setPen(Qt::black);
    p.setFont(Panel_Font(16, true));
    const bool moonPlan = plan_ && !layers_.Solar;
    const QString first = moonPlan ? "Path of Moon" : "Path of Shadow";
    p.drawText(QPoint(kPanelWidth, 22), first);
    const int w = p.fontMetrics().horizontalAdvance(first + " ");
    p.setFont(Panel_Font(16));
    p.drawText(QPoint(kPanelWidth + w, 22), moonPlan ? "through Shadow" : "across Earth");
    if (table_.Count <= 0) {
        p.setFont(Panel_Font(13));
        p.drawText(mapRect_, Qt::AlignCenter, "No Eclipse");
    } else if (plan_) {
        const int side = std::min(mapRect_.width(), mapRect_.height());
        const QRect square(mapRect_.left(), mapRect_.top(), side, side);
        if (layers_.Solar)
            Paint_Solar_Plan(p, square, Solar_Eclipse_Plan(table_, table_.Current, TZ_Bias));
        else
            Paint_Lunar_Plan(p, square,
                             Lunar_Eclipse_Plan(table_.Rows[static_cast<size_t>(table_.Current)], TZ_Bias));
    } else {
        if (coastSize_ != mapRect_.size()) {
            coast_ = Coastline_Path(sx_, sy_);
            coastSize_ = mapRect_.size();
        }
        layers_.ShowPath = path_;
        Paint_Eclipse_Map(p, mapRect_, sx_, sy_, coast_, layers_);
    }
    update();
}

void EclipseScreenWindow::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.drawImage(0, 0, picture_);
}

void EclipseScreenWindow::resizeEvent(QResizeEvent*) {
    Layout();
    Redraw();
}

void EclipseScreenWindow::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    for (const Control& c : controls_) {
        if (c.Box.contains(e->position().toPoint())) {
            Press(c.Caption);
            return;
        }
    }
}

void EclipseScreenWindow::wheelEvent(QWheelEvent* e) {
    const int notches = e->angleDelta().y() / 120;
    if (!notches || table_.Count <= 0) return;
    minute_ = Step_Eclipse_Minute(minutes_, minute_, notches);
    Compute_Minute();
    Redraw();
}

void EclipseScreenWindow::keyPressEvent(QKeyEvent* e) {
    switch (e->key()) {
        case Qt::Key_Left:
            Press("<");
            break;
        case Qt::Key_Right:
            Press(">");
            break;
        case Qt::Key_PageDown:
            Press("Next Eclipse");
            break;
        case Qt::Key_PageUp:
            Press("Previous Eclipse");
            break;
        case Qt::Key_Escape:
            close();
            break;
        default:
            QWidget::keyPressEvent(e);
    }
}

bool EclipseScreenWindow::event(QEvent* e) {
    if (e->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(e);
        const std::string tip = Tooltip_At(help->pos());
        if (tip.empty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), Q(tip), this);
        return true;
    }
    return QWidget::event(e);
}

EclipseScreenWindow* Show_Eclipse_Window(QWidget* parent, int row) {
    if (!theWindow) {
        theWindow = new EclipseScreenWindow(Eclipses, parent);
        theWindow->setAttribute(Qt::WA_DeleteOnClose);
    }
    theWindow->Show_Row(row);
    theWindow->show();
    theWindow->raise();
    theWindow->activateWindow();
    return theWindow;
}

PagesPrint EclipseScreenWindow::Print_Content() const {
    PagesPrint print;
    print.Job = print_job::EclipseMap;
    print.Word = "Eclipse";
    if (table_.Count <= 0) return print;
    print.Count = 1;
    const int row = table_.Current;
    const std::string title = Eclipse_Print_Title(table_, row, TZ_Bias);
    const std::string date = table_.Rows[static_cast<size_t>(row)].DateLabel;
    const std::vector<EclipsePanelLine> lines = Eclipse_Print_Lines(table_, row, TZ_Bias);
    const bool plan = plan_, solar = layers_.Solar;
    EclipseMapLayers layers = layers_;
    layers.ShowPath = path_;
    const EclipseTable* table = &table_;
    print.Paint = [=](QPainter& p, const QRectF& area, int32_t) {
        // Text sizes by the page: the title a fortieth of its width.
        const double unit = area.width() / 60.0;
        QFont big = Panel_Font(1, true), normal = Panel_Font(1);
        big.setPixelSize(std::max(8, static_cast<int>(unit * 1.5)));
        normal.setPixelSize(std::max(6, static_cast<int>(unit)));
        p.setPen(Qt::black);
        p.setFont(big);
        double y = area.top();
        p.drawText(QRectF(area.left(), y, area.width(), unit * 2.2), Qt::AlignCenter, Q(title));
        y += unit * 2.2;
        p.setFont(normal);
        p.drawText(QRectF(area.left(), y, area.width(), unit * 1.6), Qt::AlignCenter, Q(date));
        y += unit * 2.4;
        // The table of phases, two columns wide and centred.
        const double labelW = unit * 16, timeW = unit * 6, left = area.center().x() - (labelW + timeW) / 2;
        for (const EclipsePanelLine& l : lines) {
            p.drawText(QRectF(left, y, labelW, unit * 1.5), Qt::AlignLeft | Qt::AlignVCenter, Q(l.Label));
            p.drawText(QRectF(left + labelW, y, timeW, unit * 1.5), Qt::AlignRight | Qt::AlignVCenter,
                       Q(l.Time));
            y += unit * 1.5;
        }
        y += unit;
        // The map (or the plan) in the rest of the page, keeping its shape.
        const double roomH = area.bottom() - y;
        if (plan) {
            const int side = static_cast<int>(std::min(area.width(), roomH));
            const QRect square(static_cast<int>(area.center().x() - side / 2.0), static_cast<int>(y), side, side);
            if (solar)
                Paint_Solar_Plan(p, square, Solar_Eclipse_Plan(*table, row, TZ_Bias));
            else
                Paint_Lunar_Plan(p, square, Lunar_Eclipse_Plan(table->Rows[static_cast<size_t>(row)], TZ_Bias));
            return;
        }
        const float s = static_cast<float>(std::min(area.width() / eclipse_map::Width, roomH / eclipse_map::Height));
        const QRect map(static_cast<int>(area.center().x() - s * eclipse_map::Width / 2.0), static_cast<int>(y),
                        static_cast<int>(std::lround(s * eclipse_map::Width)),
                        static_cast<int>(std::lround(s * eclipse_map::Height)));
        p.save();
        p.setClipRect(map);
        Paint_Eclipse_Map(p, map, s, s, Coastline_Path(s, s), layers);
        p.restore();
    };
    return print;
}

void Print_Eclipse(QWidget* parent, int row, bool toPdf) {
    if (row >= 0) Show_Eclipse_Window(parent, row);
    if (!theWindow) return;
    Print_Or_Save(theWindow->Print_Content(), toPdf, theWindow);
}

void Eclipses_Refilled() {
    if (theWindow) theWindow->Table_Refilled();
}

}  // namespace kelmoran
