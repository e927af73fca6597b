// The folder the open and save dialogues of plans, clocks, sights and PDF files start in:
// the user's documents folder the first time in a run, and afterwards the folder of the
// last file chosen in any of them.
#pragma once

#include <QString>

class QWidget;

namespace kelmoran {

// The folder the next dialogue opens in.
QString Dialog_Folder();
// `name`'s file name in that folder (a suggestion for a save), or the folder if `name` is "".
QString Dialog_Start(const QString& name);
// A path the user chose: its folder is where the next dialogue starts. Returns `path`.
QString Remember_Dialog_Folder(const QString& path);

// The open and save dialogues from that folder; "" when the user cancelled. `filter` in
// Qt's form ("Sight Files (*.Sight);;All Files (*.*)").
QString Open_File_Name(QWidget* parent, const QString& title, const QString& filter);
QString Save_File_Name(QWidget* parent, const QString& title, const QString& filter,
                       const QString& suggestedName = {});

}  // namespace kelmoran
