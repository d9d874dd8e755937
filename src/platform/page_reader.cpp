#include "platform/page_reader.h"

#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace page_scanner {
namespace {

constexpr uchar leafMark = 13, innerMark = 5;
constexpr int leafHead = 8, innerHead = 12;
constexpr int mostFields = 2000;

int Word(const uchar* at) { return qFromBigEndian<quint16>(at); }
quint32 Long_Word(const uchar* at) { return qFromBigEndian<quint32>(at); }

// A number of 1 to 9 bytes; false if it runs over the end.
bool Read_Number(const uchar*& at, const uchar* end, quint64& number) {
  number = 0;
  for (int i = 0; i < 9; ++i) {
    if (at >= end) return false;
    const uchar byte = *at++;
    if (i == 8) {
      number = (number << 8) | byte;
      return true;
    }
    number = (number << 7) | (byte & 0x7fu);
    if (!(byte & 0x80u)) return true;
  }
  return true;
}

// Bytes of a value by its kind, -1 for a kind that does not exist.
qint64 Size_Of_Kind(quint64 kind) {
  constexpr int sizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0, -1, -1};
  if (kind < 12) return sizes[kind];
  return kind > quint64{1} << 40 ? -1 : static_cast<qint64>((kind - 12) / 2);
}

Field Read_Field(quint64 kind, const uchar* at, qint64 size) {
  if (kind == 0 || (kind >= 12 && kind % 2 == 0)) return {};
  if (kind == 8) return qint64{0};
  if (kind == 9) return qint64{1};
  if (kind >= 13) return QByteArray(reinterpret_cast<const char*>(at), static_cast<qsizetype>(size));
  if (kind == 7) {
    const quint64 word = qFromBigEndian<quint64>(at);
    double number;
    std::memcpy(&number, &word, sizeof number);
    return number == number ? Field(number) : Field();
  }
  quint64 number = (at[0] & 0x80u) ? ~quint64{0} : 0;
  for (qint64 i = 0; i < size; ++i) number = (number << 8) | at[i];
  return static_cast<qint64>(number);
}

}  // namespace

PageReader::PageReader(const QByteArray& file) : content(file) {
  bytes = reinterpret_cast<const uchar*>(content.constData());
  pageSize = usable = Guess_Page_Size();
  realSize = content.size();
  continued = 4 * realSize;
  // A file that was cut ends within a page.
  const qsizetype over = content.size() % pageSize;
  if (over != 0) content.append(pageSize - over, '\0');
  bytes = reinterpret_cast<const uchar*>(content.constData());
  pageCount = static_cast<int>(std::min<qint64>(content.size() / pageSize, 1 << 24));
}

// The size at which most places where pages would begin look like leaves; the head of the file can be damaged.
int PageReader::Guess_Page_Size() const {
  int told = content.size() >= 100 ? Word(bytes + 16) : 0;
  if (told == 1) told = 65536;
  int best = 1024;
  double most = 0;
  for (const int size : {1024, 4096, 512, 2048, 8192, 16384, 32768, 65536}) {
    double leaves = size == told ? 0.5 : 0;
    for (qint64 at = size; at + size <= content.size(); at += size) {
      const uchar* page = bytes + at;
      const int cells = Word(page + 3), start = Word(page + 5);
      if (page[0] == leafMark && cells > 0 && start >= leafHead + 2 * cells && start < size &&
          Word(page + leafHead) >= start && Word(page + leafHead) < size)
        ++leaves;
    }
    if (leaves > most) {
      most = leaves;
      best = size;
    }
  }
  return best;
}

PageKind PageReader::Kind(int page) const {
  if (page < 1 || page > pageCount) return PageKind::Other;
  const uchar mark = Start(page)[Header(page)];
  return mark == leafMark ? PageKind::Leaf : mark == innerMark ? PageKind::Inner : PageKind::Other;
}

std::vector<Child> PageReader::Children(int page) const {
  std::vector<Child> children;
  if (Kind(page) != PageKind::Inner) return children;
  const uchar* start = Start(page);
  const uchar* head = start + Header(page);
  const int cells = std::min(Word(head + 3), (usable - Header(page) - innerHead) / 2);
  qint64 behind = std::numeric_limits<qint64>::min();
  const auto add = [&](quint32 number, qint64 last) {
    const bool possible = number > 1 && number <= static_cast<quint32>(pageCount);
    children.push_back({possible ? static_cast<int>(number) : 0, behind, last});
    behind = last;
  };
  for (int i = 0; i < cells; ++i) {
    const int offset = Word(head + innerHead + 2 * i);
    const bool inside = offset >= innerHead && offset + 5 <= usable;
    const uchar* at = start + offset + 4;
    quint64 key = 0;
    const bool hasKey = inside && Read_Number(at, start + usable, key);
    add(inside ? Long_Word(start + offset) : 0, hasKey ? static_cast<qint64>(key) : behind);
  }
  add(Long_Word(head + 8), std::numeric_limits<qint64>::max());
  return children;
}

