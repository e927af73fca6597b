// Rectangles in window pixels and the fonts of the painted controls, shared by the models of
// the controls (which hit-test and lay out) and the drawing layer (which paints).
#pragma once

#include <cstdint>

namespace kelmoran {

// A rectangle in pixels: Left and Top inside, Right and Bottom just outside, as the window
// system's RECT.
struct Rect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Right = 0;
    int32_t Bottom = 0;

    int32_t Width() const { return Right - Left; }
    int32_t Height() const { return Bottom - Top; }
    bool Empty() const { return Right <= Left || Bottom <= Top; }
    bool Contains(int32_t x, int32_t y) const {
        return x >= Left && x < Right && y >= Top && y < Bottom;
    }
    Rect Offset(int32_t dx, int32_t dy) const {
        return {Left + dx, Top + dy, Right + dx, Bottom + dy};
    }
    // The smallest rectangle holding both; an empty one yields the other.
    Rect United(const Rect& o) const {
        if (Empty()) return o;
        if (o.Empty()) return *this;
        return {Left < o.Left ? Left : o.Left, Top < o.Top ? Top : o.Top,
                Right > o.Right ? Right : o.Right, Bottom > o.Bottom ? Bottom : o.Bottom};
    }
    friend bool operator==(const Rect&, const Rect&) = default;
};

// The fonts made at start: 13-pixel normal and bold, 20-pixel bold.
enum class FontKind { Normal, Bold, Large };

}  // namespace kelmoran
