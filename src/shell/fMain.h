// The main window: the menu bar of the shell, the client area in which the grid screens
// take turns, and the platform side of the shell (message boxes, clock, help).
#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <array>
#include <memory>
#include <vector>

#include "shell/M_Kelmoran.h"
#include "shell/M_SubClass.h"
#include "shell/cSubClass.h"
#include "shell/UiScreen.h"
#include "voyage/cNavPlan_Files.h"

namespace kelmoran {

class AlmanacWindow;
class HelpPopup;
class SightsWindow;

class fMain : public QMainWindow, public ShellHost, public SysMsgSink {
    Q_OBJECT
public:
    explicit fMain(QWidget* parent = nullptr);
    ~fMain() override;

    // ShellHost
    MsgAnswer Message_Box(const std::string& text, const std::string& title,
                          MsgButtons buttons) override;
    MySystemTime Now_UTC() override;
    std::unique_ptr<cScreen> Make_Screen(const std::string& key) override;
    bool Screen_Available(int windowIndex) override;
    void Open_Separate_Screen(int windowIndex) override;
    void Update_Sights() override;
    void Update_Atlas() override;
    void End_Edit(bool commit) override;
    void Repaint() override;
    void Menus_Changed() override;
    void Unload_Main() override;
    void Save_Settings() override;
    bool Open_Help_File() override;
    void Open_Mail() override;
    void Open_Updates_Page() override;
    void Remove_Help_Popup() override;
    void Show_Intro_Message() override;

    // "    &Options    " of the menu bar: the dialogue for the screen that is showing.
    void mnuOptions_Click();
    // The help pop-up of the client area, and the Non-Recurring Message last shown.
    HelpPopup& Popup() { return *popup_; }
    QMessageBox* Intro_Box() const { return intro_; }
    int Intros_Shown = 0;

    // A file named on the command line: a voyage plan opens on the Voyage screen, a set of
    // sights in the Sights window; anything else is refused with a message and the program
    // goes on as usual.
    void Open_Command_Line_File(const QString& path);
    // The Almanac window, made on first use and shown.
    AlmanacWindow* Show_Almanac();
    // "Print Book": the item of `index` to the printer, or to a PDF file where there is
    // no printer.
    void mnuBook_Click(int index);
    QAction* Book_Action(int index) const { return book_[static_cast<size_t>(index)]; }

    // The menu actions, for tests and the keyboard.
    QAction* File_Action(int index) const { return file_[static_cast<size_t>(index)]; }
    // "Save as PDF...", beside "&Print".
    QAction* Save_PDF_Action() const { return savePdf_; }
    QAction* Window_Action(int index) const { return window_[static_cast<size_t>(index)]; }
    QAction* Reset_Time_Action() const { return update_; }
    QAction* Find_Star_Action() const { return search_; }
    QAction* Gpx_Import_Action() const { return gpxImport_; }
    QAction* Gpx_Export_Action() const { return gpxExport_; }
    QAction* Undo_Action(int index) const { return undo_[static_cast<size_t>(index)]; }
    QAction* Help_Action(int index) const { return help_[static_cast<size_t>(index)]; }
    QAction* Options_Action() const { return options_; }
    UiScreen* Current_Ui_Screen() const;
    // The Sights window while it is open.
    SightsWindow* Sights_Window() const;
    // The client area, in which the screens paint, and its hook.
    QWidget* Client() const;
    cSubClass& Hook() { return hook_; }

    // The hook's events of the client area, passed on to the current screen; the keys go
    // to an open edit first.
    void SysMsg_VChange(int32_t pos) override;
    void SysMsg_HChange(int32_t pos) override;
    void SysMsg_MouseUp(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_Resize(int32_t width, int32_t height) override;
    void SysMsg_FocusChange(int32_t active) override;
    void SysMsg_hScrollColmShift(int32_t colm) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;
    void SysMsg_KeyPress(int32_t character) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    class ClientArea;
    void Build_Menus();
    void Shell_Closing();

    SysMsgSink* Screen_Sink() const;

    ClientArea* client_ = nullptr;
    cSubClass hook_;
    QMenu* fileMenu_ = nullptr;
    QMenu* windowMenu_ = nullptr;
    QMenu* helpMenu_ = nullptr;
    QMenu* bookMenu_ = nullptr;
    std::array<QAction*, 12> file_{};
    std::array<QAction*, 10> window_{};
    std::array<QAction*, 5> help_{};
    std::array<QAction*, 7> book_{};
    std::array<QAction*, 2> undo_{};
    QAction* savePdf_ = nullptr;
    QAction* options_ = nullptr;
    QAction* update_ = nullptr;
    QAction* search_ = nullptr;
    bool closing_ = false;
    std::unique_ptr<AlmanacWindow> almanac_;
    QPointer<SightsWindow> sights_;
    std::unique_ptr<HelpPopup> popup_;
    QPointer<QMessageBox> intro_;
    cNavPlan_Files planFiles_{this};
    QAction* gpxImport_ = nullptr;  // the Voyage screen's routes of chart plotters
    QAction* gpxExport_ = nullptr;

  public:
    // The plan items of the File menu (tests choose their files through it).
    cNavPlan_Files& Plan_Files() { return planFiles_; }
};

}  // namespace kelmoran
