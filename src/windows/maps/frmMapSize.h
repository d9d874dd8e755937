#pragma once
#include <QDialog>
#include <QSize>
#include <array>
#include <memory>

#include "maps/map_open.h"

class QLineEdit;
namespace Ui {
class FrmMapSize;
}

// The size of a map told in three ways for each direction, kept in step: millimetres, points per inch, points per
// metre.
class MapSizeNumbers {
 public:
  enum Unit { Mm, Dpi, PpM };
  enum Direction { Across, Down };

  MapSizeNumbers(QSize pixels, double widthMm, double heightMm);
  double Get(Direction direction, Unit unit) const;  // 0 where there is no length
  // Numbers of 0 and below are passed over. With `stretch` the other direction changes by the same factor.
  void Set(Direction direction, Unit unit, double number, bool stretch);
  // Resolution of both directions within what a picture's header can say usefully: 10 to 1,000,000 points per metre.
  bool Usable() const;
  MapSize Result() const;  // millimetres and points per metre

 private:
  std::array<double, 2> pixels, mm;
};

class FrmMapSize : public QDialog {
  Q_OBJECT

 public:
  explicit FrmMapSize(QWidget* parent = nullptr);
  ~FrmMapSize() override;

 private:
  void Typed(MapSizeNumbers::Direction direction, MapSizeNumbers::Unit unit);
  void Show_Numbers(const QLineEdit* except);
  bool Check_Numbers();
  void Take();
  void Save();
  QLineEdit* Field(MapSizeNumbers::Direction direction, MapSizeNumbers::Unit unit) const;

  std::unique_ptr<Ui::FrmMapSize> ui;
  MapSizeNumbers numbers;
};

// Millimetres and resolution of the open map.
void Show_frmMapSize(QWidget* parent);
