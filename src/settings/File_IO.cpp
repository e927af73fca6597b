// User.Dat: folder, reading, writing, first-run defaults and derived values.
#include "settings/File_IO.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "settings/Value_Checks.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

std::string DocumentsFolder;
std::string UserFolder;
float IndexErrorRad = 0;
float DipRad = 0;
float RefractionFactor = 1;
SightsFilterState SightsFilter;
int16_t AtlasShowRA = 0;
DefaultPlanHooks Default_Plan_Hooks;

namespace {

// Little-endian writing and reading of the record's fields.
class ByteWriter {
public:
    explicit ByteWriter(std::vector<unsigned char>& out) : out_(out) {}
    template <typename T>
    void Put(T v) {
        unsigned char raw[sizeof(T)];
        std::memcpy(raw, &v, sizeof(T));
        if constexpr (std::endian::native == std::endian::big)
            std::reverse(std::begin(raw), std::end(raw));
        for (const unsigned char b : raw) out_.push_back(b);
    }

private:
    std::vector<unsigned char>& out_;
};

// Reads from a span; past its end a field is left as it was.
class ByteReader {
public:
    explicit ByteReader(std::span<const unsigned char> in) : in_(in) {}
    template <typename T>
    void Get(T& v) {
        unsigned char raw[sizeof(T)] = {};
        const size_t n = pos_ < in_.size() ? std::min(sizeof(T), in_.size() - pos_) : 0;
        if (n == 0) {
            pos_ += sizeof(T);
            return;
        }
        // A field cut by the end of the file keeps its bytes and zeros for the rest, as the
        // record behind it was zero.
        std::memcpy(raw, in_.data() + pos_, n);
        if constexpr (std::endian::native == std::endian::big)
            std::reverse(std::begin(raw), std::end(raw));
        std::memcpy(&v, raw, sizeof(T));
        pos_ += sizeof(T);
    }
    std::string Get_Bytes(size_t count) {
        std::string s;
        if (pos_ < in_.size()) {
            const size_t n = std::min(count, in_.size() - pos_);
            s.assign(reinterpret_cast<const char*>(in_.data() + pos_), n);
        }
        pos_ += count;
        return s;
    }

private:
    std::span<const unsigned char> in_;
    size_t pos_ = 0;
};

// The fixed fields of the record in file order, each handed to `visit`.
template <typename Record, typename Visit>
void Visit_Fixed_Fields(Record& s, Visit&& visit) {
    visit(s.ObserverLat);
    visit(s.ObserverLong);
    visit(s.FixCourse);
    visit(s.FixSpeed);
    visit(s.FixTime);
    visit(s.Pressure);
    visit(s.Temp);
    visit(s.IndexError);
    visit(s.HtOfEye);
    visit(s.PositionMethod);
    visit(s.SightAltLimit);
    visit(s.SightAzLimit);
    visit(s.HelpLevel);
    visit(s.SightStarCount);
    visit(s.SimplifiedRiseSet);
    visit(s.Spare);
    visit(s.ShowRA);
    visit(s.SightsTabDown);
    visit(s.AutoTimeZone);
    visit(s.UseMetres);
    visit(s.UseCelsius);
    visit(s.UseMillibars);
    visit(s.DaylightStars);
}

std::vector<unsigned char> Read_Whole_File(const std::string& path, bool& exists) {
    std::vector<unsigned char> bytes;
    std::ifstream in(path, std::ios::binary);
    exists = static_cast<bool>(in);
    if (!exists) return bytes;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return bytes;
}

// The settings path of the default plan is a file that is there.
bool Plan_File_Exists(const std::string& path) {
    std::error_code ec;
    return !path.empty() && std::filesystem::is_regular_file(path, ec);
}

// Takes the working copies of the filter and the Atlas flag from the record.
void Take_Working_Copies() {
    SightsFilter.AltLimit = static_cast<float>(Settings.SightAltLimit / kArcminPerRadian);
    SightsFilter.AzLimit = Settings.SightAzLimit;
    SightsFilter.StarCount = Settings.SightStarCount;
    SightsFilter.DaylightStars = Settings.DaylightStars ? kTrue : kFalse;
    AtlasShowRA = Settings.ShowRA ? kTrue : kFalse;
}

// Puts the working copies back into the record, as they are saved.
void Return_Working_Copies() {
    // The product is held as a 32-bit float, as the limit is, before it is rounded: so a
    // limit of 0'.5 is an exact half and goes to the even 0.
    const auto minutes = static_cast<float>(SightsFilter.AltLimit * kArcminPerRadian);
    Settings.SightAltLimit = static_cast<float>(Round_Even(minutes));
    Settings.SightAzLimit = SightsFilter.AzLimit;
    Settings.DaylightStars = static_cast<uint8_t>(SightsFilter.DaylightStars & 0xFF);
    Settings.ShowRA = AtlasShowRA ? 1 : 0;
}

// Writes all of `bytes` to an open descriptor.
bool Write_All(int fd, std::span<const unsigned char> bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        if (n == 0) return false;
        done += static_cast<size_t>(n);
    }
    return true;
}

}  // namespace

