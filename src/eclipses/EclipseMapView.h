// Painting of the eclipse window's world map and of the plan of a lunar eclipse, from the
// outlines the core works out (M_Eclipse_Map, Eclipse_Window_Model). The map is drawn from
// the coastline table at the scale of the area it fills, so it is sharp at any size.
#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRect>
#include <string>
#include <vector>

#include "eclipses/Eclipse_Window_Model.h"
#include "eclipses/M_Eclipse_Map.h"

namespace kelmoran {

// What one picture of the map holds.
struct EclipseMapLayers {
    bool Solar = true;
    SolarMap Minute;        // solar: the night side and the shadows of the chosen minute
    SolarMap Path;          // solar: the complete path, when ShowPath
    bool ShowPath = false;
    LunarMap Lunar;         // lunar: where the Moon is down
    MapPoint Observer;
    bool HasObserver = false;
};

// The land as a path at scales `sx`, `sy` (screen pixels per natural pixel), kept by the
// window between paints of the same size.
QPainterPath Coastline_Path(float sx, float sy);

// Paints the map into `area` (its top left the map's origin, its size the map's at scales
// `sx`, `sy`), the land from `coast` (Coastline_Path at the same scales).
void Paint_Eclipse_Map(QPainter& p, const QRect& area, float sx, float sy,
                       const QPainterPath& coast, const EclipseMapLayers& layers);

// Paints the plan of a lunar eclipse into `area`: the penumbra and umbra round the
// shadow's centre, the Moon at "Pen In", "Max" and "Pen Out" with their times, the axes in
// minutes of arc.
void Paint_Lunar_Plan(QPainter& p, const QRect& area, const LunarPlan& plan);
// Paints the plan of a solar eclipse into `area`: the Earth's disc as the Sun sees it, its
// pole, and the Moon's shadow at "Pen In", "Max" and "Pen Out" with their times.
void Paint_Solar_Plan(QPainter& p, const QRect& area, const SolarPlan& plan);

// The legend of the map or plan: each entry a legend word (its colour and pattern) and the
// phrases shown beside it.
struct LegendEntry {
    std::string Key;
    std::vector<std::string> Phrases;
};
std::vector<LegendEntry> Eclipse_Legend(bool solar, bool path, bool plan);
// The swatch of legend word `key` in `box`.
void Paint_Legend_Swatch(QPainter& p, const QRect& box, const std::string& key);

// The colour the map paints the band of totality with (the tests read it back).
QColor Total_Band_Colour();

}  // namespace kelmoran
