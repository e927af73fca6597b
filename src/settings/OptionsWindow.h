// The Options dialogue: one modal window with a tab strip and the page of one tab, all
// painted on one off-screen picture and hit-tested by rectangles. Each tab is a class of
// its own (OptionsTab); the calling screen's key decides which of them show. Values go
// straight to shared state through the Options model; "Cancel" puts the copy back.
#pragma once

#include <QDialog>
#include <QImage>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "shell/Drawing.h"
#include "shell/M_SubClass.h"
#include "shell/cDatesView.h"
#include "shell/cLatLongView.h"
#include "shell/cSubClass.h"
#include "shell/myComboView.h"

namespace kelmoran {

class HelpPopup;
class OptionsWindow;

// Opens the modal Options dialogue for the screen `ownerKey` ("AltAz", "Clox", "NavPlan",
// "Sights", ...), on tab `tab` (internal name, "" = first); true when closed with OK.
bool Show_Options(QWidget* parent, const std::string& ownerKey, const std::string& tab = {});

// A rectangle of a tab that answers a click, with the help key of what lies there.
struct OptionsHot {
    Rect Area;
    std::string HelpKey;
    std::function<void(int32_t button)> Click;  // null: help only
    bool Enabled = true;
};

// One tab page. It paints its controls and lists its hot rectangles at every paint.
class OptionsTab {
  public:
    explicit OptionsTab(OptionsWindow& window) : W(window) {}
    virtual ~OptionsTab() = default;
    virtual std::string Name() const = 0;
    // Paints the page inside `page` and adds its hot rectangles to the window.
    virtual void Paint(QPainter& p, const Rect& page) = 0;
    // An edit opened by this tab committed.
    virtual void Edit_Commit(const EditSession&, double, const std::string&) {}
    // A lat/long pair or the date strip of the tab changed.
    virtual void LatLong_Change(cLatLong&) {}
    virtual void Date_Change(double) {}
    // The right-button drag of the Columns tab.
    virtual void Mouse_Move(int32_t, int32_t, int32_t) {}
    virtual void Mouse_Up(int32_t, int32_t, int32_t) {}
    // The combos, lat/long pairs and date strips of the tab, for the window's mouse.
    std::vector<myComboView*> Combos;
    std::vector<cLatLongView*> Pairs;
    cDatesView* Strip = nullptr;

  protected:
    OptionsWindow& W;
};

// Makes the tab of internal name `name`, or null for an unknown name.
std::unique_ptr<OptionsTab> Make_Options_Tab(const std::string& name, OptionsWindow& window);

class OptionsWindow : public QDialog,
                      public PictureForm,
                      public cEditTarget,
                      public cLatLongOwner,
                      public cDatesOwner,
                      public SysMsgSink {
    Q_OBJECT
  public:
    // Opens the session for `ownerKey` (the copy for Cancel is taken here).
    OptionsWindow(QWidget* parent, const std::string& ownerKey, const std::string& tab);
    ~OptionsWindow() override;

    // PictureForm
    QImage& Form_Picture() override { return picture_; }
    QWidget* Form_Window() const override;
    void Redraw_Cell(const Rect&) override { Draw(); }

    // cEditTarget, cLatLongOwner, cDatesOwner
    void Edit_Commit(const EditSession& s, double value, const std::string& text) override;
    EditCanvas* Edit_Form() override { return this; }
    void LatLong_Change(cLatLong& sender) override;
    void MyDates_DateChange(cDates& sender, double jd) override;
    void MyDates_CalenderChg(cDates&, bool) override {}
    void MyDates_TZChange(cDates&, int32_t) override {}
    std::string Owner_Type() const override { return "Options"; }

    // SysMsgSink: the canvas's events through its hook.
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseUp(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_KeyDown(int32_t key, int32_t shift) override;
    void SysMsg_KeyPress(int32_t character) override;
    void SysMsg_FocusChange(int32_t active) override;

    // The tab strip: names shown, the tab on show, its rectangles.
    const std::vector<std::string>& Tab_Names() const;
    int32_t Current_Tab() const;
    void Select_Tab(int32_t index);
    OptionsTab* Tab() const { return tab_.get(); }
    Rect Tab_Rect(int32_t index) const;
    Rect OK_Rect() const { return okRect_; }
    Rect Cancel_Rect() const { return cancelRect_; }
    // The hot rectangles of the page as last painted, and the one under a point.
    const std::vector<OptionsHot>& Hots() const { return hots_; }
    const OptionsHot* Hot_At(int32_t x, int32_t y) const;
    // The help key under a point ("" for none): the page's, then the tab strip's.
    std::string Help_Key_At(int32_t x, int32_t y) const;
    HelpPopup& Popup() { return *popup_; }
    QWidget* Canvas() const;

    // Paints the strip, the page and the buttons, and asks for a repaint.
    void Draw();
    // What tabs use while painting.
    void Add_Hot(const Rect& r, const std::string& key, std::function<void(int32_t)> click,
                 bool enabled = true);
    Rect Tick(QPainter& p, int32_t x, int32_t y, const std::string& text, bool on,
              bool enabled = true);
    Rect Option(QPainter& p, int32_t x, int32_t y, const std::string& text, bool on,
                bool enabled = true);
    void Button(QPainter& p, const Rect& r, const std::string& text, bool enabled = true);
    void Field(QPainter& p, const Rect& r, const std::string& text, int32_t align = 2);
    void Text(QPainter& p, int32_t x, int32_t y, const std::string& text, bool bold = false,
              QColor ink = Qt::black);
    void Group(QPainter& p, const Rect& r, const std::string& caption);
    // Opens an edit of `field` of class `cls` on `cell`.
    void Begin_Field_Edit(const std::string& cls, const std::string& field, const Rect& cell,
                          double value, const std::string& text);

    // The buttons.
    void OK_Click();
    void Cancel_Click();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

  private:
    class Canvas_;
    void Release_Controls();

    QImage picture_;
    Canvas_* canvas_ = nullptr;
    cSubClass hook_;
    std::unique_ptr<OptionsTab> tab_;
    std::vector<OptionsHot> hots_;
    std::vector<Rect> tabRects_;
    Rect okRect_, cancelRect_;
    std::unique_ptr<HelpPopup> popup_;
    bool closing_ = false;
};

}  // namespace kelmoran
