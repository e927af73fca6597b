// Kelmoran: celestial navigation at sea.
#include <QApplication>

#include "shell/fMain.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Kelmoran");
    kelmoran::fMain window;
    window.show();
    return QApplication::exec();
}
