// The working sheet of one sight.
#include "sights/SightCalc.h"

#include <cmath>

#include "ephemeris/Altitude_Corrections.h"
#include "ephemeris/Angles.h"
#include "ephemeris/Bodies.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Planets.h"
#include "ephemeris/Series.h"
#include "ephemeris/Star_Place.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "sights/M_Sights.h"
#include "voyage/Position_Methods.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace {

constexpr double kMinutesPerCircle = 21600.0;
// Hourly rates of the increments tables, minutes of arc per hour: the Sun and planets at
// 15°, the Moon at 14° 19'.0 (the least rate, so that its v is always positive), Aries at
// the sidereal rate 15° 02'.464 (the Nautical Almanac's increments and corrections).
constexpr double kRateSunPlanets = 900.0;
constexpr double kRateMoon = 859.0;
constexpr double kRateAries = 902.4641;

bool Is_Moon(int32_t code) {
    return code == body::MoonUpperLimb || code == body::MoonLowerLimb;
}
bool Is_Star(int32_t code) {
    return code >= body::FirstStar;
}

double Wrap(double a) {
    double r = std::fmod(a, kTwoPi);
    if (r < 0) r += kTwoPi;
    return r;
}

// Radians rounded to a tenth of a minute of arc.
double Tenth(double radians) {
    return Round_Even(radians * kArcminPerRadian, 1) / kArcminPerRadian;
}

// The body's place at `frame`'s moment: GHA, Dec and distance (km for the Moon, AU for the
// Sun and planets). For a star the RA is its apparent right ascension.
BodyPlace Place_Of(int32_t code, const EarthFrame& frame) {
    BodyPlace place;
    if (code <= body::SunLowerLimb) {
        place = Calc_Sun(kAccuracyFull, frame);
    } else if (Is_Moon(code)) {
        place = Calc_Moon(kAccuracyFull, frame);
    } else if (!Is_Star(code)) {
        float earthDistance = 0;
        Calc_Planet(place, code, kAccuracyFull, frame, earthDistance);
    } else {
        double ra = 0, dec = 0;
        Calc_Star_Place(code, ra, dec, frame.JD);
        place.RA = ra;
        place.Dec = dec;
        place.GHA = Wrap(frame.GAST - ra);
    }
    return place;
}

// ---------------------------------------------------------------------------------------
// Texts
// ---------------------------------------------------------------------------------------

// A signed small angle in minutes: "+12'.3" or "-2'.45".
std::string Corr_Text(double radians, int places) {
    const double m = radians * kArcminPerRadian;
    const char* maskText = places >= 2 ? "#0'.00" : "#0'.0";
    const std::string body = Format_Number(std::fabs(m), maskText);
    const double shown = Round_Even(std::fabs(m), places >= 2 ? 2 : 1);
    if (shown == 0) return body;
    return (m < 0 ? "-" : "+") + body;
}

// An altitude or zenith distance, signed: "-0° 12'.3", "45° 07'.2".
std::string Alt_Text(double radians, int places) {
    const std::string text = Format_Angle(std::fabs(radians), places, false);
    return radians < 0 && Round_Even(std::fabs(radians) * kArcminPerRadian, places) != 0
               ? "-" + text
               : text;
}

// A difference of latitude or longitude in minutes: `zero` when it rounds to 0'.0, minutes
// named by `plus` or `minus` under a degree, else degrees and minutes by `whole`.
std::string Difference_Text(double minutes, const char* zero, const char* plus, const char* minus,
                            std::string (*whole)(double, int, bool)) {
    const double shown = Round_Even(minutes, 1);
    if (shown == 0) return zero;
    if (std::fabs(shown) < 60)
        return Format_Number(std::fabs(minutes), "#0'.0") + (minutes > 0 ? plus : minus);
    return whole(minutes / kArcminPerRadian, 1, false);
}

std::string DLat_Text(double minutes) {
    return Difference_Text(minutes, "0'.0", " N", " S", Format_Lat);
}

std::string DLong_Text(double minutes) {
    return Difference_Text(minutes, "0'.0 ", "  E", " W", Format_Long);
}

