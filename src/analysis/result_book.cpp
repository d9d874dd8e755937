#include "analysis/result_book.h"

namespace {
ResultBook Write_Once(const QString& path, const std::vector<Sheet>& sheets) {
  Workbook book(path);
  const ResultBook result{path, book.IsNew(), book.AsidePath()};
  for (const Sheet& sheet : sheets) book.Put(sheet);
  book.RemoveEmpty(QStringLiteral("Tab"));
  book.Save();
  return result;
}
}  // namespace

std::optional<ResultBook> Write_Sheets_Into(const QString& path, const std::vector<Sheet>& sheets,
                                            const std::function<bool(const QString& text)>& retry) {
  // Saved elsewhere while it was read here: read anew. Who saves that often is told.
  for (int changes = 0;;) {
    try {
      return Write_Once(path, sheets);
    } catch (const Error& error) {
      if (error.number == workbook_errors::changed && ++changes < 10) continue;
      if (error.number != workbook_errors::openElsewhere || !retry) throw;
      if (!retry(error.text)) return {};
    }
  }
}

std::optional<ResultBook> Write_Result_Sheets(const QString& table, const std::vector<Sheet>& sheets,
                                              const std::function<bool(const QString& text)>& retry) {
  return Write_Sheets_Into(Workbook_Name(table), sheets, retry);
}
