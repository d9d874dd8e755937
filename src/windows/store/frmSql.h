#pragma once
#include <QDialog>
#include <memory>

#include "edit/sql_query.h"

namespace Ui {
class FrmSql;
}
class SqlGridModel;

// Statements on the table of the entries, and the rows they give. The map waits meanwhile: the selection belongs to
// the table as it was when it was made.
class FrmSql : public QDialog {
  Q_OBJECT

 public:
  explicit FrmSql(QWidget* parent = nullptr);
  ~FrmSql() override;

 private:
  void Apply();
  void Take();
  void Save_List();
  void Delete_Line();
  void Fill_List();
  void Show_State();

  std::unique_ptr<Ui::FrmSql> ui;
  SqlState sql;
  SqlGridModel* model;
};

// The user's statements on the table.
void Show_frmSql(QWidget* parent);
