#pragma once
#include <QDialog>
#include <memory>
#include <optional>

#include "tools/plan_squares.h"

namespace Ui {
class FrmRaster;
}

// The design of a raster of plan squares, step by step beside the map: size, field, corners, labels; a preview on the
// map, then into the table.
class FrmRaster : public QDialog {
  Q_OBJECT

 public:
  explicit FrmRaster(QWidget* parent = nullptr);
  ~FrmRaster() override;
  // A new design, or that of the raster on the map.
  void Begin(bool existing);

 public Q_SLOTS:
  void done(int result) override;

 private:
  RasterDesign Read() const;
  void Fill(const RasterDesign& design);
  void Changed();
  void Show_Choice();
  void btnVorschau_Click();
  void btnTake_Click();
  void btnGetTxt_Click();
  void Eckpunkt_Eingabe();
  void Drag_Field();
  void Choose_Font();
  void Choose_Color();
  void Take_Back_Preview();
  void Show_Sample();

  std::unique_ptr<Ui::FrmRaster> ui;
  RasterDesign design;  // colours and font; the rest stands in the controls
  RasterSteps steps;
  std::optional<RasterPreview> shown;
  CornerUnit unit = CornerUnit::Pixel;
  bool taken = false;
  bool coloring = false;  // the window of colours means the raster
  int filling = 0, closedListener = 0, stateListener = 0;
};

// Stays open beside the map; one is enough.
void Show_frmRaster(QWidget* parent, bool existing);
