// The table of the Sights screen as a model: its columns and their headings, the
// rectangles of the cells, the texts of a row, the entry of a time, an altitude or an
// azimuth into a row (which reduces it at once when both angles are in), the order in
// which Tab moves, and the words of a row's pop-up.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "shell/Geometry.h"
#include "sights/Sights.h"

namespace kelmoran {

// The columns, left to right: the row's number, then the sight, the body's drop-down and
// what the reduction gives.
enum Sight_Column : int {
    kColNumber = 0,
    kColTime,
    kColAlt,
    kColAz,
    kColBody,
    kColIntercept,
    kColBearing,
    kColLine,
    kSightColumns
};

// The heading of a column: "Obs. Time", "Sex. Alt." with an index error in use or else
// "Obs. Alt.", "Azimuth", "Body", "Intercept", "Bearing", "Position Line".
std::string Sight_Heading(int column);

// Where the table stands in the window.
struct Sights_Layout {
    int32_t Left = 4;
    int32_t Top = 50;           // top of the headings
    int32_t Heading_Height = 22;
    int32_t Row_Height = 24;
    int32_t Rows = 7;
    std::array<int32_t, kSightColumns> Width{};

    // Left edge of a column.
    int32_t Column_Left(int column) const;
    Rect Heading(int column) const;
    Rect Cell(int row, int column) const;
    // The whole table, headings included.
    Rect Table() const;
    // The row and column at a point, or -1.
    int Row_At(int32_t x, int32_t y) const;
    int Column_At(int32_t x, int32_t y) const;
};

// The layout for `rows` rows with the time column `timeWidth` pixels wide (the width of
// the row's date-time group), headings at `top`.
Sights_Layout Make_Sights_Layout(int rows, int32_t timeWidth, int32_t top);

// The texts of a row: the sextant altitude ("35° 12'.3"), the azimuth as entered
// ("123°.0"), and of the selected body its intercept, bearing and position line; empty
// for what the row does not have.
std::string Sight_Cell_Text(const SightSet& set, int row, int column);

// The lines of a row's drop-down: each candidate's name and intercept, best fit first.
std::vector<std::string> Sight_Combo_Lines(const SightSet& set, int row);

// Entries into row `row` as the edits commit them. Each sets Row_Used and the unsaved
// flag of the sights; the altitude and the azimuth set their entered flags; a time
// (`zoneJD` in the zone of the set, with its date record `zone`) sets Sight_Time and the
// date fields. The row is reduced when both angles are in (the caller redraws).
// Out-of-range values are left.
void Enter_Sight_Time(SightSet& set, int row, double zoneJD, const MySystemTime& zone);
void Enter_Sight_Alt(SightSet& set, int row, double radians);
void Enter_Sight_Az(SightSet& set, int row, double degrees);

// The moment (zone time) a new entry in an unused row starts from: the time of the
// nearest used row above it, else the fix time.
double Start_Time_For_Row(const SightSet& set, int row);

// The cell that Tab moves to from (row, column): across the time, altitude, azimuth and
// body of a row and on to the next row's time, or, with `down` ("Tab moves down through
// Sights"), down the same column and to the top of the next. Shift+Tab goes back.
void Next_Sight_Cell(int rows, bool down, bool back, int& row, int& column);

// The words of a row's pop-up: the DR warning of the position method for a row whose DR
// came back marked, or "DayLight" when stars by day are off and the Sun stood above the
// altitude limit. Empty when the row has nothing to say.
std::vector<std::string> Sights_Help_PopUp_Words(const SightSet& set, int row);

}  // namespace kelmoran
