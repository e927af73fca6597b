// Calendar conversions, weekdays and ΔT.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "ephemeris/Time_Calcs.h"

namespace kelmoran {
namespace {

MySystemTime Date(int y, int m, int d, int h = 0, int min = 0, int s = 0) {
    using S = int16_t;  // year, month, weekday (the default 7), day, hour, minute, second, ms
    return {S(y), S(m), 7, S(d), S(h), S(min), S(s), 0};
}

// A date as text, without its weekday, for readable comparisons.
std::string Text(const MySystemTime& t) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay,
                  t.wHour, t.wMinute, t.wSecond);
    return buf;
}

// Sets the program-wide calendar flag for one test and restores it after.
class CalendarFlag {
  public:
    explicit CalendarFlag(bool julian) : saved_(Shared_JulDates) {
        Shared_JulDates = julian ? -1 : 0;
    }
    ~CalendarFlag() { Shared_JulDates = saved_; }

  private:
    int16_t saved_;
};

TEST(CalcJD, PublishedJulianDatesBCYearsAndTheAbsoluteGregorianCorrection) {
    // Meeus, Astronomical Algorithms, examples 7.a and 7.b and the table of ch. 7; -1000
    // July 12.5 (astronomical) is 1001 BC here, and -4712 January 1.5 is Julian Day 0.
    struct Case {
        MySystemTime date;
        bool julian;
        double jd;
    };
    const Case cases[] = {
        {Date(2000, 1, 1, 12), false, 2451545.0},
        {Date(1957, 10, 4, 19, 26, 24), false, 2436116.31},
        {Date(333, 1, 27, 12), true, 1842713.0},
        {Date(1582, 10, 15), false, 2299160.5},
        {Date(1582, 10, 4), true, 2299159.5},
        {Date(1600, 12, 31), false, 2305812.5},
        {Date(837, 4, 10, 7, 12), true, 2026871.8},
        {Date(-1001, 7, 12, 12), true, 1356001.0},
        {Date(-4713, 1, 1, 12), true, 0.0},
        {Date(-1, 3, 1), true, 1721117.5},  // 1 BC is the astronomers' year 0
    };
    for (const Case& c : cases)
        EXPECT_NEAR(Calc_JD(c.date, c.julian) + kJ2000, c.jd, 1e-6) << Text(c.date);
    EXPECT_EQ(Calc_JD(Date(2000, 1, 1, 12), false), 0.0);
    EXPECT_NEAR(Calc_JD(Date(1, 1, 1), true) - Calc_JD(Date(-1, 12, 31), true), 1.0, 1e-12);
    // The correction is computed from |Y|: 201 BC (Y = -200) gets B = 0, Julian and
    // Gregorian agree; 501 BC (Y = -500) gets B = -2.
    EXPECT_EQ(Calc_JD(Date(-201, 6, 1), false), Calc_JD(Date(-201, 6, 1), true));
    EXPECT_NEAR(Calc_JD(Date(-501, 6, 1), true) - Calc_JD(Date(-501, 6, 1), false), 2.0, 1e-12);
}

TEST(JDToDate, RoundTripsAcrossTheReformInBothCalendars) {
    for (bool julian : {false, true}) {
        CalendarFlag flag(julian);
        // Every 37.3 days from AD 1 to 3000, at several times of day, to the nearest second.
        for (double jd = Calc_JD(Date(1, 1, 1), julian) + 0.25; jd < 365250.0; jd += 37.3171) {
            const MySystemTime t = JD_To_Date(jd);
            const double back = Calc_JD(t, julian);
            ASSERT_NEAR(back, jd, 0.5 / 86400.0 + 1e-9) << julian << " " << Text(t);
            ASSERT_EQ(t.wDayOfWeek, Weekday_Of_JD(back)) << jd;
        }
        // The days either side of the reform, each in its own calendar; J2000 a Saturday.
        EXPECT_EQ(Text(JD_To_Date(julian ? 2299159.5 - kJ2000 : 2299160.5 - kJ2000)),
                  Text(julian ? Date(1582, 10, 4) : Date(1582, 10, 15)));
    }
    CalendarFlag gregorian(false);
    EXPECT_EQ(Text(JD_To_Date(0.0)), "2000-01-01 12:00:00");
    EXPECT_EQ(JD_To_Date(0.0).wDayOfWeek, 7);
}

