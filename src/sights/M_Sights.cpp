// Reduction of a sight and identification of the body.
#include "sights/M_Sights.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Bodies.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "stars/Catalogue_Limits.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

// Signed radii of the limbs (an upper limb negative) and of the planets. The Sun's and the
// planets' in AU (the Sun's is 959.63" at 1 AU), the Moon's in kilometres; the planets'
// are the semi-diameters at 1 AU of the Astronomical Almanac (Mercury 3.34", Venus 8.41",
// Mars 4.68", Jupiter 93.00", Saturn 73.85", Neptune 35.02", Uranus 33.50", Pluto 2.07").
constexpr std::array<float, 12> kLimbRadius = {
    -0.00465241752803144f, 0.00465241752803144f, -1737.92808633851f, 1737.92808633851f,
    1.6192776E-05f,        4.077283E-05f,        2.268928E-05f,      0.0004508767f,
    0.0003580349f,         0.0001697817f,        0.0001624126f,      1.003564E-05f};

// The long names of the Sun's and Moon's limbs; the short ones are those of the body table.
constexpr std::array<const char*, 4> kLimbNames = {"Sun's Upper Limb", "Sun's Lower Limb",
                                                   "Moon's Upper Limb", "Moon's Lower Limb"};

struct Identification {
    const Reduction_Work& work;
    const EarthFrame& frame;
    double lowest;
    double highest;
    Candidate_List& list;
    float sunDistance = 1.0f;  // the Earth's radius vector, AU, for the magnitudes
};

bool Dec_Within(const Identification& id, double dec) {
    return dec >= id.lowest && dec <= id.highest;
}

void Add_Candidate(Identification& id, int32_t code, const Body_Test& test, float magnitude) {
    if (id.list.size() == id.list.capacity()) id.list.reserve(id.list.size() + 20);
    Sight_Candidate c;
    c.Body_Id = code;
    c.Cand_Intercept = test.Alt_Diff;
    c.Cand_Az = static_cast<float>(test.Zn_Deg);
    c.Cand_Mag = magnitude;
    id.list.push_back(std::move(c));
}

bool Passes(double altDiff, double azDiff, double altLimit, double azLimit) {
    return std::fabs(altDiff) <= altLimit && azDiff <= azLimit;
}

float Magnitude_Of(const Identification& id, int32_t code, double distance) {
    float phase = 0;
    return Calc_Magnitude(id.frame.TT, code, id.sunDistance, distance, phase);
}

// The Sun's or the Moon's two limbs, `upper` being the upper limb's code. Returns the test
// of the upper limb on the first place (for the Sun's altitude).
Body_Test Test_Limbs(Identification& id, int32_t upper) {
    const double altLimit = SightsFilter.AltLimit;
    const double azLimit = SightsFilter.AzLimit;
    const bool moon = upper == body::MoonUpperLimb;
    BodyPlace place = moon ? Calc_Moon(kAccuracyFast, id.frame) : Calc_Sun(kAccuracyFull, id.frame);
    if (!moon) id.sunDistance = static_cast<float>(place.Distance);
    const Body_Test first = Test_Body(id.work, upper, place);
    if (!Dec_Within(id, place.Dec)) return first;
    if (!Passes(first.Alt_Diff, first.Az_Diff, altLimit + kRoughAltMargin,
                azLimit + kRoughAzMargin))
        return first;
    Body_Test test = first;
    if (moon) {
        place = Calc_Moon(kAccuracyFull, id.frame);
        test = Test_Body(id.work, upper, place);
    }
    if (test.Az_Diff > azLimit) return first;
    const float magnitude = Magnitude_Of(id, upper, place.Distance);
    if (std::fabs(test.Alt_Diff) <= altLimit) Add_Candidate(id, upper, test, magnitude);
    const Body_Test lower = Test_Body(id.work, upper + 1, place);
    if (Passes(lower.Alt_Diff, lower.Az_Diff, altLimit, azLimit))
        Add_Candidate(id, upper + 1, lower, magnitude);
    return first;
}

