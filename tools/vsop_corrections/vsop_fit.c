/* Fits Chebyshev segments to the difference between a planet's place by the full VSOP87
 * version D series (our table data/vsop87d_<planet>.bin) and its place by the Swiss
 * Ephemeris files (Debian swe-data, a compression of JPL's long integration), both
 * heliocentric, geometric, ecliptic and equinox of date with Laskar's 1986 precession (the
 * precession to which VSOP87 version D is referred), and writes the table of corrections.
 * Added to the series, they hold it to the integration far outside the span on which it
 * was fitted: VSOP87 is within 1" of it for a few centuries about J2000.0, but 50" to
 * 100" out for Jupiter to Neptune by 2000 BC and degrees out for Jupiter and Saturn by
 * 10000 BC. Outside a table's years the program adds no correction.
 *
 * Usage: vsop_fit <ephemeris folder> <data folder> <planet> [check]
 *
 * Layout of data/vsop87d_<planet>_corrections.bin (little-endian), that of pluto.bin:
 *   float64 tau0   start of the first segment, Julian millennia of TT from J2000.0
 *   float64 span   length of each segment, millennia
 *   uint32  count  number of segments
 *   uint32  order  Chebyshev coefficients a coordinate
 *   then, segment after segment, order coefficients of dL, of dB (radians), of dR (AU):
 *   correction = sum c_k T_k(s), s = 2 (tau - start) / span - 1.
 * With "check" it prints the largest fit error between the nodes (arcseconds as seen
 * from the Sun in longitude and latitude, and relative in distance). */
#include <stdlib.h>
#include <swephexp.h>

#include "../chebyshev_fit.h"

/* Per planet: the years covered (as tau, in whole segments), the segment length
 * (millennia) and the order. The giant planets' tables reach years -10000 to 10000, all
 * the program offers. Mars's errors far from the present are of short period and would
 * take a table five times as long; its table covers 4000 BC to AD 6000, at whose ends the
 * series alone is 14" out (12' by 10000 BC). */
struct Planet {
    const char* name;
    int swe;
    double tau0, tauEnd, span;
    int order;
};
static const struct Planet kPlanets[] = {
    {"mars", SE_MARS, -6.0, 4.0, 0.004, 12},        {"jupiter", SE_JUPITER, -12.0, 8.0, 0.008, 12},
    {"saturn", SE_SATURN, -12.0, 8.0, 0.016, 12},   {"uranus", SE_URANUS, -12.0, 8.0, 0.032, 12},
    {"neptune", SE_NEPTUNE, -12.0, 8.0, 0.032, 12},
};

static uint32_t counts[18];
static double* terms;

static int load_vsop(const char* path) {
    FILE* f = fopen(path, "rb");
    if (!f) return 0;
    unsigned char b[8];
    for (int i = 0; i < 18; ++i) {
        if (fread(b, 1, 4, f) != 4) return 0;
        counts[i] = b[0] | b[1] << 8 | b[2] << 16 | (uint32_t)b[3] << 24;
    }
    size_t total = 0;
    for (int i = 0; i < 18; ++i) total += counts[i];
    terms = malloc(total * 3 * sizeof(double));
    for (size_t i = 0; i < total * 3; ++i) {
        if (fread(b, 1, 8, f) != 8) return 0;
        uint64_t v = 0;
        for (int k = 7; k >= 0; --k) v = v << 8 | b[k];
        memcpy(&terms[i], &v, 8);
    }
    fclose(f);
    return 1;
}

/* L (not reduced), B, R by the full series, as the program sums them. */
static void vsop_at(double tau, double lbr[3]) {
    const double* t = terms;
    for (int k = 0; k < 3; ++k) {
        double result = 0;
        const double* first[6];
        for (int p = 0; p < 6; ++p) {
            first[p] = t;
            t += 3 * counts[6 * k + p];
        }
        for (int p = 5; p >= 0; --p) {
            double sum = 0;
            for (uint32_t i = 0; i < counts[6 * k + p]; ++i)
                sum += first[p][3 * i] * cos(first[p][3 * i + 1] + first[p][3 * i + 2] * tau);
            result = result * tau + sum;
        }
        lbr[k] = result;
    }
}

