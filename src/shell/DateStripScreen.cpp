#include "shell/DateStripScreen.h"

#include "settings/Options.h"
#include "settings/OptionsWindow.h"

#include <QWidget>
#include <utility>

#include "settings/SettingsRecord.h"
#include "shell/M_Edit.h"

namespace kelmoran {

namespace {
// The value of a date control that has never been set.
constexpr double kNeverUsed = -730520.5;
}  // namespace

DateStripScreen::DateStripScreen(std::string key, QWidget* window, QSize size)
    : key_(std::move(key)), window_(window), picture_(size, QImage::Format_RGB32), myDates_(this) {
    picture_.fill(Qt::white);
    myDates_.IsShared = kTrue;
}

bool DateStripScreen::Load_Moment() {
    // The window may have changed size while another screen was showing.
    if (window_ && window_->size() != picture_.size()) Resize(window_->size());
    const bool stale = !Shell.Up_To_Date(key_);
    if (stale) {
        SetDates();
        CalcDates();
    }
    Shell.Up_To_Date(key_) = kTrue;
    return stale;
}

void DateStripScreen::Force_Update() {
    if (Shell.Up_To_Date(key_)) return;
    SetDates();
    CalcDates();
    Shell.Up_To_Date(key_) = kTrue;
    if (Shell.Host) Shell.Host->Repaint();
}

void DateStripScreen::SetDates() {
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

void DateStripScreen::Take_Strip_Moment() {
    const double zone = TZ_Bias / 1440.0;
    const double shown = myDates_.My_JD();
    if (shown != Shell.CurrentJD + zone) {
        Shell.CurrentJD = shown - zone;
        myJD_ = Shell.CurrentJD;
    }
}

void DateStripScreen::MyDates_DateChange(cDates&, double jd) {
    kelmoran::MyDates_DateChange(key_, jd);
    myJD_ = Shell.CurrentJD;
    CalcDates();
    if (Shell.Host) Shell.Host->Repaint();
}

void DateStripScreen::MyDates_CalenderChg(cDates&, bool julian) {
    kelmoran::MyDates_CalenderChg(key_, julian ? kTrue : kFalse);
}

void DateStripScreen::MyDates_TZChange(cDates&, int32_t minutes) {
    kelmoran::MyDates_TZChange(key_, minutes);
    // The moment is the same; the screen's times are in the new zone.
    CalcDates();
}

void DateStripScreen::Redraw_Cell(const Rect&) {
    myDates_.Paint_Dates(false);
}

bool DateStripScreen::Click_Into_Edit(int32_t button, int32_t x, int32_t y) {
    if (!(Edit.Editing && Edit.Form == this && button == mouse::Left && Edit.Cell.Contains(x, y)))
        return false;
    Edit_Click(x);
    return true;
}

int32_t DateStripScreen::Wheel_Notches(int32_t delta) {
    wheelRest_ += delta;
    const int32_t steps = wheelRest_ / 120;
    wheelRest_ -= steps * 120;
    return steps;
}

bool DateStripScreen::Resize_Picture(QSize size) {
    if (size.isEmpty() || size == picture_.size()) return false;
    picture_ = QImage(size, QImage::Format_RGB32);
    picture_.fill(Qt::white);
    myDates_.MyWidth = size.width();
    myDates_.Set_HotSpots();
    return true;
}

void DateStripScreen::Open_Time_Options() {
    Shell.UpdateFreeze = kTrue;
    Show_Options(window_ ? window_->window() : nullptr, key_, options_tab::Time);
    Shell.UpdateFreeze = kFalse;
}

}  // namespace kelmoran
