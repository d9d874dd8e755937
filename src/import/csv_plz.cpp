#include <QFileInfo>
#include <cstdlib>

#include "coordinates/conversions.h"
#include "import/csv_import.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/surface.h"
#include "platform/surface_image.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/map_state.h"

// Outlines of postal code districts. The file is geographic in the datum WGS-84; the map's datum is not compared.

namespace {

constexpr int nearBy = 3;  // pixels: closer points are left out

class PlzRun {
 public:
  QStringList Run(const QStringList& lines) {
    for (const QString& line : lines) {
      if (line.trimmed().isEmpty()) continue;
      try {
        Line(line);
      } catch (const Error& error) {
        if (!Csv_Go_On_After(error)) return {};
      }
      if (cancelled) return {};
    }
    written << QStringLiteral("END");
    return written;
  }
  const std::vector<QPoint>& Points() const { return drawn; }

 private:
  void Line(const QString& line) {
    for (const char* head : {"Plz:", "Ort:", "nBz:", "Bzk:"}) {
      if (!line.contains(QLatin1String(head))) continue;
      written << line;
      return Begin_Outline();
    }
    if (line.contains(QLatin1String("Ztr:"))) {
      if (Convert(QString(line).remove(QStringLiteral("Ztr:"))))
        Put(QStringLiteral("%1 %2Ztr: ").arg(at.x()).arg(at.y()));
      return Begin_Outline();
    }
    if (line.contains(u'T')) Boundary_Point(line);
  }

  void Begin_Outline() {
    hasLast = false;
    wasOnMap = false;
  }

  // The first two parts are longitude and latitude.
  bool Convert(const QString& line) {
    const QStringList parts = line.simplified().split(u' ');
    if (parts.size() < 2) return false;
    double x = 0, y = 0;
    const int code = Grad_To_Pixel(Coord, Val_Comma(parts[0]), Val_Comma(parts[1]), x, y);
    cancelled = code == conversionCancelled;
    at = QPoint(To_Int32(x), To_Int32(y));
    inside = code == onMap;
    return !cancelled && !at.isNull();
  }

  // Beyond the edge only what follows a point on the map, so that the cut with the edge stays closed.
  void Boundary_Point(const QString& line) {
    if (!Convert(line)) return;
    if (hasLast && std::abs(qint64{at.x()} - last.x()) < nearBy && std::abs(qint64{at.y()} - last.y()) < nearBy) return;
    if (!inside && !wasOnMap) return;
    wasOnMap = wasOnMap || inside;
    hasLast = true;
    last = at;
    Put(QStringLiteral("%1 %2").arg(at.x()).arg(at.y()));
  }

  void Put(const QString& line) {
    written << line;
    drawn.push_back(at);
  }

  QStringList written;
  std::vector<QPoint> drawn;
  QPoint at, last;
  bool inside = false, hasLast = false, wasOnMap = false, cancelled = false;
};

void Draw_Points(const std::vector<QPoint>& points) {
  if (Map.canvas.isNull()) return;
  {
    const auto surface = Make_Surface(Map.canvas);
    for (const QPoint& at : points) surface->FilledBox(QRectF(Window_X(at.x()), Window_Y(at.y()), 1, 1), QBColor(0));
  }
  events.MapPainted.Emit();
}

}  // namespace

bool Is_Plz_File(const QString& path) { return QFileInfo(path).fileName().contains(QLatin1String("Postleitzahlen")); }

bool Csv_Plz(const QString& path) {
  const BusyPointer busy;
  try {
    if (!Coord.Geographic()) Raise(errNoNet, QStringLiteral("Die Karte hat kein geografisches Koordinatennetz."));
    const QString found = Find_File(path);
    if (found.isEmpty()) Raise(errors::fileNotFound);
    PlzRun run;
    const QStringList lines = run.Run(Read_Lines(found));
    if (lines.isEmpty()) return false;
    const QString target = found.chopped(4) + QStringLiteral("-out.csv");
    Write_Lines(target, lines);
    Draw_Points(run.Points());
    Message_Box(QStringLiteral("Importdatei erstellt: ") + target, MsgButtons::Ok, MsgIcon::Information,
                QStringLiteral("Import"));
    return true;
  } catch (const Error& error) {
    Csv_Go_On_After(error);
    return false;
  }
}
