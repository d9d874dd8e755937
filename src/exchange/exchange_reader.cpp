#include "exchange/exchange_reader.h"

#include <cmath>
#include <cstdlib>

#include "exchange/exchange_record.h"
#include "platform/error.h"
#include "platform/text.h"
#include "store/vertex_table.h"

namespace {

constexpr int fieldCount = 13;
namespace field {
enum { head, eintrag, schrift, groesse, vg, hg, ra, stroke, x, y, x2, y2, typ };
}

bool Is_Title(const QString& line) { return line.contains(QLatin1String("Map =")); }

int Number(const QString& text) { return To_Int16(Val(text)); }

// Transparent texts have a thin stroke; their mark stands before the angle.
QString With_Transparency(const QString& schrift, const QString& stroke) {
  const QString mark = QStringLiteral("-T");
  if (Val(stroke) >= 0.6 || schrift.contains(mark)) return schrift;
  const qsizetype at = schrift.indexOf(u'<');
  return at < 0 ? schrift + mark : schrift.left(at) + mark + schrift.mid(at);
}

QString Piece(const QString& text, int number) { return text.section(u'-', number, number).trimmed(); }

// Colours, as `color` reads them, and positions.
template <typename Color>
void Put_Numbers(EntryRow& row, const QStringList& fields, Color color) {
  row.VG = color(Number(fields[field::vg]));
  row.HG = color(Number(fields[field::hg]));
  row.RA = color(Number(fields[field::ra]));
  row.Xmap = Number(fields[field::x]);
  row.Ymap = Number(fields[field::y]);
  row.Xline = Number(fields[field::x2]);
  row.Yline = Number(fields[field::y2]);
}

// A point on the map, whatever the line stands for.
EntryRow Plain_Entry(const QStringList& fields) {
  EntryRow row;
  row.ID = fields[field::head].contains(QLatin1String("Text")) ? QStringLiteral("Text") : fields[field::head];
  row.Eintrag = fields[field::eintrag];
  row.Schrift = With_Transparency(fields[field::schrift], fields[field::stroke]);
  row.Groesse = 10;
  Put_Numbers(row, fields, [](int number) { return number > 0 ? number - 1 : number; });
  const int typ = Number(fields[field::typ]);
  row.Typ = To_Int16(typ - 10);
  if (typ == 50) row.Typ = static_cast<int>(EntryKind::Picture);
  if (std::abs(typ) == 60) {
    row.Typ = static_cast<int>(EntryKind::Scale);
    row.ID = QStringLiteral("Maßstab");
    row.Groesse = Val(Piece(row.Eintrag, 0));
    row.Eintrag = Piece(row.Eintrag, 1);
    row.Schrift = QStringLiteral("Arial");
  }
  return row;
}

// All of a file, line after line.
class WholeReader {
 public:
  ExchangeContent content;

  void Read(const QString& line, int number) {
    if (line.trimmed().isEmpty() || Is_Title(line)) return;
    const QStringList fields = line.trimmed().split(u';');
    if (fields.size() >= fieldCount) return Begin(fields, line, number);
    if (!open) return Refuse(number, line, QStringLiteral("Die Zeile gehört zu keinem Eintrag."));
    if (line.contains(u'#')) return Take_Style(line.trimmed().split(u'#'));
    Take_Points(line, number);
  }

  void Finish() {
    if (open) Close();
  }

 private:
  void Refuse(int line, const QString& text, const QString& reason) {
    content.refused.push_back({line, text.left(80), reason});
  }

  void Begin(const QStringList& fields, const QString& line, int number) {
    Finish();
    entry = {};
    entry.line = number;
    lineText = line;
    style.clear();
    try {
      Fill(fields);
      open = true;
    } catch (const Error& error) {
      Refuse(number, line, Error_Text(error));
    }
  }

  void Fill(const QStringList& fields) {
    EntryRow& row = entry.row;
    const QString& head = fields[field::head];
    row.Eintrag = Text_To_Eintrag(fields[field::eintrag]);
    row.Schrift = Turned_Back(fields[field::schrift]);
    row.Groesse = Val_Comma(fields[field::groesse]);
    Put_Numbers(row, fields, [](int number) { return fluraxColor(number).toInt(); });
    row.Typ = Kind_Back(Number(fields[field::typ]), row.Xline);
    row.ID = Id_Back(head);
    if (row.Typ >= 0 && row.Typ <= 4) row.Groesse /= 2;
    const EntryType type = EntryType::Parse(row.Typ);
    // Lines and areas share the mark with their transparent filling, which says more.
    if (type.IsText() || (type.IsPolygon() && row.Yline >= 0))
      row.Schrift = With_Transparency(row.Schrift, fields[field::stroke]);
    if (type.Kind() == EntryKind::Scale) {
      row.ID = QStringLiteral("Maßstab");
      const QString text = row.Eintrag;
      row.Schrift = Piece(text, 0);
      row.Eintrag = Piece(text, 1);
    }
    if (type.IsFigure()) row.Schrift = QStringLiteral("F 0");
  }

