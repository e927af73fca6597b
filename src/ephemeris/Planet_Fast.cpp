// Fast heliocentric series of the planets.
//
// Source: VSOP87 (P. Bretagnon and G. Francou, "Planetary theories in rectangular and
// spherical variables: VSOP87 solutions", Astronomy and Astrophysics 202, 309-315, 1988),
// version D: heliocentric spherical coordinates, ecliptic and equinox of date. Each series
// below keeps its largest terms, A cos(B + C tau), with the published A, B and C as read
// from the npm package astronomia 4.2.0 (lib/data/vsop87D*.cjs). A constant term is the
// one with C = 0 and B = 0.
#include <cmath>
#include <span>

#include "ephemeris/Planets.h"

namespace kelmoran {

namespace {

struct VsopTerm {
    double A, B, C;
};

// Mercury
constexpr VsopTerm kMercuryL0[] = {
    {4.40250710144, 0.0, 0.0},
    {0.40989414976, 1.48302034194, 26087.9031415742},
    {0.05046294199, 4.4778548954, 52175.8062831484},
    {0.00855346843, 1.16520322351, 78263.70942472259},
    {0.00165590362, 4.11969163181, 104351.61256629678},
    {0.00034561897, 0.77930765817, 130439.51570787099},
};
constexpr VsopTerm kMercuryL1[] = {
    {26088.14706222746, 0.0, 0.0},
    {0.01126007832, 6.21703970996, 26087.9031415742},
    {0.00303471395, 3.05565472363, 52175.8062831484},
    {0.00080538452, 6.10454743366, 78263.70942472259},
    {0.00021245035, 2.83531934452, 104351.61256629678},
};
constexpr VsopTerm kMercuryL2[] = {
    {0.00053049845, 0.0, 0.0},
};
constexpr VsopTerm kMercuryB0[] = {
    {0.11737528962, 1.98357498767, 26087.9031415742},
    {0.02388076996, 5.03738959685, 52175.8062831484},
    {0.01222839532, 3.14159265359, 0.0},
    {0.0054325181, 1.79644363963, 78263.70942472259},
    {0.0012977877, 4.83232503961, 104351.61256629678},
    {0.00031866927, 1.58088495667, 130439.51570787099},
};
constexpr VsopTerm kMercuryB1[] = {
    {0.00429151362, 3.50169780393, 26087.9031415742},
    {0.00146233668, 3.14159265359, 0.0},
    {0.00022675295, 0.0151536688, 52175.8062831484},
};
constexpr VsopTerm kMercuryR0[] = {
    {0.39528271652, 0.0, 0.0},
    {0.07834131817, 6.19233722599, 26087.9031415742},
    {0.00795525557, 2.95989690096, 52175.8062831484},
    {0.00121281763, 6.01064153805, 78263.70942472259},
    {0.00021921969, 2.77820093975, 104351.61256629678},
};
constexpr VsopTerm kMercuryR1[] = {
    {0.00217347739, 4.65617158663, 26087.9031415742},
    {0.00044141826, 1.42385543975, 52175.8062831484},
};
// Venus
constexpr VsopTerm kVenusL0[] = {
    {3.17614666774, 0.0, 0.0},
    {0.01353968419, 5.59313319619, 10213.285546211},
    {0.00089891645, 5.30650048468, 20426.571092422},
};
constexpr VsopTerm kVenusL1[] = {
    {10213.52943052898, 0.0, 0.0},
    {0.00095707712, 2.46424448979, 10213.285546211},
};
constexpr VsopTerm kVenusB0[] = {
    {0.05923638472, 0.26702775813, 10213.285546211},
};
constexpr VsopTerm kVenusB1[] = {
    {0.00513347602, 1.80364310797, 10213.285546211},
};
constexpr VsopTerm kVenusR0[] = {
    {0.72334820905, 0.0, 0.0},
    {0.00489824185, 4.02151832268, 10213.285546211},
};
// Mars
constexpr VsopTerm kMarsL0[] = {
    {6.20347711583, 0.0, 0.0},
    {0.186563681, 5.05037100303, 3340.6124266998},
    {0.01108216792, 5.40099836958, 6681.2248533996},
};
constexpr VsopTerm kMarsL1[] = {
    {3340.85627474342, 0.0, 0.0},
    {0.01458227051, 3.60426053609, 3340.6124266998},
    {0.00164901343, 3.92631250962, 6681.2248533996},
};
constexpr VsopTerm kMarsB0[] = {
    {0.03197134986, 3.76832042432, 3340.6124266998},
    {0.00298033234, 4.10616996243, 6681.2248533996},
    {0.00289104742, 0.0, 0.0},
    {0.00031365538, 4.44651052853, 10021.8372800994},
};
constexpr VsopTerm kMarsB1[] = {
    {0.00350068845, 5.36847836211, 3340.6124266998},
};
constexpr VsopTerm kMarsR0[] = {
    {1.53033488276, 0.0, 0.0},
    {0.14184953153, 3.47971283519, 3340.6124266998},
    {0.00660776357, 3.81783442097, 6681.2248533996},
    {0.00046179117, 4.15595316284, 10021.8372800994},
};
constexpr VsopTerm kMarsR1[] = {
    {0.0110743334, 2.0325052495, 3340.6124266998},
    {0.00103175886, 2.37071845682, 6681.2248533996},
    {0.000128772, 0.0, 0.0},
};
// Jupiter
constexpr VsopTerm kJupiterL0[] = {
    {0.59954691495, 0.0, 0.0},
    {0.09695898711, 5.06191793105, 529.6909650946},
    {0.00573610145, 1.44406205976, 7.1135470008},
};
constexpr VsopTerm kJupiterL1[] = {
    {529.93480757497, 0.0, 0.0},
    {0.00489741194, 4.22066689928, 529.6909650946},
    {0.00228918538, 6.02647464016, 7.1135470008},
};
constexpr VsopTerm kJupiterB0[] = {
    {0.02268615703, 3.55852606718, 529.6909650946},
    {0.00110090358, 0.0, 0.0},
    {0.00109971634, 3.90809347389, 1059.3819301892},
};
constexpr VsopTerm kJupiterB1[] = {
    {0.00177351787, 5.70166488486, 529.6909650946},
};
constexpr VsopTerm kJupiterR0[] = {
    {5.20887429471, 0.0, 0.0},
    {0.2520932702, 3.49108640015, 529.6909650946},
    {0.00610599902, 3.84115365602, 1059.3819301892},
    {0.00282029465, 2.57419879933, 632.7837393132},
    {0.00187647391, 2.07590380082, 522.5774180938},
    {0.00086792941, 0.71001090609, 419.4846438752},
};
constexpr VsopTerm kJupiterR1[] = {
    {0.01271801596, 2.64937511122, 529.6909650946},
};
// Saturn
constexpr VsopTerm kSaturnL0[] = {
    {0.87401354029, 0.0, 0.0},
    {0.1110765978, 3.96205090194, 213.299095438},
    {0.01414150958, 4.58581515873, 7.1135470008},
    {0.00398379386, 0.52112025957, 206.1855484372},
    {0.00350769223, 3.30329903015, 426.598190876},
    {0.00206816296, 0.24658366938, 103.0927742186},
    {0.00079271288, 3.8400707853, 220.4126424388},
};
constexpr VsopTerm kSaturnL1[] = {
    {213.54295595986, 0.0, 0.0},
    {0.01296855005, 1.82820544701, 213.299095438},
    {0.00564347566, 2.88500136429, 7.1135470008},
    {0.0010767877, 2.27769911872, 206.1855484372},
    {0.0009832303, 1.08070061328, 426.598190876},
};
constexpr VsopTerm kSaturnB0[] = {
    {0.0433067804, 3.60284428399, 213.299095438},
    {0.00240348303, 2.8523848939, 426.598190876},
    {0.00084745939, 0.0, 0.0},
};
constexpr VsopTerm kSaturnR0[] = {
    {9.55758135801, 0.0, 0.0},
    {0.52921382465, 2.39226219733, 213.299095438},
    {0.01873679934, 5.23549605091, 206.1855484372},
    {0.01464663959, 1.64763045468, 426.598190876},
    {0.00821891059, 5.93520025371, 316.3918696566},
    {0.00547506899, 5.01532628454, 103.0927742186},
    {0.00371684449, 2.27114833428, 220.4126424388},
    {0.00361778433, 3.13904303264, 7.1135470008},
    {0.00140617548, 5.70406652991, 632.7837393132},
    {0.00108974737, 3.29313595577, 110.2063212194},
};
constexpr VsopTerm kSaturnR1[] = {
    {0.06182981282, 0.25843515034, 213.299095438},
    {0.00506577574, 0.71114650941, 206.1855484372},
    {0.00341394136, 5.7963577396, 426.598190876},
    {0.00188491375, 0.47215719444, 220.4126424388},
    {0.0018626154, 3.14159265359, 0.0},
    {0.00143891176, 1.40744864239, 7.1135470008},
    {0.00049621111, 6.0174446958, 103.0927742186},
};
// Neptune
constexpr VsopTerm kNeptuneL0[] = {
    {5.31188633047, 0.0, 0.0},
    {0.01798475509, 2.9010127305, 38.1330356378},
    {0.01019727662, 0.4858092366, 1.4844727083},
};
constexpr VsopTerm kNeptuneL1[] = {
    {38.37687716731, 0.0, 0.0},
};
constexpr VsopTerm kNeptuneB0[] = {
    {0.03088622933, 1.44104372626, 38.1330356378},
};
constexpr VsopTerm kNeptuneB1[] = {
    {0.00227279214, 3.8079308987, 38.1330356378},
};
constexpr VsopTerm kNeptuneR0[] = {
    {30.07013206102, 0.0, 0.0},
    {0.2706225949, 1.3299945893, 38.1330356378},
    {0.01691764281, 3.25186138896, 36.6485629295},
    {0.00807830737, 5.18592836167, 1.4844727083},
    {0.00537760613, 4.52113902845, 35.1640902212},
    {0.00495725642, 1.57105654815, 491.5579294568},
    {0.0027457197, 1.84552256801, 175.1660598002},
    {0.00135134095, 3.37220607384, 39.6175083461},
    {0.00121801825, 5.79754444303, 76.2660712756},
    {0.00100895397, 0.37702748681, 73.297125859},
    {0.00069791722, 3.79617226928, 2.9689454166},
};
constexpr VsopTerm kNeptuneR1[] = {
    {0.00236338502, 0.70498011235, 38.1330356378},
};
// Uranus
constexpr VsopTerm kUranusL0[] = {
    {5.48129294299, 0.0, 0.0},
    {0.09260408252, 0.8910642153, 74.7815985673},
    {0.01504247826, 3.62719262195, 1.4844727083},
    {0.00365981718, 1.89962189068, 73.297125859},
    {0.00272328132, 3.35823710524, 149.5631971346},
};
constexpr VsopTerm kUranusL1[] = {
    {75.02543121646, 0.0, 0.0},
    {0.00154458244, 5.24201658072, 74.7815985673},
};
constexpr VsopTerm kUranusB0[] = {
    {0.01346277639, 2.61877810545, 74.7815985673},
};
constexpr VsopTerm kUranusB1[] = {
    {0.00206366162, 4.12394311407, 74.7815985673},
};
constexpr VsopTerm kUranusR0[] = {
    {19.21264847881, 0.0, 0.0},
    {0.88784984055, 5.60377526994, 74.7815985673},
    {0.03440835545, 0.32836098991, 73.297125859},
    {0.02055653495, 1.78295170028, 149.5631971346},
    {0.00649321851, 4.52247298119, 76.2660712756},
    {0.00602248144, 3.86003820462, 63.7358983034},
    {0.00496404171, 1.40139934716, 454.9093665273},
    {0.00338525522, 1.58002682946, 138.5174968707},
    {0.00243508222, 1.57086595074, 71.8126531507},
    {0.00190521915, 1.99809364502, 1.4844727083},
    {0.00161858251, 2.79137863469, 148.0787244263},
    {0.00143705902, 1.38368574483, 11.0457002639},
};
constexpr VsopTerm kUranusR1[] = {
    {0.0147989637, 3.67205705317, 74.7815985673},
};

// The kept series of one planet; an absent series is empty.
struct FastSeries {
    std::span<const VsopTerm> L0, L1, L2, B0, B1, R0, R1;
};

constexpr FastSeries kMercury{kMercuryL0, kMercuryL1, kMercuryL2, kMercuryB0,
                              kMercuryB1, kMercuryR0, kMercuryR1};
constexpr FastSeries kVenus{kVenusL0, kVenusL1, {}, kVenusB0, kVenusB1, kVenusR0, {}};
constexpr FastSeries kMars{kMarsL0, kMarsL1, {}, kMarsB0, kMarsB1, kMarsR0, kMarsR1};
constexpr FastSeries kJupiter{kJupiterL0, kJupiterL1, {},        kJupiterB0,
                              kJupiterB1, kJupiterR0, kJupiterR1};
constexpr FastSeries kSaturn{kSaturnL0, kSaturnL1, {}, kSaturnB0, {}, kSaturnR0, kSaturnR1};
constexpr FastSeries kNeptune{kNeptuneL0, kNeptuneL1, {},        kNeptuneB0,
                              kNeptuneB1, kNeptuneR0, kNeptuneR1};
constexpr FastSeries kUranus{kUranusL0, kUranusL1, {}, kUranusB0, kUranusB1, kUranusR0, kUranusR1};

double Sum(std::span<const VsopTerm> series, double tau) {
    double s = 0.0;
    for (const VsopTerm& k : series) s += k.A * std::cos(k.B + k.C * tau);
    return s;
}

double Series_R(const FastSeries& p, double tau) {
    return Sum(p.R0, tau) + tau * Sum(p.R1, tau);
}

void Series_LBR(const FastSeries& p, double tau, double& L, double& B, double& R) {
    L = Reduce_2Pi(Sum(p.L0, tau) + tau * (Sum(p.L1, tau) + tau * Sum(p.L2, tau)));
    B = Sum(p.B0, tau) + tau * Sum(p.B1, tau);
    R = Series_R(p, tau);
}

const FastSeries& Series_Of(int body) {
    switch (body) {
        case body::Venus:
            return kVenus;
        case body::Mars:
            return kMars;
        case body::Jupiter:
            return kJupiter;
        case body::Saturn:
            return kSaturn;
        case body::Neptune:
            return kNeptune;
        case body::Uranus:
            return kUranus;
        default:
            return kMercury;
    }
}

}  // namespace

void Mercury_Fast(double tau, double& L, double& B, double& R) {
    Series_LBR(kMercury, tau, L, B, R);
}
void Venus_Fast(double tau, double& L, double& B, double& R) {
    Series_LBR(kVenus, tau, L, B, R);
}
void Mars_Fast(double tau, double& L, double& B, double& R) {
    Series_LBR(kMars, tau, L, B, R);
}
void Jupiter_Fast(double tau, double& L, double& B, double& R) {
    Series_LBR(kJupiter, tau, L, B, R);
}
void Saturn_Fast(double tau, double& L, double& B, double& R) {
    Series_LBR(kSaturn, tau, L, B, R);
}
void Neptune_Fast(double tau, double& L, double& B, double& R) {
    Series_LBR(kNeptune, tau, L, B, R);
}
void Uranus_Fast(double tau, double& L, double& B, double& R) {
    Series_LBR(kUranus, tau, L, B, R);
}

double Mercury_R_Fast(double tau) {
    return Series_R(kMercury, tau);
}
double Venus_R_Fast(double tau) {
    return Series_R(kVenus, tau);
}
double Mars_R_Fast(double tau) {
    return Series_R(kMars, tau);
}
double Jupiter_R_Fast(double tau) {
    return Series_R(kJupiter, tau);
}
double Saturn_R_Fast(double tau) {
    return Series_R(kSaturn, tau);
}
double Neptune_R_Fast(double tau) {
    return Series_R(kNeptune, tau);
}
double Uranus_R_Fast(double tau) {
    return Series_R(kUranus, tau);
}

void Planet_Fast(int body, double tau, double& L, double& B, double& R) {
    Series_LBR(Series_Of(body), tau, L, B, R);
}

double Planet_R_Fast(int body, double tau) {
    return Series_R(Series_Of(body), tau);
}

}  // namespace kelmoran
