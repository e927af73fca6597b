// The rows of the table screens: what AltAz, Main ("Splash"), Solar Bodies ("Planets")
// and Moon Phases ("Lunations") show for a moment, as the texts of their cells. The grid
// screens call these from CalcDates and only paint what comes back; no arithmetic of the
// rows is done in the window layer.
//
// Every function reads the shared state it needs (Settings, TZ_Bias, the voyage plan, the
// star catalogue, the Bodies filters below), asks Get_Position where the observer is, and
// never fails: a moment that the position method cannot serve sets DRwarning and puts
// "DR Error" on the row instead of raising anything.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelmoran {

// The filters of the Bodies tab and the body of Solar Bodies: shared state of the run,
// not saved. Defaults as a first run shows them.
struct BodyFilters {
    int16_t SunLowerLimb = 0;           // the Sun's row is for the lower limb
    int16_t MoonLowerLimb = 0;          // the Moon's row is for the lower limb
    int16_t MinorPlanets = 0;           // Uranus, Neptune and Pluto are listed
    int16_t AboveTenOnly = -1;          // "Altitudes above 10° Only"
    int32_t BodyFilterMode = 0;         // 0 main stars, 1 by magnitude, 2 constellation,
                                        // 3 by S.H.A./Dec., 4 by observed altitude/azimuth
    int32_t ConstelChoice = 1;          // constellation number of mode 2
    int32_t LimitRadius = 10;           // minutes of arc, modes 3 and 4
    int32_t StarCount = 280;            // stars in use in mode 1, brightest first
    float CentreA = 0.0f;               // SHA (mode 3) or altitude (mode 4), radians
    float CentreB = 0.0f;               // declination (mode 3) or azimuth (mode 4), radians
    int32_t ShowBody = 1;               // body number 0 .. 11 of Solar Bodies
    std::string IntervalUnit = "Hour";  // "Year", "Month", "Day", "Hour", "Minute", "Second"
    int16_t ShowSecondsOfArc = 0;       // "Show Seconds of Arc" on Solar Bodies
};

extern BodyFilters Filters;

// The rows of one table screen. Labels[c][r] is the text of column number c (not position)
// in row r; every column vector has Rows entries.
struct TableRows {
    std::vector<std::vector<std::string>> Labels;
    int32_t Rows = 0;
    bool DRwarning = false;  // MyDRwarning: some row's position is "DR Error"
};

// AltAz: columns 0 .. 17 of its table, and column 18 holding the body number of the row
// as text. BodyNumbers[r] is the same number, and SortKeys[c][r] the numeric value that
// the sort of column c uses for row r.
struct AltAzRows : TableRows {
    std::vector<int32_t> BodyNumbers;
    std::vector<std::vector<double>> SortKeys;
};

// Columns: 0 designation (a Greek letter as itself), 1 constellation, 2 name, 3 altitude
// by its title, 4 azimuth, 5 GHA, 6 SHA, 7 declination, 8 magnetic azimuth, 9 magnitude,
// 10 semi-diameter (minutes for the Sun and Moon, seconds for planets), 11 total
// correction, 12 true altitude, 13 right ascension, 14 HD, 15 Hipparcos, 16 Tycho (empty:
// no Tycho table is delivered), 17 the distance from the centre of modes 3 and 4. A Sun,
// Moon or planet row below the horizon under "Altitudes above 10° Only" reads "- " in
// columns 3, 4, 8, 11 and 12.
// The AltAz rows at `jd` (MyJD, UT) by the filters in force. `catalogueNumbers` is true
// once columns 14 to 16 have been inserted (their numbers are loaded on first use). Rows
// in the natural order: Sun, Moon, planets, then stars by brightness.
AltAzRows AltAz_Rows(double jd, bool catalogueNumbers);

// True when the AltAz rows under the filters in force need stars beyond the catalogue
// loaded so far: AltAz_Rows will first load the deeper tiers (the screen shows the
// hourglass while it does).
bool AltAz_Loads_Tiers();

// The permutation of rows that sorts `rows` by column `column` (ascending or not); the
// natural order is 0, 1, 2, ...
std::vector<int32_t> AltAz_Sort(const AltAzRows& rows, int32_t column, bool ascending);

// The long and short titles of the altitude column (AltAz column 3, Solar Bodies
// column 5) for the observer settings in force.
struct ColumnTitle {
    std::string Long;
    std::string Short;
};
ColumnTitle Altitude_Title();

// Solar Bodies: `rowCount` rows of Filters.ShowBody from `jd` on, stepped by
// Filters.IntervalUnit; times in zone time, with seconds when `useSeconds`.
TableRows Planets_Rows(double jd, int32_t rowCount, bool useSeconds);

// Moon Phases: the twelve months of the zone-time year that holds `jd`, columns 0 .. 9.
TableRows Lunations_Rows(double jd);

// Clears the upper halves of the processor's wide vector registers when it has them. Qt's
// drawing and event code runs vectorised routines that can leave those halves in use, and
// while they are, every plain SSE2 floating-point instruction of the calculations pays a
// state-transition penalty (AltAz's rows took three times as long after the application
// object had been made). The row functions below call this on entry, and a screen may call
// it before its own work; it costs a few cycles.
void Clear_Vector_Upper_State();

// Main: one line of the page, a label and its value; a heading has no value.
struct MainLine {
    std::string Label;
    std::string Value;
};

struct MainPage {
    std::vector<MainLine> Day;   // the rows of the day at the observer
    std::vector<MainLine> Moon;  // the Moon's block
    bool DRwarning = false;
};

// The Main page for the local day that holds `jd`, times with seconds when `useSeconds`.
// Day: the position ("Position", or "Current Position" and "          Co./ Speed" when the
// position is reckoned; that line reads "DR Error" when the reckoning fails), "Variation ",
// "Magnetic Dip", the morning twilights, "Sunrise", "Aries @ 12:00", "Mer.Pass.", the
// Sun's meridian altitude, "Sunset" and the evening twilights, each heading with an empty
// value. Moon: rise and set in the order they happen, "Mer.Pass.", the meridian altitude,
// "Phase" (illuminated part), "Age", then "Previous " and "Next " with the phase's name.
MainPage Main_Rows(double jd, bool useSeconds);

}  // namespace kelmoran
