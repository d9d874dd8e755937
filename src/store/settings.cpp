#include "store/settings.h"

#include <QRegularExpression>
#include <optional>

#include "platform/text.h"
#include "state/events.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/file_names.h"

namespace {
const QLatin1String tipsKey("Tipps"), barKey("TLB:"), areaKey("FL:"), displayKey("DGS:"), paintKey("MPG:");

QString Ini_File() { return Program_File(QStringLiteral("Flurax.ini")); }

QStringList Ini_Lines() { return File_Exists(Ini_File()) ? Read_Lines(Ini_File()) : QStringList(); }

// Windows-1252; a path that this cannot hold makes it UTF-8, which is read as well.
void Write_Ini_Lines(const QStringList& lines) {
  const QString whole = lines.join(u'\n');
  if (From_1252(To_1252(whole)) == whole) return Write_Lines(Ini_File(), lines);
  Replace_File(Ini_File(), (lines.join(QLatin1String("\r\n")) + QLatin1String("\r\n")).toUtf8());
}

// The key of a line. One that begins with a key is of that key, whatever stands in its name or path; else the key may
// stand anywhere in it.
QLatin1String Key_Of(const QString& line) {
  const QString trimmed = line.trimmed();
  for (const QLatin1String key : {tipsKey, barKey, areaKey, displayKey, paintKey})
    if (trimmed.startsWith(key)) return key;
  for (const QLatin1String key : {tipsKey, barKey, areaKey, displayKey})
    if (line.contains(key)) return key;
  return {};
}

QString Behind(const QString& line, QLatin1String key) { return line.mid(line.indexOf(key) + key.size()).trimmed(); }

void Take_Toolbar_Place(const QString& name) {
  if (name == QLatin1String("vbAlignTop")) frmMDI.toolbarPlace = ToolbarPlace::Top;
  if (name == QLatin1String("vbAlignBottom")) frmMDI.toolbarPlace = ToolbarPlace::Bottom;
  if (name == QLatin1String("vbAlignLeft")) frmMDI.toolbarPlace = ToolbarPlace::Left;
  if (name == QLatin1String("vbAlignRight")) frmMDI.toolbarPlace = ToolbarPlace::Right;
}

void Take_Line(const QString& line) {
  const QLatin1String key = Key_Of(line);
  if (key == barKey) Take_Toolbar_Place(Behind(line, key));
  if (key == areaKey) frmMDI.HasTemplate = true;
  if (key == displayKey) frmMDI.Dgs = Val(line.mid(4));
  if (key == tipsKey && line.contains(QLatin1String("TippsNo"))) frmMDI.Tips = false;
  if (key == tipsKey && line.contains(QLatin1String("TippsYes"))) frmMDI.Tips = true;
}

// The new lines: the first line of the key is replaced, further ones of it would contradict and go, except templates.
QStringList With_Line(const QStringList& lines, const QString& line, QLatin1String key) {
  const QLatin1String heading("Templates:");
  QStringList result;
  bool placed = false, hasHeading = false;
  for (const QString& old : lines) {
    hasHeading = hasHeading || old.startsWith(heading);
    if (key.isEmpty() || Key_Of(old) != key) {
      result += old;
    } else if (!placed) {
      result += line;
      placed = true;
    } else if (key == areaKey) {
      result += old;
    }
  }
  if (placed) return result;
  if (key == areaKey && !hasHeading) result += heading;
  return result += line;
}

std::optional<int> Field_Of(const QString& line, QLatin1String key) {
  const qsizetype name = line.indexOf(u'|');
  const qsizetype start = name < 0 ? -1 : line.indexOf(key, name);
  if (start < 0) return std::nullopt;
  const qsizetype value = start + key.size();
  const qsizetype end = line.indexOf(u'|', value);
  try {
    return To_Int16(Val(QStringView(line).mid(value, end < 0 ? -1 : end - value)));
  } catch (const Error&) {
    return std::nullopt;
  }
}

QStringList Built_In_Tip(int number) {
  if (number == 1) {
    return {QStringLiteral("Willkommen bei Flurax!"),
            QStringLiteral("Öffnen Sie im Menü 'Karte' eine Karte: Die zuletzt benutzten stehen unten im Menü."),
            QStringLiteral("Ein Klick auf einen Eintrag wählt ihn aus, ein Doppelklick öffnet ihn zum Bearbeiten."),
            QStringLiteral("Mit Strg und dem Mausrad ändern Sie die Vergrößerung; F1 zeigt die Hilfe."),
            QStringLiteral("Im Menü 'Hilfe - Einstellungen' schalten Sie diese Tipps aus.")};
  }
  if (number == 2) {
    return {
        QStringLiteral("Diese Karte ist sehr groß."),
        QStringLiteral("Der Bildschirm zeigt Millionen Farben, und jede kostet Speicher: Eine Karte mit 256 Farben"),
        QStringLiteral("braucht nur ein Viertel davon, lässt sich schneller laden und sieht meist gleich aus."),
        QStringLiteral("Verringern Sie im Malprogramm die Zahl der Farben oder schneiden Sie den Rand ab."),
        QStringLiteral("Ein Scan mit 200 bis 300 Punkten pro Zoll genügt für die meisten Karten.")};
  }
  return {};
}
}  // namespace

