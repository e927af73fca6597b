// What the sight tests share: the observer's settings, the entry of a row, minutes.
#pragma once

#include <cmath>

#include "settings/File_IO.h"
#include "sights/M_Sights.h"
#include "sights/Sights.h"
#include "voyage/Navigation.h"
#include "voyage/Position_Methods.h"

namespace kelmoran::testing_support {

inline double Minutes(double radians) {
    return radians * kArcminPerRadian;
}
inline double Angle_Diff_Minutes(double a, double b) {
    return std::remainder(a - b, kTwoPi) * kArcminPerRadian;
}

// Sights are reduced from the fixed position `lat`, `lon`.
inline void Use_DR(float lat, float lon) {
    Settings.PositionMethod = kFixPosition;
    Settings.ObserverLat = lat;
    Settings.ObserverLong = lon;
}

// Fresh settings for an observer at a fixed position (1010 mb, 10 °C); the filter at 10'
// and 10° with the main stars, stars by day as well.
inline void Observer_At(float lat, float lon, float indexError, float htOfEye) {
    Settings = SettingsRecord{};
    Settings.Pressure = 1010.0f;
    Settings.Temp = 10.0f;
    Settings.IndexError = indexError;
    Settings.HtOfEye = htOfEye;
    Use_DR(lat, lon);
    Compute_Derived_Settings();
    SightsFilter.AltLimit = static_cast<float>(10.0 / kArcminPerRadian);
    SightsFilter.AzLimit = 10.0f;
    SightsFilter.StarCount = kSightMainStars;
    SightsFilter.DaylightStars = kTrue;
}

// Row `row` as the form enters it: time (MyJD), sextant altitude (radians), azimuth.
inline Sight_Record& Enter_Row(SightSet& set, int row, double t, double hs, float az) {
    Sight_Record& s = set.Sights[row];
    s = Sight_Record{};
    s.Sight_Time = t;
    s.Sextant_Alt = static_cast<float>(hs);
    s.Sight_Az = az;
    s.Row_Used = s.Alt_Entered = s.Az_Entered = kTrue;
    return s;
}

}  // namespace kelmoran::testing_support
