// The star catalogue tables: order, limits, navigational stars, designations, variables,
// names and catalogue numbers, checked over the data as generated.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <tuple>

#include "stars/M_Stars.h"
#include "stars_test.h"

namespace kelmoran {
namespace {

using namespace stars_test;

class StarCatalogue : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        Load_Star_Tables();
        ASSERT_TRUE(Load_Star_Tier(4)) << "the tier files of data/ must be found";
    }
};

TEST_F(StarCatalogue, SlotsAndBrightnessOrder) {
    ASSERT_EQ(Catalogue_Upper(), kTier4End);
    for (int s = 0; s < 12; ++s) {
        const CatalogueStar& c = Catalogue[s];
        EXPECT_EQ(std::tuple(c.RA, c.Dec, c.PmRA, c.PmDec, c.Mag, c.VarFlag, c.NameFlag),
                  std::tuple(0.0f, 0.0f, 0.0f, 0.0f, int16_t{0}, ' ', s == 0 ? 'N' : '\0'))
            << s;
    }
    for (int32_t s = 12; s <= kTier4End; ++s) {
        const CatalogueStar& c = Catalogue[s];
        ASSERT_TRUE(s == 12 || Catalogue[s - 1].Mag <= c.Mag) << "star " << s;
        ASSERT_TRUE(c.RA >= 0.0f && c.RA < 6.2831855f && std::fabs(c.Dec) <= 1.5707964f) << s;
        ASSERT_TRUE(c.VarFlag == ' ' || c.VarFlag == 'v' || c.VarFlag == 'V') << s;
        ASSERT_TRUE(c.NameFlag == 0 || c.NameFlag == 'D' || c.NameFlag == 'N') << s;
    }
    EXPECT_EQ(MainNames[Find_Main_Name_Row(12)].Name, "Sirius");
    EXPECT_LT(Catalogue[12].Mag, -1000);  // Sirius, well ahead of Canopus
    EXPECT_GT(Catalogue[13].Mag, -1000);
}

TEST_F(StarCatalogue, LimitsFollowTheMagnitudes) {
    const std::pair<int32_t, int> limits[] = {
        {kMag3_5End, 3500},   {kMag4End, 4000},  {kMag5End, 5000}, {kMag6End, 6000},
        {kBaseTierEnd, 7000}, {kTier2End, 8000}, {kTier3End, 9000}};
    for (auto [last, mag] : limits) {
        EXPECT_LT(Catalogue[last].Mag, mag) << last;
        EXPECT_GE(Catalogue[last + 1].Mag, mag) << last;
    }
    EXPECT_TRUE(std::is_sorted(kMagnitudeLimitIndex.begin(), kMagnitudeLimitIndex.end()));
    EXPECT_EQ(kMagnitudeLimitIndex[5], kBaseTierEnd);
    EXPECT_EQ(kMagnitudeLimitIndex[8], kTier4End);
}

