#include "store/entry_id.h"

#include <algorithm>
#include <cmath>

#include "platform/text.h"

namespace {

// The line-end code, counted from its "-": +2 shape, +3 filled, +4 start, +5 end, +6 part, +7 "L" and three characters,
// +11 "B" and three characters.
constexpr qsizetype longestId = 255;
constexpr qsizetype shapeAt = 2, flagsAt = 3, lengthAt = 7, widthAt = 11;

QChar Shape_Letter(LineEnds::Shape shape) {
  switch (shape) {
    case LineEnds::Shape::Circle:
      return u'C';
    case LineEnds::Shape::Rectangle:
      return u'R';
    case LineEnds::Shape::Arrow:
      break;
  }
  return u'P';
}

// Of an end mark; "9e9" is a number as well.
double Sound_Length(double mm) { return std::clamp(mm, 1.0, 99.0); }

// Millimetres in three characters: "5.0", "12.".
QString Size_Text(double mm) {
  const double tenths = std::round(Sound_Length(mm) * 10) / 10;
  if (tenths < 10) return QString::number(tenths, 'f', 1);
  return QString::number(std::lround(tenths)) + u'.';
}

QString Ends_Text(const LineEnds& ends) {
  const auto flag = [](bool on) { return on ? u'1' : u'0'; };
  QString text = QStringLiteral(" - ");
  text += Shape_Letter(ends.shape);
  text += flag(ends.filled);
  text += flag(ends.atStart);
  text += flag(ends.atEnd);
  text += flag(ends.partial);
  text += u'L' + Size_Text(ends.lengthMm) + u'B' + Size_Text(ends.widthMm);
  return text;
}

// Reads the code behind the "-" that `text` begins with; nothing if it is none.
std::optional<LineEnds> Read_Ends(QStringView text) {
  if (text.size() <= widthAt + 1 || text[1] != u' ' || text[lengthAt] != u'L' || text[widthAt] != u'B') return {};
  if (!text[shapeAt].isLetter()) return {};
  const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
  const QStringView flags = text.mid(flagsAt, lengthAt - flagsAt);
  if (!std::all_of(flags.begin(), flags.end(), isDigit)) return {};
  LineEnds ends;
  ends.shape = text[shapeAt] == u'C'   ? LineEnds::Shape::Circle
               : text[shapeAt] == u'R' ? LineEnds::Shape::Rectangle
                                       : LineEnds::Shape::Arrow;
  ends.filled = flags[0] != u'0';
  ends.atStart = flags[1] == u'1';
  ends.atEnd = flags[2] == u'1';
  ends.partial = flags[3] == u'1';
  ends.lengthMm = Sound_Length(Val_Comma(text.mid(lengthAt + 1, 3).toString()));
  ends.widthMm = Sound_Length(Val_Comma(text.mid(widthAt + 1, 3).toString()));
  return ends;
}

QString Canonical(const EntryId& id) {
  QString text;
  text.reserve(id.name.size() + 24);
  if (id.inactive) text += u'-';
  text += id.name;
  if (id.ends) text += Ends_Text(*id.ends);
  if (!id.assignment.isEmpty()) text += u'>' + id.assignment;
  if (id.hasGroup || !id.group.isEmpty()) text += u'<' + id.group;
  return text;
}

// What stands behind `mark`, up to the other mark.
QString Suffix(QStringView text, QChar mark, QChar other) {
  const qsizetype start = text.indexOf(mark);
  if (start < 0) return {};
  const qsizetype end = text.indexOf(other, start);
  return text.mid(start + 1, end < 0 ? -1 : end - start - 1).toString();
}

qsizetype First_Suffix(QStringView text) {
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'>' || text[i] == u'<') return i;
  }
  return text.size();
}

}  // namespace

EntryId EntryId::Parse(const QString& stored) {
  EntryId id;
  QStringView text(stored);
  if (text.startsWith(u'-')) {
    id.inactive = true;
    text = text.mid(1);
  }
  if (text.size() > longestId) {
    id.name = text.toString();  // none of the program's own: there is nothing in it to be found
    return id;
  }
  const qsizetype cut = First_Suffix(text);
  const QStringView suffixes = text.mid(cut);
  text = text.left(cut);
  if (!suffixes.isEmpty()) {
    id.assignment = Suffix(suffixes, u'>', u'<');
    id.group = Suffix(suffixes, u'<', u'>');
    id.hasGroup = suffixes.contains(u'<');
  }
  id.name = text.toString();
  if (id.IsLine() || id.IsArea()) {
    const qsizetype dash = text.indexOf(u'-');
    if (dash > 0) id.ends = Read_Ends(text.mid(dash));
    if (id.ends) id.name = text.left(dash).trimmed().toString();
  }
  if ((!suffixes.isEmpty() || id.ends) && Canonical(id) != stored) id.asStored = stored;
  return id;
}

QString EntryId::ToText() const {
  if (!asStored.isEmpty() && Parse(asStored) == *this) return asStored;
  return Canonical(*this);
}

QString EntryId::TableName() const {
  QStringView text = QStringView(name).trimmed();
  if (!inactive && text.startsWith(u'-')) text = text.mid(1);
  const qsizetype dash = text.indexOf(u'-', 1);
  if (dash > 0) text = text.left(dash);
  return text.trimmed().toString();
}

bool EntryId::IsLine() const { return name.contains(QLatin1String("Lin")); }
bool EntryId::IsArea() const { return name.contains(QLatin1String("Fl")); }
bool EntryId::IsFigure() const { return name.contains(QLatin1String("Fig")); }
bool EntryId::IsNorthArrow() const { return name.contains(QLatin1String("Np")); }
bool EntryId::IsHeader() const { return !inactive && name.startsWith(u'!'); }

bool EntryId::HasReferenceDigit() const {
  return !name.isEmpty() && name[0] >= u'1' && name[0] <= u'4' && name.contains(QLatin1String("Text"));
}

EntryId EntryId::WithoutReferenceDigit() const {
  EntryId id = *this;
  if (HasReferenceDigit()) id.name.remove(0, 1);
  return id;
}

int EntryId::Number() const {
  const QString table = TableName();
  for (const QLatin1String word : {QLatin1String("Linie"), QLatin1String("Flaeche"), QLatin1String("Figur")}) {
    if (!table.startsWith(word)) continue;
    const QStringView rest = QStringView(table).mid(word.size()).trimmed();
    if (rest.isEmpty() || !rest[0].isDigit()) return -1;
    return static_cast<int>(std::min(Val(rest), 1e9));
  }
  return -1;
}
