#pragma once
#include <QDialog>
#include <functional>
#include <memory>

#include "import/gps_import.h"

namespace Ui {
class FrmGPS;
}
class FrmWpImport;
class ImportModel;

// The window of imports: a list of what a file holds, record by record with what becomes of it, counts, and "Weiter
// >>". By itself it loads waypoints and tracks. Other imports show their own list in it. It stays open beside the map
// and closes with it.
class FrmGPS : public QDialog {
  Q_OBJECT

 public:
  explicit FrmGPS(QWidget* parent = nullptr);
  ~FrmGPS() override;

  // Another import's list; `next` is what "Weiter >>" does where any of its records can be imported, `page` its help.
  // The menu lines of the GPS data are put away. What the list refers to must last until the next list or Forget_List.
  void Show_List(ImportList list, std::function<void()> next, const QString& page);
  void Forget_List();  // nothing is shown, and nothing can be imported
  // What came of it, in place of the counts, and what the button says now.
  void Show_Outcome(const QString& text, const QString& button);
  // Rows of the list that are marked in it, ascending.
  std::vector<int> Marked_Rows() const;

  // Reads the file and shows what is in it; tracks where it has no waypoints, and the other way round. Tells what is
  // wrong with it.
  void Open_File(const QString& path, GpsContent wanted);

 private:
  void Told(const std::function<void()>& work);
  void Make_Menus();
  void Connect_Parts();
  void Load(GpsContent wanted);
  void Read_Device();
  void Take_File(GpsFile read, GpsContent wanted, const QString& name);
  void Zusammenfassung(const ImportCounts& counts);
  void Show_Counts(const ImportCounts& counts);
  void Next();
  void Choose_Look();
  void Import();

  std::unique_ptr<Ui::FrmGPS> ui;
  ImportModel* model = nullptr;
  FrmWpImport* choice = nullptr;
  std::function<void()> next;
  QString page;  // of the help
  GpsFile file;
  GpsPlan plan;
  PlacingWay way = PlacingWay::AsWritten;
  QString transformation;
  int closedListener = 0;
};

// One is enough. The window of imports, shown.
void Show_frmGPS(QWidget* parent);  // the command
