#include "shell/HelpWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QRegularExpression>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolBar>

#include "shell/M_Kelmoran.h"

namespace kelmoran {

QString Help_Book_Folder;

namespace {

// The book beside the program (the build folder), else where an installation puts it:
// share/kelmoran/help under the program's prefix.
QString Folder() {
    if (!Help_Book_Folder.isEmpty()) return Help_Book_Folder;
    const QDir program(QCoreApplication::applicationDirPath());
    const QString beside = program.filePath("help");
    if (QFileInfo::exists(beside)) return beside;
    return QDir::cleanPath(program.filePath("../share/kelmoran/help"));
}

QString Read_Page(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(f.readAll());
}

QString Title_Of(const QString& html, const QString& fallback) {
    static const QRegularExpression title("<title>(.*?)</title>",
                                          QRegularExpression::CaseInsensitiveOption);
    const auto m = title.match(html);
    return m.hasMatch() ? m.captured(1).trimmed() : fallback;
}

QString Plain_Text(const QString& html) {
    QTextDocument doc;
    doc.setHtml(html);
    return doc.toPlainText();
}

}  // namespace

QString Help_Book_Path() {
    const QString path = QDir(Folder()).filePath(shell_text::HelpFileName);
    return QFileInfo::exists(path) ? path : QString();
}

HelpWindow::HelpWindow(const QString& contentsPage, QWidget* parent)
    : QMainWindow(parent), folder_(QFileInfo(contentsPage).absolutePath()) {
    setWindowTitle("Kelmoran Help");
    resize(900, 640);
    auto* split = new QSplitter(this);
    contents_ = new QListWidget(split);
    browser_ = new QTextBrowser(split);
    browser_->setOpenExternalLinks(false);
    browser_->setSearchPaths({folder_});
    split->setStretchFactor(1, 3);
    setCentralWidget(split);

    QToolBar* bar = addToolBar("Help");
    bar->setMovable(false);
    QAction* back = bar->addAction("< Back", browser_, &QTextBrowser::backward);
    QAction* forward = bar->addAction("Forward >", browser_, &QTextBrowser::forward);
    bar->addAction("Contents", browser_, [this, contentsPage] {
        Clear_Search();
        browser_->setSource(QUrl::fromLocalFile(contentsPage));
    });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    bar->addSeparator();
    search_ = new QLineEdit(bar);
    search_->setPlaceholderText("Search");
    search_->setClearButtonEnabled(true);
    bar->addWidget(search_);
    connect(search_, &QLineEdit::returnPressed, this, [this] { Search(search_->text()); });
    connect(search_, &QLineEdit::textChanged, this, [this](const QString& t) {
        if (t.isEmpty()) Clear_Search();
    });

    Fill_Contents();
    connect(contents_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item) browser_->setSource(QUrl::fromLocalFile(item->data(Qt::UserRole).toString()));
    });
    browser_->setSource(QUrl::fromLocalFile(contentsPage));
}

void HelpWindow::Fill_Contents() {
    contents_->clear();
    // The pages in the order of their file names (they begin with their number).
    const QDir dir(folder_);
    for (const QString& name : dir.entryList({"*.html"}, QDir::Files, QDir::Name)) {
        const QString path = dir.filePath(name);
        auto* item = new QListWidgetItem(Title_Of(Read_Page(path), name), contents_);
        item->setData(Qt::UserRole, path);
    }
}

bool HelpWindow::Search(const QString& words) {
    const QString w = words.trimmed();
    if (w.isEmpty()) {
        Clear_Search();
        return false;
    }
    if (browser_->find(w)) return true;
    QTextCursor start = browser_->textCursor();
    start.movePosition(QTextCursor::Start);
    browser_->setTextCursor(start);
    if (browser_->find(w)) return true;
    // Not on this page: the contents keep the pages that have it.
    bool any = false;
    for (int i = 0; i < contents_->count(); ++i) {
        QListWidgetItem* item = contents_->item(i);
        const bool has = Plain_Text(Read_Page(item->data(Qt::UserRole).toString()))
                             .contains(w, Qt::CaseInsensitive);
        item->setHidden(!has);
        any = any || has;
    }
    return any;
}

void HelpWindow::Clear_Search() {
    for (int i = 0; i < contents_->count(); ++i) contents_->item(i)->setHidden(false);
}

bool Open_Help_Book(QWidget* parent) {
    const QString page = Help_Book_Path();
    if (page.isEmpty()) return false;
    static QPointer<HelpWindow> window;
    if (!window) {
        window = new HelpWindow(page, parent);
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->show();
    window->raise();
    window->activateWindow();
    return true;
}

}  // namespace kelmoran
