#include "eclipses/M_Eclipse_Lunar.h"

#include <cmath>

#include "eclipses/M_Eclipse_Solar.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Units.h"

namespace kelmoran {

using namespace eclipse;

namespace {

// The shadow's centre and the Moon's offset from it at MyJD `t`.
struct ShadowPlace {
    double sunDistance = 0.0;   // AU
    double moonDistance = 0.0;  // km
    double shadowDec = 0.0, shadowGHA = 0.0;
    double deltaDec = 0.0, deltaGHA = 0.0;
};

// Where the places come from: the series at an accuracy, or an eclipse's window.
struct PlaceSource {
    SeriesAccuracy accuracy = kAccuracyFull;
    const EclipseWindow* window = nullptr;

    void Places(double t, BodyPlace& sun, BodyPlace& moon) const {
        if (window != nullptr) {
            window->Places(t, sun, moon);
            return;
        }
        const EarthFrame frame = Calc_EarthFrame(t);
        sun = Calc_Sun(accuracy, frame);
        moon = Calc_Moon(accuracy, frame);
    }
};

ShadowPlace Shadow_Place(double t, const PlaceSource& source) {
    BodyPlace sun, moon;
    source.Places(t, sun, moon);
    ShadowPlace s;
    s.sunDistance = sun.Distance;
    s.moonDistance = moon.Distance;
    s.shadowDec = -sun.Dec;
    s.shadowGHA = sun.GHA + kPi;
    if (s.shadowGHA >= kTwoPi) s.shadowGHA -= kTwoPi;
    // The Moon in the frame whose equator runs east-west through the shadow's centre.
    const double h = Fold_Pi(s.shadowGHA - moon.GHA);
    const double x = std::cos(moon.Dec) * std::cos(s.shadowDec) * std::cos(h) +
                     std::sin(moon.Dec) * std::sin(s.shadowDec);
    const double y = std::cos(moon.Dec) * std::sin(h);
    const double z = std::sin(moon.Dec) * std::cos(s.shadowDec) -
                     std::cos(moon.Dec) * std::sin(s.shadowDec) * std::cos(h);
    s.deltaGHA = std::atan2(y, x);
    s.deltaDec = Arc_Sin(z);
    return s;
}

double Separation_Of(double deltaGHA, double deltaDec) {
    return Arc_Cos(std::cos(deltaGHA) * std::cos(deltaDec));
}

void Shadow_From(EclipseEvent& event, const PlaceSource& source) {
    const ShadowPlace now = Shadow_Place(event.Time, source);
    const double r = now.sunDistance;
    const double dM = now.moonDistance;
    if (r > 0.0 && dM > EarthRadius) {
        // The Earth's umbral cone, and the penumbra's vertex on the sunward side.
        const double a = r * EarthRadius / (SunRadiusAU - EarthRadius / AU);
        const double u = (a - dM) * EarthRadius / a;
        const double c = (EarthRadius / AU + SunRadiusAU) / r;
        const double d = EarthRadius / c;
        const double w = (dM + d) * c;
        event.UmbraRadius = std::atan(u / (dM - EarthRadius));
        event.PenumbraRadius = std::atan(w / (dM - EarthRadius));
        event.MoonSD = MoonRadius / dM;
    }
    event.ShadowDec = now.shadowDec;
    event.ShadowGHA = now.shadowGHA;
    event.DeltaDec = now.deltaDec;
    event.DeltaGHA = now.deltaGHA;

    const ShadowPlace later = Shadow_Place(event.Time + MinuteDays, source);
    event.RateDec = (later.deltaDec - now.deltaDec) / MinuteDays;
    event.RateGHA = Fold_Pi(later.deltaGHA - now.deltaGHA) / MinuteDays;

    if (event.WantGamma != 0) {
        event.Separation = Separation_Of(event.DeltaGHA, event.DeltaDec);
        double gamma = std::sin(event.Separation) * dM / EarthRadius;
        if (event.DeltaDec < 0.0) gamma = -gamma;
        event.Gamma = static_cast<float>(gamma);
    }
}

void Step_From(EclipseEvent& event, double target, bool once, const PlaceSource& source) {
    for (int pass = 0; pass < 20; ++pass) {
        // Directions measured from the declination axis towards the hour-angle axis: the
        // Moon's track (G) and the Moon as seen from the shadow's centre (H).
        // The track is the arc of one minute's motion.
        const double G =
            Atan2_R8(std::tan(event.RateGHA * MinuteDays), std::sin(event.RateDec * MinuteDays));
        const double H = Atan2_R8(std::tan(event.DeltaGHA), std::sin(event.DeltaDec));
        double D = H - G;
        if (D < 0.0) D += kTwoPi;
        const double sigma = Separation_Of(event.DeltaGHA, event.DeltaDec);
        // The right triangle: P the track's least distance from the centre, Q the leg from
        // the foot to the Moon, positive when the Moon is past the foot.
        const double P = Arc_Sin(std::sin(D) * std::sin(sigma));
        const double Q = std::atan(std::cos(D) * std::tan(sigma));
        double k = -Q;
        if (event.WantGamma == 0) {
            // Half the chord of the target circle; the contact on the Moon's side of the
            // foot: ingress before it, egress after it.
            const double half = Arc_Cos(std::cos(target) / std::cos(P));
            k = (Q < 0.0 ? -half : half) - Q;
        }
        const double a = std::atan(std::tan(k) * std::cos(G));  // in declination
        const double b = Arc_Sin(std::sin(k) * std::sin(G));    // in hour angle
        const double speed = std::hypot(event.RateDec, event.RateGHA);
        double dt = 0.0;
        if (std::fabs(event.RateGHA) > 1e-3)
            dt = b / event.RateGHA;
        else if (speed > 0.0)
            dt = k / speed;
        event.DeltaDec += a;
        event.DeltaGHA += b;
        event.Time += dt;
        event.Separation = Separation_Of(event.DeltaGHA, event.DeltaDec);
        if (once) return;
        if (!(k < -kOneArcsecond) && !(k > 2.0 * kOneArcminute)) break;
        Shadow_From(event, source);
    }
    if (event.WantGamma != 0) Shadow_From(event, source);
}

}  // namespace

void Shadow_At(EclipseEvent& event, SeriesAccuracy accuracy) {
    Shadow_From(event, PlaceSource{accuracy, nullptr});
}

void Shadow_At(EclipseEvent& event, const EclipseWindow& window) {
    Shadow_From(event, PlaceSource{kAccuracyFull, &window});
}

void Lunar_Step(EclipseEvent& event, double target, bool once, SeriesAccuracy accuracy) {
    Step_From(event, target, once, PlaceSource{accuracy, nullptr});
}

void Lunar_Step(EclipseEvent& event, double target, bool once, const EclipseWindow& window) {
    Step_From(event, target, once, PlaceSource{kAccuracyFull, &window});
}

std::string Lunar_Eclipse_Test(EclipseRow& row, EclipseSpeed& speed, int32_t bias) {
    if (!std::isfinite(row.PhaseJD)) return {};
    EclipseEvent maximum;
    maximum.Time = row.PhaseJD;
    maximum.WantGamma = -1;
    Shadow_At(maximum, kAccuracyFast);
    Lunar_Step(maximum, 0.0, true, kAccuracyFast);
    const double moving = std::hypot(maximum.RateDec, maximum.RateGHA);
    double sigma = maximum.Separation;
    if (!(sigma < maximum.MoonSD + maximum.PenumbraRadius) || !(moving > 0.0)) return {};

    EclipseEvent first, last, partialStart, partialEnd, totalStart, totalEnd;
    // The rough pass: a contact either side of the maximum by the straight track, one
    // step each on the fast places.
    const auto rough = [&](EclipseEvent& start, EclipseEvent& end, double radius) {
        const double half = std::sqrt(std::fabs(radius * radius - sigma * sigma)) / moving;
        start.Time = maximum.Time - half;
        end.Time = maximum.Time + half;
        for (EclipseEvent* e : {&start, &end}) {
            Shadow_At(*e, kAccuracyFast);
            Lunar_Step(*e, radius, true, kAccuracyFast);
        }
    };
    rough(first, last, maximum.PenumbraRadius + maximum.MoonSD);
    if (sigma - FiveArcMinutes < maximum.MoonSD + maximum.UmbraRadius)
        rough(partialStart, partialEnd, maximum.UmbraRadius + maximum.MoonSD);
    if (sigma - FiveArcMinutes < maximum.UmbraRadius - maximum.MoonSD)
        rough(totalStart, totalEnd, maximum.UmbraRadius - maximum.MoonSD);

    // The exact pass, on the full places through the hours of the eclipse.
    const EclipseWindow window(maximum.Time);
    Shadow_At(maximum, window);
    Lunar_Step(maximum, 0.0, false, window);
    sigma = maximum.Separation;
    if (maximum.PenumbraRadius + maximum.MoonSD < sigma) return {};
    if (maximum.UmbraRadius + maximum.MoonSD < sigma) {
        partialStart.Time = partialEnd.Time = 0.0;
        totalStart.Time = totalEnd.Time = 0.0;
    } else if (maximum.UmbraRadius - maximum.MoonSD < sigma) {
        totalStart.Time = totalEnd.Time = 0.0;
    }
    const auto exact = [&window](EclipseEvent& e, int radius) {
        if (e.Time == 0.0) return;
        Shadow_At(e, window);
        const double target = radius == 0   ? e.PenumbraRadius + e.MoonSD
                              : radius == 1 ? e.UmbraRadius + e.MoonSD
                                            : e.UmbraRadius - e.MoonSD;
        Lunar_Step(e, target, false, window);
    };
    exact(first, 0);
    exact(last, 0);
    exact(partialStart, 1);
    exact(partialEnd, 1);
    exact(totalStart, 2);
    exact(totalEnd, 2);

    row.Maximum = maximum;
    row.FirstContact = first;
    row.LastContact = last;
    row.PartialStart = partialStart;
    row.PartialEnd = partialEnd;
    row.TotalStart = totalStart;
    row.TotalEnd = totalEnd;
    row.Gamma = maximum.Gamma;
    row.DateLabel = Eclipse_Date_Label(maximum.Time, bias);
    std::string kind = "Lunar Eclipse";
    if (row.PartialStart.Time == 0.0) kind = "Penumbral " + kind;
    speed.Speed = std::hypot(maximum.RateDec, maximum.RateGHA);
    speed.Annular = 0;
    speed.Kind = kind;
    return kind;
}

}  // namespace kelmoran
