#include "shell/File_Dialogs.h"

#include <QDir>
#include <QFileInfo>

#include "settings/File_IO.h"

namespace kelmoran {

namespace {
QString lastFolder;  // "" until a file is chosen in this run
}  // namespace

QString Dialog_Folder() {
    if (!lastFolder.isEmpty()) return lastFolder;
    if (!DocumentsFolder.empty()) return QString::fromStdString(DocumentsFolder);
    return QDir::homePath();
}

QString Dialog_Start(const QString& name) {
    const QString file = QFileInfo(name).fileName();
    return file.isEmpty() ? Dialog_Folder() : QDir(Dialog_Folder()).filePath(file);
}

QString Remember_Dialog_Folder(const QString& path) {
    if (!path.isEmpty()) lastFolder = QFileInfo(path).absolutePath();
    return path;
}

}  // namespace kelmoran
