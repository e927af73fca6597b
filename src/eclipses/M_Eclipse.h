// The eclipse search: the program holds no list of eclipses; it finds them while it fills
// the Moon Phases table of a year. Every New Moon of the year is tried as a solar eclipse
// and every Full Moon as a lunar eclipse; what is found keeps all its circumstances in an
// EclipseRow (with its instants and speed in parallel arrays), from which the eclipse
// screen and its print work. "Next Eclipse" and "Previous Eclipse" step along these rows.
//
// Times are the program's day number MyJD (days of UT from J2000.0) unless said otherwise;
// zone time is UT + bias minutes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "ephemeris/Body_Place.h"
#include "ephemeris/Units.h"

namespace kelmoran {

// The constants of the eclipse geometry.
namespace eclipse {
inline constexpr double EarthRadius = 6378.137;              // km, equatorial
inline constexpr double MoonRadius = 1737.92808633851;       // km
inline constexpr double SunRadius = 696000.0;                // km
inline constexpr double SunMinusMoon = 694262.0;             // km, the stored difference
inline constexpr double SunPlusMoon = 697737.9280863386;     // km
inline constexpr double AU = 149597870.0;                    // km
inline constexpr double EarthPlusAir = 6418.806521269827;    // km, the Earth with its air
inline constexpr float EarthPlusAirSingle = 6418.806640625f;
inline constexpr double SecondDays = 1.1574074074074073e-5;
inline constexpr double MinuteDays = 0.0006944444444444445;
// Flattening of the Earth's figure as the map uses it: tan(geocentric latitude) =
// GeocentricFactor x tan(geodetic latitude).
inline constexpr double GeocentricFactor = 0.993306459361713;
}  // namespace eclipse

// The angle `a` (radians) less whole turns, into -π .. π.
double Fold_Pi(double a);

// The Sun and the Moon through the hours of one eclipse at the accuracy of the full series
// for about the cost of the reduced one: the full series is evaluated once, at the centre,
// and its difference from the reduced series there (in RA, Dec and distance) is added to
// the reduced series at every other moment. The omitted terms change slowly, so within
// 6 hours of the centre the places stay within 0.05" of the full series (tested), at any
// epoch; one full evaluation costs about what thirty reduced ones do.
class EclipseWindow {
  public:
    explicit EclipseWindow(double centre);
    // Apparent places at MyJD `t` (BodyPlace units: Sun AU, Moon km).
    void Places(double t, BodyPlace& sun, BodyPlace& moon) const;
    double Centre() const { return centre_; }

