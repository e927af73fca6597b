#include "stars/FindStarWindow.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <memory>

#include "settings/SettingsRecord.h"
#include "shell/Drawing.h"
#include "shell/M_Kelmoran.h"
#include "shell/cGeneralForm.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"

namespace kelmoran {

std::function<void(int32_t)> FindStarWindow::Locate;
std::function<AtlasReach(int32_t)> FindStarWindow::Reach;

namespace {

QLabel* Value_Label(QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setMinimumWidth(110);
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Sunken);
    return l;
}

// The limits whose tiers can be found: the deeper entries are offered only then.
int32_t Entries_Available() {
    if (Star_Tier_Available(4)) return 9;
    if (Star_Tier_Available(3)) return 8;
    if (Star_Tier_Available(2)) return 7;
    return 6;
}

}  // namespace

FindStarWindow::FindStarWindow(QWidget* parent) : QDialog(parent) {
    setWindowTitle("Find Star");
    setFont(Drawing().Normal);
    auto* top = new QVBoxLayout(this);

    // The names.
    auto* names = new QGroupBox("Name", this);
    auto* ng = new QGridLayout(names);
    lblNamesCaption = new QLabel(names);
    NamesCombo = new QComboBox(names);
    AllNamesCombo = new QComboBox(names);
    NamesCombo->setMinimumWidth(220);
    AllNamesCombo->setMinimumWidth(220);
    NamesCombo->setMaxVisibleItems(20);
    AllNamesCombo->setMaxVisibleItems(20);
    ShowAllNames = new QCheckBox("Show All Names", names);
    ng->addWidget(lblNamesCaption, 0, 0, 1, 2);
    ng->addWidget(NamesCombo, 1, 0);
    ng->addWidget(AllNamesCombo, 1, 0);
    ng->addWidget(ShowAllNames, 1, 1);
    top->addWidget(names);

    // Constellation and designations.
    auto* desig = new QGroupBox("Constellation", this);
    auto* dg = new QGridLayout(desig);
    lblConstelCaption = new QLabel(desig);
    ConstelCombo = new QComboBox(desig);
    ConstelCombo->setMaxVisibleItems(20);
    BayerCombo = new QComboBox(desig);
    FlamstedCombo = new QComboBox(desig);
    VarCombo = new QComboBox(desig);
    ShowVariables = new QCheckBox("Show Variables", desig);
    dg->addWidget(lblConstelCaption, 0, 0, 1, 4);
    dg->addWidget(ConstelCombo, 1, 0, 1, 3);
    dg->addWidget(ShowVariables, 1, 3);
    dg->addWidget(new QLabel("Bayer", desig), 2, 0);
    dg->addWidget(new QLabel("Flamsteed", desig), 2, 1);
    dg->addWidget(new QLabel("Variable", desig), 2, 2);
    dg->addWidget(BayerCombo, 3, 0);
    dg->addWidget(FlamstedCombo, 3, 1);
    dg->addWidget(VarCombo, 3, 2);
    top->addWidget(desig);

    // Catalogue numbers and the limit.
    auto* cat = new QGroupBox("Catalogues", this);
    auto* cg = new QGridLayout(cat);
    ShowHD = new QCheckBox("HD", cat);
    ShowHip = new QCheckBox("Hipparcos", cat);
    ShowTycho = new QCheckBox("Tycho", cat);
    HdTxt = new QLineEdit(cat);
    HipTxt = new QLineEdit(cat);
    TychoTxt = new QLineEdit(cat);
    AstroTxt = new QLineEdit(cat);
    AstroTxt->setVisible(false);
    // No Tycho numbers are delivered with the catalogue: the field stays empty and off.
    ShowTycho->setEnabled(false);
    TychoTxt->setEnabled(false);
    MagLimitCombo = new QComboBox(cat);
    cg->addWidget(ShowHD, 0, 0);
    cg->addWidget(ShowHip, 0, 1);
    cg->addWidget(ShowTycho, 0, 2);
    cg->addWidget(HdTxt, 1, 0);
    cg->addWidget(HipTxt, 1, 1);
    cg->addWidget(TychoTxt, 1, 2);
    cg->addWidget(new QLabel("Magnitude Limit", cat), 0, 3);
    cg->addWidget(MagLimitCombo, 1, 3);
    top->addWidget(cat);

    // The star's data.
    auto* data = new QGroupBox("Data", this);
    auto* g = new QGridLayout(data);
    TrueAlt = new QRadioButton("True Alt.", data);
    ObsAlt = new QRadioButton("Obs. Alt.", data);
    AppAlt = new QRadioButton("App. Alt.", data);
    TrueAz = new QCheckBox("True Az.", data);
    ShowRA = new QCheckBox("Show R.A.", data);
    ShowProperMotion = new QCheckBox("Proper Motion", data);
    lblAlt = Value_Label(data);
    lblAz = Value_Label(data);
    lblRA = Value_Label(data);
    lblDec = Value_Label(data);
    lblVmag = Value_Label(data);
    lbldRA = Value_Label(data);
    lbldDec = Value_Label(data);
    lblRACaption = new QLabel(data);
    auto* altKinds = new QHBoxLayout;
    altKinds->addWidget(TrueAlt);
    altKinds->addWidget(ObsAlt);
    altKinds->addWidget(AppAlt);
    g->addLayout(altKinds, 0, 0, 1, 2);
    g->addWidget(lblAlt, 0, 2);
    g->addWidget(TrueAz, 1, 0);
    g->addWidget(lblAz, 1, 2);
    g->addWidget(ShowRA, 2, 0);
    g->addWidget(lblRACaption, 2, 1);
    g->addWidget(lblRA, 2, 2);
    g->addWidget(new QLabel("Dec.", data), 3, 1);
    g->addWidget(lblDec, 3, 2);
    g->addWidget(new QLabel("Magnitude", data), 4, 1);
    g->addWidget(lblVmag, 4, 2);
    g->addWidget(ShowProperMotion, 5, 0);
    g->addWidget(new QLabel("d R.A. \"/yr", data), 5, 1);
    g->addWidget(lbldRA, 5, 2);
    g->addWidget(new QLabel("d Dec. \"/yr", data), 6, 1);
    g->addWidget(lbldDec, 6, 2);
    top->addWidget(data);

    // Other names or notes.
    auto* notes = new QGroupBox("Notes", this);
    auto* nl = new QGridLayout(notes);
    ShowOtherNames = new QCheckBox("Other Names", notes);
    ShowNotes = new QCheckBox("Variables", notes);
    lblOtherNames = new QLabel(notes);
    lblOtherNames1 = new QLabel(notes);
    lblOtherNames->setMinimumWidth(460);
    nl->addWidget(ShowOtherNames, 0, 0);
    nl->addWidget(ShowNotes, 0, 1);
    nl->addWidget(lblOtherNames, 1, 0, 1, 3);
    nl->addWidget(lblOtherNames1, 2, 0, 1, 3);
    top->addWidget(notes);

    btnLocateStar = new QPushButton("Locate Star", this);
    auto* close = new QPushButton("Close", this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btnLocateStar);
    buttons->addStretch();
    buttons->addWidget(close);
    top->addLayout(buttons);

    // The start state.
    ShowRA->setChecked(model_.ShowRA);
    ShowHD->setChecked(model_.ShowHD);
    ShowHip->setChecked(model_.ShowHip);
    ShowOtherNames->setChecked(model_.ShowOtherNames);
    TrueAlt->setChecked(true);
    TrueAz->setChecked(true);
    for (int32_t i = 0; i < Entries_Available(); ++i) {
        const std::string label = kMagLimitLabels[static_cast<size_t>(i)];
        MagLimitCombo->addItem(label.empty() ? "All Stars" : Q(label));
    }
    filling_ = true;
    MagLimitCombo->setCurrentIndex(0);
    filling_ = false;
    model_.Atlas_Reach = [](int32_t star) { return Reach ? Reach(star) : AtlasReach::NotOpen; };
    model_.Keep_Alive = [] { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); };
    model_.Set_Limit(0, Shell.CurrentJD);
    Prime_Combos();

    // Events.
    auto star_of = [this](QComboBox* combo, const std::vector<ComboRow>& rows) {
        connect(combo, &QComboBox::activated, this, [this, &rows](int index) {
            if (index >= 0 && index < static_cast<int>(rows.size()))
                SelectStar(rows[static_cast<size_t>(index)].Star);
        });
    };
    star_of(NamesCombo, model_.Names);
    star_of(AllNamesCombo, model_.AllNames);
    star_of(BayerCombo, model_.Bayer);
    star_of(FlamstedCombo, model_.Flamsted);
    star_of(VarCombo, model_.Var);
    connect(ConstelCombo, &QComboBox::activated, this, [this](int index) {
        if (index < 0 || index >= static_cast<int>(model_.Constel.size())) return;
        model_.Prime_Stars_for_Constellation(model_.Constel[static_cast<size_t>(index)].Star);
        // The constellation's first star becomes current.
        const auto& first = !model_.Bayer.empty()      ? model_.Bayer
                            : !model_.Flamsted.empty() ? model_.Flamsted
                                                       : model_.Var;
        if (!first.empty()) SelectStar(first.front().Star);
    });
    connect(MagLimitCombo, &QComboBox::activated, this, [this](int index) { Set_Mag_Limit(index); });
    for (QCheckBox* c : {ShowRA, ShowAllNames, ShowVariables, ShowHD, ShowHip, ShowNotes,
                         ShowOtherNames, ShowProperMotion, TrueAz})
        connect(c, &QCheckBox::toggled, this, [this] { Take_Options(); });
    for (QRadioButton* r : {TrueAlt, ObsAlt, AppAlt})
        connect(r, &QRadioButton::toggled, this, [this](bool on) {
            if (on) Take_Options();
        });
    connect(btnLocateStar, &QPushButton::clicked, this, [this] {
        if (Locate) Locate(model_.EntryStar);
    });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    HdTxt->installEventFilter(this);
    HipTxt->installEventFilter(this);
    Take_Options();
}

