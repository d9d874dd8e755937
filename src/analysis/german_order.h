#pragma once
#include <QString>

// The order of a German word list: without regard to case; ä stands with a, ö with o, ü with u, ß as ss. Texts that
// differ in case or marks only are kept apart by them, so that the order is the same every time.
struct GermanKey {
  explicit GermanKey(const QString& text);
  QString plain, folded, exact;
  bool operator==(const GermanKey&) const = default;
  auto operator<=>(const GermanKey& other) const {
    if (const int by = plain.compare(other.plain); by != 0) return by <=> 0;
    if (const int by = folded.compare(other.folded); by != 0) return by <=> 0;
    return exact.compare(other.exact) <=> 0;
  }
};
