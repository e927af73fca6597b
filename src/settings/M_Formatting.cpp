// The text forms of angles, times, zones and numbers; the number and date masks.
#include "settings/M_Formatting.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "ephemeris/Units.h"

namespace kelmoran {

namespace {

// A value that is not a number is shown as 0 rather than as garbage.
double Finite_Or_Zero(double x) { return std::isfinite(x) ? x : 0.0; }

// The carry test of the angle formats: the rounded minutes or seconds, held as a 32-bit
// float, equal 60.
bool Rounds_To_Sixty(double x) { return static_cast<float>(x) == 60.0f; }

// 10^0 .. 10^15, each exactly representable.
constexpr std::array<double, 16> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// The text that "%.*f" writes for `a` (not negative, already rounded to `places`
// decimals by Round_Even). Below 2^52 units of the last place the double nearest to
// n / 10^places lies within far less than half a unit of n / 10^places, so the digits are
// those of the whole number n; they are written directly, which the tables of thousands
// of cells need to be quick. Larger values and more places go through snprintf.
std::string Fixed_Digits(double a, int places) {
    if (places >= 0 && places <= 15 && a >= 0.0) {
        const double y = a * kPowersOfTen[static_cast<size_t>(places)];
        if (y < 4503599627370496.0) {
            auto n = static_cast<uint64_t>(std::nearbyint(y));
            char buf[40];
            char* end = buf + sizeof buf;
            char* p = end;
            for (int i = 0; i < places; ++i) {
                *--p = static_cast<char>('0' + n % 10);
                n /= 10;
            }
            if (places > 0) *--p = '.';
            do {
                *--p = static_cast<char>('0' + n % 10);
                n /= 10;
            } while (n > 0);
            return std::string(p, end);
        }
    }
    char buf[400];
    std::snprintf(buf, sizeof buf, "%.*f", places, a);
    return buf;
}

// What Format_Number writes for `value` by a mask of `zeros` "0" places, then `literal`,
// then, when `places` is above 0, a point and that many "0" places: the masks "0", "00'",
// "00'.0" and the like, which the angle and time forms use for every cell. The text is
// built straight from the digits, without reading a mask.
std::string Zero_Mask_Text(double value, size_t zeros, const char* literal, int places) {
    const double v = Finite_Or_Zero(value);
    const double a = Round_Even(std::fabs(v), places);
    const std::string digits = Fixed_Digits(a, places);
    const size_t dot = digits.find('.');
    std::string out;
    if (v < 0 && a != 0.0) out += '-';
    const size_t intLength = dot == std::string::npos ? digits.size() : dot;
    // A lone "0" counts as no digit; the zero places write it back.
    const size_t written = (intLength == 1 && digits[0] == '0') ? 0 : intLength;
    if (written < zeros) out.append(zeros - written, '0');
    out.append(digits, 0, written);
    out += literal;
    if (dot != std::string::npos) out.append(digits, dot, std::string::npos);
    return out;
}

// A whole number in plain digits.
std::string Plain(double whole) {
    return Zero_Mask_Text(whole, 1, "", 0);
}

// The front padding of the angle formats: "  " under `wide`, another "  " under 10.
std::string Pad_Text(bool pad, double w, double wide) {
    std::string s;
    if (!pad) return s;
    if (w < wide) s += kPadUnit;
    if (wide > 10 && w < 10) s += kPadUnit;
    return s;
}

// Whole part of a non-negative number of degrees or hours and the rounded minutes of the
// rest, carrying a rounded 60 into the whole part.
struct WholeAndMinutes {
    double Whole;
    double Minutes;
};

WholeAndMinutes Split_Minutes(double d, int places) {
    WholeAndMinutes r{std::floor(d), 0.0};
    r.Minutes = Round_Even((d - r.Whole) * 60.0, places);
    if (Rounds_To_Sixty(r.Minutes)) {
        r.Whole += 1;
        r.Minutes = 0;
    }
    return r;
}

// Whole part, whole minutes and rounded seconds, with the carries of the DMS and RA forms.
// `wrap` is the whole value that comes round to 0 (360 degrees, 24 hours).
struct WholeMinutesSeconds {
    double Whole;
    double Minutes;
    double Seconds;
};

WholeMinutesSeconds Split_Seconds(double d, int places, double wrap) {
    WholeMinutesSeconds r{};
    r.Whole = std::floor(d);
    r.Minutes = std::floor((d - r.Whole) * 60.0);
    r.Seconds = Round_Even((d - r.Whole - r.Minutes / 60.0) * 3600.0, places);
    if (Rounds_To_Sixty(r.Seconds)) {
        r.Minutes += 1;
        r.Seconds = 0;
    }
    if (r.Minutes >= 60) {
        r.Minutes -= 60;
        r.Whole += 1;
    }
    if (r.Whole == wrap) r.Whole = 0;
    return r;
}

// The mask of Format_Minutes by its count of places, or null.
const char* Minutes_Mask(int places) {
    switch (places) {
        case 0: return "00'";
        case 1: return "00'.0";
        case 2: return "00'.00";
        case 3: return "00'.000";
        default: return nullptr;
    }
}

// The text of degrees, minutes and seconds: "w° mm' ss.s\"".
std::string DMS_Text(const WholeMinutesSeconds& v, int places) {
    std::string seconds = Format_Minutes(v.Seconds, places);
    for (char& c : seconds)
        if (c == '\'') c = '"';
    return Plain(v.Whole) + "° " + Format_Number(v.Minutes, "00'") + " " + seconds;
}

// Degrees of an angle brought into 0 .. 360 by whole turns.
double Reduce_Degrees(double d) {
    if (d >= 360.0 || d < 0.0) d -= 360.0 * std::floor(d / 360.0);
    if (d >= 360.0) d = 0.0;  // a tiny negative value lands on 360 exactly
    return d;
}

constexpr std::array<const char*, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 12> kMonthShortNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<const char*, 7> kWeekdayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};
constexpr std::array<const char*, 7> kWeekdayShortNames = {"Sun", "Mon", "Tue", "Wed",
                                                           "Thu", "Fri", "Sat"};

// The Greek letters of the catalogue: its Latin letter, short and full name.
struct GreekLetter {
    char Letter;
    const char* Short;
    const char* Full;
};
constexpr std::array<GreekLetter, 24> kGreek = {{
    {'a', "Alp", "Alpha"}, {'b', "Bet", "Beta"},    {'c', "Chi", "Chi"},     {'d', "Del", "Delta"},
    {'e', "Eps", "Epsilon"}, {'g', "Gam", "Gamma"}, {'i', "Iot", "Iota"},    {'k', "Kap", "Kappa"},
    {'l', "Lam", "Lambda"}, {'m', "Mu", "Mu"},      {'n', "Nu", "Nu"},       {'o', "Omi", "Omicron"},
    {'p', "Pi", "Pi"},     {'r', "Rho", "Rho"},     {'s', "Sig", "Sigma"},   {'t', "Tau", "Tau"},
    {'u', "Ups", "Upsilon"}, {'x', "Xi", "Xi"},     {'z', "Zet", "Zeta"},    {'w', "Ome", "Omega"},
    {'f', "Phi", "Phi"},   {'y', "Psi", "Psi"},     {'q', "The", "Theta"},   {'h', "Eta", "Eta"},
}};

const GreekLetter* Find_Greek(char letter) {
    for (const GreekLetter& g : kGreek)
        if (g.Letter == letter) return &g;
    return nullptr;
}

// Windows-1252 code points of the bytes 0x80 .. 0x9F; 0 where the code page has none.
constexpr std::array<char32_t, 32> kCp1252High = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void Append_Utf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// ---- the number mask -------------------------------------------------------------------

// A mask cut into its parts: the characters before and after the decimal point, with
// escapes resolved into literal marks.
struct MaskChar {
    char C;
    bool Literal;  // stands as itself even if it is a mask character
};

bool Is_Digit_Place(const MaskChar& m) { return !m.Literal && (m.C == '0' || m.C == '#'); }

}  // namespace

