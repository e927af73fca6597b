// Sailing arithmetic: meridional parts, course and distance between two way points, a new
// position from a course and a distance, and the treatment of near east/west courses, of
// the poles and of the 180° meridian. Every leg, every dead reckoning and every transfer
// of a position line is a rhumb line; there is no great-circle sailing in the program.
//
// Units: latitude and longitude in radians (north and east positive, longitude within
// -π .. +π), courses in degrees true where a record holds them and in radians inside the
// routines, distances in nautical miles (one minute of latitude), meridional parts,
// dLong and DMP in minutes of arc. Positions, courses, distances and meridional parts are
// 32-bit floats on purpose: each store rounds to single precision, and the stored values
// of a plan are 32-bit. No routine here allocates, throws or reports an error.
#pragma once

#include <cstdint>

#include "ephemeris/Units.h"

namespace kelmoran {

struct Way_Point;

// A course is near east/west when |tan C| is not less than this.
inline constexpr double NearEastWest_Limit = 7000.0;
// |DMP| in minutes at or below which a leg runs along a parallel.
inline constexpr float Mer_Parts_Step_Limit = 0.00001f;
// 89° 59'.9 in radians: where a rhumb line typed into the plan stops short of a pole.
inline constexpr double kLatLimit8959 = 59.9 / kArcminPerRadian + 89.0 / kDegreesPerRadian;

// Meridional parts (minutes of arc) of latitude `lat` (radians) on the WGS 84 spheroid,
// e = 0.08181919157505035. ±46183.3 at and beyond the poles. Result rounded to 32 bits.
float Mer_Parts(float lat);

// Meridional parts (minutes) on the spheroid of printed nautical tables (Clarke 1880,
// e = 0.08248339904), so that a worked sight agrees with the tables. ±91885.59 at the
// poles. Used by the sight working sheet only.
float Mer_Parts_Tables(float lat);

// Length in metres of one degree of longitude along the parallel of `lat` (radians), by
// the usual three-term series of the WGS 84 ellipsoid.
double Length_Degree_Long(double lat);

// Length in metres of one degree of latitude at `lat` (radians), four-term series.
double Length_Degree_Lat(double lat);

// Ratio of the length of a degree of latitude to that of a degree of longitude at `lat`,
// from the meridian and parallel radii of curvature of WGS 84; a 32-bit result. The dead
// reckoning of the position methods uses this where the plan uses the two series above;
// the two routes differ in the last digits and both are kept.
float Long_Scale_At_Lat(float lat);

// Direction (radians, 0 .. 2π, 32-bit) of the vector with east component `x` and north
// component `y`. (0, 0) gives 0; (0, y<0) gives π; (x, 0) gives π/2 or 3π/2.
float Bearing_From_Components(float x, float y);

// Brings a longitude within -π .. +π: only when |Long| > 3.1415927 (a 32-bit test),
// 2π is taken off or added until it is inside; -3.1415927 itself stands. A longitude
// that is not finite becomes 0; one of more than a thousand turns is reduced by fmod
// first, so that the loop is always short.
void Normalise_Long(float& lon);

// The rhumb line from (Lat, Long) for `courseDeg` degrees true and `distance` miles, as
// used where the user types a course or a distance into the plan. A track that would pass
// a pole stops at 89° 59'.9 of that hemisphere. Near east/west courses keep the latitude
// and take dLong from the degree-length series.
void Sail_To_Position(float& lat, float& lon, float courseDeg, float distance);

// One step of dead reckoning: course `c` in radians (0 .. 2π), distance `d` miles (not
// negative). `west` says that dLong is westward (the caller's test: c > π for the DR by
// course and speed, the row's course in degrees > 180 for the DR by plan). With
// `poleGuard`, a track that reaches a pole stops one second of arc short of it with
// longitude 0 and the function returns true; the caller then marks the position as no
// true dead reckoning. Without the guard the latitude runs on as computed.
bool DR_Step(float& lat, float& lon, float c, float d, bool west, bool poleGuard);

// Course (degrees true, one decimal, half-even) and distance (miles, 32-bit, not rounded)
// of the leg from way point `a` to way point `b`, from their Lat, Long and stored
// meridional parts. The leg goes the short way across the 180° meridian (a dLong of
// exactly +10800' keeps its sign); a leg whose DMP is within Mer_Parts_Step_Limit runs
// along the parallel of `a` and its distance comes from the degree-length series there.
void Leg_Course_Distance(const Way_Point& a, const Way_Point& b, float& courseDeg,
                         float& distance);

// The quantities of the dead-reckoning block of a sight's working sheet, worked as a
// navigator works them with tables: every figure rounded as the sheet prints it. These
// never feed a stored position.
struct Sailing_Work {
    double Run_Hours = 0;      // Round(hours, 2)
    double Distance = 0;       // Round(run × speed, 1), miles
    double DLat = 0;           // Round(cos(course) × distance, 1), minutes, north positive
    double DR_Lat = 0;         // radians, folded into ±π/2
    // Mercator sailing
    double MP_DR = 0;          // "Mer Parts for DR", Round(…, 2)
    double MP_Original = 0;    // "Mer Parts for Original Lat", Round(…, 2)
    double DMP = 0;            // Round(difference, 5)
    // Plane sailing
    double Cos_Mean_Lat = 0;   // Round(cos(mean latitude), 5)
    double Departure = 0;      // Round(sin(course) × distance, 1), miles
    double DLong = 0;          // minutes, east positive
    double DR_Long = 0;        // radians, within ±π
};

enum class Sailing_Route { Mercator, Plane };

// Works a run of `distance` miles (already rounded as printed) on `courseDeg` from
// (`lat0`, `lon0`) radians by one of the two routes; Run_Hours is left 0. `tables`
// chooses the meridional parts of the printed tables (Clarke) rather than WGS 84. The
// ITP block of the sheet uses this with the intercept as the distance.
Sailing_Work Work_Sailing(double lat0, double lon0, double courseDeg, double distance,
                          Sailing_Route route, bool tables);

// The dead-reckoning block: from (`lat0`, `lon0`) at time `t0` to time `t` (days) on
// `courseDeg` at `speed` knots; the run and the distance are rounded as printed first.
Sailing_Work Work_DR(double lat0, double lon0, double t0, double t, double courseDeg,
                     double speed, Sailing_Route route, bool tables);

}  // namespace kelmoran
