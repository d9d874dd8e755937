#include "platform/row_changes.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>

#include "platform/error.h"

bool RawValue::operator==(const RawValue& other) const {
  if (kind != other.kind) return false;
  switch (kind) {
    case Kind::Null:
      return true;
    case Kind::Whole:
      return whole == other.whole;
    case Kind::Real:
      return real == other.real;
    case Kind::Text:
    case Kind::Blob:
      break;
  }
  return size == other.size && (size == 0 || std::memcmp(bytes, other.bytes, static_cast<size_t>(size)) == 0);
}

Value RawValue::ToValue() const {
  switch (kind) {
    case Kind::Whole:
      return whole;
    case Kind::Real:
      return real;
    case Kind::Text:
      return QString::fromUtf8(bytes, size);
    case Kind::Null:
    case Kind::Blob:
      break;
  }
  return std::monostate();
}

RawValue Raw_Of(sqlite3_value* value, bool utf8) {
  RawValue raw;
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      raw.kind = RawValue::Kind::Whole;
      raw.whole = sqlite3_value_int64(value);
      break;
    case SQLITE_FLOAT:
      raw.kind = RawValue::Kind::Real;
      raw.real = sqlite3_value_double(value);
      break;
    case SQLITE_TEXT:
      raw.kind = RawValue::Kind::Text;
      raw.bytes = utf8 ? static_cast<const char*>(sqlite3_value_blob(value))
                       : reinterpret_cast<const char*>(sqlite3_value_text(value));
      raw.size = sqlite3_value_bytes(value);
      break;
    case SQLITE_BLOB:
      raw.kind = RawValue::Kind::Blob;
      raw.bytes = static_cast<const char*>(sqlite3_value_blob(value));
      raw.size = sqlite3_value_bytes(value);
      break;
    default:
      break;
  }
  return raw;
}

RawValue Raw_Of(sqlite3_stmt* row, int column) { return Raw_Of(sqlite3_column_value(row, column)); }

void Bind_Raw(sqlite3_stmt* statement, int parameter, const RawValue& value) {
  switch (value.kind) {
    case RawValue::Kind::Whole:
      sqlite3_bind_int64(statement, parameter, value.whole);
      break;
    case RawValue::Kind::Real:
      sqlite3_bind_double(statement, parameter, value.real);
      break;
    case RawValue::Kind::Text:
      sqlite3_bind_text(statement, parameter, value.size > 0 ? value.bytes : "", value.size, SQLITE_STATIC);
      break;
    case RawValue::Kind::Blob:
      sqlite3_bind_blob(statement, parameter, value.size > 0 ? value.bytes : "", value.size, SQLITE_STATIC);
      break;
    case RawValue::Kind::Null:
      sqlite3_bind_null(statement, parameter);
      break;
  }
}

// Writing ------------------------------------------------------------------------------------------------------------

namespace {

// Small numbers of either sign become small ones without sign.
quint64 Folded(qint64 number) { return static_cast<quint64>(number) << 1 ^ static_cast<quint64>(number >> 63); }
qint64 Unfolded(quint64 number) { return static_cast<qint64>(number >> 1) ^ -static_cast<qint64>(number & 1); }

}  // namespace

char* ChangeWriter::Room(qsizetype bytes) {
  const qsizetype at = list.size();
  list.resize(at + bytes);
  return list.data() + at;
}

void ChangeWriter::Whole(quint64 number) {
  char bytes[10];
  qsizetype count = 0;
  for (; number >= 0x80; number >>= 7) bytes[count++] = static_cast<char>(number | 0x80);
  bytes[count++] = static_cast<char>(number);
  std::memcpy(Room(count), bytes, static_cast<size_t>(count));
}

void ChangeWriter::Bytes(const char* bytes, qsizetype size) {
  Whole(static_cast<quint64>(size));
  if (size > 0) std::memcpy(Room(size), bytes, static_cast<size_t>(size));
}

