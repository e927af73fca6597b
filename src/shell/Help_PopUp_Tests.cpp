#include "shell/Help_PopUp_Tests.h"

#include "shell/M_Help.h"
#include "shell/SplashScreen.h"
#include "shell/cGeneralForm.h"
#include "voyage/cNavPlanView.h"

namespace kelmoran {

namespace {

std::string Strip_Key(const cDates& strip, int32_t x, int32_t y) {
    if (!strip.MyFrame.Contains(x, y)) return {};
    const std::string field = strip.Field_At(x, y);
    if (field == "Month") return "Month";
    if (field == "Year") return "Year";
    if (!field.empty()) return "NN";
    if (strip.MyLMTlabel.Contains(x, y)) return "Time Zone";
    return "Dates";
}

std::string Grid_Key(const cGeneralForm& form, int32_t x, int32_t y) {
    const GridModel& grid = form.Grid();
    if (grid.Divider_At(x, y) >= 0) return "Drag Colm";
    const int32_t position = grid.Heading_At(x, y);
    if (position >= 0 && position < static_cast<int32_t>(grid.MyColmPtr.size()))
        return Heading_Help_Key(form.ClassType(), grid.MyColmPtr[static_cast<size_t>(position)]);
    // The heading band right of the last heading.
    if (y >= grid.GridTop && y < grid.Rows_Top() && grid.ColmsInUse >= 0 &&
        x >= grid.Heading_On_Screen(grid.ColmsInUse).Right && !grid.Menu_Insert_AddRemove().empty())
        return "Right Click to add columns";
    return {};
}

}  // namespace

std::string fmain_Help_PopUp_Tests(int32_t x, int32_t y) {
    if (const auto* plan = dynamic_cast<const cNavPlan*>(Shell.CurrentScreen))
        return plan->Help_Key(x, y);
    auto* screen = dynamic_cast<DateStripScreen*>(Shell.CurrentScreen);
    if (!screen) return {};
    if (std::string key = Strip_Key(screen->MyDates(), x, y); !key.empty()) return key;
    if (const auto* main = dynamic_cast<const SplashScreen*>(screen)) {
        bool moon = false;
        size_t index = 0;
        if (main->Line_At(x, y, moon, index)) return Main_Help_Key(main->Page(), moon, index);
        return {};
    }
    if (const auto* form = dynamic_cast<const cGeneralForm*>(screen)) return Grid_Key(*form, x, y);
    return {};
}

}  // namespace kelmoran
