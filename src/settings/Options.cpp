#include "settings/Options.h"

#include <algorithm>
#include <cmath>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "shell/Grid_Model.h"
#include "shell/M_Kelmoran.h"
#include "stars/M_Stars.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

OptionsFlags Options_Flags;
OptionsSession Options;
OptionsHooks Options_Hooks;
int16_t Use_Cyrillic = 0;

namespace {

// The whole plan is kept for Cancel: "Reset Plan" changes the rows' speeds as well.
VoyagePlan Plan_Copy;

template <size_t N, typename T>
int32_t Index_Of(const std::array<T, N>& values, T v) {
    for (size_t i = 0; i < N; ++i)
        if (values[i] == v) return static_cast<int32_t>(i);
    return -1;
}

template <size_t N>
bool In_Range(int32_t index) {
    return index >= 0 && index < static_cast<int32_t>(N);
}

void Observer_Changed() {
    Compute_Derived_Settings();
    // The refraction scale as the tab shows it: 283 / 1010 × P / (T + 273), 5 decimals.
    const double r = 283.0 / 1010.0 * Settings.Pressure / (Settings.Temp + 273.0);
    if (std::isfinite(r)) RefractionFactor = static_cast<float>(std::round(r * 1e5) / 1e5);
    Options_Flags.ObserverChanged = kTrue;
    Options_Flags.TitleChanged = kTrue;
}

}  // namespace

std::vector<std::string> Options_Tabs(const std::string& ownerKey) {
    using namespace options_tab;
    if (ownerKey == screen_key::AltAz) return {Bodies, Columns, Observer, Position, Time, Misc};
    if (ownerKey == screen_key::Planets) return {Body, Columns, Observer, Position, Time, Misc};
    if (ownerKey == screen_key::Clox) return {Columns, Observer, Position, Time, Misc};
    if (ownerKey == screen_key::NavPlan) return {Columns, Position, VoyPlan, Times, Misc};
    if (ownerKey == screen_key::Lunations) return {Columns, Time, Position, Misc};
    if (ownerKey == screen_key::Sights) return {Filter, Observer, Time, Position, Misc};
    return {Observer, Position, Time, Misc};
}

ColumnChoices Take_Column_Choices(const GridModel& grid) {
    return {grid.MyColmVisible, grid.MyColmPtr, grid.AutoSize};
}

void Put_Column_Choices(GridModel& grid, const ColumnChoices& c) {
    if (c.Visible.size() != grid.MyColmVisible.size() || c.Order.size() != grid.MyColmPtr.size())
        return;
    grid.MyColmVisible = c.Visible;
    grid.MyColmPtr = c.Order;
    grid.AutoSize = c.AutoSize;
    grid.Columns_Set_Working_Arrays();
}

void Options_Open(const std::string& ownerKey, const std::string& tab, GridModel* grid) {
    Options = OptionsSession{};
    Options.Owner = ownerKey;
    Options.Tabs = Options_Tabs(ownerKey);
    Options.Grid = grid;
    for (size_t i = 0; i < Options.Tabs.size(); ++i)
        if (Options.Tabs[i] == tab) Options.CurrentTab = static_cast<int32_t>(i);
    Options_Flags = OptionsFlags{};
    Cancel_Preparation();
}

void Cancel_Preparation() {
    OptionsCopy& c = Options.Copy;
    c.Settings = Settings;
    c.Header = Voyage.Header;
    c.DefaultSpeed = Voyage.Header.Default_Speed;
    c.Bias = TZ_Bias;
    if (Options.Grid) c.Columns = Take_Column_Choices(*Options.Grid);
    c.Filters = Filters;
    c.SightFilter = SightsFilter;
    Plan_Copy = Voyage;
}

void Cancel_Invoke() {
    const OptionsCopy& c = Options.Copy;
    Settings = c.Settings;
    Voyage = Plan_Copy;
    Voyage.Header = c.Header;
    Voyage.Header.Default_Speed = c.DefaultSpeed;
    TZ_Bias = c.Bias;
    if (Options.Grid) Put_Column_Choices(*Options.Grid, c.Columns);
    Filters = c.Filters;
    SightsFilter = c.SightFilter;
    Compute_Derived_Settings();
    Options_Flags = OptionsFlags{};
}

