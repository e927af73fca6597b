// The Sights window: a window of its own beside the grids, with its date strip (the time
// of the fix), the table of sight rows typed through the edit engine, a drop-down of the
// candidate bodies on each row, the fix panel and the plotting sheet; its menus open and
// save .Sight files, choose the size of the ellipse, show the working of a sight and put
// the position into the voyage plan.
#pragma once

#include <QAction>
#include <QImage>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "printing/cPrint_Book.h"
#include "shell/Drawing.h"
#include "shell/M_SubClass.h"
#include "shell/cDatesView.h"
#include "shell/cLatLongView.h"
#include "shell/cSubClass.h"
#include "shell/myComboView.h"
#include "sights/PlotSheet.h"
#include "sights/SightCalcWindow.h"
#include "sights/Sights.h"
#include "sights/Sights_Table.h"

namespace kelmoran {

class SightsWindow : public QMainWindow,
                     public PictureForm,
                     public cDatesOwner,
                     public cEditTarget,
                     public SightsHost,
                     public SysMsgSink {
    Q_OBJECT
  public:
    // `maxSight` is the last row of the table; -1 takes it from the height of the screen's
    // work area.
    explicit SightsWindow(int maxSight = -1);
    ~SightsWindow() override;

    // The shell's update: if the screen is not up to date, the strip takes the shared
    // moment (the fix time), the rows are reduced again and the sheet is redrawn.
    void Force_Update();
    // Reduces every row again and redraws (after a change of the filter or settings).
    void Refilter();

    // The Options dialogue for this screen ("Sights", its tab), true when closed with OK;
    // the shell connects it. Without it the Options item is disabled.
    std::function<bool(QWidget*, const std::string&, const std::string&)> OpenOptions;
    // Message boxes and file dialogues go through these when set (tests answer them).
    std::function<MsgAnswer(const std::string&, const std::string&, MsgButtons)> Message_Answer;
    std::function<std::string(bool save, const std::string& suggested)> File_Chooser;

    // The menu items: File (0 "&New Set" .. 5 "E&xit Sights"), Options, Calculations,
    // the three ellipse sizes, Insert Position in Plan.
    QAction* File_Action(int index) const { return file_[static_cast<size_t>(index)]; }
    QAction* Options_Action() const { return options_; }
    QAction* Calculations_Action() const { return calcs_; }
    QAction* Ellipse_Action(Ellipse_Size s) const { return ellipse_[static_cast<size_t>(s)]; }
    QAction* Insert_Action() const { return insert_; }

    // What the screen holds and shows.
    SightSet& Set() { return set_; }
    const Sights_Layout& Layout() const { return layout_; }
    const Sheet_Plot& Plot() const { return plot_; }
    Rect Sheet_Area() const { return sheet_; }
    float Plot_Scale() const { return plot_.Plot_Scale; }
    Ellipse_Size Ellipse() const { return ellipse_size_; }
    const cDatesView& Strip() const { return strip_; }
    const cDates& Row_Dates(int row) const { return *rowDates_[static_cast<size_t>(row)]; }
    const myCombo& Combo(int row) const { return *combos_[static_cast<size_t>(row)]; }
    const cLatLong& Fix_Position() const { return fixPos_; }
    Rect Fix_Label_Rect() const { return fixLabel_; }
    QWidget* Client() const;
    const QImage& Picture() const { return picture_; }
    int MySightNo() const { return mySightNo_; }
    SightCalcWindow* Calc_Window() const { return calc_; }
    // The pop-up on show (empty when none) and where.
    const std::vector<std::string>& Popup_Lines() const { return popupLines_; }

    // PictureForm
    QImage& Form_Picture() override { return picture_; }
    QWidget* Form_Window() const override;
    void Redraw_Cell(const Rect& cell) override;

    // cDatesOwner: the strip is the fix time; a row's date-time group reports its commit.
    void MyDates_DateChange(cDates& sender, double jd) override;
    void MyDates_CalenderChg(cDates& sender, bool julian) override;
    void MyDates_TZChange(cDates& sender, int32_t minutes) override;
    void DTG_Change(double moment, int32_t index) override;
    EditCanvas* Edit_Form() override { return this; }
    std::string Owner_Type() const override { return "Sights"; }
    void Open_Time_Options() override;

    // cEditTarget: the altitude and azimuth of a row.
    void Edit_Commit(const EditSession& s, double value, const std::string& text) override;

    // SightsHost
    MsgAnswer Message_Box(const std::string& text, const std::string& title,
                          MsgButtons buttons) override;
    void Row_Blanked(int row) override;
    void Row_Reduced(int row) override;
    void Load_Plan(const std::string& path) override;
    void Settings_Accepted() override;
    void Load_Done() override;

    // The client area's events through its hook.
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_Resize(int32_t width, int32_t height) override;
    void SysMsg_FocusChange(int32_t active) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;
    void SysMsg_KeyPress(int32_t character) override;

    // The menu actions.
    void mnuNewSet();
    void mnuOpen();
    // Reads the .Sight file at `path` with the questions of a load (a file chosen in the
    // dialogue, or named on the command line).
    Load_Result Open_File(const std::string& path);
    void mnuSave();
    void mnuSaveAs();
    void mnuOptions();
    // "&Print": the window's table, fix and plotting sheet on one page.
    void mnuPrint();
    PagesPrint Print_Content();
    void mnuShowCalcs();
    void mnuConfidence(Ellipse_Size size);
    void mnuInsertInPlan();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    class ClientArea;
    void Build_Menus();
    void Configure_Form(QSize size);
    void Place_Row_Controls();
    // The fix time from the shared moment, and the DR then.
    void Take_Fix_Time();
    // Works the sheet afresh and repaints everything.
    void Replot();
    void Draw();
    void Draw_Table(QPainter& p);
    void Draw_Fix_Panel(QPainter& p);
    // The drop-downs of the used rows, over the table.
    void Paint_Combos();
    void Refresh_Combo(int row);
    void Open_Cell(int row, int column, int firstKey = 0);
    void Move_Cursor(int row, int column);
    void Select_Row(int row);
    void Remove_Popup();
    void Show_Popup();
    bool Query_Unsaved();

    SightSet set_;
    QImage picture_;
    ClientArea* client_ = nullptr;
    cSubClass hook_;
    cDatesView strip_;
    std::vector<std::unique_ptr<cDates>> rowDates_;
    std::vector<std::unique_ptr<myComboView>> combos_;
    cLatLongView fixPos_;
    Rect fixLabel_;
    Sights_Layout layout_;
    Rect sheet_;
    Sheet_Plot plot_;
    Ellipse_Size ellipse_size_ = Ellipse_Size::Large;
    float zoom_ = 1.0f;  // the wheel's scale over the one that fits the sheet
    int curRow_ = 0, curColumn_ = kColTime;
    int mySightNo_ = 0;
    QPointer<SightCalcWindow> calc_;

    std::array<QAction*, 6> file_{};
    QAction* options_ = nullptr;
    QAction* calcs_ = nullptr;
    std::array<QAction*, 3> ellipse_{};
    QAction* insert_ = nullptr;

    // The help pop-up: its words, where the mouse rests, and the timer that shows it.
    QTimer popupTimer_;
    std::vector<std::string> popupWords_;
    std::vector<std::string> popupLines_;
    QPoint popupAt_;
    QWidget* popup_ = nullptr;
    int popupRow_ = -1;
};

}  // namespace kelmoran
