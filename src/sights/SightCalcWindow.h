// The working sheet of one sight, in a window of its own opened by the Calculations menu
// of the Sights screen: the lines of the working in two columns, with the menus that
// choose the form, the sailings, the ellipsoid and the terms shown. It only shows, and
// works the row afresh when the row changes or is reduced again.
#pragma once

#include <QAction>
#include <QImage>
#include <QMainWindow>
#include <map>
#include <string>

#include "printing/cPrint_Book.h"
#include "sights/SightCalc.h"

namespace kelmoran {

class SightCalcWindow : public QMainWindow {
    Q_OBJECT
  public:
    explicit SightCalcWindow(const SightSet& set, QWidget* parent = nullptr);

    // Works row `row` again with the options checked (Trigger_ReCalc) and repaints.
    void Trigger_ReCalc(int row);

    const SightCalc_Sheet& Sheet() const { return sheet_; }
    // "&Print": the sheet as the window shows it, scaled to one page.
    PagesPrint Print_Content() const;
    const SightCalc_Options& Options() const { return options_; }
    // The menu item of a caption ("Astronomical Data", "&WGS 84 Ellipsoid", ...).
    QAction* Menu_Action(const std::string& caption) const;
    // The picture of the sheet as last painted.
    const QImage& Picture() const { return picture_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Build_Menus();
    void Options_From_Menus();
    void Draw();
    void Paint_Sheet(QPainter& p, QSize size) const;

    const SightSet& set_;
    SightCalc_Options options_;
    SightCalc_Sheet sheet_;
    int row_ = 0;
    QImage picture_;
    std::map<std::string, QAction*> actions_;
};

}  // namespace kelmoran
