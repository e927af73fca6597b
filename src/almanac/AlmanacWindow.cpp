#include "almanac/AlmanacWindow.h"

#include <QCloseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "shell/M_Edit.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

namespace {

constexpr int32_t kSpotWidth = 62, kSpotHeight = 26, kSpotLeft = 10, kSpotGap = 8;
constexpr int32_t kPageGap = 18;      // between the left and the right page
constexpr int32_t kPageMargin = 10;   // round the opening
constexpr int32_t kScrollLine = 13;   // an hour's row
constexpr int32_t kStripWidth = 520;

QFont Page_Font(PageFont kind) {
    QFont f("DejaVu Serif");
    f.setStyleHint(QFont::Serif);
    switch (kind) {
        case PageFont::Value:
            f.setPixelSize(11);
            break;
        case PageFont::Label:
            f.setPixelSize(11);
            f.setItalic(true);
            break;
        case PageFont::Heading:
            f.setPixelSize(12);
            f.setBold(true);
            break;
        case PageFont::Title:
            f.setPixelSize(15);
            f.setBold(true);
            break;
    }
    return f;
}

Qt::Alignment Alignment_Of(PageAlign a) {
    switch (a) {
        case PageAlign::Left:
            return Qt::AlignLeft | Qt::AlignVCenter;
        case PageAlign::Centre:
            return Qt::AlignHCenter | Qt::AlignVCenter;
        case PageAlign::Right:
            break;
    }
    return Qt::AlignRight | Qt::AlignVCenter;
}

// 0h UT of the day that holds `jd`.
double Start_Of_Day(double jd) { return std::floor(jd - 0.5) + 0.5; }

}  // namespace

void Paint_Page(QPainter& p, const PagePicture& page, double scale, double x, double y) {
    p.save();
    p.translate(x, y);
    p.scale(scale, scale);
    p.setRenderHint(QPainter::TextAntialiasing);
    for (const PageLine& l : page.Lines) {
        p.setPen(QPen(Qt::black, l.Heavy ? 1.4 : 0.6));
        p.drawLine(QLineF(l.X1, l.Y1, l.X2, l.Y2));
    }
    p.setPen(Qt::black);
    // Font by font: a page of a thousand figures changes its font four times.
    for (const PageFont font : {PageFont::Value, PageFont::Label, PageFont::Heading, PageFont::Title}) {
        p.setFont(Page_Font(font));
        for (const PageText& t : page.Texts)
            if (t.Font == font)
                p.drawText(QRectF(t.X, t.Y, t.W, t.H), Alignment_Of(t.Align), Q(t.Text));
    }
    p.restore();
}

class AlmanacWindow::ClientArea : public QWidget {
  public:
    explicit ClientArea(AlmanacWindow* owner) : QWidget(owner), owner_(owner) {
        setFocusPolicy(Qt::StrongFocus);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.drawImage(0, 0, owner_->picture_);
    }

  private:
    AlmanacWindow* owner_;
};

QWidget* AlmanacWindow::Client() const { return client_; }

AlmanacWindow::AlmanacWindow(QWidget* parent)
    : QWidget(parent, Qt::Window), hook_(this), myDates_(this) {
    setWindowTitle("Almanac");
    client_ = new ClientArea(this);
    picture_ = QImage(QSize(1000, 700), QImage::Format_RGB32);
    picture_.fill(Qt::white);
    myDates_.Configure_Almanac_Dates(this, kStripWidth);
    myDates_.Clip_Time(true);  // the pages are whole days: day, month and year only
    myDates_.IsShared = kFalse;
    myDates_.Set_Calendar(Shell.CalendarChoice != 0);
    hook_.ScreenKey = screen_key::Almanac;
    hook_.Small_Change = kScrollLine;
    hook_.SubClass(client_);
    printSpot_ = {kSpotLeft, myDates_.MyFrame.Top, kSpotLeft + kSpotWidth,
                  myDates_.MyFrame.Top + kSpotHeight};
    exitSpot_ = printSpot_.Offset(kSpotWidth + kSpotGap, 0);
    resize(1000, 700);
    client_->resize(size());
}

AlmanacWindow::~AlmanacWindow() {
    if (Edit.Editing && Edit.Form == this) kelmoran::End_Edit(true);
    hook_.Release();
}

int32_t AlmanacWindow::Strip_Bottom() const { return myDates_.MyFrame.Bottom + 6; }

