// The set of sights and the .Sight file.
#include "sights/Sights.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "settings/Value_Checks.h"
#include "sights/M_Sights.h"
#include "stars/Catalogue_Limits.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

constexpr std::size_t kRowBytes = sizeof(Sight_Record);
constexpr const char* kCrLf = "\r\n";

template <typename T>
void Put(std::vector<unsigned char>& out, const T& v) {
    const auto* p = reinterpret_cast<const unsigned char*>(&v);
    out.insert(out.end(), p, p + sizeof(T));
}

// Copies a field from `bytes` at `pos`; what lies past the end is left as it was.
template <typename T>
void Get(std::span<const unsigned char> bytes, std::size_t pos, T& v) {
    if (pos >= bytes.size()) return;
    const std::size_t n = std::min(sizeof(T), bytes.size() - pos);
    std::memcpy(&v, bytes.data() + pos, n);
}

// The observer record and the plan path as they stand in User.Dat, without the bias.
std::vector<unsigned char> Observer_Bytes(const SettingsRecord& settings) {
    std::vector<unsigned char> bytes = Encode_User_Dat(settings, 0);
    bytes.resize(bytes.size() - sizeof(int32_t));
    return bytes;
}

// A 16-bit flag of the file as the program holds it: 0 or -1.
int16_t Flag(int16_t v) { return v != 0 ? kTrue : kFalse; }

// A number worked out by a reduction: kept if finite, else 0 (a reduction of the row
// works it again).
void Finite_Or_Zero(float& v) {
    if (!std::isfinite(v)) v = 0;
}

// Checks a row read from a file against what its fields mean. False when what the user
// entered cannot be a sight (a time outside the years the program offers, an altitude
// beyond the zenith, an azimuth off the compass, a date that no control shows): the row
// is then taken as empty. Otherwise the flags are made 0 or -1, the worked numbers made
// finite, and a row that cannot be reduced (no altitude or no azimuth) holds no body.
bool Check_Sight_Row(Sight_Record& r) {
    r.Row_Used = Flag(r.Row_Used);
    r.Has_Body = Flag(r.Has_Body);
    r.Az_Entered = Flag(r.Az_Entered);
    r.Alt_Entered = Flag(r.Alt_Entered);
    if (!Is_Moment(r.Sight_Time)) return false;
    if (r.Alt_Entered != 0 && !Within(r.Sextant_Alt, -kHalfPi, kHalfPi)) return false;
    if (r.Az_Entered != 0 && !Within(r.Sight_Az, 0, 360)) return false;
    // The entered date as the row's controls show it (0 where nothing was entered yet).
    if (!Within(r.Sight_Year, -9999, 9999) || !Within(r.Sight_Month, 0, 12) ||
        !Within(r.Sight_Day, 0, 31) || !Within(r.Sight_Hour, 0, 23) ||
        !Within(r.Sight_Minute, 0, 59) || !Within(r.Sight_Second, 0, 59))
        return false;
    for (float* v : {&r.Sextant_Alt, &r.Sight_Az, &r.DR_Lat, &r.DR_Long, &r.Sun_Alt,
                     &r.Intercept, &r.Line_Az})
        Finite_Or_Zero(*v);
    if (!Is_Latitude(r.DR_Lat) || !Is_Longitude(r.DR_Long)) r.DR_Lat = r.DR_Long = 0;
    if (r.Alt_Entered == 0 || r.Az_Entered == 0 || !Within(r.Body_Id, 0, kTier4End) ||
        r.Candidate_No < -2) {
        r.Has_Body = 0;
        r.Candidate_No = -1;
        r.Intercept = 0;
        r.Line_Az = 0;
    }
    return true;
}

// The filter limits of a file, each replaced by its first-run value when it is not one
// the Filter tab could have set.
void Check_Filter(SightsFilterState& f) {
    const SettingsRecord d = First_Run_Settings();
    if (!Within(f.AltLimit * kArcminPerRadian, 0, 600.5))
        f.AltLimit = static_cast<float>(d.SightAltLimit / kArcminPerRadian);
    if (!Within(f.AzLimit, 0, 180)) f.AzLimit = d.SightAzLimit;
    if (!Within(f.StarCount, 0, kTier4End)) f.StarCount = d.SightStarCount;
}