void Options_Unload() {
    OptionsFlags& f = Options_Flags;
    const OptionsHooks& h = Options_Hooks;
    const std::string& owner = Options.Owner;
    bool recalc = false, dates = false, titles = false;
    if (f.ColumnsChanged) titles = true;
    if (f.BodiesChanged || f.BodyOrIntervalChanged) recalc = true;
    if (f.TimeChanged) dates = recalc = true;
    const bool moved = f.ObserverChanged || f.PositionChanged || f.PositionMethodChanged;
    if (moved) {
        recalc = true;
        for (int16_t& u : Shell.UpToDate) u = kFalse;
    }
    if (f.PositionMethodChanged && h.Clear_Clox_Current) h.Clear_Clox_Current();
    // The star places are worked out again at the next use.
    if (f.PositionChanged || f.ObserverChanged)
        for (StarPlace& s : StarPlaces) s.JD = Shell.CurrentJD + 1.0e6;

    cScreen* screen = Shell.CurrentScreen;
    const bool onMain = Shell.ScreenName == screen_key::Splash;
    if (screen && recalc) {
        Shell.Up_To_Date(Shell.ScreenName) = kFalse;
        if (Shell.ScreenName != screen_key::Lunations && Shell.ScreenName != screen_key::NavPlan)
            screen->Force_Update();
    }
    if (Shell.Host) {
        if (Shell.AtlasOpen && !Shell.Up_To_Date(screen_key::PlotStars)) Shell.Host->Update_Atlas();
        if (Shell.SightsOpen && !Shell.Up_To_Date(screen_key::Sights)) Shell.Host->Update_Sights();
    }
    if ((f.BodyOrIntervalChanged || f.TitleChanged) && h.Redraw_Titles) h.Redraw_Titles();
    const bool planScreen = Shell.ScreenName == screen_key::NavPlan ||
                            Shell.ScreenName == screen_key::Clox;
    const bool anyChange = f.ColumnsChanged || f.BodiesChanged || f.ObserverChanged ||
                           f.PositionChanged || f.PositionMethodChanged || f.TimeChanged ||
                           f.SpeedsChanged || f.BodyOrIntervalChanged;
    if (planScreen && anyChange && h.Push_Undo) h.Push_Undo();

    if (owner == screen_key::Sights) {
        if (f.FilterChanged && h.Refilter_Sights) h.Refilter_Sights();
    } else if (screen && !onMain) {
        if (titles && h.Draw_After_Column_Changes) h.Draw_After_Column_Changes();
        // A screen that was not recalculated above still follows a new zone or calendar.
        if ((dates || f.SpeedsChanged) && !recalc) {
            screen->SetDates();
            screen->CalcDates();
        }
        if (recalc && (Shell.ScreenName == screen_key::Lunations ||
                       Shell.ScreenName == screen_key::NavPlan)) {
            screen->SetDates();
            screen->CalcDates();
            Shell.Up_To_Date(Shell.ScreenName) = kTrue;
        }
    }
    if (f.ResetMessages) {
        if (h.First_Use_Reset) {
            h.First_Use_Reset();
        } else {
            First_Use_Reset();
        }
    }
    Options_Flags = OptionsFlags{};
}

// ---- Observer -------------------------------------------------------------------------------

double Observer_Shown_Value(const std::string& field) {
    const SettingsRecord& s = Settings;
    if (field == observer_field::HtOfEye)
        return s.UseMetres ? s.HtOfEye : s.HtOfEye * kFeetPerMetre;
    if (field == observer_field::IndexError) return std::fabs(s.IndexError);
    if (field == observer_field::Temp) return s.UseCelsius ? s.Temp : s.Temp * 9.0 / 5.0 + 32.0;
    if (field == observer_field::Pressure)
        return s.UseMillibars ? s.Pressure : s.Pressure * kInHgPerMb;
    return 0;
}