void AlmanacWindow::Start_At(double jd) {
    myDates_.MyTime(Start_Of_Day(jd));
    CalcDates();
}

void AlmanacWindow::CalcDates() {
    const double first = Start_Of_Day(myDates_.My_JD());
    myDates_.MyTime(first);
    almanac_.MyJD(first);
    MySystemTime date = myDates_.MySystemTime;
    date.wDayOfWeek = Weekday_Of_JD(first + 0.25);
    const int32_t monthLength = myDates_.Get_Month_Length(date.wMonth, date.wYear);
    days_ = Get_sDay(date, monthLength);
    heading_ = Almanac_Heading(date, monthLength);
    left_ = Almanac_Left_Page(almanac_, days_, heading_);
    right_ = Almanac_Right_Page(almanac_, days_, heading_);
    Draw_Pages();
    Set_Scroll_Bars();
    Draw();
}

void AlmanacWindow::Draw_Pages() {
    const int32_t w = 2 * kPageMargin + left_.Width + kPageGap + right_.Width;
    const int32_t h = 2 * kPageMargin + std::max(left_.Height, right_.Height);
    pages_ = QImage(QSize(w, h), QImage::Format_RGB32);
    pages_.fill(QColor(0xd8, 0xd8, 0xd0));
    QPainter p(&pages_);
    const QColor paper(0xff, 0xfe, 0xf8);
    p.fillRect(kPageMargin, kPageMargin, left_.Width, left_.Height, paper);
    const int32_t rightX = kPageMargin + left_.Width + kPageGap;
    p.fillRect(rightX, kPageMargin, right_.Width, right_.Height, paper);
    Paint_Page(p, left_, 1.0, kPageMargin, kPageMargin);
    Paint_Page(p, right_, 1.0, rightX, kPageMargin);
}

void AlmanacWindow::Set_Scroll_Bars() {
    const int32_t viewH = std::max(1, client_->height() - Strip_Bottom());
    hook_.Set_VScroll_Info(pages_.height() - 1, viewH);
    hook_.Set_HScroll_Info(pages_.width() - 1, std::max(1, client_->width()));
    vScroll_ = std::clamp(vScroll_, 0, std::max(0, pages_.height() - viewH));
    hScroll_ = std::clamp(hScroll_, 0, std::max(0, pages_.width() - client_->width()));
    hook_.Set_VPos(vScroll_);
    hook_.Set_HPos(hScroll_);
}

void AlmanacWindow::Draw() {
    picture_.fill(QColor(0xd8, 0xd8, 0xd0));
    {
        QPainter p(&picture_);
        const int32_t top = Strip_Bottom();
        p.drawImage(QPoint(0, top), pages_, QRect(hScroll_, vScroll_, picture_.width(),
                                                 std::max(0, picture_.height() - top)));
        // The band of the strip and the hot spots stays at the top.
        const DrawingObjects& d = Drawing();
        p.fillRect(0, 0, picture_.width(), top, d.Face);
        p.setPen(d.Shadow);
        p.drawLine(0, top - 1, picture_.width(), top - 1);
        auto spot = [&](const Rect& r, const char* caption, bool over) {
            p.fillRect(To_QRect(r), over ? d.Light : d.Face);
            Draw_3D_Frame(p, r, false);
            p.setFont(d.Bold);
            p.setPen(Qt::black);
            p.drawText(To_QRect(r), Qt::AlignCenter, caption);
        };
        if (Print_Opening) spot(printSpot_, "Print", overPrint_);
        spot(exitSpot_, "Exit", overExit_);
    }
    myDates_.Paint_Dates(false);
    client_->update();
}

void AlmanacWindow::Redraw_Cell(const Rect&) { myDates_.Paint_Dates(false); }

void AlmanacWindow::MyDates_DateChange(cDates&, double) {
    CalcDates();
}

void AlmanacWindow::MyDates_CalenderChg(cDates&, bool) {
    CalcDates();
}

void AlmanacWindow::SysMsg_VChange(int32_t pos) {
    vScroll_ = pos;
    Draw();
}

void AlmanacWindow::SysMsg_HChange(int32_t pos) {
    hScroll_ = pos;
    Draw();
}