std::string Departure_Text(double miles) {
    return Format_Number(std::fabs(miles), mask::Distance) + (miles < 0 ? " W" : " E");
}

std::string ABC_Text(double v, char name) {
    return Format_Number(v, v > 100 ? "#,##0.00 " : "##0.00 ") + std::string(1, name);
}

std::string Local_Time_Text(double jd, int32_t bias) {
    const MySystemTime date = JD_To_Date(jd + bias / 1440.0);
    return Format_Date_Mask(date, "dd mmm yyyy") + " @ " + Format_Date_Mask(date, mask::TimeHMS);
}

std::string Error_Text(double minutes) {
    return Format_Number(minutes, "#0'.00") + ")";
}

// ---------------------------------------------------------------------------------------
// The blocks
// ---------------------------------------------------------------------------------------

struct Lines {
    SightCalc_Sheet& sheet;
    void Add(const char* title, const std::string& value, const std::string& right = {}) {
        sheet.My_rTxt.emplace_back(title);
        sheet.My_rDat.push_back(value);
        sheet.My_sTxt.push_back(right);
    }
};

// The dead reckoning from the position method's own starting point to the sight's time.
void Calc_DR(const Sight_Record& s, const SightCalc_Options& o, SightCalc_Values& v) {
    const double t = s.Sight_Time;
    v.Original_Time = t;
    v.Original_Lat = Settings.ObserverLat;
    v.Original_Long = Settings.ObserverLong;
    v.Course = 0;
    v.Speed = 0;
    if (Settings.PositionMethod == kDRCourseSpeed &&
        std::fabs(Settings.FixTime - t) <= kTrackDays) {
        v.Original_Time = Settings.FixTime;
        v.Course = Settings.FixCourse;
        v.Speed = Settings.FixSpeed;
    } else if (Settings.PositionMethod == kDRCourseSpeed) {
        // A track past its days: the fix position stands, with no run.
    } else if (Settings.PositionMethod == kDRByPlan && !Voyage.Way_Points.empty()) {
        // The leg of the plan that holds the sight's time, from its way point; outside
        // the plan the position service's own answer stands, with no run.
        const std::vector<Way_Point>& rows = Voyage.Way_Points;
        const Way_Point* from = nullptr;
        if (t >= Voyage.Plan_Start() && t <= Voyage.Plan_End())
            for (const Way_Point& wp : rows)
                if (wp.Row_Valid != 0 && wp.Time <= t) from = &wp;
        if (from != nullptr) {
            v.Original_Time = from->Time;
            v.Original_Lat = from->Lat;
            v.Original_Long = from->Long;
            v.Course = from->Course;
            v.Speed = from->Speed;
        } else {
            v.Original_Lat = s.DR_Lat;
            v.Original_Long = s.DR_Long;
        }
    }
    v.DR = Work_DR(v.Original_Lat, v.Original_Long, v.Original_Time, t, v.Course, v.Speed,
                   o.DR_Route, o.Clarke);
}

