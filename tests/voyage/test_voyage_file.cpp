// The voyage file: byte-for-byte round trips, kept fields, refusal of damaged files, the
// safe save, and the default-plan rules.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "shell/M_Kelmoran.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Voyage_File.h"

namespace kelmoran {
namespace {

namespace fs = std::filesystem;

std::vector<unsigned char> Read_All(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Write_All(const fs::path& p, const std::vector<unsigned char>& b) {
    std::ofstream out(p, std::ios::binary);
    out.write(reinterpret_cast<const char*>(b.data()), static_cast<std::streamsize>(b.size()));
}

class VoyageFile : public ::testing::Test {
  protected:
    void SetUp() override {
        Reset_Shell(nullptr);
        dir_ = fs::temp_directory_path() / ("kelmoran_voy_" + std::to_string(::getpid()));
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }

    // A plan with two legs, a locked row, texts and kept fields.
    static VoyagePlan Sample() {
        VoyagePlan p;
        p.New_Plan(9100.5, 11.0f);
        const double d = 1.0 / 57.2957795130823;
        auto& w = p.Way_Points;
        w[0].Lat = 50.1 * d;
        w[0].Long = -1.3 * d;
        w[0].ID = "SOL";
        w[0].Description = "Nab Tower";
        w[1].Lat = 49.5 * d;
        w[1].Long = -3.0 * d;
        w[1].Row_Locked = kTrue;
        w[1].Remarks = "Café stop \xC2\xB0";  // UTF-8 in memory
        w[2].Lat = 48.4 * d;
        w[2].Long = -5.1 * d;
        w[2].ID = "G";
        w[2].Leg_Type = 'D';
        w[1].Reserved[3] = 0xAB;
        w[2].Flag_3 = 77;
        w[2].Type_2 = 'x';
        p.Header.Reserved = 5;
        p.Header.Third_Text = "third";
        p.Extra_List = {"one", "", "three"};
        p.Last_Value = -2;
        p.Test_Wpts_Valid();
        p.Recalc_Plan();
        return p;
    }

    fs::path dir_;
};

TEST_F(VoyageFile, RoundTripsByteForByte) {
    SettingsRecord settings;
    VoyagePlan p = Sample();
    const std::vector<unsigned char> bytes = Encode_Plan(p);
    VoyagePlan q;
    ASSERT_TRUE(Decode_Plan(bytes, q));
    EXPECT_EQ(Encode_Plan(q), bytes);
    EXPECT_EQ(q.Extra_List, p.Extra_List);
    EXPECT_EQ(q.Last_Value, -2);
    EXPECT_EQ(q.Header.Reserved, 5);
    EXPECT_EQ(q.Way_Points[1].Reserved[3], 0xAB);
    EXPECT_EQ(q.Way_Points[2].Type_2, 'x');
    EXPECT_EQ(q.Way_Points[1].Remarks, p.Way_Points[1].Remarks);
    EXPECT_EQ(q.Way_Points[1].Row_Locked, kTrue);

    // Through the disk: save, load, save again gives the same file.
    std::string msg;
    ASSERT_TRUE(Save_Plan((dir_ / "trip").string(), p, settings, msg)) << msg;
    EXPECT_EQ(p.Header.Path, (dir_ / "trip.Voy").string());
    EXPECT_EQ(Shell.PlanChanged, kFalse);
    VoyagePlan r;
    ASSERT_TRUE(Load_Plan((dir_ / "trip.Voy").string(), r, msg)) << msg;
    EXPECT_EQ(r.Header.File_Named, kTrue);
    EXPECT_FLOAT_EQ(r.Way_Points[0].Distance, p.Way_Points[0].Distance);
    const std::vector<unsigned char> first = Read_All(dir_ / "trip.Voy");
    ASSERT_TRUE(Save_Plan((dir_ / "trip.Voy").string(), r, settings, msg));
    EXPECT_EQ(Read_All(dir_ / "trip.Voy"), first);
    // No temporary file is left behind.
    int files = 0;
    for (const auto& e : fs::directory_iterator(dir_)) files += e.is_regular_file();
    EXPECT_EQ(files, 1);

    // An untitled plan is saved under the name of its file, and reads back so.
    VoyagePlan u = Sample();
    u.Header.Title = "Untitled";
    ASSERT_TRUE(Save_Plan((dir_ / "crossing").string(), u, settings, msg)) << msg;
    EXPECT_EQ(u.Header.Title, "crossing");
    VoyagePlan v;
    ASSERT_TRUE(Load_Plan((dir_ / "crossing.Voy").string(), v, msg)) << msg;
    EXPECT_EQ(v.Header.Title, "crossing");
    EXPECT_EQ(Encode_Plan(v), Encode_Plan(u));
}

TEST_F(VoyageFile, EmptyPlanAndHandMadeFile) {
    // A plan without a way point: every row string is a single blank.
    VoyagePlan p;
    p.New_Plan(100.0, 8.0f);
    const std::vector<unsigned char> bytes = Encode_Plan(p);
    VoyagePlan q;
    ASSERT_TRUE(Decode_Plan(bytes, q));
    EXPECT_EQ(q.Row_Count(), 11);
    EXPECT_FALSE(q.Any_Way_Point_In_Use());
    EXPECT_EQ(Encode_Plan(q), bytes);
    // Row 0 starts after the header; its three strings are 1-byte blanks.
    std::size_t at = 8 + 2 + 2 + p.Header.ETD_Zone.size() + 8 + 2 + 2 + p.Header.ETA_Zone.size() +
                     2 + 16 + 2 + 2 + 2 + p.Header.Title.size() + 2 + p.Header.Path.size() + 2 +
                     p.Header.Third_Text.size() + 24;
    for (int s = 0; s < 3; ++s) {
        EXPECT_EQ(bytes[at], 1);
        EXPECT_EQ(bytes[at + 1], 0);
        EXPECT_EQ(bytes[at + 2], ' ');
        at += 3;
    }

    // A file made by hand, with a one-row plan and an extra list of two entries.
    std::vector<unsigned char> f;
    auto put = [&f](const void* v, std::size_t n) {
        const auto* c = static_cast<const unsigned char*>(v);
        f.insert(f.end(), c, c + n);
    };
    auto str = [&](const std::string& s) {
        const uint16_t n = static_cast<uint16_t>(s.size());
        put(&n, 2);
        put(s.data(), s.size());
    };
    const double start = 9000.0, end = 9001.0;
    const int16_t etd = 60, rows = 0, extra = 1, reserved = 9;
    const float speeds[4] = {9.0f, 10.0f, 11.0f, 10.0f};
    put(&start, 8), put(&etd, 2), str("Z+1"), put(&end, 8), put(&etd, 2), str("Z+1");
    put(&reserved, 2), put(speeds, 16), put(&rows, 2), put(&extra, 2);
    str("Title"), str("C:\\Plans\\a.Voy"), str("");
    const float row[3] = {0.5f, -0.25f, 6.0f};
    const unsigned char kept[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    put(row, 12), put(kept, 12), str(" "), str("A1"), str("Caf\xE9");
    const int16_t flags[4] = {-1, 3, 4, 0};
    put(flags, 8);
    f.push_back('D');
    f.push_back('q');
    str("first extra"), str("second extra");
    const int16_t last = 0x1234;
    put(&last, 2);
    VoyagePlan h;
    ASSERT_TRUE(Decode_Plan(f, h));
    EXPECT_EQ(h.Row_Count(), 1);
    EXPECT_EQ(h.Way_Points[0].ID, "A1");
    EXPECT_EQ(h.Way_Points[0].Leg_Type, 'D');
    EXPECT_EQ(h.Extra_List.size(), 2u);
    EXPECT_EQ(h.Last_Value, 0x1234);
    EXPECT_EQ(Encode_Plan(h), f);
}

TEST_F(VoyageFile, DamagedFilesAreRefused) {
    SettingsRecord settings;
    VoyagePlan p = Sample();
    std::string msg;
    ASSERT_TRUE(Save_Plan((dir_ / "good.Voy").string(), p, settings, msg));
    const std::vector<unsigned char> good = Read_All(dir_ / "good.Voy");

    VoyagePlan inUse = Sample();
    inUse.Way_Points[0].Description = "in memory";
    const std::vector<unsigned char> before = Encode_Plan(inUse);
    // Every truncation is refused, the plan in memory untouched.
    for (std::size_t n = 0; n < good.size(); n += 7) {
        Write_All(dir_ / "bad.Voy", std::vector<unsigned char>(good.begin(), good.begin() + n));
        EXPECT_FALSE(Load_Plan((dir_ / "bad.Voy").string(), inUse, msg)) << n;
        EXPECT_EQ(msg, voyage_file_text::Damaged);
    }
    EXPECT_EQ(Encode_Plan(inUse), before);
    // Bytes left over, a negative row count, a string running off the end, a missing file.
    std::vector<unsigned char> extra = good;
    extra.push_back(0);
    EXPECT_FALSE(Decode_Plan(extra, inUse));
    std::vector<unsigned char> neg = good;
    const std::size_t rowsAt =
        8 + 2 + 2 + p.Header.ETD_Zone.size() + 8 + 2 + 2 + p.Header.ETA_Zone.size() + 2 + 16;
    neg[rowsAt] = 0xFF;
    neg[rowsAt + 1] = 0xFF;
    EXPECT_FALSE(Decode_Plan(neg, inUse));
    std::vector<unsigned char> longString = good;
    longString[8 + 2] = 0xFF;
    longString[8 + 3] = 0x7F;
    EXPECT_FALSE(Decode_Plan(longString, inUse));
    EXPECT_FALSE(Load_Plan((dir_ / "none.Voy").string(), inUse, msg));
    EXPECT_EQ(msg, voyage_file_text::NotReadable);
    EXPECT_EQ(Encode_Plan(inUse), before);
    // A save into a folder that does not exist fails and leaves the plan's path alone.
    const std::string path = inUse.Header.Path;
    EXPECT_FALSE(Save_Plan((dir_ / "no" / "such.Voy").string(), inUse, settings, msg));
    EXPECT_EQ(inUse.Header.Path, path);
}

TEST_F(VoyageFile, DefaultPlanRules) {
    SettingsRecord settings;
    VoyagePlan p = Sample();
    std::string msg;
    // An unsaved plan cannot be the default.
    EXPECT_FALSE(Set_As_Default(p, settings, msg));
    EXPECT_EQ(msg, voyage_file_text::MustSaveFirst);
    ASSERT_TRUE(Save_Plan((dir_ / "a.Voy").string(), p, settings, msg));
    ASSERT_TRUE(Set_As_Default(p, settings, msg));
    EXPECT_TRUE(Is_Default_Plan(p, settings));
    // Saved under a new name while default, it stays the default.
    ASSERT_TRUE(Save_Plan((dir_ / "b").string(), p, settings, msg));
    EXPECT_EQ(settings.DefaultPlanFile, (dir_ / "b.Voy").string());
    // Removing the default drops method 2 to 0 at once.
    settings.PositionMethod = 2;
    Remove_As_Default(settings);
    EXPECT_TRUE(settings.DefaultPlanFile.empty());
    EXPECT_EQ(settings.PositionMethod, 0);
    // The default plan is read at start; a deleted one leaves a fresh plan and the name.
    settings.DefaultPlanFile = (dir_ / "b.Voy").string();
    VoyagePlan start;
    Read_Default_Plan(start, settings, 500.0);
    EXPECT_EQ(start.Header.Path, settings.DefaultPlanFile);
    EXPECT_TRUE(start.Any_Way_Point_In_Use());
    fs::remove(dir_ / "b.Voy");
    Read_Default_Plan(start, settings, 500.0);
    EXPECT_FALSE(start.Any_Way_Point_In_Use());
    EXPECT_EQ(start.Header.Path, "Untitled");
    EXPECT_EQ(settings.DefaultPlanFile, (dir_ / "b.Voy").string());
    EXPECT_EQ(With_Voy_Extension("x.Voy"), "x.Voy");
    EXPECT_EQ(With_Voy_Extension("x.txt"), "x.txt.Voy");
}

}  // namespace
}  // namespace kelmoran
