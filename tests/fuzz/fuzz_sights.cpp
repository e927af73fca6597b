// The sight file as a damaged or hostile file, through the whole load: the unsaved
// warning, the rows, the reductions, the differences and the answer to them (taken from
// the input), and the fix time put in use. Afterwards the filter, the moment and every
// row in use are within what the program can show, and the fix of the rows is a place.
#include <cmath>

#include "Fuzz_Support.h"
#include "settings/File_IO.h"
#include "settings/Value_Checks.h"
#include "sights/Sight_Fix.h"
#include "sights/Sights.h"
#include "stars/Catalogue_Limits.h"

using namespace kelmoran;

const char* const kelmoran::fuzz::kKind = "sights";

namespace {

// Answers every question by the input's last byte.
class Answering_Host : public SightsHost {
  public:
    explicit Answering_Host(MsgAnswer a) : answer_(a) {}
    MsgAnswer Message_Box(const std::string&, const std::string&, MsgButtons) override {
        return answer_;
    }

  private:
    MsgAnswer answer_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Fresh_State();
    static const MsgAnswer kAnswers[3] = {MsgAnswer::Yes, MsgAnswer::No, MsgAnswer::Cancel};
    Answering_Host host(kAnswers[size > 0 ? data[size - 1] % 3 : 0]);
    SightSet set(6);
    set.Host = &host;
    Load_Sights_Bytes(set, {data, size}, "fuzz.Sight");
    fuzz::Require(Within(SightsFilter.StarCount, 0, kTier4End), "star count in the catalogue");
    fuzz::Require(Within(SightsFilter.AzLimit, 0, 180), "azimuth limit on the compass");
    fuzz::Require(Is_Moment(Shell.CurrentJD), "the moment in use is one of the program's");
    fuzz::Require(Is_Zone_Bias(TZ_Bias), "the bias is a zone's");
    for (const Sight_Record& s : set.Sights) {
        if (s.Row_Used == 0) continue;
        fuzz::Require(Is_Moment(s.Sight_Time), "a row's time is a moment");
        if (s.Has_Body != 0)
            fuzz::Require(std::isfinite(s.Intercept) && std::isfinite(s.Line_Az),
                          "a line is a pair of numbers");
    }
    const Fix_Result fix = Calc_Fix(set, 0.5f, 600, 400, Ellipse_Size::Medium);
    fuzz::Require(std::isfinite(fix.Fix_Lat) && std::isfinite(fix.Fix_Longt), "the fix is a place");
    return 0;
}
