// The Main screen ("Splash"): the date strip on top and the page of the local day at the
// observer below it, the day's block (position, variation, twilights, sunrise, meridian
// passage, sunset) and the Moon's block, painted on the screen's off-screen picture.
#pragma once

#include <QPainter>
#include <string>
#include <vector>

#include "shell/DateStripScreen.h"
#include "shell/Screen_Rows.h"

namespace kelmoran {

class SplashScreen : public DateStripScreen {
  public:
    // `window` is the client area that shows the picture.
    explicit SplashScreen(QWidget* window = nullptr);

    void Load() override;
    void CalcDates() override;
    void Menu_PopUp(const std::string&) override {}
    void Restore_Layout() override {}
    void Kill_Activities(const CursorState&) override {}
    void mnuPrint() override;
    void mnuSave_PDF() override;
    void Resize(QSize size) override;

    // SysMsgSink: the mouse, the wheel and the keys of the main window.
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;

    const MainPage& Page() const { return page_; }
    // The line of the page under (x, y): false for none, else its block (true: the Moon's)
    // and index, and the line's rectangle.
    bool Line_At(int32_t x, int32_t y, bool& moonBlock, size_t& index, Rect* area = nullptr) const;

  private:
    void Draw();
    void Draw_Block(QPainter& p, const std::vector<MainLine>& lines, int32_t left, int32_t top,
                    int32_t width) const;

    MainPage page_;
};

// One block of Main's page, on the screen or a printed page: a line of `first`'s height
// from `first`'s top, each label in `bold` (a heading underlined, the lines under it in by
// `indent`) and its value in `normal` from eleven twentieths of the width. Returns the
// foot of the block.
int32_t Draw_Main_Block(QPainter& p, const std::vector<MainLine>& lines, const QRect& first,
                        int32_t indent, const QFont& bold, const QFont& normal);

}  // namespace kelmoran