TEST_F(StarCatalogue, NavigationalStars) {
    // Almanac name, and the Bayer designation the star must bear (the code of its letter,
    // the superscript, the constellation).
    const std::map<std::string, std::string> expected = {
        {"Acamar", "q1 Eri"},     {"Achernar", "a Eri"},    {"Acrux", "a1 Cru"},
        {"Adhara", "e CMa"},      {"Aldebaran", "a Tau"},   {"Alioth", "e UMa"},
        {"Alkaid", "h UMa"},      {"Alnair", "a Gru"},      {"Alnilam", "e Ori"},
        {"Alphard", "a Hya"},     {"Alphecca", "a CrB"},    {"Alpheratz", "a And"},
        {"Altair", "a Aql"},      {"Ankaa", "a Phe"},       {"Antares", "a Sco"},
        {"Arcturus", "a Boo"},    {"Atria", "a TrA"},       {"Avior", "e Car"},
        {"Bellatrix", "g Ori"},   {"Betelgeuse", "a Ori"},  {"Canopus", "a Car"},
        {"Capella", "a Aur"},     {"Deneb", "a Cyg"},       {"Denebola", "b Leo"},
        {"Diphda", "b Cet"},      {"Dubhe", "a UMa"},       {"Elnath", "b Tau"},
        {"Eltanin", "g Dra"},     {"Enif", "e Peg"},        {"Fomalhaut", "a PsA"},
        {"Gacrux", "g Cru"},      {"Gienah", "g Crv"},      {"Hadar", "b Cen"},
        {"Hamal", "a Ari"},       {"Kaus Aust.", "e Sgr"},  {"Kochab", "b UMi"},
        {"Markab", "a Peg"},      {"Menkar", "a Cet"},      {"Menkent", "q Cen"},
        {"Miaplacidus", "b Car"}, {"Mirfak", "a Per"},      {"Nunki", "s Sgr"},
        {"Peacock", "a Pav"},     {"Polaris", "a UMi"},     {"Pollux", "b Gem"},
        {"Procyon", "a CMi"},     {"Rasalhague", "a Oph"},  {"Regulus", "a Leo"},
        {"Rigel", "b Ori"},       {"Rigil Kent", "a1 Cen"}, {"Sabik", "h Oph"},
        {"Schedar", "a Cas"},     {"Shaula", "l Sco"},      {"Sirius", "a CMa"},
        {"Spica", "a Vir"},       {"Suhail", "l Vel"},      {"Vega", "a Lyr"},
        {"Zuben'ubi", "a2 Lib"}};
    ASSERT_EQ(expected.size(), 58u);
    std::set<int32_t> stars;
    for (size_t row = 0; row < MainStars.size(); ++row) {
        const MainStarRow& m = MainStars[row];
        EXPECT_TRUE(row == 0 || MainStars[row - 1].Name < m.Name) << m.Name;
        auto it = expected.find(m.Name);
        ASSERT_NE(it, expected.end()) << m.Name;
        ASSERT_TRUE(m.Star >= 12 && m.Star <= kFaintestMainStar) << m.Name;
        const StarNames n = Star_Names_Of(m.Star);
        EXPECT_EQ(Star_Label(n), it->second) << m.Name;
        EXPECT_EQ(n.Name, m.Name) << "the main name is the almanac's";
        EXPECT_LT(Catalogue[m.Star].Mag, 3000) << m.Name;
        stars.insert(m.Star);
    }
    EXPECT_EQ(stars.size(), 58u);
    EXPECT_EQ(*stars.rbegin(), kFaintestMainStar);
    EXPECT_EQ(Nav_Star("Sirius"), 12);

    // The main bodies: the Sun's and Moon's upper limbs, the five planets, the 58 stars.
    ASSERT_EQ(MainBodies.size(), 65u);
    EXPECT_EQ(std::vector<int32_t>(MainBodies.begin(), MainBodies.begin() + 7),
              (std::vector<int32_t>{0, 2, 4, 5, 6, 7, 8}));
    EXPECT_TRUE(std::equal(stars.begin(), stars.end(), MainBodies.begin() + 7));
    for (int32_t s = 0; s <= kFaintestMainStar + 5; ++s) {
        EXPECT_EQ(Is_Main_Star(s), stars.count(s) == 1) << s;
        EXPECT_TRUE(!stars.count(s) || MainBodies[Main_Body_Row(s)] == s) << s;
    }
}

TEST_F(StarCatalogue, DesignationsOfBrightStars) {
    struct Case {
        const char* name;
        const char* constellation;
        char letter, index;
        int flamsteed;
    };
    for (const Case& c : {Case{"Sirius", "CMa", 'a', ' ', 9}, Case{"Rigel", "Ori", 'b', ' ', 19},
                          Case{"Zuben'ubi", "Lib", 'a', '2', 9}}) {
        const int32_t s = Nav_Star(c.name), row = Find_Designation_Row(s);
        ASSERT_GT(row, 0) << c.name;
        const DesignationEntry& d = Designations[row];
        EXPECT_EQ(std::tuple(d.Star, Constellation_Abbrev[d.Constellation], d.BayerLetter,
                             d.BayerIndex, int{d.FlamsteedNumber}, int{d.IsGreek}, d.Reserved),
                  std::tuple(s, c.constellation, c.letter, c.index, c.flamsteed, 1, ' '));
        // The Bayer and Flamsteed lists of the constellation point back at the star.
        const ConstellationStars& cs = Constellation_Stars[d.Constellation];
        ASSERT_LT(d.BayerOrder, cs.BayerStar.size());
        ASSERT_LT(d.FlamsteedOrder, cs.FlamsteedStar.size());
        EXPECT_EQ(std::tuple(cs.Stars[cs.BayerStar[d.BayerOrder]],
                             cs.Stars[cs.FlamsteedStar[d.FlamsteedOrder]],
                             int{cs.FlamsteedNumber[d.FlamsteedOrder]}),
                  std::tuple(s, s, c.flamsteed));
        const StarNames n = Star_Names_Of(s);
        EXPECT_EQ(std::tuple(n.Designation, int{n.IsGreek}),
                  std::tuple(std::string{c.letter, c.index}, 1))
            << c.name;
    }
    // Sirius is first of the Bayer list of Canis Major; Zuben'ubi reads "Alpha 2".
    const DesignationEntry& dz = Designations[Find_Designation_Row(Nav_Star("Zuben'ubi"))];
    EXPECT_EQ(Designations[Find_Designation_Row(12)].BayerOrder, 1);
    EXPECT_EQ(Bayer_List_Text(dz.Constellation, dz.BayerOrder), "Alpha 2");
    EXPECT_EQ(Bayer_List_Text(14, 1), "Alpha");
    EXPECT_EQ(Bayer_List_Text(14, 0) + Bayer_List_Text(89, 1), "");
}

