#include "settings/OptionsWindow.h"

#include <QCloseEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "settings/Options.h"
#include "shell/HelpPopup.h"
#include "shell/M_Edit.h"
#include "shell/M_Kelmoran.h"
#include "shell/cGeneralForm.h"
#include "voyage/cNavPlanView.h"

namespace kelmoran {

namespace {
constexpr int32_t kWidth = 620;
constexpr int32_t kHeight = 440;
constexpr int32_t kTabTop = 8;
constexpr int32_t kTabHeight = 24;
const Rect kPage = {8, kTabTop + kTabHeight, kWidth - 8, kHeight - 48};
}  // namespace

// The client area: copies the picture, never erasing first.
class OptionsWindow::Canvas_ : public QWidget {
  public:
    explicit Canvas_(OptionsWindow* owner) : QWidget(owner), owner_(owner) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setFocusPolicy(Qt::StrongFocus);
        setMouseTracking(true);
    }
    bool focusNextPrevChild(bool) override { return false; }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.drawImage(0, 0, owner_->picture_);
    }

  private:
    OptionsWindow* owner_;
};

bool Show_Options(QWidget* parent, const std::string& ownerKey, const std::string& tab) {
    Kill_Activities();
    OptionsWindow w(parent, ownerKey, tab);
    return w.exec() == QDialog::Accepted;
}

OptionsWindow::OptionsWindow(QWidget* parent, const std::string& ownerKey, const std::string& tab)
    : QDialog(parent), picture_(kWidth, kHeight, QImage::Format_RGB32), hook_(this) {
    setWindowTitle("Options");
    setModal(true);
    setFixedSize(kWidth, kHeight);
    picture_.fill(Drawing().Face);
    canvas_ = new Canvas_(this);
    canvas_->setGeometry(0, 0, kWidth, kHeight);
    hook_.SubClass(canvas_);
    popup_ = std::make_unique<HelpPopup>(
        canvas_, [this](int32_t x, int32_t y) { return Help_Key_At(x, y); });

    // The calling screen's grid, for the Columns tab.
    GridModel* grid = nullptr;
    if (auto* screen = dynamic_cast<cGeneralForm*>(Shell.CurrentScreen);
        screen && screen->ClassType() == ownerKey)
        grid = &screen->Grid();
    if (auto* plan = dynamic_cast<cNavPlan*>(Shell.CurrentScreen);
        plan && plan->ClassType() == ownerKey)
        grid = &plan->Grid();
    Options_Open(ownerKey, tab, grid);
    Select_Tab(Options.CurrentTab);
    canvas_->setFocus();
}

OptionsWindow::~OptionsWindow() {
    Release_Controls();
    hook_.Release();
}

QWidget* OptionsWindow::Form_Window() const { return canvas_; }
QWidget* OptionsWindow::Canvas() const { return canvas_; }

const std::vector<std::string>& OptionsWindow::Tab_Names() const { return Options.Tabs; }
int32_t OptionsWindow::Current_Tab() const { return Options.CurrentTab; }

void OptionsWindow::Release_Controls() {
    if (Edit.Editing && Edit.Form == this) End_Edit(true);
    if (popup_) popup_->Remove();
    tab_.reset();
}

void OptionsWindow::Select_Tab(int32_t index) {
    if (index < 0 || index >= static_cast<int32_t>(Options.Tabs.size())) return;
    if (Edit.Editing && Edit.Form == this) End_Edit();
    if (popup_) popup_->Remove();
    Options.CurrentTab = index;
    tab_ = Make_Options_Tab(Options.Tabs[static_cast<size_t>(index)], *this);
    Draw();
}

Rect OptionsWindow::Tab_Rect(int32_t index) const {
    if (index < 0 || index >= static_cast<int32_t>(tabRects_.size())) return {};
    return tabRects_[static_cast<size_t>(index)];
}

