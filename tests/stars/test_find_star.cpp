// Find Star's model: names, catalogue numbers, the limit and the tiers it loads.
#include <gtest/gtest.h>

#include "stars/FindStar_Model.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"

namespace kelmoran {
namespace {

constexpr double kJD = 9000.25;

class FindStar : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { Load_Star_Tables(); }
    void SetUp() override { model.Set_Limit(0, kJD); }
    // The star of a name as the all-names combo finds it.
    int32_t Star_Named(const std::string& name) const {
        const int32_t row = model.Find_in_AllNames(name);
        return row < 0 ? -1 : model.AllNames[static_cast<size_t>(row)].Star;
    }
    FindStarModel model;
};

TEST_F(FindStar, NamesFindTheirStars) {
    EXPECT_EQ(Star_Named("Sirius"), 12);
    const int32_t polaris = Star_Named("Polaris");
    ASSERT_GT(polaris, 12);
    EXPECT_EQ(Star_Names_Of(polaris).Name, "Polaris");
    EXPECT_EQ(Star_Named("No Such Star"), -1);

    // A name borne by two stars finds the current one of them.
    model.Set_Limit(5, kJD);
    const auto& rows = model.AllNames;
    size_t i = 1;
    while (i < rows.size() && !(rows[i].Text == rows[i - 1].Text && rows[i].Star != rows[i - 1].Star)) ++i;
    ASSERT_LT(i, rows.size()) << "no name shared by two stars";
    for (size_t k : {i - 1, i}) {
        ASSERT_TRUE(model.SelectStar(rows[k].Star, kJD));
        EXPECT_EQ(Star_Named(rows[k].Text), rows[k].Star);
    }
}

TEST_F(FindStar, CatalogueNumbersAndTheLimit) {
    using C = FindStarModel::Catalogue;
    EXPECT_EQ(model.CatSearch(C::Hip, 32349).Star, 12);
    EXPECT_TRUE(model.CatSearch(C::HD, 48915).Found);
    EXPECT_EQ(model.CatSearch(C::HD, 48915).Star, 12);
    // "+" steps to the next number held.
    const auto next = model.CatSearch(C::Hip, 32349, +1);
    EXPECT_GT(next.Number, 32349);
    EXPECT_NE(Hip_Inverse[static_cast<size_t>(next.Number)], 0);

    // A star beyond the main stars is outside limit 0, and found once the limit allows it.
    const int32_t faint = kMag6End - 3;
    const int32_t hip = Hip_Numbers[static_cast<size_t>(faint)];
    EXPECT_FALSE(model.CatSearch(C::Hip, hip).Found);
    EXPECT_EQ(model.EntryStar, 12);
    EXPECT_FALSE(model.CatSearch(C::Hip, 999999).Found);
    model.Set_Limit(4, kJD);
    EXPECT_TRUE(model.CatSearch(C::Hip, hip).Found);
}

TEST_F(FindStar, TheLastLimitLoadsEveryTierAndAFaintStarShowsItsPlace) {
    if (!Star_Tier_Available(4)) GTEST_SKIP() << "the deeper tiers are not delivered";
    model.Set_Limit(8, kJD);
    EXPECT_EQ(Catalogue_Upper(), kTier4End);
    EXPECT_EQ(model.Names_Caption(), "Showing All");
    const int32_t faint = kTier4End - 10;
    Load_Hip_Numbers();
    const auto r = model.CatSearch(FindStarModel::Catalogue::Hip, Hip_Numbers[static_cast<size_t>(faint)]);
    ASSERT_TRUE(r.Found);
    ASSERT_TRUE(model.SelectStar(r.Star, kJD));
    const FindStarLabels L = model.PopulateLabels(kJD);
    EXPECT_FALSE(L.Beeped);
    EXPECT_TRUE(StarPlaces[static_cast<size_t>(r.Star)].Done);
    EXPECT_NEAR(std::stod(L.Vmag), Catalogue[static_cast<size_t>(r.Star)].Mag / 1000.0, 0.006);
    EXPECT_FALSE(L.Dec.empty());
    EXPECT_EQ(L.Hip, std::to_string(Hip_Numbers[static_cast<size_t>(r.Star)]));
    // Back to the main stars: the faint star gives way to Sirius.
    model.Set_Limit(0, kJD);
    EXPECT_EQ(model.EntryStar, 12);
    EXPECT_EQ(model.Names_Caption(), "Limited to Main Stars");
    EXPECT_EQ(model.Constel_Caption(), "Limited to Constellations containing Main Stars");
}

TEST_F(FindStar, LabelsOfSirius) {
    model.ShowRA = false;
    model.EntryStar = 12;
    FindStarLabels L = model.PopulateLabels(kJD);
    EXPECT_EQ(L.RACaption, "S.H.A.");
    EXPECT_EQ(L.Az.back(), 'T');
    EXPECT_GE(L.ConstelRow, 0);
    EXPECT_EQ(model.Constel[static_cast<size_t>(L.ConstelRow)].Text, "Canis Major");
    ASSERT_GE(L.BayerRow, 0);
    EXPECT_EQ(model.Bayer[static_cast<size_t>(L.BayerRow)].Text, "Alpha");
    EXPECT_EQ(L.LocateTip, findstar_text::AtlasNotInUse);
    model.TrueAz = false;
    model.EntryStar = 999999999;  // beyond the table: a beep and star 37
    L = model.PopulateLabels(kJD);
    EXPECT_TRUE(L.Beeped);
    EXPECT_EQ(model.EntryStar, 37);
    EXPECT_EQ(L.Az.back(), 'M');
}

}  // namespace
}  // namespace kelmoran