static void difference_at(double tau, double d[3], const void* context) {
    const int swe = *(const int*)context;
    double r[6], lbr[3];
    char err[AS_MAXCH];
    int32 flags =
        SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_NONUT | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL;
    int32 got = swe_calc(2451545.0 + tau * 365250.0, swe, flags, r, err);
    if (got < 0 || !(got & SEFLG_SWIEPH)) {
        fprintf(stderr, "vsop_fit: no ephemeris file for tau %.6f: %s\n", tau, err);
        exit(1);
    }
    vsop_at(tau, lbr);
    d[0] = remainder(r[0] * M_PI / 180.0 - lbr[0], 2 * M_PI);
    d[1] = r[1] * M_PI / 180.0 - lbr[1];
    d[2] = r[2] - lbr[2];
}

int main(int argc, char** argv) {
    if (argc < 4) {
        fprintf(stderr, "usage: vsop_fit <ephemeris folder> <data folder> <planet> [check]\n");
        return 2;
    }
    const struct Planet* planet = NULL;
    for (size_t i = 0; i < sizeof kPlanets / sizeof kPlanets[0]; ++i)
        if (strcmp(kPlanets[i].name, argv[3]) == 0) planet = &kPlanets[i];
    if (!planet) {
        fprintf(stderr, "vsop_fit: no corrections for %s\n", argv[3]);
        return 2;
    }
    int check = argc > 4 && strcmp(argv[4], "check") == 0;
    char path[4096];
    snprintf(path, sizeof path, "%s/vsop87d_%s.bin", argv[2], planet->name);
    if (!load_vsop(path)) {
        fprintf(stderr, "vsop_fit: cannot read %s\n", path);
        return 1;
    }
    swe_set_ephe_path(argv[1]);
    /* Laskar's 1986 precession in both the long and the short term. */
    swe_set_astro_models("0,2,2,0,0,0,0,0", 0);
    snprintf(path, sizeof path, "%s/vsop87d_%s_corrections.bin", argv[2], planet->name);
    FILE* out = fopen(path, "wb");
    if (!out) {
        perror(path);
        return 1;
    }
    const int order = planet->order;
    const double span = planet->span;
    const double tau0 = planet->tau0;
    const uint32_t count = (uint32_t)lround((planet->tauEnd - tau0) / span);
    cheb_put_header(out, tau0, span, count, order);
    double worst[3] = {0, 0, 0}, near[3] = {0, 0, 0};
    for (uint32_t seg = 0; seg < count; ++seg) {
        double start = tau0 + seg * span;
        double c[3][kChebMaxOrder];
        cheb_fit_segment(difference_at, &planet->swe, start, span, order, c);
        cheb_put_segment(out, c, order);
        if (check) {
            for (int j = 0; j < 8; ++j) {
                double s = -1 + j * 0.25 + 0.0625;
                double truth[3];
                double tau = start + (s + 1) * span / 2;
                difference_at(tau, truth, &planet->swe);
                double lbr[3];
                vsop_at(tau, lbr);
                for (int axis = 0; axis < 3; ++axis) {
                    double e = fabs(cheb(c[axis], order, s) - truth[axis]);
                    if (axis == 0) e *= cos(lbr[1]);
                    e *= axis < 2 ? 206264.806 : 1.0 / lbr[2];
                    if (e > worst[axis]) worst[axis] = e;
                    if (tau >= -4.0 && tau <= 1.0 && e > near[axis]) near[axis] = e;
                }
            }
        }
    }
    if (fclose(out) != 0) {
        perror(path);
        return 1;
    }
    if (check)
        printf(
            "%s: largest fit error %.4f arcsec in longitude, %.4f in latitude, %.2g in "
            "distance (years -2000 to 3000: %.4f, %.4f, %.2g)\n",
            planet->name, worst[0], worst[1], worst[2], near[0], near[1], near[2]);
    swe_close();
    return 0;
}
