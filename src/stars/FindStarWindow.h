// The Find Star dialogue: finds any star by name, by constellation and designation, by
// variable designation or by catalogue number, and shows everything about the star found.
// All lists, searches and texts come from FindStarModel; this window shows them.
#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <string>

#include "stars/FindStar_Model.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kelmoran {

class FindStarWindow : public QDialog {
    Q_OBJECT
  public:
    explicit FindStarWindow(QWidget* parent = nullptr);

    FindStarModel& Model() { return model_; }
    const FindStarLabels& Labels() const { return labels_; }

    // Sets the current star from outside (AltAz's row, the atlas) and the key of the
    // screen that opened the dialogue.
    void EntryStar(int32_t star, const std::string& ownerKey = {});
    // Shows the current star's data again (after a change of star, time or option).
    void PopulateLabels();
    // The limit combo's entry changed: tiers load under a wait cursor.
    void Set_Mag_Limit(int32_t entry);
    // A star taken from any combo.
    void SelectStar(int32_t star);
    // The search of a number box (HdTxt or HipTxt) for its text, or a step "+" / "-".
    // False (and a beep) when nothing within the limit is found.
    bool CatSearch(QLineEdit* box, int32_t step);

    QComboBox* NamesCombo = nullptr;
    QComboBox* AllNamesCombo = nullptr;
    QComboBox* ConstelCombo = nullptr;
    QComboBox* BayerCombo = nullptr;
    QComboBox* FlamstedCombo = nullptr;
    QComboBox* VarCombo = nullptr;
    QComboBox* MagLimitCombo = nullptr;
    QLineEdit* AstroTxt = nullptr;
    QLineEdit* HdTxt = nullptr;
    QLineEdit* HipTxt = nullptr;
    QLineEdit* TychoTxt = nullptr;
    QCheckBox *ShowRA = nullptr, *ShowAllNames = nullptr, *ShowVariables = nullptr;
    QCheckBox *ShowHD = nullptr, *ShowHip = nullptr, *ShowTycho = nullptr;
    QCheckBox *ShowNotes = nullptr, *ShowOtherNames = nullptr, *ShowProperMotion = nullptr;
    QRadioButton *TrueAlt = nullptr, *ObsAlt = nullptr, *AppAlt = nullptr;
    QCheckBox* TrueAz = nullptr;
    QLabel *lblAlt = nullptr, *lblAz = nullptr, *lblRA = nullptr, *lblDec = nullptr;
    QLabel *lblVmag = nullptr, *lbldRA = nullptr, *lbldDec = nullptr;
    QLabel *lblOtherNames = nullptr, *lblOtherNames1 = nullptr;
    QLabel *lblNamesCaption = nullptr, *lblConstelCaption = nullptr, *lblRACaption = nullptr;
    QPushButton* btnLocateStar = nullptr;

    // Sounded for a number not found and a star beyond the table; counted for tests.
    int Beeps = 0;
    // Moves the Star Atlas onto a star (Move_to_Star); set by the atlas while it is open.
    static std::function<void(int32_t star)> Locate;
    // What the atlas can do with a star; unset while it is closed.
    static std::function<AtlasReach(int32_t star)> Reach;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Beep();
    void Fill(QComboBox* combo, const std::vector<ComboRow>& rows);
    void Set_Row(QComboBox* combo, int32_t row);
    void Prime_Combos();
    void Take_Options();

    FindStarModel model_;
    FindStarLabels labels_;
    std::string owner_;
    bool filling_ = false;  // the combos are being set by the program, not the user
};

// The dialogue of the run, made on first use with `owner` as parent.
FindStarWindow& Find_Star_Form(QWidget* owner);

// The shell's "&Find Star": the dialogue opens modally at `star` for screen `ownerKey`.
void Open_Find_Star(QWidget* owner, int32_t star, const std::string& ownerKey);
// "&Find Star" and Ctrl+F of the main window: at the star of AltAz's selected row (a Sun,
// Moon or planet row gives Sirius), else at Sirius.
void Open_Find_Star_For_Screen(QWidget* owner);

}  // namespace kelmoran
