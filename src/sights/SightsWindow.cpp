#include "sights/SightsWindow.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "printing/cPrint_Gateway.h"
#include "shell/File_Dialogs.h"
#include "shell/M_Edit.h"
#include "shell/M_Kelmoran.h"
#include "sights/M_Sights.h"
#include "sights/Plan_Insert.h"
#include "sights/PlotSheetView.h"
#include "sights/SightCalcWindow.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Position_Methods.h"
#include "voyage/Voyage_File.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace {

constexpr int kStripLeft = 125;
constexpr int kTableGap = 8;
constexpr int kMargin = 4;
constexpr int kUp = 38;
constexpr int kDown = 40;
const QColor kPopupYellow(255, 255, 200);
const QColor kCursor(10, 36, 106);

// The file types of the dialogues: sight files, then all files.
QString File_Filter() {
    return QString(sights_text::FileFilter) + ";;" + sights_text::AllFilter;
}

// The rows of the table for the height of the screen's work area.
int Rows_For_Screen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int height = screen ? screen->availableGeometry().height() : 768;
    return Max_Sight(height);
}

}  // namespace

// The client area: copies the picture, never erasing first.
class SightsWindow::ClientArea : public QWidget {
  public:
    explicit ClientArea(SightsWindow* owner) : QWidget(owner), owner_(owner) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setFocusPolicy(Qt::StrongFocus);
    }
    bool focusNextPrevChild(bool) override { return false; }  // Tab moves among the cells

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.drawImage(0, 0, owner_->picture_);
    }

  private:
    SightsWindow* owner_;
};

// The yellow box of a pop-up, its lines painted by the program.
class Popup_Box : public QWidget {
  public:
    Popup_Box(QWidget* parent, std::vector<std::string> lines)
        : QWidget(parent), lines_(std::move(lines)) {
        const QFontMetrics fm(Drawing().Normal);
        int w = 0;
        for (const std::string& l : lines_) w = std::max(w, fm.horizontalAdvance(Q(l)));
        resize(w + 10, static_cast<int>(lines_.size()) * fm.height() + 6);
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.fillRect(rect(), kPopupYellow);
        p.setPen(Qt::black);
        p.drawRect(rect().adjusted(0, 0, -1, -1));
        p.setFont(Drawing().Normal);
        const QFontMetrics fm(p.font());
        int y = 3 + fm.ascent();
        for (const std::string& l : lines_) {
            p.drawText(5, y, Q(l));
            y += fm.height();
        }
    }

  private:
    std::vector<std::string> lines_;
};

SightsWindow::SightsWindow(int maxSight)
    : set_(maxSight >= 0 ? maxSight : Rows_For_Screen()), hook_(this), strip_(this), fixPos_(this) {
    setWindowTitle("Sights");
    setAttribute(Qt::WA_DeleteOnClose);
    setFont(Drawing().Normal);
    set_.Host = this;
    set_.My_TZ_Bias = TZ_Bias;
    client_ = new ClientArea(this);
    setCentralWidget(client_);
    hook_.ScreenKey = screen_key::Sights;
    hook_.SubClass(client_);

    strip_.Configure_Sight_Dates(this, 0);
    strip_.ClassType = "Dates";
    const int rows = set_.Max_Sight() + 1;
    for (int r = 0; r < rows; ++r) {
        auto dates = std::make_unique<cDates>();
        dates->Configure_for_DTG(r, this);
        // A sight is timed to the second, in the zone of the set.
        dates->RoundToMinute = dates->ClipSeconds = kFalse;
        dates->FollowsSummerTime = kFalse;
        rowDates_.push_back(std::move(dates));
        auto combo = std::make_unique<myComboView>(this);
        combo->Name = "SightCombo";
        combo->event1 = [this, r](myCombo& c) {
            Select_Candidate(set_, r, c.MyListPosn);
            Shell.SightsChanged = kTrue;
            Row_Reduced(r);
        };
        combos_.push_back(std::move(combo));
    }
    fixPos_.ClassOwnerType = "Sights";
    fixPos_.FontType = FontKind::Bold;
    fixPos_.ResetDecPlaces(1);

    popupTimer_.setInterval(250);
    popupTimer_.setSingleShot(true);
    connect(&popupTimer_, &QTimer::timeout, this, [this] { Show_Popup(); });

    Build_Menus();
    Shell.SightsOpen = kTrue;
    const int height = 250 + rows * layout_.Row_Height + 420;
    resize(1060, height);
    Configure_Form(client_->size());
    Shell.Up_To_Date(screen_key::Sights) = kFalse;
    Force_Update();
}