void ChangeWriter::Put(const RawValue& value) {
  *Room(1) = static_cast<char>(value.kind);
  switch (value.kind) {
    case RawValue::Kind::Whole:
      return Whole(Folded(value.whole));
    case RawValue::Kind::Real:
      std::memcpy(Room(sizeof value.real), &value.real, sizeof value.real);
      return;
    case RawValue::Kind::Text:
    case RawValue::Kind::Blob:
      return Bytes(value.bytes, value.size);
    case RawValue::Kind::Null:
      return;
  }
}

QByteArray ChangeWriter::Names(const QByteArray& table, const std::vector<QByteArray>& columns) {
  ChangeWriter writer;
  writer.list.append(static_cast<char>(ChangeKind::Names));
  writer.Bytes(table.constData(), table.size());
  writer.Whole(columns.size());
  for (const QByteArray& column : columns) writer.Bytes(column.constData(), column.size());
  return writer.list;
}

int ChangeWriter::Number_Of(const QByteArray& table, const std::vector<QByteArray>& columns) {
  return Number_Of(Names(table, columns));
}

int ChangeWriter::Number_Of(const QByteArray& names) {
  for (size_t i = known.size(); i-- > 0;)
    if (known[i].names == names) return static_cast<int>(i);
  known.push_back({list.size(), names});
  list.append(names);
  return static_cast<int>(known.size()) - 1;
}

void ChangeWriter::Row(ChangeKind kind, int table, qint64 key, const std::vector<RawValue>& values) {
  list.append(static_cast<char>(kind));
  Whole(static_cast<quint64>(table));
  Whole(Folded(key));
  for (const RawValue& value : values) Put(value);
}

void ChangeWriter::Update(int table, qint64 key, qint64 newKey, const std::vector<ChangedCell>& cells) {
  list.append(static_cast<char>(ChangeKind::Update));
  Whole(static_cast<quint64>(table));
  Whole(Folded(key));
  Whole(Folded(newKey - key));
  Whole(cells.size());
  for (const ChangedCell& cell : cells) {
    Whole(static_cast<quint64>(cell.column));
    Put(cell.before);
    Put(cell.after);
  }
}

void ChangeWriter::Table(ChangeKind kind, const QString& name, const QString& statement) {
  list.append(static_cast<char>(kind));
  const QByteArray bytes = name.toUtf8(), text = statement.toUtf8();
  Bytes(bytes.constData(), bytes.size());
  Bytes(text.constData(), text.size());
}

void ChangeWriter::Column(ChangeKind kind, const QString& table, const FieldInfo& column, int place) {
  Table(kind, table, column.name);
  Whole(static_cast<quint64>(column.type));
  Whole(static_cast<quint64>(column.size));
  Whole(static_cast<quint64>(place));
}

void ChangeWriter::Cut(qsizetype size) {
  if (size >= list.size()) return;
  list.truncate(size);
  while (!known.empty() && known.back().at >= size) known.pop_back();
}

void ChangeWriter::Clear() {
  constexpr qsizetype large = 64 << 10;
  known.clear();
  if (list.capacity() > large)
    list = QByteArray();
  else
    list.resize(0);  // its memory is kept from step to step
}

// Reading ------------------------------------------------------------------------------------------------------------

namespace {

class Bytes {
 public:
  Bytes(const QByteArray& all, qsizetype from) : at(all.constData() + from), end(all.constData() + all.size()) {}

