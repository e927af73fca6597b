// The book's tables against the arithmetic they tabulate.
#include <gtest/gtest.h>

#include <cmath>
#include <regex>

#include "almanac/Almanac_Book.h"
#include "ephemeris/Series.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "sights/M_Sights.h"

namespace kelmoran {
namespace {

// A printed "3° 45'.0" or "5'.9" in minutes of arc.
double Minutes_Of(const std::string& text) {
    static const std::regex arc(R"((?:(\d+)° )?(\d+)'\.(\d))");
    std::smatch m;
    EXPECT_TRUE(std::regex_search(text, m, arc)) << text;
    return (m[1].matched ? std::stoi(m[1]) * 60.0 : 0.0) + std::stoi(m[2]) + std::stoi(m[3]) / 10.0;
}

// Every entry of one page: the increments at 15° an hour, at the sidereal rate (one day is
// 0.99726956633 days of the stars: Explanatory Supplement, 1992), and at 14° 19' an hour,
// and the v or d corrections for the middle of the minute; each to the printed tenth.
TEST(AlmanacBook, IncrementsPageIsItsArithmetic) {
    const int minute = 37;
    const PagePicture page = Increments_Page(minute);
    const int32_t first = page.Find("00") ? page.Find("00")->Y : -1;
    ASSERT_GE(first, 0);
    std::map<int32_t, std::vector<std::string>> rows;  // texts of a row, left to right
    for (const PageText& t : page.Texts)
        if (t.Y >= first && t.Font == PageFont::Value) rows[t.Y].push_back(t.Text);
    ASSERT_EQ(rows.size(), 61u);
    int s = 0;
    for (const auto& [y, cells] : rows) {
        ASSERT_EQ(cells.size(), 10u) << "second " << s;
        EXPECT_EQ(std::stoi(cells[0]), s);
        const double hours = (minute * 60 + s) / 3600.0;
        EXPECT_NEAR(Minutes_Of(cells[1]), hours * 15.0 * 60.0, 0.05 + 1e-9) << s;
        EXPECT_NEAR(Minutes_Of(cells[2]), hours * 15.0 / 0.99726956633 * 60.0, 0.05 + 1e-9) << s;
        EXPECT_NEAR(Minutes_Of(cells[3]), hours * (14.0 + 19.0 / 60.0) * 60.0, 0.05 + 1e-9) << s;
        for (int c = 0; c < 3; ++c) {
            const double v = Minutes_Of(cells[4 + 2 * c]);
            EXPECT_NEAR(v, c * 6.0 + s * 0.1, 1e-9);
            EXPECT_NEAR(Minutes_Of(cells[5 + 2 * c]), v * (minute + 0.5) / 60.0, 0.05 + 1e-9) << s;
        }
        ++s;
    }
}

// The Moon's table against the reduction's own working of a Moon sight at the equator with
// no dip or index error: refraction, augmented semi-diameter and parallax, both limbs,
// every altitude from 1° to 89° and the table's parallaxes, within 0'.1.
TEST(AlmanacBook, MoonCorrectionsAgreeWithTheReduction) {
    DipRad = 0.0f;
    IndexErrorRad = 0.0f;
    RefractionFactor = 1.0f;
    for (double hp = 54.0; hp <= 61.5; hp += 0.5) {
        BodyPlace moon;
        moon.Distance = kEquatorialKm / std::sin(hp / kArcminPerRadian);
        for (int a = 1; a <= 89; ++a) {
            const Reduction_Work w = Prepare_Reduction(static_cast<float>(a * kOneDegree), 0.0f, 0.0f, 0.0f);
            for (const bool upper : {false, true}) {
                const Body_Test t = Test_Body(w, upper ? body::MoonUpperLimb : body::MoonLowerLimb, moon);
                const double reduction = (w.Alt_Corrections + t.SD + t.Parallax) * kArcminPerRadian;
                EXPECT_NEAR(Moon_Altitude_Correction(a * kOneDegree, hp / kArcminPerRadian, upper),
                            reduction, 0.1)
                    << "HP " << hp << " altitude " << a << (upper ? " upper" : " lower");
            }
        }
    }
}

}  // namespace
}  // namespace kelmoran
