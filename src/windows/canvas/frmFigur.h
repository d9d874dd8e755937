#pragma once
#include <QDialog>
#include <memory>
#include <optional>

#include "store/entry.h"

namespace Ui {
class FrmFigur;
}
class QLabel;

// Kind and size of the figure in hand, or of the next one where none is in hand. Stays open beside the map.
class FrmFigur : public QDialog {
  Q_OBJECT

 public:
  explicit FrmFigur(QWidget* parent = nullptr);
  ~FrmFigur() override;

 public Q_SLOTS:
  void accept() override;
  void done(int result) override;

 private:
  void Follow();
  void Show_Values(EntryKind kind, int width, int height);
  void Show_Measures();
  void Choose_Kind(int line);
  void Take_Next_Size();
  void New_Figure();

  std::unique_ptr<Ui::FrmFigur> ui;
  std::optional<EntryRow> shown;  // the figure in hand
  int syncing = 0;
  int closedListener = 0, stateListener = 0, tableListener = 0;
};

// Kind and size of figures; stays open beside the map.
void Show_frmFigur(QWidget* parent);
