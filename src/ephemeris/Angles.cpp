#include "ephemeris/Angles.h"

#include <cmath>

#include "ephemeris/Units.h"

namespace kelmoran {

double Arc_Sin(double x) {
    const double a = std::fabs(x);
    if (a < 1.0) return std::atan(x / std::sqrt(1.0 - x * x));
    if (a == 1.0) return x > 0.0 ? kHalfPi : -kHalfPi;
    return 0.0;
}

double Arc_Cos(double x) {
    if (std::fabs(x) < 1.0) return -std::atan(x / std::sqrt(1.0 - x * x)) + 1.570796326794896;
    return 0.0;
}

double Atan2_R8(double y, double x) {
    if (x == 0.0) {
        if (y == 0.0) return 0.0;
        return y > 0.0 ? kHalfPi : 4.71238898038469;
    }
    if (y == 0.0 && x < 0.0) return kPi;
    double r = std::atan(y / x);
    if (x < 0.0) r += kPi;
    if (r < 0.0) r += kTwoPi;
    return r;
}

float Atan2_R4(float y, float x) {
    if (x == 0.0f) {
        if (y == 0.0f) return 0.0f;
        return y > 0.0f ? 1.5707964f : 4.712389f;
    }
    if (y == 0.0f && x < 0.0f) return 3.1415927f;
    float r = std::atan(y / x);
    if (x < 0.0f) r += 3.1415927f;
    if (r < 0.0f) r += 6.2831855f;
    return r;
}

}  // namespace kelmoran
