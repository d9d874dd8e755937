#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

// Other formats and devices, by gpsbabel, which makes GPX of them in a folder of its own.

// Its name of the format of a file, by the ending (small letters) and the first bytes; "" where none is known.
QString Babel_Format(const QString& ending, const QByteArray& bytes);
// The GPX text of the bytes of such a file. Raises 5000 with a German text where the program is missing, ends with an
// error or is too slow; 5001 where the user cancelled.
inline constexpr int guestFailed = 5000, guestCancelled = 5001;
// Raises 5000 where there is no such file either.
QString Babel_File(const QByteArray& bytes, const QString& format, const QString& ending);

struct GpsDevice {
  QString name, format;
};
// What it can read out, for a list of choices.
const std::vector<GpsDevice>& Gps_Devices();
// Ports a device may hang on: "usb:" and the serial ones of this machine.
QStringList Gps_Ports();
// The GPX text of all that the device holds. Raises as above.
QString Babel_Device(const QString& format, const QString& port);
bool Has_Babel();  // is the program there?

// The transfer programs that lie beside this one: "GPS/Gps.exe" in the program folder, else "G7toWin.exe". Starts the
// first that is there and returns at once; `left` gets the file that it has written when it ends. False if there is
// none.
bool Start_Transfer_Program(std::function<void(const QString& path)> left);
