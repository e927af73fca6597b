#include "stars/PlotStarsWindow.h"

#include <QCloseEvent>
#include <QCursor>
#include <QPainter>
#include <QPointer>
#include <algorithm>
#include <array>
#include <cmath>

#include "ephemeris/Bodies.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "shell/Grid_Model.h"
#include "shell/M_Edit.h"
#include "stars/FindStarWindow.h"
#include "stars/FindStar_Model.h"
#include "stars/M_Constellations.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"
#include "stars/PlotOptionsWindow.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

const QColor kSky(0, 0, 40);
const QColor kGrid(55, 75, 125);
const QColor kGridText(120, 140, 190);
const QColor kFigure(80, 110, 175);
const QColor kBoundary(95, 85, 130);
const QColor kDesig(150, 175, 255);
const QColor kName(235, 220, 150);
const QColor kBodyText(0x00, 0xFF, 0x00);
constexpr int32_t kToolWidth = 64;
constexpr int32_t kToolHeight = 22;
constexpr int32_t kStatusHeight = 18;
// A notch of the wheel.
constexpr int32_t kNotch = 120;
// How near the mouse an object must be for the pop-up, in pixels.
constexpr int32_t kPopUpReach = 6;

constexpr std::array<const char*, static_cast<size_t>(AtlasTool::Count)> kToolText = {
    "Dim", "Brighten", "Zoom In", "Zoom Out", "Options", "Find Star"};
constexpr std::array<const char*, static_cast<size_t>(AtlasTool::Count)> kToolTips = {
    "Dim the stars (or Ctrl + mouse wheel)", "Brighten the stars (or Ctrl + mouse wheel)",
    "Zoom in (or the mouse wheel)", "Zoom out (or the mouse wheel)",
    "Options for the Star Atlas", "Find any star and locate it here"};

// The slots drawn as Sun, Moon and planets, in their order.
constexpr std::array<int32_t, 10> kBodySlots = {1, 3, 4, 5, 6, 7, 8, 9, 10, 11};
// Glyphs of the bodies (slots 0 .. 11) by code point.
constexpr std::array<char32_t, 12> kGlyphs = {0x2609, 0x2609, 0x263D, 0x263D, 0x263F, 0x2640,
                                              0x2642, 0x2643, 0x2644, 0x2646, 0x2645, 0x2647};

QPointer<PlotStarsWindow> atlasWindow;

// A designation with its Greek letter as itself: "α", "α2", "58".
QString Desig_Text(const StarNames& names) {
    std::string d = names.Designation;
    d.erase(d.find_last_not_of(' ') + 1);
    if (d.empty()) return {};
    if (names.IsGreek && Greek_Code_Point(d[0]) != 0) {
        const char32_t c = Greek_Code_Point(d[0]);
        return QString::fromUcs4(&c, 1) + Q(d.substr(1));
    }
    return Q(d);
}

QString Glyph(char32_t c) {
    return QString::fromUcs4(&c, 1);
}

}  // namespace

// ------------------------------------------------------------------ the form

PlotStars::PlotStars(QWidget* window)
    : DateStripScreen(screen_key::PlotStars, window, window ? window->size() : QSize(960, 720)) {
    myDates_.IsShared = kFalse;
    myDates_.Configure_StarPlot_Dates(this, picture_.width());
    Layout();
}

void PlotStars::Layout() {
    myDates_.MyWidth = picture_.width();
    myDates_.Set_HotSpots();
    toolsTop_ = myDates_.MyFrame.Bottom + 4;
    const int32_t w = picture_.width(), h = picture_.height();
    sky_ = {0, toolsTop_ + kToolHeight + 4, w, std::max(toolsTop_ + kToolHeight + 64, h - kStatusHeight)};
    status_ = {0, sky_.Bottom, w, sky_.Bottom + kStatusHeight};
    const QFontMetrics fm(Drawing().Normal);
    plot_.Set_Picture(sky_.Width(), sky_.Height(), fm.horizontalAdvance('0'));
    bitmap_ = QImage(plot_.View.BitmapWidth, plot_.View.BitmapHeight, QImage::Format_RGB32);
}

void PlotStars::Resize(QSize size) {
    if (!Resize_Picture(size)) return;
    Layout();
    // The bitmap is laid out again: the view starts afresh at its zoom 1.
    Compute_Places();
    Switch_Projection(Atlas_Options().View);
}

void PlotStars::Load() {
    Load_Moment();
    Compose();
}

void PlotStars::Force_Update() {
    if (Shell.Up_To_Date(key_)) return;
    SetDates();
    CalcDates();
    Shell.Up_To_Date(key_) = kTrue;
}

void PlotStars::CalcDates() {
    Take_Strip_Moment();
    Compute_Places();
    plot_.Plot();
    DrawBitMaps();
}

