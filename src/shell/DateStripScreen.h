// A screen of the main window that has a date strip on top and paints on its own
// off-screen picture: Main ("Splash") and the table screens. It carries what they share,
// the plumbing between the strip and the shared moment (SetDates, taking the strip's
// moment before a calculation, the strip's change events, Force_Update), the picture and
// its window, the click into an edit in progress and the wheel's notches.
#pragma once

#include <QImage>
#include <QSize>
#include <string>

#include "shell/Drawing.h"
#include "shell/M_SubClass.h"
#include "shell/UiScreen.h"
#include "shell/cDatesView.h"

class QWidget;

namespace kelmoran {

class DateStripScreen : public UiScreen, public PictureForm, public cDatesOwner, public SysMsgSink {
  public:
    // `key` is the screen's key (NewScreenType), `window` the client area that shows the
    // picture, `size` the picture's size until the window gives its own.
    DateStripScreen(std::string key, QWidget* window, QSize size);

    // cScreen
    std::string ClassType() const override { return key_; }
    void Force_Update() override;
    void SetDates() override;
    void Set_Visible(bool visible) override { visible_ = visible; }
    void mnuPrint() override {}

    // UiScreen
    const QImage& Picture() const override { return picture_; }

    // PictureForm
    QImage& Form_Picture() override { return picture_; }
    QWidget* Form_Window() const override { return window_; }
    void Redraw_Cell(const Rect& cell) override;

    // cDatesOwner: a new date or calendar goes to the shared moment (and marks the other
    // screens stale); this screen calculates again for a new date.
    void MyDates_DateChange(cDates& sender, double jd) override;
    void MyDates_CalenderChg(cDates& sender, bool julian) override;
    void MyDates_TZChange(cDates& sender, int32_t minutes) override;
    EditCanvas* Edit_Form() override { return this; }
    std::string Owner_Type() const override { return "fMain"; }
    // "Time Zone" of the strip's pop-up: Options on its Time tab, with the broadcast of
    // changes held until it closes.
    void Open_Time_Options() override;

    double MyJD() const { return myJD_; }
    cDatesView& MyDates() { return myDates_; }
    bool myUseSeconds = false;  // times with seconds

  protected:
    // On showing: the picture takes the window's size if that changed meanwhile, and a
    // screen that is not up to date takes the shared moment and calculates. False when it
    // was up to date already (nothing was calculated).
    bool Load_Moment();
    // At the start of CalcDates: a moment the strip shows that differs from the shared one
    // becomes the shared one and this screen's.
    void Take_Strip_Moment();
    // A left click inside the cell of an edit in progress on this screen moves its caret;
    // true when the click was taken so.
    bool Click_Into_Edit(int32_t button, int32_t x, int32_t y);
    // Whole notches of the wheel (120 each) in `delta` and what was left over before.
    int32_t Wheel_Notches(int32_t delta);
    // A new, white picture of `size` with the strip laid out across it; false (nothing
    // done) for an empty size or the present one.
    bool Resize_Picture(QSize size);

    std::string key_;
    QWidget* window_ = nullptr;
    QImage picture_;
    double myJD_ = 0.0;
    bool visible_ = false;
    cDatesView myDates_;

  private:
    int32_t wheelRest_ = 0;  // part of a notch not yet used
};

}  // namespace kelmoran