// The body's data at the sight's time, and in the simplified form the hour's values of the
// tables with the increments and the v and d corrections.
void Calc_GHA(const Sight_Record& s, const SightCalc_Options& o, SightCalc_Values& v) {
    const int32_t code = v.Body_Id;
    const double t = s.Sight_Time;
    const EarthFrame frame = Calc_EarthFrame(t);
    const BodyPlace place = Place_Of(code, frame);
    v.Julian_Day = t + 2451545.0;
    v.Delta_T = Get_DeltaT(DeltaT_Year(t));
    v.Nut_Long = frame.NutLong;
    v.Nut_Obl = frame.NutObl;
    v.Obliquity = frame.TrueObliquity;
    v.Aries = frame.GAST;
    v.RA = place.RA;
    v.Apparent_Dec = place.Dec;
    v.Distance = place.Distance;
    v.GHA_Exact = Wrap(place.GHA);
    if (Is_Star(code)) v.SHA = Wrap(-place.RA);

    // The whole hour of UT before the sight, and the minutes and seconds past it.
    double hourIndex = std::floor((t + 0.5) * 24.0);
    double seconds = Round_Even(((t + 0.5) * 24.0 - hourIndex) * 3600.0);
    if (seconds >= 3600) {
        hourIndex += 1;
        seconds -= 3600;
    }
    const double fraction = seconds / 3600.0;
    v.Table_Seconds = seconds;
    v.Table_Hour = static_cast<int32_t>(std::fmod(std::fmod(hourIndex, 24.0) + 24.0, 24.0));
    const double h0 = hourIndex / 24.0 - 0.5;
    const EarthFrame f0 = Calc_EarthFrame(h0);
    if (Is_Star(code)) {
        v.GHA_Hour = Round_Even(f0.GAST * kArcminPerRadian, 1) / kArcminPerRadian;
        v.Increment = Round_Even(kRateAries * fraction, 1) / kArcminPerRadian;
        if (!o.Astro_Data) v.SHA = Tenth(v.SHA);
        v.Dec_Hour = Tenth(place.Dec);
    } else {
        const EarthFrame f1 = Calc_EarthFrame(h0 + 1.0 / 24.0);
        const BodyPlace p0 = Place_Of(code, f0);
        const BodyPlace p1 = Place_Of(code, f1);
        const double rate = Is_Moon(code) ? kRateMoon : kRateSunPlanets;
        double change = std::fmod((p1.GHA - p0.GHA) * kArcminPerRadian, kMinutesPerCircle);
        if (change < 0) change += kMinutesPerCircle;
        v.GHA_Hour = Round_Even(Wrap(p0.GHA) * kArcminPerRadian, 1) / kArcminPerRadian;
        v.Increment = Round_Even(rate * fraction, 1) / kArcminPerRadian;
        const double vMinutes = Round_Even(change - rate, 1);
        v.V = vMinutes / kArcminPerRadian;
        v.V_Corr = Round_Even(vMinutes * fraction, 1) / kArcminPerRadian;
        v.Dec_Hour = Tenth(p0.Dec);
        const double dMinutes = Round_Even((p1.Dec - p0.Dec) * kArcminPerRadian, 1);
        v.D = dMinutes / kArcminPerRadian;
        v.D_Corr = Round_Even(dMinutes * fraction, 1) / kArcminPerRadian;
    }

    if (o.Astro_Data) {
        v.GHA = v.GHA_Exact;
        v.Declination = v.Apparent_Dec;
        v.LHA = Wrap(v.GHA + v.DR.DR_Long);
    } else {
        v.GHA = Wrap(v.GHA_Hour + v.Increment + v.V_Corr + v.SHA);
        v.Declination = v.Dec_Hour + v.D_Corr;
        v.LHA = Tenth(Wrap(v.GHA + Tenth(v.DR.DR_Long)));
        if (v.LHA >= kTwoPi) v.LHA -= kTwoPi;
    }
}

