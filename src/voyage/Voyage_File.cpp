#include "voyage/Voyage_File.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "settings/Value_Checks.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Plan_Undo.h"

namespace kelmoran {

namespace {

// A voyage file larger than this is not one of ours.
constexpr std::uintmax_t kMaxFileBytes = 64u * 1024u * 1024u;

// The plan's texts are UTF-8; the file holds Windows-1252.
std::string To_File_Text(const std::string& s) {
    return Utf8_To_Ansi(s);
}
std::string From_File_Text(const std::string& s) {
    return Ansi_To_Utf8(s);
}

class Writer {
  public:
    std::vector<unsigned char> bytes;

    template <typename T>
    void Put(T v) {
        unsigned char b[sizeof(T)];
        std::memcpy(b, &v, sizeof(T));
        bytes.insert(bytes.end(), b, b + sizeof(T));
    }
    void Put_String(const std::string& utf8) {
        std::string s = To_File_Text(utf8);
        if (s.size() > 0xFFFF) s.resize(0xFFFF);
        Put(static_cast<uint16_t>(s.size()));
        bytes.insert(bytes.end(), s.begin(), s.end());
    }
    // The strings of a row: an empty text is kept in the file as a single blank.
    void Put_Row_String(const std::string& utf8) { Put_String(utf8.empty() ? " " : utf8); }
};

class Reader {
  public:
    explicit Reader(std::span<const unsigned char> d) : d_(d) {}
    bool bad = false;

    template <typename T>
    T Get() {
        T v{};
        if (bad || d_.size() - at_ < sizeof(T)) {
            bad = true;
            return v;
        }
        std::memcpy(&v, d_.data() + at_, sizeof(T));
        at_ += sizeof(T);
        return v;
    }
    std::string Get_String() {
        const uint16_t n = Get<uint16_t>();
        if (bad || d_.size() - at_ < n) {
            bad = true;
            return {};
        }
        std::string s(reinterpret_cast<const char*>(d_.data() + at_), n);
        at_ += n;
        return From_File_Text(s);
    }
    std::string Get_Row_String() {
        std::string s = Get_String();
        return s == " " ? std::string() : s;
    }
    void Get_Bytes(uint8_t* out, std::size_t n) {
        if (bad || d_.size() - at_ < n) {
            bad = true;
            return;
        }
        std::memcpy(out, d_.data() + at_, n);
        at_ += n;
    }
    bool At_End() const { return at_ == d_.size(); }

