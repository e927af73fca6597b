#include "shell/cDatesView.h"

#include <QFontMetrics>
#include <QMenu>
#include <cstdlib>

#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"

namespace kelmoran {

void cDatesView::Invalidate(const Rect& r) {
    if (form_) form_->Update_Window(r);
}

void cDatesView::Draw_Date_Outlines() {
    if (!form_) return;
    QPainter p(&form_->Form_Picture());
    Draw(p);
}

void cDatesView::Draw(QPainter& p) {
    const DrawingObjects& d = Drawing();
    const int32_t dy = MyRectOffset;
    const Rect frame = MyFrame.Offset(0, dy);
    p.fillRect(To_QRect(frame), d.Face);
    Draw_3D_Frame(p, frame, false);
    // The two groups in sunken outlines a little outside their labels.
    auto outline = [&](const Rect& r) {
        if (!r.Empty())
            Draw_3D_Frame(p, {r.Left - 3, r.Top - 2 + dy, r.Right + 3, r.Bottom + 2 + dy}, true);
    };
    outline(MyDateGrid.United(MyWeekdayLabel));
    outline(MyTimeGrid);

    const QColor ink = MyDateIsDisabled ? d.Shadow : QColor(Qt::black);
    const auto& t = MySystemTime;
    auto label = [&](const Rect& r, const QString& text, int32_t align = 1) {
        if (r.Empty()) return;
        p.setPen(ink);
        Draw_Aligned(p, r.Offset(0, dy), text, align);
    };
    p.setFont(Form == DatesForm::DTG ? d.Bold : d.Large);
    if (Form == DatesForm::DTG) {
        label(MyDayLabel, QString::asprintf("%02d", t.wDay));
        label({MyDayLabel.Right, MyDayLabel.Top, MyHourLabel.Left, MyDayLabel.Bottom}, "/", 0);
    } else {
        const std::string caption = Caption_Text();
        if (!caption.empty()) {
            p.setPen(ink);
            Draw_Aligned(
                p,
                {frame.Left + 4, MyYearLabel.Top + dy, First_Label().Left, MyYearLabel.Bottom + dy},
                Q(caption), 0);
        }
        if (MyDayReqd) label(MyWeekdayLabel, Q(Weekday_Text()), 0);
        label(MyDayLabel, QString::number(t.wDay));
        label(MyMonthLabel, Q(Field_Text("Month")));
        label(MyYearLabel, QString::number(std::abs(t.wYear)));
        label(MyBClabel, Q(Era_Text()), 0);
        if (!MyJulianLabel.Empty()) {
            p.setFont(d.Normal);
            p.setPen(ink);
            Draw_Aligned(p, MyJulianLabel.Offset(0, dy), Q(Julian_Text()), 0);
            p.setFont(d.Large);
        }
    }
    if (!MyHourLabel.Empty()) {
        label(MyHourLabel, QString::asprintf("%02d", t.wHour));
        label({MyHourLabel.Right, MyHourLabel.Top, MyMinuteLabel.Left, MyHourLabel.Bottom}, ":");
        label(MyMinuteLabel, QString::asprintf("%02d", t.wMinute));
        if (!MySecondLabel.Empty()) {
            label(
                {MyMinuteLabel.Right, MyMinuteLabel.Top, MySecondLabel.Left, MyMinuteLabel.Bottom},
                ":");
            label(MySecondLabel, QString::asprintf("%02d", t.wSecond));
        }
        label(MyLMTlabel, Q(MyLMT_Text), 0);
    }
    if (form_) form_->Draw_Open_Edit(p);
}

void cDatesView::Paint_Dates(bool repaint) {
    Remember_Painted();
    if (!form_) return;
    {
        QPainter p(&form_->Form_Picture());
        Draw(p);
    }
    // Either way the window copies the strip at its next paint; painting is never forced
    // from inside another paint.
    (void)repaint;
    form_->Update_Window(MyFrame.Offset(0, MyRectOffset));
}

void cDatesView::Paint_DTG() {
    Paint_Dates(false);
}

void cDatesView::Menus_Create_Dates(int32_t x, int32_t y, bool onZone) {
    if (MyOwner) MyOwner->MyDates_ReleaseBitmap(*this);
    const std::array<std::string, 3> all = Menu_Captions();
    std::vector<std::string> captions = {all[0], all[1]};
    if (onZone) captions.push_back(all[2]);
    std::string chosen;
    if (Menu_Chooser) {
        chosen = Menu_Chooser(captions);
    } else {
        QMenu menu;
        for (const std::string& c : captions) menu.addAction(Q(c));
        QWidget* w = form_ ? form_->Form_Window() : nullptr;
        const QPoint at = w ? w->mapToGlobal(QPoint(x, y)) : QPoint(x, y);
        if (QAction* a = menu.exec(at)) chosen = a->text().toStdString();
    }
    if (MyOwner) MyOwner->MyDates_RestoreBitmap(*this);
    if (!chosen.empty()) Menu_Choice(chosen);
}

}  // namespace kelmoran
