#include "shell/fMain.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QUrl>

#include "settings/File_IO.h"
#include "settings/OptionsWindow.h"
#include "shell/HelpPopup.h"
#include "shell/HelpWindow.h"
#include "shell/Help_PopUp_Tests.h"
#include "shell/M_Help.h"
#include "settings/SettingsRecord.h"
#include "settings/System_TimeZone.h"
#include "settings/User_Folders.h"
#include "almanac/AlmanacWindow.h"
#include "printing/cPrint_Book.h"
#include "shell/Drawing.h"
#include "shell/M_Edit.h"
#include "shell/SplashScreen.h"
#include "shell/cGeneralForm.h"
#include "sights/SightsWindow.h"
#include "stars/FindStarWindow.h"
#include "stars/PlotStarsWindow.h"
#include "stars/M_Resources.h"
#include "voyage/CloxView.h"
#include "voyage/Gpx_Route.h"
#include "voyage/Plan_Undo.h"
#include "voyage/Voyage_File.h"
#include "voyage/cNavPlanView.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace {

// Where "&Contact" and "Check for &Updates" lead.
constexpr const char* kSupportMail = "mailto:support@kelmoran.example";
constexpr const char* kUpdatesPage = "https://kelmoran.example/updates";

void Apply(QAction* action, const MenuItem& item) {
    if (item.Caption == "-") {
        action->setSeparator(true);
    } else {
        action->setSeparator(false);
        action->setText(Q(item.Caption));
    }
    action->setVisible(item.Visible);
    action->setEnabled(item.Enabled);
}

}  // namespace

// The client area: copies the current screen's picture, never erasing first.
class fMain::ClientArea : public QWidget {
public:
    explicit ClientArea(fMain* owner) : QWidget(owner), owner_(owner) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setFocusPolicy(Qt::StrongFocus);
    }
    bool focusNextPrevChild(bool) override { return false; }  // Tab is a key of the screens

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        if (UiScreen* screen = owner_->Current_Ui_Screen()) {
            p.drawImage(0, 0, screen->Picture());
        } else {
            p.fillRect(rect(), Qt::white);
        }
    }
    void resizeEvent(QResizeEvent*) override {
        if (UiScreen* screen = owner_->Current_Ui_Screen()) screen->Resize(size());
    }

private:
    fMain* owner_;
};

fMain::fMain(QWidget* parent) : QMainWindow(parent), hook_(this) {
    setWindowTitle("Kelmoran");
    Create_Drawing_Objects(32);
    Measure_Fixed_Layout();
    setFont(Drawing().Normal);
    client_ = new ClientArea(this);
    setCentralWidget(client_);
    resize(900, 600);
    hook_.SubClass(client_);
    client_->setFocus();
    client_->setMouseTracking(true);
    popup_ = std::make_unique<HelpPopup>(client_, fmain_Help_PopUp_Tests);

    Reset_Shell(this);
    // The Voyage and Clocks screens open Options through this.
    OpenOptions() = Show_Options;
    Shell.Plan = &planFiles_;
    Build_Menus();
    // The settings name the default voyage plan: it is read, or the empty plan made.
    const double now = Calc_JD(Now_UTC(), false);
    Default_Plan_Hooks.Read_Plan = [now](const std::string& path) {
        std::string message;
        if (!Load_Plan(path, Voyage, message)) Voyage.New_Plan(now, Settings.FixSpeed);
    };
    Default_Plan_Hooks.Make_Empty_Plan = [now] { Voyage.New_Plan(now, Settings.FixSpeed); };
    Find_User_Folder();
    Load_User_Dat();
    if (Settings.AutoTimeZone) Read_System_TimeZone();
    Shell.CurrentJD = Calc_JD(Now_UTC(), false);
    // The star catalogue's built-in tables: names, designations, constellations, the base
    // tier, the navigational stars and the main bodies.
    Load_Star_Tables();
    Create_Main_Screen();
    if (UiScreen* screen = Current_Ui_Screen()) screen->Resize(client_->size());
}

fMain::~fMain() {
    popup_.reset();
    Shell_Closing();
    Shell.Host = nullptr;
    Shell.Plan = nullptr;
}

