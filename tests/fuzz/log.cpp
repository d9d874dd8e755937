#include "fuzz/driver.h"
#include "store/log_record.h"
#include "store/map_log.h"

// "Map.log": the lists of the last files.

namespace {

QByteArrayList Seeds() {
  const QString here = QStringLiteral("/dev/shm/Karte"), far = QStringLiteral("//Rechner/Platz/Größe.bmp");
  std::vector<LogRecord> records{{1, 1, 0, here + ".bmp"}, {2, 3, 1, here + ".MDB"}, {2, 4, 1, here + "_2.MDB"},
                                 {3, 1, 0, here + ".txt"}, {1, 2, 0, far},           {-2, 0, 0, {}}};
  QByteArrayList seeds{Encode_Log(records)};
  for (int i = 3; i < 30; ++i) records.push_back({1 + i % 3, i, i % 5, here + QString::number(i)});
  seeds += Encode_Log(records);
  seeds += Encode_Log({{1, 32767, 0, QString(300, u'ä')}, {2, -32768, 32767, QString(300, QChar(0x416))}});
  return seeds;
}

// What was read is written in the same way, once it has been written.
void Check_Round_Trip(const std::vector<LogRecord>& records) {
  const QByteArray written = Encode_Log(records);
  std::vector<LogRecord> again;
  if (!Decode_Log(written, again) || again.size() != records.size())
    throw std::runtime_error("a log is not read again");
  if (Encode_Log(again) != written) throw std::runtime_error("a log changes by being written");
}

bool Run(const QByteArray& input) {
  const QString log = Put_File(QStringLiteral("Programm/Map.log"), input);
  Put_File(QStringLiteral("Programm/Tables.ini"), input);
  QFile::remove(ProgramFolder + QStringLiteral("/Map.bak"));
  MapFile = Work_Folder() + QStringLiteral("/Karte.bmp");
  std::vector<LogRecord> records;
  const bool sound = Decode_Log(input, records);
  if (sound) Check_Round_Trip(records);
  Read_Log(1);
  Read_Log(2);
  Read_Log(3);
  Write_Log(MapFile, 1);
  Write_Log(Work_Folder() + QStringLiteral("/Käfer.MDB"), 2);
  Write_Log(Work_Folder() + QStringLiteral("/Notiz.txt"), 3);
  Compress_Log();
  if (!Decode_Log(Read_Bytes(log), records)) throw std::runtime_error("the log is damaged by being used");
  for (const QString& aside : Find_Files(ProgramFolder, QStringLiteral("Map_*.log"))) QFile::remove(aside);
  MapFile.clear();
  return sound;
}

}  // namespace

FuzzTarget Make_Target() {
  return {"log", Seeds(), {QByteArray(206, '\0'), QByteArray(200, ' '), "Map:", "\r\n"}, Run, {}};
}
