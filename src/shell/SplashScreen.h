// The Main screen ("Splash") in its first form: the date strip on top, and the moment in
// use with the Earth's orientation at that moment, painted on the screen's off-screen
// picture.
#pragma once

#include <QImage>
#include <string>
#include <vector>

#include "shell/Drawing.h"
#include "shell/M_SubClass.h"
#include "shell/UiScreen.h"
#include "shell/cDatesView.h"

namespace kelmoran {

// One line of the screen: a label and its value.
struct SplashLine {
    std::string Label;
    std::string Value;
};

// The lines shown for moment `jd` (MyJD, UT).
std::vector<SplashLine> Splash_Lines(double jd);

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
    const std::vector<SplashLine>& Lines() const { return lines_; }
    cDatesView& MyDates() { return myDates_; }

  private:
    void Draw();

    QWidget* window_ = nullptr;
    QImage picture_;
    double myJD_ = 0.0;
    bool visible_ = false;
    std::vector<SplashLine> lines_;
    cDatesView myDates_;
    int32_t wheelRest_ = 0;  // part of a notch not yet used
};

}  // namespace kelmoran
