#pragma once
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "platform/database.h"
#include "state/table_state.h"

// The statements of the user on the open table. State of the window as plain data; the procedures ask and tell by
// message boxes.

struct SqlState {
  QStringList list;  // statements with their descriptions, "statement : description"
  QString info;      // lblInfo
  // The rows of the last Select; null: the table itself is shown. A window that shows them owns them as well, since it
  // is painted while the next statement asks and tells.
  std::shared_ptr<Recordset> selection;
  // While a selection is shown UserTable has a name of its own; this one comes back when it is not taken.
  std::optional<QString> formerTable;
  TableTag formerTag = TableTag::Clean;
};

// The list of "\SQL.ini", or the six statements of a fresh program; the info of the open table.
void Open_Sql(SqlState& sql);
// Runs the statement, what stands before the first ":". False if nothing was done.
bool Apply_Sql(SqlState& sql, const QString& text);
// Leaves the selection that was not taken: UserTable has its name again.
void Close_Sql(SqlState& sql);
// Keeps the rows of the selection alone in the table and saves it as UserTable. False with a message if not.
bool Take_Sql(SqlState& sql);
void Save_Sql_List(SqlState& sql, const QString& text);    // info tells why it was not added
bool Delete_Sql_Line(SqlState& sql, const QString& text);  // False if it is not in the list
// "KARTE.MDB" -> "KARTE_SQL.mdb"; a name that is taken is passed over, one that ends so already stays.
QString Sql_Table_Name(const QString& userTable);