void FindStarWindow::Beep() {
    ++Beeps;
    QApplication::beep();
}

void FindStarWindow::Fill(QComboBox* combo, const std::vector<ComboRow>& rows) {
    // Bulk append with painting off.
    combo->setUpdatesEnabled(false);
    combo->clear();
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(rows.size()));
    for (const ComboRow& r : rows) texts.push_back(Q(r.Text));
    combo->addItems(texts);
    combo->setUpdatesEnabled(true);
}

void FindStarWindow::Set_Row(QComboBox* combo, int32_t row) {
    combo->setCurrentIndex(row < combo->count() ? row : -1);
}

void FindStarWindow::Prime_Combos() {
    filling_ = true;
    Fill(NamesCombo, model_.Names);
    Fill(AllNamesCombo, model_.AllNames);
    Fill(ConstelCombo, model_.Constel);
    lblNamesCaption->setText(Q(model_.Names_Caption()));
    lblConstelCaption->setText(Q(model_.Constel_Caption()));
    filling_ = false;
}

void FindStarWindow::Take_Options() {
    const bool variables = model_.ShowVariables;
    model_.ShowRA = ShowRA->isChecked();
    Settings.ShowRA = model_.ShowRA ? 1 : 0;
    model_.ShowAllNames = ShowAllNames->isChecked();
    model_.ShowVariables = ShowVariables->isChecked();
    model_.ShowHD = ShowHD->isChecked();
    model_.ShowHip = ShowHip->isChecked();
    model_.ShowNotes = ShowNotes->isChecked();
    model_.ShowOtherNames = ShowOtherNames->isChecked();
    model_.ShowProperMotion = ShowProperMotion->isChecked();
    model_.Altitude = ObsAlt->isChecked()   ? AltKind::Observed
                      : AppAlt->isChecked() ? AltKind::Apparent
                                            : AltKind::True;
    model_.TrueAz = TrueAz->isChecked();
    NamesCombo->setVisible(!model_.ShowAllNames);
    AllNamesCombo->setVisible(model_.ShowAllNames);
    VarCombo->setEnabled(model_.ShowVariables);
    HdTxt->setVisible(model_.ShowHD);
    HipTxt->setVisible(model_.ShowHip);
    lbldRA->setEnabled(model_.ShowProperMotion);
    lbldDec->setEnabled(model_.ShowProperMotion);
    if (variables != model_.ShowVariables) {
        model_.Prime_Constellation_Combo();
        model_.Constellation = 0;
        Prime_Combos();
    }
    PopulateLabels();
}

