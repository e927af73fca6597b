#include "eclipses/EclipseMapView.h"

#include <QFont>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace kelmoran {

namespace {

const QColor kSea(206, 226, 242);
const QColor kLand(236, 228, 200);
const QColor kCoast(120, 104, 80);
const QColor kGrid(150, 165, 185);
const QColor kNight(20, 30, 90, 70);
const QColor kPartial(235, 130, 0);
const QColor kTotal(190, 0, 20);
const QColor kPenumbra(70, 70, 70);
const QColor kUmbra(20, 20, 20);
const QColor kMoonDown(40, 40, 90);

struct Style {
    QColor colour;
    Qt::BrushStyle pattern;
};

Style Style_Of(const std::string& key) {
    if (key == "Night") return {kNight, Qt::SolidPattern};
    if (key == "No Solar") return {kSea, Qt::SolidPattern};
    if (key == "Partial") return {kPartial, Qt::BDiagPattern};
    if (key == "Total") return {kTotal, Qt::SolidPattern};
    if (key == "Sub-Solar") return {QColor(255, 210, 0), Qt::SolidPattern};
    if (key == "Not Visible") return {kMoonDown, Qt::Dense6Pattern};
    if (key == "Visible") return {kLand, Qt::SolidPattern};
    if (key == "Umbra") return {kUmbra, Qt::SolidPattern};
    if (key == "Penumbra") return {kPenumbra, Qt::Dense6Pattern};
    if (key == "Earth Penumbra") return {QColor(150, 150, 170), Qt::SolidPattern};
    if (key == "Earth Umbra") return {QColor(90, 40, 40), Qt::SolidPattern};
    if (key == "Penumbra2") return {QColor(230, 230, 210), Qt::SolidPattern};
    if (key == "Umbra2") return {QColor(180, 60, 30), Qt::SolidPattern};
    return {Qt::black, Qt::NoBrush};
}

QPainterPath Rings_Path(const std::vector<MapRing>& rings, float sx, float sy) {
    QPainterPath path;
    for (const MapRing& r : rings) {
        QPolygonF poly;
        poly.reserve(static_cast<int>(r.size()));
        for (const MapPoint& m : r) poly << QPointF(m.X * sx, m.Y * sy);
        path.addPolygon(poly);
        path.closeSubpath();
    }
    return path;
}

void Fill_Rings(QPainter& p, const std::vector<MapRing>& rings, float sx, float sy,
                const std::string& key) {
    if (rings.empty()) return;
    const Style s = Style_Of(key);
    p.setPen(Qt::NoPen);
    p.setBrush(QBrush(s.colour, s.pattern));
    // Each ring on its own: the shadows of successive minutes overlap, and their union is
    // what is meant.
    for (const MapRing& r : rings) {
        QPolygonF poly;
        poly.reserve(static_cast<int>(r.size()));
        for (const MapPoint& m : r) poly << QPointF(m.X * sx, m.Y * sy);
        p.drawPolygon(poly, Qt::WindingFill);
    }
}

void Marker(QPainter& p, const MapPoint& m, float sx, float sy, const QColor& fill, int size) {
    const QPointF c(m.X * sx, m.Y * sy);
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(fill);
    p.drawEllipse(c, size, size);
}

}  // namespace

QColor Total_Band_Colour() {
    return kTotal;
}

QPainterPath Coastline_Path(float sx, float sy) {
    return Rings_Path(Coastline_Rings(), sx, sy);
}

