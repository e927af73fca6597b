// Refraction. Sources: G. G. Bennett, "The calculation of astronomical refraction in
// marine navigation", Journal of Navigation 35, 255 (1982), for the apparent altitude
// (with the program's own adjustment below 2.5 degrees) and, after Sæmundsson (Sky and
// Telescope 72, 70, 1986), for the true altitude, each with the program's own small
// correction steps; the table of mean refraction of the nautical almanacs (stars and
// planets, 10 °C and 1010 mb).
#include "ephemeris/Altitude_Corrections.h"

#include <array>
#include <cmath>

#include "ephemeris/Units.h"
#include "settings/File_IO.h"

namespace kelmoran {

namespace {

// Printed mean refraction: start of the row (minutes of altitude), value (minutes of arc).
struct RefractionRow {
    double start, value;
};

// clang-format off
constexpr std::array<RefractionRow, 161> kRefractionTable{{
    {0, 33.8},    {3, 33.2},    {6, 32.6},    {9, 32},      {12, 31.5},   {15, 30.9},
    {18, 30.4},   {21, 29.8},   {24, 29.3},   {27, 28.8},   {30, 28.3},   {33, 27.9},
    {36, 27.4},   {39, 26.9},   {42, 26.5},   {45, 26.1},   {48, 25.7},   {51, 25.3},
    {54, 24.9},   {57, 24.5},   {60, 24.1},   {63, 23.7},   {66, 23.4},   {69, 23},
    {72, 22.7},   {75, 22.3},   {78, 22},     {81, 21.7},   {84, 21.4},   {87, 21.1},
    {90, 20.8},   {95, 20.3},   {100, 19.9},  {105, 19.4},  {110, 19},    {115, 18.6},
    {120, 18.2},  {125, 17.8},  {130, 17.4},  {135, 17.1},  {140, 16.7},  {145, 16.4},
    {150, 16.1},  {155, 15.8},  {160, 15.4},  {165, 15.2},  {170, 14.9},  {175, 14.6},
    {180, 14.3},  {185, 14.1},  {190, 13.8},  {195, 13.6},  {200, 13.4},  {205, 13.1},
    {210, 12.9},  {215, 12.7},  {220, 12.5},  {225, 12.3},  {230, 12.1},  {235, 11.9},
    {240, 11.7},  {245, 11.5},  {250, 11.4},  {255, 11.2},  {260, 11},    {265, 10.9},
    {270, 10.7},  {275, 10.6},  {280, 10.4},  {285, 10.3},  {290, 10.1},  {295, 10},
    {300, 9.9},   {305, 9.7},   {310, 9.6},   {315, 9.5},   {320, 9.3},   {325, 9.2},
    {330, 9.1},   {335, 9},     {340, 8.9},   {345, 8.8},   {350, 8.7},   {355, 8.6},
    {360, 8.5},   {370, 8.3},   {380, 8.1},   {390, 7.9},   {400, 7.7},   {410, 7.6},
    {420, 7.4},   {430, 7.2},   {440, 7.1},   {450, 6.9},   {460, 6.8},   {470, 6.7},
    {480, 6.6},   {490, 6.4},   {500, 6.3},   {510, 6.2},   {520, 6.1},   {530, 6},
    {540, 5.9},   {550, 5.8},   {560, 5.7},   {570, 5.6},   {580, 5.5},   {590, 5.4},
    {595, 5.35},  {607, 5.25},  {620, 5.15},  {632, 5.05},  {646, 4.95},  {659, 4.85},
    {674, 4.75},  {689, 4.65},  {704, 4.55},  {720, 4.45},  {737, 4.35},  {755, 4.25},
    {773, 4.15},  {792, 4.05},  {812, 3.95},  {833, 3.85},  {856, 3.75},  {879, 3.65},
    {903, 3.55},  {929, 3.45},  {956, 3.35},  {985, 3.25},  {1015, 3.15}, {1047, 3.05},
    {1081, 2.95}, {1117, 2.85}, {1156, 2.75}, {1196, 2.65}, {1240, 2.55}, {1287, 2.45},
    {1337, 2.35}, {1391, 2.25}, {1449, 2.15}, {1512, 2.05}, {1580, 1.95}, {1654, 1.85},
    {1734, 1.75}, {1822, 1.65}, {1918, 1.55}, {2023, 1.45}, {2138, 1.35}, {2265, 1.25},
    {2406, 1.15}, {2562, 1.05}, {2734, 0.95}, {2934, 0.85}, {3136, 0.75}, {3369, 0.65},
    {3626, 0.55}, {3906, 0.45}, {4209, 0.35}, {4532, 0.25}, {4872, 0.15},
}};
// clang-format on

// The last row serves up to here; above it the formula takes over.
constexpr double kTableTop = 5047.5;

// Upper bound (exclusive, minutes of altitude) of the part of the table that row i
// serves: the midpoint to the next start, except that the row starting at 590 ends
// where the row of 595 starts.
double Row_Top(std::size_t i) {
    if (i + 1 >= kRefractionTable.size()) return kTableTop;
    if (kRefractionTable[i + 1].start == 595.0) return 595.0;
    return 0.5 * (kRefractionTable[i].start + kRefractionTable[i + 1].start);
}

}  // namespace

float Refraction_Apparent(float h) {
    const double H = h * kDegreesPerRadian;
    double R = 0.0;
    if (H >= 5.0) {
        const double z = H - std::atan(12.0 * H + 36.0) * kDegreesPerRadian;
        R = -0.0162 * 60.0 * std::tan(z / kDegreesPerRadian);
    } else {
        R = 1.0 / std::tan((H + 7.31 / (H + 4.4)) / kDegreesPerRadian);
        // Close to the horizon, brought to the printed tables.
        if (h < static_cast<float>(2.5 / kDegreesPerRadian)) {
            const double m = h * kArcminPerRadian;
            R = R - 3.5e-05 * m * m + 0.0098 * m - 0.681;
        }
    }
    return static_cast<float>(RefractionFactor * R / kArcminPerRadian);
}

float Refraction_True(double h) {
    const double m = h * kArcminPerRadian;
    const double H = h * kDegreesPerRadian;
    double R = 0.0;
    double c = 0.0;
    if (H >= 9.2) {
        const double t = std::tan(h);
        R = (58.276 / t - 0.0824 / (t * t * t)) / 60.0;
        if (m > 1218.0)
            c = 0.0;
        else if (m > 752.0)
            c = -0.005;
        else if (m > 711.0)
            c = -0.002;
        else if (m > 670.0)
            c = 0.0;
        else if (m > 651.0)
            c = 0.002;
        else
            c = 0.022 - 0.0002 * (m - 552.0);
    } else {
        R = 1.02 / std::tan((H + 10.3 / (H + 5.11)) / kDegreesPerRadian);
        if (m > 112.0)
            c = 0.026 - 0.00038 * (m - 130.0);
        else if (m > -38.0)
            c = 0.0049 * (m - 35.0) - 0.22;
        else
            c = 0.1 - 0.02 * (m + 71.0);
    }
    R = RefractionFactor * (R + c) / kArcminPerRadian;
    if (m > 555.0) return static_cast<float>(R);

    // Refinement: make this the inverse of Refraction_Apparent by one secant step.
    const double a = h + R;
    const double r1 = Refraction_Apparent(static_cast<float>(a));
    if (!(r1 - R > 0.0001 / kArcminPerRadian)) return static_cast<float>(r1);
    const double h1 = a - r1;
    const double a2 = r1 + h;
    const double r2 = Refraction_Apparent(static_cast<float>(a2));
    const double h2 = a2 - r2;
    if (h1 == h2) return static_cast<float>(r1);
    return static_cast<float>(r1 + (r1 - r2) * (h - h1) / (h1 - h2));
}

float Refraction_Table(float h) {
    if (h < 0.0f) return Refraction_Apparent(0.0f);
    const double mExact = h * kArcminPerRadian;
    // The row is chosen by the altitude rounded to a tenth of a minute.
    const double m = std::nearbyint(mExact * 10.0) / 10.0;
    if (!(m < kTableTop)) {
        // Beyond the table (and for a NaN altitude, which gives NaN tangents but no fault).
        const double t = std::tan(static_cast<double>(h));
        return static_cast<float>((58.294 / t - 0.0668 / (t * t * t)) / 60.0 / kArcminPerRadian);
    }
    std::size_t i = 0;
    while (i + 1 < kRefractionTable.size() && !(m < Row_Top(i))) ++i;
    const RefractionRow& row = kRefractionTable[i];
    double difference = 0.1;
    double width = 351.0;
    if (i + 1 < kRefractionTable.size()) {
        difference = row.value - kRefractionTable[i + 1].value;
        width = kRefractionTable[i + 1].start - row.start;
    }
    const double r = row.value + (row.start - mExact) * difference / width;
    return static_cast<float>(r / kArcminPerRadian);
}

}  // namespace kelmoran
