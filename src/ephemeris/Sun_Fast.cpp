// The Sun's fast route. Source of the coefficients: VSOP87 (P. Bretagnon and G. Francou,
// Astronomy and Astrophysics 202, 309, 1988), version D, the Earth's leading terms, with
// the values this program has always carried. The conversion to FK5 and the aberration
// constant are those of J. Meeus, Astronomical Algorithms, 2nd ed., ch. 25 and 32.
#include <cmath>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"

namespace kelmoran {

namespace {
constexpr double kEarthMeanMotion = 6283.0758499914;  // radians per thousand years
}  // namespace

void Earth_Fast(double tau, double& L, double& B, double& R) {
    const double m = kEarthMeanMotion * tau;
    L = 1.75347045673 + 0.03341656456 * std::cos(4.66925680417 + m) +
        tau * (6283.31966747491 + 0.00206058863 * std::cos(2.67823455584 + m));
    L = Reduce_2Pi(L);
    B = 0.0;
    R = 1.00013988799 + 0.01670699626 * std::cos(3.09846350771 + m) +
        0.00013956023 * std::cos(3.0552460962 + 12566.1516999828 * tau) +
        tau * 0.00103018608 * std::cos(1.10748969588 + m);
}

void Calc_Sun_Fast(double& lon, double& lat, double& dist) {
    const double t = lon;
    double L = 0.0;
    double B = 0.0;
    double R = 0.0;
    Earth_Fast(t / 10.0, L, B, R);
    // Geometric longitude of the Sun, then the small rotation from the dynamical frame of
    // VSOP87 to FK5.
    double theta = Reduce_2Pi(L + kPi);
    const double lp = theta - (0.0243822496503608 * t + 5.41052068118242e-06 * t * t);
    theta -= 4.37932198146245e-07;
    const double beta = -B + 1.89853037522495e-07 * (std::cos(lp) - std::sin(lp));
    // Annual aberration, 20.4898" at one AU; it also stands for the light time.
    theta -= 9.93373536319819e-05 / R;
    lon = theta;
    lat = beta;
    dist = R;
}

}  // namespace kelmoran
