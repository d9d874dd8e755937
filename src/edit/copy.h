#pragma once
#include <QImage>
#include <QPoint>
#include <QString>

void Copy_Entry();       // mnuEintrCopy, "Cpy": a copy 30 pixels off, "Kopie: " before its text; also on the clipboard
void Duplicate_Entry();  // mnuEintrDupl, "Dupl": the next click places an exact duplicate
bool Duplicate_Waiting();  // for the click that places it
// With its corner at the window position; nothing if none waits.
void Place_Duplicate(QPoint window);
// Pictures: from a file (dialog when `file` is empty) or from the clipboard (written to "PicImport/Pic-N.bmp" beside
// the table). The row is current afterwards.
bool Add_Picture(QPoint window, const QString& file);
bool Add_Picture(QPoint window, const QImage& picture);
bool Add_Text(QPoint window, const QString& text);  // a text row, current afterwards
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
