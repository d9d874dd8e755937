#include <sqlite3.h>

#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

#include "platform/database_inner.h"

// Opening a recordset and reading its rows: the keys of all rows are taken at once, the rows come in blocks that are
// kept until somebody else writes into the table. Only columns that are asked for are read.

using database_inner::Block;
using database_inner::Cell;
using database_inner::Layout;
using database_inner::Quoted;
using database_inner::Statement;

namespace {
constexpr int mostReadAhead = 256;
constexpr qint64 mostCachedBytes = qint64{96} << 20;

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

void Recordset::Inner::Open(const QString& from, bool asSnapshot) {
  source = from;
  fixed = asSnapshot;
  Drop_Blocks();
  fields.clear();
  keys.clear();
  table.clear();
  wholeTable = false;
  QString name = from.trimmed();
  static const QRegularExpression select(QStringLiteral(R"(^select\b)"), QRegularExpression::CaseInsensitiveOption);
  if (asSnapshot || select.match(name).hasMatch()) {
    Open_Select(name, asSnapshot);
  } else {
    if (name.size() > 2 && name.startsWith(QLatin1Char('[')) && name.endsWith(QLatin1Char(']')))
      name = name.mid(1, name.size() - 2);
    Open_Table(name);
  }
  Index_Fields();
  used.assign(fields.size(), 0);
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
  wholeTable = true;
  fields = found->fields;
  keyStatement = "SELECT rowid FROM " + Quoted(table) + " ORDER BY rowid";
  state = engine->State_Of(table);
  Read_Keys();
}

void Recordset::Inner::Open_Select(const QString& sql, bool asSnapshot) {
  const Statement owner = engine->Prepare(sql.toUtf8());
  sqlite3_stmt* statement = owner.get();
  if (!sqlite3_stmt_readonly(statement)) Raise(errors::sqlSyntax);
  const int count = sqlite3_column_count(statement);
  const QString single = asSnapshot ? QString() : Single_Table_Of(sql);
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
  seenVersion = state->version;
  seenGeneration = engine->generation;
  exact = wholeTable;
  if (wholeTable && Take_Dense_Keys()) return;
  const Statement statement = engine->Prepare(keyStatement);
  const int column = sqlite3_column_count(statement.get()) - 1;
  int rc;
  while ((rc = sqlite3_step(statement.get())) == SQLITE_ROW) {
    const qint64 key = sqlite3_column_int64(statement.get(), column);
    ascending = ascending && (keys.empty() || keys.back() < key);
    keys.push_back(key);
    engine->Charge(static_cast<qint64>(keys.capacity() * sizeof(qint64)));
  }
  if (rc != SQLITE_DONE) engine->Fail(rc);
}

// Where nothing was deleted the keys follow each other, and the ends tell them all.
bool Recordset::Inner::Take_Dense_Keys() {
  const QByteArray name = Quoted(table);
  const Statement owner = engine->Prepare("SELECT (SELECT count(*) FROM " + name + "), (SELECT min(rowid) FROM " +
                                          name + "), (SELECT max(rowid) FROM " + name + ')');
  sqlite3_stmt* statement = owner.get();
  if (const int rc = sqlite3_step(statement); rc != SQLITE_ROW) engine->Fail(rc);
  const qint64 count = sqlite3_column_int64(statement, 0);
  const qint64 first = sqlite3_column_int64(statement, 1), last = sqlite3_column_int64(statement, 2);
  if (count > 0 && (first < 0 || last - first != count - 1)) return false;
  keys.resize(static_cast<size_t>(count));
  std::iota(keys.begin(), keys.end(), first);
  return true;
}

void Recordset::Inner::Read_Snapshot(sqlite3_stmt* statement) {
  auto block = std::make_unique<Block>();
  const size_t width = fields.size();
  auto all = std::make_shared<Layout>();
  for (size_t i = 0; i < width; ++i) {
    all->columns.push_back(static_cast<int>(i));
    all->slots.push_back(static_cast<int>(i));
  }
  block->layout = std::move(all);
  int rc;
  while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
    const auto row = static_cast<qint32>(keys.size());
    keys.push_back(row);
    block->rows.push_back(row);
    block->cells.resize(block->cells.size() + width);
    Cell* cells = block->cells.data() + static_cast<size_t>(row) * width;
    for (size_t i = 0; i < width; ++i) Read_Cell(*block, cells[i], statement, static_cast<int>(i));
    engine->Charge(static_cast<qint64>(keys.capacity() * sizeof(qint64) + block->rows.capacity() * sizeof(qint32) +
                                       block->cells.capacity() * sizeof(Cell) + block->texts.capacity()));
  }
  if (rc != SQLITE_DONE) engine->Fail(rc);
  ascending = true;
  blocks.push_back(std::move(block));
}

