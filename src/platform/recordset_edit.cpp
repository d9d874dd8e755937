#include <sqlite3.h>

#include <QStringConverter>
#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/database_inner.h"
#include "platform/text.h"

// Writing rows. A row is on the disk when Update returns; if it cannot be written, the edit ends and the row is as
// before.

using database_inner::Cell;
using database_inner::Quoted;

namespace database_inner {
namespace {

qint64 Halves_To_Even(double value) {
  if (std::isnan(value)) return 0;
  const double whole = std::nearbyint(value);
  if (whole >= 9.2233720368547758e18) return std::numeric_limits<qint64>::max();
  if (whole <= -9.2233720368547758e18) return std::numeric_limits<qint64>::min();
  return static_cast<qint64>(whole);
}

}  // namespace

qint64 Whole_Of(const Value& value) {
  if (const qint64* whole = std::get_if<qint64>(&value)) return *whole;
  return Halves_To_Even(Number_Of(value));
}

double Number_Of(const Value& value) {
  if (const double* real = std::get_if<double>(&value)) return *real;
  if (const qint64* whole = std::get_if<qint64>(&value)) return static_cast<double>(*whole);
  if (const QString* text = std::get_if<QString>(&value)) return Val(*text);
  return 0;
}

QString Text_Of(const Value& value) {
  if (const QString* text = std::get_if<QString>(&value)) return *text;
  if (const qint64* whole = std::get_if<qint64>(&value)) return QString::number(*whole);
  if (const double* real = std::get_if<double>(&value)) return Number_Text(*real);
  return {};
}

void Fit_Value(const FieldInfo& field, Value& value) {
  if (std::holds_alternative<std::monostate>(value)) return;
  if (field.type == FieldType::Text) {
    if (!std::holds_alternative<QString>(value)) value = Text_Of(value);
    const QString& text = std::get<QString>(value);
    if (field.size > 0 && text.size() > field.size) {
      const auto pairs = std::count_if(text.begin(), text.end(), [](QChar letter) { return letter.isLowSurrogate(); });
      if (text.size() - pairs > field.size) Raise(errors::textTooLong);
    }
    return;
  }
  if (const QString* text = std::get_if<QString>(&value)) {
    const auto number = Number_Typed(*text);
    if (!number) Raise(errors::typeMismatch);
    value = *number;
  }
  if (const double* real = std::get_if<double>(&value); real && !std::isfinite(*real)) Raise(errors::overflow);
  if (field.type == FieldType::Double) {
    value = Number_Of(value);
    return;
  }
  const qint64 whole = Whole_Of(value);
  const bool isShort = field.type == FieldType::Integer;
  const qint64 least = isShort ? std::numeric_limits<qint16>::min() : std::numeric_limits<qint32>::min();
  const qint64 most = isShort ? std::numeric_limits<qint16>::max() : std::numeric_limits<qint32>::max();
  if (whole < least || whole > most) Raise(errors::overflow);
  value = whole;
}

}  // namespace database_inner

void Recordset::Inner::Need_Editable() const {
  engine->Need_Open();
  if (table.isEmpty() || engine->readOnly) Raise(errors::noPermission);
}

void Recordset::Inner::End_Edit() {
  if (mode == Mode::None) return;
  mode = Mode::None;
  std::fill(dirty.begin(), dirty.end(), 0);
}

void Recordset::AddNew() {
  Inner& set = *inner;
  set.Need_Editable();
  set.Validate();
  set.End_Edit();
  for (size_t i = 0; i < set.fields.size(); ++i) {
    Value& value = set.buffer[i];
    switch (set.fields[i].type) {
      case FieldType::Text:
        value = QString();
        break;
      case FieldType::Double:
        value = 0.0;
        break;
      default:
        value = qint64{0};
    }
  }
  set.mode = Inner::Mode::New;
}

void Recordset::Edit() {
  Inner& set = *inner;
  set.Need_Editable();
  set.Need_Row();
  set.End_Edit();
  if (!set.Row_Of(set.position)) Raise(errors::recordDeleted);
  set.mode = Inner::Mode::Edit;
}

