#pragma once
#include <QDialog>
#include <memory>

#include "import/table_import.h"

class ImportGridModel;
class QComboBox;

namespace Ui {
class FrmImport;
}

// Entries out of another table: look at them, filter them, have them changed on the way, add them to the open ones. It
// stays open beside the map and closes with it.
class FrmImport : public QDialog {
  Q_OBJECT

 public:
  explicit FrmImport(QWidget* parent = nullptr);
  ~FrmImport() override;
  void Open_File(const QString& path);  // shows what is in it

 private:
  void Connect_Controls();
  void Choose_File();
  void Show_Source();
  void Take_Filter();
  void FilterClear();
  void Show_Rows(std::vector<qint64> rows);
  void Add();
  std::vector<qint64> Chosen_Rows() const;
  void Show_Step();
  void Show_Change();
  void Change_Size();

  std::unique_ptr<Ui::FrmImport> ui;
  std::unique_ptr<TableSource> source;
  ImportGridModel* model;
  bool filtered = false, large = false;
  int closedListener = 0;
};

void Show_frmImport(QWidget* parent);  // the command
