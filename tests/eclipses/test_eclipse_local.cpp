// The circumstances of the total solar eclipses of 2017 August 21 and 2024 April 8 at
// twenty places, against the Swiss Ephemeris's local search.
#include <gtest/gtest.h>
#include <swephexp.h>

#include <cmath>
#include <cstdio>

#include "eclipses/M_Eclipse.h"
#include "eclipses/M_Eclipse_Solar.h"
#include "ephemeris/Moon_Phases.h"
#include "ephemeris/Time_Calcs.h"

namespace kelmoran {
namespace {

constexpr double kMinute = 1.0 / 1440.0;
constexpr double kRadPerDeg = 1.0 / 57.2957795130823;

struct Place {
    const char* name;
    double lat, lon;  // degrees, east positive
};

// In and out of both paths of totality, in the partial zones, and where neither is seen.
constexpr Place kPlaces[] = {
    {"Salem", 44.94, -123.03},     {"Casper", 42.87, -106.31},     {"Nashville", 36.16, -86.78},
    {"Charleston", 32.78, -79.93}, {"New York", 40.71, -74.01},    {"Los Angeles", 34.05, -118.24},
    {"Mazatlan", 23.22, -106.42},  {"Dallas", 32.78, -96.80},      {"Indianapolis", 39.77, -86.16},
    {"Burlington", 44.48, -73.21}, {"Mexico City", 19.43, -99.13}, {"Miami", 25.76, -80.19},
    {"Anchorage", 61.22, -149.90}, {"Lima", -12.05, -77.04},       {"Bogota", 4.71, -74.07},
    {"Tokyo", 35.69, 139.69},      {"Sydney", -33.87, 151.21},     {"Cape Town", -33.92, 18.42},
    {"Moscow", 55.76, 37.62},      {"Mumbai", 19.08, 72.88},
};

// The eclipse of the New Moon before `jd` (MyJD), tried as the search tries it.
EclipseRow Eclipse_Near(double jd, std::string& kind) {
    EclipseRow row;
    EclipseInstants instants;
    EclipseSpeed speed;
    row.PhaseJD = New_Moon_Before(jd, Get_DeltaT(DeltaT_Year(jd)) / 3.15576e9);
    kind = Solar_Eclipse_Test(row, instants, speed, 0);
    return row;
}

TEST(LocalEclipse, TwoTotalEclipsesAtTwentyPlacesAgainstTheSwissEphemeris) {
    swe_set_ephe_path(const_cast<char*>(KELMORAN_SWE_EPHE_PATH));
    int seen = 0, central = 0, compared = 0;
    double worst[2] = {0.0, 0.0};  // maximum, contacts
    for (double date : {swe_julday(2017, 8, 22, 0.0, SE_GREG_CAL) - kJ2000,
                        swe_julday(2024, 4, 9, 0.0, SE_GREG_CAL) - kJ2000}) {
        std::string kind;
        const EclipseRow row = Eclipse_Near(date, kind);
        ASSERT_EQ(kind, "Total Solar Eclipse");
        for (const Place& p : kPlaces) {
            const LocalEclipse ours =
                Local_Solar_Eclipse(p.lat * kRadPerDeg, p.lon * kRadPerDeg, row.FirstContact.Time,
                                    row.LastContact.Time);
            double geopos[3] = {p.lon, p.lat, 0.0}, tret[10] = {}, attr[20] = {};
            char err[256];
            const int flags = swe_sol_eclipse_when_loc(row.Maximum.Time + kJ2000 - 2.0,
                                                       SEFLG_SWIEPH, geopos, tret, attr, 0, err);
            // Where this eclipse is not seen, the local search goes on to the next one.
            const bool refSeen = flags > 0 && std::fabs(tret[0] - kJ2000 - row.Maximum.Time) < 0.5;
            EXPECT_EQ(ours.Visible, refSeen) << p.name << " " << row.DateLabel;
            if (!refSeen || !ours.Visible) continue;
            ++seen;
            EXPECT_EQ(ours.Central, (flags & (SE_ECL_TOTAL | SE_ECL_ANNULAR)) != 0) << p.name;
            central += ours.Central ? 1 : 0;
            EXPECT_NEAR(ours.Magnitude, attr[0], 0.01) << p.name;
            const double mine[5] = {ours.Maximum, ours.FirstContact, ours.SecondContact,
                                    ours.ThirdContact, ours.LastContact};
            for (int i = 0; i < 5; ++i) {
                if (mine[i] == 0.0 || tret[i] == 0.0) continue;
                const double d = std::fabs(mine[i] + kJ2000 - tret[i]);
                EXPECT_LT(d, kMinute) << p.name << " contact " << i;
                worst[i == 0 ? 0 : 1] = std::max(worst[i == 0 ? 0 : 1], d);
                ++compared;
            }
        }
    }
    swe_close();
    std::printf(
        "%d sightings (%d in totality), %d times compared, largest differences: "
        "maximum %.1f s, contacts %.1f s\n",
        seen, central, compared, worst[0] * 86400.0, worst[1] * 86400.0);
    EXPECT_GE(seen, 20);
    EXPECT_GE(central, 8);
}

// The map's point of greatest eclipse: the axis where it meets the Earth, against the
// published positions (NASA: 2017 36°58'N 87°40'W; 2024 25°17'N 104°08'W).
TEST(LocalEclipse, AxisPointAtGreatestEclipse) {
    struct Case {
        double date, lat, lon;
    } cases[] = {{swe_julday(2017, 8, 22, 0.0, SE_GREG_CAL) - kJ2000, 36.97, -87.67},
                 {swe_julday(2024, 4, 9, 0.0, SE_GREG_CAL) - kJ2000, 25.28, -104.13}};
    for (const Case& c : cases) {
        std::string kind;
        const EclipseRow row = Eclipse_Near(c.date, kind);
        const EclipseInstant r = Eclipse_Instant(row.Maximum.Time);
        GeoPoint point;
        ASSERT_TRUE(Shadow_Point_Place(r, r.AxisDistance, r.PositionAngle, point));
        EXPECT_NEAR(point.Lat / kRadPerDeg, c.lat, 0.1);
        EXPECT_NEAR(point.Lon / kRadPerDeg, c.lon, 0.1);
        // Straight at the Sun there: the local circumstances see the eclipse central at the
        // greatest eclipse.
        const LocalEclipse here =
            Local_Solar_Eclipse(point.Lat, point.Lon, row.FirstContact.Time, row.LastContact.Time);
        EXPECT_TRUE(here.Central);
        EXPECT_NEAR(here.Maximum, row.Maximum.Time, 2.0 * kMinute);
        // A point of the plane beyond the Earth's disc has no place.
        EXPECT_FALSE(Shadow_Point_Place(r, 2.0 * eclipse::EarthRadius, 0.0, point));
    }
}

}  // namespace
}  // namespace kelmoran