void Recordset::Inner::Close_Statements() {
  if (!engine) return;
  for (sqlite3_stmt** statement : {&readStatement, &insertStatement, &changeStatement, &deleteStatement})
    engine->Finish(*statement);
}

void Recordset::Inner::Drop_Blocks() {
  blocks.clear();
  fresh.clear();
  lastBlock = nullptr;
  current = nullptr;
  cachedBytes = 0;
  lastLoaded = lastBegun = 0;
  readAhead = 8;
}

void Recordset::Inner::Refresh() {
  engine->Need_Open();
  engine->Notice_Changes();
  if (Is_Fresh()) return;
  if (Forget_Rows_Alone()) return;
  Drop_Blocks();
  exact = false;
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

// Where the writes since are known to have changed a few rows and nothing else, all others stay as they were read.
bool Recordset::Inner::Forget_Rows_Alone() {
  if (!state || fixed || seenGeneration != engine->generation || seenRollbacks != engine->rollbacks) return false;
  const auto since = state->Since(seenVersion);
  const auto changed = [](const auto& logged) { return logged.write.kind == RowWrite::Kind::Changed; };
  if (!since || !std::all_of(since->begin(), since->end(), changed)) return false;
  seenVersion = state->version;
  Take_In_Fresh();
  lastBlock = nullptr;
  current = nullptr;
  for (const auto& [version, write] : *since) {
    const int row = Position_Of(write.key);
    std::erase_if(blocks, [&](const std::unique_ptr<database_inner::Block>& block) {
      const bool holds = row >= block->first && row < block->first + block->Count();
      if (holds) cachedBytes -= block->Bytes();
      return holds;
    });
  }
  return true;
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
  current = nullptr;  // it belongs to lastBlock
  for (const auto* list : {&blocks, &fresh}) {
    const auto behind =
        std::upper_bound(list->begin(), list->end(), rowPosition,
                         [](int wanted, const std::unique_ptr<Block>& block) { return wanted < block->first; });
    if (behind == list->begin() || !holds(**(behind - 1))) continue;
    lastBlock = (behind - 1)->get();
    lastBlock->asked = ++clock;
    return lastBlock;
  }
  return nullptr;
}

void Recordset::Inner::Take_In_Fresh() {
  const auto middle = std::ssize(blocks);
  std::move(fresh.begin(), fresh.end(), std::back_inserter(blocks));
  fresh.clear();
  std::inplace_merge(
      blocks.begin(), blocks.begin() + middle, blocks.end(),
      [](const std::unique_ptr<Block>& one, const std::unique_ptr<Block>& other) { return one->first < other->first; });
}

const Cell* Recordset::Inner::Row_Of(int rowPosition) {
  Block* block = Block_Of(rowPosition);
  if (!block) {
    // A walk takes longer and longer strides, forward and backward alike, cut at what is there already; a row that is
    // far from the last ones may be wanted alone.
    const bool onTheWay = rowPosition == lastLoaded || rowPosition == lastBegun - 1;
    readAhead = onTheWay ? std::min(readAhead * 2, mostReadAhead) : 1;
    if (readAhead > 1) Take_In_Fresh();
    const int total = static_cast<int>(keys.size());
    int from = rowPosition / readAhead * readAhead;
    int to = std::min(from + readAhead, total);
    const auto behind =
        std::upper_bound(blocks.begin(), blocks.end(), rowPosition,
                         [](int wanted, const std::unique_ptr<Block>& other) { return wanted < other->first; });
    if (behind != blocks.end()) to = std::min(to, (*behind)->first);
    if (behind != blocks.begin()) from = std::max(from, (*(behind - 1))->first + (*(behind - 1))->Count());
    block = Load(from, to - from);
    lastBegun = from;
    lastLoaded = to;
  }
  return block->Row_At(rowPosition);
}

const Cell& Recordset::Inner::Cell_At(int column) {
  Need_Row();
  if (!current) current = Row_Of(position);
  if (!current) Raise(errors::recordDeleted);
  int slot = lastBlock->layout->slots[static_cast<size_t>(column)];
  if (slot < 0) {
    used[static_cast<size_t>(column)] = 1;
    current = Load(lastBlock->first, lastBlock->Count())->Row_At(position);
    if (!current) Raise(errors::recordDeleted);
    slot = lastBlock->layout->slots[static_cast<size_t>(column)];
  } else {
    used[static_cast<size_t>(column)] = 1;
  }
  return current[slot];
}

void Recordset::Inner::Prepare_Read() {
  // The first few rows are read whole; they show which columns are wanted.
  const bool all = blocks.empty() && fresh.empty();
  auto wanted = std::make_shared<Layout>();
  wanted->slots.assign(fields.size(), -1);
  for (size_t i = 0; i < fields.size(); ++i) {
    if (!all && !used[i]) continue;
    wanted->slots[i] = static_cast<int>(wanted->columns.size());
    wanted->columns.push_back(static_cast<int>(i));
  }
  if (readStatement && layout->columns == wanted->columns && readExact == exact) return;
  engine->Finish(readStatement);
  layout = std::move(wanted);
  readExact = exact;
  QByteArray sql;
  for (const int column : layout->columns) sql += Quoted(fields[static_cast<size_t>(column)].name) + ',';
  // The key comes last; where it is known beforehand it is not asked for.
  if (exact && !sql.isEmpty())
    sql.chop(1);
  else
    sql += "rowid";
  readStatement = engine->Prepare_Lasting("SELECT " + sql + " FROM " + Quoted(table) + " WHERE rowid>=?1 " +
                                          (exact ? "ORDER BY rowid LIMIT ?2" : "AND rowid<=?2 ORDER BY rowid"));
}

// Reads the rows of `count` positions, of a key range at once where the keys ascend.
Block* Recordset::Inner::Load(int from, int count) {
  if (cachedBytes > mostCachedBytes) Forget_Older_Half();
  engine->Need_Open();
  Prepare_Read();
  auto block = std::make_unique<Block>();
  block->first = from;
  block->layout = layout;
  block->rows.assign(static_cast<size_t>(count), -1);
  // One more, so that a row has an address even without columns.
  block->cells.resize(static_cast<size_t>(count) * layout->columns.size() + 1);
  if (lastBlock) block->texts.reserve(lastBlock->texts.size() * static_cast<size_t>(count) / lastBlock->rows.size());
  lastBlock = nullptr;
  if (exact) {
    exact = Read_Exact(*block, count);
    if (!exact) return Load(from, count);
  } else if (ascending) {
    Read_Range(*block, 0, count);
  } else {
    for (int i = 0; i < count; ++i) Read_Range(*block, i, i + 1);
  }
  return lastBlock = Keep(std::move(block));
}

// In place of the block that begins at the same row, if there is one.
Block* Recordset::Inner::Keep(std::unique_ptr<Block> block) {
  block->asked = ++clock;
  cachedBytes += block->Bytes();
  const int from = block->first;
  const auto place_of = [from](std::vector<std::unique_ptr<Block>>& list) {
    return std::lower_bound(list.begin(), list.end(), from,
                            [](const std::unique_ptr<Block>& other, int wanted) { return other->first < wanted; });
  };
  auto place = place_of(blocks);
  const auto stands_there = [&] { return place != blocks.end() && (*place)->first == from; };
  if (block->Count() == 1 && !stands_there() && (fresh.empty() || fresh.back()->first < from))
    return fresh.emplace_back(std::move(block)).get();
  if (!fresh.empty()) {
    Take_In_Fresh();
    place = place_of(blocks);
  }
  if (!stands_there()) return blocks.insert(place, std::move(block))->get();
  cachedBytes -= (*place)->Bytes();
  *place = std::move(block);
  return place->get();
}

void Recordset::Inner::Forget_Older_Half() {
  Take_In_Fresh();
  std::vector<quint64> asked;
  asked.reserve(blocks.size());
  for (const auto& block : blocks) asked.push_back(block->asked);
  const auto middle = asked.begin() + std::ssize(asked) / 2;
  std::nth_element(asked.begin(), middle, asked.end());
  std::erase_if(blocks, [&](const auto& block) { return block->asked <= *middle; });
  lastBlock = nullptr;
  current = nullptr;
  cachedBytes = 0;
  for (const auto& block : blocks) cachedBytes += block->Bytes();
}

// Nobody else has added or removed rows since the keys were taken: the next rows of the table are those of the block.
bool Recordset::Inner::Read_Exact(Block& block, int count) {
  const int width = static_cast<int>(layout->columns.size());
  sqlite3_bind_int64(readStatement, 1, keys[static_cast<size_t>(block.first)]);
  sqlite3_bind_int(readStatement, 2, count);
  int rc, row = 0;
  while ((rc = sqlite3_step(readStatement)) == SQLITE_ROW && row < count) {
    Cell* cells = block.cells.data() + row * width;
    for (int i = 0; i < width; ++i) Read_Cell(block, cells[i], readStatement, i);
    block.rows[static_cast<size_t>(row)] = row;
    ++row;
  }
  sqlite3_reset(readStatement);
  if (rc != SQLITE_DONE) engine->Fail(rc);
  return row == count;
}

// Rows from one index of the block to another, found by their keys.
void Recordset::Inner::Read_Range(Block& block, int index, int end) {
  const int width = static_cast<int>(layout->columns.size());
  const qint64* key = keys.data() + block.first;
  sqlite3_bind_int64(readStatement, 1, key[index]);
  sqlite3_bind_int64(readStatement, 2, key[end - 1]);
  int rc;
  while ((rc = sqlite3_step(readStatement)) == SQLITE_ROW) {
    const qint64 found = sqlite3_column_int64(readStatement, width);
    while (index < end && key[index] < found) ++index;  // vanished meanwhile
    if (index == end || key[index] != found) continue;  // not of this keyset
    Cell* cells = block.cells.data() + index * width;
    for (int i = 0; i < width; ++i) Read_Cell(block, cells[i], readStatement, i);
    block.rows[static_cast<size_t>(index)] = index;
    ++index;
  }
  sqlite3_reset(readStatement);
  if (rc != SQLITE_DONE) engine->Fail(rc);
}

void Recordset::Inner::Read_Cell(Block& block, Cell& cell, sqlite3_stmt* statement, int column) {
  // The connection is used by one thread without mutex, so that the value may be looked at directly: half the calls.
  sqlite3_value* value = sqlite3_column_value(statement, column);
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      cell.kind = Cell::Kind::Whole;
      cell.whole = sqlite3_value_int64(value);
      break;
    case SQLITE_FLOAT:
      cell.real = sqlite3_value_double(value);
      cell.kind = std::isfinite(cell.real) ? Cell::Kind::Real : Cell::Kind::Null;
      break;
    case SQLITE_NULL:
      cell.kind = Cell::Kind::Null;
      break;
    default: {
      const bool asItStands = engine->hasUtf8 || sqlite3_value_type(value) == SQLITE_BLOB;
      const auto* text = static_cast<const char*>(asItStands ? sqlite3_value_blob(value)
                                                             : static_cast<const void*>(sqlite3_value_text(value)));
      cell.kind = Cell::Kind::Text;
      cell.bytes = static_cast<quint32>(sqlite3_value_bytes(value));
      cell.offset = static_cast<qint64>(block.texts.size());
      block.texts.insert(block.texts.end(), text, text + cell.bytes);
    }
  }
}

QString Recordset::Inner::Cell_Text(const Cell& cell) const {
  return QString::fromUtf8(lastBlock->texts.data() + cell.offset, static_cast<qsizetype>(cell.bytes));
}
