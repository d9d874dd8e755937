#pragma once
#include <QDialog>
#include <QPoint>
#include <memory>
#include <optional>

namespace Ui {
class FrmMoveObjects;
}

// Moving all or the marked entries by a distance. It stays open beside the map, so that the distance can be shown by
// two clicks: from the fixed point to where it shall come.
class FrmMoveObjects : public QDialog {
  Q_OBJECT

 public:
  explicit FrmMoveObjects(QWidget* parent = nullptr);
  ~FrmMoveObjects() override;

 public Q_SLOTS:
  void accept() override;
  void done(int result) override;

 private:
  void Choose_Fix();
  void Show_Fix();
  void Show_Amount();
  void Ask_Fix_Point();
  void Ask_Target();
  void Pick(const QString& text, void (FrmMoveObjects::*taken)(QPoint map));
  void Fix_Picked(QPoint map);
  void Target_Picked(QPoint map);
  void Set_Distance(double x, double y);
  void Take_Back();
  void Tell(const QString& text);

  std::unique_ptr<Ui::FrmMoveObjects> ui;
  std::optional<QPoint> fix;  // map pixels
  int closedListener = 0, stateListener = 0;
};

// Moves entries; stays open beside the map.
void Show_frmMoveObjects(QWidget* parent);
