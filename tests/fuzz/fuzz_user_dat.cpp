// User.Dat as a damaged or hostile file: whatever the bytes, the record that the program
// then works from is in range, its derived values are numbers, and it is written back
// and read again unchanged.
#include <cmath>

#include "Fuzz_Support.h"
#include "settings/File_IO.h"
#include "settings/Value_Checks.h"

using namespace kelmoran;

const char* const kelmoran::fuzz::kKind = "user_dat";

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Fresh_State();
    SettingsRecord record;
    int32_t bias = 0;
    Decode_User_Dat({data, size}, record, bias);
    Check_Settings(record, bias);
    SettingsRecord again = record;
    int32_t againBias = bias;
    fuzz::Require(Check_Settings(again, againBias) == 0, "a checked record checks clean");
    Settings = record;
    Compute_Derived_Settings();
    fuzz::Require(std::isfinite(IndexErrorRad) && std::isfinite(DipRad) &&
                      std::isfinite(RefractionFactor),
                  "derived values are numbers");
    SettingsRecord back;
    int32_t backBias = 0;
    const std::vector<unsigned char> bytes = Encode_User_Dat(record, bias);
    Decode_User_Dat(bytes, back, backBias);
    fuzz::Require(Encode_User_Dat(back, backBias) == bytes, "written and read back unchanged");
    return 0;
}
