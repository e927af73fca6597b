// The tabs of the Options dialogue, one class each. Every tab paints its page on the
// dialogue's picture, lists the rectangles that answer clicks with their help keys, and
// writes what the user does through the Options model.
#include <cmath>
#include <map>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "settings/M_TimeZones.h"
#include "settings/Options.h"
#include "settings/OptionsWindow.h"
#include "shell/DateStripScreen.h"
#include "shell/Grid_Model.h"
#include "shell/M_Kelmoran.h"
#include "stars/M_Resources.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

constexpr int32_t kLine = 22;

// "Use Seconds" of Solar Bodies: the times of the screen's rows.
DateStripScreen* Owner_Screen() {
    auto* s = dynamic_cast<DateStripScreen*>(Shell.CurrentScreen);
    return s && s->ClassType() == Options.Owner ? s : nullptr;
}
bool Options_Use_Seconds() {
    const DateStripScreen* s = Owner_Screen();
    return s && s->myUseSeconds;
}
void Options_Set_Use_Seconds(bool on) {
    if (DateStripScreen* s = Owner_Screen()) {
        s->myUseSeconds = on;
        Options_Flags.BodyOrIntervalChanged = kTrue;
    }
}

// A combo of the page with its list and choice.
void Setup_Combo(myComboView& c, const std::string& name, const Rect& box,
                 const std::vector<std::string>& list, int32_t index,
                 std::function<void(int32_t)> chosen, OptionsWindow& w) {
    c.Name = name;
    c.Box = box;
    c.SetList(list);
    c.SetIndex(index);
    c.event1 = [chosen = std::move(chosen), &w](myCombo& combo) {
        chosen(combo.MyListPosn);
        w.Draw();
    };
}

// The hours or minutes of a zone, "00", with its label and the edit it opens (help "TZ");
// `row` tells the tab which time the edit is for.
void Two_Digit_Field(OptionsWindow& w, QPainter& p, const Rect& cell, const std::string& cls,
                     const std::string& field, int32_t v, const char* label, int32_t row) {
    char text[12];
    std::snprintf(text, sizeof text, "%02d", v);
    w.Field(p, cell, text);
    w.Text(p, cell.Right + 4, cell.Top + 3, label);
    const std::string t = text;
    w.Add_Hot(cell, "TZ", [&w, cell, cls, field, v, t, row](int32_t b) {
        if (b != mouse::Left) return;
        w.Begin_Field_Edit(cls, field, cell, v, t);
        Edit.Row = row;
    });
}

template <size_t N>
std::vector<std::string> Lines(const std::array<const char*, N>& texts) {
    return {texts.begin(), texts.end()};
}

// ---------------------------------------------------------------- Bodies

class Tb_Bodies : public OptionsTab {
  public:
    explicit Tb_Bodies(OptionsWindow& w) : OptionsTab(w), shaDec_(&w), altAz_(&w), constel_(&w),
                                           radius_(&w), mag_(&w) {
        std::vector<std::string> names;
        for (size_t k = 1; k < Constellation_Name.size(); ++k)
            names.push_back(Constellation_Name[k].empty() ? std::to_string(k)
                                                          : Constellation_Name[k]);
        Setup_Combo(constel_, "ConstelCombo", {240, 200, 440, 220}, names,
                    Filters.ConstelChoice - 1, [](int32_t i) { Bodies_Set_Constellation(i + 1); }, W);
        Setup_Combo(radius_, "RadiusCombo", {140, 336, 210, 356}, Lines(kRadiusTexts),
                    Radius_Index(), Bodies_Set_Radius, W);
        Setup_Combo(mag_, "MagCombo", {330, 336, 400, 356}, Lines(kMagTexts), Mag_Index(),
                    Bodies_Set_Mag, W);
        for (cLatLongView* p : {&shaDec_, &altAz_}) {
            p->ClassOwner = &W;
            p->ClassOwnerType = "OptionBodies";
            p->MyDecPlaces = 1;
        }
        shaDec_.Layout = LatLongLayout::ShaDec;
        altAz_.Layout = LatLongLayout::AltAz;
        const bool mode3 = Filters.BodyFilterMode == 3;
        const bool mode4 = Filters.BodyFilterMode == 4;
        shaDec_.Set_SHA(mode3 ? Filters.CentreA : 0);
        shaDec_.Set_Declination(mode3 ? Filters.CentreB : 0);
        altAz_.Set_Altitude(mode4 ? Filters.CentreA : 0);
        altAz_.Set_Azimuth(mode4 ? Filters.CentreB : 0);
        shaDec_.MyShaDecPosn(240, 222);
        altAz_.MyAltAzPosn(240, 270);
        Combos = {&constel_, &radius_, &mag_};
    }
    std::string Name() const override { return options_tab::Bodies; }

    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20;
        int32_t y = page.Top + 14;
        BodyFilters& f = Filters;
        auto tick = [&](const char* text, const char* key, bool on, std::function<void()> act) {
            W.Add_Hot(W.Tick(p, x, y, text, on), key, [act](int32_t b) {
                if (b == mouse::Left) act();
            });
            y += kLine;
        };
        tick("Sun's Upper Limb", "Bodies", !f.SunLowerLimb,
             [&f] { Bodies_Set_Tick(f.SunLowerLimb, !f.SunLowerLimb); });
        tick("Moon's Upper Limb", "Bodies", !f.MoonLowerLimb,
             [&f] { Bodies_Set_Tick(f.MoonLowerLimb, !f.MoonLowerLimb); });
        tick("Altitudes above 10\u00B0 Only", "Visible Bodies Only", f.AboveTenOnly != 0,
             [&f] { Bodies_Set_Tick(f.AboveTenOnly, !f.AboveTenOnly); });
        tick("Minor Planets", "Minor Planets", f.MinorPlanets != 0,
             [&f] { Bodies_Set_Tick(f.MinorPlanets, !f.MinorPlanets); });

