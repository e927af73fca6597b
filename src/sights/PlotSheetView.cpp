#include "sights/PlotSheetView.h"

#include <QPolygon>

#include "shell/Drawing.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

QPoint P(const Sheet_Point& s) { return QPoint(s.x, s.y); }

// A chevron at `at` pointing along (dx, dy).
void Chevron(QPainter& p, const Sheet_Point& at, double dx, double dy, int size) {
    const double nx = -dy, ny = dx;
    const QPointF tip(at.x + dx * size * 0.5, at.y + dy * size * 0.5);
    p.drawLine(QPointF(tip.x() - dx * size + nx * size * 0.6, tip.y() - dy * size + ny * size * 0.6),
               tip);
    p.drawLine(QPointF(tip.x() - dx * size - nx * size * 0.6, tip.y() - dy * size - ny * size * 0.6),
               tip);
}

}  // namespace

void Paint_Plot_Sheet(QPainter& p, const Sheet_Plot& plot, const Rect& area) {
    const DrawingObjects& d = Drawing();
    p.save();
    p.fillRect(To_QRect(area), QColor(252, 252, 246));
    p.setClipRect(To_QRect(area).adjusted(2, 2, -2, -2));
    p.translate(area.Left, area.Top);
    p.setRenderHint(QPainter::Antialiasing, false);

    // The graticule, and the DR at the fix time in the centre.
    p.setPen(QPen(d.GridGrey, 1));
    for (int x : plot.Grid_X) p.drawLine(x, 0, x, plot.Height);
    for (int y : plot.Grid_Y) p.drawLine(0, y, plot.Width, y);
    p.setPen(QPen(Qt::darkGray, 1));
    p.drawLine(plot.Centre.x, 0, plot.Centre.x, plot.Height);
    p.drawLine(0, plot.Centre.y, plot.Width, plot.Centre.y);
    p.setPen(QPen(Qt::black, 1));
    p.drawRect(plot.Centre.x - 4, plot.Centre.y - 4, 8, 8);

    // The scale bar, its steps alternately filled.
    p.setFont(d.Normal);
    const int bar = plot.Scale_Start.y;
    for (int k = 0; k < plot.Scale_Steps; ++k) {
        const QRect step(plot.Scale_Start.x + k * plot.Scale_Step_Pixels, bar - 5,
                         plot.Scale_Step_Pixels, 5);
        p.fillRect(step, k % 2 == 0 ? QColor(Qt::black) : QColor(Qt::white));
        p.drawRect(step);
    }
    for (const Sheet_Text& t : plot.Scale_Labels) Draw_Aligned(p, t.Box, Q(t.Text), 1);

    // The position lines.
    p.setRenderHint(QPainter::Antialiasing, true);
    for (const Sheet_Line& l : plot.Lines) {
        p.setPen(QPen(Qt::black, 1.5));
        if (l.Crosses) p.drawLine(P(l.End1), P(l.End2));
        p.drawEllipse(P(l.Foot), 3, 3);
        p.setPen(QPen(QColor(0, 110, 0), 1.5));
        p.drawLine(P(l.Arrow_Tail), P(l.Arrow_Head));
        p.drawLine(P(l.Barb1), P(l.Arrow_Head));
        p.drawLine(P(l.Barb2), P(l.Arrow_Head));
        if (l.Transferred) {
            p.setPen(QPen(Qt::black, 1.2));
            for (const Sheet_Point& m : l.Transfer_Marks) {
                const Sheet_Point a{m.x - static_cast<int>(l.Line_Dx * 3),
                                    m.y - static_cast<int>(l.Line_Dy * 3)};
                const Sheet_Point b{m.x + static_cast<int>(l.Line_Dx * 3),
                                    m.y + static_cast<int>(l.Line_Dy * 3)};
                Chevron(p, a, l.Line_Dx, l.Line_Dy, 7);
                Chevron(p, b, l.Line_Dx, l.Line_Dy, 7);
            }
        }
        p.setPen(Qt::black);
        p.fillRect(To_QRect(l.Label.Box), QColor(252, 252, 246));
        Draw_Aligned(p, l.Label.Box, Q(l.Label.Text), 0);
    }

    // The ellipse, then the fix.
    const Fix_Result& f = plot.Fix;
    if (f.Ellipse.size() > 1) {
        QPolygon ring;
        for (const Sheet_Point& e : f.Ellipse) ring << P(e);
        p.setRenderHint(QPainter::Antialiasing, false);
        p.setPen(QPen(QColor::fromRgb(kEllipseColour), 2));
        p.drawPolyline(ring);
    }
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QPen(QColor::fromRgb(kFixColour), 2));
    p.drawLine(P(f.Cross[0]), P(f.Cross[1]));
    p.drawLine(P(f.Cross[2]), P(f.Cross[3]));
    p.setRenderHint(QPainter::Antialiasing, true);
    p.drawEllipse(P(f.Circle_Centre), kFixCircleRadius, kFixCircleRadius);
    p.setFont(d.Bold);
    Draw_Aligned(p, plot.Fix_Label.Box, Q(plot.Fix_Label.Text), 0);
    if (f.DR_Warning) {
        p.setPen(QColor::fromRgb(kFixColour));
        Draw_Aligned(p, {6, 4, 200, 24}, position_text::DRError, 0);
    }
    p.restore();
    Draw_3D_Frame(p, area, true);
}

}  // namespace kelmoran
