#include "exchange/exchange_record.h"

#include <algorithm>
#include <array>

#include "platform/text.h"

namespace {

constexpr std::array exchangeNumber = {1, 2, 7, 4, 5, 6, 11, 13, 9, 3, 8, 14, 10, 12, 15, 16};

// A kind's first letters in the file, by the word in the name of an entry.
struct Prefix {
  QLatin1String word, prefix;
};
constexpr std::array prefixes = {
    Prefix{QLatin1String("Text"), QLatin1String("T-")}, Prefix{QLatin1String("Bild"), QLatin1String("B-")},
    Prefix{QLatin1String("Figur"), QLatin1String("G-")}, Prefix{QLatin1String("Linie"), QLatin1String("L-")},
    Prefix{QLatin1String("Flaeche"), QLatin1String("F-")}};

QString Prefix_Of(const QString& name) {
  for (const Prefix& prefix : prefixes)
    if (name.contains(prefix.word)) return prefix.prefix;
  return {};
}

// A kind as the file counts it; empty: the row is not written. Marks belong to the work on the map, not to the entry.
QString Exchange_Kind(const EntryRow& row) {
  EntryType type = EntryType::Parse(row.Typ);
  type.mark = Mark::None;
  switch (const int kind = type.ToNumber()) {
    case -1:
    case 15:
      return {};
    case 0:
      return row.Xline <= 0 ? QStringLiteral("11") : QStringLiteral("10");
    case 1:
      return QStringLiteral("11");
    case 2:
      return QStringLiteral("13");
    case 3:
      return QStringLiteral("12");
    case 5:
      return QStringLiteral("50");
    case 11:
      return QStringLiteral("60");
    default:
      return QString::number(kind);
  }
}

bool Is_Polygon(const QString& typ) { return typ == QLatin1String("4") || typ == QLatin1String("40"); }
bool Is_Figure(const QString& typ) { return typ.size() == 2 && typ[0] == u'2' && typ[1] >= u'0' && typ[1] <= u'3'; }
// Rectangle and square, ellipse and circle change places.
QString Other_Figure(const QString& typ) { return Is_Figure(typ) ? QString::number(typ.toInt() ^ 1) : typ; }

// The angle runs the other way round.
QString Turned(const QString& schrift) {
  const qsizetype at = schrift.indexOf(u'<');
  if (at < 0) return schrift;
  return schrift.left(at + 1) + Format(-Val(QStringView(schrift).mid(at + 1)), QStringLiteral("#000"));
}

// What stands in a column's text would end the field, or the line.
QString Field(QString text) {
  text.replace(u'\r', u' ').replace(u'\n', u' ').replace(u';', u',');
  qsizetype blanks = 0;
  while (blanks < text.size() && text[blanks] == u' ') ++blanks;
  return text.mid(blanks) + u';';
}

class ExchangeWriter {
 public:
  explicit ExchangeWriter(const ExchangeTable& source) : table(source) {
    text.lines << QStringLiteral("Map = %1,  Overlay = %2,  Import = %3").arg(table.map, table.file, table.table)
               << QString();
  }

  void Write(const EntryRow& row) {
    ExportRecord record = Export_Record_Of(row);
    if (record.typ.isEmpty()) return;
    QString head = record.id;
    const QString prefix = Prefix_Of(EntryId::Parse(record.id).name);
    if (!prefix.isEmpty()) head = prefix + (record.nummer = QString::number(++running));
    fill = record.schrift.trimmed().right(1);
    if (prefix == QLatin1String("B-")) Name_Picture(record);
    if (prefix == QLatin1String("G-")) Name_Figure(record);
    if (prefix == QLatin1String("L-")) record.linienstil = Line_Style_Of(row.ID);
    record.eintrag = Eintrag_To_Text(record.eintrag);
    if (record.eintrag.trimmed().isEmpty()) {
      ++text.withoutText;
      return;
    }
    Put_Entry(head, record);
    if (Is_Polygon(record.typ)) Put_Polygon(head, record, row);
    if (Is_Figure(record.typ)) Put_Figure(head, record, row);
    ++text.written;
  }

  ExchangeText text;

