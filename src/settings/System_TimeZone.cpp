// The computer's time zone through the system's zone database.
#include "settings/System_TimeZone.h"

#include <QTimeZone>

namespace kelmoran {

namespace {

// One change of the year: the zone time before it and whether it starts summer time.
struct Change {
    QDateTime LocalBefore;  // wall-clock time before the change, held as UTC fields
    bool StartsSummer = false;
    int BiasAfter = 0;      // minutes
};

ZoneChange Change_Rule(const QDateTime& localBefore) {
    const QDate d = localBefore.date();
    ZoneChange z;
    z.Month = d.month();
    z.Weekday = d.dayOfWeek();
    // A change in the last seven days of the month is taken as "the last" of its weekday;
    // otherwise its number in the month.
    z.Week = d.day() + 7 > d.daysInMonth() ? 5 : (d.day() - 1) / 7 + 1;
    z.Hour = localBefore.time().hour();
    return z;
}

MySystemTime System_Time_Of(const QDateTime& utc) {
    const QDate d = utc.date();
    const QTime t = utc.time();
    MySystemTime s;
    s.wYear = static_cast<int16_t>(d.year());
    s.wMonth = static_cast<int16_t>(d.month());
    s.wDay = static_cast<int16_t>(d.day());
    s.wDayOfWeek = static_cast<int16_t>(d.dayOfWeek() % 7 + 1);
    s.wHour = static_cast<int16_t>(t.hour());
    s.wMinute = static_cast<int16_t>(t.minute());
    s.wSecond = static_cast<int16_t>(t.second());
    s.wMilliseconds = static_cast<int16_t>(t.msec());
    return s;
}

}  // namespace

bool Query_System_Zone(const QByteArray& ianaId, const QDateTime& nowUtcIn, SystemZone& out) {
    const QTimeZone tz(ianaId);
    if (!tz.isValid() || !nowUtcIn.isValid()) return false;
    const QDateTime nowUtc = nowUtcIn.toUTC();

    SystemZone z;
    z.NowUTC = System_Time_Of(nowUtc);
    z.NowWeekday = nowUtc.date().dayOfWeek();
    z.StandardBias = tz.standardTimeOffset(nowUtc) / 60;
    z.DaylightBias = z.StandardBias;
    z.DaylightInForce = tz.isDaylightTime(nowUtc);

    const int year = nowUtc.date().year();
    const QDateTime from(QDate(year, 1, 1), QTime(0, 0), Qt::UTC);
    const QDateTime to(QDate(year + 1, 1, 1), QTime(0, 0), Qt::UTC);
    bool haveStart = false;
    bool haveEnd = false;
    if (tz.hasTransitions()) {
        for (const QTimeZone::OffsetData& t : tz.transitions(from, to)) {
            const QTimeZone::OffsetData before = tz.offsetData(t.atUtc.addSecs(-1));
            const bool wasSummer = before.daylightTimeOffset != 0;
            const bool isSummer = t.daylightTimeOffset != 0;
            if (wasSummer == isSummer) continue;  // a change of the standard time only
            const QDateTime localBefore = t.atUtc.addSecs(before.offsetFromUtc);
            if (isSummer && !haveStart) {
                z.DaylightDate = Change_Rule(localBefore);
                z.DaylightBias = t.offsetFromUtc / 60;
                haveStart = true;
            } else if (!isSummer && !haveEnd) {
                z.StandardDate = Change_Rule(localBefore);
                haveEnd = true;
            }
        }
    }
    if (!haveStart || !haveEnd) {
        z.DaylightDate = {};
        z.StandardDate = {};
        z.DaylightBias = z.StandardBias;
    }
    out = z;
    return true;
}

bool Read_System_TimeZone() {
    SystemZone zone;
    if (!Query_System_Zone(QTimeZone::systemTimeZoneId(), QDateTime::currentDateTimeUtc(), zone))
        return false;
    Read_System_TimeZone(zone);
    return true;
}

}  // namespace kelmoran
