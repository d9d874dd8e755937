#include "windows/import/dropped_file.h"

#include <QFileInfo>

#include "import/gps_file.h"
#include "windows/import/frmCSVImport.h"
#include "windows/import/frmGPS.h"
#include "windows/import/frmImport.h"
#include "windows/import/overlay_window.h"

namespace {

using Import = void (*)(QWidget* parent, const QString& path);

Import Import_For(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == u"ovl") return Open_Overlay;
  if (ending == u"csv") return [](QWidget* parent, const QString& file) { Open_frmCSVImport(parent).Open_File(file); };
  if (ending == u"mdb") return [](QWidget* parent, const QString& file) { Open_frmImport(parent).Open_File(file); };
  if (!Is_Gps_File_Name(path)) return nullptr;
  return [](QWidget* parent, const QString& file) { Open_frmGPS(parent).Open_File(file, GpsContent::Waypoints); };
}

}  // namespace

bool Can_Be_Imported(const QString& path) { return Import_For(path) != nullptr; }

void Import_Dropped_File(QWidget* parent, const QString& path) {
  if (const Import import = Import_For(path)) import(parent, path);
}
