#include "voyage/Gpx_Route.h"

#include <QDateTime>
#include <QFile>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <cmath>
#include <optional>
#include <vector>

#include "ephemeris/Units.h"
#include "shell/M_Kelmoran.h"
#include "voyage/Plan_Undo.h"

namespace kelmoran {

namespace {

// Days from 1970 January 1, 0h UT, to the epoch of MyJD.
constexpr double kUnixEpochDays = 10957.5;
constexpr int kSpareRows = 5;  // blank rows after the route, to go on typing
constexpr std::size_t kIdLength = 6;

struct Gpx_Point {
    double Lat = 0, Lon = 0;  // degrees
    std::string Name, Desc;
    std::optional<double> Time;  // MyJD
};

std::optional<double> Parse_Time(const QString& text) {
    const QDateTime t = QDateTime::fromString(text.trimmed(), Qt::ISODate);
    if (!t.isValid()) return {};
    return t.toMSecsSinceEpoch() / 86400000.0 - kUnixEpochDays;
}

// The points of one <rtept>, <trkpt> or <wpt> element, the reader standing on its start.
bool Read_Point(QXmlStreamReader& x, Gpx_Point& p) {
    bool okLat = false, okLon = false;
    p.Lat = x.attributes().value("lat").toDouble(&okLat);
    p.Lon = x.attributes().value("lon").toDouble(&okLon);
    if (!okLat || !okLon || std::fabs(p.Lat) > 90 || std::fabs(p.Lon) > 180) {
        x.raiseError("bad position");
        return false;
    }
    while (x.readNextStartElement()) {
        if (x.name() == u"name") p.Name = x.readElementText().trimmed().toStdString();
        else if (x.name() == u"desc") p.Desc = x.readElementText().trimmed().toStdString();
        else if (x.name() == u"time") p.Time = Parse_Time(x.readElementText());
        else x.skipCurrentElement();
    }
    return !x.hasError();
}

// The route, the track and the way points of the file, each in its order.
struct Gpx_Content {
    std::vector<Gpx_Point> Route, Track, Waypoints;
};

void Read_List(QXmlStreamReader& x, std::vector<Gpx_Point>& into, bool keep) {
    while (x.readNextStartElement()) {
        if (x.name() == u"rtept" || x.name() == u"trkpt") {
            Gpx_Point p;
            if (Read_Point(x, p) && keep) into.push_back(p);
        } else if (x.name() == u"trkseg") {
            Read_List(x, into, keep);
        } else {
            x.skipCurrentElement();
        }
    }
}

bool Read_Gpx(QIODevice& file, Gpx_Content& c) {
    QXmlStreamReader x(&file);
    if (!x.readNextStartElement() || x.name() != u"gpx") return false;
    while (x.readNextStartElement()) {
        if (x.name() == u"rte") {
            Read_List(x, c.Route, c.Route.empty());  // the first route
        } else if (x.name() == u"trk") {
            Read_List(x, c.Track, c.Track.empty());
        } else if (x.name() == u"wpt") {
            Gpx_Point p;
            if (Read_Point(x, p)) c.Waypoints.push_back(p);
        } else {
            x.skipCurrentElement();
        }
    }
    return !x.hasError();
}

std::string Iso_Time(double jd) {
    const auto ms = static_cast<qint64>(std::llround((jd + kUnixEpochDays) * 86400000.0));
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC)
        .toString(Qt::ISODate)
        .toStdString();
}

}  // namespace

bool Import_Gpx(const std::string& path, VoyagePlan& plan, std::string& message) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        message = gpx_text::NotRead;
        return false;
    }
    Gpx_Content c;
    if (!Read_Gpx(file, c)) {
        message = gpx_text::NotGpx;
        return false;
    }
    const std::vector<Gpx_Point>& pts =
        !c.Route.empty() ? c.Route : (!c.Track.empty() ? c.Track : c.Waypoints);
    if (pts.empty() || pts.size() + kSpareRows > 32767) {
        message = gpx_text::NoRoute;
        return false;
    }
    Plan_Undo.Push_Plan_State(plan, true);
    const float speed = plan.Header.Default_Speed;
    plan.New_Plan(pts.front().Time.value_or(plan.Header.Plan_Start), speed);
    plan.Way_Points.assign(pts.size() + kSpareRows, Way_Point{});
    plan.Texts.assign(plan.Way_Points.size(), Way_Point_Text{});
    for (std::size_t i = 0; i < pts.size(); ++i) {
        Way_Point& w = plan.Way_Points[i];
        w.Lat = pts[i].Lat / kDegreesPerRadian;
        w.Long = pts[i].Lon / kDegreesPerRadian;
        const std::string& name = pts[i].Name;
        w.ID = name.substr(0, kIdLength);
        w.Description = !pts[i].Desc.empty() ? pts[i].Desc : (name.size() > kIdLength ? name : "");
    }
    plan.Test_Wpts_Valid();
    plan.Recalc_Plan();
    // Times on the points give the speed of each leg between them.
    bool timed = false;
    for (std::size_t i = 0; i + 1 < pts.size(); ++i) {
        if (!pts[i].Time || !pts[i + 1].Time) continue;
        const double hours = (*pts[i + 1].Time - *pts[i].Time) * 24.0;
        Way_Point& w = plan.Way_Points[i];
        if (hours > 0 && w.Distance > 0) {
            w.Speed = static_cast<float>(w.Distance / hours);
            timed = true;
        }
    }
    if (timed) plan.Recalc_Plan();
    Shell.PlanChanged = kTrue;
    message.clear();
    return true;
}

bool Export_Gpx(const std::string& path, const VoyagePlan& plan, std::string& message) {
    if (!plan.Any_Way_Point_In_Use()) {
        message = gpx_text::NothingToExport;
        return false;
    }
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly)) {
        message = gpx_text::NotWritten;
        return false;
    }
    QXmlStreamWriter x(&file);
    x.setAutoFormatting(true);
    x.writeStartDocument();
    x.writeStartElement("gpx");
    x.writeDefaultNamespace("http://www.topografix.com/GPX/1/1");
    x.writeAttribute("version", "1.1");
    x.writeAttribute("creator", "Kelmoran");
    x.writeStartElement("rte");
    x.writeTextElement("name", QString::fromStdString(plan.Header.Title));
    for (const Way_Point& w : plan.Way_Points) {
        if (!w.Row_Valid) continue;
        x.writeStartElement("rtept");
        x.writeAttribute("lat", QString::number(w.Lat * kDegreesPerRadian, 'f', 9));
        x.writeAttribute("lon", QString::number(w.Long * kDegreesPerRadian, 'f', 9));
        x.writeTextElement("time", QString::fromStdString(Iso_Time(w.Time)));
        if (!w.ID.empty()) x.writeTextElement("name", QString::fromStdString(w.ID));
        if (!w.Description.empty()) x.writeTextElement("desc", QString::fromStdString(w.Description));
        x.writeEndElement();
    }
    x.writeEndElement();
    x.writeEndElement();
    x.writeEndDocument();
    if (x.hasError() || !file.commit()) {
        message = gpx_text::NotWritten;
        return false;
    }
    message.clear();
    return true;
}

}  // namespace kelmoran
