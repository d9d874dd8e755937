#include "import/pcx5.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cmath>

#include "coordinates/degree_text.h"
#include "coordinates/net_system.h"

namespace {

using Kind = ReferenceSystem::Kind;

constexpr int mostShownFault = 40;  // characters of a text in a fault
constexpr int firstLines = 200;     // by which a file is judged

// Blanks are taken out; what is left must be a number without exponent. The first "," is its decimal sign.
std::optional<double> Plain_Number(QStringView text) {
  std::array<char, 64> digits{};
  size_t length = 0;
  bool point = false;
  for (const QChar sign : text) {
    if (sign.isSpace()) continue;
    char16_t c = sign.unicode();
    if (c == u',') c = u'.';
    const bool signAtStart = length == 0 && (c == u'+' || c == u'-');
    if (!(c >= u'0' && c <= u'9') && !signAtStart && (c != u'.' || point)) return std::nullopt;
    point = point || c == u'.';
    if (length + 1 >= digits.size()) return std::nullopt;
    digits[length++] = static_cast<char>(c);
  }
  bool good = false;
  const double value = QByteArray::fromRawData(digits.data(), static_cast<qsizetype>(length)).toDouble(&good);
  return good && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<double> Unpacked(QStringView number, DegreeWriting writing) {
  const auto read = Plain_Number(number);
  if (!read) return std::nullopt;
  const double value = std::fabs(*read);
  if (writing == DegreeWriting::Unknown) {
    constexpr double mostDegrees = 360, mostMinutes = 36000;
    writing = value < mostDegrees   ? DegreeWriting::Decimal
              : value < mostMinutes ? DegreeWriting::Minutes
                                    : DegreeWriting::Seconds;
  }
  double degrees = value, minutes = 0, seconds = 0;
  if (writing == DegreeWriting::Minutes) {
    degrees = std::floor(value / 100);
    minutes = value - degrees * 100;
  } else if (writing == DegreeWriting::Seconds) {
    degrees = std::floor(value / 10000);
    minutes = std::floor(value / 100) - degrees * 100;
    seconds = value - std::floor(value / 100) * 100;
  }
  if (minutes >= 60 || seconds >= 60) return std::nullopt;
  const double whole = degrees + minutes / 60 + seconds / 3600;
  return std::signbit(*read) ? -whole : whole;
}

// Degrees, minutes and seconds apart: by their marks, or by blanks, which stand for the marks.
std::optional<double> Apart(QStringView text) {
  static const QRegularExpression pattern(
      QStringLiteral("^([+-]?\\d{1,3})\\s*[°\\s]\\s*(\\d{1,2}(?:[.,]\\d*)?)\\s*(?:['′\\s]\\s*"
                     "(?:(\\d{1,2}(?:[.,]\\d*)?)\\s*[\"¨″']*)?)?$"));
  const auto match = pattern.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const auto part = [&match](int index) { return Plain_Number(match.capturedView(index)).value_or(0); };
  const double minutes = part(2), seconds = part(3);
  if (minutes >= 60 || seconds >= 60) return std::nullopt;
  const double whole = std::fabs(part(1)) + minutes / 60 + seconds / 3600;
  return match.capturedView(1).startsWith(u'-') ? -whole : whole;
}

enum class Field { Name, Zone, East, North, Comment, Other };
constexpr size_t fieldCount = 6;

struct Column {
  Field field = Field::Other;
  qsizetype start = 0;
};

Field Field_Of(QStringView word) {
  const auto starts = [word](std::initializer_list<const char*> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(), [word](const char* beginning) {
      return word.startsWith(QString::fromUtf8(beginning), Qt::CaseInsensitive);
    });
  };
  if (starts({"IDNT", "Name"})) return Field::Name;
  if (starts({"Zne", "Zone"})) return Field::Zone;
  if (starts({"LON", "East", "Rechtswert", "Läng", "Laeng"})) return Field::East;
  if (starts({"LAT", "North", "Hochwert", "Breite"})) return Field::North;
  if (starts({"DESC", "Bemerk", "Komment"})) return Field::Comment;
  return Field::Other;
}

// Calls the work with start and end of every word behind the kind of the record.
template <typename Work>
void For_Each_Word(QStringView line, Work&& work) {
  for (qsizetype i = 1; i < line.size();) {
    while (i < line.size() && line[i].isSpace()) ++i;
    const qsizetype start = i;
    while (i < line.size() && !line[i].isSpace()) ++i;
    if (i > start) work(start, i);
  }
}

std::vector<Column> Columns_Of(QStringView line) {
  std::vector<Column> columns;
  bool remark = false;
  For_Each_Word(line, [&](qsizetype start, qsizetype end) {
    remark = remark || line[start] == u';';
    if (!remark) columns.push_back({Field_Of(line.mid(start, end - start)), start});
  });
  const auto has = [&columns](Field field) {
    return std::any_of(columns.begin(), columns.end(), [field](const Column& column) { return column.field == field; });
  };
  if (!has(Field::East) || !has(Field::North)) columns.clear();
  return columns;
}

struct Fields {
  std::array<QStringView, fieldCount> text;
  QStringView operator[](Field field) const { return text[static_cast<size_t>(field)]; }
  QStringView& operator[](Field field) { return text[static_cast<size_t>(field)]; }
};

// Every word belongs whole to the column in which most of it lies: headings stand a little beside their data.
Fields Cut(QStringView line, const std::vector<Column>& columns) {
  struct Span {
    qsizetype from = -1, to = -1;
  };
  std::array<Span, fieldCount> spans;
  size_t first = 0;
  For_Each_Word(line, [&](qsizetype start, qsizetype end) {
    const auto ends = [&](size_t i) { return i + 1 < columns.size() ? columns[i + 1].start : line.size(); };
    while (first + 1 < columns.size() && ends(first) <= start) ++first;
    size_t best = first;
    qsizetype most = 0;
    for (size_t i = first; i < columns.size() && (i == first || columns[i].start < end); ++i) {
      const qsizetype from = i == 0 ? 0 : columns[i].start;
      const qsizetype inside = std::min(end, ends(i)) - std::max(start, from);
      if (inside <= most) continue;
      most = inside;
      best = i;
    }
    Span& span = spans[static_cast<size_t>(columns[best].field)];
    if (span.from < 0 || columns[best].field == Field::Other) span.from = start;
    span.to = end;
  });
  Fields fields;
  for (size_t i = 0; i < fieldCount; ++i)
    if (spans[i].from >= 0) fields.text[i] = line.mid(spans[i].from, spans[i].to - spans[i].from);
  return fields;
}

// A name too long for its column shifts the line: the coordinates are known by their shape as well.
bool Find_By_Shape(QStringView line, Kind kind, Fields& fields) {
  static const QRegularExpression degrees(
      QStringLiteral("\\s([NS]\\d+(?:[.,]\\d+)?)\\s+([EWO]\\d+(?:[.,]\\d+)?)(?=\\s|$)"));
  static const QRegularExpression metres(
      QStringLiteral("\\s(\\d{1,2} ?[C-Xc-x])\\s+(\\d{5,7}(?:[.,]\\d+)?)\\s+(\\d{4,8}(?:[.,]\\d+)?)(?=\\s|$)"));
  const bool geographic = kind == Kind::Geographic;
  const auto match = (geographic ? degrees : metres).match(line);
  if (!match.hasMatch()) return false;
  fields = {};
  fields[Field::Name] = line.mid(1, match.capturedStart() - 1).trimmed();
  fields[geographic ? Field::North : Field::Zone] = line.mid(match.capturedStart(1), match.capturedLength(1));
  fields[Field::East] = line.mid(match.capturedStart(2), match.capturedLength(2));
  if (!geographic) fields[Field::North] = line.mid(match.capturedStart(3), match.capturedLength(3));
  return true;
}

QString Shown(QStringView text) {
  return u'"' +
         (text.size() > mostShownFault ? text.left(mostShownFault).toString() + QStringLiteral("...")
                                       : text.toString()) +
         u'"';
}

bool Same_System(const GivenSystem& one, const GivenSystem& other) {
  if (one == other) return true;
  const auto datum = Datum_Of(one.datum);
  return one.kind == other.kind && datum && datum == Datum_Of(other.datum);
}

class Pcx5Reader {
 public:
  GpsFile Read(QStringView text) {
    for (qsizetype start = 0; start < text.size();) {
      qsizetype end = start;
      while (end < text.size() && text[end] != u'\r' && text[end] != u'\n') ++end;
      ++number;
      Take_Line(text.mid(start, end - start));
      if (end + 1 < text.size() && text[end] == u'\r' && text[end + 1] == u'\n') ++end;
      start = end + 1;
    }
    if (file.waypoints.empty() && file.tracks.empty()) file.system = now;
    if (columns.empty() && !file.faults.empty())
      file.remark =
          QStringLiteral("Es fehlt die Kopfzeile mit den Spalten der Koordinaten (H). Bitte überprüfen Sie die Datei.");
    return std::move(file);
  }

