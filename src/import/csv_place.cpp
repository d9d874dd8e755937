#include "import/csv_place.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "coordinates/conversions.h"
#include "coordinates/degree_text.h"
#include "platform/text.h"

namespace {

constexpr int zoneFrom = 7;            // digits of a Rechtswert with its zone in front
constexpr int zoneMetres = 1'000'000;  // the last six digits are the Rechtswert
constexpr int mostDigits = 18;

bool Is_Geographic(const CsvTable& table) { return table.CsvTyp == QLatin1String("GEO"); }

QString Unread(const QString& name, const QString& value) {
  return name + QStringLiteral(" \"") + value + QStringLiteral("\" ist keine lesbare Koordinate");
}

struct Names {
  QString x, y;
};
Names Names_Of(const CsvTable& table) {
  if (Is_Geographic(table)) return {QStringLiteral(" Länge "), QStringLiteral(" Breite ")};
  return {QStringLiteral(" Rechtswert "), QStringLiteral(" Hochwert ")};
}

CsvPlace Refused(const QString& reason) {
  CsvPlace place;
  place.reason = reason;
  return place;
}

CsvPlace Outside(const QString& reason) {
  CsvPlace place = Refused(reason);
  place.outside = true;
  return place;
}

// What the conversion says of the place. `metres`: the numbers used, where the coordinate is none of degrees.
CsvPlace Judged(int code, double x, double y, const CsvTable& table, const CsvRecord& record,
                std::optional<QPoint> metres = {}) {
  if (code == onMap) {
    CsvPlace place;
    place.onMap = true;
    place.at = QPoint(To_Int16(x), To_Int16(y));
    return place;
  }
  const Names names = Names_Of(table);
  const QString xValue = metres ? QString::number(metres->x()) : record.x.toString();
  const QString yValue = metres ? QString::number(metres->y()) : record.y.toString();
  switch (code) {
    case tooFarLeft:
      return Outside(record.text + names.x + xValue + QStringLiteral(" liegt zu weit links im Westen"));
    case tooFarRight:
      return Outside(record.text + names.x + xValue + QStringLiteral(" liegt zu weit rechts im Osten"));
    case tooFarUp:
      return Outside(record.text + names.y + yValue + QStringLiteral(" liegt zu weit oben im Norden"));
    case tooFarDown:
      return Outside(record.text + names.y + yValue + QStringLiteral(" + liegt zu weit unten im Süden"));
    default:
      break;
  }
  CsvPlace place = Refused(QStringLiteral("Die Koordinate lässt sich nicht umrechnen."));
  place.cancelled = code == conversionCancelled;
  return place;
}

CsvPlace Place_Degrees(const CsvTable& table, const CoordinateState& state, const CsvRecord& record) {
  const auto longitude = Read_Degrees(record.x), latitude = Read_Degrees(record.y);
  if (!longitude) return Refused(Unread(QStringLiteral("Länge"), record.x.toString()));
  if (!latitude) return Refused(Unread(QStringLiteral("Breite"), record.y.toString()));
  double x = 0, y = 0;
  const int code = Grad_To_Pixel(state, *longitude, *latitude, x, y);
  return Judged(code, x, y, table, record);
}

CsvPlace Place_Metres(const CsvTable& table, const CoordinateState& state, const CsvRecord& record) {
  auto right = Read_Whole(record.x);
  const auto high = Read_Whole(record.y);
  const auto hochwert = high ? high->Value() : std::nullopt;
  const auto unreadX = [&record] { return Refused(Unread(QStringLiteral("Rechtswert"), record.x.toString())); };
  if (!right) return unreadX();
  if (right->digits >= zoneFrom) {
    const qint64 zone = right->value / zoneMetres;
    if (right->negative || zone != Net_Zone(state))
      return Outside(QStringLiteral("Falsche Zone: ") + QString::number(zone));
    right->value %= zoneMetres;
  }
  if (!right->Value()) return unreadX();
  if (!hochwert) return Refused(Unread(QStringLiteral("Hochwert"), record.y.toString()));
  const int r = right->Value().value_or(0), h = hochwert.value_or(0);
  if (state.Geographic() && !state.NetPKG)
    return Refused(QStringLiteral("Die Karte hat kein Netz mit Rechts- und Hochwerten."));
  double x = 0, y = 0;
  const int code = Plane_To_Pixel(state, r, h, x, y);
  return Judged(code, x, y, table, record, QPoint(r, h));
}

}  // namespace

bool Csv_Fits_Net(const CsvTable& table, const CoordinateState& state) {
  if (Is_Geographic(table)) return state.Geographic() && !state.NetPKG;
  if (table.CsvTyp == QLatin1String("UTM")) return state.Grid == gridUtm;
  return state.Grid == gridGaussKrueger || state.NetPKG;
}

CsvPlace Csv_Place_Of(const CsvTable& table, const CoordinateState& state, const CsvRecord& record) {
  if (Is_Geographic(table) && state.Geographic() && !state.NetPKG) return Place_Degrees(table, state, record);
  return Place_Metres(table, state, record);
}

