// One opening of the nautical almanac: three consecutive days, hour by hour, for Aries,
// the Sun, the Moon, Venus, Mars, Jupiter and Saturn, the navigational stars for the
// middle day, and the tables of twilight, sunrise and moonrise by latitude, with the
// equation of time, the meridian passages and the Moon's age and illumination.
//
// The page behaves as a printed table does: every value is rounded to the tenth of a
// minute before it is shown, and the v and d values are differences of the rounded
// figures, so that a navigator working by hand gets the printed result. It holds for the
// world: times are GMT, and those of the latitude tables are for the meridian of
// Greenwich (local mean time elsewhere). The page knows nothing of the observer.
//
// Places: the Sun at each hour by the full series; the planets by the full series every 12
// hours, carried to each hour by four-point (cubic) interpolation in right ascension,
// declination and distance; the Moon by the reduced series at each hour, corrected by the
// full series' excess over it, taken every 24 hours and interpolated the same way. Each
// stays within 0.5" of the full place at every hour (under a tenth of the table's last
// unit); all hour angles from the sidereal time of the hour. The Moon's places a day
// before and after the page, which serve only the passages and the rises of the tables
// (printed to the minute), come from the reduced series.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "ephemeris/Body_Place.h"
#include "ephemeris/Earth_Frame.h"

namespace kelmoran {

// The Moon's age in whole days at `jd` (MyJD): from the last New Moon at or before it;
// 0 for a moment that is not a number.
double Moon_Age_At(double jd);

// The Moon's illuminated fraction from the places of the Sun (distance in AU) and the
// Moon (distance in km), rounded to two decimals, 0 .. 1 (0 for places that are not
// numbers).
double Moon_Illuminated_Fraction(const BodyPlace& sun, const BodyPlace& moon);

// The cell of an illuminated fraction: "Full " when it is exactly 1, else by "##0%".
std::string Illumination_Text(double fraction);

class cAlmanac {
  public:
    static constexpr int kDays = 3;
    static constexpr int kHours = 72;       // tabulated rows, 0h of the first day on
    static constexpr int kFrameHours = 76;  // frames and Moon places 0 .. 75
    static constexpr int kLatitudeRows = 32;
    static const std::array<int, kLatitudeRows> kLatitudes;  // degrees, north to south
    static const std::array<const char*, kLatitudeRows> kLatitudeLabels;
    // The planets of the page, in column order.
    static constexpr std::array<int, 4> kPlanets = {5, 6, 7, 8};

    // A row of the Sun, Aries or a planet: GHA, Dec, and the hemisphere name ("N", "S")
    // when the Dec text carries it on this row, else "".
    struct Body_Row {
        std::string GHA, Dec, Marker;
    };
    struct Moon_Row {
        std::string GHA, v, Dec, d, HP;
        std::string Flag;  // as Body_Row's Marker
    };
    struct Planet_Column {
        std::array<Body_Row, kHours> Rows;
        std::string v, d, Magnitude;  // one of each for the page
        std::string MerPass;          // the middle day's meridian passage, "HH:MM"
    };
    struct Star_Row {
        std::string Name, SHA, Dec;
    };
    // The morning and the evening cells of one latitude and day.
    struct AM_Cells {
        std::string Nautical, Civil, Sunrise, Moonrise;
    };
    struct PM_Cells {
        std::string Sunset, Civil, Nautical, Moonset;
    };
    // The foot of the right page for one day.
    struct Daily_MP {
        std::string Eqn00, Eqn12, MerPass;  // equation of time, Sun's meridian passage
        std::string MoonUpper, MoonLower;   // the Moon's passages, "  -  " if none
        std::string Age, Vis;               // "#0d" and the illumination
    };
    struct Other_Data {
        std::string SunSD, SunD;                // the page's SD and d of the Sun
        std::array<std::string, kDays> MoonSD;  // at 12h of each day
        std::string AriesMerPass;               // the middle day's passage of Aries
    };

    // Setting the moment of 0h (UT) of the first day runs the whole calculation.
    void MyJD(double jd);
    double MyJD() const { return jd_; }

    const std::array<std::string, kHours>& MyAriesCol() const { return aries_; }
    const std::array<Body_Row, kHours>& MySunCol() const { return sun_; }
    const std::array<Moon_Row, kHours>& MyMoonCol() const { return moon_; }
    const Planet_Column& MyVenusCol() const { return planets_[0]; }
    const Planet_Column& MyMarsCol() const { return planets_[1]; }
    const Planet_Column& MyJupiterCol() const { return planets_[2]; }
    const Planet_Column& MySaturnCol() const { return planets_[3]; }
    const std::vector<Star_Row>& MyStarCol() const { return stars_; }
    const std::array<std::array<AM_Cells, kDays>, kLatitudeRows>& MyAmTwilights() const {
        return am_;
    }
    const std::array<std::array<PM_Cells, kDays>, kLatitudeRows>& MyPmTwilights() const {
        return pm_;
    }
    const std::array<Daily_MP, kDays>& MyDailyMPdata() const { return daily_; }
    // The Sun's meridian passage of each day, hours of GMT.
    const std::array<double, kDays>& MySunMerPasses() const { return sunPass_; }
    // The Moon's upper and lower passages of each day, hours of GMT; -1 where none.
    const std::array<std::array<double, 2>, kDays>& MyMoonMerPasses() const { return moonPass_; }
    const Other_Data& MyOtherData() const { return other_; }
    const std::array<double, kDays>& MyMoonPhase() const { return phase_; }  // percent
    const std::array<double, kDays>& MyMoonAge() const { return age_; }      // days