void Test_Planet(Identification& id, int32_t code) {
    const double altLimit = SightsFilter.AltLimit;
    const double azLimit = SightsFilter.AzLimit;
    BodyPlace place;
    float earthDistance = 0;
    Calc_Planet(place, code, kAccuracyFast, id.frame, earthDistance);
    if (!Dec_Within(id, place.Dec)) return;
    const Body_Test rough = Test_Body(id.work, code, place);
    if (!Passes(rough.Alt_Diff, rough.Az_Diff, altLimit + kRoughAltMargin,
                azLimit + kRoughAzMargin))
        return;
    Calc_Planet(place, code, kAccuracyFull, id.frame, earthDistance);
    const Body_Test test = Test_Body(id.work, code, place);
    if (!Passes(test.Alt_Diff, test.Az_Diff, altLimit, azLimit)) return;
    id.sunDistance = earthDistance;
    Add_Candidate(id, code, test, Magnitude_Of(id, code, place.Distance));
}

void Test_Star(Identification& id, int32_t star, double jd) {
    if (star < body::FirstStar || star >= static_cast<int32_t>(StarPlaces.size())) return;
    StarPlace& cached = StarPlaces[star];
    if (!cached.Done) return;
    if (!Dec_Within(id, cached.Dec)) return;
    if (std::fabs(jd - cached.JD) >= 1.0) {
        Calc_Star_Place(star, cached.RA, cached.Dec, jd);
        cached.JD = jd;
    }
    BodyPlace place;
    place.Dec = cached.Dec;
    place.GHA = id.frame.GAST - cached.RA;
    if (place.GHA < 0) place.GHA += kTwoPi;
    const Body_Test test = Test_Body(id.work, star, place);
    if (Passes(test.Alt_Diff, test.Az_Diff, SightsFilter.AltLimit, SightsFilter.AzLimit))
        Add_Candidate(id, star, test, cached.Magnitude);
}

// Exchange sort by |intercept|, compared in 32 bits; equal pairs keep their order.
void Sort_Candidates(Candidate_List& list) {
    bool exchanged = true;
    while (exchanged) {
        exchanged = false;
        for (std::size_t k = 1; k < list.size(); ++k) {
            if (std::fabs(list[k - 1].Cand_Intercept) > std::fabs(list[k].Cand_Intercept)) {
                std::swap(list[k - 1], list[k]);
                exchanged = true;
            }
        }
    }
}

void Fill_Texts(Sight_Candidate& c) {
    if (c.Body_Id < body::FirstStar) {
        c.Name = c.Body_Id < 4 ? kLimbNames[c.Body_Id] : kBodyNames[c.Body_Id];
        c.Name2 = kBodyNames[c.Body_Id];
    } else {
        const StarNames& names = StarPlaces[c.Body_Id];
        const std::string label = Star_Label(names);
        c.Name = !names.Name.empty() ? names.Name : label;
        c.Name2 = !names.Name.empty() ? label : std::string();
    }
    c.Intercept_Text = Intercept_Text(c.Cand_Intercept);
    c.Az_Text = Azimuth_Text(c.Cand_Az);
    c.Line_Text = Line_Bearings_Text(c.Cand_Az);
    c.Mag_Text = Format_Number(c.Cand_Mag, "#0.0");
}

}  // namespace

float Limb_Radius(int32_t body) {
    if (body < 0 || body >= static_cast<int32_t>(kLimbRadius.size())) return 0.0f;
    return kLimbRadius[body];
}

Reduction_Work Prepare_Reduction(float hs, float lat, float lon, float azDeg) {
    Reduction_Work w;
    w.Alt_Corrections = -DipRad - IndexErrorRad;
    w.Apparent_Alt = hs + w.Alt_Corrections;
    w.Refraction = Refraction_Apparent(w.Apparent_Alt);
    w.Alt_Corrections = w.Alt_Corrections - w.Refraction;
    w.Corrected_Alt = hs + w.Alt_Corrections;
    w.Observed_ZD = static_cast<float>(kHalfPi - w.Corrected_Alt);
    w.DR_Lat = lat;
    w.DR_Long = lon;
    w.Sin_Lat = std::sin(lat);
    w.Cos_Lat = std::cos(lat);
    w.Sight_Az = azDeg;
    return w;
}

