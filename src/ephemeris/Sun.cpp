#include "ephemeris/Sun.h"

namespace kelmoran {

BodyPlace Calc_Sun(SeriesAccuracy accuracy, const EarthFrame& frame) {
    double lon = frame.TT;
    double lat = 0.0;
    double dist = 0.0;
    if (accuracy == kAccuracyFast) {
        Calc_Sun_Fast(lon, lat, dist);
    } else {
        lat = static_cast<double>(accuracy == kAccuracyReduced ? kAccuracyReduced : kAccuracyFull);
        EarthSeries::Instance().SunPlace(lon, lat, dist);
    }
    return Place_From_Ecliptic(lon, lat, dist, frame);
}

}  // namespace kelmoran