// The record of the fix time: a time outside the program's years is not put in use; the
// fix then takes the moment in use, `now`, shown in the zone of `bias`. A DR that is no
// place is worked again for the fix time (a load that ends early keeps the file's).
void Check_Fix(Sight_Record& fix, double now, int32_t bias) {
    if (Is_Moment(fix.Sight_Time)) {
        if (!Is_Latitude(fix.DR_Lat) || !Is_Longitude(fix.DR_Long)) {
            float course = 0, speed = 0;
            Get_Position(fix.Sight_Time, fix.DR_Lat, fix.DR_Long, course, speed);
        }
        return;
    }
    fix = Sight_Record{};
    fix.Sight_Time = now;
    const MySystemTime t = JD_To_Date(now + bias / 1440.0);
    fix.Sight_Year = t.wYear;
    fix.Sight_Month = t.wMonth;
    fix.Sight_Day = t.wDay;
    fix.Sight_Hour = t.wHour;
    fix.Sight_Minute = t.wMinute;
    fix.Sight_Second = t.wSecond;
    float course = 0, speed = 0;
    Get_Position(now, fix.DR_Lat, fix.DR_Long, course, speed);
}

bool Row_Complete(std::span<const unsigned char> bytes, std::size_t pos) {
    return pos <= bytes.size() && bytes.size() - pos >= kRowBytes;
}

// The name of a plan in the comparison: in double quotes, without folder and ".Voy".
std::string Plan_Label(const std::string& path) {
    if (path.empty()) return "None";
    std::string name = path;
    const std::size_t cut = name.find_last_of("/\\");
    if (cut != std::string::npos) name.erase(0, cut + 1);
    if (name.size() >= 4 && name.compare(name.size() - 4, 4, ".Voy") == 0)
        name.erase(name.size() - 4);
    return "\"" + Ansi_To_Utf8(name) + "\"";
}

std::string Method_Word(int32_t method, bool current) {
    switch (method) {
        case kFixPosition: return "a fixed position";
        case kDRCourseSpeed: return current ? "by track" : "track";
        case kDRByPlan: return "using the plan";
        default: return "";
    }
}

std::string Track_Text(const SettingsRecord& s) {
    return Format_Number(s.FixCourse, "000°.0") + "T @ " +
           Format_Number(s.FixSpeed, mask::SpeedFlexible);
}

// Date and time of a moment in the zone of `bias`.
std::string Local_Time_Text(double jd, int32_t bias) {
    const MySystemTime date = JD_To_Date(jd + bias / 1440.0);
    return Format_Date_Mask(date, "dd mmm yyyy") + " @ " + Format_Date_Mask(date, mask::TimeHM);
}

void Line(std::string& text, const std::string& head, const std::string& file,
          const std::string& now) {
    text += head + " to " + file + " from " + now + kCrLf;
}

}  // namespace

int32_t Max_Sight(int32_t height) {
    const int32_t rows = (height - 100 - 121) / 160;
    return std::clamp(rows, 6, 14);
}

SightSet::SightSet(int32_t maxSight) {
    const int32_t rows = std::max(maxSight, 0) + 1;
    Sights.assign(rows, Sight_Record{});
    Candidates.assign(rows, Candidate_List{});
    DR_Warning.assign(rows, 0);
}

void SightSet::Clear() {
    for (int row = 0; row <= Max_Sight(); ++row) Blank_Row(row);
    Fix_Sight = Sight_Record{};
    Path.clear();
    Loaded = false;
}

void SightSet::Blank_Row(int row) {
    if (row < 0 || row > Max_Sight()) return;
    Sights[row] = Sight_Record{};
    Candidates[row].clear();
    DR_Warning[row] = 0;
}

std::vector<unsigned char> Encode_Sights(const SightSet& set, const SettingsRecord& settings) {
    std::vector<unsigned char> out;
    Put(out, set.My_TZ_Bias);
    Put(out, SightsFilter.AltLimit);
    Put(out, SightsFilter.AzLimit);
    Put(out, SightsFilter.StarCount);
    Put(out, set.Fix_Sight);
    Put(out, Shell.CalendarChoice);
    const std::vector<unsigned char> observer = Observer_Bytes(settings);
    out.insert(out.end(), observer.begin(), observer.end());
    for (const Sight_Record& row : set.Sights) Put(out, row);
    return out;
}

bool Save_Sights(SightSet& set, const std::string& path) {
    const std::vector<unsigned char> bytes = Encode_Sights(set, Settings);
    if (!Write_File_Replacing(path, bytes)) return false;
    Shell.SightsChanged = kFalse;
    set.Path = path;
    return true;
}

