#include "calibration/calibration_writer.h"

#include <QFileInfo>
#include <QTemporaryFile>
#include <algorithm>
#include <cmath>
#include <complex>

#include "calibration/curve_lines.h"
#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/system_fault.h"
#include "platform/text.h"

using namespace calibration;

namespace {

constexpr const char* writerName = "Kalibrix 2.0";

QStringList Head_Lines(const CalibrationPlan& plan, const QString& grid, const QString& distance) {
  const NetStyle& style = plan.style;
  // The name of the other program marks its files wherever it stands in this line.
  const bool plainName = !plan.mapName.contains(QLatin1String("Trakkor"));
  return {QStringLiteral("ID = %1  Karte: %2").arg(QLatin1String(writerName), plainName ? plan.mapName : QString()),
          grid,
          distance,
          QStringLiteral("Font = %1 Sz = %2").arg(style.font).arg(style.fontSize),
          QStringLiteral("VG = %1").arg(style.line),
          QStringLiteral("HG = %1").arg(style.ground),
          QStringLiteral("RA = %1").arg(style.width),
          QStringLiteral("LnStil = %1").arg(style.pattern),
          QStringLiteral("LnBreite = %1").arg(style.width),
          QStringLiteral("nLabel = %1").arg(style.labelEvery),
          QStringLiteral("Transp = %1").arg(style.transparent ? QStringLiteral("Wahr") : QStringLiteral("Falsch"))};
}

// Metric nets -------------------------------------------------------------------------------------------------------

// The reference of a metric file: a crossing of two net lines, since the lines go through it, and whole pixels.
struct Reference {
  QPoint pixel;
  qint64 right = 0, high = 0;
  std::complex<double> factor;  // metres per pixel and turn
};

std::complex<double> Conjugate(QPointF pixel) { return {pixel.x(), -pixel.y()}; }
std::complex<double> Complex_Of(QPointF place) { return {place.x(), place.y()}; }

// Rounding a crossing to whole pixels would move the whole net. So scale and turn are put right by as little as keeps
// the middle of the map in its place; what is left at the corners is the smaller, the further away the crossing lies.
// The best one is taken, of two nearly as good the nearer.
Reference Best_Reference(const Similarity& net, double spacing, QSize map) {
  constexpr int reach = 60;          // lines round the middle of the map; readers walk a hundred
  constexpr double perLine = 0.002;  // pixels that a nearer crossing may miss more
  constexpr double zone = 1e6;       // in front of the Rechtswert stands the number of the zone
  const QPointF centre(map.width() / 2.0, map.height() / 2.0), middle = net.Place_Of(centre);
  const std::complex<double> truth(net.a, net.b);
  const double column = std::nearbyint(middle.x() / spacing), row = std::nearbyint(middle.y() / spacing);
  const double corner = std::hypot(centre.x(), centre.y());
  Reference best;
  double least = -1;
  for (int i = -reach; i <= reach; ++i)
    for (int j = -reach; j <= reach; ++j) {
      const QPointF place((column + i) * spacing, (row + j) * spacing);
      // Readers take 0 as missing.
      if (place.x() == 0 || place.y() == 0 || std::floor(place.x() / zone) != std::floor(middle.x() / zone)) continue;
      const QPointF exact = net.Pixel_Of(place);
      const QPointF whole(std::nearbyint(exact.x()), std::nearbyint(exact.y()));
      const auto way = Conjugate(centre) - Conjugate(whole);
      if (std::abs(way) < corner / 2) continue;  // the middle would hold nothing
      const auto factor = Complex_Of(middle - place) / way;
      const double missed = std::abs(factor - truth) / std::abs(truth) * corner;
      const double score = missed + perLine * (std::abs(i) + std::abs(j));
      if (least >= 0 && score >= least) continue;
      least = score;
      best = {whole.toPoint(), static_cast<qint64>(place.x()), static_cast<qint64>(place.y()), factor};
    }
  return best;
}

// Up to four points in columns, for programs that show them.
QStringList Metric_Point_Lines(const ControlPoints& points) {
  QStringList lines;
  for (size_t i = 0; i < points.size() && lines.size() < 4; ++i) {
    if (!points[i].used) continue;
    const auto whole = [](double value) { return QString::number(std::llround(value)); };
    lines << Pad_Right(QString::number(lines.size()), 11) + Pad_Right(whole(points[i].place.y()), 12) +
                 Pad_Right(whole(points[i].place.x()), 12) + Pad_Right(whole(points[i].pixel.x()), 12) +
                 whole(points[i].pixel.y());
  }
  return lines;
}

QStringList Metric_Lines(const CalibrationPlan& plan) {
  constexpr double leastSlope = 1e-9;  // readers take 0 as missing; this turns no pixel of any map
  constexpr double mostSpacing = 1e6;
  const Similarity& net = *plan.fit.similarity;
  const double spacing = plan.net.spacing;
  if (!(spacing >= 1 && spacing <= mostSpacing) || spacing != std::floor(spacing))
    Raise(badPoints, QStringLiteral("Der Abstand der Netzlinien muss eine ganze Zahl von Metern sein, ab 1."));
  const QSizeF extent = Extent_Of(plan.fit, plan.map);
  if (spacing > extent.width() || spacing > extent.height())
    Raise(badPoints, QStringLiteral("Der Abstand der Netzlinien (%1 m) ist größer als die Karte. Wählen Sie einen "
                                    "kleineren, etwa %2 m.")
                         .arg(Number_Text(spacing),
                              Number_Text(Fitting_Spacing(plan.net.kind, std::min(extent.width(), extent.height())))));
  const Reference reference = Best_Reference(net, spacing, plan.map);
  double slope = reference.factor.imag() / reference.factor.real();
  if (std::fabs(slope) < leastSlope) slope = slope < 0 ? -leastSlope : leastSlope;
  const double line = spacing / reference.factor.real();
  const QString kind = plan.net.kind == NetKind::Utm ? QStringLiteral("UTM") : QStringLiteral("GK");
  const QString grid = QStringLiteral("Grid %1 Zone: %2 D: %3 R: %4 H: %5")
                           .arg(kind, plan.net.zone, plan.net.datum)
                           .arg(reference.right)
                           .arg(reference.high);
  const auto decimals = [](double value, int count) { return QString::number(value, 'f', count); };
  QStringList lines = Head_Lines(plan, grid, QStringLiteral("Gwidth = ") + Number_Text(spacing));
  lines << QStringLiteral("Inclin = ") + decimals(slope, 12) << QStringLiteral("Xmap = %1").arg(reference.pixel.x())
        << QStringLiteral("Ymap = %1").arg(reference.pixel.y()) << QStringLiteral("Xline = ") + decimals(line, 7)
        << QStringLiteral("Yline = ") + decimals(line, 7);
  return lines + Metric_Point_Lines(plan.points);
}

// Words --------------------------------------------------------------------------------------------------------------

// The words of a file have no quotes: what stands in zone and datum must not read as one of them.
void Check_Words(const NetDescription& net) {
  for (const QString& text : {net.zone, net.datum}) {
    for (const char* word : {"GEO", "UTM", "GK", "GMS", "DEC", "PKG", "Zone", ":", "=", "Trakkor", ";"})
      if (text.contains(QLatin1String(word)))
        Raise(badPoints,
              QStringLiteral("Zone und Datum dürfen „%1“ nicht enthalten: %2").arg(QLatin1String(word), text));
    if (text.contains(u'\n') || text.contains(u'\r'))
      Raise(badPoints, QStringLiteral("Zone und Datum sind eine Zeile."));
  }
  constexpr int longestDatum = 13;
  if (net.datum.trimmed().isEmpty()) Raise(badPoints, QStringLiteral("Es fehlt das Datum, etwa WGS-84."));
  if (net.datum.size() > longestDatum)
    Raise(badPoints, QStringLiteral("Das Datum darf höchstens %1 Zeichen haben: %2").arg(longestDatum).arg(net.datum));
  if (Is_Geographic(net.kind)) return;
  if (!std::any_of(net.zone.begin(), net.zone.end(), [](QChar sign) { return sign >= u'0' && sign <= u'9'; }))
    Raise(badPoints, QStringLiteral("Es fehlt die Nummer der Zone, etwa 32U oder 4."));
}

// What the reader says of a file, in place of the windows in which it would say it.
class CollectMessages {
 public:
  CollectMessages()
      : former(Set_Message_Handler([this](const MsgRequest& request) {
          texts << request.text;
          return MsgAnswer::Ok;
        })) {}
  ~CollectMessages() { Set_Message_Handler(former); }
  CollectMessages(const CollectMessages&) = delete;
  CollectMessages& operator=(const CollectMessages&) = delete;
  QStringList texts;

