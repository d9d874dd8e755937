#include <sqlite3.h>

#include <QLatin1Char>
#include <algorithm>

#include "platform/database_inner.h"

// The cursor. Reading rows is in recordset_rows.cpp, writing them in recordset_edit.cpp.

Recordset::Recordset() : inner(std::make_unique<Inner>()) {}
Recordset::~Recordset() = default;
Recordset::Inner::~Inner() { Close_Statements(); }

bool Recordset::IsOpen() const { return inner->engine && inner->engine->db; }

bool Recordset::Eof() const {
  inner->Validate();
  return inner->at == Inner::At::Behind || inner->keys.empty();
}

bool Recordset::Bof() const {
  inner->Validate();
  return inner->at == Inner::At::Before || inner->keys.empty();
}

int Recordset::RecordCount() const {
  inner->Validate();
  return static_cast<int>(inner->keys.size());
}

int Recordset::Position() const {
  inner->Validate();
  return inner->at == Inner::At::Row ? inner->position : -1;
}

void Recordset::Inner::Go(int target) {
  End_Edit();
  current = nullptr;
  if (target < 0) {
    at = At::Before;
  } else if (target >= static_cast<int>(keys.size())) {
    at = At::Behind;
  } else {
    at = At::Row;
    position = target;
  }
}

void Recordset::MoveFirst() {
  inner->Validate();
  inner->Go(0);
}

void Recordset::MoveLast() {
  inner->Validate();
  if (inner->keys.empty()) return inner->Go(0);
  inner->Go(static_cast<int>(inner->keys.size()) - 1);
}

void Recordset::MoveNext() {
  if (Eof()) Raise(errors::noCurrentRecord);
  inner->Go(inner->at == Inner::At::Before ? 0 : inner->position + 1);
}

void Recordset::MovePrevious() {
  if (Bof()) Raise(errors::noCurrentRecord);
  inner->Go((inner->at == Inner::At::Behind ? static_cast<int>(inner->keys.size()) : inner->position) - 1);
}

void Recordset::MoveTo(int position) {
  inner->Validate();
  if (position < 0 || position >= static_cast<int>(inner->keys.size())) Raise(errors::noCurrentRecord);
  inner->Go(position);
}

qint64 Recordset::Key() const {
  inner->Need_Row();
  return inner->keys[static_cast<size_t>(inner->position)];
}

QString Recordset::Bookmark() const { return QString::number(Key()); }

int Recordset::PositionOf(qint64 key) const {
  inner->Validate();
  return inner->Position_Of(key);
}

bool Recordset::HasRow(const QString& bookmark) const {
  bool isNumber = false;
  const qint64 key = bookmark.toLongLong(&isNumber);
  const int position = isNumber ? PositionOf(key) : -1;
  return position >= 0 && inner->Row_Of(position);
}

void Recordset::SetBookmark(const QString& bookmark) {
  if (!HasRow(bookmark)) Raise(errors::recordDeleted);
  inner->Go(inner->Position_Of(bookmark.toLongLong()));
}

const std::vector<FieldInfo>& Recordset::Fields() const { return inner->fields; }

namespace {
quint32 Hint_Of(QStringView name) {
  return static_cast<quint32>(name.size()) << 16 | (name.isEmpty() ? 0u : name.front().unicode());
}
}  // namespace

void Recordset::Inner::Index_Fields() {
  fieldHints.clear();
  for (const FieldInfo& field : fields) fieldHints.push_back(Hint_Of(field.name));
}

int Recordset::Inner::Find_Field(QStringView name) const {
  const quint32 hint = Hint_Of(name);
  for (size_t i = 0; i < fieldHints.size(); ++i)
    if (fieldHints[i] == hint && std::equal(name.begin(), name.end(), fields[i].name.constData()))
      return static_cast<int>(i);
  for (size_t i = 0; i < fields.size(); ++i)
    if (name.compare(fields[i].name, Qt::CaseInsensitive) == 0) return static_cast<int>(i);
  return -1;
}

int Recordset::FieldIndex(QStringView name) const {
  const int index = inner->Find_Field(name);
  if (index < 0) Raise(errors::fieldNotFound);
  return index;
}

bool Recordset::HasField(QStringView name) const { return inner->Find_Field(name) >= 0; }

void Recordset::Requery() {
  Inner& set = *inner;
  set.engine->Need_Open();
  set.End_Edit();
  set.Close_Statements();
  set.Open(QString(set.source), set.fixed);
}

bool Recordset::Editing() const { return inner->mode != Inner::Mode::None; }

// The values: those of the edit buffer where one was set, else those of the row.

const Value& Recordset::Raw(int column) const {
  Inner& set = *inner;
  set.Check_Column(column);
  const auto index = static_cast<size_t>(column);
  if (set.mode == Inner::Mode::New || (set.mode == Inner::Mode::Edit && set.dirty[index])) return set.buffer[index];
  const database_inner::Cell& cell = set.Cell_At(column);
  Value& value = set.raw[index];
  switch (cell.kind) {
    case database_inner::Cell::Kind::Whole:
      value = cell.whole;
      break;
    case database_inner::Cell::Kind::Real:
      value = cell.real;
      break;
    case database_inner::Cell::Kind::Text:
      value = set.Cell_Text(cell);
      break;
    default:
      value = std::monostate();
  }
  return value;
}

QString Recordset::Text(int column) const {
  Inner& set = *inner;
  if (set.mode == Inner::Mode::None) {
    set.Check_Column(column);
    const database_inner::Cell& cell = set.Cell_At(column);
    if (cell.kind == database_inner::Cell::Kind::Text) return set.Cell_Text(cell);
  }
  return database_inner::Text_Of(Raw(column));
}

qint64 Recordset::Integer(int column) const {
  Inner& set = *inner;
  if (set.mode == Inner::Mode::None) {
    set.Check_Column(column);
    const database_inner::Cell& cell = set.Cell_At(column);
    if (cell.kind == database_inner::Cell::Kind::Whole) return cell.whole;
  }
  return database_inner::Whole_Of(Raw(column));
}

double Recordset::Number(int column) const {
  Inner& set = *inner;
  if (set.mode == Inner::Mode::None) {
    set.Check_Column(column);
    const database_inner::Cell& cell = set.Cell_At(column);
    if (cell.kind == database_inner::Cell::Kind::Real) return cell.real;
    if (cell.kind == database_inner::Cell::Kind::Whole) return static_cast<double>(cell.whole);
  }
  return database_inner::Number_Of(Raw(column));
}
