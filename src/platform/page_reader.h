#pragma once
#include <QByteArray>
#include <limits>
#include <optional>
#include <variant>
#include <vector>

// The pages of a database file: tree pages, cells, records. All accesses are checked against the page and the file.
namespace page_scanner {

// Texts are bytes as they stand in the file; blobs are read as Null.
using Field = std::variant<std::monostate, qint64, double, QByteArray>;
using Fields = std::vector<Field>;

struct Cell {
  qint64 key = 0;
  Fields fields;
};

struct Child {
  int page = 0;  // 0 where the number cannot be one
  // The keys below it lie behind the first and up to the second.
  qint64 behind = std::numeric_limits<qint64>::min(), last = std::numeric_limits<qint64>::max();
};

enum class PageKind { Other, Inner, Leaf };

class PageReader {
 public:
  explicit PageReader(const QByteArray& file);

  int Count() const { return pageCount; }
  PageKind Kind(int page) const;  // what the head of the page says
  // The pages below an inner page, right one last.
  std::vector<Child> Children(int page) const;
  QByteArray Bytes(int page) const;  // the whole page
  // The pages out of use, if their list makes sense.
  std::vector<int> Erased() const;
  // The rows of a leaf whose records are sound. `force` reads a page whose head does not say that it is a leaf.
  std::vector<Cell> Rows(int page, bool force = false) const;

 private:
  int Guess_Page_Size() const;
  const uchar* Start(int page) const { return bytes + static_cast<qint64>(page - 1) * pageSize; }
  int Header(int page) const { return page == 1 ? 100 : 0; }
  std::optional<Cell> Read_Cell(int page, int offset) const;
  QByteArray Payload(const uchar* local, int localSize, qint64 size, bool continues) const;
  static std::optional<Fields> Read_Record(const QByteArray& payload, qint64 size);

  QByteArray content;
  const uchar* bytes = nullptr;
  qint64 realSize = 0;
  // Bytes that may still be read of continuations: damaged ones can run in circles and be those of every row.
  mutable qint64 continued = 0;
  int pageSize = 1024, usable = 1024, pageCount = 0;
};

}  // namespace page_scanner
