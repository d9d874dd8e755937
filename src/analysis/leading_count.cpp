#include "analysis/leading_count.h"

#include <cstdint>
#include <limits>

#include "platform/text.h"

namespace {
CountedName Split_Count(const QString& text, char16_t firstCode, char16_t lastCode, int limit) {
  CountedName result;
  const QString trimmed = text.trimmed();
  const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
  if (trimmed.isEmpty() || !isDigit(trimmed[0])) {
    result.name = trimmed;
    return result;
  }
  result.digits = true;
  qsizetype stop = 0;
  while (stop < trimmed.size() && trimmed[stop].unicode() >= firstCode && trimmed[stop].unicode() <= lastCode) ++stop;
  const double number = Val(QStringView(trimmed).left(stop));
  result.tooLarge = number > limit;
  result.count = result.tooLarge ? 0 : static_cast<int>(number);
  result.name = trimmed.mid(stop).trimmed();
  return result;
}
}  // namespace

CountedName Population_Count(const QString& text) {
  return Split_Count(text, u'/', u':', std::numeric_limits<int16_t>::max());
}

CountedName Leading_Count(const QString& text) {
  return Split_Count(text, u'0', u'9', std::numeric_limits<int32_t>::max());
}