 private:
  static void Name_Picture(ExportRecord& record) {
    record.eintrag =
        record.eintrag.mid(std::max(record.eintrag.lastIndexOf(u'\\'), record.eintrag.lastIndexOf(u'/')) + 1);
    record.groesse = QStringLiteral("12");
    if (!record.eintrag.contains(QLatin1String(".ico"), Qt::CaseInsensitive)) return;
    record.id = QStringLiteral("T-") + record.nummer;
    record.typ = QStringLiteral("10");
    record.eintrag = QStringLiteral(
                         "<HTML>%1<BR>Bitte wandeln Sie diese ICO-Bilddatei<BR>in ein anderes Bildformat um,"
                         "<BR>z.B. in gif- oder png-Format.")
                         .arg(record.eintrag);
    record.schrift = QStringLiteral("Arial");
  }

  static void Name_Figure(ExportRecord& record) {
    record.eintrag = QStringLiteral("Figur-") + record.nummer;
    record.schrift = QStringLiteral("Arial");
    record.x2 = record.y2 = QStringLiteral("0");
    record.typ = Other_Figure(record.typ);
  }

  void Put_Entry(const QString& head, const ExportRecord& record) {
    QString line;
    for (const QString& field : {head, record.eintrag, record.schrift, record.groesse, record.vg, record.hg, record.ra,
                                 record.stroke, record.x, record.y, record.x2, record.y2, record.typ})
      line += Field(field);
    text.lines << line;
  }

  void Put_Polygon(const QString& head, const ExportRecord& record, const EntryRow& row) {
    QString points;
    for (const QPoint point : table.vertices(EntryId::Parse(row.ID).TableName()))
      points += QString::number(point.x()) + u',' + QString::number(point.y()) + u'/';
    text.lines << points;
    const QString fillCode = record.y2.startsWith(u'-') ? record.y2.mid(1) : record.y2;
    text.lines << QStringList{
        head,
        head.contains(u'L') ? QStringLiteral("L") : QStringLiteral("F"),
        record.nummer,
        record.x2,
        fillCode,
        record.typ == QLatin1String("40") ? QStringLiteral("1") : QStringLiteral("0"),
        record.linienstil,
        {}}.join(u'#');
  }

  void Put_Figure(const QString& head, const ExportRecord& record, const EntryRow& row) {
    const auto corner = [](int x, int y) { return QStringLiteral("%1.0,%2.0/").arg(x).arg(y); };
    const int right = row.Xmap + row.Xline, lower = row.Ymap + row.Yline;
    text.lines << corner(row.Xmap, row.Ymap) + corner(right, row.Ymap) + corner(right, lower) + corner(row.Xmap, lower);
    const QString frame = record.ra.trimmed();
    text.lines << QStringLiteral("%1#G#%2#%3#%4#0#0#")
                      .arg(head, record.nummer, frame.size() > 2 ? frame.chopped(2) : QStringLiteral("2"), fill);
  }

  const ExchangeTable& table;
  int running = 0;  // one for all kinds
  QString fill;     // the last character of a figure's Schrift
};

}  // namespace

QString trakkorColor(std::optional<int> index) {
  if (!index) return QStringLiteral("1");
  const bool known = *index >= 0 && *index < static_cast<int>(exchangeNumber.size());
  return QString::number(known ? exchangeNumber[static_cast<size_t>(*index)] : *index);
}

QString fluraxColor(std::optional<int> trakkorFarbe) {
  if (!trakkorFarbe) return QStringLiteral("1");
  const auto found = std::find(exchangeNumber.begin(), exchangeNumber.end(), *trakkorFarbe);
  return QString::number(found == exchangeNumber.end() ? *trakkorFarbe : found - exchangeNumber.begin());
}

QString Eintrag_To_Text(const QString& eintrag) {
  QString text = eintrag;
  text.replace(QLatin1String("\r\n"), QLatin1String("\r")).replace(u'\n', u'\r');
  if (!text.contains(u'\r')) return eintrag;
  QStringList lines = text.split(u'\r');
  for (QString& line : lines) line = line.trimmed();
  return QStringLiteral("<HTML>") + lines.join(QLatin1String("<BR>")) + QStringLiteral("</HTML>");
}

QString Text_To_Eintrag(const QString& text) {
  if (!text.startsWith(QLatin1String("<HTML>"), Qt::CaseInsensitive)) return text;
  QString inner = text.mid(6);
  if (inner.endsWith(QLatin1String("</HTML>"), Qt::CaseInsensitive)) inner.chop(7);
  return inner.replace(QLatin1String("<BR>"), QLatin1String("\r\n"), Qt::CaseInsensitive);
}