// The corrections of the altitude as the tables give them, the semi-diameter and the
// parallax on the altitude's side; `w` and `test` are the reduction's own figures at the
// same DR, for the error line.
void Calc_Sight(const Sight_Record& s, const SightCalc_Options& o, const Reduction_Work& w,
                const Body_Test& test, SightCalc_Values& v) {
    const bool simple = !o.Astro_Data;
    const int32_t code = v.Body_Id;
    auto keep = [simple](double x) { return simple ? Tenth(x) : x; };
    const double lat = v.DR.DR_Lat;

    v.Hs = s.Sextant_Alt;
    v.IE = keep(-IndexErrorRad);
    v.Dip = keep(-DipRad);
    v.Apparent_Alt = v.Hs + v.IE + v.Dip;
    v.Refraction = keep(Sheet_Refraction(v.Apparent_Alt, o.Tabular_Refraction));
    const double observed = v.Apparent_Alt - v.Refraction;  // the limb, refracted out

    v.SD = v.Parallax = v.HP = v.HP_Reduction = v.Augmentation = 0;
    if (!Is_Star(code) && v.Distance != 0) {
        const double sinLat = std::sin(lat);
        const double rho = 1.0 - sinLat * sinLat / kInverseFlattening;
        const double sd0 = Limb_Radius(code) / v.Distance;
        if (Is_Moon(code)) {
            v.HP = kEquatorialKm / v.Distance;  // the sine of the horizontal parallax
            if (o.Lat_Correction) v.HP_Reduction = v.HP * (1.0 - rho);
            if (o.Augmentation) v.Augmentation = sd0 * v.HP * std::sin(observed) * rho;
        } else if (o.Parallax) {
            v.HP = kSolarParallax / kArcsecPerRadian / v.Distance;
        }
        v.SD = keep(sd0 + v.Augmentation);
        const double hp = v.HP - v.HP_Reduction;
        const double zd = kHalfPi - observed - sd0 - v.Augmentation;  // of the centre
        if (Is_Moon(code) && o.Lat_Correction) {
            // The zenith of the geocentric latitude: the difference of the two latitudes
            // along the azimuth, as the reduction takes it.
            const double axes = kPolarKm / kEquatorialKm;
            const double dPhi = lat - std::atan(std::tan(lat) / (axes * axes));
            const double zn = v.Exact_Azimuth / kDegreesPerRadian;
            const double d = dPhi * std::cos(zn);
            v.Parallax = Arc_Sin(std::cos(dPhi) * hp * std::sin(zd - d) / std::cos(d));
        } else {
            v.Parallax = Arc_Sin(hp * std::sin(zd));
        }
        v.Parallax = keep(v.Parallax);
        v.Augmentation = keep(v.Augmentation);
        v.HP_Reduction = keep(Arc_Sin(v.HP) - Arc_Sin(v.HP - v.HP_Reduction));
        v.HP = keep(Arc_Sin(v.HP));
    }
    v.True_Alt = observed + v.SD + v.Parallax;
    v.TZD = kHalfPi - v.True_Alt;

    v.TZD_Error =
        (v.TZD - (kHalfPi - (w.Corrected_Alt + test.SD + test.Parallax))) * kArcminPerRadian;
}

void Calc_Result(const SightCalc_Options& o, SightCalc_Values& v) {
    const bool simple = !o.Astro_Data;
    const double lat = simple ? Tenth(v.DR.DR_Lat) : v.DR.DR_Lat;
    const double dec = v.Declination;
    v.CZD =
        Arc_Cos(std::sin(lat) * std::sin(dec) + std::cos(lat) * std::cos(dec) * std::cos(v.LHA));
    if (simple) v.CZD = Tenth(v.CZD);
    v.Intercept = (v.TZD - v.CZD) * kArcminPerRadian;
    if (simple) v.Intercept = Round_Even(v.Intercept, 1);
    v.Total_Error = v.Intercept - v.Reference_Intercept;
    v.ABC = Calc_ABC_values(lat, v.LHA, dec);
    v.Azimuth = v.ABC.Valid ? v.ABC.Azimuth : v.Exact_Azimuth;
}

// The intercept terminal point: from the DR along the azimuth, towards the body for a
// negative intercept and away from it otherwise.
void Calc_Sight_ITP(const SightCalc_Options& o, SightCalc_Values& v) {
    double course = v.Azimuth + (v.Intercept > 0 ? 180.0 : 0.0);
    if (course >= 360.0) course -= 360.0;
    v.ITP = Work_Sailing(v.DR.DR_Lat, v.DR.DR_Long, course, Round_Even(std::fabs(v.Intercept), 1),
                         o.Obs_Route, o.Clarke);
}

