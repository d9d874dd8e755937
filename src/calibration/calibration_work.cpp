#include "calibration/calibration_work.h"

#include <QFileInfo>
#include <cmath>
#include <utility>

#include "calibration/calibration_reading.h"
#include "calibration/crossing.h"
#include "calibration/world_file.h"
#include "coordinates/calibration_file.h"
#include "platform/error.h"
#include "platform/picture.h"

namespace {

QPointF Rounded_To(QPointF place, double spacing) {
  return {std::nearbyint(place.x() / spacing) * spacing, std::nearbyint(place.y() / spacing) * spacing};
}

QString Name_Of(const QString& path) { return QFileInfo(path).fileName(); }

// A net that is turned and scaled as the line between two points is, in metres or degrees alike.
std::optional<QPointF> By_Two_Points(const ControlPoint& a, const ControlPoint& b, NetKind kind, QPointF pixel) {
  const double shrink = Is_Geographic(kind) ? std::cos((a.place.y() + b.place.y()) / 2 * 3.14159265358979 / 180) : 1;
  const QPointF step = b.pixel - a.pixel, ground((b.place.x() - a.place.x()) * shrink, b.place.y() - a.place.y());
  const double square = step.x() * step.x() + step.y() * step.y();
  if (square < 1) return std::nullopt;
  // factor = ground / conj(step), as complex numbers
  const double real = (ground.x() * step.x() - ground.y() * step.y()) / square,
               imaginary = (ground.x() * step.y() + ground.y() * step.x()) / square;
  const QPointF way = pixel - a.pixel;
  return QPointF(a.place.x() + (real * way.x() + imaginary * way.y()) / shrink,
                 a.place.y() + imaginary * way.x() - real * way.y());
}

}  // namespace

void CalibrationWork::Open(const QString& file) {
  const QImage loaded = Load_Picture(file);
  *this = CalibrationWork();
  picture = loaded;
  mapFile = file;
  calFile = Calibration_File_Of(file);
  try {
    Begin();
  } catch (const Error& error) {
    notice = error.text;
  }
  savedNet = net;
  Refit();
}

void CalibrationWork::Begin() {
  const QStringList files = Cal_Files_Of(mapFile);
  if (!files.isEmpty()) {
    if (!files.contains(calFile)) calFile = files.first();
    CalibrationDraft draft = Read_Draft(calFile, picture.size());
    net = draft.net;
    style = draft.style;
    sheet.Begin_With(std::move(draft.points));
    notice = QStringLiteral("Gelesen: ") + Name_Of(calFile);
    return;
  }
  const auto reference = Find_Reference(mapFile);
  if (!reference) return;
  notice = QStringLiteral("Vorschlag aus %1.").arg(Name_Of(reference->source));
  ReferenceSystem system{reference->LooksLikeDegrees() ? ReferenceSystem::Kind::Geographic : ReferenceSystem::Kind::Utm,
                         Datum::Wgs84, 32};
  if (reference->system)
    system = *reference->system;
  else if (reference->foreignSystem)
    System_To_Use(*reference, {});
  else
    notice += QStringLiteral(" Zone und Datum stehen nicht dabei: Bitte prüfen Sie sie.");
  try {
    const CalibrationPlan plan = Plan_Of_Reference(*reference, system, Name_Of(mapFile));
    net = plan.net;
    sheet.Begin_With({});
    sheet.Replace_All(plan.points);
  } catch (const Error& error) {
    notice += u' ' + error.text;
  }
}

void CalibrationWork::Describe(const NetDescription& described, NetShape lines) {
  net = described;
  shape = lines;
  Refit();
}

CalibrationPlan CalibrationWork::Plan() const {
  return {Name_Of(mapFile), picture.size(), net, style, sheet.Points(), *fit};
}

void CalibrationWork::Refit() {
  fit.reset();
  proof.reset();
  remarks.clear();
  fault.clear();
  if (!Is_Open()) return;
  try {
    if (const auto system = System_Of_Net(net)) {
      for (size_t i = 0; i < Points().size(); ++i) {
        if (!Points()[i].used) continue;
        const QString flaw = Zone_Flaw(*system, Points()[i].place);
        if (!flaw.isEmpty()) remarks << QStringLiteral("Punkt %1: ").arg(i + 1) + flaw;
        if (!flaw.isEmpty()) break;  // the others say the same
      }
    }
    fit = Fit_Net(Points(), net.kind, shape);
    remarks << Fit_Remarks(*fit, Points(), picture.size());
    const CalibrationPlan plan = Plan();
    proof = Prove_Calibration(plan, Calibration_Lines(plan));
    constexpr double mostMissed = 1.5;
    if (proof->missed > mostMissed)
      remarks << QStringLiteral("Drei Linien geben diese Biegung nur auf %1 Pixel genau wieder.")
                     .arg(std::ceil(proof->missed));
  } catch (const Error& error) {
    fault = error.text;
  }
}

std::optional<QPointF> CalibrationWork::Guess_Place(QPointF pixel) const {
  if (!(net.spacing > 0)) return std::nullopt;
  if (fit) {
    const auto place = fit->Place_Of(pixel);
    return place ? std::optional(Rounded_To(*place, net.spacing)) : std::nullopt;
  }
  std::vector<const ControlPoint*> used;
  for (const ControlPoint& point : Points())
    if (point.used) used.push_back(&point);
  if (used.empty()) return std::nullopt;
  const ControlPoint& last = *used.back();
  if (used.size() > 1) {
    const auto place = By_Two_Points(*used[used.size() - 2], last, net.kind, pixel);
    return place ? std::optional(Rounded_To(*place, net.spacing)) : std::nullopt;
  }
  // The neighbour in that direction.
  const QPointF way = pixel - last.pixel;
  if (std::fabs(way.x()) > std::fabs(way.y())) return last.place + QPointF(way.x() > 0 ? net.spacing : -net.spacing, 0);
  return last.place + QPointF(0, way.y() < 0 ? net.spacing : -net.spacing);
}

QPointF CalibrationWork::Snap(QPointF pixel, int reach) const {
  return Find_Crossing(picture, pixel, reach).value_or(pixel);
}

void CalibrationWork::Save() {
  if (!fit) Raise(badPoints, fault.isEmpty() ? QStringLiteral("Es gibt noch kein Netz.") : fault);
  const bool replaced = QFileInfo::exists(calFile);
  proof = Save_Calibration(Plan(), calFile);
  sheet.Mark_Saved();
  savedNet = net;
  notice = QStringLiteral("Gesichert: ") + Name_Of(calFile);
  if (replaced) notice += QStringLiteral("; die bisherige Datei heißt %1_alt").arg(Name_Of(calFile));
}

void CalibrationWork::Save_As(const QString& file) {
  const QString former = std::exchange(calFile, file);
  try {
    Save();
  } catch (const Error&) {
    calFile = former;
    throw;
  }
}

// As the program looks for them, upper and lower case apart.
bool CalibrationWork::Is_Found_By_Map() const {
  const QFileInfo file(calFile), map(mapFile);
  return file.absolutePath() == map.absolutePath() && file.fileName().endsWith(QLatin1String("cal")) &&
         file.fileName().contains(map.fileName().section(u'.', 0, 0));
}