TEST(JDToDate, DaysBeforeAD1AreJulianWhateverTheFlag) {
    CalendarFlag gregorian(false);
    // Julian Day 1721422.5 is 1 BC December 31 (Julian), though the flag says Gregorian;
    // from Julian Day 1721424 (whole part of J + 0.5) the flag rules: 1 BC December 30.
    EXPECT_EQ(Text(JD_To_Date(1721422.5 - kJ2000)), Text(Date(-1, 12, 31)));
    EXPECT_EQ(Text(JD_To_Date(1721423.5 - kJ2000)), Text(Date(-1, 12, 30)));
    // 4713 BC January 1, noon: Julian Day 0.
    EXPECT_EQ(Text(JD_To_Date(-kJ2000)), Text(Date(-4713, 1, 1, 12)));
    // The two directions are not each other's inverse before AD 1 with the flag clear:
    // 501 BC June 1 read back from its Gregorian day number is a Julian date 2 days off.
    const MySystemTime back = JD_To_Date(Calc_JD(Date(-501, 6, 1), false));
    EXPECT_EQ(Text(back), Text(Date(-501, 5, 30)));
}

TEST(JDToDate, RoundsToTheSecondAndCarriesMidnight) {
    CalendarFlag gregorian(false);
    const double noon = Calc_JD(Date(2024, 2, 29, 12), false);
    EXPECT_EQ(Text(JD_To_Date(noon + 0.4 / 86400.0)), Text(Date(2024, 2, 29, 12)));
    EXPECT_EQ(Text(JD_To_Date(noon + 0.6 / 86400.0)), Text(Date(2024, 2, 29, 12, 0, 1)));
    // 23:59:59.7 rounds into the next day, and the month and year carry.
    const double lastSecond = Calc_JD(Date(2024, 12, 31, 23, 59, 59), false) + 0.7 / 86400.0;
    EXPECT_EQ(Text(JD_To_Date(lastSecond)), Text(Date(2025, 1, 1)));
    // Nonsense in, a valid date out.
    for (const double bad : {std::nan(""), 1e300, -1e300}) {
        const MySystemTime t = JD_To_Date(bad);
        EXPECT_TRUE(t.wMonth >= 1 && t.wMonth <= 12 && t.wDay >= 1 && t.wDay <= 31 &&
                    t.wYear != 0 && t.wDayOfWeek >= 1 && t.wDayOfWeek <= 7)
            << bad << ": " << Text(t);
    }
}

TEST(JDToDate, RoundTripsOfBCYearsInTheJulianCalendar) {
    // Before AD 1 the day numbers are read as Julian dates whatever the flag says, so a
    // Julian date goes there and back under either flag, and the year never comes out 0.
    for (bool flag : {false, true}) {
        CalendarFlag calendar(flag);
        for (double jd = -kJ2000 + 0.75; jd < Calc_JD(Date(1, 1, 1), true); jd += 29.123) {
            const MySystemTime t = JD_To_Date(jd);
            ASSERT_LT(t.wYear, 0) << jd;
            ASSERT_NEAR(Calc_JD(t, true), jd, 0.5 / 86400.0 + 1e-9) << Text(t);
        }
    }
    // The years either side of the missing year 0.
    CalendarFlag julian(true);
    EXPECT_EQ(Text(JD_To_Date(Calc_JD(Date(-1, 12, 31, 18), true) + 0.25)), Text(Date(1, 1, 1)));
    EXPECT_EQ(Text(JD_To_Date(Calc_JD(Date(1, 1, 1), true) - 0.25)), Text(Date(-1, 12, 31, 18)));
}

TEST(Calendar, LeapYearsAndMonthLengths) {
    // The test is on the year as held: 4 BC (-4) is a leap year, 5 BC (-5) is not.
    const struct {
        int year;
        bool julian, leap;
    } years[] = {{2000, false, true}, {1900, false, false}, {1900, true, true}, {2024, false, true},
                 {2023, true, false}, {-4, true, true},     {-5, true, false}};
    for (const auto& y : years) EXPECT_EQ(Is_Leap_Year(y.year, y.julian), y.leap) << y.year;
    {
        CalendarFlag gregorian(false);
        EXPECT_EQ(Get_Month_Length(2, 1900), 28);
        EXPECT_EQ(Get_Month_Length(2, 2000), 29);
    }
    {
        CalendarFlag julian(true);
        EXPECT_EQ(Get_Month_Length(2, 1900), 29);
    }
    const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int m = 1; m <= 12; ++m) EXPECT_EQ(Get_Month_Length(m, 2023), lengths[m - 1]) << m;
}

