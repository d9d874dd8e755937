#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmNachbar;
}

// How many nearest neighbours of every entry are looked for, and how the report tells of them.
class FrmNachbar : public QDialog {
  Q_OBJECT

 public:
  explicit FrmNachbar(QWidget* parent = nullptr);
  ~FrmNachbar() override;

 public Q_SLOTS:
  void accept() override;

 private:
  std::unique_ptr<Ui::FrmNachbar> ui;
};

// mnuNachbar: waits until it is closed.
void Show_frmNachbar(QWidget* parent);