Body_Test Test_Body(const Reduction_Work& w, int32_t code, const BodyPlace& place) {
    Body_Test t;
    const double dec = place.Dec;
    t.LHA = place.GHA + w.DR_Long;
    if (t.LHA < 0) t.LHA += kTwoPi;
    t.Zc = Arc_Cos(w.Sin_Lat * std::sin(dec) + w.Cos_Lat * std::cos(dec) * std::cos(t.LHA));
    t.Zn = Bearing_From_Components(
        static_cast<float>(std::sin(kTwoPi - t.LHA)),
        static_cast<float>(w.Cos_Lat * std::tan(dec) - w.Sin_Lat * std::cos(kTwoPi - t.LHA)));
    if (code < body::FirstStar) {
        const double distance = place.Distance;
        t.SD = distance != 0 ? static_cast<float>(Limb_Radius(code) / distance) : 0.0f;
        t.Rho = 1.0 - w.Sin_Lat * w.Sin_Lat / kInverseFlattening;
        if (code == body::MoonUpperLimb || code == body::MoonLowerLimb) {
            t.HP = distance != 0 ? kEquatorialKm / distance : 0.0;
            t.SD = static_cast<float>(t.SD * (1.0 + t.HP * std::sin(w.Corrected_Alt) * t.Rho));
        } else {
            t.HP = distance != 0 ? kSolarParallax / kArcsecPerRadian / distance : 0.0;
        }
        const double lat = w.DR_Lat;
        const double axes = kPolarKm / kEquatorialKm;
        const double dPhi = lat - std::atan(std::tan(lat) / (axes * axes));
        const double d = dPhi * std::cos(t.Zn);
        t.Parallax = Arc_Sin(std::cos(dPhi) * t.Rho * t.HP * std::sin(w.Observed_ZD - t.SD - d) /
                             std::cos(d));
    }
    t.Hc = kHalfPi - t.Zc - t.SD - t.Parallax;
    t.Zn_Deg = Round_Even(t.Zn * kDegreesPerRadian, 5);
    // Folded into 0 .. 180 whatever the entered azimuth (NaN stays NaN and passes nothing).
    t.Az_Diff = std::fabs(std::remainder(t.Zn_Deg - w.Sight_Az, 360.0));
    t.Alt_Diff = static_cast<float>(t.Hc - w.Corrected_Alt);
    return t;
}

void Declination_Bounds(float lat, double& lowest, double& highest) {
    if (lat >= 0) {
        highest = kHalfPi;
        lowest = -(kHalfPi - lat) - kOneDegree;
    } else {
        lowest = -kHalfPi;
        highest = lat + kHalfPi + kOneDegree;
    }
}

std::string Intercept_Text(float intercept) {
    return Intercept_Text(intercept * kArcminPerRadian, " away", " towards");
}

std::string Intercept_Text(double minutes, const char* away, const char* towards) {
    const double shown = Round_Even(minutes, 1);
    if (shown == 0) return "Nil ";
    return Format_Number(std::fabs(shown), "##0'.0") + (shown > 0 ? away : towards);
}

std::string Azimuth_Text(double azDeg, const char* mask) {
    double shown = Round_Even(azDeg, 1);
    if (shown >= 360.0) shown -= 360.0;
    return Format_Number(shown, mask);
}

std::string Line_Bearings_Text(double azDeg) {
    double a = 0, b = 0;
    if (azDeg < 90) {
        a = azDeg + 90;
        b = azDeg + 270;
    } else if (azDeg < 270) {
        a = azDeg - 90;
        b = azDeg + 90;
    } else {
        a = azDeg - 270;
        b = azDeg - 90;
    }
    return Format_Number(a, "000°/ ") + Format_Number(b, "000°");
}

