#include "shell/M_Help.h"

#include <map>

#include "shell/M_Kelmoran.h"

namespace kelmoran {

namespace {

using K = HelpKind;

// The pop-up texts by key. Keys of the main window's screens first, then those of the
// Options tabs (where a key of both has one meaning, one entry serves).
const std::map<std::string, HelpText>& Table() {
    static const std::map<std::string, HelpText> table = {
        // ---- date strip
        {"NN", {K::Input, {"## or +/-", "<Spc> or <Tab> to move"}}},
        {"NN.NN", {K::Input, {"##.## or +/-", "<Spc> or <Tab> to move"}}},
        {"Month", {K::Input, {"## or +/- or first few characters"}}},
        {"Year", {K::Input, {"#### or +/-"}}},
        {"Dates", {K::Normal, {"Right click to choose the calendar,", "the era or the Time Zone"}}},
        {"NNNN", {K::Input, {"#### or +/-"}}},
        // ---- position and plan
        {"ETD Disabled", {K::Disabled, {"Time of departure is set by the plan", "Edit the first way point's time"}}},
        {"ETA Disabled", {K::Disabled, {"Time of arrival follows the speeds", "Lock a row to fix its time"}}},
        {"DRwarning", {K::Disabled, {"Voyage has expired"}}},
        {"DR Error", {K::Disabled, {"Position could not be reckoned", "for this time. Check Options/ Position"}}},
        {"Drag Colm", {K::Input, {"Click and drag to change width"}}},
        {"Position", {K::Normal, {"Position is fixed", "Use Options to amend"}}},
        {"DRbyTrack Position", {K::Normal, {"Positions using Co/ Dist"}}},
        {"DRbyPlan Position", {K::Normal, {"Voyage plan in use"}}},
        {"Variation", {K::Term, {"Magnetic Variation"}}},
        {"Magnetic Dip", {K::Term, {"Angle between Earth's Magnetic", "Field and the Horizontal"}}},
        // ---- the day
        {"Astronomical AM", {K::Term, {"Start of;   True Alt = -18\u00B0", "First brightening of the sky"}}},
        {"Nautical AM", {K::Term, {"Start of;   True Alt = -12\u00B0", "Horizon usually visible"}}},
        {"Civil AM", {K::Term, {"Start of;   True Alt = -6\u00B0", "Stars difficult to see"}}},
        {"Sunrise", {K::Term, {"Altitude of Upper Limb = 0\u00B0"}}},
        {"Mer. Pass. (Obs. Alt.)", {K::Term, {"Sun's observed altitude on the meridian", "(Lower Limb, corrected)"}}},
        {"Mer. Pass. (App. Alt.)", {K::Term, {"Sun's apparent altitude on the meridian", "(before refraction is removed)"}}},
        {"Aries @ 12:00", {K::Term, {"GHA of (theoretical) First Point of Aries"}}},
        {"Aries Mer.Pass.", {K::Term, {"Passage of Aries over", "Observer's Meridian"}}},
        {"Sunset", {K::Term, {"Altitude of Upper Limb = 0\u00B0"}}},
        {"Civil PM", {K::Term, {"End of;   True Alt = -6\u00B0", "Stars and Horizon usually visible"}}},
        {"Nautical PM", {K::Term, {"End of;   True Alt = -12\u00B0", "Usually last opportunity for a sight"}}},
        {"Astronomical PM", {K::Term, {"End of;   True Alt = -18\u00B0", "Fully Dark"}}},
        {"Previous ", {K::Term, {"The last principal phase", "before this date"}}},
        {"Next ", {K::Term, {"The next principal phase", "after this date"}}},
        {"Phase", {K::Term, {"Sun-Earth-Moon angle", "(0\u00B0 = Full Moon)"}}},
        {"Age", {K::Term, {"Days since New Moon", "(At Mer Pass)"}}},
        // ---- headings of the tables
        {"Right Click to add columns", {K::Input, {"Right Click to add columns"}}},
        {"BayerCol", {K::Term, {"Bayer, Flamsteed or Variable designation", "taken in that order if more than one available"}}},
        {"ConstelCol", {K::Term, {"Constellation of the designation", "(three-letter abbreviation)"}}},
        {"NameCol", {K::Term, {"Name if known. Use ''Find Star'' for alternatives", "using the ''Show All Names'' option"}}},
        {"AltCol", {K::Term, {"Altitude by the column's title:", "Sextant, Observed or Apparent"}}},
        {"AzCol", {K::Term, {"True bearing of the body", "from the observer"}}},
        {"MagAz", {K::Term, {"Bearing of the body by the compass", "(True Azimuth less Variation)"}}},
        {"GHAcol", {K::Term, {"Hour Angle measured Westwards from Greenwich Meridian", "In Degrees and Minutes. Similar to Longitude"}}},
        {"SHAcol", {K::Term, {"Hour Angle measured Westwards from", "Aries in Degrees and Minutes"}}},
        {"DecCol", {K::Term, {"Declination: angle North or South", "of the celestial equator. Similar to Latitude"}}},
        {"MagCol", {K::Term, {"Logarithmic scale of Brightness", "An increase of 1 = halving of brightness"}}},
        {"SDcol", {K::Term, {"Semi-Diameter in Minutes of Arc for Sun and Moon,", "Seconds for Planets. Allways zero for stars"}}},
        {"TCcol", {K::Term, {"Sum of corrections to be applied", "to the sextant reading"}}},
        {"RAcol", {K::Term, {"Hour Angle measured Eastwards from Aries", "in Hours, Minutes and Seconds"}}},
        {"Cats", {K::Term, {"Number of the star in that catalogue"}}},
        {"RadCol", {K::Term, {"True distance from selected position"}}},
        {"StarNoCol", {K::Term, {"Number of the star in the program's", "list, brightest first"}}},
        {"True Altitude", {K::Term, {"Altitude corrected for refraction,", "semi-diameter and parallax"}}},
        {"Noon Position", {K::Term, {"Expected position at 12:00", "ship's time"}}},
        {"MerPass", {K::Term, {"Time the Sun crosses", "the Observer's Meridian"}}},
        {"Time Zone", {K::Normal, {"Zone of the times shown", "Right click on the date to change"}}},
        {"Voyage Clox", {K::Disabled, {"Default voyage plan in use. Choose a different position method", "from ''Options'' to enable details for month ahead"}}},
        {"Time", {K::Normal, {"Local Time of the row"}}},
        {"Posn", {K::Term, {"Position at the row's time"}}},
        {"Aries", {K::Term, {"GHA of the First Point of Aries"}}},
        {"Body", {K::Normal, {"Body shown. Choose another", "from Options/ Body"}}},
        {"Title", {K::Input, {"Name of the voyage", "Type to change"}}},
        {"Main ETD", {K::Input, {"Time of departure", "Click a field to change it"}}},
        {"Main ETA", {K::Input, {"Time of arrival. Changing it sets", "the speeds of the unlocked rows"}}},
        {"Default Speed", {K::Input, {"##.##", "Default value for new tracks"}}},
        {"Colm Options", {K::Normal, {"Right click to hide, insert or", "size columns"}}},
        {"ID", {K::Input, {"Alphanumeric Way Point Identifier", "Six character maximum"}}},
        {"WPt", {K::Input, {"Numeric Way Point Identifier (1-999)", "or R = Ra, G = GPS, V = Vis, F = Fix "}}},
        {"Description", {K::Input, {"Free text", "Right click to add Remarks"}}},
        {"Latitude", {K::Input, {"## ##.## +/- for N/S", "d or <Spc> as degree separator"}}},
        {"Longitude", {K::Input, {"### ##.## +/- for E/W", "d or <Spc> as degree separator"}}},
        {"Speed", {K::Input, {"##.##"}}},
        {"Course", {K::Input, {"###.# degrees True", "Sets the next way point"}}},
        {"Distance", {K::Input, {"####.# nautical miles", "Sets the next way point"}}},
        {"DistanceCol", {K::Term, {"Distance of the body from the Earth"}}},
        {"Total Dist.", {K::Term, {"Distance from the start of the voyage"}}},
        {"E.T.A.", {K::Input, {"dd/hh:mm", "Ensure row is locked if actual time used!"}}},
        {"Time to go", {K::Term, {"Time to the final way point"}}},
        {"Dist to go", {K::Term, {"Distance to the final way point"}}},
        {"ETA@", {K::Term, {"Arrival at the fixed speed", "(Options/ Voy Plan)"}}},
        {"TTG@", {K::Term, {"Time to go at the fixed speed", "(Options/ Voy Plan)"}}},
        {"Mag Co", {K::Input, {"###.# degrees Magnetic"}}},
        {"Ship Time", {K::Term, {"Zone kept on board for the day"}}},
        {"LMT @ WPt", {K::Term, {"Local Mean Time at the way point"}}},
        // ---- moon phases and eclipses
        {"New", {K::Term, {"New Moon: Moon between Earth and Sun"}}},
        {"1st Qtr", {K::Term, {"First Quarter: half the disc lit", "Moon waxing"}}},
        {"Full", {K::Term, {"Full Moon: Earth between Sun and Moon"}}},
        {"3rd Qtr", {K::Term, {"Last Quarter: half the disc lit", "Moon waning"}}},
        {"Eclipses", {K::Normal, {"Eclipses of the year", "Click one to show it on the map"}}},
        {"LeftBtn", {K::Input, {"Earlier eclipse"}}},
        {"RightBtn", {K::Input, {"Later eclipse"}}},
        {"Steps", {K::Input, {"Time step of the shadow's path"}}},
        {"Path", {K::Normal, {"Show the complete path", "(can be slow)"}}},
        {"Penumbra ", {K::Term, {"Region of partial shadow"}}},
        {"Penumbra2", {K::Term, {"Outer limit of the partial eclipse"}}},
        {"Umbra2", {K::Term, {"Limit of the total or annular eclipse"}}},
        {"Partial", {K::Term, {"Part of the Sun covered"}}},
        {"Night", {K::Term, {"Sun below the horizon"}}},
        {"No Solar", {K::Term, {"No solar eclipse at this new moon"}}},
        {"Total", {K::Term, {"Whole disc covered"}}},
        {"Sub-Solar", {K::Term, {"Point with the Sun overhead"}}},
        {"Visible", {K::Term, {"Eclipse visible from the position"}}},
        {"Not Visible", {K::Term, {"Eclipse not visible from the position"}}},
        {"Umbra", {K::Term, {"Region of full shadow"}}},
        {"Penumbra", {K::Term, {"Region of partial shadow"}}},
        {"Earth Penumbra", {K::Term, {"Earth's partial shadow at the Moon"}}},
        {"Earth Umbra", {K::Term, {"Earth's full shadow at the Moon"}}},
        // ---- Options: Body and Bodies
        {"Interval", {K::Normal, {"Time between rows of Solar Bodies"}}},
        {"Bodies", {K::Normal, {"Bodies listed on the AltAz screen"}}},
        {"Minor Planets", {K::Normal, {"Adds Neptune, Uranus and Pluto"}}},
        {"Visible Bodies Only", {K::Normal, {"Only bodies with a true altitude", "above 10\u00B0 are listed"}}},
        {"By Constellation", {K::Normal, {"Stars of one constellation", "(more of the catalogue may be loaded)"}}},
        {"By SHA/ Dec", {K::Normal, {"Stars within the Limiting Radius", "of a point given by S.H.A. and Dec."}}},
        {"SHA", {K::Input, {"### ##.# (000\u00B0.0)", "d or <Spc> as degree separator"}}},
        {"Dec", {K::Input, {"## ##.# +/- for N/S", "d or <Spc> as degree separator"}}},
        {"By Obs Alt/ Az", {K::Normal, {"Stars within the Limiting Radius of a point", "given by Observed Altitude and Azimuth"}}},
        {"Alt", {K::Input, {"## ##.# +/-", "d or <Spc> as degree separator"}}},
        {"Az", {K::Input, {"###.# degrees True"}}},
        {"Limiting Radius", {K::Normal, {"Stars within this distance", "of the point are listed"}}},
        {"Mag Limit", {K::Normal, {"Faintest stars listed", "(a higher number lists more)"}}},
        // ---- Options: Columns
        {"Columns", {K::Input, {"Click to show or hide a column", "Right click and drag to move it"}}},
        {"NavPlan", {K::Normal, {"Columns of the Voyage screen"}}},
        {"Fixed Speeds", {K::Normal, {"Speeds of the ETA@ and TTG@", "columns (Options/ Voy Plan)"}}},
        {"Mag Var", {K::Term, {"Magnetic Variation at the way point"}}},
        {"LMT", {K::Term, {"Local Mean Time"}}},
        {"Clox", {K::Normal, {"Columns of the Clocks screen"}}},
        {"Use Remarks", {K::Normal, {"A second line of text", "under each way point"}}},
        {"AltAz", {K::Normal, {"Columns of the AltAz screen"}}},
        {"Cyrillic", {K::Normal, {"Designations in Cyrillic", "characters where known"}}},
        {"AutoSize", {K::Normal, {"Column widths are scaled", "to fill the screen"}}},
        {"Show Seconds", {K::Normal, {"Angles and times shown", "to the second"}}},
        // ---- Options: Observer
        {"Observer", {K::Normal, {"Values used to correct", "sextant altitudes"}}},
        {"Dip", {K::Input, {"Height of eye above the sea: ###.#", "Dip of the horizon follows from it"}}},
        {"IE", {K::Input, {"Index error in minutes: ##.#", "Choose On or Off the Arc for its sign"}}},
        {"NNN.N", {K::Input, {"###.# Temperature", "-50\u00B0C to 50\u00B0C"}}},
        {"NNNN.N", {K::Input, {"####.# Pressure"}}},
        {"Index Error On", {K::Term, {"Reading is too high:", "error is subtracted"}}},
        {"Index Error Off", {K::Term, {"Reading is too low:", "error is added"}}},
        // ---- Options: Position
        {"Fix Posn", {K::Normal, {"All screens use this position"}}},
        {"DR By Co/ Spd", {K::Normal, {"Position reckoned from the fix", "by course and speed"}}},
        {"DR by Plan", {K::Normal, {"Position taken from the", "default voyage plan"}}},
        {"Lat", {K::Input, {"## ##.## +/- for N/S", "d or <Spc> as degree separator"}}},
        {"Long", {K::Input, {"### ##.## +/- for E/W", "d or <Spc> as degree separator"}}},
        // ---- Options: Time
        {"Manual TZ", {K::Normal, {"Time zone set by hand", "Summer time is not applied"}}},
        {"TZ", {K::Input, {"## Hours (up to 12), ## Minutes", "Click the sign to change it"}}},
        {"Auto Time Zone Disable", {K::Normal, {"Stop following the computer's", "time zone"}}},
        {"Auto Time Zone Enable", {K::Normal, {"Follow the computer's time zone", "and its summer time"}}},
        // ---- Options: Misc
        {"Misc", {K::Normal, {"Rising and setting, help", "and first-use messages"}}},
        {"Simplified Rising & Setting", {K::Term, {"Standard refraction and semi-diameter", "as the printed almanacs use"}}},
        {"Help Level 0", {K::Normal, {"Full descriptions of terms used, Icon purpose"}}},
        {"Help Level 1", {K::Normal, {"+ description of terms used"}}},
        {"Help Level 2", {K::Normal, {"Data entry methods, shortcuts"}}},
        {"Help Level 3", {K::Normal, {"+ Disabled Items cause"}}},
        // ---- Options: Voy Plan and Filter
        {"Voy Plan", {K::Normal, {"Speeds of the voyage plan"}}},
        {"Speed: Fixed Speeds", {K::Input, {"##.##", "Speeds of the ETA@ and TTG@ columns"}}},
        {"Reset Plan Speeds", {K::Normal, {"Changes affect all unlocked rows"}}},
        {"Filter", {K::Normal, {"Which bodies are offered for a sight"}}},
        {"Sight Bodies to Test", {K::Normal, {"Stars tested, brightest first"}}},
        {"Sights Altitude Limit", {K::Normal, {"Largest difference between the", "sight and a body's altitude"}}},
        {"Sights Azimuth Limit", {K::Normal, {"Largest difference between the", "sight and a body's azimuth"}}},
        {"Daylight Stars", {K::Normal, {"Offer stars while the Sun", "is above the horizon"}}},
        {"AltTabOrder", {K::Normal, {"<Tab> moves down a column", "instead of along the row"}}},
    };
    return table;
}

bool Shows_At(HelpKind kind, int32_t level) {
    switch (kind) {
        case K::Input:
        case K::Disabled: return true;
        case K::Normal: return level <= 2;
        case K::Term: return level <= 1;
        case K::Full: return level <= 0;
    }
    return false;
}

}  // namespace

HelpText Help_Text(const std::string& key) {
    const auto& t = Table();
    const auto it = t.find(key);
    return it == t.end() ? HelpText{} : it->second;
}

std::vector<std::string> Help_Lines(const std::string& key, int32_t level) {
    const HelpText text = Help_Text(key);
    if (text.Lines.empty() || !Shows_At(text.Kind, level)) return {};
    std::vector<std::string> lines;
    for (std::string line : text.Lines) {
        for (size_t at = line.find("''"); at != std::string::npos; at = line.find("''", at))
            line.replace(at, 2, "\"");
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> Help_Keys() {
    std::vector<std::string> keys;
    for (const auto& [key, text] : Table()) keys.push_back(key);
    return keys;
}

// ---- Non-Recurring Messages ---------------------------------------------------------------

namespace {
std::string Join(std::initializer_list<const char*> lines) {
    std::string s;
    for (const char* line : lines) {
        if (!s.empty()) s += "\r\n";
        s += line;
    }
    return s;
}

std::string Quotes(std::string s) {
    for (size_t at = s.find("''"); at != std::string::npos; at = s.find("''", at))
        s.replace(at, 2, "\"");
    return s;
}
}  // namespace

std::string Get_FirstUse_Message(const std::string& key) {
    std::string s;
    if (key == screen_key::Splash) {
        s = Join({"All calculations are for the expected position at that time. This is calculated according to the ",
                  "''Postion'' option chosen. If a voyage plan is in use then the current course and speed will also ",
                  "be displayed."}) +
            "\r\n\r\n" +
            Join({"These ''Non-Recurring Messages'' will not be shown after you exit the program for the first time.",
                  "They can however be reinstated from Options/ Misc. The level of help offered using Popups is",
                  "also controlled there."});
    } else if (key == screen_key::AltAz) {
        s = Join({"Data is sorted by right-clicking on the column header.",
                  "The selection offered and information provided can be changed from Options.",
                  "The column order is changed from Options/ Columns by right-clicking and then ",
                  "dragging the item to a new position."});
    } else if (key == screen_key::Clox) {
        s = Join({"Sundays' rows are red.",
                  "Details for the month ahead is shown when the position is fixed. ",
                  "When a voyage plan is in use, data for the voyage is shown and all times are for the",
                  "expected position at that time. Ship's time is used which can be taken from the plan",
                  "or calculated here and then transferred into the plan. (See User Manual.)"});
    } else if (key == screen_key::Planets) {
        s = Join({"This screen shows data by interval for the Sun, Moon or any of the planets. Its main use",
                  "is to identify the time for a particular bearing or altitude.",
                  "The maximum altitude is not always when the body crosses the meridian. It may differ",
                  "by a few seconds when the declination is changing relatively quickly."});
    } else if (key == screen_key::Lunations) {
        s = Join({"The eclipse's shadow can be shown on the map for any time or, by selecting",
                  "''Show Plan,'' the path relative to the Earth/ Moon is shown. (This is useful when",
                  "the shadow covers the North or South Pole.)",
                  "Calculating the complete path of a Solar Eclipse involves many calculations and",
                  "can be slow."});
    } else if (key == screen_key::NavPlan) {
        s = Join({"A plan can be compiled and set to load automatically without being used by other",
                  "screens. However, if it is in use then position errors will occur for times outside the ",
                  "duration of the voyage.",
                  "Right-clicking on a row's number allows the row to be locked. This prevents changes ",
                  "to ETAs altering earlier times/ speeds."});
    } else if (key == screen_key::Almanac) {
        s = Join({"This screen opens separately to other screens to allow side by side comparisons.",
                  "Simpifications may cause values to differ from other screens. (See User Manual.)"});
    } else if (key == screen_key::Sights) {
        s = Join({"Filter settings are initially very wide (+/- 120' in altitude and +/- 90\u00B0 in azimuth.) This SHOULD",
                  "provide a selection of bodies for a random altitude and azimuth. (See Options/ Filter.)",
                  "A more reasonable limit of +/- 10' in altitude will usually limit the alternatves offered to one for ",
                  "any sight. (None for a random altitude and azimuth.)"});
    } else if (key == screen_key::PlotStars) {
        s = Join({"Use the Mouse wheel to vary the brightness of stars or click on the appropriate icon at the",
                  "the top of the screen. (A popup will help identify them.)",
                  "The Options for this screen can be varied without closing the Options screen, though it can",
                  "be closed and then reopened using the telescope icon.",
                  "Clicking on the ''i'' icon provides additional information about the stars for which detail has",
                  "been selected. (A popup will be displayed when the mouse hovers over these stars.)",
                  "Information options are displayed by clicking on ''Popup Detail'' at the bottom of Options.",
                  "Avoid too high a magnitude for the zoom in use as it will increase response times."});
    }
    return Quotes(s);
}

bool Take_Intro_Pending(const std::string& key) {
    if (!Shell.ShowIntro) return false;
    int16_t* flag = nullptr;
    const int index = Window_Index_Of(key);
    if (index >= 0 && index < kGridScreenCount) {
        flag = &Shell.IntroPending[static_cast<size_t>(index)];
    } else if (index >= 7 && index <= 9) {
        flag = &Shell.IntroPendingSeparate[static_cast<size_t>(index - 7)];
    }
    if (!flag || !*flag) return false;
    *flag = kFalse;
    return true;
}

}  // namespace kelmoran

#include "settings/SettingsRecord.h"
#include "shell/Screen_Rows.h"

namespace kelmoran {

std::string Main_Help_Key(const MainPage& page, bool moonBlock, size_t index) {
    const std::vector<MainLine>& lines = moonBlock ? page.Moon : page.Day;
    if (index >= lines.size()) return {};
    const std::string& label = lines[index].Label;
    auto starts = [&](const char* s) { return label.rfind(s, 0) == 0; };
    if (moonBlock) {
        if (label == "Mer.Pass.") return "MerPass";
        if (label == "Phase" || label == "Age") return label;
        if (starts("Previous ")) return "Previous ";
        if (starts("Next ")) return "Next ";
        return {};
    }
    if (label == "Position" || label == "Current Position" || starts("          Co.")) {
        if (lines[index].Value == "DR Error") return "DR Error";
        if (Settings.PositionMethod == 1) return "DRbyTrack Position";
        if (Settings.PositionMethod == 2) return "DRbyPlan Position";
        return "Position";
    }
    if (label == "Variation ") return "Variation";
    if (label == "Mer.Pass.") return "MerPass";
    if (starts("Mer. Pass. (")) return label.find("App.") != std::string::npos
                                           ? "Mer. Pass. (App. Alt.)"
                                           : "Mer. Pass. (Obs. Alt.)";
    if (label == "Astronomical" || label == "Nautical" || label == "Civil") {
        bool afterNoon = false;
        for (size_t i = 0; i < index; ++i)
            if (lines[i].Label == "Sunset") afterNoon = true;
        return label + (afterNoon ? " PM" : " AM");
    }
    if (label == "Magnetic Dip" || label == "Sunrise" || label == "Sunset" ||
        label == "Aries @ 12:00")
        return label;
    return {};
}

std::string Heading_Help_Key(const std::string& key, int32_t column) {
    static const std::vector<const char*> altaz = {
        "BayerCol", "ConstelCol", "NameCol", "AltCol", "AzCol",         "GHAcol",
        "SHAcol",   "DecCol",     "MagAz",   "MagCol", "SDcol",         "TCcol",
        "True Altitude", "RAcol", "Cats",    "Cats",   "Cats",          "RadCol"};
    static const std::vector<const char*> planets = {
        "Time", "Time", "Posn", "Posn", "True Altitude", "AltCol", "AzCol", "RAcol",
        "GHAcol", "SHAcol", "DecCol", "DistanceCol", "SDcol", "MagCol", "Aries", "TCcol"};
    static const std::vector<const char*> lunations = {
        "", "New", "1st Qtr", "Full", "3rd Qtr", "New", "1st Qtr", "Full", "3rd Qtr", "Eclipses"};
    const std::vector<const char*>* table = nullptr;
    if (key == screen_key::AltAz) table = &altaz;
    if (key == screen_key::Planets) table = &planets;
    if (key == screen_key::Lunations) table = &lunations;
    if (!table || column < 0 || column >= static_cast<int32_t>(table->size())) return {};
    return (*table)[static_cast<size_t>(column)];
}

}  // namespace kelmoran