  bool AtEnd() const { return at == end; }
  const char* Where() const { return at; }
  quint8 Byte() {
    Need(1);
    return static_cast<quint8>(*at++);
  }
  quint64 Whole() {
    quint64 number = 0;
    for (int shift = 0; shift < 64; shift += 7) {
      const quint8 part = Byte();
      number |= static_cast<quint64>(part & 0x7f) << shift;
      if (part < 0x80) return number;
    }
    Fail();
  }
  qint64 Signed() { return Unfolded(Whole()); }
  int Small() {
    const quint64 number = Whole();
    if (number > 0x7fffffff) Fail();
    return static_cast<int>(number);
  }
  const char* Take(int size) {
    Need(size);
    const char* taken = at;
    at += size;
    return taken;
  }
  QString Text() {
    const int size = Small();
    return QString::fromUtf8(Take(size), size);
  }
  RawValue Value() {
    RawValue value;
    value.kind = static_cast<RawValue::Kind>(Byte());
    switch (value.kind) {
      case RawValue::Kind::Null:
        break;
      case RawValue::Kind::Whole:
        value.whole = Signed();
        break;
      case RawValue::Kind::Real:
        std::memcpy(&value.real, Take(sizeof value.real), sizeof value.real);
        break;
      case RawValue::Kind::Text:
      case RawValue::Kind::Blob:
        value.size = Small();
        value.bytes = Take(value.size);
        break;
      default:
        Fail();
    }
    return value;
  }
  [[noreturn]] static void Fail() {
    Raise(errors::databaseDamaged, QStringLiteral("Der Verlauf der Tabelle ist beschädigt."));
  }

 private:
  void Need(qint64 size) const {
    if (size > end - at) Fail();
  }
  const char *at, *end;
};

// Reads the change that begins there; of names only what stands in it.
void Read_Change(Bytes& in, StoredChange& change, const std::vector<TableNames>& names) {
  change.kind = static_cast<ChangeKind>(in.Byte());
  change.cells.clear();
  switch (change.kind) {
    case ChangeKind::Insert:
    case ChangeKind::Delete: {
      change.table = in.Small();
      if (static_cast<size_t>(change.table) >= names.size()) Bytes::Fail();
      change.key = change.newKey = in.Signed();
      const auto count = names[static_cast<size_t>(change.table)].columns.size();
      for (int column = 0; column < static_cast<int>(count); ++column) {
        const RawValue value = in.Value();
        change.cells.push_back({column, value, value});
      }
      return;
    }
    case ChangeKind::Update: {
      change.table = in.Small();
      if (static_cast<size_t>(change.table) >= names.size()) Bytes::Fail();
      change.key = in.Signed();
      change.newKey = change.key + in.Signed();
      const auto width = names[static_cast<size_t>(change.table)].columns.size();
      for (int count = in.Small(); count > 0; --count) {
        ChangedCell cell{in.Small(), {}, {}};
        if (cell.column >= width) Bytes::Fail();
        cell.before = in.Value();
        cell.after = in.Value();
        change.cells.push_back(cell);
      }
      return;
    }
    case ChangeKind::MakeTable:
    case ChangeKind::DropTable:
      change.name = in.Text();
      change.statement = in.Text();
      return;
    case ChangeKind::AddColumn:
    case ChangeKind::RemoveColumn:
      change.name = in.Text();
      change.column.name = in.Text();
      change.column.type = static_cast<FieldType>(in.Small());
      change.column.size = in.Small();
      change.place = in.Small();
      return;
    case ChangeKind::Names:
      break;
  }
  Bytes::Fail();
}

}  // namespace

ChangeReader::ChangeReader(const QByteArray& all) : list(all) {
  Bytes in(list, 0);
  StoredChange change;
  while (!in.AtEnd()) {
    const qsizetype at = in.Where() - list.constData();
    if (static_cast<ChangeKind>(list.at(at)) != ChangeKind::Names) {
      Read_Change(in, change, names);
      places.push_back(at);
      continue;
    }
    in.Byte();
    TableNames table{in.Text(), {}};
    for (int count = in.Small(); count > 0; --count) table.columns += in.Text();
    names.push_back(std::move(table));
  }
}

void ChangeReader::Read(qsizetype index, StoredChange& change) const {
  Bytes in(list, places.at(static_cast<size_t>(index)));
  Read_Change(in, change, names);
}
