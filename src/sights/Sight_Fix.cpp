// The fix and its confidence ellipse.
#include "sights/Sight_Fix.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Units.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

constexpr double kSameLine = 0.00001;  // degrees: two columns that are one line

// A row with a selected body takes part; one whose line is not a pair of numbers cannot.
bool Used(const Sight_Record& s) {
    return s.Has_Body != 0 && std::isfinite(s.Line_Az) && std::isfinite(s.Intercept);
}

// A position on the sheet in whole pixels, held within a range that any drawing takes.
int To_Pixel(double v) {
    if (!std::isfinite(v)) return 0;
    return static_cast<int>(std::nearbyint(std::clamp(v, -1.0e8, 1.0e8)));
}

bool Within(float a, float low, float high) { return a >= low && a <= high; }

// One line on the sheet: its azimuth (radians, towards the side of the foot), the foot of
// the perpendicular from the DR in whole pixels, and its crossings of the axes.
struct Sheet_Line {
    bool Meridional = false;
    bool Zonal = false;
    double A = 0;
    long x = 0;
    long y = 0;
    double X = 0;
    double Y = 0;
};

Sheet_Line Line_Of(const Line_Table& t, std::size_t i, float plotScale, bool nudgeZero) {
    Sheet_Line l;
    const double a = t.Az[i];
    float I = static_cast<float>(t.Int[i] * 3600.0);
    const float af = static_cast<float>(a);
    l.Meridional = Within(af, 0.0f, 8.726646E-5f) ||
                   Within(af, 179.9999127335374f, 180.0000872664626f) ||
                   Within(af, 359.9999127335374f, 360.0f);
    l.Zonal = Within(af, 89.9999127335374f, 90.0000872664626f) ||
              Within(af, 269.9999127335374f, 270.0000872664626f);
    l.A = a / kDegreesPerRadian;
    if (I < 0) {
        I = std::fabs(I);
        l.A += kPi;
        if (l.A > 6.2831855) l.A -= kTwoPi;
    }
    if (nudgeZero && l.A == 0) l.A = 1.0 / kArcsecPerRadian;
    l.x = std::lround(std::nearbyint(std::sin(l.A) * I * plotScale));
    l.y = std::lround(std::nearbyint(-std::cos(l.A) * I * plotScale));
    // The crossings in the frame of the sheet's crossing formulae, in which a line is
    // y = x·tan A + Y: the x axis is crossed at -I ÷ sin A and the y axis at I ÷ cos A.
    l.X = l.Meridional ? 0.0 : -I / std::sin(l.A) * plotScale;
    l.Y = l.Zonal ? 0.0 : I / std::cos(l.A) * plotScale;
    return l;
}

}  // namespace

int Merge_Close_Lines(const SightSet& set, Line_Table& t) {
    const std::size_t n = set.Sights.size();
    t.Az.assign(n, 0.0);
    t.Int.assign(n, 0.0);
    t.Use.assign(n, 0.0);
    for (std::size_t i = 0; i < n; ++i) {
        if (!Used(set.Sights[i])) continue;
        t.Az[i] = set.Sights[i].Line_Az;
        t.Int[i] = set.Sights[i].Intercept * kDegreesPerRadian;
        t.Use[i] = 1.0;
    }
    int goodPairs = 0;
    for (int pass = 0; pass < 50; ++pass) {
        goodPairs = 0;
        int merges = 0;
        for (std::size_t i = 0; i < n; ++i) {
            if (t.Use[i] != 1.0) continue;
            for (std::size_t j = i + 1; j < n; ++j) {
                if (t.Use[j] != 1.0) continue;
                if (std::fabs(t.Az[i] - t.Az[j]) <= kSameLine &&
                    std::fabs(t.Int[i] - t.Int[j]) <= kSameLine)
                    continue;
                const float d = static_cast<float>(std::fabs(t.Az[i] - t.Az[j]));
                if (d >= 10 && d <= 350 && (d <= 170 || d >= 190)) {
                    ++goodPairs;
                    continue;
                }
                for (const std::size_t k : {i, j}) {
                    if (t.Az[k] >= 180) {
                        t.Az[k] -= 180;
                        t.Int[k] = -t.Int[k];
                    }
                }
                // Lines near north-south fold to either end of the half circle (1° and
                // 179°): the one near 0 goes back to its other end, so that the mean is the
                // mean line (180°) and not one at right angles to both.
                if (std::fabs(t.Az[i] - t.Az[j]) > 90) {
                    const std::size_t k = t.Az[i] < t.Az[j] ? i : j;
                    t.Az[k] += 180;
                    t.Int[k] = -t.Int[k];
                }
                const float az = static_cast<float>((t.Az[i] + t.Az[j]) / 2);
                const float in = static_cast<float>((t.Int[i] + t.Int[j]) / 2);
                t.Az[i] = t.Az[j] = az;
                t.Int[i] = t.Int[j] = in;
                ++merges;
            }
        }
        if (merges == 0) break;
    }
    return goodPairs;
}

