// Which help pop-up belongs under the mouse on the main window's screens: the date strip,
// the lines of Main, the headings of the table screens.
#pragma once

#include <cstdint>
#include <string>

namespace kelmoran {

// The key of the pop-up at (x, y) of the main window's client area on the screen that is
// showing, or "" for none.
std::string fmain_Help_PopUp_Tests(int32_t x, int32_t y);

}  // namespace kelmoran
