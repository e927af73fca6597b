// The eclipse window: the eclipse in hand from the Moon Phases table, its text panel and
// either the world map of its shadow ("Show Map") or the plan of the Moon's passage
// through the Earth's shadow ("Show Plan"). Everything is painted on the window's own
// picture; the controls are painted buttons hit-tested by rectangles, each with its tooltip.
#pragma once

#include <QImage>
#include <QPainterPath>
#include <QWidget>
#include <string>
#include <vector>

#include "eclipses/EclipseMapView.h"
#include "eclipses/Eclipse_Window_Model.h"
#include "printing/cPrint_Book.h"

namespace kelmoran {

class EclipseScreenWindow : public QWidget {
  public:
    explicit EclipseScreenWindow(EclipseTable& table, QWidget* parent = nullptr);

    // Shows row `row` of the table (its greatest eclipse), as after "Next Eclipse".
    void Show_Row(int row);
    // After the Moon Phases table has been filled again: the eclipse shown stays if the
    // table still holds it (the row in hand set to it), else the year's first is shown.
    void Table_Refilled();
    // The captions of the controls: "Previous Eclipse", "Next Eclipse", "<", ">" (the two
    // buttons of "Select Time"), "Path of Eclipse", "Show Plan", "Show Map".
    QRect Control_Rect(const std::string& caption) const;
    bool Control_Enabled(const std::string& caption) const;
    std::string Tooltip_At(QPoint at) const;
    // Acts as a click on a control.
    void Press(const std::string& caption);

    int Current() const { return table_.Current; }
    double Minute() const { return minute_; }
    bool Showing_Plan() const { return plan_; }
    bool Showing_Path() const { return path_; }
    const std::vector<EclipsePanelLine>& Panel() const { return lines_; }
    const std::vector<EclipsePanelLine>& Local_Panel() const { return local_.Lines; }
    const QImage& Picture() const { return picture_; }
    QRect Map_Rect() const { return mapRect_; }
    // The screen pixel of a place (degrees) on the map as drawn.
    QPoint Map_Pixel(double lat, double lon) const;
    // Times the complete path has been computed (it is kept until the eclipse changes).
    int Path_Computations() const { return pathComputations_; }
    // The print of the eclipse shown: its title and table of phases over the map (or the
    // plan) as the window shows it, scaled to the page.
    PagesPrint Print_Content() const;

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    bool event(QEvent*) override;

  private:
    struct Control {
        std::string Caption;
        QRect Box;
        std::string Tip;
        bool Enabled = true;
        bool Down = false;  // a toggle that is on
    };
    void Layout();
    void Compute_Minute();
    void Redraw();
    void Paint_Panel(QPainter& p);
    void Paint_Control(QPainter& p, const Control& c);
    const Control* Control_Of(const std::string& caption) const;

    EclipseTable& table_;
    QImage picture_;
    std::vector<EclipsePanelLine> lines_;
    LocalPanel local_;
    std::vector<Control> controls_;
    EclipseMinutes minutes_;
    double minute_ = 0.0;
    bool plan_ = false;
    bool path_ = false;
    EclipseMapLayers layers_;
    int pathRow_ = -1;
    double shownPhase_ = 0.0;  // PhaseJD of the eclipse shown
    int pathComputations_ = 0;
    QRect mapRect_;
    QRect panelRect_;
    float sx_ = 1.0f, sy_ = 1.0f;
    QPainterPath coast_;
    QSize coastSize_;
};

// Opens (or brings up) the program's eclipse window on row `row` of Eclipses.
EclipseScreenWindow* Show_Eclipse_Window(QWidget* parent, int row);
// "Print &Eclipse": eclipse `row` (or, for -1, the one the window shows) to the printer, or
// to a PDF file with `toPdf`.
void Print_Eclipse(QWidget* parent, int row, bool toPdf);
// Tells the eclipse window, if open, that Eclipses has been filled again.
void Eclipses_Refilled();

}  // namespace kelmoran