void PlotStars::Compute_Places() {
    const AtlasOptions& o = Atlas_Options();
    plot_.View.MainStarLimit = std::min(Main_Star_Limit(o.MainStarEntry), Catalogue_Upper());
    plot_.View.BackgroundLimit = std::min(Background_Limit(o.BackgroundEntry), Catalogue_Upper());
    plot_.View.BackgroundLimit = std::max(plot_.View.BackgroundLimit, plot_.View.MainStarLimit);
    plot_.View.MinorPlanets = o.MinorPlanets;
    plot_.View.Heading = o.ShowNorthUp ? 0.0 : o.Heading * kOneDegree;

    const double jd = myJD_;
    float lat = 0, lon = 0, course = 0, speed = 0;
    Get_Position(jd, lat, lon, course, speed);
    statusText_ = Settings.PositionMethod != 0 && Is_DR_Error(course)
                      ? position_text::ErrorCalculating
                      : "";
    plot_.View.Latitude = lat;
    plot_.View.LST = Reduce_2Pi(Calc_GAST(jd) + lon);

    // The stars: new ones computed, and those whose place has aged beyond its interval.
    // The figures' stars are computed even where they are fainter than the plot.
    const int32_t limit = std::max(plot_.View.BackgroundLimit, Highest_Figure_Star());
    Compute_Star_Places(limit, jd);
    for (int32_t s = 12; s <= limit && s < static_cast<int32_t>(StarPlaces.size()); ++s) {
        StarPlace& p = StarPlaces[static_cast<size_t>(s)];
        if (p.Done && std::fabs(p.JD - jd) > p.Validity) {
            Calc_Star_Place(s, p.RA, p.Dec, jd);
            p.JD = jd;
        }
    }
    // The Sun, Moon and planets from the body service.
    std::vector<int32_t> list(kBodySlots.begin(), kBodySlots.end());
    Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);
    for (int32_t b = 0; b < 12; ++b) {
        const BodyRecord& r = Bodies[static_cast<size_t>(b < 2 ? 1 : b < 4 ? 3 : b)];
        StarPlace& p = StarPlaces[static_cast<size_t>(b)];
        p.RA = r.RA;
        p.Dec = r.Dec;
        if (b >= 4) p.Magnitude = r.Magnitude;
    }
    placesJD_ = jd;
}

void PlotStars::Switch_Projection(const std::string& view) {
    Atlas_Options().View = view;
    plot_.Switch_Projection(view);
    DrawBitMaps();
}

void PlotStars::Configure_Form() {
    const AtlasOptions& o = Atlas_Options();
    Load_Tiers_For_Limit(std::max(Main_Star_Limit(o.MainStarEntry), Background_Limit(o.BackgroundEntry)));
    if (o.PopUpDetails) {
        if (HD_Numbers.empty()) Load_HD_Numbers();
        if (Hip_Numbers.empty()) Load_Hip_Numbers();
    }
    Compute_Places();
    Switch_Projection(o.View);
}

// ------------------------------------------------------------------ drawing

PlotStars::Copies PlotStars::Repeats(int32_t x) const {
    Copies c;
    c.X[0] = x;
    c.N = 1;
    if (plot_.View.IsEquatorial && plot_.View.Zoom >= 2) {
        const double wrap = plot_.Wrap_Width();
        for (double r = x + wrap; r < plot_.View.BitmapWidth && c.N < 8; r += wrap)
            c.X[static_cast<size_t>(c.N++)] = static_cast<int32_t>(std::lround(r));
    }
    return c;
}

namespace {

// Coverage masks of discs, by radius in quarters of a pixel: (2n + 1) squared bytes each,
// four samples a pixel in each direction.
struct DiscMask {
    int32_t Half = 0;
    std::vector<uint8_t> Alpha;
};

const DiscMask& Mask_For(float r) {
    static std::array<DiscMask, 40> masks;
    const size_t k = static_cast<size_t>(std::clamp(static_cast<int>(std::lround(r * 4.0f)), 1, 39));
    DiscMask& m = masks[k];
    if (m.Alpha.empty()) {
        const float radius = static_cast<float>(k) / 4.0f;
        m.Half = static_cast<int32_t>(std::ceil(radius));
        const int32_t n = 2 * m.Half + 1;
        m.Alpha.assign(static_cast<size_t>(n * n), 0);
        for (int32_t j = 0; j < n; ++j)
            for (int32_t i = 0; i < n; ++i) {
                int inside = 0;
                for (int sy = 0; sy < 4; ++sy)
                    for (int sx = 0; sx < 4; ++sx) {
                        const float dx = i - m.Half + (sx + 0.5f) / 4.0f - 0.5f;
                        const float dy = j - m.Half + (sy + 0.5f) / 4.0f - 0.5f;
                        inside += dx * dx + dy * dy <= radius * radius ? 1 : 0;
                    }
                m.Alpha[static_cast<size_t>(j * n + i)] = static_cast<uint8_t>(inside * 255 / 16);
            }
    }
    return m;
}

}  // namespace

void PlotStars::Blend_Disc(int32_t x, int32_t y, float r) {
    const DiscMask& m = Mask_For(r);
    const int32_t n = 2 * m.Half + 1, w = bitmap_.width(), h = bitmap_.height();
    uchar* bits = bitmap_.bits();
    const qsizetype stride = bitmap_.bytesPerLine();
    for (int32_t j = 0; j < n; ++j) {
        const int32_t py = y - m.Half + j;
        if (py < 0 || py >= h) continue;
        QRgb* line = reinterpret_cast<QRgb*>(bits + py * stride);
        for (int32_t i = 0; i < n; ++i) {
            const int32_t px = x - m.Half + i;
            const int a = m.Alpha[static_cast<size_t>(j * n + i)];
            if (a == 0 || px < 0 || px >= w) continue;
            const QRgb d = line[px];
            // White over what is there, by the coverage.
            line[px] = qRgb(qRed(d) + (255 - qRed(d)) * a / 255, qGreen(d) + (255 - qGreen(d)) * a / 255,
                            qBlue(d) + (255 - qBlue(d)) * a / 255);
        }
    }
}

