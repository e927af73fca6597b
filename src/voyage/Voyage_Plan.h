// The voyage plan: a table of way points with a start time, and everything derived from
// it (course and distance of each leg, running distance, the time at each way point,
// variation). Edits of a way point, a speed or an ETA change the table; one recalculation,
// Recalc_Plan, makes it consistent again. The plan is the source of the position method
// "D.R. by plan" and of the ship's clocks.
//
// Times are days since J2000.0 (MyJD, UT); positions radians (north and east positive);
// speeds knots; distances nautical miles; courses degrees true.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelmoran {

// One row of the plan.
struct Way_Point {
    double Lat = 0;             // radians
    float Mer_Parts = 0;        // minutes; 0 means not yet computed
    double Long = 0;            // radians
    float Speed = 0;            // knots, for the leg that starts here
    float Course = 0;           // degrees true to the next way point, one decimal
    float Variation = 0;        // degrees, east positive, at the row's position and time
    float Distance = 0;         // miles to the next way point, one decimal
    float Leg_Time = 0;         // hours, a whole number of minutes
    float Total_Distance = 0;   // miles from row 0, one decimal
    float Running_Time = 0;     // hours from row 0
    float Distance_To_Go = 0;   // miles to the final way point
    std::string ID;             // up to six characters, a number 1 .. 999, or R, G, V, F
    std::string Description;    // free text
    std::string Remarks;        // its second line
    int16_t Show = 0;           // 16-bit flag
    char Leg_Type = ' ';        // 'D' keeps a leg time at zero distance
    int16_t Row_Valid = 0;      // the row holds a way point
    int16_t Row_Locked = 0;     // the user has locked this row
    int16_t Position_Done = 0;  // Lat and its meridional parts are current
    double Time = 0;            // MyJD of arrival

    // Kept from the file and written back as they came; no other use.
    uint8_t Reserved[12] = {};
    int16_t Flag_2 = 0;
    int16_t Flag_3 = 0;
    char Type_2 = ' ';
};

// The latitude, longitude and variation of a row as shown.
struct Way_Point_Text {
    std::string Lat;
    std::string Long;
    std::string Variation;
};

struct Plan_Header {
    double Plan_Start = 0;      // time of the first way point (the ETD, UT)
    int16_t ETD_Minutes = 0;    // zone of the ETD, minutes east
    std::string ETD_Zone;       // its zone text
    double Plan_End = 0;        // time of the final way point
    int16_t ETA_Minutes = 0;    // zone of the ETA
    std::string ETA_Zone;
    int16_t Reserved = 0;       // kept as it came
    float Fixed_Speed_1 = 0;    // knots: the ETA@ and TTG@ columns
    float Fixed_Speed_2 = 0;
    float Fixed_Speed_3 = 0;
    float Default_Speed = 0;    // knots, given to new legs
    std::string Title;
    std::string Path;
    std::string Third_Text;     // kept as it came
    // Set by code, never read from the file: the plan has a file of its own.
    int16_t File_Named = 0;
};

// The words of the plan's edits, shown in message boxes.
namespace plan_text {
inline constexpr const char* Untitled = "Untitled";
inline constexpr const char* SpeedTooLow = "Speed less than 0.01 Kts  ";
inline constexpr const char* InputError = "Input Error";
inline constexpr const char* SpeedChangeTooSmall = "Change in speed is too small to register";
inline constexpr const char* LockedRowHint = "Ensure row is locked if actual time used!";
inline constexpr const char* SpeedSetHint = "Changes affect all unlocked rows";
inline constexpr const char* DefaultSpeedHint = "Default value for new tracks";
inline constexpr const char* LockedTimeHint = "Can be edited unless row is locked";
inline constexpr const char* IdAlphaHint = "Alphanumeric Way Point Identifier";
inline constexpr const char* IdAlphaHint2 = "Six character maximum";
inline constexpr const char* IdNumericHint = "Numeric Way Point Identifier (1-999)";
inline constexpr const char* IdNumericHint2 = "or R = Ra, G = GPS, V = Vis, F = Fix ";
inline constexpr const char* SpeedHint = "Up to two decimal places";
inline constexpr const char* InsertRow = "Insert Row";
inline constexpr const char* DeleteRow = "Delete Row";
inline constexpr const char* ClearWayPoint = "Clear Way Point";
inline constexpr const char* Lock = "Lock";
inline constexpr const char* UnLock = "UnLock";
}  // namespace plan_text

