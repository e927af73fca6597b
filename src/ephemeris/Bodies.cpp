// The body table and the reduction to altitude and azimuth. Semi-diameters at one AU:
// Sun 959.63", planets from the equatorial radii of the Explanatory Supplement to the
// Astronomical Almanac (1992) as this program has always carried them; the Moon's radius
// 1737.928 km; the Earth's equatorial radius 6378.137 km and flattening 1/298.25722
// (GRS 80), polar radius 6356.755 km; solar parallax 8.794".
#include "ephemeris/Bodies.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Series.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

std::vector<BodyRecord> Bodies;

namespace {

constexpr double kMinusOneDegree = -1.0 / kDegreesPerRadian;

// Semi-diameter constant by body: radians at one AU, kilometres for the Moon. A negative
// value gives the limb above the centre.
constexpr std::array<float, 12> kSemiDiameter = {
    -0.00465241752803144f,   0.00465241752803144f,    -1737.92808633851f,
    1737.92808633851f,       1.6192776456591673e-05f, 4.077282937942073e-05f,
    2.2689280740451068e-05f, 0.0004508767160587013f,  0.00035803491482511163f,
    0.00016978174971882254f, 0.00016241258708760142f, 1.0035642844741233e-05f};

bool Is_Moon(int32_t body) {
    return body == body::MoonUpperLimb || body == body::MoonLowerLimb;
}

// The Earth's distance from the Sun in AU, the argument of the planets' magnitudes.
float Earth_Sun_Distance(const EarthFrame& frame) {
    double x = 0.0, y = 0.0, z = 0.0;
    EarthSeries::Instance().EarthRect(kAccuracyFull, frame.TT, x, y, z);
    return static_cast<float>(std::sqrt(x * x + y * y + z * z));
}

// The place of a body of the solar system; its magnitude for the planets and Pluto.
BodyPlace Solar_System_Place(int32_t body, const EarthFrame& frame, float earthSun,
                             float& magnitude) {
    BodyPlace place;
    float earthDistance = 0.0f;
    if (body <= body::SunLowerLimb) {
        place = Calc_Sun(kAccuracyFull, frame);
    } else if (body <= body::MoonLowerLimb) {
        place = Calc_Moon(kAccuracyFull, frame);
    } else if (body < body::Pluto) {
        Calc_Planet(place, body, kAccuracyFull, frame, earthDistance);
    } else {
        Calc_Pluto(place, frame, earthDistance);
    }
    if (body > body::MoonLowerLimb) {
        double distance = place.Distance;
        float phase = 0.0f;
        magnitude = Calc_Magnitude(frame.TT, body, earthSun, distance, phase);
    }
    return place;
}

}  // namespace

void Build_Bodies(int32_t highest) {
    if (highest < 0) return;
    size_t old = Bodies.size();
    if (old >= static_cast<size_t>(highest) + 1) return;
    Bodies.resize(static_cast<size_t>(highest) + 1);
    for (int32_t b = std::max<int32_t>(static_cast<int32_t>(old), body::FirstStar);
         b <= std::min(highest, Catalogue_Upper()); ++b) {
        Bodies[b].Interval = Place_Interval(Catalogue[b]);
        Bodies[b].Magnitude = static_cast<float>(Catalogue[b].Mag) / 1000.0f;
    }
}

void Reset_AltAz() {
    for (BodyRecord& r : Bodies) r.AltAzJD = BodyRecord::kNeverJD;
}

void Calc_Bodies(int32_t first, int32_t last, std::span<const int32_t> list, double jd) {
    if (list.empty() || first < 0) return;
    last = std::min<int32_t>(last, static_cast<int32_t>(list.size()) - 1);
    if (first > last) return;

    const EarthFrame frame = Calc_EarthFrame(jd);
    float lat = 0.0f, lon = 0.0f, course = 0.0f, speed = 0.0f;
    Get_Position(jd, lat, lon, course, speed);

    int32_t highest = *std::max_element(list.begin() + first, list.begin() + last + 1);
    Build_Bodies(highest);

    // The Earth-Sun distance is needed only for the magnitudes of planets.
    bool haveEarthSun = false;
    float earthSun = 1.0f;
    if (list[first] < body::FirstStar) {
        earthSun = Earth_Sun_Distance(frame);
        haveEarthSun = true;
    }

    for (int32_t i = first; i <= last; ++i) {
        const int32_t b = list[i];
        if (b < 0 || (b >= body::FirstStar && b > Catalogue_Upper())) continue;
        BodyRecord& r = Bodies[b];

        if (std::fabs(jd - r.PositionJD) > r.Interval) {
            if (b < body::FirstStar) {
                if (!haveEarthSun && b > body::MoonLowerLimb) {
                    earthSun = Earth_Sun_Distance(frame);
                    haveEarthSun = true;
                }
                float magnitude = r.Magnitude;
                BodyPlace place = Solar_System_Place(b, frame, earthSun, magnitude);
                r.RA = place.RA;
                r.Dec = place.Dec;
                r.Distance = static_cast<float>(place.Distance);
                r.Magnitude = magnitude;
            } else {
                Calc_Star_Place(b, r.RA, r.Dec, jd);
                r.Distance = 0.0f;
                r.Magnitude = static_cast<float>(Catalogue[b].Mag) / 1000.0f;
            }
            r.PositionJD = jd;
            r.Texts.clear();
            r.GHA = frame.GAST - r.RA;
            if (r.GHA < 0.0) r.GHA += kTwoPi;
        }

        if (b >= body::FirstStar && !r.NamesDone) {
            r.Names = Star_Names_Of(b);
            r.NamesDone = true;
        }

        if (r.AltAzJD != jd) {
            r.GHA = kTwoPi - r.RA + frame.GAST;
            AltAzResult a;
            Calc_AltAz(a, b, lat, lon, BodyPlace{r.RA, r.Dec, r.Distance, r.GHA});
            r.TrueAlt = a.TrueAlt;
            r.SextantAlt = a.SextantAlt;
            r.Azimuth = a.Azimuth;
            r.SD = a.SD;
            r.AltAzJD = jd;
        }
    }
}