SightsWindow::~SightsWindow() {
    if (Edit.Editing && Edit.Form == this) {
        Edit.Buffer.clear();
        End_Edit(true);
    }
    hook_.Release();
    if (calc_) calc_->close();
    Shell.SightsOpen = kFalse;
    Shell.SightsChanged = kFalse;
}

QWidget* SightsWindow::Client() const { return client_; }
QWidget* SightsWindow::Form_Window() const { return client_; }

void SightsWindow::Build_Menus() {
    QMenuBar* bar = menuBar();
    QMenu* file = bar->addMenu("    &File    ");
    const std::array<const char*, 6> captions = {"&New Set", "&Open",  "&Save",
                                                 "Save &As", "&Print", "E&xit Sights"};
    for (size_t i = 0; i < captions.size(); ++i) file_[i] = file->addAction(captions[i]);
    connect(file_[0], &QAction::triggered, this, [this] { mnuNewSet(); });
    connect(file_[1], &QAction::triggered, this, [this] { mnuOpen(); });
    connect(file_[2], &QAction::triggered, this, [this] { mnuSave(); });
    connect(file_[3], &QAction::triggered, this, [this] { mnuSaveAs(); });
    connect(file_[4], &QAction::triggered, this, [this] { mnuPrint(); });
    connect(file_[5], &QAction::triggered, this, [this] { close(); });

    options_ = bar->addAction("    &Options    ");
    connect(options_, &QAction::triggered, this, [this] { mnuOptions(); });
    calcs_ = bar->addAction("    &Calculations    ");
    connect(calcs_, &QAction::triggered, this, [this] { mnuShowCalcs(); });
    QMenu* confidence = bar->addMenu("    &Ellipse Size");
    auto* group = new QActionGroup(this);
    for (size_t i = 0; i < ellipse_.size(); ++i) {
        ellipse_[i] = confidence->addAction(kEllipseSizeNames[i]);
        ellipse_[i]->setCheckable(true);
        group->addAction(ellipse_[i]);
        const auto size = static_cast<Ellipse_Size>(i);
        connect(ellipse_[i], &QAction::triggered, this, [this, size] { mnuConfidence(size); });
    }
    ellipse_[static_cast<size_t>(ellipse_size_)]->setChecked(true);
    insert_ = bar->addAction("    Insert Position in &Plan    ");
    connect(insert_, &QAction::triggered, this, [this] { mnuInsertInPlan(); });
}

// ---------------------------------------------------------------- layout and the update

void SightsWindow::Configure_Form(QSize size) {
    if (size.isEmpty()) return;
    picture_ = QImage(size, QImage::Format_RGB32);
    picture_.fill(Qt::white);
    strip_.Set_HotSpots();
    const int top = strip_.MyFrame.Bottom + kTableGap;
    const QFontMetrics bold(Drawing().Bold);
    const int two = bold.horizontalAdvance("00");
    const int colon = bold.horizontalAdvance(":") + 2;
    const int slash = bold.horizontalAdvance("/ ");
    const int zone = bold.horizontalAdvance("Z+10.5");
    const int timeWidth = 4 + two + slash + 3 * two + 2 * colon + 6 + zone + 4;
    layout_ = Make_Sights_Layout(set_.Max_Sight() + 1, timeWidth, top);
    layout_.Left = kMargin;
    Place_Row_Controls();
    // The fix panel to the right of the strip: the kind of position, then where it is.
    const int x = strip_.MyFrame.Right + 8;
    fixLabel_ = {x, strip_.MyFrame.Top + 8, x + 118, strip_.MyFrame.Bottom - 4};
    fixPos_.MyLatLongPosn(fixLabel_.Right + 6, strip_.MyFrame.Top);
    const Rect table = layout_.Table();
    sheet_ = {kMargin, table.Bottom + kTableGap, size.width() - kMargin, size.height() - kMargin};
}

