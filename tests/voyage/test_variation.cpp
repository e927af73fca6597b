// The magnetic model against the World Magnetic Model's published test values (as shipped
// with npm geomagnetism@0.2.0, copied to tests/voyage/data by tools/wmm/generate), and
// the request and answer that the screens use.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "ephemeris/Time_Calcs.h"
#include "voyage/VariationModel.h"

namespace kelmoran {
namespace {

struct Test_Value {
    double year, alt, lat, lon, x, y, z, h, f, incl, decl;
};

std::vector<Test_Value> Load_Values() {
    std::ifstream in(KELMORAN_SOURCE_DIR "/tests/voyage/data/wmm_test_values.csv");
    std::vector<Test_Value> out;
    std::string line;
    std::getline(in, line);  // header
    while (std::getline(in, line)) {
        if (line.empty()) continue;
        std::stringstream ss(line);
        std::string cell;
        std::vector<double> v;
        while (std::getline(ss, cell, ',')) v.push_back(std::stod(cell));
        if (v.size() < 11) continue;
        out.push_back({v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10]});
    }
    return out;
}

double MyJD_Of(int y, int m, int d, int h) {
    MySystemTime t;
    t.wYear = static_cast<int16_t>(y);
    t.wMonth = static_cast<int16_t>(m);
    t.wDay = static_cast<int16_t>(d);
    t.wHour = static_cast<int16_t>(h);
    return Calc_JD(t, false);
}

TEST(Variation, PublishedTestValues) {
    const std::vector<Test_Value> values = Load_Values();
    ASSERT_GE(values.size(), 200u);
    const VariationModel& model = Variation_Model();
    ASSERT_EQ(model.Epoch_Count(), 4);
    int wmm2025 = 0;
    double worstDecl = 0, worstIncl = 0, worstF = 0;
    for (const Test_Value& t : values) {
        const Magnetic_Elements e = model.Elements(t.year, t.lat, t.lon, t.alt);
        worstDecl = std::max(worstDecl, std::fabs(e.Decl - t.decl));
        worstIncl = std::max(worstIncl, std::fabs(e.Incl - t.incl));
        worstF = std::max(worstF, std::fabs(e.F - t.f));
        EXPECT_NEAR(e.Decl, t.decl, 0.01) << t.year << " " << t.lat << " " << t.lon;
        EXPECT_NEAR(e.Incl, t.incl, 0.01) << t.year << " " << t.lat << " " << t.lon;
        EXPECT_NEAR(e.X, t.x, 5.0);
        EXPECT_NEAR(e.Y, t.y, 5.0);
        EXPECT_NEAR(e.Z, t.z, 5.0);
        if (t.year >= 2025.0) ++wmm2025;
    }
    EXPECT_GE(wmm2025, 100);
    std::printf("WMM test values: worst declination %.4f deg, inclination %.4f deg, F %.1f nT\n",
                worstDecl, worstIncl, worstF);
}

TEST(Variation, RequestAndAnswer) {
    const VariationModel& model = Variation_Model();
    // 2025.0 at 80°N 0°E at sea level: the first WMM2025 test point, through the request.
    const double jd2025 = MyJD_Of(2025, 1, 1, 0);
    EXPECT_DOUBLE_EQ(VariationModel::Decimal_Year(jd2025), 2025.0);
    EXPECT_NEAR(VariationModel::Decimal_Year(MyJD_Of(2024, 7, 2, 0)), 2024.5, 1e-9);
    const double deg = 3.14159265358979 / 180.0;
    Variation_Answer a;
    model.Calc({jd2025, static_cast<float>(80 * deg), 0.0f}, a);
    const Magnetic_Elements e = model.Elements(2025.0, 80, 0, 0);
    EXPECT_NEAR(a.Variation, e.Decl * deg, 1e-6);
    EXPECT_NEAR(a.Dip, e.Incl * deg, 1e-6);
    EXPECT_NEAR(a.Field, e.F, 0.01);
    // South of the magnetic equator the dip comes as 2π + I: shown as 2π − Dip.
    model.Calc({jd2025, static_cast<float>(-60 * deg), static_cast<float>(140 * deg)}, a);
    EXPECT_GT(a.Dip, 3.14159265f);
    const Magnetic_Elements s = model.Elements(2025.0, -60, 140, 0);
    EXPECT_NEAR(2 * 3.14159265358979 - a.Dip, -s.Incl * deg, 1e-6);

    // Outside 2015 .. 2030 the field of the nearest end of the span stands; it never fails.
    const Magnetic_Elements early = model.Elements(1800.0, 50, -4, 0);
    EXPECT_DOUBLE_EQ(early.Decl, model.Elements(2015.0, 50, -4, 0).Decl);
    const Magnetic_Elements late = model.Elements(2300.0, 50, -4, 0);
    EXPECT_DOUBLE_EQ(late.Decl, model.Elements(2030.0, 50, -4, 0).Decl);
    EXPECT_NE(early.Decl, late.Decl);
    for (double jd : {-1e7, -800000.0, 0.0, 36524.0, 1e7}) {
        model.Calc({jd, 0.5f, -2.0f}, a);
        EXPECT_TRUE(std::isfinite(a.Variation) && std::isfinite(a.Dip)) << jd;
    }
    // The poles and bad numbers give an answer too.
    for (float lat : {1.5707964f, -1.5707964f, 3.0f}) {
        model.Calc({jd2025, lat, 1.0f}, a);
        EXPECT_TRUE(std::isfinite(a.Variation) && std::isfinite(a.Dip)) << lat;
    }
    model.Calc({NAN, 0.1f, 0.1f}, a);
    EXPECT_TRUE(std::isfinite(a.Variation));
    // A table that cannot be read gives a model with no field, not a failure.
    const unsigned char junk[5] = {1, 2, 3, 4, 5};
    const VariationModel broken{std::span<const unsigned char>(junk)};
    EXPECT_EQ(broken.Epoch_Count(), 0);
    broken.Calc({0.0, 0.5f, 0.5f}, a);
    EXPECT_EQ(a.Variation, 0.0f);
}

// What Main shows: variation with " E " or " W" after the rounded absolute value, the dip
// folded back from an upward field, and the help words, which add the note about the
// nearest epoch only for moments outside the model's years.
TEST(Variation, MainTextsAndHelp) {
    const double deg = 3.14159265358979 / 180.0;
    EXPECT_EQ(Main_Variation_Text(static_cast<float>(-12.34 * deg)), "12°.3 W");
    EXPECT_EQ(Main_Variation_Text(static_cast<float>(3.06 * deg)), "3°.1 E ");
    EXPECT_EQ(Main_Variation_Text(0.0f), "0°.0 E ");
    EXPECT_EQ(Main_Variation_Text(static_cast<float>(-112.96 * deg)), "113°.0 W");
    EXPECT_EQ(Main_Dip_Text(1.0f), "57°.3");
    // An upward field of 28.6° comes as 2π − 0.5 and shows as the angle to the horizontal.
    EXPECT_EQ(Main_Dip_Text(static_cast<float>(2 * 3.14159265358979 - 0.5)), "28°.6");
    EXPECT_EQ(Main_Dip_Text(NAN), "0°.0");

    // Through the model: the text of the variation at a WMM2025 test point is the
    // published declination rounded to one decimal.
    const std::vector<Test_Value> values = Load_Values();
    const VariationModel& model = Variation_Model();
    int checked = 0;
    for (const Test_Value& t : values) {
        if (t.year < 2025.0) continue;
        const double tenths = std::fabs(t.decl) * 10.0;
        if (std::fabs(tenths - std::floor(tenths) - 0.5) < 0.1) continue;  // too near a tie
        const float variation =
            static_cast<float>(model.Elements(t.year, t.lat, t.lon, t.alt).Decl * deg);
        char expected[32];
        std::snprintf(expected, sizeof expected, "%.1f", std::fabs(t.decl));
        std::string text = expected;
        text.insert(text.find('.'), "°");
        text += t.decl >= 0 ? " E " : " W";
        EXPECT_EQ(Main_Variation_Text(variation), text) << t.lat << " " << t.lon;
        ++checked;
    }
    EXPECT_GE(checked, 50);

    // The span and the help words.
    EXPECT_TRUE(model.In_Span(MyJD_Of(2015, 1, 1, 0)));
    EXPECT_TRUE(model.In_Span(MyJD_Of(2029, 12, 31, 23)));
    EXPECT_FALSE(model.In_Span(MyJD_Of(2014, 12, 31, 23)));
    EXPECT_FALSE(model.In_Span(MyJD_Of(2030, 1, 2, 0)));
    const std::vector<std::string> inside = Magnetic_Help_Words(false, MyJD_Of(2026, 6, 1, 0));
    EXPECT_EQ(inside, std::vector<std::string>{"Magnetic Variation"});
    const std::vector<std::string> dip = Magnetic_Help_Words(true, MyJD_Of(2026, 6, 1, 0));
    EXPECT_EQ(dip, (std::vector<std::string>{"Angle between Earth's Magnetic",
                                             "Field and the Horizontal"}));
    for (double jd : {MyJD_Of(1990, 3, 1, 0), MyJD_Of(2031, 3, 1, 0)}) {
        const std::vector<std::string> outside = Magnetic_Help_Words(false, jd);
        ASSERT_EQ(outside.size(), 3u);
        EXPECT_EQ(outside[0], "Magnetic Variation");
        EXPECT_NE(outside[2].find("nearest epoch"), std::string::npos);
        EXPECT_EQ(Magnetic_Help_Words(true, jd).size(), 4u);
    }
}

}  // namespace
}  // namespace kelmoran
