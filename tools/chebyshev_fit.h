/* Chebyshev segments shared by the table generators in tools/pluto and
 * tools/vsop_corrections: the fit of one segment at the Chebyshev nodes, its evaluation
 * (Clenshaw) and the little-endian writers of the table layout
 *   float64 tau0, float64 span, uint32 count, uint32 order, then per segment the order
 *   coefficients of each of the three coordinates (float64).
 * A segment covers tau = start .. start + span; s = 2 (tau - start) / span - 1. */
#ifndef KELMORAN_TOOLS_CHEBYSHEV_FIT_H
#define KELMORAN_TOOLS_CHEBYSHEV_FIT_H

#include <math.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

enum { kChebMaxOrder = 24 };

/* Three coordinates at tau, as the generator defines them. */
typedef void (*cheb_sample_fn)(double tau, double out[3], const void* context);

/* sum of c_k T_k(s), k = 0 .. order - 1 (Clenshaw). */
static double cheb(const double* c, int order, double s) {
    double b1 = 0, b2 = 0;
    for (int k = order - 1; k >= 1; --k) {
        double b0 = 2 * s * b1 - b2 + c[k];
        b2 = b1;
        b1 = b0;
    }
    return c[0] + s * b1 - b2;
}

/* Coefficients of the three coordinates over one segment, from their values at the
 * order Chebyshev nodes. */
static void cheb_fit_segment(cheb_sample_fn at, const void* context, double start, double span,
                             int order, double c[3][kChebMaxOrder]) {
    double values[kChebMaxOrder][3];
    for (int j = 0; j < order; ++j) {
        double s = cos(M_PI * (j + 0.5) / order);
        at(start + (s + 1) * span / 2, values[j], context);
    }
    for (int axis = 0; axis < 3; ++axis) {
        for (int k = 0; k < order; ++k) {
            double sum = 0;
            for (int j = 0; j < order; ++j)
                sum += values[j][axis] * cos(M_PI * k * (j + 0.5) / order);
            c[axis][k] = (k == 0 ? 1.0 : 2.0) * sum / order;
        }
    }
}

static void put_u32(FILE* f, uint32_t v) {
    unsigned char b[4] = {v & 255, (v >> 8) & 255, (v >> 16) & 255, v >> 24};
    fwrite(b, 1, 4, f);
}

static void put_f64(FILE* f, double d) {
    uint64_t v;
    memcpy(&v, &d, 8);
    unsigned char b[8];
    for (int i = 0; i < 8; ++i) b[i] = (unsigned char)(v >> (8 * i));
    fwrite(b, 1, 8, f);
}

static void cheb_put_header(FILE* f, double tau0, double span, uint32_t count, int order) {
    put_f64(f, tau0);
    put_f64(f, span);
    put_u32(f, count);
    put_u32(f, (uint32_t)order);
}

static void cheb_put_segment(FILE* f, const double c[3][kChebMaxOrder], int order) {
    for (int axis = 0; axis < 3; ++axis)
        for (int k = 0; k < order; ++k) put_f64(f, c[axis][k]);
}

#endif
