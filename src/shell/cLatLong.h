// A pair of angles painted and edited as one control: latitude and longitude, SHA and
// declination, or altitude and azimuth. This is its model: the values, their strings by
// the chosen decimal places, the rectangles of its three layouts and the hit tests; the
// drawing layer paints it (cLatLongView).
#pragma once

#include <cstdint>
#include <string>

#include "shell/Geometry.h"
#include "shell/M_Edit.h"

namespace kelmoran {

class cLatLong;

// The form that holds the control: it draws the edits and hears of each change.
class cLatLongOwner {
  public:
    virtual ~cLatLongOwner() = default;
    virtual EditCanvas* Edit_Form() = 0;
    // A value of the pair changed by an edit or a click on the hemisphere.
    virtual void LatLong_Change(cLatLong& sender) = 0;
};

enum class LatLongLayout { LatLong, ShaDec, AltAz };

class cLatLong : public cEditTarget {
  public:
    // The start sample of the widths, after the degrees.
    static constexpr const char* kSample = "- 12'.50";

    cLatLong() { Refresh_Strings(); }
    // An edit still open on the control is closed without a commit.
    ~cLatLong() override;

    // Values in radians; each setter refreshes the string of its value.
    double Latitude() const { return MyLat; }
    void Set_Latitude(double radians);
    double Longitude() const { return MyLongt; }
    void Set_Longitude(double radians);
    double SHA() const { return MyLongt; }
    void Set_SHA(double radians);
    double Declination() const { return MyLat; }
    void Set_Declination(double radians) { Set_Latitude(radians); }
    double Altitude() const { return MyLat; }
    void Set_Altitude(double radians);
    double Azimuth() const { return MyLongt; }
    void Set_Azimuth(double radians);

    double MyLat = 0.0;    // latitude, declination or altitude
    double MyLongt = 0.0;  // longitude, SHA or azimuth
    std::string LatString, LongtString, AltString, AzString;
    Rect MyLatRect, MyLongtRect, MyLatFrame, MyLongtFrame;
    int32_t LabelsOffset = 0;  // room of the labels before (or above) the frames
    cLatLongOwner* ClassOwner = nullptr;
    std::string ClassOwnerType;  // "OptionBodies", "Options", "Sights" or a grid's
    int32_t MyDecPlaces = 2;     // 0 .. 3
    FontKind FontType = FontKind::Bold;
    LatLongLayout Layout = LatLongLayout::LatLong;

    // Places the pair with its top left at (x, y) in one of the three layouts. The widths
    // come from the owner's measure of the sample.
    void MyLatLongPosn(int32_t x, int32_t y);
    void MyShaDecPosn(int32_t x, int32_t y);
    void MyAltAzPosn(int32_t x, int32_t y);

    void ResetDecPlaces(int32_t places);

    // Painting, by the drawing layer.
    virtual void DrawMe() {}
    virtual void DrawMe_AltAz() {}
    virtual void DrawMe_Sights() {}
    // Paints by the layout in use.
    void Draw_Layout();

    // Open an edit of the first or the second value.
    void Edit_Lat();
    void Edit_Long();
    void Edit_Common_Call(const std::string& field, const Rect& cell, double value,
                          const std::string& text);

    // A click: on a hemisphere letter it flips the sign of that value; elsewhere in a
    // value's rectangle it opens its edit. Returns true if the click was taken.
    bool MouseDown(int32_t x, int32_t y);
    // The rectangle of the hemisphere letter of a value's rectangle, or empty.
    Rect Hemisphere_Rect(bool first) const;

    // The names of the two edit fields of the layout.
    std::string First_Field() const;
    std::string Second_Field() const;
    const std::string& First_String() const;
    const std::string& Second_String() const;

    void Edit_Commit(const EditSession& s, double value, const std::string& text) override;

  private:
    void Refresh_Strings();
    void Place(int32_t x, int32_t y, bool stacked);
    void Changed();
};

}  // namespace kelmoran
