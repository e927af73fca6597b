// The deeper tiers and the catalogue numbers are data files: without them the program keeps
// working with the base tier, and the tiers load upward when the files are there.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include "stars/M_Resources.h"

namespace kelmoran {
namespace {

TEST(StarTiers, MissingAndShortFilesLeaveTheBaseTier) {
    auto empty = std::filesystem::temp_directory_path() / "kelmoran_no_star_data";
    std::filesystem::create_directories(empty);
    // A truncated tier file is as good as none.
    std::ofstream(empty / "stars_tier2.bin", std::ios::binary) << "short";
    Set_Star_Data_Folder(empty);
    Load_Star_Tables();
    EXPECT_EQ(Catalogue_Upper(), kBaseTierEnd);
    EXPECT_FALSE(Star_Tier_Available(2));
    EXPECT_FALSE(Load_Star_Tier(2));
    EXPECT_FALSE(Load_Tiers_For(kBaseTierEnd + 1));
    EXPECT_TRUE(Load_Tiers_For(kBaseTierEnd));
    EXPECT_EQ(Catalogue_Upper(), kBaseTierEnd);
    // No Hipparcos or HD numbers without their files.
    EXPECT_EQ(std::tuple(Star_Of_Hip(32349), HD_Numbers.empty()), std::tuple(0, true));
    std::filesystem::remove_all(empty);
}

TEST(StarTiers, TiersLoadInTurnAndKeepWhatIsLoaded) {
    Set_Star_Data_Folder({});  // the usual folders
    Load_Star_Tables();
    for (int tier = 2; tier <= 4; ++tier) EXPECT_TRUE(Star_Tier_Available(tier));
    EXPECT_FALSE(Star_Tier_Available(5));
    CatalogueStar sirius = Catalogue[12];
    EXPECT_TRUE(Load_Tiers_For(kTier2End + 1));  // needs tier 3, so tier 2 comes first
    EXPECT_EQ(std::tuple(Catalogue_Upper(), Catalogue[12].Mag), std::tuple(kTier3End, sirius.Mag));
    EXPECT_GT(Catalogue[kTier2End].Mag, 0);  // tier 2's rows were copied in
    EXPECT_TRUE(Load_Star_Tier(1));
    EXPECT_EQ(Catalogue_Upper(), kTier3End) << "a tier is never unloaded";
    // The inverse tables follow the rows loaded so far.
    Load_Hip_Numbers();
    ASSERT_EQ(Hip_Numbers.size(), static_cast<size_t>(kTier4End) + 1);
    const int32_t hip = Hip_Numbers[kTier4End];
    EXPECT_EQ(Star_Of_Hip(hip), 0);
    EXPECT_TRUE(Load_Star_Tier(4));
    EXPECT_EQ(Star_Of_Hip(hip), kTier4End);
}

}  // namespace
}  // namespace kelmoran
