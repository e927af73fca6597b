#include "shell/cLatLong.h"

#include <cmath>

#include "ephemeris/Units.h"
#include "settings/M_Formatting.h"
#include "shell/cDates.h"

namespace kelmoran {

namespace {

constexpr int32_t kPairGap = 12;
constexpr int32_t kInset = 2;

// An angle brought into 0 .. 2π.
double Wrap_2Pi(double a) {
    if (!std::isfinite(a)) return 0.0;
    a = std::fmod(a, kTwoPi);
    return a < 0 ? a + kTwoPi : a;
}

double Finite(double a) {
    return std::isfinite(a) ? a : 0.0;
}

}  // namespace

cLatLong::~cLatLong() {
    if (Edit.Editing && Edit.Control == this) {
        Edit.Buffer.clear();
        End_Edit(true);
    }
}

void cLatLong::Set_Latitude(double radians) {
    MyLat = Finite(radians);
    Refresh_Strings();
}

void cLatLong::Set_Longitude(double radians) {
    MyLongt = Finite(radians);
    Refresh_Strings();
}

void cLatLong::Set_SHA(double radians) {
    MyLongt = Wrap_2Pi(radians);
    Refresh_Strings();
}

void cLatLong::Set_Altitude(double radians) {
    MyLat = Finite(radians);
    Refresh_Strings();
}

void cLatLong::Set_Azimuth(double radians) {
    MyLongt = Wrap_2Pi(radians);
    Refresh_Strings();
}

void cLatLong::ResetDecPlaces(int32_t places) {
    MyDecPlaces = places < 0 ? 0 : (places > 3 ? 3 : places);
    Refresh_Strings();
}

void cLatLong::Refresh_Strings() {
    const int places = MyDecPlaces;
    LatString = Format_Lat(MyLat, places, false);
    LongtString = Layout == LatLongLayout::ShaDec ? Format_Angle(MyLongt, places, false)
                                                  : Format_Long(MyLongt, places, false);
    AltString = (MyLat < 0 ? "-" : "") + Format_Angle(std::fabs(MyLat), places, false);
    AzString = Format_Angle(MyLongt, places, false);
}

std::string cLatLong::First_Field() const {
    switch (Layout) {
        case LatLongLayout::ShaDec:
            return "Dec";
        case LatLongLayout::AltAz:
            return "Alt";
        default:
            return "Lat";
    }
}

std::string cLatLong::Second_Field() const {
    switch (Layout) {
        case LatLongLayout::ShaDec:
            return "SHA";
        case LatLongLayout::AltAz:
            return "Az";
        default:
            return "Long";
    }
}

const std::string& cLatLong::First_String() const {
    return Layout == LatLongLayout::AltAz ? AltString : LatString;
}

const std::string& cLatLong::Second_String() const {
    return Layout == LatLongLayout::AltAz ? AzString : LongtString;
}

void cLatLong::Place(int32_t x, int32_t y, bool stacked) {
    EditCanvas* form = ClassOwner ? ClassOwner->Edit_Form() : nullptr;
    auto width = [&](const std::string& s) {
        return form ? form->Text_Width(FontType, s) : 9 * static_cast<int32_t>(s.size());
    };
    // Room for three places of degrees, the sample of the minutes and a hemisphere.
    const int32_t w = width(std::string("000\u00B0 ") + kSample + " W") + 4 * kInset;
    const int32_t h = Date_Metrics.SmallHeight + 4 * kInset;
    if (stacked) {
        LabelsOffset = width("Alt   ");
        MyLatFrame = {x + LabelsOffset, y, x + LabelsOffset + w, y + h};
        MyLongtFrame = MyLatFrame.Offset(0, h + kInset * 2);
    } else {
        LabelsOffset = Date_Metrics.SmallHeight + kInset;
        MyLatFrame = {x, y + LabelsOffset, x + w, y + LabelsOffset + h};
        MyLongtFrame = MyLatFrame.Offset(w + kPairGap, 0);
    }
    MyLatRect = {MyLatFrame.Left + kInset, MyLatFrame.Top + kInset, MyLatFrame.Right - kInset,
                 MyLatFrame.Bottom - kInset};
    MyLongtRect = {MyLongtFrame.Left + kInset, MyLongtFrame.Top + kInset,
                   MyLongtFrame.Right - kInset, MyLongtFrame.Bottom - kInset};
}

void cLatLong::MyLatLongPosn(int32_t x, int32_t y) {
    Layout = LatLongLayout::LatLong;
    Refresh_Strings();
    Place(x, y, false);
}

void cLatLong::MyShaDecPosn(int32_t x, int32_t y) {
    Layout = LatLongLayout::ShaDec;
    Refresh_Strings();
    Place(x, y, false);
}

void cLatLong::MyAltAzPosn(int32_t x, int32_t y) {
    Layout = LatLongLayout::AltAz;
    Refresh_Strings();
    Place(x, y, true);
}

void cLatLong::Draw_Layout() {
    if (ClassOwnerType == "Sights") {
        DrawMe_Sights();
    } else if (Layout == LatLongLayout::AltAz) {
        DrawMe_AltAz();
    } else {
        DrawMe();
    }
}

void cLatLong::Edit_Common_Call(const std::string& field, const Rect& cell, double value,
                                const std::string& text) {
    End_Edit();
    EditRequest r;
    r.Form = ClassOwner ? ClassOwner->Edit_Form() : nullptr;
    r.Control = this;
    if (ClassOwnerType == "OptionBodies" || ClassOwnerType == "Options" ||
        ClassOwnerType == "Sights") {
        r.Class = ClassOwnerType;
    } else {
        r.Class = "CellEdit";
    }
    r.Field = field;
    r.Cell = cell;
    r.Font = FontType;
    r.Alignment = 2;
    r.Value = value;
    r.Text = text;
    Begin_Edit(r);
}

void cLatLong::Edit_Lat() {
    Edit_Common_Call(First_Field(), MyLatRect, MyLat, First_String());
}

void cLatLong::Edit_Long() {
    // The azimuth is edited in degrees as a course.
    const double value = Layout == LatLongLayout::AltAz ? MyLongt * kDegreesPerRadian : MyLongt;
    Edit_Common_Call(Second_Field(), MyLongtRect, value, Second_String());
}

Rect cLatLong::Hemisphere_Rect(bool first) const {
    const std::string field = first ? First_Field() : Second_Field();
    if (field != "Lat" && field != "Dec" && field != "Long") return {};
    const Rect& r = first ? MyLatRect : MyLongtRect;
    EditCanvas* form = ClassOwner ? ClassOwner->Edit_Form() : nullptr;
    const int32_t w = form ? form->Text_Width(FontType, " W") : 18;
    return {r.Right - kInset - w, r.Top, r.Right, r.Bottom};
}

bool cLatLong::MouseDown(int32_t x, int32_t y) {
    if (Hemisphere_Rect(true).Contains(x, y)) {
        End_Edit();
        Set_Latitude(-MyLat);
        Changed();
        return true;
    }
    if (Hemisphere_Rect(false).Contains(x, y)) {
        End_Edit();
        Set_Longitude(-MyLongt);
        Changed();
        return true;
    }
    if (MyLatFrame.Contains(x, y)) {
        Edit_Lat();
        return true;
    }
    if (MyLongtFrame.Contains(x, y)) {
        Edit_Long();
        return true;
    }
    return false;
}

void cLatLong::Edit_Commit(const EditSession& s, double value, const std::string&) {
    if (s.Field == "Lat" || s.Field == "Dec") {
        Set_Latitude(value);
    } else if (s.Field == "Alt") {
        Set_Altitude(value);
    } else if (s.Field == "Long") {
        Set_Longitude(value);
    } else if (s.Field == "SHA") {
        Set_SHA(value);
    } else if (s.Field == "Az") {
        Set_Azimuth(value / kDegreesPerRadian);
    } else {
        return;
    }
    Changed();
}

void cLatLong::Changed() {
    if (ClassOwner) ClassOwner->LatLong_Change(*this);
    Draw_Layout();
}

}  // namespace kelmoran