void Read_Ini() {
  frmMDI.HasTemplate = false;
  try {
    for (const QString& line : Ini_Lines()) Take_Line(line);
  } catch (const Error&) {
    // A file that cannot be read leaves the defaults.
  }
}

bool Write_Ini(const QString& line) {
  const QLatin1String key = Key_Of(line);
  QString written = line;
  if (key == tipsKey) {
    const bool off = line.contains(QLatin1String("TippsNo"));
    written = QLatin1String("Tipps: ") + QLatin1String(off ? "TippsNo" : "TippsYes");
  }
  try {
    Write_Ini_Lines(With_Line(Ini_Lines(), written, key));
    return true;
  } catch (const Error& error) {
    // The display setting is written at every change of the window's size: no box each time.
    if (key == displayKey) return false;
    if (error.number == errors::noPermission)
      Show_No_Access(Ini_File());
    else
      Message_Box(QStringLiteral("Error: %1 ").arg(error.number) + error.text + u'\n' + Ini_File(), MsgButtons::Ok,
                  MsgIcon::Warning, QStringLiteral("Fehler"));
    return false;
  }
}

bool Read_Template(AreaTemplate& found) {
  found = AreaTemplate();
  bool isThere = false;
  try {
    for (const QString& line : Ini_Lines()) {
      if (!line.startsWith(areaKey)) continue;
      isThere = true;
      const auto take = [&line](const char* key, int& target, bool isColor) {
        const std::optional<int> value = Field_Of(line, QLatin1String(key));
        if (!value || (isColor && (*value < 0 || *value > 15))) return false;
        target = *value;
        return true;
      };
      [[maybe_unused]] const bool complete = take("VG=", found.VG, true) && take("HG=", found.HG, true) &&
                                             take("RA=", found.RA, false) && take("TX=", found.TX, false) &&
                                             take("SB=", found.SB, false);
      break;
    }
  } catch (const Error&) {
    isThere = false;
  }
  EntVG = found.VG;
  EntHG = found.HG;
  EntRA = found.RA;
  return isThere;
}

bool Write_Template(const QString& name, const AreaTemplate& area) {
  QString clean = name.trimmed();
  clean.replace(QRegularExpression(QStringLiteral("[|\\r\\n]")), QStringLiteral(" "));
  const bool written = Write_Ini(QStringLiteral("FL: %6|VG=%1|HG=%2|RA=%3|TX=%4|SB=%5|")
                                     .arg(area.VG)
                                     .arg(area.HG)
                                     .arg(area.RA)
                                     .arg(area.TX)
                                     .arg(area.SB)
                                     .arg(clean));
  Read_Ini();
  events.StateChanged.Emit();
  return written;
}

QStringList Paint_Programs() {
  QStringList programs;
  try {
    for (const QString& line : Ini_Lines())
      if (const QString path = line.mid(4).trimmed(); line.startsWith(paintKey) && !path.isEmpty()) programs += path;
  } catch (const Error&) {
    return {};
  }
  return programs;
}

void Set_Paint_Programs(const QStringList& programs) {
  QStringList lines = Ini_Lines();
  lines.removeIf([](const QString& line) { return line.startsWith(paintKey); });
  for (const QString& program : programs) lines += paintKey + QLatin1Char(' ') + program;
  Write_Ini_Lines(lines);
}

QStringList Tip_Text(int number) {
  static const QRegularExpression heading(QStringLiteral("^\\s*Tipp\\s+(\\d+)\\b"));
  QStringList tip;
  bool inside = false, found = false;
  try {
    const QString path = Program_File(QStringLiteral("Tipps.txt"));
    for (const QString& line : File_Exists(path) ? Read_Lines(path) : QStringList()) {
      if (const auto match = heading.match(line); match.hasMatch()) {
        inside = !found && match.captured(1).toInt() == number;
        found = found || inside;
      } else if (inside) {
        tip += line;
      }
    }
  } catch (const Error&) {
    found = false;
  }
  if (!found) return Built_In_Tip(number);
  while (!tip.isEmpty() && tip.last().trimmed().isEmpty()) tip.removeLast();
  return tip;
}