        static constexpr std::array<const char*, 5> keys = {"Bodies", "Mag Limit", "By Constellation",
                                                            "By SHA/ Dec", "By Obs Alt/ Az"};
        static constexpr std::array<int32_t, 5> rows = {156, 178, 200, 240, 284};
        W.Group(p, {x - 8, 146, page.Right - 16, 324}, "Stars");
        for (int32_t m = 0; m < 5; ++m) {
            const int32_t rowY = rows[static_cast<size_t>(m)];
            W.Add_Hot(W.Option(p, x, rowY, kBodiesModes[static_cast<size_t>(m)],
                               f.BodyFilterMode == m),
                      keys[static_cast<size_t>(m)], [this, m](int32_t b) {
                          if (b != mouse::Left) return;
                          Bodies_Set_Mode(m);
                          Take_Centre();
                      });
        }
        if (f.BodyFilterMode == 3) W.Add_Hot(shaDec_.MyLatFrame.United(shaDec_.MyLongtFrame), "SHA", nullptr);
        if (f.BodyFilterMode == 4) W.Add_Hot(altAz_.MyLatFrame.United(altAz_.MyLongtFrame), "Alt", nullptr);
        Pairs.clear();
        if (f.BodyFilterMode == 3) Pairs.push_back(&shaDec_);
        if (f.BodyFilterMode == 4) Pairs.push_back(&altAz_);
        Combos = {&radius_, &mag_};
        if (f.BodyFilterMode == 2) Combos.insert(Combos.begin(), &constel_);

        W.Text(p, x, 336, "Limiting Radius");
        W.Add_Hot({x, 336, radius_.Box.Right, 356}, "Limiting Radius", nullptr);
        W.Text(p, 290, 336, "Mag.");
        W.Add_Hot({290, 336, mag_.Box.Right, 356}, "Mag Limit", nullptr);
    }

    void LatLong_Change(cLatLong&) override { Take_Centre(); }

  private:
    void Take_Centre() {
        if (Filters.BodyFilterMode == 3)
            Bodies_Set_Centre(static_cast<float>(shaDec_.SHA()),
                              static_cast<float>(shaDec_.Declination()));
        if (Filters.BodyFilterMode == 4)
            Bodies_Set_Centre(static_cast<float>(altAz_.Altitude()),
                              static_cast<float>(altAz_.Azimuth()));
    }
    cLatLongView shaDec_, altAz_;
    myComboView constel_, radius_, mag_;
};

// ---------------------------------------------------------------- Body

class Tb_Body : public OptionsTab {
  public:
    using OptionsTab::OptionsTab;
    std::string Name() const override { return options_tab::Body; }
    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20, top = page.Top + 24;
        W.Group(p, {x - 8, top - 6, x + 330, top + 6 * kLine + 10}, "Body");
        for (int32_t b = 0; b < 12; ++b) {
            const int32_t cx = x + (b < 6 ? 0 : 165), cy = top + 8 + (b % 6) * kLine;
            W.Add_Hot(W.Option(p, cx, cy, kBodyChoices[static_cast<size_t>(b)], Filters.ShowBody == b),
                      "Body", [b](int32_t btn) {
                          if (btn == mouse::Left) Body_Set(b);
                      });
        }
        const int32_t ix = x + 360;
        W.Group(p, {ix - 8, top - 6, page.Right - 16, top + 6 * kLine + 10}, "Interval");
        for (int32_t i = 0; i < 6; ++i)
            W.Add_Hot(W.Option(p, ix, top + 8 + i * kLine, kIntervals[static_cast<size_t>(i)],
                               Interval_Index() == i),
                      "Interval", [i](int32_t btn) {
                          if (btn == mouse::Left) Body_Set_Interval(i);
                      });
        W.Add_Hot(W.Tick(p, x, top + 7 * kLine + 10, "Show Seconds of Arc", Filters.ShowSecondsOfArc != 0),
                  "Show Seconds", [](int32_t btn) {
                      if (btn == mouse::Left) Body_Set_Seconds(!Filters.ShowSecondsOfArc);
                  });
    }
};

