#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <algorithm>

#include "edit/bulk_change.h"
#include "edit/copy.h"
#include "hand/activation.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/table_state.h"
#include "store/entry_edit.h"
#include "view/picture_cache.h"

// Picture entries: from a file, from the clipboard, in another size.

namespace {

const QString title = QStringLiteral("Bild");
const QString importFolder = QStringLiteral("PicImport");
constexpr qint64 mostPixels = 64'000'000;  // 256 MB in memory

void Tell(const QString& text) { Message_Box(text, MsgButtons::Ok, MsgIcon::Warning, title); }

void Tell(const QString& text, const Error& error) {
  Tell(text + u'\n' + (error.text.isEmpty() ? QString::number(error.number) : error.text) +
       QStringLiteral("\n\nEs wurde nichts verändert."));
}

bool Too_Large(qint64 width, qint64 height) {
  if (width * height <= mostPixels) return false;
  Tell(QStringLiteral("Das Bild ist zu groß: %1 x %2 Pixel.\nEs darf höchstens %3 Millionen Pixel haben.")
           .arg(width)
           .arg(height)
           .arg(mostPixels / 1'000'000));
  return true;
}

// Makes the folder beside the table; the first free "PicImport/Pic-N" with that ending. N is free for all endings.
QString Free_Import_Name(const QString& ending) {
  const QString beside = QFileInfo(TableFile).path();
  if (!QDir(beside).mkpath(importFolder))
    Raise(errors::pathNotFound,
          QStringLiteral("Der Ordner kann nicht angelegt werden: ") + beside + u'/' + importFolder);
  const QString folder = beside + u'/' + importFolder;
  int number = 1;
  while (!Find_Files(folder, QStringLiteral("Pic-%1.*").arg(number)).isEmpty()) ++number;
  return importFolder + QStringLiteral("/Pic-%1.").arg(number) + ending;
}

QString Full_Path(const QString& importName) { return QFileInfo(TableFile).path() + u'/' + importName; }

// On white where it is transparent: bitmaps know no transparency.
QImage Opaque(const QImage& picture) {
  if (!picture.hasAlphaChannel()) return picture;
  QImage opaque(picture.size(), QImage::Format_RGB32);
  opaque.fill(Qt::white);
  QPainter(&opaque).drawImage(0, 0, picture);
  return opaque;
}

// Writes it into the import folder; its name for the row.
QString Write_Import(const QImage& picture) {
  const BusyPointer busy;
  const QString name = Free_Import_Name(QStringLiteral("bmp"));
  Save_Picture(Opaque(picture), Full_Path(name));
  return name;
}

bool Append_Picture(QPoint window, const QString& name) {
  EntryRow row;
  row.ID = QStringLiteral("Bild");
  row.Eintrag = name;
  row.Schrift = QStringLiteral("-");
  row.VG = CurVG;
  row.HG = CurHG;
  row.RA = CurRA;
  row.Xmap = std::clamp(Map_X(window.x()), -32768, 32767);
  row.Ymap = std::clamp(Map_Y(window.y()), -32768, 32767);
  row.Typ = static_cast<int>(EntryKind::Picture);
  if (!Append_In_Transaction(title, [&row] { Append_Entry(row); })) return false;
  Show_Changed_Entries();
  return true;
}

QString Ask_For_Picture() {
  FileRequest request;
  request.title = QStringLiteral("Bild einfügen");
  request.folder = QFileInfo(MapFile).path();
  request.defaultExtension = QStringLiteral("BMP");
  request.helpPage = QStringLiteral("Bilder.htm");
  request.filter = QStringLiteral("Bilder(*.bmp;*.wmf;*.ico)|") + Picture_Patterns() + QStringLiteral(";*.ico");
  return Clean_Path(File_Dialog(request).value_or(QString()));
}

// The name the row keeps: a long one is exchanged for a copy in the import folder.
QString Name_For_Row(const QString& path) {
  if (path.size() <= Tbl.EintragSize) return path;
  const QString name = Free_Import_Name(QFileInfo(path).suffix().toLower());
  File_Copy(path, Full_Path(name));
  return name;
}

}  // namespace

bool Add_Picture(QPoint window, const QString& file) {
  if (!rsEntries || (Entry_In_Hand() && !End_Entry())) return false;
  const QString path = file.isEmpty() ? Ask_For_Picture() : Clean_Path(file);
  if (path.isEmpty()) return false;
  try {
    const QSize size = Picture_Size(path);
    if (size.isEmpty()) {
      Tell((File_Exists(path) ? QStringLiteral("Diese Datei ist kein lesbares Bild:\n")
                              : QStringLiteral("Diese Datei wurde nicht gefunden:\n")) +
           path);
      return false;
    }
    if (Too_Large(size.width(), size.height())) return false;
    const QString name = Name_For_Row(path);
    const bool added = Append_Picture(window, name);
    if (!added && name != path) Kill_Quietly(Full_Path(name));
    return added;
  } catch (const Error& error) {
    Tell(QStringLiteral("Das Bild kann nicht eingefügt werden:\n") + path, error);
    return false;
  }
}

bool Add_Picture(QPoint window, const QImage& picture) {
  if (!rsEntries || picture.isNull() || (Entry_In_Hand() && !End_Entry())) return false;
  if (Too_Large(picture.width(), picture.height())) return false;
  QString name;
  try {
    name = Write_Import(picture);
  } catch (const Error& error) {
    Tell(QStringLiteral("Das Bild der Zwischenablage kann nicht gespeichert werden."), error);
    return false;
  }
  if (Append_Picture(window, name)) return true;
  Kill_Quietly(Full_Path(name));
  return false;
}

namespace {

QSize Wanted_Size(QSize own, PictureSizing sizing, QSize asked) {
  if (sizing == PictureSizing::Original) return own;
  if (sizing == PictureSizing::Free) return asked;
  // A side that is not given follows the other.
  if (asked.width() <= 0) asked.setWidth(32767);
  if (asked.height() <= 0) asked.setHeight(32767);
  return own.scaled(asked, Qt::KeepAspectRatio).expandedTo({1, 1});
}

}  // namespace

bool Size_Picture(PictureSizing sizing, int width, int height) {
  if (!On_Current_Entry()) return false;
  if (Type_Here().Kind() != EntryKind::Picture) return false;
  const bool given = sizing == PictureSizing::Free ? width > 0 && height > 0 : width > 0 || height > 0;
  if (sizing != PictureSizing::Original && !given) {
    Tell(QStringLiteral("Bitte geben Sie Breite und Höhe des Bildes in Pixeln ein."));
    return false;
  }
  const QString file = Find_Picture(rsEntries->Text(column::Eintrag));
  QString name;
  try {
    const QImage picture = Load_Picture(file, entryPicture);
    const QSize size = Wanted_Size(picture.size(), sizing, {width, height});
    if (size == picture.size()) return true;
    if (Too_Large(size.width(), size.height())) return false;
    name = Write_Import(picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  } catch (const Error& error) {
    Tell(QStringLiteral("Die Größe des Bildes kann nicht geändert werden:\n") + rsEntries->Text(column::Eintrag),
         error);
    return false;
  }
  const auto change = Change_Of_Current([&name](EntryRow& row, qint64) { row.Eintrag = name; });
  if (Write_Changes(change, title) > 0) return true;
  Kill_Quietly(Full_Path(name));
  return false;
}
