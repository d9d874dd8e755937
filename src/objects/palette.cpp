#include "objects/palette.h"

#include "platform/surface.h"
#include "state/global_state.h"
#include "store/file_names.h"

namespace {
QString Palette_File() { return Program_File(QStringLiteral("MAP-Farb")); }

// Numbers as they stand, whatever separates them.
QStringList Read_Numbers() {
  QStringList numbers;
  for (QString line : Read_Lines(Palette_File())) {
    line.replace(u',', u' ').replace(u'\t', u' ');
    numbers += line.split(u' ', Qt::SkipEmptyParts);
  }
  return numbers;
}
}  // namespace

void Standard_Palette() {
  for (int i = 0; i < 16; ++i) Palette[static_cast<size_t>(i)] = QBColor(i);
}

void Load_Palette() {
  Standard_Palette();
  try {
    if (!File_Exists(Palette_File())) return Save_Palette();
    const QStringList numbers = Read_Numbers();
    for (qsizetype i = 0; i < qMin<qsizetype>(16, numbers.size()); ++i) {
      bool isNumber = false;
      const int number = numbers[i].toInt(&isNumber);
      if (isNumber && number >= 0 && number <= 0xFFFFFF)
        Palette[static_cast<size_t>(i)] = qRgb(number & 0xFF, number >> 8 & 0xFF, number >> 16);
    }
  } catch (const Error&) {
    // A folder that cannot be written or a file that cannot be read leaves the standard colours.
  }
}

void Save_Palette() {
  QStringList lines;
  for (const QRgb color : Palette) lines += QString::number(qRed(color) + (qGreen(color) << 8) + (qBlue(color) << 16));
  Write_Lines(Palette_File(), lines);
}
