#include "ephemeris/Moon.h"

namespace kelmoran {

BodyPlace Calc_Moon(SeriesAccuracy accuracy, const EarthFrame& frame) {
    double lon = frame.TT;
    double lat = static_cast<double>(accuracy);
    if (accuracy < kAccuracyFull || accuracy > kAccuracyFast) lat = kAccuracyFull;
    double dist = 0.0;
    MoonSeries::Instance().MoonPlace(lon, lat, dist);
    return Place_From_Ecliptic(lon, lat, dist, frame);
}

}  // namespace kelmoran
