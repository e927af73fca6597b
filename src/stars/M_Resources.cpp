#include "stars/M_Resources.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <span>
#include <system_error>
#include <utility>

#include "Embedded_Data.h"
#include "ephemeris/Star_Place.h"
#include "settings/M_Formatting.h"

namespace kelmoran {

std::vector<CatalogueStar> Catalogue;
std::vector<DesignationEntry> Designations;
std::vector<VariableStarEntry> Variables;
std::vector<StarNameEntry> AllNames;
std::vector<StarNameEntry> MainNames;
std::array<ConstellationStars, 89> Constellation_Stars;
std::array<std::string, 89> Constellation_Abbrev;
std::array<std::string, 89> Constellation_Name;
std::array<int32_t, 89> Constellation_Label_Width{};
std::array<MainStarRow, kMainStarCount> MainStars;
std::vector<int32_t> MainBodies;
std::vector<int32_t> HD_Numbers;
std::vector<int32_t> Hip_Numbers;
std::vector<int32_t> HD_Inverse;
std::vector<int32_t> Hip_Inverse;

namespace {

// Stars below this index find their designation row in a direct table; the others by
// bisection over (star, row) pairs.
constexpr int32_t kDesignationDirectEnd = 6000;

std::vector<int16_t> designationDirect;                     // by star index below 6000
std::vector<std::pair<int32_t, int32_t>> designationPairs;  // ascending by star
std::vector<int16_t> mainNameDirect;                        // by star index to kMainNameDirectEnd
std::vector<std::pair<int32_t, int32_t>> mainNameOverflow;  // stars beyond, in list order
std::vector<std::pair<int32_t, int32_t>> variablePairs;     // ascending by star
bool variablesLoaded = false;
std::vector<int32_t> mainBodyInverse;  // by star index to kFaintestMainStar
std::filesystem::path dataFolder;

// The tier files, the rows they hold and the catalogue's upper bound once each is in.
struct TierFile {
    const char* file;
    int32_t first;
    int32_t last;
};
constexpr std::array<TierFile, 3> kTierFiles = {{
    {"stars_tier2.bin", kBaseTierEnd + 1, kTier2End},
    {"stars_tier3.bin", kTier2End + 1, kTier3End},
    {"stars_tier4.bin", kTier3End + 1, kTier4End},
}};

// The catalogue row of a star for the apparent-place routine.
bool Star_Lookup(int32_t index, StarMotion& star) {
    if (index < 0 || index > Catalogue_Upper()) return false;
    const CatalogueStar& c = Catalogue[index];
    star = StarMotion{c.RA, c.Dec, c.PmRA, c.PmDec};
    return true;
}

// Records of type T copied from a blob; a trailing partial record is dropped.
template <typename T>
std::vector<T> Records(std::span<const unsigned char> blob) {
    std::vector<T> out(blob.size() / sizeof(T));
    if (!out.empty()) std::memcpy(out.data(), blob.data(), out.size() * sizeof(T));
    return out;
}

std::span<const unsigned char> Blob(std::string_view name) {
    return Embedded_Data(name);
}

std::string_view Text(std::string_view name) {
    auto b = Blob(name);
    return {reinterpret_cast<const char*>(b.data()), b.size()};
}

// The ';'-joined list, split; the first element is the leading empty name.
std::vector<std::string> Split_List(std::string_view text) {
    std::vector<std::string> out;
    size_t start = 0;
    for (;;) {
        size_t end = text.find(';', start);
        out.push_back(Ansi_To_Utf8(text.substr(
            start, end == std::string_view::npos ? std::string_view::npos : end - start)));
        if (end == std::string_view::npos) break;
        start = end + 1;
    }
    return out;
}

// A name list with its links: row 0 the empty name, row k the k-th name and k-th link.
std::vector<StarNameEntry> Name_List(std::string_view textBlob, std::string_view linkBlob) {
    auto names = Split_List(Text(textBlob));
    auto links = Records<int32_t>(Blob(linkBlob));
    std::vector<StarNameEntry> out(1);
    for (size_t k = 1; k < names.size() && k - 1 < links.size(); ++k)
        out.push_back({links[k - 1], std::move(names[k])});
    return out;
}

// The whole content of a data file, or empty if it cannot be read.
std::vector<unsigned char> Read_Data_File(const char* name) {
    for (const auto& folder : Star_Data_Folders()) {
        std::ifstream in(folder / name, std::ios::binary);
        if (!in) continue;
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    return {};
}

// Bisection over (star, row) pairs ascending by star: the row of `star` or 0.
int32_t Bisect_Pairs(const std::vector<std::pair<int32_t, int32_t>>& pairs, int32_t star) {
    if (pairs.empty()) return 0;
    size_t low = 0, high = pairs.size() - 1;
    for (;;) {
        if (pairs[low].first == star) return pairs[low].second;
        if (pairs[high].first == star) return pairs[high].second;
        if (high - low < 2) return 0;
        size_t mid = (low + high) / 2;
        if (star < pairs[mid].first)
            high = mid;
        else
            low = mid;
    }
}

// The inverse of a number table over the rows loaded so far; of two stars with one
// number the brighter stays.
void Build_Inverse(const std::vector<int32_t>& numbers, std::vector<int32_t>& inverse) {
    inverse.clear();
    if (numbers.empty()) return;
    int32_t highest = *std::max_element(numbers.begin(), numbers.end());
    inverse.assign(static_cast<size_t>(std::max(highest, 0)) + 1, 0);
    int32_t last = std::min<int32_t>(Catalogue_Upper(), static_cast<int32_t>(numbers.size()) - 1);
    for (int32_t s = 1; s <= last; ++s) {
        int32_t n = numbers[s];
        if (n <= 0) continue;
        int32_t& stored = inverse[n];
        if (stored == 0 || Catalogue[stored].Mag > Catalogue[s].Mag) stored = s;
    }
}

void Rebuild_Inverses() {
    if (!HD_Numbers.empty()) Build_Inverse(HD_Numbers, HD_Inverse);
    if (!Hip_Numbers.empty()) Build_Inverse(Hip_Numbers, Hip_Inverse);
}

void Load_Numbers(const char* file, std::vector<int32_t>& numbers, std::vector<int32_t>& inverse) {
    auto bytes = Read_Data_File(file);
    numbers = Records<int32_t>(bytes);
    Build_Inverse(numbers, inverse);
}

int32_t Star_Of(std::vector<int32_t>& numbers, std::vector<int32_t>& inverse, const char* file,
                int32_t number) {
    if (numbers.empty()) Load_Numbers(file, numbers, inverse);
    if (number <= 0 || number >= static_cast<int32_t>(inverse.size())) return 0;
    return inverse[number];
}

}  // namespace

bool Star_Name_Less(std::string_view a, std::string_view b) {
    auto fold = [](unsigned char c) { return (c >= 'A' && c <= 'Z') ? c + 32 : c; };
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        int fa = fold(static_cast<unsigned char>(a[i])),
            fb = fold(static_cast<unsigned char>(b[i]));
        if (fa != fb) return fa < fb;
    }
    if (a.size() != b.size()) return a.size() < b.size();
    return a < b;
}

// ---------------------------------------------------------------- data folders

void Set_Star_Data_Folder(const std::filesystem::path& folder) {
    dataFolder = folder;
}

std::vector<std::filesystem::path> Star_Data_Folders() {
    if (!dataFolder.empty()) return {dataFolder};
    std::vector<std::filesystem::path> folders;
    std::error_code ec;
    auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (!ec) folders.push_back(exe.parent_path() / "data");
#ifdef KELMORAN_STAR_DATA_DIR
    folders.emplace_back(KELMORAN_STAR_DATA_DIR);
#endif
    return folders;
}

// ---------------------------------------------------------------- the catalogue tiers

int32_t Catalogue_Upper() {
    return static_cast<int32_t>(Catalogue.size()) - 1;
}

bool Load_Star_Tier(int tier) {
    if (tier <= 1) {
        if (Catalogue_Upper() >= kBaseTierEnd) return true;  // tiers are never unloaded
        Catalogue = Records<CatalogueStar>(Blob("stars_base"));
        Set_Star_Lookup(&Star_Lookup);
        Rebuild_Inverses();
        return Catalogue_Upper() == kBaseTierEnd;
    }
    if (Catalogue.empty()) Load_Star_Tier(1);
    size_t wanted = static_cast<size_t>(std::min(tier, 4)) - 2;
    for (size_t t = 0; t <= wanted; ++t) {
        const TierFile& f = kTierFiles[t];
        if (Catalogue_Upper() >= f.last) continue;
        if (Catalogue_Upper() != f.first - 1) return false;
        auto bytes = Read_Data_File(f.file);
        size_t rows = static_cast<size_t>(f.last - f.first + 1);
        if (bytes.size() != rows * sizeof(CatalogueStar)) return false;
        Catalogue.resize(Catalogue.size() + rows);
        std::memcpy(&Catalogue[f.first], bytes.data(), bytes.size());
        Rebuild_Inverses();
    }
    return true;
}

bool Star_Tier_Available(int tier) {
    if (tier <= 1) return true;
    if (tier > 4) return false;
    const char* file = kTierFiles[tier - 2].file;
    for (const auto& folder : Star_Data_Folders()) {
        std::error_code ec;
        if (std::filesystem::file_size(folder / file, ec) ==
            static_cast<uintmax_t>(kTierFiles[tier - 2].last - kTierFiles[tier - 2].first + 1) *
                sizeof(CatalogueStar))
            return true;
    }
    return false;
}

bool Load_Tiers_For(int32_t star) {
    if (Catalogue.empty()) Load_Star_Tier(1);
    for (int tier = 2; tier <= 4 && Catalogue_Upper() < star; ++tier)
        if (!Load_Star_Tier(tier)) break;
    return star >= 0 && star <= Catalogue_Upper();
}

// ---------------------------------------------------------------- the other tables

void Load_Names() {
    AllNames = Name_List("star_all_names", "star_all_name_links");
    MainNames = Name_List("star_main_names", "star_main_name_links");
    mainNameDirect.assign(static_cast<size_t>(kMainNameDirectEnd) + 1, 0);
    mainNameOverflow.clear();
    // Where two names point to one star, the later in the list wins.
    for (size_t row = 1; row < MainNames.size(); ++row) {
        int32_t s = MainNames[row].Star;
        if (s >= 0 && s <= kMainNameDirectEnd) {
            mainNameDirect[s] = static_cast<int16_t>(row);
            continue;
        }
        auto it = std::find_if(mainNameOverflow.begin(), mainNameOverflow.end(),
                               [s](const auto& p) { return p.first == s; });
        if (it != mainNameOverflow.end())
            it->second = static_cast<int32_t>(row);
        else
            mainNameOverflow.emplace_back(s, static_cast<int32_t>(row));
    }
}

void Load_Designations() {
    auto rows = Records<DesignationEntry>(Blob("star_designations"));
    Designations.assign(1, DesignationEntry{});
    Designations.insert(Designations.end(), rows.begin(), rows.end());
    designationDirect.assign(kDesignationDirectEnd, 0);
    designationPairs.clear();
    for (size_t row = 1; row < Designations.size(); ++row) {
        int32_t s = Designations[row].Star;
        if (s >= 0 && s < kDesignationDirectEnd)
            designationDirect[s] = static_cast<int16_t>(row);
        else
            designationPairs.emplace_back(s, static_cast<int32_t>(row));
    }
}

void Load_Constellation_Stars() {
    auto counts = Blob("star_constellation_counts");
    std::array<size_t, 89> filled{};
    for (size_t k = 1; k <= 88; ++k) {
        ConstellationStars& c = Constellation_Stars[k];
        size_t total = 0, bayer = 0, flamsteed = 0;
        if (counts.size() >= 3 * k + 3) {
            total = counts[3 * k];
            bayer = counts[3 * k + 1];
            flamsteed = counts[3 * k + 2];
        }
        c.Stars.assign(total + 1, 0);
        c.BayerText.assign(bayer + 1, std::string());
        c.BayerStar.assign(bayer + 1, 0);
        c.BayerGreek.assign(bayer + 1, 0);
        c.FlamsteedNumber.assign(flamsteed + 1, 0);
        c.FlamsteedStar.assign(flamsteed + 1, 0);
    }
    for (size_t row = 1; row < Designations.size(); ++row) {
        const DesignationEntry& d = Designations[row];
        if (d.Constellation < 1 || d.Constellation > 88) continue;
        if (d.FlamsteedNumber == 0 && d.BayerLetter == ' ') continue;
        ConstellationStars& c = Constellation_Stars[d.Constellation];
        size_t place = ++filled[d.Constellation];
        if (place >= c.Stars.size()) continue;
        c.Stars[place] = d.Star;
        if (d.BayerOrder > 0 && d.BayerOrder < c.BayerText.size()) {
            std::string text{d.BayerLetter, d.BayerIndex};
            text.erase(text.find_last_not_of(' ') + 1);
            text.erase(0, text.find_first_not_of(' '));
            c.BayerText[d.BayerOrder] = text;
            c.BayerStar[d.BayerOrder] = static_cast<uint8_t>(place);
            c.BayerGreek[d.BayerOrder] = d.IsGreek != 0 ? -1 : 0;
        }
        if (d.FlamsteedOrder > 0 && d.FlamsteedOrder < c.FlamsteedNumber.size()) {
            c.FlamsteedNumber[d.FlamsteedOrder] = d.FlamsteedNumber;
            c.FlamsteedStar[d.FlamsteedOrder] = static_cast<uint8_t>(place);
        }
    }
}

void Load_Constellations() {
    auto abbrevs = Split_List(Text("constellation_abbrevs"));
    auto names = Split_List(Text("constellation_names"));
    auto widths = Records<int32_t>(Blob("constellation_label_widths"));
    for (size_t k = 0; k < 89; ++k) {
        Constellation_Abbrev[k] = k < abbrevs.size() ? abbrevs[k] : std::string();
        Constellation_Name[k] = k < names.size() ? names[k] : std::string();
        Constellation_Label_Width[k] = k < widths.size() ? widths[k] : 0;
    }
    // The lists call constellation 26 Corona Austrina; the program shows the usual name.
    Constellation_Name[26] = "Corona Australis";
    Constellation_Label_Width[26] = kCoronaAustralisLabelWidth;
}

void Load_Main_Stars() {
    auto names = Name_List("star_nav_names", "star_nav_links");
    for (size_t row = 0; row < MainStars.size(); ++row)
        MainStars[row] = row + 1 < names.size()
                             ? MainStarRow{names[row + 1].Star, names[row + 1].Name}
                             : MainStarRow{};
}

void Load_Main_Bodies() {
    MainBodies = Records<int32_t>(Blob("star_main_bodies"));
    mainBodyInverse.assign(static_cast<size_t>(kFaintestMainStar) + 1, 0);
    for (size_t row = 7; row < MainBodies.size(); ++row) {
        int32_t s = MainBodies[row];
        if (s >= 0 && s <= kFaintestMainStar) mainBodyInverse[s] = static_cast<int32_t>(row);
    }
}

void Load_Variables() {
    auto rows = Records<VariableStarEntry>(Blob("star_variables"));
    Variables.assign(1, VariableStarEntry{});
    Variables.insert(Variables.end(), rows.begin(), rows.end());
    variablePairs.clear();
    for (size_t row = 1; row < Variables.size(); ++row)
        if (Variables[row].Star > 10)
            variablePairs.emplace_back(Variables[row].Star, static_cast<int32_t>(row));
    // The first row of each star wins: a stable sort keeps the table's order among equals.
    std::stable_sort(variablePairs.begin(), variablePairs.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    variablePairs.erase(
        std::unique(variablePairs.begin(), variablePairs.end(),
                    [](const auto& a, const auto& b) { return a.first == b.first; }),
        variablePairs.end());
    variablesLoaded = true;
}

void Load_HD_Numbers() {
    Load_Numbers("star_hd_numbers.bin", HD_Numbers, HD_Inverse);
}
void Load_Hip_Numbers() {
    Load_Numbers("star_hip_numbers.bin", Hip_Numbers, Hip_Inverse);
}

void Load_Star_Tables() {
    Load_Names();
    Load_Designations();
    Load_Constellation_Stars();
    Load_Constellations();
    Load_Star_Tier(1);
    Load_Main_Stars();
    Load_Main_Bodies();
}

// ---------------------------------------------------------------- lookups

int32_t Find_Main_Name_Row(int32_t star) {
    if (star >= 0 && star < static_cast<int32_t>(mainNameDirect.size()))
        return mainNameDirect[star];
    for (const auto& [s, row] : mainNameOverflow)
        if (s == star) return row;
    return 0;
}

int32_t Find_Designation_Row(int32_t star) {
    if (star >= 0 && star < static_cast<int32_t>(designationDirect.size()))
        return designationDirect[star];
    return Bisect_Pairs(designationPairs, star);
}

int32_t Find_Variable_Row(int32_t star) {
    if (!variablesLoaded) Load_Variables();
    return Bisect_Pairs(variablePairs, star);
}

int32_t Main_Body_Row(int32_t star) {
    if (star < 0 || star >= static_cast<int32_t>(mainBodyInverse.size())) return 0;
    return mainBodyInverse[star];
}

bool Is_Main_Star(int32_t star) {
    return Main_Body_Row(star) > 0;
}

int32_t Star_Of_HD(int32_t hd) {
    return Star_Of(HD_Numbers, HD_Inverse, "star_hd_numbers.bin", hd);
}

int32_t Star_Of_Hip(int32_t hip) {
    return Star_Of(Hip_Numbers, Hip_Inverse, "star_hip_numbers.bin", hip);
}

}  // namespace kelmoran