void Intersect_Lines(const Line_Table& t, double& dLat, double& dDep, float plotScale) {
    dLat = 0;
    dDep = 0;
    double sumX = 0, sumY = 0;
    long pairs = 0;
    bool any = false;
    Sheet_Line last;
    const std::size_t n = t.Az.size();
    for (std::size_t i = 0; i < n; ++i) {
        if (t.Use[i] != 1.0) continue;
        const Sheet_Line li = Line_Of(t, i, plotScale, false);
        last = li;
        any = true;
        for (std::size_t j = i + 1; j < n; ++j) {
            if (t.Use[j] != 1.0) continue;
            if (t.Az[j] - t.Az[i] <= kSameLine && std::fabs(t.Int[j] - t.Int[i]) <= kSameLine)
                continue;
            const Sheet_Line lj = Line_Of(t, j, plotScale, true);
            const float c = static_cast<float>(std::fabs(li.A - lj.A) * kDegreesPerRadian);
            double px = 0, py = 0;
            if (c < 10 || c > 350 || (c > 170 && c < 190)) {
                px = -static_cast<double>(lj.x + li.x) / 2;
                py = -static_cast<double>(lj.y + li.y) / 2;
            } else if (li.Meridional && lj.Zonal) {
                px = lj.X;
                py = li.Y;
            } else if (li.Zonal && lj.Meridional) {
                px = li.X;
                py = lj.Y;
            } else if (li.Zonal) {
                px = li.X;
                py = li.X * std::tan(lj.A) + lj.Y;
            } else if (lj.Zonal) {
                px = lj.X;
                py = lj.X * std::tan(li.A) + li.Y;
            } else {
                px = (lj.Y - li.Y) / (std::tan(li.A) - std::tan(lj.A));
                py = px * std::tan(li.A) + li.Y;
            }
            sumX += px;
            sumY += py;
            ++pairs;
        }
    }
    if (!any || plotScale == 0) return;
    if (pairs > 0) {
        dLat = -(sumY / pairs) / kArcsecPerRadian / plotScale;
        dDep = (sumX / pairs) / kArcsecPerRadian / plotScale;
    } else {
        dLat = last.y / kArcsecPerRadian / plotScale;
        dDep = -last.x / kArcsecPerRadian / plotScale;
    }
}

bool Error_Ellipse(const SightSet& set, double dLat, double dDep, Ellipse_Size size,
                   double& semiAxis1, double& semiAxis2, float& angle) {
    const double k = kEllipseFactor[static_cast<int>(size)];
    double A = 0, B = 0, C = 0, D = 0, E = 0, F = 0;
    int n = 0;
    for (const Sight_Record& s : set.Sights) {
        if (!Used(s)) continue;
        const double z = s.Line_Az / kDegreesPerRadian;
        const double p = -s.Intercept * kDegreesPerRadian;
        A += std::cos(z) * std::cos(z);
        B += std::sin(z) * std::cos(z);
        C += std::sin(z) * std::sin(z);
        D += p * std::cos(z);
        E += p * std::sin(z);
        F += p * p;
        ++n;
    }
    if (A * C - B * B == 0 || n < 3 || A == C) return false;
    // The offsets are in radians here and the factor is 60, as the sheet has always had it.
    const float dL = static_cast<float>(dLat * 60);
    const float dM = static_cast<float>(dDep * 60);
    const double s2 = std::fabs(F - dL * D - dM * E) / (n - 2);
    const double S = std::sqrt(s2) * 60;
    angle = static_cast<float>(std::atan(2 * B / (A - C)) / 2);
    const double sin2 = std::sin(2.0 * angle);
    // With every azimuth on the axes B is 0 and so is sin 2θ: B ÷ sin 2θ takes its limit,
    // (A - C) ÷ 2, and the axes lie north-south and east-west.
    const double ratio = sin2 != 0 ? B / sin2 : (A - C) / 2;
    semiAxis1 = k * S / std::sqrt(std::fabs(ratio + n / 2.0));
    semiAxis2 = k * S / std::sqrt(std::fabs(n / 2.0 - ratio));
    return std::isfinite(semiAxis1) && std::isfinite(semiAxis2);
}