void PlotStars::DrawBitMaps() {
    ++Redraws;
    const AtlasOptions& o = Atlas_Options();
    bitmap_.fill(kSky);
    {
        QPainter p(&bitmap_);
        p.setRenderHint(QPainter::Antialiasing, true);
        if (plot_.View.Zoom == 1 || o.Option1) Draw_Grid(p);
        if (o.ShowBoundaries) {
            QPen pen(kBoundary, 1, Qt::DashLine);
            p.setPen(pen);
            for (const Segment& s : Constellation_Boundary_Segments(plot_, myJD_))
                for (int32_t x : Repeats(s.X1)) p.drawLine(x, s.Y1, x + s.X2 - s.X1, s.Y2);
        }
        if (o.ShowGuides) {
            p.setPen(QPen(kFigure, 1));
            for (const Segment& s : Constellation_Line_Segments(plot_))
                for (int32_t x : Repeats(s.X1)) p.drawLine(x, s.Y1, x + s.X2 - s.X1, s.Y2);
        }
    }
    Draw_Stars();
    Compose();
}

void PlotStars::Draw_Stars() {
    const auto& pts = plot_.Points;
    const int32_t w = bitmap_.width(), h = bitmap_.height();
    // The faint stars first, as single pixels whose brightness goes with the level.
    {
        uchar* bits = bitmap_.bits();
        const qsizetype stride = bitmap_.bytesPerLine();
        for (size_t s = 12; s < pts.size(); ++s) {
            const PlotPoint& pt = pts[s];
            if ((pt.X == 0 && pt.Y == 0) || pt.Level > kFaintestLevel || Disc_Radius(pt.Level) > 0.75f) continue;
            const int g = static_cast<int>(255.0f * std::clamp((10.75f - pt.Level) / 4.0f, 0.3f, 1.0f));
            for (int32_t x : Repeats(pt.X)) {
                if (x < 0 || x >= w || pt.Y < 0 || pt.Y >= h) continue;
                reinterpret_cast<QRgb*>(bits + pt.Y * stride)[x] = qRgb(g, g, g);
            }
        }
    }
    for (size_t s = 12; s < pts.size(); ++s) {
        const PlotPoint& pt = pts[s];
        if ((pt.X == 0 && pt.Y == 0) || pt.Level > kFaintestLevel) continue;
        const float r = Disc_Radius(pt.Level);
        if (r <= 0.75f) continue;
        for (int32_t x : Repeats(pt.X)) Blend_Disc(x, pt.Y, r);
    }
    QPainter p(&bitmap_);
    p.setRenderHint(QPainter::Antialiasing, true);
    Draw_Texts(p);
    Draw_Bodies(p);
    Draw_Circle(p);
}

void PlotStars::Draw_Texts(QPainter& p) {
    const AtlasOptions& o = Atlas_Options();
    const auto& pts = plot_.Points;
    const DrawingObjects& d = Drawing();
    LabelRoom room(bitmap_.width(), bitmap_.height());
    // A text at (x, y) (its base line) unless it would lie over one placed before.
    auto place = [&](const QFontMetrics& fm, int32_t x, int32_t y, const QString& text) {
        const int32_t w = fm.horizontalAdvance(text);
        bool drawn = false;
        for (int32_t rx : Repeats(x)) {
            if (!room.Take({rx, y - fm.ascent(), rx + w, y + fm.descent()})) continue;
            p.drawText(rx, y, text);
            drawn = true;
        }
        return drawn;
    };
    // Nothing is written over anything else: the stars' names take their room first (the
    // brightest first), then the constellations', then the designations.
    const int32_t last = std::min<int32_t>(plot_.View.MainStarLimit, static_cast<int32_t>(pts.size()) - 1);
    auto each_star = [&](auto&& label) {
        for (int32_t s = 12; s <= last; ++s) {
            const PlotPoint& pt = pts[static_cast<size_t>(s)];
            if ((pt.X == 0 && pt.Y == 0) || pt.Level > kFaintestLevel) continue;
            label(s, pt, static_cast<int32_t>(Disc_Radius(pt.Level)));
        }
    };
    if (o.ShowNames) {
        p.setFont(d.Normal);
        p.setPen(kName);
        const QFontMetrics fm(d.Normal);
        each_star([&](int32_t s, const PlotPoint& pt, int32_t r) {
            const std::string& name = StarPlaces[static_cast<size_t>(s)].Name;
            if (Catalogue[static_cast<size_t>(s)].NameFlag == 'N' && !name.empty())
                place(fm, pt.X + r + 3, pt.Y - r - 2, Q(name));
        });
    }
    if (o.ShowConstellations) {
        p.setFont(d.Normal);
        p.setPen(Qt::white);
        const QFontMetrics fm(d.Normal);
        for (const LabelSpot& l : Constellation_Label_Spots(plot_)) {
            const QString text = Q(l.Text);
            place(fm, l.X - fm.horizontalAdvance(text) / 2, l.Y, text);
        }
    }
    if (o.ShowDesigs) {
        p.setFont(d.Greek);
        p.setPen(kDesig);
        const QFontMetrics fm(d.Greek);
        each_star([&](int32_t s, const PlotPoint& pt, int32_t r) {
            const CatalogueStar& c = Catalogue[static_cast<size_t>(s)];
            if (c.NameFlag == 0 && !(o.ShowVariables && c.VarFlag != ' ')) return;
            const QString text = Desig_Text(StarPlaces[static_cast<size_t>(s)]);
            if (!text.isEmpty()) place(fm, pt.X + r + 2, pt.Y + r + 10, text);
        });
    }
}

