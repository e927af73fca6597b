// The Star Atlas's options: the view, what is drawn, and the star limits. The dialogue is
// modeless: each change is applied to the atlas at once.
#pragma once

#include <QDialog>
#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace kelmoran {

class PlotOptionsWindow : public QDialog {
    Q_OBJECT
  public:
    explicit PlotOptionsWindow(QWidget* parent = nullptr);

    // Shows the options in force (after the atlas changed them itself).
    void Load_Options();

    QRadioButton *VisStars = nullptr, *NorthernStars = nullptr, *SouthernStars = nullptr,
                 *EquatorialStars = nullptr;
    QCheckBox *ShowConstellations = nullptr, *ShowCyrillic = nullptr, *ShowDesigs = nullptr,
              *ShowNames = nullptr, *ShowGuides = nullptr, *ShowBoundaries = nullptr,
              *ShowRA = nullptr, *MinorPlanets = nullptr, *PopUpDetails = nullptr,
              *Option1 = nullptr, *ShowNorthUp = nullptr, *ShowVariables = nullptr;
    QComboBox *MainStarCombo = nullptr, *BkGndStarsCombo = nullptr;
    QLineEdit* MyHdgTxt = nullptr;
    QLabel* AltCaption = nullptr;

    // Called after every change: the atlas takes the options.
    std::function<void()> ChangeDisplay;

  private:
    void Take();
    bool loading_ = false;
};

}  // namespace kelmoran
