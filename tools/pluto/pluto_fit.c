/* Fits Chebyshev segments to Pluto's heliocentric geometric place, rectangular ecliptic
 * and equinox of J2000.0, from the Swiss Ephemeris files (Pluto is in the sepl*.se1
 * planetary files, which reach years -13200 to 17190), and writes the table.
 *
 * Usage: pluto_fit <ephemeris folder> <output file> [check]
 *
 * Layout of the table (little-endian):
 *   float64 tau0   start of the first segment, Julian millennia of TT from J2000.0
 *   float64 span   length of each segment, millennia
 *   uint32  count  number of segments
 *   uint32  order  Chebyshev coefficients a coordinate
 *   then, segment after segment, order coefficients of x, of y, of z (float64, AU):
 *   coordinate = sum c_k T_k(s), s = 2 (tau - start) / span - 1.
 * With "check" it also prints the largest fit error found between the nodes (arcseconds
 * as seen from the Sun, and AU in distance). */
#include <stdlib.h>
#include <swephexp.h>

#include "../chebyshev_fit.h"

enum { kOrder = 14 };
static const double kTau0 = -12.2;   /* about 10200 BC */
static const double kSpan = 0.016;   /* 16 years */
static const uint32_t kCount = 1275; /* to about AD 10200 */

static void pluto_at(double tau, double xyz[3], const void* context) {
    (void)context;
    double r[6];
    char err[AS_MAXCH];
    int32 flags = SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_J2000 | SEFLG_NONUT | SEFLG_TRUEPOS |
                  SEFLG_NOABERR | SEFLG_NOGDEFL | SEFLG_XYZ;
    int32 got = swe_calc(2451545.0 + tau * 365250.0, SE_PLUTO, flags, r, err);
    if (got < 0 || !(got & SEFLG_SWIEPH)) {
        fprintf(stderr, "pluto_fit: no ephemeris file for tau %.6f: %s\n", tau, err);
        exit(1);
    }
    memcpy(xyz, r, 3 * sizeof(double));
}

int main(int argc, char** argv) {
    if (argc < 3) {
        fprintf(stderr, "usage: pluto_fit <ephemeris folder> <output> [check]\n");
        return 2;
    }
    int check = argc > 3 && strcmp(argv[3], "check") == 0;
    swe_set_ephe_path(argv[1]);
    FILE* out = fopen(argv[2], "wb");
    if (!out) {
        perror(argv[2]);
        return 1;
    }
    cheb_put_header(out, kTau0, kSpan, kCount, kOrder);
    double worst_angle = 0, worst_dist = 0;
    for (uint32_t seg = 0; seg < kCount; ++seg) {
        double start = kTau0 + seg * kSpan;
        double c[3][kChebMaxOrder];
        cheb_fit_segment(pluto_at, NULL, start, kSpan, kOrder, c);
        cheb_put_segment(out, c, kOrder);
        if (check) {
            for (int j = 0; j <= 8; ++j) {
                double s = -1 + j * 0.25 + 0.0625 * (j < 8);
                double truth[3], fit[3];
                pluto_at(start + (s + 1) * kSpan / 2, truth, NULL);
                double d2 = 0, r2 = 0;
                for (int axis = 0; axis < 3; ++axis) {
                    fit[axis] = cheb(c[axis], kOrder, s);
                    d2 += (fit[axis] - truth[axis]) * (fit[axis] - truth[axis]);
                    r2 += truth[axis] * truth[axis];
                }
                double angle = sqrt(d2 / r2) * 206264.806;
                if (angle > worst_angle) worst_angle = angle;
                if (sqrt(d2) > worst_dist) worst_dist = sqrt(d2);
            }
        }
    }
    if (fclose(out) != 0) {
        perror(argv[2]);
        return 1;
    }
    if (check) printf("largest fit error: %.4f arcsec, %.3g AU\n", worst_angle, worst_dist);
    swe_close();
    return 0;
}
