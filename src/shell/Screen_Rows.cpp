// The rows of AltAz, Main, Solar Bodies and Moon Phases: bodies through the body service,
// events through the rise-and-set modules, lunations through the eclipse search, and every
// cell through the text formats.
#include "shell/Screen_Rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "almanac/Moon_Events.h"
#include "almanac/Sun_Events.h"
#include "almanac/cAlmanac.h"
#include "eclipses/M_Eclipse.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Bodies.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Moon_Phases.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"
#include "voyage/Plan_Text.h"
#include "voyage/Position_Methods.h"
#include "voyage/VariationModel.h"

namespace kelmoran {

BodyFilters Filters;

namespace {

constexpr double kSecondsPerCentury = 36525.0 * 86400.0;
constexpr int32_t kFirstStar = 12;
constexpr float kTenDegrees = static_cast<float>(10.0 / kDegreesPerRadian);

// The column count of AltAz (0 .. 17) and its hidden body-number column.
constexpr int kAltAzColumns = 18;
constexpr int kBodyNumberColumn = 18;
constexpr int kPlanetsColumns = 16;
constexpr int kLunationsColumns = 10;

// The cell of a kept Sun, Moon or planet that is below the horizon.
constexpr const char* kBelowHorizon = "- ";
// The marker of position data that dead reckoning cannot give.
constexpr const char* kNoPosition = " -";

double Reduce(double a) {
    if (!std::isfinite(a)) return 0.0;
    a = std::fmod(a, kTwoPi);
    if (a < 0.0) a += kTwoPi;
    return a;
}

double Zone_Days(int32_t bias) {
    return bias / 1440.0;
}

// An altitude: Format_Angle for a body above the horizon, a minus sign and the size for
// one below (the angle forms themselves fold into 0 .. 360).
std::string Altitude_Text(double radians, bool seconds) {
    const bool negative = radians < 0.0;
    const double a = std::fabs(radians);
    std::string text = seconds ? Format_Angle_DMS(a, 1, !negative) : Format_Angle(a, 1, !negative);
    return negative ? "-" + text : text;
}

std::string Utf8_Of(char32_t c) {
    std::string s;
    if (c < 0x80) {
        s += static_cast<char>(c);
    } else if (c < 0x800) {
        s += static_cast<char>(0xC0 | (c >> 6));
        s += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        s += static_cast<char>(0xE0 | (c >> 12));
        s += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        s += static_cast<char>(0x80 | (c & 0x3F));
    }
    return s;
}

std::string Trim(std::string s) {
    const auto first = s.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    const auto last = s.find_last_not_of(' ');
    return s.substr(first, last - first + 1);
}

// The designation cell: a Greek letter's code written as the letter itself.
std::string Designation_Text(const StarNames& names) {
    std::string d = names.Designation;
    if (names.IsGreek && !d.empty()) {
        const char32_t letter = Greek_Code_Point(d[0]);
        if (letter != 0) d = Utf8_Of(letter) + d.substr(1);
    }
    return Trim(d);
}

std::string Constellation_Text(const StarNames& names) {
    if (names.Constellation < 1 || names.Constellation > 88) return {};
    return Trim(Constellation_Name[names.Constellation]);
}

void Ensure_Star_Tables() {
    if (Catalogue.empty()) Load_Star_Tables();
    if (MainBodies.empty()) Load_Main_Bodies();
}

// The highest star index of a StarCount: the entries of the magnitude list map onto the
// catalogue's own limits; any other count is taken from Sirius on.
int32_t Star_Limit_Index(int32_t count) {
    static constexpr std::array<std::pair<int32_t, int32_t>, 8> kCounts = {{{280, kMag3_5End},
                                                                            {504, kMag4End},
                                                                            {1520, kMag5End},
                                                                            {4683, kMag6End},
                                                                            {14289, kBaseTierEnd},
                                                                            {42078, kTier2End},
                                                                            {120549, kTier3End},
                                                                            {328869, kTier4End}}};
    for (const auto& [c, index] : kCounts)
        if (c == count) return index;
    return std::clamp<int32_t>(count + kFirstStar - 1, kFirstStar - 1, kTier4End);
}

// Loads the catalogue up to `highest` (the next tiers in turn) and gives the highest star
// index that can be used.
int32_t Load_Up_To(int32_t highest) {
    if (highest > Catalogue_Upper()) Load_Tiers_For(highest);
    return std::min(highest, Catalogue_Upper());
}

// The observer and the settings that Calc_AltAz reads, as last used for the body table: a
// change makes every altitude stale even at the same moment.
struct ObserverState {
    float Lat = 0, Lon = 0, IndexError = 0, HtOfEye = 0, Pressure = 0, Temp = 0;
    uint8_t Simplified = 0;
    bool operator==(const ObserverState&) const = default;
};

void Observer_Check(float lat, float lon) {
    static ObserverState last;
    static bool first = true;
    const ObserverState now{lat,
                            lon,
                            Settings.IndexError,
                            Settings.HtOfEye,
                            Settings.Pressure,
                            Settings.Temp,
                            Settings.SimplifiedRiseSet};
    if (first || !(now == last)) Reset_AltAz();
    first = false;
    last = now;
}

bool DR_Failed(float course) {
    return Settings.PositionMethod != kFixPosition && Is_DR_Error(course);
}

// Great-circle distance of two points by right ascension (or SHA) and declination.
double Separation(double ra1, double dec1, double ra2, double dec2) {
    return Arc_Cos(std::sin(dec1) * std::sin(dec2) +
                   std::cos(dec1) * std::cos(dec2) * std::cos(ra1 - ra2));
}

double Variation_Of(double jd, float lat, float lon) {
    Variation_Answer answer;
    Variation_Model().Calc(Variation_Request{jd, lat, lon}, answer);
    return answer.Variation;
}

// Texts of a one-decimal form whose value decides the text only through its tenths (the
// number masks and the magnetic course round to the tenth, halves to even, before they
// write anything). AltAz asks for thousands at every change of the date, each of a few
// thousand possible texts, so each text is made once by its form and kept.
class Tenths_Texts {
  public:
    explicit Tenths_Texts(std::string (*make)(double)) : make_(make) {}
    const std::string& Get(double value) {
        const double tenths = std::nearbyint(value * 10.0);
        if (!std::isfinite(tenths) || std::fabs(tenths) > 1.0e7) {
            scratch_ = make_(value);
            return scratch_;
        }
        auto [it, inserted] = texts_.try_emplace(static_cast<int64_t>(tenths));
        if (inserted) it->second = make_(value);
        return it->second;
    }

