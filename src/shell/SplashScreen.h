// The Main screen ("Splash") in its first form: the moment in use and the Earth's
// orientation at that moment, painted on the screen's off-screen picture.
#pragma once

#include <QImage>
#include <string>
#include <vector>

#include "shell/UiScreen.h"

namespace kelmoran {

// One line of the screen: a label and its value.
struct SplashLine {
    std::string Label;
    std::string Value;
};

// The lines shown for moment `jd` (MyJD, UT).
std::vector<SplashLine> Splash_Lines(double jd);

class SplashScreen : public UiScreen {
public:
    SplashScreen();

    std::string ClassType() const override { return screen_key::Splash; }
    void Load() override;
    void Force_Update() override;
    void SetDates() override;
    void CalcDates() override;
    void Menu_PopUp(const std::string&) override {}
    void Restore_Layout() override {}
    void Kill_Activities(const CursorState&) override {}
    void Set_Visible(bool visible) override { visible_ = visible; }
    void mnuPrint() override {}

    const QImage& Picture() const override { return picture_; }
    void Resize(QSize size) override;

    double MyJD() const { return myJD_; }
    const std::vector<SplashLine>& Lines() const { return lines_; }

private:
    void Draw();

    QImage picture_;
    double myJD_ = 0.0;
    bool visible_ = false;
    std::vector<SplashLine> lines_;
};

}  // namespace kelmoran
