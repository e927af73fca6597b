// The voyage file as a damaged or hostile file: a plan that is read is recalculated with
// every time a number, and it saves to bytes that read back as the same plan.
#include <cmath>

#include "Fuzz_Support.h"
#include "voyage/Voyage_File.h"

using namespace kelmoran;

const char* const kelmoran::fuzz::kKind = "voyage";

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Fresh_State();
    VoyagePlan plan;
    if (!Decode_Plan({data, size}, plan)) return 0;
    plan.Recalc_Plan();
    for (const Way_Point& w : plan.Way_Points)
        fuzz::Require(std::isfinite(w.Time) && std::isfinite(w.Total_Distance) &&
                          std::isfinite(w.Running_Time),
                      "way point times and distances are numbers");
    fuzz::Require(std::isfinite(plan.Header.Plan_End), "the plan ends at a number");
    const std::vector<unsigned char> bytes = Encode_Plan(plan);
    VoyagePlan back;
    fuzz::Require(Decode_Plan(bytes, back), "a plan read saves to a file that reads");
    fuzz::Require(Encode_Plan(back) == bytes, "and reads back the same");
    return 0;
}