 private:
  void Take_Line(QStringView line) {
    if (line.trimmed().isEmpty()) {
      breaks = true;
      return;
    }
    const char16_t kind = line[0].unicode();
    if (kind == u'<') return Name_Track(line.mid(1));
    if (line.size() > 1 && !line[1].isSpace()) return;  // no record, but any text
    const QStringView rest = line.mid(1).trimmed();
    switch (kind) {
      case u'H':
        return Take_Heading(line, rest);
      case u'I':
        pcx5 = pcx5 || rest.contains(QLatin1String("PCX5"), Qt::CaseInsensitive);
        return;
      case u'D':
        now.datum = rest.toString();
        return;
      case u'U':
        return Take_Units(rest);
      case u'M':
        return Take_Kind_Or_Datum(line, rest);
      case u'W':
      case u'T':
        return Take_Record(line, kind == u'W');
      default:
        return;
    }
  }

  void Name_Track(QStringView name) {
    name = name.trimmed();
    if (name.endsWith(u'>')) name = name.chopped(1).trimmed();
    trackName = name.toString();
    breaks = true;
  }

  void Take_Heading(QStringView line, QStringView rest) {
    breaks = true;
    if (rest == QLatin1String("TN") || rest.startsWith(QLatin1String("TN ")) || rest.startsWith(QLatin1String("TN\t")))
      return Name_Track(rest.mid(2));
    auto found = Columns_Of(line);
    if (!found.empty()) columns = std::move(found);
  }

