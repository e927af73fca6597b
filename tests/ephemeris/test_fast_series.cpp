// The fast routes (the Earth's head, the planets' short series, the Moon's distance series)
// against the Swiss Ephemeris and the full series.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Series_Tables.h"
#include "ephemeris/Sun.h"
#include "swe_reference.h"

namespace kelmoran {
namespace {

using testing_support::Arcsec_Diff;
using testing_support::kJ2000JD;
using testing_support::Largest;
using testing_support::Swe_Place;

// Days of TT from J2000.0: years 1800 .. 2200 and -2000 .. 3000.
constexpr double kFrom1800 = -200.0 * 365.25, kTo2200 = 200.0 * 365.25;
constexpr double kFromM2000 = -4000.0 * 365.25, kTo3000 = 1000.0 * 365.25;

// Largest difference of the Sun's fast apparent longitude from the reference (days of TT).
double Worst_Sun_Fast(double from, double to, double step, double maxRadiusAU) {
    Largest worst;
    for (double d = from; d <= to; d += step) {
        double lon = d / 36525.0, lat = 0, dist = 0, ref[3];
        Calc_Sun_Fast(lon, lat, dist);
        EXPECT_TRUE(Swe_Place(d + kJ2000JD, SE_SUN, SEFLG_NONUT, ref));
        worst(Arcsec_Diff(lon, ref[0]));
        EXPECT_LT(std::fabs(lat), 0.0554 / 206264.806);  // the FK5 step only
        EXPECT_NEAR(dist, ref[2], maxRadiusAU) << d;
    }
    return worst.value;
}

TEST(SunFast, AgainstTheSwissEphemeris) {
    const double near = Worst_Sun_Fast(kFrom1800, kTo2200, 367.3, 1e-4);
    const double far = Worst_Sun_Fast(kFromM2000, kTo3000, 6151.7, 1e-3);
    std::printf("Sun fast longitude: max %.1f\" 1800-2200, %.1f\" -2000..3000\n", near, far);
    // The five terms leave out L0's third term (72") and smaller ones.
    EXPECT_LT(near, 120.0);
    EXPECT_LT(far, 2400.0);
}

struct Worst {
    Largest L, B, R;
};

// Largest differences of a planet's fast L, B (arcseconds) and R (AU) from the reference.
Worst Worst_Planet_Fast(int body, int swe, double from, double to, double step) {
    Worst w;
    for (double d = from; d <= to; d += step) {
        const double tau = d / 365250.0;
        double L = 0, B = 0, R = 0, ref[3];
        Planet_Fast(body, tau, L, B, R);
        EXPECT_EQ(R, Planet_R_Fast(body, tau));
        EXPECT_TRUE(Swe_Place(d + kJ2000JD, swe, SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NONUT, ref));
        w.L(Arcsec_Diff(L, ref[0]));
        w.B(Arcsec_Diff(B, ref[1]));
        w.R(R - ref[2]);
    }
    return w;
}

TEST(PlanetFast, HeliocentricPlacesAgainstTheSwissEphemeris) {
    // Bounds (1800 .. 2200) from the amplitudes of the terms each series leaves out; far
    // from J2000 the missing powers of tau take over, and only the order of size is held.
    struct Case {
        int body, swe;
        const char* name;
        double nearL, nearB, nearR, farL;
    };
    const Case cases[] = {
        {body::Mercury, SE_MERCURY, "Mercury", 60, 40, 1.2e-4, 1000},
        {body::Venus, SE_VENUS, "Venus", 40, 200, 1.5e-4, 2400},
        {body::Mars, SE_MARS, "Mars", 450, 25, 4e-4, 5000},
        {body::Jupiter, SE_JUPITER, "Jupiter", 1500, 60, 3e-3, 4300},
        {body::Saturn, SE_SATURN, "Saturn", 260, 420, 3e-3, 12000},
        {body::Neptune, SE_NEPTUNE, "Neptune", 500, 220, 1.6e-3, 2700},
        {body::Uranus, SE_URANUS, "Uranus", 600, 400, 4.5e-3, 2700},
    };
    for (const Case& c : cases) {
        const Worst near = Worst_Planet_Fast(c.body, c.swe, kFrom1800, kTo2200, 211.3);
        const Worst far = Worst_Planet_Fast(c.body, c.swe, kFromM2000, kTo3000, 4391.3);
        std::printf(
            "%-8s fast series 1800-2200: L %5.0f\"  B %4.0f\"  R %.5f AU;"
            "  -2000..3000: L %5.0f\"  B %4.0f\"  R %.5f AU\n",
            c.name, near.L.value, near.B.value, near.R.value, far.L.value, far.B.value,
            far.R.value);
        EXPECT_LT(near.L.value, c.nearL) << c.name;
        EXPECT_LT(near.B.value, c.nearB) << c.name;
        EXPECT_LT(near.R.value, c.nearR) << c.name;
        EXPECT_LT(far.L.value, c.farL) << c.name;
    }
}

TEST(PlanetFast, NamedRoutinesServeTheirOwnPlanets) {
    using Fast = void (*)(double, double&, double&, double&);
    using RFast = double (*)(double);
    const Fast fast[] = {Mercury_Fast, Venus_Fast,   Mars_Fast,  Jupiter_Fast,
                         Saturn_Fast,  Neptune_Fast, Uranus_Fast};
    const RFast rFast[] = {Mercury_R_Fast, Venus_R_Fast,   Mars_R_Fast,  Jupiter_R_Fast,
                           Saturn_R_Fast,  Neptune_R_Fast, Uranus_R_Fast};
    for (int i = 0; i < 7; ++i) {
        double L1 = 0, B1 = 0, R1 = 0, L2 = 0, B2 = 0, R2 = 0;
        fast[i](0.123, L1, B1, R1);
        Planet_Fast(body::Mercury + i, 0.123, L2, B2, R2);
        EXPECT_TRUE(L1 == L2 && B1 == B2 && R1 == R2 && rFast[i](0.123) == R2) << i;
    }
    // Any number outside 4 .. 10 reads as Mercury.
    EXPECT_EQ(Planet_R_Fast(99, 0.01), Mercury_R_Fast(0.01));
}

// Sum of the `count` largest terms (by |A|) of series p of a coordinate of the full
// VSOP87 table, times tau^p: what a fast series that keeps those terms must give.
double Largest_Terms(const VsopCoordinate& c, int p, int count, double tau) {
    std::vector<const double*> terms;
    for (uint32_t i = c.start[p]; i < c.start[p + 1]; ++i) terms.push_back(&c.terms[3 * i]);
    std::stable_sort(terms.begin(), terms.end(), [](const double* a, const double* b) {
        return std::fabs(a[0]) > std::fabs(b[0]);
    });
    double sum = 0.0;
    for (int i = 0; i < count && i < static_cast<int>(terms.size()); ++i)
        sum += terms[i][0] * std::cos(terms[i][1] + terms[i][2] * tau);
    return sum * std::pow(tau, p);
}

TEST(PlanetFast, EachSeriesKeepsItsLargestPublishedTerms) {
    // Terms kept in L0, L1, L2, B0, B1, R0, R1 (a constant term counted among them): a
    // mistyped, missing or extra term shows against the largest terms of the full series.
    struct Case {
        int body;
        const char* table;
        int counts[7];
    };
    const Case cases[] = {
        {body::Mercury, "vsop87d_mercury", {6, 5, 1, 6, 3, 5, 2}},
        {body::Venus, "vsop87d_venus", {3, 2, 0, 1, 1, 2, 0}},
        {body::Mars, "vsop87d_mars", {3, 3, 0, 4, 1, 4, 3}},
        {body::Jupiter, "vsop87d_jupiter", {3, 3, 0, 3, 1, 6, 1}},
        {body::Saturn, "vsop87d_saturn", {7, 5, 0, 3, 0, 10, 7}},
        {body::Neptune, "vsop87d_neptune", {3, 1, 0, 1, 1, 11, 1}},
        {body::Uranus, "vsop87d_uranus", {5, 2, 0, 1, 1, 12, 1}},
    };
    for (const Case& c : cases) {
        const VsopBody full = VsopBody::Load(c.table);
        ASSERT_GT(full.Count(), 1000u) << c.table;
        for (double tau = -0.9; tau < 0.9; tau += 0.0731) {
            double L = 0, B = 0, R = 0;
            Planet_Fast(c.body, tau, L, B, R);
            double l = 0, b = 0, r = 0;
            for (int p = 0; p < 3; ++p) l += Largest_Terms(full.lbr[0], p, c.counts[p], tau);
            for (int p = 0; p < 2; ++p) b += Largest_Terms(full.lbr[1], p, c.counts[3 + p], tau);
            for (int p = 0; p < 2; ++p) r += Largest_Terms(full.lbr[2], p, c.counts[5 + p], tau);
            EXPECT_NEAR(L, Reduce_2Pi(l), 1e-11) << c.table << " " << tau;
            EXPECT_NEAR(B, b, 1e-12) << c.table << " " << tau;
            EXPECT_NEAR(R, r, 1e-12) << c.table << " " << tau;
        }
    }
    // The Earth's head: two terms of L0 and of L1, three of R0, one of R1, no latitude;
    // far from the present the polynomials run on and L stays in 0 .. 2π.
    const VsopBody earth = VsopBody::Load("vsop87d_earth");
    for (double tau = -1.2; tau < 1.2; tau += 0.0137) {
        double L = 0, B = 1, R = 0;
        Earth_Fast(tau, L, B, R);
        ASSERT_TRUE(L >= 0.0 && L < 6.28318530717959 && B == 0.0) << tau;
        const double l =
            Largest_Terms(earth.lbr[0], 0, 2, tau) + Largest_Terms(earth.lbr[0], 1, 2, tau);
        const double r =
            Largest_Terms(earth.lbr[2], 0, 3, tau) + Largest_Terms(earth.lbr[2], 1, 1, tau);
        EXPECT_NEAR(L, Reduce_2Pi(l), 1e-11) << tau;
        EXPECT_NEAR(R, r, 1e-12) << tau;
    }
}

TEST(MoonDistance, AgainstTheSwissEphemeris) {
    Largest near, far;
    for (double d = kFromM2000; d <= kTo3000; d += 731.37) {
        double ref[3];
        ASSERT_TRUE(Swe_Place(d + kJ2000JD, SE_MOON, SEFLG_TRUEPOS | SEFLG_NONUT, ref));
        const double diff = Moon_Distance(d / 36525.0) - ref[2] * 149597870.7;
        far(diff);
        if (d >= kFrom1800 && d <= kTo2200) near(diff);
    }
    std::printf("Moon distance: max %.1f km 1800-2200, %.1f km -2000..3000\n", near.value,
                far.value);
    EXPECT_LT(near.value, 120.0);
    EXPECT_LT(far.value, 400.0);
}

}  // namespace
}  // namespace kelmoran
