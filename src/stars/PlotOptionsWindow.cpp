#include "stars/PlotOptionsWindow.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "settings/SettingsRecord.h"
#include "shell/Drawing.h"
#include "stars/M_Resources.h"
#include "stars/PlotOptions_Model.h"

namespace kelmoran {

PlotOptionsWindow::PlotOptionsWindow(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Star Atlas Options");
    setFont(Drawing().Normal);
    auto* top = new QVBoxLayout(this);

    auto* views = new QGroupBox("View", this);
    auto* vg = new QGridLayout(views);
    VisStars = new QRadioButton("Visible Stars", views);
    NorthernStars = new QRadioButton("Northern Stars", views);
    SouthernStars = new QRadioButton("Southern Stars", views);
    EquatorialStars = new QRadioButton("Equatorial", views);
    ShowNorthUp = new QCheckBox("North Up", views);
    MyHdgTxt = new QLineEdit(views);
    MyHdgTxt->setValidator(new QIntValidator(0, 359, MyHdgTxt));
    MyHdgTxt->setMaxLength(3);
    MyHdgTxt->setFixedWidth(48);
    AltCaption = new QLabel(views);
    vg->addWidget(VisStars, 0, 0);
    vg->addWidget(NorthernStars, 0, 1);
    vg->addWidget(SouthernStars, 1, 0);
    vg->addWidget(EquatorialStars, 1, 1);
    vg->addWidget(ShowNorthUp, 2, 0);
    vg->addWidget(new QLabel("Heading at the top", views), 2, 1);
    vg->addWidget(MyHdgTxt, 2, 2);
    vg->addWidget(AltCaption, 3, 0, 1, 3);
    top->addWidget(views);

    auto* show = new QGroupBox("Show", this);
    auto* sg = new QGridLayout(show);
    ShowConstellations = new QCheckBox("Constellation Names", show);
    ShowGuides = new QCheckBox("Constellation Figures", show);
    ShowBoundaries = new QCheckBox("Constellation Boundaries", show);
    ShowDesigs = new QCheckBox("Designations", show);
    ShowVariables = new QCheckBox("Variables' Designations", show);
    ShowNames = new QCheckBox("Star Names", show);
    ShowCyrillic = new QCheckBox("Glyphs for Planets", show);
    MinorPlanets = new QCheckBox("Neptune, Uranus and Pluto", show);
    ShowRA = new QCheckBox("Right Ascension (else S.H.A.)", show);
    Option1 = new QCheckBox("Grid at every Zoom", show);
    PopUpDetails = new QCheckBox("Popup Detail", show);
    const QList<QCheckBox*> checks = {ShowConstellations, ShowGuides,   ShowBoundaries, ShowDesigs,
                                      ShowVariables,      ShowNames,    ShowCyrillic,   MinorPlanets,
                                      ShowRA,             Option1,      PopUpDetails};
    for (int i = 0; i < checks.size(); ++i) sg->addWidget(checks[i], i / 2, i % 2);
    top->addWidget(show);

    auto* stars = new QGroupBox("Stars", this);
    auto* lg = new QGridLayout(stars);
    MainStarCombo = new QComboBox(stars);
    BkGndStarsCombo = new QComboBox(stars);
    // The deeper limits are offered only where their tiers are delivered.
    auto offered = [](int32_t limit) {
        return limit <= kBaseTierEnd || (limit <= kTier2End && Star_Tier_Available(2)) ||
               (limit <= kTier3End && Star_Tier_Available(3)) || Star_Tier_Available(4);
    };
    for (int32_t e = 0; e < 9; ++e)
        if (offered(Main_Star_Limit(e))) MainStarCombo->addItem(QString::fromStdString(Limit_Caption(Main_Star_Limit(e))));
    for (int32_t e = 0; e < 8; ++e)
        if (offered(Background_Limit(e))) BkGndStarsCombo->addItem(QString::fromStdString(Limit_Caption(Background_Limit(e))));
    lg->addWidget(new QLabel("Named and designated", stars), 0, 0);
    lg->addWidget(MainStarCombo, 0, 1);
    lg->addWidget(new QLabel("All stars to", stars), 1, 0);
    lg->addWidget(BkGndStarsCombo, 1, 1);
    top->addWidget(stars);

    auto* close = new QPushButton("Close", this);
    top->addWidget(close, 0, Qt::AlignRight);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    Load_Options();
    for (QRadioButton* r : {VisStars, NorthernStars, SouthernStars, EquatorialStars})
        connect(r, &QRadioButton::toggled, this, [this](bool on) {
            if (on) Take();
        });
    for (QCheckBox* c : checks) connect(c, &QCheckBox::toggled, this, [this] { Take(); });
    connect(ShowNorthUp, &QCheckBox::toggled, this, [this] { Take(); });
    connect(MainStarCombo, &QComboBox::activated, this, [this] { Take(); });
    connect(BkGndStarsCombo, &QComboBox::activated, this, [this] { Take(); });
    connect(MyHdgTxt, &QLineEdit::editingFinished, this, [this] { Take(); });
}

void PlotOptionsWindow::Load_Options() {
    loading_ = true;
    const AtlasOptions& o = Atlas_Options();
    VisStars->setChecked(o.View == "VisibleStars");
    NorthernStars->setChecked(o.View == "NorthStars");
    SouthernStars->setChecked(o.View == "SouthStars");
    EquatorialStars->setChecked(o.View == "Equatorial");
    ShowConstellations->setChecked(o.ShowConstellations);
    ShowGuides->setChecked(o.ShowGuides);
    ShowBoundaries->setChecked(o.ShowBoundaries);
    ShowDesigs->setChecked(o.ShowDesigs);
    ShowVariables->setChecked(o.ShowVariables);
    ShowNames->setChecked(o.ShowNames);
    ShowCyrillic->setChecked(o.ShowCyrillic);
    MinorPlanets->setChecked(o.MinorPlanets);
    ShowRA->setChecked(Settings.ShowRA != 0);
    Option1->setChecked(o.Option1);
    PopUpDetails->setChecked(o.PopUpDetails);
    ShowNorthUp->setChecked(o.ShowNorthUp);
    MyHdgTxt->setText(QString("%1").arg(o.Heading, 3, 10, QChar('0')));
    MyHdgTxt->setEnabled(!o.ShowNorthUp);
    MainStarCombo->setCurrentIndex(std::min(o.MainStarEntry, static_cast<int32_t>(MainStarCombo->count()) - 1));
    BkGndStarsCombo->setCurrentIndex(
        std::min(Set_Background_Stars_Level(Background_Limit(o.BackgroundEntry)),
                 static_cast<int32_t>(BkGndStarsCombo->count()) - 1));
    AltCaption->setText(QString::fromStdString("Altitudes in the pop-up: " + Set_Alt_Option_Caption()));
    loading_ = false;
}

void PlotOptionsWindow::Take() {
    if (loading_) return;
    AtlasOptions& o = Atlas_Options();
    o.View = NorthernStars->isChecked()     ? "NorthStars"
             : SouthernStars->isChecked()   ? "SouthStars"
             : EquatorialStars->isChecked() ? "Equatorial"
                                            : "VisibleStars";
    o.ShowConstellations = ShowConstellations->isChecked();
    o.ShowGuides = ShowGuides->isChecked();
    o.ShowBoundaries = ShowBoundaries->isChecked();
    o.ShowDesigs = ShowDesigs->isChecked();
    o.ShowVariables = ShowVariables->isChecked();
    o.ShowNames = ShowNames->isChecked();
    o.ShowCyrillic = ShowCyrillic->isChecked();
    o.MinorPlanets = MinorPlanets->isChecked();
    Settings.ShowRA = ShowRA->isChecked() ? 1 : 0;
    o.Option1 = Option1->isChecked();
    o.PopUpDetails = PopUpDetails->isChecked();
    o.ShowNorthUp = ShowNorthUp->isChecked();
    o.Heading = std::clamp(MyHdgTxt->text().toInt(), 0, 359);
    MyHdgTxt->setText(QString("%1").arg(o.Heading, 3, 10, QChar('0')));
    MyHdgTxt->setEnabled(!o.ShowNorthUp);
    o.MainStarEntry = std::max(0, MainStarCombo->currentIndex());
    o.BackgroundEntry = std::max(0, BkGndStarsCombo->currentIndex());
    // The background takes in at least the named stars.
    if (Background_Limit(o.BackgroundEntry) < Main_Star_Limit(o.MainStarEntry)) {
        o.BackgroundEntry = Set_Background_Stars_Level(Main_Star_Limit(o.MainStarEntry));
        loading_ = true;
        BkGndStarsCombo->setCurrentIndex(std::min(o.BackgroundEntry, static_cast<int32_t>(BkGndStarsCombo->count()) - 1));
        loading_ = false;
    }
    if (ChangeDisplay) ChangeDisplay();
}

}  // namespace kelmoran
