#include "import/overlay.h"

#include <cmath>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/text.h"

namespace {

constexpr int notUsable = 5000, pixelSizes = 100;
constexpr int pictureKind = 1, triangleKind = 7;
constexpr double largestNumber = 1e6;

// A number of the file; nothing for every other text.
std::optional<double> Number_Of(const QString& value) {
  const auto number = Number_Typed(value);
  return number && std::fabs(*number) < largestNumber ? number : std::nullopt;
}

// One object while its lines come. What is missing is found when it ends: the order of the keys is free.
class Reader {
 public:
  OverlayFile Read(const QString& text) {
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
      const bool end = i == text.size();
      if (!end && text[i] != u'\n' && text[i] != u'\r') continue;
      ++number;
      Read_Line(QStringView(text).mid(start, i - start).trimmed());
      if (!end && text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
      start = i + 1;
    }
    Close();
    return std::move(file);
  }

 private:
  void Fault(const QString& text, int line) { file.faults.push_back({line, text}); }

  void Read_Line(QStringView line) {
    if (line.startsWith(u'[')) {
      Close();
      inObject = line.contains(QLatin1String("[Symbol"));
      return Begin();
    }
    const qsizetype sign = line.indexOf(u'=');
    if (!inObject || sign < 0) return;
    QString key;
    for (const QChar c : line.left(sign))
      if (!c.isDigit() && !c.isSpace()) key += c;
    Take(key, line.mid(sign + 1).trimmed().toString());
  }

  void Begin() {
    record = {};
    record.line = number;
    kind.reset();
    longitude.reset();
  }

  void Take(const QString& key, const QString& value) {
    const auto holds = [&key](const char* part) { return key.contains(QLatin1String(part)); };
    const auto whole = [&value] { return static_cast<int>(Number_Of(value).value_or(0)); };
    if (holds("Typ")) {
      if (kind) {
        Close();
        Begin();
      }
      kind = whole();
    } else if (holds("Col")) {
      record.color = whole();
    } else if (holds("Area")) {
      record.fill = whole();
    } else if (holds("Size")) {
      const int size = whole();
      record.size = size > pixelSizes ? size - pixelSizes : size;
    } else if (holds("Font")) {
      record.font = whole();
    } else if (holds("Text")) {
      record.text = value;
    } else if (holds("XKoord")) {
      Take_Longitude(value);
    } else if (holds("YKoord")) {
      Take_Latitude(value);
    } else if (holds("Width")) {
      record.width = Number_Of(value).value_or(0);
    } else if (holds("Height")) {
      record.height = Number_Of(value).value_or(0);
    }
  }

  void Take_Longitude(const QString& value) {
    longitude = Number_Of(value);
    if (!longitude) Fault(QStringLiteral("keine Länge: ") + value.left(30), number);
  }

  void Take_Latitude(const QString& value) {
    const auto latitude = Number_Of(value);
    if (!latitude) Fault(QStringLiteral("keine Breite: ") + value.left(30), number);
    if (longitude && latitude) record.points.emplace_back(*longitude, *latitude);
    longitude.reset();
  }

  void Close() {
    if (!kind) return;
    const int wanted = *kind;
    kind.reset();
    if (wanted == pictureKind || wanted == triangleKind) {
      ++file.passedOver;
      return;
    }
    if (wanted < static_cast<int>(OverlayKind::Text) || wanted > static_cast<int>(OverlayKind::Ellipse)) {
      ++file.unknown;
      return;
    }
    record.kind = static_cast<OverlayKind>(wanted);
    if (const QString why = Missing(); !why.isEmpty()) return Fault(why, record.line);
    file.records.push_back(std::move(record));
  }

  QString Missing() const {
    const bool shape = record.kind == OverlayKind::Line || record.kind == OverlayKind::Area;
    if (record.points.empty()) return QStringLiteral("Objekt ohne Koordinaten");
    if (shape && record.points.size() < 2) return QStringLiteral("Linie oder Fläche mit einem einzigen Punkt");
    if (record.kind == OverlayKind::Area && record.points.size() < 3)
      return QStringLiteral("Fläche mit weniger als drei Punkten");
    if (record.kind == OverlayKind::Text && record.text.isEmpty()) return QStringLiteral("Text ohne Inhalt");
    const bool figure = record.kind == OverlayKind::Rectangle || record.kind == OverlayKind::Ellipse;
    if (figure && !(record.width > 0 && record.height > 0)) return QStringLiteral("Figur ohne Breite oder Höhe");
    return {};
  }

  OverlayFile file;
  OverlayRecord record;
  std::optional<int> kind;
  std::optional<double> longitude;
  int number = 0;
  bool inObject = false;
};

}  // namespace

OverlayFile Read_Overlay(const QByteArray& bytes) {
  if (bytes.startsWith("DOMGVCRD"))
    Raise(notUsable,
          QStringLiteral("Dies ist ein binäres Overlay. Bitte speichern Sie es in dem Programm, aus dem es kommt, als "
                         "Textdatei (ASCII-Overlay)."));
  OverlayFile file = Reader().Read(Decode_Text(bytes));
  if (file.records.empty() && file.faults.empty() && file.passedOver + file.unknown == 0)
    Raise(notUsable, QStringLiteral("Die Datei enthält keine Overlay-Objekte. Bitte überprüfen Sie die Datei."));
  return file;
}