  private:
    std::string (*make_)(double);
    std::unordered_map<int64_t, std::string> texts_;
    std::string scratch_;
};

std::string Azimuth_Form(double degrees) {
    return Format_Number(degrees, "000°.0 T");
}
std::string Magnetic_Form(double degrees) {
    return Format_Magnetic_Course(degrees);
}
std::string Minutes_Form(double minutes) {
    return Format_Number(minutes, "#0'.0");
}
std::string Seconds_Form(double seconds) {
    return Format_Number(seconds, "#0\".0");
}
std::string Radius_Form(double minutes) {
    return Format_Number(minutes, "##0'.0");
}
std::string Magnitude_Form(double magnitude) {
    return Format_Number(magnitude, "#0.0");
}

// The ranks of texts in ascending order (equal texts share a rank): the numeric keys of
// the text columns.
std::vector<double> Ranks(const std::vector<std::string>& texts) {
    std::vector<int32_t> order(texts.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int32_t a, int32_t b) { return texts[a] < texts[b]; });
    std::vector<double> rank(texts.size(), 0.0);
    double r = 0.0;
    for (size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && texts[order[i]] != texts[order[i - 1]]) r += 1.0;
        rank[order[i]] = r;
    }
    return rank;
}

// The cells of a body that change only with its place, kept in the body's Texts until the
// place is recomputed.
enum CachedCell { kDesig, kConstel, kName, kSHA, kDec, kMag, kRA, kCachedCells };

void Fill_Place_Texts(int32_t b) {
    BodyRecord& r = Bodies[b];
    if (r.Texts.size() == kCachedCells) return;
    r.Texts.assign(kCachedCells, std::string());
    if (b >= kFirstStar) {
        r.Texts[kDesig] = Designation_Text(r.Names);
        r.Texts[kConstel] = Constellation_Text(r.Names);
        r.Texts[kName] = r.Names.Name;
    } else {
        r.Texts[kName] = kBodyNames[b];
    }
    r.Texts[kSHA] = Format_Angle(Reduce(kTwoPi - r.RA), 1, true);
    r.Texts[kDec] = Format_Lat(r.Dec, 1, true);
    if (b > 3) r.Texts[kMag] = Magnitude_Form(r.Magnitude);
    r.Texts[kRA] = Format_RA(r.RA, 1, true);
}