void fMain::Build_Menus() {
    const MenuModel& m = Shell.Menus;
    QMenuBar* bar = menuBar();

    fileMenu_ = bar->addMenu("    &File    ");
    for (size_t i = 0; i < file_.size(); ++i) {
        file_[i] = fileMenu_->addAction(Q(m.mnuFile[i].Caption));
        const int index = static_cast<int>(i);
        connect(file_[i], &QAction::triggered, this, [index] { File_Menu_Action(index); });
    }
    // "Save as PDF..." stands after "&Print": the same pages to a file, with no printer.
    savePdf_ = new QAction("Save as P&DF...", this);
    fileMenu_->insertAction(file_[10], savePdf_);
    connect(savePdf_, &QAction::triggered, this, [] {
        Kill_Activities();
        if (Shell.CurrentScreen) Shell.CurrentScreen->mnuSave_PDF();
    });
    gpxImport_ = new QAction(gpx_text::ImportItem, this);
    gpxExport_ = new QAction(gpx_text::ExportItem, this);
    fileMenu_->insertActions(file_[8], {gpxImport_, gpxExport_});
    connect(gpxImport_, &QAction::triggered, this, [this] {
        Kill_Activities();
        planFiles_.Import_Route();
    });
    connect(gpxExport_, &QAction::triggered, this, [this] {
        Kill_Activities();
        planFiles_.Export_Route();
    });
    options_ = bar->addAction(Q(m.mnuOptions.Caption));
    connect(options_, &QAction::triggered, this, [this] { mnuOptions_Click(); });
    windowMenu_ = bar->addMenu("    &Screen    ");
    for (size_t i = 0; i < window_.size(); ++i) {
        window_[i] = windowMenu_->addAction(Q(m.mnuWindow[i].Caption));
        const int index = static_cast<int>(i);
        connect(window_[i], &QAction::triggered, this, [index] { mnuWindow_Click(index); });
    }
    update_ = bar->addAction(Q(m.mnuUpdate.Caption));
    connect(update_, &QAction::triggered, this, [] {
        Kill_Activities();
        Reset_Time();
    });
    search_ = bar->addAction(Q(m.mnuSearch.Caption));
    connect(search_, &QAction::triggered, this, [this] { Open_Find_Star_For_Screen(this); });
    for (size_t i = 0; i < undo_.size(); ++i) {
        undo_[i] = bar->addAction(Q(m.mnuUndo[i].Caption));
        const int index = static_cast<int>(i);
        connect(undo_[i], &QAction::triggered, this, [index] { mnuUndo_Click(index); });
    }
    helpMenu_ = bar->addMenu("    &Help    ");
    for (size_t i = 0; i < help_.size(); ++i) {
        help_[i] = helpMenu_->addAction(Q(m.mnuHelp[i].Caption));
        const int index = static_cast<int>(i);
        connect(help_[i], &QAction::triggered, this, [index] { mnuHelp_Click(index); });
    }
    bookMenu_ = bar->addMenu("Print Book");
    for (size_t i = 0; i < book_.size(); ++i) {
        book_[i] = bookMenu_->addAction(Q(m.mnuBook[i].Caption));
        const int index = static_cast<int>(i);
        connect(book_[i], &QAction::triggered, this, [this, index] { mnuBook_Click(index); });
    }
    Menus_Changed();
}

void fMain::Menus_Changed() {
    const MenuModel& m = Shell.Menus;
    for (size_t i = 0; i < file_.size(); ++i) Apply(file_[i], m.mnuFile[i]);
    for (size_t i = 0; i < window_.size(); ++i) Apply(window_[i], m.mnuWindow[i]);
    Apply(update_, m.mnuUpdate);
    Apply(search_, m.mnuSearch);
    for (size_t i = 0; i < undo_.size(); ++i) Apply(undo_[i], m.mnuUndo[i]);
    for (size_t i = 0; i < help_.size(); ++i) Apply(help_[i], m.mnuHelp[i]);
    const bool voyage = Shell.ScreenName == screen_key::NavPlan;
    if (gpxImport_) gpxImport_->setVisible(voyage);
    if (gpxExport_) gpxExport_->setVisible(voyage);
}

UiScreen* fMain::Current_Ui_Screen() const { return dynamic_cast<UiScreen*>(Shell.CurrentScreen); }