void SightsWindow::Place_Row_Controls() {
    const QFontMetrics bold(Drawing().Bold);
    const int two = bold.horizontalAdvance("00") + 2;
    const int colon = bold.horizontalAdvance(":") + 2;
    const int slash = bold.horizontalAdvance("/ ");
    for (int r = 0; r <= set_.Max_Sight(); ++r) {
        const Rect cell = layout_.Cell(r, kColTime);
        cDates& d = *rowDates_[static_cast<size_t>(r)];
        const int top = cell.Top + 2, bottom = cell.Bottom - 2;
        int x = cell.Left + 4;
        d.MyDayLabel = {x, top, x + two, bottom};
        x += two + slash;
        d.MyHourLabel = {x, top, x + two, bottom};
        x += two + colon;
        d.MyMinuteLabel = {x, top, x + two, bottom};
        x += two + colon;
        d.MySecondLabel = {x, top, x + two, bottom};
        x += two + 4;
        d.MyLMTlabel = {x, top, cell.Right - 2, bottom};
        d.MyDateGrid = d.MyDayLabel;
        d.MyTimeGrid = d.MyHourLabel.United(d.MyLMTlabel);
        d.MyFrame = cell;
        const Rect body = layout_.Cell(r, kColBody);
        myComboView& c = *combos_[static_cast<size_t>(r)];
        c.Box = {body.Left + 1, body.Top + 1, body.Right - 1, body.Bottom - 1};
        c.LineHeight = Date_Metrics.SmallHeight + 4;
    }
}

void SightsWindow::Take_Fix_Time() {
    Set_Fix_Time(set_.Fix_Sight, Shell.CurrentJD, TZ_Bias);
}

void SightsWindow::Force_Update() {
    if (Shell.Up_To_Date(screen_key::Sights)) return;
    // A change of zone moves the entered times of the rows into it.
    set_.My_TZ_Bias = TZ_Bias;
    strip_.Set_Calendar(Shell.CalendarChoice != 0);
    strip_.My_TZ_Bias(TZ_Bias);
    strip_.MyTime(Shell.CurrentJD + TZ_Bias / 1440.0);
    Take_Fix_Time();
    for (int r = 0; r <= set_.Max_Sight(); ++r) Reduce_Sight(set_, r, false);
    Shell.Up_To_Date(screen_key::Sights) = kTrue;
    for (int r = 0; r <= set_.Max_Sight(); ++r) Refresh_Combo(r);
    Replot();
    if (calc_) calc_->Trigger_ReCalc(mySightNo_);
}

void SightsWindow::Refilter() {
    Shell.Up_To_Date(screen_key::Sights) = kFalse;
    Force_Update();
}

void SightsWindow::Replot() {
    if (sheet_.Empty()) return;
    const int w = sheet_.Width(), h = sheet_.Height();
    const float scale = Choose_Plot_Scale(set_, w, h, ellipse_size_) * zoom_;
    const QFontMetrics fm(Drawing().Normal);
    Sheet_Font font;
    font.Width = [&fm](const std::string& s) { return fm.horizontalAdvance(Q(s)); };
    font.Height = fm.height();
    plot_ = PreparePlot(set_, w, h, scale, ellipse_size_, font);
    fixPos_.Set_Latitude(plot_.Fix.Fix_Lat);
    fixPos_.Set_Longitude(plot_.Fix.Fix_Longt);
    Draw();
}

// ---------------------------------------------------------------- painting

void SightsWindow::Draw() {
    if (picture_.isNull()) return;
    {
        QPainter p(&picture_);
        p.fillRect(picture_.rect(), Qt::white);
        strip_.Draw(p);
        Draw_Fix_Panel(p);
        Draw_Table(p);
        Paint_Plot_Sheet(p, plot_, sheet_);
    }
    fixPos_.DrawMe();
    Paint_Combos();
    client_->update();
}

void SightsWindow::Paint_Combos() {
    for (int r = 0; r <= set_.Max_Sight(); ++r)
        if (set_.Sights[r].Row_Used != 0) combos_[static_cast<size_t>(r)]->SysMsg_Paint();
}

void SightsWindow::Draw_Fix_Panel(QPainter& p) {
    p.fillRect(To_QRect(fixLabel_), Qt::white);
    p.setFont(Drawing().Large);
    p.setPen(plot_.Fix.DR_Warning ? QColor::fromRgb(kFixColour) : QColor(Qt::black));
    Draw_Aligned(p, fixLabel_, Q(plot_.Fix.Type_of_Fix), 2);
}

