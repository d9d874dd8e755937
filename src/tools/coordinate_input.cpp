#include "tools/coordinate_input.h"

#include <cmath>

#include "coordinates/conversions.h"
#include "coordinates/degree_text.h"
#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/coordinate_state.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry_type.h"
#include "view/cursor_coordinates.h"

namespace {

bool Shows_Degrees() { return Coord.Geographic() && !Coord.NetPKG; }

std::optional<double> Number_Of(QString text) {
  text.remove(u' ');
  if (text.startsWith(u'R', Qt::CaseInsensitive) || text.startsWith(u'H', Qt::CaseInsensitive)) text.remove(0, 1);
  if (text.contains(u'°')) return GMS_To_Dec(text);
  return Number_Typed(text);
}

QString Value_Text(bool degrees, bool easting, double value) {
  if (!degrees) return Format(value, easting ? QStringLiteral("000000") : QStringLiteral("0000000"));
  return Format(std::abs(value), easting ? QStringLiteral("000.000000") : QStringLiteral(" 00.000000"))
      .replace(u',', u'.');
}

void Tell(const QString& text, const QString& title) { Message_Box(text, MsgButtons::Ok, MsgIcon::Information, title); }

std::optional<double> Read_Box(const CoordinateForm& form, bool easting, const QString& letter, const QString& value) {
  const auto number = Number_Of(value);
  if (!number) {
    Tell(QStringLiteral("Der Wert \"%1\" ist keine Koordinate.").arg(value.trimmed()), form.title);
    return std::nullopt;
  }
  const double farthest = form.degrees ? (easting ? 180 : 90) : 2e9;
  if (std::abs(*number) > farthest) {
    Tell(QStringLiteral("Der Wert \"%1\" ist zu groß.").arg(value.trimmed()), form.title);
    return std::nullopt;
  }
  return letter == QLatin1String("-") ? -std::abs(*number) : *number;
}

QString Far_Text(const CoordinateForm& form, int code) {
  const bool across = code == tooFarLeft || code == tooFarRight;
  const QString name = form.degrees ? (across ? QStringLiteral("Längengrad") : QStringLiteral("Breitengrad"))
                                    : (across ? QStringLiteral("Rechtswert") : QStringLiteral("Hochwert"));
  const QString where = code == tooFarLeft    ? QStringLiteral(" links im Westen")
                        : code == tooFarRight ? QStringLiteral(" rechts im Osten")
                        : code == tooFarUp    ? QStringLiteral(" oben im Norden")
                                              : QStringLiteral(" unten im Süden");
  return QStringLiteral("Eingegebener ") + name + QStringLiteral(" liegt zu weit") + where +
         QStringLiteral(" außerhalb der Karte!");
}

bool Has_Foot(const EntryRow& row) {
  const int base = EntryType::Parse(row.Typ).base;
  return base >= static_cast<int>(EntryKind::TextLine) && base <= static_cast<int>(EntryKind::TextCircle) &&
         row.Xline > 0;
}

bool Has_One_Place(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  return !type.IsPolygon() && !type.IsFreeFigure() && type.Kind() != EntryKind::PlanSquare &&
         type.Kind() != EntryKind::Reference;
}

}  // namespace

CoordinateForm Koord_Eingabe_Init() {
  if (Shows_Degrees())
    return {QStringLiteral("Geografische Koordinateneingabe"),
            QStringLiteral("+"),
            QStringLiteral("+"),
            QStringLiteral("000.000000"),
            QStringLiteral("00.000000"),
            QStringLiteral("Geben Sie hier die geografische Länge ein, z.B 006.231460"),
            QStringLiteral("Geben Sie hier die geografische Breite ein, z.B 46.675500"),
            true};
  const bool utm = Coord.Grid == gridUtm;
  return {utm ? QStringLiteral("UTM - Koordinateneingabe") : QStringLiteral("Gauß-Krüger Koordinateneingabe"),
          QStringLiteral("R"),
          QStringLiteral("H"),
          QStringLiteral("600000"),
          QStringLiteral("5000000"),
          QStringLiteral("Geben Sie hier einen") +
              (utm ? QStringLiteral(" sechstelligen ") : QStringLiteral(" sechs- oder siebenstelligen ")) +
              QStringLiteral("Rechtswert ein, z.B. R 654000"),
          QStringLiteral("Geben Sie hier einen siebenstelligen Hochwert ein, z.B. H 5511000"),
          false};
}

