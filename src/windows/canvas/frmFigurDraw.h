#pragma once
#include <QDialog>
#include <QPoint>
#include <memory>
#include <optional>
#include <vector>

#include "store/entry.h"

namespace Ui {
class FrmFigurDraw;
}

// A free figure: drawing it point by point, and the table of its vertices. Stays open beside the map.
class FrmFigurDraw : public QDialog {
  Q_OBJECT

 public:
  explicit FrmFigurDraw(QWidget* parent = nullptr);
  ~FrmFigurDraw() override;

 public Q_SLOTS:
  void accept() override;
  void done(int result) override;

 private:
  void Follow();
  void Fill_Table(const std::vector<QPoint>& vertices);
  void Set_Row(int line, QPoint vertex);
  // The vertices as typed; nothing if a cell holds no number: it is shown then.
  std::optional<std::vector<QPoint>> Typed();
  void Choose_Edges();
  void Insert_Point();
  void Remove_Point();
  void Enable_Buttons();

  std::unique_ptr<Ui::FrmFigurDraw> ui;
  std::optional<EntryRow> shown;  // the free figure in hand
  std::vector<QPoint> filled;     // what the table was filled with
  int syncing = 0;
  int closedListener = 0, stateListener = 0, tableListener = 0;
};

// A free figure and its vertices; stays open beside the map.
void Show_frmFigurDraw(QWidget* parent);
