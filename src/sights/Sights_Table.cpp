// The table of the Sights screen.
#include "sights/Sights_Table.h"

#include <cmath>

#include "ephemeris/Units.h"
#include "settings/File_IO.h"
#include "settings/M_Formatting.h"
#include "settings/SettingsRecord.h"
#include "sights/M_Sights.h"
#include "voyage/Position_Methods.h"

namespace kelmoran {

namespace {

constexpr std::array<int32_t, kSightColumns> kWidths = {26, 0, 96, 76, 178, 112, 84, 104};

const Sight_Candidate* Selected(const SightSet& set, int row) {
    const Sight_Record& s = set.Sights[row];
    const Candidate_List& list = set.Candidates[row];
    if (s.Has_Body == 0 || s.Candidate_No < 0 || s.Candidate_No >= static_cast<int>(list.size()))
        return nullptr;
    return &list[static_cast<size_t>(s.Candidate_No)];
}

bool Valid_Row(const SightSet& set, int row) { return row >= 0 && row <= set.Max_Sight(); }

// Every entry marks the row used and the set unsaved, and reduces a complete row.
void Entered(SightSet& set, int row) {
    set.Sights[row].Row_Used = kTrue;
    Shell.SightsChanged = kTrue;
    Reduce_Sight(set, row, false);
}

}  // namespace

std::string Sight_Heading(int column) {
    switch (column) {
        case kColTime: return "Obs. Time";
        case kColAlt: return Settings.IndexError != 0 ? "Sex. Alt." : "Obs. Alt.";
        case kColAz: return "Azimuth";
        case kColBody: return "Body";
        case kColIntercept: return "Intercept";
        case kColBearing: return "Bearing";
        case kColLine: return "Position Line";
        default: return "";
    }
}

int32_t Sights_Layout::Column_Left(int column) const {
    int32_t x = Left;
    for (int c = 0; c < column && c < kSightColumns; ++c) x += Width[c];
    return x;
}

Rect Sights_Layout::Heading(int column) const {
    const int32_t x = Column_Left(column);
    return {x, Top, x + Width[column], Top + Heading_Height};
}

Rect Sights_Layout::Cell(int row, int column) const {
    const int32_t x = Column_Left(column);
    const int32_t y = Top + Heading_Height + row * Row_Height;
    return {x, y, x + Width[column], y + Row_Height};
}

Rect Sights_Layout::Table() const {
    return {Left, Top, Column_Left(kSightColumns), Top + Heading_Height + Rows * Row_Height};
}

int Sights_Layout::Row_At(int32_t x, int32_t y) const {
    const Rect t = Table();
    if (!t.Contains(x, y) || y < Top + Heading_Height) return -1;
    return (y - Top - Heading_Height) / Row_Height;
}

int Sights_Layout::Column_At(int32_t x, int32_t y) const {
    if (!Table().Contains(x, y)) return -1;
    for (int c = 0; c < kSightColumns; ++c)
        if (x < Column_Left(c + 1)) return c;
    return -1;
}

Sights_Layout Make_Sights_Layout(int rows, int32_t timeWidth, int32_t top) {
    Sights_Layout l;
    l.Rows = rows;
    l.Top = top;
    l.Width = kWidths;
    l.Width[kColTime] = timeWidth;
    return l;
}

std::string Sight_Cell_Text(const SightSet& set, int row, int column) {
    if (!Valid_Row(set, row)) return "";
    const Sight_Record& s = set.Sights[row];
    switch (column) {
        case kColNumber: return std::to_string(row + 1);
        case kColAlt:
            if (s.Alt_Entered == 0) return "";
            return (s.Sextant_Alt < 0 ? "-" : "") + Format_Angle(std::fabs(s.Sextant_Alt), 1, false);
        case kColAz: return s.Az_Entered != 0 ? Format_Number(s.Sight_Az, "000°.0") : "";
        default: break;
    }
    const Sight_Candidate* c = Selected(set, row);
    if (c == nullptr) return "";
    switch (column) {
        case kColBody: return c->Name;
        case kColIntercept: return c->Intercept_Text;
        case kColBearing: return c->Az_Text;
        case kColLine: return c->Line_Text;
        default: return "";
    }
}

std::vector<std::string> Sight_Combo_Lines(const SightSet& set, int row) {
    std::vector<std::string> lines;
    if (!Valid_Row(set, row)) return lines;
    for (const Sight_Candidate& c : set.Candidates[row])
        lines.push_back(c.Name + "   " + c.Intercept_Text);
    return lines;
}

void Enter_Sight_Time(SightSet& set, int row, double zoneJD, const MySystemTime& zone) {
    if (!Valid_Row(set, row) || !std::isfinite(zoneJD)) return;
    Sight_Record& s = set.Sights[row];
    s.Sight_Day = zone.wDay;
    s.Sight_Month = zone.wMonth;
    s.Sight_Year = zone.wYear;
    s.Sight_Hour = zone.wHour;
    s.Sight_Minute = zone.wMinute;
    s.Sight_Second = zone.wSecond;
    s.Sight_Time = zoneJD - set.My_TZ_Bias / 1440.0;
    Entered(set, row);
}

void Enter_Sight_Alt(SightSet& set, int row, double radians) {
    if (!Valid_Row(set, row) || !std::isfinite(radians) || std::fabs(radians) > kHalfPi) return;
    Sight_Record& s = set.Sights[row];
    s.Sextant_Alt = static_cast<float>(radians);
    s.Alt_Entered = kTrue;
    Entered(set, row);
}

void Enter_Sight_Az(SightSet& set, int row, double degrees) {
    if (!Valid_Row(set, row) || !std::isfinite(degrees) || degrees < 0 || degrees >= 360) return;
    Sight_Record& s = set.Sights[row];
    s.Sight_Az = static_cast<float>(degrees);
    s.Az_Entered = kTrue;
    Entered(set, row);
}

double Start_Time_For_Row(const SightSet& set, int row) {
    const double zone = set.My_TZ_Bias / 1440.0;
    for (int r = std::min(row, set.Max_Sight()); r >= 0; --r)
        if (set.Sights[r].Row_Used != 0) return set.Sights[r].Sight_Time + zone;
    return set.Fix_Sight.Sight_Time + zone;
}

void Next_Sight_Cell(int rows, bool down, bool back, int& row, int& column) {
    if (rows <= 0) return;
    if (column < kColTime || column > kColBody) column = kColTime;
    const int step = back ? -1 : 1;
    if (down) {
        row += step;
        if (row >= rows) {
            row = 0;
            column = column == kColBody ? kColTime : column + 1;
        } else if (row < 0) {
            row = rows - 1;
            column = column == kColTime ? kColBody : column - 1;
        }
        return;
    }
    column += step;
    if (column > kColBody) {
        column = kColTime;
        row = (row + 1) % rows;
    } else if (column < kColTime) {
        column = kColBody;
        row = (row + rows - 1) % rows;
    }
}

std::vector<std::string> Sights_Help_PopUp_Words(const SightSet& set, int row) {
    if (!Valid_Row(set, row)) return {};
    const Sight_Record& s = set.Sights[row];
    if (s.Row_Used == 0) return {};
    if (set.DR_Warning[row] != 0)
        return {Sight_Position_Word(Settings, Voyage, s.Sight_Time)};
    if (SightsFilter.DaylightStars == 0 && s.Sun_Alt > SightsFilter.AltLimit &&
        (s.Alt_Entered != 0 && s.Az_Entered != 0))
        return {"DayLight"};
    return {};
}

}  // namespace kelmoran
