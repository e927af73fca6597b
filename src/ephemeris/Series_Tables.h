// The built-in tables of the long series and their evaluation: VSOP87 version D for the
// Earth and the planets, ELP/MPP02 for the Moon, and the Chebyshev table of Pluto. These
// are the workings of the objects of Series.h; the rest of the program calls those.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kelmoran {

// Reads little-endian numbers from a built-in table. Reading past the end gives zeros and
// marks the reader as failed; it never raises.
class TableReader {
  public:
    explicit TableReader(std::span<const unsigned char> bytes) : bytes_(bytes) {}
    uint32_t U32();
    double F64();
    bool Failed() const { return failed_; }
    std::size_t Remaining() const { return bytes_.size() - at_; }

  private:
    uint64_t Bytes(std::size_t n);  // n little-endian bytes
    std::span<const unsigned char> bytes_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

// One coordinate of a VSOP87 body (L, B or R): series of tau^0 .. tau^5, each a run of
// terms (A, B, C) meaning A cos(B + C tau), stored as contiguous triples.
struct VsopCoordinate {
    std::vector<double> terms;        // A, B, C, A, B, C, ...
    std::array<uint32_t, 7> start{};  // series p is terms [3 start[p], 3 start[p + 1])

    // Sum of tau^p times series p, tau in Julian millennia of TT from J2000.0.
    double Evaluate(double tau) const;
    std::size_t Count() const { return start[6]; }
};

// A VSOP87 version D body: heliocentric L, B (radians, ecliptic and equinox of date), R (AU).
struct VsopBody {
    std::array<VsopCoordinate, 3> lbr;

    // The whole body from data/vsop87d_<name>.bin. A missing or short table gives a body
    // with no terms (all coordinates 0).
    static VsopBody Load(std::string_view blobName);

    // The body without the terms whose amplitude times `span`^p (p the power of tau of
    // their series) is below `angle` radians in L and B, or below `radius` AU in R.
    VsopBody Truncated(double span, double angle, double radius) const;

    // L reduced to 0 .. 2π, B and R, at `tau` in Julian millennia of TT.
    void Evaluate(double tau, double& L, double& B, double& R) const;
    std::size_t Count() const { return lbr[0].Count() + lbr[1].Count() + lbr[2].Count(); }
};

// One coordinate of ELP/MPP02: series of T^0 .. T^3, each term A sin(p0 + p1 T + p2 T^2
// + p3 T^3 + p4 T^4), stored as contiguous sextuples (A, p0, p1, p2, p3, p4).
struct ElpCoordinate {
    std::vector<double> terms;
    std::array<uint32_t, 5> start{};

    double Evaluate(double T) const;
    std::size_t Count() const { return start[4]; }
};

// ELP/MPP02 (the DE405 fit): the Moon's geocentric longitude V, latitude U (radians, mean
// ecliptic of date, V counted from the departure point of J2000.0) and distance r (km).
struct ElpMoon {
    std::array<double, 5> W1{};  // the mean longitude polynomial, radians
    std::array<ElpCoordinate, 3> vur;

    // The whole solution from data/elpmpp02.bin; a missing table gives no terms.
    static ElpMoon Load();

    // Without the terms whose amplitude times `span`^p is below `angle` arcseconds in V
    // and U, or below `km` kilometres in r (T^p the power of the series).
    ElpMoon Truncated(double span, double angle, double km) const;

    // V, U in radians (V not reduced), r in km at T, Julian centuries of TT from J2000.0.
    void Evaluate(double T, double& V, double& U, double& r) const;
    std::size_t Count() const { return vur[0].Count() + vur[1].Count() + vur[2].Count(); }
};

// Chebyshev segments of three coordinates: Pluto's heliocentric rectangular place
// (data/pluto.bin), or the corrections in L, B, R of a planet's long series
// (data/vsop87d_<planet>_corrections.bin).
struct ChebyshevTable {
    double tau0 = 0.0;  // start, Julian millennia of TT from J2000.0
    double span = 1.0;  // length of a segment, millennia
    uint32_t count = 0;
    uint32_t order = 0;
    std::vector<double> coefficients;  // per segment: order of x, of y, of z

    static ChebyshevTable Load(std::string_view blobName);
    // x, y, z in AU at tau; dates outside the table take its nearest end. With no table,
    // all three are 0.
    void Evaluate(double tau, double& x, double& y, double& z) const;
    // The same inside the table's years; 0, 0, 0 outside them (and with no table).
    void Evaluate_Within(double tau, double& x, double& y, double& z) const;
};

}  // namespace kelmoran