QByteArray PageReader::Bytes(int page) const {
  return page < 1 || page > pageCount ? QByteArray() : content.mid(static_cast<qint64>(page - 1) * pageSize, pageSize);
}

std::vector<int> PageReader::Erased() const {
  std::vector<int> erased;
  if (content.size() < 100) return erased;
  quint32 trunk = Long_Word(bytes + 32);
  while (trunk > 1 && trunk <= static_cast<quint32>(pageCount) && erased.size() <= static_cast<size_t>(pageCount)) {
    const uchar* page = Start(static_cast<int>(trunk));
    const quint32 leaves = Long_Word(page + 4);
    if (leaves > static_cast<quint32>(usable) / 4 - 2) return {};
    erased.push_back(static_cast<int>(trunk));
    for (quint32 i = 0; i < leaves; ++i) {
      const quint32 leaf = Long_Word(page + 8 + 4 * i);
      if (leaf < 2 || leaf > static_cast<quint32>(pageCount)) return {};
      erased.push_back(static_cast<int>(leaf));
    }
    trunk = Long_Word(page);
  }
  return trunk == 0 ? erased : std::vector<int>();
}

std::vector<Cell> PageReader::Rows(int page, bool force) const {
  std::vector<Cell> rows;
  if (page < 1 || page > pageCount) return rows;
  const bool isLeaf = Kind(page) == PageKind::Leaf;
  if (!isLeaf && !force) return rows;
  const uchar* head = Start(page) + Header(page);
  const int room = (usable - Header(page) - leafHead) / 2;
  // A damaged head leaves the list of cells behind it, whose end is then where it stops making sense.
  const int cells = isLeaf ? std::min(Word(head + 3), room) : room;
  for (int i = 0; i < cells; ++i) {
    std::optional<Cell> cell = Read_Cell(page, Word(head + leafHead + 2 * i));
    if (cell)
      rows.push_back(std::move(*cell));
    else if (!isLeaf)
      break;
  }
  return rows;
}

std::optional<Cell> PageReader::Read_Cell(int page, int offset) const {
  if (offset < Header(page) + leafHead || offset >= usable) return {};
  const uchar* at = Start(page) + offset;
  const uchar* end = std::min(Start(page) + usable, bytes + realSize);
  quint64 size = 0, key = 0;
  if (!Read_Number(at, end, size) || !Read_Number(at, end, key)) return {};
  if (size < 2 || size > static_cast<quint64>(content.size())) return {};
  // How much of a long record stands on its own page.
  const qint64 total = static_cast<qint64>(size);
  const qint64 most = usable - 35, least = (usable - 12) * 32 / 255 - 23;
  qint64 local = total;
  if (total > most) {
    local = least + (total - least) % (usable - 4);
    if (local > most) local = least;
  }
  const bool continues = local < total;
  if (local + (continues ? 4 : 0) > end - at) return {};
  std::optional<Fields> fields = Read_Record(Payload(at, static_cast<int>(local), total, continues), total);
  if (!fields) return {};
  return Cell{static_cast<qint64>(key), std::move(*fields)};
}

// The record with its continuations; shorter than `size` if they are lost.
QByteArray PageReader::Payload(const uchar* local, int localSize, qint64 size, bool continues) const {
  QByteArray payload(reinterpret_cast<const char*>(local), localSize);
  if (!continues) return payload;
  quint32 next = Long_Word(local + localSize);
  while (payload.size() < size && next > 1 && next <= static_cast<quint32>(pageCount)) {
    const uchar* page = Start(static_cast<int>(next));
    const qint64 there = realSize - (page + 4 - bytes);  // less than a page where the file was cut
    const qint64 part = std::min<qint64>({usable - 4, size - payload.size(), there, continued});
    if (part <= 0) break;
    continued -= part;
    payload.append(reinterpret_cast<const char*>(page) + 4, static_cast<qsizetype>(part));
    next = Long_Word(page);
  }
  return payload;
}

std::optional<Fields> PageReader::Read_Record(const QByteArray& payload, qint64 size) {
  const uchar* start = reinterpret_cast<const uchar*>(payload.constData());
  const uchar* at = start;
  const uchar* end = start + payload.size();
  quint64 head = 0;
  if (!Read_Number(at, end, head) || head < 2 || head > static_cast<quint64>(payload.size())) return {};
  std::vector<quint64> kinds;
  qint64 total = static_cast<qint64>(head);
  while (at < start + head) {
    quint64 kind = 0;
    if (!Read_Number(at, start + head, kind) || Size_Of_Kind(kind) < 0) return {};
    total += Size_Of_Kind(kind);
    kinds.push_back(kind);
    if (kinds.size() > mostFields || total > size) return {};
  }
  if (total != size) return {};
  Fields fields;
  fields.reserve(kinds.size());
  qint64 offset = static_cast<qint64>(head);
  for (const quint64 kind : kinds) {
    const qint64 width = Size_Of_Kind(kind);
    fields.push_back(offset + width <= payload.size() ? Read_Field(kind, start + offset, width) : Field());
    offset += width;
  }
  return fields;
}

}  // namespace page_scanner
