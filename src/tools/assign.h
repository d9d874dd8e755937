#pragma once

enum class AssignKind {
  None,
  MarkedToArea,
  MarkedToLine,
  ObjectToArea,
  ObjectToLine
};  // AdNo, AdMark, AdMarkLin, AdObj, AdObjLin
// Appends ">" + the ID of the area or line to the ID of the rows, or cuts it. Object: the next click on an entry
// chooses the area or line, and the entry in hand stays there meanwhile.
void Assign_Entries(AssignKind kind);