TEST_F(StarCatalogue, FlamsteedOnlyVariableAndSuspectedStars) {
    // Label, designation and constellation of a star's names, with its flags.
    auto names = [](int32_t s) {
        const StarNames n = Star_Names_Of(s);
        return std::tuple(Star_Label(n), n.Designation, int{n.IsGreek}, n.DesignationRow > 0,
                          Catalogue[s].NameFlag, Catalogue[s].VarFlag);
    };
    // 61 Cygni: a Flamsteed number and no letter, and a variable designation besides,
    // its number right-aligned in the table's field.
    const int32_t cyg61 = Star_Of_Hip(104214);
    ASSERT_GT(cyg61, 0);
    EXPECT_EQ(names(cyg61), std::tuple("61 Cyg", "61", 0, true, 'D', 'V'));
    EXPECT_EQ(Also_Known_As(cyg61), "  Also known as 61  Cygnus");
    ASSERT_GT(Find_Variable_Row(cyg61), 0);
    EXPECT_EQ(std::u16string(Variables[Find_Variable_Row(cyg61)].Desig, 5), u"V1803");
    // Betelgeuse is a variable known by its Bayer letter; Sirius has no variable row.
    EXPECT_EQ(Also_Known_As(Nav_Star("Betelgeuse")), "  Also known as 58 Alpha  Orion");
    EXPECT_EQ(Also_Known_As(12), "");
    // RR Lyrae: no name, no Bayer or Flamsteed designation, a variable row.
    const int32_t rr = Star_Of_Hip(95497);
    ASSERT_GT(rr, 0);
    EXPECT_EQ(names(rr), std::tuple("RR Lyr", "RR", 0, false, '\0', 'V'));
    // A suspected variable: listed under no constellation, written "NSV " and the number.
    const int32_t nsv = Star_Of_Hip(74432);
    ASSERT_GT(nsv, 0);
    EXPECT_EQ(names(nsv), std::tuple("NSV 20", "NSV 20", 0, false, '\0', 'v'));
    EXPECT_EQ(Star_Names_Of(nsv).Constellation, kSuspectedVariables);
    // A star with no designation of any kind, and indices outside the catalogue.
    int32_t plain = kTier4End;
    while (Catalogue[plain].NameFlag != 0 || Catalogue[plain].VarFlag != ' ') --plain;
    EXPECT_EQ(names(plain), std::tuple("", "", 0, false, '\0', ' '));
    EXPECT_EQ(Find_Designation_Row(plain), 0);
    EXPECT_EQ(Star_Names_Of(-3).Designation + Star_Names_Of(kTier4End + 1).Name, "");
}

TEST_F(StarCatalogue, FlagsAgreeWithTheTables) {
    Load_Variables();
    for (int32_t s = 12; s <= kTier4End; ++s) {
        const CatalogueStar& c = Catalogue[s];
        ASSERT_EQ(c.NameFlag == 'N', Find_Main_Name_Row(s) > 0) << s;
        ASSERT_TRUE(c.NameFlag != 'D' || Find_Designation_Row(s) > 0) << s;
        ASSERT_EQ(c.VarFlag != ' ', Find_Variable_Row(s) > 0) << s;
    }
    // Every designation row is found from its star; the table ascends by star.
    for (size_t row = 1; row < Designations.size(); ++row) {
        ASSERT_EQ(Find_Designation_Row(Designations[row].Star), static_cast<int32_t>(row));
        ASSERT_TRUE(row == 1 || Designations[row - 1].Star < Designations[row].Star) << row;
    }
    // Each variable row's star finds the first row of that star.
    std::set<int32_t> seen;
    for (size_t row = 1; row < Variables.size(); ++row) {
        const int32_t s = Variables[row].Star;
        ASSERT_TRUE(!seen.insert(s).second || Find_Variable_Row(s) == static_cast<int32_t>(row));
        ASSERT_TRUE(Variables[row].Constellation >= 1 && Variables[row].Constellation <= 89);
    }
    // The stars of each constellation's lists are designated there.
    for (int k = 1; k <= 88; ++k) {
        const ConstellationStars& cs = Constellation_Stars[k];
        for (size_t i = 1; i < cs.Stars.size(); ++i)
            ASSERT_EQ(Designations[Find_Designation_Row(cs.Stars[i])].Constellation, k);
        for (size_t i = 1; i < cs.BayerText.size(); ++i) ASSERT_FALSE(cs.BayerText[i].empty());
    }
}

