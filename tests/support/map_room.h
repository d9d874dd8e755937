#pragma once
#include "edit/table_edit.h"
#include "view/view.h"

// Gives the open map a window of that size to itself: the table is hidden. There is no window here to report it.
inline void Give_Map_Room(int width, int height) {
  frmMDI.InnerWidth = width;
  frmMDI.InnerHeight = height;
  Table_On_Off(QStringLiteral("Off"));
  Map.ScaleWidth = width;
  Map.ScaleHeight = height;
  Layout_Map();
}
