// The program's help book: HTML pages installed beside the program in the folder "help",
// shown in a window of the program's own (contents, back, forward, search), so that it
// works without a network or a browser.
#pragma once

#include <QMainWindow>
#include <QString>

class QLineEdit;
class QListWidget;
class QTextBrowser;

namespace kelmoran {

// The folder of the book: "help" beside the program, unless a test has set another.
extern QString Help_Book_Folder;
// The book's contents page in that folder; empty when the book is missing.
QString Help_Book_Path();

class HelpWindow : public QMainWindow {
    Q_OBJECT
  public:
    // Opens the book at its contents page.
    explicit HelpWindow(const QString& contentsPage, QWidget* parent = nullptr);

    QTextBrowser* Browser() const { return browser_; }
    QListWidget* Contents() const { return contents_; }
    // Finds `words` in the page on show (from the caret on, wrapping once); when the page
    // has none, the contents list keeps only the pages that hold them.
    bool Search(const QString& words);
    // Every page listed again.
    void Clear_Search();

  private:
    void Fill_Contents();

    QTextBrowser* browser_ = nullptr;
    QListWidget* contents_ = nullptr;
    QLineEdit* search_ = nullptr;
    QString folder_;
};

// Opens (or brings up) the help window; false when the book is missing.
bool Open_Help_Book(QWidget* parent);

}  // namespace kelmoran