void Recordset::Set(int column, Value value) {
  Inner& set = *inner;
  set.Check_Column(column);
  if (set.mode == Inner::Mode::None) Raise(errors::noEdit, QStringLiteral("Update ohne AddNew oder Edit."));
  const auto index = static_cast<size_t>(column);
  database_inner::Fit_Value(set.fields[index], value);
  set.buffer[index] = std::move(value);
  set.dirty[index] = 1;
}

void Recordset::CancelUpdate() { inner->End_Edit(); }

void Recordset::Update() {
  Inner& set = *inner;
  set.engine->Need_Open();
  if (set.mode == Inner::Mode::None) Raise(errors::noEdit, QStringLiteral("Update ohne AddNew oder Edit."));
  // A failing write must leave no edit behind.
  struct Ender {
    Inner& set;
    ~Ender() { set.End_Edit(); }
  } ender{set};
  const Inner::Mode mode = set.mode;
  set.Validate();
  if (set.mode == Inner::Mode::None) Raise(errors::recordDeleted);  // taken back meanwhile
  set.engine->Need_Write();
  if (set.mode != mode) Raise(errors::recordDeleted);  // the cursor went on while somebody was asked
  set.engine->Write([&] { mode == Inner::Mode::New ? set.Insert() : set.Change(); });
}

void Recordset::Inner::Bind(sqlite3_stmt* statement, int parameter, const Value& value) {
  if (const QString* text = std::get_if<QString>(&value)) {
    QByteArray& bytes = bound[static_cast<size_t>(parameter) - 1];
    bytes.resize(text->size() * 3);  // its memory is kept from row to row
    const char* end = QStringEncoder(QStringEncoder::Utf8).appendToBuffer(bytes.data(), *text);
    bytes.truncate(end - bytes.constData());
    const int rc = sqlite3_bind_text64(statement, parameter, bytes.constData(),
                                       static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC, SQLITE_UTF8);
    if (rc != SQLITE_OK) engine->Fail(rc);
  } else if (const qint64* whole = std::get_if<qint64>(&value)) {
    sqlite3_bind_int64(statement, parameter, *whole);
  } else if (const double* real = std::get_if<double>(&value)) {
    sqlite3_bind_double(statement, parameter, *real);
  } else {
    sqlite3_bind_null(statement, parameter);
  }
}

void Recordset::Inner::Insert() {
  const int width = static_cast<int>(fields.size());
  if (!insertStatement) {
    QByteArray names, marks;
    for (const FieldInfo& field : fields) {
      names += Quoted(field.name) + ',';
      marks += "?,";
    }
    insertStatement =
        engine->Prepare_Lasting("INSERT INTO " + Quoted(table) + " (" + names + "rowid) VALUES (" + marks + "?)");
  }
  const qint64 key = engine->Next_Key(state, table);
  for (int i = 0; i < width; ++i) Bind(insertStatement, i + 1, buffer[static_cast<size_t>(i)]);
  sqlite3_bind_int64(insertStatement, width + 1, key);
  sqlite3_step(insertStatement);
  const int rc = sqlite3_reset(insertStatement);
  if (rc != SQLITE_OK) engine->Fail(rc);
  engine->Wrote(state, {RowWrite::Kind::Added, key});
  state->nextKey = key < std::numeric_limits<qint64>::max() ? key + 1 : 0;  // 0: the table is asked, and is full
  seenVersion = state->version;
  ascending = ascending && (keys.empty() || keys.back() < key);
  if (positionsKnown) positions.insert(key, static_cast<int>(keys.size()));
  keys.push_back(key);
}

void Recordset::Inner::Change() {
  Need_Row();
  if (std::find(dirty.begin(), dirty.end(), 1) == dirty.end()) return;
  if (!changeStatement || changeDirty != dirty) {
    engine->Finish(changeStatement);
    QByteArray sql;
    for (size_t i = 0; i < fields.size(); ++i)
      if (dirty[i]) sql += (sql.isEmpty() ? "" : ",") + Quoted(fields[i].name) + "=?";
    changeStatement = engine->Prepare_Lasting("UPDATE " + Quoted(table) + " SET " + sql + " WHERE rowid=?");
    changeDirty = dirty;
  }
  int parameter = 0;
  for (size_t i = 0; i < fields.size(); ++i)
    if (dirty[i]) Bind(changeStatement, ++parameter, buffer[i]);
  sqlite3_bind_int64(changeStatement, parameter + 1, keys[static_cast<size_t>(position)]);
  sqlite3_step(changeStatement);
  const int rc = sqlite3_reset(changeStatement);
  if (rc != SQLITE_OK) engine->Fail(rc);
  if (sqlite3_changes64(engine->db) == 0) Raise(errors::recordDeleted);
  engine->Wrote(state, {RowWrite::Kind::Changed, keys[static_cast<size_t>(position)]});
  seenVersion = state->version;
  Patch_Row();
}