  private:
    std::span<const unsigned char> d_;
    std::size_t at_ = 0;
};

bool Same_Path(const std::string& a, const std::string& b) {
    return !a.empty() && a == b;
}

}  // namespace

std::vector<unsigned char> Encode_Plan(const VoyagePlan& plan) {
    Writer w;
    const Plan_Header& h = plan.Header;
    w.Put(h.Plan_Start);
    w.Put(h.ETD_Minutes);
    w.Put_String(h.ETD_Zone);
    w.Put(h.Plan_End);
    w.Put(h.ETA_Minutes);
    w.Put_String(h.ETA_Zone);
    w.Put(h.Reserved);
    w.Put(h.Fixed_Speed_1);
    w.Put(h.Fixed_Speed_2);
    w.Put(h.Fixed_Speed_3);
    w.Put(h.Default_Speed);
    const std::size_t rows = std::min<std::size_t>(plan.Way_Points.size(), 32767);
    const std::size_t extra = std::min<std::size_t>(plan.Extra_List.size(), 32767);
    w.Put(static_cast<int16_t>(static_cast<int>(rows) - 1));
    w.Put(static_cast<int16_t>(static_cast<int>(extra) - 1));
    w.Put_String(h.Title);
    w.Put_String(h.Path);
    w.Put_String(h.Third_Text);
    for (std::size_t i = 0; i < rows; ++i) {
        const Way_Point& p = plan.Way_Points[i];
        w.Put(static_cast<float>(p.Lat));
        w.Put(static_cast<float>(p.Long));
        w.Put(p.Speed);
        w.bytes.insert(w.bytes.end(), std::begin(p.Reserved), std::end(p.Reserved));
        w.Put_Row_String(p.Remarks);
        w.Put_Row_String(p.Row_Valid ? p.ID : std::string());
        w.Put_Row_String(p.Description);
        w.Put(p.Show);
        w.Put(p.Flag_2);
        w.Put(p.Flag_3);
        w.Put(p.Row_Locked);
        w.Put(p.Leg_Type);
        w.Put(p.Type_2);
    }
    for (std::size_t i = 0; i < extra; ++i) w.Put_String(plan.Extra_List[i]);
    w.Put(plan.Last_Value);
    return std::move(w.bytes);
}

bool Decode_Plan(std::span<const unsigned char> bytes, VoyagePlan& out) {
    Reader r(bytes);
    VoyagePlan p;
    Plan_Header& h = p.Header;
    h.Plan_Start = r.Get<double>();
    h.ETD_Minutes = r.Get<int16_t>();
    h.ETD_Zone = r.Get_String();
    h.Plan_End = r.Get<double>();
    h.ETA_Minutes = r.Get<int16_t>();
    h.ETA_Zone = r.Get_String();
    h.Reserved = r.Get<int16_t>();
    h.Fixed_Speed_1 = r.Get<float>();
    h.Fixed_Speed_2 = r.Get<float>();
    h.Fixed_Speed_3 = r.Get<float>();
    h.Default_Speed = r.Get<float>();
    const int16_t highRow = r.Get<int16_t>();
    const int16_t highExtra = r.Get<int16_t>();
    h.Title = r.Get_String();
    h.Path = r.Get_String();
    h.Third_Text = r.Get_String();
    if (r.bad || highRow < 0 || highExtra < -1) return false;
    p.Way_Points.assign(static_cast<std::size_t>(highRow) + 1, Way_Point{});
    p.Texts.assign(p.Way_Points.size(), Way_Point_Text{});
    for (Way_Point& w : p.Way_Points) {
        w.Lat = r.Get<float>();
        w.Long = r.Get<float>();
        w.Speed = r.Get<float>();
        r.Get_Bytes(w.Reserved, sizeof w.Reserved);
        w.Remarks = r.Get_Row_String();
        w.ID = r.Get_Row_String();
        w.Description = r.Get_Row_String();
        w.Show = r.Get<int16_t>();
        w.Flag_2 = r.Get<int16_t>();
        w.Flag_3 = r.Get<int16_t>();
        w.Row_Locked = r.Get<int16_t>();
        w.Leg_Type = r.Get<char>();
        w.Type_2 = r.Get<char>();
        if (r.bad) return false;
        // A position that is not a number, or off the globe, is damage.
        if (!(std::fabs(w.Lat) <= 1.5707964) || !(std::fabs(w.Long) <= 6.2831854)) return false;
        // A speed no ship makes is taken as none: the leg gets the default speed.
        if (!Is_Ship_Speed(w.Speed)) w.Speed = 0;
    }
    for (int i = 0; i <= highExtra; ++i) p.Extra_List.push_back(r.Get_String());
    p.Last_Value = r.Get<int16_t>();
    if (r.bad || !r.At_End()) return false;
    // The start must be a moment of the program's years; the end is worked again.
    if (!Is_Moment(h.Plan_Start)) return false;
    if (!Is_Moment(h.Plan_End)) h.Plan_End = h.Plan_Start;
    for (float* v : {&h.Fixed_Speed_1, &h.Fixed_Speed_2, &h.Fixed_Speed_3, &h.Default_Speed})
        if (!Is_Ship_Speed(*v)) *v = 0;
    if (!Is_Zone_Bias(h.ETD_Minutes)) h.ETD_Minutes = 0;
    if (!Is_Zone_Bias(h.ETA_Minutes)) h.ETA_Minutes = 0;
    p.Test_Wpts_Valid();
    out = std::move(p);
    return true;
}

bool Load_Plan(const std::string& path, VoyagePlan& plan, std::string& message) {
    std::error_code ec;
    const std::uintmax_t size = std::filesystem::file_size(path, ec);
    if (ec || size > kMaxFileBytes) {
        message = ec ? voyage_file_text::NotReadable : voyage_file_text::Damaged;
        return false;
    }
    std::ifstream in(path, std::ios::binary);
    std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)),
                                     std::istreambuf_iterator<char>());
    if (!in.good() && !in.eof()) {
        message = voyage_file_text::NotReadable;
        return false;
    }
    VoyagePlan loaded;
    if (!Decode_Plan(bytes, loaded)) {
        message = voyage_file_text::Damaged;
        return false;
    }
    // The path of the file as opened is the plan's path from now on.
    loaded.Header.Path = path;
    loaded.Header.File_Named = kTrue;
    for (Way_Point& w : loaded.Way_Points) w.Position_Done = kFalse;
    loaded.Recalc_Plan();
    plan = std::move(loaded);
    Shell.PlanChanged = kFalse;
    Plan_Undo.Reset();
    message.clear();
    return true;
}