void PlotStars::Draw_Bodies(QPainter& p) {
    const AtlasOptions& o = Atlas_Options();
    const DrawingObjects& d = Drawing();
    for (int32_t b : kBodySlots) {
        if (static_cast<size_t>(b) >= plot_.Points.size()) continue;
        const PlotPoint& pt = plot_.Points[static_cast<size_t>(b)];
        if (pt.X == 0 && pt.Y == 0) continue;
        const QColor disc = b == 1 ? QColor(255, 230, 80) : b == 3 ? QColor(220, 220, 220) : QColor(255, 200, 150);
        const float r = b < 4 ? 6.0f : std::max(2.0f, Disc_Radius(pt.Level));
        const QString name = b == 1 ? "Sun" : b == 3 ? "Moon" : Q(kBodyNames[static_cast<size_t>(b)]);
        for (int32_t x : Repeats(pt.X)) {
            p.setPen(Qt::NoPen);
            p.setBrush(disc);
            p.drawEllipse(QPointF(x, pt.Y), r, r);
            p.setPen(kBodyText);
            if (o.ShowCyrillic) {
                p.setFont(d.Bold);
                p.drawText(QRect(x + 6, pt.Y - 16, 12, 16), Qt::AlignCenter,
                           Glyph(kGlyphs[static_cast<size_t>(b)]));
            } else {
                p.setFont(d.Normal);
                p.drawText(x + 5, pt.Y - 15 + QFontMetrics(d.Normal).ascent(), name);
            }
        }
    }
}

void PlotStars::Draw_Circle(QPainter& p) {
    if (marked_ < 0 || static_cast<size_t>(marked_) >= StarPlaces.size()) return;
    int32_t x = 0, y = 0;
    if (!plot_.Map(StarPlaces[static_cast<size_t>(marked_)].RA, StarPlaces[static_cast<size_t>(marked_)].Dec, x, y))
        return;
    p.setPen(QPen(QColor(255, 60, 60), 2));
    p.setBrush(Qt::NoBrush);
    for (int32_t rx : Repeats(x)) p.drawEllipse(QPoint(rx, y), 12, 12);
}

void PlotStars::Draw_Grid(QPainter& p) {
    p.setPen(QPen(kGrid, 1));
    p.setBrush(Qt::NoBrush);
    p.setFont(Drawing().Normal);
    if (plot_.View.IsEquatorial) {
        Draw_Equatorial_Grid(p);
    } else {
        Draw_Spherical_Grid(p);
    }
}

void PlotStars::Draw_Equatorial_Grid(QPainter& p) {
    const AtlasViewState& v = plot_.View;
    const Rect& clip = v.Clip;
    p.setClipRect(To_QRect(clip));
    // Declination every 15 degrees (every degree from zoom 16), labelled at the left.
    const int32_t step = v.Zoom >= 16 ? 1 : v.Zoom >= 4 ? 5 : 15;
    const int32_t left = v.Zoom == 1 ? clip.Left : v.ScrollX;
    for (int32_t dec = -90; dec <= 90; dec += step) {
        const int32_t y = static_cast<int32_t>(std::lround(v.BitmapHeight / 2.0 - (dec * kOneDegree - v.CentreDec) / v.ScaleY));
        if (y < clip.Top || y > clip.Bottom) continue;
        p.setPen(QPen(kGrid, dec == 0 ? 2 : 1));
        p.drawLine(clip.Left, y, clip.Right, y);
        std::string label;
        if (dec == 90) label = "90° N";
        else if (dec == -90) label = "90° S";
        else if (dec == 0) label = "  0° N";
        else if (dec == 45) label = "45° N";
        else if (dec == -45) label = "45° S";
        else if (v.Zoom > 1) label = Format_Number(std::abs(dec), "##0°") + (dec > 0 ? " N" : " S");
        if (!label.empty()) {
            p.setPen(kGridText);
            p.drawText(left + 4, y - 3, Q(label));
        }
    }
    // Right ascension every hour (every 2 at zoom 1; every 10 minutes from zoom 16).
    const double minutes = v.Zoom == 1 ? 120.0 : v.Zoom >= 16 ? 10.0 : 60.0;
    const int32_t bottom = v.Zoom == 1 ? clip.Bottom - 4 : v.ScrollY + sky_.Height() - 6;
    for (double m = 0.0; m < 1440.0; m += minutes) {
        const double ra = m / 1440.0 * kTwoPi;
        int32_t x = 0, y = 0;
        if (!plot_.Map(ra, std::clamp(static_cast<double>(v.CentreDec), -1.5, 1.5), x, y)) continue;
        for (int32_t rx : Repeats(x)) {
            p.setPen(QPen(kGrid, 1));
            p.drawLine(rx, clip.Top, rx, clip.Bottom);
            p.setPen(kGridText);
            std::string label;
            if (Settings.ShowRA) {
                label = Format_Number(std::floor(m / 60.0), " #0") + "h";
                if (std::fmod(m, 60.0) != 0.0) label += Format_Number(std::fmod(m, 60.0), "00") + "m";
            } else {
                label = Format_Number(std::fmod(360.0 - m / 4.0, 360.0), "##0°");
            }
            p.drawText(rx + 3, bottom, Q(label));
        }
    }
    p.setClipping(false);
}