// ---------------------------------------------------------------- Columns

class Tb_Colms : public OptionsTab {
  public:
    using OptionsTab::OptionsTab;
    std::string Name() const override { return options_tab::Columns; }

    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20;
        top_ = page.Top + 30;
        W.Text(p, x, page.Top + 6, "Columns shown, in their order (right-click and drag to move)", true);
        GridModel* grid = Options.Grid;
        if (!grid) {
            W.Text(p, x, top_, "This screen has no columns to choose");
        } else {
            const auto lines = Columns_List(*grid);
            const int32_t perColumn = (page.Bottom - top_ - 60) / kLine;
            rects_.clear();
            for (size_t i = 0; i < lines.size(); ++i) {
                const auto n = static_cast<int32_t>(i);
                const int32_t lx = x + (n / perColumn) * 190, ly = top_ + (n % perColumn) * kLine;
                const bool carried = carrying_ && n == from_;
                const Rect r = W.Tick(p, lx, ly, lines[i].Title, lines[i].Shown, !carried);
                const Rect line = {lx, ly, lx + 180, ly + kLine};
                rects_.push_back(line);
                (void)r;
                W.Add_Hot(line, "Columns", [this, n](int32_t b) {
                    if (b == mouse::Left) {
                        Columns_Toggle(*Options.Grid, n);
                    } else if (b == mouse::Right) {
                        Create_CarryBmp(n);
                    }
                });
            }
            const int32_t ty = page.Bottom - 50;
            W.Add_Hot(W.Tick(p, x, ty, "Auto-Size Columns", grid->AutoSize), "AutoSize",
                      [grid](int32_t b) {
                          if (b == mouse::Left) Columns_Set_AutoSize(*grid, !grid->AutoSize);
                      });
            Screen_Ticks(p, x + 220, ty);
            if (carrying_) CarryLabel(p);
        }
    }

    // The label under the mouse is lifted as a picture and carried to its new place.
    void Create_CarryBmp(int32_t line) {
        if (line < 0 || line >= static_cast<int32_t>(rects_.size())) return;
        const Rect r = rects_[static_cast<size_t>(line)];
        carry_ = W.Form_Picture().copy(To_QRect(r));
        from_ = line;
        carrying_ = true;
        at_ = {r.Left, r.Top};
    }
    void Mouse_Move(int32_t button, int32_t x, int32_t y) override {
        if (!carrying_ || !(button & mouse::Right)) return;
        at_ = {x - 10, y - kLine / 2};
        W.Draw();
    }
    void Mouse_Up(int32_t button, int32_t x, int32_t y) override {
        if (!carrying_ || button != mouse::Right) return;
        Tb_Colms_MovtRect_End(x, y);
    }
    void Tb_Colms_MovtRect_End(int32_t x, int32_t y) {
        carrying_ = false;
        int32_t to = -1;
        for (size_t i = 0; i < rects_.size(); ++i)
            if (rects_[i].Contains(x, y)) to = static_cast<int32_t>(i);
        if (to < 0 && !rects_.empty() && y >= rects_.back().Bottom)
            to = static_cast<int32_t>(rects_.size()) - 1;
        if (to >= 0 && Options.Grid) Columns_Move(*Options.Grid, from_, to);
        W.Draw();
    }

  private:
    void CarryLabel(QPainter& p) {
        p.drawImage(at_, carry_);
        p.setPen(QPen(Qt::black, 1, Qt::DotLine));
        p.drawRect(QRect(at_, carry_.size()).adjusted(0, 0, -1, -1));
    }
    // The ticks that belong to one screen.
    void Screen_Ticks(QPainter& p, int32_t x, int32_t y) {
        auto hooked = [&](const char* caption, const char* key) {
            const OptionsHooks& h = Options_Hooks;
            const bool on = h.Tick_Value ? h.Tick_Value(caption) : false;
            W.Add_Hot(W.Tick(p, x, y, caption, on, static_cast<bool>(h.Set_Tick)), key,
                      [caption, on](int32_t b) {
                          if (b == mouse::Left && Options_Hooks.Set_Tick) {
                              Options_Hooks.Set_Tick(caption, !on);
                              Options_Flags.ColumnsChanged = kTrue;
                          }
                      }, static_cast<bool>(h.Set_Tick));
            y += kLine;
        };
        const std::string& owner = Options.Owner;
        if (owner == screen_key::AltAz) {
            W.Add_Hot(W.Tick(p, x, y, "Cyrilic Characters", Use_Cyrillic != 0), "Cyrillic",
                      [](int32_t b) {
                          if (b != mouse::Left) return;
                          Use_Cyrillic = Use_Cyrillic ? kFalse : kTrue;
                          Options_Flags.BodiesChanged = kTrue;
                      });
            W.Text(p, x + 19, y + 16, "for Designations");
        } else if (owner == screen_key::Planets) {
            W.Add_Hot(W.Tick(p, x, y, "Use Seconds", Options_Use_Seconds()), "Show Seconds",
                      [](int32_t b) {
                          if (b == mouse::Left) Options_Set_Use_Seconds(!Options_Use_Seconds());
                      });
        } else if (owner == screen_key::Clox && Options.Grid) {
            GridModel& grid = *Options.Grid;
            auto group = [&](const char* caption, const std::vector<int32_t>& columns) {
                const bool on = Columns_Shown(grid, columns);
                W.Add_Hot(W.Tick(p, x, y, caption, on), "Clox", [&grid, columns, on](int32_t b) {
                    if (b == mouse::Left) Columns_Set_Shown(grid, columns, !on);
                });
                y += kLine;
            };
            group("12:00 Position", kCloxNoonColumns);
            group(" Twilights", kCloxTwilightColumns);
        } else if (owner == screen_key::NavPlan) {
            hooked("Additional Remarks", "Use Remarks");
        }
    }

    int32_t top_ = 0;
    std::vector<Rect> rects_;
    bool carrying_ = false;
    int32_t from_ = -1;
    QImage carry_;
    QPoint at_;
};

