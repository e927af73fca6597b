// The window hook's side that needs no window system: the events that every hooked form
// may implement, and the rules by which the scroll bars step.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/Geometry.h"

namespace kelmoran {

// Mouse buttons and shift states as the hook reports them.
namespace mouse {
inline constexpr int32_t Left = 1;
inline constexpr int32_t Right = 2;
inline constexpr int32_t Middle = 4;
inline constexpr int32_t Shift = 1;
inline constexpr int32_t Ctrl = 2;
inline constexpr int32_t LeaveXY = -10;  // x and y of the mouse leaving the window
}  // namespace mouse

// The events raised by the hook (cSubClass), in the order of their numbers 1 .. 11, and the
// window's key events, which the hook carries as well. A form implements those it needs.
class SysMsgSink {
  public:
    virtual ~SysMsgSink() = default;
    virtual void SysMsg_VChange(int32_t /*pos*/) {}
    virtual void SysMsg_HChange(int32_t /*pos*/) {}
    virtual void SysMsg_MouseUp(int32_t /*button*/, int32_t /*shift*/, int32_t /*x*/,
                                int32_t /*y*/) {}
    virtual void SysMsg_MouseDown(int32_t /*button*/, int32_t /*shift*/, int32_t /*x*/,
                                  int32_t /*y*/) {}
    virtual void SysMsg_MouseMove(int32_t /*button*/, int32_t /*shift*/, int32_t /*x*/,
                                  int32_t /*y*/) {}
    // `delta` in the window system's units: 120 for one notch of the wheel, away from the
    // user positive; x and y in client pixels.
    virtual void SysMsg_MouseScroll(int32_t /*delta*/, int32_t /*shift*/, int32_t /*x*/,
                                    int32_t /*y*/) {}
    virtual void SysMsg_SetCursor() {}
    virtual void SysMsg_Paint() {}
    virtual void SysMsg_Resize(int32_t /*width*/, int32_t /*height*/) {}
    virtual void SysMsg_FocusChange(int32_t /*active*/) {}
    virtual void SysMsg_hScrollColmShift(int32_t /*colm*/) {}
    // The window's KeyDown (virtual key code, shift state) and KeyPress (Latin-1 character).
    virtual void SysMsg_KeyDown(int32_t /*key*/, int32_t /*shift*/) {}
    virtual void SysMsg_KeyPress(int32_t /*character*/) {}
};

// The wheel's whole notches (120 units each) in the deltas it reports, the part of a notch
// left over kept for the next.
class WheelNotches {
  public:
    int32_t Take(int32_t delta) {
        rest_ += delta;
        const int32_t steps = rest_ / 120;
        rest_ -= steps * 120;
        return steps;
    }

  private:
    int32_t rest_ = 0;
};

// What a scroll bar was asked to do.
enum class ScrollAction {
    LineUp,
    LineDown,
    PageUp,
    PageDown,
    ThumbPosition,
    ThumbTrack,
    Top,
    Bottom
};

// A scroll bar's range, page and position; it is shown only when the range exceeds the
// page.
struct ScrollInfo {
    int32_t Max = 0;  // range 0 .. Max
    int32_t Page = 0;
    int32_t Pos = 0;
    bool Shown() const { return Max + 1 > Page && Page > 0; }
    int32_t Highest() const { return Max - Page + 1 > 0 ? Max - Page + 1 : 0; }
};

// New position of a bar that steps by pixels or rows: a line is `smallChange`, a page the
// bar's page; the thumb gives `track`. Kept within 0 .. the highest position.
int32_t Scroll_Position(const ScrollInfo& bar, ScrollAction action, int32_t track,
                        int32_t smallChange);

// The first column whose heading's centre lies right of `pixel` (pixels from the left of
// the first heading). Past the last: the last column, or on Lunations one more, up to the
// tenth, so that the tenth column is reached.
int32_t Find_HScroll_Colm(int32_t pixel, const std::vector<Rect>& headings, bool lunations);

// The column at the left of a grid after a step of its horizontal bar: a line is one
// column, a page the count of columns on show, the thumb the column of its pixel.
int32_t HScroll_Column_Step(int32_t column, ScrollAction action, int32_t track,
                            const std::vector<Rect>& headings, int32_t columnsOnShow,
                            bool lunations);

// Whether the horizontal bar of a screen steps by pixels ("Sights", "Almanac",
// "Increments") rather than by whole columns.
bool HScroll_By_Pixels(const std::string& screenKey);

}  // namespace kelmoran