void PlotStars::Draw_Spherical_Grid(QPainter& p) {
    const AtlasViewState& v = plot_.View;
    const double r = static_cast<double>(v.Zoom) * v.BaseRadius;
    const QPointF c(v.CentreX, v.CentreY);
    // Rings every 15 degrees of altitude or declination; the rim thicker.
    for (int32_t ring = 0; ring < 90; ring += 15) {
        const double rho = (90 - ring) / 90.0 * r;
        p.setPen(QPen(kGrid, ring == 0 ? 2 : 1));
        p.drawEllipse(c, rho, rho);
        if (ring > 0) {
            p.setPen(kGridText);
            const std::string label = Format_Number(v.IsSouth ? -ring : ring, " 00") + "°";
            p.drawText(QPointF(c.x() + 3, c.y() - rho - 3), Q(label));
        }
    }
    // Spokes every 30 degrees of azimuth or two hours of right ascension, named at the rim.
    for (int32_t k = 0; k < 12; ++k) {
        double a = 0.0;
        std::string label;
        if (v.IsVisibleSky) {
            const double az = k * 30.0;
            a = kTwoPi - az * kOneDegree + v.Heading;
            label = Format_Number(az, "000°");
        } else {
            const double ra = k * 2.0 * 15.0 * kOneDegree;
            a = v.IsSouth ? kTwoPi - ra : ra;
            label = Settings.ShowRA ? Format_Number(k * 2.0, " 00") + "h"
                                    : Format_Number(std::fmod(360.0 - k * 30.0, 360.0), "000°");
        }
        const QPointF rim(c.x() + r * std::sin(a), c.y() - r * std::cos(a));
        p.setPen(QPen(kGrid, 1));
        p.drawLine(c, rim);
        p.setPen(kGridText);
        const QPointF out(c.x() + (r + 14) * std::sin(a), c.y() - (r + 14) * std::cos(a));
        const QString text = Q(label);
        const int32_t half = QFontMetrics(p.font()).horizontalAdvance(text) / 2;
        p.drawText(QPointF(out.x() - half, out.y() + 5), text);
    }
}

void PlotStars::Draw_Tools(QPainter& p) {
    p.setFont(Drawing().Normal);
    for (int32_t t = 0; t < static_cast<int32_t>(AtlasTool::Count); ++t) {
        const Rect r = Tool_Rect(static_cast<AtlasTool>(t));
        p.fillRect(To_QRect(r), Drawing().Face);
        Draw_3D_Frame(p, r, false);
        p.setPen(Qt::black);
        p.drawText(To_QRect(r), Qt::AlignCenter, kToolText[static_cast<size_t>(t)]);
    }
    // What the atlas shows, to the right of the tools.
    const AtlasViewState& v = plot_.View;
    const std::string view = v.IsEquatorial ? "Equatorial" : v.IsNorth ? "Northern Sky"
                             : v.IsSouth    ? "Southern Sky" : "Visible Sky";
    const Rect last = Tool_Rect(AtlasTool::FindStar);
    p.drawText(QRect(last.Right + 16, last.Top, picture_.width() - last.Right - 20, last.Height()),
               Qt::AlignLeft | Qt::AlignVCenter,
               Q(view + "   Zoom " + std::to_string(v.Zoom) + "   Dim " + std::to_string(-v.DimOffset)));
}

Rect PlotStars::Tool_Rect(AtlasTool tool) const {
    const int32_t i = static_cast<int32_t>(tool);
    return {8 + i * (kToolWidth + 4), toolsTop_, 8 + i * (kToolWidth + 4) + kToolWidth, toolsTop_ + kToolHeight};
}

QPoint PlotStars::Picture_Point(int32_t bx, int32_t by) const {
    return QPoint(bx - plot_.View.ScrollX + sky_.Left, by - plot_.View.ScrollY + sky_.Top);
}

void PlotStars::Compose() {
    picture_.fill(Qt::white);
    {
        QPainter p(&picture_);
        p.drawImage(QPoint(sky_.Left, sky_.Top), bitmap_,
                    QRect(plot_.View.ScrollX, plot_.View.ScrollY, sky_.Width(), sky_.Height()));
        Draw_Tools(p);
        p.setFont(Drawing().Normal);
        p.setPen(statusText_.empty() ? Qt::black : Qt::red);
        p.drawText(To_QRect(status_).adjusted(6, 0, -6, 0), Qt::AlignLeft | Qt::AlignVCenter,
                   Q(statusText_.empty() ? skyText_ : statusText_));
        if (!popupLines_.empty()) {
            // The pop-up: a small box beside the object.
            const QFontMetrics fm(Drawing().Normal);
            int32_t w = 0;
            for (const auto& l : popupLines_) w = std::max<int32_t>(w, fm.horizontalAdvance(Q(l)));
            QRect box(popupAt_.x() + 12, popupAt_.y() + 12, w + 12, fm.height() * static_cast<int>(popupLines_.size()) + 8);
            if (box.right() > sky_.Right) box.moveRight(popupAt_.x() - 12);
            if (box.bottom() > sky_.Bottom) box.moveBottom(popupAt_.y() - 12);
            p.fillRect(box, QColor(255, 255, 225));
            p.setPen(Qt::black);
            p.drawRect(box.adjusted(0, 0, -1, -1));
            int32_t y = box.top() + 4 + fm.ascent();
            for (const auto& l : popupLines_) {
                p.drawText(box.left() + 6, y, Q(l));
                y += fm.height();
            }
        }
    }
    myDates_.Paint_Dates(false);
    if (window_) window_->update();
}

// ------------------------------------------------------------------ the pop-up