  void Take_Units(QStringView rest) {
    const auto holds = [rest](const char* mark) { return rest.contains(QLatin1String(mark), Qt::CaseInsensitive); };
    if (holds("UTM")) {
      now.kind = Kind::Utm;
      return;
    }
    if (!holds("LAT") && !holds("DEG") && !holds("DM")) return;
    now.kind = Kind::Geographic;
    writing = holds("DEG") || holds("DDD") ? DegreeWriting::Decimal
              : holds("DMS")               ? DegreeWriting::Seconds
              : holds("DM")                ? DegreeWriting::Minutes
                                           : DegreeWriting::Unknown;
  }

  // In the dialect of our own the kind of coordinates, else the datum: from column 6 on, for 21 columns.
  void Take_Kind_Or_Datum(QStringView line, QStringView rest) {
    constexpr qsizetype datumFrom = 5, datumLength = 21;
    const auto holds = [rest](const char* mark) { return rest.contains(QString::fromUtf8(mark), Qt::CaseInsensitive); };
    if (holds("WGS") && holds("84")) {
      now.datum = Datum_Name(Datum::Wgs84);
    } else if (pcx5) {
      now.datum = line.mid(datumFrom, datumLength).trimmed().toString();
    } else if (holds("UTM")) {
      now.kind = Kind::Utm;
    } else if (holds("GAU") || rest == QLatin1String("GK")) {
      now.kind = Kind::GaussKrueger;
    } else {
      now.kind = Kind::Geographic;
      writing = holds("DDD") || holds("DEG") ? DegreeWriting::Decimal : DegreeWriting::Unknown;
    }
  }

  void Refuse(QString text) { file.faults.push_back({number, std::move(text)}); }