std::vector<Sheet_Point> Plot_Confidence_Ellipse(int cx, int cy, float plotScale, double dLat,
                                                 double dDep, double a1, double a2,
                                                 float angle) {
    const double x0 = cx + dDep * kArcsecPerRadian * plotScale;
    const double y0 = cy - dLat * kArcsecPerRadian * plotScale;
    const double s = plotScale * 60.0;
    const double st = std::sin(angle), ct = std::cos(angle);
    std::vector<Sheet_Point> points;
    points.reserve(361);
    for (int deg = 0; deg <= 360; ++deg) {
        const double t = deg / kDegreesPerRadian;
        const double ex = std::nearbyint((a1 * std::cos(t) * st - a2 * std::sin(t) * ct) * s);
        const double ey = std::nearbyint((a1 * std::cos(t) * ct + a2 * std::sin(t) * st) * s);
        points.push_back({To_Pixel(x0 + ex),
                          To_Pixel(y0 - ey)});
    }
    return points;
}

void Calc_Final_Position(float fixLat, float fixLong, double dLat, double dDep, float& lat,
                         float& lon) {
    lat = static_cast<float>(fixLat + dLat);
    if (lat > kHalfPiF) lat = static_cast<float>(kPi - lat);
    if (lat < static_cast<float>(-kHalfPi)) lat = static_cast<float>(-kPi - lat);
    lon = static_cast<float>(fixLong + dDep / std::cos(fixLat + dLat / 2));
    if (lon > kPiF) lon = static_cast<float>(lon - kTwoPi);
    if (lon < -kPiF) lon = static_cast<float>(lon + kTwoPi);
}

std::string Test_Posn_Validity(const SightSet& set) {
    int n = 0;
    for (const Sight_Record& s : set.Sights) n += Used(s) ? 1 : 0;
    for (std::size_t i = 0; i < set.Sights.size(); ++i) {
        if (!Used(set.Sights[i])) continue;
        for (std::size_t j = i + 1; j < set.Sights.size(); ++j) {
            if (!Used(set.Sights[j])) continue;
            const double d = std::fabs(set.Sights[i].Line_Az - set.Sights[j].Line_Az);
            if (d >= 10 && d <= 350 && (d >= 190 || d < 170)) return fix_text::Fix;
        }
    }
    if (n == 0) return fix_text::DR;
    return n == 1 ? fix_text::ITP : fix_text::MeanITP;
}

Fix_Result Calc_Fix(const SightSet& set, float plotScale, int width, int height,
                    Ellipse_Size size) {
    Fix_Result r;
    bool any = false;
    for (const Sight_Record& s : set.Sights) any = any || Used(s);
    const int cx = To_Pixel(width / 2.0);
    const int cy = To_Pixel(height / 2.0);
    if (any) {
        r.Good_Pairs = Merge_Close_Lines(set, r.Lines);
        Intersect_Lines(r.Lines, r.dLat, r.dDep, plotScale);
        if (r.Good_Pairs > 0)
            r.Has_Ellipse = Error_Ellipse(set, r.dLat, r.dDep, size, r.Semi_Axis1, r.Semi_Axis2,
                                          r.Angle);
        if (r.Has_Ellipse)
            r.Ellipse = Plot_Confidence_Ellipse(cx, cy, plotScale, r.dLat, r.dDep, r.Semi_Axis1,
                                                r.Semi_Axis2, r.Angle);
    }
    Calc_Final_Position(set.Fix_Sight.DR_Lat, set.Fix_Sight.DR_Long, r.dLat, r.dDep, r.Fix_Lat,
                        r.Fix_Longt);
    const int x = To_Pixel(cx + r.dDep * kArcsecPerRadian * plotScale);
    const int y = To_Pixel(cy - r.dLat * kArcsecPerRadian * plotScale);
    r.Cross = {Sheet_Point{x - kFixCrossHalf, y}, Sheet_Point{x + kFixCrossHalf, y},
               Sheet_Point{x, y - kFixCrossHalf}, Sheet_Point{x, y + kFixCrossHalf}};
    r.Circle_Centre = {x, y};
    float lat = 0, lon = 0, course = 0, speed = 0;
    Get_Position(set.Fix_Sight.Sight_Time, lat, lon, course, speed);
    r.DR_Warning = Settings.PositionMethod != kFixPosition && Is_DR_Error(course);
    r.Type_of_Fix = Test_Posn_Validity(set);
    return r;
}

}  // namespace kelmoran
