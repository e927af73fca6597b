// The platform's folders for User.Dat.
#include "settings/User_Folders.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace kelmoran {

PlatformFolders Query_Platform_Folders() {
    PlatformFolders f;
    f.Documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
    f.AppData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString();
    f.Program = QCoreApplication::instance() ? QCoreApplication::applicationDirPath().toStdString()
                                             : QDir::currentPath().toStdString();
    return f;
}

void Find_User_Folder() { Find_User_Folder(Query_Platform_Folders()); }

}  // namespace kelmoran