TEST_F(StarCatalogue, NameLists) {
    ASSERT_GT(MainNames.size(), 100u);
    ASSERT_GT(AllNames.size(), MainNames.size());
    EXPECT_EQ(MainNames[0].Name + AllNames[0].Name, "");
    for (size_t k = 2; k < AllNames.size(); ++k)
        ASSERT_FALSE(Star_Name_Less(AllNames[k].Name, AllNames[k - 1].Name)) << AllNames[k].Name;
    for (size_t k = 1; k < MainNames.size(); ++k) {
        ASSERT_EQ(Find_Main_Name_Row(MainNames[k].Star), static_cast<int32_t>(k))
            << MainNames[k].Name;
        ASSERT_EQ(Catalogue[MainNames[k].Star].NameFlag, 'N');
    }
    // Some main names belong to stars beyond the direct table.
    EXPECT_TRUE(std::any_of(MainNames.begin() + 1, MainNames.end(),
                            [](const StarNameEntry& e) { return e.Star > kMainNameDirectEnd; }));
    // The usual name stays among the other names of a navigational star; Windows-1252 text
    // arrives as UTF-8.
    auto named = [](const char* name, int32_t star) {
        return std::any_of(AllNames.begin(), AllNames.end(), [&](const StarNameEntry& e) {
            return e.Name == name && (star < 0 || e.Star == star);
        });
    };
    EXPECT_TRUE(named("Rigil Kentaurus", Nav_Star("Rigil Kent")));
    EXPECT_TRUE(named("Zubenelgenubi", Nav_Star("Zuben'ubi")));
    EXPECT_TRUE(named("Zuben'ubi", Nav_Star("Zuben'ubi")));
    EXPECT_TRUE(named("Arcal\u00eds", -1));
    EXPECT_TRUE(Star_Name_Less("acamar", "Achernar"));
    EXPECT_TRUE(Star_Name_Less("Vega", "vega"));
    EXPECT_FALSE(Star_Name_Less("Vega", "Vega"));
}

TEST_F(StarCatalogue, Constellations) {
    const std::pair<int, const char*> abbrevs[] = {{0, " "},   {1, "And"},  {4, "Aqr"},
                                                   {5, "Aql"}, {26, "CrA"}, {88, "Vul"}};
    for (auto [k, text] : abbrevs) EXPECT_EQ(Constellation_Abbrev[k], text) << k;
    EXPECT_EQ(Constellation_Name[9], "Bo\u00f6tes");
    EXPECT_EQ(Constellation_Name[26], "Corona Australis");
    EXPECT_EQ(Constellation_Name[76], "Serpens");
    // Widths grow with the text: the override is as wide as the text it stands for.
    EXPECT_EQ(Constellation_Label_Width[26], kCoronaAustralisLabelWidth);
    EXPECT_GT(Constellation_Label_Width[26], Constellation_Label_Width[27] * 9 / 10);
    EXPECT_GT(Constellation_Label_Width[11], Constellation_Label_Width[6] * 3);  // Cam, Ara
    EXPECT_EQ(
        std::set<std::string>(Constellation_Abbrev.begin() + 1, Constellation_Abbrev.end()).size(),
        88u);
}

