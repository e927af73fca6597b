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

// The names of star `star` (12 and up, within the loaded catalogue): the proper name when
// the star has one; the designation from the designation row (Bayer letter and superscript,
// else the Flamsteed number); for a star with neither but a variable row, the variable's
// designation ("RR", "V 343" trimmed, or "NSV " and the number of a suspected variable).
// An index outside the catalogue gives empty names.
StarNames Star_Names_Of(int32_t star);

// The spoken name of a Greek letter code ('a' "Alpha" .. 'w' "Omega"); empty otherwise.
std::string Greek_Letter_Name(char code);

// The Unicode code point of a Greek letter code (lower-case α .. ω), 0 for other codes.
char32_t Greek_Code_Point(char code);

// A star's full label in a table: the designation, a blank and the constellation
// abbreviation ("a  CMa" for Sirius); the designation alone for the suspected variables;
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