void Paint_Eclipse_Map(QPainter& p, const QRect& area, float sx, float sy,
                       const QPainterPath& coast, const EclipseMapLayers& layers) {
    p.save();
    p.setClipRect(area);
    p.translate(area.topLeft());
    p.fillRect(QRect(0, 0, area.width(), area.height()), kSea);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.fillPath(coast, kLand);

    // The graticule, every 30 degrees.
    const Graticule g = Map_Graticule(30);
    p.setPen(QPen(kGrid, 1, Qt::DotLine));
    for (const MapRing& r : g.Lines)
        if (r.size() == 2) p.drawLine(QPointF(r[0].X * sx, r[0].Y * sy), QPointF(r[1].X * sx, r[1].Y * sy));

    if (layers.Solar) {
        Fill_Rings(p, layers.Minute.Night, sx, sy, "Night");
        if (layers.ShowPath) {
            Fill_Rings(p, layers.Path.PathPartial, sx, sy, "Partial");
            Fill_Rings(p, layers.Path.PathTotal, sx, sy, "Total");
            p.setBrush(Qt::NoBrush);
            p.setPen(QPen(kPartial.darker(130), 1.5));
            for (const MapRing& r : layers.Path.Limits) {
                QPolygonF line;
                for (const MapPoint& m : r) line << QPointF(m.X * sx, m.Y * sy);
                p.drawPolyline(line);
            }
        }
        if (!layers.ShowPath) {
            Fill_Rings(p, layers.Minute.Penumbra, sx, sy, "Penumbra");
            Fill_Rings(p, layers.Minute.Umbra, sx, sy, "Umbra");
        }
    } else {
        Fill_Rings(p, layers.Lunar.MoonDown, sx, sy, "Not Visible");
    }

    // The coast as a cosmetic pen of one pixel: the sharpest line at any scale, and the
    // quickest to draw.
    p.setPen(QPen(kCoast, 0));
    p.setBrush(Qt::NoBrush);
    p.drawPath(coast);
    p.setRenderHint(QPainter::Antialiasing, true);
    if (layers.Solar) {
        if (layers.ShowPath) {
            // The outline of the minute's umbra over the path shows where the shadow is.
            p.setPen(QPen(Qt::black, 1.2));
            for (const MapRing& r : layers.Minute.Umbra) {
                QPolygonF poly;
                for (const MapPoint& m : r) poly << QPointF(m.X * sx, m.Y * sy);
                p.drawPolygon(poly);
            }
        }
        Marker(p, layers.Minute.SubSolar, sx, sy, Style_Of("Sub-Solar").colour, 5);
    } else {
        Marker(p, layers.Lunar.SubLunar, sx, sy, Qt::white, 5);
    }
    if (layers.HasObserver) {
        const QPointF c(layers.Observer.X * sx, layers.Observer.Y * sy);
        p.setPen(QPen(QColor(0, 90, 0), 2));
        p.drawLine(c + QPointF(-6, 0), c + QPointF(6, 0));
        p.drawLine(c + QPointF(0, -6), c + QPointF(0, 6));
    }

    // Labels of the graticule inside the edges.
    QFont f("DejaVu Sans");
    f.setPixelSize(10);
    p.setFont(f);
    p.setPen(QColor(60, 70, 90));
    for (const auto& [at, text] : g.Labels) {
        const QPointF c(at.X * sx, at.Y * sy);
        if (at.X == 0.0)
            p.drawText(QPointF(c.x() + 3, c.y() - 2), QString::fromStdString(text));
        else
            p.drawText(QPointF(c.x() + 2, c.y() - 4), QString::fromStdString(text));
    }
    p.restore();
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(area.adjusted(0, 0, -1, -1));
}

