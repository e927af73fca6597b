// The Star Atlas's options: the view, what is drawn, and the two star limits. They last
// for the run; the one kept in User.Dat is ShowRA (the settings record's byte).
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kelmoran {

struct AtlasOptions {
    std::string View = "VisibleStars";  // "VisibleStars", "NorthStars", "SouthStars", "Equatorial"
    bool ShowConstellations = true;     // the constellations' names
    bool ShowCyrillic = false;          // planet glyphs instead of names
    bool ShowDesigs = true;             // Bayer and Flamsteed designations
    bool ShowNames = true;              // star names
    bool ShowGuides = true;             // the figure lines
    bool ShowBoundaries = false;        // the IAU boundaries, faint and dashed
    bool MinorPlanets = false;          // Neptune, Uranus and Pluto
    bool PopUpDetails = false;          // the pop-up adds the catalogue numbers
    bool Option1 = false;               // the graticule at every zoom, not only at zoom 1
    bool ShowVariables = false;         // variables are designated too
    bool ShowNorthUp = true;            // the visible sky has north up; else the heading
    int32_t Heading = 0;                // degrees at the top when ShowNorthUp is off
    int32_t MainStarEntry = 0;          // MainStarCombo
    int32_t BackgroundEntry = 3;        // BkGndStarsCombo
};

// The options of the run.
AtlasOptions& Atlas_Options();

// The star limits of the two combos' entries (MainStarCombo 0 .. 8, BkGndStarsCombo 0 .. 7),
// capped at what the catalogue delivers.
int32_t Main_Star_Limit(int32_t entry);
int32_t Background_Limit(int32_t entry);
// The combos' captions.
std::string Limit_Caption(int32_t limit);

// The entry of BkGndStarsCombo for a limit: the first whose limit reaches it.
int32_t Set_Background_Stars_Level(int32_t limit);

// The caption of the altitude option by the observer settings: "App. Alt.", "Obs. Alt."
// (height of eye given) or "Sex. Alt." (index error given).
std::string Set_Alt_Option_Caption();

// Loads the tiers a limit needs; true if the catalogue then reaches it.
bool Load_Tiers_For_Limit(int32_t limit);

}  // namespace kelmoran
