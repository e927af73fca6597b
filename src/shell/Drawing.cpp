#include "shell/Drawing.h"

#include <QApplication>
#include <QFontMetrics>
#include <cmath>
#include <optional>

#include "shell/cDates.h"

namespace kelmoran {

namespace {

std::optional<DrawingObjects>& Objects() {
    static std::optional<DrawingObjects> objects;
    return objects;
}

QFont Make_Font(const char* family, int pixels, bool bold) {
    QFont f(family);
    f.setPixelSize(pixels);
    f.setBold(bold);
    return f;
}

}  // namespace

void Create_Drawing_Objects(int depth) {
    DrawingObjects d;
    d.Normal = Make_Font("DejaVu Sans", 13, false);
    d.Bold = Make_Font("DejaVu Sans", 13, true);
    d.Large = Make_Font("DejaVu Sans", 20, true);
    d.Greek = Make_Font("DejaVu Sans", 11, false);
    d.GreekBold = Make_Font("DejaVu Sans", 13, true);
    d.Arrows = Make_Font("DejaVu Sans", 13, false);
    d.GridGrey = depth < 32 ? QColor(144, 144, 144) : QColor(193, 179, 186);
    d.Face = QColor(236, 233, 216);
    d.Light = QColor(255, 255, 255);
    d.Shadow = QColor(128, 128, 128);
    Objects() = d;
}

const DrawingObjects& Drawing() {
    if (!Objects()) Create_Drawing_Objects(32);
    return *Objects();
}

const QFont& Font_Of(FontKind kind) {
    const DrawingObjects& d = Drawing();
    switch (kind) {
        case FontKind::Bold:
            return d.Bold;
        case FontKind::Large:
            return d.Large;
        default:
            return d.Normal;
    }
}

void Measure_Fixed_Layout() {
    const QFontMetrics large(Drawing().Large);
    const QFontMetrics small(Drawing().Normal);
    DateMetrics m;
    m.Zero = large.horizontalAdvance("0");
    m.TwoZeros = large.horizontalAdvance("00");
    m.Colon = large.horizontalAdvance(":");
    m.Wednesday = large.horizontalAdvance("Wednesday");
    m.Thur = large.horizontalAdvance("Thur");
    m.BC = large.horizontalAdvance("BC");
    m.September = large.horizontalAdvance("September");
    m.June = large.horizontalAdvance("June");
    m.Zone = large.horizontalAdvance("Z+10.5");
    // A title line is the height of a bold "0" in the 20-pixel font times 1.6.
    m.RowHeight = static_cast<int32_t>(std::lround(large.tightBoundingRect("0").height() * 1.6));
    m.SmallHeight = small.height();
    m.LabelWidth = large.horizontalAdvance("Moon Phases for ");
    m.DepartureWidth = large.horizontalAdvance("Time of departure ");
    Date_Metrics = m;
}

void Draw_Aligned(QPainter& p, const Rect& cell, const QString& text, int32_t alignment) {
    const QFontMetrics fm(p.font());
    const int w = fm.horizontalAdvance(text);
    int x = cell.Left + 2;
    if (alignment == 1) x = cell.Left + (cell.Width() - w) / 2;
    if (alignment == 2) x = cell.Right - 2 - w;
    const int baseline = cell.Top + (cell.Height() + fm.ascent() - fm.descent()) / 2;
    p.drawText(x, baseline, text);
}

void Draw_3D_Frame(QPainter& p, const Rect& r, bool sunken) {
    const DrawingObjects& d = Drawing();
    const QColor dark(64, 64, 64);
    // Two lines on each side: the outer pair and the inner pair, light and shadow swapped
    // between raised and sunken.
    auto edge = [&](int inset, const QColor& topLeft, const QColor& bottomRight) {
        const int l = r.Left + inset, t = r.Top + inset, rr = r.Right - 1 - inset,
                  b = r.Bottom - 1 - inset;
        p.setPen(topLeft);
        p.drawLine(l, t, rr, t);
        p.drawLine(l, t, l, b);
        p.setPen(bottomRight);
        p.drawLine(l, b, rr, b);
        p.drawLine(rr, t, rr, b);
    };
    if (sunken) {
        edge(0, d.Shadow, d.Light);
        edge(1, dark, d.Face);
    } else {
        edge(0, d.Light, dark);
        edge(1, d.Face, d.Shadow);
    }
}

PictureForm::~PictureForm() {
    if (Edit.Editing && Edit.Form == this) {
        Edit.Buffer.clear();
        End_Edit(true);
    }
}

int32_t PictureForm::Text_Width(FontKind font, const std::string& text) {
    return QFontMetrics(Font_Of(font)).horizontalAdvance(Q(text));
}

void PictureForm::Repaint_Edit(const Rect& cell) {
    Redraw_Cell(cell);
    Update_Window(cell);
}

void PictureForm::Beep() {
    ++Beeps;
    QApplication::beep();
}

void PictureForm::Update_Window(const Rect& r) {
    if (QWidget* w = Form_Window()) w->update(To_QRect(r).adjusted(-2, -2, 2, 2));
}

void PictureForm::Draw_Open_Edit(QPainter& p) {
    if (!Edit.Editing || Edit.Form != this) return;
    const Rect& c = Edit.Cell;
    p.fillRect(To_QRect(c), Qt::white);
    p.setPen(Qt::black);
    p.drawRect(To_QRect(c).adjusted(0, 0, -1, -1));
    p.setFont(Font_Of(Edit.Font));
    Draw_Aligned(p, c, Q(Edit_Display_Text()), Edit.Alignment);
    // The caret: a two-pixel bar at the measured width of the text before it.
    const int x = Caret_X();
    p.fillRect(QRect(x, c.Top + 3, 2, c.Height() - 6), Qt::black);
}

}  // namespace kelmoran
