#include "store/old_table.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/database.h"
#include "platform/files.h"
#include "platform/guest.h"
#include "platform/message_box.h"
#include "platform/shell.h"
#include "platform/system_fault.h"
#include "state/global_state.h"
#include "store/table_file_inner.h"

namespace {

const QString readerName = QStringLiteral("flurax-alttabelle");
constexpr int readingSeconds = 120;

QString Reader() {
  // Beside the program that runs, where both were installed together.
  for (const QString& folder : {ProgramFolder, QCoreApplication::applicationDirPath()})
    if (const QString found = Find_Program(folder + u'/' + readerName, {}); !found.isEmpty()) return found;
  return Find_Program(readerName, ProgramFolder);
}

OldTableReport Read_Report(const QByteArray& output) {
  OldTableReport report;
  for (const QString& line : QString::fromUtf8(output).split(u'\n', Qt::SkipEmptyParts)) {
    const QStringList parts = line.split(u'\t');
    if (parts.value(0) == QLatin1String("hinweis")) report.notes << parts.value(1);
    const bool entries = parts.value(1).compare(QLatin1String("MapData"), Qt::CaseInsensitive) == 0;
    if (parts.value(0) == QLatin1String("zaehler") && entries) report.counters << parts.value(2);
    if (parts.value(0) != QLatin1String("tabelle")) continue;
    const int rows = parts.value(2).toInt();
    ++report.tables;
    report.rows += rows;
    if (entries) report.entries = rows;
  }
  return report;
}

QString Fault_Text(const GuestOrder& order, const GuestResult& result) {
  constexpr int refused = 1;
  if (result.end != GuestEnd::Failed) return Guest_Flaw(order, result);
  // What the library remarked stands in front of the reader's own sentence.
  const QString said = QString::fromUtf8(result.faults).trimmed().section(u'\n', -1);
  return result.exitCode == refused && !said.isEmpty() ? said : QStringLiteral("Sie ist beschädigt.");
}

}  // namespace

bool Is_Old_Table(const QString& path) {
  const QString found = Find_File(path);
  // Closing any other handle of the open table would give its locks away.
  if (dbEntries && dbEntries->IsOpen() &&
      QFileInfo(found).canonicalFilePath() == QFileInfo(dbEntries->Name()).canonicalFilePath())
    return false;
  QFile file(found);
  if (found.isEmpty() || !Strange_File(found).isEmpty() || !file.open(QIODevice::ReadOnly)) return false;
  return file.read(19).mid(4) == "Standard Jet DB";
}

QString OldTableReport::Text() const {
  QStringList lines = {
      QStringLiteral("%1 Tabellen, %2 Zeilen, davon %3 der Einträge.").arg(tables).arg(rows).arg(entries)};
  return (lines + notes).join(u'\n');
}

OldTableReport Convert_Old_Table(const QString& source, const QString& target) {
  if (File_Exists(target)) Raise(errors::databaseExists);
  const QTemporaryDir folder;
  if (!folder.isValid()) Raise(errors::diskFull, No_Work_Folder());
  const QString made = folder.filePath(QStringLiteral("neu.mdb"));
  const GuestOrder order{Reader(),
                         {QFileInfo(Find_File(source)).absoluteFilePath(), made},
                         folder.path(),
                         readingSeconds,
                         QStringLiteral("Tabelle öffnen\nEine Tabelle der alten Art wird gelesen.")};
  const GuestResult result = Run_Guest(order);
  if (result.end == GuestEnd::Cancelled) Raise(errors::workStopped, QStringLiteral("Das Lesen wurde abgebrochen."));
  const QString head = QStringLiteral("Diese Tabelle der alten Art kann nicht gelesen werden:\n") + source + u'\n';
  if (result.end != GuestEnd::Done) Raise(errors::databaseDamaged, head + Fault_Text(order, result));
  if (const QString fault = table_file::Table_Fault(made); !fault.isEmpty())
    Raise(errors::databaseDamaged, head + fault);
  Table_File_Copy(made, target);
  return Read_Report(result.output);
}

void Convert_In_Place(const QString& path) {
  const QString aside = Aside_Name(path);
  const OldTableReport report = Convert_Old_Table(path, aside);
  QString kept;
  try {
    kept = table_file::Free_Aside_Name(path, QStringLiteral("_alt.MDB"));
    File_Rename(path, kept);
  } catch (...) {
    Kill_Quietly(aside);
    throw;
  }
  try {
    File_Rename(aside, path);
  } catch (...) {
    File_Rename(kept, path);
    Kill_Quietly(aside);
    throw;
  }
  Message_Box(QStringLiteral("Diese Tabelle war von einer alten Art und wurde umgewandelt:\n") + path +
                  QStringLiteral("\n\n") + report.Text() + QStringLiteral("\n\nDie alte Datei heißt jetzt:\n") + kept,
              MsgButtons::Ok, MsgIcon::Information, QStringLiteral("Tabelle der alten Art"));
}
