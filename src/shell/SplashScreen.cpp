#include "shell/SplashScreen.h"

#include <QFont>
#include <QPainter>
#include <algorithm>

#include "printing/cPrint_Gateway.h"
#include "settings/SettingsRecord.h"
#include "shell/cGeneralForm.h"
#include "shell/cMainForm.h"

namespace kelmoran {

namespace {
// Height of a line of the page.
constexpr int32_t kMainRowHeight = 21;
}  // namespace

SplashScreen::SplashScreen(QWidget* window)
    : DateStripScreen(screen_key::Splash, window, QSize(640, 400)) {
    myDates_.Configure_Standard_Dates(false, this, picture_.width());
}

void SplashScreen::Load() {
    if (!Load_Moment()) Draw();
    if (Shell.Host) Shell.Host->Repaint();
}

void SplashScreen::CalcDates() {
    Take_Strip_Moment();
    const RowSources& rows = Row_Sources();
    page_ = rows.Main ? rows.Main(myJD_, myUseSeconds) : MainPage{};
    Draw();
}

void SplashScreen::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    if (Click_Into_Edit(button, x, y)) return;
    myDates_.MouseDown(x, y, button, shift);
}

void SplashScreen::SysMsg_MouseScroll(int32_t delta, int32_t, int32_t x, int32_t y) {
    // One step of the field under the mouse for each notch (120) of the wheel.
    const int32_t steps = Wheel_Notches(delta);
    if (steps) myDates_.MouseScroll(x, y, steps);
}

void SplashScreen::Resize(QSize size) {
    if (Resize_Picture(size)) Draw();
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

bool SplashScreen::Line_At(int32_t x, int32_t y, bool& moonBlock, size_t& index,
                           Rect* area) const {
    // The same layout as Draw: two blocks side by side under the warning line.
    const int32_t top = myDates_.MyFrame.Bottom + 12 + kMainRowHeight + 6;
    const int32_t half = std::max(picture_.width() / 2, 320);
    if (y < top) return false;
    const auto row = static_cast<size_t>((y - top) / kMainRowHeight);
    for (const bool moon : {false, true}) {
        const int32_t left = moon ? half : 20;
        const auto& lines = moon ? page_.Moon : page_.Day;
        if (x < left || x >= left + half - 30 || row >= lines.size()) continue;
        moonBlock = moon;
        index = row;
        if (area) {
            const int32_t t = top + static_cast<int32_t>(row) * kMainRowHeight;
            *area = {left, t, left + half - 30, t + kMainRowHeight};
        }
        return true;
    }
    return false;
}

void SplashScreen::Draw_Block(QPainter& p, const std::vector<MainLine>& lines, int32_t left,
                              int32_t top, int32_t width) const {
    Draw_Main_Block(p, lines, QRect(left, top, width, kMainRowHeight), 12, Drawing().Bold,
                    Drawing().Normal);
}

int32_t Draw_Main_Block(QPainter& p, const std::vector<MainLine>& lines, const QRect& first,
                        int32_t indent, const QFont& bold, const QFont& normal) {
    const int32_t left = first.left(), width = first.width(), lineHeight = first.height();
    const int32_t valueLeft = left + width * 11 / 20;
    int32_t y = first.top();
    for (const MainLine& line : lines) {
        const bool heading = line.Value.empty();
        QFont label = bold;
        label.setUnderline(heading);
        p.setFont(label);
        p.setPen(Qt::black);
        // The rows under a heading stand in from it.
        const int32_t in = heading ? 0 : indent;
        p.drawText(QRect(left + in, y, valueLeft - left - in, lineHeight),
                   Qt::AlignLeft | Qt::AlignVCenter, Q(line.Label));
        if (!heading) {
            p.setFont(normal);
            p.setPen(line.Value == cMainForm::kDRError ? Qt::red : Qt::black);
            p.drawText(QRect(valueLeft, y, left + width - valueLeft, lineHeight),
                       Qt::AlignLeft | Qt::AlignVCenter, Q(line.Value));
        }
        y += lineHeight;
    }
    return y;
}

void SplashScreen::mnuPrint() { Print_Main_Page(page_, myJD_, false, window_); }

void SplashScreen::mnuSave_PDF() { Print_Main_Page(page_, myJD_, true, window_); }

}  // namespace kelmoran
