#pragma once
#include <QString>
#include <QStringList>

#include "platform/database.h"

// User columns of MapData: everything behind the twelve fixed ones. Floor of the table file: they close and load it.
struct NewColumn {
  QString title;
  FieldType type = FieldType::Text;
  int width = 20;  // of a text, at least 1
};
// Adds the column ("Comment" becomes "Komment", an empty title the default); checkpoint before. False with a message
// for a name that is taken or cannot be used.
bool Add_Column(NewColumn column, const QString& defaultTitle);
// Removes it, asks nothing; False, with a message, for one of the twelve the program needs.
bool Remove_Column(QString name);
bool Is_Fixed_Column(const QString& name);  // one of the twelve, ignoring case
