// Helpers of the headless window suites: points, wheel events, screens and pictures.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QWheelEvent>

#include "shell/cGeneralForm.h"
#include "shell/fMain.h"

namespace kelmoran::ui_test {

inline QPoint Centre(const Rect& r) {
    return QPoint((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
}

inline void Wheel(QWidget* w, QPoint at, int delta, Qt::KeyboardModifiers mods = {}) {
    QWheelEvent e(at, w->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, mods,
                  Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e);
}

// Picks an entry of the "&Screen" menu and returns the grid screen that shows.
inline cGeneralForm* Open_Screen(fMain& w, int index) {
    w.Window_Action(index)->trigger();
    QApplication::processEvents();
    return dynamic_cast<cGeneralForm*>(w.Current_Ui_Screen());
}

// How many pixels of a rectangle of an image are dark: something has been drawn there.
inline int Dark_Pixels(const QImage& image, const QRect& r) {
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (image.valid(x, y) && qGray(image.pixel(x, y)) < 80) ++n;
    return n;
}

// Writes `image` to <build>/<folder>/<name>.png, for looking at.
inline void Save_Png(const QImage& image, const char* folder, const char* name) {
    ASSERT_FALSE(image.isNull()) << name;
    QDir dir(KELMORAN_BINARY_DIR);
    dir.mkpath(folder);
    EXPECT_TRUE(image.save(dir.filePath(QString(folder) + "/" + name + ".png"))) << name;
}

}  // namespace kelmoran::ui_test