QString Coordinate_Label(const CoordinateForm& form, bool easting, const QString& letter) {
  const bool negative = letter == QLatin1String("-");
  if (!form.degrees)
    return easting ? QStringLiteral("Rechtswert (nach Osten)") : QStringLiteral("Hochwert (nach Norden)");
  if (easting) return negative ? QStringLiteral("westl. Länge") : QStringLiteral("östl. Länge");
  return negative ? QStringLiteral("südl. Breite") : QStringLiteral("nördl. Breite");
}

std::optional<TypedCoordinate> Show_Cursor_Coords(QPoint map) {
  const auto sign = [](double value) { return value < 0 ? QStringLiteral("-") : QStringLiteral("+"); };
  if (Coord.Geographic()) {
    double longitude = 0, latitude = 0;
    if (Pixel_To_Grad(Coord, map.x(), map.y(), longitude, latitude) != 1) return std::nullopt;
    if (Shows_Degrees())
      return TypedCoordinate{sign(longitude), Value_Text(true, true, longitude), sign(latitude),
                             Value_Text(true, false, latitude)};
    return TypedCoordinate{QStringLiteral("R"), Value_Text(false, true, longitude * 1000 + Coord.PkgR),
                           QStringLiteral("H"), Value_Text(false, false, latitude * 1000 + Coord.PkgH)};
  }
  if (!Coord.Metric()) return std::nullopt;
  const QPointF place = Pixel_To_Koord(Coord, map.x(), map.y());
  return TypedCoordinate{QStringLiteral("R"), Value_Text(false, true, place.x()), QStringLiteral("H"),
                         Value_Text(false, false, place.y())};
}

QString Box_Text(const CoordinateForm& form, bool easting, const QString& value) {
  if (value.trimmed().isEmpty()) return easting ? form.startR : form.startH;
  const auto number = Number_Of(value);
  return number ? Value_Text(form.degrees, easting, *number).trimmed() : value;
}

std::optional<TypedPlace> GridPix(const CoordinateForm& form, const TypedCoordinate& typed) {
  const auto right = Read_Box(form, true, typed.letterR, typed.valueR);
  if (!right) return std::nullopt;
  const auto high = Read_Box(form, false, typed.letterH, typed.valueH);
  if (!high) return std::nullopt;
  double x = 0, y = 0;
  const int code =
      form.degrees ? Grad_To_Pixel(Coord, *right, *high, x, y) : Plane_To_Pixel(Coord, *right, *high, x, y);
  if (code == onMap) return TypedPlace{{To_Int32(x), To_Int32(y)}, *right, *high};
  if (code != conversionCancelled) Tell(Far_Text(form, code), form.title);
  return std::nullopt;
}

bool Foot_Is_Next(const TakenPosition& taken) { return taken.step == 1 && Has_Foot(taken.before); }

bool Take_Position(TakenPosition& taken, const TypedPlace& place, const QString& title) {
  const QPoint map = place.map;
  if (Map.InHand.isEmpty() || !On_Current_Entry()) {
    Tell(QStringLiteral("Bitte wählen Sie zuerst einen Karteneintrag aus."), title);
    return false;
  }
  if (!Store_Pending_Text()) return false;
  bool onePlace = true;
  TakenPosition next = taken;
  const auto changes = Change_Of_Current([&](EntryRow& row, qint64 key) {
    onePlace = Has_One_Place(row);
    if (!onePlace) return;
    if (next.key != key) next = {key, row, 0};
    const bool foot = Foot_Is_Next(next);
    (foot ? row.Xline : row.Xmap) = map.x();
    (foot ? row.Yline : row.Ymap) = map.y();
    next.step = foot ? 2 : 1;
  });
  if (!onePlace) {
    Tell(QStringLiteral("Dieser Eintrag hat mehr als eine Position.\nBitte verschieben Sie ihn mit der Maus."), title);
    return false;
  }
  if (!changes.empty() && Write_Changes(changes, title) == 0) return false;
  taken = next;
  const PanelTexts texts = Coordinate_Texts(place.right, place.high);
  InfoBar.Panel[1] = texts.position;
  if (!texts.beside.isEmpty()) InfoBar.Panel[2] = texts.beside;
  events.InfoBarChanged.Emit();
  return true;
}

void Take_Position_Back(TakenPosition& taken, const QString& title) {
  if (taken.step == 0 || !Table_Is_Open() || !Store_Pending_Text()) return;
  const auto changes = Collect_Changes([&](EntryRow& row, qint64 key) {
    if (key != taken.key) return;
    row.Xmap = taken.before.Xmap;
    row.Ymap = taken.before.Ymap;
    row.Xline = taken.before.Xline;
    row.Yline = taken.before.Yline;
  });
  Write_Changes(changes, title);
  taken = {};
}
