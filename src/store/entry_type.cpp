#include "store/entry_type.h"

#include <cstdlib>

#include "store/stored_number.h"

EntryType EntryType::Parse(qint64 stored) {
  const int size = std::abs(Stored_Number(stored));
  EntryType type;
  type.base = size % 100;
  if (size >= 200) {
    type.mark = Mark::Last;
  } else if (size >= 100) {
    type.mark = Mark::Marked;
  }
  type.hidden = stored < 0;
  return type;
}

int EntryType::ToNumber() const {
  const int size = base + 100 * static_cast<int>(mark);
  return hidden ? -size : size;
}

// The sign of a north arrow says nothing about its visibility: it stays as it is.
EntryType EntryType::Hidden() const {
  EntryType type = *this;
  if (Kind() == EntryKind::NorthArrow) return type;
  if (type.base == 0) type.base = 1;  // -0 cannot be stored; kind 1 without a foot point is drawn alike
  type.hidden = true;
  return type;
}

EntryType EntryType::Shown() const {
  EntryType type = *this;
  if (Kind() != EntryKind::NorthArrow) type.hidden = false;
  return type;
}

EntryType EntryType::Marked(Mark with) const {
  EntryType type = *this;
  type.mark = with;
  return type;
}

bool EntryType::IsText() const { return (base >= 0 && base <= 3) || base == 7 || base == 18; }
bool EntryType::IsPolygon() const { return base == 4 || base == 40; }
bool EntryType::IsFigure() const { return base >= 20 && base <= 25; }
bool EntryType::IsFreeFigure() const { return base == 24 || base == 25; }
bool EntryType::HasColors() const { return Kind() != EntryKind::Picture; }
