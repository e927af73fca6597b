// The text forms of angles, times and zones, the number mask and the date mask.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "settings/M_Formatting.h"

namespace kelmoran {
namespace {

constexpr double kDeg = 57.2957795130823;

double Rad(double degrees, double minutes = 0, double seconds = 0) {
    const double sign = degrees < 0 ? -1 : 1;
    return sign * (std::fabs(degrees) + minutes / 60 + seconds / 3600) / kDeg;
}

double Rad_Hours(double h, double m = 0, double s = 0) {
    return (h + m / 60 + s / 3600) * 15 / kDeg;
}

// Each row: what a formatter gave and what it must give.
void Expect_Rows(const std::vector<std::pair<std::string, std::string>>& rows) {
    for (const auto& [got, expected] : rows) EXPECT_EQ(got, expected);
}

struct MaskCase {
    const char* Mask;
    double Value;
    const char* Expected;
};

TEST(Format_Number, MasksValuesHalvesNegativesCarries) {
    // Halves go to the even neighbour, a value that rounds to zero has no sign, carries run
    // through the point and the thousands separators; NaN and infinity print as zero.
    const MaskCase cases[] = {
        {"##0'.0", 12.34, "12'.3"},
        {"##0'.0", 0.05, "0'.0"},
        {"##0'.0", 0.15, "0'.2"},
        {"##0'.0", 0.25, "0'.2"},
        {"##0'.0", -3.14, "-3'.1"},
        {"##0'.0", -0.04, "0'.0"},
        {"##0'.0", 1234.5, "1234'.5"},
        {"##0'.0", 99.96, "100'.0"},
        {"000°.0 T", 45, "045°.0 T"},
        {"000°.0 T", 7.25, "007°.2 T"},
        {"000°.0", 359.94, "359°.9"},
        {"##,##0'.0", 1234.56, "1,234'.6"},
        {"##,##0'.0", 12345678.9, "12,345,678'.9"},
        {"##,##0'.0", 999.95, "1,000'.0"},
        {"##,##0'.0", 0, "0'.0"},
        {"##,##0'.0", -1234.5, "-1,234'.5"},
        {"#,##0.00 N", 1234.5, "1,234.50 N"},
        {"#,##0.0#", 1.25, "1.25"},
        {"#0.0#", 5.2, "5.2"},
        {"#0.0#", 5.256, "5.26"},
        {"#0.0#", 5, "5.0"},
        {"#0.0#", 0.125, "0.12"},
        {"#0.##", 5, "5."},
        {"#0.00", 9.999, "10.00"},
        {"##.##", 0.5, ".5"},
        {"00", 7, "07"},
        {"00", 2.5, "02"},
        {"00", 3.5, "04"},
        {"0", -0.5, "0"},
        {"0", -1.5, "-2"},
        {"0000", 26, "0026"},
        {"#0h ", 5, "5h "},
        {"00m ", 7, "07m "},
        {"##0%", 0.456, "46%"},
        {"\\#0", 5, "#5"},
        {"Z+#0", 3, "Z+3"},
        {"0.0", std::nan(""), "0.0"},
        {"0.0", HUGE_VAL, "0.0"},
    };
    for (const MaskCase& c : cases)
        EXPECT_EQ(Format_Number(c.Value, c.Mask), c.Expected) << c.Mask << " of " << c.Value;
}

TEST(Round_Even, HalvesGoToTheEvenNeighbour) {
    EXPECT_EQ(Round_Even(0.5), 0.0);
    EXPECT_EQ(Round_Even(1.5), 2.0);
    EXPECT_EQ(Round_Even(2.5), 2.0);
    EXPECT_EQ(Round_Even(-2.5), -2.0);
    EXPECT_EQ(Round_Even(-3.5), -4.0);
    EXPECT_EQ(Round_Even(0.125, 2), 0.12);
    EXPECT_EQ(Round_Even(0.375, 2), 0.38);
    EXPECT_EQ(Round_Even(1e300, 3), 1e300);
    EXPECT_TRUE(std::isnan(Round_Even(std::nan(""), 2)));
}

TEST(Format_Date_Mask, TokensAndTheMonthOrMinuteChoice) {
    const MySystemTime t{2026, 3, 5, 5, 8, 30, 7, 0};  // Thursday 5 March 2026, 08:30:07
    Expect_Rows({{Format_Date_Mask(t, "dd/ HH:mm"), "05/ 08:30"},
                 {Format_Date_Mask(t, "HH:mm"), "08:30"},
                 {Format_Date_Mask(t, "HH:mm:ss"), "08:30:07"},
                 {Format_Date_Mask(t, "h:m:s"), "8:30:7"},
                 {Format_Date_Mask(t, "d mmm 'yy"), "5 Mar '26"},
                 {Format_Date_Mask(t, "mm/dd/yyyy"), "03/05/2026"},
                 {Format_Date_Mask(t, "dddd d mmmm"), "Thursday 5 March"},
                 {Format_Date_Mask(t, "ddd hh\\h nn"), "Thu 08h 30"},
                 {Format_Date_Mask({1905, 3, 0, 5}, "yy"), "05"}});
}

TEST(Format_Minutes, ByPlaces) {
    Expect_Rows({{Format_Minutes(7.4, 0), "07'"},
                 {Format_Minutes(29.5, 0), "30'"},
                 {Format_Minutes(28.5, 0), "28'"},
                 {Format_Minutes(0.25, 1), "00'.2"},
                 {Format_Minutes(7.125, 2), "07'.12"},
                 {Format_Minutes(12.3456, 3), "12'.346"},
                 {Format_Minutes(12.3456, 4), ""},
                 {Format_Minutes(12.3456, -1), ""}});
}

struct AngleCase {
    double Radians;
    int Places;
    bool Pad;
    const char* Expected;
};

TEST(Format_Angle, WholeDegreesMinutesPaddingAndCarry) {
    const std::vector<AngleCase> cases = {
        {Rad(45.5), 1, false, "45° 30'.0"},        {Rad(45.5), 1, true, "  45° 30'.0"},
        {Rad(5), 1, true, "    5° 00'.0"},         {Rad(123.25), 1, true, "123° 15'.0"},
        {Rad(359, 59.96), 1, false, "0° 00'.0"},  // carries, never 360°
        {Rad(359, 59.94), 1, false, "359° 59'.9"}, {Rad(-90), 1, false, "270° 00'.0"},
        {Rad(720.5), 1, false, "0° 30'.0"},        {Rad(12, 34.5678), 3, false, "12° 34'.568"},
        {Rad(12, 34.4), 0, false, "12° 34'"},      {Rad(12), 4, false, "12° "},
        {std::nan(""), 1, false, "0° 00'.0"},
    };
    for (const AngleCase& c : cases)
        EXPECT_EQ(Format_Angle(c.Radians, c.Places, c.Pad), c.Expected) << c.Expected;
}

TEST(Format_Angle_DMS, SecondsAndCarries) {
    const std::vector<AngleCase> cases = {
        {Rad(45, 30, 15), 1, false, "45° 30' 15\".0"},
        {Rad(45, 30, 15), 1, true, "  45° 30' 15\".0"},
        {Rad(7, 0, 1.25), 2, true, "    7° 00' 01\".25"},
        {Rad(10, 59, 59.96), 1, false, "11° 00' 00\".0"},
        {Rad(359, 59, 59.97), 1, false, "0° 00' 00\".0"},
        {Rad(-1), 1, false, "359° 00' 00\".0"},
    };
    for (const AngleCase& c : cases)
        EXPECT_EQ(Format_Angle_DMS(c.Radians, c.Places, c.Pad), c.Expected) << c.Expected;
}

TEST(Format_RA, HoursMinutesSecondsAndTheirCarry) {
    const std::vector<AngleCase> cases = {
        {Rad_Hours(6, 30, 15), 0, false, "6h 30m 15s"},
        {Rad_Hours(6, 30, 15.25), 2, true, "  6h 30m 15.25s"},
        {Rad_Hours(16, 5, 9.1234), 3, true, "16h 05m 09.123s"},
        {Rad_Hours(6, 30, 15), 5, false, "6h 30m 15.0000s"},
        {Rad_Hours(23, 59, 59.96), 1, false, "0h 00m 00.0s"},
        {Rad_Hours(23, 59, 59.96), 1, true, "  0h 00m 00.0s"},
        {Rad_Hours(4, 59, 59.96), 1, false, "5h 00m 00.0s"},
        {-Rad_Hours(1), 1, false, "23h 00m 00.0s"},
    };
    for (const AngleCase& c : cases)
        EXPECT_EQ(Format_RA(c.Radians, c.Places, c.Pad), c.Expected) << c.Expected;
    Expect_Rows({{Format_RA_HM(Rad_Hours(6, 30, 15), false), "6h 30m "},
                 {Format_RA_HM(Rad_Hours(6, 30, 45), true), "  6h 31m "},
                 {Format_RA_HM(Rad_Hours(23, 59, 40), false), "0h 00m "},
                 {Format_RA_HM(Rad_Hours(12, 59, 40), false), "13h 00m "}});
}

TEST(Format_Lat, HemispherePoleFoldingAndCarry) {
    const std::vector<AngleCase> cases = {
        {Rad(51, 19.3), 1, false, "51° 19'.3 N"},
        {Rad(-51.5), 1, false, "51° 30'.0 S"},
        {Rad(89, 59.97), 1, false, "90° 00'.0 N"},
        {-0.0001 / 60 / kDeg, 1, false, "0° 00'.0 S"},  // -0.0001' is south
        {0.0, 1, false, "0° 00'.0 N"},
        {Rad(5.5), 1, true, "  5° 30'.0 N"},
        {Rad(15.5), 1, true, "15° 30'.0 N"},
        {Rad(100), 1, false, "80° 00'.0 S"},  // beyond the pole
        {Rad(-100), 1, false, "80° 00'.0 N"},
        {Rad(10, 5.126), 2, false, "10° 05'.13 N"},
    };
    for (const AngleCase& c : cases)
        EXPECT_EQ(Format_Lat(c.Radians, c.Places, c.Pad), c.Expected) << c.Expected;

    // Minutes alone do not carry into degrees; with seconds the equator is south.
    Expect_Rows({{Format_Lat_Minutes(Rad(51, 19.3), 1), "19'.3"},
                 {Format_Lat_Minutes(Rad(-51, 19.3), 1), "19'.3"},
                 {Format_Lat_Minutes(Rad(51, 59.97), 1), "00'.0"},
                 {Format_Lat_DMS(Rad(51, 19, 18), 0, false), "51° 19' 18\" N"},
                 {Format_Lat_DMS(Rad(-51, 19, 18), 1, true), "  51° 19' 18\".0 S"},
                 {Format_Lat_DMS(0.0, 1, false), "0° 00' 00\".0 S"},
                 {Format_Lat_DMS(Rad(9, 59, 59.99), 1, false), "10° 00' 00\".0 N"}});
}

TEST(Format_Long, EastWestPaddingAndCarry) {
    const std::vector<AngleCase> cases = {
        {0.0, 1, false, "0° 00'.0  E"},
        {Rad(-0.5), 1, false, "0° 30'.0 W"},
        {Rad(179, 59.96), 1, false, "180° 00'.0  E"},
        {Rad(5), 1, true, "    5° 00'.0  E"},
        {Rad(-45, 12.34), 2, true, "  45° 12'.34 W"},
        {Rad(123, 4.25), 0, true, "123° 04'  E"},
    };
    for (const AngleCase& c : cases)
        EXPECT_EQ(Format_Long(c.Radians, c.Places, c.Pad), c.Expected) << c.Expected;
}

TEST(Format_TZ_Text, LabelsOfBiases) {
    Expect_Rows({{Format_TZ_Text(0), "GMT"},
                 {Format_TZ_Text(-330), "Z-5.5"},
                 {Format_TZ_Text(60), "Z+1"},
                 {Format_TZ_Text(-600), "Z-10"},
                 {Format_TZ_Text(720), "Z+12"},
                 {Format_TZ_Text(345), "Z+5.75"},
                 {Format_TZ_Text(20), "Z+0.33"},
                 {Format_TZ_Text(10), "Z+0.17"},
                 {Format_TZ_Text(-45), "Z-0.75"},
                 {Format_TZ_Text(1), "Z+0.02"},
                 {Format_TZ_Text(std::numeric_limits<int32_t>::min()), "Z-35791396"}});
}

TEST(Format_HM, HoursAndMinutes) {
    Expect_Rows({{Format_HM(5.5), "05:30"},
                 {Format_HM(-2.25), "02:15"},
                 {Format_HM(1.99999), "02:00"},
                 {Format_HM(25), "25:00"},
                 {Format_HM(std::nan("")), "00:00"}});
}

TEST(Format_Time_Of_Day, CivilTimeOfADayCount) {
    const double second = 1.0 / 86400;
    // Day counts run from noon.
    Expect_Rows({{Format_Time_Of_Day(0.0, true), "12:00:00"},
                 {Format_Time_Of_Day(-0.5, true), "00:00:00"},
                 {Format_Time_Of_Day(0.5 - 20 * second, true), "23:59:40"},
                 {Format_Time_Of_Day(0.5 - 20 * second, false), "00:00"},
                 {Format_Time_Of_Day(0.5 - 0.4 * second, true), "00:00:00"},
                 {Format_Time_Of_Day(-0.5 + (8 * 3600 + 1831) * second, false), "08:31"},
                 {Format_Time_Of_Day(-0.5 + (8 * 3600 + 1829) * second, false), "08:30"},
                 {Format_Time_Of_Day(-1000.25, true), "06:00:00"}});
}

TEST(Format_Day_Month, CalendarOfTheDay) {
    EXPECT_EQ(Format_Day_Month(Calc_JD({2000, 3, 0, 5}, false), false), "5 Mar");
    const double reform = Calc_JD({1582, 10, 0, 15}, false);
    EXPECT_EQ(Format_Day_Month(reform, false), "15 Oct");
    EXPECT_EQ(Format_Day_Month(reform, true), "5 Oct");
    // Before AD 1 January 1 (Julian Day 1721424) the day is Julian whatever is asked: 1 BC
    // December 31 and, a day on, AD 1 January 1, which the Gregorian reading puts at 1 BC
    // December 30.
    const double lastBC = 1721423.0 - kJ2000;  // noon of 1 BC December 31, Julian
    EXPECT_EQ(Format_Day_Month(lastBC, false), "31 Dec");
    EXPECT_EQ(Format_Day_Month(lastBC, true), "31 Dec");
    EXPECT_EQ(Format_Day_Month(lastBC + 1.0, true), "1 Jan");
    EXPECT_EQ(Format_Day_Month(lastBC + 1.0, false), "30 Dec");
    // The shared calendar flag is left as it was.
    EXPECT_EQ(Shared_JulDates, 0);
}

TEST(Greek, ShortAndFullNames) {
    // The short name is the first three letters of the full one.
    const std::string letters = "abcdegiklmnoprstuxzwfyqh";
    const char* full[] = {"Alpha", "Beta",  "Chi",    "Delta", "Epsilon", "Gamma",
                          "Iota",  "Kappa", "Lambda", "Mu",    "Nu",      "Omicron",
                          "Pi",    "Rho",   "Sigma",  "Tau",   "Upsilon", "Xi",
                          "Zeta",  "Omega", "Phi",    "Psi",   "Theta",   "Eta"};
    for (size_t i = 0; i < letters.size(); ++i) {
        EXPECT_EQ(Greek_Full(letters[i]), full[i]) << letters[i];
        EXPECT_EQ(Greek_Short(letters[i]), std::string(full[i]).substr(0, 3)) << letters[i];
    }
    // Every other character is no Greek letter: upper case, "j" and "v", digits, blanks.
    for (int c = 1; c < 256; ++c) {
        const char letter = static_cast<char>(c);
        if (letters.find(letter) != std::string::npos) continue;
        EXPECT_EQ(Greek_Short(letter) + Greek_Full(letter), "") << c;
    }
}

TEST(Courses, ThreeSixtyAndMagneticWrap) {
    Expect_Rows({{Format_Course(359.96), "000°.0"},
                 {Format_Course(45.25), "045°.2"},
                 {Format_Magnetic_Course(-3.04), "357°.0 M"},
                 {Format_Magnetic_Course(362.5), "002°.5 M"},
                 {Format_Magnetic_Course(359.96), "000°.0 M"}});
}

TEST(AnsiText, RoundTripAndUnmappable) {
    const std::string ansi = "C:\\Voy\\Caf\xE9 \xB0 \x80.Voy";
    const std::string utf8 = Ansi_To_Utf8(ansi);
    EXPECT_EQ(utf8, "C:\\Voy\\Café ° €.Voy");
    EXPECT_EQ(Utf8_To_Ansi(utf8), ansi);
    EXPECT_EQ(Utf8_To_Ansi("Москва"), "??????");
    EXPECT_EQ(Utf8_To_Ansi(std::string("a\xC3") + "b"), "a?b");  // broken sequence
}

}  // namespace
}  // namespace kelmoran
