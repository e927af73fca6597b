#include "shell/cSubClass.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QVariant>
#include <QWheelEvent>

#include "shell/M_Edit.h"

namespace kelmoran {

namespace {

constexpr const char* kProperty = "MySubClass";
constexpr int kBarThickness = 16;
constexpr int32_t kPixelLine = 15;  // a line of a bar that steps by pixels

int32_t Buttons_Of(Qt::MouseButtons b) {
    int32_t r = 0;
    if (b & Qt::LeftButton) r |= mouse::Left;
    if (b & Qt::RightButton) r |= mouse::Right;
    if (b & Qt::MiddleButton) r |= mouse::Middle;
    return r;
}

int32_t Shift_Of(Qt::KeyboardModifiers m) {
    int32_t r = 0;
    if (m & Qt::ShiftModifier) r |= mouse::Shift;
    if (m & Qt::ControlModifier) r |= mouse::Ctrl;
    return r;
}

ScrollAction Action_Of(int action) {
    switch (action) {
        case QAbstractSlider::SliderSingleStepSub:
            return ScrollAction::LineUp;
        case QAbstractSlider::SliderSingleStepAdd:
            return ScrollAction::LineDown;
        case QAbstractSlider::SliderPageStepSub:
            return ScrollAction::PageUp;
        case QAbstractSlider::SliderPageStepAdd:
            return ScrollAction::PageDown;
        case QAbstractSlider::SliderToMinimum:
            return ScrollAction::Top;
        case QAbstractSlider::SliderToMaximum:
            return ScrollAction::Bottom;
        default:
            return ScrollAction::ThumbTrack;
    }
}

}  // namespace

int32_t Virtual_Key(int qtKey) {
    switch (qtKey) {
        case Qt::Key_Backspace:
            return vk::Back;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return vk::Tab;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return vk::Return;
        case Qt::Key_Escape:
            return vk::Escape;
        case Qt::Key_Space:
            return vk::Space;
        case Qt::Key_End:
            return vk::End;
        case Qt::Key_Home:
            return vk::Home;
        case Qt::Key_Left:
            return vk::Left;
        case Qt::Key_Up:
            return 38;
        case Qt::Key_Right:
            return vk::Right;
        case Qt::Key_Down:
            return 40;
        case Qt::Key_PageUp:
            return 33;
        case Qt::Key_PageDown:
            return 34;
        case Qt::Key_Delete:
            return vk::Delete;
        case Qt::Key_F2:
            return vk::F2;
        case Qt::Key_Alt:
            return 18;
        default:
            return 0;
    }
}

cSubClass::cSubClass(SysMsgSink* owner) : MyOwner(owner) {}

cSubClass::~cSubClass() {
    Release();
}

bool cSubClass::SubClass(QWidget* window) {
    if (!window || window->property(kProperty).isValid()) return false;
    window->setProperty(kProperty, QVariant::fromValue(static_cast<QObject*>(this)));
    window_ = window;
    // All painting is on the off-screen picture: the window is never erased first.
    window->setAttribute(Qt::WA_OpaquePaintEvent);
    window->setAttribute(Qt::WA_NoSystemBackground);
    window->setMouseTracking(true);
    window->installEventFilter(this);
    vBar_ = new QScrollBar(Qt::Vertical, window);
    hBar_ = new QScrollBar(Qt::Horizontal, window);
    vBar_->hide();
    hBar_->hide();
    connect(vBar_, &QScrollBar::actionTriggered, this,
            [this](int a) { On_Action(Qt::Vertical, a); });
    connect(hBar_, &QScrollBar::actionTriggered, this,
            [this](int a) { On_Action(Qt::Horizontal, a); });
    Place_Bars();
    return true;
}

void cSubClass::Release() {
    if (!window_) return;
    window_->removeEventFilter(this);
    window_->setProperty(kProperty, QVariant());
    delete vBar_;
    delete hBar_;
    window_ = nullptr;
}

void cSubClass::Place_Bars() {
    if (!window_) return;
    const int w = window_->width(), h = window_->height();
    const bool v = vInfo_.Shown(), hz = hInfo_.Shown();
    vBar_->setGeometry(w - kBarThickness, 0, kBarThickness, h - (hz ? kBarThickness : 0));
    hBar_->setGeometry(0, h - kBarThickness, w - (v ? kBarThickness : 0), kBarThickness);
    vBar_->setVisible(v);
    hBar_->setVisible(hz);
}

void cSubClass::Sync_Bar(QScrollBar* bar, const ScrollInfo& info) {
    if (!bar) return;
    syncing_ = true;
    bar->setRange(0, info.Highest());
    bar->setPageStep(info.Page > 0 ? info.Page : 1);
    bar->setSingleStep(bar == vBar_ ? Small_Change : kPixelLine);
    bar->setValue(info.Pos);
    syncing_ = false;
    Place_Bars();
}

void cSubClass::Set_VScroll_Info(int32_t max, int32_t page) {
    vInfo_.Max = max < 0 ? 0 : max;
    vInfo_.Page = page < 0 ? 0 : page;
    if (vInfo_.Pos > vInfo_.Highest()) vInfo_.Pos = vInfo_.Highest();
    Sync_Bar(vBar_, vInfo_);
}

void cSubClass::Set_HScroll_Info(int32_t max, int32_t page) {
    hInfo_.Max = max < 0 ? 0 : max;
    hInfo_.Page = page < 0 ? 0 : page;
    if (hInfo_.Pos > hInfo_.Highest()) hInfo_.Pos = hInfo_.Highest();
    Sync_Bar(hBar_, hInfo_);
}

void cSubClass::Set_VPos(int32_t pos) {
    vInfo_.Pos = pos < 0 ? 0 : (pos > vInfo_.Highest() ? vInfo_.Highest() : pos);
    Sync_Bar(vBar_, vInfo_);
}

void cSubClass::Set_HPos(int32_t pos) {
    hInfo_.Pos = pos < 0 ? 0 : (pos > hInfo_.Highest() ? hInfo_.Highest() : pos);
    Sync_Bar(hBar_, hInfo_);
}

void cSubClass::VScroll_Primer() {
    Set_VPos(0);
}

void cSubClass::HScroll_Primer() {
    hColumn_ = 0;
    Set_HPos(0);
}

void cSubClass::On_Action(Qt::Orientation bar, int action) {
    if (syncing_) return;
    QScrollBar* b = bar == Qt::Vertical ? vBar_ : hBar_;
    // The bar has already moved its slider for this action: that is the track position.
    ScrollProc(bar, Action_Of(action), b ? b->sliderPosition() : 0);
}

void cSubClass::ScrollProc(Qt::Orientation bar, ScrollAction action, int32_t track) {
    if (bar == Qt::Vertical) {
        vInfo_.Pos = Scroll_Position(vInfo_, action, track, Small_Change);
        Sync_Bar(vBar_, vInfo_);
        if (MyOwner) MyOwner->SysMsg_VChange(vInfo_.Pos);
        return;
    }
    if (HScroll_By_Pixels(ScreenKey) || ColumnRects.empty()) {
        hInfo_.Pos = Scroll_Position(hInfo_, action, track, kPixelLine);
        Sync_Bar(hBar_, hInfo_);
        if (MyOwner) MyOwner->SysMsg_HChange(hInfo_.Pos);
        return;
    }
    // Grids step by whole columns, so that no column shows half-scrolled.
    const bool lunations = ScreenKey == "Lunations";
    const int32_t page = FixedPageStep > 0 ? FixedPageStep : ColumnsOnShow;
    hColumn_ = HScroll_Column_Step(hColumn_, action, track, ColumnRects, page, lunations);
    const int32_t origin = ColumnRects.front().Left;
    const int32_t pixel = hColumn_ < static_cast<int32_t>(ColumnRects.size())
                              ? ColumnRects[static_cast<size_t>(hColumn_)].Left - origin
                              : ColumnRects.back().Right - origin;
    hInfo_.Pos = pixel > hInfo_.Highest() ? hInfo_.Highest() : pixel;
    Sync_Bar(hBar_, hInfo_);
    if (MyOwner) MyOwner->SysMsg_hScrollColmShift(hColumn_);
}

bool cSubClass::eventFilter(QObject* watched, QEvent* event) {
    if (watched != window_ || !MyOwner) return QObject::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::WindowActivate:
            MyOwner->SysMsg_FocusChange(1);
            break;
        case QEvent::WindowDeactivate:
            MyOwner->SysMsg_FocusChange(0);
            break;
        case QEvent::Paint:
            MyOwner->SysMsg_Paint();
            break;
        case QEvent::Resize: {
            auto* e = static_cast<QResizeEvent*>(event);
            if (ScreenKey == "Increments" && e->size().width() != 500) {
                window_->resize(500, e->size().height());  // the width is held to 500
                return true;
            }
            Place_Bars();
            MyOwner->SysMsg_Resize(e->size().width(), e->size().height());
            break;
        }
        case QEvent::Move:
            if (ScreenKey == "Find Star")
                MyOwner->SysMsg_Resize(window_->width(), window_->height());
            break;
        case QEvent::MouseMove: {
            auto* e = static_cast<QMouseEvent*>(event);
            MyOwner->SysMsg_SetCursor();
            MyOwner->SysMsg_MouseMove(Buttons_Of(e->buttons()), Shift_Of(e->modifiers()),
                                      e->position().toPoint().x(), e->position().toPoint().y());
            break;
        }
        case QEvent::HoverMove: {
            auto* e = static_cast<QHoverEvent*>(event);
            MyOwner->SysMsg_MouseMove(0, Shift_Of(e->modifiers()), e->position().toPoint().x(),
                                      e->position().toPoint().y());
            break;
        }
        case QEvent::Leave:
            MyOwner->SysMsg_MouseMove(0, 0, mouse::LeaveXY, mouse::LeaveXY);
            break;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick: {
            auto* e = static_cast<QMouseEvent*>(event);
            MyOwner->SysMsg_MouseDown(Buttons_Of(e->button()), Shift_Of(e->modifiers()),
                                      e->position().toPoint().x(), e->position().toPoint().y());
            return true;
        }
        case QEvent::MouseButtonRelease: {
            // Only the left and right buttons report going up.
            auto* e = static_cast<QMouseEvent*>(event);
            if (e->button() != Qt::LeftButton && e->button() != Qt::RightButton) break;
            const int32_t button = e->button() == Qt::RightButton ? mouse::Right : mouse::Left;
            MyOwner->SysMsg_MouseUp(button, Shift_Of(e->modifiers()), e->position().toPoint().x(),
                                    e->position().toPoint().y());
            return true;
        }
        case QEvent::Wheel: {
            auto* e = static_cast<QWheelEvent*>(event);
            MyOwner->SysMsg_MouseScroll(e->angleDelta().y(), Shift_Of(e->modifiers()),
                                        e->position().toPoint().x(), e->position().toPoint().y());
            return true;
        }
        case QEvent::KeyPress: {
            auto* e = static_cast<QKeyEvent*>(event);
            int32_t key = Virtual_Key(e->key());
            // Ctrl and a letter is a shortcut of the screen (Ctrl+F finds a star); Ctrl+D
            // stays the degree sign.
            if (!key && (e->modifiers() & Qt::ControlModifier) && e->key() >= Qt::Key_A &&
                e->key() <= Qt::Key_Z && e->key() != Qt::Key_D)
                key = e->key();
            if (key) MyOwner->SysMsg_KeyDown(key, Shift_Of(e->modifiers()));
            // Printable characters follow as KeyPress; Ctrl+D types the degree sign.
            if ((e->modifiers() & Qt::ControlModifier) && e->key() == Qt::Key_D) {
                MyOwner->SysMsg_KeyPress(176);
            } else if (!key || key == vk::Space) {
                const QString text = e->text();
                if (!text.isEmpty() && !(e->modifiers() & Qt::ControlModifier)) {
                    const char16_t c = text.at(0).unicode();
                    if (c >= 32 && c <= 255) MyOwner->SysMsg_KeyPress(c);
                }
            }
            return true;
        }
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace kelmoran
