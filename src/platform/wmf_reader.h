#pragma once
#include <QByteArray>
#include <QImage>

// Windows metafiles (not the enhanced ones), played onto an image. Unknown records are passed over.

// Does a file with these first bytes (18 at least) look like a metafile, with or without the placeable header?
bool Is_Wmf(const QByteArray& head);
// Picture of the placeable size at 96 dpi (without that header, of the first window extent), on white. Error 53 if the
// bytes are no metafile; 481, whose text is a half sentence, if drawing it costs too much or lasts longer than that.
QImage Read_Wmf(const QByteArray& bytes, int milliseconds = 5000);
// Its size; empty if the bytes are no metafile.
QSize Wmf_Size(const QByteArray& bytes);
