#include <sqlite3.h>

#include <algorithm>
#include <cstring>

#include "platform/database_inner.h"

// Our own NOCASE: without regard to case for all letters; ä stands with a, ö with o, ü with u, ß is ss. Letters that
// differ only in their marks are kept apart as second criterion, so that "Bar" is not "Bär".

namespace database_inner {
namespace {

QString Case_Folded(const char* bytes, int size) {
  QString text = QString::fromUtf8(bytes, size).toCaseFolded();
  return text.replace(QChar(0x00DF), QLatin1String("ss"));
}

QString Without_Marks(const QString& text) {
  QString plain;
  for (const QChar letter : text.normalized(QString::NormalizationForm_D))
    if (letter.category() != QChar::Mark_NonSpacing) plain += letter;
  return plain;
}

char Lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter; }

int Compare(void*, int leftSize, const void* leftBytes, int rightSize, const void* rightBytes) {
  const char* left = static_cast<const char*>(leftBytes);
  const char* right = static_cast<const char*>(rightBytes);
  const auto plain = [](const char* bytes, int size) {
    return std::all_of(bytes, bytes + size, [](char letter) { return static_cast<signed char>(letter) >= 0; });
  };
  if (plain(left, leftSize) && plain(right, rightSize)) {
    for (int i = 0; i < std::min(leftSize, rightSize); ++i)
      if (Lower(left[i]) != Lower(right[i])) return Lower(left[i]) < Lower(right[i]) ? -1 : 1;
    return leftSize - rightSize;
  }
  const QString leftText = Case_Folded(left, leftSize), rightText = Case_Folded(right, rightSize);
  const int first = Without_Marks(leftText).compare(Without_Marks(rightText));
  return first != 0 ? first : leftText.compare(rightText);
}

}  // namespace

int Register_Collation(sqlite3* db) { return sqlite3_create_collation(db, "NOCASE", SQLITE_UTF8, nullptr, Compare); }

}  // namespace database_inner