// The magnitude that the sort gives the Sun and the Moon, which have none computed: the
// values of their slots in the star records, brighter than any planet.
constexpr float kSunSortMagnitude = -10.0f;
constexpr float kMoonSortMagnitude = -9.0f;

// The stars of modes 3 and 4 within `radius` of the point at right ascension `ra` and
// declination `dec` of date, among stars kFirstStar .. `highest`; their distances go to
// `distance` by star. The catalogue's J2000 places are screened first with a margin for
// precession, proper motion, nutation and aberration, and the stars that pass are tested
// on their apparent places.
std::vector<int32_t> Stars_In_Radius(double ra, double dec, double radius, int32_t highest,
                                     double jd, std::vector<double>& distance) {
    const double years = std::fabs(jd) / 365.25;
    const double precession = years * 50.3 / kArcsecPerRadian;  // general precession a year
    const double slack = 0.01;                             // nutation, aberration, rounding
    std::vector<int32_t> candidates;
    for (int32_t b = kFirstStar; b <= highest; ++b) {
        const CatalogueStar& s = Catalogue[b];
        const double pm = std::hypot(s.PmRA * std::cos(s.Dec), s.PmDec) * years;
        const double margin = radius + precession + pm + slack;
        if (Separation(s.RA, s.Dec, ra, dec) <= margin) candidates.push_back(b);
    }
    std::vector<int32_t> kept;
    if (candidates.empty()) return kept;
    Calc_Bodies(0, static_cast<int32_t>(candidates.size()) - 1, candidates, jd);
    for (int32_t b : candidates) {
        const double d = Separation(Bodies[b].RA, Bodies[b].Dec, ra, dec);
        if (d <= radius) {
            kept.push_back(b);
            if (distance.size() <= static_cast<size_t>(b)) distance.resize(b + 1, 0.0);
            distance[b] = d;
        }
    }
    return kept;
}

// The highest star that the AltAz list of the filters in force may take.
int32_t AltAz_Highest_Star() {
    switch (Filters.BodyFilterMode) {
        case 1:
        case 3:
        case 4:
            return Star_Limit_Index(Filters.StarCount);
        case 2: {
            const int c = Filters.ConstelChoice;
            int32_t highest = 0;
            if (c < 1 || c > 88) return 0;
            for (int32_t s : Constellation_Stars[c].Stars) {
                if (s == 0) break;
                highest = std::max(highest, s);
            }
            return highest;
        }
        default:
            return 0;
    }
}

// The list of bodies of AltAz before the altitude filter, in the natural order.
std::vector<int32_t> AltAz_Body_List(double jd, float lat, float lon,
                                     std::vector<double>& distance) {
    std::vector<int32_t> list;
    const int32_t mode = Filters.BodyFilterMode;
    if (mode == 0 || mode == 1 || mode < 0 || mode > 4) {
        list.push_back(Filters.SunLowerLimb ? 1 : 0);
        list.push_back(Filters.MoonLowerLimb ? 3 : 2);
        for (int32_t b = 4; b <= 8; ++b) list.push_back(b);
        if (Filters.MinorPlanets)
            for (int32_t b = 9; b <= 11; ++b) list.push_back(b);
    }
    switch (mode) {
        case 1: {
            const int32_t highest = Load_Up_To(Star_Limit_Index(Filters.StarCount));
            for (int32_t b = kFirstStar; b <= highest; ++b) list.push_back(b);
            break;
        }
        case 2: {
            const int c = Filters.ConstelChoice;
            if (c < 1 || c > 88) break;
            std::vector<int32_t> stars;
            for (int32_t s : Constellation_Stars[c].Stars) {
                if (s == 0) break;
                if (s >= kFirstStar) stars.push_back(s);
            }
            std::sort(stars.begin(), stars.end());
            stars.erase(std::unique(stars.begin(), stars.end()), stars.end());
            if (!stars.empty()) {
                const int32_t highest = Load_Up_To(stars.back());
                for (int32_t s : stars)
                    if (s <= highest) list.push_back(s);
            }
            break;
        }
        case 3:
        case 4: {
            const double radius = Filters.LimitRadius / kArcminPerRadian;
            const int32_t highest = Load_Up_To(Star_Limit_Index(Filters.StarCount));
            double ra = 0.0, dec = 0.0;
            if (mode == 3) {
                ra = Reduce(kTwoPi - Filters.CentreA);
                dec = Filters.CentreB;
            } else {
                // The point at that altitude and azimuth for the observer, as an hour
                // angle and declination, then a right ascension by the sidereal time.
                const double h = Filters.CentreA, az = Filters.CentreB;
                const double sinDec =
                    std::sin(h) * std::sin(lat) + std::cos(h) * std::cos(lat) * std::cos(az);
                dec = Arc_Sin(sinDec);
                const double lha = Atan2_R8(
                    -std::cos(h) * std::sin(az),
                    std::sin(h) * std::cos(lat) - std::cos(h) * std::sin(lat) * std::cos(az));
                ra = Reduce(Calc_GAST(jd) + lon - lha);
            }
            for (int32_t b : Stars_In_Radius(ra, dec, radius, highest, jd, distance))
                list.push_back(b);
            break;
        }
        default: {
            // The navigational stars, brightest first.
            std::vector<int32_t> stars;
            for (int32_t b : MainBodies)
                if (b >= kFirstStar && b <= Catalogue_Upper()) stars.push_back(b);
            std::sort(stars.begin(), stars.end());
            list.insert(list.end(), stars.begin(), stars.end());
            break;
        }
    }
    return list;
}

}  // namespace

