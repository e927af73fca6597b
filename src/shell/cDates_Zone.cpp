// The zone side of the date strip: calendar switch before 1582, the zone label of far
// dates, and the control's bias.
#include <cmath>
#include <cstdio>

#include "shell/M_Kelmoran.h"
#include "shell/cDates.h"

namespace kelmoran {

namespace {
constexpr double k15October1582 = -152383.5;
}

void cDates::My_TZ_Bias(int32_t minutes) {
    Bias = minutes;
    if (minutes == 0) MyLMT_Text = "GMT";
    else {
        char buf[16];
        std::snprintf(buf, sizeof buf, "Z%+g", minutes / 60.0);
        MyLMT_Text = buf;
    }
}

void cDates::Test_Date_for_LMT_Change() {
    const auto& t = MySystemTime;
    if (t.wYear < 1583 && !JulDates && !(t.wYear == 1582 && t.wMonth >= 11)) {
        if (Calc_JD(t, false) < k15October1582) {
            Set_Calendar(true);
            if (MyOwner) MyOwner->MyDates_CalenderChg(*this, true);
        }
    }
}

}  // namespace kelmoran