void Compile_Lines(const SightCalc_Options& o, SightCalc_Sheet& sheet, int32_t bias) {
    const SightCalc_Values& v = sheet.Values;
    const int p = o.Astro_Data ? 2 : 1;
    const int32_t code = v.Body_Id;
    Lines L{sheet};

    // Dead reckoning.
    L.Add("Original Position Time", Local_Time_Text(v.Original_Time, bias));
    L.Add("Run Time (Hours)", Format_Number(v.DR.Run_Hours, "#,##0.0#"),
          Format_Course(v.Course) + mask::TrueSuffix + " @ " +
              Format_Number(v.Speed, mask::SpeedFlexible) + kKtsSuffix);
    L.Add("Distance Run", Format_Number(v.DR.Distance, mask::Distance));
    L.Add("Original Latitude", Format_Lat(v.Original_Lat, 1, false));
    L.Add("dLat", DLat_Text(v.DR.DLat));
    L.Add("DR Lat", Format_Lat(v.DR.DR_Lat, 1, false));
    if (o.DR_Route == Sailing_Route::Mercator) {
        L.Add("Mer Parts for DR", Format_Number(v.DR.MP_DR, "##,##0.00"));
        L.Add("Mer Parts for Original Lat", Format_Number(v.DR.MP_Original, "##,##0.00"));
        L.Add("DMP", Format_Number(v.DR.DMP, "##,##0.00"));
    } else {
        L.Add("Departure", Departure_Text(v.DR.Departure));
        L.Add("Cos(Mean Lat)", Format_Number(v.DR.Cos_Mean_Lat, "0.00000"));
    }
    L.Add("Original Long", Format_Long(v.Original_Long, 1, false));
    L.Add("dLong", DLong_Text(v.DR.DLong));
    L.Add("DR Long", Format_Long(v.DR.DR_Long, 1, false));

    // Altitude.
    L.Add(Settings.IndexError != 0 ? "Sextant Altitude" : "Observed Altitude", Alt_Text(v.Hs, p));
    L.Add("Index Error", Corr_Text(v.IE, p));
    L.Add("Dip", Corr_Text(v.Dip, p));
    L.Add("Apparent Altitude", Alt_Text(v.Apparent_Alt, p));
    L.Add("Refraction", Corr_Text(-v.Refraction, p));
    L.Add("True Altitude", Alt_Text(v.True_Alt, p));
    const bool hasParallax = !Is_Star(code) && (Is_Moon(code) || o.Parallax);
    if (!Is_Star(code)) {
        const char* limb = code == body::SunUpperLimb || code == body::MoonUpperLimb ? "Upper Limb"
                           : code == body::SunLowerLimb || code == body::MoonLowerLimb
                               ? "Lower Limb"
                               : "";
        L.Add("Semi Diameter", Corr_Text(v.SD, p), limb);
    }
    if (hasParallax) L.Add("Parallax", Corr_Text(v.Parallax, p));
    L.Add("True Zenith Distance", Alt_Text(v.TZD, p));
    // The altitude's difference from the reduction's: the whole of it in the full form,
    // the tables' rounding in the simplified one.
    if (o.Show_Errors)
        L.Add(o.Astro_Data ? "(TZD Error" : "(Rounding Error", Error_Text(v.TZD_Error));
    if (hasParallax)
        L.Add("Horizontal Parallax",
              Format_Number(v.HP * kArcminPerRadian, p >= 2 ? "#0'.00" : "#0'.0"));
    if (Is_Moon(code) && o.Lat_Correction)
        L.Add("Redn in HP for Latitude", Corr_Text(-v.HP_Reduction, p));
    if (Is_Moon(code) && o.Augmentation) L.Add("Augmentation of SD", Corr_Text(v.Augmentation, p));

    // The body.
    if (o.Astro_Data) {
        L.Add("Julian Day", Format_Number(v.Julian_Day, "#,##0.00000"));
        L.Add("Dt", Format_Number(v.Delta_T, "#0.0") + "s");
        L.Add("in Longitude", Format_Number(v.Nut_Long * kArcsecPerRadian, "#0.000") + "\"");
        L.Add("in Obliquity", Format_Number(v.Nut_Obl * kArcsecPerRadian, "#0.000") + "\"");
        L.Add("Obliquity of Eclipitic", Format_Angle_DMS(v.Obliquity, 2, false));
        L.Add("Aries", Format_Angle(v.Aries, p, false));
        L.Add("RA of Body", Format_RA(v.RA, 2, false));
        L.Add("Apparent Declination", Format_Lat(v.Apparent_Dec, p, false));
        if (!Is_Star(code))
            L.Add("Geocentric Distance", Is_Moon(code)
                                             ? Format_Number(v.Distance, "#,##0.0") + " km"
                                             : Format_Number(v.Distance, "0.000000") + " AU");
        L.Add("GHA", Format_Angle(v.GHA, p, false));
        if (Is_Star(code)) L.Add("SHA", Format_Angle(v.SHA, p, false));
        L.Add("LHA", Format_Angle(v.LHA, p, false));
        L.Add("Declination", Format_Lat(v.Declination, p, false));
    } else {
        const std::string hour = Format_Number(v.Table_Hour, "00") + "h UT";
        const int past = static_cast<int>(v.Table_Seconds);
        L.Add("GHA", Format_Angle(v.GHA_Hour, 1, false), (Is_Star(code) ? "Aries " : "") + hour);
        L.Add("Increment", Format_Angle(v.Increment, 1, false),
              Format_Number(past / 60, "00") + "m " + Format_Number(past % 60, "00") + "s");
        if (!Is_Star(code)) L.Add("v Corr", Corr_Text(v.V_Corr, 1), "v " + Corr_Text(v.V, 1));
        if (Is_Star(code)) L.Add("SHA", Format_Angle(v.SHA, 1, false));
        L.Add("LHA", Format_Angle(v.LHA, 1, false), "GHA " + Format_Angle(v.GHA, 1, false));
        L.Add("Declination", Format_Lat(v.Dec_Hour, 1, false),
              Is_Star(code) ? std::string() : "d " + Corr_Text(v.D, 1));
        if (!Is_Star(code))
            L.Add("d Corr", Corr_Text(v.D_Corr, 1), "Dec " + Format_Lat(v.Declination, 1, false));
    }

    // The result.
    L.Add("Calculated Zenith Distance", Alt_Text(v.CZD, p));
    L.Add("Intercept", Intercept_Text(v.Intercept, " Away", " Towards"));
    if (o.Show_Errors)
        L.Add(o.Astro_Data ? "(Total Errors" : "(Total Rounding Errors", Error_Text(v.Total_Error));
    const ABC_Values& abc = v.ABC;
    L.Add("A", abc.Valid ? ABC_Text(abc.A, abc.A_Name) : "N/A");
    L.Add("B", abc.Valid ? ABC_Text(abc.B, abc.B_Name) : "N/A");
    L.Add("C", abc.Valid ? ABC_Text(abc.C, abc.C_Name) : "N/A");
    L.Add("Bearing", abc.Valid
                         ? std::string(1, abc.C_Name) + " " + Format_Number(abc.Bearing, "##0°.0") +
                               (abc.Bearing_EW == 'E' ? " E" : " W")
                         : "N/A");
    L.Add("Azimuth", Azimuth_Text(v.Azimuth, "000°.0  T"));
    L.Add("Position Line", Line_Bearings_Text(Round_Even(v.Azimuth, 1)));

    // The intercept terminal point.
    L.Add("ITP Latitude", Format_Lat(v.ITP.DR_Lat, 1, false), "dLat " + DLat_Text(v.ITP.DLat));
    if (o.Obs_Route == Sailing_Route::Mercator) {
        L.Add("Mer Parts for ITP", Format_Number(v.ITP.MP_DR, "##,##0.00"));
        L.Add("DMP", Format_Number(v.ITP.DMP, "##,##0.00"));
    } else {
        L.Add("Departure", Departure_Text(v.ITP.Departure));
        L.Add("Cos(Mean Lat)", Format_Number(v.ITP.Cos_Mean_Lat, "0.00000"));
    }
    L.Add("dLong", DLong_Text(v.ITP.DLong));
    L.Add("ITP Longitude", Format_Long(v.ITP.DR_Long, 1, false));
    sheet.Calc_Lines = static_cast<int32_t>(sheet.My_rTxt.size());
}

}  // namespace