bool AltAz_Loads_Tiers() {
    Ensure_Star_Tables();
    if (AltAz_Highest_Star() <= Catalogue_Upper()) return false;
    // The next tier to read, if its data can be found at all.
    const int next = Catalogue_Upper() < kTier2End ? 2 : Catalogue_Upper() < kTier3End ? 3 : 4;
    return Star_Tier_Available(next);
}

void Clear_Vector_Upper_State() {
#if (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
    static const bool wide = __builtin_cpu_supports("avx");
    // vzeroupper keeps the low 128 bits of every register: no value the compiler holds in
    // an SSE register is touched.
    if (wide) __asm__ volatile("vzeroupper");
#endif
}

ColumnTitle Altitude_Title() {
    if (Settings.IndexError != 0.0f) return {"Sextant Altitude", "Sex. Alt."};
    if (Settings.HtOfEye != 0.0f) return {"Observed Altitude", "Obs. Alt."};
    return {"Apparent Altitude", "App. Alt."};
}

// ------------------------------------------------------------------------------ AltAz

AltAzRows AltAz_Rows(double jd, bool catalogueNumbers) {
    Clear_Vector_Upper_State();
    AltAzRows out;
    out.Labels.assign(kBodyNumberColumn + 1, {});
    out.SortKeys.assign(kAltAzColumns, {});
    if (!std::isfinite(jd)) return out;
    Ensure_Star_Tables();

    float lat = 0.0f, lon = 0.0f, course = 0.0f, speed = 0.0f;
    Get_Position(jd, lat, lon, course, speed);
    out.DRwarning = DR_Failed(course);
    Observer_Check(lat, lon);

    std::vector<double> distance;
    const std::vector<int32_t> list = AltAz_Body_List(jd, lat, lon, distance);
    if (!list.empty()) Calc_Bodies(0, static_cast<int32_t>(list.size()) - 1, list, jd);

    // The catalogue numbers are read once, when their columns are first shown; a missing
    // table is not sought again.
    static bool numbersRead = false;
    if (catalogueNumbers && !numbersRead) {
        if (HD_Numbers.empty()) Load_HD_Numbers();
        if (Hip_Numbers.empty()) Load_Hip_Numbers();
        numbersRead = true;
    }
    const double variation = Variation_Of(jd, lat, lon);
    const bool radiusShown = Filters.BodyFilterMode == 3 || Filters.BodyFilterMode == 4;
    const bool aboveTen = Filters.AboveTenOnly != 0;

    static Tenths_Texts azimuthTexts(Azimuth_Form), magneticTexts(Magnetic_Form),
        minutesTexts(Minutes_Form), secondsTexts(Seconds_Form), radiusTexts(Radius_Form);
    std::vector<std::string> desigKeys, constelKeys, nameKeys;
    for (auto& column : out.Labels) column.reserve(list.size());
    for (auto& column : out.SortKeys) column.reserve(list.size());
    desigKeys.reserve(list.size());
    constelKeys.reserve(list.size());
    nameKeys.reserve(list.size());
    out.BodyNumbers.reserve(list.size());
    for (int32_t b : list) {
        if (b < 0 || static_cast<size_t>(b) >= Bodies.size()) continue;
        if (b >= kFirstStar && b > Catalogue_Upper()) continue;
        const BodyRecord& r = Bodies[b];
        if (aboveTen && b >= kFirstStar && r.TrueAlt < kTenDegrees) continue;
        Fill_Place_Texts(b);
        const bool hidden = aboveTen && b < kFirstStar && r.SextantAlt < 0.0f;

        const double gha = Reduce(r.GHA);
        const double azDeg = r.Azimuth * kDegreesPerRadian;
        const double magAzDeg = azDeg - variation * kDegreesPerRadian;
        const double tc = r.TrueAlt - r.SextantAlt;
        const double sd = std::fabs(r.SD);

        auto& L = out.Labels;
        L[0].push_back(r.Texts[kDesig]);
        L[1].push_back(r.Texts[kConstel]);
        L[2].push_back(r.Texts[kName]);
        L[3].push_back(hidden ? kBelowHorizon : Altitude_Text(r.SextantAlt, false));
        L[4].push_back(hidden ? kBelowHorizon : azimuthTexts.Get(azDeg));
        L[5].push_back(Format_Angle(gha, 1, true));
        L[6].push_back(r.Texts[kSHA]);
        L[7].push_back(r.Texts[kDec]);
        L[8].push_back(hidden ? kBelowHorizon : magneticTexts.Get(magAzDeg));
        L[9].push_back(r.Texts[kMag]);
        // Semi-diameter in minutes of arc for the Sun and Moon, seconds for the planets.
        if (b < 4)
            L[10].push_back(minutesTexts.Get(sd * kArcminPerRadian));
        else if (b < kFirstStar)
            L[10].push_back(secondsTexts.Get(sd * kArcsecPerRadian));
        else
            L[10].push_back(minutesTexts.Get(0.0));
        L[11].push_back(hidden ? kBelowHorizon : minutesTexts.Get(tc * kArcminPerRadian));
        L[12].push_back(hidden ? kBelowHorizon : Altitude_Text(r.TrueAlt, false));
        L[13].push_back(r.Texts[kRA]);
        int32_t hd = 0, hip = 0;
        if (catalogueNumbers && b >= kFirstStar) {
            if (static_cast<size_t>(b) < HD_Numbers.size()) hd = HD_Numbers[b];
            if (static_cast<size_t>(b) < Hip_Numbers.size()) hip = Hip_Numbers[b];
        }
        L[14].push_back(hd > 0 ? std::to_string(hd) : std::string());
        L[15].push_back(hip > 0 ? std::to_string(hip) : std::string());
        // No Tycho number table is delivered with the catalogue: the column stays empty.
        L[16].push_back(std::string());
        const double rad =
            (radiusShown && static_cast<size_t>(b) < distance.size()) ? distance[b] : 0.0;
        L[17].push_back(radiusShown ? radiusTexts.Get(rad * kArcminPerRadian) : std::string());
        L[kBodyNumberColumn].push_back(std::to_string(b));

        desigKeys.push_back(b >= kFirstStar ? Designation_Sort_Key(r.Names.Designation)
                                            : std::string());
        constelKeys.push_back(r.Texts[kConstel]);
        nameKeys.push_back(r.Texts[kName]);
        auto& K = out.SortKeys;
        K[3].push_back(r.SextantAlt);
        K[4].push_back(r.Azimuth);
        K[5].push_back(gha);
        K[6].push_back(r.RA);
        K[7].push_back(r.Dec);
        K[8].push_back(Reduce(magAzDeg / kDegreesPerRadian));
        K[9].push_back(b == 0 || b == 1   ? kSunSortMagnitude
                       : b == 2 || b == 3 ? kMoonSortMagnitude
                                          : r.Magnitude);
        K[10].push_back(sd);
        K[11].push_back(tc);
        K[12].push_back(r.TrueAlt);
        K[13].push_back(r.RA);
        K[14].push_back(hd);
        K[15].push_back(hip);
        K[16].push_back(0.0);
        K[17].push_back(rad);
        out.BodyNumbers.push_back(b);
    }
    out.SortKeys[0] = Ranks(desigKeys);
    out.SortKeys[1] = Ranks(constelKeys);
    out.SortKeys[2] = Ranks(nameKeys);
    out.Rows = static_cast<int32_t>(out.BodyNumbers.size());
    return out;
}

