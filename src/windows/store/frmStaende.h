#pragma once
#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>
#include <vector>

#include "store/version_differences.h"

namespace Ui {
class FrmStaende;
}

// Earlier states of the table: what has changed since, a look at one on the map, and the way back, for single entries
// or for all.
class FrmStaende : public QDialog {
  Q_OBJECT

 public:
  explicit FrmStaende(QWidget* parent = nullptr);
  ~FrmStaende() override;

 private:
  // The differences of one are counted in pieces, while nothing else is to be done.
  struct Shown {
    TableVersion version;
    std::optional<VersionDifferences> differences;
    bool unreadable = false;
  };
  void Load_List();
  void Table_Changed();  // everything is counted anew
  void Work();           // a piece
  void Count_On(int milliseconds);
  int Next_To_Count() const;  // -1 when all is counted
  void List_Some();
  void Show_Line(int row);
  const Shown* Chosen() const;  // nullptr without one
  void Show_Differences();
  void Show_On_Map(bool on);
  void Take_All();
  void Take_Chosen();
  void Enable_Buttons();

  std::unique_ptr<Ui::FrmStaende> ui;
  std::vector<Shown> versions;
  VersionComparison comparison;
  int counting = -1;  // the version being compared
  QTimer timer;
  int chosenEntries = 0;  // how many are ticked
};

void Show_frmStaende(QWidget* parent);  // waits
