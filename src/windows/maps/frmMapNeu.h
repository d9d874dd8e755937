#pragma once
#include <QDialog>
#include <QSizeF>
#include <memory>

class QButtonGroup;
namespace Ui {
class FrmMapNeu;
}

// Size of a new, empty map.
class FrmMapNeu : public QDialog {
  Q_OBJECT

 public:
  explicit FrmMapNeu(QWidget* parent = nullptr);
  ~FrmMapNeu() override;
  QSizeF Chosen_Size() const;  // millimetres, as chosen or typed

 public Q_SLOTS:
  void accept() override;

 private:
  void Show_Sizes();

  std::unique_ptr<Ui::FrmMapNeu> ui;
  QButtonGroup *formats, *directions;
};

// An empty map.
void Show_frmMapNeu(QWidget* parent);
