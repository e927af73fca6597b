// A table screen: AltAz, Solar Bodies ("Planets") and Moon Phases ("Lunations"). It owns
// its date strip, the grid model and the cMainForm that paints it, takes the rows of its
// moment from the row calculations, and answers the shell's operations, the mouse and the
// keys. It paints on its own off-screen picture and never works out a row itself.
#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <functional>
#include <string>
#include <vector>

#include "shell/DateStripScreen.h"
#include "shell/Grid_Model.h"
#include "shell/Screen_Rows.h"
#include "shell/cMainForm.h"

namespace kelmoran {

class cSubClass;

// The row calculations the screens call; the defaults are those of Screen_Rows. A test or
// a benchmark may put its own in place.
struct RowSources {
    std::function<AltAzRows(double jd, bool catalogueNumbers)> AltAz;
    std::function<std::vector<int32_t>(const AltAzRows&, int32_t, bool)> Sort;
    std::function<ColumnTitle()> Title;
    std::function<TableRows(double jd, int32_t rows, bool seconds)> Planets;
    std::function<TableRows(double jd)> Lunations;
    std::function<MainPage(double jd, bool seconds)> Main;
};
RowSources& Row_Sources();
// The row calculations of Screen_Rows.
RowSources Screen_Row_Sources();

class cGeneralForm : public DateStripScreen {
  public:
    // `key` is the screen's key (NewScreenType); `window` shows the picture and `hook`
    // holds its scroll bars.
    cGeneralForm(const std::string& key, QWidget* window = nullptr, cSubClass* hook = nullptr);

    // cScreen
    void Load() override;
    void CalcDates() override;
    void Menu_PopUp(const std::string& caption) override;
    void Restore_Layout() override;
    void Kill_Activities(const CursorState& state) override;
    void mnuPrint() override;
    void mnuSave_PDF() override;
    void mnuPrint_Eclipse() override;

    // UiScreen
    void Resize(QSize size) override;

    // SysMsgSink
    void SysMsg_VChange(int32_t pos) override;
    void SysMsg_hScrollColmShift(int32_t colm) override;
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseUp(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseScroll(int32_t delta, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;

    // The heading pop-up's items for position `position`: the captions of mnuPopUp, a
    // separator, "Auto-Size Columns", then "Insert Column" and its items.
    std::vector<std::string> Heading_Menu(int32_t position) const;
    // Tests and screenshots choose from pop-ups through this instead of a menu; an
    // "Insert Column" item is handed over as "Insert Column/<title>".
    std::function<std::string(const std::vector<std::string>& captions)> Menu_Chooser;

    void mnuSortAscending(int32_t column) { Sort_By(column, true); }
    void mnuSortDescending(int32_t column) { Sort_By(column, false); }
    void Restore_Order() { Sort_By(-1, true); }
    void mnuAutoWidthAll();
    void mnuAutoWidth(int32_t position);
    void SetScrollBars();

    GridModel& Grid() { return grid_; }
    const GridModel& Grid() const { return grid_; }
    bool MyDRwarning() const { return drWarning_; }
    // The AltAz rows as calculated, in their natural order, and the order shown. Their
    // cell texts have gone to the grid (in the order shown); the sort keys and body
    // numbers stay here.
    const AltAzRows& AltAz_Data() const { return altaz_; }
    const std::vector<int32_t>& Row_Order() const { return order_; }
    // Times the rows were calculated (each CalcDates).
    int32_t Calculations = 0;

  protected:
    // Paints the strip and the grid on the picture and asks the window to show it.
    void Draw();

  private:
    void Set_Geometry();
    // Puts the AltAz texts on the grid in the order of the sort in force: those of rows
    // just calculated (`freshRows`), or the grid's own ones rearranged.
    void Apply_AltAz(bool freshRows);
    void Sort_By(int32_t column, bool ascending);
    void Insert_Column(const std::string& title);
    void Show_Heading_Menu(int32_t position, int32_t x, int32_t y);

    cSubClass* hook_ = nullptr;
    bool drWarning_ = false;
    GridModel grid_;
    cMainForm form_;
    AltAzRows altaz_;
    std::vector<int32_t> order_;
    int32_t sortColumn_ = -1;
    bool sortAscending_ = true;
    bool catalogueNumbers_ = false;
    bool widened_ = false;  // the opening widths have been fitted to the first rows
    int32_t popupPosition_ = -1;
    int menuEclipse_ = -1;  // Moon Phases: the eclipse the row pop-up offers, or -1
    // The last click on a line between headings or in the corner, for the double click.
    QElapsedTimer clock_;
    qint64 lastClick_ = 0;
    int32_t lastSpot_ = -3;
};

}  // namespace kelmoran
