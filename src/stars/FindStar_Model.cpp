#include "stars/FindStar_Model.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Bodies.h"
#include "ephemeris/Body_Place.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"
#include "voyage/Position_Methods.h"
#include "voyage/VariationModel.h"

namespace kelmoran {

namespace {

// The star shown when the current one is beyond the table.
constexpr int32_t kFallbackStar = 37;
// Room on the first line of other names before the rest goes to the second.
constexpr size_t kOtherNamesLine = 70;

bool Valid_Star(int32_t s) {
    return s >= 12 && s <= Catalogue_Upper();
}

int32_t Row_Of_Star(const std::vector<ComboRow>& rows, int32_t star) {
    for (size_t i = 0; i < rows.size(); ++i)
        if (rows[i].Star == star) return static_cast<int32_t>(i);
    return -1;
}

// The names of a list whose stars pass `keep`, in the list's order.
std::vector<ComboRow> Names_Within(const std::vector<StarNameEntry>& list,
                                   const FindStarModel& m) {
    std::vector<ComboRow> rows;
    rows.reserve(list.size());
    for (size_t i = 1; i < list.size(); ++i)
        if (m.Within_Limit(list[i].Star)) rows.push_back({list[i].Name, list[i].Star});
    return rows;
}

}  // namespace

AltAzResult Star_AltAz(int32_t star, double jd, BodyPlace& place, float& lat, float& lon) {
    Calc_Star_Place(star, place.RA, place.Dec, jd);
    place.GHA = Hour_Angle_Of(Calc_GAST(jd), place.RA);
    float course = 0, speed = 0;
    Get_Position(jd, lat, lon, course, speed);
    AltAzResult aa;
    Calc_AltAz(aa, star, lat, lon, place);
    return aa;
}

double Altitude_Of(const AltAzResult& aa, AltKind kind) {
    if (kind == AltKind::Observed) return aa.SextantAlt;
    if (kind == AltKind::Apparent) return static_cast<double>(aa.TrueAlt) + aa.Refraction;
    return aa.TrueAlt;
}

std::string Altitude_Text(const AltAzResult& aa, AltKind kind) {
    const double alt = Altitude_Of(aa, kind);
    return (alt < 0.0 ? "-" : "") + Format_Angle(std::fabs(alt), 1, false);
}

FindStarModel::FindStarModel() {
    ShowRA = Settings.ShowRA != 0;
}

std::string FindStarModel::Names_Caption() const {
    const std::string label = kMagLimitLabels[static_cast<size_t>(std::clamp(MagLimitEntry, 0, 8))];
    return label.empty() ? "Showing All" : "Limited to " + label;
}

std::string FindStarModel::Constel_Caption() const {
    const std::string label = kMagLimitLabels[static_cast<size_t>(std::clamp(MagLimitEntry, 0, 8))];
    return label.empty() ? "Showing All" : "Limited to Constellations containing " + label;
}

bool FindStarModel::Within_Limit(int32_t star) const {
    if (!Valid_Star(star)) return false;
    if (Limit == 0) return Is_Main_Star(star);
    return star <= Limit;
}

void FindStarModel::Set_Limit(int32_t entry, double jd) {
    MagLimitEntry = std::clamp(entry, 0, 8);
    int32_t wanted = kMagnitudeLimitIndex[static_cast<size_t>(MagLimitEntry)];
    for (int tier = 2; tier <= 4 && wanted > Catalogue_Upper(); ++tier) {
        if (Keep_Alive) Keep_Alive();
        if (!Load_Star_Tier(tier)) break;
    }
    // A tier that is not delivered caps the limit at what the catalogue holds.
    Limit = std::min(wanted, Catalogue_Upper());
    if (Limit > 0 && static_cast<int32_t>(StarPlaces.size()) <= Limit) {
        if (Keep_Alive) Keep_Alive();
        Compute_Star_Places(Limit, jd);
    }
    if (!Within_Limit(EntryStar)) EntryStar = 12;
    Prime_All();
}

void FindStarModel::Prime_Names_Combo() {
    Names = Names_Within(MainNames, *this);
}

void FindStarModel::Prime_AllNames_Combo() {
    AllNames = Names_Within(kelmoran::AllNames, *this);
}

bool FindStarModel::Test_for_Stars_in_Constellation(int32_t k) const {
    if (k >= 1 && k < 89) {
        const ConstellationStars& c = Constellation_Stars[static_cast<size_t>(k)];
        for (size_t i = 1; i < c.Stars.size(); ++i)
            if (c.Stars[i] > 0 && Within_Limit(c.Stars[i])) return true;
    }
    if (!ShowVariables) return false;
    if (Variables.size() <= 1) Load_Variables();
    for (size_t i = 1; i < Variables.size(); ++i)
        if (Variables[i].Constellation == k && Variables[i].Star > 0 &&
            Within_Limit(Variables[i].Star))
            return true;
    return false;
}

void FindStarModel::Prime_Constellation_Combo() {
    Constel.clear();
    for (int32_t k = 1; k <= 88; ++k) {
        if (!Test_for_Stars_in_Constellation(k)) continue;
        const ConstellationStars& c = Constellation_Stars[static_cast<size_t>(k)];
        bool designated = false;
        for (size_t i = 1; i < c.Stars.size() && !designated; ++i)
            designated = c.Stars[i] > 0 && Within_Limit(c.Stars[i]);
        std::string text = Constellation_Name[static_cast<size_t>(k)];
        if (!designated) text += std::string("   ") + findstar_text::VarDesigOnly;
        Constel.push_back({text, k});
    }
}

void FindStarModel::Prime_Stars_for_Constellation(int32_t k) {
    Constellation = k;
    Bayer.clear();
    Flamsted.clear();
    Var.clear();
    if (k < 1 || k > 88) return;
    const ConstellationStars& c = Constellation_Stars[static_cast<size_t>(k)];
    auto star_at = [&](size_t place) {
        return place < c.Stars.size() ? c.Stars[place] : 0;
    };
    for (size_t order = 1; order < c.BayerText.size() && Bayer.size() < 200; ++order) {
        const int32_t s = star_at(c.BayerStar[order]);
        if (s > 0 && Within_Limit(s))
            Bayer.push_back({Bayer_List_Text(k, static_cast<int>(order)), s});
    }
    for (size_t order = 1; order < c.FlamsteedNumber.size(); ++order) {
        const int32_t s = star_at(c.FlamsteedStar[order]);
        if (s > 0 && Within_Limit(s)) Flamsted.push_back({std::to_string(c.FlamsteedNumber[order]), s});
    }
    if (Variables.size() <= 1) Load_Variables();
    for (size_t i = 1; i < Variables.size(); ++i) {
        const VariableStarEntry& v = Variables[i];
        if (v.Constellation == k && v.Star > 0 && Within_Limit(v.Star))
            Var.push_back({Variable_Designation(v), v.Star});
    }
}

void FindStarModel::Prime_All() {
    Prime_Names_Combo();
    Prime_AllNames_Combo();
    Prime_Constellation_Combo();
    Constellation = 0;
    SetConstelCombo();
}

bool FindStarModel::SelectStar(int32_t star, double jd) {
    if (star < 12) return false;
    if (star > Catalogue_Upper()) {
        if (Keep_Alive) Keep_Alive();
        if (!Load_Tiers_For(star)) return false;
    }
    if (static_cast<int32_t>(StarPlaces.size()) <= star) Compute_Star_Places(star, jd);
    EntryStar = star;
    return true;
}

int32_t FindStarModel::SetConstelCombo() {
    const StarNames names = Star_Names_Of(EntryStar);
    const int32_t k = names.Constellation;
    if (k != Constellation) Prime_Stars_for_Constellation(k);
    return Row_Of_Star(Constel, k);
}

int32_t FindStarModel::Find_in_AllNames(const std::string& name) const {
    auto lo = std::lower_bound(AllNames.begin(), AllNames.end(), name,
                               [](const ComboRow& r, const std::string& n) {
                                   return Star_Name_Less(r.Text, n);
                               });
    if (lo == AllNames.end() || lo->Text != name) return -1;
    // Equal names stand together: the one of the current star if there is one.
    for (auto it = lo; it != AllNames.end() && it->Text == name; ++it)
        if (it->Star == EntryStar) return static_cast<int32_t>(it - AllNames.begin());
    return static_cast<int32_t>(lo - AllNames.begin());
}

FindStarModel::CatResult FindStarModel::CatSearch(Catalogue which, int32_t number,
                                                  int32_t step) const {
    if (which == Catalogue::HD && HD_Numbers.empty()) Load_HD_Numbers();
    if (which == Catalogue::Hip && Hip_Numbers.empty()) Load_Hip_Numbers();
    const std::vector<int32_t>& inverse = which == Catalogue::HD ? HD_Inverse : Hip_Inverse;
    const int32_t size = static_cast<int32_t>(inverse.size());
    CatResult r;
    if (step != 0) {
        // "+" and "-" walk to the next number the catalogue holds.
        int32_t n = number + (step > 0 ? 1 : -1);
        while (n > 0 && n < size && inverse[static_cast<size_t>(n)] == 0) n += step > 0 ? 1 : -1;
        number = n;
    }
    if (number <= 0 || number >= size) return r;
    r.Number = number;
    r.Star = inverse[static_cast<size_t>(number)];
    r.Found = r.Star > 0 && Within_Limit(r.Star);
    return r;
}

FindStarLabels FindStarModel::PopulateLabels(double jd) {
    FindStarLabels L;
    if (!Valid_Star(EntryStar)) {
        L.Beeped = EntryStar != kFallbackStar && EntryStar != 11;
        EntryStar = kFallbackStar;
    }
    const int32_t s = EntryStar;
    if (static_cast<int32_t>(StarPlaces.size()) <= s) Compute_Star_Places(s, jd);

    // The place of the moment, and the altitude and azimuth for the observer there.
    BodyPlace place;
    float lat = 0, lon = 0;
    const AltAzResult aa = Star_AltAz(s, jd, place, lat, lon);

    const double alt = Altitude_Of(aa, Altitude);
    L.AltBelow = alt < 0.0;
    L.Alt = Format_Angle(std::fabs(alt), 1, true);
    double az = aa.Azimuth * kDegreesPerRadian;
    if (!TrueAz) {
        Variation_Answer v;
        Variation_Model().Calc(Variation_Request{jd, lat, lon}, v);
        az -= v.Variation * kDegreesPerRadian;
        az -= 360.0 * std::floor(az / 360.0);
    }
    L.Az = Format_Number(az, "000°.0 ") + (TrueAz ? "T" : "M");

    double sha = kTwoPi - place.RA;
    if (sha < 0) sha += kTwoPi;
    L.RACaption = ShowRA ? "R.A." : "S.H.A.";
    L.RA = ShowRA ? Format_RA(place.RA, 1, true) : Format_Angle(sha, 1, true);
    L.Dec = Format_Lat(place.Dec, 1, true);
    const CatalogueStar& row = kelmoran::Catalogue[static_cast<size_t>(s)];
    L.Vmag = Format_Number(row.Mag / 1000.0, "#0.00");
    if (ShowProperMotion) {
        const bool none = row.PmRA == 0.0f && row.PmDec == 0.0f;
        // Seconds of arc a year: of RA on the sky (times cos Dec), and of declination.
        L.dRA = none ? "." : Format_Number(row.PmRA * std::cos(row.Dec) * kArcsecPerRadian, "0.000");
        L.dDec = none ? "." : Format_Number(row.PmDec * kArcsecPerRadian, "0.000");
    }

    // The combos.
    L.ConstelRow = SetConstelCombo();
    L.BayerRow = Row_Of_Star(Bayer, s);
    L.FlamstedRow = Row_Of_Star(Flamsted, s);
    L.VarRow = Row_Of_Star(Var, s);
    const StarNames names = Star_Names_Of(s);
    L.NamesRow = names.Name.empty() ? -1 : Row_Of_Star(Names, s);
    L.AllNamesRow = -1;
    for (size_t i = 1; i < kelmoran::AllNames.size(); ++i)
        if (kelmoran::AllNames[i].Star == s) {
            L.AllNamesRow = Find_in_AllNames(kelmoran::AllNames[i].Name);
            break;
        }

    // The catalogue numbers; 0 is shown empty. There are no Tycho numbers.
    if (ShowHD && HD_Numbers.empty()) Load_HD_Numbers();
    if (ShowHip && Hip_Numbers.empty()) Load_Hip_Numbers();
    auto number = [s](const std::vector<int32_t>& v) {
        const int32_t n = static_cast<size_t>(s) < v.size() ? v[static_cast<size_t>(s)] : 0;
        return n == 0 ? std::string() : std::to_string(n);
    };
    L.Hd = number(HD_Numbers);
    L.Hip = number(Hip_Numbers);

    const AtlasReach reach = Atlas_Reach ? Atlas_Reach(s) : AtlasReach::NotOpen;
    L.LocateEnabled = reach == AtlasReach::Shows;
    L.LocateTip = reach == AtlasReach::Shows     ? findstar_text::LocateTip
                  : reach == AtlasReach::NotOpen ? findstar_text::AtlasNotInUse
                                                 : findstar_text::NotInProjection;

    // Notes: the variable-star note, or the star's other names.
    if (ShowNotes) {
        L.NotesWord = "Variables";
        L.OtherNames = Also_Known_As(s);
        if (L.OtherNames.empty()) {
            const int32_t v = Find_Variable_Row(s);
            if (v > 0 && v < static_cast<int32_t>(Variables.size())) {
                StarNames var;
                var.Designation = Variable_Designation(Variables[static_cast<size_t>(v)]);
                var.Constellation = Variables[static_cast<size_t>(v)].Constellation;
                L.OtherNames = "Also known as " + Star_Label(var);
            }
        }
    } else if (ShowOtherNames) {
        L.NotesWord = "Other Names";
        std::string all;
        for (size_t i = 1; i < kelmoran::AllNames.size(); ++i) {
            if (kelmoran::AllNames[i].Star != s || kelmoran::AllNames[i].Name == names.Name) continue;
            if (!all.empty()) all += "; ";
            all += kelmoran::AllNames[i].Name;
        }
        std::string label = Star_Label(names);
        // The Greek letter as itself.
        if (names.IsGreek && !label.empty() && Greek_Code_Point(label[0]) != 0) {
            const char32_t c = Greek_Code_Point(label[0]);
            label = std::string{static_cast<char>(0xC0 | (c >> 6)), static_cast<char>(0x80 | (c & 0x3F))} +
                    label.substr(1);
        }
        if (!label.empty() && !names.Name.empty()) all += (all.empty() ? "(" : " (") + label + ")";
        if (all.size() > kOtherNamesLine) {
            size_t cut = all.rfind("; ", kOtherNamesLine);
            if (cut == std::string::npos) cut = kOtherNamesLine;
            L.OtherNames = all.substr(0, cut + 1);
            L.OtherNames1 = all.substr(std::min(all.size(), cut + 2));
        } else {
            L.OtherNames = all;
        }
    }
    return L;
}

}  // namespace kelmoran
