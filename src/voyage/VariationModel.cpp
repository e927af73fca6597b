#include "voyage/VariationModel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "Embedded_Data.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "voyage/Plan_Text.h"

namespace kelmoran {

namespace {

// The WGS 84 ellipsoid and the geomagnetic reference radius of the WMM, kilometres.
constexpr double kA = 6378.137;
constexpr double kF = 1.0 / 298.257223563;
constexpr double kE2 = kF * (2.0 - kF);
constexpr double kRe = 6371.2;
constexpr double kDeg = 3.14159265358979323846 / 180.0;
constexpr int kMaxDegree = 12;
constexpr int kTerms = (kMaxDegree + 1) * (kMaxDegree + 2) / 2;

// Little-endian reader over the table; any read past the end sets `bad`.
struct Reader {
    std::span<const unsigned char> d;
    std::size_t at = 0;
    bool bad = false;

    template <typename T>
    T Get() {
        T v{};
        if (at + sizeof(T) > d.size()) {
            bad = true;
            return v;
        }
        std::memcpy(&v, d.data() + at, sizeof(T));
        at += sizeof(T);
        return v;
    }
};

// Schmidt semi-normalised associated Legendre functions P[n][m] of sin(φ') and their
// derivatives with respect to φ', by the recursions of the WMM technical report
// (Chulliat et al., NOAA NCEI, 2025, eqs. 12 and 13, as in its MAG_PcupLow).
void Legendre(double x, double z, int nMax, std::array<double, kTerms>& p,
              std::array<double, kTerms>& dp) {
    p[0] = 1.0;
    dp[0] = 0.0;
    for (int n = 1; n <= nMax; ++n) {
        for (int m = 0; m <= n; ++m) {
            const int i = n * (n + 1) / 2 + m;
            if (n == m) {
                const int i1 = (n - 1) * n / 2 + m - 1;
                p[i] = z * p[i1];
                dp[i] = z * dp[i1] + x * p[i1];
            } else if (n == 1 && m == 0) {
                p[i] = x * p[0];
                dp[i] = x * dp[0] - z * p[0];
            } else {
                const int i1 = (n - 2) * (n - 1) / 2 + m;
                const int i2 = (n - 1) * n / 2 + m;
                if (m > n - 2) {
                    p[i] = x * p[i2];
                    dp[i] = x * dp[i2] - z * p[i2];
                } else {
                    const double k = static_cast<double>((n - 1) * (n - 1) - m * m) /
                                     ((2 * n - 1) * (2 * n - 3));
                    p[i] = x * p[i2] - k * p[i1];
                    dp[i] = x * dp[i2] - z * p[i2] - k * dp[i1];
                }
            }
        }
    }
    std::array<double, kTerms> s{};
    s[0] = 1.0;
    for (int n = 1; n <= nMax; ++n) {
        const int i0 = n * (n + 1) / 2;
        s[i0] = s[(n - 1) * n / 2] * (2 * n - 1) / n;
        for (int m = 1; m <= n; ++m) {
            const int i = i0 + m;
            s[i] =
                s[i - 1] * std::sqrt(static_cast<double>((n - m + 1) * (m == 1 ? 2 : 1)) / (n + m));
        }
    }
    for (int i = 0; i < (nMax + 1) * (nMax + 2) / 2; ++i) {
        p[i] *= s[i];
        dp[i] *= -s[i];
    }
}

}  // namespace

VariationModel::VariationModel(std::span<const unsigned char> table) {
    Reader r{table};
    const uint16_t count = r.Get<uint16_t>();
    span_end_ = r.Get<double>();
    std::vector<Epoch> epochs;
    for (int e = 0; e < count && !r.bad; ++e) {
        Epoch ep;
        ep.Epoch_Year = r.Get<double>();
        ep.Valid_From = r.Get<double>();
        ep.N_Max = r.Get<uint16_t>();
        if (ep.N_Max < 1 || ep.N_Max > kMaxDegree) {
            r.bad = true;
            break;
        }
        const std::size_t terms = static_cast<std::size_t>((ep.N_Max + 1) * (ep.N_Max + 2) / 2);
        ep.G.assign(terms, 0.0);
        ep.H.assign(terms, 0.0);
        ep.DG.assign(terms, 0.0);
        ep.DH.assign(terms, 0.0);
        for (std::size_t i = 1; i < terms; ++i) {
            // Coefficients are held in tenths of a nanotesla (per year for the secular
            // variation), exactly as published.
            ep.G[i] = r.Get<int32_t>() / 10.0;
            ep.H[i] = r.Get<int32_t>() / 10.0;
            ep.DG[i] = r.Get<int32_t>() / 10.0;
            ep.DH[i] = r.Get<int32_t>() / 10.0;
        }
        epochs.push_back(std::move(ep));
    }
    if (r.bad || r.at != table.size() || epochs.empty() || !std::isfinite(span_end_)) return;
    std::sort(epochs.begin(), epochs.end(),
              [](const Epoch& a, const Epoch& b) { return a.Valid_From < b.Valid_From; });
    epochs_ = std::move(epochs);
}

double VariationModel::Decimal_Year(double jd) {
    if (!std::isfinite(jd)) return 2000.0;
    // Beyond the twentieth and twenty-first centuries the span's end stands in any case.
    if (jd < -36525.0 || jd > 36525.0) return 2000.0 + jd / 365.25;
    auto jan1 = [](int year) {
        MySystemTime t;
        t.wYear = static_cast<int16_t>(year);
        t.wMonth = 1;
        t.wDay = 1;
        t.wHour = 0;
        return Calc_JD(t, false);
    };
    int y = static_cast<int>(std::floor(2000.0 + jd / 365.2425));
    while (jan1(y) > jd) --y;
    while (jan1(y + 1) <= jd) ++y;
    const double j0 = jan1(y);
    return y + (jd - j0) / (jan1(y + 1) - j0);
}

Magnetic_Elements VariationModel::Elements(double year, double latDeg, double lonDeg,
                                           double heightKm) const {
    Magnetic_Elements out;
    if (epochs_.empty() || !std::isfinite(year) || !std::isfinite(latDeg) ||
        !std::isfinite(lonDeg) || !std::isfinite(heightKm))
        return out;
    // The field of the nearest end of the span outside it.
    const double first = epochs_.front().Epoch_Year;
    year = std::clamp(year, first, span_end_);
    const Epoch* ep = &epochs_.front();
    for (const Epoch& e : epochs_)
        if (year >= e.Valid_From) ep = &e;
    const double dt = year - ep->Epoch_Year;
    // Declination is undefined at a geographic pole; a point a few metres off it stands.
    latDeg = std::clamp(latDeg, -89.99995, 89.99995);
    heightKm = std::clamp(heightKm, -10.0, 1000.0);

    // Geodetic to geocentric spherical coordinates.
    const double phi = latDeg * kDeg;
    const double lam = lonDeg * kDeg;
    const double sinPhi = std::sin(phi);
    const double cosPhi = std::cos(phi);
    const double rc = kA / std::sqrt(1.0 - kE2 * sinPhi * sinPhi);
    const double xp = (rc + heightKm) * cosPhi;
    const double zp = (rc * (1.0 - kE2) + heightKm) * sinPhi;
    const double r = std::sqrt(xp * xp + zp * zp);
    const double phig = std::asin(zp / r);

    std::array<double, kTerms> p{};
    std::array<double, kTerms> dp{};
    Legendre(std::sin(phig), std::cos(phig), ep->N_Max, p, dp);

    std::array<double, kMaxDegree + 1> cosM{};
    std::array<double, kMaxDegree + 1> sinM{};
    for (int m = 0; m <= ep->N_Max; ++m) {
        cosM[m] = std::cos(m * lam);
        sinM[m] = std::sin(m * lam);
    }
    double bx = 0, by = 0, bz = 0;
    double rr = kRe / r;
    rr = rr * rr;  // (re/r)^(n+2) from n = 0
    for (int n = 1; n <= ep->N_Max; ++n) {
        rr *= kRe / r;
        for (int m = 0; m <= n; ++m) {
            const int i = n * (n + 1) / 2 + m;
            const double g = ep->G[i] + dt * ep->DG[i];
            const double h = ep->H[i] + dt * ep->DH[i];
            const double gc = g * cosM[m] + h * sinM[m];
            bz -= rr * gc * (n + 1) * p[i];
            by += rr * (g * sinM[m] - h * cosM[m]) * m * p[i];
            bx -= rr * gc * dp[i];
        }
    }
    by /= std::cos(phig);
    // Rotate from the geocentric to the geodetic frame.
    const double psi = phig - phi;
    out.X = bx * std::cos(psi) - bz * std::sin(psi);
    out.Y = by;
    out.Z = bx * std::sin(psi) + bz * std::cos(psi);
    out.H = std::hypot(out.X, out.Y);
    out.F = std::hypot(out.H, out.Z);
    out.Incl = std::atan2(out.Z, out.H) / kDeg;
    out.Decl = std::atan2(out.Y, out.X) / kDeg;
    return out;
}

void VariationModel::Calc(const Variation_Request& in, Variation_Answer& out) const {
    const Magnetic_Elements e =
        Elements(Decimal_Year(in.Moment), in.Lat / kDeg, in.Long / kDeg, 0.0);
    double dip = e.Incl * kDeg;
    if (dip < 0) dip += 2.0 * 3.14159265358979323846;
    out.Dip = static_cast<float>(dip);
    out.Variation = static_cast<float>(e.Decl * kDeg);
    out.Field = static_cast<float>(e.F);
}

const VariationModel& Variation_Model() {
    static const VariationModel model(Embedded_Data("wmm"));
    return model;
}

bool VariationModel::In_Span(double jd) const {
    if (epochs_.empty()) return false;
    const double year = Decimal_Year(jd);
    return year >= epochs_.front().Epoch_Year && year <= span_end_;
}

std::string Main_Variation_Text(float variation) {
    double degrees = Round_Even(variation * kDegreesPerRadian, 1);
    if (!std::isfinite(degrees)) degrees = 0.0;
    return Variation_Text(static_cast<float>(degrees));
}

std::string Main_Dip_Text(float dip) {
    double d = dip;
    if (!std::isfinite(d)) d = 0.0;
    if (d > kPi) d = kTwoPi - d;
    return Format_Number(d * kDegreesPerRadian, "#0°.0");
}

std::vector<std::string> Magnetic_Help_Words(bool dip, double jd) {
    std::vector<std::string> words;
    if (dip) {
        words = {variation_text::Dip_Help_1, variation_text::Dip_Help_2};
    } else {
        words = {variation_text::Variation_Help};
    }
    if (!Variation_Model().In_Span(jd)) {
        words.emplace_back(variation_text::Span_Note_1);
        words.emplace_back(variation_text::Span_Note_2);
    }
    return words;
}

}  // namespace kelmoran
