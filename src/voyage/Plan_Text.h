// The texts of a plan's rows as the Voyage screen shows them, and the zone labels of the
// plan's ETD and ETA.
#pragma once

#include <cstdint>
#include <string>

#include "voyage/Voyage_Plan.h"

namespace kelmoran {

// The label of a zone of `minutes` east: "GMT", "Z+1", "Z-5.5".
std::string Zone_Text(int32_t minutes);

// A variation in degrees (east positive, one decimal) as shown: its absolute value by
// "##0°.0", then " E " (with its trailing blank) when it is not negative and " W"
// otherwise. Main's "Variation " row uses the same text.
std::string Variation_Text(float degrees);

// The latitude, longitude and variation texts of row `w`; a row that holds no way point
// has empty texts.
void Fill_Row_Text(const Way_Point& w, Way_Point_Text& text);

}  // namespace kelmoran
