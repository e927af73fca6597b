// What the window-layer benchmarks share.
#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace kelmoran::bench {

// A key pressed and released on `w`, as the keyboard sends it.
inline void Send_Key(QWidget* w, int key, const QString& text) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(w, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(w, &release);
}

}  // namespace kelmoran::bench
