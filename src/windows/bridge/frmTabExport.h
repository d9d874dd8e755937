#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmTabExport;
}

// The window of the tool TabBridge without an argument: the table of a map goes into the workbook beside it, which is
// opened then.
class FrmTabExport : public QDialog {
  Q_OBJECT

 public:
  // Writes nothing yet.
  explicit FrmTabExport(const QString& map, QWidget* parent = nullptr);
  ~FrmTabExport() override;
  // Writes the table of the map that is named and opens the workbook; what goes wrong is told.
  void Write_Table();

 private:
  void Choose_Map();
  void Open_Book();
  void Show_Map(const QString& path);

  std::unique_ptr<Ui::FrmTabExport> ui;
  QString map;
};