// ---------------------------------------------------------------- Observer

class Tb_Observer : public OptionsTab {
  public:
    using OptionsTab::OptionsTab;
    std::string Name() const override { return options_tab::Observer; }
    void Paint(QPainter& p, const Rect& page) override {
        struct Row {
            const char* label;
            const char* field;
            const char* fieldKey;
            std::array<const char*, 2> unitKeys;
        };
        static constexpr std::array<Row, 4> rows = {{
            {"Height of Eye", observer_field::HtOfEye, "Dip", {"Dip", "Dip"}},
            {"Index Error", observer_field::IndexError, "IE", {"Index Error On", "Index Error Off"}},
            {"Temperature", observer_field::Temp, "NNN.N", {"NNN.N", "NNN.N"}},
            {"Pressure", observer_field::Pressure, "NNNN.N", {"NNNN.N", "NNNN.N"}},
        }};
        const int32_t x = page.Left + 20;
        int32_t y = page.Top + 30;
        for (const Row& r : rows) {
            W.Text(p, x, y + 3, r.label, true);
            const Rect cell = {x + 130, y, x + 210, y + 26};
            W.Field(p, cell, Observer_Text(r.field));
            const std::string field = r.field;
            W.Add_Hot(cell, r.fieldKey, [this, field, cell](int32_t b) {
                if (b == mouse::Left)
                    W.Begin_Field_Edit("Observer", field, cell, Observer_Shown_Value(field),
                                       Observer_Text(field));
            });
            const auto units = Observer_Units(field);
            for (int32_t u = 0; u < 2; ++u) {
                const Rect o = W.Option(p, x + 240 + u * 150, y + 3, units[static_cast<size_t>(u)],
                                        Observer_Unit(field) == u);
                W.Add_Hot(o, r.unitKeys[static_cast<size_t>(u)], [field, u](int32_t b) {
                    if (b == mouse::Left) Observer_Set_Unit(field, u);
                });
            }
            y += 44;
        }
        W.Text(p, x, y, Standard_Values_Line());
        y += 34;
        W.Text(p, x, y, "Dip of the horizon:  " + Format_Number(DipRad * kArcminPerRadian, "#0.0") +
                            "'      Refraction factor:  " + Format_Number(RefractionFactor, "0.00000"));
    }
    void Edit_Commit(const EditSession& s, double value, const std::string&) override {
        if (!Observer_Commit(s.Field, value)) W.Beep();
    }
};

// ---------------------------------------------------------------- Position