void Find_User_Folder(const PlatformFolders& folders) {
    DocumentsFolder = folders.Documents;
    auto with_separator = [](std::string s) {
        if (!s.empty() && s.back() != '/') s += '/';
        return s;
    };
    if (!folders.AppData.empty())
        UserFolder = with_separator(folders.AppData) + "Tarnely/";
    else
        UserFolder = with_separator(folders.Program) + "User/";
}

std::string User_Dat_Path() { return UserFolder + "User.Dat"; }

void Compute_Derived_Settings() {
    IndexErrorRad = static_cast<float>(Settings.IndexError / kArcminPerRadian);
    const double h = Settings.HtOfEye > 0 ? Settings.HtOfEye : 0.0;
    DipRad = static_cast<float>(1.758 * std::sqrt(h) / kArcminPerRadian);
    const double r = Settings.Pressure * 0.28019801980198 / (Settings.Temp + 273.0);
    RefractionFactor = std::isfinite(r) ? static_cast<float>(r) : 1.0f;
}

void First_Use_Reset() {
    Shell.ShowIntro = kTrue;
    Shell.IntroPending.fill(kTrue);
    Shell.IntroPendingSeparate.fill(kTrue);
}

void Set_First_Run_Defaults() {
    Settings = First_Run_Settings();
    TZ_Bias = 0;
}

SettingsRecord First_Run_Settings() {
    SettingsRecord s;
    s.ObserverLat = static_cast<float>(51.3216666666667 / kDegreesPerRadian);
    s.ObserverLong = 0;
    s.FixCourse = 45.0f;
    s.FixSpeed = 8.5f;
    // A moment of July 2005; it has no meaning of its own and is kept as it is.
    s.FixTime = 2010.14953703704;
    s.Pressure = 1010.0f;
    s.Temp = 10.0f;
    s.IndexError = 0;
    s.HtOfEye = 0;
    s.PositionMethod = 0;
    s.SightAltLimit = 120.0f;
    s.SightAzLimit = 90.0f;
    s.HelpLevel = 0;
    s.SightStarCount = 280;
    s.SimplifiedRiseSet = 0;
    s.Spare = 0;
    s.ShowRA = 0;
    s.SightsTabDown = 0;
    s.AutoTimeZone = 0;
    s.UseMetres = kTrue;
    s.UseCelsius = kTrue;
    s.UseMillibars = 255;
    s.DaylightStars = 1;
    return s;
}

std::vector<unsigned char> Encode_User_Dat(const SettingsRecord& s, int32_t bias) {
    std::vector<unsigned char> out;
    out.reserve(kUserDatMinimumBytes + s.DefaultPlanFile.size());
    ByteWriter w(out);
    Visit_Fixed_Fields(s, [&w](const auto& field) { w.Put(field); });
    std::string path = Utf8_To_Ansi(s.DefaultPlanFile);
    if (path.size() > 0xFFFF) path.resize(0xFFFF);
    w.Put(static_cast<uint16_t>(path.size()));
    for (const char c : path) out.push_back(static_cast<unsigned char>(c));
    w.Put(bias);
    return out;
}