double Round_Even(double x, int places) {
    if (!std::isfinite(x)) return x;
    if (places < 0) places = 0;
    if (places > 15) places = 15;
    const double scale = kPowersOfTen[static_cast<size_t>(places)];
    const double y = x * scale;
    if (!std::isfinite(y) || std::fabs(y) >= 4503599627370496.0) return x;  // 2^52: no decimals
    // nearbyint rounds halves to even in the default rounding mode.
    return std::nearbyint(y) / scale;
}

std::string Format_Number(double value, std::string_view mask) {
    // Cut the mask into the integer and fraction sections.
    std::vector<MaskChar> intPart, fracPart;
    bool seenPoint = false;
    bool percent = false;
    for (size_t i = 0; i < mask.size(); ++i) {
        MaskChar m{mask[i], false};
        if (m.C == '\\' && i + 1 < mask.size()) {
            m = {mask[++i], true};
        } else if (m.C == '.' && !seenPoint) {
            seenPoint = true;
            continue;
        } else if (m.C == '%') {
            percent = true;
            m.Literal = true;
        }
        (seenPoint ? fracPart : intPart).push_back(m);
    }

    // Grouping: a "," after the first integer digit place.
    bool grouping = false;
    bool seenDigit = false;
    for (MaskChar& m : intPart) {
        if (Is_Digit_Place(m)) seenDigit = true;
        if (!m.Literal && m.C == ',' && seenDigit) {
            grouping = true;
            m.C = 0;  // dropped from the text
        }
    }

    int places = 0;
    for (const MaskChar& m : fracPart)
        if (Is_Digit_Place(m)) ++places;

    double v = Finite_Or_Zero(value);
    if (percent) v *= 100.0;
    const double a = Round_Even(std::fabs(v), places);
    const bool negative = v < 0 && a != 0.0;

    // Digits of the rounded value.
    std::string digits = Fixed_Digits(a, places);
    std::string intDigits, fracDigits;
    if (const size_t dot = digits.find('.'); dot != std::string::npos) {
        intDigits = digits.substr(0, dot);
        fracDigits = digits.substr(dot + 1);
    } else {
        intDigits = digits;
    }
    if (intDigits == "0") intDigits.clear();

    // The count of integer digits always written: the places from the first "0" on.
    int mandatory = 0;
    bool fromZero = false;
    int leftmostPlace = -1;
    for (size_t i = 0; i < intPart.size(); ++i) {
        if (!Is_Digit_Place(intPart[i])) continue;
        if (leftmostPlace < 0) leftmostPlace = static_cast<int>(i);
        if (intPart[i].C == '0') fromZero = true;
        if (fromZero) ++mandatory;
    }
    while (static_cast<int>(intDigits.size()) < mandatory) intDigits.insert(0, "0");

    // The integer section, right to left.
    std::string intText;
    size_t next = intDigits.size();  // digits left to place are intDigits[0, next)
    int placed = 0;
    auto put_digit = [&](char d) {
        if (grouping && placed > 0 && placed % 3 == 0) intText.insert(0, ",");
        intText.insert(0, 1, d);
        ++placed;
    };
    for (int i = static_cast<int>(intPart.size()) - 1; i >= 0; --i) {
        const MaskChar& m = intPart[static_cast<size_t>(i)];
        if (Is_Digit_Place(m)) {
            if (next > 0) put_digit(intDigits[--next]);
            if (i == leftmostPlace)
                while (next > 0) put_digit(intDigits[--next]);
        } else if (m.C != 0) {
            intText.insert(0, 1, m.C);
        }
    }

    // The fraction section, left to right; "#" leaves out trailing zeros.
    int lastNonZero = -1;
    for (int i = 0; i < static_cast<int>(fracDigits.size()); ++i)
        if (fracDigits[static_cast<size_t>(i)] != '0') lastNonZero = i;
    std::string fracText;
    int k = 0;
    for (const MaskChar& m : fracPart) {
        if (Is_Digit_Place(m)) {
            const char d = k < static_cast<int>(fracDigits.size())
                               ? fracDigits[static_cast<size_t>(k)] : '0';
            if (m.C == '0' || k <= lastNonZero) fracText += d;
            ++k;
        } else {
            fracText += m.C;
        }
    }

    std::string out;
    if (negative) out += '-';
    out += intText;
    if (seenPoint) out += '.';
    out += fracText;
    return out;
}

