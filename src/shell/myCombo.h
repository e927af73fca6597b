// A drop-down list drawn by the program: a box showing the present choice, and under it,
// when open, the list with a highlight that follows the mouse and the arrow keys. This is
// its model; the drawing layer paints the box and the list (myComboView).
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "shell/Geometry.h"

namespace kelmoran {

class myCombo {
  public:
    virtual ~myCombo() = default;

    std::string Name;               // the control's name, as its event is named after it
    std::vector<std::string> List;  // the lines of the list
    std::string Text;               // the present choice, shown in the box
    int32_t MyListPosn = -1;        // index of the present choice
    int32_t MyHighlighter = -1;     // the highlighted line while the list is open
    int32_t MyLineNo = 8;           // lines the list shows at most
    int32_t MyTopLine = 0;          // first line shown
    bool ListVisible = false;
    bool HasFocus = false;
    Rect Box;  // the box, in the owner's pixels
    int32_t LineHeight = 18;
    // The change event, `<control>_event1`: raised when a line is taken.
    std::function<void(myCombo&)> event1;

    void SetList(const std::vector<std::string>& lines);
    // Makes line `index` the choice without raising the event.
    void SetIndex(int32_t index);
    // Opens the list (or closes it if open), with the highlight on the present choice.
    void DisplayList();
    // A key on the box: Down, Up, F4 or Enter open the list (virtual key codes).
    bool Display_List_By_KeyDown(int32_t key);
    // Up and Down move the highlight, Enter takes it, Escape closes the list; PageUp and
    // PageDown move by the lines on show. Returns true if the key was used.
    bool Move_through_List(int32_t key);
    // Takes line `index`: closes the list, shows the line in the box and raises event1.
    void ChangeSelection(int32_t index);
    // Closes the list and puts the highlight back on the choice, without a change.
    void Restore_Original_Posn();
    // The highlight follows the mouse at (x, y) in list coordinates.
    void HiLiteMe(int32_t x, int32_t y);
    // The rectangle of line `index` in list coordinates (origin at the list's top left).
    Rect HighlightRect(int32_t index) const;
    // The list's rectangle under the box, in the owner's pixels.
    Rect List_Rect() const;
    // Focus: losing it closes the list without a change.
    void TestFocus(bool focused);
    void DestroyFocus();

    // The hook's events of the box (owner's pixels) and of the list (list coordinates).
    void SysMsg_MouseDown(int32_t x, int32_t y);  // on the box
    void List_MouseDown(int32_t x, int32_t y);    // on the list
    void SysMsg_MouseUp(int32_t x, int32_t y);    // on the list
    virtual void SysMsg_Paint() {}

    // The drawing layer shows or hides the list window.
    virtual void Show_List(bool) {}

    // The line at list y, or -1.
    int32_t Line_At(int32_t y) const;

  private:
    void Scroll_To(int32_t line);
};

}  // namespace kelmoran