void SightsWindow::Draw_Table(QPainter& p) {
    const DrawingObjects& d = Drawing();
    const Rect table = layout_.Table();
    p.fillRect(To_QRect(table), Qt::white);
    p.setFont(d.Bold);
    for (int c = 0; c < kSightColumns; ++c) {
        const Rect h = layout_.Heading(c);
        p.fillRect(To_QRect(h), d.Face);
        Draw_3D_Frame(p, h, false);
        p.setPen(Qt::black);
        Draw_Aligned(p, h, Q(Sight_Heading(c)), 1);
    }
    for (int r = 0; r <= set_.Max_Sight(); ++r) {
        const Sight_Record& s = set_.Sights[r];
        const bool warned = !Sights_Help_PopUp_Words(set_, r).empty();
        for (int c = 0; c < kSightColumns; ++c) {
            const Rect cell = layout_.Cell(r, c);
            p.setPen(d.GridGrey);
            p.drawRect(To_QRect(cell).adjusted(0, 0, -1, -1));
            if (c == kColBody && s.Row_Used != 0) continue;  // the drop-down paints itself
            p.setFont(c == kColNumber ? d.Bold : d.Normal);
            p.setPen(c == kColNumber && warned ? QColor::fromRgb(kFixColour) : QColor(Qt::black));
            if (c == kColTime) {
                if (s.Row_Used == 0) continue;
                const cDates& t = *rowDates_[static_cast<size_t>(r)];
                const auto& st = t.MySystemTime;
                p.setFont(d.Bold);
                Draw_Aligned(p, t.MyDayLabel, QString::asprintf("%02d", st.wDay), 1);
                Draw_Aligned(p, {t.MyDayLabel.Right, cell.Top, t.MyHourLabel.Left, cell.Bottom},
                             "/", 1);
                Draw_Aligned(p, t.MyHourLabel, QString::asprintf("%02d", st.wHour), 1);
                Draw_Aligned(p, {t.MyHourLabel.Right, cell.Top, t.MyMinuteLabel.Left, cell.Bottom},
                             ":", 1);
                Draw_Aligned(p, t.MyMinuteLabel, QString::asprintf("%02d", st.wMinute), 1);
                Draw_Aligned(p,
                             {t.MyMinuteLabel.Right, cell.Top, t.MySecondLabel.Left, cell.Bottom},
                             ":", 1);
                Draw_Aligned(p, t.MySecondLabel, QString::asprintf("%02d", st.wSecond), 1);
                p.setFont(d.Normal);
                Draw_Aligned(p, t.MyLMTlabel, Q(t.MyLMT_Text), 0);
                continue;
            }
            const int align = c == kColNumber ? 1 : (c == kColBody ? 0 : 2);
            Draw_Aligned(p, {cell.Left + 2, cell.Top, cell.Right - 4, cell.Bottom},
                         Q(Sight_Cell_Text(set_, r, c)), align);
        }
    }
    // The cell cursor.
    if (curRow_ >= 0 && curRow_ <= set_.Max_Sight()) {
        p.setPen(QPen(kCursor, 2));
        p.drawRect(To_QRect(layout_.Cell(curRow_, curColumn_)).adjusted(1, 1, -2, -2));
    }
    Draw_Open_Edit(p);
}

void SightsWindow::Redraw_Cell(const Rect& cell) {
    QPainter p(&picture_);
    if (strip_.MyFrame.Contains(cell.Left, cell.Top)) {
        strip_.Draw(p);
        return;
    }
    Draw_Table(p);
    p.end();
    Paint_Combos();
}

void SightsWindow::Refresh_Combo(int row) {
    myComboView& c = *combos_[static_cast<size_t>(row)];
    c.SetList(Sight_Combo_Lines(set_, row));
    const Sight_Record& s = set_.Sights[row];
    if (s.Has_Body != 0 && s.Candidate_No >= 0) {
        c.SetIndex(s.Candidate_No);
    } else {
        c.MyListPosn = -1;
        c.Text.clear();
    }
    // The box shows the body's name alone.
    if (c.MyListPosn >= 0) c.Text = set_.Candidates[row][static_cast<size_t>(c.MyListPosn)].Name;
}

// ---------------------------------------------------------------- the rows

void SightsWindow::Row_Reduced(int row) {
    if (row < 0 || row > set_.Max_Sight()) return;
    Refresh_Combo(row);
    Replot();
    if (calc_ && row == mySightNo_) calc_->Trigger_ReCalc(mySightNo_);
}

void SightsWindow::Row_Blanked(int row) {
    if (row < 0 || row > set_.Max_Sight()) return;
    combos_[static_cast<size_t>(row)]->SetList({});
}