int32_t PlotStars::Object_At(int32_t bx, int32_t by) const {
    int32_t best = -1;
    int64_t bestD = static_cast<int64_t>(kPopUpReach) * kPopUpReach + 1;
    const auto& pts = plot_.Points;
    const double wrap = plot_.View.IsEquatorial && plot_.View.Zoom >= 2 ? plot_.Wrap_Width() : 0.0;
    for (size_t s = 1; s < pts.size(); ++s) {
        if (s == 2) continue;  // the Moon's upper limb: the Moon is slot 3
        const PlotPoint& pt = pts[s];
        if ((pt.X == 0 && pt.Y == 0) || pt.Level > kFaintestLevel) continue;
        int32_t dx = bx - pt.X;
        if (wrap > 0.0 && dx > 0) dx = static_cast<int32_t>(std::lround(std::fmod(dx, wrap)));
        if (wrap > 0.0 && dx > wrap / 2) dx -= static_cast<int32_t>(std::lround(wrap));
        const int64_t dy = by - pt.Y;
        const int64_t d = static_cast<int64_t>(dx) * dx + dy * dy;
        if (d < bestD) {
            bestD = d;
            best = static_cast<int32_t>(s);
        }
    }
    return best;
}

void PlotStars::PrepareToPopUp(int32_t x, int32_t y) {
    const int32_t bx = x - sky_.Left + plot_.View.ScrollX, by = y - sky_.Top + plot_.View.ScrollY;
    const int32_t s = sky_.Contains(x, y) ? Object_At(bx, by) : -1;
    if (s == popupStar_) return;
    popupStar_ = s;
    popupLines_.clear();
    if (s >= 0) {
        const StarPlace& sp = StarPlaces[static_cast<size_t>(s)];
        if (s < 12) {
            popupLines_.push_back(s <= 1 ? "Sun" : s <= 3 ? "Moon" : kBodyNames[static_cast<size_t>(s)]);
        } else {
            if (!sp.Name.empty()) popupLines_.push_back(sp.Name);
            const QString desig = Desig_Text(sp);
            if (!desig.isEmpty()) {
                const std::string abbrev = sp.Constellation >= 1 && sp.Constellation <= 88
                                               ? " " + Constellation_Abbrev[sp.Constellation] : "";
                popupLines_.push_back(desig.toStdString() + abbrev);
            }
            if (popupLines_.empty()) popupLines_.push_back("Star " + std::to_string(s));
        }
        popupLines_.push_back("Magnitude " + Format_Number(sp.Magnitude, "#0.00"));
        popupLines_.push_back("R.A. " + Format_RA(sp.RA, 1, false) + "   S.H.A. " +
                              Format_Angle(Reduce_2Pi(kTwoPi - sp.RA), 1, false));
        popupLines_.push_back("Dec. " + Format_Lat(sp.Dec, 1, false));
        // Where the observer sees it: the altitude of the kind the settings give.
        AltAzResult aa;
        if (s < 12) {
            const BodyRecord& r = Bodies[static_cast<size_t>(s)];
            aa.TrueAlt = r.TrueAlt;
            aa.SextantAlt = r.SextantAlt;
            aa.Azimuth = r.Azimuth;
            aa.Refraction = 0.0f;
        } else {
            BodyPlace place;
            float lat = 0, lon = 0;
            aa = Star_AltAz(s, myJD_, place, lat, lon);
        }
        const std::string caption = Set_Alt_Option_Caption();
        // The body service's sextant altitude of the Sun, Moon and planets has the limb in it.
        const AltKind kind = caption == "App. Alt." && s >= 12 ? AltKind::Apparent : AltKind::Observed;
        popupLines_.push_back(caption + " " + Altitude_Text(aa, kind) + "   Az. " +
                              Format_Number(aa.Azimuth * kDegreesPerRadian, "000°.0"));
        if (Atlas_Options().PopUpDetails && s >= 12) {
            std::string numbers;
            if (static_cast<size_t>(s) < HD_Numbers.size() && HD_Numbers[static_cast<size_t>(s)])
                numbers += "HD " + std::to_string(HD_Numbers[static_cast<size_t>(s)]) + "   ";
            if (static_cast<size_t>(s) < Hip_Numbers.size() && Hip_Numbers[static_cast<size_t>(s)])
                numbers += "HIP " + std::to_string(Hip_Numbers[static_cast<size_t>(s)]);
            if (!numbers.empty()) popupLines_.push_back(numbers);
        }
        popupAt_ = Picture_Point(plot_.Points[static_cast<size_t>(s)].X, plot_.Points[static_cast<size_t>(s)].Y);
        if (!sky_.Contains(popupAt_.x(), popupAt_.y())) popupAt_ = QPoint(x, y);
    }
    Compose();
}

void PlotStars::Kill_PopUp() {
    if (popupStar_ < 0 && popupLines_.empty()) return;
    popupStar_ = -1;
    popupLines_.clear();
    Compose();
}

// ------------------------------------------------------------------ mouse and keys

