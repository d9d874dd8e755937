#include "batch_order.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <vector>

#include "import/column_values.h"
#include "platform/files.h"
#include "platform/text.h"
#include "printing/print_map.h"

using namespace Qt::StringLiterals;

namespace {

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
  flurax-batch tabelle KARTE.bmp DATEI.mdb [--filter "Spalte= Wert"]... [--ohne] [--auch-vorhandene] [--pixel]
      Nimmt die Einträge einer anderen Tabelle in die Tabelle der Karte auf und gibt aus, wie viele es waren.
      --filter "Eintrag= Biber*"   nur die Einträge, für die alle Bedingungen gelten; * steht für beliebige Zeichen.
      --ohne             alle übrigen.
      --auch-vorhandene  auch was mit gleichem Text an derselben Stelle schon da ist.
      --pixel            auf dieselben Pixel, statt über die Koordinaten der beiden Karten.
      Abgelehnte Einträge stehen mit dem Grund in der Datei KARTE_Import.txt neben der Karte.
  flurax-batch gps KARTE.bmp DATEI [--auch-vorhandene]
      Nimmt Wegpunkte und Tracks aus einer GPS-Datei (PCX5, GPX, KML, FIT, NMEA und andere) in die Tabelle der Karte auf.
      Koordinaten anderer Art oder anderen Datums werden in das Netz der Karte umgerechnet. Was nicht kommen konnte,
      steht danach mit dem Grund in KARTE_Import.txt neben der Karte.
      --auch-vorhandene  auch, was mit Namen und Stelle schon auf der Karte ist.
  flurax-batch overlay KARTE.bmp DATEI.ovl [--auch-vorhandene]
      Nimmt die Objekte eines Overlays in die Tabelle der Karte auf und gibt aus, wie viele kamen und wie viele nicht.
      Die Koordinaten (WGS-84) werden in das Netz der Karte umgerechnet.
  flurax-batch flaeche KARTE.bmp X Y [--toleranz N] [--fuellen] [--uebernehmen]
      Sucht den Rand des farbigen Flecks an dieser Stelle der Karte (Pixel) und gibt ihn aus, je Zeile "x y".
      --toleranz N       Farbtoleranz von 0 bis 100 % (üblich 10).
      --fuellen          füllt den Fleck, statt seinem Rand zu folgen.
      --uebernehmen      nimmt die Fläche in die Tabelle der Karte auf.
  flurax-batch kalibriere BILD [--zone N] [--datum D]
      Schreibt die Kalibrierungsdatei eines Bildes, neben dem eine Weltdatei (.tfw .jgw .bpw .pgw .wld) oder ein
      GeoTIFF liegt. Zone und Datum stehen darin oder in einer .prj-Datei; wo nicht, werden sie genannt.
      --zone N           UTM-Zone (32) oder, mit dem Datum Potsdam, Gauß-Krüger-Zone (4).
      --datum D          WGS-84, ETRS89 oder Potsdam.
  flurax-batch tabelle-aus KARTE.bmp AUS.xls
      Schreibt die Tabelle der Einträge in das Blatt "MapData" der Arbeitsmappe AUS.xls, je Eintrag eine Zeile.
  flurax-batch tabelle-ein KARTE.bmp EIN.xls [--blatt NAME] [--schluessel SPALTE] [--spalten A,B=C] [--nur-zeigen]
      [--neue]
      Vergleicht ein Blatt der Arbeitsmappe mit der Tabelle der Karte, zeigt die Unterschiede und übernimmt sie.
      --blatt NAME         das Blatt; üblich ist "MapData", sonst das erste.
      --schluessel SPALTE  woran eine Zeile erkannt wird: Nr (üblich), ID oder Eintrag.
      --spalten A,B=C      nur diese Spalten; B=C: die Spalte B der Karte aus der Spalte C des Blattes.
      --nur-zeigen         zeigt die Unterschiede nur.
      --neue               fügt Zeilen, die nur im Blatt stehen, als Texteinträge an.
  flurax-batch --hilfe
      Zeigt diesen Text.

Nur tkr-ein, gps, overlay, tabelle, tabelle-ein und --uebernehmen ändern die Tabelle der Karte. Meldungen gehen auf
die Standardfehlerausgabe.
Rückgabewert: 0 gezeichnet, gedruckt oder geschrieben, 1 Fehler, 2 falscher Aufruf.
)"_s;

