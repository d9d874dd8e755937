#pragma once
#include <QDialog>
#include <QTimer>
#include <memory>

namespace Ui {
class FrmVerlauf;
}
class QListWidgetItem;

// The steps since the map was opened; a click goes to the state after that step, the map follows. Stays open beside the
// map and shows every new step.
class FrmVerlauf : public QDialog {
  Q_OBJECT

 public:
  explicit FrmVerlauf(QWidget* parent = nullptr);
  ~FrmVerlauf() override;

 private:
  void Show_Steps();
  void Go_To(int position);

  std::unique_ptr<Ui::FrmVerlauf> ui;
  QTimer later;  // the list is read once after whatever happened
  int listeners[3];
};

void Show_frmVerlauf(QWidget* parent);  // one window, in front; it does not wait