namespace {

// The square of a plan: its background, and axes through the centre marked every `tick`
// units with a number every `labelEvery` ticks; the edges named. Returns the pixels per
// unit, the centre in `centre`.
double Plan_Frame(QPainter& p, const QRect& area, double extent, double tick, int labelEvery,
                  const QString& unit, const char* left, const char* right, QPointF& centre) {
    p.fillRect(area, QColor(250, 250, 246));
    centre = QRectF(area).center();
    const double half = 0.5 * std::min(area.width(), area.height()) - 34.0;
    const double k = half / extent;
    p.setRenderHint(QPainter::Antialiasing, true);
    p.setPen(QPen(QColor(170, 170, 170), 1));
    p.drawLine(QPointF(area.left(), centre.y()), QPointF(area.right(), centre.y()));
    p.drawLine(QPointF(centre.x(), area.top()), QPointF(centre.x(), area.bottom()));
    QFont f("DejaVu Sans");
    f.setPixelSize(10);
    p.setFont(f);
    for (int m = 1; m * tick * k < half + 30; ++m) {
        for (int s : {-1, 1}) {
            const double d = s * m * tick * k;
            p.drawLine(QPointF(centre.x() + d, centre.y() - 3), QPointF(centre.x() + d, centre.y() + 3));
            p.drawLine(QPointF(centre.x() - 3, centre.y() + d), QPointF(centre.x() + 3, centre.y() + d));
        }
        if (m % labelEvery == 0)
            p.drawText(QPointF(centre.x() + m * tick * k - 8, centre.y() + 14),
                       QString::number(m * tick) + unit);
    }
    p.drawText(QPointF(area.left() + 6, centre.y() - 4), left);
    p.drawText(QPointF(area.right() - 12, centre.y() - 4), right);
    p.drawText(QPointF(centre.x() + 4, area.top() + 12), "N");
    return k;
}

void Plan_Label(QPainter& p, QPointF above, const std::string& label) {
    QFont f("DejaVu Sans");
    f.setPixelSize(12);
    p.setFont(f);
    const QString text = QString::fromStdString(label);
    const double w = p.fontMetrics().horizontalAdvance(text);
    p.setPen(Qt::black);
    p.drawText(QPointF(above.x() - w / 2, above.y() - 6), text);
}

void Plan_Border(QPainter& p, const QRect& area) {
    p.restore();
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(area.adjusted(0, 0, -1, -1));
}

// Saves the painter and clips to `area`; a plan with nothing to show is left empty in its
// border (and false returned).
bool Plan_Begin(QPainter& p, const QRect& area, double extent) {
    p.save();
    p.setClipRect(area);
    if (extent > 0.0) return true;
    p.fillRect(area, QColor(250, 250, 246));
    Plan_Border(p, area);
    return false;
}

}  // namespace

void Paint_Solar_Plan(QPainter& p, const QRect& area, const SolarPlan& plan) {
    if (!Plan_Begin(p, area, plan.Extent)) return;
    // As the Sun sees the Earth: north up, east to the right.
    QPointF centre;
    const double k = Plan_Frame(p, area, plan.Extent, 1000.0, 5, " km", "W", "E", centre);
    p.setPen(QPen(kCoast, 1));
    p.setBrush(kLand);
    p.drawEllipse(centre, plan.EarthRadius * k, plan.EarthRadius * k);
    const QPointF pole(centre.x() + plan.PoleX * k, centre.y() - plan.PoleY * k);
    p.setPen(QPen(Qt::black, 1.5));
    p.drawLine(pole + QPointF(-5, -5), pole + QPointF(5, 5));
    p.drawLine(pole + QPointF(-5, 5), pole + QPointF(5, -5));
    p.drawText(pole + QPointF(7, 4), plan.NorthPole ? "N Pole" : "S Pole");
    if (plan.Shadows.size() >= 2) {
        p.setPen(QPen(QColor(60, 60, 60), 1, Qt::DashLine));
        const SolarPlanShadow& a = plan.Shadows.front();
        const SolarPlanShadow& b = plan.Shadows.back();
        p.drawLine(QPointF(centre.x() + a.X * k, centre.y() - a.Y * k),
                   QPointF(centre.x() + b.X * k, centre.y() - b.Y * k));
    }
    for (const SolarPlanShadow& s : plan.Shadows) {
        const QPointF c(centre.x() + s.X * k, centre.y() - s.Y * k);
        const Style pen = Style_Of("Penumbra");
        p.setPen(QPen(pen.colour, 1));
        p.setBrush(QBrush(pen.colour, pen.pattern));
        p.drawEllipse(c, s.Penumbra * k, s.Penumbra * k);
        p.setPen(Qt::NoPen);
        p.setBrush(Style_Of("Umbra").colour);
        p.drawEllipse(c, std::max(2.0, s.Umbra * k), std::max(2.0, s.Umbra * k));
        Plan_Label(p, QPointF(c.x(), c.y() - s.Penumbra * k), s.Label);
    }
    Plan_Border(p, area);
}

