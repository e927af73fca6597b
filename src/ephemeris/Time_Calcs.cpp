// Time scales and calendars. Calendar conversions after J. Meeus, Astronomical Algorithms,
// 2nd ed. (1998), ch. 7; the departures from the book are the program's own and are kept.
#include "ephemeris/Time_Calcs.h"

#include <array>
#include <cmath>
#include <cstdlib>

namespace kelmoran {

int16_t Shared_JulDates = 0;

namespace {

// Steps 2 to 5 of the date-to-day-number conversion: the Julian Date of 0h of the day.
double Julian_Date_At_Midnight(const MySystemTime& date, bool julian) {
    int32_t y = date.wYear;
    if (y < 0) y += 1;  // 1 BC becomes 0, 2 BC becomes -1
    int32_t m = date.wMonth;
    if (m < 3) {
        m += 12;
        y -= 1;
    }
    int32_t b = 0;
    if (!julian) {
        // The absolute value is deliberate: the correction is not the proleptic one
        // for negative years.
        const int32_t ay = std::abs(y);
        const int32_t a = ay / 100;
        b = 2 - a + ay / 400;
    }
    return std::floor(365.25 * (y + 4716)) + std::floor(30.6001 * (m + 1)) + date.wDay + b -
           1524.5;
}

// The weekday of a rounded day count, 1 (Sunday) .. 7 (Saturday). A negative count is
// lifted by the program's constant 1931075 first.
int16_t Weekday_From_W(double w) {
    if (w < 0) w += 1931075.0;
    // Round half to even, as the conversion of the original does.
    const auto r = static_cast<int64_t>(std::nearbyint(w));
    return static_cast<int16_t>(((r % 7) + 7) % 7 + 1);
}

// Day numbers beyond this are far outside every date the program offers (years
// -9999 .. 9999); they are clamped so that no conversion overflows.
constexpr double kLargestDayNumber = 1.0e7;

}  // namespace

double Calc_JD(const MySystemTime& date, bool julian) {
    const double f = ((date.wSecond / 60.0 + date.wMinute) / 60.0 + date.wHour) / 24.0;
    return Julian_Date_At_Midnight(date, julian) - kJ2000 + f;
}

void JD_To_Date(double jd, MySystemTime& date) {
    if (!std::isfinite(jd)) jd = 0.0;
    if (jd > kLargestDayNumber) jd = kLargestDayNumber;
    if (jd < -kLargestDayNumber) jd = -kLargestDayNumber;

    // Round to the whole second first, so that a time that rounds up to 24:00:00 carries
    // into the next day.
    const double seconds = std::floor((jd + kJ2000 + 0.5) * 86400.0 + 0.5);
    const double z = std::floor(seconds / 86400.0);
    const auto second_of_day = static_cast<int32_t>(seconds - z * 86400.0);

    double a = z;
    // Every day before AD 1 January 1 (Julian Day 1721424) is given in the Julian calendar.
    if (z >= 1721424.0 && Shared_JulDates == 0) {
        const double alpha = std::floor((z - 1867216.25) / 36524.25);
        a = z + 1 + alpha - std::floor(alpha / 4);
    }
    const double b = a + 1524;
    const double c = std::floor((b - 122.1) / 365.25);
    const double d = std::floor(365.25 * c);
    const double e = std::floor((b - d) / 30.6001);

    const auto day = static_cast<int32_t>(b - d - std::floor(30.6001 * e));
    const auto month = static_cast<int32_t>(e < 14 ? e - 1 : e - 13);
    auto year = static_cast<int32_t>(c - 4715);
    if (month > 2) year -= 1;
    if (year < 1) year -= 1;  // no year 0: 0 becomes 1 BC (-1)

    date.wYear = static_cast<int16_t>(year);
    date.wMonth = static_cast<int16_t>(month);
    date.wDay = static_cast<int16_t>(day);
    date.wHour = static_cast<int16_t>(second_of_day / 3600);
    date.wMinute = static_cast<int16_t>(second_of_day / 60 % 60);
    date.wSecond = static_cast<int16_t>(second_of_day % 60);
    date.wMilliseconds = 0;
    date.wDayOfWeek = Weekday_From_W(z + 1.0);  // z is the Julian Date of the day's noon
}

MySystemTime JD_To_Date(double jd) {
    MySystemTime date;
    JD_To_Date(jd, date);
    return date;
}

bool Is_Leap_Year(int32_t year, bool julian) {
    if (year % 4 != 0) return false;
    if (julian) return true;
    return year % 100 != 0 || year % 400 == 0;
}

int16_t Get_Month_Length(int32_t month, int32_t year) {
    switch (month) {
        case 2:
            return Is_Leap_Year(year, Shared_JulDates != 0) ? 29 : 28;
        case 4:
        case 6:
        case 9:
        case 11:
            return 30;
        default:
            return 31;
    }
}

int16_t Weekday_Of_Date(const MySystemTime& date) {
    const double z = Julian_Date_At_Midnight(date, Shared_JulDates != 0);
    return Weekday_From_W(z + 0.25 + 1.5);
}

int16_t Weekday_Of_JD(double jd) {
    if (!std::isfinite(jd)) jd = 0.0;
    // At exactly midnight step off the half, which the conversion would round to even.
    if (std::fabs(jd - std::nearbyint(jd)) == 0.5) jd += 0.001;
    return Weekday_From_W(jd + 2451546.0);
}

namespace {

// ΔT in seconds for each year 1620 .. 2007.
constexpr std::array<float, 388> kDeltaT1620 = [] {
    std::array<float, 388> t{};
    const float first[] = {
        124, 119, 115, 110, 106, 102, 98, 95, 91, 88,   // 1620
        85,  82,  79,  77,  74,  72,  70, 67, 65, 63,   // 1630
        62,  60,  58,  57,  55,  54,  53,               // 1640-1646
    };
    int i = 0;
    for (float v : first) t[i++] = v;
    for (int y = 1647; y <= 1658; ++y) t[i++] = static_cast<float>(1698 - y);
    for (int y = 1659; y <= 1667; ++y) t[i++] = static_cast<float>(1697 - y);
    for (int y = 1668; y <= 1681; ++y) t[i++] = static_cast<float>(1696 - y);
    struct Run {
        int last;
        float value;
    };
    const Run runs[] = {{1683, 14}, {1684, 13}, {1686, 12}, {1688, 11}, {1691, 10},
                        {1707, 9},  {1716, 10}, {1733, 11}, {1743, 12}, {1750, 13},
                        {1757, 14}, {1764, 15}, {1774, 16}, {1791, 17}, {1795, 16},
                        {1797, 15}, {1799, 14}};
    int year = 1682;
    for (const Run& r : runs)
        for (; year <= r.last; ++year) t[i++] = r.value;
    const float rest[] = {
        13.7f,   13.4f,   13.1f,   12.9f,   12.7f,   12.6f,                          // 1800
        12.5f,   12.5f,   12.5f,   12.5f,   12.5f,   12.5f,   12.5f,   12.5f,        // 1806
        12.5f,   12.5f,   12.5f,                                                     // -1816
        12.4f,   12.3f,   12.2f,                                                     // 1817
        12.0f,   11.7f,   11.4f,   11.1f,   10.6f,   10.2f,   9.6f,    9.1f,    8.6f,    8.0f,
        7.5f,    7.0f,    6.6f,    6.3f,    6.0f,    5.8f,    5.7f,                  // 1830
        5.6f,    5.6f,    5.6f,                                                      // 1837
        5.7f,    5.8f,    5.9f,    6.1f,    6.2f,    6.3f,    6.5f,    6.6f,    6.8f,    6.9f,
        7.1f,    7.2f,    7.3f,    7.4f,    7.5f,    7.6f,    7.7f,    7.7f,    7.8f,    7.8f,
        7.88f,   7.82f,   7.54f,   6.97f,   6.40f,   6.02f,   5.41f,   4.10f,   2.92f,   1.82f,
        1.61f,   0.10f,   -1.02f,  -1.28f,  -2.69f,  -3.24f,  -3.64f,  -4.54f,  -4.71f,  -5.11f,
        -5.40f,  -5.42f,  -5.20f,  -5.46f,  -5.46f,  -5.79f,  -5.63f,  -5.64f,  -5.80f,  -5.56f,
        -5.87f,  -6.01f,  -6.19f,  -6.64f,  -6.44f,  -6.47f,  -6.09f,  -5.76f,  -4.66f,  -3.74f,
        -2.72f,  -1.54f,  -0.02f,  1.24f,   2.64f,   3.86f,   5.37f,   6.14f,   7.75f,   9.13f,
        10.46f,  11.53f,  13.36f,  14.65f,  16.01f,  17.20f,  18.24f,  19.06f,  20.25f,  20.95f,
        21.16f,  22.25f,  22.41f,  23.03f,  23.49f,  23.62f,  23.86f,  24.49f,  24.34f,  24.08f,
        24.02f,  24.00f,  23.87f,  23.95f,  23.86f,  23.93f,  23.73f,  23.92f,  23.96f,  24.02f,
        24.33f,  24.83f,  25.30f,  25.70f,  26.24f,  26.77f,  27.28f,  27.78f,  28.25f,  28.71f,
        29.15f,  29.57f,  29.97f,  30.36f,  30.72f,  31.07f,  31.35f,  31.68f,  32.18f,  32.68f,
        33.15f,  33.59f,  34.00f,  34.47f,  35.03f,  35.73f,  36.54f,  37.43f,  38.29f,  39.20f,
        40.18f,  41.17f,  42.23f,  43.37f,  44.49f,  45.48f,  46.46f,  47.52f,  48.53f,  49.59f,
        50.54f,  51.38f,  52.17f,  52.96f,  53.79f,  54.34f,  54.87f,  55.32f,  55.82f,  56.30f,
        56.86f,  57.57f,  58.31f,  59.12f,  59.98f,  60.78f,  61.63f,  62.29f,  62.97f,  // -1998
        63.4673f, 63.8285f, 64.0908f, 64.2998f, 64.4734f, 64.5736f, 64.6876f, 64.8452f,
        65.1464f,                                                                    // -2007
    };
    for (float v : rest) t[i++] = v;
    if (i != 388) throw "the table must hold every year 1620 .. 2007";  // fails the build
    return t;
}();

}  // namespace

float Get_DeltaT(int32_t y) {
    if (y > 2100) return 0.0f;
    if (y >= 2008) {
        switch (y) {
            case 2009: return 65.7f;
            case 2010: return 66.5f;
            case 2011: return 67.1f;
            case 2012:
            case 2013: return 68.0f;
            case 2014:
            case 2015: return 69.0f;
            default: return 70.0f;  // 2016 .. 2100, and 2008 on purpose
        }
    }
    if (y >= 1620) return kDeltaT1620[static_cast<size_t>(y - 1620)];
    const double yd = y;
    if (y >= 1600) return static_cast<float>(110 + 0.7 * (yd - 1600));
    if (y >= 1500) return static_cast<float>(180 - 0.7 * (yd - 1500));
    if (y >= 1400) return static_cast<float>(300 - 1.2 * (yd - 1400));
    if (y >= 1300) return static_cast<float>(470 - 1.7 * (yd - 1300));
    if (y >= 1200) return static_cast<float>(750 - 2.8 * (yd - 1200));
    if (y >= 1100) return static_cast<float>(1100 - 3.5 * (yd - 1100));
    if (y >= 1000) return static_cast<float>(1600 - 5 * (yd - 1000));
    if (y >= 900) return static_cast<float>(2200 - 6 * (yd - 900));
    if (y >= 700) return static_cast<float>(3800 - 8 * (yd - 700));
    if (y >= 600) return static_cast<float>(4700 - 9 * (yd - 600));
    if (y >= 300) return static_cast<float>(7700 - 10 * (yd - 300));
    if (y >= 200) return static_cast<float>(8600 - 9 * (yd - 200));
    if (y >= -100) return static_cast<float>(11600 - 10 * (yd + 100));
    if (y >= -300) return static_cast<float>(14000 - 12 * (yd + 300));
    if (y >= -400) return static_cast<float>(15300 - 13 * (yd + 400));
    if (y >= -500) return static_cast<float>(16800 - 15 * (yd + 500));
    if (y >= -600) return static_cast<float>(19242 - 24.42 * (yd + 600));
    if (y >= -1000) {
        const float t = static_cast<float>(y) / 100.0f - 9.48f;
        return 1830.0f - 405.0f * t + 46.5f * t * t;
    }
    return 0.0f;
}

int32_t DeltaT_Year(double jd) {
    if (!std::isfinite(jd)) return 2000;
    const double y = std::floor(jd / 365.25);
    if (y > 1.0e6) return 1000000;
    if (y < -1.0e6) return -1000000;
    return static_cast<int32_t>(y) + 2000;
}

}  // namespace kelmoran