class Tb_Position : public OptionsTab {
  public:
    explicit Tb_Position(OptionsWindow& w) : OptionsTab(w), fix_(&w), time_(&w) {
        fix_.ClassOwner = &W;
        fix_.ClassOwnerType = "Options";
        fix_.MyDecPlaces = 2;
        fix_.Set_Latitude(Settings.ObserverLat);
        fix_.Set_Longitude(Settings.ObserverLong);
        fix_.MyLatLongPosn(40, 186);
        time_.ClassType = "Dates";
        time_.Configure_Standard_Dates(true, &W, 600);
        time_.Position_DateGrid(40, 272);
        time_.My_TZ_Bias(TZ_Bias);
        time_.MyTime((Settings.FixTime != 0 ? Settings.FixTime : Shell.CurrentJD) + TZ_Bias / 1440.0);
    }
    std::string Name() const override { return options_tab::Position; }

    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20;
        int32_t y = page.Top + 12;
        const double now = Shell.CurrentJD;
        const bool planOk = Position_Plan_Enabled(now);
        static constexpr std::array<const char*, 3> keys = {"Fix Posn", "DR By Co/ Spd", "DR by Plan"};
        const std::array<const char*, 3> texts = {position_text::FixPosition,
                                                  position_text::DRCourseSpeed,
                                                  position_text::DRByPlan};
        for (int32_t m = 0; m < 3; ++m) {
            const bool enabled = m != 2 || planOk;
            const Rect r = W.Option(p, x, y, texts[static_cast<size_t>(m)],
                                    Settings.PositionMethod == m, enabled);
            W.Add_Hot(r, enabled ? keys[static_cast<size_t>(m)] : "Disabled DR by Plan",
                      [m, now](int32_t b) {
                          if (b == mouse::Left) Position_Choose(m, now);
                      }, enabled);
            y += kLine;
        }
        // The plan's lines, when it can be used.
        if (planOk) {
            const auto lines = Position_Plan_Lines();
            W.Text(p, x + 24, y, lines[0], true);
            W.Text(p, x + 24, y + 18, lines[1]);
            W.Text(p, x + 24, y + 36, lines[2]);
        }
        const int32_t method = Settings.PositionMethod;
        Pairs.clear();
        Strip = nullptr;
        if (method != kDRByPlan) {
            W.Text(p, x, 160, method == kFixPosition ? "Position" : "Position of the Fix", true);
            Pairs.push_back(&fix_);
            W.Add_Hot(fix_.MyLatFrame, "Lat", nullptr);
            W.Add_Hot(fix_.MyLongtFrame, "Long", nullptr);
        }
        if (method == kDRCourseSpeed) {
            W.Text(p, x, 248, "Fix Time", true);
            Strip = &time_;
            W.Add_Hot(time_.MyFrame, "Time", nullptr);
            const int32_t cy = 207;
            W.Text(p, 330, cy - 24, "Course", true);
            const Rect course = {330, cy - 4, 410, cy + 22};
            W.Field(p, course, Format_Number(Settings.FixCourse, "000\u00B0.0"));
            W.Text(p, 414, cy, " T");
            W.Add_Hot(course, "Course", [this, course](int32_t b) {
                if (b == mouse::Left)
                    W.Begin_Field_Edit("Options", "Course", course, Settings.FixCourse,
                                       Format_Number(Settings.FixCourse, "000\u00B0.0"));
            });
            W.Text(p, 450, cy - 24, "Speed", true);
            const Rect speed = {450, cy - 4, 520, cy + 22};
            W.Field(p, speed, Format_Number(Settings.FixSpeed, "#0.00"));
            W.Text(p, 524, cy, "Kts");
            W.Add_Hot(speed, "Speed", [this, speed](int32_t b) {
                if (b == mouse::Left)
                    W.Begin_Field_Edit("Options", "Speed", speed, Settings.FixSpeed,
                                       Format_Number(Settings.FixSpeed, "#0.00"));
            });
        }
    }
    void Edit_Commit(const EditSession& s, double value, const std::string&) override {
        if (s.Field == "Course") Position_Set_Course(value);
        if (s.Field == "Speed" && !Position_Set_Speed(value)) W.Beep();
    }
    void LatLong_Change(cLatLong& pair) override {
        Position_Set_Fix(pair.Latitude(), pair.Longitude());
    }
    void Date_Change(double jd) override { Position_Set_Fix_Time(jd - TZ_Bias / 1440.0); }

  private:
    cLatLongView fix_;
    cDatesView time_;
};

// ---------------------------------------------------------------- Voy Plan