 private:
  MsgHandler former;
};

double Missed_At(const CalibrationPlan& plan, const CoordinateState& state, QPointF pixel) {
  const auto place = plan.fit.Place_Of(pixel);
  if (!place) return 0;
  if (state.Metric()) {
    const QPointF read = Pixel_To_Koord(state, static_cast<int>(pixel.x()), static_cast<int>(pixel.y()));
    return Metres_Between(plan.net.kind, *place, read) / plan.fit.metresPerPixel;
  }
  QPointF written = *place, read;
  if (state.NetPKG) written = QPointF((place->x() - state.PkgR) / 1000, (place->y() - state.PkgH) / 1000);
  const int code = Grad_To_Pixel(state, written.x(), written.y(), read.rx(), read.ry());
  if (code == conversionCancelled) return 0;
  return std::hypot(read.x() - pixel.x(), read.y() - pixel.y());
}

void Compare(const CalibrationPlan& plan, const CoordinateState& state) {
  const NetKind kind = plan.net.kind;
  const int grid = kind == NetKind::Utm ? gridUtm : kind == NetKind::GaussKrueger ? gridGaussKrueger : gridGeographic;
  const QString zone = state.NetPKG ? state.PkgZone : state.ZoneText;
  const bool same = state.Grid == grid && state.GridDatum == plan.net.datum.trimmed() && state.NetReady &&
                    (Is_Geographic(kind) || zone == plan.net.zone.trimmed()) &&
                    state.NetPKG == (kind == NetKind::Kilometres) &&
                    (!Is_Geographic(kind) || state.NetDec == (kind == NetKind::DegreesDec));
  if (!same) Raise(badPoints, QStringLiteral("Die Kalibrierungsdatei liest sich anders, als sie geschrieben wurde."));
}

// They keep what was measured; no reader takes them for anything else.
QStringList Point_Remarks(const ControlPoints& points) {
  QStringList lines;
  for (const ControlPoint& point : points)
    lines << QStringLiteral("# Punkt;%1;%2;%3;%4;%5")
                 .arg(QString::number(point.pixel.x(), 'f', 3), QString::number(point.pixel.y(), 'f', 3),
                      QString::number(point.place.x(), 'f', 8), QString::number(point.place.y(), 'f', 8))
                 .arg(point.used ? 1 : 0);
  return lines;
}

}  // namespace

