// The working sheet of a sight against independent values: the rhumb line of the dead
// reckoning (GeographicLib), the Greenwich hour angles (Swiss Ephemeris), the published
// increments, the azimuth (ERFA), and the intercept of the reduction itself.
#include <gtest/gtest.h>

#include <GeographicLib/Rhumb.hpp>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "ephemeris/Altitude_Corrections.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "sights/M_Sights.h"
#include "sights/SightCalc.h"
#include "sights/Sights.h"
#include "stars/M_Resources.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"
#include "voyage/Voyage_Plan.h"
// The reference libraries last: their headers define macros such as OK.
#include "sight_reference.h"

namespace kelmoran {
namespace {

using testing_support::Observed;
using testing_support::Reference_Sight;

constexpr double kLat = 0.72, kLon = -0.35;  // the true position, radians
constexpr double kSpring = 8840.0;           // 2024 March 15, 12:00 UT

void Observer_Settings(double indexError) {
    Settings = SettingsRecord{};
    Settings.Pressure = 1010.0f;
    Settings.Temp = 10.0f;
    Settings.IndexError = static_cast<float>(indexError);
    Settings.HtOfEye = 5.0f;
    Settings.PositionMethod = kFixPosition;
    Settings.ObserverLat = static_cast<float>(kLat);
    Settings.ObserverLong = static_cast<float>(kLon);
    Compute_Derived_Settings();
    SightsFilter.AltLimit = static_cast<float>(10.0 / kMinPerRad);
    SightsFilter.AzLimit = 10.0f;
    SightsFilter.StarCount = kSightMainStars;
    SightsFilter.DaylightStars = kTrue;
}

// Row 0 of `set` holds a sight of `body` at `jd` made from the true position, 15° to 70°
// high, its body selected by a reduction from the true position; the settings' position
// method is left as it was. False if the body is not that high then.
bool Make_Row(SightSet& set, int body, double jd) {
    Observed o;
    if (!Reference_Sight(body, jd, kLat, kLon, Settings.Pressure, Settings.Temp, o)) return false;
    if (o.Alt * kDegPerRad < 15 || o.Alt * kDegPerRad > 70) return false;
    const SettingsRecord kept = Settings;
    Settings.PositionMethod = kFixPosition;
    Settings.ObserverLat = static_cast<float>(kLat);
    Settings.ObserverLong = static_cast<float>(kLon);
    set.Clear();
    Sight_Record& s = set.Sights[0];
    s.Sight_Time = jd;
    s.Sextant_Alt = static_cast<float>(o.Alt + DipRad + IndexErrorRad);
    s.Sight_Az = static_cast<float>(std::nearbyint(o.Az));
    s.Row_Used = s.Alt_Entered = s.Az_Entered = kTrue;
    s.Has_Body = kTrue;
    s.Body_Id = body;
    Reduce_Sight(set, 0, false);
    set.Fix_Sight.Sight_Time = jd;
    Settings = kept;
    return s.Has_Body != 0 && s.Body_Id == body;
}

// The first moment from `jd` on, in steps of 37 minutes, at which `body` stands 15° to 70°.
double Find_Row(SightSet& set, int body, double jd) {
    for (int k = 0; k < 400; ++k) {
        const double t = jd + k * 37.0 / 1440.0;
        if (Make_Row(set, body, t)) return t;
    }
    ADD_FAILURE() << "no time found for body " << body;
    return jd;
}

const std::vector<std::string>& Canonical_Order() {
    static const std::vector<std::string> order = {"Original Position Time",
                                                   "Run Time (Hours)",
                                                   "Distance Run",
                                                   "Original Latitude",
                                                   "dLat",
                                                   "DR Lat",
                                                   "Mer Parts for DR",
                                                   "Mer Parts for Original Lat",
                                                   "DMP",
                                                   "Departure",
                                                   "Cos(Mean Lat)",
                                                   "Original Long",
                                                   "dLong",
                                                   "DR Long",
                                                   "Observed Altitude",
                                                   "Sextant Altitude",
                                                   "Index Error",
                                                   "Dip",
                                                   "Apparent Altitude",
                                                   "Refraction",
                                                   "True Altitude",
                                                   "Semi Diameter",
                                                   "Parallax",
                                                   "True Zenith Distance",
                                                   "(TZD Error",
                                                   "(Rounding Error",
                                                   "Horizontal Parallax",
                                                   "Redn in HP for Latitude",
                                                   "Augmentation of SD",
                                                   "Julian Day",
                                                   "Dt",
                                                   "in Longitude",
                                                   "in Obliquity",
                                                   "Obliquity of Eclipitic",
                                                   "Aries",
                                                   "RA of Body",
                                                   "Apparent Declination",
                                                   "Geocentric Distance",
                                                   "GHA",
                                                   "Increment",
                                                   "v Corr",
                                                   "SHA",
                                                   "LHA",
                                                   "Declination",
                                                   "d Corr",
                                                   "Calculated Zenith Distance",
                                                   "Intercept",
                                                   "(Total Errors",
                                                   "(Total Rounding Errors",
                                                   "A",
                                                   "B",
                                                   "C",
                                                   "Bearing",
                                                   "Azimuth",
                                                   "Position Line",
                                                   "ITP Latitude",
                                                   "Mer Parts for ITP",
                                                   "DMP",
                                                   "dLong",
                                                   "Departure",
                                                   "Cos(Mean Lat)",
                                                   "dLong",
                                                   "ITP Longitude"};
    return order;
}

// True when the sheet's titles appear in the canonical order (as a subsequence of it).
bool In_Order(const SightCalc_Sheet& sheet) {
    const std::vector<std::string>& order = Canonical_Order();
    std::size_t k = 0;
    for (const std::string& title : sheet.My_rTxt) {
        while (k < order.size() && order[k] != title) ++k;
        if (k == order.size()) return false;
        ++k;
    }
    return true;
}

bool Has(const SightCalc_Sheet& sheet, const char* title) {
    return sheet.Find(title) >= 0;
}

double Minutes(double radians) {
    return radians * kMinPerRad;
}

double Angle_Diff_Minutes(double a, double b) {
    return std::remainder(a - b, kTwoPi) * kMinPerRad;
}

class SightCalcTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { Load_Star_Tables(); }
    void SetUp() override { Observer_Settings(-1.5); }
    SightSet set{14};
};

// The lines stand in their order with their exact titles in both forms, and each menu item
// takes its lines in or out.
TEST_F(SightCalcTest, TitlesInOrderForEveryForm) {
    Find_Row(set, body::MoonLowerLimb, kSpring);
    for (int mask = 0; mask < 64; ++mask) {
        SightCalc_Options o;
        o.Astro_Data = (mask & 1) != 0;
        o.Show_Errors = (mask & 2) != 0;
        o.DR_Route = (mask & 4) != 0 ? Sailing_Route::Plane : Sailing_Route::Mercator;
        o.Obs_Route = (mask & 8) != 0 ? Sailing_Route::Mercator : Sailing_Route::Plane;
        o.Augmentation = (mask & 16) != 0;
        o.Lat_Correction = (mask & 32) != 0;
        const SightCalc_Sheet sheet = Calc_Data(set, 0, o);
        ASSERT_TRUE(sheet.Valid);
        EXPECT_TRUE(In_Order(sheet)) << "options " << mask;
        EXPECT_EQ(sheet.Calc_Lines, static_cast<int>(sheet.My_rTxt.size()));
        EXPECT_EQ(sheet.My_rDat.size(), sheet.My_rTxt.size());
        EXPECT_EQ(sheet.Headings.front(), "Sight");
        if (o.Astro_Data) {
            EXPECT_EQ(sheet.Headings[1], "Astronomical Data");
            EXPECT_EQ(sheet.Headings[2], "Nutations");
            EXPECT_TRUE(Has(sheet, "Obliquity of Eclipitic"));
            EXPECT_FALSE(Has(sheet, "Increment"));
        } else {
            EXPECT_EQ(sheet.Headings[1], "Data is rounded/ simplified ");
            EXPECT_EQ(sheet.Headings[2], "to agree with Nautical Tables");
            EXPECT_TRUE(Has(sheet, "Increment") && Has(sheet, "v Corr") && Has(sheet, "d Corr"));
            EXPECT_FALSE(Has(sheet, "Julian Day"));
        }
        EXPECT_EQ(Has(sheet, "(TZD Error"), o.Show_Errors && o.Astro_Data);
        EXPECT_EQ(Has(sheet, "(Rounding Error"), o.Show_Errors && !o.Astro_Data);
        EXPECT_EQ(Has(sheet, "(Total Errors"), o.Show_Errors && o.Astro_Data);
        EXPECT_EQ(Has(sheet, "(Total Rounding Errors"), o.Show_Errors && !o.Astro_Data);
        EXPECT_EQ(Has(sheet, "Mer Parts for DR"), o.DR_Route == Sailing_Route::Mercator);
        EXPECT_EQ(Has(sheet, "Mer Parts for ITP"), o.Obs_Route == Sailing_Route::Mercator);
        const int departures = static_cast<int>(
            std::count(sheet.My_rTxt.begin(), sheet.My_rTxt.end(), std::string("Departure")));
        EXPECT_EQ(departures,
                  (o.DR_Route == Sailing_Route::Plane) + (o.Obs_Route == Sailing_Route::Plane));
        EXPECT_EQ(Has(sheet, "Augmentation of SD"), o.Augmentation);
        EXPECT_EQ(Has(sheet, "Redn in HP for Latitude"), o.Lat_Correction);
        EXPECT_TRUE(Has(sheet, "Parallax") && Has(sheet, "Horizontal Parallax"));
        EXPECT_EQ(sheet.My_rTxt[sheet.Find("Intercept") + (o.Show_Errors ? 2 : 1)], "A");
    }
    // The altitude's title follows the index error; the Sun's parallax follows its item;
    // a star has no semi-diameter, no parallax and no v or d.
    Observer_Settings(0.0);
    Find_Row(set, body::SunLowerLimb, kSpring - 0.2);
    SightCalc_Options o;
    EXPECT_TRUE(Has(Calc_Data(set, 0, o), "Observed Altitude"));
    EXPECT_TRUE(Has(Calc_Data(set, 0, o), "Parallax"));
    o.Parallax = false;
    EXPECT_FALSE(Has(Calc_Data(set, 0, o), "Parallax"));
    EXPECT_FALSE(Has(Calc_Data(set, 0, o), "Augmentation of SD"));
    Observer_Settings(2.0);
    Find_Row(set, MainStars[3].Star, kSpring + 0.4);
    o.Astro_Data = false;
    const SightCalc_Sheet star = Calc_Data(set, 0, o);
    EXPECT_TRUE(Has(star, "Sextant Altitude") && Has(star, "SHA"));
    EXPECT_FALSE(Has(star, "Semi Diameter") || Has(star, "Parallax") || Has(star, "v Corr") ||
                 Has(star, "d Corr"));
    EXPECT_TRUE(In_Order(star));
    // A row with no body has the headings only.
    set.Sights[1] = Sight_Record{};
    EXPECT_FALSE(Calc_Data(set, 1, o).Valid);
    EXPECT_EQ(Calc_Data(set, 1, o).Calc_Lines, 0);
    EXPECT_EQ(Calc_Data(set, 99, o).Calc_Lines, 0);
}

// The dead reckoning lies on the rhumb line of the course, by the meridional parts of the
// chosen spheroid, and agrees with the position service; plane sailing agrees with it
// closely over a short run.
TEST_F(SightCalcTest, DeadReckoningAlongTheRhumbLine) {
    const GeographicLib::Rhumb wgs(6378137.0, 1 / 298.257223563);
    const double eClarke = 0.08248339904;
    const GeographicLib::Rhumb clarke(6378249.145, 1 - std::sqrt(1 - eClarke * eClarke));
    const double courses[] = {37.0, 128.5, 200.0, 311.0, 90.0, 270.0};
    Settings.PositionMethod = kDRCourseSpeed;
    Settings.FixSpeed = 11.5f;
    double worstService = 0;
    for (const double course : courses) {
        Settings.FixCourse = static_cast<float>(course);
        const double t = Find_Row(set, body::SunLowerLimb, kSpring - 0.2);
        Settings.FixTime = t - 5.25 / 24;
        for (const bool tables : {true, false}) {
            SightCalc_Options o;
            o.Clarke = tables;
            const SightCalc_Sheet m = Calc_Data(set, 0, o);
            const Sailing_Work& dr = m.Values.DR;
            const double hours = (set.Sights[0].Sight_Time - Settings.FixTime) * 24;
            EXPECT_NEAR(dr.Run_Hours, hours, 0.005);
            EXPECT_NEAR(dr.Distance, hours * 11.5, 0.06 + 0.005 * 11.5);
            double s12 = 0, azi = 0;
            (tables ? clarke : wgs)
                .Inverse(kLat * kDegPerRad, kLon * kDegPerRad, dr.DR_Lat * kDegPerRad,
                         dr.DR_Long * kDegPerRad, s12, azi);
            if (azi < 0) azi += 360;
            // dLong is kept to 0'.1 over a run of some 60 miles.
            EXPECT_NEAR(azi, course, 0.15) << "course " << course << " Clarke " << tables;
            float lat = 0, lon = 0, c = 0, v = 0;
            Get_Position(set.Sights[0].Sight_Time, lat, lon, c, v);
            worstService = std::max(
                worstService, std::hypot(Minutes(lat - dr.DR_Lat),
                                         Angle_Diff_Minutes(lon, dr.DR_Long) * std::cos(lat)));
            o.DR_Route = Sailing_Route::Plane;
            const Sailing_Work& plane = Calc_Data(set, 0, o).Values.DR;
            EXPECT_DOUBLE_EQ(plane.DR_Lat, dr.DR_Lat);
            EXPECT_NEAR(Angle_Diff_Minutes(plane.DR_Long, dr.DR_Long), 0.0, 0.3);
            EXPECT_NEAR(plane.Departure, std::sin(course / kDegPerRad) * dr.Distance, 0.051);
        }
    }
    EXPECT_LT(worstService, 0.3);

    // Along a plan: from the way point that begins the leg of the sight's time.
    const double t = set.Sights[0].Sight_Time;
    Voyage.Way_Points.assign(3, Way_Point{});
    const double times[3] = {t - 0.6, t - 0.1, t + 0.4};
    const float legCourse[3] = {300.0f, 25.0f, 0.0f};
    double lat = kLat, lon = kLon;
    for (int k = 0; k < 3; ++k) {
        Way_Point& wp = Voyage.Way_Points[k];
        wp.Row_Valid = kTrue;
        wp.Time = times[k];
        wp.Lat = lat;
        wp.Long = lon;
        wp.Course = legCourse[k];
        wp.Speed = 9.0f;
        float la = static_cast<float>(lat), lo = static_cast<float>(lon);
        DR_Step(la, lo, static_cast<float>(legCourse[k] / kDegPerRad), static_cast<float>(9.0 * 12),
                legCourse[k] > 180, false);
        lat = la;
        lon = lo;
    }
    Voyage.Header.Plan_Start = times[0];
    Voyage.Header.Plan_End = times[2];
    Settings.PositionMethod = kDRByPlan;
    SightsFilter.AltLimit = static_cast<float>(600.0 / kMinPerRad);
    SightsFilter.AzLimit = 90.0f;
    Reduce_Sight(set, 0, false);
    ASSERT_EQ(set.Sights[0].Body_Id, body::SunLowerLimb);
    const SightCalc_Values planned = Calc_Data(set, 0, SightCalc_Options{}).Values;
    EXPECT_EQ(planned.Original_Time, times[1]);
    EXPECT_EQ(planned.Course, 25.0);
    EXPECT_NEAR(planned.DR.Run_Hours, 2.4, 0.005);
    EXPECT_NEAR(Minutes(planned.DR.DR_Lat - set.Sights[0].DR_Lat), 0.0, 0.1);
    EXPECT_NEAR(Angle_Diff_Minutes(planned.DR.DR_Long, set.Sights[0].DR_Long), 0.0, 0.15);
    // Past the plan's end the final position stands, with no run.
    Voyage.Header.Plan_End = t - 0.05;
    Reduce_Sight(set, 0, false);
    const SightCalc_Values after = Calc_Data(set, 0, SightCalc_Options{}).Values;
    EXPECT_EQ(after.DR.Distance, 0.0);
    EXPECT_NEAR(after.DR.DR_Lat, set.Sights[0].DR_Lat, 1e-9);
    Voyage.Way_Points.clear();

    // The sight at the original time: no run, and the texts of nothing.
    Settings.FixTime = set.Sights[0].Sight_Time;
    const SightCalc_Sheet zero = Calc_Data(set, 0, SightCalc_Options{});
    EXPECT_EQ(zero.Values.DR.Run_Hours, 0.0);
    EXPECT_EQ(zero.Values.DR.Distance, 0.0);
    EXPECT_EQ(zero.My_rDat[zero.Find("Distance Run")], "0'.0");
    EXPECT_EQ(zero.My_rDat[zero.Find("dLat")], "0'.0");
    EXPECT_EQ(zero.My_rDat[zero.Find("dLong")], "0'.0 ");
    EXPECT_EQ(zero.My_rDat[zero.Find("DR Lat")], zero.My_rDat[zero.Find("Original Latitude")]);
}

// The published increments for 30m 00s past the hour: Sun and planets 7° 30'.0, Aries
// 7° 31'.2, Moon 7° 09'.5; the hour's GHA with them and v agrees with the exact GHA, and
// the exact GHA with the Swiss Ephemeris.
TEST_F(SightCalcTest, HourAngleAndIncrements) {
    struct Case {
        int body;
        double increment;
    } cases[] = {{body::SunLowerLimb, 450.0},
                 {body::MoonLowerLimb, 429.5},
                 {body::Jupiter, 450.0},
                 {MainStars[10].Star, 451.2}};
    for (const Case& c : cases) {
        // Moments at 30m 00s past an hour of UT.
        double found = -1;
        for (int hour = 0; hour < 24 * 20 && found < 0; ++hour) {
            const double t = kSpring - 0.5 + hour / 24.0 + 30.0 / 1440.0;
            if (Make_Row(set, c.body, t)) found = t;
        }
        ASSERT_GE(found, 0) << "body " << c.body;
        SightCalc_Options o;
        o.Astro_Data = false;
        const SightCalc_Sheet sheet = Calc_Data(set, 0, o);
        const SightCalc_Values& s = sheet.Values;
        EXPECT_EQ(sheet.My_sTxt[sheet.Find("Increment")], "30m 00s");
        EXPECT_EQ(sheet.My_rDat[sheet.Find("Increment")],
                  Format_Angle(c.increment / kMinPerRad, 1, false));
        o.Astro_Data = true;
        const SightCalc_Values f = Calc_Data(set, 0, o).Values;
        EXPECT_NEAR(Minutes(s.Increment), c.increment, 1e-9) << "body " << c.body;
        // Hour, increment and v each kept to 0'.1.
        EXPECT_NEAR(Angle_Diff_Minutes(s.GHA, f.GHA), 0.0, 0.2) << "body " << c.body;
        EXPECT_NEAR(Minutes(s.Declination - f.Declination), 0.0, 0.2) << "body " << c.body;
        if (c.body == body::MoonLowerLimb) {
            EXPECT_GT(Minutes(s.V), 0.0);  // the Moon's increments run at its least rate
            EXPECT_LT(Minutes(s.V), 20.0);
        }
        if (c.body < body::FirstStar) {
            EXPECT_NEAR(Minutes(s.D_Corr), Minutes(s.D) / 2, 0.051);
            const double gha = testing_support::Reference_GHA(c.body, found);
            EXPECT_NEAR(Angle_Diff_Minutes(f.GHA, gha), 0.0, 0.1) << "body " << c.body;
        } else {
            EXPECT_NEAR(Angle_Diff_Minutes(f.GHA, f.Aries + f.SHA), 0.0, 1e-6);
        }
        EXPECT_NEAR(Angle_Diff_Minutes(f.LHA, f.GHA + f.DR.DR_Long), 0.0, 1e-6);
    }
}

// The full form's intercept is the reduction's, but for the sheet's refraction; the
// simplified form's within the tables' roundings. At the intercept terminal point the
// body's zenith distance is the observed one.
TEST_F(SightCalcTest, InterceptAgreesWithTheReduction) {
    std::vector<int> bodies = {body::SunLowerLimb,  body::SunUpperLimb, body::MoonLowerLimb,
                               body::MoonUpperLimb, body::Venus,        body::Saturn};
    // Three stars that rise well at the latitude.
    for (int k = 0; k < kMainStarCount && bodies.size() < 9; k += 7)
        if (Catalogue[MainStars[k].Star].Dec > -20 / kDegPerRad)
            bodies.push_back(MainStars[k].Star);
    double worstFull = 0, worstSimple = 0, worstItp = 0;
    Settings.ObserverLat = static_cast<float>(kLat + 12.0 / kMinPerRad);  // a DR 12' off
    double t = kSpring;
    for (const int b : bodies) {
        t = Find_Row(set, b, t + 0.3);
        ASSERT_EQ(set.Sights[0].Body_Id, b) << "no sight found";
        SightsFilter.AltLimit = static_cast<float>(60.0 / kMinPerRad);
        Reduce_Sight(set, 0, false);
        ASSERT_EQ(set.Sights[0].Body_Id, b) << "reduced from the DR";
        const double reduction = set.Sights[0].Intercept * kMinPerRad;
        SightCalc_Options o;
        o.Show_Errors = true;
        const SightCalc_Sheet full = Calc_Data(set, 0, o);
        // The reduction takes a star's place from the day's table: a few thousandths.
        EXPECT_NEAR(full.Values.Reference_Intercept, reduction, 0.01) << "body " << b;
        EXPECT_NEAR(full.Values.Total_Error,
                    full.Values.Intercept - full.Values.Reference_Intercept, 1e-9);
        worstFull = std::max(worstFull, std::fabs(full.Values.Intercept - reduction));
        o.Astro_Data = false;
        const SightCalc_Sheet simple = Calc_Data(set, 0, o);
        worstSimple = std::max(worstSimple, std::fabs(simple.Values.Intercept - reduction));
        // The words of the intercept.
        const std::string words = full.My_rDat[full.Find("Intercept")];
        EXPECT_NE(words.find(reduction > 0 ? " Away" : " Towards"), std::string::npos) << words;
        // The ITP's own zenith distance of the body is the true zenith distance.
        const SightCalc_Values& v = full.Values;
        const double lha = v.GHA + v.ITP.DR_Long;
        const double zd =
            std::acos(std::sin(v.ITP.DR_Lat) * std::sin(v.Declination) +
                      std::cos(v.ITP.DR_Lat) * std::cos(v.Declination) * std::cos(lha));
        worstItp = std::max(worstItp, std::fabs(Minutes(zd - v.TZD)));
        // The azimuth of the tables agrees with the reduction's.
        EXPECT_NEAR(std::remainder(v.Azimuth - v.Exact_Azimuth, 360.0), 0.0, 0.6);
    }
    std::printf(
        "working sheet against the reduction: full form %.3f', simplified %.3f', "
        "ITP zenith distance %.3f'\n",
        worstFull, worstSimple, worstItp);
    EXPECT_LT(worstFull, 0.1);
    EXPECT_LT(worstSimple, 0.4);
    EXPECT_LT(worstItp, 0.2);
}

// The Moon's options and the limbs: the augmentation moves the intercept by itself, the
// latitude correction by the reduction of the parallax, and the two limbs differ by twice
// the semi-diameter. Tabular refraction is the printed table at every altitude.
TEST_F(SightCalcTest, SightOptionsAndLimbs) {
    const double t = Find_Row(set, body::MoonLowerLimb, kSpring);
    SightCalc_Options o;
    const SightCalc_Values all = Calc_Data(set, 0, o).Values;
    EXPECT_GT(Minutes(all.Augmentation), 0.0);
    EXPECT_LT(Minutes(all.Augmentation), 0.3);
    EXPECT_GT(Minutes(all.HP), 53.0);
    EXPECT_LT(Minutes(all.HP), 62.0);
    o.Augmentation = false;
    const SightCalc_Values noAug = Calc_Data(set, 0, o).Values;
    EXPECT_NEAR(noAug.Intercept - all.Intercept, Minutes(all.Augmentation), 0.005);
    o.Augmentation = true;
    o.Lat_Correction = false;
    const SightCalc_Values noLat = Calc_Data(set, 0, o).Values;
    EXPECT_EQ(noLat.HP_Reduction, 0.0);
    EXPECT_GT(Minutes(all.HP_Reduction), 0.0);
    EXPECT_NEAR(std::fabs(noLat.Intercept - all.Intercept), 0.0, 0.5);
    EXPECT_NE(noLat.Intercept, all.Intercept);

    // The upper limb of the same sight: twice the semi-diameter further away, less the
    // change of the parallax with the centre's altitude, as the reduction has it.
    set.Sights[0].Body_Id = body::MoonUpperLimb;
    const SightCalc_Values upper = Calc_Data(set, 0, SightCalc_Options{}).Values;
    const Reduction_Work w =
        Prepare_Reduction(set.Sights[0].Sextant_Alt, static_cast<float>(all.DR.DR_Lat),
                          static_cast<float>(all.DR.DR_Long), 0.0f);
    BodyPlace moon;
    moon.GHA = all.GHA_Exact;
    moon.Dec = all.Apparent_Dec;
    moon.Distance = all.Distance;
    const double reductionStep = (Test_Body(w, body::MoonUpperLimb, moon).Alt_Diff -
                                  Test_Body(w, body::MoonLowerLimb, moon).Alt_Diff) *
                                 kMinPerRad;
    EXPECT_NEAR(upper.Intercept - all.Intercept, reductionStep, 0.01);
    EXPECT_NEAR(upper.Intercept - all.Intercept, 2 * Minutes(all.SD), 0.3);
    EXPECT_LT(upper.SD, 0.0);

    // Refraction: 0.96 ÷ tan h from 11° up unless the table is asked for; the table below.
    EXPECT_NEAR(Sheet_Refraction(30.0 / kDegPerRad, false) * kMinPerRad,
                0.96 / std::tan(30.0 / kDegPerRad), 1e-12);
    EXPECT_EQ(Sheet_Refraction(30.0 / kDegPerRad, true),
              static_cast<double>(Refraction_Table(static_cast<float>(30.0 / kDegPerRad))));
    EXPECT_EQ(Sheet_Refraction(8.0 / kDegPerRad, false),
              static_cast<double>(Refraction_Table(static_cast<float>(8.0 / kDegPerRad))));
    o = SightCalc_Options{};
    o.Tabular_Refraction = true;
    const SightCalc_Values tab = Calc_Data(set, 0, o).Values;
    EXPECT_EQ(tab.Refraction, Sheet_Refraction(tab.Apparent_Alt, true));
    (void)t;
}

// The azimuth by the A, B and C tables against the azimuth of an independent routine,
// over latitudes, declinations and hour angles of both sides; "N/A" at a pole and on the
// meridian.
TEST_F(SightCalcTest, AzimuthByTheABCTables) {
    double worst = 0;
    int count = 0;
    for (int latDeg = -70; latDeg <= 70; latDeg += 14) {
        for (int decDeg = -25; decDeg <= 25; decDeg += 10) {
            for (int lhaDeg = 5; lhaDeg < 360; lhaDeg += 20) {
                const double lat = latDeg / kDegPerRad, dec = decDeg / kDegPerRad;
                const double lha = lhaDeg / kDegPerRad;
                double az = 0, el = 0;
                eraHd2ae(lha, dec, lat, &az, &el);
                if (el < 0) continue;
                const ABC_Values abc = Calc_ABC_values(lat, lha, dec);
                ASSERT_TRUE(abc.Valid);
                const double diff = std::fabs(std::remainder(abc.Azimuth - az * kDegPerRad, 360.0));
                // A and B kept to 0.01 leave the bearing within about half a degree.
                const double allowed = 0.01 * std::fabs(std::cos(lat)) /
                                           (1 + abc.C * abc.C * std::cos(lat) * std::cos(lat)) *
                                           kDegPerRad +
                                       0.01;
                EXPECT_LE(diff, allowed) << latDeg << " " << decDeg << " " << lhaDeg;
                worst = std::max(worst, diff);
                ++count;
                EXPECT_EQ(abc.Bearing_EW, lhaDeg > 180 ? 'E' : 'W');
            }
        }
    }
    EXPECT_GT(count, 200);
    EXPECT_LT(worst, 0.6);
    EXPECT_FALSE(Calc_ABC_values(1.5707963267948966, 1.0, 0.3).Valid);
    EXPECT_FALSE(Calc_ABC_values(0.5, 0.0, 0.3).Valid);
    EXPECT_FALSE(Calc_ABC_values(0.5, kPi, 0.3).Valid);
    // The names: north latitude, west of the meridian, A named south, B as the declination.
    const ABC_Values named = Calc_ABC_values(50 / kDegPerRad, 40 / kDegPerRad, -10 / kDegPerRad);
    EXPECT_EQ(named.A_Name, 'S');
    EXPECT_EQ(named.B_Name, 'S');
    EXPECT_EQ(named.C_Name, 'S');
    EXPECT_NEAR(named.C, named.A + named.B, 1e-9);
    // The texts of the sheet.
    Find_Row(set, body::SunLowerLimb, kSpring - 0.2);
    const SightCalc_Sheet sheet = Calc_Data(set, 0, SightCalc_Options{});
    const std::string a = sheet.My_rDat[sheet.Find("A")];
    EXPECT_TRUE(a.ends_with(" N") || a.ends_with(" S")) << a;
    EXPECT_TRUE(sheet.My_rDat[sheet.Find("Azimuth")].ends_with("  T"));
    EXPECT_EQ(sheet.My_rDat[sheet.Find("Position Line")],
              Line_Bearings_Text(Round_Even(sheet.Values.Azimuth, 1)));
}

}  // namespace
}  // namespace kelmoran