class Tb_VoyPlan : public OptionsTab {
  public:
    using OptionsTab::OptionsTab;
    std::string Name() const override { return options_tab::VoyPlan; }
    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20;
        int32_t y = page.Top + 30;
        const Plan_Header& h = Voyage.Header;
        W.Text(p, x, y + 3, "Default Speed", true);
        Speed_Field(p, {x + 130, y, x + 200, y + 26}, h.Default_Speed, "00.00", -1, "Default Speed");
        const Rect reset = {x + 260, y, x + 370, y + 26};
        W.Button(p, reset, "Reset Plan");
        W.Add_Hot(reset, "Reset Plan Speeds", [](int32_t b) {
            if (b == mouse::Left) Voyage_Reset_Plan_Speeds();
        });
        y += 60;
        W.Group(p, {x - 8, y - 8, page.Right - 16, y + 3 * 40 + 6}, "Fixed Speeds");
        const std::array<float, 3> fixed = {h.Fixed_Speed_1, h.Fixed_Speed_2, h.Fixed_Speed_3};
        for (int32_t i = 0; i < 3; ++i) {
            const int32_t ry = y + 12 + i * 40;
            W.Text(p, x + 4, ry + 3, "Fixed Speed " + std::to_string(i + 1), true);
            Speed_Field(p, {x + 130, ry, x + 200, ry + 26}, fixed[static_cast<size_t>(i)], "#0.00",
                        i, "Speed: Fixed Speeds");
        }
        W.Text(p, x, y + 150, plan_text::SpeedSetHint);
    }
    void Edit_Commit(const EditSession& s, double value, const std::string&) override {
        const bool ok = s.Row < 0 ? Voyage_Set_Default_Speed(static_cast<float>(value))
                                  : Voyage_Set_Fixed_Speed(s.Row, static_cast<float>(value));
        if (!ok) W.Beep();
    }

  private:
    void Speed_Field(QPainter& p, const Rect& cell, float v, const char* mask, int32_t which,
                     const char* key) {
        W.Field(p, cell, Format_Number(v, mask));
        W.Text(p, cell.Right + 4, cell.Top + 3, "Kts");
        W.Add_Hot(cell, key, [this, cell, v, mask, which](int32_t b) {
            if (b != mouse::Left) return;
            W.Begin_Field_Edit("Options", "Speed", cell, v, Format_Number(v, mask));
            Edit.Row = which;
        });
    }
};

// ---------------------------------------------------------------- Times

class Tb_Times : public OptionsTab {
  public:
    using OptionsTab::OptionsTab;
    std::string Name() const override { return options_tab::Times; }
    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20;
        const VoyageTimes t = Voyage_Times();
        const Plan_Header& h = Voyage.Header;
        Row(p, x, page.Top + 30, "ETD", t.ETD, t.ETDZone, !h.ETD_Zone.empty(), false);
        Row(p, x, page.Top + 130, "ETA", t.ETA, t.ETAZone, !h.ETA_Zone.empty(), true);
        W.Text(p, x, page.Top + 240, "The zone of each time: hours and minutes east of Greenwich.");
        W.Text(p, x, page.Top + 260, "Clear \"Spec\" to use the zone of the date strip.");
    }
    void Edit_Commit(const EditSession& s, double value, const std::string&) override {
        const bool eta = s.Row == 1;
        const int32_t zone = eta ? Voyage.Header.ETA_Minutes : Voyage.Header.ETD_Minutes;
        const int32_t sign = zone < 0 ? -1 : 1;
        int32_t hours = std::abs(zone) / 60, minutes = std::abs(zone) % 60;
        if (s.Field == time_tab_text::HourField) hours = static_cast<int32_t>(value);
        if (s.Field == time_tab_text::MinutesField) minutes = static_cast<int32_t>(value);
        if (hours >= 12) hours = 12, minutes = 0;
        if (!Voyage_Set_Zone(eta, sign * (hours * 60 + minutes))) W.Beep();
    }

  private:
    void Row(QPainter& p, int32_t x, int32_t y, const char* caption, double zoneJD, int32_t zone,
             bool ownZone, bool eta) {
        W.Group(p, {x - 8, y - 8, x + 560, y + 76}, caption);
        W.Text(p, x + 4, y + 10, Format_Day_Month(zoneJD, false) + "  " +
                                     Format_Time_Of_Day(zoneJD, false) + "  " + Format_TZ_Text(zone), true);
        const std::string key = eta ? "Main ETA" : "Main ETD";
        const Rect sign = {x + 4, y + 40, x + 28, y + 64};
        W.Button(p, sign, zone < 0 ? "-" : "+");
        W.Add_Hot(sign, key, [eta, zone](int32_t b) {
            if (b == mouse::Left) Voyage_Set_Zone(eta, -zone);
        });
        const int32_t row = eta ? 1 : 0;
        auto number = [&](const Rect& cell, const char* field, int32_t v, const char* label) {
            Two_Digit_Field(W, p, cell, "Tb_Voyage", field, v, label, row);
        };
        number({x + 36, y + 40, x + 76, y + 64}, time_tab_text::HourField, std::abs(zone) / 60, "Hour");
        number({x + 130, y + 40, x + 170, y + 64}, time_tab_text::MinutesField, std::abs(zone) % 60, "Minute");
        W.Add_Hot(W.Tick(p, x + 260, y + 42, "Spec", ownZone), key, [eta](int32_t b) {
            if (b != mouse::Left) return;
            Plan_Header& h = Voyage.Header;
            std::string& text = eta ? h.ETA_Zone : h.ETD_Zone;
            if (text.empty()) {
                Voyage_Set_Zone(eta, eta ? h.ETA_Minutes : h.ETD_Minutes);
            } else {
                Voyage_Set_Zone(eta, TZ_Bias);
                text.clear();
            }
        });
    }
};

