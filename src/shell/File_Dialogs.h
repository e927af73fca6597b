// The open and save dialogues of plans, clocks and sights. The first one of a run opens in
// the user's documents folder; each later one opens where the last one was left.
#pragma once

#include <QString>

class QWidget;

namespace kelmoran {

// The chosen path, or "" when the user cancelled. `filter` is in Qt's form,
// e.g. "Voyage Files (*.Voy)".
QString Open_File_Name(QWidget* parent, const QString& title, const QString& filter);
QString Save_File_Name(QWidget* parent, const QString& title, const QString& filter,
                       const QString& suggestedName = {});

// The folder the next dialogue opens in.
QString Dialog_Folder();

}  // namespace kelmoran
