// Find Star and the Star Atlas headless, driven by real keys, mouse and wheel events on the
// program's windows, at a fixed moment and place; with pictures of each view.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <cmath>

#include "ephemeris/Units.h"
#include "settings/SettingsRecord.h"
#include "shell/Ui_Screens.h"
#include "stars/FindStarWindow.h"
#include "stars/M_Resources.h"
#include "stars/M_Stars.h"
#include "stars/PlotOptionsWindow.h"
#include "stars/PlotOptions_Model.h"
#include "stars/PlotStarsWindow.h"

namespace kelmoran {
namespace {

using namespace ui_test;

constexpr double kMoment = 9800.4;  // 2026 October, 21:36 UT
const char* const kViews[] = {"VisibleStars", "NorthStars", "SouthStars", "Equatorial"};

int32_t Star_Named(const std::string& name) {
    for (size_t i = 1; i < MainNames.size(); ++i)
        if (MainNames[i].Name == name) return MainNames[i].Star;
    return -1;
}

class AtlasUi : public ::testing::Test {
  protected:
    void SetUp() override {
        main = std::make_unique<fMain>();
        Settings.ObserverLat = static_cast<float>(50.0 * kOneDegree);
        Settings.ObserverLong = static_cast<float>(-4.0 * kOneDegree);
        Settings.PositionMethod = 0;
        Shell.CurrentJD = kMoment;
        Update_All_Screens("");
    }
    void TearDown() override {
        Close_Star_Atlas();
        main.reset();
    }
    PlotStars& Atlas(const std::string& view) {
        Atlas_Options() = AtlasOptions{};
        Atlas_Options().View = view;
        main->Window_Action(8)->trigger();
        QApplication::processEvents();
        PlotStarsWindow* w = Star_Atlas();
        EXPECT_NE(w, nullptr);
        w->Form().Configure_Form();
        return w->Form();
    }
    std::unique_ptr<fMain> main;
};

// A star's disc is drawn at the pixel the core's map gives.
void Expect_Star_At(PlotStars& atlas, int32_t star, const char* view) {
    int32_t x = 0, y = 0;
    const StarPlace& p = StarPlaces[static_cast<size_t>(star)];
    ASSERT_TRUE(atlas.Plot().Map(p.RA, p.Dec, x, y)) << view;
    EXPECT_EQ(atlas.Plot().Points[static_cast<size_t>(star)].X, x) << view;
    EXPECT_GT(qGray(atlas.Bitmap().pixel(x, y)), 200) << view;
    // The picture shows the bitmap's middle third there.
    const QPoint at = atlas.Picture_Point(x, y);
    EXPECT_EQ(atlas.Picture().pixel(at), atlas.Bitmap().pixel(x, y)) << view;
}

TEST_F(AtlasUi, EachViewShowsItsPoleStarWhereTheMapPutsIt) {
    const int32_t polaris = Star_Named("Polaris");
    // The south has no bright pole star: Acrux stands for it.
    const int32_t acrux = Star_Named("Acrux");
    ASSERT_GT(polaris, 0);
    ASSERT_GT(acrux, 0);
    for (const char* view : kViews) {
        PlotStars& atlas = Atlas(view);
        Expect_Star_At(atlas, std::string(view) == "SouthStars" ? acrux : polaris, view);
        Save_Png(atlas.Picture(), "atlas", view);
    }
}

TEST_F(AtlasUi, DragMovesThePictureAndReplotsOnlyBeyondTheThird) {
    PlotStars& atlas = Atlas("NorthStars");
    atlas.Plot().Zoom_At(1, atlas.Plot().View.BitmapWidth / 2, atlas.Plot().View.BitmapHeight / 2);
    atlas.DrawBitMaps();
    QWidget* w = Star_Atlas();
    const Rect& sky = atlas.Sky_Rect();
    const QPoint start((sky.Left + sky.Right) / 2, (sky.Top + sky.Bottom) / 2);
    const int32_t redraws = atlas.Redraws, plots = atlas.Plot().Plots;
    const int32_t scroll = atlas.Plot().View.ScrollX;
    QTest::mousePress(w, Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, QPointF(start + QPoint(30, 10)), w->mapToGlobal(QPointF(start + QPoint(30, 10))),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(w, &move);
    EXPECT_EQ(atlas.Plot().View.ScrollX, scroll - 30);
    EXPECT_EQ(atlas.Redraws, redraws);
    EXPECT_EQ(atlas.Plot().Plots, plots);
    // Far enough to leave the third (a whole picture's width): one new plot and drawing.
    QPoint far = start + QPoint(30, 10);
    for (int i = 0; i < 4; ++i) {
        far += QPoint(sky.Width() / 3, 0);
        QMouseEvent next(QEvent::MouseMove, QPointF(far), w->mapToGlobal(QPointF(far)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(w, &next);
    }
    QTest::mouseRelease(w, Qt::LeftButton, {}, far);
    EXPECT_EQ(atlas.Redraws, redraws + 1);
    EXPECT_EQ(atlas.Plot().Plots, plots + 1);
}

TEST_F(AtlasUi, QueuedWheelNotchesMakeOneRedraw) {
    PlotStars& atlas = Atlas("Equatorial");
    QWidget* w = Star_Atlas();
    const Rect& sky = atlas.Sky_Rect();
    const QPoint at(sky.Left + sky.Width() / 3, sky.Top + sky.Height() / 2);
    const int32_t redraws = atlas.Redraws;
    for (int i = 0; i < 10; ++i)
        QApplication::postEvent(w, new QWheelEvent(at, w->mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton,
                                                   {}, Qt::NoScrollPhase, false));
    // The wheel events are read first; the zoom they add up to follows them in the queue.
    QApplication::processEvents();
    QApplication::processEvents();
    EXPECT_EQ(atlas.Redraws, redraws + 1);
    EXPECT_EQ(atlas.Plot().View.Zoom, 1024);
    // Ctrl and the wheel brighten and dim instead.
    const int32_t dim = atlas.Plot().View.DimOffset;
    Wheel(w, at, -240, Qt::ControlModifier);
    QApplication::processEvents();
    QApplication::processEvents();
    EXPECT_EQ(atlas.Plot().View.DimOffset, dim - 2);
    EXPECT_EQ(atlas.Plot().View.Zoom, 1024);
}

TEST_F(AtlasUi, ZoomedPictureAndPopUp) {
    PlotStars& atlas = Atlas("Equatorial");
    Atlas_Options().ShowBoundaries = true;
    const int32_t betelgeuse = Star_Named("Betelgeuse");
    ASSERT_GT(betelgeuse, 0);
    atlas.Move_to_Star(betelgeuse);
    atlas.Plot().Zoom_At(1, atlas.Plot().View.BitmapWidth / 2, atlas.Plot().View.BitmapHeight / 2);
    atlas.DrawBitMaps();
    const StarPlace& p = StarPlaces[static_cast<size_t>(betelgeuse)];
    EXPECT_NEAR(atlas.Plot().View.CentreRA, p.RA, 1e-5);
    EXPECT_NEAR(atlas.Plot().View.CentreDec, p.Dec, 1e-5);
    Save_Png(atlas.Picture(), "atlas", "EquatorialZoomed");
    // The pop-up of the star under the mouse.
    const PlotPoint& pt = atlas.Plot().Points[static_cast<size_t>(betelgeuse)];
    const QPoint at = atlas.Picture_Point(pt.X, pt.Y) + QPoint(2, 1);
    QTest::mouseMove(Star_Atlas(), at);
    atlas.SysMsg_MouseMove(0, 0, at.x(), at.y());
    EXPECT_EQ(atlas.PopUp_Object(), betelgeuse);
    ASSERT_FALSE(atlas.PopUp_Lines().empty());
    EXPECT_EQ(atlas.PopUp_Lines().front(), "Betelgeuse");
    Save_Png(atlas.Picture(), "atlas", "PopUp");
}

TEST_F(AtlasUi, OptionsSwitchTheViewAndTheStripMovesTheMoment) {
    PlotStars& atlas = Atlas("VisibleStars");
    QWidget* w = Star_Atlas();
    QTest::mouseClick(w, Qt::LeftButton, {}, Centre(atlas.Tool_Rect(AtlasTool::Options)));
    PlotOptionsWindow* options = Star_Atlas()->Options();
    ASSERT_NE(options, nullptr);
    QTest::mouseClick(options->EquatorialStars, Qt::LeftButton, {}, QPoint(6, options->EquatorialStars->height() / 2));
    EXPECT_TRUE(atlas.Plot().View.IsEquatorial);
    Save_Png(options->grab().toImage(), "atlas", "Options");

    // A notch of the wheel on the strip's day: a day later here and for every screen.
    const int32_t redraws = atlas.Redraws;
    Wheel(w, Centre(atlas.MyDates().Field_Rect("Day")), 120);
    EXPECT_NEAR(Shell.CurrentJD, kMoment + 1.0, 1e-6);
    EXPECT_GT(atlas.Redraws, redraws);
}

TEST_F(AtlasUi, FindStarFromAltAzByKeys) {
    cGeneralForm* altaz = Open_Screen(*main, 0);
    ASSERT_NE(altaz, nullptr);
    // The dialogue is modal: the test works it while it is open, then closes it.
    FindStarWindow* seen = nullptr;
    int32_t opened = -1;
    QTimer::singleShot(0, [&] {
        seen = &Find_Star_Form(main.get());
        opened = seen->Model().EntryStar;
        seen->accept();
    });
    altaz->Grid().MyTrueRow = 3;
    QTest::keyClick(main->Client(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_NE(seen, nullptr);
    const auto& bodies = altaz->AltAz_Data().BodyNumbers;
    const int32_t expected = bodies[static_cast<size_t>(altaz->Row_Order()[3])];
    EXPECT_EQ(opened, std::max(expected, 12));

    FindStarWindow& f = *seen;
    f.show();
    // Names by typing into the name combo.
    f.NamesCombo->setFocus();
    QTest::keyClicks(f.NamesCombo, "Polaris");
    EXPECT_EQ(f.Model().EntryStar, Star_Named("Polaris"));
    // Numbers typed into their boxes, Enter to search.
    for (auto [box, number] : {std::pair{f.HipTxt, "32349"}, std::pair{f.HdTxt, "48915"}}) {
        f.SelectStar(Star_Named("Vega"));
        box->setFocus();
        box->clear();
        QTest::keyClicks(box, number);
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_EQ(f.Model().EntryStar, 12) << number;
    }
    // A star outside the limit: a beep, no change, the text stays.
    Load_Hip_Numbers();
    const std::string faint = std::to_string(Hip_Numbers[static_cast<size_t>(kMag6End)]);
    const int beeps = f.Beeps;
    f.HipTxt->clear();
    QTest::keyClicks(f.HipTxt, QString::fromStdString(faint + "x"));  // the letter is dropped
    QTest::keyClick(f.HipTxt, Qt::Key_Return);
    EXPECT_EQ(f.Beeps, beeps + 1);
    EXPECT_EQ(f.Model().EntryStar, 12);
    EXPECT_EQ(f.HipTxt->text().toStdString(), faint);
    Save_Png(f.grab().toImage(), "atlas", "FindStar");

    // The last limit loads every tier; a faint star by number then shows its place.
    if (Star_Tier_Available(4)) {
        f.Set_Mag_Limit(f.MagLimitCombo->count() - 1);
        EXPECT_EQ(Catalogue_Upper(), kTier4End);
        const int32_t star = kTier4End - 7;
        f.HipTxt->clear();
        QTest::keyClicks(f.HipTxt, QString::number(Hip_Numbers[static_cast<size_t>(star)]));
        QTest::keyClick(f.HipTxt, Qt::Key_Return);
        EXPECT_EQ(f.Model().EntryStar, star);
        EXPECT_FALSE(f.lblDec->text().isEmpty());
        EXPECT_FALSE(f.lblAlt->text().isEmpty());
    }

    // Locate Star centres the atlas on the star.
    EXPECT_FALSE(f.btnLocateStar->isEnabled());
    PlotStars& atlas = Atlas("Equatorial");
    const int32_t rigel = Star_Named("Rigel");
    f.SelectStar(rigel);
    ASSERT_TRUE(f.btnLocateStar->isEnabled());
    QTest::mouseClick(f.btnLocateStar, Qt::LeftButton);
    EXPECT_NEAR(atlas.Plot().View.CentreRA, StarPlaces[static_cast<size_t>(rigel)].RA, 1e-5);
    f.hide();
}

}  // namespace
}  // namespace kelmoran
