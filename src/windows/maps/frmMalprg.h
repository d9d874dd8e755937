#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmMalprg;
}

// The list of paint programs. It is written when the window is left with "Auswählen".
class FrmMalprg : public QDialog {
  Q_OBJECT

 public:
  explicit FrmMalprg(QWidget* parent = nullptr);
  ~FrmMalprg() override;

 public Q_SLOTS:
  void accept() override;

 private:
  void Add();
  void Remove();
  void Show_Buttons();

  std::unique_ptr<Ui::FrmMalprg> ui;
};

// The list of paint programs: add, remove, choose.
void Show_frmMalprg(QWidget* parent);