// ---------------------------------------------------------------- Time

class Tb_Time : public OptionsTab {
  public:
    explicit Tb_Time(OptionsWindow& w) : OptionsTab(w), offset_(Time_Tab_Offset(TZ_Bias)) {}
    std::string Name() const override { return options_tab::Time; }
    void Paint(QPainter& p, const Rect& page) override {
        using namespace time_tab_text;
        const int32_t x = page.Left + 20;
        int32_t y = page.Top + 24;
        W.Text(p, x, y, LocalTime, true);
        W.Text(p, x + 120, y, Settings.AutoTimeZone ? "(from the computer's time zone)" : "(Manual TZ)");
        y += 40;
        W.Text(p, x, y + 3, LocalTimeOffset, true);
        const Rect sign = {x + 140, y, x + 164, y + 26};
        W.Button(p, sign, offset_.Negative ? "-" : "+");
        W.Add_Hot(sign, "TZ", [this](int32_t b) {
            if (b != mouse::Left) return;
            Time_Tab_Flip_Sign(offset_);
            Options_Flags.TimeChanged = kTrue;
        });
        auto number = [&](const Rect& cell, const char* field, int32_t v, const char* label) {
            Two_Digit_Field(W, p, cell, FieldClass, field, v, label, 0);
        };
        number({x + 172, y, x + 212, y + 26}, HourField, offset_.Hours, "Hours");
        number({x + 270, y, x + 310, y + 26}, MinutesField, offset_.Minutes, "Minutes");
        y += 50;
        const TimeTabLines lines = Time_Tab_Lines();
        W.Text(p, x, y, lines.First);
        if (!lines.Second.empty()) W.Text(p, x, y + 20, lines.Second);
        y += 60;
        const Rect button = {x, y, x + 140, y + 28};
        const bool automatic = Settings.AutoTimeZone != 0;
        W.Button(p, button, Time_Tab_Button());
        W.Add_Hot(button, automatic ? "Auto Time Zone Disable" : "Auto Time Zone Enable",
                  [this, automatic](int32_t b) {
                      if (b != mouse::Left) return;
                      if (automatic) {
                          Time_Tab_Disable();
                      } else {
                          Time_Tab_Restore_Default(Shell.CurrentJD);
                          offset_ = Time_Tab_Offset(TZ_Bias);
                      }
                      Options_Flags.TimeChanged = kTrue;
                  });
        W.Add_Hot({x, page.Top + 24, x + 400, page.Top + 44}, automatic ? "Time" : "Manual TZ", nullptr);
    }
    void Edit_Commit(const EditSession& s, double value, const std::string&) override {
        const auto v = static_cast<int32_t>(value);
        const bool ok = s.Field == time_tab_text::HourField ? Time_Tab_Edit_Hours(offset_, v)
                                                            : Time_Tab_Edit_Minutes(offset_, v);
        if (!ok) {
            W.Beep();
            return;
        }
        Options_Flags.TimeChanged = kTrue;
    }

  private:
    TimeTabOffset offset_;
};

// ---------------------------------------------------------------- Filter

