#include "voyage/Navigation.h"

#include <cmath>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace {

// ln(tan(φ/2 + π/4) / ((1 + e sin φ) / (1 − e sin φ))^(e/2)) × k, the meridional parts
// of the spheroid of eccentricity e in minutes for the multiplier k.
float Mer_Parts_Of(float lat, double e, double k) {
    const double s = std::sin(static_cast<double>(lat));
    const double t = std::tan(lat / 2.0 + kPi / 4.0);
    const double q = std::pow((1.0 + e * s) / (1.0 - e * s), e / 2.0);
    return static_cast<float>(k * std::log(t / q));
}

}  // namespace

float Mer_Parts(float lat) {
    if (std::fabs(lat) >= kHalfPiF) return lat > 0 ? 46183.3f : -46183.3f;
    if (std::isnan(lat)) return 0.0f;
    // The multiplier is the 32-bit rounding of minutes per radian, as the program has it.
    return Mer_Parts_Of(lat, 0.08181919157505035, 3437.746826171875);
}

float Mer_Parts_Tables(float lat) {
    if (std::fabs(lat) >= kHalfPiF) return lat > 0 ? 91885.59f : -91885.59f;
    if (std::isnan(lat)) return 0.0f;
    return Mer_Parts_Of(lat, 0.08248339904, 3437.746771);
}

double Length_Degree_Long(double lat) {
    return 111412.84 * std::cos(lat) - 93.5 * std::cos(3 * lat) + 0.118 * std::cos(5 * lat);
}

double Length_Degree_Lat(double lat) {
    return 111132.92 - 559.82 * std::cos(2 * lat) + 1.175 * std::cos(4 * lat) -
           0.0023 * std::cos(6 * lat);
}

float Long_Scale_At_Lat(float lat) {
    const double s = std::sin(static_cast<double>(lat));
    const double es = 0.0818192214555232 * s;
    const double parallel = 6378.137 * std::cos(static_cast<double>(lat)) /
                            std::sqrt(1.0 - es * es) / kDegreesPerRadian;
    const double meridian =
        6335.439295341883 / std::pow(1.0 - 0.006694384999587948 * s * s, 1.5) / kDegreesPerRadian;
    return static_cast<float>(meridian / parallel);
}

float Bearing_From_Components(float x, float y) {
    if (x == 0) return y < 0 ? kPiF : 0.0f;
    if (y == 0) return x >= 0 ? kHalfPiF : static_cast<float>(4.712389024096076);
    double a = std::atan(static_cast<double>(x) / y);
    if (y < 0) a += kPi;
    if (y > 0 && x < 0) a += kTwoPi;
    return static_cast<float>(a);
}

void Normalise_Long(float& lon) {
    if (!std::isfinite(lon)) {
        lon = 0.0f;
        return;
    }
    if (std::fabs(lon) <= kPiF) return;
    if (std::fabs(lon) > 1000.0f * kTwoPi) lon = static_cast<float>(std::fmod(lon, kTwoPi));
    while (lon > kPiF) lon = static_cast<float>(lon - kTwoPi);
    while (lon < -kPiF) lon = static_cast<float>(lon + kTwoPi);
}

void Sail_To_Position(float& lat, float& lon, float courseDeg, float distance) {
    const float c = static_cast<float>(courseDeg / kDegreesPerRadian);
    const double tanC = std::tan(static_cast<double>(c));
    float dLong;
    if (std::fabs(tanC) < NearEastWest_Limit) {
        const float m1 = Mer_Parts(lat);
        lat = static_cast<float>(lat +
                                 distance * std::cos(static_cast<double>(c)) / kArcminPerRadian);
        if (std::fabs(lat) > kHalfPiF) {
            // A zero latitude would take the southern branch; it cannot exceed the limit.
            lat = static_cast<float>(lat > 0 ? kLatLimit8959 : -kLatLimit8959);
        }
        const float m2 = Mer_Parts(lat);
        dLong = static_cast<float>(tanC * (m2 - m1));
    } else {
        dLong = static_cast<float>(Length_Degree_Lat(lat) * distance / Length_Degree_Long(lat));
        if (c > kPiF) dLong = -dLong;
    }
    lon = static_cast<float>(lon + dLong / kArcminPerRadian);
    Normalise_Long(lon);
}

