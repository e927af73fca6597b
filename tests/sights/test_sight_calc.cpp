// The working sheet of a sight against independent values: the rhumb line of the dead
// reckoning (GeographicLib), the hour angles (Swiss Ephemeris), the published increments,
// the azimuth (ERFA), and the intercept of the reduction itself.
#include <gtest/gtest.h>

#include <GeographicLib/Rhumb.hpp>
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "ephemeris/Altitude_Corrections.h"
#include "settings/M_Formatting.h"
#include "sight_support.h"
#include "sights/M_Sights.h"
#include "sights/SightCalc.h"
#include "sights/Sights.h"
#include "stars/M_Resources.h"
#include "voyage/Voyage_Plan.h"
// The reference libraries last: their headers define macros such as OK.
#include "sight_reference.h"

namespace kelmoran {
namespace {

constexpr double kLat = 0.72, kLon = -0.35;  // the true position, radians
constexpr double kSpring = 8840.0;           // 2024 March 15, 12:00 UT

using namespace testing_support;

// Every title of the sheet, in the order the lines stand.
const std::string kOrder =
    "|Original Position Time|Run Time (Hours)|Distance Run|Original Latitude|dLat|DR Lat|"
    "Mer Parts for DR|Mer Parts for Original Lat|DMP|Departure|Cos(Mean Lat)|Original Long|"
    "dLong|DR Long|Observed Altitude|Sextant Altitude|Index Error|Dip|Apparent Altitude|"
    "Refraction|True Altitude|Semi Diameter|Parallax|True Zenith Distance|(TZD Error|"
    "(Rounding Error|Horizontal Parallax|Redn in HP for Latitude|Augmentation of SD|"
    "Julian Day|Dt|in Longitude|in Obliquity|Obliquity of Eclipitic|Aries|RA of Body|"
    "Apparent Declination|Geocentric Distance|GHA|Increment|v Corr|SHA|LHA|Declination|"
    "d Corr|Calculated Zenith Distance|Intercept|(Total Errors|(Total Rounding Errors|A|B|C|"
    "Bearing|Azimuth|Position Line|ITP Latitude|Mer Parts for ITP|DMP|dLong|Departure|"
    "Cos(Mean Lat)|dLong|ITP Longitude|";

bool In_Order(const SightCalc_Sheet& sheet) {
    std::size_t k = 0;
    for (const std::string& title : sheet.My_rTxt) {
        k = kOrder.find("|" + title + "|", k);
        if (k == std::string::npos) return false;
        k += title.size() + 1;
    }
    return true;
}

bool Has(const SightCalc_Sheet& sheet, const char* title) {
    return sheet.Find(title) >= 0;
}

class SightCalcTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { Load_Star_Tables(); }
    void SetUp() override { Observer(-1.5); }
    void Observer(float indexError) {
        Observer_At(static_cast<float>(kLat), static_cast<float>(kLon), indexError, 5.0f);
    }
    // Row 0 holds a sight of `body` at `jd` made from the true position, 15° to 70° high,
    // its body selected by a reduction from there; the position method stays as it was.
    bool Make_Row(int body, double jd) {
        Observed o;
        if (!Reference_Sight(body, jd, kLat, kLon, Settings.Pressure, Settings.Temp, o) ||
            o.Alt * kDegreesPerRadian < 15 || o.Alt * kDegreesPerRadian > 70)
            return false;
        const SettingsRecord kept = Settings;
        Use_DR(static_cast<float>(kLat), static_cast<float>(kLon));
        set.Clear();
        Sight_Record& s = Enter_Row(set, 0, jd, o.Alt + DipRad + IndexErrorRad,
                                    static_cast<float>(std::nearbyint(o.Az)));
        s.Has_Body = kTrue;
        s.Body_Id = body;
        set.Fix_Sight.Sight_Time = jd;
        Reduce_Sight(set, 0, false);
        Settings = kept;
        return s.Has_Body != 0 && s.Body_Id == body;
    }
    // The first moment from `jd` on, in steps of `step` days, at which a row can be made.
    double Find_Row(int body, double jd, double step = 37.0 / 1440.0) {
        for (int k = 0; k < 480; ++k)
            if (Make_Row(body, jd + k * step)) return jd + k * step;
        ADD_FAILURE() << "no time found for body " << body;
        return jd;
    }
    SightCalc_Sheet Sheet(const SightCalc_Options& o = {}) { return Calc_Data(set, 0, o); }
    SightSet set{14};
};

TEST_F(SightCalcTest, TitlesInOrderForEveryForm) {
    Find_Row(body::MoonLowerLimb, kSpring);
    for (int mask = 0; mask < 64; ++mask) {
        SightCalc_Options o;
        o.Astro_Data = (mask & 1) != 0;
        o.Show_Errors = (mask & 2) != 0;
        o.DR_Route = (mask & 4) != 0 ? Sailing_Route::Plane : Sailing_Route::Mercator;
        o.Obs_Route = (mask & 8) != 0 ? Sailing_Route::Mercator : Sailing_Route::Plane;
        o.Augmentation = (mask & 16) != 0;
        o.Lat_Correction = (mask & 32) != 0;
        const SightCalc_Sheet sheet = Sheet(o);
        const bool full = o.Astro_Data, errors = o.Show_Errors;
        ASSERT_TRUE(sheet.Valid);
        EXPECT_TRUE(In_Order(sheet)) << "options " << mask;
        EXPECT_EQ(sheet.Calc_Lines, static_cast<int>(sheet.My_rTxt.size()));
        EXPECT_EQ(sheet.My_rDat.size(), sheet.My_rTxt.size());
        EXPECT_EQ(sheet.Headings.front(), "Sight");
        EXPECT_EQ(sheet.Headings[1], full ? "Astronomical Data" : "Data is rounded/ simplified ");
        EXPECT_EQ(sheet.Headings[2], full ? "Nutations" : "to agree with Nautical Tables");
        const bool mercDR = o.DR_Route == Sailing_Route::Mercator,
                   mercITP = o.Obs_Route == Sailing_Route::Mercator;
        const auto shown = [&](std::initializer_list<const char*> titles, bool want) {
            for (const char* t : titles) EXPECT_EQ(Has(sheet, t), want) << t << ", " << mask;
        };
        shown({"Obliquity of Eclipitic", "Julian Day"}, full);
        shown({"Increment", "v Corr", "d Corr"}, !full);
        shown({"(TZD Error", "(Total Errors"}, errors && full);
        shown({"(Rounding Error", "(Total Rounding Errors"}, errors && !full);
        shown({"Mer Parts for DR"}, mercDR);
        shown({"Mer Parts for ITP"}, mercITP);
        shown({"Augmentation of SD"}, o.Augmentation);
        shown({"Redn in HP for Latitude"}, o.Lat_Correction);
        shown({"Parallax", "Horizontal Parallax"}, true);
        EXPECT_EQ(std::count(sheet.My_rTxt.begin(), sheet.My_rTxt.end(), "Departure"),
                  !mercDR + !mercITP);
        EXPECT_EQ(sheet.My_rTxt[sheet.Find("Intercept") + (errors ? 2 : 1)], "A");
    }
    // The altitude's title follows the index error; the Sun's parallax follows its item;
    // a star has no semi-diameter, no parallax and no v or d.
    Observer(0.0);
    Find_Row(body::SunLowerLimb, kSpring - 0.2);
    SightCalc_Options o;
    EXPECT_TRUE(Has(Sheet(o), "Observed Altitude") && Has(Sheet(o), "Parallax"));
    o.Parallax = false;
    EXPECT_FALSE(Has(Sheet(o), "Parallax") || Has(Sheet(o), "Augmentation of SD"));
    Observer(2.0);
    Find_Row(MainStars[3].Star, kSpring + 0.4);
    o.Astro_Data = false;
    const SightCalc_Sheet star = Sheet(o);
    EXPECT_TRUE(Has(star, "Sextant Altitude") && Has(star, "SHA") && In_Order(star));
    for (const char* t : {"Semi Diameter", "Parallax", "v Corr", "d Corr"})
        EXPECT_FALSE(Has(star, t)) << t;
    // A row with no body, or none at all, has the headings only.
    set.Sights[1] = Sight_Record{};
    EXPECT_FALSE(Calc_Data(set, 1, o).Valid);
    EXPECT_EQ(Calc_Data(set, 1, o).Calc_Lines, 0);
    EXPECT_EQ(Calc_Data(set, 99, o).Calc_Lines, 0);
}

// The DR on the rhumb line by either spheroid, with the position service, by plane sailing.
TEST_F(SightCalcTest, DeadReckoningAlongTheRhumbLine) {
    const double eClarke = 0.08248339904;
    const GeographicLib::Rhumb wgs(6378137.0, 1 / 298.257223563),
        clarke(6378249.145, 1 - std::sqrt(1 - eClarke * eClarke));
    Settings.PositionMethod = kDRCourseSpeed;
    Settings.FixSpeed = 11.5f;
    double worstService = 0;
    for (const double course : {37.0, 128.5, 200.0, 311.0, 90.0, 270.0}) {
        Settings.FixCourse = static_cast<float>(course);
        const double t = Find_Row(body::SunLowerLimb, kSpring - 0.2);
        Settings.FixTime = t - 5.25 / 24;
        for (const bool useClarke : {true, false}) {
            SightCalc_Options o;
            o.Clarke = useClarke;
            const Sailing_Work dr = Sheet(o).Values.DR;
            EXPECT_NEAR(dr.Run_Hours, 5.25, 0.005);
            EXPECT_NEAR(dr.Distance, 5.25 * 11.5, 0.06 + 0.005 * 11.5);
            double s12 = 0, azi = 0;
            (useClarke ? clarke : wgs)
                .Inverse(kLat * kDegreesPerRadian, kLon * kDegreesPerRadian,
                         dr.DR_Lat * kDegreesPerRadian, dr.DR_Long * kDegreesPerRadian, s12, azi);
            // dLong is kept to 0'.1 over a run of some 60 miles.
            EXPECT_NEAR(std::fmod(azi + 360, 360), course, 0.15) << course << " " << useClarke;
            float lat = 0, lon = 0, c = 0, v = 0;
            Get_Position(t, lat, lon, c, v);
            worstService = std::max(
                worstService, std::hypot(Minutes(lat - dr.DR_Lat),
                                         Angle_Diff_Minutes(lon, dr.DR_Long) * std::cos(lat)));
            o.DR_Route = Sailing_Route::Plane;
            const Sailing_Work plane = Sheet(o).Values.DR;
            EXPECT_DOUBLE_EQ(plane.DR_Lat, dr.DR_Lat);
            EXPECT_NEAR(Angle_Diff_Minutes(plane.DR_Long, dr.DR_Long), 0.0, 0.3);
            EXPECT_NEAR(plane.Departure, std::sin(course / kDegreesPerRadian) * dr.Distance, 0.051);
        }
    }
    EXPECT_LT(worstService, 0.3);

    // Along a plan: from the way point that begins the leg of the sight's time.
    const double t = set.Sights[0].Sight_Time, times[3] = {t - 0.6, t - 0.1, t + 0.4};
    const float legCourse[3] = {300.0f, 25.0f, 0.0f};
    float lat = static_cast<float>(kLat), lon = static_cast<float>(kLon);
    Voyage.Way_Points.assign(3, Way_Point{});
    for (int k = 0; k < 3; ++k) {
        Way_Point& wp = Voyage.Way_Points[k];
        wp.Row_Valid = kTrue;
        wp.Time = times[k];
        wp.Lat = lat;
        wp.Long = lon;
        wp.Course = legCourse[k];
        wp.Speed = 9.0f;
        DR_Step(lat, lon, static_cast<float>(legCourse[k] / kDegreesPerRadian), 108.0f,
                legCourse[k] > 180, false);
    }
    Voyage.Header.Plan_Start = times[0];
    Voyage.Header.Plan_End = times[2];
    Settings.PositionMethod = kDRByPlan;
    SightsFilter.AltLimit = static_cast<float>(600.0 / kArcminPerRadian);
    SightsFilter.AzLimit = 90.0f;
    Reduce_Sight(set, 0, false);
    ASSERT_EQ(set.Sights[0].Body_Id, body::SunLowerLimb);
    const SightCalc_Values planned = Sheet().Values;
    EXPECT_EQ(planned.Original_Time, times[1]);
    EXPECT_EQ(planned.Course, 25.0);
    EXPECT_NEAR(planned.DR.Run_Hours, 2.4, 0.005);
    EXPECT_NEAR(Minutes(planned.DR.DR_Lat - set.Sights[0].DR_Lat), 0.0, 0.1);
    EXPECT_NEAR(Angle_Diff_Minutes(planned.DR.DR_Long, set.Sights[0].DR_Long), 0.0, 0.15);
    // Past the plan's end the final position stands, with no run.
    Voyage.Header.Plan_End = t - 0.05;
    Reduce_Sight(set, 0, false);
    const SightCalc_Values after = Sheet().Values;
    EXPECT_EQ(after.DR.Distance, 0.0);
    EXPECT_NEAR(after.DR.DR_Lat, set.Sights[0].DR_Lat, 1e-9);
    Voyage.Way_Points.clear();

    // The sight at the original time: no run, and the texts of nothing.
    Settings.FixTime = t;
    const SightCalc_Sheet zero = Sheet();
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
    const struct {
        int Body;
        double Increment;
    } cases[] = {{body::SunLowerLimb, 450.0},
                 {body::MoonLowerLimb, 429.5},
                 {body::Jupiter, 450.0},
                 {MainStars[10].Star, 451.2}};
    for (const auto& c : cases) {
        const double t = Find_Row(c.Body, kSpring - 0.5 + 30.0 / 1440.0, 1.0 / 24);
        SightCalc_Options o;
        o.Astro_Data = false;
        const SightCalc_Sheet sheet = Sheet(o);
        const SightCalc_Values& s = sheet.Values;
        EXPECT_EQ(sheet.My_sTxt[sheet.Find("Increment")], "30m 00s");
        EXPECT_EQ(sheet.My_rDat[sheet.Find("Increment")],
                  Format_Angle(c.Increment / kArcminPerRadian, 1, false));
        const SightCalc_Values f = Sheet().Values;
        EXPECT_NEAR(Minutes(s.Increment), c.Increment, 1e-9) << "body " << c.Body;
        // Hour, increment and v each kept to 0'.1.
        EXPECT_NEAR(Angle_Diff_Minutes(s.GHA, f.GHA), 0.0, 0.2) << "body " << c.Body;
        EXPECT_NEAR(Minutes(s.Declination - f.Declination), 0.0, 0.2) << "body " << c.Body;
        if (c.Body == body::MoonLowerLimb) {  // the Moon's increments run at its least rate
            EXPECT_GT(Minutes(s.V), 0.0);
            EXPECT_LT(Minutes(s.V), 20.0);
        }
        if (c.Body < body::FirstStar) {
            EXPECT_NEAR(Minutes(s.D_Corr), Minutes(s.D) / 2, 0.051);
            EXPECT_NEAR(Angle_Diff_Minutes(f.GHA, Reference_GHA(c.Body, t)), 0.0, 0.1)
                << "body " << c.Body;
        } else {
            EXPECT_NEAR(Angle_Diff_Minutes(f.GHA, f.Aries + f.SHA), 0.0, 1e-6);
        }
        EXPECT_NEAR(Angle_Diff_Minutes(f.LHA, f.GHA + f.DR.DR_Long), 0.0, 1e-6);
    }
}

// The full form's intercept is the reduction's but for the refraction, the simplified one's
// within the tables' roundings; at the ITP the body's zenith distance is the observed one.
TEST_F(SightCalcTest, InterceptAgreesWithTheReduction) {
    std::vector<int> bodies = {body::SunLowerLimb,  body::SunUpperLimb, body::MoonLowerLimb,
                               body::MoonUpperLimb, body::Venus,        body::Saturn};
    for (int k = 0; k < kMainStarCount && bodies.size() < 9; k += 7)  // stars that rise well
        if (Catalogue[MainStars[k].Star].Dec > -20 / kDegreesPerRadian)
            bodies.push_back(MainStars[k].Star);
    double worstFull = 0, worstSimple = 0, worstItp = 0, t = kSpring;
    Settings.ObserverLat = static_cast<float>(kLat + 12.0 / kArcminPerRadian);  // a DR 12' off
    for (const int b : bodies) {
        t = Find_Row(b, t + 0.3);
        SightsFilter.AltLimit = static_cast<float>(60.0 / kArcminPerRadian);
        Reduce_Sight(set, 0, false);
        ASSERT_EQ(set.Sights[0].Body_Id, b) << "reduced from the DR";
        const double reduction = set.Sights[0].Intercept * kArcminPerRadian;
        SightCalc_Options o;
        o.Show_Errors = true;
        const SightCalc_Sheet full = Sheet(o);
        const SightCalc_Values& v = full.Values;
        // The reduction takes a star's place from the day's table: a few thousandths.
        EXPECT_NEAR(v.Reference_Intercept, reduction, 0.01) << "body " << b;
        EXPECT_NEAR(v.Total_Error, v.Intercept - v.Reference_Intercept, 1e-9);
        worstFull = std::max(worstFull, std::fabs(v.Intercept - reduction));
        o.Astro_Data = false;
        worstSimple = std::max(worstSimple, std::fabs(Sheet(o).Values.Intercept - reduction));
        const std::string words = full.My_rDat[full.Find("Intercept")];
        EXPECT_NE(words.find(reduction > 0 ? " Away" : " Towards"), std::string::npos) << words;
        const double zd = std::acos(std::sin(v.ITP.DR_Lat) * std::sin(v.Declination) +
                                    std::cos(v.ITP.DR_Lat) * std::cos(v.Declination) *
                                        std::cos(v.GHA + v.ITP.DR_Long));
        worstItp = std::max(worstItp, std::fabs(Minutes(zd - v.TZD)));
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

// The Moon's options: the augmentation moves the intercept by itself, the latitude
// correction by the reduction of the parallax. Tabular refraction is the printed table.
TEST_F(SightCalcTest, SightOptionsAndLimbs) {
    Find_Row(body::MoonLowerLimb, kSpring);
    SightCalc_Options o;
    const SightCalc_Values all = Sheet(o).Values;
    EXPECT_GT(Minutes(all.Augmentation), 0.0);
    EXPECT_LT(Minutes(all.Augmentation), 0.3);
    EXPECT_GT(Minutes(all.HP), 53.0);
    EXPECT_LT(Minutes(all.HP), 62.0);
    o.Augmentation = false;
    EXPECT_NEAR(Sheet(o).Values.Intercept - all.Intercept, Minutes(all.Augmentation), 0.005);
    o.Augmentation = true;
    o.Lat_Correction = false;
    const SightCalc_Values noLat = Sheet(o).Values;
    EXPECT_EQ(noLat.HP_Reduction, 0.0);
    EXPECT_GT(Minutes(all.HP_Reduction), 0.0);
    EXPECT_NEAR(std::fabs(noLat.Intercept - all.Intercept), 0.0, 0.5);
    EXPECT_NE(noLat.Intercept, all.Intercept);

    // The upper limb about 2 SD further away; the table below 11° always.
    set.Sights[0].Body_Id = body::MoonUpperLimb;
    const SightCalc_Values upper = Sheet().Values;
    EXPECT_NEAR(upper.Intercept - all.Intercept, 2 * Minutes(all.SD), 0.3);
    EXPECT_LT(upper.SD, 0.0);
    for (const double deg : {30.0, 8.0})
        EXPECT_EQ(
            Sheet_Refraction(deg / kDegreesPerRadian, deg > 11),
            static_cast<double>(Refraction_Table(static_cast<float>(deg / kDegreesPerRadian))));
    o = SightCalc_Options{};
    o.Tabular_Refraction = true;
    const SightCalc_Values tab = Sheet(o).Values;
    EXPECT_EQ(tab.Refraction, Sheet_Refraction(tab.Apparent_Alt, true));
}

// The azimuth by the A, B and C tables against ERFA; none at a pole or on the meridian.
TEST_F(SightCalcTest, AzimuthByTheABCTables) {
    double worst = 0;
    int count = 0;
    for (int latDeg = -70; latDeg <= 70; latDeg += 14) {
        for (int decDeg = -25; decDeg <= 25; decDeg += 10) {
            for (int lhaDeg = 5; lhaDeg < 360; lhaDeg += 20) {
                const double lat = latDeg / kDegreesPerRadian, dec = decDeg / kDegreesPerRadian;
                double az = 0, el = 0;
                eraHd2ae(lhaDeg / kDegreesPerRadian, dec, lat, &az, &el);
                if (el < 0) continue;
                const ABC_Values abc = Calc_ABC_values(lat, lhaDeg / kDegreesPerRadian, dec);
                ASSERT_TRUE(abc.Valid);
                const double diff =
                    std::fabs(std::remainder(abc.Azimuth - az * kDegreesPerRadian, 360));
                // A and B kept to 0.01 leave the bearing within about half a degree.
                const double cosLat = std::cos(lat);
                EXPECT_LE(diff, 0.01 * cosLat / (1 + abc.C * abc.C * cosLat * cosLat) *
                                        kDegreesPerRadian +
                                    0.01)
                    << latDeg << " " << decDeg << " " << lhaDeg;
                EXPECT_EQ(abc.Bearing_EW, lhaDeg > 180 ? 'E' : 'W');
                worst = std::max(worst, diff);
                ++count;
            }
        }
    }
    EXPECT_GT(count, 200);
    EXPECT_LT(worst, 0.6);
    EXPECT_FALSE(Calc_ABC_values(1.5707963267948966, 1.0, 0.3).Valid);
    EXPECT_FALSE(Calc_ABC_values(0.5, 0.0, 0.3).Valid);
    EXPECT_FALSE(Calc_ABC_values(0.5, kPi, 0.3).Valid);
    // North latitude, west of the meridian: A named south, B as the declination.
    const ABC_Values named =
        Calc_ABC_values(50 / kDegreesPerRadian, 40 / kDegreesPerRadian, -10 / kDegreesPerRadian);
    EXPECT_EQ(std::string() + named.A_Name + named.B_Name + named.C_Name, "SSS");
    EXPECT_NEAR(named.C, named.A + named.B, 1e-9);
    // The texts of the sheet.
    Find_Row(body::SunLowerLimb, kSpring - 0.2);
    const SightCalc_Sheet sheet = Sheet();
    const std::string a = sheet.My_rDat[sheet.Find("A")];
    EXPECT_TRUE(a.ends_with(" N") || a.ends_with(" S")) << a;
    EXPECT_TRUE(sheet.My_rDat[sheet.Find("Azimuth")].ends_with("  T"));
    EXPECT_EQ(sheet.My_rDat[sheet.Find("Position Line")],
              Line_Bearings_Text(Round_Even(sheet.Values.Azimuth, 1)));
}

}  // namespace
}  // namespace kelmoran
