#include "shell/myComboView.h"

#include <QPaintEvent>

#include "shell/cDates.h"

namespace kelmoran {

namespace {
const QColor kHighlight(10, 36, 106);
}

// The list: a child window of the owner's window, painted by the combo.
class myComboView::ListWindow : public QWidget {
  public:
    ListWindow(myComboView* combo, QWidget* parent) : QWidget(parent), combo_(combo) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        hide();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        combo_->Draw_List(p);
    }

  private:
    myComboView* combo_;
};

myComboView::myComboView(PictureForm* form) : form_(form), hook_(this) {
    LineHeight = Date_Metrics.SmallHeight + 4;
}

myComboView::~myComboView() {
    hook_.Release();
    delete list_.data();
}

QWidget* myComboView::List_Window() const {
    return list_;
}

void myComboView::SubClass() {
    if (list_ || !form_ || !form_->Form_Window()) return;
    list_ = new ListWindow(this, form_->Form_Window());
    hook_.SubClass(list_);
}

void myComboView::Show_List(bool visible) {
    SubClass();
    if (!list_) return;
    if (visible) {
        const Rect r = List_Rect();
        list_->setGeometry(To_QRect(r));
        list_->raise();
        list_->show();
        list_->update();
    } else {
        list_->hide();
    }
}

void myComboView::Draw_List(QPainter& p) const {
    const Rect all = List_Rect();
    const QRect area(0, 0, all.Width(), all.Height());
    p.fillRect(area, Qt::white);
    p.setPen(Qt::black);
    p.drawRect(area.adjusted(0, 0, -1, -1));
    p.setFont(Drawing().Normal);
    const auto size = static_cast<int32_t>(List.size());
    for (int32_t i = MyTopLine; i < size && i < MyTopLine + MyLineNo; ++i) {
        const Rect r = HighlightRect(i);
        const Rect inner = {r.Left + 1, r.Top + 1, r.Right - 1, r.Bottom + 1};
        if (i == MyHighlighter) {
            p.fillRect(To_QRect(inner), kHighlight);
            p.setPen(Qt::white);
        } else {
            p.setPen(Qt::black);
        }
        Draw_Aligned(p, {inner.Left + 2, inner.Top, inner.Right, inner.Bottom},
                     Q(List[static_cast<size_t>(i)]), 0);
    }
}

void myComboView::SysMsg_Paint() {
    if (form_) {
        {
            QPainter p(&form_->Form_Picture());
            const DrawingObjects& d = Drawing();
            p.fillRect(To_QRect(Box), Qt::white);
            Draw_3D_Frame(p, Box, true);
            // The button with its arrow at the right of the box.
            const Rect button = {Box.Right - Box.Height(), Box.Top + 2, Box.Right - 2,
                                 Box.Bottom - 2};
            p.fillRect(To_QRect(button), d.Face);
            Draw_3D_Frame(p, button, false);
            p.setPen(Qt::black);
            p.setFont(d.Arrows);
            Draw_Aligned(p, button, QString(QChar(0x25BC)), 1);
            p.setFont(d.Normal);
            const Rect text = {Box.Left + 2, Box.Top + 2, button.Left - 2, Box.Bottom - 2};
            if (HasFocus && !ListVisible) {
                p.fillRect(To_QRect(text), kHighlight);
                p.setPen(Qt::white);
            }
            Draw_Aligned(p, text, Q(Text), 0);
        }
        form_->Update_Window(Box);
    }
    if (list_ && ListVisible) list_->update();
}

void myComboView::SysMsg_MouseDown(int32_t, int32_t, int32_t x, int32_t y) {
    List_MouseDown(x, y);
}

void myComboView::SysMsg_MouseMove(int32_t, int32_t, int32_t x, int32_t y) {
    if (x == mouse::LeaveXY && y == mouse::LeaveXY) return;
    HiLiteMe(x, y);
}

void myComboView::SysMsg_MouseUp(int32_t, int32_t, int32_t x, int32_t y) {
    myCombo::SysMsg_MouseUp(x, y);
}

}  // namespace kelmoran