bool DR_Step(float& lat, float& lon, float c, float d, bool west, bool poleGuard) {
    const double tanC = std::tan(static_cast<double>(c));
    float dLong;
    if (std::fabs(tanC) < NearEastWest_Limit) {
        const float m1 = Mer_Parts(lat);
        lat = static_cast<float>(lat + d * std::cos(static_cast<double>(c)) / kArcminPerRadian);
        if (poleGuard && std::fabs(lat) >= kHalfPiF) {
            const double stop = kHalfPi - 1.0 / kArcsecPerRadian;
            lat = static_cast<float>(lat > 0 ? stop : -stop);
            lon = 0.0f;
            return true;
        }
        const float m2 = Mer_Parts(lat);
        dLong = static_cast<float>(std::fabs((m2 - m1) * tanC));
    } else {
        dLong = std::fabs(Long_Scale_At_Lat(lat) * d);
    }
    if (west) dLong = -dLong;
    lon = static_cast<float>(lon + dLong / kArcminPerRadian);
    Normalise_Long(lon);
    return false;
}

void Leg_Course_Distance(const Way_Point& a, const Way_Point& b, float& courseDeg,
                         float& distance) {
    float dLong = static_cast<float>((b.Long - a.Long) * kArcminPerRadian);
    if (dLong > 10800) dLong -= 21600;
    if (dLong < -10800) dLong += 21600;
    const float dmp = b.Mer_Parts - a.Mer_Parts;
    const float c = Bearing_From_Components(dLong, dmp);
    double dist;
    if (std::fabs(dmp) > Mer_Parts_Step_Limit) {
        dist = (a.Lat - b.Lat) * kArcminPerRadian / std::cos(static_cast<double>(c));
    } else {
        const float product = static_cast<float>(std::fabs(dLong) * Length_Degree_Long(a.Lat));
        dist = product / Length_Degree_Lat(a.Lat);
    }
    distance = static_cast<float>(std::fabs(dist));
    courseDeg = static_cast<float>(Round_Even(c * kDegreesPerRadian, 1));
}

Sailing_Work Work_Sailing(double lat0, double lon0, double courseDeg, double distance,
                          Sailing_Route route, bool tables) {
    Sailing_Work w;
    const double c = courseDeg / kDegreesPerRadian;
    w.Distance = distance;
    w.DLat = Round_Even(std::cos(c) * distance, 1);
    double lat = lat0 + w.DLat / kArcminPerRadian;
    if (lat > kPi / 2) lat = kPi - lat;
    if (lat < -kPi / 2) lat = -kPi - lat;
    w.DR_Lat = lat;
    const double meanLat = (lat0 + lat) / 2;
    if (route == Sailing_Route::Mercator) {
        auto mp = [tables](double x) {
            const float f = static_cast<float>(x);
            return Round_Even(tables ? Mer_Parts_Tables(f) : Mer_Parts(f), 2);
        };
        w.MP_DR = mp(lat);
        w.MP_Original = mp(lat0);
        w.DMP = Round_Even(w.MP_DR - w.MP_Original, 5);
        if (std::fabs(w.DMP) <= 0.00001) {
            const double cm = std::cos(meanLat);
            double dl = cm != 0 ? Round_Even(distance / cm, 2) : 0.0;
            if (courseDeg > 180.0) dl = -dl;
            w.DLong = dl;
        } else {
            w.DLong = Round_Even(w.DMP * std::tan(c), 1);
        }
    } else {
        w.Cos_Mean_Lat = Round_Even(std::cos(meanLat), 5);
        w.Departure = Round_Even(std::sin(c) * distance, 1);
        w.DLong = w.Cos_Mean_Lat != 0 ? Round_Even(w.Departure / w.Cos_Mean_Lat, 1) : 0.0;
    }
    double lon = lon0 + w.DLong / kArcminPerRadian;
    if (!std::isfinite(lon)) lon = lon0;
    if (std::fabs(lon) > kPi) lon = std::remainder(lon, kTwoPi);
    w.DR_Long = lon;
    return w;
}

Sailing_Work Work_DR(double lat0, double lon0, double t0, double t, double courseDeg,
                     double speed, Sailing_Route route, bool tables) {
    const double hours = Round_Even((t - t0) * 24.0, 2);
    Sailing_Work w = Work_Sailing(lat0, lon0, courseDeg, Round_Even(hours * speed, 1), route,
                                  tables);
    w.Run_Hours = hours;
    return w;
}

}  // namespace kelmoran
