#include <sqlite3.h>

#include <QRegularExpression>
#include <algorithm>
#include <limits>

#include "platform/database_inner.h"

// Opening a recordset and reading its rows: the keys of all rows are taken at once, the rows come in blocks that are
// kept until somebody else writes into the table. Only columns that are asked for are read.

using database_inner::Block;
using database_inner::Cell;
using database_inner::Quoted;

namespace {
constexpr int mostReadAhead = 256, mostCachedRows = 65536;

// Finds the table of a statement over one table without grouping: its rows keep their keys and can be written.
QString Single_Table_Of(const QString& sql) {
  static const QRegularExpression pattern(
      QStringLiteral(
          R"x(^\s*select\s+(?!distinct\b).*?\sfrom\s+(?:\[([^\]]+)\]|"([^"]+)"|([^\s,;()\["]+))\s*(?:;?\s*$|where\b|order\b|limit\b))x"),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression several(QStringLiteral(R"(\b(group\s+by|union|intersect|except|having)\b)"),
                                          QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = pattern.match(sql);
  if (!match.hasMatch() || several.match(sql).hasMatch()) return {};
  return match.captured(1) + match.captured(2) + match.captured(3);
}
}  // namespace

void Recordset::Inner::Open(const QString& from) {
  source = from;
  blocks.clear();
  lastBlock = nullptr;
  cachedRows = 0;
  fields.clear();
  keys.clear();
  table.clear();
  QString name = from.trimmed();
  static const QRegularExpression select(QStringLiteral(R"(^select\b)"), QRegularExpression::CaseInsensitiveOption);
  if (select.match(name).hasMatch()) {
    Open_Select(name);
  } else {
    if (name.size() > 2 && name.startsWith(QLatin1Char('[')) && name.endsWith(QLatin1Char(']')))
      name = name.mid(1, name.size() - 2);
    Open_Table(name);
  }
  used.assign(fields.size(), 0);
  allRead = false;
  dirty.assign(fields.size(), 0);
  buffer.assign(fields.size(), Value());
  raw.assign(fields.size(), Value());
  bound.assign(fields.size(), QByteArray());
  seenRollbacks = engine->rollbacks;
  Go(0);
}

void Recordset::Inner::Open_Table(const QString& name) {
  const TableDef* found = engine->Find_Table(name);
  if (!found) Raise(errors::tableNotFound);
  table = found->name;
  fields = found->fields;
  keyStatement = "SELECT rowid FROM " + Quoted(table) + " ORDER BY rowid";
  state = engine->State_Of(table);
  Read_Keys();
}

void Recordset::Inner::Open_Select(const QString& sql) {
  sqlite3_stmt* statement = engine->Prepare(sql.toUtf8());
  struct Finalizer {
    sqlite3_stmt* it;
    ~Finalizer() { sqlite3_finalize(it); }
  } finalizer{statement};
  if (!sqlite3_stmt_readonly(statement)) Raise(errors::sqlSyntax);
  const int count = sqlite3_column_count(statement);
  const QString single = Single_Table_Of(sql);
  const TableDef* found = single.isEmpty() ? nullptr : engine->Find_Table(single);
  bool ownColumns = found != nullptr;
  for (int i = 0; i < count; ++i) {
    const auto text = [](const char* it) { return QString::fromUtf8(it ? it : ""); };
    const QString origin = text(sqlite3_column_origin_name(statement, i));
    const QString declared = text(sqlite3_column_decltype(statement, i));
    const QString shown = text(sqlite3_column_name(statement, i));
    // A column under another name is read like any, but the row can then not be written back.
    if (origin.isEmpty() || origin.compare(shown, Qt::CaseInsensitive) != 0) ownColumns = false;
    fields.push_back(database_inner::Field_Of_Declaration(shown, declared));
  }
  if (!ownColumns) {
    state = nullptr;
    Read_Snapshot(statement);
    return;
  }
  table = found->name;
  state = engine->State_Of(table);
  // The keys come as a further column, so that the order may name columns by number.
  static const QRegularExpression from(QStringLiteral(R"(\sfrom\s)"), QRegularExpression::CaseInsensitiveOption);
  QString withKey = sql;
  withKey.insert(from.match(sql).capturedStart(), QStringLiteral(", rowid"));
  keyStatement = withKey.toUtf8();
  Read_Keys();
}

void Recordset::Inner::Read_Keys() {
  engine->Notice_Changes();
  keys.clear();
  positions.clear();
  positionsKnown = false;
  ascending = true;
  sqlite3_stmt* statement = engine->Prepare(keyStatement);
  const int column = sqlite3_column_count(statement) - 1;
  int rc;
  while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
    const qint64 key = sqlite3_column_int64(statement, column);
    ascending = ascending && (keys.empty() || keys.back() < key);
    keys.push_back(key);
  }
  sqlite3_finalize(statement);
  if (rc != SQLITE_DONE) engine->Fail(rc);
  seenVersion = state->version;
  seenGeneration = engine->generation;
}

void Recordset::Inner::Read_Snapshot(sqlite3_stmt* statement) {
  auto block = std::make_unique<Block>();
  const size_t width = fields.size();
  int rc;
  while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
    const auto row = static_cast<qint32>(keys.size());
    keys.push_back(row);
    block->rows.push_back(row);
    block->cells.resize(block->cells.size() + width);
    Cell* cells = block->cells.data() + static_cast<size_t>(row) * width;
    for (size_t i = 0; i < width; ++i) Read_Cell(*block, cells[i], statement, static_cast<int>(i));
  }
  if (rc != SQLITE_DONE) engine->Fail(rc);
  ascending = true;
  blocks.push_back(std::move(block));
}

void Recordset::Inner::Close_Statements() {
  for (sqlite3_stmt** statement : {&readStatement, &insertStatement, &changeStatement, &deleteStatement}) {
    // After Close the connection has taken them along.
    if (engine && engine->db) sqlite3_finalize(*statement);
    *statement = nullptr;
  }
}

void Recordset::Inner::Validate() {
  engine->Need_Open();
  if (!state) return;
  engine->Notice_Changes();
  if (seenVersion == state->version && seenGeneration == engine->generation) return;
  blocks.clear();
  lastBlock = nullptr;
  cachedRows = 0;
  readAhead = 8;
  seenVersion = state->version;
  seenGeneration = engine->generation;
  if (seenRollbacks == engine->rollbacks) return;
  // What was taken back has come and gone in the keys as well.
  seenRollbacks = engine->rollbacks;
  const qint64 key = at == At::Row ? keys[static_cast<size_t>(position)] : 0;
  End_Edit();
  Read_Keys();
  if (at != At::Row) return;
  const int again = Position_Of(key);
  Go(again >= 0 ? again : std::min(position, static_cast<int>(keys.size())));
}

void Recordset::Inner::Need_Row() {
  Validate();
  if (at != At::Row || keys.empty()) Raise(errors::noCurrentRecord);
}

int Recordset::Inner::Position_Of(qint64 key) {
  if (ascending) {
    const auto found = std::lower_bound(keys.begin(), keys.end(), key);
    return found != keys.end() && *found == key ? static_cast<int>(found - keys.begin()) : -1;
  }
  if (!positionsKnown) {
    positions.clear();
    for (size_t i = 0; i < keys.size(); ++i) positions.insert(keys[i], static_cast<int>(i));
    positionsKnown = true;
  }
  return positions.value(key, -1);
}

void Recordset::Inner::Check_Column(int column) const {
  if (static_cast<size_t>(column) >= fields.size()) Raise(errors::fieldNotFound);
}

Block* Recordset::Inner::Block_Of(int rowPosition) {
  const auto holds = [rowPosition](const Block& block) {
    return rowPosition >= block.first && rowPosition < block.first + block.Count();
  };
  if (lastBlock && holds(*lastBlock)) return lastBlock;
  const auto behind =
      std::upper_bound(blocks.begin(), blocks.end(), rowPosition,
                       [](int wanted, const std::unique_ptr<Block>& block) { return wanted < block->first; });
  if (behind != blocks.begin() && holds(**(behind - 1))) return lastBlock = (behind - 1)->get();
  return nullptr;
}

const Cell* Recordset::Inner::Row_Of(int rowPosition) {
  Block* block = Block_Of(rowPosition);
  if (!block) {
    // Whole strides forward and backward alike, cut at what is there already.
    const int total = static_cast<int>(keys.size());
    int from = rowPosition / readAhead * readAhead;
    int to = std::min(from + readAhead, total);
    for (const std::unique_ptr<Block>& other : blocks) {
      if (other->first > rowPosition) to = std::min(to, other->first);
      if (other->first < rowPosition) from = std::max(from, other->first + other->Count());
    }
    block = Load(from, to - from);
    readAhead = std::min(readAhead * 2, mostReadAhead);
  }
  const qint32 row = block->rows[static_cast<size_t>(rowPosition - block->first)];
  return row < 0 ? nullptr : block->cells.data() + static_cast<size_t>(row) * fields.size();
}

const Cell& Recordset::Inner::Cell_At(int column) {
  Need_Row();
  const auto index = static_cast<size_t>(column);
  used[index] = 1;
  const Cell* row = Row_Of(position);
  if (row && row[index].kind == Cell::Kind::Unread) {
    Block* block = Block_Of(position);
    row = Load(block->first, block->Count()) ? Row_Of(position) : nullptr;
  }
  if (!row) Raise(errors::recordDeleted);
  return row[index];
}

void Recordset::Inner::Prepare_Read() {
  // The first few rows are read whole; they show which columns are wanted.
  const bool all = blocks.empty();
  const auto wanted = [this, all](size_t i) { return all || used[i]; };
  bool enough = readStatement != nullptr && allRead == all;
  if (enough && !all) {
    size_t known = 0;
    for (size_t i = 0; i < fields.size(); ++i) known += used[i] ? 1u : 0u;
    enough = known == readColumns.size();
  }
  if (enough) return;
  sqlite3_finalize(readStatement);
  readStatement = nullptr;
  readColumns.clear();
  QByteArray sql = "SELECT rowid";
  for (size_t i = 0; i < fields.size(); ++i) {
    if (!wanted(i)) continue;
    readColumns.push_back(static_cast<int>(i));
    sql += ',' + Quoted(fields[i].name);
  }
  allRead = all;
  readStatement =
      engine->Prepare(sql + " FROM " + Quoted(table) + " WHERE rowid BETWEEN ?1 AND ?2 ORDER BY rowid", true);
}

Block* Recordset::Inner::Load(int from, int count) {
  if (cachedRows > mostCachedRows) {
    blocks.clear();
    cachedRows = 0;
  }
  lastBlock = nullptr;
  Prepare_Read();
  auto block = std::make_unique<Block>();
  block->first = from;
  block->rows.assign(static_cast<size_t>(count), -1);
  block->cells.resize(static_cast<size_t>(count) * fields.size());
  const qint64* key = keys.data() + from;
  qint32 next = 0;
  const auto read = [&](qint64 first, qint64 last, int index) {
    sqlite3_bind_int64(readStatement, 1, first);
    sqlite3_bind_int64(readStatement, 2, last);
    int rc;
    while ((rc = sqlite3_step(readStatement)) == SQLITE_ROW) {
      const qint64 found = sqlite3_column_int64(readStatement, 0);
      while (index < count && key[index] < found) ++index;  // vanished meanwhile
      if (index == count || key[index] != found) continue;  // not of this keyset
      Cell* cells = block->cells.data() + static_cast<size_t>(next) * fields.size();
      block->rows[static_cast<size_t>(index++)] = next++;
      for (size_t i = 0; i < readColumns.size(); ++i)
        Read_Cell(*block, cells[readColumns[i]], readStatement, static_cast<int>(i) + 1);
    }
    sqlite3_reset(readStatement);
    if (rc != SQLITE_DONE) engine->Fail(rc);
  };
  if (ascending) {
    read(key[0], key[count - 1], 0);
  } else {
    for (int i = 0; i < count; ++i) read(key[i], key[i], i);
  }
  const auto place =
      std::lower_bound(blocks.begin(), blocks.end(), from,
                       [](const std::unique_ptr<Block>& other, int wanted) { return other->first < wanted; });
  if (place != blocks.end() && (*place)->first == from) {
    *place = std::move(block);
    return lastBlock = place->get();
  }
  cachedRows += count;
  return lastBlock = blocks.insert(place, std::move(block))->get();
}

void Recordset::Inner::Read_Cell(Block& block, Cell& cell, sqlite3_stmt* statement, int column) const {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      cell.kind = Cell::Kind::Whole;
      cell.whole = sqlite3_column_int64(statement, column);
      break;
    case SQLITE_FLOAT:
      cell.kind = Cell::Kind::Real;
      cell.real = sqlite3_column_double(statement, column);
      break;
    case SQLITE_NULL:
      cell.kind = Cell::Kind::Null;
      break;
    default: {
      const auto* text = static_cast<const char*>(sqlite3_column_blob(statement, column));
      cell.kind = Cell::Kind::Text;
      cell.bytes = static_cast<quint32>(sqlite3_column_bytes(statement, column));
      cell.offset = static_cast<qint64>(block.texts.size());
      block.texts.insert(block.texts.end(), text, text + cell.bytes);
    }
  }
}

QString Recordset::Inner::Cell_Text(const Cell& cell) const {
  return QString::fromUtf8(lastBlock->texts.data() + cell.offset, static_cast<qsizetype>(cell.bytes));
}
