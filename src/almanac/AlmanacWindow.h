// The Almanac window: one opening of the nautical almanac, the left and the right page of
// three days, under a date strip of day, month and year. It keeps its own date: the other
// screens' moment does not move it, nor does it move theirs. The pages are larger than the
// window and scroll under the strip.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

#include "almanac/Almanac_Opening.h"
#include "almanac/cAlmanac.h"
#include "shell/Drawing.h"
#include "shell/M_SubClass.h"
#include "shell/cDatesView.h"
#include "shell/cSubClass.h"

namespace kelmoran {

class AlmanacWindow : public QWidget, public PictureForm, public cDatesOwner, public SysMsgSink {
  public:
    explicit AlmanacWindow(QWidget* parent = nullptr);
    ~AlmanacWindow() override;

    // Shows the opening that starts on the day of `jd` (UT), for the first opening.
    void Start_At(double jd);
    // Sets the first day shown and calculates the opening.
    void CalcDates();
    double MyJD() const { return almanac_.MyJD(); }
    const cAlmanac& Almanac() const { return almanac_; }
    cDatesView& MyDates() { return myDates_; }
    const PagePicture& Left_Page() const { return left_; }
    const PagePicture& Right_Page() const { return right_; }
    // The three days on show and the heading of the opening.
    const std::array<AlmanacDay, 3>& Days() const { return days_; }
    const std::string& Heading() const { return heading_; }
    // The whole client area as painted, and the window that shows it.
    const QImage& Picture() const { return picture_; }
    QWidget* Client() const;
    // Where the "Print" and "Exit" hot spots lie.
    const Rect& Print_Spot() const { return printSpot_; }
    const Rect& Exit_Spot() const { return exitSpot_; }

    // "Print": the opening goes to the print frame. Without a printer frame the hot spot
    // is not shown.
    std::function<void(AlmanacWindow&)> Print_Opening;
    // "Exit" and the window's close box hide the window; it is kept for the run.

    // PictureForm
    QImage& Form_Picture() override { return picture_; }
    QWidget* Form_Window() const override { return Client(); }
    void Redraw_Cell(const Rect& cell) override;

    // cDatesOwner: the window's own date; nothing else follows it.
    void MyDates_DateChange(cDates& sender, double jd) override;
    void MyDates_CalenderChg(cDates& sender, bool julian) override;
    void MyDates_TZChange(cDates&, int32_t) override {}
    EditCanvas* Edit_Form() override { return this; }
    std::string Owner_Type() const override { return "Almanac"; }

    // SysMsgSink
    void SysMsg_VChange(int32_t pos) override;
    void SysMsg_HChange(int32_t pos) override;
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_Resize(int32_t width, int32_t height) override;
    void SysMsg_FocusChange(int32_t active) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;
    void SysMsg_KeyPress(int32_t character) override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    class ClientArea;
    void Draw_Pages();
    void Draw();
    void Set_Scroll_Bars();
    // Tab and Shift+Tab: the next or the previous of day, month and year.
    void Move_Field(bool forward);
    int32_t Strip_Bottom() const;

    ClientArea* client_ = nullptr;
    cSubClass hook_;
    cDatesView myDates_;
    cAlmanac almanac_;
    std::array<AlmanacDay, 3> days_{};
    std::string heading_;
    PagePicture left_, right_;
    QImage pages_;    // both pages side by side, at their full size
    QImage picture_;  // the client area: the strip and hot spots over the scrolled pages
    Rect printSpot_, exitSpot_;
    bool overPrint_ = false, overExit_ = false;
    int32_t hScroll_ = 0, vScroll_ = 0;
    int32_t wheelRest_ = 0;
};

// Paints a page of the layout with `p`, one page unit to `scale` device pixels, at (x, y).
void Paint_Page(QPainter& p, const PagePicture& page, double scale, double x, double y);

}  // namespace kelmoran