// A message box to show after an edit; empty Text means none.
struct Plan_Message {
    std::string Text;
    std::string Title;
};

// How an ID cell shows a letter: "Ra", "GPS", "Vis", "Fix"; any other ID as typed.
std::string Way_Point_ID_Text(const std::string& id);

class VoyagePlan {
public:
    Plan_Header Header;
    std::vector<Way_Point> Way_Points;      // rows 0 .. N
    std::vector<Way_Point_Text> Texts;      // one for each row
    std::vector<std::string> Extra_List;    // kept from the file as it came
    int16_t Last_Value = 0;                 // kept from the file as it came
    std::vector<int32_t> Ship_Time;         // Clocks table: minutes east, one per day

    VoyagePlan();

    // A fresh plan: rows 0 .. 10, all blank; start and end at `nowJD` to the whole minute;
    // the default speed from `fixSpeed` when 0; the fixed speeds from it; "Untitled".
    // The undo stacks are not touched.
    void New_Plan(double nowJD, float fixSpeed);

    int Row_Count() const { return static_cast<int>(Way_Points.size()); }
    double Plan_Start() const { return Header.Plan_Start; }
    double Plan_End() const { return Header.Plan_End; }

    // Row_Valid is set exactly when the ID is not empty or Lat or Long is not zero.
    void Test_Wpts_Valid();

    // Index of the last valid row, or -1.
    int Last_Valid_Row() const;
    // True if any row holds a way point.
    bool Any_Way_Point_In_Use() const;

    // Makes the plan consistent after an edit: meridional parts, courses and distances,
    // running distance and time, the time and variation of every row, Plan_End.
    void Recalc_Plan();

    // The edits of the Voyage screen. Each records an undo step (a plan state) before it
    // changes anything and then recalculates. Rows out of range are ignored.

    // The Speed of row `r` (knots).
    void Edit_Speed(int r, float speed);
    // The main ETA, typed in the zone of `zoneMinutes`: the speeds of the unlocked rows
    // after the last locked one are set so that the final way point is reached then.
    Plan_Message Edit_Main_ETA(double etaZoneJD, int16_t zoneMinutes);
    // The ETA (UT) of row `r`: the speeds from the nearest locked row above it to r - 1.
    // False (the caller beeps and drops the edit) when the speed would be below 0.01 kn.
    bool Edit_Row_ETA(int r, double etaJD);
    // The SpeedSet box: the default speed and the speed of every row after the first
    // locked row (all rows when none is locked).
    void Set_Speeds(float speed);
    // The ETD, typed in the zone of `zoneMinutes`: Plan_Start moves.
    void Edit_ETD(double etdZoneJD, int16_t zoneMinutes);
    // A new position for row `r`; a row made valid takes the previous row's Speed and
    // Show flag.
    void Edit_Position(int r, double lat, double lon);
    // A typed course, distance or magnetic course of row `r`: row r stays and the next row
    // gets the position reached by the rhumb line (the table grows if r is the last row).
    void Edit_Course(int r, float courseDeg);
    void Edit_Distance(int r, float distance);
    void Edit_Mag_Course(int r, float magCourseDeg);
    // Texts of a row.
    void Edit_ID(int r, const std::string& id);
    void Edit_Description(int r, const std::string& text);
    void Edit_Remarks(int r, const std::string& text);
    // "Insert Row", "Delete Row", "Clear Way Point" for `count` rows from row `r`.
    void Insert_Rows(int r, int count);
    void Delete_Rows(int r, int count);
    void Clear_Rows(int r, int count);
    // "Lock" and "UnLock".
    void Lock_Row(int r, bool locked);

private:
    void Sail_From(int r, float courseDeg, float distance);
    void Changed();
    void Revalidate();
};

// The plan in use: the default plan or the one the user opened.
extern VoyagePlan Voyage;

}  // namespace kelmoran