  static QString Turned_Back(const QString& schrift) {
    const qsizetype at = schrift.indexOf(u'<');
    if (at < 0) return schrift;
    const double angle = std::fmod(360 - std::fmod(Val(QStringView(schrift).mid(at + 1)), 360), 360);
    return schrift.left(at + 1) + Number_Text(angle);
  }

  static int Kind_Back(int typ, int footX) {
    switch (typ) {
      case 10:
        return 0;
      case 11:
        return footX <= 0 ? 0 : 1;
      case 12:
        return 3;
      case 13:
        return 2;
      case 50:
        return static_cast<int>(EntryKind::Picture);
      case 60:
      case -60:
        return static_cast<int>(EntryKind::Scale);
      case 20:
      case 21:
      case 22:
      case 23:
        return typ ^ 1;
      default:
        return typ;
    }
  }

  static QString Id_Back(const QString& head) {
    if (head.startsWith(QLatin1String("T-")) || head.contains(QLatin1String("Text"))) return QStringLiteral("Text");
    if (head.startsWith(QLatin1String("B-"))) return QStringLiteral("Bild");
    if (head.startsWith(QLatin1String("G-"))) return QStringLiteral("Figur");
    if (head.startsWith(QLatin1String("L-"))) return QStringLiteral("Linie");
    if (head.startsWith(QLatin1String("F-"))) return QStringLiteral("Flaeche");
    return head;
  }

  void Take_Style(const QStringList& fields) {
    const EntryType type = EntryType::Parse(entry.row.Typ);
    if (type.IsPolygon() && fields.size() > 6) style = fields[6];
    if (type.IsFigure() && fields.size() > 4) {
      const FillCode fill{static_cast<int>(Val(fields[4]))};
      entry.row.Schrift = fill.ToSchrift();
    }
  }

  void Take_Points(const QString& line, int number) {
    try {
      for (const QString& point : line.trimmed().split(u'/', Qt::SkipEmptyParts)) {
        const qsizetype comma = point.indexOf(u',');
        if (comma < 0) Raise(errors::typeMismatch);
        const int x = Number(point.left(comma));
        if (x < stopLimit) Raise(errors::overflow);
        entry.vertices.emplace_back(x, Number(point.mid(comma + 1)));
      }
    } catch (const Error& error) {
      entry.vertices.clear();
      Refuse(number, line, QStringLiteral("Punkte: ") + Error_Text(error));
    }
  }

  void Close() {
    open = false;
    EntryRow& row = entry.row;
    const EntryType type = EntryType::Parse(row.Typ);
    const bool corners = type.HasVertices() || type.IsFigure();
    if (corners && entry.vertices.size() < 2)
      return Refuse(entry.line, lineText, QStringLiteral("Zu diesem Objekt fehlen die Punkte."));
    if (type.IsFigure() && !type.IsFreeFigure()) {
      const QPoint last = entry.vertices[entry.vertices.size() > 2 ? 2 : 1];
      row.Xline = last.x() - row.Xmap;
      row.Yline = last.y() - row.Ymap;
      entry.vertices.clear();
    }
    if (type.IsPolygon()) {
      EntryId id = EntryId::Parse(row.ID);
      if (id.IsLine()) id.ends = Line_Ends_Of(style);
      row.ID = id.ToText();
    }
    content.entries.push_back(std::move(entry));
  }

  ExchangeEntry entry;
  QString lineText, style;
  bool open = false;
};

}  // namespace

ExchangeContent Read_Exchange_Entries(const QStringList& lines) {
  ExchangeContent content;
  content.empty = true;
  int number = 0;
  for (const QString& raw : lines) {
    ++number;
    const QString line = raw.trimmed();
    if (line.size() < 5 || Is_Title(line)) continue;
    content.empty = false;
    const QStringList fields = line.split(u';');
    QString reason = QStringLiteral("Die Zeile hat weniger als 13 Felder.");
    try {
      if (fields.size() >= fieldCount) {
        content.entries.push_back({Plain_Entry(fields), {}, number});
        continue;
      }
    } catch (const Error& error) {
      reason = Error_Text(error);
    }
    content.refused.push_back({number, line.left(80), reason});
    content.ended = true;
    break;
  }
  return content;
}

ExchangeContent Read_Exchange_All(const QStringList& lines, const std::function<bool()>& goOn) {
  WholeReader reader;
  int number = 0;
  for (const QString& line : lines) {
    if (goOn && !goOn()) break;
    reader.Read(line, ++number);
  }
  reader.Finish();
  reader.content.empty = reader.content.entries.empty() && reader.content.refused.empty();
  return std::move(reader.content);
}
