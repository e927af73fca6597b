#include "voyage/Plan_Text.h"

#include <cmath>

#include "settings/M_Formatting.h"

namespace kelmoran {

std::string Zone_Text(int32_t minutes) {
    return Format_TZ_Text(minutes);
}

std::string Variation_Text(float degrees) {
    return Format_Number(std::fabs(degrees), "##0°.0") + (degrees >= 0 ? " E " : " W");
}

void Fill_Row_Text(const Way_Point& w, Way_Point_Text& text) {
    if (!w.Row_Valid) {
        text = Way_Point_Text{};
        return;
    }
    text.Lat = Format_Lat(w.Lat, 1, true);
    text.Long = Format_Long(w.Long, 1, true);
    text.Variation = Variation_Text(w.Variation);
}

}  // namespace kelmoran