MsgAnswer fMain::Message_Box(const std::string& text, const std::string& title,
                             MsgButtons buttons) {
    QMessageBox box(this);
    box.setWindowTitle(Q(title));
    box.setText(Q(text));
    switch (buttons) {
        case MsgButtons::OK: box.setStandardButtons(QMessageBox::Ok); break;
        case MsgButtons::OKCancel:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            break;
        case MsgButtons::YesNoCancel:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            break;
    }
    switch (box.exec()) {
        case QMessageBox::Cancel: return MsgAnswer::Cancel;
        case QMessageBox::Yes: return MsgAnswer::Yes;
        case QMessageBox::No: return MsgAnswer::No;
        default: return MsgAnswer::OK;
    }
}

MySystemTime fMain::Now_UTC() {
    const QDateTime now = QDateTime::currentDateTimeUtc();
    MySystemTime t;
    t.wYear = static_cast<int16_t>(now.date().year());
    t.wMonth = static_cast<int16_t>(now.date().month());
    t.wDay = static_cast<int16_t>(now.date().day());
    t.wDayOfWeek = static_cast<int16_t>(now.date().dayOfWeek() % 7 + 1);
    t.wHour = static_cast<int16_t>(now.time().hour());
    t.wMinute = static_cast<int16_t>(now.time().minute());
    t.wSecond = static_cast<int16_t>(now.time().second());
    t.wMilliseconds = static_cast<int16_t>(now.time().msec());
    return t;
}

std::unique_ptr<cScreen> fMain::Make_Screen(const std::string& key) {
    std::unique_ptr<UiScreen> screen;
    if (key == screen_key::Splash) {
        screen = std::make_unique<SplashScreen>(client_);
    } else if (key == screen_key::AltAz || key == screen_key::Planets ||
               key == screen_key::Lunations) {
        screen = std::make_unique<cGeneralForm>(key, client_, &hook_);
    } else if (key == screen_key::NavPlan) {
        screen = std::make_unique<cNavPlan>(client_, &hook_);
    } else if (key == screen_key::Clox) {
        screen = std::make_unique<CloxView>(client_, &hook_);
    }
    if (screen) screen->Resize(client_->size());
    return screen;
}

bool fMain::Screen_Available(int windowIndex) {
    // The six grid screens, and the windows of their own that exist.
    return (windowIndex >= 0 && windowIndex < kGridScreenCount) ||
           windowIndex == Window_Index_Of(screen_key::Almanac) ||
           windowIndex == Window_Index_Of(screen_key::PlotStars) ||
           windowIndex == Window_Index_Of(screen_key::Sights);
}

void fMain::Open_Separate_Screen(int windowIndex) {
    if (windowIndex == Window_Index_Of(screen_key::Almanac)) Show_Almanac();
    if (windowIndex == Window_Index_Of(screen_key::PlotStars)) Open_Star_Atlas();
    if (windowIndex == Window_Index_Of(screen_key::Sights)) {
        // Sights: made on first choice, brought up on the next; it stands beside the grids.
        if (!sights_) {
            sights_ = new SightsWindow();
            sights_->OpenOptions = Show_Options;
        }
        sights_->show();
        sights_->raise();
        sights_->activateWindow();
    }
}

AlmanacWindow* fMain::Show_Almanac() {
    // Made on first opening at the shared moment, then kept with its own date to the end.
    if (!almanac_) {
        almanac_ = std::make_unique<AlmanacWindow>(this);
        almanac_->Print_Opening = [](AlmanacWindow& w) { Print_Almanac_Opening(w); };
        almanac_->Start_At(Shell.CurrentJD);
    }
    almanac_->show();
    almanac_->raise();
    almanac_->activateWindow();
    return almanac_.get();
}

void fMain::Update_Sights() {
    if (sights_) sights_->Force_Update();
}

SightsWindow* fMain::Sights_Window() const { return sights_; }

void fMain::Update_Atlas() { Update_Star_Atlas(); }

void fMain::End_Edit(bool commit) {
    if (!commit) Edit.Buffer.clear();
    kelmoran::End_Edit();
    Shell.Editing = kFalse;
}

void fMain::Repaint() { client_->update(); }

void fMain::Unload_Main() { close(); }

void fMain::Save_Settings() { Save_User_Dat(); }

bool fMain::Open_Help_File() { return Open_Help_Book(this); }

void fMain::Remove_Help_Popup() {
    if (popup_) popup_->Remove();
}

