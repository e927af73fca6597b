// The main window's side of files named on the command line (the desktop opens voyage
// plans and sights with the program this way).
#include <QFileInfo>

#include "shell/fMain.h"
#include "voyage/Voyage_File.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

void fMain::Open_Command_Line_File(const QString& path) {
    const QFileInfo info(path);
    const QString suffix = info.suffix().toLower();
    const std::string name = info.fileName().toStdString();
    if (suffix == "voy" || suffix == "clox") {
        std::string message;
        if (!Load_Plan(path.toStdString(), Voyage, message)) {
            Message_Box(message, "Open Voyage Plan", MsgButtons::OK);
            return;
        }
        const int index = Window_Index_Of(screen_key::NavPlan);
        if (Screen_Available(index)) mnuWindow_Click(index);
        return;
    }
    Message_Box("Kelmoran opens voyage plans (.Voy) and sights (.Sight).\n\"" + name +
                    "\" is neither, so the program starts as usual.",
                "Kelmoran", MsgButtons::OK);
}

}  // namespace kelmoran
