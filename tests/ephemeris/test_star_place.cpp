// Apparent places of stars against a rigorous reduction by ERFA (IAU 1976/1980).
#include <erfa.h>
#include <erfam.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "ephemeris/Star_Place.h"

namespace kelmoran {
namespace {

constexpr double kArcsec = 1.0 / 206264.806247096;
constexpr double kPi = 3.14159265358979323846;
constexpr double kYear = 365.25;

// Apparent RA, Dec of date of a J2000.0 direction, `jd` (days from J2000.0) taken as TT.
void Rigorous(double ra0, double dec0, double jd, double& ra, double& dec) {
    double p[3];
    eraS2c(ra0, dec0, p);
    double pvh[2][3], pvb[2][3];
    eraEpv00(ERFA_DJ00, jd, pvh, pvb);
    double v[3], ab[3], rnpb[3][3], q[3];
    eraSxp(ERFA_AULT / ERFA_DAYSEC, pvb[1], v);
    eraAb(p, v, eraPm(pvh[0]), std::sqrt(1.0 - eraPm(v) * eraPm(v)), ab);
    eraPnm80(ERFA_DJ00, jd, rnpb);
    eraRxp(rnpb, ab, q);
    eraC2s(q, &ra, &dec);
    ra = eraAnp(ra);
}

double Sep_Arcsec(double ra1, double dec1, double ra2, double dec2) {
    return eraSeps(ra1, dec1, ra2, dec2) / kArcsec;
}

TEST(StarPlace, AgreesWithARigorousReduction) {
    double worstNear = 0, worstFar = 0;
    int n = 0;
    for (double jd = -200 * kYear; jd <= 200 * kYear; jd += 1733.37) {
        for (double ra0 = 0.1; ra0 < 2 * kPi; ra0 += 0.83) {
            for (double dec0 = -1.45; dec0 < 1.5; dec0 += 0.41) {
                double ra = ra0, dec = dec0;
                Calc_Star_Place(0, ra, dec, jd);
                double rra = 0, rdec = 0;
                Rigorous(ra0, dec0, jd, rra, rdec);
                ASSERT_TRUE(ra >= 0.0 && ra < 2 * kPi + 1e-6) << ra;
                worstNear = std::max(worstNear, Sep_Arcsec(ra, dec, rra, rdec));
                ++n;
            }
        }
    }
    for (double jd = -4000 * kYear; jd <= 1000 * kYear; jd += 51234.5) {
        for (double ra0 = 0.3; ra0 < 2 * kPi; ra0 += 1.1) {
            double ra = ra0, dec = 0.4;
            Calc_Star_Place(0, ra, dec, jd);
            double rra = 0, rdec = 0;
            Rigorous(ra0, 0.4, jd, rra, rdec);
            worstFar = std::max(worstFar, Sep_Arcsec(ra, dec, rra, rdec));
        }
    }
    std::printf("Star place: max %.3f\" over %d places 1800-2200; %.1f\" -2000..3000\n", worstNear,
                n, worstFar);
    EXPECT_LT(worstNear, 0.25);
    EXPECT_LT(worstFar, 60.0);
}

TEST(StarPlace, PolesOfTheEclipticAndEquator) {
    // Stars a degree and 10" from the north and south poles of the ecliptic, and Polaris
    // and σ Octantis by the poles of the equator: tan δ is large, the places stay right.
    // Within a few seconds of arc of an ecliptic pole the aberration, being added to the
    // longitude, can be no better than its own size of 20".
    const double eclipticPole = 1.5707963267949 - 0.409092804222329;
    const double stars[][3] = {{1.5 * kPi, eclipticPole - 0.0175, 0.5},
                               {0.5 * kPi, -eclipticPole + 0.0175, 0.5},
                               {1.5 * kPi, eclipticPole - 5e-5, 20.0},
                               {0.5 * kPi, -eclipticPole + 5e-5, 20.0},
                               {0.6624, 1.55795, 0.5},
                               {5.5373, -1.55257, 0.5}};
    for (const auto& star : stars) {
        double ra = star[0], dec = star[1];
        Calc_Star_Place(0, ra, dec, 3652.5);
        double rra = 0, rdec = 0;
        Rigorous(star[0], star[1], 3652.5, rra, rdec);
        EXPECT_LT(Sep_Arcsec(ra, dec, rra, rdec), star[2]) << star[1];
    }
    // At the poles themselves the arithmetic may step past ±1 in a sine, which the total
    // arcsine turns into 0: the result is meaningless there, but finite and in range.
    const double poles[][2] = {{1.5 * kPi, eclipticPole},
                               {0.5 * kPi, -eclipticPole},
                               {0.0, 1.5707963267949},
                               {1.0, -1.5707963267949}};
    for (const auto& pole : poles) {
        double ra = pole[0], dec = pole[1];
        Calc_Star_Place(0, ra, dec, 3652.5);
        EXPECT_TRUE(ra >= 0.0 && ra <= 2 * kPi + 1e-6 && std::fabs(dec) <= 1.5707963267949)
            << ra << " " << dec;
    }
}

// A catalogue of two rows for the lookup: row 12 is Sirius (J2000.0 place and proper
// motion of the Hipparcos catalogue), row 13 a star without motion.
bool Test_Catalogue(int32_t index, StarMotion& star) {
    if (index == 12) {
        star = {1.7677943f, -0.2917516f, -2.6505e-06f, -5.9224e-06f};
        return true;
    }
    if (index == 13) {
        star = {4.0f, 0.5f, 0.0f, 0.0f};
        return true;
    }
    return false;
}

TEST(StarPlace, CatalogueRowsCarryTheirProperMotion) {
    Set_Star_Lookup(Test_Catalogue);
    const double jd = 9131.25;  // 2025 January 1
    double ra = -1, dec = -1;
    Calc_Star_Place(12, ra, dec, jd);
    double ra0 = static_cast<double>(1.7677943f) + static_cast<double>(-2.6505e-06f) * jd / kYear;
    double dec0 = static_cast<double>(-0.2917516f) + static_cast<double>(-5.9224e-06f) * jd / kYear;
    double rra = 0, rdec = 0;
    Rigorous(ra0, dec0, jd, rra, rdec);
    EXPECT_LT(Sep_Arcsec(ra, dec, rra, rdec), 0.25);
    // Sirius in 2025: RA 6h 46m, Dec -16° 45'.
    EXPECT_NEAR(ra * 12 / kPi, 6.0 + 46.2 / 60.0, 0.01);
    EXPECT_NEAR(dec * 180 / kPi, -(16.0 + 45.0 / 60.0), 0.02);
    // Index 0 takes the given place and leaves out proper motion.
    // A number the catalogue doesn't hold reads as a row of zeros.
    double places[4][2] = {{0, 0}, {4.0f, 0.5f}, {7, 7}, {0, 0}};
    Calc_Star_Place(13, places[0][0], places[0][1], jd);
    Calc_Star_Place(0, places[1][0], places[1][1], jd);
    Calc_Star_Place(999, places[2][0], places[2][1], jd);
    Calc_Star_Place(0, places[3][0], places[3][1], jd);
    EXPECT_TRUE(places[0][0] == places[1][0] && places[0][1] == places[1][1]);
    EXPECT_TRUE(places[2][0] == places[3][0] && places[2][1] == places[3][1]);
    Set_Star_Lookup(nullptr);
}

TEST(StarPlace, FrameIsWorkedOncePerMoment) {
    const double jd = 4321.0;
    double ra1 = 1.0, dec1 = 0.2;
    Calc_Star_Place(0, ra1, dec1, jd);
    EXPECT_EQ(Shared_Star_Frame().JD, jd);
    // Marking the shared record shows whether a second star at the same moment redoes it.
    Shared_Star_Frame().NutLong += 1e-4;
    double ra2 = 1.0, dec2 = 0.2;
    Calc_Star_Place(0, ra2, dec2, jd);
    EXPECT_GT(std::fabs(ra2 - ra1), 5e-5);
    // A new moment refreshes it; back at the first moment the place is the first one.
    double ra3 = 1.0, dec3 = 0.2;
    Calc_Star_Place(0, ra3, dec3, jd + 1.0);
    EXPECT_NE(Shared_Star_Frame().JD, jd);
    double ra4 = 1.0, dec4 = 0.2;
    Calc_Star_Place(0, ra4, dec4, jd);
    EXPECT_EQ(ra4, ra1);
    EXPECT_EQ(dec4, dec1);
}

}  // namespace
}  // namespace kelmoran
