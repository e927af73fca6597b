// The .Sight file: layout, round trip, the steps of a load and the comparison of settings.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "sight_support.h"
#include "stars/M_Resources.h"

namespace kelmoran {
namespace {

// Answers the message boxes from a script and records them.
class Script_Host : public SightsHost {
  public:
    MsgAnswer Answer = MsgAnswer::Yes;
    std::vector<std::string> Texts, Titles, Plans;
    MsgAnswer Message_Box(const std::string& text, const std::string& title, MsgButtons) override {
        Texts.push_back(text);
        Titles.push_back(title);
        return Answer;
    }
    void Load_Plan(const std::string& path) override { Plans.push_back(path); }
    void Row_Blanked(int row) override { Blanked.push_back(row); }
    std::vector<int> Blanked;
};

void Base_Settings() {
    testing_support::Observer_At(0.9f, -0.07f, 0.0f, 4.0f);
    Settings.FixCourse = 45.0f;
    Settings.FixSpeed = 8.5f;
    TZ_Bias = 60;
    Shell.SightsChanged = kFalse;
    Shell.CalendarChoice = 0;
}

// Rows entered but matching no body: a load keeps them without reducing them again.
SightSet Sample_Set(int maxSight, int rows) {
    SightSet set(maxSight);
    set.My_TZ_Bias = 60;
    for (int r = 0; r < rows; ++r) {
        Sight_Record& s =
            testing_support::Enter_Row(set, r, 8830.25 + r / 1440.0, 0.5f + r * 0.01f, 100.0f + r);
        s.Sight_Day = 5 + r;
        s.Sight_Month = 3;
        s.Sight_Year = 2024;
        s.Sight_Hour = 18;
        s.Sight_Minute = 10 + r;
        s.Candidate_No = -1;
    }
    set.Fix_Sight = set.Sights[0];
    set.Fix_Sight.Sight_Time = 8830.3;
    set.Fix_Sight.DR_Lat = Settings.ObserverLat;  // the DR of the fix time, as a load sets it
    set.Fix_Sight.DR_Long = Settings.ObserverLong;
    return set;
}

class SightFiles : public ::testing::Test {
  protected:
    void SetUp() override { Base_Settings(); }
    Load_Result Load(SightSet& set, const std::vector<unsigned char>& bytes) {
        set.Host = &host;
        return Load_Sights_Bytes(set, bytes, "x.Sight");
    }
    Script_Host host;
};

TEST_F(SightFiles, LayoutAndRoundTripByteForByte) {
    SightSet set = Sample_Set(6, 3);
    const std::vector<unsigned char> bytes = Encode_Sights(set, Settings);
    // Empty plan path: 166 + 2 bytes of header, then the seven rows.
    ASSERT_EQ(bytes.size(), 168u + 7 * 76);
    EXPECT_EQ(std::memcmp(bytes.data() + 168, &set.Sights[0], 76), 0);
    EXPECT_EQ(std::memcmp(bytes.data() + 16, &set.Fix_Sight, 76), 0);
    int32_t bias = 0;
    float pressure = 0;
    std::memcpy(&bias, bytes.data(), 4);
    std::memcpy(&pressure, bytes.data() + 94 + 24, 4);
    EXPECT_EQ(bias, 60);
    EXPECT_EQ(pressure, 1010.0f);

    const auto dir = std::filesystem::temp_directory_path() / "kelmoran_sight_files";
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "05 Mar 24.Sight").string();
    Shell.SightsChanged = kTrue;
    ASSERT_TRUE(Save_Sights(set, path));
    EXPECT_EQ(Shell.SightsChanged, kFalse);
    EXPECT_EQ(set.Path, path);
    SightSet loaded(6);
    loaded.Host = &host;
    EXPECT_EQ(Load_Sights(loaded, path), Load_Result::Same);
    EXPECT_TRUE(host.Texts.empty());  // identical settings ask nothing
    EXPECT_EQ(Encode_Sights(loaded, Settings), bytes);
    EXPECT_EQ(Shell.CurrentJD, 8830.3);
    std::filesystem::remove_all(dir);

