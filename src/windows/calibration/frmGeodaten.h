#pragma once
#include <QDialog>
#include <memory>

#include "calibration/geodata.h"

namespace Ui {
class FrmGeodaten;
}

// A map from rasters of survey offices: which ones, in what system, how fine.
class FrmGeodaten : public QDialog {
  Q_OBJECT

 public:
  explicit FrmGeodaten(QWidget* parent = nullptr);
  ~FrmGeodaten() override;
  // A raster that cannot be read is told; false.
  bool Add_Raster(const QString& path);

 public Q_SLOTS:
  void accept() override;  // asks for the name, makes the map and opens it

 private:
  void Choose_Raster();
  void Remove_Raster();
  void Propose();
  void Show_Size();
  bool Wants_Long_Work();
  GeodataWish Read_Wish() const;

  std::unique_ptr<Ui::FrmGeodaten> ui;
  std::vector<GeoRaster> rasters;
  int syncing = 0;
};

// Shows the window and waits.
void Show_frmGeodaten(QWidget* parent);
