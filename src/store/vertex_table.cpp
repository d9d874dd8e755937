#include "store/vertex_table.h"

#include <algorithm>
#include <array>

#include "platform/message_box.h"
#include "platform/text.h"
#include "state/global_state.h"
#include "store/entry.h"
#include "store/stored_number.h"
#include "store/transaction.h"

namespace {

constexpr int tableLimit = 1000;
constexpr int noNumber = 5000;  // error of a figure whose ID has none

// Number of a table "<kind><digits>"; -1 for every other name.
int Table_Number(const QString& table, const QString& kind) {
  if (!table.startsWith(kind, Qt::CaseInsensitive)) return -1;
  const QStringView rest = QStringView(table).mid(kind.size());
  if (rest.isEmpty() || rest.size() > 6) return -1;
  if (!std::all_of(rest.begin(), rest.end(), [](QChar c) { return c >= u'0' && c <= u'9'; })) return -1;
  return rest.toInt();
}

bool Has_Vertex_Columns(const TableDef& table) {
  return table.fields.size() == 2 && table.fields[0].name == QLatin1String("xf") &&
         table.fields[1].name == QLatin1String("yf");
}

bool Is_Vertex_Table(const QString& name) {
  const std::vector<TableDef>& tables = dbEntries->TableDefs();
  return std::any_of(tables.begin(), tables.end(), [&name](const TableDef& table) {
    return table.name.compare(name, Qt::CaseInsensitive) == 0 && Has_Vertex_Columns(table);
  });
}

using NumberFlags = std::array<bool, tableLimit>;

// A row whose table is gone still names its number: a new line there would lend it its shape.
void Tick_Numbers_Of_Rows(const QString& kind, NumberFlags& used) {
  For_Each_Entry([&] {
    const QString id = rsEntries->Text(column::ID);
    if (!id.contains(kind)) return;
    const int number = Table_Number(EntryId::Parse(id).TableName(), kind);
    if (number >= 0 && number < tableLimit) used[static_cast<size_t>(number)] = true;
  });
}

}  // namespace

QStringList Free_Poly_Tables(const QString& kind, size_t count) {
  QString inHand;
  if (rsEntries->Position() >= 0) inHand = EntryId::Parse(rsEntries->Text(column::ID)).TableName();
  NumberFlags used{};
  QStringList stale;
  for (const TableDef& table : dbEntries->TableDefs()) {
    const int number = Table_Number(table.name, kind);
    if (number < 0) continue;
    const bool keep = table.name == inHand || !Has_Vertex_Columns(table);
    if (!keep && dbEntries->RowCount(table.name) < 2) {
      stale.append(table.name);
    } else if (number < tableLimit) {
      used[static_cast<size_t>(number)] = true;
    }
  }
  for (const QString& name : stale) dbEntries->DropTable(name);
  Tick_Numbers_Of_Rows(kind, used);
  QStringList names;
  for (size_t number = 0; number < used.size() && static_cast<size_t>(names.size()) < count; ++number)
    if (!used[number]) names << kind + QString::number(number);
  return names;
}

QString New_Poly_Table(const QString& kind) {
  if (kind != QLatin1String("Linie") && kind != QLatin1String("Flaeche")) {
    Message_Box(QStringLiteral("Falscher Id-Tabellen-Name"));
    return {};
  }
  const QStringList free = Free_Poly_Tables(kind, 1);
  if (free.isEmpty()) Message_Box(QStringLiteral("maximale Zahl der Polygone = 1000!"));
  return free.value(0);
}

QString Next_Figure_ID() {
  int highest = 0;
  For_Each_Entry([&highest] {
    if (!Type_Here().IsFigure()) return;
    const EntryId id = EntryId::Parse(rsEntries->Text(column::ID));
    if (!id.IsFigure()) return;
    const int number = id.Number();
    if (number < 0) Raise(noNumber, QStringLiteral("Keine Nummer \nError: %1").arg(noNumber));
    highest = std::max(highest, number);
  });
  const QString name = QStringLiteral("Figur") + QString::number(highest + 1);
  Drop_Vertex_Table(name);
  return name;
}

bool Drop_Vertex_Table(const QString& name) {
  if (!Is_Vertex_Table(name)) return false;
  dbEntries->DropTable(name);
  return true;
}

void Drop_Vertex_Tables(const QSet<QString>& lowerNames) {
  if (lowerNames.isEmpty()) return;
  QStringList names;
  for (const TableDef& table : dbEntries->TableDefs())
    if (Has_Vertex_Columns(table) && lowerNames.contains(table.name.toLower())) names += table.name;
  dbEntries->DropTables(names);
}

void Create_Vertex_Table(const QString& name) {
  Drop_Vertex_Table(name);
  dbEntries->CreateTable(Vertex_Def(name));
}

void Write_Vertices(const QString& name, const std::vector<QPoint>& points) {
  In_Transaction([&] {
    Create_Vertex_Table(name);
    const auto rows = dbEntries->OpenRecordset(name);
    for (const QPoint& point : points) {
      rows->AddNew();
      rows->Set(0, static_cast<qint64>(To_Int16(point.x())));
      rows->Set(1, static_cast<qint64>(To_Int16(point.y())));
      rows->Update();
    }
  });
}

std::vector<QPoint> Load_Vertices(const QString& name) {
  std::vector<QPoint> vertices;
  if (!dbEntries || name.isEmpty()) return vertices;
  try {
    const std::vector<Database::PointRow>* rows = dbEntries->Points(name);
    if (rows == nullptr) return vertices;
    vertices.reserve(rows->size());
    for (const Database::PointRow& row : *rows) {
      if (row.x < stopLimit) break;
      vertices.emplace_back(Stored_Number(row.x), Stored_Number(row.y));
    }
  } catch (const Error&) {
    vertices.clear();
  }
  return vertices;
}