void OptionsWindow::Draw() {
    const DrawingObjects& d = Drawing();
    hots_.clear();
    picture_.fill(d.Face);
    {
        QPainter p(&picture_);
        // The tab strip: the tab on show stands forward, joined to its page.
        p.setFont(d.Bold);
        const QFontMetrics fm(d.Bold);
        tabRects_.clear();
        int32_t x = kPage.Left;
        for (size_t i = 0; i < Options.Tabs.size(); ++i) {
            const int32_t w = fm.horizontalAdvance(Q(Options.Tabs[i])) + 24;
            const bool on = static_cast<int32_t>(i) == Options.CurrentTab;
            const Rect r = {x, kTabTop + (on ? 0 : 3), x + w, kPage.Top + (on ? 1 : 0)};
            tabRects_.push_back({x, kTabTop, x + w, kPage.Top});
            p.fillRect(To_QRect(r), on ? QColor(Qt::white) : d.Face);
            Draw_3D_Frame(p, r, false);
            p.setPen(Qt::black);
            Draw_Aligned(p, r, Q(Options.Tabs[i]), 1);
            x += w;
        }
        p.fillRect(To_QRect(kPage), Qt::white);
        Draw_3D_Frame(p, kPage, false);
        // Rejoin the tab on show to the page.
        if (const Rect t = Tab_Rect(Options.CurrentTab); !t.Empty())
            p.fillRect(QRect(t.Left + 2, kPage.Top - 1, t.Width() - 4, 3), Qt::white);
        if (tab_) {
            p.save();
            tab_->Paint(p, {kPage.Left + 2, kPage.Top + 2, kPage.Right - 2, kPage.Bottom - 2});
            p.restore();
        }
        okRect_ = {kWidth - 200, kHeight - 38, kWidth - 112, kHeight - 12};
        cancelRect_ = {kWidth - 100, kHeight - 38, kWidth - 12, kHeight - 12};
        Button(p, okRect_, "OK");
        Button(p, cancelRect_, "Cancel");
        Draw_Open_Edit(p);
    }
    if (tab_) {
        for (myComboView* c : tab_->Combos) c->SysMsg_Paint();
        for (cLatLongView* pair : tab_->Pairs) pair->Draw_Layout();
        if (tab_->Strip) tab_->Strip->Paint_Dates(false);
    }
    if (canvas_) canvas_->update();
}

void OptionsWindow::Add_Hot(const Rect& r, const std::string& key,
                            std::function<void(int32_t)> click, bool enabled) {
    hots_.push_back({r, key, std::move(click), enabled});
}

const OptionsHot* OptionsWindow::Hot_At(int32_t x, int32_t y) const {
    for (auto it = hots_.rbegin(); it != hots_.rend(); ++it)
        if (it->Area.Contains(x, y)) return &*it;
    return nullptr;
}

std::string OptionsWindow::Help_Key_At(int32_t x, int32_t y) const {
    if (const OptionsHot* h = Hot_At(x, y)) return h->HelpKey;
    for (size_t i = 0; i < tabRects_.size(); ++i)
        if (tabRects_[i].Contains(x, y)) return Options.Tabs[i];
    return {};
}

Rect OptionsWindow::Tick(QPainter& p, int32_t x, int32_t y, const std::string& text, bool on,
                         bool enabled) {
    const DrawingObjects& d = Drawing();
    const Rect box = {x, y + 3, x + 13, y + 16};
    p.fillRect(To_QRect(box), Qt::white);
    Draw_3D_Frame(p, box, true);
    p.setPen(QPen(enabled ? QColor(Qt::black) : d.Shadow, 2));
    if (on) {
        p.drawLine(x + 3, y + 9, x + 6, y + 12);
        p.drawLine(x + 6, y + 12, x + 11, y + 5);
    }
    p.setFont(d.Normal);
    p.setPen(enabled ? QColor(Qt::black) : d.Shadow);
    const int32_t w = QFontMetrics(d.Normal).horizontalAdvance(Q(text));
    p.drawText(QRect(x + 19, y, w + 4, 19), Qt::AlignLeft | Qt::AlignVCenter, Q(text));
    return {x, y, x + 23 + w, y + 19};
}

