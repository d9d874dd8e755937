#pragma once
#include <QDialog>
#include <memory>

#include "tools/area_trace.h"

namespace Ui {
class FrmDigi;
}

// Digitising areas: a click into a coloured patch of the map finds its edge, a slider says how much the colours may
// differ. It stays open beside the map while it has the mouse.
class FrmDigi : public QDialog {
  Q_OBJECT

 public:
  explicit FrmDigi(QWidget* parent = nullptr);
  ~FrmDigi() override;
  // Takes the mouse of the map. False if what is being typed could not be stored.
  bool Start();

 public Q_SLOTS:
  void done(int result) override;

 private:
  void Show_Result(const TraceResult& result);
  void Show_Colors(const std::vector<QRgb>& colors);
  void Show_Tolerance();
  void Lower_Tolerance();
  void Slider_Moved(int value);
  void Try_Again(const QString& text);
  void Take();
  void New_Try();

  std::unique_ptr<Ui::FrmDigi> ui;
  int closedListener = 0;
  bool tracing = false;
};

// Pressed again while it is open the window goes.
void Show_frmDigi(QWidget* parent);
