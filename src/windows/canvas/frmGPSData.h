#pragma once
#include <QDialog>
#include <memory>

#include "tools/coordinate_input.h"

namespace Ui {
class FrmGPSData;
}
class QLineEdit;

// A coordinate is typed or taken from a click on the map, its place is shown, the entry in hand is moved there. The
// window stays open beside the map.
class FrmGPSData : public QDialog {
  Q_OBJECT

 public:
  explicit FrmGPSData(QWidget* parent = nullptr);
  ~FrmGPSData() override;

 public Q_SLOTS:
  void accept() override;  // Enter: shows the place
  void done(int result) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Init();
  void Connect_Controls();
  void Follow_State();
  void Take_Click(QPoint map);
  void Show_Labels();
  void Leave_Box(bool easting);
  std::optional<TypedPlace> Typed_Place();
  void Show();
  void Take();
  void Set_Back();
  void Show_Taken();

  std::unique_ptr<Ui::FrmGPSData> ui;
  CoordinateForm form;
  TakenPosition taken;
  bool enteredR = false, enteredH = false;  // what stands in the box is not the start value
  QString netShown;                         // calibration file the window was set up for
  QPoint viewBefore;                        // upper left map pixel before a place was shown
  int closedListener = 0, stateListener = 0, clickListener = 0;
};

void Show_frmGPSData(QWidget* parent);  // one window, in front; it does not wait
// Shall a click on the map fill the boxes? It is remembered while the window is closed.
bool Coordinates_By_Click();
