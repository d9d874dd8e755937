#pragma once
#include <QByteArray>
#include <QStringList>
#include <string>

#include "workbook/workbook_sheet.h"
#include "workbook/workbook_styles.h"

namespace workbook_inner {

struct SheetFrame {
  std::string mainNamespace;
  bool hasView = false;   // the workbook has the window that a sheet's view names
  bool selected = false;  // it is the sheet that is shown first
};
// The part of a sheet; its styles are added to the table.
QByteArray Write_Sheet_Part(const Sheet& sheet, StyleTable& styles, const SheetFrame& frame);
// What the cells of a part refer to.
struct SheetSources {
  const QStringList& shared;  // the texts that cells of kind "s" name by number
  const StyleTable& styles;
  bool from1904 = false;  // days are counted from 1904 on
};
// Reads a part of any writer. Dates become days since 1899-12-30. Error 321.
void Read_Sheet_Part(Sheet& sheet, const QByteArray& xml, const QString& part, const SheetSources& sources);
// The texts of the part of shared strings, by their numbers. Error 321.
QStringList Read_Shared_Strings(const QByteArray& xml, const QString& part);
// Nothing in it but empty rows, widths and paper settings.
bool Is_Empty_Sheet_Part(const QByteArray& xml, const QString& part);
// Its view says that it is selected; the start of the part is enough.
bool Is_Selected_Sheet_Part(const QByteArray& start);

}  // namespace workbook_inner