void AlmanacWindow::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    client_->setFocus();
    if (Edit.Editing && Edit.Form == this && button == mouse::Left && Edit.Cell.Contains(x, y)) {
        Edit_Click(x);
        return;
    }
    if (button == mouse::Left && Print_Opening && printSpot_.Contains(x, y)) {
        if (Edit.Editing && Edit.Form == this) kelmoran::End_Edit();
        Print_Opening(*this);
        return;
    }
    if (button == mouse::Left && exitSpot_.Contains(x, y)) {
        close();
        return;
    }
    myDates_.MouseDown(x, y, button, shift);
}

void AlmanacWindow::SysMsg_MouseMove(int32_t, int32_t, int32_t x, int32_t y) {
    const bool print = Print_Opening && printSpot_.Contains(x, y);
    const bool exit = exitSpot_.Contains(x, y);
    if (print == overPrint_ && exit == overExit_) return;
    overPrint_ = print;
    overExit_ = exit;
    client_->setCursor(print || exit ? Qt::PointingHandCursor : Qt::ArrowCursor);
    Draw();
}

void AlmanacWindow::SysMsg_MouseScroll(int32_t delta, int32_t, int32_t x, int32_t y) {
    const int32_t steps = wheel_.Take(delta);
    if (!steps) return;
    // Over the strip the wheel steps the field under it; over the pages it scrolls them.
    if (y < Strip_Bottom()) {
        myDates_.MouseScroll(x, y, steps);
        return;
    }
    for (int32_t i = 0; i < std::abs(steps) * 3; ++i)
        hook_.ScrollProc(Qt::Vertical, steps > 0 ? ScrollAction::LineUp : ScrollAction::LineDown);
}

void AlmanacWindow::SysMsg_Resize(int32_t width, int32_t height) {
    if (width <= 0 || height <= 0) return;
    picture_ = QImage(QSize(width, height), QImage::Format_RGB32);
    if (!pages_.isNull()) {
        Set_Scroll_Bars();
        Draw();
    }
}

void AlmanacWindow::SysMsg_FocusChange(int32_t active) {
    if (!active && Edit.Editing && Edit.Form == this) kelmoran::End_Edit();
}

void AlmanacWindow::Move_Field(bool forward) {
    const std::vector<std::string> fields = myDates_.Fields_Shown();
    if (fields.empty()) return;
    std::string next = forward ? fields.front() : fields.back();
    if (Edit.Editing && Edit.Form == this) {
        const auto at = std::find(fields.begin(), fields.end(), Edit.Field);
        if (at != fields.end()) {
            const auto index = at - fields.begin();
            const auto n = static_cast<std::ptrdiff_t>(fields.size());
            next = fields[static_cast<size_t>((index + (forward ? 1 : n - 1)) % n)];
        }
        kelmoran::End_Edit();
    }
    myDates_.Begin_Editing(next);
}

void AlmanacWindow::SysMsg_KeyDown(int32_t key, int32_t shift) {
    // Tab and the left and right arrows move between day, month and year.
    if (key == vk::Tab) {
        Move_Field(!(shift & mouse::Shift));
        return;
    }
    if (key == vk::Left || key == vk::Right) {
        Move_Field(key == vk::Right);
        return;
    }
    if (Edit.Editing && Edit.Form == this) {
        Edit_Key_Down(key);
        return;
    }
    // Without an edit the keys scroll the pages.
    switch (key) {
        case 38:
            hook_.ScrollProc(Qt::Vertical, ScrollAction::LineUp);
            break;
        case 40:
            hook_.ScrollProc(Qt::Vertical, ScrollAction::LineDown);
            break;
        case 33:
            hook_.ScrollProc(Qt::Vertical, ScrollAction::PageUp);
            break;
        case 34:
            hook_.ScrollProc(Qt::Vertical, ScrollAction::PageDown);
            break;
        case vk::Home:
            hook_.ScrollProc(Qt::Vertical, ScrollAction::Top);
            break;
        case vk::End:
            hook_.ScrollProc(Qt::Vertical, ScrollAction::Bottom);
            break;
        default:
            break;
    }
}

void AlmanacWindow::SysMsg_KeyPress(int32_t character) {
    if (Edit.Editing && Edit.Form == this) Edit_Key_Press(character);
}

void AlmanacWindow::resizeEvent(QResizeEvent*) { client_->setGeometry(rect()); }

void AlmanacWindow::closeEvent(QCloseEvent* event) {
    if (Edit.Editing && Edit.Form == this) kelmoran::End_Edit();
    event->accept();  // hidden; the window lives to the end of the run
}

}  // namespace kelmoran
