// The star catalogue and its indexes: the built-in tables, the deeper tiers read from data
// files on demand, and the lookups of names, designations, variables and catalogue numbers.
//
// Every star is a row of the catalogue and is known everywhere by its row number, the star
// index: rows 0 to 11 are the slots of the Sun, Moon and planets (they carry no star), and
// from 12 (Sirius) on the stars stand brightest first. A magnitude limit is therefore an
// upper bound on the star index (Catalogue_Limits.h). All tables are read-only once loaded.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "stars/Catalogue_Limits.h"

namespace kelmoran {

static_assert(std::endian::native == std::endian::little,
              "the star tables are copied byte for byte and are little-endian");

#pragma pack(push, 1)
// One row of the catalogue, 20 bytes, exactly as in the tables.
struct CatalogueStar {
    float RA;       // right ascension, radians, 0 .. 2π, equinox and epoch J2000.0
    float Dec;      // declination, radians, north positive
    float PmRA;     // proper motion in RA, radians of RA per Julian year (not times cos Dec)
    float PmDec;    // proper motion in declination, radians per Julian year
    int16_t Mag;    // visual magnitude times 1000
    char VarFlag;   // ' ' none; 'V' a variable, 'v' a suspected variable (a variable-table row)
    char NameFlag;  // 0 none; 'D' a designation row and no name; 'N' a main name
};
static_assert(sizeof(CatalogueStar) == 20);

// One row of the designation table, 12 bytes.
struct DesignationEntry {
    int32_t Star;             // star index
    uint8_t Constellation;    // 1 .. 88
    uint8_t BayerOrder;       // place in the constellation's Bayer list, from 1; 0 none
    uint8_t FlamsteedOrder;   // place in the constellation's Flamsteed list, from 1; 0 none
    char BayerLetter;         // ' ' none; a Greek letter's code (IsGreek) or a Latin letter
    char BayerIndex;          // ' ' none; '1' .. '9' the superscript of a multiple letter
    char Reserved;            // ' '
    uint8_t FlamsteedNumber;  // 0 none
    uint8_t IsGreek;          // 1 BayerLetter codes a Greek letter
};
static_assert(sizeof(DesignationEntry) == 12);

// One row of the variable-star table, 20 bytes.
struct VariableStarEntry {
    int32_t Star;           // star index, in any tier
    int16_t Range;          // amplitude in hundredths of a magnitude where known, else 0
    char16_t Desig[5];      // "T    ", "AB   ", "V 343"; the number of a suspected variable
    uint8_t Constellation;  // 1 .. 88; 89 the suspected variables
    uint8_t Kind;           // 'N' (78) a suspected variable, written "NSV " and the number
    uint16_t Reserved;
};
static_assert(sizeof(VariableStarEntry) == 20);
#pragma pack(pop)

inline constexpr uint8_t kSuspectedVariables = 89;  // constellation number of that group
inline constexpr uint8_t kSuspectedKind = 78;

// A name and the star it belongs to.
struct StarNameEntry {
    int32_t Star = 0;
    std::string Name;  // UTF-8
};

// The designated stars of one constellation. Arrays count from 1 (element 0 is unused).
struct ConstellationStars {
    std::vector<int32_t> Stars;            // in designation-table order; 0 ends the filling
    std::vector<std::string> BayerText;    // at BayerOrder: letter and superscript, trimmed
    std::vector<uint8_t> BayerStar;        // at BayerOrder: the place in Stars
    std::vector<int16_t> BayerGreek;       // at BayerOrder: -1 when the letter is Greek
    std::vector<uint8_t> FlamsteedNumber;  // at FlamsteedOrder: the number
    std::vector<uint8_t> FlamsteedStar;    // at FlamsteedOrder: the place in Stars
};

// A navigational star of the almanac.
struct MainStarRow {
    int32_t Star = 0;
    std::string Name;  // the almanac's name ("Kaus Aust.", "Zuben'ubi")
};
inline constexpr int kMainStarCount = 58;

// ---------------------------------------------------------------- the tables
extern std::vector<CatalogueStar> Catalogue;                    // rows 0 .. Catalogue_Upper()
extern std::vector<DesignationEntry> Designations;              // rows 1 .. n; row 0 empty
extern std::vector<VariableStarEntry> Variables;                // rows 1 .. n; row 0 empty
extern std::vector<StarNameEntry> AllNames;                     // row 0 the empty name
extern std::vector<StarNameEntry> MainNames;                    // row 0 the empty name
extern std::array<ConstellationStars, 89> Constellation_Stars;  // 1 .. 88
extern std::array<std::string, 89> Constellation_Abbrev;        // 0 a single blank
extern std::array<std::string, 89> Constellation_Name;          // 0 a single blank
extern std::array<int32_t, 89> Constellation_Label_Width;       // pixels in the atlas label font
extern std::array<MainStarRow, kMainStarCount> MainStars;       // alphabetical by almanac name
extern std::vector<int32_t> MainBodies;   // slots 0, 2, 4 .. 8, then the 58 stars ascending
extern std::vector<int32_t> HD_Numbers;   // by star index over all tiers; empty until loaded
extern std::vector<int32_t> Hip_Numbers;  // by star index over all tiers; empty until loaded
extern std::vector<int32_t> HD_Inverse;   // by HD number: star index (0 none)
extern std::vector<int32_t> Hip_Inverse;  // by Hipparcos number: star index (0 none)

// Highest star index of each entry of the magnitude-limit choice: 0 the main stars only,
// then magnitudes 3.5, 4, 5, 6, 7 (the base tier), 8, 9 and the whole catalogue.
inline constexpr std::array<int32_t, 9> kMagnitudeLimitIndex = {
    0, kMag3_5End, kMag4End, kMag5End, kMag6End, kBaseTierEnd, kTier2End, kTier3End, kTier4End};

// The order of the name lists: ASCII letters compared without case, then exactly
// (byte order of UTF-8, that is by code point). Bisection over the lists uses it.
bool Star_Name_Less(std::string_view a, std::string_view b);

// ---------------------------------------------------------------- loading
// The folders where the deeper tiers and the number tables are sought, in order: the
// folder given here if any, else "data" beside the program, then the source tree's data/.
void Set_Star_Data_Folder(const std::filesystem::path& folder);
std::vector<std::filesystem::path> Star_Data_Folders();

// Highest star index loaded: the catalogue's upper bound.
int32_t Catalogue_Upper();

// Tier 1 loads the built-in base tier, rows 0 .. kBaseTierEnd. Tiers 2, 3 and 4 extend
// the table to kTier2End, kTier3End, kTier4End from their data files, loading any lower
// tier first; a tier already loaded is left alone. A missing or short file leaves the
// table as it was. Rebuilds the inverse number tables that exist. True if the table then
// reaches the tier's end.
bool Load_Star_Tier(int tier);
// Whether the data file of a tier (2 to 4) can be found: the deeper limits are offered
// only then.
bool Star_Tier_Available(int tier);
// Loads the tiers in turn until `star` is within the table; true if it is.
bool Load_Tiers_For(int32_t star);

void Load_Names();                // all names and main names with their star links
void Load_Designations();         // the designation table and its lookup tables
void Load_Constellation_Stars();  // Constellation_Stars from the designations and counts
void Load_Constellations();       // abbreviations, full names ("Corona Australis"), widths
void Load_Main_Stars();           // the 58 navigational stars
void Load_Main_Bodies();          // MainBodies and its inverse
void Load_Variables();            // the variable table and its lookup; done on first need
// The catalogue numbers, on demand: by star index over all tiers, from their data files
// (empty when the file is missing), and the inverse table over the rows loaded so far.
void Load_HD_Numbers();
void Load_Hip_Numbers();
// Everything the program needs at start: names, designations, constellation stars,
// constellations, the base tier, the main stars and the main bodies.
void Load_Star_Tables();

// ---------------------------------------------------------------- lookups
int32_t Find_Main_Name_Row(int32_t star);    // row of MainNames, or 0
int32_t Find_Designation_Row(int32_t star);  // row of Designations, or 0
int32_t Find_Variable_Row(int32_t star);     // row of Variables (first of the star), or 0
// Row of MainBodies for a navigational star (7 .. 64), else 0.
int32_t Main_Body_Row(int32_t star);
bool Is_Main_Star(int32_t star);
// Star index of an HD or Hipparcos number (the brighter where two share it), or 0. The
// number table is loaded on first use.
int32_t Star_Of_HD(int32_t hd);
int32_t Star_Of_Hip(int32_t hip);

}  // namespace kelmoran
