#include "stars/M_Stars.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "ephemeris/Star_Place.h"
#include "settings/M_Formatting.h"

namespace kelmoran {

namespace {

// Greek letter codes (the keys of the Symbol typeface) in the order of the alphabet.
constexpr std::string_view kGreekCodes = "abgdezhqiklmnxoprstufcyw";

std::string Trim_End(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string Trim(std::string text) {
    text = Trim_End(std::move(text));
    text.erase(0, text.find_first_not_of(' '));
    return text;
}

// The designation text of a variable row in UTF-8: the letters (a Greek letter as itself),
// "V 343", or "NSV " and the number.
std::string Variable_Text(const VariableStarEntry& v) {
    std::string desig;
    for (char16_t c : v.Desig) {
        if (c == 0) {
            desig += ' ';
        } else if (c < 0x80) {
            desig += static_cast<char>(c);
        } else if (c < 0x800) {
            desig += static_cast<char>(0xC0 | (c >> 6));
            desig += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            desig += static_cast<char>(0xE0 | (c >> 12));
            desig += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            desig += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    desig = Trim_End(desig);
    return v.Kind == kSuspectedKind ? "NSV " + desig : desig;
}

}  // namespace

std::vector<StarPlace> StarPlaces;

double Place_Interval(const CatalogueStar& star) {
    double pmRa = std::cos(static_cast<double>(star.Dec)) * star.PmRA;
    double mu = std::sqrt(pmRa * pmRa + static_cast<double>(star.PmDec) * star.PmDec);
    double interval = mu != 0.0 ? 8.85390985126292e-05 / mu : 7.0;
    return interval < 7.0 ? 7.0 : interval;
}

void Compute_Star_Places(int32_t highest, double jd) {
    if (highest < 0) return;
    // No star lies beyond the deepest tier: a larger count asks for nothing more.
    highest = std::min(highest, kTier4End);
    size_t old = StarPlaces.size();
    if (StarPlaces.size() < static_cast<size_t>(highest) + 1) StarPlaces.resize(highest + 1);
    for (size_t s = old; s < StarPlaces.size() && s < 12; ++s) {
        StarPlaces[s].Magnitude = s < 2 ? -10.0f : s < 4 ? -9.0f : 0.0f;
        StarPlaces[s].Done = true;
    }
    int32_t last = std::min(highest, Catalogue_Upper());
    for (int32_t s = 12; s <= last; ++s) {
        StarPlace& p = StarPlaces[s];
        if (p.Done) continue;
        static_cast<StarNames&>(p) = Star_Names_Of(s);
        Calc_Star_Place(s, p.RA, p.Dec, jd);
        p.JD = jd;
        p.Magnitude = static_cast<float>(Catalogue[s].Mag) / 1000.0f;
        p.Validity = Place_Interval(Catalogue[s]);
        p.Done = true;
    }
}

StarNames Star_Names_Of(int32_t star) {
    StarNames names;
    if (star < 0 || star > Catalogue_Upper()) return names;
    const CatalogueStar& row = Catalogue[star];
    if (row.NameFlag == 'N') {
        int32_t k = Find_Main_Name_Row(star);
        if (k > 0 && k < static_cast<int32_t>(MainNames.size())) names.Name = MainNames[k].Name;
    }
    if (row.NameFlag != 0) {
        names.DesignationRow = Find_Designation_Row(star);
        if (names.DesignationRow > 0 &&
            names.DesignationRow < static_cast<int32_t>(Designations.size())) {
            const DesignationEntry& d = Designations[names.DesignationRow];
            names.Constellation = d.Constellation;
            names.IsGreek = d.IsGreek;
            names.Designation = std::string{d.BayerLetter, d.BayerIndex};
            if (Trim(names.Designation).empty() && d.FlamsteedNumber > 0)
                names.Designation = std::to_string(d.FlamsteedNumber);
        }
    } else if (row.VarFlag != ' ') {
        int32_t v = Find_Variable_Row(star);
        if (v > 0 && v < static_cast<int32_t>(Variables.size())) {
            names.Constellation = Variables[v].Constellation;
            names.Designation = Variable_Text(Variables[v]);
        }
    }
    return names;
}

std::string Variable_Designation(const VariableStarEntry& v) {
    return Variable_Text(v);
}

std::string Greek_Letter_Name(char code) {
    return Greek_Full(code);
}

char32_t Greek_Code_Point(char code) {
    size_t k = kGreekCodes.find(code);
    if (code == 0 || k == std::string_view::npos) return 0;
    // α .. ω, skipping the final sigma (U+03C2) that follows ρ.
    return static_cast<char32_t>(0x03B1 + k + (k >= 17 ? 1 : 0));
}

std::string Star_Label(const StarNames& names) {
    std::string desig = Trim_End(names.Designation);
    if (desig.empty()) return desig;
    if (names.Constellation >= 1 && names.Constellation <= 88)
        return desig + ' ' + Constellation_Abbrev[names.Constellation];
    return desig;
}

std::string Bayer_List_Text(int constellation, int order) {
    if (constellation < 1 || constellation > 88) return "";
    const ConstellationStars& c = Constellation_Stars[constellation];
    if (order < 1 || order >= static_cast<int>(c.BayerText.size())) return "";
    const std::string& text = c.BayerText[order];
    if (c.BayerGreek[order] == 0 || text.empty()) return text;
    std::string name = Greek_Letter_Name(text[0]);
    return text.size() >= 2 ? name + ' ' + text.substr(1) : name;
}

std::string Also_Known_As(int32_t star) {
    if (star < 0 || star > Catalogue_Upper() || Find_Variable_Row(star) == 0) return "";
    int32_t row = Find_Designation_Row(star);
    if (row <= 0 || row >= static_cast<int32_t>(Designations.size())) return "";
    const DesignationEntry& d = Designations[row];
    std::string text;
    if (d.FlamsteedNumber != 0) text = std::to_string(d.FlamsteedNumber) + ' ';
    if (d.IsGreek != 0) {
        text += Greek_Letter_Name(d.BayerLetter);
        if (d.BayerIndex != 0) text += d.BayerIndex;
    } else {
        text += Trim(std::string{d.BayerLetter, d.BayerIndex});
    }
    std::string constellation =
        d.Constellation >= 1 && d.Constellation <= 88 ? Constellation_Name[d.Constellation] : "";
    return "  Also known as " + text + ' ' + constellation;
}

std::string Designation_Sort_Key(std::string_view designation) {
    std::string key = Trim(std::string(designation));
    if (key.empty()) return key;
    // Codes whose Latin order differs from the Greek order move to the letter of their
    // place in the alphabet; a, b, d, e, i, o, p, y already stand right.
    static constexpr std::array<std::pair<char, char>, 16> kRecode = {{{'g', 'c'},
                                                                       {'z', 'f'},
                                                                       {'h', 'g'},
                                                                       {'q', 'h'},
                                                                       {'k', 'j'},
                                                                       {'l', 'k'},
                                                                       {'m', 'l'},
                                                                       {'n', 'm'},
                                                                       {'x', 'n'},
                                                                       {'r', 'q'},
                                                                       {'s', 'r'},
                                                                       {'t', 's'},
                                                                       {'u', 't'},
                                                                       {'f', 'u'},
                                                                       {'c', 'x'},
                                                                       {'w', 'z'}}};
    for (const auto& [from, to] : kRecode) {
        if (key[0] == from) {
            key[0] = to;
            break;
        }
    }
    return key;
}

}  // namespace kelmoran
