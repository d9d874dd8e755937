#include "old_table_file.h"

#include <clocale>
// The library's header needs this one in front of it.
#include <glib.h>
// A line between them, so that their order stays.
#include <mdbtools.h>

#include <QFile>
#include <array>
#include <cstring>

#include "platform/files.h"

namespace {

constexpr int engineTable = 1;  // kind of a table in the catalogue
constexpr unsigned deletedRow = 0xC000, movedAway = 0x4000, movedHere = 0x8000, slotMask = 0x1FFF;
constexpr int memoHead = 12;  // bytes of a memo's field before its text
constexpr qsizetype longestMemo = 16 << 20;

[[noreturn]] void Raise_Damaged(const QString& what) { Raise(errors::databaseDamaged, what); }

void Close_File(MdbHandle* file) {
  if (file) mdb_close(file);
}

template <typename T>
T Number_At(const char* bytes) {
  T number;
  std::memcpy(&number, bytes, sizeof number);
  return number;
}

OldColumn Column_Of(const MdbColumn& column, bool newer) {
  OldColumn result;
  result.field.name = QString::fromUtf8(column.name);
  result.counts = column.is_long_auto != 0;
  switch (column.col_type) {
    case MDB_BOOL:
    case MDB_BYTE:
    case MDB_INT:
      result.field.type = FieldType::Integer;
      result.wholes = true;
      break;
    case MDB_LONGINT:
      result.field.type = FieldType::Long;
      result.wholes = true;
      break;
    case MDB_MONEY:
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_NUMERIC:
      result.field.type = FieldType::Double;
      break;
    case MDB_TEXT:
      result.field.size = newer ? column.col_size / 2 : column.col_size;
      break;
    case MDB_DATETIME:
      result.field.size = 20;
      break;
    case MDB_MEMO:
      break;
    default:
      result.known = false;
  }
  return result;
}

}  // namespace

struct OldTableFile::Inner {
  std::unique_ptr<MdbHandle, void (*)(MdbHandle*)> file{nullptr, Close_File};
  std::vector<MdbTableDef*> defs;  // of `tables`
  std::vector<OldTable> tables;
  bool newer = true;  // texts in Unicode

  ~Inner() {
    for (MdbTableDef* def : defs) mdb_free_tabledef(def);
  }

  void Read_Catalogue();
  QString Text(const QByteArray& bytes) const { return newer ? old_table::Unicode_Text(bytes) : From_1252(bytes); }
  Value Field_Value(const MdbColumn& column, const MdbField& field);
  Value Fixed_Value(const MdbColumn& column, const char* bytes, int size) const;
  QByteArray Memo(const char* bytes, int size);
  bool Read_Row(MdbTableDef& table, const OldTable& about, int start, size_t size,
                const std::function<void(const std::vector<Value>&)>& take);
  bool Read_Moved_Row(MdbTableDef& table, const OldTable& about, quint32 pointer,
                      const std::function<void(const std::vector<Value>&)>& take);
};

void OldTableFile::Inner::Read_Catalogue() {
  if (!mdb_read_catalog(file.get(), MDB_TABLE)) Raise_Damaged(QStringLiteral("Das Verzeichnis der Tabellen fehlt."));
  for (unsigned i = 0; i < file->num_catalog; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(file->catalog, i));
    if (entry->object_type != engineTable || !mdb_is_user_table(entry)) continue;
    MdbTableDef* def = mdb_read_table(entry);
    if (!def) Raise_Damaged(QStringLiteral("Die Beschreibung einer Tabelle ist nicht lesbar."));
    defs.push_back(def);
    if (!mdb_read_columns(def)) Raise_Damaged(QStringLiteral("Die Spalten einer Tabelle sind nicht lesbar."));
    OldTable table{QString::fromUtf8(entry->object_name), static_cast<int>(def->num_rows), {}};
    for (unsigned k = 0; k < def->columns->len; ++k)
      table.columns.push_back(Column_Of(*static_cast<MdbColumn*>(g_ptr_array_index(def->columns, k)), newer));
    tables.push_back(std::move(table));
  }
}

OldTableFile::OldTableFile(const QString& path) : inner(std::make_unique<Inner>()) {
  QFile raw(path);
  if (!raw.open(QIODevice::ReadOnly)) Raise(errors::noPermission);
  const QByteArray head = raw.read(4096);
  if (head.mid(4, 15) != "Standard Jet DB") Raise_Damaged(QStringLiteral("Es ist keine Tabelle der alten Art."));
  if (old_table::Has_Password(head)) Raise_Damaged(QStringLiteral("Sie ist mit einem Kennwort geschützt."));
  inner->file.reset(mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS));
  if (!inner->file) Raise_Damaged(QStringLiteral("Sie ist beschädigt."));
  if (raw.size() % inner->file->fmt->pg_size != 0) Raise_Damaged(QStringLiteral("Ihr fehlt das Ende."));
  inner->newer = !IS_JET3(inner->file);
  inner->Read_Catalogue();
}

OldTableFile::~OldTableFile() = default;

const std::vector<OldTable>& OldTableFile::Tables() const { return inner->tables; }

// Fields -------------------------------------------------------------------------------------------------------------

