#include "stars/PlotOptions_Model.h"

#include <algorithm>

#include "settings/SettingsRecord.h"
#include "stars/M_Resources.h"

namespace kelmoran {

namespace {
// The main-star limits: the navigational stars, then the magnitude limits.
constexpr std::array<int32_t, 9> kMainLimits = {kFaintestMainStar, kMag3_5End, kMag4End,
                                                kMag5End,          kMag6End,   kBaseTierEnd,
                                                kTier2End,         kTier3End,  kTier4End};
}  // namespace

AtlasOptions& Atlas_Options() {
    static AtlasOptions options;
    return options;
}

int32_t Main_Star_Limit(int32_t entry) {
    return kMainLimits[static_cast<size_t>(std::clamp(entry, 0, 8))];
}

int32_t Background_Limit(int32_t entry) {
    return kMainLimits[static_cast<size_t>(std::clamp(entry, 0, 7)) + 1];
}

std::string Limit_Caption(int32_t limit) {
    for (size_t i = 1; i < kMagnitudeLimitIndex.size(); ++i)
        if (limit == kMagnitudeLimitIndex[i]) {
            static constexpr std::array<const char*, 9> kWords = {
                "", "Magnitude 3.5", "Magnitude 4", "Magnitude 5", "Magnitude 6",
                "Magnitude 7", "Magnitude 8", "Magnitude 9", "All Stars"};
            return kWords[i];
        }
    return "Navigational Stars";
}

int32_t Set_Background_Stars_Level(int32_t limit) {
    for (int32_t e = 0; e < 8; ++e)
        if (Background_Limit(e) >= limit) return e;
    return 7;
}

std::string Set_Alt_Option_Caption() {
    if (Settings.IndexError != 0.0f) return "Sex. Alt.";
    if (Settings.HtOfEye != 0.0f) return "Obs. Alt.";
    return "App. Alt.";
}

bool Load_Tiers_For_Limit(int32_t limit) {
    return limit <= Catalogue_Upper() || Load_Tiers_For(limit);
}

}  // namespace kelmoran