std::string With_Voy_Extension(const std::string& path) {
    const std::filesystem::path p(path);
    if (p.extension().string() == voyage_file_text::Extension) return path;
    return path + voyage_file_text::Extension;
}

bool Save_Plan(const std::string& pathIn, VoyagePlan& plan, SettingsRecord& settings,
               std::string& message) {
    const std::string path = With_Voy_Extension(pathIn);
    const bool wasDefault = Is_Default_Plan(plan, settings);
    const std::filesystem::path target(path);
    // An untitled plan takes the name of its file, in the file as in memory.
    std::string title = plan.Header.Title;
    if (title.empty() || title == plan_text::Untitled) title = target.stem().string();
    VoyagePlan copy = plan;
    copy.Header.Path = path;
    copy.Header.Title = title;
    const std::vector<unsigned char> bytes = Encode_Plan(copy);

    // A plan that would not read back as it is (a time or speed out of range) is not
    // written: the old file stays.
    VoyagePlan back;
    if (!Decode_Plan(bytes, back) || Encode_Plan(back) != bytes ||
        !Write_File_Replacing(path, bytes)) {
        message = voyage_file_text::NotWritten;
        return false;
    }
    plan.Header.Path = path;
    plan.Header.File_Named = kTrue;
    plan.Header.Title = title;
    if (wasDefault) settings.DefaultPlanFile = path;
    Shell.PlanChanged = kFalse;
    message.clear();
    return true;
}

bool Is_Default_Plan(const VoyagePlan& plan, const SettingsRecord& settings) {
    return Same_Path(settings.DefaultPlanFile, plan.Header.Path);
}

void Remove_As_Default(SettingsRecord& settings) {
    settings.DefaultPlanFile.clear();
    if (settings.PositionMethod == 2) settings.PositionMethod = 0;
}

bool Set_As_Default(const VoyagePlan& plan, SettingsRecord& settings, std::string& message) {
    if (!plan.Header.File_Named || Shell.PlanChanged || plan.Header.Path.empty() ||
        plan.Header.Path == plan_text::Untitled) {
        message = voyage_file_text::MustSaveFirst;
        return false;
    }
    settings.DefaultPlanFile = plan.Header.Path;
    message.clear();
    return true;
}

void Read_Default_Plan(VoyagePlan& plan, const SettingsRecord& settings, double nowJD) {
    std::string message;
    std::error_code ec;
    if (!settings.DefaultPlanFile.empty() &&
        std::filesystem::exists(settings.DefaultPlanFile, ec) &&
        Load_Plan(settings.DefaultPlanFile, plan, message))
        return;
    plan.New_Plan(nowJD, settings.FixSpeed);
    Plan_Undo.Reset();
}

}  // namespace kelmoran