double Sheet_Refraction(double h, bool tabular) {
    if (tabular || !(h >= 11.0 / kDegreesPerRadian)) return Refraction_Table(static_cast<float>(h));
    return 0.96 / std::tan(h) / kArcminPerRadian;
}

ABC_Values Calc_ABC_values(double lat, double lha, double dec) {
    ABC_Values r;
    lha = Wrap(lha);
    const double cosLat = std::cos(lat);
    const double sinLha = std::sin(lha);
    if (!(std::fabs(cosLat) > 1e-9) || !(std::fabs(sinLha) > 1e-12) ||
        !(std::fabs(std::cos(dec)) > 1e-12))
        return r;
    const double degLha = lha * kDegreesPerRadian;
    const bool belowSixHours = degLha > 90.0 && degLha < 270.0;
    const char latName = lat >= 0 ? 'N' : 'S';
    const char other = latName == 'N' ? 'S' : 'N';
    r.A = Round_Even(std::fabs(std::tan(lat) / std::tan(lha)), 2);
    r.A_Name = belowSixHours ? latName : other;
    r.B = Round_Even(std::fabs(std::tan(dec) / sinLha), 2);
    r.B_Name = dec >= 0 ? 'N' : 'S';
    if (r.A_Name == r.B_Name) {
        r.C = Round_Even(r.A + r.B, 2);
        r.C_Name = r.A_Name;
    } else {
        r.C = Round_Even(std::fabs(r.A - r.B), 2);
        r.C_Name = r.A >= r.B ? r.A_Name : r.B_Name;
    }
    r.Bearing = r.C == 0 ? 90.0 : std::atan(1.0 / (r.C * std::fabs(cosLat))) * kDegreesPerRadian;
    r.Bearing_EW = degLha > 180.0 ? 'E' : 'W';
    if (r.C_Name == 'N')
        r.Azimuth = r.Bearing_EW == 'E' ? r.Bearing : 360.0 - r.Bearing;
    else
        r.Azimuth = r.Bearing_EW == 'E' ? 180.0 - r.Bearing : 180.0 + r.Bearing;
    if (r.Azimuth >= 360.0) r.Azimuth -= 360.0;
    r.Valid = std::isfinite(r.Azimuth);
    return r;
}

