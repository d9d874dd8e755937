#include <sqlite3.h>

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/database_inner.h"

// What SQLite reports, in German: what is wrong and what helps.

namespace database_inner {
namespace {

struct CodeText {
  int code;  // an extended result code, or a primary one for all of its kind that have no line
  const char16_t* text;
};

constexpr CodeText codeTexts[] = {
    {SQLITE_FULL, u"Datenträger voll. Schaffen Sie dort Platz und wiederholen Sie den Schritt."},
    {SQLITE_NOMEM, u"Nicht genügend Speicher. Schließen Sie andere Programme und wiederholen Sie den Schritt."},
    {SQLITE_TOOBIG, u"Ein Text ist zu lang für eine Zeile der Tabelle. Kürzen Sie ihn."},
    {SQLITE_IOERR,
     u"Fehler beim Lesen oder Schreiben des Datenträgers. Prüfen Sie den Datenträger und die Verbindung zu ihm; "
     u"sichern "
     u"Sie die Datei."},
    {SQLITE_IOERR_READ,
     u"Der Datenträger kann nicht gelesen werden. Prüfen Sie ihn und die Verbindung zu ihm; sichern Sie die Datei."},
    {SQLITE_IOERR_WRITE,
     u"Der Datenträger kann nicht beschrieben werden, der letzte Schritt ist nicht gespeichert. Prüfen Sie ihn und die "
     u"Verbindung zu ihm."},
    {SQLITE_IOERR_FSYNC,
     u"Der Datenträger bestätigt das Schreiben nicht, der letzte Schritt ist vielleicht nicht gespeichert. Prüfen Sie "
     u"ihn und die Verbindung zu ihm."},
    {SQLITE_IOERR_LOCK,
     u"Die Datei kann nicht gesperrt werden. Kopieren Sie sie auf einen Datenträger dieses Rechners."},
    {SQLITE_IOERR_CORRUPTFS, u"Das Dateisystem des Datenträgers ist beschädigt. Lassen Sie es prüfen."},
    {SQLITE_READONLY,
     u"Zugriff verweigert. Prüfen Sie die Rechte an der Datei und ihrem Ordner oder speichern Sie an einem anderen "
     u"Ort."},
    {SQLITE_READONLY_DBMOVED,
     u"Zugriff verweigert: Die Datei wurde verschoben, umbenannt oder gelöscht, während sie offen war. Bringen Sie sie "
     u"zurück an ihren Ort."},
    {SQLITE_PERM, u"Die Datenbankdatei kann nicht geöffnet werden. Prüfen Sie die Rechte an ihr und ihrem Ordner."},
    {SQLITE_CANTOPEN,
     u"Die Datenbankdatei kann nicht geöffnet werden. Prüfen Sie, ob der Datenträger erreichbar ist, und die Rechte an "
     u"der Datei und ihrem Ordner."},
    {SQLITE_BUSY,
     u"Die Datenbank wird bereits von einem anderen Programm benutzt. Schließen Sie sie dort und wiederholen Sie den "
     u"Schritt."},
    {SQLITE_CORRUPT,
     u"Die Datei ist beschädigt. Schließen Sie sie und lassen Sie die Tabelle reparieren; die beschädigte Datei bleibt "
     u"dabei erhalten."},
    {SQLITE_NOTADB,
     u"Die Datei ist beschädigt oder keine Tabelle dieses Programms. Lassen Sie die Tabelle reparieren."},
    {SQLITE_INTERRUPT, u"Die Anweisung wurde abgebrochen."},
    {SQLITE_SCHEMA, u"Die Tabellen wurden inzwischen geändert. Wiederholen Sie den Schritt."},
    {SQLITE_ABORT, u"Die Anweisung wurde abgebrochen, weil die Änderungen zurückgenommen wurden. Wiederholen Sie sie."},
    {SQLITE_AUTH, u"Diese Anweisung ist hier nicht erlaubt."},
    {SQLITE_NOLFS, u"Der Datenträger kann keine so große Datei aufnehmen. Speichern Sie an einem anderen Ort."},
};

struct MessageText {
  const char* pattern;
  const char16_t* text;
};

// From the narrower to the wider. %1 is what the pattern caught.
constexpr MessageText messageTexts[] = {
    {R"x(^near "+(.*?)"+: syntax error$)x", u"Die Anweisung wird bei \"%1\" nicht verstanden."},
    {R"x(^unrecognized token: "?(.*?)"?$)x", u"Die Anweisung wird bei \"%1\" nicht verstanden."},
    {R"x(^incomplete input)x", u"Die Anweisung ist nicht vollständig."},
    {R"x(^no such table: (?:main\.)?(.*)$)x", u"Eine Tabelle oder Abfrage namens %1 gibt es nicht."},
    {R"x(^ambiguous column name: (.*)$)x",
     u"Die Spalte %1 kommt in mehreren Tabellen vor; stellen Sie den Namen der Tabelle davor."},
    {R"x(^no such column: (.*)$)x", u"Die Spalte %1 ist an dieser Stelle nicht bekannt."},
    {R"x(no column named (.*)$)x", u"Die Spalte %1 ist an dieser Stelle nicht bekannt."},
    {R"x(^no such function: (.*)$)x", u"Die Funktion %1 gibt es nicht."},
    {R"x(^no such (?:module|collation sequence|index): (.*)$)x",
     u"Die Datei braucht etwas, das es hier nicht gibt (%1). Lassen Sie die Tabelle reparieren."},
    {R"x(^wrong number of arguments to function (?:fx_)?(.*)$)x",
     u"Eine Funktion hat zu viele oder zu wenige Werte: %1"},
    {R"x(aggregate|window function)x", u"Summen und Zählungen können an dieser Stelle nicht stehen."},
    {R"x(values for|columns but|values were supplied)x", u"Die Zahl der Werte passt nicht zur Zahl der Spalten."},
    {R"x(same number of result columns)x", u"Die vereinigten Abfragen haben nicht gleich viele Spalten."},
    {R"x(^sub-select returns|row value misused)x",
     u"Eine Abfrage innerhalb der Anweisung darf hier nur eine Spalte ergeben."},
    {R"x(^a GROUP BY clause is required)x", u"Vor 'Having' muss 'Group by' stehen."},
    {R"x((ORDER|GROUP) BY term out of range)x", u"Hinter '%1 by' steht die Nummer einer Spalte, die es nicht gibt."},
    {R"x(integer overflow)x", u"Ein Zahlenwert ist zu groß."},
    {R"x(too large|too many|too complex|stack overflow)x",
     u"Die Anweisung ist zu lang oder zu tief verschachtelt. Teilen Sie sie in mehrere auf."},
    {R"x(^access to view "(.*)" prohibited$)x",
     u"Die Sicht %1 stammt von einem anderen Programm und wird nicht ausgeführt."},
    {R"x(^table (.*) may not be (?:modified|dropped)$|^cannot modify (.*) because it is a view$|^unsafe use of (.*)$)x",
     u"%1 gehört einem anderen Programm und kann hier nicht benutzt werden."},
    {R"x(^UNIQUE constraint failed: (.*)$)x",
     u"Der Wert in %1 kommt schon vor und darf dort nur einmal stehen. Ändern Sie ihn."},
    {R"x(^NOT NULL constraint failed: (.*)$)x", u"%1 darf nicht leer bleiben. Geben Sie einen Wert an."},
    {R"x(^CHECK constraint failed: (.*)$)x", u"Der Wert verletzt eine Regel dieser Tabelle (%1). Ändern Sie ihn."},
    {R"x(^FOREIGN KEY constraint failed$)x", u"Andere Zeilen hängen an dieser Zeile. Ändern Sie zuerst jene."},
    {R"x(constraint failed)x", u"Der Wert verletzt eine Regel dieser Tabelle. Ändern Sie ihn."},
    {R"x(^cannot store \w+ value in \w+ column (.*)$)x",
     u"Der Wert hat nicht die Art, die %1 aufnimmt. Geben Sie einen anderen an."},
    {R"x(^datatype mismatch$)x", u"Der Wert hat nicht die Art, die die Spalte aufnimmt. Geben Sie einen anderen an."},
    {R"x(^duplicate column name: (.*)$)x", u"Die Spalte %1 gibt es schon."},
    {R"x(^(?:table|view|index) "?(.*?)"? already exists$)x",
     u"Die Tabelle %1 gibt es schon. Wählen Sie einen anderen Namen."},
    {R"x(^cannot drop column "(.*)")x",
     u"Die Spalte %1 kann nicht gelöscht werden, weil anderes in der Datei sie braucht."},
    {R"x(^error in (?:table|view|index|trigger) (\S+))x",
     u"%1 in dieser Datei verträgt die Änderung nicht. Sie wurde nicht ausgeführt."},
};

QString Text_Of_Code(int rc) {
  for (const int code : {rc, rc & 0xff})
    for (const CodeText& line : codeTexts)
      if (line.code == code) return QString::fromUtf16(line.text);
  return {};
}

int Number_Of_Code(int rc) {
  switch (rc & 0xff) {
    case SQLITE_FULL:
      return errors::diskFull;
    case SQLITE_IOERR:
      return errors::deviceError;
    case SQLITE_READONLY:
      return errors::noPermission;
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
      return errors::databaseAccess;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return errors::fileInUse;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return errors::databaseDamaged;
    case SQLITE_NOMEM:
      return errors::outOfMemory;
    default:
      return errors::sqlSyntax;
  }
}

// Codes that mean the same as another.
int Plain_Code(int rc, int systemError) {
  const int kind = rc & 0xff;
  if (kind == SQLITE_IOERR && (systemError == ENOSPC || systemError == EDQUOT)) return SQLITE_FULL;
  if (rc == SQLITE_IOERR_SHORT_READ) return SQLITE_CORRUPT;
  if (rc == SQLITE_IOERR_NOMEM) return SQLITE_NOMEM;
  if (kind == SQLITE_LOCKED) return SQLITE_BUSY;
  return rc;
}

}  // namespace

QString German_Message(const QString& message) {
  for (const MessageText& line : messageTexts) {
    const QRegularExpressionMatch match =
        QRegularExpression(QLatin1String(line.pattern), QRegularExpression::DotMatchesEverythingOption).match(message);
    if (!match.hasMatch()) continue;
    const QString text = QString::fromUtf16(line.text);
    return match.lastCapturedIndex() > 0 ? text.arg(match.captured(match.lastCapturedIndex())) : text;
  }
  // The functions of our own speak German already.
  constexpr std::array own = {errors::overflow, errors::typeMismatch, errors::textTooLong};
  if (std::any_of(own.begin(), own.end(), [&](int number) { return message == Error_Text(number); })) return message;
  return QStringLiteral("Die Anweisung kann so nicht ausgeführt werden (%1).").arg(message);
}

Error Error_Of_Result(sqlite3* db, int rc) {
  const int code = Plain_Code(rc, sqlite3_system_errno(db));
  const int number = Number_Of_Code(code);
  const QString text = Text_Of_Code(code);
  if (!text.isEmpty()) return {number, text};
  const int kind = code & 0xff;
  if (kind != SQLITE_ERROR && kind != SQLITE_CONSTRAINT && kind != SQLITE_MISMATCH)
    return {number, QStringLiteral("Unerwarteter Fehler der Datenbank (Nr. %1). Schließen Sie die Datei und öffnen Sie "
                                   "sie neu.")
                        .arg(code)};
  const QString message = QString::fromUtf8(sqlite3_errmsg(db));
  const bool noTable = message.startsWith(QLatin1String("no such table"));
  return {noTable ? errors::tableNotFound : number, German_Message(message)};
}

}  // namespace database_inner