void SightsWindow::DTG_Change(double moment, int32_t index) {
    if (index < 0 || index > set_.Max_Sight()) return;
    const cDates& d = *rowDates_[static_cast<size_t>(index)];
    Enter_Sight_Time(set_, index, moment, d.MySystemTime);
    Row_Reduced(index);
}

void SightsWindow::Edit_Commit(const EditSession& s, double value, const std::string&) {
    if (s.Field == "Alt") {
        if (std::fabs(value) >= kHalfPi) {
            Beep();
            return;
        }
        Enter_Sight_Alt(set_, s.Row, value);
    } else if (s.Field == "Az") {
        Enter_Sight_Az(set_, s.Row, value);
    }
    Row_Reduced(s.Row);
}

void SightsWindow::Select_Row(int row) {
    if (row < 0 || row > set_.Max_Sight() || row == mySightNo_) return;
    mySightNo_ = row;
    if (calc_) calc_->Trigger_ReCalc(mySightNo_);
}

void SightsWindow::Move_Cursor(int row, int column) {
    curRow_ = std::clamp(row, 0, set_.Max_Sight());
    curColumn_ = std::clamp(column, static_cast<int>(kColTime), static_cast<int>(kColBody));
    Select_Row(curRow_);
    QPainter p(&picture_);
    Draw_Table(p);
    p.end();
    Paint_Combos();
    Update_Window(layout_.Table());
}

void SightsWindow::Open_Cell(int row, int column, int firstKey) {
    if (Edit.Editing) End_Edit();
    Move_Cursor(row, column);
    row = curRow_;
    const Sight_Record& s = set_.Sights[row];
    if (column == kColTime) {
        cDates& d = *rowDates_[static_cast<size_t>(row)];
        if (s.Row_Used == 0) {
            d.My_TZ_Bias(set_.My_TZ_Bias);
            d.MyTime(Start_Time_For_Row(set_, row));
        }
        d.Begin_Editing("Day");
    } else if (column == kColAlt || column == kColAz) {
        EditRequest r;
        r.Form = this;
        r.Control = this;
        r.Class = "Sights";
        r.Field = column == kColAlt ? "Alt" : "Az";
        r.Cell = layout_.Cell(row, column);
        r.Font = FontKind::Normal;
        r.Alignment = 2;
        r.Value = column == kColAlt ? s.Sextant_Alt : s.Sight_Az;
        r.Text = Sight_Cell_Text(set_, row, column);
        if (r.Text.empty()) r.Text = column == kColAlt ? "0° 00'.0" : "000°.0";
        r.Row = row;
        Begin_Edit(r);
    } else if (column == kColBody) {
        myComboView& c = *combos_[static_cast<size_t>(row)];
        c.HasFocus = true;
        c.DisplayList();
        return;
    }
    if (firstKey != 0 && Edit.Editing) Edit_Key_Press(firstKey);
}

// ---------------------------------------------------------------- the strip

void SightsWindow::MyDates_DateChange(cDates&, double jd) {
    kelmoran::MyDates_DateChange(screen_key::Sights, jd);
    Take_Fix_Time();
    Replot();
}

void SightsWindow::MyDates_CalenderChg(cDates&, bool julian) {
    kelmoran::MyDates_CalenderChg(screen_key::Sights, julian ? kTrue : kFalse);
}

void SightsWindow::MyDates_TZChange(cDates&, int32_t minutes) {
    kelmoran::MyDates_TZChange(screen_key::Sights, minutes);
    set_.My_TZ_Bias = TZ_Bias;
    Replot();
}

void SightsWindow::Open_Time_Options() {
    if (OpenOptions && OpenOptions(this, screen_key::Sights, "Time")) Refilter();
}

// ---------------------------------------------------------------- mouse and keys