    // The working values behind the texts, unrounded: hour 0 .. 75 for the frames and the
    // Moon, 0 .. 72 for the Sun and the planets; the Sun's tabulated (adjusted) GHA of
    // hours 0 .. 71; the stars' SHA and Dec for the middle day, in MyStarCol's order.
    const EarthFrame& Frame(int h) const { return frames_[static_cast<size_t>(h)]; }
    const BodyPlace& Sun_Place(int h) const { return sunPlaces_[static_cast<size_t>(h)]; }
    const BodyPlace& Moon_Place(int h) const {
        return moonPlaces_[static_cast<size_t>(h + kMoonBefore)];
    }
    const BodyPlace& Planet_Place(int planet, int h) const {
        return planetPlaces_[static_cast<size_t>(planet)][static_cast<size_t>(h)];
    }
    double Sun_Tabulated_GHA(int h) const { return sunTabGHA_[static_cast<size_t>(h)]; }
    double Star_SHA(int row) const { return starSHA_[static_cast<size_t>(row)]; }
    double Star_Dec(int row) const { return starDec_[static_cast<size_t>(row)]; }

    // An hour angle as the page writes it: rounded to the tenth of a minute (a rounded
    // 360° is 0°), "° ", minutes, padded.
    static std::string Tabulated_Angle_Text(double radians);
    // Minutes of the day as "HH:MM" (rounded to the whole minute; 24:00 is 00:00).
    static std::string HrMins_Ex(double minutes);
    // The altitude of the Moon's upper limb at a passage (upper or lower) for declination
    // `dec` and latitude `lat` (radians), the Moon at `r` km: the meridian altitude, plus
    // the semi-diameter, less the horizontal parallax, plus 34' of refraction.
    static double Moon_MerPassAlt(bool upper, double dec, double lat, double r);
    static bool IsMoonVisible(double alt) { return alt >= 0.0; }

    // The moment (hours from the page's 0h) in the morning or the evening of the day
    // whose Sun's passage is at `noon` hours, at which the Sun's centre has the true
    // altitude `alt` at latitude `lat` on the meridian of Greenwich; NaN if the hour
    // angle has no solution.
    double Get_Time_for_SunAlt(double alt, bool morning, double lat, double noon) const;

  private:
    static constexpr int kMoonBefore = 27;  // hours of Moon places before 0h
    static constexpr int kMoonAfter = 99;   // last hour of Moon places

    struct Interp {
        double GHA = 0.0, Dec = 0.0, Distance = 0.0;
    };
    Interp Interpolate_Sun_Data(double hour) const;
    Interp Interpolate_Moon_Data(double hour) const;

    void Places();
    void Populate_Sun_MerPasses();
    void Calc_Sun_Twilights();
    void Populate_Moon_MerPasses();
    void Calc_Moon_Upper_MerPass();
    void Calc_Moon_Lower_MerPass();
    void Calc_Moon_Rise_Times();
    void Moon_Time_Sequence(int row);
    double Get_Time_Of_MoonAlt0(double lat, double from, double to, bool rise) const;
    double Almanac_Awkward_Body(bool moon, double lat, double alt, double from, double to,
                                bool rising) const;
    void Sun_Column();
    void Moon_Column();
    void Aries_Column();
    void Planet_Data();
    void StellarData();
    void CalcMoonPhase();

    double jd_ = 0.0;
    std::array<EarthFrame, kFrameHours> frames_{};
    std::array<BodyPlace, kHours + 1> sunPlaces_{};
    std::array<BodyPlace, kMoonBefore + kMoonAfter + 1> moonPlaces_{};
    std::array<std::array<BodyPlace, kHours + 1>, 4> planetPlaces_{};
    std::array<double, kHours> sunTabGHA_{};
    std::vector<double> starSHA_, starDec_;
    // The Moon's passages over the Moon's hours, in time order: hours, upper.
    std::vector<std::pair<double, bool>> moonPassages_;

    std::array<std::string, kHours> aries_;
    std::array<Body_Row, kHours> sun_;
    std::array<Moon_Row, kHours> moon_;
    std::array<Planet_Column, 4> planets_;
    std::vector<Star_Row> stars_;
    std::array<std::array<AM_Cells, kDays>, kLatitudeRows> am_;
    std::array<std::array<PM_Cells, kDays>, kLatitudeRows> pm_;
    std::array<Daily_MP, kDays> daily_;
    std::array<double, kDays> sunPass_{};
    std::array<std::array<double, 2>, kDays> moonPass_{};
    Other_Data other_;
    std::array<double, kDays> phase_{};
    std::array<double, kDays> age_{};
};

}  // namespace kelmoran
