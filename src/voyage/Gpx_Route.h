// Routes to and from chart plotters: GPX 1.1 files. A route (<rte> with its <rtept lat lon>)
// is read into the plan, or else a track's points or the file's way points; each point's
// <name> becomes the way point's ID (its first six characters) and its <desc>, or a longer
// name, the description; times (<time>) set the departure and the speeds of the legs. The
// plan's way points are written out as one route.
#pragma once

#include <string>

#include "voyage/Voyage_Plan.h"

namespace kelmoran {

namespace gpx_text {
inline constexpr const char* ImportItem = "Import Route (GPX)...";
inline constexpr const char* ExportItem = "Export Route (GPX)...";
inline constexpr const char* Filter = "GPX Files (*.gpx)";
inline constexpr const char* ImportTitle = "Import Route (GPX)";
inline constexpr const char* ExportTitle = "Export Route (GPX)";
inline constexpr const char* NotGpx = "The file is not a GPX file, or it is damaged.";
inline constexpr const char* NoRoute = "The file holds no route, track or way points.";
inline constexpr const char* NotRead = "The file could not be read.";
inline constexpr const char* NotWritten = "The file could not be written.";
inline constexpr const char* NothingToExport = "The plan holds no way points to export.";
}  // namespace gpx_text

// Reads the route of GPX file `path` into `plan` (an undo step first; the plan becomes
// "Untitled" and changed). On failure `plan` is untouched and `message` holds the words.
bool Import_Gpx(const std::string& path, VoyagePlan& plan, std::string& message);

// Writes the plan's way points to `path` as a GPX 1.1 route.
bool Export_Gpx(const std::string& path, const VoyagePlan& plan, std::string& message);

}  // namespace kelmoran
