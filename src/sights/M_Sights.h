// Reduction of a sight and identification of the body: the sextant altitude is corrected
// only for what does not depend on the body (index error, dip, refraction); semi-diameter
// and parallax go to the computed altitude of each candidate, limb by limb, so one
// observed altitude serves for every body that could be the one observed. The Sun's and
// Moon's limbs, the planets Mercury to Saturn and the catalogue's stars are tested against
// the row's rough azimuth and the filter limits; the fits are sorted by intercept.
//
// Units: radians for angles unless a name says degrees; intercepts positive away (the
// computed altitude above the observed). Reads the settings' derived values (IndexErrorRad,
// DipRad, RefractionFactor), the filter (SightsFilter) and the position service.
#pragma once

#include <cstdint>
#include <string>

#include "ephemeris/Body_Place.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Units.h"
#include "sights/Sights.h"

namespace kelmoran {

// The value of the star limit that stands for the named navigational stars only.
inline constexpr int32_t kSightMainStars = 209;
// Margins of the rough filter, taken before the full place of the Moon and planets.
inline constexpr double kRoughAltMargin = 30.0 / kArcminPerRadian;  // 30' in radians
inline constexpr double kRoughAzMargin = 5.0;                       // degrees
// The Earth's equatorial and polar radii (km) and the inverse flattening of the radius at
// a latitude (WGS 84), and the Sun's horizontal parallax at one astronomical unit (seconds
// of arc): the figures of the reduction, which the working sheet shares.
inline constexpr double kEquatorialKm = 6378.137;
inline constexpr double kPolarKm = 6356.755;
inline constexpr double kInverseFlattening = 298.25722;
inline constexpr double kSolarParallax = 8.794;

// Signed radii of the limbs and planets (Sun and planets in AU, the Moon in km; an upper
// limb is negative), by body code 0 .. 11.
float Limb_Radius(int32_t body);

// The work values of one reduction, common to every body tested.
struct Reduction_Work {
    float Alt_Corrections = 0;  // -dip - index error - refraction
    float Corrected_Alt = 0;    // Hs + Alt_Corrections: the observed altitude of the limb
    float Observed_ZD = 0;      // π/2 - Corrected_Alt
    float DR_Lat = 0;
    float DR_Long = 0;
    float Sin_Lat = 0;
    float Cos_Lat = 0;
    float Sight_Az = 0;      // degrees
    float Refraction = 0;    // the refraction taken, radians
    float Apparent_Alt = 0;  // Hs - dip - index error
};

// The corrections common to all bodies for sextant altitude `hs` (radians, already held
// to 0'.1) and the DR `lat`, `lon`, azimuth `azDeg`.
Reduction_Work Prepare_Reduction(float hs, float lat, float lon, float azDeg);

// The result of testing one body against the sight.
struct Body_Test {
    double LHA = 0;       // local hour angle, 0 .. 2π
    double Zc = 0;        // computed zenith distance of the centre
    float Zn = 0;         // azimuth, radians
    double Zn_Deg = 0;    // azimuth in degrees, rounded to five decimals
    float SD = 0;         // semi-diameter, signed by the limb (augmented for the Moon)
    double HP = 0;        // horizontal parallax
    double Rho = 1;       // Earth's radius at the latitude, equatorial radii
    double Parallax = 0;  // parallax in altitude, oblate Earth
    double Hc = 0;        // computed altitude of the limb
    double Az_Diff = 0;   // |Zn° - Sight_Az| folded into 0 .. 180
    float Alt_Diff = 0;   // the intercept Hc - Corrected_Alt, positive away
};

// Tests body `code` at place `place` (GHA, Dec, Distance: km for the Moon, AU for the Sun
// and planets, unused for stars) against the sight. A star (12 and up) has no
// semi-diameter and no parallax. The parallax takes the oblate Earth: the difference of
// geodetic and geocentric latitude, and the radius at the latitude.
Body_Test Test_Body(const Reduction_Work& work, int32_t code, const BodyPlace& place);

// The declination bounds of bodies that can be above the horizon at latitude `lat`, with
// one degree of margin on the side of the hidden pole.
void Declination_Bounds(float lat, double& lowest, double& highest);

// Intercept text: Format(|I|, "##0'.0") and " away" or " towards", "Nil " when the
// intercept rounds to 0'.0. `intercept` in radians.
std::string Intercept_Text(float intercept);
// The same for an intercept in minutes, with the words `away` and `towards` as given.
std::string Intercept_Text(double minutes, const char* away, const char* towards);
// Azimuth text by `mask` ("000°.0 T" unless given); an azimuth that rounds to 360.0 shows
// as 000°.0.
std::string Azimuth_Text(double azDeg, const char* mask = "000°.0 T");
// The position line's pair of bearings by "000°/ " and "000°".
std::string Line_Bearings_Text(double azDeg);

// Makes the star table hold the places of the stars up to the filter's star limit (and
// the catalogue's tiers that far), at `jd` for those not yet computed.
void Check_Stars_Size(double jd);

// Reduces row `row` of `set`: rounds its sextant altitude to 0'.1, takes the DR for its
// time, tests the Sun, Moon, planets and stars, sorts the fits and selects one (the
// formerly selected body if it is still there, else the best fit). With no fit the
// candidate number is -1, or -2 when the Sun is up. With `redraw` the host is told.
// A row without both an altitude and an azimuth is left alone.
void Reduce_Sight(SightSet& set, int row, bool redraw);

// Selects entry `index` of row `row`'s candidate list (the drop-down's choice): the row's
// Candidate_No, Body_Id, Intercept and Line_Az follow.
void Select_Candidate(SightSet& set, int row, int index);

}  // namespace kelmoran
