// Sunrise, sunset, the twilights, moonrise and moonset for the observer against the Swiss
// Ephemeris for the same definitions, and the texts of the rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "almanac/Moon_Events.h"
#include "almanac/Sun_Events.h"
#include "almanac/cAlmanac.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Series.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Time_Calcs.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "swe_events.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {
namespace {

using namespace testing_support;

void Observe_From(double latDeg, double lonDeg) {
    Settings.PositionMethod = kFixPosition;
    Settings.ObserverLat = static_cast<float>(latDeg / kDeg);
    Settings.ObserverLong = static_cast<float>(lonDeg / kDeg);
}

class Events : public ::testing::Test {
  protected:
    void SetUp() override {
        Settings = SettingsRecord{};
        Settings.Pressure = 1010.0f;
        Settings.Temp = 10.0f;
        Settings.SimplifiedRiseSet = 0;  // the standard values
        Compute_Derived_Settings();
    }
    void TearDown() override { swe_set_delta_t_userdef(SE_DELTAT_AUTOMATIC); }
};

struct SunEvent {
    float Alt;
    bool Morning;
};
const SunEvent kSunEvents[] = {
    {kAstronomicalAlt, true},    {kNauticalAlt, true},         {kCivilAlt, true},
    {kStandardSunriseAlt, true}, {kStandardSunriseAlt, false}, {kCivilAlt, false},
    {kNauticalAlt, false},       {kAstronomicalAlt, false}};

// The moment of one of the Sun's events of Sun_Day (0 for none).
double Sun_Event_Moment(const SunEvent& e) {
    double t = 0.0;
    if (e.Alt == kStandardSunriseAlt)
        Sun_Rise_Set(e.Morning, Event_Text_Style{}, &t);
    else
        Twilight_Text(e.Alt, e.Morning, Event_Text_Style{}, &t);
    return t;
}

// 200 places and dates from 60°S to 72°N: the centre at -50', -6°, -12° and -18°.
TEST_F(Events, SunAgainstTheSwissEphemeris) {
    Lcg rng;
    double worst = 0.0, worstSlow = 0.0;
    int compared = 0, slow = 0, grazing = 0, none = 0;
    for (int k = 0; k < 200; ++k) {
        const double lat = rng.Range(-60.0, 72.0), lon = rng.Range(-180.0, 180.0);
        const double jd = std::floor(rng.Range(-36500.0, 36500.0)) + 0.3;
        Observe_From(lat, lon);
        Main_Sun_Rows(jd, 0, false);
        for (const SunEvent& e : kSunEvents) {
            const double ours = Sun_Event_Moment(e);
            auto f = [&](double t) {
                return Swe_True_Alt(t, SE_SUN, Settings.ObserverLat, Settings.ObserverLong) - e.Alt;
            };
            const double lo = e.Morning ? Sun_Day.Sun_Before.Time : Sun_Day.Sun_Noon.Time;
            const double hi = e.Morning ? Sun_Day.Sun_Noon.Time : Sun_Day.Sun_After.Time;
            const double flo = f(lo), fhi = f(hi);
            const bool exists = e.Morning ? (flo < 0 && fhi >= 0) : (flo >= 0 && fhi < 0);
            if (exists != (ours != 0.0)) {
                // Only a threshold grazed at a passage may be judged either way.
                EXPECT_LT(std::min(std::fabs(flo), std::fabs(fhi)) * kArcmin, 0.3)
                    << "lat " << lat << " jd " << jd << " alt " << e.Alt;
                ++grazing;
                continue;
            }
            if (!exists) {
                ++none;
                continue;
            }
            const double ref = Bisect(f, lo, hi);
            // Slower than 1' a minute of time: the altitude at our moment is held instead.
            if (std::fabs(f(ref + 30.0 / 86400.0) - f(ref - 30.0 / 86400.0)) * kArcmin < 1.0) {
                const double off = std::fabs(f(ours)) * kArcmin;
                EXPECT_LT(off, 0.3) << "lat " << lat << " jd " << jd << " alt " << e.Alt;
                worstSlow = std::max(worstSlow, off);
                ++slow;
            } else {
                const double dt = std::fabs(ours - ref) * 86400.0;
                EXPECT_LT(dt, 10.0) << "lat " << lat << " jd " << jd << " alt " << e.Alt;
                worst = std::max(worst, dt);
                ++compared;
            }
        }
    }
    std::printf(
        "Sun: %d events timed, largest difference %.2f s; %d slow crossings within "
        "%.3f'; %d absent on both sides; %d grazing\n",
        compared, worst, slow, worstSlow, none, grazing);
    EXPECT_GT(compared, 1000);
    EXPECT_GT(none, 20);  // the sample holds days without a night or without a sunrise
}

TEST_F(Events, SunTexts) {
    // 72°N at midsummer: the Sun neither sets nor reaches -6°; at midwinter it never rises
    // but still reaches civil and nautical twilight at noon.
    Observe_From(72.0, 20.0);
    Sun_Row summer = Main_Sun_Rows(Day_Of(2024, 6, 21) + 0.5, 60, false);
    for (int i : {0, 1, 2, 3, 5, 6, 7, 8}) EXPECT_EQ(summer[i], kNoEvent) << i;
    EXPECT_NE(summer[4], kNoEvent);
    Sun_Row winter = Main_Sun_Rows(Day_Of(2024, 12, 21) + 0.5, 60, false);
    EXPECT_EQ(winter[3], kNoEvent);
    EXPECT_EQ(winter[5], kNoEvent);
    for (int i : {0, 1, 2, 6, 7, 8}) EXPECT_EQ(winter[i].size(), 5u) << winter[i];

    // 45° west of the zone's meridian in June, astronomical twilight ends after midnight.
    Observe_From(45.0, -45.0);
    Sun_Row june = Main_Sun_Rows(Day_Of(2023, 6, 1) + 0.5, 0, false);
    EXPECT_EQ(june[8].substr(0, 4), "02/ ") << june[8];
    EXPECT_EQ(june[8].size(), 9u);
    EXPECT_EQ(june[0].find('/'), std::string::npos) << june[0];

    // On Clocks: seconds for sunrise, the passage and sunset only; no day prefix.
    Clox_Day day{Day_Of(2023, 6, 1) + 0.5 + 2.0 / 24.0, 0};
    std::vector<Sun_Row> rows = Clox_Sun_Row(std::span<const Clox_Day>(&day, 1), true);
    ASSERT_EQ(rows.size(), 1u);
    for (int i = 0; i < 9; ++i) EXPECT_EQ(rows[0][i].size(), i >= 3 && i <= 5 ? 8u : 5u) << i;
}

TEST_F(Events, MovingObserver) {
    const double jd = Day_Of(2021, 9, 10) + 0.5;
    Observe_From(40.0, -60.0);
    const Sun_Row fixed = Main_Sun_Rows(jd, -240, true);
    std::vector<double> fixedMoments;
    for (const SunEvent& e : kSunEvents) fixedMoments.push_back(Sun_Event_Moment(e));
    const Moon_Rows_Result fixedMoon = Moon_Rows(jd, -240, true);

    // Dead reckoning at no speed: a moving position method that stands still.
    Settings.PositionMethod = kDRCourseSpeed;
    Settings.FixCourse = 90.0f;
    Settings.FixSpeed = 0.0f;
    Settings.FixTime = jd;
    EXPECT_EQ(Main_Sun_Rows(jd, -240, true), fixed);
    EXPECT_EQ(Moving, 1);
    for (size_t i = 0; i < fixedMoments.size(); ++i)
        EXPECT_NEAR(Sun_Event_Moment(kSunEvents[i]), fixedMoments[i], 1e-9) << i;
    const Moon_Rows_Result still = Moon_Rows(jd, -240, true);
    EXPECT_EQ(still.Texts, fixedMoon.Texts);
    EXPECT_EQ(still.Titles, fixedMoon.Titles);

    // At 30 knots to the east each event is right for where the ship is at that moment.
    Settings.FixSpeed = 30.0f;
    Main_Sun_Rows(jd, -240, true);
    float lat, lon, course, speed;
    for (size_t i = 0; i < fixedMoments.size(); ++i) {
        const double t = Sun_Event_Moment(kSunEvents[i]);
        ASSERT_NE(t, 0.0);
        EXPECT_GT(std::fabs(t - fixedMoments[i]), 60.0 / 86400.0) << i;
        Get_Position(t, lat, lon, course, speed);
        EXPECT_NEAR(Swe_True_Alt(t, SE_SUN, lat, lon) * kArcmin, kSunEvents[i].Alt * kArcmin, 0.3)
            << i;
    }
    for (double t : Moon_Rows(jd, -240, true).Moments) {
        if (t == 0.0) continue;
        Get_Position(t, lat, lon, course, speed);
        double dist = 0;
        const double h = Swe_True_Alt(t, SE_MOON, lat, lon, &dist);
        EXPECT_NEAR(h * kArcmin, Moon_Horizon(lat, dist * kAuKm) * kArcmin, 0.3);
    }
}

TEST_F(Events, StandardAndActualValues) {
    Observe_From(45.0, 10.0);
    const double jd = Day_Of(2022, 3, 3) + 0.5;
    const auto sunrise = [&] {
        Main_Sun_Rows(jd, 60, false);
        return Sun_Event_Moment({kStandardSunriseAlt, true});
    };
    const double standard = sunrise();
    // The standard values know no height of eye and no latitude term.
    Settings.HtOfEye = 25.0f;
    Compute_Derived_Settings();
    EXPECT_EQ(sunrise(), standard);
    EXPECT_EQ(Moon_Horizon(0.0f, 384400.0), Moon_Horizon(1.2f, 384400.0));
    // At the mean distance HP is 57'.04 and SD 15'.54: with 34' of refraction the centre is
    // 7'.50 up when the upper limb rises.
    EXPECT_NEAR(Moon_Horizon(0.7f, 384400.0) * kArcmin, 7.50, 0.01);

    // The actual values: the sea horizon 25 m down lies 8'.8 below, with its refraction
    // about 10' more; the Sun, climbing 10' a minute, rises about a minute earlier.
    Settings.SimplifiedRiseSet = 1;
    const double actual = sunrise();
    EXPECT_LT(actual, standard - 0.5 / 1440.0);
    EXPECT_GT(actual, standard - 2.0 / 1440.0);
    EXPECT_NE(Moon_Horizon(0.0f, 384400.0), Moon_Horizon(1.2f, 384400.0));
    // Only the byte 1 asks for the actual values.
    Settings.SimplifiedRiseSet = 2;
    EXPECT_EQ(Moon_Horizon(0.0f, 384400.0), Moon_Horizon(1.2f, 384400.0));
    EXPECT_EQ(sunrise(), standard);
}

// With the actual values at 40 places, dates and heights of eye: at our moment the upper limb
// stands on the sea horizon (the Sun's place by our full series: the search is under test),
// earlier at sunrise and later at sunset than the standard moment.
TEST_F(Events, ActualSunriseAndSunsetOnTheSeaHorizon) {
    Lcg rng;
    double worst = 0.0;
    int timed = 0;
    for (int k = 0; k < 40; ++k) {
        const double lat = rng.Range(-60.0, 72.0), lon = rng.Range(-180.0, 180.0);
        const double jd = std::floor(rng.Range(-36500.0, 36500.0)) + 0.3;
        Observe_From(lat, lon);
        Settings.HtOfEye = static_cast<float>(rng.Range(0.0, 30.0));
        Settings.SimplifiedRiseSet = 1;
        Compute_Derived_Settings();
        Main_Sun_Rows(jd, 0, false);
        for (bool morning : {true, false}) {
            double t = 0.0, standard = 0.0;
            Sun_Rise_Set(morning, Event_Text_Style{}, &t);
            if (t == 0.0) continue;
            const Sun_Alt_Values v = Sun_Alt_Record(Settings.ObserverLat, Settings.ObserverLong,
                                                    Calc_Sun(kAccuracyFull, Calc_EarthFrame(t)));
            // 0'.01: a tenth of a second of time where the Sun rises steeply.
            EXPECT_NEAR(v.Apparent_Alt * kArcmin, 0.0, 0.01) << lat << " " << jd << " " << morning;
            worst = std::max(worst, std::fabs(v.Apparent_Alt * kArcmin));
            ++timed;
            Settings.SimplifiedRiseSet = 0;
            Sun_Rise_Set(morning, Event_Text_Style{}, &standard);
            Settings.SimplifiedRiseSet = 1;
            if (standard != 0.0) {
                EXPECT_EQ(morning, t < standard) << lat << " " << jd;
            }
        }
    }
    std::printf("Actual sunrise and sunset: %d timed, upper limb within %.4f' of the horizon\n",
                timed, worst);
    EXPECT_GT(timed, 60);
}

TEST_F(Events, MoonAgainstTheSwissEphemeris) {
    Lcg rng;
    double worst = 0.0;
    int compared = 0, setFirst = 0, quiet = 0;
    for (int k = 0; k < 200; ++k) {
        const double lat = rng.Range(-60.0, 72.0), lon = rng.Range(-180.0, 180.0);
        const double jd = std::floor(rng.Range(-36500.0, 36500.0)) + 0.3;
        const int32_t bias = static_cast<int32_t>(std::lround(lon / 15.0)) * 60;
        Observe_From(lat, lon);
        const Moon_Rows_Result r = Moon_Rows(jd, bias, false);
        const double start = std::floor(jd + bias / 1440.0 + 0.5) - 0.5 - bias / 1440.0;
        const float phi = Settings.ObserverLat;
        const std::vector<MoonCrossing> ref =
            Swe_Moon_Crossings(start, start + 1.0, phi, Settings.ObserverLong,
                               [&](double km) { return Moon_Horizon(phi, km); });
        // The rows: in time order; "    -" exactly where there is no moment.
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(r.Texts[i] == kNoEvent, r.Moments[i] == 0.0) << r.Texts[i];
        if (r.Moments[0] != 0 && r.Moments[1] != 0) {
            EXPECT_LT(r.Moments[0], r.Moments[1]);
        }
        if (r.Titles[0] == kMoonset) ++setFirst;
        if (r.Moments[0] == 0 && r.Moments[1] == 0) ++quiet;
        for (bool rise : {true, false}) {
            const double ours = r.Moments[(r.Titles[0] == kMoonrise) == rise ? 0 : 1];
            const auto match = std::find_if(ref.begin(), ref.end(),
                                            [&](const MoonCrossing& e) { return e.Rise == rise; });
            if (match == ref.end()) {
                EXPECT_EQ(ours, 0.0) << "lat " << lat << " jd " << jd << " rise " << rise;
            } else if (ours == 0.0) {
                // Missed only at the day's edge or at a grazing touch.
                const bool edge =
                    std::min(match->Time - start, start + 1.0 - match->Time) < 30.0 / 86400.0;
                EXPECT_TRUE(edge || match->Rate < 1.0)
                    << "lat " << lat << " jd " << jd << " rise " << rise;
            } else if (match->Rate >= 1.0) {
                const double dt = std::fabs(ours - match->Time) * 86400.0;
                EXPECT_LT(dt, 30.0) << "lat " << lat << " jd " << jd << " rise " << rise;
                worst = std::max(worst, dt);
                ++compared;
            }
        }
    }
    std::printf(
        "Moon: %d events timed, largest difference %.2f s; %d days set before rise, "
        "%d days with neither\n",
        compared, worst, setFirst, quiet);
    EXPECT_GT(compared, 300);
    EXPECT_GT(setFirst, 10);
}

TEST_F(Events, MoonAgeAndPhaseAsOnThePage) {
    Observe_From(50.0, 0.0);
    cAlmanac page;
    Lcg rng;
    for (int k = 0; k < 8; ++k) {
        const double jd = std::floor(rng.Range(-36500.0, 36500.0)) + 0.5;  // 0h
        page.MyJD(jd);
        EXPECT_EQ(Moon_Rows(jd, 0, false).Age, page.MyMoonAge()[0]) << jd;
        // The page's illumination is at noon of each day, rounded to the percent.
        EXPECT_NEAR(Moon_Rows(jd + 1.5, 0, false).Phase, page.MyMoonPhase()[1], 1.0) << jd;
    }
    // 2024 March 25, Full Moon at 07:00 UT: fully lit; 15 days after the New Moon of March
    // 10, 09:00 UT, at 12h.
    EXPECT_EQ(Moon_Rows(Day_Of(2024, 3, 25) + 0.3, 0, false).Phase, 100.0);
    EXPECT_EQ(Moon_Rows(Day_Of(2024, 3, 25) + 0.5, 0, false).Age, 15.0);
    // A moment that is not a number gives no age, no light and no times.
    const Moon_Rows_Result none = Moon_Rows(std::nan(""), 0, false);
    EXPECT_EQ(none.Age, 0.0);
    EXPECT_EQ(none.Phase, 0.0);
    EXPECT_EQ(none.Texts[0], kNoEvent);
}

TEST_F(Events, MoonPassageAndPolarDays) {
    // A height of eye of 0 gives the apparent altitude's title, any other the observed.
    Observe_From(50.0, 0.0);
    const double jd = Day_Of(2020, 2, 10) + 0.5;
    EXPECT_EQ(Moon_Rows(jd, 0, false).Passage_Title, kPassageAppAlt);
    Settings.HtOfEye = 4.0f;
    Compute_Derived_Settings();
    const Moon_Rows_Result r = Moon_Rows(jd, 0, false);
    EXPECT_EQ(r.Passage_Title, kPassageObsAlt);
    // The passage's altitude: about 90° - 50° + dec.
    const double dec = Swe_Place_At(r.Passage_Time, SE_MOON).Dec * kDeg;
    EXPECT_NEAR(r.Passage_Alt * kDeg, 40.0 + dec, 1.2);
    EXPECT_EQ(r.Passage_Alt_Text.substr(r.Passage_Alt_Text.size() - 5), kUpperLimb);

    // At 72°N the Moon stays up, or down, for days: both rows "    -", and on a day it
    // stays down the passage's altitude too.
    Observe_From(72.0, 0.0);
    bool up = false, down = false;
    for (int d = 0; d < 28 && !(up && down); ++d) {
        const Moon_Rows_Result m = Moon_Rows(Day_Of(2024, 1, 1) + d + 0.5, 0, false);
        if (m.Moments[0] != 0 || m.Moments[1] != 0) continue;
        EXPECT_EQ(m.Texts[0], kNoEvent);
        EXPECT_EQ(m.Texts[1], kNoEvent);
        if (m.Passage_Alt < 0) {
            EXPECT_EQ(m.Passage_Alt_Text, kNoEvent);
            down = true;
        } else {
            up = true;
        }
    }
    EXPECT_TRUE(up && down);
}

}  // namespace
}  // namespace kelmoran
