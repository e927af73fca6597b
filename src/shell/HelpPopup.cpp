#include "shell/HelpPopup.h"

#include <QPainter>
#include <algorithm>

#include "settings/SettingsRecord.h"
#include "shell/Drawing.h"
#include "shell/M_Help.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

namespace {
const QColor kPaleYellow(255, 255, 200);
constexpr int32_t kPad = 4;
}  // namespace

class HelpPopup::BoxWindow : public QWidget {
  public:
    BoxWindow(HelpPopup* owner, QWidget* parent) : QWidget(parent), owner_(owner) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), kPaleYellow);
        p.setPen(Qt::black);
        p.drawRect(rect().adjusted(0, 0, -1, -1));
        p.setFont(Drawing().Normal);
        const int32_t h = QFontMetrics(Drawing().Normal).height();
        int32_t y = kPad;
        for (const std::string& line : owner_->lines_) {
            p.drawText(QRect(kPad + 2, y, width() - 2 * kPad, h), Qt::AlignLeft | Qt::AlignVCenter,
                       Q(line));
            y += h;
        }
    }

  private:
    HelpPopup* owner_;
};

HelpPopup::HelpPopup(QWidget* window, std::function<std::string(int32_t, int32_t)> keyAt)
    : window_(window), keyAt_(std::move(keyAt)) {
    timer_.setInterval(250);
    QObject::connect(&timer_, &QTimer::timeout, [this] { Tick(); });
}

HelpPopup::~HelpPopup() {
    timer_.stop();
    delete boxWindow_.data();
}

bool HelpPopup::Shown() const { return !box_.Empty(); }

QWidget* HelpPopup::Box_Window() const { return boxWindow_; }

void HelpPopup::Mouse_Move(int32_t x, int32_t y) {
    if (Shown() && box_.Contains(x, y)) return;
    const std::string key = keyAt_ ? keyAt_(x, y) : std::string();
    // Moving within the field of the box on show opens no second box.
    if (Shown() && key == shownKey_) return;
    if (Shown()) Remove();
    x_ = x;
    y_ = y;
    pendingKey_ = key;
    if (key.empty()) {
        timer_.stop();
        return;
    }
    timer_.start();  // restarts: the box waits for the mouse to rest
}

void HelpPopup::Tick() {
    timer_.stop();
    if (Shell.Editing || pendingKey_.empty() || !window_) return;
    // The mouse must still be over the same field.
    if (keyAt_ && keyAt_(x_, y_) != pendingKey_) return;
    lines_ = Help_Lines(pendingKey_, Settings.HelpLevel);
    if (lines_.empty()) return;
    const QFontMetrics fm(Drawing().Normal);
    int32_t w = 0;
    for (const std::string& line : lines_) w = std::max(w, int32_t(fm.horizontalAdvance(Q(line))));
    w += 2 * kPad + 6;
    const int32_t h = fm.height() * static_cast<int32_t>(lines_.size()) + 2 * kPad;
    // Below and right of the mouse, kept inside the window.
    int32_t left = x_ + 12, top = y_ + 18;
    left = std::max(0, std::min(left, window_->width() - w));
    if (top + h > window_->height()) top = std::max(0, y_ - h - 4);
    box_ = {left, top, left + w, top + h};
    shownKey_ = pendingKey_;
    if (!boxWindow_) boxWindow_ = new BoxWindow(this, window_);
    boxWindow_->setGeometry(left, top, w, h);
    boxWindow_->raise();
    boxWindow_->show();
    boxWindow_->update();
    ++Shows;
}

void HelpPopup::Remove() {
    timer_.stop();
    pendingKey_.clear();
    shownKey_.clear();
    lines_.clear();
    if (boxWindow_) boxWindow_->hide();
    if (window_ && !box_.Empty()) window_->update(To_QRect(box_));
    box_ = {};
}

}  // namespace kelmoran