GivenSystem Csv_System(const CsvTable& table) {
  GivenSystem given;
  if (!Is_Geographic(table))
    given.kind =
        table.CsvTyp == QLatin1String("UTM") ? ReferenceSystem::Kind::Utm : ReferenceSystem::Kind::GaussKrueger;
  return given;
}

CsvPlace Csv_Place_Of(const CsvTable& table, Placing& placing, const CsvRecord& record) {
  GivenPlace given;
  if (Is_Geographic(table)) {
    const auto longitude = Read_Degrees(record.x), latitude = Read_Degrees(record.y);
    if (!longitude) return Refused(Unread(QStringLiteral("Länge"), record.x.toString()));
    if (!latitude) return Refused(Unread(QStringLiteral("Breite"), record.y.toString()));
    given = {*longitude, *latitude};
  } else {
    const auto right = Read_Whole(record.x), high = Read_Whole(record.y);
    if (!right || !right->Value()) return Refused(Unread(QStringLiteral("Rechtswert"), record.x.toString()));
    if (!high || !high->Value()) return Refused(Unread(QStringLiteral("Hochwert"), record.y.toString()));
    given = {static_cast<double>(right->Value().value_or(0)), static_cast<double>(high->Value().value_or(0))};
  }
  const PlacedPoint placed = placing.Place(given);
  return Judged(placed.code, placed.at.x(), placed.at.y(), table, record);
}

std::optional<int> WholeNumber::Value() const {
  if (value > std::numeric_limits<int>::max()) return std::nullopt;
  return static_cast<int>(negative ? -value : value);
}

std::optional<WholeNumber> Read_Whole(QStringView text) {
  WholeNumber number;
  bool decimals = false, first = true;
  for (const QChar sign : text) {
    if (sign.isSpace()) continue;
    if (sign == u',' || sign == u'.') {
      if (decimals || number.digits == 0) return std::nullopt;
      decimals = true;
    } else if (sign >= u'0' && sign <= u'9') {
      if (!decimals) {
        if (++number.digits > mostDigits) return std::nullopt;
        number.value = number.value * 10 + (sign.unicode() - u'0');
      }
    } else if (first && (sign == u'-' || sign == u'+')) {
      number.negative = sign == u'-';
    } else {
      return std::nullopt;
    }
    first = false;
  }
  if (number.digits == 0) return std::nullopt;
  return number;
}

std::optional<double> Read_Degrees(QStringView text) {
  QString number;
  for (const QChar sign : text)
    if (!sign.isSpace()) number += sign;
  const qsizetype mark = number.indexOf(u'°');
  if (mark >= 0) {
    // What stands in front of the mark must be whole degrees, else the text would be read as something it is not.
    const auto degrees = Read_Whole(QStringView(number).left(mark));
    const QString behind = number.mid(mark + 1);
    const bool clean = std::all_of(behind.begin(), behind.end(), [](QChar sign) {
      return (sign >= u'0' && sign <= u'9') || QStringLiteral(",.'\"\u00A8\u2033").contains(sign);
    });
    if (!degrees || !clean) return std::nullopt;
    if (!behind.isEmpty()) return GMS_To_Dec(number);
    number.truncate(mark);
  }
  return Number_Typed(number);
}

// The positions ------------------------------------------------------------------------------------------------------

namespace {

quint64 Key_Of(QPoint at) {
  return static_cast<quint64>(static_cast<quint32>(at.x())) << 32 | static_cast<quint32>(at.y());
}
QPoint Point_Of(quint64 key) {
  return {static_cast<int>(static_cast<quint32>(key >> 32)), static_cast<int>(static_cast<quint32>(key))};
}

}  // namespace

TakenPositions::TakenPositions(QPoint stepWidth, QSize mapSize)
    : step(stepWidth.isNull() ? QPoint(1, 1) : stepWidth), map(mapSize) {}

void TakenPositions::Reserve(int count) { forward.reserve(count); }

// Follows the chain to its end and shortens the way for those who come after.
QPoint TakenPositions::Free_Along(Chain& chain, QPoint from, QPoint by) const {
  quint64 end = Key_Of(from);
  for (auto next = chain.constFind(end);; next = chain.constFind(end)) {
    if (next != chain.constEnd())
      end = *next;
    else if (forward.contains(end))
      end = Key_Of(Point_Of(end) + by);
    else
      break;
  }
  for (QPoint at = from; Key_Of(at) != end;) {
    const auto next = chain.constFind(Key_Of(at));
    const QPoint following = next != chain.constEnd() ? Point_Of(*next) : at + by;
    chain[Key_Of(at)] = end;
    at = following;
  }
  return Point_Of(end);
}

QPoint TakenPositions::Take(QPoint wanted) {
  const auto outside = [this](QPoint at) {
    return at.x() < 0 || at.y() < 0 || at.x() > map.width() || at.y() > map.height();
  };
  QPoint free = wanted;
  if (forward.contains(Key_Of(wanted))) free = Free_Along(forward, wanted, step);
  if (outside(free)) free = Free_Along(backward, wanted, -step);
  if (outside(free)) return wanted;
  forward.insert(Key_Of(free), Key_Of(free + step));
  return free;
}
