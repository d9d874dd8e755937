#pragma once
#include <QDialog>
#include <memory>
#include <optional>

#include "calibration/calibration_work.h"

namespace Ui {
class FrmKalibrix;
}
class CalibrationView;
class Magnifier;

// The window of Kalibrix: the picture of a map, the points of its net, and what comes of them.
class FrmKalibrix : public QDialog {
  Q_OBJECT

 public:
  explicit FrmKalibrix(QWidget* parent = nullptr);
  ~FrmKalibrix() override;
  // A picture that cannot be read is told; false.
  bool Open_Map(const QString& mapFile);
  const CalibrationWork& Work() const { return work; }

 public Q_SLOTS:
  void reject() override;  // asks first where something would be lost

 private:
  void Connect_Controls();
  void Connect_Map();
  void Choose_Map();
  bool Save();
  void Save_As();

  void Press(QPointF pixel);
  void Drag(QPointF pixel);
  void Release(QPointF pixel);
  void Hover(QPointF pixel);
  void Nudge(QPointF by);
  void Add_Point(QPointF pixel);
  QPointF Snapped(QPointF pixel) const;

  // Reads the two boxes. What is no coordinate is told if `tell`, else left.
  bool Take_Typed(bool tell);
  void Step(double right, double high);
  void Take_Net();
  void Take_Kind(int index);
  void Points_Changed();

  void Select(std::optional<size_t> index);
  void Show_All();
  void Show_Net();
  void Show_Table();
  void Show_Selected();
  void Show_Result();
  void Show_Map();
  void Light_Row();

  std::unique_ptr<Ui::FrmKalibrix> ui;
  CalibrationView* view;
  Magnifier* glass;
  CalibrationWork work;
  std::optional<size_t> selected, lit, dragged;
  std::optional<size_t> fresh;  // was set without coordinates: it counts as soon as it has them
  QPointF pressedAt, dragOffset;
  bool moved = false;
  int syncing = 0;
};
