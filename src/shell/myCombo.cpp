#include "shell/myCombo.h"

#include "shell/M_Edit.h"

namespace kelmoran {

namespace {
constexpr int32_t kUp = 38;
constexpr int32_t kDown = 40;
constexpr int32_t kPageUp = 33;
constexpr int32_t kPageDown = 34;
constexpr int32_t kF4 = 115;
}  // namespace

void myCombo::SetList(const std::vector<std::string>& lines) {
    List = lines;
    MyTopLine = 0;
    if (MyListPosn >= static_cast<int32_t>(List.size())) {
        MyListPosn = -1;
        Text.clear();
    }
    MyHighlighter = MyListPosn;
    SysMsg_Paint();
}

void myCombo::SetIndex(int32_t index) {
    if (index < 0 || index >= static_cast<int32_t>(List.size())) return;
    MyListPosn = index;
    MyHighlighter = index;
    Text = List[static_cast<size_t>(index)];
    SysMsg_Paint();
}

void myCombo::DisplayList() {
    if (ListVisible) {
        Restore_Original_Posn();
        return;
    }
    if (List.empty()) return;
    if (Edit.Editing) End_Edit();
    ListVisible = true;
    MyHighlighter = MyListPosn >= 0 ? MyListPosn : 0;
    Scroll_To(MyHighlighter);
    Show_List(true);
    SysMsg_Paint();
}

bool myCombo::Display_List_By_KeyDown(int32_t key) {
    if (ListVisible) return Move_through_List(key);
    if (key == kDown || key == kUp || key == kF4 || key == vk::Return) {
        DisplayList();
        return true;
    }
    return false;
}

void myCombo::Scroll_To(int32_t line) {
    if (line < MyTopLine) MyTopLine = line;
    if (line >= MyTopLine + MyLineNo) MyTopLine = line - MyLineNo + 1;
    if (MyTopLine < 0) MyTopLine = 0;
}

bool myCombo::Move_through_List(int32_t key) {
    if (!ListVisible) return false;
    const auto last = static_cast<int32_t>(List.size()) - 1;
    int32_t h = MyHighlighter;
    switch (key) {
        case kUp:
            --h;
            break;
        case kDown:
            ++h;
            break;
        case kPageUp:
            h -= MyLineNo;
            break;
        case kPageDown:
            h += MyLineNo;
            break;
        case vk::Home:
            h = 0;
            break;
        case vk::End:
            h = last;
            break;
        case vk::Return:
            ChangeSelection(MyHighlighter);
            return true;
        case vk::Escape:
            Restore_Original_Posn();
            return true;
        default:
            return false;
    }
    MyHighlighter = h < 0 ? 0 : (h > last ? last : h);
    Scroll_To(MyHighlighter);
    SysMsg_Paint();
    return true;
}

void myCombo::ChangeSelection(int32_t index) {
    ListVisible = false;
    Show_List(false);
    if (index < 0 || index >= static_cast<int32_t>(List.size())) {
        MyHighlighter = MyListPosn;
        SysMsg_Paint();
        return;
    }
    MyListPosn = index;
    MyHighlighter = index;
    Text = List[static_cast<size_t>(index)];
    SysMsg_Paint();
    if (event1) event1(*this);
}

void myCombo::Restore_Original_Posn() {
    ListVisible = false;
    MyHighlighter = MyListPosn;
    Show_List(false);
    SysMsg_Paint();
}

int32_t myCombo::Line_At(int32_t y) const {
    if (y < 0) return -1;
    const int32_t line = MyTopLine + y / LineHeight;
    if (line >= static_cast<int32_t>(List.size()) || y / LineHeight >= MyLineNo) return -1;
    return line;
}

void myCombo::HiLiteMe(int32_t, int32_t y) {
    const int32_t line = Line_At(y);
    if (line < 0 || line == MyHighlighter) return;
    MyHighlighter = line;
    SysMsg_Paint();
}

Rect myCombo::HighlightRect(int32_t index) const {
    const int32_t row = index - MyTopLine;
    return {0, row * LineHeight, Box.Width(), (row + 1) * LineHeight};
}

Rect myCombo::List_Rect() const {
    const auto size = static_cast<int32_t>(List.size());
    const int32_t lines = size < MyLineNo ? size : MyLineNo;
    return {Box.Left, Box.Bottom, Box.Right, Box.Bottom + lines * LineHeight + 2};
}

void myCombo::TestFocus(bool focused) {
    HasFocus = focused;
    if (!focused) DestroyFocus();
}

void myCombo::DestroyFocus() {
    HasFocus = false;
    if (ListVisible) Restore_Original_Posn();
}

void myCombo::SysMsg_MouseDown(int32_t x, int32_t y) {
    if (Box.Contains(x, y)) {
        HasFocus = true;
        DisplayList();
    } else if (ListVisible && !List_Rect().Contains(x, y)) {
        Restore_Original_Posn();
    }
}

void myCombo::List_MouseDown(int32_t x, int32_t y) {
    HiLiteMe(x, y);
}

void myCombo::SysMsg_MouseUp(int32_t, int32_t y) {
    const int32_t line = Line_At(y);
    if (line >= 0) ChangeSelection(line);
}

}  // namespace kelmoran
