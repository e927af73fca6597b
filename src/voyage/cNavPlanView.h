// The Voyage screen ("NavPlan"): the plan grid with the Main ETD and Main ETA date strips
// and the default speed box above it, painted on its own off-screen picture. Every cell
// text comes from the plan model (Populate_MainData); a typed value goes through the edit
// engine and the plan's own edit operations; the row menu inserts, deletes, clears, locks
// and hides.
#pragma once

#include <QImage>
#include <functional>
#include <string>
#include <vector>

#include "shell/Drawing.h"
#include "shell/Grid_Model.h"
#include "shell/M_SubClass.h"
#include "shell/UiScreen.h"
#include "shell/cDatesView.h"
#include "shell/cMainForm.h"
#include "voyage/cNavPlan_Model.h"

class QWidget;

namespace kelmoran {

class cSubClass;

// Opens the Options dialogue for a screen on a tab ("NavPlan", "Voy Plan"); true when it
// closed with OK. Empty until the program connects its Options dialogue: the items that
// lead there are then not offered.
using Options_Opener =
    std::function<bool(QWidget* parent, const std::string& ownerKey, const std::string& tab)>;
Options_Opener& OpenOptions();

class cNavPlan : public UiScreen, public PictureForm, public cDatesOwner, public SysMsgSink,
                 public cEditTarget {
  public:
    explicit cNavPlan(QWidget* window = nullptr, cSubClass* hook = nullptr);

    // cScreen
    std::string ClassType() const override { return "NavPlan"; }
    void Load() override;
    void Force_Update() override;
    void SetDates() override { Set_Dates(); }
    void CalcDates() override;
    void Menu_PopUp(const std::string& caption) override;
    void Restore_Layout() override;
    void Kill_Activities(const CursorState& state) override;
    void Set_Visible(bool visible) override { visible_ = visible; }
    void mnuPrint() override;
    void mnuSave_PDF() override;

    // UiScreen
    const QImage& Picture() const override { return picture_; }
    void Resize(QSize size) override;

    // PictureForm
    QImage& Form_Picture() override { return picture_; }
    QWidget* Form_Window() const override { return window_; }
    void Redraw_Cell(const Rect& cell) override;

    // cDatesOwner: the ETD and ETA strips.
    void MyDates_DateChange(cDates& sender, double jd) override;
    void MyDates_CalenderChg(cDates& sender, bool julian) override;
    void MyDates_TZChange(cDates& sender, int32_t minutes) override;
    EditCanvas* Edit_Form() override { return this; }
    std::string Owner_Type() const override { return "fMain"; }
    void Open_Time_Options() override;

    // cEditTarget: a committed cell or the speed box.
    void Edit_Commit(const EditSession& s, double value, const std::string& text) override;

    // SysMsgSink
    void SysMsg_VChange(int32_t pos) override;
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseUp(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;
    void SysMsg_KeyPress(int32_t character) override;

    // The strips, from the plan: the ETD and ETA and their zones, and whether they can be
    // used (not while the plan holds no way point).
    void Set_Dates();
    // The local-mean-time labels of the strips.
    void Reset_LMT();
    // Rebuilds the texts from the plan and repaints (after any change of the plan).
    void Populate();
    // The speed box: opens the edit of the default speed ("Changes affect all unlocked
    // rows").
    void Edit_Speed();
    // Begins the edit of the cell under the cursor, with a first key or none; false when
    // the cell cannot be edited.
    bool Edit_Cell(int32_t firstKey);
    // The help pop-up's key of the point (x, y): the strips ("Main ETD", "Main ETA", or
    // "ETD Disabled", "ETA Disabled" while the plan holds no way point), the speed box
    // ("Default Speed"), a line between headings, or a column's heading; "" for none.
    std::string Help_Key(int32_t x, int32_t y) const;

    GridModel& Grid() { return grid_; }
    const NavPlan_Page& Page() const { return page_; }
    cDatesView& EtdDates() { return etd_; }
    cDatesView& EtaDates() { return eta_; }
    const Rect& Speed_Box() const { return speedBox_; }
    bool Remarks_Shown() const { return remarks_; }
    // The menu last offered (row or heading) and the choice of tests and screenshots.
    std::vector<std::string> Last_Menu;
    std::function<std::string(const std::vector<std::string>& captions)> Menu_Chooser;
    // The messages of the plan, shown in a box; tests may take them instead.
    std::function<void(const Plan_Message&)> Show_Message;

  private:
    void Set_Geometry();
    void Draw();
    void Paint_Speed(QPainter& p);
    void After_Plan_Change();
    void Show_Menu(const std::vector<std::string>& items, int32_t x, int32_t y);
    int32_t Selected_Count(int32_t row) const;
    int32_t Cursor_Line_Row() const;

    QWidget* window_ = nullptr;
    cSubClass* hook_ = nullptr;
    QImage picture_;
    bool visible_ = false;
    bool remarks_ = false;
    GridModel grid_;
    cMainForm form_;
    cDatesView etd_;
    cDatesView eta_;
    Rect speedBox_;
    NavPlan_Page page_;
    int32_t editColumn_ = -1;   // column of the cell being edited; -2 the speed box
    int32_t menuRow_ = -1;      // plan row of the row menu
    int32_t menuPosition_ = -1; // grid position the menu was opened on
    WheelNotches wheel_;
    bool drawnAfterCommit_ = false;  // the closing edit need not draw the picture again

  public:
    static constexpr uint32_t kRemarksInk = 0x202080;  // the remarks lines
};

}  // namespace kelmoran
