// User.Dat byte for byte: layout, first run, short and empty files, the kept quirks, the
// default plan, and a save that fails part-way.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {
namespace {

namespace fs = std::filesystem;

constexpr double kMinutesPerRadian = 3437.74677078494;

std::vector<unsigned char> Read_Bytes(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Write_Bytes(const fs::path& p, const std::vector<unsigned char>& bytes) {
    std::ofstream out(p, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

std::vector<unsigned char> Hex(const std::string& hex) {
    std::vector<unsigned char> out;
    for (size_t i = 0; i + 1 < hex.size(); i += 2)
        out.push_back(static_cast<unsigned char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return out;
}

class UserDat : public ::testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/kelmoran_userdat_XXXXXX";
        ASSERT_NE(::mkdtemp(pattern), nullptr);
        root_ = pattern;
        Find_User_Folder({"", root_.string(), ""});
        fs::create_directories(UserFolder);
        Reset_Shell(nullptr);
        Settings = SettingsRecord{};
        TZ_Bias = 0;
        reads_.clear();
        empties_ = 0;
        Default_Plan_Hooks.Read_Plan = [this](const std::string& p) { reads_.push_back(p); };
        Default_Plan_Hooks.Make_Empty_Plan = [this] { ++empties_; };
    }
    void TearDown() override {
        Default_Plan_Hooks = {};
        std::error_code ec;
        fs::remove_all(root_, ec);
    }
    fs::path File() const { return User_Dat_Path(); }

    fs::path root_;
    std::vector<std::string> reads_;
    int empties_ = 0;
};

TEST(User_Folder, ApplicationDataOrBesideTheProgram) {
    Find_User_Folder({"/home/u/Documents", "/home/u/.local/share", "/opt/k/bin"});
    EXPECT_EQ(DocumentsFolder, "/home/u/Documents");
    EXPECT_EQ(UserFolder, "/home/u/.local/share/Tarnely/");
    Find_User_Folder({"", "/data/", "/opt/k/bin"});
    EXPECT_EQ(UserFolder, "/data/Tarnely/");
    Find_User_Folder({"", "", "/opt/k/bin"});
    EXPECT_EQ(UserFolder, "/opt/k/bin/User/");
    EXPECT_EQ(User_Dat_Path(), "/opt/k/bin/User/User.Dat");
}

TEST_F(UserDat, FirstRunMakesTheFolderTheDefaultsAndA78ByteFile) {
    Find_User_Folder({"", (root_ / "share").string(), ""});
    EXPECT_FALSE(Load_User_Dat());
    EXPECT_TRUE(fs::is_directory(root_ / "share" / "Tarnely"));
    EXPECT_EQ(Shell.ShowIntro, kTrue);
    for (int16_t pending : Shell.IntroPending) EXPECT_EQ(pending, kTrue);
    EXPECT_EQ(empties_, 1);
    EXPECT_TRUE(reads_.empty());

    EXPECT_EQ(Format_Lat(Settings.ObserverLat, 1, false), "51° 19'.3 N");
    EXPECT_EQ(Format_Long(Settings.ObserverLong, 1, false), "0° 00'.0  E");
    const MySystemTime fix = JD_To_Date(Settings.FixTime);
    EXPECT_EQ(fix.wYear, 2005);
    EXPECT_EQ(fix.wMonth, 7);
    EXPECT_FLOAT_EQ(SightsFilter.AltLimit, static_cast<float>(120 / kMinutesPerRadian));
    EXPECT_EQ(SightsFilter.AzLimit, 90.0f);
    EXPECT_EQ(SightsFilter.StarCount, 280);
    EXPECT_EQ(SightsFilter.DaylightStars, kTrue);
    EXPECT_FLOAT_EQ(RefractionFactor, 1.0f);
    EXPECT_EQ(DipRad, 0.0f);

    ASSERT_TRUE(Save_User_Dat());
    const std::vector<unsigned char> bytes = Read_Bytes(File());
    ASSERT_EQ(bytes.size(), 78u);
    EXPECT_EQ(bytes.size(), kUserDatMinimumBytes);
    // Every field at its offset, little-endian: the fix 51.32166..° N, course 45, speed 8.5,
    // FixTime 2010.1495..., 1010 mb, 10 °C, altitude limit 120', azimuth limit 90°, 280
    // stars, metres and Celsius; millibars and daylight stars (the low byte of the working
    // flag, -1, so the first run's 1 is saved as 255); no plan, bias 0.
    EXPECT_EQ(bytes, Hex("b24e653f00000000000034420000084183ae3c2099689f4000807c4400002041"
                         "0000000000000000000000000000f0420000b4420000000018010000"
                         "000000000000ffffffffffff000000000000"));

    // The second run reads it: no messages, same values.
    Reset_Shell(nullptr);
    EXPECT_TRUE(Load_User_Dat());
    EXPECT_EQ(Shell.ShowIntro, kFalse);
    EXPECT_EQ(Settings.SightStarCount, 280);
}

TEST_F(UserDat, WrittenAndReadBackIdentically) {
    Settings = {.ObserverLat = -0.6f,
                .ObserverLong = 2.25f,
                .FixCourse = 271.5f,
                .FixSpeed = 12.25f,
                .FixTime = 9123.456789,
                .Pressure = 998.5f,
                .Temp = -3.5f,
                .IndexError = -1.2f,
                .HtOfEye = 4.0f,
                .PositionMethod = 1,
                .SightAltLimit = 120.0f,
                .SightAzLimit = 90.0f,
                .HelpLevel = 2,
                .SightStarCount = 1520,
                .ShowRA = 1,
                .SightsTabDown = 1,
                .AutoTimeZone = kTrue,
                .DefaultPlanFile = (root_ / "Café.Voy").string()};
    const std::vector<unsigned char> first = Encode_User_Dat(Settings, -330);
    // The path is stored as single-byte text: "é" is one byte.
    EXPECT_EQ(first.size(), 78 + (root_ / "Cafe.Voy").string().size());

    Write_Bytes(File(), first);
    const SettingsRecord written = Settings;
    Settings = SettingsRecord{};
    EXPECT_TRUE(Load_User_Dat());
    EXPECT_EQ(TZ_Bias, -330);
    EXPECT_EQ(Settings.DefaultPlanFile, written.DefaultPlanFile);
    EXPECT_EQ(Settings.FixTime, written.FixTime);
    EXPECT_EQ(Settings.ObserverLat, written.ObserverLat);
    EXPECT_EQ(Settings.AutoTimeZone, kTrue);
    EXPECT_FLOAT_EQ(IndexErrorRad, static_cast<float>(-1.2f / kMinutesPerRadian));
    EXPECT_FLOAT_EQ(DipRad, static_cast<float>(1.758 * 2 / kMinutesPerRadian));
    EXPECT_FLOAT_EQ(RefractionFactor, static_cast<float>(998.5 * 0.28019801980198 / 269.5));
    EXPECT_EQ(AtlasShowRA, kTrue);
    EXPECT_EQ(SightsFilter.DaylightStars, kFalse);
    ASSERT_TRUE(Save_User_Dat());
    EXPECT_EQ(Read_Bytes(File()), first);
}

TEST_F(UserDat, ShortFileLeavesTheTailAtZero) {
    Set_First_Run_Defaults();
    Settings.DefaultPlanFile = "/nowhere/plan.Voy";
    std::vector<unsigned char> bytes = Encode_User_Dat(Settings, 120);
    bytes.resize(40);  // up to and without PositionMethod
    Write_Bytes(File(), bytes);
    Settings.HelpLevel = 3;  // whatever the record held before is not what is kept
    EXPECT_TRUE(Load_User_Dat());
    EXPECT_EQ(Shell.ShowIntro, kFalse);  // not a first run
    EXPECT_EQ(Settings.FixCourse, 45.0f);
    EXPECT_EQ(Settings.Pressure, 1010.0f);
    EXPECT_TRUE(Settings.SightAltLimit == 0.0f && Settings.SightStarCount == 0 &&
                Settings.HelpLevel == 0 && Settings.UseMetres == 0 && Settings.DaylightStars == 0 &&
                Settings.DefaultPlanFile.empty() && TZ_Bias == 0);

    // A file cut inside the plan path keeps what is there of it, and the bias stays 0.
    Settings.DefaultPlanFile = "abcdef";
    bytes = Encode_User_Dat(Settings, 120);
    bytes.resize(77);
    Write_Bytes(File(), bytes);
    EXPECT_TRUE(Load_User_Dat());
    EXPECT_EQ(Settings.DefaultPlanFile, "abc");
    EXPECT_EQ(TZ_Bias, 0);
}

// What a damaged or hand-made file holds out of its meaning starts afresh at load: a star
// count past the catalogue killed the first sight reduction, a NaN position or an endless
// fix time reached every screen. Values in range stay as they were.
TEST_F(UserDat, OutOfRangeValuesTakeTheirFirstRunValues) {
    Set_First_Run_Defaults();
    const SettingsRecord first = Settings;
    Settings.SightStarCount = 2147483647;
    Settings.ObserverLat = NAN;
    Settings.ObserverLong = 1e30f;
    Settings.FixSpeed = 1e-39f;
    Settings.FixTime = 1e20;
    Settings.Temp = -273.0f;
    Settings.SightAzLimit = -1e31f;
    Settings.PositionMethod = 7;
    Settings.IndexError = 2.5f;  // in range: kept
    Write_Bytes(File(), Encode_User_Dat(Settings, 100000));
    ASSERT_TRUE(Load_User_Dat());
    EXPECT_EQ(SightsFilter.StarCount, 280);
    EXPECT_EQ(Settings.ObserverLat, first.ObserverLat);
    EXPECT_EQ(Settings.ObserverLong, first.ObserverLong);
    EXPECT_EQ(Settings.FixSpeed, first.FixSpeed);
    EXPECT_EQ(Settings.FixTime, first.FixTime);
    EXPECT_EQ(Settings.Temp, first.Temp);
    EXPECT_EQ(SightsFilter.AzLimit, first.SightAzLimit);
    EXPECT_EQ(Settings.PositionMethod, 0);
    EXPECT_EQ(Settings.IndexError, 2.5f);
    EXPECT_EQ(TZ_Bias, 0);
}

TEST_F(UserDat, EmptyFileIsAFirstRun) {
    Write_Bytes(File(), {});
    Settings.HelpLevel = 3;
    TZ_Bias = 60;
    EXPECT_FALSE(Load_User_Dat());
    EXPECT_EQ(Shell.ShowIntro, kTrue);
    EXPECT_EQ(Settings.HelpLevel, 0);
    EXPECT_EQ(Settings.SightStarCount, 280);
    EXPECT_EQ(TZ_Bias, 0);
}

TEST_F(UserDat, KeptQuirksAltitudeLimitStarCountAndSpareByte) {
    Set_First_Run_Defaults();
    Settings.SightStarCount = 504;
    Write_Bytes(File(), Encode_User_Dat(Settings, 0));
    ASSERT_TRUE(Load_User_Dat());

    // A limit of 0'.5 comes back as 0; 2'.5 as 2; 1'.5 as 2; 120' stays.
    const std::vector<std::pair<double, float>> limits = {
        {0.5, 0.0f}, {2.5, 2.0f}, {1.5, 2.0f}, {120, 120.0f}, {10, 10.0f}};
    for (const auto& [minutes, saved] : limits) {
        SightsFilter.AltLimit = static_cast<float>(minutes / kMinutesPerRadian);
        SightsFilter.StarCount = 4683;  // a change for the run only
        ASSERT_TRUE(Save_User_Dat());
        ASSERT_TRUE(Load_User_Dat());
        EXPECT_EQ(Settings.SightAltLimit, saved) << minutes;
        EXPECT_EQ(Settings.SightStarCount, 504) << minutes;
    }

    // A non-zero rising-and-setting byte becomes 1 and clears the spare byte ...
    std::vector<unsigned char> bytes = Encode_User_Dat(Settings, 0);
    bytes[60] = 5;
    bytes[61] = 7;
    Write_Bytes(File(), bytes);
    ASSERT_TRUE(Load_User_Dat());
    EXPECT_EQ(Settings.SimplifiedRiseSet, 1);
    EXPECT_EQ(Settings.Spare, 0);
    // ... a zero one leaves the spare byte as read, and it is written back so.
    bytes[60] = 0;
    Write_Bytes(File(), bytes);
    ASSERT_TRUE(Load_User_Dat());
    EXPECT_EQ(Settings.Spare, 7);
    ASSERT_TRUE(Save_User_Dat());
    EXPECT_EQ(Read_Bytes(File())[61], 7);
}

TEST_F(UserDat, DefaultPlanIsReadOrTheEmptyPlanMade) {
    const fs::path plan = root_ / "Home.Voy";
    Write_Bytes(plan, {1, 2, 3});
    Set_First_Run_Defaults();
    Settings.DefaultPlanFile = plan.string();
    Write_Bytes(File(), Encode_User_Dat(Settings, 0));
    ASSERT_TRUE(Load_User_Dat());
    ASSERT_EQ(reads_.size(), 1u);
    EXPECT_EQ(reads_[0], plan.string());
    EXPECT_EQ(empties_, 0);

    // A plan that has been deleted: the empty plan, and the name is kept.
    fs::remove(plan);
    ASSERT_TRUE(Load_User_Dat());
    EXPECT_EQ(reads_.size(), 1u);
    EXPECT_EQ(empties_, 1);
    EXPECT_EQ(Settings.DefaultPlanFile, plan.string());
}

TEST_F(UserDat, FailedSaveLeavesThePreviousFile) {
    Set_First_Run_Defaults();
    Settings.DefaultPlanFile = "/plans/old.Voy";
    ASSERT_TRUE(Save_User_Dat());
    const std::vector<unsigned char> before = Read_Bytes(File());

    // The disk fills up part-way through the new file: writes beyond 50 bytes fail.
    Settings.DefaultPlanFile = std::string(300, 'x');
    Settings.HelpLevel = 3;
    rlimit saved{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = saved;
    small.rlim_cur = 50;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool ok = Save_User_Dat();
    ::setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(ok);
    EXPECT_EQ(Read_Bytes(File()), before);
    EXPECT_FALSE(fs::exists(File().string() + ".tmp"));

    // A run killed while writing left its new file behind: the old one is still read,
    // and the next save goes through.
    Write_Bytes(File().string() + ".tmp", {9, 9, 9});
    ASSERT_TRUE(Load_User_Dat());
    EXPECT_EQ(Settings.DefaultPlanFile, "/plans/old.Voy");
    EXPECT_EQ(Settings.HelpLevel, 0);
    Settings.HelpLevel = 2;
    ASSERT_TRUE(Save_User_Dat());
    EXPECT_FALSE(fs::exists(File().string() + ".tmp"));
    ASSERT_TRUE(Load_User_Dat());
    EXPECT_EQ(Settings.HelpLevel, 2);

    // A folder that cannot hold the file: nothing written, nothing thrown.
    Find_User_Folder({"", "", (root_ / "plainfile").string()});
    Write_Bytes(root_ / "plainfile", {1});
    EXPECT_FALSE(Save_User_Dat());
}

TEST_F(UserDat, DerivedValuesAreTotal) {
    Set_First_Run_Defaults();
    Settings.Temp = -273.0f;
    Settings.HtOfEye = -5.0f;
    Compute_Derived_Settings();
    EXPECT_EQ(RefractionFactor, 1.0f);
    EXPECT_EQ(DipRad, 0.0f);
}

}  // namespace
}  // namespace kelmoran