void Calc_AltAz(AltAzResult& result, int32_t body, float latitude, float longitude,
                const BodyPlace& place) {
    const double phi = latitude;
    const double sinPhi = std::sin(phi);
    const double cosPhi = std::cos(phi);
    const double dec = place.Dec;

    // Local hour angle, geocentric altitude and azimuth of the centre.
    double t = place.GHA + longitude;
    if (t < 0.0) t += kTwoPi;
    const double h = Arc_Sin(std::cos(dec) * cosPhi * std::cos(t) + std::sin(dec) * sinPhi);
    double azimuth =
        Atan2_R4(static_cast<float>(std::sin(kTwoPi - t)),
                 static_cast<float>(std::tan(dec) * cosPhi - std::cos(kTwoPi - t) * sinPhi));

    double sd = 0.0;
    double parallax = 0.0;  // in altitude
    const double distance = place.Distance;
    if (body >= 0 && body < body::FirstStar && distance > 0.0) {
        // Semi-diameter, and the horizontal parallax for the observer's latitude.
        sd = kSemiDiameter[body] / static_cast<float>(distance);
        const double rho = 1.0 - sinPhi * sinPhi / 298.25722;
        double p;
        if (Is_Moon(body)) {
            p = rho * 6378.137 / distance;
            sd *= 1.0 + p * std::sin(h);
        } else {
            p = rho * 8.794 / distance / kArcsecPerRadian;
        }
        const double x = h - sd;  // altitude of the limb

        // Parallax in azimuth and altitude, with the difference between the geodetic
        // and the geocentric latitude.
        constexpr double kAxisRatio = 6356.755 / 6378.137;
        const float u =
            static_cast<float>(phi - std::atan(std::tan(phi) / (kAxisRatio * kAxisRatio)));
        const float cosA = static_cast<float>(std::cos(azimuth));
        const float sinA = static_cast<float>(std::sin(azimuth));
        const float cosX = static_cast<float>(std::cos(x));
        const float q = static_cast<float>(p * std::sin(u) * cosA / cosX);
        float dA =
            std::atan(std::sin(q) * std::tan(static_cast<float>(azimuth)) / (1.0f - std::sin(q)));
        const float w = static_cast<float>(u * cosA - u * u * p * sinA / (2.0 * cosX * cosX));
        const float s =
            static_cast<float>(Arc_Sin(p * std::cos(u) * std::sin(x + w) / std::cos(w)));
        double ratio = std::sin(s) / std::tan(x + w);
        if (!std::isfinite(ratio)) ratio = p * std::cos(u) / std::cos(w) * std::cos(x + w);
        parallax = std::atan(ratio / (1.0 - std::sin(s)));
        if (!std::isfinite(parallax)) parallax = 0.0;
        if (!std::isfinite(dA)) dA = 0.0f;
        azimuth += dA;
        if (azimuth < 0.0) azimuth += kTwoPi;
        if (azimuth >= kTwoPi) azimuth -= kTwoPi;
    }

    // Observed altitude: refraction above -1 degree, then dip and index error.
    const double hObs = h - sd - parallax;
    const float refraction = hObs > kMinusOneDegree ? Refraction_True(hObs) : 0.0f;
    result.TrueAlt = static_cast<float>(h);
    result.SextantAlt = static_cast<float>(hObs + refraction + DipRad + IndexErrorRad);
    result.Azimuth = static_cast<float>(azimuth);
    result.SD = static_cast<float>(sd);
    result.TotalCorrection = result.TrueAlt - result.SextantAlt;
    result.Refraction = refraction;
}

}  // namespace kelmoran
