// Nutation, obliquity and sidereal time against ERFA (IAU 1980, 1982 and 1994).
#include <erfa.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"

namespace kelmoran {
namespace {

constexpr double kArcsec = 1.0 / 206264.806247096;
constexpr double kJ2000JD = 2451545.0;

// An angle difference folded into -π .. π.
double Fold(double a) {
    return std::remainder(a, kTwoPi);
}

TEST(EarthFrame, AtJ2000) {
    const EarthFrame e = Calc_EarthFrame(0.0);
    EXPECT_EQ(e.JD, 0.0);
    EXPECT_EQ(e.T, 0.0);
    EXPECT_DOUBLE_EQ(e.TT, static_cast<double>(63.8285f) / 3.15576e9);
    EXPECT_DOUBLE_EQ(e.CosObliquity, std::cos(e.TrueObliquity));
    EXPECT_DOUBLE_EQ(e.SinObliquity, std::sin(e.TrueObliquity));
    // Mean obliquity at J2000 is 23°26'21.448"; the true one differs by Δε.
    EXPECT_NEAR(e.TrueObliquity - e.NutObl, 0.409092804222329, 1e-10);
    // GHA of Aries at 2000 January 1, 12h UT: 280°27'37.5" (mean 280.46062°, plus the
    // equation of the equinoxes of about -0.9 s of time).
    EXPECT_NEAR(e.GAST * 57.2957795130823, 280.46061837 - 13.9 / 3600.0, 2.0 / 3600.0);
    // In 1900 TT is UT plus that year's ΔT; Calc_GAST takes its nutation at UT.
    const double jd1900 = -36524.0;
    const EarthFrame e1900 = Calc_EarthFrame(jd1900);
    EXPECT_NEAR((e1900.TT - e1900.T) * 3.15576e9, Get_DeltaT(DeltaT_Year(jd1900)), 1e-6);
    EXPECT_NEAR(Calc_GAST(jd1900), e1900.GAST, 1e-9);
}

TEST(EarthFrame, SiderealTimeStaysInRangeForAnyDate) {
    for (double jd = -3.66e6; jd < 3.66e6; jd += 12345.678) {
        const EarthFrame e = Calc_EarthFrame(jd);
        const double g = Calc_GAST(jd);
        ASSERT_TRUE(e.GAST >= 0.0 && e.GAST < kTwoPi && g >= 0.0 && g < kTwoPi) << jd;
        ASSERT_TRUE(std::isfinite(e.TrueObliquity)) << jd;
    }
    // Just below a whole turn the reduction must not give 2π.
    EXPECT_LT(Reduce_2Pi(-1e-18), kTwoPi);
    EXPECT_EQ(Reduce_2Pi(std::nan("")), 0.0);
}

TEST(EarthFrame, NutationObliquityAndSiderealTimeAgreeWithERFA) {
    // 1800 to 2200: Δψ and Δε against the full IAU 1980 series, Laskar's mean obliquity
    // against the IAU 1980 one, GAST against eraGmst82 + eraEqeq94.
    double psi = 0, eps = 0, obl = 0, gast = 0;
    for (double jd = -73048.5; jd <= 73048.5; jd += 97.37) {
        double trueObl = 0, dpsi = 0, deps = 0, refPsi = 0, refEps = 0;
        Calc_Nutation(jd / 36525.0, trueObl, dpsi, deps);
        eraNut80(kJ2000JD, jd, &refPsi, &refEps);
        psi = std::max(psi, std::fabs(dpsi - refPsi) / kArcsec);
        eps = std::max(eps, std::fabs(deps - refEps) / kArcsec);
        obl = std::max(obl, std::fabs(trueObl - deps - eraObl80(kJ2000JD, jd)) / kArcsec);
        const EarthFrame e = Calc_EarthFrame(jd);
        const double ref = eraGmst82(kJ2000JD, jd) + eraEqeq94(kJ2000JD, e.TT * 36525.0);
        gast = std::max(gast, std::fabs(Fold(e.GAST - ref)) / kTwoPi * 86400.0);
    }
    std::printf(
        "over 1800..2200: max |dpsi - eraNut80| %.4f\", |deps - eraNut80| %.4f\", "
        "|eps0 - eraObl80| %.4f\", |GAST - (eraGmst82 + eraEqeq94)| %.5f s of time\n",
        psi, eps, obl, gast);
    EXPECT_LT(psi, 0.015);
    EXPECT_LT(eps, 0.015);
    EXPECT_LT(obl, 0.015);
    EXPECT_LT(gast, 0.005);
}

TEST(EarthFrame, MeanSiderealTimeKeepsItsOwnSquareCoefficient) {
    // The t^2 term is 0.0003887933 degrees, not the published 0.000387933: against the
    // IAU 1982 expression the mean sidereal time parts by 8.603e-7 degrees x t^2.
    for (const double t : {-10.0, -5.0, -2.0, 2.0, 5.0, 10.0}) {
        const double d = t * 36525.0;
        const double diff = Fold(Mean_Sidereal_Time(d, t) - eraGmst82(kJ2000JD, d));
        EXPECT_NEAR(diff / kArcsec, 8.603e-7 * t * t / 57.2957795130823 / kArcsec, 0.01) << t;
    }
}

}  // namespace
}  // namespace kelmoran
