// The working of one sight, line by line, as a navigator writes it on paper: the dead
// reckoning to the sight's time, the Greenwich hour angle (with the increments of the
// printed tables in the simplified form), the corrections of the altitude, the calculated
// zenith distance and the intercept, the azimuth by the A, B and C tables, and the
// intercept terminal point. It only shows: the Sights screen never reads it back.
//
// Two forms: the full form ("Astronomical Data") works from the body's exact place; the
// simplified form rounds every quantity as printed tables do (hourly GHA and declination,
// increments, v and d, corrections to 0'.1), so that it agrees with nautical tables.
//
// Units inside: radians for angles, minutes of arc for dLat, dLong, departure and
// intercepts, hours for the run, knots for speed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sights/Sights.h"
#include "voyage/Navigation.h"

namespace kelmoran {

// The checked items of the sheet's menus.
struct SightCalc_Options {
    bool Astro_Data = true;                            // mnuAstroData: the full form
    bool Show_Errors = false;                          // MnuErrors: the "(" error lines
    Sailing_Route DR_Route = Sailing_Route::Mercator;  // mnuDRbyMercator / PlaneSailing
    Sailing_Route Obs_Route = Sailing_Route::Plane;    // mnuObsByMercator / PlaneSailing
    bool Clarke = true;                                // mnuEllipsoid: Clarke or WGS 84
    bool Tabular_Refraction = false;                   // mnuTabular_Refraction
    bool Augmentation = true;                          // mnuAugmentation
    bool Lat_Correction = true;                        // mnuLatCorrn
    bool Parallax = true;                              // mnuParallax (Sun and planets)
};

// The words of the sheet's menus and headings.
namespace sightcalc_text {
inline constexpr const char* Sight = "Sight";
inline constexpr const char* AstroData = "Astronomical Data";
inline constexpr const char* Simplified1 = "Data is rounded/ simplified ";
inline constexpr const char* Simplified2 = "to agree with Nautical Tables";
inline constexpr const char* Nutations = "Nutations";
inline constexpr const char* Errors = "Rounding Errors";
inline constexpr const char* DRByMercator = "DR by Mercator";
inline constexpr const char* DRByPlane = "DR by Plane Sailing";
inline constexpr const char* ObsByMercator = "Obs Posn by Mercator";
inline constexpr const char* ObsByPlane = "Obs'd Posn by Plane Sailing";
inline constexpr const char* Clarke = "&Clarke Ellipsoid";
inline constexpr const char* WGS84 = "&WGS 84 Ellipsoid";
inline constexpr const char* Tabular = "&Tabular Refraction";
inline constexpr const char* Augmentation = "&Augmentation of Moon SD";
inline constexpr const char* LatCorrn = "&Moon's Latitude Correction";
inline constexpr const char* Parallax = "&Parallax for Sun/ Planets";
inline constexpr const char* MenuDetail = "    &Detail    ";
inline constexpr const char* MenuPosition = "    &Position Options    ";
inline constexpr const char* MenuSight = "    &Sight Options    ";
}  // namespace sightcalc_text

// The azimuth by the A, B and C tables.
struct ABC_Values {
    bool Valid = false;          // false at a pole or with a zero divisor: "N/A"
    double A = 0, B = 0, C = 0;  // rounded to two decimals, magnitudes
    char A_Name = 'N', B_Name = 'N', C_Name = 'N';
    double Bearing = 0;  // degrees from the named pole, 0 .. 90
    char Bearing_EW = 'E';
    double Azimuth = 0;  // degrees true, 0 .. 360
};

// A = tan(lat) ÷ tan(LHA), named opposite to the latitude unless the LHA lies between 90°
// and 270°; B = tan(dec) ÷ sin(LHA), named as the declination; C = A ± B (same names add,
// the larger names the difference). Each rounded to two decimals; the bearing is
// arctan(1 ÷ (C·cos lat)) from C's pole, east when the LHA is above 180°. Radians in.
ABC_Values Calc_ABC_values(double lat, double lha, double dec);

// The numbers behind the lines.
struct SightCalc_Values {
    int32_t Body_Id = -1;
    // Dead reckoning from the original position to the sight's time.
    double Original_Time = 0;  // MyJD, UT
    double Original_Lat = 0, Original_Long = 0;
    double Course = 0, Speed = 0;
    Sailing_Work DR;
    // The altitude, radians (corrections signed as applied).
    double Hs = 0, IE = 0, Dip = 0, Apparent_Alt = 0, Refraction = 0, True_Alt = 0;
    double SD = 0, Parallax = 0, HP = 0, HP_Reduction = 0, Augmentation = 0;
    double TZD = 0, TZD_Error = 0;
    // The body.
    double Julian_Day = 0, Delta_T = 0;  // full Julian day, ΔT in seconds
    double Nut_Long = 0, Nut_Obl = 0, Obliquity = 0, Aries = 0;
    double RA = 0, Apparent_Dec = 0, Distance = 0;  // km for the Moon, AU otherwise
    double GHA_Exact = 0;                           // the body's (a star's own) GHA at the sight
    int32_t Table_Hour = 0;    // the whole hour of UT at which the tables are entered
    double Table_Seconds = 0;  // whole seconds past that hour
    double GHA_Hour = 0;       // simplified: the hour's GHA (of Aries for a star)
    double Increment = 0, V = 0, V_Corr = 0;
    double SHA = 0;           // stars
    double GHA = 0, LHA = 0;  // as the form uses them
    double Dec_Hour = 0, D = 0, D_Corr = 0;
    double Declination = 0;  // as the form uses it
    // The result.
    double CZD = 0;
    double Intercept = 0;            // minutes, positive away
    double Reference_Intercept = 0;  // minutes: the reduction's at the sheet's DR
    double Total_Error = 0;          // Intercept - Reference_Intercept, minutes
    ABC_Values ABC;
    double Azimuth = 0;        // degrees true, the sheet's
    double Exact_Azimuth = 0;  // degrees true, by the reduction
    // The intercept terminal point.
    Sailing_Work ITP;
};

// The sheet of one row: the headings, the titled lines in order, and their numbers.
struct SightCalc_Sheet {
    int32_t MySightNo = -1;
    bool My_AstroData = true;
    bool Valid = false;                 // the row has a selected body
    std::vector<std::string> Headings;  // "Sight", the form's words, "Nutations"
    std::vector<std::string> My_rTxt;   // line titles
    std::vector<std::string> My_rDat;   // values
    std::vector<std::string> My_sTxt;   // right-hand texts
    int32_t Calc_Lines = 0;
    SightCalc_Values Values;

    // Index of the first line titled `title`, or -1.
    int Find(const std::string& title) const;
};

// Works row `row` of `set` with the settings and position method in use: Calc_DR,
// Calc_GHA, Calc_Sight, Calc_ABC_values, Calc_Sight_ITP, then the lines. A row without a
// selected body gives a sheet with its headings and no lines.
SightCalc_Sheet Calc_Data(const SightSet& set, int row, const SightCalc_Options& options);

// The refraction of the sheet for apparent altitude `h` (radians): the printed table when
// `tabular` or below 11°, else 0.96 ÷ tan h minutes, without the pressure and temperature.
double Sheet_Refraction(double h, bool tabular);

}  // namespace kelmoran
