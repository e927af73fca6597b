// The Main screen ("Splash"): the date strip on top and the page of the local day at the
// observer below it, the day's block (position, variation, twilights, sunrise, meridian
// passage, sunset) and the Moon's block, painted on the screen's off-screen picture.
#pragma once

#include <QImage>
#include <string>
#include <vector>

#include "shell/Drawing.h"
#include "shell/M_SubClass.h"
#include "shell/Screen_Rows.h"
#include "shell/UiScreen.h"
#include "shell/cDatesView.h"

namespace kelmoran {

class SplashScreen : public UiScreen, public PictureForm, public cDatesOwner, public SysMsgSink {
  public:
    // `window` is the client area that shows the picture.
    explicit SplashScreen(QWidget* window = nullptr);

    std::string ClassType() const override { return screen_key::Splash; }
    void Load() override;
    void Force_Update() override;
    void SetDates() override;
    void CalcDates() override;
    void Menu_PopUp(const std::string&) override {}
    void Restore_Layout() override {}
    void Kill_Activities(const CursorState&) override {}
    void Set_Visible(bool visible) override { visible_ = visible; }
    void mnuPrint() override {}

    const QImage& Picture() const override { return picture_; }
    void Resize(QSize size) override;

    // PictureForm
    QImage& Form_Picture() override { return picture_; }
    QWidget* Form_Window() const override { return window_; }
    void Redraw_Cell(const Rect& cell) override;

    // cDatesOwner
    void MyDates_DateChange(cDates& sender, double jd) override;
    void MyDates_CalenderChg(cDates& sender, bool julian) override;
    void MyDates_TZChange(cDates& sender, int32_t minutes) override;
    EditCanvas* Edit_Form() override { return this; }
    std::string Owner_Type() const override { return "fMain"; }

    // SysMsgSink: the mouse, the wheel and the keys of the main window.
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;

    double MyJD() const { return myJD_; }
    const MainPage& Page() const { return page_; }
    bool myUseSeconds = false;  // times with seconds
    cDatesView& MyDates() { return myDates_; }

  private:
    void Draw();
    void Draw_Block(QPainter& p, const std::vector<MainLine>& lines, int32_t left, int32_t top,
                    int32_t width) const;

    QWidget* window_ = nullptr;
    QImage picture_;
    double myJD_ = 0.0;
    bool visible_ = false;
    MainPage page_;
    cDatesView myDates_;
    int32_t wheelRest_ = 0;  // part of a notch not yet used
};

}  // namespace kelmoran
