#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmBildZoom;
}

// The zoom factor typed as a number: 1 is the size of the scan, 0,5 half of it.
class FrmBildZoom : public QDialog {
  Q_OBJECT

 public:
  explicit FrmBildZoom(QWidget* parent = nullptr);
  ~FrmBildZoom() override;

 public Q_SLOTS:
  void accept() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Show_Percent();

  std::unique_ptr<Ui::FrmBildZoom> ui;
  QString before;  // the factor as it was shown at first
};

// Zoom factor of the map.
void Show_frmBildZoom(QWidget* parent);
