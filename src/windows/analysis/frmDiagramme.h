#pragma once
#include <QDialog>
#include <memory>

#include "analysis/diagrams.h"

class QTimer;
namespace Ui {
class FrmDiagramme;
}

// The numbers of the open map as diagrams. It stays open beside the map and is drawn anew when the table changes.
class FrmDiagramme : public QDialog {
  Q_OBJECT

 public:
  explicit FrmDiagramme(QWidget* parent = nullptr);
  ~FrmDiagramme() override;

 private:
  void Read_Map();
  void Fill_Places();
  void Show_Diagram();
  std::optional<size_t> Chosen_Row() const;  // of the matrix; nothing for the whole map
  void Save(const QString& ending);
  void Print();
  void Copy();

  std::unique_ptr<Ui::FrmDiagramme> ui;
  QTimer* later;  // many changes in a row are one
  MapInput input;
  SpeciesMatrix matrix;
  int closedListener = 0, tableListener = 0, redrawListener = 0;
};

// mnuDiagramme. One window is enough.
void Show_frmDiagramme(QWidget* parent);
