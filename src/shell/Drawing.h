// The drawing objects made at start (fonts, the grey of grid lines), the measures of the
// fixed layout, and what every form that paints on an off-screen picture shares: the
// measuring of text for the edit engine, the beep, the drawing of an open edit with its
// caret, and the 3-D frames of the painted controls.
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRect>
#include <QWidget>

#include "shell/Geometry.h"
#include "shell/M_Edit.h"

namespace kelmoran {

struct DrawingObjects {
    QFont Normal;     // 13-pixel
    QFont Bold;       // 13-pixel bold
    QFont Large;      // 20-pixel bold
    QFont Greek;      // 11-pixel, for Greek letters (drawn by their Unicode code points)
    QFont GreekBold;  // 13-pixel bold
    QFont Arrows;     // 13-pixel, for the arrows of lists and scroll marks
    QColor GridGrey;  // grid lines, by the colour depth of the display
    QColor Face;      // face of the 3-D frames
    QColor Light, Shadow;
};

// Makes the fonts and colours; `depth` is the display's bits per pixel.
void Create_Drawing_Objects(int depth);
// The objects, made with a 32-bit depth on first use if Create_Drawing_Objects was not run.
const DrawingObjects& Drawing();
const QFont& Font_Of(FontKind kind);

// Measures the fixed samples of the date strip ("0", "Wednesday", "Thur", "BC", "00",
// "September", "June") in the strip's font and fills Date_Metrics and the row height.
void Measure_Fixed_Layout();

inline QRect To_QRect(const Rect& r) {
    return QRect(r.Left, r.Top, r.Width(), r.Height());
}
inline QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

// Text drawn in a rectangle by the edit engine's alignment (0 left, 1 centred, 2 right),
// at the same offsets that Caret_X measures.
void Draw_Aligned(QPainter& p, const Rect& cell, const QString& text, int32_t alignment);

// A raised or sunken 3-D frame round `r`.
void Draw_3D_Frame(QPainter& p, const Rect& r, bool sunken);

// A form whose client area shows an off-screen picture: the canvas of the edits opened on
// it. Painting never erases: the picture is drawn over and copied to the window.
class PictureForm : public EditCanvas {
  public:
    ~PictureForm() override;

    int32_t Text_Width(FontKind font, const std::string& text) override;
    void Repaint_Edit(const Rect& cell) override;
    void Beep() override;

    // The form's picture and the window that shows it.
    virtual QImage& Form_Picture() = 0;
    virtual QWidget* Form_Window() const = 0;
    // Draws whatever lies under `cell` again on the picture (the control that owns it).
    virtual void Redraw_Cell(const Rect& cell) = 0;
    // Asks the window to copy that part of the picture.
    void Update_Window(const Rect& r);

    // If the open edit is on this form: its text and caret, drawn over its cell.
    void Draw_Open_Edit(QPainter& p);

    int Beeps = 0;  // beeps sounded by edits on this form
};

}  // namespace kelmoran