class Tb_Filter : public OptionsTab {
  public:
    explicit Tb_Filter(OptionsWindow& w) : OptionsTab(w), stars_(&w), alt_(&w), az_(&w) {
        Setup_Combo(stars_, "MainStarCombo", {260, 60, 340, 80}, Lines(kFilterStarTexts),
                    Filter_Star_Index(), Filter_Set_Stars, W);
        Setup_Combo(alt_, "RadiusCombo", {260, 110, 340, 130}, Lines(kFilterAltTexts),
                    Filter_Alt_Index(), Filter_Set_Alt, W);
        Setup_Combo(az_, "MagCombo", {260, 160, 340, 180}, Lines(kFilterAzTexts),
                    Filter_Az_Index(), Filter_Set_Az, W);
        Combos = {&stars_, &alt_, &az_};
    }
    std::string Name() const override { return options_tab::Filter; }
    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20;
        W.Text(p, x, 60, "Magnitude Limit", true);
        W.Add_Hot({x, 60, stars_.Box.Right, 80}, "Sight Bodies to Test", nullptr);
        W.Text(p, x, 110, "Altitude Limit  +/ -", true);
        W.Add_Hot({x, 110, alt_.Box.Right, 130}, "Sights Altitude Limit", nullptr);
        W.Text(p, x, 160, "Azimuth Limit  +/ -", true);
        W.Add_Hot({x, 160, az_.Box.Right, 180}, "Sights Azimuth Limit", nullptr);
        W.Add_Hot(W.Tick(p, x, 220, "Include Stars during Daylight", SightsFilter.DaylightStars != 0),
                  "Daylight Stars", [](int32_t b) {
                      if (b == mouse::Left) Filter_Set_Daylight(!SightsFilter.DaylightStars);
                  });
        W.Add_Hot(W.Tick(p, x, 250, "Tab moves down through Sights", Settings.SightsTabDown != 0),
                  "AltTabOrder", [](int32_t b) {
                      if (b == mouse::Left) Filter_Set_Tab_Down(!Settings.SightsTabDown);
                  });
    }

  private:
    myComboView stars_, alt_, az_;
};

// ---------------------------------------------------------------- Misc

class Tb_Misc : public OptionsTab {
  public:
    using OptionsTab::OptionsTab;
    std::string Name() const override { return options_tab::Misc; }
    void Paint(QPainter& p, const Rect& page) override {
        const int32_t x = page.Left + 20;
        int32_t y = page.Top + 24;
        W.Add_Hot(W.Tick(p, x, y, kStandardRiseSet, Settings.SimplifiedRiseSet == 0),
                  "Simplified Rising & Setting", [](int32_t b) {
                      if (b == mouse::Left) Misc_Set_Standard_RiseSet(Settings.SimplifiedRiseSet != 0);
                  });
        y += 50;
        W.Group(p, {x - 8, y - 6, page.Right - 16, y + 4 * kLine + 12}, "Help Levels");
        static constexpr std::array<const char*, 4> keys = {"Help Level 0", "Help Level 1",
                                                            "Help Level 2", "Help Level 3"};
        static constexpr std::array<const char*, 4> what = {
            "Full descriptions of terms used, Icon purpose", "+ description of terms used",
            "Data entry methods, shortcuts", "+ Disabled Items cause"};
        for (int32_t l = 0; l < 4; ++l) {
            const int32_t ly = y + 10 + l * kLine;
            W.Add_Hot(W.Option(p, x, ly, kHelpLevels[static_cast<size_t>(l)], Settings.HelpLevel == l),
                      keys[static_cast<size_t>(l)], [l](int32_t b) {
                          if (b == mouse::Left) Misc_Set_Help_Level(l);
                      });
            W.Text(p, x + 240, ly, what[static_cast<size_t>(l)], false, Drawing().Shadow);
        }
        y += 4 * kLine + 40;
        W.Add_Hot(W.Tick(p, x, y, kReinstateMessages, Options_Flags.ResetMessages != 0), "Misc",
                  [](int32_t b) {
                      if (b == mouse::Left) Misc_Set_Reinstate(!Options_Flags.ResetMessages);
                  });
    }
};

}  // namespace

std::unique_ptr<OptionsTab> Make_Options_Tab(const std::string& name, OptionsWindow& w) {
    using Factory = std::unique_ptr<OptionsTab> (*)(OptionsWindow&);
    static const std::map<std::string, Factory> tabs = {
        {options_tab::Bodies, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Bodies>(o); }},
        {options_tab::Body, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Body>(o); }},
        {options_tab::Columns, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Colms>(o); }},
        {options_tab::Observer, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Observer>(o); }},
        {options_tab::Position, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Position>(o); }},
        {options_tab::VoyPlan, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_VoyPlan>(o); }},
        {options_tab::Times, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Times>(o); }},
        {options_tab::Time, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Time>(o); }},
        {options_tab::Filter, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Filter>(o); }},
        {options_tab::Misc, [](OptionsWindow& o) -> std::unique_ptr<OptionsTab> { return std::make_unique<Tb_Misc>(o); }},
    };
    const auto it = tabs.find(name);
    return it == tabs.end() ? nullptr : it->second(w);
}

}  // namespace kelmoran
