// The plotting sheet painted on the Sights screen's picture from the geometry of the
// core: graticule and scale bar, position lines with arrows, labels and transfer marks,
// the DR, the fix cross with its circle and label, and the confidence ellipse.
#pragma once

#include <QPainter>

#include "shell/Geometry.h"
#include "sights/PlotSheet.h"

namespace kelmoran {

// Paints `plot` into `area` of the picture that `p` paints on (the sheet's origin at the
// area's top left).
void Paint_Plot_Sheet(QPainter& p, const Sheet_Plot& plot, const Rect& area);

// The colours of the fix and of the ellipse, for the tests that look for them.
inline constexpr QRgb kFixColour = 0xFFD00000;
inline constexpr QRgb kEllipseColour = 0xFF0050D0;

}  // namespace kelmoran
