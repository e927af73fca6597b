#include "voyage/Plan_Text.h"

#include <cmath>
#include <cstdio>

namespace kelmoran {

std::string Zone_Text(int32_t minutes) {
    if (minutes == 0) return "GMT";
    char buf[32];
    std::snprintf(buf, sizeof buf, "Z%c%g", minutes > 0 ? '+' : '-', std::abs(minutes) / 60.0);
    return buf;
}

std::string Variation_Text(float degrees) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.1f\xC2\xB0", std::fabs(degrees));
    return std::string(buf) + (degrees >= 0 ? " E" : " W");
}

void Fill_Row_Text(const Way_Point& w, Way_Point_Text& text) {
    if (!w.Row_Valid) {
        text = Way_Point_Text{};
        return;
    }
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.4f", w.Lat * 57.2957795130823);
    text.Lat = buf;
    std::snprintf(buf, sizeof buf, "%.4f", w.Long * 57.2957795130823);
    text.Long = buf;
    text.Variation = Variation_Text(w.Variation);
}

}  // namespace kelmoran