std::string Observer_Text(const std::string& field) {
    const double v = Observer_Shown_Value(field);
    if (field == observer_field::HtOfEye || field == observer_field::Temp)
        return Format_Number(v, "##0.0");
    if (field == observer_field::IndexError) return Format_Number(v, "#0.0");
    return Format_Number(v, "###0.0");
}

std::array<const char*, 2> Observer_Units(const std::string& field) {
    if (field == observer_field::HtOfEye) return {"Meters", "Feet"};
    if (field == observer_field::IndexError) return {"On the Arc ( - )", "Off the Arc ( +)"};
    if (field == observer_field::Temp) return {"\u00B0C", "\u00B0F"};
    return {"Mb", "In Hg"};
}

int32_t Observer_Unit(const std::string& field) {
    const SettingsRecord& s = Settings;
    if (field == observer_field::HtOfEye) return s.UseMetres ? 0 : 1;
    if (field == observer_field::IndexError) return s.IndexError < 0 ? 0 : 1;
    if (field == observer_field::Temp) return s.UseCelsius ? 0 : 1;
    return s.UseMillibars ? 0 : 1;
}

void Observer_Set_Unit(const std::string& field, int32_t choice) {
    SettingsRecord& s = Settings;
    if (field == observer_field::HtOfEye) {
        s.UseMetres = choice == 0 ? kTrue : kFalse;
    } else if (field == observer_field::IndexError) {
        s.IndexError = choice == 0 ? -std::fabs(s.IndexError) : std::fabs(s.IndexError);
    } else if (field == observer_field::Temp) {
        s.UseCelsius = choice == 0 ? kTrue : kFalse;
    } else if (field == observer_field::Pressure) {
        s.UseMillibars = choice == 0 ? 1 : 0;
    } else {
        return;
    }
    Observer_Changed();
}

bool Observer_Commit(const std::string& field, double shown) {
    SettingsRecord& s = Settings;
    if (!std::isfinite(shown)) return false;
    if (field == observer_field::HtOfEye) {
        const double m = s.UseMetres ? shown : shown / kFeetPerMetre;
        if (m < 0) return false;
        s.HtOfEye = static_cast<float>(m);
    } else if (field == observer_field::IndexError) {
        // The sign is the choice of the arc; a zero stays positive.
        const double v = std::fabs(shown);
        s.IndexError = static_cast<float>(Observer_Unit(field) == 0 && v != 0 ? -v : v);
    } else if (field == observer_field::Temp) {
        const double c = s.UseCelsius ? shown : (shown - 32.0) * 5.0 / 9.0;
        if (c < -50.0 || c >= 50.0) return false;
        s.Temp = static_cast<float>(c);
    } else if (field == observer_field::Pressure) {
        const double mb = s.UseMillibars ? shown : shown / kInHgPerMb;
        if (mb <= 0) return false;
        s.Pressure = static_cast<float>(mb);
    } else {
        return false;
    }
    Observer_Changed();
    return true;
}

std::string Standard_Values_Line() {
    std::string line = "(Standard Values: ";
    line += Settings.UseCelsius ? "10\u00B0C/ " : " 50\u00B0F/ ";
    line += Settings.UseMillibars ? "1010mb)" : " 30.1 in Hg)";
    return line;
}

// ---- Position -------------------------------------------------------------------------------

bool Position_Plan_Enabled(double jd) { return DR_By_Plan_Allowed(Settings, Voyage, jd); }

std::vector<std::string> Position_Plan_Reason(double jd) {
    return Position_Popup_Words(Position_Spot::Disabled_DRbyPlan, Settings, Voyage, jd);
}

bool Position_Choose(int32_t method, double jd) {
    if (method < kFixPosition || method > kDRByPlan) return false;
    if (method == kDRByPlan && !Position_Plan_Enabled(jd)) return false;
    if (method == Settings.PositionMethod) return true;
    if (method == kFixPosition) {
        // Moving to the fix: the fix is where the reckoning had the observer now.
        float lat = Settings.ObserverLat, lon = Settings.ObserverLong;
        float course = Settings.FixCourse, speed = Settings.FixSpeed;
        Get_Position(jd, lat, lon, course, speed);
        Settings.ObserverLat = lat;
        Settings.ObserverLong = lon;
    } else if (method == kDRCourseSpeed && Settings.FixTime == 0) {
        Settings.FixTime = jd;
    }
    Settings.PositionMethod = method;
    Options_Flags.PositionMethodChanged = kTrue;
    Options_Flags.PositionChanged = kTrue;
    return true;
}