void FindStarWindow::EntryStar(int32_t star, const std::string& ownerKey) {
    owner_ = ownerKey;
    if (!model_.SelectStar(star, Shell.CurrentJD)) model_.EntryStar = star;
    PopulateLabels();
}

void FindStarWindow::SelectStar(int32_t star) {
    if (filling_) return;
    const bool loads = star > Catalogue_Upper();
    if (loads) QApplication::setOverrideCursor(Qt::WaitCursor);
    model_.SelectStar(star, Shell.CurrentJD);
    if (loads) QApplication::restoreOverrideCursor();
    PopulateLabels();
}

void FindStarWindow::Set_Mag_Limit(int32_t entry) {
    if (filling_) return;
    const bool loads = kMagnitudeLimitIndex[static_cast<size_t>(std::clamp(entry, 0, 8))] >
                       static_cast<int32_t>(StarPlaces.size()) - 1;
    if (loads) QApplication::setOverrideCursor(Qt::WaitCursor);
    model_.Set_Limit(entry, Shell.CurrentJD);
    if (loads) QApplication::restoreOverrideCursor();
    filling_ = true;
    MagLimitCombo->setCurrentIndex(entry);
    filling_ = false;
    Prime_Combos();
    PopulateLabels();
}

bool FindStarWindow::CatSearch(QLineEdit* box, int32_t step) {
    const auto which =
        box == HdTxt ? FindStarModel::Catalogue::HD : FindStarModel::Catalogue::Hip;
    const FindStarModel::CatResult r = model_.CatSearch(which, box->text().toInt(), step);
    if (!r.Found) {
        Beep();
        return false;
    }
    SelectStar(r.Star);
    if (step != 0) box->setText(QString::number(r.Number));
    return true;
}

