// The window hook: turns the events of a window into the SysMsg_ events of its form, holds
// the window's scroll bars and steps them, by pixels, rows or whole columns by the key of
// the screen that is showing. Painting never erases first: the hooked window paints its
// off-screen picture over whatever is there.
#pragma once

#include <QObject>
#include <QPointer>
#include <QScrollBar>
#include <QWidget>
#include <string>
#include <vector>

#include "shell/M_SubClass.h"

namespace kelmoran {

class cSubClass : public QObject {
    Q_OBJECT
  public:
    explicit cSubClass(SysMsgSink* owner = nullptr);
    ~cSubClass() override;

    // Hooks `window`, unless it is hooked already (it has the property "MySubClass").
    // Returns true if this object hooked it.
    bool SubClass(QWidget* window);
    // Lets the window go: the property is removed and events flow as before.
    void Release();

    SysMsgSink* MyOwner = nullptr;
    int32_t Small_Change = 1;  // a line of the vertical bar
    std::string ScreenKey;     // the key of the screen, for the horizontal step
    // Headings of the grid's columns, in unscrolled pixels, for stepping by columns.
    std::vector<Rect> ColumnRects;
    int32_t ColumnsOnShow = 0;
    int32_t FixedPageStep = 0;  // a special window's page of columns (9), or 0

    // Range (0 .. max) and page of the bars; a bar shows only when its range exceeds its
    // page.
    void Set_VScroll_Info(int32_t max, int32_t page);
    void Set_HScroll_Info(int32_t max, int32_t page);
    // Positions of the bars; setting one moves the bar without raising an event.
    int32_t VPos() const { return vInfo_.Pos; }
    int32_t HPos() const { return hInfo_.Pos; }
    void Set_VPos(int32_t pos);
    void Set_HPos(int32_t pos);
    // The column at the left of a grid that steps by columns.
    int32_t HColumn() const { return hColumn_; }
    // Moves the bars to their start.
    void VScroll_Primer();
    void HScroll_Primer();
    // A scroll bar's request, as the window system's scroll messages carry it.
    void ScrollProc(Qt::Orientation bar, ScrollAction action, int32_t track = 0);

    QScrollBar* VBar() const { return vBar_; }
    QScrollBar* HBar() const { return hBar_; }
    QWidget* Window() const { return window_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Place_Bars();
    void Sync_Bar(QScrollBar* bar, const ScrollInfo& info);
    void On_Action(Qt::Orientation bar, int action);

    QPointer<QWidget> window_;
    QPointer<QScrollBar> vBar_, hBar_;
    ScrollInfo vInfo_, hInfo_;
    int32_t hColumn_ = 0;
    bool syncing_ = false;
};

// The window system's key code of a Qt key, or 0 for keys the program has no use for.
int32_t Virtual_Key(int qtKey);

}  // namespace kelmoran