void PlotStars::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    if (Click_Into_Edit(button, x, y)) return;
    if (y < toolsTop_) {
        myDates_.MouseDown(x, y, button, shift);
        return;
    }
    for (int32_t t = 0; t < static_cast<int32_t>(AtlasTool::Count); ++t) {
        if (!Tool_Rect(static_cast<AtlasTool>(t)).Contains(x, y) || button != mouse::Left) continue;
        const int32_t cx = plot_.View.ScrollX + sky_.Width() / 2, cy = plot_.View.ScrollY + sky_.Height() / 2;
        switch (static_cast<AtlasTool>(t)) {
            case AtlasTool::Dim: Dim(1); break;
            case AtlasTool::Brighten: Dim(-1); break;
            case AtlasTool::ZoomIn: plot_.Zoom_At(1, cx, cy); DrawBitMaps(); break;
            case AtlasTool::ZoomOut: plot_.Zoom_At(2, cx, cy); DrawBitMaps(); break;
            case AtlasTool::Options: if (Open_Options) Open_Options(); break;
            case AtlasTool::FindStar: if (Open_Find_Star) Open_Find_Star(); break;
            case AtlasTool::Count: break;
        }
        Compose();
        return;
    }
    if (button == mouse::Left && sky_.Contains(x, y)) {
        Kill_PopUp();
        dragging_ = true;
        lastX_ = x;
        lastY_ = y;
        if (window_) window_->setCursor(Qt::ClosedHandCursor);
    }
}

void PlotStars::SysMsg_MouseMove(int32_t button, int32_t, int32_t x, int32_t y) {
    if (dragging_ && (button & mouse::Left)) {
        const int32_t dx = x - lastX_, dy = y - lastY_;
        lastX_ = x;
        lastY_ = y;
        if (dx == 0 && dy == 0) return;
        // Within the third only the window onto the bitmap moves; beyond it, a new plot.
        if (plot_.Drag(dx, dy)) DrawBitMaps();
        Compose();
        return;
    }
    // The tools' help, else the pop-up of the object under the mouse.
    hoverTool_ = -1;
    for (int32_t t = 0; t < static_cast<int32_t>(AtlasTool::Count); ++t)
        if (Tool_Rect(static_cast<AtlasTool>(t)).Contains(x, y)) hoverTool_ = t;
    if (window_) window_->setToolTip(hoverTool_ >= 0 ? kToolTips[static_cast<size_t>(hoverTool_)] : "");
    if (window_) window_->setCursor(sky_.Contains(x, y) ? Qt::OpenHandCursor : Qt::ArrowCursor);
    if (x == mouse::LeaveXY && y == mouse::LeaveXY) {
        skyText_.clear();
        Kill_PopUp();
        return;
    }
    // The status line tells the sky under the mouse.
    skyText_.clear();
    if (sky_.Contains(x, y)) {
        const SkyPoint sky = plot_.Screen_To_Sky(x - sky_.Left + plot_.View.ScrollX, y - sky_.Top + plot_.View.ScrollY);
        if (sky.OnMap) {
            skyText_ = "R.A. " + Format_RA(sky.RA, 1, false) + "   S.H.A. " +
                       Format_Angle(Reduce_2Pi(kTwoPi - sky.RA), 1, false) + "   Dec. " + Format_Lat(sky.Dec, 1, false);
            if (plot_.View.IsVisibleSky)
                skyText_ += "   Alt. " + Format_Angle(sky.Alt, 1, false) + "   Az. " +
                            Format_Number(sky.Az * kDegreesPerRadian, "000°.0");
        }
    }
    const int32_t shown = popupStar_;
    PrepareToPopUp(x, y);
    if (shown == popupStar_) Compose();
}

void PlotStars::SysMsg_MouseUp(int32_t, int32_t, int32_t, int32_t) {
    if (!dragging_) return;
    dragging_ = false;
    if (window_) window_->setCursor(Qt::OpenHandCursor);
}

void PlotStars::SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) {
    if (y < toolsTop_) {
        if (const int32_t steps = Wheel_Notches(delta)) myDates_.MouseScroll(x, y, steps);
        return;
    }
    // The notches are counted and acted on together once the queue has been read, so that
    // a fast roll of the wheel makes one redraw.
    if (shift & mouse::Ctrl) {
        pendingDim_ += delta;
    } else {
        pendingZoom_ += delta;
        wheelX_ = x;
        wheelY_ = y;
    }
    if (!wheelQueued_ && window_) {
        wheelQueued_ = true;
        QMetaObject::invokeMethod(window_, [this] { Flush_Wheel(); }, Qt::QueuedConnection);
    }
}

void PlotStars::Flush_Wheel() {
    wheelQueued_ = false;
    const int32_t zoomSteps = pendingZoom_ / kNotch, dimSteps = pendingDim_ / kNotch;
    pendingZoom_ -= zoomSteps * kNotch;
    pendingDim_ -= dimSteps * kNotch;
    if (zoomSteps == 0 && dimSteps == 0) return;
    Kill_PopUp();
    if (dimSteps != 0) {
        // Rolling forward brightens.
        plot_.View.DimOffset += dimSteps;
    }
    if (zoomSteps != 0) {
        const int32_t bx = wheelX_ - sky_.Left + plot_.View.ScrollX;
        const int32_t by = wheelY_ - sky_.Top + plot_.View.ScrollY;
        const int32_t kind = zoomSteps > 0 ? 1 : 2;
        // The zoom about the mouse keeps that point still: the steps after the first are
        // about the same sky point, now at the same pixel.
        int32_t x = bx, y = by;
        for (int32_t i = 0; i < std::abs(zoomSteps) && i < 12; ++i) {
            const int32_t ox = plot_.View.ScrollX - plot_.View.BitmapWidth / 3;
            const int32_t oy = plot_.View.ScrollY - plot_.View.BitmapHeight / 3;
            plot_.Zoom_At(kind, x, y);
            x -= ox;
            y -= oy;
        }
    } else {
        plot_.Plot();
    }
    DrawBitMaps();
    Compose();
}

void PlotStars::Dim(int32_t steps) {
    plot_.View.DimOffset -= steps;
    plot_.Plot();
    DrawBitMaps();
    Compose();
}