std::string Format_Date_Mask(const MySystemTime& date, std::string_view mask) {
    // Tokens: runs of one letter. Whether "m" is a month or a minute depends on its
    // neighbours, so the mask is cut first and read after.
    struct Token {
        char Kind;  // lower-case letter, or 0 for a literal
        size_t Count;
        std::string Text;
    };
    std::vector<Token> tokens;
    for (size_t i = 0; i < mask.size();) {
        char c = mask[i];
        if (c == '\\' && i + 1 < mask.size()) {
            tokens.push_back({0, 0, std::string(1, mask[i + 1])});
            i += 2;
            continue;
        }
        const char lower = (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
        if (lower == 'd' || lower == 'm' || lower == 'y' || lower == 'h' || lower == 'n' ||
            lower == 's') {
            size_t j = i;
            while (j < mask.size() &&
                   (mask[j] == lower || mask[j] == static_cast<char>(lower - 'a' + 'A')))
                ++j;
            tokens.push_back({lower, j - i, {}});
            i = j;
        } else {
            tokens.push_back({0, 0, std::string(1, c)});
            ++i;
        }
    }

    std::string out;
    char lastField = 0;
    for (size_t t = 0; t < tokens.size(); ++t) {
        const Token& tok = tokens[t];
        if (tok.Kind == 0) {
            out += tok.Text;
            continue;
        }
        const bool two = tok.Count >= 2;
        switch (tok.Kind) {
            case 'd':
                if (tok.Count >= 4) out += Weekday_Name(date.wDayOfWeek);
                else if (tok.Count == 3) out += Weekday_Short_Name(date.wDayOfWeek);
                else out += Format_Number(date.wDay, two ? "00" : "0");
                break;
            case 'm': {
                bool minute = false;
                if (tok.Count <= 2) {
                    minute = lastField == 'h';
                    for (size_t u = t + 1; u < tokens.size() && !minute; ++u) {
                        if (tokens[u].Kind == 0) continue;
                        minute = tokens[u].Kind == 's';
                        break;
                    }
                }
                if (minute) out += Format_Number(date.wMinute, two ? "00" : "0");
                else if (tok.Count >= 4) out += Month_Name(date.wMonth);
                else if (tok.Count == 3) out += Month_Short_Name(date.wMonth);
                else out += Format_Number(date.wMonth, two ? "00" : "0");
                break;
            }
            case 'n': out += Format_Number(date.wMinute, two ? "00" : "0"); break;
            case 'y':
                if (tok.Count == 2) {
                    const std::string y = Format_Number(std::abs(date.wYear), mask::Year4);
                    out += y.substr(y.size() - 2);
                } else {
                    out += Plain(date.wYear);
                }
                break;
            case 'h': out += Format_Number(date.wHour, two ? "00" : "0"); break;
            case 's': out += Format_Number(date.wSecond, two ? "00" : "0"); break;
            default: break;
        }
        lastField = tok.Kind;
    }
    return out;
}

std::string Format_Day_Fraction(double fraction, std::string_view mask) {
    double f = Finite_Or_Zero(fraction);
    f -= std::floor(f);
    double seconds = Round_Even(f * 86400.0);
    if (seconds >= 86400.0) seconds -= 86400.0;
    const auto s = static_cast<int32_t>(seconds);
    MySystemTime t;
    t.wHour = static_cast<int16_t>(s / 3600);
    t.wMinute = static_cast<int16_t>(s / 60 % 60);
    t.wSecond = static_cast<int16_t>(s % 60);
    return Format_Date_Mask(t, mask);
}

std::string Format_Minutes(double minutes, int places) {
    // The text of Minutes_Mask(places), built directly.
    return Minutes_Mask(places) ? Zero_Mask_Text(minutes, 2, "'", places) : std::string();
}

std::string Format_Angle(double radians, int places, bool pad) {
    const double d = Reduce_Degrees(Finite_Or_Zero(radians) * kDegreesPerRadian);
    WholeAndMinutes v = Split_Minutes(d, places);
    if (v.Whole == 360) v.Whole = 0;
    return Pad_Text(pad, v.Whole, 100) + Plain(v.Whole) + "° " + Format_Minutes(v.Minutes, places);
}

std::string Format_Angle_DMS(double radians, int places, bool pad) {
    double d = Finite_Or_Zero(radians) * kDegreesPerRadian;
    if (d < 0) d += 360.0;
    else if (d >= 360.0) d = Reduce_Degrees(d);
    const WholeMinutesSeconds v = Split_Seconds(d, places, 360);
    return Pad_Text(pad, v.Whole, 100) + DMS_Text(v, places);
}

std::string Format_RA(double radians, int places, bool pad) {
    double h = Finite_Or_Zero(radians) * kDegreesPerRadian / 15.0;
    if (h < 0) h += 24.0;
    const WholeMinutesSeconds v = Split_Seconds(h, places, 24);
    const char* secondsMask = "00.0000s";
    switch (places) {
        case 0: secondsMask = "00s"; break;
        case 1: secondsMask = "00.0s"; break;
        case 2: secondsMask = "00.00s"; break;
        case 3: secondsMask = "00.000s"; break;
        default: break;
    }
    return Pad_Text(pad, v.Whole, 10) + Format_Number(v.Whole, "#0h ") +
           Format_Number(v.Minutes, "00m ") + Format_Number(v.Seconds, secondsMask);
}

std::string Format_RA_HM(double radians, bool pad) {
    double h = Finite_Or_Zero(radians) * kDegreesPerRadian / 15.0;
    if (h < 0) h += 24.0;
    double hw = std::floor(h);
    double m = Round_Even((h - hw) * 60.0);
    if (m >= 60) {
        m -= 60;
        hw += 1;
    }
    if (hw == 24) hw = 0;
    return Pad_Text(pad, hw, 10) + Format_Number(hw, "#0h ") + Format_Number(m, "00m ");
}

std::string Format_Lat(double radians, int places, bool pad) {
    double x = Finite_Or_Zero(radians);
    if (x > kHalfPi) x -= kPi;
    if (x < -kHalfPi) x += kPi;
    const WholeAndMinutes v = Split_Minutes(std::fabs(x) * kDegreesPerRadian, places);
    return Pad_Text(pad, v.Whole, 10) + Plain(v.Whole) + "° " +
           Format_Minutes(v.Minutes, places) + (x >= 0 ? " N" : " S");
}

std::string Format_Lat_Minutes(double radians, int places) {
    const double d = std::fabs(Finite_Or_Zero(radians)) * kDegreesPerRadian;
    double m = Round_Even((d - std::floor(d)) * 60.0, places);
    if (Rounds_To_Sixty(m)) m = 0;
    return Format_Minutes(m, places);
}

std::string Format_Lat_DMS(double radians, int places, bool pad) {
    const double x = Finite_Or_Zero(radians);
    const double d = Reduce_Degrees(std::fabs(x) * kDegreesPerRadian);
    const WholeMinutesSeconds v = Split_Seconds(d, places, 360);
    return Pad_Text(pad, v.Whole, 100) + DMS_Text(v, places) + (x > 0 ? " N" : " S");
}

std::string Format_Long(double radians, int places, bool pad) {
    double d = Finite_Or_Zero(radians) * kDegreesPerRadian;
    const char* suffix = "  E";
    if (d < 0) {
        suffix = " W";
        d = -d;
    }
    const WholeAndMinutes v = Split_Minutes(d, places);
    return Pad_Text(pad, v.Whole, 100) + Plain(v.Whole) + "° " +
           Format_Minutes(v.Minutes, places) + suffix;
}

std::string Format_Course(double degrees) {
    double r = Round_Even(Finite_Or_Zero(degrees), 1);
    if (r == 360.0) r = 0.0;
    return Format_Number(r, mask::Course);
}

std::string Format_Magnetic_Course(double degrees) {
    double r = Round_Even(Finite_Or_Zero(degrees), 1);
    if (r < 0) r += 360.0;
    else if (r >= 360.0) r -= 360.0;
    return Format_Number(r, mask::CourseMagnetic);
}

std::string Format_TZ_Text(int32_t bias) {
    if (bias == 0) return "GMT";
    float h = static_cast<float>(std::fabs(static_cast<double>(bias)) / 60.0);
    const double r3 = Round_Even(h, 3);
    const double r2 = Round_Even(h, 2);
    if (r3 != r2) h = static_cast<float>(r2);
    // The hours as a 32-bit float prints them: at most 7 significant digits, no trailing
    // zeros, never an exponent (the smallest bias, 1 minute, is 0.02 hours after rounding).
    char buf[64];
    if (h >= 1e6f) std::snprintf(buf, sizeof buf, "%.0f", static_cast<double>(h));
    else std::snprintf(buf, sizeof buf, "%.7g", static_cast<double>(h));
    return std::string(bias > 0 ? "Z+" : "Z-") + buf;
}

std::string Format_HM(double hours) {
    const double x = std::fabs(Finite_Or_Zero(hours));
    double w = std::floor(x);
    double m = Round_Even((x - w) * 60.0);
    if (m == 60) {
        w += 1;
        m = 0;
    }
    return Format_Number(w, mask::TwoDigits) + ":" + Format_Number(m, mask::TwoDigits);
}

std::string Format_Time_Of_Day(double jd, bool seconds) {
    const double v = Finite_Or_Zero(jd);
    double f = v - std::floor(v) + 0.5;
    if (f >= 1) f -= 1;
    if (seconds) return Format_Day_Fraction(f, mask::TimeHMS);
    f = Round_Even(f * 24 * 60) / 60 / 24;
    return Format_Day_Fraction(f, mask::TimeHM);
}

std::string Format_Day_Month(double jd, bool julian) {
    MySystemTime date;
    {
        const CalendarScope scope(julian);
        date = JD_To_Date(Finite_Or_Zero(jd));
    }
    return Plain(date.wDay) + " " + Month_Short_Name(date.wMonth);
}

std::string Month_Name(int month) {
    return month >= 1 && month <= 12 ? kMonthNames[static_cast<size_t>(month - 1)] : "";
}

std::string Month_Short_Name(int month) {
    return month >= 1 && month <= 12 ? kMonthShortNames[static_cast<size_t>(month - 1)] : "";
}

std::string Weekday_Name(int weekday) {
    return weekday >= 1 && weekday <= 7 ? kWeekdayNames[static_cast<size_t>(weekday - 1)] : "";
}

std::string Weekday_Short_Name(int weekday) {
    return weekday >= 1 && weekday <= 7 ? kWeekdayShortNames[static_cast<size_t>(weekday - 1)]
                                        : "";
}

std::string Greek_Short(char letter) {
    const GreekLetter* g = Find_Greek(letter);
    return g ? g->Short : "";
}

std::string Greek_Full(char letter) {
    const GreekLetter* g = Find_Greek(letter);
    return g ? g->Full : "";
}

std::string Ansi_To_Utf8(std::string_view ansi) {
    std::string out;
    out.reserve(ansi.size());
    for (const char ch : ansi) {
        const auto b = static_cast<unsigned char>(ch);
        char32_t c = b;
        if (b >= 0x80 && b < 0xA0 && kCp1252High[b - 0x80] != 0) c = kCp1252High[b - 0x80];
        Append_Utf8(out, c);
    }
    return out;
}

std::string Utf8_To_Ansi(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    size_t i = 0;
    while (i < utf8.size()) {
        const auto b = static_cast<unsigned char>(utf8[i]);
        char32_t c = 0;
        size_t len = 0;
        if (b < 0x80) {
            c = b;
            len = 1;
        } else if ((b & 0xE0) == 0xC0) {
            c = b & 0x1F;
            len = 2;
        } else if ((b & 0xF0) == 0xE0) {
            c = b & 0x0F;
            len = 3;
        } else if ((b & 0xF8) == 0xF0) {
            c = b & 0x07;
            len = 4;
        }
        bool ok = len > 0 && i + len <= utf8.size();
        for (size_t k = 1; ok && k < len; ++k) {
            const auto cb = static_cast<unsigned char>(utf8[i + k]);
            if ((cb & 0xC0) != 0x80) ok = false;
            else c = (c << 6) | (cb & 0x3F);
        }
        if (!ok) {
            out += '?';
            ++i;
            continue;
        }
        i += len;
        char byte = '?';
        if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
            byte = static_cast<char>(c);
        } else {
            for (size_t k = 0; k < kCp1252High.size(); ++k)
                if (kCp1252High[k] == c) byte = static_cast<char>(0x80 + k);
            // The control characters that Windows-1252 leaves undefined come back as they
            // went in.
            if (c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D)
                byte = static_cast<char>(c);
        }
        out += byte;
    }
    return out;
}

}  // namespace kelmoran
