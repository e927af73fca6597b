#include "shell/cLatLongView.h"

namespace kelmoran {

void cLatLongView::DrawMe() {
    Paint(true, true);
}
void cLatLongView::DrawMe_AltAz() {
    Paint(true, true);
}
void cLatLongView::DrawMe_Sights() {
    Paint(false, false);
}

void cLatLongView::Paint(bool labels, bool frames) {
    if (!form_) return;
    {
        QPainter p(&form_->Form_Picture());
        const DrawingObjects& d = Drawing();
        if (labels) {
            p.setFont(d.Normal);
            p.setPen(Qt::black);
            const bool stacked = Layout == LatLongLayout::AltAz;
            const char* first = Layout == LatLongLayout::LatLong
                                    ? "Latitude"
                                    : (Layout == LatLongLayout::ShaDec ? "Declination" : "Alt");
            const char* second = Layout == LatLongLayout::LatLong
                                     ? "Longitude"
                                     : (Layout == LatLongLayout::ShaDec ? "S.H.A." : "Az");
            if (stacked) {
                const Rect a = {MyLatFrame.Left - LabelsOffset, MyLatFrame.Top, MyLatFrame.Left,
                                MyLatFrame.Bottom};
                const Rect b = {MyLongtFrame.Left - LabelsOffset, MyLongtFrame.Top,
                                MyLongtFrame.Left, MyLongtFrame.Bottom};
                p.fillRect(To_QRect(a.United(b)), Qt::white);
                Draw_Aligned(p, a, first, 0);
                Draw_Aligned(p, b, second, 0);
            } else {
                const Rect a = {MyLatFrame.Left, MyLatFrame.Top - LabelsOffset, MyLatFrame.Right,
                                MyLatFrame.Top};
                const Rect b = {MyLongtFrame.Left, MyLongtFrame.Top - LabelsOffset,
                                MyLongtFrame.Right, MyLongtFrame.Top};
                p.fillRect(To_QRect(a.United(b)), Qt::white);
                Draw_Aligned(p, a, first, 0);
                Draw_Aligned(p, b, second, 0);
            }
        }
        p.fillRect(To_QRect(MyLatFrame), Qt::white);
        p.fillRect(To_QRect(MyLongtFrame), Qt::white);
        if (frames) {
            Draw_3D_Frame(p, MyLatFrame, true);
            Draw_3D_Frame(p, MyLongtFrame, true);
        }
        p.setFont(Font_Of(FontType));
        p.setPen(Qt::black);
        Draw_Aligned(p, MyLatRect, Q(First_String()), 2);
        Draw_Aligned(p, MyLongtRect, Q(Second_String()), 2);
        form_->Draw_Open_Edit(p);
    }
    Rect area = MyLatFrame.United(MyLongtFrame);
    if (Layout == LatLongLayout::AltAz) {
        area.Left -= LabelsOffset;
    } else {
        area.Top -= LabelsOffset;
    }
    form_->Update_Window(area);
}

}  // namespace kelmoran
