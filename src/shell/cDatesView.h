// The date strip drawn on its owner's off-screen picture, and its pop-up menu.
#pragma once

#include <functional>

#include "shell/Drawing.h"
#include "shell/cDates.h"

namespace kelmoran {

class cDatesView : public cDates {
  public:
    // `form` holds the picture the strip is painted on and the window that shows it.
    explicit cDatesView(PictureForm* form = nullptr) : form_(form) {}

    void Set_Form(PictureForm* form) { form_ = form; }

    // Paints the whole strip on the owner's picture; `repaint` also asks the window to show
    // it at once.
    void Paint_Dates(bool repaint) override;
    void Paint_DTG() override;
    void Draw_Date_Outlines() override;
    void Invalidate(const Rect& r) override;
    // Shows the pop-up of the strip at (x, y) and acts on the choice.
    void Menus_Create_Dates(int32_t x, int32_t y, bool onZone) override;

    // Paints the strip with `p` (on the owner's picture): frame, labels, open edit.
    void Draw(QPainter& p);

    // Tests and screenshots pick the pop-up's choice through this instead of a menu.
    std::function<std::string(const std::vector<std::string>& captions)> Menu_Chooser;

  private:
    PictureForm* form_ = nullptr;
};

}  // namespace kelmoran
