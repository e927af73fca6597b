#include "shell/SplashScreen.h"

#include <QFont>
#include <QPainter>
#include <cmath>
#include <cstdio>

#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Time_Calcs.h"

namespace kelmoran {

namespace {

constexpr double kDegreesPerRadian = 57.2957795130823;
constexpr double kArcsecPerRadian = 206264.806247096;
const char* const kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November",
                               "December"};
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

SplashScreen::SplashScreen() : picture_(640, 400, QImage::Format_RGB32) { picture_.fill(Qt::white); }

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

void SplashScreen::SetDates() { myJD_ = Shell.CurrentJD; }

void SplashScreen::CalcDates() {
    lines_ = Splash_Lines(myJD_);
    Draw();
}

void SplashScreen::Resize(QSize size) {
    if (size.isEmpty() || size == picture_.size()) return;
    picture_ = QImage(size, QImage::Format_RGB32);
    Draw();
}

void SplashScreen::Draw() {
    picture_.fill(Qt::white);
    QPainter p(&picture_);
    QFont title("DejaVu Sans");
    title.setPixelSize(20);
    title.setBold(true);
    QFont normal("DejaVu Sans");
    normal.setPixelSize(13);
    QFont bold = normal;
    bold.setBold(true);

    p.setPen(Qt::black);
    p.setFont(title);
    p.drawText(20, 36, "Kelmoran");
    const int rowHeight = 22;
    int y = 72;
    for (const SplashLine& line : lines_) {
        p.setFont(bold);
        p.drawText(20, y, QString::fromStdString(line.Label));
        p.setFont(normal);
        p.drawText(220, y, QString::fromStdString(line.Value));
        y += rowHeight;
    }
}

}  // namespace kelmoran
