#include "stars/M_Plotting.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Units.h"
#include "stars/M_Stars.h"

namespace kelmoran {

namespace {

constexpr int32_t kMaxZoom = 2048;

// Refraction added to a true altitude h (radians) above the horizon; none at or below it.
double Atlas_Refraction(double h) {
    if (h <= 0.0) return 0.0;
    return 0.0002967 / std::tan(h + 0.00313756 / (h + 0.089186));
}

// The true altitude whose refracted value is `apparent`.
double Unrefract(double apparent) {
    if (apparent <= 0.0) return apparent;
    double h = apparent;
    for (int i = 0; i < 8; ++i) h = apparent - Atlas_Refraction(h);
    return h;
}

int32_t Round(double v) {
    return static_cast<int32_t>(std::lround(v));
}

double Reduce_Turn(double a) {
    return a - kTwoPi * std::floor(a / kTwoPi);
}

double Wrap_Pi(double a) {
    a = std::fmod(a, kTwoPi);
    if (a >= kPi) a -= kTwoPi;
    if (a < -kPi) a += kTwoPi;
    return a;
}

}  // namespace

LabelRoom::LabelRoom(int32_t width, int32_t height)
    : columns_(std::max(width, 0) / kCell + 1), rows_(std::max(height, 0) / kCell + 1),
      taken_(static_cast<size_t>(columns_) * static_cast<size_t>(rows_), 0) {}

bool LabelRoom::Take(const Rect& r) {
    // Cells wholly inside the label count: neighbours may touch but not overlap.
    const int32_t c0 = std::clamp((r.Left + kCell - 1) / kCell, 0, columns_ - 1);
    const int32_t c1 = std::clamp((r.Right - 1) / kCell, 0, columns_ - 1);
    const int32_t r0 = std::clamp((r.Top + kCell - 1) / kCell, 0, rows_ - 1);
    const int32_t r1 = std::clamp((r.Bottom - 1) / kCell, 0, rows_ - 1);
    if (r.Right <= 0 || r.Bottom <= 0 || r.Left >= columns_ * kCell || r.Top >= rows_ * kCell) return true;
    for (int32_t y = r0; y <= r1; ++y)
        for (int32_t x = c0; x <= c1; ++x)
            if (taken_[static_cast<size_t>(y * columns_ + x)]) return false;
    for (int32_t y = r0; y <= r1; ++y)
        for (int32_t x = c0; x <= c1; ++x) taken_[static_cast<size_t>(y * columns_ + x)] = 1;
    return true;
}

double Refracted_Altitude(double h) {
    return h + Atlas_Refraction(h);
}

float Disc_Radius(float level) {
    // Half a pixel per magnitude from the faintest level up, at least one pixel wide.
    const float r = 0.45f * (7.6f - level);
    return std::clamp(r, 0.5f, 9.0f);
}

void AtlasPlot::Set_Picture(int32_t width, int32_t height, int32_t charWidth) {
    View.PictureWidth = std::max(width, 60);
    View.BitmapWidth = 3 * View.PictureWidth;
    View.BitmapHeight = 3 * std::max(height, 60);
    View.CharWidth = std::max(charWidth, 1);
    View.ScrollX = View.BitmapWidth / 3;
    View.ScrollY = View.BitmapHeight / 3;
    // The rim sits within the visible third with a margin of three characters.
    View.BaseRadius = std::max(10, std::min(View.BitmapWidth, View.BitmapHeight) / 6 -
                                       3 * View.CharWidth);
}

std::string AtlasPlot::View_Key() const {
    if (View.IsEquatorial) return "Equatorial";
    if (View.IsNorth) return "NorthStars";
    if (View.IsSouth) return "SouthStars";
    return "VisibleStars";
}

float AtlasPlot::ZoomOneScaleY() const {
    const int32_t third = View.BitmapHeight / 3;
    const int32_t band = View.BitmapHeight / 2 - (third + 2 * View.CharWidth);
    return kHalfPiF / static_cast<float>(std::max(band, 1));
}

void AtlasPlot::Reset_Equatorial_Ranges() {
    if (View.Zoom == 1) {
        View.DecMin = -kHalfPiF;
        View.DecMax = kHalfPiF;
        View.RAMin = kPiF - (View.BitmapWidth / 2) * View.ScaleX;
        View.RAMax = (View.BitmapWidth / 2) * View.ScaleX + static_cast<float>(kTwoPi);
    } else {
        View.DecMin = View.CentreDec - kHalfPiF;
        View.DecMax = View.CentreDec + kHalfPiF;
        const float half = (View.BitmapWidth * View.ScaleX) / 2.0f;
        View.RAMin = View.CentreRA - half;
        View.RAMax = View.CentreRA + half;
    }
}

void AtlasPlot::Switch_Projection(const std::string& view) {
    View.Zoom = 1;
    View.ScrollX = View.BitmapWidth / 3;
    View.ScrollY = View.BitmapHeight / 3;
    View.IsVisibleSky = View.IsNorth = View.IsSouth = View.IsEquatorial = 0;
    if (view == "Equatorial") {
        View.IsEquatorial = -1;
        View.CentreDec = 0.0f;
        View.CentreRA = kPiF;
        View.CentreX = View.BitmapWidth / 2;
        View.CentreY = View.BitmapHeight / 2;
        const int32_t w = std::max(View.PictureWidth - 20 - 14 * View.CharWidth, 20);
        View.ScaleX = View.ScaleY = static_cast<float>(kTwoPi) / static_cast<float>(w);
        Reset_Equatorial_Ranges();
    } else {
        View.CentreX = View.BitmapWidth / 2;
        View.CentreY = View.BitmapHeight / 2;
        if (view == "NorthStars") {
            View.IsNorth = -1;
        } else if (view == "SouthStars") {
            View.IsSouth = -1;
        } else {
            View.IsVisibleSky = -1;
        }
    }
    Plot();
}

void AtlasPlot::Plot() {
    ++Plots;
    const size_t n = static_cast<size_t>(std::max(View.BackgroundLimit, 11)) + 1;
    Points.assign(n, PlotPoint{});
    if (View.IsEquatorial) {
        Plot_Equatorial();
    } else if (View.IsVisibleSky) {
        Plot_Visible_Sky();
    } else {
        Plot_Polar();
    }
    Finish_Levels();
}

void AtlasPlot::Finish_Levels() {
    const size_t n = std::min(Points.size(), StarPlaces.size());
    for (size_t s = 0; s < n; ++s) {
        float level = StarPlaces[s].Magnitude - static_cast<float>(View.DimOffset);
        // The Sun, Moon and bright planets never vanish.
        if (s < 12 && StarPlaces[s].Magnitude < 0.0f) level = -static_cast<float>(View.DimOffset);
        if (s < 4) level = -10.0f;
        Points[s].Level = level;
    }
    if (!View.MinorPlanets)
        for (size_t s = 9; s < 12 && s < Points.size(); ++s) Points[s] = PlotPoint{};
}

bool AtlasPlot::Project(double ra, double dec, double& x, double& y) const {
    const AtlasViewState& v = View;
    if (v.IsEquatorial) {
        if (dec < v.DecMin || dec > v.DecMax) return false;
        // At zoom 1 the centre is π and the sky runs from RA 2π at the left to 0 at the right.
        const double d = v.Zoom > 1 ? Wrap_Pi(ra - v.CentreRA) : ra - v.CentreRA;
        x = v.BitmapWidth / 2.0 - d / v.ScaleX;
        if (v.Zoom > 1) {
            // The plot repeats every 2π: the leftmost copy on the bitmap is kept.
            const double wrap = Wrap_Width();
            while (x - wrap >= 0.0) x -= wrap;
            while (x < 0.0) x += wrap;
        }
        y = v.BitmapHeight / 2.0 - (dec - v.CentreDec) / v.ScaleY;
        return true;
    }
    const double r = static_cast<double>(v.Zoom) * v.BaseRadius;
    double rho = 0.0, a = 0.0;
    if (v.IsVisibleSky) {
        const double ha = v.LST - ra;
        const double sinH = std::sin(v.Latitude) * std::sin(dec) +
                            std::cos(v.Latitude) * std::cos(dec) * std::cos(ha);
        double h = std::asin(std::clamp(sinH, -1.0, 1.0));
        if (h < 0.0) return false;
        h = Refracted_Altitude(h);
        // Azimuth from north through east.
        const double az = std::atan2(-std::cos(dec) * std::sin(ha),
                                     std::sin(dec) * std::cos(v.Latitude) -
                                         std::cos(dec) * std::cos(ha) * std::sin(v.Latitude));
        rho = (kHalfPi - h) * r / kHalfPi;
        a = kTwoPi - az + v.Heading;
        a -= kTwoPi * std::floor(a / kTwoPi);
    } else {
        if (v.IsNorth && dec < 0.0) return false;
        if (v.IsSouth && dec >= 0.0) return false;
        rho = (kHalfPi - std::fabs(dec)) * r / kHalfPi;
        a = v.IsSouth ? kTwoPi - ra : ra;
    }
    x = v.CentreX + rho * std::sin(a);
    y = v.CentreY - rho * std::cos(a);
    return true;
}

bool AtlasPlot::Map(double ra, double dec, int32_t& x, int32_t& y) const {
    x = y = 0;
    double px = 0.0, py = 0.0;
    if (!Project(ra, dec, px, py)) return false;
    const int32_t rx = Round(px), ry = Round(py);
    if (rx <= 0 || ry <= 0 || rx >= View.BitmapWidth || ry >= View.BitmapHeight) return false;
    x = rx;
    y = ry;
    return true;
}

void AtlasPlot::Centre_On(double ra, double dec) {
    if (View.IsEquatorial) {
        View.ScrollX = View.BitmapWidth / 3;
        View.ScrollY = View.BitmapHeight / 3;
        View.CentreRA = static_cast<float>(Reduce_Turn(ra));
        View.CentreDec = static_cast<float>(std::clamp(dec, -kHalfPi, kHalfPi));
        if (View.Zoom == 1) {
            Zoom_Equatorial(1, 0, 0);
            View.CentreRA = static_cast<float>(Reduce_Turn(ra));
            View.CentreDec = static_cast<float>(std::clamp(dec, -kHalfPi, kHalfPi));
        }
        Zoom_Equatorial(0, 0, 0);
        return;
    }
    double x = 0.0, y = 0.0;
    if (View.Zoom > 1 && Project(ra, dec, x, y)) {
        View.CentreX += View.BitmapWidth / 2 - Round(x - (View.ScrollX - View.BitmapWidth / 3));
        View.CentreY += View.BitmapHeight / 2 - Round(y - (View.ScrollY - View.BitmapHeight / 3));
    }
    Zoom_Sphere(0, View.CentreX, View.CentreY);
}

void AtlasPlot::Plot_Equatorial() {
    if (View.Zoom == 1) View.ScaleY = ZoomOneScaleY();
    const int32_t c = View.CharWidth;
    if (View.Zoom == 1) {
        const int32_t third = View.BitmapHeight / 3;
        View.Clip = {View.BitmapWidth / 3, third, View.BitmapWidth - View.BitmapWidth / 3,
                     View.BitmapHeight - third};
    } else {
        const int32_t top = Round(View.BitmapHeight / 2.0 - (kHalfPi - View.CentreDec) / View.ScaleY);
        const int32_t bottom = Round((kHalfPi + View.CentreDec) / View.ScaleY + View.BitmapHeight / 2.0);
        View.Clip = {0, std::max(0, top - 2 * c), View.BitmapWidth,
                     std::min(View.BitmapHeight, bottom + 2 * c)};
    }
    Map_Stars();
}

void AtlasPlot::Map_Stars() {
    const size_t n = std::min(Points.size(), StarPlaces.size());
    for (size_t s = 0; s < n; ++s) {
        if (s >= 12 && !StarPlaces[s].Done) continue;
        Map(StarPlaces[s].RA, StarPlaces[s].Dec, Points[s].X, Points[s].Y);
    }
}

void AtlasPlot::Plot_Visible_Sky() {
    Plot_Sphere();
}

void AtlasPlot::Plot_Polar() {
    Plot_Sphere();
}

void AtlasPlot::Plot_Sphere() {
    // The map itself tells the visible sky from the polar views.
    Map_Stars();
    const int32_t r = View.Zoom * View.BaseRadius;
    View.ScaleX = static_cast<float>(kPi / r);
    Centre_Clip(r);
}

void AtlasPlot::Centre_Clip(int32_t radius) {
    int32_t half = radius + View.CharWidth;
    if (2 * half < View.BitmapWidth / 3) half = View.BitmapWidth / 6;
    View.Clip = {std::max(0, View.CentreX - half), std::max(0, View.CentreY - half),
                 std::min(View.BitmapWidth, View.CentreX + half),
                 std::min(View.BitmapHeight, View.CentreY + half)};
}

double AtlasPlot::Wrap_Width() const {
    return View.ScaleX > 0.0f ? kTwoPi / View.ScaleX : 0.0;
}

void AtlasPlot::Zoom_Sphere(int32_t kind, int32_t x, int32_t y) {
    const int32_t old = View.Zoom;
    if (kind == 1) View.Zoom = std::min(kMaxZoom, View.Zoom * 2);
    if (kind == 2) View.Zoom = std::max(1, View.Zoom / 2);
    // The drag is taken up by moving the centre.
    View.CentreX -= View.ScrollX - View.BitmapWidth / 3;
    View.CentreY -= View.ScrollY - View.BitmapHeight / 3;
    x -= View.ScrollX - View.BitmapWidth / 3;
    y -= View.ScrollY - View.BitmapHeight / 3;
    View.ScrollX = View.BitmapWidth / 3;
    View.ScrollY = View.BitmapHeight / 3;
    if (View.Zoom == 1) {
        View.CentreX = View.BitmapWidth / 2;
        View.CentreY = View.BitmapHeight / 2;
    } else if (View.Zoom != old) {
        // The point clicked keeps its place: the vector from it to the centre scales.
        const double f = static_cast<double>(View.Zoom) / old;
        View.CentreX = Round(x + (View.CentreX - x) * f);
        View.CentreY = Round(y + (View.CentreY - y) * f);
    }
    View.ScaleX = static_cast<float>(kPi / (View.Zoom * View.BaseRadius));
    Plot();
}

void AtlasPlot::Zoom_Equatorial(int32_t kind, int32_t dx, int32_t dy) {
    const int32_t old = View.Zoom;
    if (kind == 1) View.Zoom = std::min(kMaxZoom, View.Zoom * 2);
    if (kind == 2) View.Zoom = std::max(1, View.Zoom / 2);
    const int32_t w = std::max(View.PictureWidth - 20 - 14 * View.CharWidth, 20);
    const float oldX = View.ScaleX, oldY = View.ScaleY;
    const float newX = static_cast<float>(kTwoPi) / static_cast<float>(w) / View.Zoom;
    const float newY = View.Zoom == 1 ? ZoomOneScaleY() : newX;
    // The sky point at the offset stays under it (kind 1, 2) or comes to the middle (0).
    const double afterX = kind == 0 ? 0.0 : View.Zoom != old ? newX : oldX;
    const double afterY = kind == 0 ? 0.0 : View.Zoom != old ? newY : oldY;
    double ra = View.CentreRA - dx * static_cast<double>(oldX) + dx * afterX;
    double dec = View.CentreDec - dy * static_cast<double>(oldY) + dy * afterY;
    View.ScrollX = View.BitmapWidth / 3;
    View.ScrollY = View.BitmapHeight / 3;
    View.ScaleX = newX;
    View.ScaleY = newY;
    if (View.Zoom == 1) {
        ra = kPi;
        dec = 0.0;
    }
    ra -= kTwoPi * std::floor(ra / kTwoPi);
    View.CentreRA = static_cast<float>(ra);
    View.CentreDec = static_cast<float>(std::clamp(dec, -kHalfPi, kHalfPi));
    Reset_Equatorial_Ranges();
    Plot();
}

void AtlasPlot::Zoom_At(int32_t kind, int32_t x, int32_t y) {
    if (View.IsEquatorial) {
        // A drag within the third is first taken into the centre.
        const int32_t ox = View.ScrollX - View.BitmapWidth / 3, oy = View.ScrollY - View.BitmapHeight / 3;
        View.CentreRA = static_cast<float>(Reduce_Turn(View.CentreRA - ox * static_cast<double>(View.ScaleX)));
        if (View.Zoom > 1)
            View.CentreDec = static_cast<float>(std::clamp(View.CentreDec - oy * static_cast<double>(View.ScaleY), -kHalfPi, kHalfPi));
        Zoom_Equatorial(kind, x - ox - View.BitmapWidth / 2, y - oy - View.BitmapHeight / 2);
    } else {
        Zoom_Sphere(kind, x, y);
    }
}

bool AtlasPlot::Drag(int32_t dx, int32_t dy) {
    // The picture follows the mouse: the window onto the bitmap moves the other way.
    View.ScrollX -= dx;
    View.ScrollY -= dy;
    const int32_t thirdX = View.BitmapWidth / 3, thirdY = View.BitmapHeight / 3;
    if (View.ScrollX >= 0 && View.ScrollY >= 0 && View.ScrollX <= 2 * thirdX &&
        View.ScrollY <= 2 * thirdY)
        return false;
    if (View.IsEquatorial) {
        const int32_t ox = View.ScrollX - thirdX, oy = View.ScrollY - thirdY;
        if (View.Zoom == 1) {
            // The whole sky is on show at zoom 1: the picture springs back.
            View.ScrollX = thirdX;
            View.ScrollY = thirdY;
            Plot();
        } else {
            Zoom_Equatorial(0, ox, oy);
        }
    } else {
        Zoom_Sphere(0, View.CentreX, View.CentreY);
    }
    return true;
}

SkyPoint AtlasPlot::Screen_To_Sky(int32_t x, int32_t y) const {
    SkyPoint p;
    const AtlasViewState& v = View;
    if (v.IsEquatorial) {
        p.Dec = v.CentreDec - (y - v.BitmapHeight / 2.0) * v.ScaleY;
        p.RA = v.CentreRA - (x - v.BitmapWidth / 2.0) * v.ScaleX;
        // At zoom 1 the plot holds RA 0 .. 2π once, its edges included.
        if (v.Zoom > 1 || p.RA < -v.ScaleX || p.RA > kTwoPi + v.ScaleX) p.RA = Reduce_Turn(p.RA);
        p.OnMap = p.Dec >= -kHalfPi && p.Dec <= kHalfPi;
        return p;
    }
    const double r = static_cast<double>(v.Zoom) * v.BaseRadius;
    const double ex = x - v.CentreX, ey = v.CentreY - y;
    const double rho = std::hypot(ex, ey);
    double a = std::atan2(ex, ey);
    if (a < 0.0) a += kTwoPi;
    p.OnMap = rho <= r + 1.0;  // the rim's pixels count as on it
    double h = kHalfPi - rho * kHalfPi / r;
    if (p.OnMap && h < 0.0) h = 0.0;
    if (v.IsVisibleSky) {
        p.Alt = h;
        p.Az = kTwoPi - a + v.Heading;
        p.Az -= kTwoPi * std::floor(p.Az / kTwoPi);
        const double t = Unrefract(h);
        const double sl = std::sin(v.Latitude), cl = std::cos(v.Latitude);
        const double sinDec = sl * std::sin(t) + cl * std::cos(t) * std::cos(p.Az);
        p.Dec = std::asin(std::clamp(sinDec, -1.0, 1.0));
        const double ha = std::atan2(-std::sin(p.Az) * std::cos(t),
                                     std::sin(t) * cl - std::cos(t) * sl * std::cos(p.Az));
        p.RA = v.LST - ha;
    } else {
        p.Dec = v.IsSouth ? -h : h;
        p.RA = v.IsSouth ? kTwoPi - a : a;
    }
    p.RA -= kTwoPi * std::floor(p.RA / kTwoPi);
    return p;
}

}  // namespace kelmoran
