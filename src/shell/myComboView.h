// The owner-drawn combo: its box painted on the owner's picture, and its list a child
// window under the box, painted by the program and hooked like every window.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "shell/Drawing.h"
#include "shell/M_SubClass.h"
#include "shell/cSubClass.h"
#include "shell/myCombo.h"

namespace kelmoran {

class myComboView : public myCombo, public SysMsgSink {
  public:
    explicit myComboView(PictureForm* form);
    ~myComboView() override;

    // Paints the box on the owner's picture and the list if it is open.
    void SysMsg_Paint() override;
    void Show_List(bool visible) override;
    // Hooks the list window.
    void SubClass();

    // The list window's events through its hook (list coordinates).
    void SysMsg_MouseDown(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseMove(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    void SysMsg_MouseUp(int32_t button, int32_t shift, int32_t x, int32_t y) override;
    using myCombo::SysMsg_MouseDown;
    using myCombo::SysMsg_MouseUp;

    QWidget* List_Window() const;
    // Draws the list's lines with `p` at (0, 0).
    void Draw_List(QPainter& p) const;

  private:
    class ListWindow;
    PictureForm* form_;
    // A child of the owner's window: gone with it if the window goes first.
    QPointer<ListWindow> list_;
    cSubClass hook_;
};

}  // namespace kelmoran