    // With a plan path the rows follow the path.
    Settings.DefaultPlanFile = "C:\\Plans\\Biscay.Voy";
    const std::vector<unsigned char> withPath = Encode_Sights(set, Settings);
    EXPECT_EQ(withPath.size(), bytes.size() + 19);
    EXPECT_EQ(std::memcmp(withPath.data() + 168 + 19, &set.Sights[0], 76), 0);
}

TEST_F(SightFiles, TallerScreensAndTruncatedFilesLoadWhatFitsAndAskNothing) {
    const SightSet tall = Sample_Set(14, 12);
    SightSet small(6);
    EXPECT_EQ(Load(small, Encode_Sights(tall, Settings)), Load_Result::Same);
    ASSERT_EQ(small.Sights.size(), 7u);
    for (int r = 0; r < 7; ++r)
        EXPECT_EQ(std::memcmp(&small.Sights[r], &tall.Sights[r], 76), 0) << r;

    std::vector<unsigned char> bytes = Encode_Sights(Sample_Set(6, 4), Settings);
    bytes.resize(168 + 2 * 76 + 30);  // rows 0 and 1 whole, row 2 cut
    SightSet loaded = Sample_Set(6, 6);
    EXPECT_EQ(Load(loaded, bytes), Load_Result::Same);
    EXPECT_EQ(loaded.Sights[1].Sight_Minute, 11);
    EXPECT_EQ(loaded.Sights[2].Row_Used, 0);
    EXPECT_EQ(loaded.Sights[5].Row_Used, 0);
    bytes.resize(120);  // cut inside the header
    EXPECT_EQ(Load(loaded, bytes), Load_Result::Same);
    EXPECT_EQ(loaded.Sights[0].Row_Used, 0);
    EXPECT_TRUE(host.Texts.empty());
}

TEST_F(SightFiles, UnsavedSightsAreAskedAbout) {
    SightSet set(6);
    host.Answer = MsgAnswer::Cancel;
    Shell.SightsChanged = kTrue;
    EXPECT_EQ(Load(set, Encode_Sights(Sample_Set(6, 2), Settings)), Load_Result::Cancelled_Unsaved);
    ASSERT_EQ(host.Texts.size(), 1u);
    EXPECT_EQ(host.Texts[0], "Current data has not been saved");
    EXPECT_EQ(host.Titles[0], "Sights Warining");
    EXPECT_EQ(set.Sights[0].Row_Used, 0);
}

TEST_F(SightFiles, TheDifferencesInTheirOrderAndFormats) {
    SettingsRecord file{}, now{};
    file.PositionMethod = now.PositionMethod = kDRCourseSpeed;
    file.FixCourse = 45.0f;
    file.FixSpeed = 8.5f;
    now.FixCourse = 45.0f;
    now.FixSpeed = 10.0f;
    EXPECT_EQ(Settings_Differences(file, 0, now, 0),
              "Track will change to 045°.0T @ 8.5Kts from 045°.0T @ 10.0Kts\r\n");

    file = now = SettingsRecord{};
    file.IndexError = -1.5f;
    file.Pressure = 1020.0f;
    now.Pressure = 1010.0f;
    file.Temp = 15.0f;
    file.HtOfEye = 2.5f;
    file.PositionMethod = kFixPosition;
    now.PositionMethod = kDRByPlan;
    file.ObserverLat = 0.5f;
    file.DefaultPlanFile = "C:\\Plans\\Biscay.Voy";
    const std::string text = Settings_Differences(file, -330, now, 0);
    EXPECT_EQ(
        text,
        "IE will change to -1'.5 from 0'.0\r\n"
        "Pressure will change to 1020.0mb from 1010.0mb\r\n"
        "Temperature will change to 15°.0C from 0°.0C\r\n"
        "Ht of Eye will change to 2.5m from 0.0m\r\n"
        "Postion Calculation will change to a fixed position instead of using the plan\r\n"
        "Fix position will change to 28° 38'.9 N/ 0° 00'.0  E from 0° 00'.0 N/ 0° 00'.0  E\r\n"
        "Time Zone will change to Z-5.5 from GMT\r\n"
        "Voyage Plan will change to \"Biscay\" from None\r\n");
}

TEST_F(SightFiles, AnswersToTheDifferences) {
    SettingsRecord fileSettings = Settings;
    fileSettings.HtOfEye = 9.0f;
    fileSettings.DefaultPlanFile = "/plans/North Sea.Voy";
    SightSet original = Sample_Set(6, 2);
    original.My_TZ_Bias = 120;
    Shell.CalendarChoice = kTrue;  // the file's calendar flag
    const std::vector<unsigned char> bytes = Encode_Sights(original, fileSettings);
    Shell.CalendarChoice = 0;

    // Cancel: the rows stay, the settings, bias and calendar stay as they were.
    SightSet set(6);
    host.Answer = MsgAnswer::Cancel;
    EXPECT_EQ(Load(set, bytes), Load_Result::Cancelled);
    ASSERT_EQ(host.Texts.size(), 1u);
    EXPECT_EQ(host.Titles[0], "Differences in User Settings");
    EXPECT_EQ(host.Texts[0],
              "Ht of Eye will change to 9.0m from 4.0m\r\n"
              "Time Zone will change to Z+2 from Z+1\r\n"
              "Voyage Plan will change to \"North Sea\" from None\r\n"
              "\r\nAccept values for the loaded sights?\r\n");
    EXPECT_EQ(set.Sights[1].Sight_Minute, 11);
    EXPECT_EQ(Settings.HtOfEye, 4.0f);
    EXPECT_EQ(Shell.CalendarChoice, 0);
    EXPECT_EQ(TZ_Bias, 60);

    // No: the settings stay, the load completes with the file's bias and calendar.
    host.Answer = MsgAnswer::No;
    EXPECT_EQ(Load(set, bytes), Load_Result::Kept);
    EXPECT_EQ(Settings.HtOfEye, 4.0f);
    EXPECT_EQ(TZ_Bias, 120);
    EXPECT_EQ(Shell.CalendarChoice, kTrue);

    // Yes: the file's observer record, the derived values and the plan.
    Base_Settings();
    host.Answer = MsgAnswer::Yes;
    SightSet again(6);
    EXPECT_EQ(Load(again, bytes), Load_Result::Accepted);
    EXPECT_EQ(Settings.HtOfEye, 9.0f);
    EXPECT_NEAR(DipRad * 3437.74677078494, 1.758 * 3.0, 1e-4);
    ASSERT_EQ(host.Plans.size(), 1u);
    EXPECT_EQ(host.Plans[0], "/plans/North Sea.Voy");
    EXPECT_EQ(again.Fix_Sight.DR_Lat, Settings.ObserverLat);  // DR of the fix time
}

// Numbers that no screen could have written: each is checked before use, so the load ends
// promptly and leaves nothing that a later step turns into a crash.
TEST_F(SightFiles, HostileNumbersAreReplacedOrTheRowTakenAsEmpty) {
    Load_Star_Tables();
    const double moment = 8000.5;
    auto file = [&](auto&& change) {
        SightSet set = Sample_Set(6, 3);
        set.Sights[0].Has_Body = kTrue;  // reduced again at load, stars and all
        set.Sights[0].Body_Id = 20;
        change(set);
        return Encode_Sights(set, Settings);
    };
    auto put = [](std::vector<unsigned char>& bytes, std::size_t at, auto value) {
        std::memcpy(bytes.data() + at, &value, sizeof value);
    };
    // A star count past the catalogue ended the program (an overflow, then an allocation
    // that failed) or took seconds and gigabytes; the Filter tab's first value stands in.
    for (int32_t count : {2147483647, 33554432, -5}) {
        std::vector<unsigned char> bytes = file([](SightSet&) {});
        put(bytes, 12, count);
        SightSet set(6);
        Shell.CurrentJD = moment;
        EXPECT_EQ(Load(set, bytes), Load_Result::Same);
        EXPECT_EQ(SightsFilter.StarCount, 280) << count;
        EXPECT_EQ(set.Sights[0].Row_Used, kTrue);
    }
    // An azimuth off the compass let every star through the filter; a time that is no
    // moment of the program's years; a body kept without an altitude entered, with the
    // file's NaN intercept and time.
    std::vector<unsigned char> bytes = file([](SightSet& set) {
        set.Sights[0].Sight_Az = -1e31f;
        set.Sights[1].Sight_Time = 1e20;
        set.Sights[2].Has_Body = kTrue;
        set.Sights[2].Alt_Entered = 0;
        set.Sights[2].Intercept = NAN;
        set.Fix_Sight.Sight_Time = NAN;
    });
    SightSet set(6);
    Shell.CurrentJD = moment;
    host.Blanked.clear();
    Load(set, bytes);
    EXPECT_EQ(set.Sights[0].Row_Used, 0);
    EXPECT_EQ(set.Sights[1].Row_Used, 0);
    EXPECT_EQ(host.Blanked, (std::vector<int>{0, 1, 3, 4, 5, 6}));
    EXPECT_EQ(set.Sights[2].Has_Body, 0);
    EXPECT_EQ(set.Sights[2].Intercept, 0.0f);
    EXPECT_EQ(Shell.CurrentJD, moment);  // a NaN fix time is not the moment of the screens
    EXPECT_EQ(set.Fix_Sight.Sight_Time, moment);
    EXPECT_TRUE(std::isfinite(set.Fix_Sight.DR_Lat));
}

// A load cancelled at the differences leaves the filter of the settings in use (and so in
// User.Dat at exit), as it leaves the bias and the calendar.
TEST_F(SightFiles, CancelledLoadKeepsTheFilterInUse) {
    const SightsFilterState before = SightsFilter;
    SettingsRecord fileSettings = Settings;
    fileSettings.Pressure = 990.0f;
    SightsFilter.AzLimit = 45.0f;
    SightsFilter.StarCount = 1520;
    const std::vector<unsigned char> bytes = Encode_Sights(Sample_Set(6, 1), fileSettings);
    SightsFilter = before;
    SightSet set(6);
    host.Answer = MsgAnswer::Cancel;
    EXPECT_EQ(Load(set, bytes), Load_Result::Cancelled);
    EXPECT_EQ(SightsFilter.AzLimit, before.AzLimit);
    EXPECT_EQ(SightsFilter.StarCount, before.StarCount);
}

TEST_F(SightFiles, RowsAndFileName) {
    EXPECT_EQ(Max_Sight(0), 6);
    EXPECT_EQ(Max_Sight(221 + 7 * 160 + 159), 7);
    EXPECT_EQ(Max_Sight(4000), 14);
    Sight_Record fix;
    fix.Sight_Day = 5;
    fix.Sight_Month = 3;
    fix.Sight_Year = 2024;
    EXPECT_EQ(Sight_File_Name(fix, "/home/me/"), "/home/me/05 Mar 24.Sight");
}

}  // namespace
}  // namespace kelmoran
