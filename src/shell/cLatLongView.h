// The lat/long pair drawn on its owner's off-screen picture.
#pragma once

#include "shell/Drawing.h"
#include "shell/cLatLong.h"

namespace kelmoran {

class cLatLongView : public cLatLong {
  public:
    explicit cLatLongView(PictureForm* form = nullptr) : form_(form) {}
    void Set_Form(PictureForm* form) { form_ = form; }

    // Labels above, the two values in sunken frames side by side.
    void DrawMe() override;
    // Labels before, altitude above azimuth.
    void DrawMe_AltAz() override;
    // The values alone, as they stand in a Sights row.
    void DrawMe_Sights() override;

  private:
    void Paint(bool labels, bool frames);

    PictureForm* form_ = nullptr;
};

}  // namespace kelmoran