Value OldTableFile::Inner::Fixed_Value(const MdbColumn& column, const char* bytes, int size) const {
  const auto fits = [size](size_t needed) { return size >= static_cast<int>(needed); };
  switch (column.col_type) {
    case MDB_BYTE:
      if (fits(1)) return qint64{static_cast<unsigned char>(*bytes)};
      break;
    case MDB_INT:
      if (fits(2)) return qint64{Number_At<qint16>(bytes)};
      break;
    case MDB_LONGINT:
      if (fits(4)) return qint64{Number_At<qint32>(bytes)};
      break;
    case MDB_MONEY:
      if (fits(8)) return static_cast<double>(Number_At<qint64>(bytes)) / 10000;
      break;
    case MDB_FLOAT:
      // 8.1 shall not become 8.1000003.
      if (fits(4)) return QString::number(static_cast<double>(Number_At<float>(bytes)), 'g', 7).toDouble();
      break;
    case MDB_DOUBLE:
      if (fits(8)) return Number_At<double>(bytes);
      break;
    case MDB_DATETIME:
      if (fits(8)) return old_table::Date_Text(Number_At<double>(bytes));
      break;
    default:
      break;
  }
  return {};
}

QByteArray OldTableFile::Inner::Memo(const char* bytes, int size) {
  if (size < memoHead) return {};
  const auto word = Number_At<quint32>(bytes);
  const auto length = static_cast<qsizetype>(word & 0x3FFFFFFF);
  if ((word & 0x80000000U) != 0) return QByteArray(bytes + memoHead, size - memoHead);
  QByteArray text;
  auto pointer = Number_At<quint32>(bytes + 4);
  const bool single = (word & 0x40000000U) != 0;
  while (pointer != 0 && text.size() < std::min(length, longestMemo)) {
    void* page = nullptr;
    int start = 0;
    size_t rest = 0;
    if (mdb_find_pg_row(file.get(), static_cast<int>(pointer), &page, &start, &rest) != 0 || rest < (single ? 1 : 5))
      break;
    const char* piece = static_cast<const char*>(page) + start;
    if (single) return QByteArray(piece, static_cast<qsizetype>(rest)).left(length);
    pointer = Number_At<quint32>(piece);
    text.append(piece + 4, static_cast<qsizetype>(rest) - 4);
  }
  return text.left(length);
}

Value OldTableFile::Inner::Field_Value(const MdbColumn& column, const MdbField& field) {
  if (column.col_type == MDB_BOOL) return qint64{field.is_null ? 0 : -1};
  if (field.is_null || !field.value) return {};
  const auto* bytes = static_cast<const char*>(field.value);
  if (column.col_type == MDB_TEXT) return Text(QByteArray(bytes, field.siz));
  if (column.col_type == MDB_MEMO) return Text(Memo(bytes, field.siz));
  if (column.col_type == MDB_NUMERIC) {
    char* text = mdb_numeric_to_string(file.get(), field.start, column.col_scale, column.col_prec);
    const double number = text ? QByteArray(text).toDouble() : 0;
    g_free(text);
    return number;
  }
  return Fixed_Value(column, bytes, field.siz);
}

// Rows ---------------------------------------------------------------------------------------------------------------

bool OldTableFile::Inner::Read_Row(MdbTableDef& table, const OldTable& about, int start, size_t size,
                                   const std::function<void(const std::vector<Value>&)>& take) {
  std::array<MdbField, MDB_MAX_COLS> fields{};
  if (mdb_crack_row(&table, start, size, fields.data()) < 0) return false;
  // A row tells the number of columns that it was made with: the table's own counts.
  std::vector<Value> values;
  for (size_t i = 0; i < about.columns.size(); ++i) {
    const auto& column = *static_cast<MdbColumn*>(g_ptr_array_index(table.columns, static_cast<unsigned>(i)));
    values.push_back(about.columns[i].known ? Field_Value(column, fields[i]) : Value());
  }
  take(values);
  return true;
}

// A row that grew lies on another page; its slot tells where.
bool OldTableFile::Inner::Read_Moved_Row(MdbTableDef& table, const OldTable& about, quint32 pointer,
                                         const std::function<void(const std::vector<Value>&)>& take) {
  const unsigned page = pointer >> 8;
  const int row = static_cast<int>(pointer & 0xFF);
  const unsigned long former = table.cur_phys_pg;
  bool read = false;
  if (mdb_read_pg(file.get(), page) != 0) {
    int start = 0;
    size_t size = 0;
    const int count = mdb_get_int16(file->pg_buf, file->fmt->row_count_offset);
    if (row < count && mdb_find_row(file.get(), row, &start, &size) == 0)
      read = Read_Row(table, about, start & static_cast<int>(slotMask), size, take);
  }
  return mdb_read_pg(file.get(), former) != 0 && read;
}

int OldTableFile::Read_Rows(size_t number, const std::function<void(const std::vector<Value>&)>& take) {
  MdbTableDef& table = *inner->defs[number];
  const OldTable& about = inner->tables[number];
  MdbHandle& file = *inner->file;
  int unread = 0;
  mdb_rewind_table(&table);
  while (mdb_read_next_dpg(&table) != 0) {
    const int slotCount = mdb_get_int16(file.pg_buf, file.fmt->row_count_offset);
    for (int row = 0; row < slotCount; ++row) {
      const int slotAt = file.fmt->row_count_offset + 2 + row * 2;
      if (slotAt + 2 > file.fmt->pg_size) break;
      const auto slot = static_cast<unsigned>(mdb_get_int16(file.pg_buf, slotAt)) & 0xFFFFU;
      const unsigned marks = slot & deletedRow;
      if (marks == deletedRow || marks == movedHere) continue;  // what moved here comes in its old place
      int start = 0;
      size_t size = 0;
      bool read = mdb_find_row(&file, row, &start, &size) == 0;
      start &= static_cast<int>(slotMask);
      if (read && marks == movedAway) {
        read = size >= 4 &&
               inner->Read_Moved_Row(table, about, static_cast<quint32>(mdb_get_int32(file.pg_buf, start)), take);
      } else if (read) {
        read = inner->Read_Row(table, about, start, size, take);
      }
      if (!read) ++unread;
    }
  }
  return unread;
}
