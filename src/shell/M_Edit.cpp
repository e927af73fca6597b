// The edit engine: the handlers of the fields, each a small state machine over the keys
// typed so far.
#include "shell/M_Edit.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string_view>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "shell/M_Kelmoran.h"
#include "shell/cDates.h"

namespace kelmoran {

EditSession Edit;

namespace {

bool Is_Digit(int32_t k) {
    return k >= '0' && k <= '9';
}
bool Is_Letter(int32_t k) {
    return (k >= 'A' && k <= 'Z') || (k >= 'a' && k <= 'z');
}
int32_t Upper(int32_t k) {
    return (k >= 'a' && k <= 'z') ? k - 32 : k;
}
bool Is_One_Of(std::string_view s, std::initializer_list<std::string_view> set) {
    for (std::string_view x : set)
        if (s == x) return true;
    return false;
}

void Beep() {
    if (Edit.Form) Edit.Form->Beep();
}

void Redraw() {
    if (Edit.Form) Edit.Form->Repaint_Edit(Edit.Cell);
}

int32_t Buffer_Size() {
    return static_cast<int32_t>(Edit.Buffer.size());
}

// Whole number of a digit string; empty gives 0. Strings here are at most a few digits.
int32_t Digits_Value(const std::string& s) {
    int32_t v = 0;
    for (char c : s)
        if (c >= '0' && c <= '9') v = v * 10 + (c - '0');
    return v;
}

// The number of a typed decimal, "." and "," alike; empty gives 0.
double Decimal_Value(const std::string& s) {
    double v = 0.0, scale = 0.0;
    for (char c : s) {
        if (c == '.' || c == ',') {
            if (scale == 0.0) scale = 1.0;
        } else if (c >= '0' && c <= '9') {
            if (scale == 0.0) {
                v = v * 10 + (c - '0');
            } else {
                scale /= 10.0;
                v += (c - '0') * scale;
            }
        }
    }
    return v;
}

bool Is_Continuation(const std::string& s, int32_t i) {
    return i > 0 && i < static_cast<int32_t>(s.size()) &&
           (static_cast<unsigned char>(s[static_cast<size_t>(i)]) & 0xC0) == 0x80;
}

// Caret movement within the Buffer by Left, Right, Home, End. The caret is a byte index of
// the UTF-8 Buffer and never stands inside a character.
bool Move_Caret(int32_t key) {
    switch (key) {
        case -vk::Left:
            if (Edit.Position > 0) --Edit.Position;
            while (Is_Continuation(Edit.Buffer, Edit.Position)) --Edit.Position;
            return true;
        case -vk::Right:
            if (Edit.Position < Buffer_Size()) ++Edit.Position;
            while (Is_Continuation(Edit.Buffer, Edit.Position)) ++Edit.Position;
            return true;
        case -vk::Home:
            Edit.Position = 0;
            return true;
        case -vk::End:
            Edit.Position = Buffer_Size();
            return true;
        default:
            return false;
    }
}

// Backspace in a Buffer that inserts: the character before the caret goes.
void Back_Space() {
    if (Edit.Position <= 0 || Edit.Buffer.empty()) return;
    int32_t from = Edit.Position - 1;
    while (Is_Continuation(Edit.Buffer, from)) --from;
    Edit.Buffer.erase(static_cast<size_t>(from), static_cast<size_t>(Edit.Position - from));
    Edit.Position = from;
}

// Typing at the caret: numeric fields overtype, free text inserts.
void Put(char c, bool overtype) {
    const auto at = static_cast<size_t>(Edit.Position);
    if (overtype && at < Edit.Buffer.size()) {
        Edit.Buffer[at] = c;
    } else {
        Edit.Buffer.insert(at, 1, c);
    }
    ++Edit.Position;
}

// Left, Right, Home, End and Backspace in a field typed at its caret; true if the key was
// one of them.
bool Caret_Or_Back_Key(int32_t key) {
    if (!Move_Caret(key)) {
        if (key != vk::Back) return false;
        Back_Space();
    }
    Redraw();
    return true;
}

void Commit(double value, const std::string& text) {
    if (Edit.Control) Edit.Control->Edit_Commit(Edit, value, text);
}

// Enter ends the edit after the commit; the pseudo-key -13 commits only (End_Edit goes on).
void Commit_Key_Done(int32_t key) {
    if (key == vk::Return) {
        Edit.Buffer.clear();
        End_Edit();
    }
}

// ---------------------------------------------------------------- dates

cDates* Dates() {
    return dynamic_cast<cDates*>(Edit.Control);
}

// Names of the months as typed: the first month whose name begins with the letters.
int32_t Month_From_Letters(const std::string& letters) {
    if (letters.empty()) return 0;
    for (int32_t m = 1; m <= 12; ++m) {
        const std::string name = Month_Name(m);
        bool match = letters.size() <= name.size();
        for (size_t i = 0; match && i < letters.size(); ++i)
            match = Upper(static_cast<unsigned char>(name[i])) == letters[i];
        if (match) return m;
    }
    return 0;
}

// The month of letters typed in the Month field: "JAN" to "DEC" set it, more than three
// letters give 1, anything else 0 (not yet known).
int32_t Month_From_Short_Name(const std::string& letters) {
    if (letters.size() > 3) return 1;
    if (letters.size() < 3) return 0;
    for (int32_t m = 1; m <= 12; ++m) {
        const std::string name = Month_Name(m);
        if (Upper(static_cast<unsigned char>(name[0])) == letters[0] &&
            Upper(static_cast<unsigned char>(name[1])) == letters[1] &&
            Upper(static_cast<unsigned char>(name[2])) == letters[2])
            return m;
    }
    return 0;
}

// The field's value as committed from the Buffer, or -1 if nothing is to be written.
int32_t Date_Commit_Value(cDates& d) {
    const std::string& f = Edit.Field;
    int32_t v = static_cast<int32_t>(Edit.Value);
    if (f == "Day") {
        if (v == 0) v = 1;
    } else if (f == "Month") {
        if (v == 0) v = Month_From_Letters(Edit.Buffer);
        if (v == 0) return -1;
    } else if (f == "Year") {
        if (v < 100 && d.JulDates == 0 && d.MySystemTime.wYear > 0) v += v >= 50 ? 1900 : 2000;
    }
    return v;
}

void Date_Commit() {
    cDates* d = Dates();
    if (!d || Edit.Buffer.empty()) return;
    const int32_t v = Date_Commit_Value(*d);
    if (v < 0) return;
    Commit(v, "");
}

// Commits this field and opens the next of the strip, or ends the edit at the last.
void Date_Next_Field() {
    cDates* d = Dates();
    const std::string field = Edit.Field;
    Date_Commit();
    Edit.Buffer.clear();
    if (!d) {
        End_Edit();
        return;
    }
    const std::vector<std::string> fields = d->Fields_Shown();
    for (size_t i = 0; i + 1 < fields.size(); ++i)
        if (fields[i] == field) {
            d->Begin_Editing(fields[i + 1]);
            return;
        }
    End_Edit();
}

// The start text and value of the field again, after a step by "+" or "-".
void Date_Reload(cDates& d) {
    Edit.Text = d.Field_Text(Edit.Field);
    Edit.Value = 0;
    Edit.Buffer.clear();
    Edit.Position = 0;
}

void Date_Digit(cDates& d, int32_t key) {
    const std::string& f = Edit.Field;
    const int32_t digit = key - '0';
    bool complete = false;
    if (f == "Year") {
        // Up to four places, overtyping the digit at the caret.
        Put(static_cast<char>(key), true);
        if (Edit.Buffer.size() > 4) Edit.Buffer.resize(4);
        if (Edit.Position > 4) Edit.Position = 4;
        Edit.Value = Digits_Value(Edit.Buffer);
        complete = Edit.Buffer.size() == 4;
    } else {
        const bool first = Edit.Buffer.empty() || !Is_Digit(Edit.Buffer[0]);
        if (first) {
            Edit.Buffer.assign(1, static_cast<char>(key));
            Edit.Position = 1;
            Edit.Value = digit;
        }
        if (f == "Day") {
            const int32_t length = d.DateGet("MonthLength");
            if (first) {
                complete = (d.MySystemTime.wMonth == 2) ? digit > 2 : digit > 3;
                if (!complete && digit == 3 && length < 30) complete = true;
            } else {
                int32_t v = Digits_Value(Edit.Buffer.substr(0, 1)) * 10 + digit;
                if (v > length) v = length;
                if (v == 0) v = 1;
                Edit.Buffer += static_cast<char>(key);
                Edit.Position = 2;
                Edit.Value = v;
                complete = true;
            }
        } else if (f == "Month") {
            if (first) {
                complete = digit > 1;
            } else {
                const int32_t tens = Edit.Buffer[0] - '0';
                if (tens == 0) {
                    Edit.Value = digit;
                    Edit.Buffer += static_cast<char>(key);
                    complete = true;
                } else if (digit <= 2) {
                    Edit.Value = 10 + digit;
                    Edit.Buffer += static_cast<char>(key);
                    complete = true;
                } else {
                    // Any other second digit after a 1 stands alone.
                    Edit.Buffer.assign(1, static_cast<char>(key));
                    Edit.Value = digit;
                    complete = digit > 1;
                }
                Edit.Position = Buffer_Size();
            }
        } else if (f == "Hour") {
            if (first) {
                complete = digit >= 3;
            } else {
                const int32_t tens = Edit.Buffer[0] - '0';
                if (tens == 2 && digit >= 4) {
                    Edit.Buffer.assign(1, static_cast<char>(key));
                    Edit.Value = digit;
                    complete = digit >= 3;
                } else {
                    Edit.Buffer += static_cast<char>(key);
                    Edit.Value = tens * 10 + digit;
                    complete = true;
                }
                Edit.Position = Buffer_Size();
            }
        } else {  // Minute, Second
            if (first) {
                complete = digit >= 6;
            } else {
                Edit.Buffer += static_cast<char>(key);
                Edit.Value = (Edit.Buffer[0] - '0') * 10 + digit;
                Edit.Position = 2;
                complete = true;
            }
        }
    }
    if (complete) {
        Date_Next_Field();
    } else {
        Redraw();
    }
}

void Date_Handler(int32_t key) {
    cDates* d = Dates();
    if (!d) return;
    const std::string& f = Edit.Field;
    if (key == vk::Return || key == vk::Commit) {
        Date_Commit();
        Commit_Key_Done(key);
        return;
    }
    if (key == '+' || key == '-') {
        d->InvalidAreaCheck(false);
        d->Increment_Field(f, key == '+' ? 1 : -1);
        d->CalcDates();
        if (Edit.Editing) {
            Date_Reload(*d);
            Redraw();
        }
        return;
    }
    if (key == vk::Space || key == vk::Tab) {
        Date_Next_Field();
        return;
    }
    if (Move_Caret(key)) {
        Redraw();
        return;
    }
    if (key == vk::Back) {
        Back_Space();
        if (f == "Month" && !Edit.Buffer.empty() && Is_Letter(Edit.Buffer[0])) {
            Edit.Value = Month_From_Short_Name(Edit.Buffer);
        } else {
            Edit.Value = Digits_Value(Edit.Buffer);
        }
        Redraw();
        return;
    }
    if (Is_Letter(key)) {
        if (f != "Month") return;
        if (!Edit.Buffer.empty() && !Is_Letter(Edit.Buffer[0])) Edit.Buffer.clear();
        Edit.Buffer += static_cast<char>(Upper(key));
        Edit.Position = Buffer_Size();
        Edit.Value = Month_From_Short_Name(Edit.Buffer);
        if (Edit.Value && Edit.Buffer.size() == 3) {
            Date_Next_Field();
            return;
        }
        Redraw();
        return;
    }
    if (Is_Digit(key)) Date_Digit(*d, key);
}

// ---------------------------------------------------------------- angles

int32_t Angle_Degree_Digits() {
    return Is_One_Of(Edit.Field, {"Long", "SHA"}) ? 3 : 2;
}

// The largest number of degrees the field takes; SHA stops below its limit.
double Angle_Limit() {
    if (Edit.Field == "Long") return 180.0;
    if (Edit.Field == "SHA") return 360.0;
    return 90.0;
}

double Angle_Minutes(const std::string& minutes, const std::string& decimals) {
    return Decimal_Value(minutes + "." + decimals);
}

// Whether degrees and minutes as typed lie within the field.
bool Angle_Fits(const std::string& degrees, const std::string& minutes,
                const std::string& decimals) {
    const double m = Angle_Minutes(minutes, decimals);
    if (Digits_Value(minutes) >= 60) return false;
    const double total = Digits_Value(degrees) + m / 60.0;
    if (Edit.Field == "SHA") return total < 360.0;
    return total <= Angle_Limit();
}

void Angle_Commit() {
    double degrees, minutes;
    if (Edit.Degrees.empty() && Edit.Minutes.empty() && Edit.Decimals.empty()) {
        // Only the hemisphere was typed: the size of the angle stays as it was.
        degrees = Edit.Whole;
        minutes = Edit.Fraction;
    } else {
        degrees = Digits_Value(Edit.Degrees);
        minutes = Angle_Minutes(Edit.Minutes, Edit.Decimals);
    }
    Commit(Edit.Sign * (degrees + minutes / 60.0) / kDegreesPerRadian, "");
}

void Angle_Handler(int32_t key) {
    if (key == vk::Return || key == vk::Commit) {
        if (!Edit.Buffer.empty()) Angle_Commit();
        Commit_Key_Done(key);
        return;
    }
    if (key == '+' || key == '-') {
        Edit.Sign = key == '+' ? 1 : -1;
        Edit.Buffer += static_cast<char>(key);
        Redraw();
        return;
    }
    if (key == vk::Back) {
        if (!Edit.Decimals.empty()) {
            Edit.Decimals.pop_back();
        } else if (Edit.Stage == 2) {
            Edit.Stage = 1;
        } else if (!Edit.Minutes.empty()) {
            Edit.Minutes.pop_back();
        } else if (Edit.Stage == 1) {
            Edit.Stage = 0;
        } else if (!Edit.Degrees.empty()) {
            Edit.Degrees.pop_back();
        }
        if (!Edit.Buffer.empty()) Edit.Buffer.pop_back();
        Redraw();
        return;
    }
    if (key == 'd' || key == 'D' || key == vk::Space || key == 176) {
        if (Edit.Stage == 0) {
            if (Edit.Degrees.empty()) Edit.Degrees = "0";
            Edit.Stage = 1;
            Edit.Buffer += ' ';
            Redraw();
        }
        return;
    }
    if (key == '.' || key == ',') {
        if (Edit.Stage == 2) return;
        if (Edit.Degrees.empty()) Edit.Degrees = "0";
        if (Edit.Minutes.empty()) Edit.Minutes = "0";
        Edit.Stage = 2;
        Edit.Buffer += '.';
        Redraw();
        return;
    }
    if (!Is_Digit(key)) return;
    const char c = static_cast<char>(key);
    std::string deg = Edit.Degrees, min = Edit.Minutes, dec = Edit.Decimals;
    int32_t stage = Edit.Stage;
    if (stage == 0 && static_cast<int32_t>(deg.size()) >= Angle_Degree_Digits()) stage = 1;
    if (stage == 0) {
        deg += c;
    } else if (stage == 1) {
        if (min.size() >= 2) {
            Beep();
            return;
        }
        min += c;
    } else {
        if (dec.size() >= 2) {  // "Up to two decimal places"
            Beep();
            return;
        }
        dec += c;
    }
    if (!Angle_Fits(deg, min, dec)) {
        Beep();
        return;
    }
    Edit.Degrees = deg;
    Edit.Minutes = min;
    Edit.Decimals = dec;
    Edit.Stage = stage;
    Edit.Buffer += c;
    Redraw();
}

std::string Angle_Display() {
    std::string s = Edit.Degrees.empty() ? "0" : Edit.Degrees;
    s += "\u00B0";
    if (Edit.Stage > 0 || !Edit.Minutes.empty()) s += " " + Edit.Minutes + "'";
    if (Edit.Stage == 2) s += "." + Edit.Decimals;
    if (Is_One_Of(Edit.Field, {"Lat", "Dec"})) s += Edit.Sign < 0 ? " S" : " N";
    if (Edit.Field == "Long") s += Edit.Sign < 0 ? " W" : " E";
    if (Edit.Field == "Alt" && Edit.Sign < 0) s = "-" + s;
    return s;
}

// ---------------------------------------------------------------- numbers

// A decimal number typed at the caret, which overtypes the character under it: up to
// `whole` digits before one "." or "," and up to `places` after it. A key that would break
// the form beeps.
void Number_Key(int32_t key, int32_t whole, int32_t places) {
    if (Caret_Or_Back_Key(key)) return;
    if (Edit.Buffer == "0" && Edit.Position == 1 && Is_Digit(key)) {  // a lone 0 gives way
        Edit.Buffer.clear();
        Edit.Position = 0;
    }
    if (!Is_Digit(key) && key != '.' && key != ',') return;
    const char c = key == ',' ? '.' : static_cast<char>(key);
    std::string next = Edit.Buffer;
    const auto at = static_cast<size_t>(Edit.Position);
    if (at < next.size()) {
        next[at] = c;
    } else {
        next += c;
    }
    const size_t dot = next.find('.');
    const size_t dots =
        dot == std::string::npos ? 0 : 1 + (next.find('.', dot + 1) != std::string::npos);
    const size_t before = dot == std::string::npos ? next.size() : dot;
    const size_t after = dot == std::string::npos ? 0 : next.size() - dot - 1;
    if (dots > 1 || before > static_cast<size_t>(whole) || after > static_cast<size_t>(places) ||
        (places == 0 && dots)) {
        Beep();
        return;
    }
    Edit.Buffer = next;
    ++Edit.Position;
    Redraw();
}

// Enter or the commit key on a number field: a typed number, with its sign, is handed to
// `commit`. Returns false for any other key.
bool Number_Commit_Key(int32_t key, const std::function<void(double)>& commit) {
    if (key != vk::Return && key != vk::Commit) return false;
    if (!Edit.Buffer.empty()) commit(Edit.Sign * Decimal_Value(Edit.Buffer));
    Commit_Key_Done(key);
    return true;
}

// "+" or "-" in a field that has a sign: the sign is set, and a bare sign shows a 0.
void Sign_Key(int32_t key) {
    Edit.Sign = key == '-' ? -1 : 1;
    if (Edit.Buffer.empty()) {
        Edit.Buffer = "0";
        Edit.Position = 1;
    }
    Redraw();
}

// Speed by "#0.0#": two places when the hundredths are wanted, else one.
std::string Speed_Text(double v) {
    return Format_Number(v, mask::SpeedFlexible);
}

void Speed_Handler(int32_t key) {
    if (Number_Commit_Key(key, [](double v) { Commit(v, Speed_Text(v)); })) return;
    Number_Key(key, 2, 2);
}

// The Clocks zone field: "Z" and the sign stand in front of the number of hours.
void Zone_Handler(int32_t key) {
    const bool done = Number_Commit_Key(key, [](double hours) {
        if (std::fabs(hours) > 12.0) {
            Beep();
            return;
        }
        const std::string sign = hours < 0 ? "Z-" : "Z+";
        Commit(hours, hours == 0 ? std::string("GMT") : sign + Speed_Text(std::fabs(hours)));
    });
    if (done || key == 'Z' || key == 'z') return;  // the prefix always stands
    if (key == '+' || key == '-') {
        Sign_Key(key);
        return;
    }
    Number_Key(key, 2, 2);
}

void Distance_Handler(int32_t key) {
    if (Number_Commit_Key(key, [](double v) { Commit(v, Format_Number(v, "0.0")); })) return;
    Number_Key(key, 5, 1);
}

// The values of the Observer and Options fields: one decimal place; a sign for the fields
// that can be below zero.
void Real_Handler(int32_t key) {
    if (Number_Commit_Key(key, [](double v) { Commit(v, Format_Number(v, "0.0")); })) return;
    if (key == '-' || key == '+') {
        if (Is_One_Of(Edit.Field, {"IndexError", "Temp"})) {
            Sign_Key(key);
        } else {
            Beep();
        }
        return;
    }
    Number_Key(key, 4, 1);
}

// ---------------------------------------------------------------- course

// The course mask "000°.0": three digits, then the tenths, typed over in place.
constexpr int32_t kCourseDigits = 4;

bool Course_Suffix_Shown() {
    return Edit.Field == "Course" && Edit.Class == "CellEdit";
}

void Course_Start() {
    if (!Edit.Buffer.empty()) return;
    double v = std::nearbyint(Edit.Value * 10.0);
    if (v < 0 || v >= 3600) v = 0;
    char buf[8];
    std::snprintf(buf, sizeof buf, "%04d", static_cast<int>(v));
    Edit.Buffer = buf;
}

double Course_Value(const std::string& digits) {
    return Digits_Value(digits.substr(0, 3)) + Digits_Value(digits.substr(3, 1)) / 10.0;
}

void Course_Handler(int32_t key) {
    if (key == vk::Return || key == vk::Commit) {
        if (!Edit.Buffer.empty()) {
            const double v = Course_Value(Edit.Buffer);
            std::string text = Edit.Buffer.substr(0, 3) + "\u00B0." + Edit.Buffer.substr(3, 1);
            if (Course_Suffix_Shown()) text += Edit.Magnetic ? " M" : " T";
            Commit(v, text);
        }
        Commit_Key_Done(key);
        return;
    }
    if (key == -vk::Left || key == -vk::Right || key == -vk::Home || key == -vk::End) {
        Course_Start();
        Move_Caret(key);
        if (Edit.Position > kCourseDigits - 1) Edit.Position = kCourseDigits - 1;
        Redraw();
        return;
    }
    if (key == vk::Back) {
        Course_Start();
        if (Edit.Position > 0) {
            --Edit.Position;
            Edit.Buffer[static_cast<size_t>(Edit.Position)] = '0';
        }
        Redraw();
        return;
    }
    if (Course_Suffix_Shown() && (Upper(key) == 'T' || Upper(key) == 'M')) {
        Course_Start();
        Edit.Magnetic = Upper(key) == 'M';
        Redraw();
        return;
    }
    if (key == '.' || key == ',') {
        Course_Start();
        Edit.Position = 3;
        Redraw();
        return;
    }
    if (!Is_Digit(key)) return;
    Course_Start();
    if (Edit.Position >= kCourseDigits) {
        Beep();
        return;
    }
    std::string next = Edit.Buffer;
    next[static_cast<size_t>(Edit.Position)] = static_cast<char>(key);
    if (Course_Value(next) >= 360.0) {
        Beep();
        return;
    }
    Edit.Buffer = next;
    if (Edit.Position < kCourseDigits) ++Edit.Position;
    Redraw();
}

// Index in the course's display of digit `i` of the Buffer: "000°.0" has the degree sign
// (two bytes) and the point between the third digit and the tenths.
int32_t Course_Display_Index(int32_t i) {
    return i < 3 ? i : i + 3;
}

std::string Course_Display() {
    std::string s = Edit.Buffer.substr(0, 3) + "\u00B0." + Edit.Buffer.substr(3, 1);
    if (Course_Suffix_Shown()) s += Edit.Magnetic ? " M" : " T";
    return s;
}

// ---------------------------------------------------------------- free text, way points

void Free_Text_Handler(int32_t key) {
    if (key == vk::Return || key == vk::Commit) {
        if (!Edit.Buffer.empty()) Commit(0.0, Edit.Buffer == "\x7F" ? std::string() : Edit.Buffer);
        Commit_Key_Done(key);
        return;
    }
    const bool nav = key == -vk::Left || key == -vk::Right || key == -vk::Home || key == -vk::End;
    if ((nav || key == vk::Back) && Edit.Buffer.empty()) {
        // Moving in the start text takes it up for editing.
        Edit.Buffer = Edit.Text;
        if (key == -vk::End || key == vk::Back) Edit.Position = Buffer_Size();
    }
    if (Caret_Or_Back_Key(key)) return;
    if (key < 32 || key > 255) return;
    if (Edit.Field == "ID" && Buffer_Size() >= 6) {
        Beep();
        return;
    }
    if (key >= 128) {
        // Latin-1 above 127 is held in UTF-8 (the degree sign of Ctrl+D).
        const std::string utf8 = {static_cast<char>(0xC0 | (key >> 6)),
                                  static_cast<char>(0x80 | (key & 0x3F))};
        Edit.Buffer.insert(static_cast<size_t>(Edit.Position), utf8);
        Edit.Position += 2;
    } else {
        Put(static_cast<char>(key), false);
    }
    Redraw();
}

// Way-point numbers 1 .. 999, or the letter codes of a fix.
const char* Way_Point_Code(int32_t key) {
    switch (Upper(key)) {
        case 'R':
            return "Ra";
        case 'G':
            return "GPS";
        case 'V':
            return "Vis";
        case 'F':
            return "Fix";
        default:
            return nullptr;
    }
}

void Way_Point_Handler(int32_t key) {
    if (key == vk::Return || key == vk::Commit) {
        if (!Edit.Buffer.empty()) {
            if (Is_Letter(static_cast<unsigned char>(Edit.Buffer[0]))) {
                Commit(0.0, Edit.Buffer);
            } else {
                const int32_t v = Digits_Value(Edit.Buffer);
                if (v < 1) {
                    Beep();
                } else {
                    Commit(v, std::to_string(v));
                }
            }
        }
        Commit_Key_Done(key);
        return;
    }
    if (const char* code = Way_Point_Code(key)) {
        Edit.Buffer = code;
        Edit.Position = Buffer_Size();
        Redraw();
        return;
    }
    if (!Edit.Buffer.empty() && Is_Letter(static_cast<unsigned char>(Edit.Buffer[0])) &&
        (Is_Digit(key) || key == vk::Back)) {
        Edit.Buffer.clear();
        Edit.Position = 0;
        if (key == vk::Back) {
            Redraw();
            return;
        }
    }
    if (Is_Digit(key) && Edit.Buffer.size() >= 3 && Edit.Position >= 3) {
        Beep();
        return;
    }
    Number_Key(key, 3, 0);
}

// The small numbers of the Options tabs: hours of a zone up to 12, minutes up to 59, and
// way-point numbers.
void Small_Number_Handler(int32_t key) {
    if (Edit.Field == "WptNo") {
        Way_Point_Handler(key);
        return;
    }
    const int32_t limit = Edit.Field == "Hour" ? 12 : 59;
    if (key == vk::Return || key == vk::Commit) {
        if (!Edit.Buffer.empty()) {
            const int32_t v = Digits_Value(Edit.Buffer);
            char buf[16];
            std::snprintf(buf, sizeof buf, "%02d", v);
            Commit(v, buf);
        }
        Commit_Key_Done(key);
        return;
    }
    if (Caret_Or_Back_Key(key)) return;
    if (!Is_Digit(key)) return;
    if (Edit.Field == "Hour" && Edit.Buffer.empty() && key > '1') {
        Beep();
        return;
    }
    std::string next = Edit.Buffer;
    if (next.size() >= 2 && Edit.Position >= 2) {
        Beep();
        return;
    }
    const auto at = static_cast<size_t>(Edit.Position);
    if (at < next.size()) {
        next[at] = static_cast<char>(key);
    } else {
        next += static_cast<char>(key);
    }
    if (Digits_Value(next) > limit) {
        Beep();
        return;
    }
    Edit.Buffer = next;
    ++Edit.Position;
    Redraw();
}

// ---------------------------------------------------------------- durations and times

// Day, hour and minute groups. A duration closes a group by "d", "h", "m"; a time of
// arrival by "/" and ":"; Space moves on in both. Hours stay below 24, minutes below 60;
// the day of a time of arrival is a day of the month.
void Groups_Handler(int32_t key) {
    const bool eta = Edit.Handler == EditHandler::Eta;
    auto value = [&] {
        return Digits_Value(Edit.Groups[0]) + Digits_Value(Edit.Groups[1]) / 24.0 +
               Digits_Value(Edit.Groups[2]) / 1440.0;
    };
    if (key == vk::Return || key == vk::Commit) {
        if (!Edit.Buffer.empty()) Commit(value(), Edit_Display_Text());
        Commit_Key_Done(key);
        return;
    }
    if (key == vk::Back) {
        if (!Edit.Buffer.empty()) Edit.Buffer.pop_back();
        while (Edit.Group > 0 && Edit.Groups[static_cast<size_t>(Edit.Group)].empty()) --Edit.Group;
        std::string& g = Edit.Groups[static_cast<size_t>(Edit.Group)];
        if (!g.empty()) g.pop_back();
        Redraw();
        return;
    }
    int32_t close = -1;
    const int32_t u = Upper(key);
    if (!eta && (u == 'D' || u == 'H' || u == 'M')) close = u == 'D' ? 0 : (u == 'H' ? 1 : 2);
    if (eta && (key == '/' || key == ':')) close = key == '/' ? 0 : 1;
    if (key == vk::Space) close = Edit.Group;
    if (close >= 0) {
        if (close >= Edit.Group && close < 2) Edit.Group = close + 1;
        Edit.Buffer += static_cast<char>(key);
        Redraw();
        return;
    }
    if (!Is_Digit(key)) return;
    const auto gi = static_cast<size_t>(Edit.Group);
    const std::string next = Edit.Groups[gi] + static_cast<char>(key);
    const int32_t v = Digits_Value(next);
    const size_t width = gi == 0 ? (eta ? 2 : 3) : 2;
    const int32_t limit = gi == 0 ? (eta ? 31 : 999) : (gi == 1 ? 23 : 59);
    if (next.size() > width || v > limit) {
        Beep();
        return;
    }
    Edit.Groups[gi] = next;
    Edit.Buffer += static_cast<char>(key);
    if (gi < 2 && next.size() == width) Edit.Group = static_cast<int32_t>(gi) + 1;
    Redraw();
}

std::string Two(const std::string& digits) {
    return digits.size() >= 2 ? digits : std::string(2 - digits.size(), '0') + digits;
}

std::string Groups_Display() {
    if (Edit.Handler == EditHandler::Eta) {
        std::string s;
        if (!Edit.Groups[0].empty()) s = Edit.Groups[0] + "/ ";
        return s + Two(Edit.Groups[1]) + ":" + Two(Edit.Groups[2]);
    }
    std::string s;
    if (!Edit.Groups[0].empty()) s += Edit.Groups[0] + "d ";
    if (!Edit.Groups[1].empty() || Edit.Group >= 1) s += Edit.Groups[1] + "h ";
    if (!Edit.Groups[2].empty() || Edit.Group >= 2) s += Edit.Groups[2] + "m";
    return s.empty() ? "0d " : s;
}

// ---------------------------------------------------------------- dispatch

}  // namespace

EditHandler Edit_Handler_For(const std::string& editClass, const std::string& field) {
    if (editClass == "Observer" && Is_One_Of(field, {"Course", "Dip"}))
        return EditHandler::RealNumber;
    if (Is_One_Of(editClass, {"Tb_Voyage", "Tb_Time"})) return EditHandler::SmallNumber;
    if (editClass == "Dates") return EditHandler::Date;
    if (Is_One_Of(field, {"Alt", "Lat", "Long", "SHA", "Dec"})) return EditHandler::Angle;
    if (field == "Clox") return EditHandler::Zone;
    if (field == "Speed") return EditHandler::Speed;
    if (Is_One_Of(field, {"Course", "Az"})) return EditHandler::Course;
    if (Is_One_Of(field, {"ID", "Desc", "Remarks", "Title"})) return EditHandler::FreeText;
    if (field == "WptNo") return EditHandler::WayPoint;
    if (field == "Dist") return EditHandler::Distance;
    if (field == "Duration") return EditHandler::Duration;
    if (field == "ETA") return EditHandler::Eta;
    if (field == "Hour" || field == "Minutes") return EditHandler::SmallNumber;
    if (editClass == "Observer") return EditHandler::RealNumber;
    return EditHandler::FreeText;
}

void Begin_Edit(const EditRequest& request) {
    EditSession s;
    static_cast<EditRequest&>(s) = request;
    s.Handler = Edit_Handler_For(request.Class, request.Field);
    if (s.Handler == EditHandler::Angle) {
        const double d = request.Value * kDegreesPerRadian;
        s.Sign = d < 0 ? -1 : 1;
        const double a = std::fabs(d);
        double whole = std::floor(a);
        double minutes = std::nearbyint((a - whole) * 60.0 * 100.0) / 100.0;
        if (minutes >= 60.0) {
            whole += 1;
            minutes = 0;
        }
        s.Whole = whole;
        s.Fraction = minutes;
    } else if (s.Handler == EditHandler::Zone || s.Handler == EditHandler::RealNumber) {
        s.Sign = request.Value < 0 ? -1 : 1;
    } else if (s.Handler == EditHandler::Course) {
        s.Magnetic = request.Text.find(" M") != std::string::npos;
    }
    if (s.Field == "WptNo" && request.Value < 1 && s.Alignment == 2) {
        // The first caret of an empty way-point cell stands at the left.
        s.Alignment = 0;
        s.RestoreAlignment = 2;
    }
    s.Editing = true;
    Edit = s;
    Shell.Editing = kTrue;
    Redraw();
    if (Edit.RestoreAlignment >= 0) {
        Edit.Alignment = Edit.RestoreAlignment;
        Edit.RestoreAlignment = -1;
    }
    // The course keeps its start value for the mask; all others start from nothing.
    if (Edit.Handler != EditHandler::Course) Edit.Value = 0;
    Edit.Buffer.clear();
}

void End_Edit(bool closing) {
    if (!Edit.Editing) return;
    if (!Edit.Buffer.empty()) Edit_Dispatch(vk::Commit);
    if (!Edit.Editing) return;  // the commit ended it
    EditCanvas* form = Edit.Form;
    const Rect cell = Edit.Cell;
    Edit = EditSession{};
    Shell.Editing = kFalse;
    if (!closing && form) form->Repaint_Edit(cell);
}

void Edit_Dispatch(int32_t key) {
    if (!Edit.Editing) return;
    switch (Edit.Handler) {
        case EditHandler::Date:
            Date_Handler(key);
            break;
        case EditHandler::Angle:
            Angle_Handler(key);
            break;
        case EditHandler::Zone:
            Zone_Handler(key);
            break;
        case EditHandler::Speed:
            Speed_Handler(key);
            break;
        case EditHandler::Course:
            Course_Handler(key);
            break;
        case EditHandler::FreeText:
            Free_Text_Handler(key);
            break;
        case EditHandler::WayPoint:
            Way_Point_Handler(key);
            break;
        case EditHandler::Distance:
            Distance_Handler(key);
            break;
        case EditHandler::Duration:
        case EditHandler::Eta:
            Groups_Handler(key);
            break;
        case EditHandler::SmallNumber:
            Small_Number_Handler(key);
            break;
        case EditHandler::RealNumber:
            Real_Handler(key);
            break;
    }
}

bool Edit_Key_Down(int32_t virtualKey) {
    if (!Edit.Editing) return false;
    switch (virtualKey) {
        case vk::Left:
        case vk::Right:
        case vk::Home:
        case vk::End:
            Edit_Dispatch(-virtualKey);
            return true;
        case vk::Delete:
            Edit_Dispatch(-vk::Right);
            Edit_Dispatch(vk::Back);
            return true;
        case vk::Back:
        case vk::Return:
            Edit_Dispatch(virtualKey);
            return true;
        case vk::Tab:
            if (Edit.Handler == EditHandler::Date) {
                Edit_Dispatch(vk::Tab);
                return true;
            }
            return false;
        case vk::F2:
            if (Is_One_Of(Edit.Class, {"Tb_Time", "Dates", "Tb_Voyage"})) {
                // Negated like the caret keys: its code is that of "q".
                Edit_Dispatch(-vk::F2);
                return true;
            }
            return false;
        case vk::Escape:
            Edit_Escape();
            return true;
        default:
            return false;
    }
}

void Edit_Key_Press(int32_t character) {
    if (character < 32 || character == 127 || character > 255) return;
    Edit_Dispatch(character);
}

void Edit_Escape() {
    if (!Edit.Editing) return;
    Edit.Buffer.clear();
    End_Edit();
}

std::string Edit_Display_Text() {
    switch (Edit.Handler) {
        case EditHandler::Angle:
            return Edit.Buffer.empty() ? Edit.Text : Angle_Display();
        case EditHandler::Course:
            return Edit.Buffer.empty() ? Edit.Text : Course_Display();
        case EditHandler::Duration:
        case EditHandler::Eta:
            return Edit.Buffer.empty() ? Edit.Text : Groups_Display();
        case EditHandler::Zone:
            return Edit.Buffer.empty() ? Edit.Text
                                       : std::string(Edit.Sign < 0 ? "Z-" : "Z+") + Edit.Buffer;
        default:
            return Edit.Buffer.empty() ? Edit.Text : Edit.Buffer;
    }
}

int32_t Edit_Caret_Index() {
    if (Edit.Buffer.empty()) return 0;
    const std::string shown = Edit_Display_Text();
    switch (Edit.Handler) {
        case EditHandler::Angle:
        case EditHandler::Duration:
        case EditHandler::Eta: {
            // The caret follows what has been typed: before the hemisphere or at the end.
            size_t end = shown.size();
            if (Edit.Handler == EditHandler::Angle && Is_One_Of(Edit.Field, {"Lat", "Dec", "Long"}))
                end -= 2;
            return static_cast<int32_t>(end);
        }
        case EditHandler::Course:
            return Course_Display_Index(Edit.Position < kCourseDigits ? Edit.Position : 3) +
                   (Edit.Position >= kCourseDigits ? 1 : 0);
        case EditHandler::Zone:
            return 2 + Edit.Position;
        default:
            return Edit.Position;
    }
}

int32_t Caret_X() {
    if (!Edit.Form) return Edit.Cell.Left;
    const std::string shown = Edit_Display_Text();
    const int32_t full = Edit.Form->Text_Width(Edit.Font, shown);
    const int32_t before =
        Edit.Form->Text_Width(Edit.Font, shown.substr(0, static_cast<size_t>(Edit_Caret_Index())));
    switch (Edit.Alignment) {
        case 1:
            return Edit.Cell.Left + (Edit.Cell.Width() - full) / 2 + before;
        case 2:
            return Edit.Cell.Right - 2 - full + before;
        default:
            return Edit.Cell.Left + 2 + before;
    }
}

void Edit_Click(int32_t x) {
    if (!Edit.Editing || !Edit.Form) return;
    switch (Edit.Handler) {
        case EditHandler::Angle:
        case EditHandler::Duration:
        case EditHandler::Eta:
        case EditHandler::Zone:
            return;  // the caret follows the typing in these
        case EditHandler::Course:
            Course_Start();
            break;
        case EditHandler::FreeText:
            if (Edit.Buffer.empty()) Edit.Buffer = Edit.Text;
            break;
        default:
            if (Edit.Buffer.empty()) return;
    }
    // Nearest character boundary to x.
    const int32_t count = Edit.Handler == EditHandler::Course
                              ? kCourseDigits
                              : static_cast<int32_t>(Edit.Buffer.size());
    int32_t best = 0, bestDistance = -1;
    for (int32_t i = 0; i <= count; ++i) {
        const int32_t saved = Edit.Position;
        Edit.Position = i;
        const int32_t d = std::abs(Caret_X() - x);
        Edit.Position = saved;
        if (bestDistance < 0 || d < bestDistance) {
            bestDistance = d;
            best = i;
        }
        // Skip the continuation bytes of a character.
        if (Edit.Handler != EditHandler::Course)
            while (Is_Continuation(Edit.Buffer, i + 1)) ++i;
    }
    if (Edit.Handler == EditHandler::Course && best >= kCourseDigits) best = kCourseDigits - 1;
    Edit.Position = best;
    Redraw();
}

}  // namespace kelmoran