void SightsWindow::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    Remove_Popup();
    client_->setFocus();
    if (Edit.Editing && Edit.Form == this && button == mouse::Left && Edit.Cell.Contains(x, y)) {
        Edit_Click(x);
        return;
    }
    for (auto& c : combos_) {
        if (c->ListVisible && !c->Box.Contains(x, y)) c->Restore_Original_Posn();
        c->HasFocus = false;
    }
    if (strip_.MyFrame.Contains(x, y)) {
        strip_.MouseDown(x, y, button, shift);
        return;
    }
    const int row = layout_.Row_At(x, y), column = layout_.Column_At(x, y);
    if (row < 0 || column < 0) {
        if (Edit.Editing) End_Edit();
        return;
    }
    if (button != mouse::Left) return;
    if (column == kColTime) {
        if (Edit.Editing) End_Edit();
        Move_Cursor(row, column);
        cDates& d = *rowDates_[static_cast<size_t>(row)];
        if (set_.Sights[row].Row_Used == 0) {
            d.My_TZ_Bias(set_.My_TZ_Bias);
            d.MyTime(Start_Time_For_Row(set_, row));
        }
        d.MouseDown(x, y, button, shift);
        return;
    }
    if (column == kColBody) {
        if (Edit.Editing) End_Edit();
        Move_Cursor(row, column);
        if (set_.Sights[row].Row_Used != 0) {
            combos_[static_cast<size_t>(row)]->HasFocus = true;
            combos_[static_cast<size_t>(row)]->SysMsg_MouseDown(x, y);
        }
        return;
    }
    Open_Cell(row, column > kColBody ? kColBody : column);
}

void SightsWindow::SysMsg_MouseMove(int32_t, int32_t, int32_t x, int32_t y) {
    const int row = layout_.Row_At(x, y);
    if (!popupLines_.empty() && row == popupRow_) return;
    Remove_Popup();
    popupWords_ = Sights_Help_PopUp_Words(set_, row);
    popupRow_ = row;
    if (popupWords_.empty()) {
        popupTimer_.stop();
        return;
    }
    popupAt_ = QPoint(x, y);
    popupTimer_.start();
}

void SightsWindow::Show_Popup() {
    if (popupWords_.empty()) return;
    Remove_Popup();
    popupLines_ = popupWords_;
    popup_ = new Popup_Box(client_, popupLines_);
    QPoint at = popupAt_ + QPoint(12, 16);
    at.setX(std::min(at.x(), client_->width() - popup_->width() - 2));
    at.setY(std::min(at.y(), client_->height() - popup_->height() - 2));
    popup_->move(at);
    popup_->show();
}

void SightsWindow::Remove_Popup() {
    popupTimer_.stop();
    popupLines_.clear();
    delete popup_;
    popup_ = nullptr;
}

void SightsWindow::SysMsg_MouseScroll(int32_t delta, int32_t, int32_t x, int32_t y) {
    // The wheel steps the field of the strip under the mouse, and over the sheet draws it
    // closer (away from the user) or further off, a quarter at a notch.
    const int steps = delta / 120;
    if (steps == 0) return;
    if (strip_.MyFrame.Contains(x, y)) {
        strip_.MouseScroll(x, y, steps);
    } else if (sheet_.Contains(x, y)) {
        zoom_ = std::clamp(zoom_ * static_cast<float>(std::pow(1.25, steps)), 1.0f / 64, 64.0f);
        Replot();
    }
}

void SightsWindow::SysMsg_Resize(int32_t width, int32_t height) {
    if (Edit.Editing && Edit.Form == this) End_Edit();
    Configure_Form(QSize(width, height));
    Replot();
}

void SightsWindow::SysMsg_FocusChange(int32_t active) {
    if (!active) {
        Remove_Popup();
        if (Edit.Editing && Edit.Form == this) End_Edit();
    }
}

void SightsWindow::SysMsg_KeyDown(int32_t key, int32_t shift) {
    Remove_Popup();
    myComboView& combo = *combos_[static_cast<size_t>(curRow_)];
    if (combo.ListVisible) {
        combo.Move_through_List(key);
        return;
    }
    const bool tab = key == vk::Tab;
    if (Edit.Editing) {
        const bool lastDateField = Edit.Handler == EditHandler::Date && Edit.Field == "Second";
        if (!tab || (Edit.Handler == EditHandler::Date && !lastDateField)) {
            Edit_Key_Down(key);
            return;
        }
        End_Edit();
    }
    if (tab) {
        int row = curRow_, column = curColumn_;
        Next_Sight_Cell(set_.Max_Sight() + 1, Settings.SightsTabDown != 0,
                        (shift & mouse::Shift) != 0, row, column);
        if (column == kColBody && set_.Sights[row].Row_Used == 0) column = kColTime;
        if (column == kColBody)
            Move_Cursor(row, column);
        else
            Open_Cell(row, column);
        return;
    }
    switch (key) {
        case kUp: Move_Cursor(curRow_ - 1, curColumn_); return;
        case kDown: Move_Cursor(curRow_ + 1, curColumn_); return;
        case vk::Left: Move_Cursor(curRow_, curColumn_ - 1); return;
        case vk::Right: Move_Cursor(curRow_, curColumn_ + 1); return;
        case vk::Delete:
            // The sight of the row is struck out.
            if (set_.Sights[curRow_].Row_Used == 0) return;
            set_.Blank_Row(curRow_);
            Shell.SightsChanged = kTrue;
            Row_Blanked(curRow_);
            Row_Reduced(curRow_);
            return;
        case vk::Return:
        case vk::F2:
            if (curColumn_ == kColBody && set_.Sights[curRow_].Row_Used == 0) return;
            Open_Cell(curRow_, curColumn_);
            return;
        default: return;
    }
}