std::vector<int32_t> AltAz_Sort(const AltAzRows& rows, int32_t column, bool ascending) {
    std::vector<int32_t> order(static_cast<size_t>(std::max(rows.Rows, 0)));
    std::iota(order.begin(), order.end(), 0);
    if (column < 0 || column >= static_cast<int32_t>(rows.SortKeys.size())) return order;
    const std::vector<double>& key = rows.SortKeys[column];
    if (key.size() < order.size()) return order;
    if (ascending)
        std::stable_sort(order.begin(), order.end(),
                         [&](int32_t a, int32_t b) { return key[a] < key[b]; });
    else
        std::stable_sort(order.begin(), order.end(),
                         [&](int32_t a, int32_t b) { return key[a] > key[b]; });
    return order;
}

// ------------------------------------------------------------------------- Solar Bodies

namespace {

// Moment of row `i` of Solar Bodies from `jd`: calendar steps for months and years from
// the zone date of row 0 (the day of the month kept where the month has it), fixed steps
// otherwise.
double Planets_Row_Moment(double jd, int32_t i, const std::string& unit, int32_t bias) {
    if (unit == "Year" || unit == "Month") {
        const double zone = jd + Zone_Days(bias);
        MySystemTime d = JD_To_Date(zone);
        const bool julian = Shared_JulDates != 0 || zone + kJ2000 < 1721424.0;
        int32_t year = d.wYear, month = d.wMonth;
        if (unit == "Year") {
            year += i;
            if (d.wYear < 0 && year >= 0) ++year;  // there is no year 0
        } else {
            int32_t m = month - 1 + i;
            int32_t y = year + m / 12;
            if (d.wYear < 0 && y >= 0) ++y;
            month = m % 12 + 1;
            year = y;
        }
        d.wYear = static_cast<int16_t>(std::clamp<int32_t>(year, -32000, 32000));
        d.wMonth = static_cast<int16_t>(month);
        d.wDay = std::min<int16_t>(d.wDay, Get_Month_Length(month, d.wYear));
        return Calc_JD(d, julian) - Zone_Days(bias);
    }
    double step = 1.0 / 24.0;
    if (unit == "Day")
        step = 1.0;
    else if (unit == "Minute")
        step = 1.0 / 1440.0;
    else if (unit == "Second")
        step = 1.0 / 86400.0;
    return jd + i * step;
}

}  // namespace

