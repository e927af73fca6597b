// The fuzzers' fresh state and the files the program writes.
#include "Fuzz_Support.h"

#include <cstring>
#include <filesystem>
#include <fstream>

#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "shell/M_Kelmoran.h"
#include "sights/M_Sights.h"
#include "sights/Sights.h"
#include "stars/M_Resources.h"
#include "voyage/Voyage_File.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran::fuzz {

void Fresh_State() {
    static const bool tables = (Load_Star_Tables(), true);
    (void)tables;
    Reset_Shell(nullptr);
    Set_First_Run_Defaults();
    Compute_Derived_Settings();
    SightsFilter = {static_cast<float>(Settings.SightAltLimit / kArcminPerRadian),
                    Settings.SightAzLimit, Settings.SightStarCount, kTrue};
    Shell.CurrentJD = 8830.25;
    Voyage.New_Plan(8830.0, Settings.FixSpeed);
}

namespace {

// A plan of three way points in the Channel, a locked row, texts and a "D" leg.
VoyagePlan Sample_Plan() {
    VoyagePlan p;
    p.New_Plan(9100.5, 11.0f);
    const double pts[3][2] = {{50.1, -1.3}, {49.5, -3.0}, {48.4, -5.1}};
    for (int i = 0; i < 3; ++i) {
        p.Way_Points[i].Lat = pts[i][0] / kDegreesPerRadian;
        p.Way_Points[i].Long = pts[i][1] / kDegreesPerRadian;
    }
    p.Way_Points[0].ID = "SOL";
    p.Way_Points[1].Row_Locked = kTrue;
    p.Way_Points[1].Remarks = "Nab Tower";
    p.Way_Points[2].Leg_Type = 'D';
    p.Extra_List = {"one", "two"};
    p.Test_Wpts_Valid();
    p.Recalc_Plan();
    return p;
}

// Sights of an evening with a body selected in the first rows.
SightSet Sample_Sights() {
    SightSet set(6);
    set.My_TZ_Bias = 60;
    for (int r = 0; r < 3; ++r) {
        Sight_Record& s = set.Sights[r];
        s.Sight_Time = 8830.25 + r / 1440.0;
        s.Sextant_Alt = 0.5f + 0.1f * r;
        s.Sight_Az = 100.0f + 60.0f * r;
        s.Row_Used = s.Alt_Entered = s.Az_Entered = s.Has_Body = kTrue;
        s.Body_Id = 12 + r;
        s.Sight_Day = 5;
        s.Sight_Month = 3;
        s.Sight_Year = 2024;
        s.Sight_Hour = 19;
        s.Sight_Minute = r;
    }
    set.Fix_Sight = set.Sights[2];
    return set;
}

}  // namespace

std::vector<Seed> Seeds(const std::string& kind) {
    Fresh_State();
    std::vector<Seed> out;
    if (kind == "user_dat") {
        out.push_back({"first_run", Encode_User_Dat(Settings, 0)});
        SettingsRecord s = Settings;
        s.PositionMethod = 2;
        s.SightStarCount = 1520;
        s.DefaultPlanFile = "/home/navigator/Plans/Biscay.Voy";
        out.push_back({"plan_and_zone", Encode_User_Dat(s, -330)});
    } else if (kind == "voyage") {
        out.push_back({"fresh_plan", Encode_Plan(Voyage)});
        out.push_back({"channel_plan", Encode_Plan(Sample_Plan())});
    } else if (kind == "sights") {
        out.push_back({"evening_sights", Encode_Sights(Sample_Sights(), Settings)});
        SettingsRecord s = Settings;
        s.PositionMethod = 1;
        s.HtOfEye = 3.0f;
        s.DefaultPlanFile = "C:\\Plans\\Biscay.Voy";
        out.push_back({"other_settings", Encode_Sights(Sample_Sights(), s)});
    }
    return out;
}

}  // namespace kelmoran::fuzz

// Before fuzzing: "-write_seeds=<folder>" writes the seeds of this fuzzer into
// <folder>/seeds, makes <folder>/corpus for what the fuzzer finds, and ends the run.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    for (int i = 1; i < *argc; ++i) {
        const char* flag = "-write_seeds=";
        if (std::strncmp((*argv)[i], flag, std::strlen(flag)) != 0) continue;
        const std::filesystem::path folder((*argv)[i] + std::strlen(flag));
        std::filesystem::create_directories(folder / "seeds");
        std::filesystem::create_directories(folder / "corpus");
        for (const kelmoran::fuzz::Seed& seed : kelmoran::fuzz::Seeds(kelmoran::fuzz::kKind))
            std::ofstream(folder / "seeds" / seed.Name, std::ios::binary)
                .write(reinterpret_cast<const char*>(seed.Bytes.data()),
                       static_cast<std::streamsize>(seed.Bytes.size()));
        std::exit(0);
    }
    return 0;
}
