// Summer time read from the system's zone database for a northern zone (Europe/London) and
// a southern one (Australia/Sydney); rule dates; a date control's bias, label and calendar;
// the Time tab.
#include <gtest/gtest.h>

#include <QTimeZone>

#include "settings/M_Formatting.h"
#include "settings/M_TimeZones.h"
#include "settings/Process_Zone.h"
#include "settings/SettingsRecord.h"
#include "settings/System_TimeZone.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {
namespace {

QDateTime Utc(int y, int m, int d, int h = 12) {
    return QDateTime(QDate(y, m, d), QTime(h, 0), Qt::UTC);
}

MySystemTime Date(int y, int m, int d, int h = 12, int min = 0, int s = 0) {
    using S = int16_t;  // year, month, weekday (the default 7), day, hour, minute, second, ms
    return {S(y), S(m), 7, S(d), S(h), S(min), S(s), 0};
}

std::string Text(const MySystemTime& t) {
    return QString::asprintf("%d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour,
                             t.wMinute, t.wSecond)
        .toStdString();
}

// Reads a zone as the computer's at `now` into the shared rules.
void Use_Zone(const char* id, const QDateTime& now) {
    SystemZone zone;
    ASSERT_TRUE(Query_System_Zone(id, now, zone)) << id;
    Read_System_TimeZone(zone);
}

// A Gregorian date control at `date` with `bias`.
DateControlState Control(const MySystemTime& date, int32_t bias) {
    DateControlState c;
    Set_LMT(c, date);
    My_TZ_Bias(c, bias);
    return c;
}

// Moves the control's date and lets the rules act, as the control does after an edit.
LmtChange Move(DateControlState& c, const MySystemTime& date) {
    c.Date = date;
    c.MyJD = Calc_JD(date, c.JulDates != 0);
    return Test_Date_for_LMT_Change(c);
}

class TimeZones : public ::testing::Test {
  protected:
    void SetUp() override {
        Settings = SettingsRecord{};
        Settings.AutoTimeZone = kTrue;
        TZ_Bias = 0;
        SummerStart = {};
        SummerEnd = {};
    }
};

TEST_F(TimeZones, ZoneWithoutSummerTimeAndUnknownZone) {
    Use_Zone("Asia/Kolkata", Utc(2026, 6, 15));
    EXPECT_EQ(TZ_Bias, 330);
    EXPECT_EQ(SummerStart.Month, 0);
    EXPECT_EQ(SummerEnd.Month, 0);
    EXPECT_EQ(Rule_Text(SummerStart), "Manual Entry");
    const TimeTabLines lines = Time_Tab_Lines();
    EXPECT_EQ(lines.First, "Daylight saving time is not used");
    EXPECT_EQ(lines.Second, "");

    // Dates move nowhere: the bias equals both (empty) rules' bias.
    DateControlState c = Control(Date(2026, 7, 1), 330);
    EXPECT_FALSE(Move(c, Date(2026, 12, 1)).BiasChanged);
    EXPECT_EQ(c.Bias, 330);

    SystemZone zone;
    zone.StandardBias = 77;
    EXPECT_FALSE(Query_System_Zone("Mars/Olympus_Mons", Utc(2026, 6, 15), zone));
    EXPECT_EQ(zone.StandardBias, 77);
}

// What the run's own zone must give: standard and summer bias; month, week of the month
// (5 the last) and hour of each change, and their texts; a month of its summer and winter.
struct KnownZone {
    const char* Id;
    int32_t Standard, Summer;
    int StartMonth, StartWeek, StartHour, EndMonth, EndWeek, EndHour;
    const char *StartText, *EndText;
    int SummerMonth, WinterMonth;
};
constexpr KnownZone kKnownZones[] = {{"Europe/London", 0, 60, 3, 5, 1, 10, 5, 2,
                                      "Last Sunday in March", "Last Sunday in October", 6, 1},
                                     {"Australia/Sydney", 600, 660, 10, 1, 2, 4, 1, 3,
                                      "1st Sunday in October", "1st Sunday in April", 1, 7}};

const KnownZone& Own_Zone() {
    for (const KnownZone& z : kKnownZones)
        if (Process_Zone == z.Id) return z;
    ADD_FAILURE() << "the suite runs only under the zones it knows, not " << Process_Zone;
    return kKnownZones[0];
}

// The local calendar day of each change between summer and winter time in `year`, by the
// system's own zone database: the independent answer to the rule dates.
struct DayOfChange {
    int StartDay = 0, EndDay = 0;
};
DayOfChange Changes_In(const QTimeZone& tz, int year) {
    DayOfChange r;
    for (const QTimeZone::OffsetData& t :
         tz.transitions(Utc(year, 1, 1, 0), Utc(year + 1, 1, 1, 0))) {
        const QTimeZone::OffsetData before = tz.offsetData(t.atUtc.addSecs(-1));
        const int day = t.atUtc.addSecs(before.offsetFromUtc).date().day();
        if (t.daylightTimeOffset != 0 && before.daylightTimeOffset == 0) r.StartDay = day;
        if (t.daylightTimeOffset == 0 && before.daylightTimeOffset != 0) r.EndDay = day;
    }
    return r;
}

TEST_F(TimeZones, TheComputersOwnZone) {
    const KnownZone& known = Own_Zone();
    // The zone as the system describes it at a date of its summer, then of its winter.
    SystemZone zone;
    ASSERT_TRUE(Query_System_Zone(known.Id, Utc(2026, known.SummerMonth, 15), zone));
    EXPECT_EQ(zone.StandardBias, known.Standard);
    EXPECT_EQ(zone.DaylightBias, known.Summer);
    EXPECT_TRUE(zone.DaylightInForce);
    EXPECT_EQ(zone.DaylightDate.Month, known.StartMonth);
    EXPECT_EQ(zone.DaylightDate.Week, known.StartWeek);
    EXPECT_EQ(zone.DaylightDate.Hour, known.StartHour);
    EXPECT_EQ(zone.StandardDate.Month, known.EndMonth);
    EXPECT_EQ(zone.StandardDate.Week, known.EndWeek);
    EXPECT_EQ(zone.StandardDate.Hour, known.EndHour);  // in summer time
    Read_System_TimeZone(zone);
    EXPECT_EQ(TZ_Bias, known.Summer);
    EXPECT_EQ(SummerStart.Year, 2026);
    EXPECT_EQ(Rule_Text(SummerStart), known.StartText);
    EXPECT_EQ(Rule_Text(SummerEnd), known.EndText);
    Use_Zone(known.Id, Utc(2026, known.WinterMonth, 10));
    EXPECT_EQ(TZ_Bias, known.Standard);

    // The computer's own zone, read at the current moment.
    ASSERT_EQ(QTimeZone::systemTimeZoneId(), QByteArray(known.Id));
    TZ_Bias = 12345;
    ASSERT_TRUE(Read_System_TimeZone());
    const bool summer = QTimeZone(known.Id).isDaylightTime(QDateTime::currentDateTimeUtc());
    EXPECT_EQ(TZ_Bias, summer ? known.Summer : known.Standard);
    EXPECT_EQ(SummerStart.Month, known.StartMonth);
    EXPECT_EQ(SummerEnd.Month, known.EndMonth);
    EXPECT_EQ(SummerStart.Bias, known.Summer);
    EXPECT_EQ(SummerEnd.Bias, known.Standard);
    EXPECT_EQ(SummerStart.Weekday, 1);  // both zones change on a Sunday, 1 in the program
    EXPECT_EQ(SummerEnd.Weekday, 1);
    EXPECT_EQ(SummerStart.Valid, kTrue);
    EXPECT_EQ(SummerStart.Year, QDateTime::currentDateTimeUtc().date().year());

    // The rules read now give the days and moments of the system's own changes in other
    // years too.
    const QTimeZone tz(known.Id);
    for (int year = 2017; year <= 2035; year += 3) {
        Compute_Rule_Date(year, SummerStart);
        Compute_Rule_Date(year, SummerEnd);
        const DayOfChange expected = Changes_In(tz, year);
        EXPECT_EQ(SummerStart.Day, expected.StartDay) << year;
        EXPECT_EQ(SummerEnd.Day, expected.EndDay) << year;
        EXPECT_EQ(SummerStart.Moment,
                  Calc_JD(Date(year, known.StartMonth, expected.StartDay, known.StartHour), false));
        EXPECT_EQ(SummerEnd.Moment,
                  Calc_JD(Date(year, known.EndMonth, expected.EndDay, known.EndHour), false));
    }
}

TEST_F(TimeZones, DatesUnderTheComputersOwnZone) {
    const KnownZone& known = Own_Zone();
    ASSERT_TRUE(Read_System_TimeZone());
    const bool northern = known.StartMonth < known.EndMonth;
    const MySystemTime winter = northern ? Date(2027, 1, 15) : Date(2027, 7, 15);
    const MySystemTime summer = northern ? Date(2027, 7, 15) : Date(2027, 1, 15);

    // Across a rule date the bias and its label move, and back again.
    DateControlState c = Control(winter, known.Standard);
    EXPECT_FALSE(Move(c, winter).BiasChanged);
    EXPECT_TRUE(Move(c, summer).BiasChanged);
    EXPECT_EQ(c.Bias, known.Summer);
    EXPECT_EQ(c.MyLMT_Text, Format_TZ_Text(known.Summer));
    EXPECT_TRUE(Move(c, winter).BiasChanged);
    EXPECT_EQ(c.Bias, known.Standard);
    EXPECT_EQ(c.MyLMT_Text, Format_TZ_Text(known.Standard));

    // A bias set by hand is never touched.
    DateControlState manual = Control(winter, known.Standard + 30);
    EXPECT_FALSE(Move(manual, summer).BiasChanged);
    EXPECT_EQ(manual.Bias, known.Standard + 30);

    // 1900 keeps whichever bias it has.
    for (const int32_t bias : {known.Standard, known.Summer}) {
        DateControlState old = Control(winter, bias);
        for (const MySystemTime& d : {Date(1900, 7, 1), Date(1900, 1, 20), Date(1900, 1, 1, 0)}) {
            EXPECT_FALSE(Move(old, d).BiasChanged);
            EXPECT_EQ(old.Bias, bias);
        }
    }

    // After 2100 the label is "ET"; on return it is the zone's own label again.
    DateControlState far = Control(winter, known.Standard);
    EXPECT_TRUE(Move(far, Date(2150, 3, 1)).LabelChanged);
    EXPECT_EQ(far.MyLMT_Text.substr(0, 2), "ET");
    EXPECT_EQ(far.MyLMT_Text.find('Z'), std::string::npos);
    EXPECT_EQ(far.MyLMT_Text.find("GMT"), std::string::npos);
    Move(far, winter);
    EXPECT_EQ(far.MyLMT_Text, Format_TZ_Text(known.Standard));
}

TEST_F(TimeZones, RuleDatesOverYears) {
    DstRule lastSundayMarch{3, 1, 5, 1};
    DstRule secondSundayMarch{3, 1, 2, 2};
    DstRule firstSundayOctober{10, 1, 1, 2};
    DstRule lastFridayFebruary{2, 6, 5, 0};
    const struct {
        int Year;
        DstRule* Rule;
        int Day;
    } cases[] = {
        {2024, &lastSundayMarch, 31},    {2025, &lastSundayMarch, 30},
        {2026, &lastSundayMarch, 29},    {2027, &lastSundayMarch, 28},
        {1996, &lastSundayMarch, 31},    {2025, &secondSundayMarch, 9},
        {2026, &secondSundayMarch, 8},   {2026, &firstSundayOctober, 4},
        {2027, &firstSundayOctober, 3},  {2024, &lastFridayFebruary, 23},
        {2028, &lastFridayFebruary, 25}, {2000, &lastFridayFebruary, 25},
    };
    for (const auto& c : cases) {
        Compute_Rule_Date(c.Year, *c.Rule);
        EXPECT_EQ(c.Rule->Day, c.Day) << c.Year;
        EXPECT_EQ(c.Rule->Year, c.Year);
        EXPECT_EQ(c.Rule->Valid, kTrue);
        EXPECT_EQ(c.Rule->Moment, Calc_JD(Date(c.Year, c.Rule->Month, c.Day, c.Rule->Hour), false));
    }
    // Outside 1916 .. 2099 the moment is 1 January at 00:00.
    for (int year : {1900, 1915, 2100, 2500}) {
        Compute_Rule_Date(year, lastSundayMarch);
        EXPECT_EQ(lastSundayMarch.Moment, Calc_JD(Date(year, 1, 1, 0), false)) << year;
    }
    DstRule empty;
    Compute_Rule_Date(2026, empty);
    EXPECT_EQ(empty.Moment, Calc_JD(Date(2026, 1, 1, 0), false));
    EXPECT_EQ(empty.Valid, 0);
}

TEST_F(TimeZones, NorthernDateAcrossRuleDatesMovesTheBias) {
    Use_Zone("Europe/London", Utc(2026, 1, 10));
    DateControlState c = Control(Date(2026, 3, 28), 0);
    EXPECT_FALSE(Test_Date_for_LMT_Change(c).BiasChanged);
    EXPECT_EQ(c.MyLMT_Text, "GMT");

    LmtChange r = Move(c, Date(2026, 3, 29, 1, 0));
    EXPECT_TRUE(r.BiasChanged);
    EXPECT_EQ(c.Bias, 60);
    EXPECT_EQ(c.MyLMT_Text, "Z+1");
    EXPECT_FALSE(Move(c, Date(2026, 10, 25, 2, 0)).BiasChanged);  // the last moment of summer
    EXPECT_TRUE(Move(c, Date(2026, 10, 25, 2, 1)).BiasChanged);
    EXPECT_EQ(c.Bias, 0);
    EXPECT_EQ(c.MyLMT_Text, "GMT");

    // Another year: the rules are worked out for it.
    EXPECT_FALSE(Move(c, Date(2027, 3, 28, 0, 59)).BiasChanged);
    EXPECT_EQ(SummerStart.Year, 2027);
    EXPECT_EQ(SummerStart.Day, 28);
    EXPECT_TRUE(Move(c, Date(2027, 3, 28, 1, 0)).BiasChanged);
    EXPECT_EQ(c.Bias, 60);
}

TEST_F(TimeZones, SouthernDateAcrossRuleDatesMovesTheBias) {
    Use_Zone("Australia/Sydney", Utc(2026, 1, 15));
    DateControlState c = Control(Date(2026, 1, 20), 660);
    EXPECT_FALSE(Test_Date_for_LMT_Change(c).BiasChanged);
    EXPECT_FALSE(Move(c, Date(2026, 4, 5, 2, 59)).BiasChanged);
    EXPECT_TRUE(Move(c, Date(2026, 4, 5, 3, 0)).BiasChanged);
    EXPECT_EQ(c.Bias, 600);
    EXPECT_EQ(c.MyLMT_Text, "Z+10");
    EXPECT_FALSE(Move(c, Date(2026, 7, 1)).BiasChanged);
    EXPECT_TRUE(Move(c, Date(2026, 12, 1)).BiasChanged);
    EXPECT_EQ(c.Bias, 660);
    EXPECT_EQ(c.MyLMT_Text, "Z+11");
}

TEST_F(TimeZones, PlanControlsAndTheOffSwitchAreLeftAlone) {
    Use_Zone("Europe/London", Utc(2026, 1, 10));
    DateControlState plan = Control(Date(2026, 1, 10), 0);
    plan.FollowsSummerTime = false;
    EXPECT_FALSE(Move(plan, Date(2026, 6, 1)).BiasChanged);
    Settings.AutoTimeZone = kFalse;
    DateControlState off = Control(Date(2026, 1, 10), 0);
    EXPECT_FALSE(Move(off, Date(2026, 6, 1)).BiasChanged);
    EXPECT_EQ(off.Bias, 0);
}

TEST_F(TimeZones, EphemerisTimeLabelsOutsideTheYearsOfZones) {
    Use_Zone("Europe/London", Utc(2026, 1, 10));
    DateControlState z = Control(Date(2026, 7, 1), 60);
    EXPECT_TRUE(Move(z, Date(2101, 7, 1)).LabelChanged);
    EXPECT_EQ(z.MyLMT_Text, "ET+1");
    EXPECT_EQ(z.Bias, 60);
    EXPECT_TRUE(Move(z, Date(2100, 7, 1)).LabelChanged);
    EXPECT_EQ(z.MyLMT_Text, "Z+1");

    DateControlState west = Control(Date(2026, 7, 1), -330);
    EXPECT_TRUE(Move(west, Date(-1001, 7, 1)).LabelChanged);
    EXPECT_EQ(west.MyLMT_Text, "ET-5.5");
    EXPECT_TRUE(Move(west, Date(-1000, 7, 1)).LabelChanged);
    EXPECT_EQ(west.MyLMT_Text, "Z-5.5");

    EXPECT_EQ(Zone_Label(0, 3000), "ET");
    EXPECT_EQ(Zone_Label(-60, 3000), "ET-1");
    EXPECT_EQ(Zone_Label(-60, 2000), "Z-1");
}

TEST_F(TimeZones, GregorianReformFlipsToJulian) {
    Settings.AutoTimeZone = kFalse;
    DateControlState c = Control(Date(2000, 1, 1), 0);
    EXPECT_FALSE(Move(c, Date(1582, 10, 15, 0)).ToJulian);
    EXPECT_EQ(c.JulDates, 0);
    EXPECT_FALSE(Move(c, Date(1582, 11, 1)).ToJulian);

    LmtChange r = Move(c, Date(1582, 10, 14, 23, 59));
    EXPECT_TRUE(r.ToJulian);
    EXPECT_TRUE(r.RepaintDue());
    EXPECT_EQ(c.JulDates, kTrue);
    EXPECT_EQ(c.Date.wDay, 14);  // the fields stay as typed, now read as Julian
    EXPECT_EQ(c.MyJD, Calc_JD(Date(1582, 10, 14, 23, 59), true));

    DateControlState early = Control(Date(2000, 1, 1), 0);
    EXPECT_TRUE(Move(early, Date(1500, 3, 1)).ToJulian);
    DateControlState bc = Control(Date(2000, 1, 1), 0);
    EXPECT_TRUE(Move(bc, Date(-44, 3, 15)).ToJulian);
}

TEST_F(TimeZones, SetLmtInMinutesMode) {
    // Rounded to the minute, carrying into the next year; 29 February exists in Julian
    // 1900, not in Gregorian. Seconds mode keeps the seconds.
    const struct {
        MySystemTime in;
        bool julian;
        const char* out;
    } cases[] = {
        {Date(2026, 5, 5, 12, 34, 45), false, "2026-05-05 12:35:00"},
        {Date(2026, 5, 5, 12, 34, 29), false, "2026-05-05 12:34:00"},
        {Date(2026, 12, 31, 23, 59, 30), false, "2027-01-01 00:00:00"},
        {Date(1900, 2, 28, 23, 59, 50), false, "1900-03-01 00:00:00"},
        {Date(1900, 2, 28, 23, 59, 50), true, "1900-02-29 00:00:00"},
    };
    for (const auto& c : cases) {
        DateControlState m;
        m.RoundToMinute = true;
        m.JulDates = c.julian ? kTrue : 0;
        Set_LMT(m, c.in);
        EXPECT_EQ(Text(m.Date), c.out);
        EXPECT_EQ(m.MyJD, Calc_JD(m.Date, c.julian));
    }
    DateControlState s;
    Set_LMT(s, Date(2026, 5, 5, 12, 34, 45));
    EXPECT_EQ(Text(s.Date), "2026-05-05 12:34:45");
}

TEST_F(TimeZones, TimeTab) {
    Use_Zone("Europe/London", Utc(2026, 1, 10));
    TimeTabLines lines = Time_Tab_Lines();
    EXPECT_EQ(lines.First, "Summer Time Starts:  29 Mar '26 @ 01:00 (Last Sunday in March)");
    EXPECT_EQ(lines.Second, "Summer Time Ends:  25 Oct '26 @ 02:00 (Last Sunday in October)");
    EXPECT_STREQ(Time_Tab_Button(), "Disable");

    Time_Tab_Disable();
    EXPECT_EQ(Time_Tab_Lines().First, "Manual Settings in use");
    EXPECT_STREQ(Time_Tab_Button(), "Restore Default");

    Time_Tab_Restore_Default(Calc_JD(Date(2026, 6, 15), false));
    EXPECT_EQ(Settings.AutoTimeZone, kTrue);
    EXPECT_EQ(TZ_Bias, 60);
    Time_Tab_Restore_Default(Calc_JD(Date(2025, 12, 15), false));
    EXPECT_EQ(TZ_Bias, 0);

    // The southern zone in its summer gets the winter bias: the test is the northern one.
    Use_Zone("Australia/Sydney", Utc(2026, 1, 15));
    Time_Tab_Restore_Default(Calc_JD(Date(2026, 1, 15), false));
    EXPECT_EQ(TZ_Bias, 600);

    TZ_Bias = 60;
    TimeTabOffset o = Time_Tab_Offset(TZ_Bias);
    EXPECT_FALSE(o.Negative);
    EXPECT_EQ(o.Hours, 1);
    Time_Tab_Flip_Sign(o);
    EXPECT_EQ(TZ_Bias, -60);
    EXPECT_EQ(Settings.AutoTimeZone, kFalse);

    Settings.AutoTimeZone = kTrue;
    EXPECT_FALSE(Time_Tab_Edit_Hours(o, 13));
    EXPECT_EQ(TZ_Bias, -60);
    EXPECT_EQ(Settings.AutoTimeZone, kTrue);
    EXPECT_TRUE(Time_Tab_Edit_Minutes(o, 30));
    EXPECT_EQ(TZ_Bias, -90);
    EXPECT_EQ(Settings.AutoTimeZone, kFalse);
    EXPECT_TRUE(Time_Tab_Edit_Hours(o, 12));
    EXPECT_EQ(TZ_Bias, -720);
    EXPECT_TRUE(Time_Tab_Edit_Minutes(o, 15));
    EXPECT_EQ(TZ_Bias, -675);
    EXPECT_FALSE(Time_Tab_Edit_Minutes(o, 60));

    // A sign chosen while the bias is 0 holds for the next edit.
    TimeTabOffset zero = Time_Tab_Offset(0);
    Time_Tab_Flip_Sign(zero);
    EXPECT_EQ(TZ_Bias, 0);
    EXPECT_TRUE(Time_Tab_Edit_Hours(zero, 3));
    EXPECT_EQ(TZ_Bias, -180);
}

}  // namespace
}  // namespace kelmoran