TableRows Planets_Rows(double jd, int32_t rowCount, bool useSeconds) {
    Clear_Vector_Upper_State();
    TableRows out;
    out.Labels.assign(kPlanetsColumns, {});
    if (!std::isfinite(jd) || rowCount <= 0) return out;
    rowCount = std::min<int32_t>(rowCount, 10000);
    const int32_t body = std::clamp<int32_t>(Filters.ShowBody, 0, 11);
    const bool dms = Filters.ShowSecondsOfArc != 0;
    const int32_t bias = TZ_Bias;
    const std::array<int32_t, 1> list = {body};

    for (int32_t i = 0; i < rowCount; ++i) {
        const double t = Planets_Row_Moment(jd, i, Filters.IntervalUnit, bias);
        float lat = 0.0f, lon = 0.0f, course = 0.0f, speed = 0.0f;
        Get_Position(t, lat, lon, course, speed);
        const bool drError = DR_Failed(course);
        out.DRwarning = out.DRwarning || drError;
        Observer_Check(lat, lon);
        Calc_Bodies(0, 0, list, t);
        const BodyRecord& r = Bodies[body];

        // The zone moment rounded to what the time cell shows, so that date and time agree.
        const double unit = useSeconds ? 86400.0 : 1440.0;
        const double zone = std::round((t + Zone_Days(bias) - 0.5) * unit) / unit + 0.5;
        const MySystemTime date = JD_To_Date(zone);
        auto& L = out.Labels;
        L[0].push_back(Format_Date_Mask(date, "dd mmm yyyy"));
        L[1].push_back(Format_Date_Mask(date, useSeconds ? "HH:mm:ss" : "HH:mm"));
        if (drError) {
            L[2].push_back(position_text::DRError);
            L[3].push_back(kNoPosition);
        } else {
            L[2].push_back(dms ? Format_Lat_DMS(lat, 1, true) : Format_Lat(lat, 1, true));
            L[3].push_back(Format_Long(lon, 1, true));
        }
        L[4].push_back(Altitude_Text(r.TrueAlt, dms));
        L[5].push_back(Altitude_Text(r.SextantAlt, dms));
        L[6].push_back(
            Format_Number(r.Azimuth * kDegreesPerRadian, dms ? "000°.0000 T" : "000°.0 T"));
        L[7].push_back(Format_RA(r.RA, dms ? 2 : 1, true));
        const double gha = Reduce(r.GHA), sha = Reduce(kTwoPi - r.RA);
        L[8].push_back(dms ? Format_Angle_DMS(gha, 1, true) : Format_Angle(gha, 1, true));
        L[9].push_back(dms ? Format_Angle_DMS(sha, 1, true) : Format_Angle(sha, 1, true));
        L[10].push_back(dms ? Format_Lat_DMS(r.Dec, 1, true) : Format_Lat(r.Dec, 1, true));
        if (body == 2 || body == 3)
            L[11].push_back(Format_Number(r.Distance, "000,000") + " Km");
        else
            L[11].push_back(Format_Number(r.Distance, "0.00000") + " Au");
        const double sd = std::fabs(r.SD);
        if (body < 4)
            L[12].push_back(Format_Number(sd * kArcminPerRadian, "#0'.00"));
        else
            L[12].push_back(Format_Number(sd * kArcsecPerRadian, "#0.00\""));
        L[13].push_back(body < 4 ? std::string()
                                 : Format_Number(r.Magnitude, dms ? "#0.000" : "#0.00"));
        const double aries = Reduce(Calc_GAST(t));
        L[14].push_back(dms ? Format_Angle_DMS(aries, 1, true) : Format_Angle(aries, 1, true));
        L[15].push_back(
            Format_Number((r.TrueAlt - r.SextantAlt) * kArcminPerRadian, dms ? "#0'.00" : "#0'.0"));
    }
    out.Rows = rowCount;
    return out;
}

