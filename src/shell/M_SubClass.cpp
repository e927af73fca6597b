#include "shell/M_SubClass.h"

namespace kelmoran {

namespace {
int32_t Clamp(int32_t v, int32_t lo, int32_t hi) {
    return v < lo ? lo : (v > hi ? hi : v);
}
}  // namespace

int32_t Scroll_Position(const ScrollInfo& bar, ScrollAction action, int32_t track,
                        int32_t smallChange) {
    int32_t pos = bar.Pos;
    switch (action) {
        case ScrollAction::LineUp:
            pos -= smallChange;
            break;
        case ScrollAction::LineDown:
            pos += smallChange;
            break;
        case ScrollAction::PageUp:
            pos -= bar.Page;
            break;
        case ScrollAction::PageDown:
            pos += bar.Page;
            break;
        case ScrollAction::ThumbPosition:
        case ScrollAction::ThumbTrack:
            pos = track;
            break;
        case ScrollAction::Top:
            pos = 0;
            break;
        case ScrollAction::Bottom:
            pos = bar.Max;
            break;
    }
    return Clamp(pos, 0, bar.Highest());
}

int32_t Find_HScroll_Colm(int32_t pixel, const std::vector<Rect>& headings, bool lunations) {
    if (headings.empty()) return 0;
    const int32_t origin = headings.front().Left;
    for (size_t i = 0; i < headings.size(); ++i) {
        const int32_t centre = (headings[i].Left + headings[i].Right) / 2 - origin;
        if (centre > pixel) return static_cast<int32_t>(i);
    }
    const auto last = static_cast<int32_t>(headings.size()) - 1;
    if (lunations) return last + 1 < 10 ? last + 1 : 10;
    return last;
}

int32_t HScroll_Column_Step(int32_t column, ScrollAction action, int32_t track,
                            const std::vector<Rect>& headings, int32_t columnsOnShow,
                            bool lunations) {
    if (headings.empty()) return 0;
    const int32_t page = columnsOnShow > 0 ? columnsOnShow : 1;
    switch (action) {
        case ScrollAction::LineUp:
            --column;
            break;
        case ScrollAction::LineDown:
            ++column;
            break;
        case ScrollAction::PageUp:
            column -= page;
            break;
        case ScrollAction::PageDown:
            column += page;
            break;
        case ScrollAction::ThumbPosition:
        case ScrollAction::ThumbTrack:
            column = Find_HScroll_Colm(track, headings, lunations);
            break;
        case ScrollAction::Top:
            column = 0;
            break;
        case ScrollAction::Bottom:
            column = static_cast<int32_t>(headings.size()) - 1;
            break;
    }
    const int32_t highest = lunations ? 10 : static_cast<int32_t>(headings.size()) - 1;
    return Clamp(column, 0, highest);
}

bool HScroll_By_Pixels(const std::string& screenKey) {
    return screenKey == "Sights" || screenKey == "Almanac" || screenKey == "Increments";
}

}  // namespace kelmoran
