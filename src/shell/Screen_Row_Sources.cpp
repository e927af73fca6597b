// The row calculations of the table screens, as the screens call them.
#include "shell/Screen_Rows.h"
#include "shell/cGeneralForm.h"

namespace kelmoran {

RowSources Screen_Row_Sources() {
    RowSources s;
    s.AltAz = [](double jd, bool catalogue) { return AltAz_Rows(jd, catalogue); };
    s.Sort = [](const AltAzRows& rows, int32_t column, bool ascending) {
        return AltAz_Sort(rows, column, ascending);
    };
    s.Title = [] { return Altitude_Title(); };
    s.Planets = [](double jd, int32_t rows, bool seconds) {
        return Planets_Rows(jd, rows, seconds);
    };
    s.Lunations = [](double jd) { return Lunations_Rows(jd); };
    s.Main = [](double jd, bool seconds) { return Main_Rows(jd, seconds); };
    return s;
}

}  // namespace kelmoran
