// The words of the help pop-ups and of the Non-Recurring Messages, and the choice of what
// shows at each help level. The boxes themselves are drawn by the window layer
// (HelpPopup); each form's tests find the key under the mouse.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelmoran {

// What a pop-up's lines are about; the help level filters by it.
enum class HelpKind {
    Input,     // how to enter the field: shown at every level
    Disabled,  // why an item cannot be chosen: shown at every level
    Normal,    // what the field does, shortcuts: levels 0 to 2
    Term,      // what a term means: levels 0 and 1
    Full       // the full description of a term, the purpose of an icon: level 0
};

struct HelpText {
    HelpKind Kind = HelpKind::Normal;
    std::vector<std::string> Lines;  // up to four; '' stands for a double quote
};

// The text of `key`, or an empty one for a key that has none.
HelpText Help_Text(const std::string& key);

// The lines that show for `key` at `level` (0 full .. 3 minimum), with the two-apostrophe
// mark turned into a double quote; empty when nothing shows.
std::vector<std::string> Help_Lines(const std::string& key, int32_t level);

// Every key with a text (for the help book's index of terms and for tests).
std::vector<std::string> Help_Keys();

// ---- Non-Recurring Messages -------------------------------------------------------------

inline constexpr const char* kIntroCaption = "  Non-Recurring Message";

// The first-visit message of a screen (by key: "Splash", "AltAz", "Clox", "Planets",
// "Lunations", "NavPlan", "Almanac", "Sights", "PlotStars"), its lines joined by line
// ends; "" for a key without one.
std::string Get_FirstUse_Message(const std::string& key);

// Whether the message of `key` is still to be shown; clears its flag when it is (so that
// it shows once). False for every key while ShowIntro is clear.
bool Take_Intro_Pending(const std::string& key);

}  // namespace kelmoran

namespace kelmoran {

struct MainPage;

// The pop-up key of line `index` of Main's day block (`moonBlock` false) or Moon block, by
// its label and the position method in force; "" for a line without help.
std::string Main_Help_Key(const MainPage& page, bool moonBlock, size_t index);

// The pop-up key of a table screen's heading: column `column` of screen `key`.
std::string Heading_Help_Key(const std::string& key, int32_t column);

}  // namespace kelmoran