void fMain::Show_Intro_Message() {
    const std::string key = Shell.ScreenName;
    if (!Take_Intro_Pending(key)) return;
    const std::string text = Get_FirstUse_Message(key);
    if (text.empty()) return;
    // Modal to the main window; the call does not wait, so start-up goes on behind it.
    if (intro_) intro_->close();
    intro_ = new QMessageBox(QMessageBox::NoIcon, kIntroCaption, Q(text), QMessageBox::Ok, this);
    intro_->setAttribute(Qt::WA_DeleteOnClose);
    intro_->setWindowModality(Qt::WindowModal);
    intro_->open();
    ++Intros_Shown;
}

void fMain::mnuOptions_Click() {
    Kill_Activities();
    Show_Options(this, Shell.ScreenName.empty() ? screen_key::Splash : Shell.ScreenName);
    // The cursor goes back on a valid cell (Main has none).
    if (auto* form = dynamic_cast<cGeneralForm*>(Shell.CurrentScreen)) form->Grid().Move_Cursor(0);
    Repaint();
}

void fMain::Open_Mail() {
    QDesktopServices::openUrl(QUrl(QString(kSupportMail) + "?Subject=" + windowTitle()));
}

void fMain::Open_Updates_Page() { QDesktopServices::openUrl(QUrl(kUpdatesPage)); }

void fMain::closeEvent(QCloseEvent* event) {
    Kill_Activities();
    if (!Query_Exit()) {
        event->ignore();
        return;
    }
    Shell_Closing();
    event->accept();
}

void fMain::Shell_Closing() {
    if (closing_) return;
    closing_ = true;
    // The exit questions covered the sights: the window goes without asking again.
    if (sights_) {
        Shell.SightsChanged = kFalse;
        delete sights_.data();
    }
    Close_Star_Atlas();
    hook_.Release();
    Shut_Down();
}

QWidget* fMain::Client() const { return client_; }

SysMsgSink* fMain::Screen_Sink() const { return dynamic_cast<SysMsgSink*>(Shell.CurrentScreen); }

void fMain::SysMsg_VChange(int32_t pos) {
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_VChange(pos);
}
void fMain::SysMsg_HChange(int32_t pos) {
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_HChange(pos);
}
void fMain::SysMsg_MouseUp(int32_t button, int32_t shift, int32_t x, int32_t y) {
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_MouseUp(button, shift, x, y);
}
void fMain::SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) {
    popup_->Remove();
    client_->setFocus();
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_MouseDown(button, shift, x, y);
}
void fMain::SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) {
    if (x != mouse::LeaveXY) {
        popup_->Mouse_Move(x, y);
    } else {
        popup_->Remove();
    }
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_MouseMove(button, shift, x, y);
}
void fMain::SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) {
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_MouseScroll(delta, shift, x, y);
}
void fMain::SysMsg_Resize(int32_t width, int32_t height) {
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_Resize(width, height);
}
void fMain::SysMsg_FocusChange(int32_t active) {
    // Losing the window ends an edit and removes the help pop-up.
    if (!active) popup_->Remove();
    if (!active && Shell.Editing) End_Edit(true);
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_FocusChange(active);
}
void fMain::SysMsg_hScrollColmShift(int32_t colm) {
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_hScrollColmShift(colm);
}

void fMain::SysMsg_KeyDown(int32_t key, int32_t shift) {
    popup_->Remove();
    if (key == 18) return;  // Alt alone
    // Ctrl+Z and Ctrl+Y: undo and redo, where the menu offers them.
    if ((shift & mouse::Ctrl) && (key == 'Z' || key == 'Y')) {
        if (Edit.Editing) End_Edit(true);
        mnuUndo_Click(key == 'Z' ? 0 : 1);
        return;
    }
    if (Edit.Editing && Edit_Key_Down(key)) return;
    // Main has no cursor: its keys are swallowed unless an edit of its date is open.
    if (Shell.ScreenName == screen_key::Splash) return;
    if (key == 'F' && (shift & mouse::Ctrl) && Shell.ScreenName == screen_key::AltAz) {
        Open_Find_Star_For_Screen(this);
        return;
    }
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_KeyDown(key, shift);
}

void fMain::SysMsg_KeyPress(int32_t character) {
    if (Edit.Editing) {
        Edit_Key_Press(character);
        return;
    }
    if (Shell.ScreenName == screen_key::Splash) return;
    if (SysMsgSink* s = Screen_Sink()) s->SysMsg_KeyPress(character);
}

void fMain::resizeEvent(QResizeEvent* event) { QMainWindow::resizeEvent(event); }

}  // namespace kelmoran