void Position_Set_Fix(double lat, double lon) {
    Settings.ObserverLat = static_cast<float>(lat);
    Settings.ObserverLong = static_cast<float>(lon);
    Options_Flags.PositionChanged = kTrue;
}

void Position_Set_Course(double degrees) {
    Settings.FixCourse = static_cast<float>(std::fmod(std::fmod(degrees, 360.0) + 360.0, 360.0));
    Options_Flags.PositionChanged = kTrue;
}

bool Position_Set_Speed(double knots) {
    if (!std::isfinite(knots) || knots < 0 || knots >= 100) return false;
    Settings.FixSpeed = static_cast<float>(knots);
    Options_Flags.PositionChanged = kTrue;
    return true;
}

void Position_Set_Fix_Time(double jd) {
    Settings.FixTime = jd;
    Options_Flags.PositionChanged = kTrue;
}

std::array<std::string, 3> Position_Plan_Lines() {
    const Plan_Header& h = Voyage.Header;
    auto line = [](double t, int32_t zone, const Way_Point* wp) {
        std::string s = Format_Day_Month(t + zone / 1440.0, false) + " " +
                        Format_Time_Of_Day(t + zone / 1440.0, false) + " " +
                        Format_TZ_Text(zone) + " @ ";
        if (wp) s += Format_Lat(wp->Lat, 1, false) + "  " + Format_Long(wp->Long, 1, false);
        return s;
    };
    const int last = Voyage.Last_Valid_Row();
    const Way_Point* first = Voyage.Row_Count() ? &Voyage.Way_Points.front() : nullptr;
    const Way_Point* final = last >= 0 ? &Voyage.Way_Points[static_cast<size_t>(last)] : nullptr;
    std::string name = h.Title.empty() ? h.Path : h.Title;
    return {"\"" + name + "\"", "ETD " + line(h.Plan_Start, h.ETD_Minutes, first),
            "ETA " + line(h.Plan_End, h.ETA_Minutes, final)};
}

// ---- Voyage speeds and times ----------------------------------------------------------------

namespace {
bool Speed_Ok(float knots) { return std::isfinite(knots) && knots >= 0.01f && knots < 100.0f; }
}  // namespace

bool Voyage_Set_Default_Speed(float knots) {
    if (!Speed_Ok(knots)) return false;
    Voyage.Header.Default_Speed = knots;
    Options_Flags.SpeedsChanged = kTrue;
    return true;
}

bool Voyage_Set_Fixed_Speed(int32_t which, float knots) {
    if (!Speed_Ok(knots)) return false;
    float* speeds[] = {&Voyage.Header.Fixed_Speed_1, &Voyage.Header.Fixed_Speed_2,
                       &Voyage.Header.Fixed_Speed_3};
    if (which < 0 || which > 2) return false;
    *speeds[which] = knots;
    Options_Flags.SpeedsChanged = kTrue;
    Options_Flags.ColumnsChanged = kTrue;  // the ETA@ and TTG@ titles carry the speeds
    return true;
}

void Voyage_Reset_Plan_Speeds() {
    Voyage.Set_Speeds(Voyage.Header.Default_Speed);
    Options_Flags.SpeedsChanged = kTrue;
}

VoyageTimes Voyage_Times() {
    const Plan_Header& h = Voyage.Header;
    return {h.Plan_Start + h.ETD_Minutes / 1440.0, h.Plan_End + h.ETA_Minutes / 1440.0,
            h.ETD_Minutes, h.ETA_Minutes};
}

bool Voyage_Set_Zone(bool eta, int32_t minutes) {
    if (minutes < -720 || minutes > 720) return false;
    Plan_Header& h = Voyage.Header;
    (eta ? h.ETA_Minutes : h.ETD_Minutes) = static_cast<int16_t>(minutes);
    (eta ? h.ETA_Zone : h.ETD_Zone) = Format_TZ_Text(minutes);
    Options_Flags.SpeedsChanged = kTrue;
    Options_Flags.TimeChanged = kTrue;
    return true;
}