QString Line_Style_Of(const QString& storedId) {
  QString text = storedId.startsWith(u'-') ? storedId.mid(1) : storedId;
  const qsizetype dash = text.indexOf(u'-');
  if (dash < 0) return QStringLiteral("-");
  text = text.mid(dash + 1).trimmed();
  const auto suffix = std::find_if(text.begin(), text.end(), [](QChar c) { return c == u'>' || c == u'<'; });
  text.truncate(suffix - text.begin());
  const auto is = [&text](qsizetype at, QChar what) { return at <= text.size() && text[at - 1] == what; };
  QString style = is(1, u'C') ? QStringLiteral("O") : text.left(1);
  if (is(3, u'1')) style += u'A';
  if (is(5, u'1')) style += u'T';
  if (is(4, u'1')) style += u'E';
  style += is(2, u'1') ? QStringLiteral("s>") : QStringLiteral("f>");
  const auto size = [&](QChar letter, double factor) {
    const qsizetype at = text.indexOf(letter);
    if (at < 0) return;
    style += letter + Format(Val_Comma(text.mid(at + 1, 3)) * factor, QStringLiteral("000"));
  };
  size(u'L', 10);
  size(u'B', 5);
  return style;
}

std::optional<LineEnds> Line_Ends_Of(const QString& linienstil) {
  const qsizetype flags = linienstil.indexOf(u'>');
  if (flags < 1) return std::nullopt;
  const QString before = linienstil.left(flags);
  LineEnds ends;
  ends.shape = before[0] == u'O'   ? LineEnds::Shape::Circle
               : before[0] == u'R' ? LineEnds::Shape::Rectangle
                                   : LineEnds::Shape::Arrow;
  ends.filled = before.endsWith(u's');
  ends.atStart = before.contains(u'A');
  ends.atEnd = before.contains(u'E');
  ends.partial = before.contains(u'T');
  const auto size = [&](QChar letter, double factor) {
    const qsizetype at = linienstil.indexOf(letter, flags);
    return at < 0 ? 1.0 : std::clamp(Val(QStringView(linienstil).mid(at + 1, 3)) / factor, 1.0, 99.0);
  };
  ends.lengthMm = size(u'L', 10);
  ends.widthMm = size(u'B', 5);
  return ends;
}

ExportRecord Export_Record_Of(const EntryRow& row) {
  ExportRecord record;
  record.id = row.ID.contains(QLatin1String("Text")) ? QStringLiteral("Text") : row.ID;
  record.eintrag = row.Eintrag;
  record.schrift = row.Schrift;
  record.stroke = QStringLiteral("1.0");
  const QString half = QStringLiteral("0.5");
  if (const qsizetype at = record.schrift.indexOf(QLatin1String("-T")); at >= 0) {
    record.stroke = half;
    record.schrift.remove(at, 2);
  }
  record.schrift = Turned(record.schrift);
  const QString name = EntryId::Parse(row.ID).name;
  if (row.Yline < 0 && (name.contains(QLatin1String("Linie")) || name.contains(QLatin1String("Flaeche"))))
    record.stroke = half;
  const int base = EntryType::Parse(row.Typ).base;
  const bool doubled = base >= 0 && base <= 4 && !EntryType::Parse(row.Typ).hidden;
  record.groesse = Number_Text(doubled ? row.Groesse * 2 : row.Groesse);
  record.vg = trakkorColor(row.VG);
  record.hg = trakkorColor(row.HG);
  record.ra = trakkorColor(row.RA);
  record.x = QString::number(row.Xmap);
  record.y = QString::number(row.Ymap);
  record.x2 = QString::number(row.Xline);
  record.y2 = QString::number(row.Yline);
  record.typ = Exchange_Kind(row);
  if (record.typ == QLatin1String("60")) {
    record.id = QStringLiteral("Skala");
    record.eintrag = row.Schrift + QStringLiteral(" - ") + row.Eintrag + QStringLiteral(" - 5");
    record.schrift = QStringLiteral("Arial");
    record.groesse = QStringLiteral("12");
  }
  return record;
}

std::optional<ExchangeText> Exchange_Lines(const ExchangeTable& table, const std::function<bool()>& goOn) {
  ExchangeWriter writer(table);
  for (const EntryRow& row : table.rows) {
    if (goOn && !goOn()) return std::nullopt;
    writer.Write(row);
  }
  return std::move(writer.text);
}
