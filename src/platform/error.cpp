#include "platform/error.h"

#include <utility>

namespace {
struct ErrorName {
  int number;
  const char16_t* text;
};
constexpr ErrorName names[] = {
    {errors::overflow, u"Überlauf"},
    {errors::outOfMemory, u"Nicht genügend Speicher"},
    {errors::divisionByZero, u"Division durch Null"},
    {errors::typeMismatch, u"Typen unverträglich"},
    {errors::fileNotFound, u"Datei nicht gefunden"},
    {errors::fileExists, u"Datei existiert bereits"},
    {errors::diskFull, u"Datenträger voll"},
    {errors::noPermission, u"Zugriff verweigert"},
    {errors::pathNotFound, u"Pfad nicht gefunden"},
    {errors::invalidNull, u"Unzulässige Verwendung von Null"},
    {errors::badPicture, u"Ungültiges Bild"},
    {errors::printer, u"Druckerfehler"},
    {errors::noCurrentRecord, u"Kein aktueller Datensatz."},
    {errors::databaseNotFound, u"Die Datenbankdatei wurde nicht gefunden."},
    {errors::databaseAccess, u"Die Datenbankdatei kann nicht geöffnet werden. Die Berechtigung dazu fehlt."},
    {errors::fieldNotFound, u"Eine Spalte dieses Namens gibt es nicht."},
    {errors::tableNotFound, u"Eine Tabelle oder Abfrage dieses Namens gibt es nicht."},
    {errors::sqlSyntax, u"Syntaxfehler in der Abfrage."},
    {errors::workStopped, u"Die Anweisung wurde abgebrochen."},
    {errors::databaseBusy, u"Die Datenbank arbeitet noch an einer Anweisung."},
    {errors::recordDeleted, u"Der Datensatz ist gelöscht."},
    {errors::fileInUse, u"Die Datenbank wird bereits von einem anderen Programm benutzt."},
    {errors::databaseExists, u"Die Datenbank existiert bereits."},
    {errors::databaseDamaged, u"Die Datei ist beschädigt oder keine Tabelle dieses Programms."},
    {errors::databaseInUse, u"Die Datenbank ist von einem anderen Programm geöffnet."},
    {errors::textTooLong, u"Der Text ist für diese Spalte zu lang."},
};
}  // namespace

QString Error_Text(int number) {
  for (const ErrorName& name : names)
    if (name.number == number) return QString::fromUtf16(name.text);
  return QStringLiteral("Anwendungs- oder objektdefinierter Fehler");
}

QString Error_Text(const Error& error) { return error.text.isEmpty() ? Error_Text(error.number) : error.text; }

void Raise(int number, QString text) {
  if (text.isEmpty()) text = Error_Text(number);
  throw Error{number, std::move(text)};
}
