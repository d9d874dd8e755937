#pragma once
#include <QImage>
#include <QString>

// Reads a picture file: BMP (also RLE and top-down), JPG, GIF, PNG and what else the image library reads; WMF is played
// onto an image. 8-bit pictures stay indexed. Errors: 53 missing, 7 not enough memory (the text names the need in MB),
// 481 damaged or no picture.
QImage Load_Picture(const QString& path);
// Width and height without loading; an empty size if it is no picture.
QSize Picture_Size(const QString& path);
// Memory the picture would need, in bytes.
qint64 Picture_Memory(QSize size, int bitsPerPixel);
// Writes BMP, PNG or JPG by the ending, aside and renamed. `pointsPerMetre` goes into the header.
void Save_Picture(const QImage& picture, const QString& path, int pointsPerMetre = 3780);
