#pragma once
#include <QDialog>
#include <memory>
#include <optional>

#include "edit/figure_extras.h"

namespace Ui {
class FrmEigenschaften;
}

// Angle, centre, foci and axes of the figure in hand. Stays open beside the map.
class FrmEigenschaften : public QDialog {
  Q_OBJECT

 public:
  explicit FrmEigenschaften(QWidget* parent = nullptr);
  ~FrmEigenschaften() override;

 public Q_SLOTS:
  void accept() override;
  void done(int result) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Follow();
  void Show_Row();
  void Show_Preview();
  void Show_Angle(double angle);
  FigureExtras Chosen() const;
  std::optional<double> Angle() const;  // nothing where no number is typed
  void Turn_On_Map();
  void End_Turning(std::optional<double> angle);

  std::unique_ptr<Ui::FrmEigenschaften> ui;
  std::optional<EntryRow> shown;
  FigureExtras extrasShown;
  bool turning = false;  // the figure is being turned on the map
  int syncing = 0;
  int closedListener = 0, stateListener = 0, tableListener = 0;
};

// Axes, foci and angle of the figure in hand; stays open beside the map.
void Show_frmEigenschaften(QWidget* parent);
