#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageWriter>
#include <QLocale>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <clocale>
#include <cstdio>
#include <optional>

#include "analysis/all_results.h"
#include "exchange/csv_export.h"
#include "exchange/exchange_table.h"
#include "maps/map_close.h"
#include "maps/map_open.h"
#include "objects/draw_context.h"
#include "objects/palette.h"
#include "platform/database.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "platform/surface.h"
#include "platform/text.h"
#include "printing/page_geometry.h"
#include "printing/print_map.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "tools/area_trace.h"
#include "tools/poly_editor.h"
#include "view/redraw.h"

using namespace Qt::StringLiterals;

// flurax-batch: draws a map with its entries into a picture, prints it into a PDF, lists its entries or evaluates them,
// without a window. Writes nothing but that file: the map is opened in a temporary folder that holds a copy of its
// table and links to everything else. Commands that add entries open it where it lies.

namespace {

enum ExitStatus { done = 0, failed = 1, wrongCall = 2 };

constexpr double smallestFactor = 0.05, largestFactor = 8;
constexpr int mostNeighbours = 1000;

const QString helpText =
    uR"(flurax-batch: zeichnet Karten mit ihren Einträgen in Bilddateien und druckt sie in PDF-Dateien.

  flurax-batch bild KARTE.bmp AUS.png [--zoom F]
      Zeichnet die Karte mit den Einträgen ihrer Tabelle in die Datei AUS.png.
      Die Endung bestimmt das Format: png, bmp oder jpg. Eine vorhandene Datei wird ersetzt.
      --zoom F   Zoom-Faktor von 0,05 bis 8; 1 = 100 % (üblich), 0,5 = 50 %.
  flurax-batch druck KARTE.bmp AUS.pdf [--faktor F] [--format A4|A3 hoch|quer] [--seiten VON-BIS]
      Druckt die Karte mit den Einträgen über so viele Blätter, wie sie braucht, in die Datei AUS.pdf.
      --faktor F         Vergrößerung auf dem Papier von 0,05 bis 20.
      --format A3 quer   Blattgröße A4 (üblich) oder A3, dazu hoch oder quer.
      --seiten VON-BIS   nur diese Blätter, etwa 2-3 oder 2.
      Was nicht genannt ist, und die Seitenränder, stehen in der Tabelle (Menü "Karte - Druckvorschau").
  flurax-batch csv KARTE.bmp
      Schreibt die Texte, Symbole und Figuren mit ihren Koordinaten in die Datei KARTE.csv neben der Karte.
  flurax-batch statistik KARTE.bmp AUS.xls [--matrix AUS.csv] [--nachbarn N]
      Schreibt die Auswertungen der Karte in die Arbeitsmappe AUS.xls: Flächen mit ihren Arten und deren Diversität,
      Linien, Zuordnung zur Farbe der Karte, Kataster, Matrix der Arten. Andere Blätter darin bleiben, wie sie sind.
      --matrix AUS.csv   die Matrix auch als Text für andere Programme.
      --nachbarn N       dazu die N nächsten Nachbarn jedes Eintrags in der Datei Distanz.erg neben der Arbeitsmappe.
  flurax-batch tkr KARTE.bmp AUS.tkr
      Schreibt alle Einträge in eine Datei für das mobile Programm.
  flurax-batch tkr-ein KARTE.bmp DATEI.tkr [--alles]
      Liest die Punkte einer solchen Datei in die Tabelle der Karte ein.
      --alles    auch Linien, Flächen und Figuren.
  flurax-batch flaeche KARTE.bmp X Y [--toleranz N] [--fuellen] [--uebernehmen]
      Sucht den Rand des farbigen Flecks an dieser Stelle der Karte (Pixel) und gibt ihn aus, je Zeile "x y".
      --toleranz N       Farbtoleranz von 0 bis 100 % (üblich 10).
      --fuellen          füllt den Fleck, statt seinem Rand zu folgen.
      --uebernehmen      nimmt die Fläche in die Tabelle der Karte auf.
  flurax-batch --hilfe
      Zeigt diesen Text.

Nur tkr-ein und --uebernehmen ändern die Tabelle der Karte. Meldungen gehen auf die Standardfehlerausgabe.
Rückgabewert: 0 gezeichnet, gedruckt oder geschrieben, 1 Fehler, 2 falscher Aufruf.
)"_s;

