// The main window's side of files named on the command line (the desktop opens voyage
// plans and sights with the program this way).
#include <QFileInfo>

#include "shell/fMain.h"
#include "sights/SightsWindow.h"

namespace kelmoran {

void fMain::Open_Command_Line_File(const QString& path) {
    const QFileInfo info(path);
    const QString suffix = info.suffix().toLower();
    if (suffix == "voy" || suffix == "clox") {
        // A plan that cannot be read says why; the plan in use stays.
        if (planFiles_.Open_Plan_File(path.toStdString()))
            mnuWindow_Click(Window_Index_Of(screen_key::NavPlan));
        return;
    }
    if (suffix == "sight") {
        mnuWindow_Click(Window_Index_Of(screen_key::Sights));
        if (sights_) sights_->Open_File(path.toStdString());
        return;
    }
    Message_Box("Kelmoran opens voyage plans (.Voy) and sights (.Sight).\n\"" +
                    info.fileName().toStdString() + "\" is neither, so the program starts as usual.",
                "Kelmoran", MsgButtons::OK);
}

}  // namespace kelmoran
