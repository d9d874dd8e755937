#include "exchange/csv_table.h"

#include <optional>

#include "coordinates/net_system.h"
#include "exchange/csv_export.h"
#include "platform/files.h"
#include "state/global_state.h"
#include "store/csv_cell.h"
#include "store/entry.h"

namespace {

constexpr int metreDecimals = 1, degreeDecimals = 7;

// Places in the system that was asked for.
class Places {
 public:
  explicit Places(bool wgs84) {
    const ReferenceSystem target{ReferenceSystem::Kind::Geographic, Datum::Wgs84, 0};
    system = System_Of(Coord);
    if (!wgs84 || !system || *system == target) return;
    way.emplace(*system, target);
    system = target;
  }
  bool Geographic() const { return system && system->kind == ReferenceSystem::Kind::Geographic; }
  std::optional<QPointF> At(QPoint map) const {
    const auto place = Place_In_System(Coord, map.x(), map.y());
    return place && way ? (*way)(*place) : place;
  }

 private:
  std::optional<ReferenceSystem> system;
  std::optional<Transformation> way;
};

class CsvWriter {
 public:
  explicit CsvWriter(const CsvOrder& wanted) : order(wanted), places(wanted.wgs84) {}

  QString Run() {
    QStringList titles;
    for (const QString& column : order.columns) {
      if (column == csv_column::pixels)
        titles << QStringLiteral("x") << QStringLiteral("y");
      else if (column == csv_column::coordinates && places.Geographic())
        titles << QStringLiteral("Länge") << QStringLiteral("Breite");
      else if (column == csv_column::coordinates)
        titles << QStringLiteral("Rechtswert") << QStringLiteral("Hochwert");
      else
        titles << column;
    }
    for (const QString& title : titles) Put(Csv_Guarded(title));
    End_Line();
    For_Each_Entry([this] {
      if (Csv_Has_Line(Read_Entry(*rsEntries))) Put_Row();
    });
    return text;
  }

 private:
  void Put(QString cell) {
    if (cell.contains(order.separator) || cell.contains(u'"') || cell.contains(u'\n') || cell.contains(u'\r'))
      cell = u'"' + cell.replace(u'"', QLatin1String("\"\"")) + u'"';
    line += (line.isNull() ? QString() : QString(order.separator)) + cell;
    if (line.isNull()) line = QLatin1String("");
  }
  void Put_Number(double value, int decimals) {
    Put(QString::number(value, 'f', decimals).replace(u'.', order.decimalSign));
  }
  void End_Line() {
    text += line + QStringLiteral("\r\n");
    line = QString();
  }

  void Put_Row() {
    const QPoint at = Csv_Place(Read_Entry(*rsEntries));
    ++number;
    for (const QString& column : order.columns) {
      if (column == csv_column::number) {
        Put(QString::number(number));
      } else if (column == csv_column::pixels) {
        Put(QString::number(at.x()));
        Put(QString::number(at.y()));
      } else if (column == csv_column::coordinates) {
        Put_Place(at);
      } else {
        Put_Field(column);
      }
    }
    End_Line();
  }

  void Put_Place(QPoint at) {
    const auto place = places.At(at);
    for (const int axis : {0, 1}) {
      if (!place)
        Put({});
      else
        Put_Number(axis == 0 ? place->x() : place->y(), places.Geographic() ? degreeDecimals : metreDecimals);
    }
  }

  void Put_Field(const QString& column) {
    if (!rsEntries->HasField(column)) return Put({});
    const int index = rsEntries->FieldIndex(column);
    const QString value = rsEntries->Text(index);
    if (rsEntries->Fields()[static_cast<size_t>(index)].type == FieldType::Text)
      Put(Csv_Guarded(value));
    else
      Put(QString(value).replace(u'.', order.decimalSign));
  }

  const CsvOrder& order;
  Places places;
  QString text, line;
  int number = 0;
};

}  // namespace

QStringList Csv_Columns() {
  QStringList columns{csv_column::number, csv_column::pixels, csv_column::coordinates};
  if (rsEntries)
    for (const auto& field : rsEntries->Fields()) columns << field.name;
  return columns;
}

bool Csv_Knows_Wgs84() { return System_Of(Coord).has_value(); }

QByteArray Csv_Table(const CsvOrder& order) {
  const QString text = CsvWriter(order).Run();
  return order.utf8 ? QByteArray("\xEF\xBB\xBF") + text.toUtf8() : To_1252(text);
}
