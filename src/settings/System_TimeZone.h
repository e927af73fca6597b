// The computer's time zone, read through the system's zone database: the zone's standard
// and summer biases and, for each change of the year, its month, weekday, week of the month
// and hour, handed to the zone rules as a SystemZone.
#pragma once

#include <QByteArray>
#include <QDateTime>

#include "settings/M_TimeZones.h"

namespace kelmoran {

// Reads the zone of IANA name `ianaId` ("Europe/London") as it stands at `nowUtc`. The
// changes are those of the UTC year of `nowUtc`; the hour of a change is the zone time
// before it. The weekdays are in the system's count (1 = Monday .. 7 = Sunday), and
// NowWeekday is that of `nowUtc`. A zone without a change in that year gives Month 0 for
// both changes and its standard bias as both biases. Returns false, leaving `out` as it
// was, for an unknown zone.
bool Query_System_Zone(const QByteArray& ianaId, const QDateTime& nowUtc, SystemZone& out);

// Read_System_TimeZone for the computer's own zone now: TZ_Bias, WeekdayShift, SummerStart
// and SummerEnd. If the zone cannot be read nothing is changed and false is returned.
bool Read_System_TimeZone();

}  // namespace kelmoran
