#include "eclipses/M_Eclipse.h"

#include <cmath>

#include "eclipses/M_Eclipse_Lunar.h"
#include "eclipses/M_Eclipse_Solar.h"
#include "ephemeris/Earth_Frame.h"
#include "ephemeris/Moon.h"
#include "ephemeris/Moon_Phases.h"
#include "ephemeris/Series.h"
#include "ephemeris/Sun.h"
#include "ephemeris/Time_Calcs.h"
#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"

namespace kelmoran {

using namespace eclipse;

EclipseTable Eclipses;

namespace {

// The mean motion of the Moon from the Sun, radians a day.
constexpr double kRelativeRate = 0.223402144255274;

// The first moment of `year` as the dates are shown: in the Julian calendar when it is
// chosen, and for every year before AD 1 whichever is chosen.
double Shown_Year_Start(int year) {
    MySystemTime first;
    first.wYear = static_cast<int16_t>(year);
    first.wMonth = 1;
    first.wDay = 1;
    first.wHour = 0;
    return Calc_JD(first, Shared_JulDates != 0 || year < 1);
}

}  // namespace

double Fold_Pi(double a) {
    return a - kTwoPi * std::floor((a + kPi) / kTwoPi);
}

EclipseWindow::EclipseWindow(double centre) : centre_(centre) {
    const EarthFrame frame = Calc_EarthFrame(centre);
    const BodyPlace sunFull = Calc_Sun(kAccuracyFull, frame);
    const BodyPlace moonFull = Calc_Moon(kAccuracyFull, frame);
    const BodyPlace sunReduced = Calc_Sun(kAccuracyReduced, frame);
    const BodyPlace moonReduced = Calc_Moon(kAccuracyReduced, frame);
    const auto difference = [](const BodyPlace& full, const BodyPlace& reduced) {
        BodyPlace d;
        d.RA = Fold_Pi(full.RA - reduced.RA);
        d.Dec = full.Dec - reduced.Dec;
        d.Distance = full.Distance - reduced.Distance;
        d.GHA = -d.RA;
        return d;
    };
    sunCorrection_ = difference(sunFull, sunReduced);
    moonCorrection_ = difference(moonFull, moonReduced);
}

void EclipseWindow::Places(double t, BodyPlace& sun, BodyPlace& moon) const {
    const EarthFrame frame = Calc_EarthFrame(t);
    sun = Calc_Sun(kAccuracyReduced, frame);
    moon = Calc_Moon(kAccuracyReduced, frame);
    const auto correct = [](BodyPlace& p, const BodyPlace& d) {
        p.RA = Reduce_2Pi(p.RA + d.RA);
        p.Dec += d.Dec;
        p.Distance += d.Distance;
        p.GHA = Reduce_2Pi(p.GHA + d.GHA);
    };
    correct(sun, sunCorrection_);
    correct(moon, moonCorrection_);
}

double Phase_Error(double jd, int phase) {
    const double tt = (jd + Get_DeltaT(DeltaT_Year(jd)) / 86400.0) / 36525.0;
    double sunLon = tt, sunLat = kAccuracyReduced, sunDist = 0.0;
    EarthSeries::Instance().SunPlace(sunLon, sunLat, sunDist);
    double moonLon = tt, moonLat = kAccuracyReduced, moonDist = 0.0;
    MoonSeries::Instance().MoonPlace(moonLon, moonLat, moonDist);
    // Nutation in longitude is common to both and left out.
    return Fold_Pi(sunLon + phase * (kPi / 2.0) - moonLon);
}

double Refine_Phase(double jd, int phase) {
    // Works in Julian centuries, as the positions do.
    double T = jd / 36525.0;
    double eOld = Phase_Error(jd, phase);
    if (!std::isfinite(eOld) || std::fabs(eOld) <= kOneArcsecond) return jd;
    double step = eOld / kRelativeRate / 36525.0;
    T += step;
    double eNew = Phase_Error(T * 36525.0, phase);
    for (int i = 0; i < 20 && std::fabs(eNew) > kOneArcsecond && eNew != eOld; ++i) {
        step = step * eNew / (eOld - eNew);
        T += step;
        eOld = eNew;
        eNew = Phase_Error(T * 36525.0, phase);
    }
    return T * 36525.0;
}

double Zone_Minute(double jd, int32_t bias) {
    return Round_Even(jd * 1440.0 + bias) / 1440.0;
}

const char* Ordinal_Suffix(int day) {
    const int tens = day % 100;
    if (tens >= 11 && tens <= 13) return "th";
    switch (day % 10) {
        case 1:
            return "st";
        case 2:
            return "nd";
        case 3:
            return "rd";
        default:
            return "th";
    }
}

std::string Eclipse_Date_Label(double jd, int32_t bias, bool shortYear) {
    const MySystemTime d = JD_To_Date(jd + bias / 1440.0);
    std::string label =
        std::to_string(d.wDay) + Ordinal_Suffix(d.wDay) + " of " + Month_Name(d.wMonth) + " ";
    if (shortYear) return label + "'" + Format_Number(d.wYear % 100, "00");
    return label + Format_Number(d.wYear, "0000");
}

std::string Join_Eclipse_Kinds(const std::string& cell, const std::string& kind) {
    if (cell.empty()) return kind;
    std::string first = cell;
    const std::string tail = " Eclipse";
    if (first.size() >= tail.size() &&
        first.compare(first.size() - tail.size(), tail.size(), tail) == 0)
        first.erase(first.size() - tail.size());
    return first + "/" + kind;
}

int Next_Eclipse(EclipseTable& table) {
    if (table.Count <= 0) return table.Current = 0;
    table.Current = table.Current + 1 >= table.Count ? 0 : table.Current + 1;
    return table.Current;
}

int Previous_Eclipse(EclipseTable& table) {
    if (table.Count <= 0) return table.Current = 0;
    table.Current = table.Current - 1 < 0 ? table.Count - 1 : table.Current - 1;
    return table.Current;
}

std::vector<LunationPhase> Fill_Lunation_Year(int year, int32_t bias, EclipseTable& table) {
    table = EclipseTable{};
    std::vector<LunationPhase> phases;
    // The year runs from its first moment to the first moment of the next, both in the
    // calendar that the dates are shown in, which the year test below reads too.
    const double start = Shown_Year_Start(year) - bias / 1440.0;
    const double end = Shown_Year_Start(year == -1 ? 1 : year + 1) - bias / 1440.0;
    if (!std::isfinite(start)) return phases;
    const double deltaT = Get_DeltaT(DeltaT_Year(start)) / kSecondsPerJulianCentury;

    double previous = start - 10.0;
    for (int lunation = 0; lunation < 16; ++lunation) {
        double last = 0.0;
        for (int p = 0; p < 4; ++p) {
            const double series = Phase_Before(previous + 10.0, deltaT, static_cast<MoonPhase>(p));
            previous = series;
            last = series;
            // A margin of a quarter of an hour: the year test below decides.
            if (series < start - 0.01 || series > end + 0.01) continue;
            LunationPhase cell;
            cell.Phase = static_cast<int16_t>(p);
            cell.UT = Zone_Minute(Refine_Phase(series, p), 0);
            cell.ZoneJD = Zone_Minute(cell.UT, bias);
            const MySystemTime local = JD_To_Date(cell.ZoneJD);
            if (local.wYear != year) continue;  // the year's own phases only
            cell.Month = local.wMonth;
            cell.Day = local.wDay;
            if ((p == 0 || p == 2) && table.Count < kEclipseRows) {
                const int i = table.Count;
                EclipseRow& row = table.Rows[i];
                row = EclipseRow{};
                row.PhaseJD = cell.UT;
                row.IsNewMoon = p == 0 ? -1 : 0;
                const std::string kind =
                    p == 0 ? Solar_Eclipse_Test(row, table.Instants[i], table.Speed[i], bias)
                           : Lunar_Eclipse_Test(row, table.Speed[i], bias);
                if (!kind.empty()) {
                    cell.Eclipse = kind;
                    cell.EclipseRow = i;
                    ++table.Count;
                } else {
                    row = EclipseRow{};
                }
            }
            phases.push_back(cell);
        }
        if (last > end + 0.01) break;
    }
    return phases;
}

}  // namespace kelmoran
