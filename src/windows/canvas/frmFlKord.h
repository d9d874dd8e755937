#pragma once
#include <QDialog>
#include <QTimer>
#include <memory>

#include "windows/canvas/frmFlKord_model.h"

namespace Ui {
class FrmFlKord;
}

// The vertices of a line, an area or a free figure in a table, to be changed, checked and put back. It stays open
// beside the map; the vertex chosen in the table is circled there.
class FrmFlKord : public QDialog {
  Q_OBJECT

 public:
  explicit FrmFlKord(VertexList vertices, QWidget* parent = nullptr);
  ~FrmFlKord() override;

 public Q_SLOTS:
  void done(int result) override;

 private:
  void Follow_Table();
  void Show_State();
  void Circle_Current();
  void Select(int row);
  void Insert();
  void Delete();
  void Put_Back();
  void Check_Pressed();
  void Check_On();
  void End_Check(const QString& told, int next);

  std::unique_ptr<Ui::FrmFlKord> ui;
  VertexModel model;
  VertexList former;  // as the window found it
  QTimer checkTimer;
  int next = 0;        // the vertex the check goes on with
  bool found = false;  // in this round
  int tableListener = 0, closedListener = 0;
};

// For the entry in hand (the current one without it): buttons "PKorr" and "LnKorr", menu "mnuFigKorr".
void Open_Vertex_Table(QWidget* parent);