// ---- Filter ---------------------------------------------------------------------------------

int32_t Filter_Alt_Index() {
    const float minutes = static_cast<float>(SightsFilter.AltLimit * kArcminPerRadian);
    // The lookup is by value: 2' finds the third item, which reads 2'.5.
    int32_t best = 0;
    for (size_t i = 1; i < kFilterAltValues.size(); ++i)
        if (std::fabs(kFilterAltValues[i] - minutes) <
            std::fabs(kFilterAltValues[static_cast<size_t>(best)] - minutes))
            best = static_cast<int32_t>(i);
    return best;
}

int32_t Filter_Az_Index() {
    const int32_t i = Index_Of(kFilterAzValues, SightsFilter.AzLimit);
    return i < 0 ? 4 : i;
}

int32_t Filter_Star_Index() {
    const int32_t i = Index_Of(kFilterStarCounts, SightsFilter.StarCount);
    return i < 0 ? 1 : i;
}

void Filter_Set_Alt(int32_t index) {
    if (!In_Range<kFilterAltValues.size()>(index)) return;
    SightsFilter.AltLimit =
        static_cast<float>(kFilterAltValues[static_cast<size_t>(index)] / kArcminPerRadian);
    Options_Flags.FilterChanged = kTrue;
}

void Filter_Set_Az(int32_t index) {
    if (!In_Range<kFilterAzValues.size()>(index)) return;
    SightsFilter.AzLimit = kFilterAzValues[static_cast<size_t>(index)];
    Options_Flags.FilterChanged = kTrue;
}

void Filter_Set_Stars(int32_t index) {
    if (!In_Range<kFilterStarCounts.size()>(index)) return;
    SightsFilter.StarCount = kFilterStarCounts[static_cast<size_t>(index)];
    Options_Flags.FilterChanged = kTrue;
}

void Filter_Set_Daylight(bool on) {
    SightsFilter.DaylightStars = on ? kTrue : kFalse;
    Options_Flags.FilterChanged = kTrue;
}

void Filter_Set_Tab_Down(bool on) { Settings.SightsTabDown = on ? 1 : 0; }

// ---- Bodies and Body ------------------------------------------------------------------------

int32_t Radius_Index() {
    const int32_t i = Index_Of(kRadiusValues, Filters.LimitRadius);
    return i < 0 ? 0 : i;
}

int32_t Mag_Index() {
    const int32_t i = Index_Of(kMagCounts, Filters.StarCount);
    return i < 0 ? 0 : i;
}

void Bodies_Set_Tick(int16_t& flag, bool on) {
    flag = on ? kTrue : kFalse;
    Options_Flags.BodiesChanged = kTrue;
}

void Bodies_Set_Mode(int32_t mode) {
    if (mode < 0 || mode >= static_cast<int32_t>(kBodiesModes.size())) return;
    Filters.BodyFilterMode = mode;
    Options_Flags.BodiesChanged = kTrue;
}

void Bodies_Set_Constellation(int32_t number) {
    if (number < 1 || number > 88) return;
    Filters.ConstelChoice = number;
    Options_Flags.BodiesChanged = kTrue;
}

void Bodies_Set_Radius(int32_t index) {
    if (!In_Range<kRadiusValues.size()>(index)) return;
    Filters.LimitRadius = kRadiusValues[static_cast<size_t>(index)];
    Options_Flags.BodiesChanged = kTrue;
}

void Bodies_Set_Mag(int32_t index) {
    if (!In_Range<kMagCounts.size()>(index)) return;
    Filters.StarCount = kMagCounts[static_cast<size_t>(index)];
    Options_Flags.BodiesChanged = kTrue;
}

void Bodies_Set_Centre(float a, float b) {
    Filters.CentreA = a;
    Filters.CentreB = b;
    Options_Flags.BodiesChanged = kTrue;
}

void Body_Set(int32_t number) {
    if (number < 0 || number > 11) return;
    Filters.ShowBody = number;
    Options_Flags.BodyOrIntervalChanged = kTrue;
}

