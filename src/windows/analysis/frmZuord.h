#pragma once
#include <QDialog>
#include <memory>

#include "analysis/color_assignment.h"

class QElapsedTimer;
namespace Ui {
class FrmZuord;
}

// The assignment of texts to the colours of the map: which texts count, and the work with its own progress. Its button
// starts, stops and, when all is done, closes.
class FrmZuord : public QDialog {
  Q_OBJECT

 public:
  explicit FrmZuord(QWidget* parent = nullptr);
  ~FrmZuord() override;

 public Q_SLOTS:
  void reject() override;

 private:
  void Choose_All();
  void Options_Changed();
  void Press_Button();
  void Run();
  bool Show_Step(int done, int total);
  ColorOptions Read_Options() const;

  std::unique_ptr<Ui::FrmZuord> ui;
  std::unique_ptr<QElapsedTimer> clock;  // since the last sign of life
  bool running = false, stopped = false, finished = false;
};

// mnuZuordBackgdColor: waits until it is closed.
void Show_frmZuord(QWidget* parent);
