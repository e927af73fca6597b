#include "shell/File_Dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

#include "settings/File_IO.h"

namespace kelmoran {

namespace {

// The folder of the last file chosen in this run; "" until then.
QString lastFolder;

QString Remember(const QString& path) {
    if (!path.isEmpty()) lastFolder = QFileInfo(path).absolutePath();
    return path;
}

}  // namespace

QString Dialog_Folder() {
    if (!lastFolder.isEmpty()) return lastFolder;
    if (!DocumentsFolder.empty()) return QString::fromStdString(DocumentsFolder);
    return QDir::homePath();
}

QString Open_File_Name(QWidget* parent, const QString& title, const QString& filter) {
    return Remember(QFileDialog::getOpenFileName(parent, title, Dialog_Folder(), filter));
}

QString Save_File_Name(QWidget* parent, const QString& title, const QString& filter,
                       const QString& suggestedName) {
    const QString start = suggestedName.isEmpty()
                              ? Dialog_Folder()
                              : QDir(Dialog_Folder()).filePath(QFileInfo(suggestedName).fileName());
    return Remember(QFileDialog::getSaveFileName(parent, title, start, filter));
}

}  // namespace kelmoran