void Paint_Lunar_Plan(QPainter& p, const QRect& area, const LunarPlan& plan) {
    if (!Plan_Begin(p, area, plan.Extent)) return;
    // As the sky is seen: north up, east to the left; minutes of arc.
    QPointF centre;
    const double k = Plan_Frame(p, area, plan.Extent, 10.0, 3, "'", "E", "W", centre);

    const auto circle = [&](double r, const std::string& key) {
        const Style s = Style_Of(key);
        p.setPen(QPen(s.colour.darker(140), 1));
        QColor c = s.colour;
        c.setAlpha(150);
        p.setBrush(c);
        p.drawEllipse(centre, r * k, r * k);
    };
    circle(plan.PenumbraRadius, "Earth Penumbra");
    circle(plan.UmbraRadius, "Earth Umbra");

    // The Moon's track and its three places.
    if (plan.Moons.size() >= 2) {
        p.setPen(QPen(QColor(60, 60, 60), 1, Qt::DashLine));
        const LunarPlanMoon& a = plan.Moons.front();
        const LunarPlanMoon& b = plan.Moons.back();
        p.drawLine(QPointF(centre.x() + a.X * k, centre.y() - a.Y * k),
                   QPointF(centre.x() + b.X * k, centre.y() - b.Y * k));
    }
    for (const LunarPlanMoon& m : plan.Moons) {
        const QPointF c(centre.x() + m.X * k, centre.y() - m.Y * k);
        const double inside = std::hypot(m.X, m.Y);
        const std::string key = inside < plan.UmbraRadius ? "Umbra2" : "Penumbra2";
        p.setPen(QPen(Qt::black, 1));
        p.setBrush(Style_Of(key).colour);
        p.drawEllipse(c, plan.MoonRadius * k, plan.MoonRadius * k);
        Plan_Label(p, QPointF(c.x(), c.y() - plan.MoonRadius * k), m.Label);
    }
    Plan_Border(p, area);
}

std::vector<LegendEntry> Eclipse_Legend(bool solar, bool path, bool plan) {
    if (plan && solar)
        return {{"Umbra", {"Umbral shadow", "(Total Eclipse)"}},
                {"Penumbra", {"Penumbral shadow cast", "by Moon (Partial Eclipse)"}}};
    if (plan)
        return {{"Earth Penumbra", {"Penumbral shadow"}},
                {"Earth Umbra", {"Umbral shadow"}},
                {"Penumbra2", {"Moon in the", "Penumbral shadow"}},
                {"Umbra2", {"Moon in the", "Umbral shadow"}}};
    if (!solar)
        return {{"Visible", {"Eclipse visible"}}, {"Not Visible", {"No Eclipse"}}};
    if (path)
        return {{"Total", {"Total Eclipse Visible"}},
                {"Partial", {"Partial eclipse visible"}},
                {"No Solar", {"No Eclipse"}},
                {"Night", {"Night"}},
                {"Sub-Solar", {"Sub-Solar position"}}};
    return {{"Umbra", {"Umbral shadow", "(Total Eclipse)"}},
            {"Penumbra", {"Penumbral shadow cast", "by Moon (Partial Eclipse)"}},
            {"Night", {"Night"}},
            {"Sub-Solar", {"Sub-Solar position"}}};
}

void Paint_Legend_Swatch(QPainter& p, const QRect& box, const std::string& key) {
    const Style s = Style_Of(key);
    p.save();
    p.fillRect(box, key == "Night" || key == "Partial" || key == "Penumbra" || key == "Not Visible"
                        ? kLand
                        : QColor(Qt::white));
    if (key == "Sub-Solar") {
        p.setRenderHint(QPainter::Antialiasing, true);
        p.setPen(QPen(Qt::black, 1));
        p.setBrush(s.colour);
        p.drawEllipse(QRectF(box).center(), 5, 5);
    } else {
        p.fillRect(box, QBrush(s.colour, s.pattern));
    }
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(box.adjusted(0, 0, -1, -1));
    p.restore();
}

}  // namespace kelmoran