Rect OptionsWindow::Option(QPainter& p, int32_t x, int32_t y, const std::string& text, bool on,
                           bool enabled) {
    const DrawingObjects& d = Drawing();
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(d.Shadow);
    p.setBrush(Qt::white);
    p.drawEllipse(QRect(x, y + 3, 13, 13));
    if (on) {
        p.setBrush(enabled ? QColor(Qt::black) : d.Shadow);
        p.setPen(Qt::NoPen);
        p.drawEllipse(QRect(x + 4, y + 7, 5, 5));
    }
    p.restore();
    p.setFont(d.Normal);
    p.setPen(enabled ? QColor(Qt::black) : d.Shadow);
    const int32_t w = QFontMetrics(d.Normal).horizontalAdvance(Q(text));
    p.drawText(QRect(x + 19, y, w + 4, 19), Qt::AlignLeft | Qt::AlignVCenter, Q(text));
    return {x, y, x + 23 + w, y + 19};
}

void OptionsWindow::Button(QPainter& p, const Rect& r, const std::string& text, bool enabled) {
    const DrawingObjects& d = Drawing();
    p.fillRect(To_QRect(r), d.Face);
    Draw_3D_Frame(p, r, false);
    p.setFont(d.Normal);
    p.setPen(enabled ? QColor(Qt::black) : d.Shadow);
    Draw_Aligned(p, r, Q(text), 1);
}

void OptionsWindow::Field(QPainter& p, const Rect& r, const std::string& text, int32_t align) {
    p.fillRect(To_QRect(r), Qt::white);
    Draw_3D_Frame(p, r, true);
    p.setFont(Drawing().Bold);
    p.setPen(Qt::black);
    Draw_Aligned(p, {r.Left + 3, r.Top, r.Right - 4, r.Bottom}, Q(text), align);
}

void OptionsWindow::Text(QPainter& p, int32_t x, int32_t y, const std::string& text, bool bold,
                         QColor ink) {
    const QFont& f = bold ? Drawing().Bold : Drawing().Normal;
    p.setFont(f);
    p.setPen(ink);
    p.drawText(QRect(x, y, QFontMetrics(f).horizontalAdvance(Q(text)) + 4, 19),
               Qt::AlignLeft | Qt::AlignVCenter, Q(text));
}

void OptionsWindow::Group(QPainter& p, const Rect& r, const std::string& caption) {
    const DrawingObjects& d = Drawing();
    p.setPen(d.Shadow);
    p.setBrush(Qt::NoBrush);
    p.drawRect(To_QRect(r).adjusted(0, 0, -1, -1));
    p.setFont(d.Bold);
    const int32_t w = QFontMetrics(d.Bold).horizontalAdvance(Q(caption));
    p.fillRect(QRect(r.Left + 8, r.Top - 8, w + 8, 16), Qt::white);
    p.setPen(Qt::black);
    p.drawText(QRect(r.Left + 12, r.Top - 8, w + 4, 16), Qt::AlignLeft | Qt::AlignVCenter,
               Q(caption));
}

void OptionsWindow::Begin_Field_Edit(const std::string& cls, const std::string& field,
                                     const Rect& cell, double value, const std::string& text) {
    if (Edit.Editing) End_Edit();
    EditRequest r;
    r.Form = this;
    r.Control = this;
    r.Class = cls;
    r.Field = field;
    r.Cell = {cell.Left + 2, cell.Top + 2, cell.Right - 2, cell.Bottom - 2};
    r.Font = FontKind::Bold;
    r.Alignment = 2;
    r.Value = value;
    r.Text = text;
    Begin_Edit(r);
}

void OptionsWindow::Edit_Commit(const EditSession& s, double value, const std::string& text) {
    if (tab_) tab_->Edit_Commit(s, value, text);
    // The tab's values are painted again after the edit has closed.
    QMetaObject::invokeMethod(this, [this] { Draw(); }, Qt::QueuedConnection);
}

