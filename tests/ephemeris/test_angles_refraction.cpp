// The total angle helpers; dip, index error and the three refraction routes.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Angles.h"
#include "settings/File_IO.h"

namespace kelmoran {
namespace {

constexpr double kArcmin = 1.0 / 3437.74677078494;
constexpr double kDeg = 1.0 / 57.2957795130823;
constexpr double kPi = 3.14159265358979323846;

TEST(Angles, ArcSinAndArcCosAreTotal) {
    for (double x = -0.999; x < 1.0; x += 0.0123) {
        EXPECT_NEAR(Arc_Sin(x), std::asin(x), 1e-14) << x;
        EXPECT_NEAR(Arc_Cos(x), std::acos(x), 1e-14) << x;
    }
    // A rounding slip past 1 doesn't raise; it gives 0, as does NaN.
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double sines[][2] = {{1.0, 1.5707963267949},
                               {-1.0, -1.5707963267949},
                               {1.0 + 1e-15, 0.0},
                               {-3.0, 0.0},
                               {nan, 0.0}};
    for (const auto& s : sines) EXPECT_EQ(Arc_Sin(s[0]), s[1]) << s[0];
    for (double x : {1.0, -1.0, 1.5, nan}) EXPECT_EQ(Arc_Cos(x), 0.0) << x;
}

TEST(Angles, TwoArgumentArctangentsRunOverAWholeTurn) {
    for (double a = -7.0; a < 7.0; a += 0.0731) {
        const double y = 2.5 * std::sin(a);
        const double x = 2.5 * std::cos(a);
        double ref = std::atan2(y, x);
        if (ref < 0) ref += 2 * kPi;
        const double r8 = Atan2_R8(y, x);
        const float r4 = Atan2_R4(static_cast<float>(y), static_cast<float>(x));
        EXPECT_NEAR(r8, ref, 1e-13) << a;
        EXPECT_NEAR(r4, ref, 1e-6) << a;
        EXPECT_TRUE(r8 >= 0.0 && r8 <= 6.28318530717959 && r4 >= 0.0f && r4 <= 6.2831855f) << a;
    }
    const double axes[][3] = {{0.0, 0.0, 0.0},
                              {2.0, 0.0, 1.5707963267949},
                              {-2.0, 0.0, 4.71238898038469},
                              {0.0, -1.0, 3.14159265358979},
                              {0.0, 1.0, 0.0}};
    for (const auto& a : axes) EXPECT_EQ(Atan2_R8(a[0], a[1]), a[2]) << a[0] << " " << a[1];
    EXPECT_EQ(Atan2_R4(0.0f, 0.0f), 0.0f);
    EXPECT_EQ(Atan2_R4(-1.0f, 0.0f), static_cast<float>(4.712389024096076));
    EXPECT_EQ(Atan2_R4(0.0f, -3.0f), 3.1415927f);
    // Huge ratios (a star at the pole of the ecliptic) don't fail.
    EXPECT_NEAR(Atan2_R4(1e30f, 1e-30f), 1.5707964f, 1e-6f);
    EXPECT_NEAR(Atan2_R8(-1e300, 1e-300), 4.71238898038469, 1e-12);
}

// Pressure (mb), temperature (°C), index error ('), height of eye (m), and derived values.
void Set_Altitude_Corrections(float pressure, float temperature, float indexError,
                              float heightOfEye) {
    Settings.Pressure = pressure;
    Settings.Temp = temperature;
    Settings.IndexError = indexError;
    Settings.HtOfEye = heightOfEye;
    Compute_Derived_Settings();
}

// Standard air (1010 mb, 10 °C) for each test; the settings are restored after.
class Corrections : public ::testing::Test {
  protected:
    void SetUp() override {
        saved_ = Settings;
        Set_Altitude_Corrections(1010.0f, 10.0f, 0.0f, 0.0f);
    }
    void TearDown() override {
        Settings = saved_;
        Compute_Derived_Settings();
    }

