// The voyage file: byte-for-byte round trips, kept fields, refusal of damaged files, the
// safe save, and the default-plan rules.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>

#include "voyage/Plan_Undo.h"
#include "voyage/Voyage_File.h"
#include "voyage_test.h"

namespace kelmoran {
namespace {

using namespace voyage_test;
namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

Bytes Read_All(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class VoyageFile : public ::testing::Test {
  protected:
    void SetUp() override {
        Reset_Shell(nullptr);
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }
    std::string At(const char* name) const { return (dir_ / name).string(); }

    // Two legs, a locked row, texts and kept fields.
    static VoyagePlan Sample() {
        VoyagePlan p = Plan_Of({{50.1, -1.3}, {49.5, -3.0}, {48.4, -5.1}}, 11, 9100.5, 11.0f);
        auto& w = p.Way_Points;
        w[0].ID = "SOL";
        w[0].Description = "Nab Tower";
        w[1].Row_Locked = kTrue;
        w[1].Remarks = "Café stop \xC2\xB0";  // UTF-8 in memory
        w[1].Reserved[3] = 0xAB;
        w[2].ID = "G";
        w[2].Leg_Type = 'D';
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

    // Where the row count stands: after the ETD, ETA, their zones, the reserved field and
    // the four speeds.
    static std::size_t Rows_At(const VoyagePlan& p) {
        return 8 + 2 + 2 + p.Header.ETD_Zone.size() + 8 + 2 + 2 + p.Header.ETA_Zone.size() + 2 + 16;
    }

    const fs::path dir_ =
        fs::temp_directory_path() / ("kelmoran_voy_" + std::to_string(::getpid()));
    SettingsRecord settings_;
    std::string msg_;
};

TEST_F(VoyageFile, RoundTripsByteForByte) {
    VoyagePlan p = Sample();
    const Bytes bytes = Encode_Plan(p);
    VoyagePlan q;
    ASSERT_TRUE(Decode_Plan(bytes, q));
    EXPECT_EQ(Encode_Plan(q), bytes);
    EXPECT_EQ(
        std::tuple(q.Extra_List, q.Last_Value, q.Header.Reserved, q.Way_Points[1].Reserved[3],
                   q.Way_Points[2].Type_2, q.Way_Points[1].Remarks, q.Way_Points[1].Row_Locked),
        std::tuple(p.Extra_List, -2, 5, 0xAB, 'x', p.Way_Points[1].Remarks, kTrue));

    // Through the disk: save, load, save again gives the same file and no temporary file.
    ASSERT_TRUE(Save_Plan(At("trip"), p, settings_, msg_)) << msg_;
    EXPECT_EQ(p.Header.Path, At("trip.Voy"));
    EXPECT_EQ(Shell.PlanChanged, kFalse);
    VoyagePlan r;
    ASSERT_TRUE(Load_Plan(At("trip.Voy"), r, msg_)) << msg_;
    EXPECT_EQ(r.Header.File_Named, kTrue);
    EXPECT_FLOAT_EQ(r.Way_Points[0].Distance, p.Way_Points[0].Distance);
    const Bytes first = Read_All(At("trip.Voy"));
    ASSERT_TRUE(Save_Plan(At("trip.Voy"), r, settings_, msg_));
    EXPECT_EQ(Read_All(At("trip.Voy")), first);
    EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);

    // An untitled plan is saved under the name of its file, and reads back so.
    VoyagePlan u = Sample();
    u.Header.Title = "Untitled";
    ASSERT_TRUE(Save_Plan(At("crossing"), u, settings_, msg_)) << msg_;
    EXPECT_EQ(u.Header.Title, "crossing");
    VoyagePlan v;
    ASSERT_TRUE(Load_Plan(At("crossing.Voy"), v, msg_)) << msg_;
    EXPECT_EQ(v.Header.Title, "crossing");
    EXPECT_EQ(Encode_Plan(v), Encode_Plan(u));
}

TEST_F(VoyageFile, EmptyPlanAndHandMadeFile) {
    // A plan without a way point: every row string is a single blank.
    VoyagePlan p;
    p.New_Plan(100.0, 8.0f);
    const Bytes bytes = Encode_Plan(p);
    VoyagePlan q;
    ASSERT_TRUE(Decode_Plan(bytes, q));
    EXPECT_EQ(q.Row_Count(), 11);
    EXPECT_FALSE(q.Any_Way_Point_In_Use());
    EXPECT_EQ(Encode_Plan(q), bytes);
    // Row 0's three strings follow the header and the row's 24 bytes of numbers.
    const std::size_t row0 = Rows_At(p) + 4 + 2 + p.Header.Title.size() + 2 + p.Header.Path.size() +
                             2 + p.Header.Third_Text.size() + 24;
    EXPECT_EQ(Bytes(bytes.begin() + row0, bytes.begin() + row0 + 9),
              (Bytes{1, 0, ' ', 1, 0, ' ', 1, 0, ' '}));

    // A file made by hand, with a one-row plan and an extra list of two entries.
    // Values go in as their bytes (arrays whole), strings with their 16-bit length.
    Bytes f;
    auto put = [&f](const auto&... v) {
        (f.insert(f.end(), reinterpret_cast<const unsigned char*>(&v),
                  reinterpret_cast<const unsigned char*>(&v) + sizeof v),
         ...);
    };
    auto str = [&](const std::string& s) {
        put(static_cast<uint16_t>(s.size()));
        f.insert(f.end(), s.begin(), s.end());
    };
    const float speeds[4] = {9.0f, 10.0f, 11.0f, 10.0f}, row[3] = {0.5f, -0.25f, 6.0f};
    const unsigned char kept[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, types[2] = {'D', 'q'};
    const int16_t flags[4] = {-1, 3, 4, 0}, etd = 60, rows = 0, extra = 1;
    put(9000.0, etd), str("Z+1"), put(9001.0, etd), str("Z+1");
    put(int16_t{9}, speeds, rows, extra), str("Title"), str("C:\\Plans\\a.Voy"), str("");
    put(row, kept), str(" "), str("A1"), str("Caf\xE9"), put(flags, types);
    str("first extra"), str("second extra"), put(int16_t{0x1234});
    VoyagePlan h;
    ASSERT_TRUE(Decode_Plan(f, h));
    EXPECT_EQ(std::tuple(h.Row_Count(), h.Way_Points[0].ID, h.Way_Points[0].Leg_Type, h.Last_Value),
              std::tuple(1, "A1", 'D', 0x1234));
    EXPECT_EQ(h.Extra_List, (std::vector<std::string>{"first extra", "second extra"}));
    EXPECT_EQ(Encode_Plan(h), f);
}

TEST_F(VoyageFile, DamagedFilesAreRefused) {
    VoyagePlan p = Sample();
    ASSERT_TRUE(Save_Plan(At("good.Voy"), p, settings_, msg_));
    const Bytes good = Read_All(At("good.Voy"));
    VoyagePlan inUse = Sample();
    inUse.Way_Points[0].Description = "in memory";
    const Bytes before = Encode_Plan(inUse);
    // Every truncation is refused, the plan in memory untouched.
    for (std::size_t n = 0; n < good.size(); n += 7) {
        std::ofstream(At("bad.Voy"), std::ios::binary)
            .write(reinterpret_cast<const char*>(good.data()), static_cast<std::streamsize>(n));
        EXPECT_FALSE(Load_Plan(At("bad.Voy"), inUse, msg_)) << n;
        EXPECT_EQ(msg_, voyage_file_text::Damaged);
    }
    // Bytes left over, a negative row count, a string running off the end, a missing file.
    auto changed = [&](std::size_t at, std::initializer_list<unsigned char> b) {
        Bytes out = good;
        if (at == good.size()) out.resize(at + b.size());
        std::copy(b.begin(), b.end(), out.begin() + static_cast<std::ptrdiff_t>(at));
        return out;
    };
    EXPECT_FALSE(Decode_Plan(changed(good.size(), {0}), inUse));
    EXPECT_FALSE(Decode_Plan(changed(Rows_At(p), {0xFF, 0xFF}), inUse));
    EXPECT_FALSE(Decode_Plan(changed(8 + 2, {0xFF, 0x7F}), inUse));
    EXPECT_FALSE(Load_Plan(At("none.Voy"), inUse, msg_));
    EXPECT_EQ(msg_, voyage_file_text::NotReadable);
    EXPECT_EQ(Encode_Plan(inUse), before);
    // A save into a folder that does not exist fails and leaves the plan's path alone.
    const std::string path = inUse.Header.Path;
    EXPECT_FALSE(Save_Plan((dir_ / "no" / "such.Voy").string(), inUse, settings_, msg_));
    EXPECT_EQ(inUse.Header.Path, path);
}

// A leg speed no ship makes (1e-39 kn made every later time infinite) is taken as none
// and the leg sails at the default speed; a plan that would not read back is never
// reported saved, and its old file stays.
TEST_F(VoyageFile, SpeedsOutOfRangeAndPlansThatCannotBeReadBack) {
    VoyagePlan p = Sample();
    p.Way_Points[0].Speed = 1e-39f;
    p.Way_Points[1].Speed = NAN;
    const Bytes hostile = Encode_Plan(p);
    std::ofstream(At("slow.Voy"), std::ios::binary)
        .write(reinterpret_cast<const char*>(hostile.data()),
               static_cast<std::streamsize>(hostile.size()));
    VoyagePlan loaded;
    ASSERT_TRUE(Load_Plan(At("slow.Voy"), loaded, msg_));
    EXPECT_EQ(loaded.Way_Points[0].Speed, loaded.Header.Default_Speed);
    for (const Way_Point& w : loaded.Way_Points) EXPECT_TRUE(std::isfinite(w.Time));
    ASSERT_TRUE(Save_Plan(At("slow.Voy"), loaded, settings_, msg_));
    VoyagePlan again;
    EXPECT_TRUE(Load_Plan(At("slow.Voy"), again, msg_));

    const Bytes before = Read_All(At("slow.Voy"));
    p.Header.Plan_Start = INFINITY;
    EXPECT_FALSE(Save_Plan(At("slow.Voy"), p, settings_, msg_));
    EXPECT_EQ(msg_, voyage_file_text::NotWritten);
    EXPECT_EQ(Read_All(At("slow.Voy")), before);
}

// A save keeps the permissions of the file it replaces, and neither a finished save nor
// one killed while writing leaves another file in the folder.
TEST_F(VoyageFile, SavesKeepPermissionsAndLeaveNothingBehind) {
    VoyagePlan p = Sample();
    ASSERT_TRUE(Save_Plan(At("mode.Voy"), p, settings_, msg_));
    fs::permissions(At("mode.Voy"), fs::perms::owner_read | fs::perms::owner_write |
                                        fs::perms::group_read);
    ASSERT_TRUE(Save_Plan(At("mode.Voy"), p, settings_, msg_));
    EXPECT_EQ(fs::status(At("mode.Voy")).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const Bytes before = Read_All(At("mode.Voy"));

    // The child is killed by the file-size signal half-way through writing.
    p.Way_Points[0].Description = std::string(4000, 'k');
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_DFL);
        rlimit small{1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &small);
        std::string m;
        Save_Plan(At("mode.Voy"), p, settings_, m);
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ);
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(dir_)) names.push_back(e.path().filename());
    EXPECT_EQ(names, std::vector<std::string>{"mode.Voy"});
    EXPECT_EQ(Read_All(At("mode.Voy")), before);
}

TEST_F(VoyageFile, DefaultPlanRules) {
    VoyagePlan p = Sample();
    // An unsaved plan cannot be the default.
    EXPECT_FALSE(Set_As_Default(p, settings_, msg_));
    EXPECT_EQ(msg_, voyage_file_text::MustSaveFirst);
    ASSERT_TRUE(Save_Plan(At("a.Voy"), p, settings_, msg_));
    ASSERT_TRUE(Set_As_Default(p, settings_, msg_));
    EXPECT_TRUE(Is_Default_Plan(p, settings_));
    // Saved under a new name while default, it stays the default.
    ASSERT_TRUE(Save_Plan(At("b"), p, settings_, msg_));
    EXPECT_EQ(settings_.DefaultPlanFile, At("b.Voy"));
    // Removing the default drops method 2 to 0 at once.
    settings_.PositionMethod = 2;
    Remove_As_Default(settings_);
    EXPECT_TRUE(settings_.DefaultPlanFile.empty());
    EXPECT_EQ(settings_.PositionMethod, 0);
    // The default plan is read at start; a deleted one leaves a fresh plan and the name.
    settings_.DefaultPlanFile = At("b.Voy");
    VoyagePlan start;
    Read_Default_Plan(start, settings_, 500.0);
    EXPECT_EQ(start.Header.Path, settings_.DefaultPlanFile);
    EXPECT_TRUE(start.Any_Way_Point_In_Use());
    fs::remove(At("b.Voy"));
    Read_Default_Plan(start, settings_, 500.0);
    EXPECT_FALSE(start.Any_Way_Point_In_Use());
    EXPECT_EQ(start.Header.Path, "Untitled");
    EXPECT_EQ(settings_.DefaultPlanFile, At("b.Voy"));
    EXPECT_EQ(With_Voy_Extension("x.Voy") + "|" + With_Voy_Extension("x.txt"), "x.Voy|x.txt.Voy");
}

}  // namespace
}  // namespace kelmoran
