#include "fuzz/calibrated.h"
#include "fuzz/driver.h"
#include "import/csv_file.h"
#include "import/csv_import.h"
#include "import/csv_place.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/table_state.h"
#include "store/table_file.h"

// Tables in CSV: header, lines, coordinates in every kind of net, and now and then the whole import.

namespace {

constexpr int betweenImports = 40, betweenOutlines = 4;

QByteArrayList Seeds() {
  QByteArrayList seeds = Files_Of(QStringLiteral(FLURAX_TEST_DATA "/csv"));
  seeds +=
      "#X;#Y;#Eintrag;#GEO\r\n11.05;49.75;Amsel;\r\n11\xB0"
      "03'00,00\xA8;49\xB0"
      "45'00,00\xA8;\"Dros;sel\";\r\n;;leer;\r\n";
  seeds += "#Eintrag,#X,#Y,#GEO\n\"a \"\"b\"\"\",11.01,49.74\n-x-,-11.01,-49.74\n";
  seeds += "#X\t#Y\t#Eintrag\t#GAUSS\r4434567\t5512345\tKiebitz\r";
  seeds += "#X;#Y;#Eintrag;#UTM\n32646500;5512500;Zone davor\n646500,7;5512500.2;Komma\n+646500;-5512500;Vorzeichen\n";
  seeds += "Plz: 90402 0\r\nOrt: Ort\r\nZtr: 11.05 49.75\r\n11.03 49.74 T\r\n11.05 49.76 T\r\n11,9 49.76 T\r\nEND\r\n";
  return seeds;
}

const CoordinateState& Geographic_Net() {
  return *std::find_if(Some_Nets().begin(), Some_Nets().end(),
                       [](const CoordinateState& net) { return net.Geographic(); });
}

void Import(const CsvTable& table, const CoordinateState& net) {
  Open_Empty_Table();
  Coord = net;
  Csv_Report(table, Csv_Import(table, {static_cast<int>(table.CsvLines.size() % 30) - 3, 7}));
  Close_Table(CloseMode::CloseOnly);
}

// A line at fault is told by an Error, all others by a place or a reason.
bool Place(const CsvTable& table, const CoordinateState& net, const CsvRecord& record) {
  try {
    const CsvPlace place = Csv_Place_Of(table, net, record);
    if (!place.onMap) return false;
    if (place.at.x() < 0 || place.at.y() < 0 || place.at.x() > netMapWidth || place.at.y() > netMapHeight)
      throw std::runtime_error("a place beside the map");
    return true;
  } catch (const Error&) {
    return false;
  }
}

bool Run(const QByteArray& input) {
  static int number = 0;
  ++number;
  const QString path = Put_File(QStringLiteral("Tabelle.csv"), input);
  if (number % betweenOutlines == 0) {
    Coord = Geographic_Net();
    Csv_Plz(path);
  }
  CsvTable table;
  if (!Csv_Analyse(path, table)) return false;
  CsvReader reader(table);
  int placed = 0;
  for (const CsvLine& line : table.CsvLines) {
    reader.Has_Text(line.text);
    const CsvRecord record = reader.Read(line);
    for (const CoordinateState& net : Some_Nets()) placed += Place(table, net, record);
  }
  if (number % betweenImports == 0 || (placed > 0 && number % 8 == 0))
    Import(table, Some_Nets()[static_cast<size_t>(number) / betweenImports % Some_Nets().size()]);
  return true;
}

}  // namespace

FuzzTarget Make_Target() {
  return {"csv",
          Seeds(),
          {"#X", "#Y", "#Eintrag", "#Eintrag10", "#UTM", "#GEO", "#GAUSS", "\"", ";", "\t", "\r\n", "\xB0",
           "\xEF\xBB\xBF", "Plz: 90402\r\n", "Ztr: 11.05 49.75\r\n", "11.05 49.75 T\r\n"},
          Run,
          {}};
}