void SightsWindow::SysMsg_KeyPress(int32_t character) {
    if (Edit.Editing) {
        Edit_Key_Press(character);
        return;
    }
    if (character <= 32 || curColumn_ == kColBody) return;
    Open_Cell(curRow_, curColumn_, character);
}

// ---------------------------------------------------------------- message boxes, files

MsgAnswer SightsWindow::Message_Box(const std::string& text, const std::string& title,
                                    MsgButtons buttons) {
    if (Message_Answer) return Message_Answer(text, title, buttons);
    if (Shell.Host) return Shell.Host->Message_Box(text, title, buttons);
    return buttons == MsgButtons::OK ? MsgAnswer::OK : MsgAnswer::Cancel;
}

bool SightsWindow::Query_Unsaved() {
    if (Shell.SightsChanged == 0) return true;
    return Message_Box(sights_text::Unsaved, sights_text::UnsavedTitle, MsgButtons::OKCancel) ==
           MsgAnswer::OK;
}

void SightsWindow::mnuNewSet() {
    if (Edit.Editing) End_Edit();
    if (!Query_Unsaved()) return;
    set_.Clear();
    Take_Fix_Time();
    Shell.SightsChanged = kFalse;
    for (int r = 0; r <= set_.Max_Sight(); ++r) Refresh_Combo(r);
    Move_Cursor(0, kColTime);
    Replot();
    if (calc_) calc_->Trigger_ReCalc(mySightNo_);
}

void SightsWindow::mnuOpen() {
    if (Edit.Editing) End_Edit();
    std::string path;
    if (File_Chooser) {
        path = File_Chooser(false, UserFolder);
    } else {
        path = Open_File_Name(this, sights_text::OpenTitle, File_Filter()).toStdString();
    }
    if (path.empty()) return;
    Open_File(path);
}

Load_Result SightsWindow::Open_File(const std::string& path) {
    if (Edit.Editing && Edit.Form == this) End_Edit();
    return Load_Sights(set_, path);
}

void SightsWindow::mnuSave() {
    if (set_.Path.empty()) {
        mnuSaveAs();
        return;
    }
    if (Edit.Editing) End_Edit();
    if (!Save_Sights(set_, set_.Path))
        Message_Box("The sights could not be saved to " + set_.Path, sights_text::UnsavedTitle,
                    MsgButtons::OK);
}

void SightsWindow::mnuSaveAs() {
    if (Edit.Editing) End_Edit();
    const std::string suggested =
        set_.Path.empty() ? Sight_File_Name(set_.Fix_Sight, UserFolder) : set_.Path;
    std::string path;
    if (File_Chooser) {
        path = File_Chooser(true, suggested);
    } else {
        path = Save_File_Name(this, sights_text::SaveTitle, File_Filter(), Q(suggested))
                   .toStdString();
    }
    if (path.empty()) return;
    if (!Save_Sights(set_, path))
        Message_Box("The sights could not be saved to " + path, sights_text::UnsavedTitle,
                    MsgButtons::OK);
}

void SightsWindow::Load_Plan(const std::string& path) {
    std::string message;
    if (!kelmoran::Load_Plan(path, Voyage, message) && !message.empty())
        Message_Box(message, sights_text::PlanHeading, MsgButtons::OK);
}

void SightsWindow::Settings_Accepted() { Update_All_Screens(screen_key::Sights); }

