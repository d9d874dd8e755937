#include "analysis/result_book.h"

namespace {
using Teller = std::function<void(const QString& step)>;

ResultBook Write_Once(const QString& path, const std::vector<Sheet>& sheets, const Teller& say) {
  if (say) say(QStringLiteral("Arbeitsmappe öffnen"));
  Workbook book(path);
  const ResultBook result{path, book.IsNew(), book.AsidePath()};
  for (const Sheet& sheet : sheets) book.Put(sheet);
  book.RemoveEmpty(QStringLiteral("Tab"));
  if (say) say(QStringLiteral("Arbeitsmappe sichern."));
  book.Save();
  return result;
}
}  // namespace

std::optional<ResultBook> Write_Sheets_Into(const QString& path, const std::vector<Sheet>& sheets,
                                            const std::function<bool(const QString& text)>& retry, const Teller& say) {
  // Saved elsewhere while it was read here: read anew. Who saves that often is told.
  for (int changes = 0;;) {
    try {
      return Write_Once(path, sheets, say);
    } catch (const Error& error) {
      if (error.number == workbook_errors::changed && ++changes < 10) continue;
      if (error.number != workbook_errors::openElsewhere || !retry) throw;
      if (!retry(error.text)) return {};
    }
  }
}

std::optional<ResultBook> Write_Result_Sheets(const QString& table, const std::vector<Sheet>& sheets,
                                              const std::function<bool(const QString& text)>& retry,
                                              const Teller& say) {
  return Write_Sheets_Into(Workbook_Name(table), sheets, retry, say);
}
