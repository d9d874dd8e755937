#pragma once
#include <QImage>
#include <QString>

// What one picture may cost. A picture file is a stranger's work: a few kilobytes can unfold to any size, and a drawing
// can be played for hours.
struct PictureLimits {
  qint64 pixels = 0;
  qint64 memory = 0;     // bytes while it is read; what is free counts as well
  qint64 fileBytes = 0;  // of the packed kinds, which are searched as a whole
  int milliseconds = 0;  // of computing
};
inline constexpr PictureLimits mapPicture{500'000'000, qint64{4} << 30, qint64{1} << 30, 60'000};
// One of many on a map.
inline constexpr PictureLimits entryPicture{100'000'000, qint64{512} << 20, qint64{256} << 20, 5'000};

// Reads a picture file: BMP (also RLE and top-down), JPG, GIF, PNG and what other kinds of pixels the image library
// reads; WMF is played onto an image. 8-bit pictures stay indexed. Errors: 53 missing, 76 a path too long, 70 not
// readable, 7 not enough memory (the text names the need in MB), 481 damaged, beyond the limits, no picture, no
// ordinary file. Nothing else leaves; all texts but that of a bad metafile name the file.
QImage Load_Picture(const QString& path, const PictureLimits& limits = mapPicture);
// Patterns of the names such files have, "*.bmp;*.rle;...", for the filter of a file dialog.
QString Picture_Patterns();
// Is it one of them, in any case? The file is not looked at.
bool Is_Picture_Name(const QString& path);
// Width and height without loading; an empty size if it is no picture.
QSize Picture_Size(const QString& path);
// Error 76 if the path is too long for a map and the table beside it, 481 if it is a folder, a pipe or a device, which
// must not even be opened. A missing file is no matter here.
void Check_Map_File(const QString& path);
// Memory the picture would need, in bytes.
qint64 Picture_Memory(QSize size, int bitsPerPixel);
// Writes BMP, PNG or JPG by the ending, aside and renamed. `pointsPerMetre` goes into the header.
void Save_Picture(const QImage& picture, const QString& path, int pointsPerMetre = 3780);