TEST(Weekday, OfDatesAndOfDayNumbers) {
    CalendarFlag gregorian(false);
    EXPECT_EQ(Weekday_Of_Date(Date(1954, 6, 30)), 4);   // Wednesday (Meeus, example 7.e)
    EXPECT_EQ(Weekday_Of_Date(Date(2000, 1, 1)), 7);    // Saturday
    EXPECT_EQ(Weekday_Of_Date(Date(1582, 10, 15)), 6);  // Friday
    // Midnight belongs to the day that begins: the half is stepped off, not rounded to even.
    const double midnight = Calc_JD(Date(2026, 11, 21), false);  // a Saturday
    EXPECT_EQ(Weekday_Of_JD(midnight), 7);
    EXPECT_EQ(Weekday_Of_JD(midnight - 1e-6), 6);
    EXPECT_EQ(Weekday_Of_JD(midnight + 1.0), 1);
    {
        CalendarFlag julian(true);
        EXPECT_EQ(Weekday_Of_Date(Date(1582, 10, 4)), 5);  // Thursday, the day before the reform
    }
    // Both functions agree over a long run of days, before J2000 too.
    for (double jd = -700000.5; jd < 800000.0; jd += 997.0) {
        const MySystemTime t = JD_To_Date(jd + 0.3);
        ASSERT_EQ(Weekday_Of_Date(t), Weekday_Of_JD(jd + 0.3)) << jd;
    }
}

TEST(DeltaT, EveryBranchEdge) {
    struct Case {
        int year;
        float value;
    };
    const Case cases[] = {
        {2101, 0.0f},     {2100, 70.0f},    {2016, 70.0f},    {2015, 69.0f},    {2014, 69.0f},
        {2013, 68.0f},    {2012, 68.0f},    {2011, 67.1f},    {2010, 66.5f},    {2009, 65.7f},
        {2008, 70.0f},    {2007, 65.1464f}, {1999, 63.4673f}, {1998, 62.97f},   {1990, 56.86f},
        {1900, -2.72f},   {1860, 7.88f},    {1837, 5.6f},     {1839, 5.6f},     {1840, 5.7f},
        {1816, 12.5f},    {1817, 12.4f},    {1800, 13.7f},    {1799, 14.0f},    {1775, 17.0f},
        {1708, 10.0f},    {1707, 9.0f},     {1692, 9.0f},     {1682, 14.0f},    {1681, 15.0f},
        {1668, 28.0f},    {1667, 30.0f},    {1659, 38.0f},    {1658, 40.0f},    {1647, 51.0f},
        {1646, 53.0f},    {1620, 124.0f},   {1619, 123.3f},   {1600, 110.0f},   {1599, 110.7f},
        {1500, 180.0f},   {1499, 181.2f},   {1400, 300.0f},   {1300, 470.0f},   {1200, 750.0f},
        {1100, 1100.0f},  {1000, 1600.0f},  {999, 1606.0f},   {900, 2200.0f},   {899, 2208.0f},
        {700, 3800.0f},   {699, 3809.0f},   {600, 4700.0f},   {300, 7700.0f},   {299, 7709.0f},
        {200, 8600.0f},   {199, 8610.0f},   {-100, 11600.0f}, {-101, 11612.0f}, {-300, 14000.0f},
        {-301, 14013.0f}, {-400, 15300.0f}, {-401, 15315.0f}, {-500, 16800.0f}, {-501, 16824.42f},
        {-600, 19242.0f}, {-1001, 0.0f},
    };
    for (const Case& c : cases) EXPECT_FLOAT_EQ(Get_DeltaT(c.year), c.value) << c.year;

    // The quadratic of the oldest branch, with t in 32-bit arithmetic.
    const float t = -1000 / 100.0f - 9.48f;
    EXPECT_EQ(Get_DeltaT(-1000), 1830.0f - 405.0f * t + 46.5f * t * t);
    EXPECT_NEAR(Get_DeltaT(-1000), 1830 + 405 * 19.48 + 46.5 * 19.48 * 19.48, 0.01);
    EXPECT_NEAR(Get_DeltaT(-601), 1830 + 405 * 15.49 + 46.5 * 15.49 * 15.49, 0.01);
}

TEST(DeltaT, YearOfADayNumberIsCountedInJulianYearsFromJ2000) {
    EXPECT_EQ(DeltaT_Year(0.0), 2000);
    EXPECT_EQ(DeltaT_Year(365.24), 2000);
    EXPECT_EQ(DeltaT_Year(365.25), 2001);
    EXPECT_EQ(DeltaT_Year(-0.001), 1999);
    EXPECT_EQ(DeltaT_Year(std::nan("")), 2000);
}

}  // namespace
}  // namespace kelmoran