void Decode_User_Dat(std::span<const unsigned char> bytes, SettingsRecord& s, int32_t& bias) {
    s = SettingsRecord{};
    bias = 0;
    ByteReader r(bytes);
    Visit_Fixed_Fields(s, [&r](auto& field) { r.Get(field); });
    uint16_t length = 0;
    r.Get(length);
    s.DefaultPlanFile = Ansi_To_Utf8(r.Get_Bytes(length));
    r.Get(bias);
}

bool Load_User_Dat() {
    bool exists = false;
    const std::vector<unsigned char> bytes = Read_Whole_File(User_Dat_Path(), exists);
    const bool fromFile = exists && !bytes.empty();
    if (fromFile) {
        Decode_User_Dat(bytes, Settings, TZ_Bias);
        // A damaged file is not reported: what it holds out of range starts afresh.
        Check_Settings(Settings, TZ_Bias);
    } else {
        First_Use_Reset();
        std::error_code ec;  // a folder that is already there is of no interest
        if (!UserFolder.empty()) std::filesystem::create_directories(UserFolder, ec);
        Set_First_Run_Defaults();
    }
    if (Settings.SimplifiedRiseSet != 0) {
        Settings.SimplifiedRiseSet = 1;
        Settings.Spare = 0;
    }
    Compute_Derived_Settings();
    Take_Working_Copies();

    if (Plan_File_Exists(Settings.DefaultPlanFile)) {
        if (Default_Plan_Hooks.Read_Plan) Default_Plan_Hooks.Read_Plan(Settings.DefaultPlanFile);
    } else if (Default_Plan_Hooks.Make_Empty_Plan) {
        Default_Plan_Hooks.Make_Empty_Plan();
    }
    return fromFile;
}

bool Save_User_Dat() {
    Return_Working_Copies();
    std::error_code ec;
    if (!UserFolder.empty()) std::filesystem::create_directories(UserFolder, ec);
    return Write_File_Replacing(User_Dat_Path(), Encode_User_Dat(Settings, TZ_Bias));
}

bool Write_File_Replacing(const std::string& pathIn, std::span<const unsigned char> bytes) {
    // Through a link the file it names is replaced, not the link.
    std::error_code ec;
    const std::filesystem::path target = std::filesystem::weakly_canonical(pathIn, ec);
    const std::string path = ec ? pathIn : target.string();
    std::string folder = std::filesystem::path(path).parent_path().string();
    if (folder.empty()) folder = ".";
    // The new file takes the permissions of the one it replaces.
    struct stat old {};
    const bool replacing = ::stat(path.c_str(), &old) == 0;
    // One name per file for the new one; a name left by a run killed in the instant
    // between naming and renaming is written over by the next save.
    const std::string temp = path + ".tmp";

    // The new file has no name until it is complete (where the system allows that), so a
    // run killed while writing leaves nothing in the folder.
    bool named = false;
    int fd = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    if (fd < 0) {
        fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        named = true;
    }
    if (fd < 0) return false;
    bool ok = Write_All(fd, bytes) && (!replacing || ::fchmod(fd, old.st_mode & 07777) == 0) &&
              ::fsync(fd) == 0;
    if (ok && !named) {
        ::unlink(temp.c_str());
        const std::string self = "/proc/self/fd/" + std::to_string(fd);
        ok = ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, temp.c_str(), AT_SYMLINK_FOLLOW) == 0;
        named = ok;
    }
    if (::close(fd) != 0) ok = false;
    if (ok) ok = ::rename(temp.c_str(), path.c_str()) == 0;
    if (!ok) {
        if (named) ::unlink(temp.c_str());
        return false;
    }
    // The rename itself is made lasting by flushing the folder.
    const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    // Saved means that the file reads back as written.
    bool exists = false;
    const std::vector<unsigned char> back = Read_Whole_File(path, exists);
    return exists && std::equal(back.begin(), back.end(), bytes.begin(), bytes.end());
}

}  // namespace kelmoran
