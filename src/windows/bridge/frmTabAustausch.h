#pragma once
#include <QDialog>
#include <memory>

#include "maps/sheet_bridge_tool.h"

class QComboBox;
class TabListModel;
namespace Ui {
class FrmTabAustausch;
}

// The window of the tool TabBridge with the word "ColExchange": columns of the copy against those of a sheet. The
// differences are listed before anything is written.
class FrmTabAustausch : public QDialog {
  Q_OBJECT

 public:
  explicit FrmTabAustausch(SheetExchange& exchange, QWidget* parent = nullptr);
  ~FrmTabAustausch() override;
  // As if it had been chosen; what goes wrong is told.
  void Take_Workbook(const QString& path);
  SheetOrder Order() const;  // as it is chosen now

 private:
  void Choose_Workbook();
  void Read_Again();
  void Choose_Sheet(const QString& name);
  void Show_Sheets();
  void Show_Columns();
  void Fill_Titles(QComboBox& box, int chosen) const;
  void Show_Key();
  void Check_All(bool on);
  void Forget_Differences();
  void Compare();
  void Take();
  void Take_Back();
  void Show_Buttons();

  std::unique_ptr<Ui::FrmTabAustausch> ui;
  SheetExchange& exchange;
  TabListModel* list;
  int syncing = 0;
  bool compared = false;
};