void PlotStars::SysMsg_KeyDown(int32_t key, int32_t) {
    if (Edit.Editing && Edit_Key_Down(key)) return;
    const int32_t step = sky_.Width() / 8;
    switch (key) {
        case vkey::Left: plot_.Drag(step, 0); break;
        case vkey::Right: plot_.Drag(-step, 0); break;
        case vkey::Up: plot_.Drag(0, step); break;
        case vkey::Down: plot_.Drag(0, -step); break;
        case vkey::PageUp: Dim(-1); return;
        case vkey::PageDown: Dim(1); return;
        case vkey::Home: Switch_Projection(Atlas_Options().View); Compose(); return;
        default: return;
    }
    DrawBitMaps();
    Compose();
}

void PlotStars::SysMsg_KeyPress(int32_t character) {
    if (Edit.Editing) {
        Edit_Key_Press(character);
        return;
    }
    // "+" zooms in about the middle of the picture, "-" out.
    const int32_t cx = plot_.View.ScrollX + sky_.Width() / 2, cy = plot_.View.ScrollY + sky_.Height() / 2;
    if (character == '+' || character == '=') {
        plot_.Zoom_At(1, cx, cy);
    } else if (character == '-') {
        plot_.Zoom_At(2, cx, cy);
    } else {
        return;
    }
    DrawBitMaps();
    Compose();
}

// ------------------------------------------------------------------ Find Star's link

bool PlotStars::Can_Show(int32_t star) const {
    if (star < 0 || static_cast<size_t>(star) >= StarPlaces.size()) return false;
    const StarPlace& p = StarPlaces[static_cast<size_t>(star)];
    const AtlasViewState& v = plot_.View;
    if (v.IsEquatorial) return true;
    if (v.IsNorth) return p.Dec >= 0.0;
    if (v.IsSouth) return p.Dec < 0.0;
    const double sinH = std::sin(v.Latitude) * std::sin(p.Dec) +
                        std::cos(v.Latitude) * std::cos(p.Dec) * std::cos(v.LST - p.RA);
    return sinH >= 0.0;
}

void PlotStars::Move_to_Star(int32_t star) {
    if (star < 12 || !Load_Tiers_For(star)) return;
    Compute_Star_Places(star, myJD_);
    StarPlace& sp = StarPlaces[static_cast<size_t>(star)];
    if (std::fabs(sp.JD - myJD_) > sp.Validity) {
        Calc_Star_Place(star, sp.RA, sp.Dec, myJD_);
        sp.JD = myJD_;
    }
    if (!Can_Show(star)) return;
    marked_ = star;
    plot_.Centre_On(sp.RA, sp.Dec);
    DrawBitMaps();
    int32_t x = 0, y = 0;
    if (plot_.Map(sp.RA, sp.Dec, x, y) && window_) {
        const QPoint at = Picture_Point(x, y);
        QCursor::setPos(window_->mapToGlobal(at));
    }
    Compose();
}

// ------------------------------------------------------------------ the window

PlotStarsWindow::PlotStarsWindow() : QWidget(nullptr) {
    setWindowTitle("Star Atlas");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    resize(960, 720);
    form_ = std::make_unique<PlotStars>(this);
    hook_.MyOwner = form_.get();
    hook_.SubClass(this);
    // Find Star opens at the star it showed last.
    form_->Open_Find_Star = [this] {
        Open_Find_Star(this, Find_Star_Form(this).Model().EntryStar, screen_key::PlotStars);
    };
    form_->Open_Options = [this] {
        if (!options_) {
            options_ = new PlotOptionsWindow(this);
            options_->ChangeDisplay = [this] { form_->Configure_Form(); };
        }
        options_->Load_Options();
        options_->show();
        options_->raise();
    };
    FindStarWindow::Locate = [this](int32_t star) { form_->Move_to_Star(star); };
    FindStarWindow::Reach = [this](int32_t star) {
        if (!isVisible()) return AtlasReach::NotOpen;
        return form_->Can_Show(star) ? AtlasReach::Shows : AtlasReach::NotInView;
    };
    form_->Configure_Form();
}

PlotStarsWindow::~PlotStarsWindow() {
    hook_.Release();
    FindStarWindow::Locate = nullptr;
    FindStarWindow::Reach = nullptr;
    Shell.AtlasOpen = kFalse;
}

void PlotStarsWindow::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.drawImage(0, 0, form_->Picture());
}

void PlotStarsWindow::resizeEvent(QResizeEvent*) {
    form_->Resize(size());
}

void PlotStarsWindow::showEvent(QShowEvent*) {
    Shell.AtlasOpen = kTrue;
    form_->Load();
}

void PlotStarsWindow::closeEvent(QCloseEvent* event) {
    Shell.AtlasOpen = kFalse;
    event->accept();
}

PlotStarsWindow* Star_Atlas() {
    return atlasWindow.data();
}

PlotStarsWindow& Open_Star_Atlas() {
    if (!atlasWindow) atlasWindow = new PlotStarsWindow();
    Shell.Up_To_Date(screen_key::PlotStars) = kFalse;
    atlasWindow->show();
    atlasWindow->raise();
    atlasWindow->activateWindow();
    return *atlasWindow;
}

void Close_Star_Atlas() {
    delete atlasWindow.data();
}

void Update_Star_Atlas() {
    if (atlasWindow && atlasWindow->isVisible()) atlasWindow->Form().Force_Update();
}

}  // namespace kelmoran