// Brings the kept row up to date, so that a walk that writes row by row does not read each block anew.
void Recordset::Inner::Patch_Row() {
  database_inner::Block* block = Block_Of(position);
  if (!block) return;
  Cell* cells = block->Row_At(position);
  if (!cells) return;
  size_t parameter = 0;
  for (size_t i = 0; i < fields.size(); ++i) {
    if (!dirty[i]) continue;
    const QByteArray& bytes = bound[parameter++];
    const int slot = block->layout->slots[i];
    if (slot < 0) continue;
    Cell& cell = cells[slot];
    if (const qint64* whole = std::get_if<qint64>(&buffer[i])) {
      cell.kind = Cell::Kind::Whole;
      cell.whole = *whole;
    } else if (const double* real = std::get_if<double>(&buffer[i])) {
      cell.kind = Cell::Kind::Real;
      cell.real = *real;
    } else if (std::holds_alternative<QString>(buffer[i])) {
      cell.kind = Cell::Kind::Text;
      cell.bytes = static_cast<quint32>(bytes.size());
      cell.offset = static_cast<qint64>(block->texts.size());
      block->texts.insert(block->texts.end(), bytes.begin(), bytes.end());
      cachedBytes += bytes.size();
    } else {
      cell.kind = Cell::Kind::Null;
    }
  }
}

void Recordset::Delete() {
  Inner& set = *inner;
  set.Need_Editable();
  set.Need_Row();
  set.End_Edit();
  set.engine->Need_Write();
  if (!set.deleteStatement)
    set.deleteStatement = set.engine->Prepare_Lasting("DELETE FROM " + Quoted(set.table) + " WHERE rowid=?");
  const qint64 key = set.keys[static_cast<size_t>(set.position)];
  // Known before the row goes, so that its key is not given again.
  set.engine->Next_Key(set.state, set.table);
  set.engine->Write([&] {
    sqlite3_bind_int64(set.deleteStatement, 1, key);
    sqlite3_step(set.deleteStatement);
    const int rc = sqlite3_reset(set.deleteStatement);
    if (rc != SQLITE_OK) set.engine->Fail(rc);
    if (sqlite3_changes64(set.engine->db) == 0) Raise(errors::recordDeleted);
    set.engine->Wrote(set.state, {RowWrite::Kind::Gone, key});
  });
  set.seenVersion = set.state->version;
  set.Forget_Row(set.position);
  set.keys.erase(set.keys.begin() + set.position);
  set.positionsKnown = false;
  set.Go(set.position);
}

void Recordset::Inner::Forget_Row(int rowPosition) {
  Take_In_Fresh();
  lastBlock = nullptr;
  current = nullptr;
  for (auto block = blocks.begin(); block != blocks.end();) {
    database_inner::Block& it = **block;
    if (it.first > rowPosition) {
      --it.first;
    } else if (rowPosition < it.first + it.Count()) {
      it.rows.erase(it.rows.begin() + (rowPosition - it.first));
      cachedBytes -= static_cast<qint64>(sizeof(qint32));
      if (it.rows.empty()) {
        cachedBytes -= it.Bytes();
        block = blocks.erase(block);
        continue;
      }
    }
    ++block;
  }
}

WriteMoment Recordset::Write_Moment() const {
  Inner& set = *inner;
  set.Validate();
  if (!set.state) return {};
  return {set.state->version, set.engine->generation, set.engine->writeClock};
}

std::optional<WritesSince> Recordset::Writes_Since(const WriteMoment& moment) const {
  Inner& set = *inner;
  set.Validate();
  if (!set.state || moment.generation != set.engine->generation) return std::nullopt;
  const auto since = set.state->Since(moment.version);
  if (!since) return std::nullopt;
  WritesSince writes;
  for (const auto& [version, write] : *since) writes.rows.push_back(write);
  writes.otherTables = set.engine->Tables_Written_Since(moment.all, set.state);
  return writes;
}
