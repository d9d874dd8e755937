#include "windows/import/dropped_file.h"

#include <QFileInfo>

#include "import/gps_file.h"
#include "windows/common/show_beside.h"
#include "windows/import/frmCSVImport.h"
#include "windows/import/frmGPS.h"
#include "windows/import/frmImport.h"
#include "windows/import/overlay_window.h"

namespace {

using Import = void (*)(QWidget* parent, const QString& path);

template <typename Window>
void Open_In(QWidget* parent, const QString& path) {
  Show_Beside<Window>(parent)->Open_File(path);
}

Import Import_For(const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == u"ovl") return Open_Overlay;
  if (ending == u"csv") return Open_In<FrmCSVImport>;
  if (ending == u"mdb") return Open_In<FrmImport>;
  if (!Is_Gps_File_Name(path)) return nullptr;
  return
      [](QWidget* parent, const QString& file) { Show_Beside<FrmGPS>(parent)->Open_File(file, GpsContent::Waypoints); };
}

}  // namespace

bool Can_Be_Imported(const QString& path) { return Import_For(path) != nullptr; }

void Import_Dropped_File(QWidget* parent, const QString& path) {
  if (const Import import = Import_For(path)) import(parent, path);
}
