// Evaluation of the built-in long-series tables. The tables are written by
// tools/long_series (VSOP87 version D, Bretagnon and Francou 1988; ELP/MPP02, Chapront and
// Francou 2002, both as published in the npm package astronomia 4.2.0) and tools/pluto
// (a Chebyshev fit to the Swiss Ephemeris files) and tools/vsop_corrections (Chebyshev fits
// of the planets' series to the same files); their layouts are described there.
#include "ephemeris/Series_Tables.h"

#include <cmath>
#include <cstring>
#include <numbers>

#include "Embedded_Data.h"

namespace kelmoran {

uint64_t TableReader::Bytes(std::size_t n) {
    if (failed_ || Remaining() < n) {
        failed_ = true;
        return 0;
    }
    uint64_t v = 0;
    for (std::size_t i = n; i-- > 0;) v = (v << 8) | bytes_[at_ + i];
    at_ += n;
    return v;
}

uint32_t TableReader::U32() {
    return static_cast<uint32_t>(Bytes(4));
}

double TableReader::F64() {
    const uint64_t v = Bytes(8);
    double d;
    std::memcpy(&d, &v, sizeof d);
    return d;
}

namespace {

// Reads `counts` runs of terms of `width` doubles each into contiguous storage; on a short
// table every run is left empty.
template <std::size_t N>
void Read_Runs(TableReader& in, const uint32_t* counts, std::size_t width,
               std::vector<double>& terms, std::array<uint32_t, N>& start) {
    std::size_t total = 0;
    for (std::size_t p = 0; p + 1 < N; ++p) total += counts[p];
    if (in.Failed() || in.Remaining() < total * width * 8) {
        terms.clear();
        start.fill(0);
        return;
    }
    terms.resize(total * width);
    for (double& x : terms) x = in.F64();
    start[0] = 0;
    for (std::size_t p = 0; p + 1 < N; ++p) start[p + 1] = start[p] + counts[p];
}

// The terms of `from` whose |amplitude| times span^p reaches `bound` (p the series).
template <std::size_t N>
void Keep_Large(const std::vector<double>& from, const std::array<uint32_t, N>& fromStart,
                std::size_t width, double span, double bound, std::vector<double>& terms,
                std::array<uint32_t, N>& start) {
    terms.clear();
    start[0] = 0;
    double scale = 1.0;
    for (std::size_t p = 0; p + 1 < N; ++p) {
        for (uint32_t i = fromStart[p]; i < fromStart[p + 1]; ++i) {
            const double* term = &from[i * width];
            if (std::fabs(term[0]) * scale >= bound) terms.insert(terms.end(), term, term + width);
        }
        start[p + 1] = static_cast<uint32_t>(terms.size() / width);
        scale *= span;
    }
}

// Full-precision 2π, as the long series use (not the 15-figure value of Units.h).
constexpr double kFullTwoPi = 2.0 * std::numbers::pi;
constexpr double kArcsecond = std::numbers::pi / 648000.0;

}  // namespace

// ---- VSOP87 ----

double VsopCoordinate::Evaluate(double tau) const {
    double result = 0.0;
    for (int p = 5; p >= 0; --p) {
        double sum = 0.0;
        const double* term = terms.data() + 3 * static_cast<std::size_t>(start[p]);
        const double* end = terms.data() + 3 * static_cast<std::size_t>(start[p + 1]);
        for (; term != end; term += 3) sum += term[0] * std::cos(term[1] + term[2] * tau);
        result = result * tau + sum;
    }
    return result;
}

VsopBody VsopBody::Load(std::string_view blobName) {
    TableReader in(Embedded_Data(blobName));
    uint32_t counts[18];
    for (uint32_t& c : counts) c = in.U32();
    VsopBody body;
    for (int k = 0; k < 3; ++k)
        Read_Runs(in, counts + 6 * k, 3, body.lbr[k].terms, body.lbr[k].start);
    return body;
}

VsopBody VsopBody::Truncated(double span, double angle, double radius) const {
    VsopBody cut;
    for (int k = 0; k < 3; ++k) {
        Keep_Large(lbr[k].terms, lbr[k].start, 3, span, k == 2 ? radius : angle, cut.lbr[k].terms,
                   cut.lbr[k].start);
    }
    return cut;
}

void VsopBody::Evaluate(double tau, double& L, double& B, double& R) const {
    L = lbr[0].Evaluate(tau);
    L -= kFullTwoPi * std::floor(L / kFullTwoPi);
    B = lbr[1].Evaluate(tau);
    R = lbr[2].Evaluate(tau);
}

// ---- ELP/MPP02 ----

double ElpCoordinate::Evaluate(double T) const {
    double result = 0.0;
    for (int p = 3; p >= 0; --p) {
        double sum = 0.0;
        const double* term = terms.data() + 6 * static_cast<std::size_t>(start[p]);
        const double* end = terms.data() + 6 * static_cast<std::size_t>(start[p + 1]);
        for (; term != end; term += 6) {
            const double phase =
                term[1] + T * (term[2] + T * (term[3] + T * (term[4] + T * term[5])));
            sum += term[0] * std::sin(phase);
        }
        result = result * T + sum;
    }
    return result;
}

ElpMoon ElpMoon::Load() {
    TableReader in(Embedded_Data("elpmpp02"));
    ElpMoon moon;
    for (double& w : moon.W1) w = in.F64();
    uint32_t counts[12];
    for (uint32_t& c : counts) c = in.U32();
    for (int k = 0; k < 3; ++k)
        Read_Runs(in, counts + 4 * k, 6, moon.vur[k].terms, moon.vur[k].start);
    return moon;
}

ElpMoon ElpMoon::Truncated(double span, double angle, double km) const {
    ElpMoon cut;
    cut.W1 = W1;
    for (int k = 0; k < 3; ++k) {
        Keep_Large(vur[k].terms, vur[k].start, 6, span, k == 2 ? km : angle, cut.vur[k].terms,
                   cut.vur[k].start);
    }
    return cut;
}

void ElpMoon::Evaluate(double T, double& V, double& U, double& r) const {
    V = W1[0] + T * (W1[1] + T * (W1[2] + T * (W1[3] + T * W1[4]))) +
        vur[0].Evaluate(T) * kArcsecond;
    U = vur[1].Evaluate(T) * kArcsecond;
    r = vur[2].Evaluate(T);
}

// ---- Chebyshev table ----

ChebyshevTable ChebyshevTable::Load(std::string_view blobName) {
    TableReader in(Embedded_Data(blobName));
    ChebyshevTable table;
    table.tau0 = in.F64();
    table.span = in.F64();
    const uint32_t count = in.U32();
    const uint32_t order = in.U32();
    const std::size_t total = static_cast<std::size_t>(count) * order * 3;
    if (in.Failed() || count == 0 || order == 0 || order > 64 || !(table.span > 0.0) ||
        !std::isfinite(table.tau0) || in.Remaining() < total * 8) {
        return ChebyshevTable{};
    }
    table.count = count;
    table.order = order;
    table.coefficients.resize(total);
    for (double& c : table.coefficients) c = in.F64();
    return table;
}

void ChebyshevTable::Evaluate_Within(double tau, double& x, double& y, double& z) const {
    if (tau >= tau0 && tau <= tau0 + span * count) {
        Evaluate(tau, x, y, z);
    } else {
        x = y = z = 0.0;
    }
}

void ChebyshevTable::Evaluate(double tau, double& x, double& y, double& z) const {
    x = y = z = 0.0;
    if (count == 0) return;
    const double end = tau0 + span * count;
    if (!(tau >= tau0)) tau = tau0;  // also NaN
    if (tau > end) tau = end;
    double segment = std::floor((tau - tau0) / span);
    if (segment > count - 1.0) segment = count - 1.0;
    if (segment < 0.0) segment = 0.0;
    const std::size_t i = static_cast<std::size_t>(segment);
    double s = 2.0 * (tau - (tau0 + span * segment)) / span - 1.0;
    if (s < -1.0) s = -1.0;
    if (s > 1.0) s = 1.0;
    const double* c = coefficients.data() + i * order * 3;
    double* out[3] = {&x, &y, &z};
    for (int axis = 0; axis < 3; ++axis, c += order) {
        // Clenshaw's recurrence for the sum of c_k T_k(s).
        double b1 = 0.0, b2 = 0.0;
        for (uint32_t k = order - 1; k >= 1; --k) {
            const double b0 = 2.0 * s * b1 - b2 + c[k];
            b2 = b1;
            b1 = b0;
        }
        *out[axis] = c[0] + s * b1 - b2;
    }
}

}  // namespace kelmoran
