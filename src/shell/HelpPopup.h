// The help pop-up of one window: a pale yellow box with up to four lines, shown when the
// mouse has rested on a field for one tick of the window's 250 ms timer, kept inside the
// window, and removed by a click, a key, a move off the field or the loss of focus.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "shell/Geometry.h"

namespace kelmoran {

class HelpPopup {
  public:
    // `window` is the client area the box stands in; `keyAt` the form's tests, giving the
    // key under a point ("" for none).
    HelpPopup(QWidget* window, std::function<std::string(int32_t x, int32_t y)> keyAt);
    ~HelpPopup();

    // The mouse moved to (x, y) of the window.
    void Mouse_Move(int32_t x, int32_t y);
    // Removes the box and stops the timer (a click, a key, focus lost, Kill_Activities).
    void Remove();
    // One tick of the timer (tests call it instead of waiting).
    void Tick();

    bool Shown() const;
    bool Timer_Running() const { return timer_.isActive(); }
    const std::vector<std::string>& Lines() const { return lines_; }
    const std::string& Key() const { return shownKey_; }
    Rect Box() const { return box_; }
    QWidget* Box_Window() const;
    // Boxes shown since the start (a test's count).
    int32_t Shows = 0;

  private:
    class BoxWindow;
    QPointer<QWidget> window_;
    std::function<std::string(int32_t, int32_t)> keyAt_;
    QTimer timer_;
    QPointer<BoxWindow> boxWindow_;
    std::string pendingKey_, shownKey_;
    int32_t x_ = 0, y_ = 0;
    Rect box_;
    std::vector<std::string> lines_;
};

}  // namespace kelmoran
