// What the Voyage screen shows and what its cells do, without any window system: the
// columns of the plan grid, the text of every cell from the plan (Populate_MainData), the
// lines of the grid (a plan row, and under it its remarks when they are displayed), which
// cells can be edited and with which field of the edit engine, the plan edit a committed
// value makes, the row menu, and the words of the hot spots.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/Grid_Model.h"
#include "voyage/Voyage_Plan.h"

namespace kelmoran {

// The columns of the plan grid by number.
namespace navplan_col {
inline constexpr int32_t WPt = 0;
inline constexpr int32_t ID = 1;
inline constexpr int32_t Description = 2;
inline constexpr int32_t Latitude = 3;
inline constexpr int32_t Longitude = 4;
inline constexpr int32_t Speed = 5;
inline constexpr int32_t Course = 6;
inline constexpr int32_t Distance = 7;
inline constexpr int32_t TotalDist = 8;
inline constexpr int32_t ETA = 9;
inline constexpr int32_t TimeToGo = 10;
inline constexpr int32_t DistToGo = 11;
inline constexpr int32_t FixedEta1 = 12;  // ETA@ and TTG@ of the three fixed speeds, in pairs
inline constexpr int32_t FixedTtg1 = 13;
inline constexpr int32_t FixedEta3 = 16;
inline constexpr int32_t FixedTtg3 = 17;
inline constexpr int32_t MagCo = 18;
inline constexpr int32_t ShipTime = 19;
inline constexpr int32_t LMT = 20;
inline constexpr int32_t Count = 21;
}  // namespace navplan_col

// The words of the Voyage screen.
namespace navplan_text {
inline constexpr const char* EtdDisabled = "ETD Disabled";
inline constexpr const char* EtaDisabled = "ETA Disabled";
inline constexpr const char* Hide = "Hide";
inline constexpr const char* HideRemarks = "Hide Remarks";
inline constexpr const char* DisplayRemarks = "Display Remarks";
inline constexpr const char* SpeedOptions = "Speed Options";
inline constexpr const char* SpeedPrefix = "@ ";
inline constexpr const char* SpeedSuffix = " Kts";
}  // namespace navplan_text

// The column table of the plan grid; the fixed-speed titles from the plan's header
// ("ETA 9.5 Kts", "TTG 9.5 Kts"; short "ETA@", "TTG@").
std::vector<ColumnDef> NavPlan_Columns(const Plan_Header& header);
// The long titles of the fixed-speed columns for `header` (Columns_Set_FixedSpeed_Widths).
std::string Fixed_Speed_Title(const Plan_Header& header, int32_t column);

// One line of the grid: plan row `Row`, or the remarks line under it.
struct NavPlan_Line {
    int32_t Row = 0;
    bool Remarks = false;
};

// The grid's lines and the texts of their cells.
struct NavPlan_Page {
    std::vector<NavPlan_Line> Lines;
    std::vector<std::vector<std::string>> Labels;  // [column][line]
};

// Populate_MainData: every cell of the plan as text. A cell with nothing in it holds two
// blanks. With `remarks` every way point (and any row that has remarks) is followed by a
// line for its remarks, in the Description column. Times in the zone of the ETD.
NavPlan_Page Populate_MainData(const VoyagePlan& plan, bool remarks);

// The edit a cell opens: the field of the edit engine, its start value and text; an empty
// Field means the cell cannot be edited.
struct NavPlan_Cell_Edit {
    std::string Field;
    double Value = 0.0;
    std::string Text;
    int32_t Alignment = 0;  // 0 left, 1 centred, 2 right (as the engine has it)
};
NavPlan_Cell_Edit NavPlan_Edit_For(const VoyagePlan& plan, const NavPlan_Line& line,
                                   int32_t column, const std::string& shown);

// What a committed value does to the plan. False when the value was refused (the caller
// beeps); the plan is then unchanged.
bool NavPlan_Commit(VoyagePlan& plan, const NavPlan_Line& line, int32_t column, double value,
                    const std::string& text);

// Delete on a cell: an emptied position for Latitude and Longitude (both), an empty text
// for the ID, the description and the remarks. False when the cell has nothing to clear.
bool NavPlan_Clear_Cell(VoyagePlan& plan, const NavPlan_Line& line, int32_t column);

// The row menu of plan row `row`; empty for a row with no data (no menu is offered).
std::vector<std::string> NavPlan_Row_Menu(const VoyagePlan& plan, int32_t row, bool remarks);

// An ETA typed as day of the month, hours and minutes (`value` days) in the zone of
// `zoneMinutes`, placed in whichever month round that of `near` (UT) brings it closest to
// `near`; a day of 0 is the day of `near`. The moment in UT.
double NavPlan_Typed_Eta(double value, double near, int32_t zoneMinutes);

// The text of the default speed box: "@ " value " Kts".
std::string Speed_Box_Text(float speed);

}  // namespace kelmoran
