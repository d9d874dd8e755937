#pragma once
#include <QImage>

class QFile;
struct BmpHead;

// The image library takes no bitmap of more pixels than this for a sound one.
inline constexpr qint64 wholeBmpPixels = qint64{16384} * 16384;

// Reads a bitmap of unpacked rows piece by piece, each of them a bitmap of its own to the image library; no more than
// `stripPixels` at a time, but one row at least. Null where a piece cannot be read or the memory does not suffice. The
// file's position changes.
QImage Read_Bmp_Strips(QFile& file, const BmpHead& head, qint64 stripPixels = wholeBmpPixels / 16);