void Check_Stars_Size(double jd) {
    const int32_t limit = std::clamp<int32_t>(SightsFilter.StarCount, body::FirstStar, kTier4End);
    if (static_cast<int32_t>(StarPlaces.size()) > limit) return;
    if (Catalogue_Upper() < limit) Load_Tiers_For(limit);
    Compute_Star_Places(limit, jd);
}

void Reduce_Sight(SightSet& set, int row, bool redraw) {
    if (row < 0 || row > set.Max_Sight()) return;
    Sight_Record& s = set.Sights[row];
    if (s.Alt_Entered == 0 || s.Az_Entered == 0) return;

    s.Sextant_Alt = static_cast<float>(
        Round_Even(static_cast<double>(s.Sextant_Alt) * kArcminPerRadian * 10.0) / 10.0 /
        kArcminPerRadian);
    const int32_t wanted = s.Has_Body != 0 ? s.Body_Id : -1;
    s.Has_Body = 0;

    float lat = 0, lon = 0, course = 0, speed = 0;
    Get_Position(s.Sight_Time, lat, lon, course, speed);
    s.DR_Lat = lat;
    s.DR_Long = lon;
    set.DR_Warning[row] = Is_DR_Error(course) ? kTrue : kFalse;

    const Reduction_Work work = Prepare_Reduction(s.Sextant_Alt, lat, lon, s.Sight_Az);
    const EarthFrame frame = Calc_EarthFrame(s.Sight_Time);
    Candidate_List& list = set.Candidates[row];
    list.clear();
    list.reserve(101);
    Identification id{work, frame, 0, 0, list};
    Declination_Bounds(lat, id.lowest, id.highest);

    const Body_Test sun = Test_Limbs(id, body::SunUpperLimb);
    const float sunTestAlt =
        static_cast<float>(sun.Hc + static_cast<double>(Refraction_Apparent(0.0f)));
    s.Sun_Alt = sunTestAlt;
    Test_Limbs(id, body::MoonUpperLimb);
    for (int32_t planet = body::Mercury; planet <= body::Saturn; ++planet) Test_Planet(id, planet);

    if (sunTestAlt <= SightsFilter.AltLimit || SightsFilter.DaylightStars != 0) {
        Check_Stars_Size(s.Sight_Time);
        const int32_t last =
            std::min<int32_t>(SightsFilter.StarCount, static_cast<int32_t>(StarPlaces.size()) - 1);
        const bool mainOnly = SightsFilter.StarCount == kSightMainStars;
        for (int32_t star = body::FirstStar; star <= last; ++star) {
            if (mainOnly && !Is_Main_Star(star)) continue;
            Test_Star(id, star, s.Sight_Time);
        }
    }

    Sort_Candidates(list);
    list.shrink_to_fit();
    for (Sight_Candidate& c : list) Fill_Texts(c);

    if (list.empty()) {
        s.Candidate_No = sunTestAlt > -SightsFilter.AltLimit ? -2 : -1;
        s.Has_Body = 0;
    } else {
        int selected = 0;
        for (std::size_t k = 0; k < list.size(); ++k)
            if (list[k].Body_Id == wanted) {
                selected = static_cast<int>(k);
                break;
            }
        Select_Candidate(set, row, selected);
    }
    if (redraw && set.Host != nullptr) set.Host->Row_Reduced(row);
}

void Select_Candidate(SightSet& set, int row, int index) {
    if (row < 0 || row > set.Max_Sight()) return;
    const Candidate_List& list = set.Candidates[row];
    if (index < 0 || index >= static_cast<int>(list.size())) return;
    Sight_Record& s = set.Sights[row];
    s.Candidate_No = index;
    s.Body_Id = list[index].Body_Id;
    s.Line_Az = list[index].Cand_Az;
    s.Intercept = list[index].Cand_Intercept;
    s.Has_Body = kTrue;
}

}  // namespace kelmoran