void SightsWindow::Load_Done() {
    // The load put the fix time and the zone of the file in use.
    strip_.My_TZ_Bias(TZ_Bias);
    strip_.MyTime(Shell.CurrentJD + TZ_Bias / 1440.0);
    for (int r = 0; r <= set_.Max_Sight(); ++r) {
        cDates& d = *rowDates_[static_cast<size_t>(r)];
        const Sight_Record& s = set_.Sights[r];
        d.My_TZ_Bias(set_.My_TZ_Bias);
        if (s.Row_Used != 0) d.MyTime(s.Sight_Time + set_.My_TZ_Bias / 1440.0);
        Refresh_Combo(r);
    }
    Take_Fix_Time();
    Update_All_Screens(screen_key::Sights);
    Replot();
    if (calc_) calc_->Trigger_ReCalc(mySightNo_);
}

// ---------------------------------------------------------------- the other menus

PagesPrint SightsWindow::Print_Content() {
    if (Edit.Editing && Edit.Form == this) End_Edit();
    PagesPrint print;
    print.Job = print_job::Sights;
    print.Word = "Sights";
    print.Count = 1;
    // The window as it stands, scaled to the page: the strip, the table, the fix and the
    // plotting sheet drawn again on the printer; the fix's position and the bodies' boxes,
    // which paint only on the window's picture, copied from it.
    const QImage picture = picture_.copy();
    std::vector<Rect> copied = {fixPos_.MyLatFrame.United(fixPos_.MyLongtFrame)};
    for (int r = 0; r <= set_.Max_Sight(); ++r)
        if (set_.Sights[r].Row_Used != 0) copied.push_back(combos_[static_cast<size_t>(r)]->Box);
    print.Paint = [this, picture, copied](QPainter& p, const QRectF& area, int32_t) {
        const double scale = std::min(area.width() / picture.width(), area.height() / picture.height());
        p.save();
        p.translate(area.left() + (area.width() - picture.width() * scale) / 2.0, area.top());
        p.scale(scale, scale);
        p.setClipRect(QRect(QPoint(0, 0), picture.size()));
        strip_.Draw(p);
        Draw_Fix_Panel(p);
        Draw_Table(p);
        Paint_Plot_Sheet(p, plot_, sheet_);
        for (const Rect& r : copied) p.drawImage(To_QRect(r), picture, To_QRect(r));
        p.restore();
    };
    return print;
}

void SightsWindow::mnuPrint() {
    // To the printer, or to a PDF file where no printer is installed.
    Print_Or_Save(Print_Content(), !Print_Hooks().Printers_Available(), this);
}

void SightsWindow::mnuOptions() {
    if (Edit.Editing) End_Edit();
    if (OpenOptions && OpenOptions(this, screen_key::Sights, "Filter")) Refilter();
}

void SightsWindow::mnuShowCalcs() {
    if (Edit.Editing) End_Edit();
    if (!calc_) calc_ = new SightCalcWindow(set_);
    calc_->Trigger_ReCalc(mySightNo_);
    calc_->show();
    calc_->raise();
}

void SightsWindow::mnuConfidence(Ellipse_Size size) {
    ellipse_size_ = size;
    ellipse_[static_cast<size_t>(size)]->setChecked(true);
    Replot();
}

void SightsWindow::mnuInsertInPlan() {
    if (Edit.Editing) End_Edit();
    const auto ask = [this](const std::string& text, const std::string& title) {
        return Message_Box(text, title, MsgButtons::OKCancel) == MsgAnswer::OK;
    };
    const Insert_Result r =
        Insert_Position_In_Plan(Voyage, set_.Fix_Sight.Sight_Time, plot_.Fix.Fix_Lat,
                                plot_.Fix.Fix_Longt, plot_.Fix.Type_of_Fix, TZ_Bias, ask);
    if (r == Insert_Result::Declined) return;
    Plan_Undo.Refresh();
    if (Shell.Host) Shell.Host->Menus_Changed();
    // Every screen that shows the plan, or a position from it, catches up.
    Update_All_Screens("");
}

void SightsWindow::showEvent(QShowEvent* event) {
    // Options is offered once the shell has connected it.
    options_->setEnabled(static_cast<bool>(OpenOptions));
    QMainWindow::showEvent(event);
}

void SightsWindow::closeEvent(QCloseEvent* event) {
    if (Edit.Editing && Edit.Form == this) End_Edit();
    if (!Query_Unsaved()) {
        event->ignore();
        return;
    }
    Shell.SightsChanged = kFalse;
    Shell.SightsOpen = kFalse;
    if (calc_) calc_->close();
    event->accept();
}

}  // namespace kelmoran
