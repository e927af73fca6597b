// The Star Atlas's geometry: the four views of the sky ("Equatorial", "VisibleStars",
// "NorthStars", "SouthStars"), the maps from a star's place to pixels of the off-screen
// bitmap, the zoom about a point, the drag within the middle third, and the inverse map
// from a pixel back to the sky.
//
// The bitmap is three times the window's picture in each direction; the window shows the
// middle third (ScrollX, ScrollY), so that a drag only moves that window until it leaves
// the third. The places plotted are those of StarPlaces (rows 0 .. 11 the Sun, Moon and
// planets, filled by the atlas from the body service).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/Geometry.h"

namespace kelmoran {

// The state of the atlas.
struct AtlasViewState {
    int32_t BitmapWidth = 0, BitmapHeight = 0;  // three times the picture area
    int32_t ScrollX = 0, ScrollY = 0;           // the visible third's offset in the bitmap
    int32_t Zoom = 1;                           // 1 .. 2048, a power of two
    int16_t IsVisibleSky = 0, IsNorth = 0, IsSouth = 0, IsEquatorial = 0;
    int32_t CentreX = 0, CentreY = 0;  // centre of a hemisphere; middle of the bitmap
    int32_t BaseRadius = 0;            // pixels from centre to rim at zoom 1
    float CentreRA = 0.0f, CentreDec = 0.0f;  // sky point at the centre of "Equatorial"
    float ScaleX = 0.0f, ScaleY = 0.0f;       // radians a pixel
    int32_t DimOffset = 0;                    // taken from every plotted magnitude
    int32_t MainStarLimit = 209;              // highest star index given full treatment
    int32_t BackgroundLimit = 0;              // highest star index plotted

    // What the maps also need.
    int32_t CharWidth = 8;      // the margin unit c: the width of a character
    int32_t PictureWidth = 0;   // picture right less picture left
    float RAMin = 0.0f, RAMax = 0.0f, DecMin = 0.0f, DecMax = 0.0f;  // visible ranges
    Rect Clip;                  // where the grid and labels are drawn
    double Latitude = 0.0;      // the observer's, radians
    double LST = 0.0;           // local apparent sidereal time, radians
    bool MinorPlanets = false;  // Neptune, Uranus and Pluto are plotted
    double Heading = 0.0;       // the azimuth at the top of the visible sky, radians
};

// One star index's pixel: X, Y are 0 for a star not on the map.
struct PlotPoint {
    int32_t X = 0, Y = 0;
    float Level = 0.0f;  // the magnitude less DimOffset
};

// The faintest level drawn.
inline constexpr float kFaintestLevel = 10.25f;

// A point of the sky under a pixel.
struct SkyPoint {
    bool OnMap = false;
    double RA = 0.0, Dec = 0.0;  // radians
    double Alt = 0.0, Az = 0.0;  // in "VisibleStars" (apparent altitude), radians
};

class AtlasPlot {
  public:
    AtlasViewState View;
    std::vector<PlotPoint> Points;  // by star index, 0 .. BackgroundLimit

    // Lays the bitmap out for a picture of `width` by `height` with the margin unit
    // `charWidth`: bitmap three times the picture, scroll at the thirds, BaseRadius.
    void Set_Picture(int32_t width, int32_t height, int32_t charWidth);

    // Sets the view by key, zoom 1, and plots.
    void Switch_Projection(const std::string& view);
    std::string View_Key() const;

    // Plots every star up to BackgroundLimit in the current view.
    void Plot();
    void Plot_Equatorial();
    void Plot_Visible_Sky();
    void Plot_Polar();

    // A place's pixel in the current view; false for one not on the map. `refract`: in the
    // visible sky the altitude takes refraction (stars); a label does too.
    bool Map(double ra, double dec, int32_t& x, int32_t& y) const;

    // The same without the bitmap's bounds, in fractional pixels: false only for a place
    // that the view leaves out (below the horizon, the other hemisphere, beyond the band).
    bool Project(double ra, double dec, double& x, double& y) const;

    // Centres the view on a place and replots: "Equatorial" moves its centre there; a
    // hemisphere view moves the place to the bitmap's middle unless it is at zoom 1.
    void Centre_On(double ra, double dec);

    // Zoom: kind 1 doubles, 2 halves, 0 keeps; about bitmap pixel (x, y) of the hemisphere
    // views, or with (dx, dy) the offset of the point from the bitmap's middle in
    // "Equatorial" (kind 0: that point becomes the centre). Both replot.
    void Zoom_Sphere(int32_t kind, int32_t x, int32_t y);
    void Zoom_Equatorial(int32_t kind, int32_t dx, int32_t dy);
    // Zoom about bitmap pixel (x, y) in whichever view is current.
    void Zoom_At(int32_t kind, int32_t x, int32_t y);

    // A drag by (dx, dy) pixels of the picture: only the scroll moves while it stays
    // within the middle third (false); on leaving it the view recentres and replots (true).
    bool Drag(int32_t dx, int32_t dy);

    // The sky under bitmap pixel (x, y): the inverse of the current map.
    SkyPoint Screen_To_Sky(int32_t x, int32_t y) const;

    // 2π / ScaleX: the width after which "Equatorial" repeats, in pixels.
    double Wrap_Width() const;

    // Times Plot ran (tests and benchmarks).
    int32_t Plots = 0;

  private:
    void Map_Stars();
    void Plot_Sphere();
    void Reset_Equatorial_Ranges();
    void Finish_Levels();
    void Centre_Clip(int32_t radius);
    float ZoomOneScaleY() const;
};

// Room for labels on the bitmap: a coarse grid of cells marked as labels take them, so that
// a fainter star's label gives way to a brighter one's (labels are placed brightest first).
class LabelRoom {
  public:
    LabelRoom(int32_t width, int32_t height);
    // Takes the cells under `r` and returns true if none was taken; false (nothing taken)
    // when the label would overlap one already placed.
    bool Take(const Rect& r);

  private:
    static constexpr int32_t kCell = 6;
    int32_t columns_ = 0, rows_ = 0;
    std::vector<uint8_t> taken_;
};

// A true altitude (radians) as the visible-sky map places it: refraction is added above
// the horizon, none exactly on it or below.
double Refracted_Altitude(double h);

// Radius of a star's disc in pixels for its level: larger for brighter, at least a
// pixel, for levels up to kFaintestLevel.
float Disc_Radius(float level);

}  // namespace kelmoran
