#pragma once
#include <QImage>
#include <QPoint>
#include <QString>

void Copy_Entry();  // mnuEintrCopy, "Cpy": a copy 30 pixels off, "Kopie: " before its text; also on the clipboard
// An exact duplicate of the row with its upper left corner there; in hand if an entry was.
void Place_Duplicate(const QString& source, QPoint window);
// Pictures: from a file (dialog when `file` is empty) or from the clipboard (written to "PicImport/Pic-N.bmp" beside
// the table). The row is current afterwards.
bool Add_Picture(QPoint window, const QString& file);
bool Add_Picture(QPoint window, const QImage& picture);  // from the clipboard
bool Add_Text(QPoint window, const QString& text);       // a text row, current afterwards
enum class PictureSizing { Original, Proportional, Free };
// Writes a resized copy of the current picture row's file into "PicImport" and stores its name. Map pixels.
bool Size_Picture(PictureSizing sizing, int width, int height);
// The clipboard behind a service, so that tests need none: text, picture.
struct ClipboardFace {
  QString (*text)() = nullptr;
  QImage (*picture)() = nullptr;
  void (*setText)(const QString&) = nullptr;
};
extern ClipboardFace clipboardFace;