std::string Settings_Differences(const SettingsRecord& file, int32_t fileBias,
                                 const SettingsRecord& now, int32_t nowBias) {
    std::string text;
    if (file.IndexError != now.IndexError)
        Line(text, "IE will change", Format_Number(file.IndexError, "#0'.0"),
             Format_Number(now.IndexError, "#0'.0"));
    if (file.Pressure != now.Pressure)
        text += "Pressure will change to " + Format_Number(file.Pressure, mask::Pressure) +
                "mb from " + Format_Number(now.Pressure, mask::Pressure) + "mb" + kCrLf;
    if (file.Temp != now.Temp)
        text += "Temperature will change to " + Format_Number(file.Temp, "##0°.0") + "C from " +
                Format_Number(now.Temp, "##0°.0") + "C" + kCrLf;
    if (file.HtOfEye != now.HtOfEye)
        text += "Ht of Eye will change to " + Format_Number(file.HtOfEye, mask::HeightOfEye) +
                "m from " + Format_Number(now.HtOfEye, mask::HeightOfEye) + "m" + kCrLf;
    if (file.PositionMethod != now.PositionMethod)
        text += "Postion Calculation will change to " + Method_Word(file.PositionMethod, false) +
                " instead of " + Method_Word(now.PositionMethod, true) + kCrLf;
    if (file.PositionMethod == kFixPosition &&
        (file.ObserverLat != now.ObserverLat || file.ObserverLong != now.ObserverLong))
        Line(text, "Fix position will change",
             Format_Lat(file.ObserverLat, 1, false) + "/ " + Format_Long(file.ObserverLong, 1, false),
             Format_Lat(now.ObserverLat, 1, false) + "/ " + Format_Long(now.ObserverLong, 1, false));
    if (file.PositionMethod == kDRCourseSpeed) {
        if (file.FixSpeed != now.FixSpeed || file.FixCourse != now.FixCourse)
            text += "Track will change to " + Track_Text(file) + "Kts from " + Track_Text(now) +
                    "Kts" + kCrLf;
        if (file.FixTime != now.FixTime)
            Line(text, "Track start will change", Local_Time_Text(file.FixTime, fileBias),
                 Local_Time_Text(now.FixTime, nowBias));
    }
    if (fileBias != nowBias)
        Line(text, "Time Zone will change", Format_TZ_Text(fileBias), Format_TZ_Text(nowBias));
    if (file.DefaultPlanFile != now.DefaultPlanFile)
        Line(text, "Voyage Plan will change", Plan_Label(file.DefaultPlanFile),
             Plan_Label(now.DefaultPlanFile));
    return text;
}

Load_Result Load_Sights(SightSet& set, const std::string& path) {
    std::ifstream in(std::filesystem::u8path(path), std::ios::binary);
    if (!in) return Load_Result::Unreadable;
    const std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)),
                                           std::istreambuf_iterator<char>());
    return Load_Sights_Bytes(set, bytes, path);
}