void Body_Set_Interval(int32_t index) {
    if (!In_Range<kIntervals.size()>(index)) return;
    Filters.IntervalUnit = kIntervals[static_cast<size_t>(index)];
    Options_Flags.BodyOrIntervalChanged = kTrue;
}

void Body_Set_Seconds(bool on) {
    Filters.ShowSecondsOfArc = on ? kTrue : kFalse;
    Options_Flags.BodyOrIntervalChanged = kTrue;
}

int32_t Interval_Index() {
    for (size_t i = 0; i < kIntervals.size(); ++i)
        if (Filters.IntervalUnit == kIntervals[i]) return static_cast<int32_t>(i);
    return 3;
}

// ---- Columns --------------------------------------------------------------------------------

namespace {
// Visible columns first, each group in the order of the list.
void Regroup(GridModel& grid) {
    std::stable_partition(grid.MyColmPtr.begin(), grid.MyColmPtr.end(), [&](int32_t c) {
        return grid.MyColmVisible[static_cast<size_t>(c)] != 0;
    });
    grid.Columns_Set_Working_Arrays();
    Options_Flags.ColumnsChanged = kTrue;
}

std::vector<size_t> Listed_Positions(const GridModel& grid) {
    std::vector<size_t> at;
    for (size_t p = 0; p < grid.MyColmPtr.size(); ++p) {
        const auto c = static_cast<size_t>(grid.MyColmPtr[p]);
        if (c < grid.MyColmAvailable.size() && grid.MyColmAvailable[c]) at.push_back(p);
    }
    return at;
}
}  // namespace

std::vector<ColumnLine> Columns_List(const GridModel& grid) {
    std::vector<ColumnLine> lines;
    for (size_t p : Listed_Positions(grid)) {
        const int32_t c = grid.MyColmPtr[p];
        const auto& titles = grid.MyColmTitles[static_cast<size_t>(c)];
        lines.push_back({c, titles.empty() ? std::string() : titles[0],
                         grid.MyColmVisible[static_cast<size_t>(c)] != 0});
    }
    return lines;
}

void Columns_Toggle(GridModel& grid, int32_t line) {
    const auto at = Listed_Positions(grid);
    if (line < 0 || line >= static_cast<int32_t>(at.size())) return;
    const auto c = static_cast<size_t>(grid.MyColmPtr[at[static_cast<size_t>(line)]]);
    if (grid.MyColmVisible[c] && grid.ColmsInUse <= 0) return;  // one column always shows
    grid.MyColmVisible[c] = grid.MyColmVisible[c] ? kFalse : kTrue;
    Regroup(grid);
}

void Columns_Move(GridModel& grid, int32_t from, int32_t to) {
    const auto at = Listed_Positions(grid);
    const auto n = static_cast<int32_t>(at.size());
    if (from < 0 || from >= n || to < 0 || to >= n || from == to) return;
    std::vector<int32_t> listed;
    for (size_t p : at) listed.push_back(grid.MyColmPtr[p]);
    const int32_t moved = listed[static_cast<size_t>(from)];
    listed.erase(listed.begin() + from);
    listed.insert(listed.begin() + to, moved);
    for (size_t i = 0; i < at.size(); ++i) grid.MyColmPtr[at[i]] = listed[i];
    Regroup(grid);
}

void Columns_Set_AutoSize(GridModel& grid, bool on) {
    grid.AutoSize = on;
    grid.Columns_Set_Working_Arrays();
    Options_Flags.ColumnsChanged = kTrue;
}

// ---- Misc -----------------------------------------------------------------------------------

void Misc_Set_Help_Level(int32_t level) {
    if (level >= 0 && level <= 3) Settings.HelpLevel = level;
}

void Misc_Set_Standard_RiseSet(bool on) {
    // The stored flag is 0 while the tick is set.
    Settings.SimplifiedRiseSet = on ? 0 : 1;
    Options_Flags.TimeChanged = kTrue;
}

void Misc_Set_Reinstate(bool on) { Options_Flags.ResetMessages = on ? kTrue : kFalse; }

}  // namespace kelmoran
