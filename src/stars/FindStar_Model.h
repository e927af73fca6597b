// Find Star as a model: the current star, the magnitude limit with the tiers it loads, the
// lists of its combos (names, all names, constellations with their Bayer, Flamsteed and
// variable rows), the search by catalogue number and by name, and the texts the dialogue
// shows for the current star. The dialogue (FindStarWindow) only shows and forwards.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ephemeris/Bodies.h"

namespace kelmoran {

// A row of one of the combos: its text and the star (or, in the constellation combo, the
// constellation number) it stands for.
struct ComboRow {
    std::string Text;
    int32_t Star = 0;
};

// The entries of MagLimitCombo; the last one has no label ("Showing All").
inline constexpr std::array<const char*, 9> kMagLimitLabels = {
    "Main Stars",  "Magnitude 3.5", "Magnitude 4", "Magnitude 5", "Magnitude 6",
    "Magnitude 7", "Magnitude 8",   "Magnitude 9", ""};

// The kinds of altitude shown: true, observed (dip and index), apparent.
enum class AltKind { True, Observed, Apparent };

// Whether the Star Atlas can show a star: it is not open, it can, or not in its view.
enum class AtlasReach { NotOpen, Shows, NotInView };

namespace findstar_text {
inline constexpr const char* LocateTip =
    "Moves the Mouse Cursor over the Star and/ or centers the screen on the Star. ";
inline constexpr const char* AtlasNotInUse = "The Star Atlas Screen is not in use.";
inline constexpr const char* NotInProjection = "Cannot be shown using the current projection";
inline constexpr const char* BelowHorizon = "True Alt. below horizon";
inline constexpr const char* VarDesigOnly = "Var Desig Only";
}  // namespace findstar_text

// A star's place at `jd` (MyJD) and its altitude and azimuth for the observer that
// Get_Position gives then (whose latitude and longitude are written too).
AltAzResult Star_AltAz(int32_t star, double jd, BodyPlace& place, float& lat, float& lon);
// The altitude of the kind asked (radians), and as text with a minus sign below the horizon.
double Altitude_Of(const AltAzResult& aa, AltKind kind);
std::string Altitude_Text(const AltAzResult& aa, AltKind kind);

// Everything the dialogue shows of the current star.
struct FindStarLabels {
    std::string Alt;           // lblAlt, the absolute value when below the horizon
    bool AltBelow = false;     // shown in red (colour 255) with the tooltip BelowHorizon
    std::string Az;            // lblAz: "000°.0 T" or "000°.0 M"
    std::string RACaption;     // "R.A." or "S.H.A."
    std::string RA;            // RA or SHA by ShowRA
    std::string Dec;           // lblDec
    std::string Vmag;          // lblVmag "#0.00"
    std::string dRA, dDec;     // proper motion "0.000" ("/year), "." when absent
    std::string OtherNames;    // lblOtherNames
    std::string OtherNames1;   // lblOtherNames1
    std::string NotesWord;     // "Variables", "Other Names" or empty
    std::string Hd, Hip, Tycho;
    bool LocateEnabled = false;
    std::string LocateTip;
    // The rows the combos show, -1 for none.
    int32_t NamesRow = -1, AllNamesRow = -1, ConstelRow = -1;
    int32_t BayerRow = -1, FlamstedRow = -1, VarRow = -1;
    bool Beeped = false;       // the star was beyond the table and 37 was taken instead
};

class FindStarModel {
  public:
    FindStarModel();

    int32_t EntryStar = 12;  // the current star
    int32_t MagLimitEntry = 0;
    int32_t Limit = 0;       // highest star shown; 0 the main stars only

    bool ShowRA = false;
    bool ShowAllNames = false;
    bool ShowVariables = false;
    bool ShowHD = true;
    bool ShowHip = true;
    bool ShowTycho = false;  // no Tycho numbers are delivered: the check stays off
    bool ShowNotes = false;  // the notes field shows the variable-star notes
    bool ShowOtherNames = true;
    bool ShowProperMotion = false;
    AltKind Altitude = AltKind::True;
    bool TrueAz = true;

    std::vector<ComboRow> Names, AllNames, Constel, Bayer, Flamsted, Var;
    int32_t Constellation = 0;  // the constellation whose stars the designation combos hold

    // Called now and then while the deeper tiers load, to keep the display alive.
    std::function<void()> Keep_Alive;
    // What the Star Atlas can do with a star; unset, the atlas is not open.
    std::function<AtlasReach(int32_t star)> Atlas_Reach;

    // The captions of the name combos and of the constellation combo.
    std::string Names_Caption() const;
    std::string Constel_Caption() const;

    // A change of MagLimitCombo: loads the tiers the limit needs, extends the star places
    // (computed at `jd`), moves a current star beyond the limit to Sirius, primes the combos.
    void Set_Limit(int32_t entry, double jd);
    // Whether `star` is shown under the limit.
    bool Within_Limit(int32_t star) const;

    void Prime_Names_Combo();
    void Prime_AllNames_Combo();
    void Prime_Constellation_Combo();
    void Prime_Stars_for_Constellation(int32_t k);
    void Prime_All();
    bool Test_for_Stars_in_Constellation(int32_t k) const;

    // Makes `star` current, loading the tiers that hold it and its place at `jd`; false
    // for an index outside the catalogue.
    bool SelectStar(int32_t star, double jd);
    // Row of the constellation combo for the current star's constellation, -1 none; primes
    // the designation combos for it.
    int32_t SetConstelCombo();
    // Row of AllNames for `name`, the one of the current star among equal names; -1.
    int32_t Find_in_AllNames(const std::string& name) const;

    // The search by catalogue number: `number` as typed; `step` +1 or -1 ("+" and "-")
    // moves to the next number held instead. Found is false for a number not held or a
    // star outside the limit (the dialogue beeps on Enter and keeps the text).
    enum class Catalogue { HD, Hip };
    struct CatResult {
        bool Found = false;
        int32_t Star = 0;
        int32_t Number = 0;
    };
    CatResult CatSearch(Catalogue which, int32_t number, int32_t step = 0) const;

    // The texts of the current star at `jd` (MyJD): its place, altitude and azimuth for
    // the observer of the moment, names, numbers, and the rows the combos show.
    FindStarLabels PopulateLabels(double jd);
};

}  // namespace kelmoran