Load_Result Load_Sights_Bytes(SightSet& set, std::span<const unsigned char> bytes,
                              const std::string& path) {
    SightsHost* host = set.Host;
    if (Shell.SightsChanged != 0 && host != nullptr &&
        host->Message_Box(sights_text::NotSaved, sights_text::NotSavedTitle,
                          MsgButtons::OKCancel) == MsgAnswer::Cancel)
        return Load_Result::Cancelled_Unsaved;

    // The row count counts the path's bytes as part of a row: one row past the end may be
    // read, and it reads as unused.
    const long long length = static_cast<long long>(bytes.size());
    int32_t rows = static_cast<int32_t>(std::max(0LL, (length - 166) / 76));
    if (length < 166) rows = 0;
    rows = std::min(rows, set.Max_Sight());

    int32_t fileBias = set.My_TZ_Bias;
    Get(bytes, 0, fileBias);
    if (!Is_Zone_Bias(fileBias)) fileBias = 0;
    const SightsFilterState formerFilter = SightsFilter;
    Get(bytes, 4, SightsFilter.AltLimit);
    Get(bytes, 8, SightsFilter.AzLimit);
    Get(bytes, 12, SightsFilter.StarCount);
    Check_Filter(SightsFilter);
    Get(bytes, kSightFixOffset, set.Fix_Sight);
    Check_Fix(set.Fix_Sight, Shell.CurrentJD, fileBias);
    const int16_t formerCalendar = Shell.CalendarChoice;
    Get(bytes, kSightCalendarOffset, Shell.CalendarChoice);
    Shell.CalendarChoice = Flag(Shell.CalendarChoice);

    // The observer record into a copy that starts as the settings in use, so that a file
    // cut short in its header shows no difference for what it lacks.
    SettingsRecord file = Settings;
    uint16_t pathLength = 0;
    Get(bytes, kSightPathOffset, pathLength);
    const std::size_t rowStart = kSightPathOffset + 2 + pathLength;
    if (bytes.size() > kSightObserverOffset) {
        std::vector<unsigned char> observer = Observer_Bytes(Settings);
        observer.resize(kSettingsFixedBytes);
        const std::size_t fixed =
            std::min(bytes.size() - kSightObserverOffset, kSettingsFixedBytes);
        std::copy_n(bytes.begin() + kSightObserverOffset, fixed, observer.begin());
        std::string planPath = Utf8_To_Ansi(Settings.DefaultPlanFile);
        if (bytes.size() >= rowStart)
            planPath.assign(reinterpret_cast<const char*>(bytes.data()) + kSightPathOffset + 2,
                            pathLength);
        const auto length = static_cast<uint16_t>(planPath.size());
        Put(observer, length);
        observer.insert(observer.end(), planPath.begin(), planPath.end());
        int32_t unusedBias = 0;
        Decode_User_Dat(observer, file, unusedBias);
        Check_Settings(file, unusedBias);
    }

    for (int row = 0; row <= set.Max_Sight(); ++row) {
        const std::size_t pos = rowStart + static_cast<std::size_t>(row) * kRowBytes;
        Sight_Record record{};
        if (row <= rows && Row_Complete(bytes, pos)) Get(bytes, pos, record);
        if (record.Row_Used == 0 || !Check_Sight_Row(record)) {
            set.Blank_Row(row);
            if (host != nullptr) host->Row_Blanked(row);
        } else {
            set.Sights[row] = record;
            set.Candidates[row].clear();
            set.DR_Warning[row] = 0;
        }
    }
    for (int row = 0; row <= set.Max_Sight(); ++row)
        if (set.Sights[row].Has_Body != 0) Reduce_Sight(set, row, false);

    Load_Result result = Load_Result::Same;
    std::string text = Settings_Differences(file, fileBias, Settings, TZ_Bias);
    if (!text.empty()) {
        text += std::string(kCrLf) + sights_text::Accept + kCrLf;
        const MsgAnswer answer =
            host != nullptr ? host->Message_Box(text, sights_text::DifferencesTitle,
                                                MsgButtons::YesNoCancel)
                            : MsgAnswer::No;
        if (answer == MsgAnswer::Cancel) {
            Shell.CalendarChoice = formerCalendar;
            SightsFilter = formerFilter;
            return Load_Result::Cancelled;
        }
        if (answer == MsgAnswer::Yes) {
            const bool planDiffers = file.DefaultPlanFile != Settings.DefaultPlanFile;
            Settings = file;
            Compute_Derived_Settings();
            if (planDiffers && host != nullptr) host->Load_Plan(Settings.DefaultPlanFile);
            for (int row = 0; row <= set.Max_Sight(); ++row)
                if (set.Sights[row].Has_Body != 0) Reduce_Sight(set, row, false);
            if (host != nullptr) host->Settings_Accepted();
            result = Load_Result::Accepted;
        } else {
            result = Load_Result::Kept;
        }
    }

    set.Loaded = true;
    Shell.CurrentJD = set.Fix_Sight.Sight_Time;
    set.My_TZ_Bias = fileBias;
    TZ_Bias = fileBias;
    float course = 0, speed = 0;
    Get_Position(set.Fix_Sight.Sight_Time, set.Fix_Sight.DR_Lat, set.Fix_Sight.DR_Long, course,
                 speed);
    set.Path = path;
    if (host != nullptr) host->Load_Done();
    return result;
}

std::string Sight_File_Name(const Sight_Record& fix, const std::string& folder) {
    MySystemTime date;
    date.wYear = static_cast<int16_t>(fix.Sight_Year);
    date.wMonth = static_cast<int16_t>(std::clamp(fix.Sight_Month, 1, 12));
    date.wDay = static_cast<int16_t>(fix.Sight_Day);
    return folder + Format_Date_Mask(date, "dd mmm yy") + sights_text::Extension;
}

}  // namespace kelmoran
