#pragma once
#include <functional>
#include <optional>
#include <vector>

#include "workbook/workbook.h"

// The workbook of results.

struct ResultBook {
  QString path;
  bool isNew = false;
  QString aside;  // where a file of the former binary kind was put; "" if there was none
};
// Replaces or adds the sheets in the workbook of that path, as the last ones, in one write; empty sheets whose name
// contains "Tab" go. `retry` is asked with a text to show while the spreadsheet program has the workbook open: true
// tries again, false leaves the workbook as it is and gives nothing. Without it that is error 55. All other errors as
// Workbook has them. `say` is told each step, in words for the user.
std::optional<ResultBook> Write_Sheets_Into(const QString& path, const std::vector<Sheet>& sheets,
                                            const std::function<bool(const QString& text)>& retry = {},
                                            const std::function<void(const QString& step)>& say = {});
// The same in the workbook beside a table.
std::optional<ResultBook> Write_Result_Sheets(const QString& table, const std::vector<Sheet>& sheets,
                                              const std::function<bool(const QString& text)>& retry = {},
                                              const std::function<void(const QString& step)>& say = {});
