// A grid screen as the main window sees it: a cScreen that paints on its own off-screen
// picture, which the window copies to its client area.
#pragma once

#include <QImage>
#include <QSize>

#include "shell/M_Kelmoran.h"

namespace kelmoran {

class UiScreen : public cScreen {
public:
    // The screen's off-screen picture, as last drawn.
    virtual const QImage& Picture() const = 0;
    // The client area changed size: the screen redraws its picture at the new size.
    virtual void Resize(QSize size) = 0;
};

}  // namespace kelmoran
