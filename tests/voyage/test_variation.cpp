// The magnetic model against the World Magnetic Model's published test values (as shipped
// with npm geomagnetism@0.2.0, copied to tests/voyage/data by tools/wmm/generate), and
// the request and answer that the screens use.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "ephemeris/Time_Calcs.h"
#include "voyage/VariationModel.h"

namespace kelmoran {
namespace {

constexpr double kRad = 3.14159265358979 / 180.0;

struct Test_Value {
    double year, alt, lat, lon, x, y, z, h, f, incl, decl;
};

const std::vector<Test_Value>& Values() {
    static const std::vector<Test_Value> values = [] {
        std::ifstream in(KELMORAN_SOURCE_DIR "/tests/voyage/data/wmm_test_values.csv");
        std::vector<Test_Value> out;
        std::string line;
        for (Test_Value t; std::getline(in, line);)  // the header line does not scan
            if (std::sscanf(line.c_str(), "%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf", &t.year,
                            &t.alt, &t.lat, &t.lon, &t.x, &t.y, &t.z, &t.h, &t.f, &t.incl,
                            &t.decl) == 11)
                out.push_back(t);
        return out;
    }();
    return values;
}

double MyJD_Of(int y, int m, int d, int h = 0) {
    MySystemTime t{};
    t.wYear = static_cast<int16_t>(y);
    t.wMonth = static_cast<int16_t>(m);
    t.wDay = static_cast<int16_t>(d);
    t.wHour = static_cast<int16_t>(h);
    return Calc_JD(t, false);
}

TEST(Variation, PublishedTestValues) {
    ASSERT_GE(Values().size(), 200u);
    const VariationModel& model = Variation_Model();
    ASSERT_EQ(model.Epoch_Count(), 4);
    int wmm2025 = 0;
    double worstDecl = 0, worstIncl = 0, worstF = 0;
    for (const Test_Value& t : Values()) {
        const Magnetic_Elements e = model.Elements(t.year, t.lat, t.lon, t.alt);
        worstDecl = std::max(worstDecl, std::fabs(e.Decl - t.decl));
        worstIncl = std::max(worstIncl, std::fabs(e.Incl - t.incl));
        worstF = std::max(worstF, std::fabs(e.F - t.f));
        EXPECT_NEAR(e.Decl, t.decl, 0.01) << t.year << " " << t.lat << " " << t.lon;
        EXPECT_NEAR(e.Incl, t.incl, 0.01) << t.year << " " << t.lat << " " << t.lon;
        EXPECT_NEAR(e.X, t.x, 5.0);
        EXPECT_NEAR(e.Y, t.y, 5.0);
        EXPECT_NEAR(e.Z, t.z, 5.0);
        wmm2025 += t.year >= 2025.0;
    }
    EXPECT_GE(wmm2025, 100);
    std::printf("WMM test values: worst declination %.4f deg, inclination %.4f deg, F %.1f nT\n",
                worstDecl, worstIncl, worstF);
}

TEST(Variation, RequestAndAnswer) {
    const VariationModel& model = Variation_Model();
    // 2025.0 at 80°N 0°E at sea level: the first WMM2025 test point, through the request.
    const double jd2025 = MyJD_Of(2025, 1, 1);
    EXPECT_DOUBLE_EQ(VariationModel::Decimal_Year(jd2025), 2025.0);
    EXPECT_NEAR(VariationModel::Decimal_Year(MyJD_Of(2024, 7, 2)), 2024.5, 1e-9);
    Variation_Answer a;
    model.Calc({jd2025, static_cast<float>(80 * kRad), 0.0f}, a);
    const Magnetic_Elements e = model.Elements(2025.0, 80, 0, 0);
    EXPECT_NEAR(a.Variation, e.Decl * kRad, 1e-6);
    EXPECT_NEAR(a.Dip, e.Incl * kRad, 1e-6);
    EXPECT_NEAR(a.Field, e.F, 0.01);
    // South of the magnetic equator the dip comes as 2π + I: shown as 2π − Dip.
    model.Calc({jd2025, static_cast<float>(-60 * kRad), static_cast<float>(140 * kRad)}, a);
    EXPECT_GT(a.Dip, 3.14159265f);
    EXPECT_NEAR(2 * 3.14159265358979 - a.Dip, -model.Elements(2025.0, -60, 140, 0).Incl * kRad,
                1e-6);

    // Outside 2015 .. 2030 the field of the nearest end of the span stands.
    const double early = model.Elements(1800.0, 50, -4, 0).Decl;
    const double late = model.Elements(2300.0, 50, -4, 0).Decl;
    EXPECT_DOUBLE_EQ(early, model.Elements(2015.0, 50, -4, 0).Decl);
    EXPECT_DOUBLE_EQ(late, model.Elements(2030.0, 50, -4, 0).Decl);
    EXPECT_NE(early, late);
    // Any moment, the poles and bad numbers give an answer; so does an unreadable table,
    // as a model with no field.
    const Variation_Request odd[] = {
        {-1e7, 0.5f, -2.0f},         {-800000.0, 0.5f, -2.0f}, {0.0, 0.5f, -2.0f},
        {36524.0, 0.5f, -2.0f},      {1e7, 0.5f, -2.0f},       {jd2025, 1.5707964f, 1.0f},
        {jd2025, -1.5707964f, 1.0f}, {jd2025, 3.0f, 1.0f},     {NAN, 0.1f, 0.1f}};
    for (const Variation_Request& r : odd) {
        model.Calc(r, a);
        EXPECT_TRUE(std::isfinite(a.Variation) && std::isfinite(a.Dip)) << r.Moment << " " << r.Lat;
    }
    const unsigned char junk[5] = {1, 2, 3, 4, 5};
    const VariationModel broken{std::span<const unsigned char>(junk)};
    EXPECT_EQ(broken.Epoch_Count(), 0);
    broken.Calc({0.0, 0.5f, 0.5f}, a);
    EXPECT_EQ(a.Variation, 0.0f);
}

// What Main shows: the rounded variation with " E " or " W", the dip folded back from an
// upward field, and the help words with the note on the nearest epoch outside the span.
TEST(Variation, MainTextsAndHelp) {
    const struct {
        float radians;
        const char* text;
    } variations[] = {{static_cast<float>(-12.34 * kRad), "12°.3 W"},
                      {static_cast<float>(3.06 * kRad), "3°.1 E "},
                      {0.0f, "0°.0 E "},
                      {static_cast<float>(-112.96 * kRad), "113°.0 W"}};
    for (const auto& v : variations) EXPECT_EQ(Main_Variation_Text(v.radians), v.text);
    EXPECT_EQ(Main_Dip_Text(1.0f), "57°.3");
    EXPECT_EQ(Main_Dip_Text(static_cast<float>(2 * 3.14159265358979 - 0.5)), "28°.6");  // upward
    EXPECT_EQ(Main_Dip_Text(NAN), "0°.0");

    // The span and the help words.
    const VariationModel& model = Variation_Model();
    EXPECT_TRUE(model.In_Span(MyJD_Of(2015, 1, 1)));
    EXPECT_TRUE(model.In_Span(MyJD_Of(2029, 12, 31, 23)));
    EXPECT_FALSE(model.In_Span(MyJD_Of(2014, 12, 31, 23)));
    EXPECT_FALSE(model.In_Span(MyJD_Of(2030, 1, 2)));
    EXPECT_EQ(Magnetic_Help_Words(false, MyJD_Of(2026, 6, 1)),
              std::vector<std::string>{"Magnetic Variation"});
    EXPECT_EQ(
        Magnetic_Help_Words(true, MyJD_Of(2026, 6, 1)),
        (std::vector<std::string>{"Angle between Earth's Magnetic", "Field and the Horizontal"}));
    for (double jd : {MyJD_Of(1990, 3, 1), MyJD_Of(2031, 3, 1)}) {
        const std::vector<std::string> outside = Magnetic_Help_Words(false, jd);
        ASSERT_EQ(outside.size(), 3u);
        EXPECT_EQ(outside[0], "Magnetic Variation");
        EXPECT_NE(outside[2].find("nearest epoch"), std::string::npos);
        EXPECT_EQ(Magnetic_Help_Words(true, jd).size(), 4u);
    }
}

}  // namespace
}  // namespace kelmoran