// -------------------------------------------------------------------------- Moon Phases

TableRows Lunations_Rows(double jd) {
    Clear_Vector_Upper_State();
    TableRows out;
    out.Labels.assign(kLunationsColumns, std::vector<std::string>(12));
    out.Rows = 12;
    for (int m = 1; m <= 12; ++m) out.Labels[0][m - 1] = Month_Name(m);
    if (!std::isfinite(jd)) return out;
    const int32_t bias = TZ_Bias;
    const int year = JD_To_Date(jd + Zone_Days(bias)).wYear;
    const std::vector<LunationPhase> phases = Fill_Lunation_Year(year, bias, Eclipses);
    for (const LunationPhase& p : phases) {
        if (p.Month < 1 || p.Month > 12 || p.Phase < 0 || p.Phase > 3) continue;
        const size_t row = static_cast<size_t>(p.Month - 1);
        std::string text = Format_Date_Mask(JD_To_Date(p.ZoneJD), mask::DayTimeHM);
        if (!p.Eclipse.empty()) text = "* " + text;
        // The first of a phase in a month takes the first group, a second the second.
        std::string& first = out.Labels[1 + p.Phase][row];
        std::string& second = out.Labels[5 + p.Phase][row];
        if (first.empty())
            first = text;
        else if (second.empty())
            second = text;
        if (!p.Eclipse.empty())
            out.Labels[9][row] = Join_Eclipse_Kinds(out.Labels[9][row], p.Eclipse);
    }
    return out;
}

// --------------------------------------------------------------------------------- Main

namespace {

const char* Phase_Name(int p) {
    static constexpr std::array<const char*, 4> kNames = {"New Moon", "First Quarter", "Full Moon",
                                                          "Last Quarter"};
    return kNames[static_cast<size_t>(p & 3)];
}

std::string Zone_Date_Time(double t, int32_t bias, bool seconds) {
    const double zone = t + Zone_Days(bias);
    return Format_Day_Month(zone, Shared_JulDates != 0) + " " + Format_Time_Of_Day(zone, seconds);
}

}  // namespace

