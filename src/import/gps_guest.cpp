#include "import/gps_guest.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <array>

#include "platform/error.h"
#include "platform/files.h"
#include "platform/guest.h"
#include "platform/shell.h"
#include "platform/system_fault.h"

namespace {

constexpr int fileSeconds = 120, deviceSeconds = 300;

struct EndingFormat {
  const char *ending, *format;
};
constexpr std::array<EndingFormat, 16> formats = {{{"kml", "kml"},
                                                   {"kmz", "kml"},
                                                   {"fit", "garmin_fit"},
                                                   {"nmea", "nmea"},
                                                   {"nma", "nmea"},
                                                   {"gdb", "gdb"},
                                                   {"tcx", "gtrnctr"},
                                                   {"loc", "geo"},
                                                   {"igc", "igc"},
                                                   {"gtm", "gtm"},
                                                   {"plt", "ozi"},
                                                   {"rte", "ozi"},
                                                   {"usr", "lowranceusr"},
                                                   {"osm", "osm"},
                                                   {"unicsv", "unicsv"},
                                                   {"tef", "tef"}}};

QString Program() { return Find_Program(QStringLiteral("gpsbabel"), ProgramFolder); }

QTemporaryDir& Checked(QTemporaryDir& folder) {
  if (!folder.isValid()) Raise(guestFailed, No_Work_Folder());
  return folder;
}

// Runs it over an input and gives what it wrote. `flaw` is what it means to the user if that fails: its own words are
// English.
QString Babel(QTemporaryDir& folder, const QString& format, const QString& input, int seconds, const QString& title,
              const QString& flaw) {
  const QString result = folder.filePath(QStringLiteral("ergebnis.gpx"));
  GuestOrder order;
  order.program = Program();
  if (order.program.isEmpty())
    Raise(guestFailed, QStringLiteral("Das Hilfsprogramm 'gpsbabel' wurde nicht gefunden (Paket gpsbabel)."));
  // Without the settings that the user may have for it. One format knows waypoints alone, and refuses to be asked for
  // all.
  order.arguments = {QStringLiteral("-p"), QString()};
  if (format != u"unicsv") order.arguments << QStringLiteral("-w") << QStringLiteral("-r") << QStringLiteral("-t");
  order.arguments << QStringLiteral("-i") << format << QStringLiteral("-f") << input << QStringLiteral("-o")
                  << QStringLiteral("gpx") << QStringLiteral("-F") << result;
  order.folder = folder.path();
  order.seconds = seconds;
  order.title = title;
  const GuestResult ran = Run_Guest(order);
  if (ran.end == GuestEnd::Cancelled) Raise(guestCancelled, QStringLiteral("Der Vorgang wurde abgebrochen."));
  if (ran.end != GuestEnd::Done) Raise(guestFailed, flaw + QStringLiteral("\n\n") + Guest_Flaw(order, ran));
  if (!File_Exists(result)) Raise(guestFailed, QStringLiteral("Das Hilfsprogramm 'gpsbabel' hat nichts geschrieben."));
  return Decode_Text(Read_Bytes(result));
}

}  // namespace

bool Has_Babel() { return !Program().isEmpty(); }

QString Babel_Format(const QString& ending, const QByteArray& bytes) {
  // Tracks of receivers and of a planner bear many endings.
  if (bytes.startsWith("$GP") || bytes.startsWith("$GN")) return QStringLiteral("nmea");
  if (bytes.startsWith("OziExplorer")) return QStringLiteral("ozi");
  for (const auto& [known, format] : formats)
    if (ending == QLatin1String(known)) return QLatin1String(format);
  return {};
}

QString Babel_File(const QByteArray& bytes, const QString& format, const QString& ending) {
  QTemporaryDir folder;
  const QString input = Checked(folder).filePath(QStringLiteral("eingabe.") + ending);
  Replace_File(input, bytes);
  return Babel(folder, format, input, fileSeconds, QStringLiteral("GPS-Daten\nDie Datei wird übersetzt ..."),
               QStringLiteral("Die Datei ist beschädigt, oder sie ist von anderer Art, als ihre Endung sagt."));
}

const std::vector<GpsDevice>& Gps_Devices() {
  static const std::vector<GpsDevice> devices = {
      {QStringLiteral("Garmin (USB oder seriell)"), QStringLiteral("garmin")},
      {QStringLiteral("Magellan"), QStringLiteral("magellan")},
      {QStringLiteral("GlobalSat DG-100"), QStringLiteral("dg-100")},
      {QStringLiteral("Holux M-241"), QStringLiteral("m241")},
      {QStringLiteral("Logger mit MTK-Chip"), QStringLiteral("mtk")},
      {QStringLiteral("Logger mit SkyTraq-Chip"), QStringLiteral("skytraq")},
      {QStringLiteral("Wintec WBT"), QStringLiteral("wbt")}};
  return devices;
}

QStringList Gps_Ports() {
  QStringList ports = {QStringLiteral("usb:")};
  const QDir devices(QStringLiteral("/dev"));
  const QStringList patterns = {QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*"), QStringLiteral("rfcomm*"),
                                QStringLiteral("ttyS0"), QStringLiteral("ttyS1")};
  for (const QString& name : devices.entryList(patterns, QDir::System | QDir::Files, QDir::Name))
    ports << devices.filePath(name);
  return ports;
}

QString Babel_Device(const QString& format, const QString& port) {
  const QFileInfo device(port);
  if (device.exists() && !(device.isReadable() && device.isWritable()))
    Raise(guestFailed, QStringLiteral("Sie dürfen den Anschluss '%1' nicht benutzen. Der Verwalter des Rechners nimmt "
                                      "Sie dazu in die Gruppe 'dialout' auf.")
                           .arg(port));
  QTemporaryDir folder;
  return Babel(Checked(folder), format, port, deviceSeconds, QStringLiteral("GPS-Gerät\nDas Gerät wird ausgelesen ..."),
               QStringLiteral("Am Anschluss '%1' antwortet kein Gerät.\nIst es eingeschaltet und mit dem Rechner "
                              "verbunden, und sind Gerät und Anschluss richtig gewählt?")
                   .arg(port));
}

bool Start_Transfer_Program(std::function<void(const QString& path)> left) {
  const QString folder = ProgramFolder + QStringLiteral("/GPS"), made = folder + QStringLiteral("/Wegpunkte.txt");
  const auto start = [&left](const QString& program, const QStringList& arguments, const QString& file) {
    const QDateTime before = QFileInfo(file).lastModified();
    return !program.isEmpty() && Start_Program(program, arguments, [left, file, before] {
      if (const QFileInfo now(file); now.isFile() && now.lastModified() != before) left(file);
    });
  };
  if (start(Find_Program(folder + QStringLiteral("/Gps.exe"), ProgramFolder), {QStringLiteral("GPSe,,") + made}, made))
    return true;
  const QString other = Find_Program(QStringLiteral("G7toWin.exe"), ProgramFolder);
  return start(other, {QStringLiteral("FileOut.txt")}, QFileInfo(other).path() + QStringLiteral("/FileOut.txt"));
}
