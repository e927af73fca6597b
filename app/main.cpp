// Kelmoran: celestial navigation at sea.
//
//   kelmoran [FILE]      starts the program; a voyage plan (.Voy) or a set of sights (.Sight)
//                        given on the command line is opened at the start
//   kelmoran --version   prints the version and exits
//   kelmoran --help      prints this usage and exits
#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <cstring>

#include "shell/fMain.h"

namespace {

constexpr const char* kUsage =
    "Usage: kelmoran [FILE]\n"
    "Celestial navigation at sea: almanac, sights, voyage plan, star atlas and eclipses.\n"
    "\n"
    "  FILE        a voyage plan (.Voy) to open on the Voyage screen,\n"
    "              or a set of sights (.Sight) to open in the Sights window\n"
    "  --version   print the version and exit\n"
    "  --help      print this help and exit\n";

}  // namespace

int main(int argc, char** argv) {
    // The two informative options are answered before any window system is asked for, so
    // that they work on a machine without a display.
    const char* file = nullptr;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--version") == 0) {
            std::printf("Kelmoran %d.%d.%d\n", KELMORAN_VERSION_MAJOR, KELMORAN_VERSION_MINOR,
                        KELMORAN_VERSION_PATCH);
            return 0;
        }
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::fputs(kUsage, stdout);
            return 0;
        }
        if (argv[i][0] == '-' && argv[i][1] != '\0') {
            std::fprintf(stderr, "kelmoran: unknown option %s\n%s", argv[i], kUsage);
            return 2;
        }
        if (!file) file = argv[i];
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName("Kelmoran");
    QApplication::setDesktopFileName("org.kelmoran.Kelmoran");
    kelmoran::fMain window;
    window.show();
    if (file) {
        const QString path = QString::fromLocal8Bit(file);
        QTimer::singleShot(0, &window, [&window, path] { window.Open_Command_Line_File(path); });
    }
    return QApplication::exec();
}