// A word, what it wants behind it, and the work.
struct BatchCommand {
  QString name;
  int words;        // behind the command, without options
  QString missing;  // told where there are more or fewer
  void (*parse)(QStringList& options, BatchOrder& order);
  BatchWork work;
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

void Parse_Workbook(QStringList& words, BatchOrder& order) {
  if (words.size() > 1)
    Take_Target(words, order, {u"xls"_s, u"xlsx"_s}, u"Die Arbeitsmappe muss auf .xls oder .xlsx enden: "_s);
}

void Parse_Results(QStringList& words, BatchOrder& order) {
  Parse_Result_Options(words, order);
  Parse_Workbook(words, order);
}

void Parse_Table_Taking(QStringList& words, BatchOrder& order) {
  order.sheet = Take_Option(words, u"--blatt"_s, u"Hinter --blatt fehlt der Name."_s).value_or(QString());
  order.key = Take_Option(words, u"--schluessel"_s, u"Hinter --schluessel fehlt die Spalte."_s).value_or(QString());
  const QString missing = u"Hinter --spalten fehlen die Spalten."_s;
  const auto columns = Take_Option(words, u"--spalten"_s, missing);
  if (columns) order.columns = columns->split(u',', Qt::SkipEmptyParts);
  if (columns && order.columns.isEmpty()) throw WrongCall{missing};
  order.newRows = Take_Switch(words, u"--neue"_s);
  order.showOnly = Take_Switch(words, u"--nur-zeigen"_s);
  order.changesTable = !order.showOnly;
  order.target = Full_Path(words.value(1));
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

void Parse_Table(QStringList& words, BatchOrder& order) {
  const QString wanted = u"Hinter --filter wird \"Spalte= Wert\" erwartet"_s;
  while (const auto line = Take_Option(words, u"--filter"_s, wanted + u'.')) {
    if (!ColumnValue::Parse(*line).Is_Set() || ColumnValue::Parse(*line).column.isEmpty())
      throw WrongCall{wanted + u": "_s + *line};
    order.filter << *line;
  }
  order.exclude = Take_Switch(words, u"--ohne"_s);
  order.alsoPresent = Take_Switch(words, u"--auch-vorhandene"_s);
  order.pixels = Take_Switch(words, u"--pixel"_s);
  order.changesTable = true;
  order.target = Full_Path(words.value(1));
}

void Parse_Import(QStringList& words, BatchOrder& order) {
  order.changesTable = true;
  order.alsoPresent = Take_Switch(words, u"--auch-vorhandene"_s);
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

void Parse_Calibration(QStringList& words, BatchOrder& order) {
  if (auto zone = Take_Option(words, u"--zone"_s, u"Hinter --zone fehlt die Nummer der Zone."_s)) {
    static const QRegularExpression pattern(u"^([0-9]{1,2})[A-Za-z]?$"_s);
    const auto match = pattern.match(*zone);
    order.zone = match.captured(1).toInt();
    if (order.zone < 1 || order.zone > 60)
      throw WrongCall{u"Hinter --zone wird eine Zone von 1 bis 60 erwartet: "_s + *zone};
  }
  order.datum = Take_Option(words, u"--datum"_s, u"Hinter --datum fehlt der Name."_s).value_or(QString());
}

const std::vector<BatchCommand>& Batch_Commands() {
  static const QString mapAndTarget = u"Es werden genau eine Karte und eine Zieldatei erwartet."_s;
  static const std::vector<BatchCommand> commands = {
      {u"bild"_s, 2, mapAndTarget, Parse_Picture, BatchWork::Picture},
      {u"druck"_s, 2, mapAndTarget, Parse_Print, BatchWork::Print},
      {u"csv"_s, 1, u"Es wird genau eine Karte erwartet."_s, nullptr, BatchWork::Csv},
      {u"statistik"_s, 2, mapAndTarget, Parse_Results, BatchWork::Results},
      {u"tkr"_s, 2, mapAndTarget, Parse_Exchange, BatchWork::WriteExchange},
      {u"tkr-ein"_s, 2, u"Es werden genau eine Karte und eine Datei erwartet."_s, Parse_Taking,
       BatchWork::TakeExchange},
      {u"gps"_s, 2, u"Es werden genau eine Karte und eine Datei erwartet."_s, Parse_Import, BatchWork::Gps},
      {u"tabelle"_s, 2, u"Es werden genau eine Karte und eine Tabelle erwartet."_s, Parse_Table, BatchWork::TakeTable},
      {u"overlay"_s, 2, u"Es werden genau eine Karte und ein Overlay erwartet."_s, Parse_Import,
       BatchWork::TakeOverlay},
      {u"flaeche"_s, 3, u"Es werden genau eine Karte und eine Stelle erwartet: X und Y."_s, Parse_Area,
       BatchWork::Area},
      {u"kalibriere"_s, 1, u"Es wird genau ein Bild erwartet."_s, Parse_Calibration, BatchWork::Calibrate},
      {u"tabelle-aus"_s, 2, mapAndTarget, Parse_Workbook, BatchWork::WriteSheet},
      {u"tabelle-ein"_s, 2, u"Es werden genau eine Karte und eine Arbeitsmappe erwartet."_s, Parse_Table_Taking,
       BatchWork::TakeSheet},
  };
  return commands;
}

}  // namespace

const QString& Batch_Help() { return helpText; }

BatchOrder Parse_Order(QStringList words) {
  BatchOrder order;
  const QString name = words.takeFirst();
  const auto& commands = Batch_Commands();
  const auto command =
      std::find_if(commands.begin(), commands.end(), [&name](const BatchCommand& one) { return one.name == name; });
  if (command == commands.end()) throw WrongCall{u"Unbekannter Befehl."_s};
  order.work = command->work;
  if (command->parse) command->parse(words, order);
  for (const QString& word : words) {
    if (word.startsWith("--"_L1)) throw WrongCall{u"Unbekannte Angabe: "_s + word};
  }
  if (words.size() != command->words) throw WrongCall{command->missing};
  order.map = Full_Path(words[0]);
  return order;
}