bool FindStarWindow::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (event->type() != QEvent::KeyPress || (box != HdTxt && box != HipTxt))
        return QDialog::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: CatSearch(box, 0); return true;
        case Qt::Key_Plus: CatSearch(box, +1); return true;
        case Qt::Key_Minus: CatSearch(box, -1); return true;
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_Tab:
        case Qt::Key_Backtab: return false;
        default:
            // Only digits enter a number box; anything else is dropped.
            return !(key->text().size() == 1 && key->text()[0].isDigit());
    }
}

void FindStarWindow::PopulateLabels() {
    labels_ = model_.PopulateLabels(Shell.CurrentJD);
    if (labels_.Beeped) Beep();
    const FindStarLabels& L = labels_;
    lblAlt->setText(Q(L.Alt));
    lblAlt->setStyleSheet(L.AltBelow ? "color: rgb(255, 0, 0)" : "");
    lblAlt->setToolTip(L.AltBelow ? findstar_text::BelowHorizon : "");
    lblAz->setText(Q(L.Az));
    lblRACaption->setText(Q(L.RACaption));
    lblRA->setText(Q(L.RA));
    lblDec->setText(Q(L.Dec));
    lblVmag->setText(Q(L.Vmag));
    lbldRA->setText(Q(L.dRA));
    lbldDec->setText(Q(L.dDec));
    lblOtherNames->setText(Q(L.OtherNames));
    lblOtherNames1->setText(Q(L.OtherNames1));
    const QString tip = L.NotesWord == "Variables"     ? "CCDM designation"
                        : L.NotesWord == "Other Names" ? "Other names for this Star"
                                                       : "";
    lblOtherNames->setToolTip(tip);
    filling_ = true;
    Set_Row(ConstelCombo, L.ConstelRow);
    Fill(BayerCombo, model_.Bayer);
    Fill(FlamstedCombo, model_.Flamsted);
    Fill(VarCombo, model_.Var);
    Set_Row(BayerCombo, L.BayerRow);
    Set_Row(FlamstedCombo, L.FlamstedRow);
    Set_Row(VarCombo, L.VarRow);
    Set_Row(NamesCombo, L.NamesRow);
    Set_Row(AllNamesCombo, L.AllNamesRow);
    filling_ = false;
    if (!HdTxt->hasFocus()) HdTxt->setText(Q(L.Hd));
    if (!HipTxt->hasFocus()) HipTxt->setText(Q(L.Hip));
    TychoTxt->clear();
    btnLocateStar->setEnabled(L.LocateEnabled);
    btnLocateStar->setToolTip(Q(L.LocateTip));
}

FindStarWindow& Find_Star_Form(QWidget* owner) {
    static QPointer<FindStarWindow> form;
    if (!form) form = new FindStarWindow(owner);
    return *form;
}

void Open_Find_Star(QWidget* owner, int32_t star, const std::string& ownerKey) {
    FindStarWindow& form = Find_Star_Form(owner);
    form.EntryStar(star < 12 ? 12 : star, ownerKey);
    form.exec();
}

}  // namespace kelmoran

namespace kelmoran {

void Open_Find_Star_For_Screen(QWidget* owner) {
    // On AltAz the selected row's body; a Sun, Moon or planet row opens at Sirius.
    int32_t star = 12;
    if (auto* form = dynamic_cast<cGeneralForm*>(Shell.CurrentScreen);
        form && Shell.ScreenName == screen_key::AltAz) {
        const int32_t row = form->Grid().MyTrueRow;
        const auto& order = form->Row_Order();
        const auto& bodies = form->AltAz_Data().BodyNumbers;
        if (row >= 0 && static_cast<size_t>(row) < order.size() &&
            static_cast<size_t>(order[static_cast<size_t>(row)]) < bodies.size())
            star = bodies[static_cast<size_t>(order[static_cast<size_t>(row)])];
    }
    Open_Find_Star(owner, star, Shell.ScreenName);
    if (Shell.Host) Shell.Host->Repaint();
}

}  // namespace kelmoran
