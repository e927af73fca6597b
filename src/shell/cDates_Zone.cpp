// The zone side of the date strip: the calendar and zone rules of a date run on the part
// of the control that they act on, and the control raises what they found.
#include "settings/M_TimeZones.h"
#include "shell/M_Kelmoran.h"
#include "shell/cDates.h"

namespace kelmoran {

DateControlState cDates::Zone_State() const {
    DateControlState s;
    s.Date = MySystemTime;
    s.JulDates = JulDates;
    // The day count of the date as it now stands: a step has just moved the record, and the
    // summer-time test must see where it went.
    s.MyJD = Calc_JD(MySystemTime, JulDates != 0);
    s.MyLMT_Text = MyLMT_Text;
    s.Bias = Bias;
    s.RoundToMinute = RoundToMinute != 0;
    s.FollowsSummerTime = FollowsSummerTime != 0;
    return s;
}

void cDates::Take_Zone_State(const DateControlState& s) {
    MySystemTime = s.Date;
    Set_Calendar(s.JulDates != 0);
    MyJD = s.MyJD;
    MyLMT_Text = s.MyLMT_Text;
    Bias = s.Bias;
}

void cDates::Test_Date_for_LMT_Change() {
    DateControlState s = Zone_State();
    const LmtChange change = ::kelmoran::Test_Date_for_LMT_Change(s);
    Take_Zone_State(s);
    if (change.ToJulian && MyOwner) MyOwner->MyDates_CalenderChg(*this, true);
    if (change.LabelChanged) Invalidate(MyLMTlabel.Offset(0, MyRectOffset));
    if (change.BiasChanged) {
        Paint_Dates(true);
        if (MyOwner) MyOwner->MyDates_TZChange(*this, Bias);
    }
}

void cDates::My_TZ_Bias(int32_t minutes) {
    DateControlState s = Zone_State();
    ::kelmoran::My_TZ_Bias(s, minutes);
    Take_Zone_State(s);
}

void cDates::Set_LMT(const DateRecord& date, bool repaint) {
    MySystemTime = date;
    Validate();
    DateControlState s = Zone_State();
    ::kelmoran::Set_LMT(s, MySystemTime);
    Take_Zone_State(s);
    if (repaint) Paint_Dates(true);
}

}  // namespace kelmoran
