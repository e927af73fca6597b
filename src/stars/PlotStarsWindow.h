// The Star Atlas: a window of its own with a date strip, a row of tool icons, the sky in
// one of four views on an off-screen bitmap three times the picture, and a status line.
// The geometry is the core's (AtlasPlot); this form paints, and answers the mouse, the
// wheel and the keys.
#pragma once

#include <QImage>
#include <QWidget>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "shell/DateStripScreen.h"
#include "shell/cSubClass.h"
#include "stars/M_Plotting.h"
#include "stars/PlotOptions_Model.h"

namespace kelmoran {

class PlotStarsWindow;
class PlotOptionsWindow;

// The tool icons above the sky.
enum class AtlasTool { Dim, Brighten, ZoomIn, ZoomOut, Options, FindStar, Count };

class PlotStars : public DateStripScreen {
  public:
    explicit PlotStars(QWidget* window);

    // cScreen
    void Load() override;
    void CalcDates() override;
    void Force_Update() override;
    void Menu_PopUp(const std::string&) override {}
    void Restore_Layout() override {}
    void Kill_Activities(const CursorState&) override {}
    std::string Owner_Type() const override { return "PlotStars"; }

    // UiScreen
    void Resize(QSize size) override;

    // The events of the window.
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseUp(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;
    void SysMsg_KeyPress(int32_t character) override;

    // Sets the view by key ("VisibleStars", "NorthStars", "SouthStars", "Equatorial").
    void Switch_Projection(const std::string& view);
    // The options changed: limits (loading tiers), view, and a new drawing.
    void Configure_Form();
    // Centres the view on a star (zooming the equatorial view in if it is at 1), marks it
    // with a circle and puts the mouse cursor over it.
    void Move_to_Star(int32_t star);
    // Whether the current view can show a star.
    bool Can_Show(int32_t star) const;
    // Darker (+1) or brighter (-1) by whole magnitudes.
    void Dim(int32_t steps);

    // Plot and paint the bitmap, then the picture; DrawBitMaps only paints the bitmap.
    void DrawBitMaps();
    // The pop-up for the object under (x, y) of the picture, or none.
    void PrepareToPopUp(int32_t x, int32_t y);
    void Kill_PopUp();

    AtlasPlot& Plot() { return plot_; }
    const QImage& Bitmap() const { return bitmap_; }
    // Where the sky shows on the picture, and a bitmap pixel's place there.
    const Rect& Sky_Rect() const { return sky_; }
    QPoint Picture_Point(int32_t bx, int32_t by) const;
    Rect Tool_Rect(AtlasTool tool) const;
    // The object of the pop-up: a slot or star index, or -1; and the pop-up's lines.
    int32_t PopUp_Object() const { return popupStar_; }
    const std::vector<std::string>& PopUp_Lines() const { return popupLines_; }

    int32_t Redraws = 0;  // paintings of the bitmap
    std::function<void()> Open_Options;
    std::function<void()> Open_Find_Star;

  private:
    void Compute_Places();
    void Compose();
    void Layout();
    void Draw_Grid(QPainter& p);
    void Draw_Equatorial_Grid(QPainter& p);
    void Draw_Spherical_Grid(QPainter& p);
    void Draw_Stars();
    void Draw_Texts(QPainter& p);
    void Draw_Bodies(QPainter& p);
    void Draw_Tools(QPainter& p);
    void Draw_Circle(QPainter& p);
    void Flush_Wheel();
    // Copies of an x across the wrap of the equatorial view (just x elsewhere).
    struct Copies {
        std::array<int32_t, 8> X{};
        int32_t N = 0;
        const int32_t* begin() const { return X.data(); }
        const int32_t* end() const { return X.data() + N; }
    };
    Copies Repeats(int32_t x) const;
    // Blends a star's disc of radius `r` onto the bitmap at (x, y).
    void Blend_Disc(int32_t x, int32_t y, float r);
    int32_t Object_At(int32_t bx, int32_t by) const;

    AtlasPlot plot_;
    QImage bitmap_;
    Rect sky_, status_;
    int32_t toolsTop_ = 0;
    std::string statusText_;  // the position's error, if any
    std::string skyText_;     // the sky under the mouse
    bool dragging_ = false;
    int32_t lastX_ = 0, lastY_ = 0;
    int32_t pendingZoom_ = 0, pendingDim_ = 0, wheelX_ = 0, wheelY_ = 0;
    bool wheelQueued_ = false;
    int32_t marked_ = -1;  // the star of Move_to_Star
    int32_t popupStar_ = -1;
    std::vector<std::string> popupLines_;
    QPoint popupAt_;
    int32_t hoverTool_ = -1;
    double placesJD_ = 0.0;
};

// The window that shows the atlas's picture.
class PlotStarsWindow : public QWidget {
  public:
    PlotStarsWindow();
    ~PlotStarsWindow() override;
    PlotStars& Form() { return *form_; }
    PlotOptionsWindow* Options() const { return options_; }

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void closeEvent(QCloseEvent*) override;
    void showEvent(QShowEvent*) override;

  private:
    std::unique_ptr<PlotStars> form_;
    cSubClass hook_;
    PlotOptionsWindow* options_ = nullptr;
};

// The atlas of the run: made on first use, shown and brought up; null until then.
PlotStarsWindow* Star_Atlas();
PlotStarsWindow& Open_Star_Atlas();
// Closes and destroys the atlas (at exit).
void Close_Star_Atlas();
// The shell's update of the atlas when it is open and behind the shared moment.
void Update_Star_Atlas();

}  // namespace kelmoran
