// The world magnetic model behind the variation of courses and the magnetic dip: the
// World Magnetic Model (NOAA NCEI and the British Geological Survey) of the epochs 2015,
// 2020 and 2025, degree and order 12, from the coefficient files of npm
// geomagnetism@0.2.0 (data/wmm-2015.json, wmm-2015v2.json, wmm-2020.json,
// wmm-2025.json), built into the program as the table "wmm" (tools/wmm/generate).
//
// The model answers for every position and every moment and never fails. Its coefficients
// cover 2015.0 to 2030.0; outside that span the field of the nearest end of the span is
// used (the 2015.0 field for earlier dates, the 2025 model carried to 2030.0 for later
// ones), so far dates get a plausible field but not a true one.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kelmoran {

struct Variation_Request {
    double Moment = 0;  // MyJD (UT) of the position
    float Lat = 0;      // radians, north positive
    float Long = 0;     // radians, east positive
};

struct Variation_Answer {
    float Dip = 0;        // magnetic dip (inclination), radians, 0 .. 2π: a downward field
                          // as I, an upward one (south of the magnetic equator) as 2π + I
    float Variation = 0;  // variation (declination), radians, east positive, -π .. π
    float Field = 0;      // total intensity, nanotesla; not read by the program
};

// The magnetic elements at a point, for tests and tools.
struct Magnetic_Elements {
    double X = 0, Y = 0, Z = 0;  // north, east, down components, nT
    double H = 0, F = 0;         // horizontal and total intensity, nT
    double Incl = 0;             // inclination, degrees, down positive
    double Decl = 0;             // declination, degrees, east positive
};

class VariationModel {
  public:
    // Reads a table in the layout written by tools/wmm/generate. A table that cannot be
    // read leaves a model with no epochs, which answers a zero field.
    explicit VariationModel(std::span<const unsigned char> table);

    // The variation and dip at sea level at the request's position and moment. Accuracy:
    // that of the WMM within its span (about 0.3° in variation away from the magnetic
    // poles); results within 0.01° of the published test values.
    void Calc(const Variation_Request& in, Variation_Answer& out) const;

    // The elements at `latDeg`, `lonDeg` (geodetic, WGS 84), `heightKm` above the
    // ellipsoid, at the decimal year `year` (clamped into the span as above).
    Magnetic_Elements Elements(double year, double latDeg, double lonDeg, double heightKm) const;

    // Decimal year of a MyJD: the year plus the fraction of its days gone.
    static double Decimal_Year(double jd);

    int Epoch_Count() const { return static_cast<int>(epochs_.size()); }

    // True when the moment `jd` (MyJD) lies within the span of the coefficients (2015.0 to
    // 2030.0); outside it the field of the nearest end stands in.
    bool In_Span(double jd) const;

  private:
    struct Epoch {
        double Epoch_Year = 0;  // the model's epoch
        double Valid_From = 0;  // first decimal year for which this model is chosen
        int N_Max = 0;
        std::vector<double> G, H, DG, DH;  // index n(n+1)/2 + m, nT and nT/year
    };
    std::vector<Epoch> epochs_;
    double span_end_ = 0;
};

// The shared model, made from the built-in table on first use and kept to the end.
const VariationModel& Variation_Model();

// The words of the Main screen's rows and of their help pop-ups.
namespace variation_text {
inline constexpr const char* Variation_Row = "Variation ";
inline constexpr const char* Dip_Row = "Magnetic Dip";
inline constexpr const char* Variation_Help = "Magnetic Variation";
inline constexpr const char* Dip_Help_1 = "Angle between Earth's Magnetic";
inline constexpr const char* Dip_Help_2 = "Field and the Horizontal";
// Added to both pop-ups when the moment lies outside the model's years.
inline constexpr const char* Span_Note_1 = "Magnetic model covers 2015 to 2030:";
inline constexpr const char* Span_Note_2 = "the field of the nearest epoch is used";
}  // namespace variation_text

// Main's "Variation " value: the variation (radians, east positive) in degrees rounded to
// one decimal, its absolute value by "##0°.0", then " E " (not negative) or " W", as a
// voyage row shows it (Variation_Text).
std::string Main_Variation_Text(float variation);

// Main's "Magnetic Dip" value: a dip above π is taken as 2π − dip (an upward field), then
// shown in degrees by "#0°.0".
std::string Main_Dip_Text(float dip);

// The lines of the help pop-up of the "Variation " row (`dip` false) or of the "Magnetic
// Dip" row (`dip` true) at the moment `jd`; outside the model's years the note that the
// nearest epoch's field is in use follows.
std::vector<std::string> Magnetic_Help_Words(bool dip, double jd);

}  // namespace kelmoran