QStringList Calibration_Lines(const CalibrationPlan& plan) {
  Check_Words(plan.net);
  if (plan.fit.similarity) return Metric_Lines(plan) + Point_Remarks(plan.points);
  const TracedNet net = Trace_Net(plan);
  return Head_Lines(plan, net.grid, net.division) + net.lines + Point_Remarks(plan.points);
}

CalibrationProof Prove_Calibration(const CalibrationPlan& plan, const QStringList& lines) {
  constexpr int places = 12;
  QTemporaryFile file;
  if (!file.open()) Raise(errors::pathNotFound, No_Work_Folder());
  file.write(To_1252(lines.join(QLatin1String("\r\n")) + QStringLiteral("\r\n")));
  file.close();
  CalibrationProof proof;
  const CollectMessages messages;
  Read_Cal(file.fileName(), plan.map, proof.state);
  if (!messages.texts.isEmpty()) Raise(badPoints, messages.texts.first().section(u'\n', 0, 0));
  Compare(plan, proof.state);
  for (int i = 0; i <= places; ++i)
    for (int j = 0; j <= places; ++j) {
      const QPointF pixel(plan.map.width() * i / places, plan.map.height() * j / places);
      proof.missed = std::max(proof.missed, Missed_At(plan, proof.state, pixel));
    }
  return proof;
}

CalibrationProof Save_Calibration(const CalibrationPlan& plan, const QString& path) {
  const QStringList lines = Calibration_Lines(plan);
  Prove_Calibration(plan, lines);
  if (QFileInfo::exists(path)) File_Copy(path, path + QStringLiteral("_alt"));
  Write_Lines(path, lines);
  // Once more what really lies there: media have their own mind.
  try {
    CalibrationProof proof = Prove_Calibration(plan, Read_Lines(path));
    proof.state.CalFile = path;
    return proof;
  } catch (const Error&) {
    if (QFileInfo::exists(path + QStringLiteral("_alt"))) File_Copy(path + QStringLiteral("_alt"), path);
    throw;
  }
}

QString Calibration_File_Of(const QString& mapFile) {
  QString name = mapFile, folder;
  Split_Path(name, folder);
  return folder + name.section(u'.', 0, 0) + QStringLiteral(".cal");
}
