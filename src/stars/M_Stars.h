// Names and designations of stars: how the proper name, the Bayer letter, the Flamsteed
// number and the variable-star designation of a catalogue star are composed into the texts
// that tables, the atlas and Find Star show, and how designations sort.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "stars/M_Resources.h"

namespace kelmoran {

// The names and designation of one star, as the star's working record carries them.
struct StarNames {
    std::string Name;            // the main name when NameFlag is 'N', else empty
    std::string Designation;     // short form: Bayer letter code and superscript ("a ",
                                 // "a2"), or the Flamsteed number, or the variable's
    int32_t DesignationRow = 0;  // row of the designation table, 0 none
    uint8_t Constellation = 0;   // of the designation, or of the variable row (89 suspected)
    uint8_t IsGreek = 0;         // 1 when the designation's letter codes a Greek letter
};

// A star's working record: its apparent place at the moment it was computed, with its
// magnitude and names.
struct StarPlace : StarNames {
    double RA = 0.0;         // apparent right ascension of date, radians, 0 .. 2π
    double Dec = 0.0;        // apparent declination of date, radians
    double JD = 0.0;         // the moment (MyJD) of RA and Dec
    float Magnitude = 0.0f;  // visual magnitude
    double Validity = 7.0;   // how long the place stands, from the proper motion (Place_Interval)
    bool Done = false;       // the record has been computed
};

// The working records by star index, 0 .. the highest star in use. Rows 0 .. 11 are the
// slots of the Sun, Moon and planets: they hold magnitudes only (Sun -10, Moon -9).
extern std::vector<StarPlace> StarPlaces;

// Sizes StarPlaces to `highest` + 1 rows, keeping what is there, and computes the place
// (at `jd`, MyJD), magnitude and names of each star not yet computed. Stars beyond the
// loaded catalogue are left undone: the caller loads their tier first (Load_Tiers_For).
void Compute_Star_Places(int32_t highest, double jd);

// How long a star's place may stand without recomputing: 8.85390985126292e-05 / μ, μ the
// total proper motion in radians per Julian year (pmRA times cos Dec, and pmDec), that is
// the time in which it moves about 18", and never below 7.0. Used as days by the body table.
double Place_Interval(const CatalogueStar& star);

// The names of star `star` (12 and up, within the loaded catalogue): the proper name when
// the star has one; the designation from the designation row (Bayer letter and superscript,
// else the Flamsteed number); for a star with neither but a variable row, the variable's
// designation ("RR", "V 343" trimmed, or "NSV " and the number of a suspected variable).
// An index outside the catalogue gives empty names.
StarNames Star_Names_Of(int32_t star);

// The designation of a variable-star row: its letters trimmed at the end ("RR", "V 343"),
// or "NSV " and the number for a suspected variable.
std::string Variable_Designation(const VariableStarEntry& v);

// The spoken name of a Greek letter code ('a' "Alpha" .. 'w' "Omega"); empty otherwise.
std::string Greek_Letter_Name(char code);

// The Unicode code point of a Greek letter code (lower-case α .. ω), 0 for other codes.
char32_t Greek_Code_Point(char code);

// A star's full label in a table: the designation, a blank and the constellation
// abbreviation ("a CMa" for Sirius, the designation trimmed); the designation alone for the suspected variables;
// empty for a star without designation.
std::string Star_Label(const StarNames& names);

// The text of Bayer list entry `order` of constellation `constellation` as Find Star shows
// it: for a Greek letter the spoken name and the rest ("Alpha 2", "Beta"); a Latin letter
// as stored ("p", "A"). Empty for an entry that does not exist.
std::string Bayer_List_Text(int constellation, int order);

// "  Also known as " and the designation spelt out ("58 Alpha" and the superscript, then
// the full constellation name) for a star that has a variable row and a designation row;
// empty for any other star.
std::string Also_Known_As(int32_t star);

// The sort key of a designation: the trimmed text with a Greek code in the first place
// recoded so that plain alphabetical order gives the order of the Greek alphabet.
std::string Designation_Sort_Key(std::string_view designation);

}  // namespace kelmoran
