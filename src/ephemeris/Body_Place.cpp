#include "ephemeris/Body_Place.h"

#include <cmath>

#include "ephemeris/Angles.h"
#include "ephemeris/Units.h"

namespace kelmoran {

double Hour_Angle_Of(double gast, double ra) {
    double gha = gast + kTwoPi - ra;
    if (gha > kTwoPi) gha -= kTwoPi;
    return gha;
}

BodyPlace Place_From_Ecliptic(double lon, double lat, double dist, const EarthFrame& frame) {
    const double lambda = lon + frame.NutLong;
    const double sinL = std::sin(lambda);
    BodyPlace p;
    p.RA =
        Atan2_R8(sinL * frame.CosObliquity - std::tan(lat) * frame.SinObliquity, std::cos(lambda));
    p.Dec = Arc_Sin(std::sin(lat) * frame.CosObliquity + std::cos(lat) * frame.SinObliquity * sinL);
    p.Distance = dist;
    p.GHA = Hour_Angle_Of(frame.GAST, p.RA);
    return p;
}

}  // namespace kelmoran
