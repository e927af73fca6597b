#include "shell/cMainForm.h"

#include <QFontMetrics>
#include <QPen>
#include <algorithm>

#include "shell/Drawing.h"

namespace kelmoran {

namespace {

// The model's alignment (0 left, 1 right, 2 centred) as the painter's.
int Text_Alignment(int32_t format) {
    if (format == 1) return Qt::AlignRight;
    if (format == 2) return Qt::AlignHCenter;
    return Qt::AlignLeft;
}

const QColor kHighlight(10, 36, 106);

}  // namespace

GridModel::Measure cMainForm::Font_Measure() {
    return [](const std::string& text, bool bold) {
        const QFontMetrics m(bold ? Drawing().Bold : Drawing().Normal);
        return static_cast<int32_t>(m.horizontalAdvance(Q(text)));
    };
}

void cMainForm::Draw_MainBitmap(QPainter& p, bool cursorShown) const {
    const GridModel& g = grid_;
    p.fillRect(QRect(0, g.GridTop, g.ClientWidth, std::max(g.ClientHeight - g.GridTop, 0)),
               Qt::white);
    Draw_Cells(p);
    Draw_Headings(p);
    Draw_RowIndex(p);
    if (cursorShown) Draw_Cursor(p);
    if (g.Resizing) Draw_Resize_Line(p);
}

void cMainForm::Draw_Headings(QPainter& p) const {
    const GridModel& g = grid_;
    const DrawingObjects& d = Drawing();
    p.save();
    p.setClipRect(QRect(kRowIndexMargin, g.GridTop, std::max(g.ClientWidth - kRowIndexMargin, 0),
                        g.HeadingHeight));
    p.setFont(d.Bold);
    for (int32_t pos = g.MyHScroll; pos <= g.ColmsInUse; ++pos) {
        const Rect h = g.Heading_On_Screen(pos);
        if (h.Left >= g.ClientWidth) break;
        const bool lit = g.HighlightingAll || g.HighlightedColms[static_cast<size_t>(pos)];
        p.fillRect(To_QRect(h), lit ? kHighlight : d.Face);
        Draw_3D_Frame(p, h, false);
        p.setPen(lit ? Qt::white : Qt::black);
        p.drawText(To_QRect(h), Qt::AlignCenter, Q(g.Heading_Text(pos)));
    }
    p.restore();
    // The corner, which selects all.
    const Rect corner{0, g.GridTop, kRowIndexMargin, g.Rows_Top()};
    p.fillRect(To_QRect(corner), g.HighlightingAll ? kHighlight : d.Face);
    Draw_3D_Frame(p, corner, false);
}

void cMainForm::Draw_RowIndex(QPainter& p) const {
    const GridModel& g = grid_;
    const DrawingObjects& d = Drawing();
    p.save();
    p.setClipRect(
        QRect(0, g.Rows_Top(), kRowIndexMargin, std::max(g.ClientHeight - g.Rows_Top(), 0)));
    QFont f = d.Normal;
    f.setPixelSize(10);
    p.setFont(f);
    const int32_t last = std::min(g.Bottomlabels, g.MyVScroll + g.Page_Rows());
    p.fillRect(QRect(0, g.Rows_Top(), kRowIndexMargin, g.ClientHeight), d.Face);
    for (int32_t r = g.MyVScroll; r <= last; ++r) {
        const int32_t top = g.Rows_Top() + (r - g.MyVScroll) * g.RowHeight;
        const Rect box{0, top, kRowIndexMargin, top + g.RowHeight};
        const bool lit = g.HighlightingAll || g.HighlightedRows[static_cast<size_t>(r)];
        if (lit) p.fillRect(To_QRect(box), kHighlight);
        Draw_3D_Frame(p, box, false);
        p.setPen(lit ? Qt::white : Qt::black);
        p.drawText(To_QRect(box), Qt::AlignCenter, QString::number(r + 1));
    }
    p.restore();
}

void cMainForm::Draw_Cells(QPainter& p) const {
    const GridModel& g = grid_;
    const DrawingObjects& d = Drawing();
    p.save();
    p.setClipRect(QRect(kRowIndexMargin, g.Rows_Top(), std::max(g.ClientWidth - kRowIndexMargin, 0),
                        std::max(g.ClientHeight - g.Rows_Top(), 0)));
    p.setFont(d.Normal);
    const int32_t last = std::min(g.Bottomlabels, g.MyVScroll + g.Page_Rows());
    const QPen line(d.GridGrey);
    for (int32_t pos = g.MyHScroll; pos <= g.ColmsInUse; ++pos) {
        const auto column = static_cast<size_t>(g.MyColmPtr[static_cast<size_t>(pos)]);
        const int align = Text_Alignment(g.MyColmFormat[column]);
        const auto& texts = g.MyDataLabels[column];
        bool pastRight = false;
        for (int32_t r = g.MyVScroll; r <= last; ++r) {
            const Rect cell = g.Cell_On_Screen(pos, r);
            if (cell.Left >= g.ClientWidth) {
                pastRight = true;
                break;
            }
            const bool lit = g.Is_Highlighted(pos, r);
            if (lit) p.fillRect(To_QRect(cell), kHighlight);
            p.setPen(line);
            p.drawLine(cell.Left, cell.Bottom - 1, cell.Right - 1, cell.Bottom - 1);
            p.drawLine(cell.Right - 1, cell.Top, cell.Right - 1, cell.Bottom - 1);
            const auto row = static_cast<size_t>(r);
            const uint32_t ink = row < g.MyRowColours.size() ? g.MyRowColours[row] : 0;
            p.setPen(lit ? QColor(Qt::white) : QColor(static_cast<QRgb>(ink)));
            // Text stays inside its cell: a long one is cut at the cell's edge.
            const QRect inner(cell.Left + 3, cell.Top, cell.Width() - 6, cell.Height());
            p.drawText(inner, align | Qt::AlignVCenter | Qt::TextSingleLine,
                       Q(texts[static_cast<size_t>(r)]));
        }
        if (pastRight) break;
    }
    p.restore();
}

void cMainForm::Draw_Cursor(QPainter& p) const {
    const Rect c = grid_.Cursor_Rect();
    if (c.Empty()) return;
    p.save();
    p.setClipRect(QRect(kRowIndexMargin, grid_.Rows_Top(), grid_.ClientWidth, grid_.ClientHeight));
    QPen pen(Qt::black);
    pen.setWidth(2);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRect(c.Left + 1, c.Top + 1, c.Width() - 2, c.Height() - 2));
    p.restore();
}

void cMainForm::Draw_Resize_Line(QPainter& p) const {
    QPen pen(Qt::black);
    pen.setStyle(Qt::DashLine);
    p.setPen(pen);
    p.drawLine(grid_.ResizeLineX, grid_.GridTop, grid_.ResizeLineX, grid_.ClientHeight);
}

void cMainForm::Draw_DR_Warning(QPainter& p, int32_t top) const {
    p.setFont(Drawing().Bold);
    p.setPen(Qt::red);
    const QString text = kDRError;
    p.drawText(
        QRect(kRowIndexMargin, top, grid_.ClientWidth - kRowIndexMargin, grid_.GridTop - top),
        Qt::AlignLeft | Qt::AlignVCenter, text);
}

}  // namespace kelmoran
