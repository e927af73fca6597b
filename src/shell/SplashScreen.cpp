#include "shell/SplashScreen.h"

#include <QFont>
#include <QPainter>
#include <cmath>
#include <cstdio>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Time_Calcs.h"
#include "settings/SettingsRecord.h"

namespace kelmoran {

namespace {

constexpr double kDegreesPerRadian = 57.2957795130823;
constexpr double kArcsecPerRadian = 206264.806247096;
const char* const kMonths[] = {"January",   "February", "March",    "April",
                               "May",       "June",     "July",     "August",
                               "September", "October",  "November", "December"};
const char* const kWeekdays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                 "Thursday", "Friday", "Saturday"};

// Degrees and minutes of arc to one decimal, the minutes carried when they round to 60.
std::string Degrees_Minutes(double radians) {
    double minutes = std::round(radians * kDegreesPerRadian * 600.0) / 10.0;
    const int degrees = static_cast<int>(minutes / 60.0);
    minutes -= degrees * 60.0;
    char buf[48];
    std::snprintf(buf, sizeof buf, "%d\u00B0 %04.1f'", degrees, minutes);
    return buf;
}

}  // namespace

std::vector<SplashLine> Splash_Lines(double jd) {
    const MySystemTime t = JD_To_Date(jd);
    const EarthFrame e = Calc_EarthFrame(jd);
    char buf[96];
    std::vector<SplashLine> lines;

    const int year = t.wYear;
    std::snprintf(buf, sizeof buf, "%s %d %s %d %s", kWeekdays[(t.wDayOfWeek + 6) % 7], t.wDay,
                  kMonths[(t.wMonth + 11) % 12], year < 0 ? -year : year, year < 0 ? "BC" : "AD");
    lines.push_back({"Date (UT)", buf});
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", t.wHour, t.wMinute, t.wSecond);
    lines.push_back({"Time (UT)", buf});
    std::snprintf(buf, sizeof buf, "%.5f", jd + kJ2000);
    lines.push_back({"Julian Day", buf});
    std::snprintf(buf, sizeof buf, "%.1f s", static_cast<double>(Get_DeltaT(DeltaT_Year(jd))));
    lines.push_back({"\u0394T", buf});
    std::snprintf(buf, sizeof buf, "%+.3f\"", e.NutLong * kArcsecPerRadian);
    lines.push_back({"Nutation in longitude", buf});
    std::snprintf(buf, sizeof buf, "%+.3f\"", e.NutObl * kArcsecPerRadian);
    lines.push_back({"Nutation in obliquity", buf});
    lines.push_back({"True obliquity", Degrees_Minutes(e.TrueObliquity)});
    lines.push_back({"GHA Aries", Degrees_Minutes(e.GAST)});
    return lines;
}

SplashScreen::SplashScreen(QWidget* window)
    : window_(window), picture_(640, 400, QImage::Format_RGB32), myDates_(this) {
    picture_.fill(Qt::white);
    myDates_.IsShared = kTrue;
    myDates_.Configure_Standard_Dates(false, this, picture_.width());
}

void SplashScreen::Load() {
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
    lines_ = Splash_Lines(myJD_);
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
        p.setPen(Qt::black);
        p.setFont(d.Large);
        p.drawText(20, 36, "Kelmoran");
        const int rowHeight = 22;
        int y = myDates_.MyFrame.Bottom + 36;
        for (const SplashLine& line : lines_) {
            p.setFont(d.Bold);
            p.drawText(20, y, QString::fromStdString(line.Label));
            p.setFont(d.Normal);
            p.drawText(220, y, QString::fromStdString(line.Value));
            y += rowHeight;
        }
    }
    myDates_.Paint_Dates(false);
    if (window_) window_->update();
}

}  // namespace kelmoran