  private:
    SettingsRecord saved_;
};

TEST_F(Corrections, DerivedValues) {
    EXPECT_FLOAT_EQ(RefractionFactor, 1.0f);
    EXPECT_EQ(DipRad, 0.0f);
    Set_Altitude_Corrections(1030.0f, -10.0f, -2.5f, 4.0f);
    EXPECT_NEAR(DipRad / kArcmin, 3.516, 1e-5);
    EXPECT_NEAR(IndexErrorRad / kArcmin, -2.5, 1e-6);
    EXPECT_NEAR(RefractionFactor, 1030.0 * 283.0 / 1010.0 / 263.0, 1e-6);
    // Refraction scales with the factor; the printed table doesn't.
    const float h = static_cast<float>(3.0 * kDeg);
    const float scaled = Refraction_Apparent(h);
    const float table = Refraction_Table(h);
    Set_Altitude_Corrections(1010.0f, 10.0f, 0.0f, 0.0f);
    EXPECT_NEAR(scaled / Refraction_Apparent(h), 1030.0 * 283.0 / 1010.0 / 263.0, 1e-5);
    EXPECT_EQ(table, Refraction_Table(h));
}

TEST_F(Corrections, RefractionAtTheHorizon) {
    EXPECT_NEAR(Refraction_Table(0.0f) / kArcmin, 33.8, 1e-4);
    // Bennett's 34.47' brought down to the tables' 33.8' close to the horizon.
    EXPECT_NEAR(Refraction_Apparent(0.0f) / kArcmin, 33.79, 0.01);
    // Apparent altitude 0 is a true altitude of about -33.8': the inverse route agrees.
    const double r = Refraction_Apparent(0.0f);
    EXPECT_NEAR(Refraction_True(-r) / kArcmin, r / kArcmin, 0.01);
    // A negative altitude reads the table as at the horizon.
    EXPECT_EQ(Refraction_Table(static_cast<float>(-0.5 * kDeg)), Refraction_Apparent(0.0f));
}

TEST_F(Corrections, ApparentRefractionIsSmoothAcrossItsBranches) {
    // At 2.5° the adjustment has died away; at 5° the two formulas meet.
    const float at25 = static_cast<float>(2.5 / 57.2957795130823);
    const float below25 = std::nextafter(at25, 0.0f);
    EXPECT_NEAR(Refraction_Apparent(below25) / kArcmin, Refraction_Apparent(at25) / kArcmin, 0.005);
    const float at5 = static_cast<float>(5.0 * kDeg);
    EXPECT_NEAR(Refraction_Apparent(std::nextafter(at5, 0.0f)) / kArcmin,
                Refraction_Apparent(at5) / kArcmin, 0.05);
    // Published mean refraction: 5.3' at 10°, 1.0' at 45°, 0 at the zenith.
    EXPECT_NEAR(Refraction_Apparent(static_cast<float>(10 * kDeg)) / kArcmin, 5.3, 0.05);
    EXPECT_NEAR(Refraction_Apparent(static_cast<float>(45 * kDeg)) / kArcmin, 0.97, 0.03);
    EXPECT_NEAR(Refraction_Apparent(static_cast<float>(90 * kDeg)) / kArcmin, 0.0, 0.001);
}

TEST_F(Corrections, TrueRefractionInvertsTheApparentOne) {
    // Below 555' the refinement makes h + R an apparent altitude whose refraction is R
    // (one secant step: to 0.01' down to true altitudes of -40', 0.04' below that).
    for (double m = -70.0; m < 555.0; m += 7.3) {
        const double h = m * kArcmin;
        const double R = Refraction_True(h);
        EXPECT_NEAR(Refraction_Apparent(static_cast<float>(h + R)) / kArcmin, R / kArcmin,
                    m < -40.0 ? 0.04 : 0.01)
            << m;
    }
    // The true horizon: the apparent altitude is about half a degree, refraction 28.6'.
    EXPECT_NEAR(Refraction_True(0.0) / kArcmin, 28.56, 0.01);
    // Above it the closed formula stands alone and still agrees to a few hundredths.
    for (double m = 556.0; m < 5400.0; m += 97.0) {
        const double h = m * kArcmin;
        const double R = Refraction_True(h);
        EXPECT_NEAR(Refraction_Apparent(static_cast<float>(h + R)) / kArcmin, R / kArcmin, 0.05)
            << m;
    }
}

TEST_F(Corrections, TrueRefractionRefinesOnlyBelow555Minutes) {
    // Just above 555' the result is the closed formula with its correction c (here m lies
    // in the band up to 651', c = 0.022 - 0.0002 (m - 552)), which leaves the apparent
    // route 0.0006' apart; just below, the refined value, which meets it.
    auto formula = [](double m) {
        const double t = std::tan(m * kArcmin);
        return (58.276 / t - 0.0824 / (t * t * t)) / 60.0 + 0.022 - 0.0002 * (m - 552.0);
    };
    const double above = 555.001;
    EXPECT_NEAR(Refraction_True(above * kArcmin) / kArcmin, formula(above), 1e-5);
    const double below = 554.999;
    const double R = Refraction_True(below * kArcmin);
    const double Ra = Refraction_True(above * kArcmin);
    EXPECT_GT(std::fabs(Refraction_Apparent(static_cast<float>(above * kArcmin + Ra)) - Ra),
              3e-4 * kArcmin);
    EXPECT_NEAR(Refraction_Apparent(static_cast<float>(below * kArcmin + R)), R, 1e-4 * kArcmin);
}

TEST_F(Corrections, TableRowsAndBounds) {
    auto table = [](double minutes) {
        return Refraction_Table(static_cast<float>(minutes * kArcmin)) / kArcmin;
    };
    // Row 0 serves to 1.5', row 3 from there towards row 6; row 590 up to 595 (not the
    // midpoint 592.5), row 595 from 595 to 601; the last row (0.1' over 351') to 5047.5'.
    const double rows[][2] = {{1.4, 33.8 - 1.4 * 0.6 / 3.0},
                              {1.6, 33.2 + (3.0 - 1.6) * 0.6 / 3.0},
                              {594.0, 5.4 + (590.0 - 594.0) * 0.05 / 5.0},
                              {600.0, 5.35 + (595.0 - 600.0) * 0.1 / 12.0},
                              {602.0, 5.25 + (607.0 - 602.0) * 0.1 / 13.0},
                              {5000.0, 0.15 + (4872.0 - 5000.0) * 0.1 / 351.0}};
    for (const auto& row : rows) EXPECT_NEAR(table(row[0]), row[1], 1e-4) << row[0];
    // The formula above the last row meets it.
    EXPECT_NEAR(table(5047.4), table(5047.6), 0.002);
    EXPECT_NEAR(table(89.9 * 60.0), 0.0, 0.002);
}

TEST_F(Corrections, TableFollowsMeanRefraction) {
    // Every row of the printed table against the formula: a mistyped row stands out.
    for (double m = 0.0; m < 5400.0; m += 0.5) {
        const double t = Refraction_Table(static_cast<float>(m * kArcmin)) / kArcmin;
        const double a = Refraction_Apparent(static_cast<float>(m * kArcmin)) / kArcmin;
        ASSERT_NEAR(t, a, m < 300.0 ? 0.3 : 0.15) << m;
    }
}

}  // namespace
}  // namespace kelmoran
