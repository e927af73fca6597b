#include "shell/SplashScreen.h"

#include <QFont>
#include <QPainter>
#include <algorithm>

#include "settings/SettingsRecord.h"
#include "shell/cGeneralForm.h"
#include "shell/cMainForm.h"

namespace kelmoran {

namespace {
// Height of a line of the page.
constexpr int32_t kMainRowHeight = 21;
}  // namespace

SplashScreen::SplashScreen(QWidget* window)
    : window_(window), picture_(640, 400, QImage::Format_RGB32), myDates_(this) {
    picture_.fill(Qt::white);
    myDates_.IsShared = kTrue;
    myDates_.Configure_Standard_Dates(false, this, picture_.width());
}

void SplashScreen::Load() {
    // The window may have changed size while another screen was showing.
    if (window_ && window_->size() != picture_.size()) Resize(window_->size());
    if (!Shell.Up_To_Date(screen_key::Splash)) {
        SetDates();
        CalcDates();
    } else {
        Draw();
    }
    Shell.Up_To_Date(screen_key::Splash) = kTrue;
    if (Shell.Host) Shell.Host->Repaint();
}

void SplashScreen::Force_Update() {
    if (Shell.Up_To_Date(screen_key::Splash)) return;
    SetDates();
    CalcDates();
    Shell.Up_To_Date(screen_key::Splash) = kTrue;
    if (Shell.Host) Shell.Host->Repaint();
}

namespace {
// The value of a date control that has never been set.
constexpr double kNeverUsed = -730520.5;
}  // namespace

void SplashScreen::SetDates() {
    const double zone = TZ_Bias / 1440.0;
    if (myJD_ == Shell.CurrentJD) {
        // This screen set the moment last: its strip may hold a change not yet taken.
        const double shown = myDates_.My_JD();
        if (shown != Shell.CurrentJD + zone && shown != kNeverUsed) Shell.CurrentJD = shown - zone;
    }
    myJD_ = Shell.CurrentJD;
    myDates_.Set_Calendar(Shell.CalendarChoice != 0);
    myDates_.My_TZ_Bias(TZ_Bias);
    // MyTime tests the new date for calendar and zone; testing the old one first could move
    // the calendar for a date that is no longer shown.
    myDates_.MyTime(Shell.CurrentJD + zone);
    myDates_.Paint_Dates(false);
}

void SplashScreen::CalcDates() {
    const double zone = TZ_Bias / 1440.0;
    const double shown = myDates_.My_JD();
    if (shown != Shell.CurrentJD + zone) {
        Shell.CurrentJD = shown - zone;
        myJD_ = Shell.CurrentJD;
    }
    const RowSources& rows = Row_Sources();
    page_ = rows.Main ? rows.Main(myJD_, myUseSeconds) : MainPage{};
    Draw();
}

void SplashScreen::MyDates_DateChange(cDates&, double jd) {
    kelmoran::MyDates_DateChange(ClassType(), jd);
    myJD_ = Shell.CurrentJD;
    CalcDates();
}

void SplashScreen::MyDates_CalenderChg(cDates&, bool julian) {
    kelmoran::MyDates_CalenderChg(ClassType(), julian ? kTrue : kFalse);
}

void SplashScreen::MyDates_TZChange(cDates&, int32_t minutes) {
    kelmoran::MyDates_TZChange(ClassType(), minutes);
}

void SplashScreen::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    if (Edit.Editing && Edit.Form == this && button == mouse::Left && Edit.Cell.Contains(x, y)) {
        Edit_Click(x);
        return;
    }
    myDates_.MouseDown(x, y, button, shift);
}

void SplashScreen::SysMsg_MouseScroll(int32_t delta, int32_t, int32_t x, int32_t y) {
    // One step of the field under the mouse for each notch (120) of the wheel.
    wheelRest_ += delta;
    const int32_t steps = wheelRest_ / 120;
    wheelRest_ -= steps * 120;
    if (steps) myDates_.MouseScroll(x, y, steps);
}

void SplashScreen::Redraw_Cell(const Rect&) {
    myDates_.Paint_Dates(false);
}

void SplashScreen::Resize(QSize size) {
    if (size.isEmpty() || size == picture_.size()) return;
    picture_ = QImage(size, QImage::Format_RGB32);
    myDates_.MyWidth = size.width();
    myDates_.Set_HotSpots();
    Draw();
}

void SplashScreen::Draw() {
    picture_.fill(Qt::white);
    {
        QPainter p(&picture_);
        const DrawingObjects& d = Drawing();
        const int32_t top = myDates_.MyFrame.Bottom + 12;
        if (page_.DRwarning) {
            p.setFont(d.Bold);
            p.setPen(Qt::red);
            p.drawText(QRect(20, top, picture_.width() - 40, kMainRowHeight),
                       Qt::AlignLeft | Qt::AlignVCenter, cMainForm::kDRError);
        }
        // Two blocks side by side: the day at the observer, and the Moon.
        const int32_t half = std::max(picture_.width() / 2, 320);
        Draw_Block(p, page_.Day, 20, top + kMainRowHeight + 6, half - 30);
        Draw_Block(p, page_.Moon, half, top + kMainRowHeight + 6, half - 30);
    }
    myDates_.Paint_Dates(false);
    if (window_) window_->update();
}

void SplashScreen::Draw_Block(QPainter& p, const std::vector<MainLine>& lines, int32_t left,
                              int32_t top, int32_t width) const {
    const DrawingObjects& d = Drawing();
    const int32_t valueLeft = left + width * 11 / 20;
    int32_t y = top;
    for (const MainLine& line : lines) {
        const bool heading = line.Value.empty();
        QFont label = d.Bold;
        label.setUnderline(heading);
        p.setFont(label);
        p.setPen(Qt::black);
        // The rows under a heading stand in from it.
        const int32_t indent = heading ? 0 : 12;
        p.drawText(QRect(left + indent, y, valueLeft - left - indent, kMainRowHeight),
                   Qt::AlignLeft | Qt::AlignVCenter, Q(line.Label));
        if (!heading) {
            p.setFont(d.Normal);
            p.setPen(line.Value == cMainForm::kDRError ? Qt::red : Qt::black);
            p.drawText(QRect(valueLeft, y, left + width - valueLeft, kMainRowHeight),
                       Qt::AlignLeft | Qt::AlignVCenter, Q(line.Value));
        }
        y += kMainRowHeight;
    }
}

}  // namespace kelmoran