MainPage Main_Rows(double jd, bool useSeconds) {
    Clear_Vector_Upper_State();
    MainPage page;
    if (!std::isfinite(jd)) return page;
    const int32_t bias = TZ_Bias;

    // The observer.
    float lat = 0.0f, lon = 0.0f, course = 0.0f, speed = 0.0f;
    Get_Position(jd, lat, lon, course, speed);
    const bool moving = Settings.PositionMethod != kFixPosition;
    const bool drError = DR_Failed(course);
    page.DRwarning = drError;
    double shownLat = lat;
    if (std::fabs(shownLat) > kHalfPi - 1.0 / kArcminPerRadian)
        shownLat = shownLat < 0.0 ? -kHalfPi : kHalfPi;
    page.Day.push_back({moving ? position_text::CurrentPosition : "Position",
                        Format_Lat(shownLat, 1, false) + "/ " + Format_Long(lon, 1, false)});
    if (moving) {
        page.Day.push_back(
            {position_text::CourseSpeed,
             drError ? std::string(position_text::DRError)
                     : Format_Number(course, "000° T") + "  " + Format_Number(speed, "#0.0# Kts")});
    }

    // The magnetic field at the observer.
    Variation_Answer field;
    Variation_Model().Calc(Variation_Request{jd, lat, lon}, field);
    page.Day.push_back({"Variation ", Variation_Text(static_cast<float>(
                                          Round_Even(field.Variation * kDegreesPerRadian, 1)))});
    double dip = field.Dip;
    if (dip > kPi) dip = kTwoPi - dip;
    page.Day.push_back({"Magnetic Dip", Format_Number(dip * kDegreesPerRadian, "#0°.0")});

    // The Sun's day.
    const Sun_Row sun = Main_Sun_Rows(jd, bias, useSeconds);
    const Event_Text_Style style = Main_Day_Style(jd, bias, useSeconds);
    page.Day.push_back({"Morning Twighlights Start", ""});
    page.Day.push_back({"Astronomical", sun[0]});
    page.Day.push_back({"Nautical", sun[1]});
    page.Day.push_back({"Civil", sun[2]});
    page.Day.push_back({"Sunrise", sun[3]});
    const double zoneNoon = style.Day - Zone_Days(bias);
    page.Day.push_back({"Aries @ 12:00", Format_Angle(Reduce(Calc_GAST(zoneNoon)), 1, false)});
    page.Day.push_back({"Mer.Pass.", sun[4]});
    {
        const Sun_Sample& noon = Sun_Day.Sun_Noon;
        float plat = lat, plon = lon, pc = 0.0f, ps = 0.0f;
        Get_Position(noon.Time, plat, plon, pc, ps);
        const int32_t sunBody = Filters.SunLowerLimb ? 1 : 0;
        BodyPlace place = noon.Place;
        AltAzResult a;
        Calc_AltAz(a, sunBody, plat, plon, place);
        page.Day.push_back(
            {"Mer. Pass. (" + Altitude_Title().Short + ")",
             Altitude_Text(a.SextantAlt, false) + (sunBody == 0 ? "   UL" : "   LL")});
    }
    page.Day.push_back({"Sunset", sun[5]});
    page.Day.push_back({"Evening Twilights End", ""});
    page.Day.push_back({"Civil", sun[6]});
    page.Day.push_back({"Nautical", sun[7]});
    page.Day.push_back({"Astronomical", sun[8]});

    // The Moon.
    const Moon_Rows_Result moon = Moon_Rows(jd, bias, useSeconds);
    page.Moon.push_back({moon.Titles[0], moon.Texts[0]});
    page.Moon.push_back({moon.Titles[1], moon.Texts[1]});
    page.Moon.push_back({"Mer.Pass.", moon.Passage_Time_Text});
    page.Moon.push_back({moon.Passage_Title, moon.Passage_Alt_Text});

    // Age and illumination at the Moon's passage (the moment itself if there is none).
    const double at = moon.Passage_Time != 0.0 ? moon.Passage_Time : jd;
    const EarthFrame frame = Calc_EarthFrame(at);
    const BodyPlace sunPlace = Calc_Sun(kAccuracyFull, frame);
    const BodyPlace moonPlace = Calc_Moon(kAccuracyFull, frame);
    const double lit = Moon_Illuminated_Fraction(sunPlace, moonPlace);
    page.Moon.push_back({"Phase", Format_Number(lit, "##0%")});
    page.Moon.push_back({"Age", Format_Number(Moon_Age_At(at), "#0") + " d"});

    // The phases either side of the moment.
    const double deltaT = Get_DeltaT(DeltaT_Year(jd)) / kSecondsPerCentury;
    int prevPhase = 0, nextPhase = 0;
    double prev = -1.0e300, next = 1.0e300;
    for (int p = 0; p < 4; ++p) {
        const MoonPhase phase = static_cast<MoonPhase>(p);
        const double before = Phase_Before(jd, deltaT, phase);
        if (before > prev) prev = before, prevPhase = p;
        // The first of this phase after the moment: step back from a month ahead.
        double after = Phase_Before(jd + kSynodicMonth + 1.0, deltaT, phase);
        for (int guard = 0; guard < 3; ++guard) {
            const double earlier = Phase_Before(after - 1.0e-6, deltaT, phase);
            if (earlier <= jd) break;
            after = earlier;
        }
        if (after > jd && after < next) next = after, nextPhase = p;
    }
    page.Moon.push_back(
        {std::string("Previous ") + Phase_Name(prevPhase), Zone_Date_Time(prev, bias, useSeconds)});
    page.Moon.push_back(
        {std::string("Next ") + Phase_Name(nextPhase), Zone_Date_Time(next, bias, useSeconds)});
    return page;
}

}  // namespace kelmoran