// Remarks of the libraries are not for the user.
void Quiet(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

void Tell(const QString& text) { std::fprintf(stderr, "%s\n", qUtf8Printable(text)); }

struct BatchCommand;

struct BatchOrder {
  const BatchCommand* command = nullptr;
  QString map, target;
  bool changesTable = false;
  bool wholeFile = false;  // tkr-ein
  QPoint at;               // flaeche, map pixels
  int tolerance = 10;      // percent
  bool fill = false;
  QString matrix;
  int neighbours = 0;
  double zoom = 1;
  std::optional<double> factor;
  QString format = u"A4"_s;
  std::optional<int> orientation;
  std::optional<PrintRange> range;
};

// What the program can do: a word, what it wants behind it, and the work on the open map.
struct BatchCommand {
  QString name;
  int words;        // behind the command, without options
  QString missing;  // told where there are more or fewer
  void (*parse)(QStringList& options, BatchOrder& order);
  ExitStatus (*run)(const BatchOrder& order);
};
const std::vector<BatchCommand>& Batch_Commands();

struct WrongCall {
  QString text;
};

// The words behind an option, which are taken away with it; nothing if it is not there.
std::optional<QString> Take_Option(QStringList& words, const QString& name, const QString& missing) {
  const qsizetype at = words.indexOf(name);
  if (at < 0) return std::nullopt;
  if (at + 1 >= words.size()) throw WrongCall{missing};
  const QString value = words[at + 1];
  words.remove(at, 2);
  return value;
}

std::optional<double> Take_Number(QStringList& words, const QString& name, double smallest, double largest,
                                  const QString& missing, const QString& outside) {
  const auto text = Take_Option(words, name, missing);
  if (!text) return std::nullopt;
  const auto number = Number_Typed(*text);
  if (!number || !(*number >= smallest && *number <= largest)) throw WrongCall{outside + *text};
  return number;
}

// "A3", "quer" or both.
void Parse_Format(QStringList& words, BatchOrder& order) {
  const qsizetype at = words.indexOf(u"--format"_s);
  if (at < 0) return;
  words.removeAt(at);
  int taken = 0;
  while (at < words.size() && taken < 2) {
    const QString word = words[at].toLower();
    if (word == "a4"_L1 || word == "a3"_L1)
      order.format = word.toUpper();
    else if (word == "hoch"_L1 || word == "quer"_L1)
      order.orientation = word == "quer"_L1 ? landscape : portrait;
    else
      break;
    words.removeAt(at);
    ++taken;
  }
  if (taken == 0) throw WrongCall{u"Hinter --format wird A4 oder A3, hoch oder quer erwartet."_s};
}

PrintRange Parse_Range(const QString& text) {
  static const QRegularExpression pattern(u"^([0-9]{1,6})(?:-([0-9]{1,6}))?$"_s);
  const auto match = pattern.match(text);
  PrintRange range{match.captured(1).toInt(), match.captured(match.lastCapturedIndex()).toInt()};
  if (!match.hasMatch() || range.from < 1 || range.to < range.from)
    throw WrongCall{u"Hinter --seiten wird VON-BIS erwartet, etwa 2-3: "_s + text};
  return range;
}

void Parse_Result_Options(QStringList& words, BatchOrder& order) {
  if (const auto matrix = Take_Option(words, u"--matrix"_s, u"Hinter --matrix fehlt die Datei."_s)) {
    if (QFileInfo(*matrix).suffix().toLower() != "csv"_L1)
      throw WrongCall{u"Die Datei der Matrix muss auf .csv enden: "_s + *matrix};
    order.matrix = QFileInfo(Clean_Path(*matrix)).absoluteFilePath();
  }
  const QString wanted = u"Hinter --nachbarn wird eine ganze Zahl von 1 bis 1000 erwartet: "_s;
  const auto count = Take_Number(words, u"--nachbarn"_s, 1, mostNeighbours, wanted.chopped(2) + u'.', wanted);
  if (!count) return;
  order.neighbours = static_cast<int>(*count);
  if (order.neighbours != *count) throw WrongCall{wanted + Number_Text(*count)};
}

bool Take_Switch(QStringList& words, const QString& name) { return words.removeAll(name) > 0; }

QString Full_Path(const QString& word) { return QFileInfo(Clean_Path(word)).absoluteFilePath(); }

void Take_Target(const QStringList& words, BatchOrder& order, const QStringList& endings, const QString& wanted) {
  order.target = Full_Path(words.value(1));
  if (!endings.contains(QFileInfo(order.target).suffix().toLower())) throw WrongCall{wanted + order.target};
  const QString map = QFileInfo(Full_Path(words[0])).canonicalFilePath();
  if (!map.isEmpty() && map == QFileInfo(order.target).canonicalFilePath())
    throw WrongCall{u"Die Karte selbst wird nicht überschrieben: "_s + order.target};
}

void Parse_Picture(QStringList& words, BatchOrder& order) {
  order.zoom = Take_Number(words, u"--zoom"_s, smallestFactor, largestFactor, u"Hinter --zoom fehlt der Faktor."_s,
                           u"Der Zoom-Faktor muss zwischen 0,05 und 8 liegen: "_s)
                   .value_or(1);
  if (words.size() > 1)
    Take_Target(words, order, {u"png"_s, u"bmp"_s, u"jpg"_s, u"jpeg"_s},
                u"Die Bilddatei muss auf .png, .bmp oder .jpg enden: "_s);
}

void Parse_Print(QStringList& words, BatchOrder& order) {
  order.factor = Take_Number(words, u"--faktor"_s, smallestPrintFactor, largestPrintFactor,
                             u"Hinter --faktor fehlt die Zahl."_s, u"Der Faktor muss zwischen 0,05 und 20 liegen: "_s);
  Parse_Format(words, order);
  if (const auto range = Take_Option(words, u"--seiten"_s, u"Hinter --seiten fehlt VON-BIS."_s))
    order.range = Parse_Range(*range);
  if (words.size() > 1) Take_Target(words, order, {u"pdf"_s}, u"Die Druckdatei muss auf .pdf enden: "_s);
}

void Parse_Results(QStringList& words, BatchOrder& order) {
  Parse_Result_Options(words, order);
  if (words.size() > 1)
    Take_Target(words, order, {u"xls"_s, u"xlsx"_s}, u"Die Arbeitsmappe muss auf .xls oder .xlsx enden: "_s);
}

void Parse_Exchange(QStringList& words, BatchOrder& order) {
  if (words.size() > 1)
    Take_Target(words, order, {u"tkr"_s}, u"Die Datei für das mobile Programm muss auf .tkr enden: "_s);
}

void Parse_Taking(QStringList& words, BatchOrder& order) {
  order.changesTable = true;
  order.wholeFile = Take_Switch(words, u"--alles"_s);
  order.target = Full_Path(words.value(1));
}

void Parse_Area(QStringList& words, BatchOrder& order) {
  order.fill = Take_Switch(words, u"--fuellen"_s);
  order.changesTable = Take_Switch(words, u"--uebernehmen"_s);
  order.tolerance = qRound(Take_Number(words, u"--toleranz"_s, 0, 100, u"Hinter --toleranz fehlt die Zahl."_s,
                                       u"Die Farbtoleranz muss zwischen 0 und 100 liegen: "_s)
                               .value_or(order.tolerance));
  if (words.size() != 3) return;
  bool right = false, down = false;
  order.at = QPoint(words[1].toInt(&right), words[2].toInt(&down));
  if (!right || !down) throw WrongCall{u"X und Y müssen ganze Zahlen sein: "_s + words[1] + u' ' + words[2]};
}

BatchOrder Parse_Order(QStringList words) {
  BatchOrder order;
  const QString name = words.takeFirst();
  for (const BatchCommand& command : Batch_Commands())
    if (command.name == name) order.command = &command;
  if (!order.command) throw WrongCall{u"Unbekannter Befehl."_s};
  if (order.command->parse) order.command->parse(words, order);
  for (const QString& word : words) {
    if (word.startsWith("--"_L1)) throw WrongCall{u"Unbekannte Angabe: "_s + word};
  }
  if (words.size() != order.command->words) throw WrongCall{order.command->missing};
  order.map = Full_Path(words[0]);
  return order;
}

// The user's own program folder, for the colour table only.
QString User_Program_Folder() {
  const QString home = qEnvironmentVariable("FLURAX_HOME");
  if (!home.isEmpty()) return home;
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/flurax"_s;
}

void Copy_If_There(const QString& source, const QString& target) {
  if (QFileInfo::exists(source) && !QFile::copy(source, target)) Raise(errors::diskFull, target);
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

QImage Draw_Map(double factor) {
  if (factor == 1) return Map_Picture_With_Entries();
  const QSize size(std::max(1, qRound(MapWidthPx * factor)), std::max(1, qRound(MapHeightPx * factor)));
  QImage picture = Make_Canvas(size.width(), size.height());
  if (picture.isNull()) Raise(errors::outOfMemory);
  {
    const auto surface = Make_Surface(picture);
    DrawContext context{*surface, {.Zoom = 1 / factor}, QRectF(QPointF(), size)};
    Draw_Background(context);
    Draw_Entries(context);
    Draw_Grid(context);
  }
  return picture;
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

ExitStatus Print_Into_Pdf(const BatchOrder& batch) {
  PrintOrder order;
  order.settings = Read_Print_Settings();
  if (batch.factor) order.settings.factor = *batch.factor;
  if (batch.orientation) order.settings.orientation = *batch.orientation;
  order.paper = Paper_Of(batch.format, order.settings.orientation);
  order.map = Map_To_Print();
  const int pages = Print_Geometry(order.settings, order.paper, order.map).Pages();
  order.range = batch.range.value_or(PrintRange{1, pages});
  if (order.range.from > pages) {
    Tell(u"So viele Blätter hat die Karte nicht; sie braucht %1."_s.arg(pages));
    return failed;
  }
  const PrintHooks hooks{[&] { return Make_Pdf_Job(batch.target, order.paper, QFileInfo(batch.map).fileName()); }, {}};
  return Print_Map(order, hooks) == PrintEnd::Done ? done : failed;
}

// Beside the map, named like its table.
ExitStatus Write_Csv(const BatchOrder& order) {
  const QString table = QFileInfo(TableFile).completeBaseName();
  const QString path = QFileInfo(order.map).path() + u'/' + table + u".csv"_s;
  const QStringList lines = Csv_Export_Lines(table + u".MDB"_s);
  try {
    Write_Lines(path, lines);
  } catch (const Error& error) {
    Raise(error.number, error.text + u": "_s + path);
  }
  return done;
}

// The rest is written even if one of the evaluations fails.
ExitStatus Write_Results(const BatchOrder& order) {
  const ResultFiles files = Write_All_Results({order.target, order.matrix, order.neighbours}, Load_Picture(order.map));
  if (!files.aside.isEmpty())
    Tell(u"Die vorhandene Arbeitsmappe hat ein altes Format. Sie heißt jetzt: "_s + files.aside);
  for (const QString& problem : files.problems) Tell(problem);
  return files.problems.isEmpty() ? done : failed;
}

ExitStatus Save_Drawing(const BatchOrder& order) {
  Save_Picture(Draw_Map(order.zoom), order.target);
  return done;
}

ExitStatus Write_Exchange(const BatchOrder& order) {
  try {
    const auto text = Exchange_Lines(Read_Exchange_Table(order.target));
    Write_Lines(order.target, text->lines);
    if (text->withoutText > 0) Tell(u"Einträge ohne Text, die nicht in der Datei stehen: %1"_s.arg(text->withoutText));
  } catch (const Error& error) {
    const QString reason = error.number == 5000 ? u"Diese Datei ist leer."_s : Error_Text(error);
    Raise(error.number, reason + u": "_s + order.target);
  }
  return done;
}

ExitStatus Take_Exchange(const BatchOrder& order) {
  const QStringList lines = Read_Lines(order.target);
  const ExchangeContent content = order.wholeFile ? Read_Exchange_All(lines) : Read_Exchange_Entries(lines);
  const ExchangeTaken taken = Append_Exchange_Entries(content.entries);
  for (const auto* refused : {&content.refused, &taken.refused})
    for (const ExchangeRefusal& one : *refused) Tell(u"Zeile %1: %2"_s.arg(one.line).arg(one.reason));
  std::printf("%d\n", taken.entries);
  return taken.entries > 0 ? done : failed;
}

ExitStatus Find_Area(const BatchOrder& order) {
  const TraceRequest request{Map.MapClip[0].image, order.at, order.tolerance, {}};
  const TraceResult result = order.fill ? Digi_Fill(request) : Digi_Trace_RGB(request);
  if (!result.Found()) {
    Tell(result.fault);
    return failed;
  }
  for (const QPoint point : result.outline) std::printf("%d %d\n", point.x(), point.y());
  if (!order.changesTable) return done;
  return Append_Poly(PolyEditor::Kind::Area, result.outline, u"Fläche digitalisieren"_s) ? done : failed;
}

const std::vector<BatchCommand>& Batch_Commands() {
  static const QString mapAndTarget = u"Es werden genau eine Karte und eine Zieldatei erwartet."_s;
  static const std::vector<BatchCommand> commands = {
      {u"bild"_s, 2, mapAndTarget, Parse_Picture, Save_Drawing},
      {u"druck"_s, 2, mapAndTarget, Parse_Print, Print_Into_Pdf},
      {u"csv"_s, 1, u"Es wird genau eine Karte erwartet."_s, nullptr, Write_Csv},
      {u"statistik"_s, 2, mapAndTarget, Parse_Results, Write_Results},
      {u"tkr"_s, 2, mapAndTarget, Parse_Exchange, Write_Exchange},
      {u"tkr-ein"_s, 2, u"Es werden genau eine Karte und eine Datei erwartet."_s, Parse_Taking, Take_Exchange},
      {u"flaeche"_s, 3, u"Es werden genau eine Karte und eine Stelle erwartet: X und Y."_s, Parse_Area, Find_Area},
  };
  return commands;
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
    Tell(u"Die Karte wurde nicht gefunden: "_s + order.map);
    return failed;
  }
  const QTemporaryDir scratch;
  if (!scratch.isValid()) {
    Tell(u"Es konnte kein Arbeitsordner angelegt werden: "_s + scratch.errorString());
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
  return order.command->run(order);
}

ExitStatus Run(const QStringList& words) {
  if (words.isEmpty()) throw WrongCall{u"Es fehlt der Befehl."_s};
  if (QStringList{u"--hilfe"_s, u"--help"_s, u"-h"_s}.contains(words.first())) {
    std::fputs(qUtf8Printable(helpText), stdout);
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
    Tell(call.text + u"\n\n"_s + helpText);
    return wrongCall;
  } catch (const Error& error) {
    Tell(u"Fehler %1: %2"_s.arg(error.number).arg(error.text));
    return failed;
  }
}
