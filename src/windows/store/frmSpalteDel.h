#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmSpalteDel;
}

// Removes a column of the user, chosen by a click on its head in the table.
class FrmSpalteDel : public QDialog {
  Q_OBJECT

 public:
  explicit FrmSpalteDel(QWidget* parent = nullptr);
  ~FrmSpalteDel() override;

 private:
  void Choose(const QString& name);
  void Remove();

  QString chosen;
  std::unique_ptr<Ui::FrmSpalteDel> ui;
};

// Removes a column; does not wait: the user clicks on the head of the column.
void Show_frmSpalteDel(QWidget* parent);
