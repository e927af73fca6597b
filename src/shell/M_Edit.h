// The one edit engine of the program. Nothing is a text box: every typed value, in a grid
// cell, in the date strip, on a tab of Options or in a Sights row, goes through here. One
// edit is open at a time; the engine keeps what has been typed, decides what each key does
// by the field's handler, and tells the owner form where to draw the text and the caret.
// The owner control receives the committed value.
//
// Keys are the window system's: printable characters by their Latin-1 code (the degree
// sign is 176), Backspace 8, Tab 9, Enter 13, and Left, Right, Home, End negated
// (-37, -39, -36, -35) so that they cannot be mistaken for characters, as is F2 (-113). -13 commits
// without ending the edit, as End_Edit sends it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "shell/Geometry.h"

namespace kelmoran {

// Virtual key codes of the window system that the key filter knows.
namespace vk {
inline constexpr int32_t Back = 8;
inline constexpr int32_t Tab = 9;
inline constexpr int32_t Return = 13;
inline constexpr int32_t Escape = 27;
inline constexpr int32_t Space = 32;
inline constexpr int32_t End = 35;
inline constexpr int32_t Home = 36;
inline constexpr int32_t Left = 37;
inline constexpr int32_t Right = 39;
inline constexpr int32_t Delete = 46;
inline constexpr int32_t F2 = 113;
inline constexpr int32_t Commit = -13;  // the pseudo-key of End_Edit
}  // namespace vk

struct EditSession;

// The form on which an edit is drawn: it measures text in its fonts, repaints the cell
// with the edit's text and caret, and sounds the beep.
class EditCanvas {
  public:
    virtual ~EditCanvas() = default;
    // Width in pixels of `text` (UTF-8) in `font`.
    virtual int32_t Text_Width(FontKind font, const std::string& text) = 0;
    // The edit's cell needs drawing again (its text or caret changed, or it closed).
    virtual void Repaint_Edit(const Rect& cell) = 0;
    virtual void Beep() = 0;
};

// The control that gets the result of an edit: a date strip, a lat/long pair, a screen.
class cEditTarget {
  public:
    virtual ~cEditTarget() = default;
    // The edit of `s.Field` committed: `value` in the field's unit (radians for angles,
    // degrees for courses, knots, miles, days, hours of a zone, the field's number for
    // dates and small numbers) and `text` the value as it is to be shown (free text, a
    // way-point letter code, a formatted number).
    virtual void Edit_Commit(const EditSession& s, double value, const std::string& text) = 0;
};

// What the owner fills before Begin_Edit.
struct EditRequest {
    EditCanvas* Form = nullptr;      // window that gets the repaints
    cEditTarget* Control = nullptr;  // control that gets the result
    std::string Class;               // "CellEdit", "Dates", "Observer", "Options", ...
    std::string Field;               // "Day", "Lat", "Speed", "WptNo", ...
    Rect Cell;                       // the cell, window pixels
    FontKind Font = FontKind::Normal;
    int32_t Alignment = 0;  // 0 left, 1 centred, 2 right
    double Value = 0.0;     // numeric start value
    std::string Text;       // start text as formatted for the field
    int32_t Row = 0;        // owner's row or index
};

// The handlers of the engine.
enum class EditHandler {
    Date,
    Angle,
    Zone,
    Speed,
    Course,
    FreeText,
    WayPoint,
    Distance,
    Duration,
    Eta,
    SmallNumber,
    RealNumber
};

// The shared state while an edit is open.
struct EditSession : EditRequest {
    bool Editing = false;
    EditHandler Handler = EditHandler::FreeText;
    std::string Buffer;    // what has been typed (empty: nothing yet, the start text shows)
    int32_t Position = 0;  // caret index in Buffer (a byte of its UTF-8)
    // Angle fields: the start value split into whole degrees and minutes, and its sign.
    double Whole = 0.0;
    double Fraction = 0.0;
    int32_t Sign = 1;
    // Angle fields: degrees, minutes and decimals typed, and which of them is being typed.
    std::string Degrees, Minutes, Decimals;
    int32_t Stage = 0;
    // Day, hour and minute groups of durations and times, and the group being typed.
    std::array<std::string, 3> Groups;
    int32_t Group = 0;
    bool Magnetic = false;  // course suffix " M"
    int32_t RestoreAlignment = -1;
};

// The one edit session of the program.
extern EditSession Edit;

// Which handler takes the keys of a request.
EditHandler Edit_Handler_For(const std::string& editClass, const std::string& field);

// Opens an edit (ending none: the caller ends the previous one).
void Begin_Edit(const EditRequest& request);
// Ends the edit: commits a non-empty Buffer first, then repaints the cell unless `closing`
// (a dialogue is going away) and clears the state.
void End_Edit(bool closing = false);
// Passes a key to the field's handler.
void Edit_Dispatch(int32_t key);
// The key filter for keys that are not characters (virtual key codes): Left, Right, Home,
// End, Delete, Backspace, Enter, Tab, F2 and Escape. Returns true if the key was used.
bool Edit_Key_Down(int32_t virtualKey);
// A typed character (Latin-1 code); non-printable ones are dropped.
void Edit_Key_Press(int32_t character);
// Escape: empties the Buffer and ends the edit without commit.
void Edit_Escape();
// A click at window x inside the cell: the caret goes to the nearest character.
void Edit_Click(int32_t x);

// The text that the cell shows now, and the caret's index in it (in bytes of UTF-8).
std::string Edit_Display_Text();
int32_t Edit_Caret_Index();
// The caret's x in window pixels, by the alignment of the cell and the measured widths.
int32_t Caret_X();

}  // namespace kelmoran
