#include "import/gpx.h"

#include <QXmlStreamReader>

#include "coordinates/net_system.h"

namespace {

constexpr qsizetype headLength = 4096;  // in which the first element stands

class GpxReader {
 public:
  explicit GpxReader(const QString& text) : xml(text) { file.system.datum = Datum_Name(Datum::Wgs84); }

  GpsFile Read() {
    bool gpx = false;
    if (xml.readNextStartElement()) {
      gpx = xml.name() == u"gpx";
      if (gpx) Read_Children([this](QStringView name) { return Take_Main(name); });
    }
    if (!gpx && !xml.hasError())
      file.remark = QStringLiteral("Das ist keine GPX-Datei.");
    else if (xml.hasError())
      file.remark = QStringLiteral("Die Datei ist ab Zeile %1 nicht mehr lesbar; gelesen wurde, was davor steht.")
                        .arg(xml.lineNumber());
    return std::move(file);
  }

 private:
  // Hands every child to the work; what that does not take is passed over whole.
  template <typename Work>
  void Read_Children(Work&& work) {
    while (xml.readNextStartElement())
      if (!work(xml.name())) xml.skipCurrentElement();
  }

  bool Take_Main(QStringView name) {
    if (name == u"wpt") return Take_Waypoint(), true;
    if (name == u"trk") return Take_Track(), true;
    if (name == u"rte") return Take_Route(), true;
    return false;
  }

  QString Text() { return xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified(); }

  // False, and a fault, if the attributes are no place on the earth.
  bool Read_Place(GivenPlace& place) {
    const int line = static_cast<int>(xml.lineNumber());
    bool goodLongitude = false, goodLatitude = false;
    const QXmlStreamAttributes attributes = xml.attributes();
    place.x = attributes.value(QLatin1String("lon")).trimmed().toDouble(&goodLongitude);
    place.y = attributes.value(QLatin1String("lat")).trimmed().toDouble(&goodLatitude);
    const QString flaw = goodLongitude && goodLatitude ? Degree_Flaw(place.x, place.y)
                                                       : QStringLiteral("Länge oder Breite ist nicht lesbar");
    if (flaw.isEmpty()) return true;
    file.faults.push_back({line, flaw});
    return false;
  }

  void Take_Waypoint() {
    GpsWaypoint waypoint;
    waypoint.line = static_cast<int>(xml.lineNumber());
    const bool good = Read_Place(waypoint.place);
    QString comment;
    Read_Children([&](QStringView name) {
      if (name == u"name")
        waypoint.name = Text();
      else if (name == u"desc")
        waypoint.comment = Text();
      else if (name == u"cmt")
        comment = Text();
      else
        return false;
      return true;
    });
    if (waypoint.comment.isEmpty()) waypoint.comment = comment;
    // One at which the file breaks off may have lost its name.
    if (good && !xml.hasError()) file.waypoints.push_back(std::move(waypoint));
  }

  void Take_Point(const QString& track, bool& breaks) {
    GpsPoint point;
    point.line = static_cast<int>(xml.lineNumber());
    if (Read_Place(point.place)) Add_Track_Point(file, track, point, breaks);
    xml.skipCurrentElement();
  }

  void Take_Track() {
    const size_t first = file.tracks.size();
    QString track;
    Read_Children([&](QStringView name) {
      if (name == u"name") return track = Text(), true;
      if (name != u"trkseg") return false;
      bool breaks = true;
      Read_Children([&](QStringView inside) {
        if (inside != u"trkpt") return false;
        Take_Point({}, breaks);
        return true;
      });
      return true;
    });
    Name_Pieces(first, track);
  }

  void Take_Route() {
    const size_t first = file.tracks.size();
    QString route;
    bool breaks = true;
    Read_Children([&](QStringView name) {
      if (name == u"name") return route = Text(), true;
      if (name != u"rtept") return false;
      Take_Point({}, breaks);
      return true;
    });
    Name_Pieces(first, route);
  }

  // The name may stand behind the points.
  void Name_Pieces(size_t first, const QString& name) {
    for (size_t i = first; i < file.tracks.size(); ++i) file.tracks[i].name = name;
  }

  QXmlStreamReader xml;
  GpsFile file;
};

}  // namespace

GpsFile Read_Gpx(const QString& text) { return GpxReader(text).Read(); }

bool Is_Gpx(QStringView text) {
  const QStringView head = text.left(headLength);
  for (qsizetype at = head.indexOf(u"gpx"); at >= 0; at = head.indexOf(u"gpx", at + 1)) {
    if (at == 0) continue;
    const QChar before = head[at - 1], after = at + 3 < head.size() ? head[at + 3] : QChar(u' ');
    const bool opens =
        before == u'<' || (before == u':' && head.left(at).lastIndexOf(u'<') > head.left(at).lastIndexOf(u'>'));
    if (opens && (after.isSpace() || after == u'>')) return true;
  }
  return false;
}
