#include "import/pcx5.h"
#include "fuzz/calibrated.h"
#include "fuzz/driver.h"

// Text files of waypoints and tracks, in all their dialects.

namespace {

constexpr qsizetype mostLines = 40;

QByteArrayList Seeds() {
  QByteArrayList seeds;
  for (const QByteArray& file : Files_Of(QStringLiteral(FLURAX_TEST_DATA "/gps")))
    if (!file.startsWith('<')) seeds += file.split('\n').mid(0, mostLines).join('\n');
  const QByteArray columns = "H  IDNT   LATITUDE    LONGITUDE    DATE      TIME     ALT   DESCRIPTION\r\n";
  for (const auto& [units, place] :
       {std::pair("DEG", "N49.7330353 E011.0974638"), std::pair("DMS", "N494358.9 E0110550.8"),
        std::pair("DM", "S4943.98212 W01105.84783")})
    seeds += QByteArray("I  PCX5 2.09\r\nM  G WGS 84               121\r\nU  LAT LON ") + units + "\r\n" + columns +
             "W  Igel   " + place + " 14-MAY-26 08:00:00   433 am Bach\r\nH  TN Weg\r\nT  " + place + "\r\nT  " +
             place + "\r\n";
  seeds +=
      "I  PCX5\nU  UTM UPS\nH  IDNT   Zne Eastng  Northng\nW  A      10U 609391  5784559\nW  B      32 U 643856 "
      "5510897\n";
  seeds +=
      "D  Potsdam\rM  GAUSS\rH  Name  Rechtswert Hochwert Bemerkung\rW  Igel  4432000    5511000  x\r<Weg zwei>\r"
      "T  A     4432000    5511000\rT  A     4432010    5511000\r";
  return seeds;
}

bool Run(const QByteArray& input) {
  const QString text = Decode_Text(input);
  Is_Pcx5(text);
  return Take_Gps_File(Read_Pcx5(text));
}

}  // namespace

FuzzTarget Make_Target() {
  return {"pcx5",
          Seeds(),
          {"I  PCX5\n",
           "U  LAT LON DM\n",
           "U  LAT LON DEG\n",
           "U  UTM UPS\n",
           "M  UTM\n",
           "M  DDD\n",
           "M  GAUSS\n",
           "D  WGS-84\n",
           "H  TN ",
           "H  IDNT   LATITUDE    LONGITUDE\n",
           "H  Name Zone Rechtswert Hochwert\n",
           "\nW  ",
           "\nT  ",
           "\n<",
           "32U",
           "61X",
           "N4943.98212",
           "E01105.84783",
           "49\xB0",
           "'"},
          Run,
          {}};
}
