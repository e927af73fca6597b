#include "shell/File_Dialogs.h"

#include <QDir>
#include <QFileDialog>
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

QString Open_File_Name(QWidget* parent, const QString& title, const QString& filter) {
    return Remember_Dialog_Folder(QFileDialog::getOpenFileName(parent, title, Dialog_Folder(), filter));
}

QString Save_File_Name(QWidget* parent, const QString& title, const QString& filter,
                       const QString& suggestedName) {
    return Remember_Dialog_Folder(
        QFileDialog::getSaveFileName(parent, title, Dialog_Start(suggestedName), filter));
}

}  // namespace kelmoran