  void Take_Record(QStringView line, bool waypoint) {
    if (columns.empty()) return Refuse(QStringLiteral("steht vor der Kopfzeile mit den Spalten"));
    Fields fields = Cut(line, columns);
    GivenPlace place;
    QString flaw = Read_Place(fields, place);
    if (!flaw.isEmpty() && Find_By_Shape(line, now.kind, fields)) flaw = Read_Place(fields, place);
    if (!flaw.isEmpty()) return Refuse(fields[Field::Name].isEmpty() ? flaw : Shown(fields[Field::Name]) + u' ' + flaw);
    // All places of a file are placed in one system.
    if (file.waypoints.empty() && file.tracks.empty()) file.system = now;
    if (!Same_System(now, file.system))
      return Refuse(Shown(fields[Field::Name]) + QStringLiteral(" hat eine andere Art von Koordinaten oder ein anderes "
                                                                "Kartendatum als die ersten der Datei"));
    if (waypoint) {
      file.waypoints.push_back({number, fields[Field::Name].toString(), fields[Field::Comment].toString(), place});
      return;
    }
    const QStringView name = fields[Field::Name];
    if (!name.isEmpty() && name != trackName) trackName = name.toString();
    Add_Track_Point(file, trackName, {number, place}, breaks);
  }

  // Why it cannot be read; "" if it could.
  QString Read_Place(const Fields& fields, GivenPlace& place) const {
    const bool geographic = now.kind == Kind::Geographic;
    const QStringView east = fields[Field::East], north = fields[Field::North];
    const auto x = geographic ? Read_Gps_Degrees(east, writing) : Plain_Number(east);
    const auto y = geographic ? Read_Gps_Degrees(north, writing) : Plain_Number(north);
    const auto unread = [](const QString& what, QStringView text) {
      return QStringLiteral("%1 %2 ist keine lesbare Koordinate").arg(what, Shown(text));
    };
    if (!y) return unread(geographic ? QStringLiteral("Breite") : QStringLiteral("Hochwert"), north);
    if (!x) return unread(geographic ? QStringLiteral("Länge") : QStringLiteral("Rechtswert"), east);
    place = {*x, *y};
    if (geographic) return Degree_Flaw(*x, *y);
    return Read_Zone(fields[Field::Zone], place);
  }

  // "32U", "32 U", "U32": the number, and a letter that says on which side of the equator.
  QString Read_Zone(QStringView text, GivenPlace& place) const {
    constexpr int lastZone = 60;
    QChar band;
    int zone = 0, digits = 0;
    for (const QChar sign : text) {
      if (sign.isLetter()) band = sign.toUpper();
      if (sign >= u'0' && sign <= u'9' && ++digits <= 3) zone = zone * 10 + (sign.unicode() - u'0');
    }
    if (digits > 0 && (zone < 1 || zone > lastZone))
      return QStringLiteral("Zone %1 gibt es nicht").arg(text.toString());
    place.zone = zone;
    place.southern = now.kind == Kind::Utm && band >= u'C' && band <= u'M';
    return {};
  }

  GpsFile file;
  GivenSystem now;  // of the lines that follow
  std::vector<Column> columns;
  QString trackName;
  DegreeWriting writing = DegreeWriting::Unknown;
  int number = 0;
  bool pcx5 = false, breaks = true;
};

}  // namespace

std::optional<double> Read_Gps_Degrees(QStringView text, DegreeWriting writing) {
  text = text.trimmed();
  double sign = 1;
  if (!text.isEmpty() && text[0].isLetter()) {
    const QChar side = text[0].toUpper();
    if (!QStringView(u"NSEWO").contains(side)) return std::nullopt;
    if (side == u'S' || side == u'W') sign = -1;
    text = text.mid(1).trimmed();
  }
  const bool apart = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace() || c == u'°'; });
  auto degrees = apart ? Apart(text) : Unpacked(text, writing);
  if (apart && !degrees && text.endsWith(u'°')) degrees = Plain_Number(text.chopped(1));
  if (!degrees) return std::nullopt;
  return sign * *degrees;
}

GpsFile Read_Pcx5(QStringView text) { return Pcx5Reader().Read(text); }

bool Is_Pcx5(QStringView text) {
  int lines = 0;
  bool heading = false;
  for (qsizetype start = 0; start < text.size() && lines < firstLines; ++lines) {
    qsizetype end = start;
    while (end < text.size() && text[end] != u'\r' && text[end] != u'\n') ++end;
    const QStringView line = text.mid(start, end - start);
    start = end + 1;
    if (line.size() < 2 || !line[1].isSpace()) continue;
    if (line[0] == u'I' && line.contains(QLatin1String("PCX5"))) return true;
    heading = heading || (line[0] == u'H' && !Columns_Of(line).empty());
    if (heading && (line[0] == u'W' || line[0] == u'T')) return true;
    if (line[0] == u'H' && heading) return true;
  }
  return false;
}