void OptionsWindow::LatLong_Change(cLatLong& sender) {
    if (tab_) tab_->LatLong_Change(sender);
}

void OptionsWindow::MyDates_DateChange(cDates&, double jd) {
    if (tab_) tab_->Date_Change(jd);
}

void OptionsWindow::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    popup_->Remove();
    canvas_->setFocus();
    if (Edit.Editing && Edit.Form == this) {
        if (Edit.Cell.Contains(x, y)) {
            Edit_Click(x);
            return;
        }
        End_Edit();
    }
    if (button == mouse::Left) {
        for (size_t i = 0; i < tabRects_.size(); ++i) {
            if (tabRects_[i].Contains(x, y)) {
                Select_Tab(static_cast<int32_t>(i));
                return;
            }
        }
        if (okRect_.Contains(x, y)) return OK_Click();
        if (cancelRect_.Contains(x, y)) return Cancel_Click();
    }
    if (tab_) {
        for (myComboView* c : tab_->Combos) {
            if (c->Box.Contains(x, y)) {
                if (button == mouse::Left) c->myCombo::SysMsg_MouseDown(x, y);
                return;
            }
            if (c->ListVisible) c->Restore_Original_Posn();
        }
        if (tab_->Strip && tab_->Strip->MyFrame.Contains(x, y)) {
            tab_->Strip->MouseDown(x, y, button, shift);
            return;
        }
        if (button == mouse::Left)
            for (cLatLongView* pair : tab_->Pairs)
                if (pair->MouseDown(x, y)) return;
    }
    const OptionsHot* hot = Hot_At(x, y);
    if (!hot || !hot->Click) return;
    if (!hot->Enabled) {
        Beep();
        return;
    }
    auto click = hot->Click;  // the hots are rebuilt by the repaint the click causes
    click(button);
    if (!(Edit.Editing && Edit.Form == this)) Draw();
}

void OptionsWindow::SysMsg_MouseMove(int32_t button, int32_t, int32_t x, int32_t y) {
    if (x == mouse::LeaveXY) {
        popup_->Remove();
        return;
    }
    if (tab_) tab_->Mouse_Move(button, x, y);
    popup_->Mouse_Move(x, y);
}

void OptionsWindow::SysMsg_MouseUp(int32_t button, int32_t, int32_t x, int32_t y) {
    if (tab_) tab_->Mouse_Up(button, x, y);
}

void OptionsWindow::SysMsg_KeyDown(int32_t key, int32_t) {
    popup_->Remove();
    if (Edit.Editing && Edit.Form == this) {
        Edit_Key_Down(key);
        return;
    }
    if (tab_)
        for (myComboView* c : tab_->Combos)
            if (c->ListVisible) {
                c->Move_through_List(key);
                return;
            }
    if (key == vk::Return) OK_Click();
    if (key == vk::Escape) Cancel_Click();
}

void OptionsWindow::SysMsg_KeyPress(int32_t character) {
    if (Edit.Editing && Edit.Form == this) Edit_Key_Press(character);
}

void OptionsWindow::SysMsg_FocusChange(int32_t active) {
    if (!active) popup_->Remove();
}

void OptionsWindow::OK_Click() {
    if (closing_) return;
    closing_ = true;
    // An open edit ends quietly, keeping what was typed; the controls go; the screens
    // follow the changes.
    Release_Controls();
    Options_Unload();
    accept();
}

void OptionsWindow::Cancel_Click() {
    if (closing_) return;
    closing_ = true;
    if (Edit.Editing && Edit.Form == this) {
        Edit.Buffer.clear();
        End_Edit(true);
    }
    Release_Controls();
    Cancel_Invoke();
    QDialog::reject();
}

void OptionsWindow::reject() { Cancel_Click(); }

void OptionsWindow::closeEvent(QCloseEvent* event) {
    if (!closing_) Cancel_Click();
    event->accept();
}

}  // namespace kelmoran
