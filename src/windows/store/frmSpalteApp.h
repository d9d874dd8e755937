#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmSpalteApp;
}

// A column of the user for the table: title, kind and, of a text, width.
class FrmSpalteApp : public QDialog {
  Q_OBJECT

 public:
  explicit FrmSpalteApp(QWidget* parent = nullptr);
  ~FrmSpalteApp() override;

 public Q_SLOTS:
  void accept() override;

 private:
  std::unique_ptr<Ui::FrmSpalteApp> ui;
};

// A new column of the table.
void Show_frmSpalteApp(QWidget* parent);