  private:
    double centre_ = 0.0;
    BodyPlace sunCorrection_;
    BodyPlace moonCorrection_;
};

// One moment of an eclipse. For a lunar eclipse all the fields are filled by the shadow
// geometry at Time (radians, radians a day). For a solar eclipse only Time is set on the
// contacts; the Maximum also holds the umbra's radius (UmbraRadius, km), the penumbra's
// radius (PenumbraRadius, km), the Earth's radius (in MoonSD, km) and Gamma.
struct EclipseEvent {
    double Time = 0.0;            // MyJD; 0 means that the event does not happen
    double UmbraRadius = 0.0;     // angular radius of the umbra at the Moon's distance
    double PenumbraRadius = 0.0;  // angular radius of the penumbra
    double MoonSD = 0.0;          // the Moon's semi-diameter
    double ShadowDec = 0.0;       // declination of the shadow's centre
    double ShadowGHA = 0.0;       // Greenwich hour angle of the shadow's centre, 0 .. 2π
    double DeltaDec = 0.0;        // the Moon's Dec less ShadowDec (see Shadow_At)
    double DeltaGHA = 0.0;        // ShadowGHA less the Moon's GHA (see Shadow_At)
    double Separation = 0.0;      // angular distance between the Moon and the shadow's centre
    double RateDec = 0.0;         // rate of DeltaDec, radians a day
    double RateGHA = 0.0;         // rate of DeltaGHA, radians a day
    float Gamma = 0.0f;           // least distance of the Moon from the axis, Earth radii
    int16_t WantGamma = 0;        // -1: fill Separation and Gamma
};

// The geometry of a solar eclipse at one instant (see M_Eclipse_Solar.h).
struct EclipseInstant {
    BodyPlace Sun;                // RA, Dec, Distance (AU), GHA
    BodyPlace Moon;               // RA, Dec, Distance (km), GHA
    double AxisDistance = 0.0;    // km, the Earth's centre from the line Sun-Moon
    double UmbraVertex = 0.0;     // km, the Moon to the vertex of the umbral cone
    double PositionAngle = 0.0;   // radians, direction of the shadow axis point
    double Separation = 0.0;      // radians, geocentric Sun-Moon distance
    double PenumbraRadius = 0.0;  // km, radius of the penumbra at the Earth
    double UmbraRadius = 0.0;     // km, radius of the umbra at the Earth's surface
    double Time = 0.0;            // MyJD of the instant
};

// An eclipse found in the year shown.
struct EclipseRow {
    double PhaseJD = 0.0;       // the refined New or Full Moon, MyJD rounded to the minute
    double Gamma = 0.0;         // solar: axis from the Earth's centre, Earth radii; lunar:
                                // the Moon's least distance from the axis, Earth radii
    EclipseEvent FirstContact;  // solar "PenIn"; lunar start of the penumbral phase
    EclipseEvent PartialStart;  // solar "UmbIn"; lunar start of the partial phase
    EclipseEvent TotalStart;    // solar "TotalIn"; lunar start of the total phase
    EclipseEvent Maximum;       // greatest eclipse
    EclipseEvent TotalEnd;      // solar "TotalOut"
    EclipseEvent PartialEnd;    // solar "UmbOut"
    EclipseEvent LastContact;   // solar "PenOut"
    std::string DateLabel;      // "21st of August 2017"
    int16_t IsNewMoon = 0;      // -1 for a row tried as solar
};

// The order of the seven instants kept for each row.
enum EclipseInstantIndex : int {
    kInstantMaximum = 0,
    kInstantPenIn = 1,
    kInstantPenOut = 2,
    kInstantUmbIn = 3,
    kInstantUmbOut = 4,
    kInstantTotalIn = 5,
    kInstantTotalOut = 6,
};
using EclipseInstants = std::array<EclipseInstant, 7>;

// Small values kept with each row.
struct EclipseSpeed {
    double Speed = 0.0;   // solar: the shadow's speed, km a day; lunar: radians a day
    int16_t Annular = 0;  // -1 when the Moon's umbral cone ends short of the Earth
    std::string Kind;     // the kind text, e.g. "Total Solar Eclipse"
};

// Room for the rows of one year (a year has at most 26 eclipses tried positive here).
inline constexpr int kEclipseRows = 27;

// The eclipses of the year shown, rebuilt on each fill.
struct EclipseTable {
    std::array<EclipseRow, kEclipseRows> Rows;
    std::array<EclipseInstants, kEclipseRows> Instants;
    std::array<EclipseSpeed, kEclipseRows> Speed;
    int Count = 0;    // rows in use, in time order
    int Current = 0;  // the row in hand
};

// The table of the program; the Moon Phases screen fills it, the eclipse screen reads it.
extern EclipseTable Eclipses;

// One phase of the year as the Moon Phases table shows it.
struct LunationPhase {
    int16_t Phase = 0;    // 0 New, 1 First Quarter, 2 Full, 3 Last Quarter
    double UT = 0.0;      // the refined moment, MyJD (UT), rounded to the minute
    double ZoneJD = 0.0;  // the same in zone time (UT + bias), a whole minute
    int16_t Month = 1;    // month of ZoneJD, 1 .. 12, in the calendar of the date control
    int16_t Day = 1;      // day of the month of ZoneJD
    std::string Eclipse;  // the kind of eclipse, or empty
    int EclipseRow = -1;  // the row of the table that holds it, or -1
};

// Fills the phases of the zone-time year `year` (as the date control shows it) with
// time-zone bias `bias` minutes, and tries every New and Full Moon of the year for an
// eclipse; `table` is cleared first and gets the eclipses found, in time order, with
// Current at row 0. The phases come from the lunation series, each refined by the secant
// search of Refine_Phase; only the phases whose minute of zone time falls in `year` are
// returned, in time order. Never fails; outside -1000 .. 2100 ΔT is 0 (as Get_DeltaT).
std::vector<LunationPhase> Fill_Lunation_Year(int year, int32_t bias, EclipseTable& table);

// The moment near `jd` (MyJD, UT) when the Sun's and the Moon's apparent longitudes
// differ by the phase (0 New, π/2 First Quarter, π Full, 3π/2 Last Quarter): a first
// step at the mean relative rate, then secant steps, to one second of arc in the
// longitude difference (about 2 s of time) on the reduced series (Sun and Moon within
// 0.2"). Needs `jd` within a few days of the phase; returns MyJD.
double Refine_Phase(double jd, int phase);

// The Sun's apparent longitude plus the phase angle less the Moon's, -π .. π, by the
// reduced series at MyJD `jd` (UT; ΔT from the program's table).
double Phase_Error(double jd, int phase);

// MyJD `jd` moved into zone time by `bias` minutes and rounded to the whole minute,
// halves to even.
double Zone_Minute(double jd, int32_t bias);

// "21st of August 2017" for the zone-time day of MyJD `jd` (UT) with `bias` minutes, in
// the calendar of the date control; with `shortYear` "21st of August '17".
std::string Eclipse_Date_Label(double jd, int32_t bias, bool shortYear = false);

// The English ordinal suffix of a day of the month: "st", "nd", "rd" or "th".
const char* Ordinal_Suffix(int day);

// The Eclipses cell of a month that already reads `cell` when another eclipse of `kind`
// is found in it: the first text without its " Eclipse", a "/" and the second kind
// ("Lunar/Total Solar Eclipse"). An empty cell takes `kind` as it is.
std::string Join_Eclipse_Kinds(const std::string& cell, const std::string& kind);

// "Next Eclipse": the row after the current one, row 0 after the last; "Previous
// Eclipse": the row before, the last row before row 0. An empty table stays at 0.
// Each returns the new current row.
int Next_Eclipse(EclipseTable& table);
int Previous_Eclipse(EclipseTable& table);

}  // namespace kelmoran