TEST_F(StarCatalogue, CatalogueNumbers) {
    EXPECT_EQ(std::tuple(Star_Of_Hip(32349), Star_Of_HD(48915)), std::tuple(12, 12));
    EXPECT_EQ(std::tuple(Star_Of_Hip(0), Star_Of_Hip(-5), Star_Of_HD(99999999)),
              std::tuple(0, 0, 0));
    ASSERT_EQ(HD_Numbers.size(), static_cast<size_t>(kTier4End) + 1);
    // Where several stars bear one HD number, the inverse gives the brightest of them.
    std::map<int32_t, int32_t> brightest;
    int shared = 0;
    for (int32_t s = 12; s <= kTier4End; ++s) {
        if (HD_Numbers[s] <= 0) continue;
        auto [it, fresh] = brightest.try_emplace(HD_Numbers[s], s);
        shared += !fresh;
        if (!fresh && Catalogue[s].Mag < Catalogue[it->second].Mag) it->second = s;
    }
    EXPECT_GT(shared, 10);
    for (const auto& [hd, s] : brightest)
        ASSERT_EQ(Catalogue[Star_Of_HD(hd)].Mag, Catalogue[s].Mag);
    for (int32_t s = 12; s <= kTier4End; ++s) ASSERT_EQ(Star_Of_Hip(Hip_Numbers[s]), s);
}

TEST_F(StarCatalogue, StarPlacesKeepWhatIsComputed) {
    StarPlaces.clear();
    Compute_Star_Places(kMag3_5End, 0.0);
    ASSERT_EQ(StarPlaces.size(), static_cast<size_t>(kMag3_5End) + 1);
    EXPECT_EQ(std::tuple(StarPlaces[0].Magnitude, StarPlaces[1].Magnitude, StarPlaces[3].Magnitude),
              std::tuple(-10.0f, -10.0f, -9.0f));
    const StarPlace& sirius = StarPlaces[12];
    EXPECT_EQ(std::tuple(sirius.Done, sirius.Name, sirius.Designation,
                         Constellation_Abbrev[sirius.Constellation]),
              std::tuple(true, "Sirius", "a ", "CMa"));
    EXPECT_FLOAT_EQ(sirius.Magnitude, Catalogue[12].Mag / 1000.0f);
    EXPECT_GT(sirius.Validity, 7.0);  // 1.3" a year: about 14 years to move 18"
    // The apparent place of J2000.0 stands within a minute of arc of the catalogue's.
    EXPECT_NEAR(sirius.RA, Catalogue[12].RA, 60.0 / kArcsec / std::cos(sirius.Dec));
    EXPECT_NEAR(sirius.Dec, Catalogue[12].Dec, 60.0 / kArcsec);
    for (int32_t s = 12; s <= kMag3_5End; ++s) ASSERT_GE(StarPlaces[s].Validity, 7.0);

    // Growing the table computes only the new rows, at the new moment; rows beyond the
    // loaded catalogue wait for their tier.
    Compute_Star_Places(kMag4End, 3652.5);
    EXPECT_EQ(std::tuple(StarPlaces[12].JD, StarPlaces[kMag4End].JD, StarPlaces[kMag4End].Done),
              std::tuple(0.0, 3652.5, true));
    Compute_Star_Places(Catalogue_Upper() + 2, 0.0);
    EXPECT_TRUE(StarPlaces[Catalogue_Upper()].Done);
    EXPECT_FALSE(StarPlaces[Catalogue_Upper() + 1].Done);
    StarPlaces.clear();
}

TEST(StarNames, GreekLettersAndSortKeys) {
    const std::tuple<char, const char*, char32_t> letters[] = {{'a', "Alpha", U'\u03b1'},
                                                               {'q', "Theta", U'\u03b8'},
                                                               {'r', "Rho", U'\u03c1'},
                                                               {'s', "Sigma", U'\u03c3'},
                                                               {'w', "Omega", U'\u03c9'},
                                                               {'j', "", 0},
                                                               {'J', "", 0},
                                                               {'\0', "", 0}};
    for (auto [code, name, point] : letters)
        EXPECT_EQ(std::tuple(Greek_Letter_Name(code), Greek_Code_Point(code)),
                  std::tuple(std::string(name), point))
            << int{code};
    // Sorting the keys of the codes gives the order of the Greek alphabet.
    std::vector<std::string> keys;
    for (char c : std::string("abgdezhqiklmnxoprstufcyw"))
        keys.push_back(Designation_Sort_Key(std::string{c, '2'}));
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), 24u);
    EXPECT_EQ(Designation_Sort_Key(" gz "), "cz");  // only the first letter is recoded
    EXPECT_EQ(Designation_Sort_Key("61"), "61");
    EXPECT_EQ(Designation_Sort_Key("   "), "");
}

}  // namespace
}  // namespace kelmoran
