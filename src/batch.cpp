#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <clocale>
#include <cstdio>

#include "batch_calibration.h"
#include "batch_work.h"
#include "maps/map_close.h"
#include "maps/map_open.h"
#include "maps/sheet_bridge_tool.h"
#include "objects/palette.h"
#include "platform/database.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/system_fault.h"
#include "state/global_state.h"
#include "store/entry.h"
#include "store/old_table.h"

using namespace Qt::StringLiterals;

// flurax-batch: draws a map with its entries into a picture, prints it into a PDF, lists its entries or evaluates them,
// without a window. Writes nothing but that file: the map is opened in a temporary folder that holds a copy of its
// table and links to everything else. Commands that add entries open it where it lies.

namespace {

// Remarks of the libraries are not for the user.
void Quiet(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

// The user's own program folder, for the colour table only.
QString User_Program_Folder() {
  const QString home = qEnvironmentVariable("FLURAX_HOME");
  if (!home.isEmpty()) return home;
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/flurax"_s;
}

void Copy_If_There(const QString& source, const QString& target) {
  constexpr qint64 largest = qint64{4} << 30;  // a damaged file may claim any size
  const QFileInfo info(source);
  if (!info.exists()) return;
  if (const QString strange = Strange_File(source); !strange.isEmpty())
    Raise(errors::noPermission, source + u": "_s + strange);
  if (info.size() > largest)
    Raise(errors::diskFull,
          u"Die Datei ist zu groß, um mit einer Kopie zu arbeiten: %1 (%2 MB)"_s.arg(source).arg(info.size() >> 20));
  if (!QFile::copy(source, target)) Raise(errors::diskFull, Error_Text(errors::diskFull) + u": "_s + source);
}

// A program folder of its own, so that neither recent lists nor work copies of the user change.
void Make_Program_Folder(const QString& folder) {
  QDir().mkpath(folder);
  ProgramFolder = folder;
  const auto database = Workspace::CreateDatabase(folder + u"/MUSTER.MDB"_s);
  Make_Template(*database);
  database->Close();
  Copy_If_There(User_Program_Folder() + u"/MAP-Farb"_s, folder + u"/MAP-Farb"_s);
}

// The map's folder once more, without any table but its own, which is a copy. A table that another program has open is
// taken as it lies on the disk, with the log that waits beside it.
QString Make_Map_Folder(const QString& map, const QString& folder) {
  const QFileInfo info(map);
  QDir().mkpath(folder);
  const QStringList notLinked = {u"mdb"_s, u"ldb"_s, u"map"_s, u"mdb-wal"_s, u"mdb-shm"_s, u"mdb-journal"_s};
  const auto entries = info.dir().entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
  for (const QFileInfo& entry : entries) {
    const QString copy = folder + u'/' + entry.fileName();
    if (!notLinked.contains(entry.suffix().toLower())) {
      QFile::link(entry.absoluteFilePath(), copy);
    } else if (entry.suffix().startsWith("mdb"_L1, Qt::CaseInsensitive) &&
               entry.completeBaseName().compare(info.completeBaseName(), Qt::CaseInsensitive) == 0) {
      Copy_If_There(entry.absoluteFilePath(), copy);
      QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    }
  }
  return folder + u'/' + info.fileName();
}

// Messages of the program, with the folder the user knows in place of the temporary one.
MsgHandler Teller(const QString& temporary, const QString& real) {
  return [temporary, real](const MsgRequest& request) {
    QString text = request.title.isEmpty() ? request.text : request.title.trimmed() + u'\n' + request.text;
    Tell(text.replace(temporary, real).trimmed());
    switch (request.buttons) {  // nobody is there: the careful answer
      case MsgButtons::OkCancel:
      case MsgButtons::YesNoCancel:
        return MsgAnswer::Cancel;
      case MsgButtons::YesNoAll:
        return MsgAnswer::NoAll;
      case MsgButtons::YesNo:
        return MsgAnswer::No;
      case MsgButtons::Ok:
        break;
    }
    return MsgAnswer::Ok;
  };
}

// The program would put a bad table aside and begin a new one; a picture without the entries is of no use here.
void Check_Tables(const QString& folder) {
  for (const QString& path : Find_Files(folder, u"*.mdb"_s)) {
    if (Is_Old_Table(path)) continue;  // is converted when the map is opened
    try {
      const auto database = Workspace::OpenDatabase(path);
      const auto rows = database->OpenRecordset(u"MapData"_s);
      if (rows->FieldIndex(u"ID") != 0 || rows->FieldIndex(u"Eintrag") != 1) Raise(errors::databaseDamaged);
    } catch (const Error& error) {
      const QString name = QFileInfo(path).fileName();
      Raise(error.number, u"Die Tabelle der Einträge kann nicht gelesen werden: "_s + name + u"\n"_s + error.text);
    }
  }
}

// The table must be closed while the program still stands, whatever goes wrong meanwhile.
struct CloseAtEnd {
  ~CloseAtEnd() {
    try {
      Close_Map();
    } catch (const Error& error) {
      Tell(error.text);
    }
  }
};

ExitStatus Carry_Out(const BatchOrder& order) {
  if (!QFileInfo(order.map).isFile()) {
    const QString strange = Strange_File(order.map);
    Tell(strange.isEmpty() ? u"Die Karte wurde nicht gefunden: "_s + order.map
                           : u"Die Karte kann nicht gelesen werden: "_s + order.map + u": "_s + strange);
    return failed;
  }
  if (order.work == BatchWork::TakeSheet && order.changesTable && Find_File(Table_Of_Map(order.map)).isEmpty()) {
    Tell(u"Zu dieser Karte gibt es keine Tabelle, in die etwas übernommen werden könnte: "_s + order.map);
    return failed;
  }
  if (order.work == BatchWork::Calibrate) return Calibrate_Picture(order);
  const QTemporaryDir scratch;
  if (!scratch.isValid()) {
    Tell(No_Work_Folder());
    return failed;
  }
  Reset_Global_State();
  Make_Program_Folder(scratch.filePath(u"programm"_s));
  Load_Palette();
  const QFileInfo place(order.map);
  const QString folder = order.changesTable ? place.path() : scratch.filePath(u"karte"_s);
  const QString map = order.changesTable ? order.map : Make_Map_Folder(order.map, folder);
  if (!order.changesTable) Check_Tables(folder);
  Set_Message_Handler(Teller(folder, place.path()));
  Open_Map(map);
  const CloseAtEnd closing;
  if (MapHeightMm < 0) {
    Tell(u"Die Karte konnte nicht geöffnet werden: "_s + order.map);
    return failed;
  }
  return Do_Batch_Work(order);
}

ExitStatus Run(const QStringList& words) {
  if (words.isEmpty()) throw WrongCall{u"Es fehlt der Befehl."_s};
  if (QStringList{u"--hilfe"_s, u"--help"_s, u"-h"_s}.contains(words.first())) {
    std::fputs(qUtf8Printable(Batch_Help()), stdout);
    return done;
  }
  return Carry_Out(Parse_Order(words));
}

}  // namespace

int main(int argc, char** argv) {
  qInstallMessageHandler(Quiet);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  std::setlocale(LC_NUMERIC, "C");
  try {
    return Run(QCoreApplication::arguments().mid(1));
  } catch (const WrongCall& call) {
    Tell(call.text + u"\n\n"_s + Batch_Help());
    return wrongCall;
  } catch (const Error& error) {
    Tell(u"Fehler %1: %2"_s.arg(error.number).arg(error.text));
    return failed;
  }
}
