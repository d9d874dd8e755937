#pragma once
#include <QDialog>
#include <memory>

#include "import/csv_import.h"

namespace Ui {
class FrmCSVImport;
}

// The import of a CSV table: choose the file, look at what will come, import. It stays open beside the map and closes
// with it.
class FrmCSVImport : public QDialog {
  Q_OBJECT

 public:
  explicit FrmCSVImport(QWidget* parent = nullptr);
  ~FrmCSVImport() override;

  void Open_File(const QString& path);  // shows what is in it

 private:
  void Make_Menus();
  void Import();
  void Offer_Report(const CsvTable& imported, const CsvResult& result);
  void Show_Table();
  void Show_Entry();
  void Forget_Table();

  std::unique_ptr<Ui::FrmCSVImport> ui;
  CsvTable table;
  int closedListener = 0;
};

void Show_frmCSVImport(QWidget* parent);  // the command
