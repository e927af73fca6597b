// The grid proper of a table screen as it is painted: headings with their long or short
// titles, the row numbers in the left margin, the cells by their alignment, highlighting,
// the cell cursor, the dashed line of a width being dragged and the "DR Error" warning,
// all drawn on the screen's off-screen picture from the grid model.
#pragma once

#include <QImage>
#include <QPainter>
#include <string>

#include "shell/Grid_Model.h"

namespace kelmoran {

class cMainForm {
  public:
    explicit cMainForm(GridModel& grid) : grid_(grid) {}

    // Measures texts in the grid's fonts, for the model's widths.
    static GridModel::Measure Font_Measure();

    // Draws the whole grid area below `GridTop`: headings, row numbers, cells, cursor,
    // and the resize line while a width is dragged.
    void Draw_MainBitmap(QPainter& p, bool cursorShown) const;
    void Draw_Headings(QPainter& p) const;
    void Draw_RowIndex(QPainter& p) const;
    void Draw_Cells(QPainter& p) const;
    void Draw_Cursor(QPainter& p) const;
    void Draw_Resize_Line(QPainter& p) const;
    // The warning of a moment outside the dead reckoning, on the line above the grid.
    void Draw_DR_Warning(QPainter& p, int32_t top) const;

    static constexpr const char* kDRError = "DR Error";

  private:
    GridModel& grid_;
};

}  // namespace kelmoran
