#pragma once
#include <QString>

enum class AssignKind {
  None,
  MarkedToArea,
  MarkedToLine,
  ObjectToArea,
  ObjectToLine
};  // AdNo, AdMark, AdMarkLin, AdObj, AdObjLin
// Appends ">" + the ID of the area or line to the ID of the rows, or cuts it. Object: the entry waits in hand until the
// next click chooses the area or line.
void Assign_Entries(AssignKind kind);
bool Assign_Waiting();
bool Assign_Clicked(const QString& targetBookmark);  // true if it was taken as the target