int SightCalc_Sheet::Find(const std::string& title) const {
    for (std::size_t k = 0; k < My_rTxt.size(); ++k)
        if (My_rTxt[k] == title) return static_cast<int>(k);
    return -1;
}

SightCalc_Sheet Calc_Data(const SightSet& set, int row, const SightCalc_Options& options) {
    SightCalc_Sheet sheet;
    sheet.MySightNo = row;
    sheet.My_AstroData = options.Astro_Data;
    sheet.Headings.emplace_back(sightcalc_text::Sight);
    if (options.Astro_Data) {
        sheet.Headings.emplace_back(sightcalc_text::AstroData);
        sheet.Headings.emplace_back(sightcalc_text::Nutations);
    } else {
        sheet.Headings.emplace_back(sightcalc_text::Simplified1);
        sheet.Headings.emplace_back(sightcalc_text::Simplified2);
    }
    if (row < 0 || row > set.Max_Sight()) return sheet;
    const Sight_Record& s = set.Sights[row];
    if (s.Has_Body == 0 || s.Body_Id < 0 || s.Body_Id == 9 || s.Body_Id == 10 || s.Body_Id == 11)
        return sheet;
    // A row that no reduction could have given (no time, altitude or azimuth as numbers)
    // has no working.
    if (!std::isfinite(s.Sight_Time) || !std::isfinite(s.Sextant_Alt) ||
        !std::isfinite(s.Sight_Az) || !std::isfinite(s.Intercept))
        return sheet;
    SightCalc_Values& v = sheet.Values;
    v.Body_Id = s.Body_Id;
    sheet.Valid = true;

    Calc_DR(s, options, v);
    Calc_GHA(s, options, v);
    // The reduction's own figures at the sheet's DR: its azimuth for the parallax and where
    // the tables cannot give one, its intercept for the error lines.
    const Reduction_Work w = Prepare_Reduction(s.Sextant_Alt, static_cast<float>(v.DR.DR_Lat),
                                               static_cast<float>(v.DR.DR_Long), s.Sight_Az);
    BodyPlace place;
    place.GHA = v.GHA_Exact;
    place.Dec = v.Apparent_Dec;
    place.Distance = v.Distance;
    const Body_Test reference = Test_Body(w, v.Body_Id, place);
    v.Exact_Azimuth = reference.Zn_Deg;
    v.Reference_Intercept = reference.Alt_Diff * kArcminPerRadian;
    Calc_Sight(s, options, w, reference, v);
    Calc_Result(options, v);
    Calc_Sight_ITP(options, v);
    Compile_Lines(options, sheet, set.My_TZ_Bias);
    return sheet;
}

}  // namespace kelmoran
