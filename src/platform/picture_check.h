#pragma once
#include <QSize>
#include <QString>
#include <QtGlobal>
#include <optional>

class QFile;

// Head of a bitmap, read here because the image library does not tell the size of bitmaps with the top row first.
struct BmpHead {
  qint64 pixelOffset = 0;
  qint64 width = 0, height = 0;  // the height always counted from 0 up
  int bits = 0;
  quint32 compression = 0;  // 1 and 2: packed rows of 8 and 4 bits
};
// Nothing if it is no bitmap or its head is damaged. The file's position is kept, here and below.
std::optional<BmpHead> Read_Bmp_Head(QFile& file);

// What is wrong with a picture file that the image library would pass over in silence (rows cut off at the end, a
// picture part that is too short), as a German half sentence; empty if nothing was found.
QString Picture_Flaw(QFile& file);
