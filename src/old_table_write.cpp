#include "old_table_write.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "old_table_file.h"
#include "platform/text.h"
#include "store/entry.h"
#include "store/header_row.h"
#include "store/stored_number.h"

namespace {

bool Same(const QString& one, const QString& other) { return one.compare(other, Qt::CaseInsensitive) == 0; }

// A table as it will be, and where its columns come from.
struct NewTable {
  TableDef def;
  std::vector<int> sources;  // column of the old table by column of the new one; -1 = none
  bool entries = false;      // the table of the entries
};

int Column_Named(const OldTable& table, const QString& name) {
  for (size_t i = 0; i < table.columns.size(); ++i)
    if (table.columns[i].known && Same(table.columns[i].field.name, name)) return static_cast<int>(i);
  return -1;
}

bool Is_Vertex_Table(const OldTable& table) {
  return table.columns.size() == 2 && Column_Named(table, QStringLiteral("xf")) >= 0 &&
         Column_Named(table, QStringLiteral("yf")) >= 0;
}

class Writer {
 public:
  Writer(const QString& source, const QString& target) : file(source), database(Workspace::CreateDatabase(target)) {}

  QStringList Write() {
    const bool entries = std::any_of(file.Tables().begin(), file.Tables().end(),
                                     [](const OldTable& table) { return Same(table.name, MapData_Def().name); });
    if (!entries) Raise(errors::databaseDamaged, QStringLiteral("Die Tabelle MapData fehlt."));
    database->BeginTrans();
    for (size_t i = 0; i < file.Tables().size(); ++i) Write_Table(i);
    if (!database->HasTable(Qdata_Def().name)) {
      database->CreateTable(Qdata_Def());
      Note(QStringLiteral("Die Tabelle Qdata fehlte und wurde leer angelegt."));
    }
    database->CommitTrans();
    database->Close();
    return lines + notes;
  }

 private:
  void Note(const QString& text) { notes << QStringLiteral("hinweis\t") + text; }

  // Its numbers may be written down somewhere: they stay.
  void Tell_Counter(const QString& table, const QString& name) {
    lines << QStringLiteral("zaehler\t%1\t%2").arg(table, name);
    Note(QStringLiteral("Die Spalte %1 der Tabelle %2 zählte die Zeilen von selbst: ihre Zahlen sind geblieben, neue "
                        "Zeilen bekommen keine.")
             .arg(name, table));
  }

  NewTable Plan(const OldTable& old) {
    NewTable table;
    table.entries = Same(old.name, MapData_Def().name);
    const bool vertices = Is_Vertex_Table(old);
    table.def = table.entries ? MapData_Def() : vertices ? Vertex_Def(old.name) : TableDef{old.name, {}};
    for (FieldInfo& field : table.def.fields) {
      const int source = Column_Named(old, field.name);
      table.sources.push_back(source);
      if (source < 0) {
        Note(QStringLiteral("Die Spalte %1 der Tabelle %2 fehlte.").arg(field.name, old.name));
        continue;
      }
      // A text that was longer than ours keeps its room.
      const FieldInfo& before = old.columns[static_cast<size_t>(source)].field;
      if (field.type == FieldType::Text && before.type == FieldType::Text)
        field.size = before.size == 0 ? 0 : std::max(field.size, before.size);
    }
    for (size_t i = 0; i < old.columns.size(); ++i) {
      const OldColumn& column = old.columns[i];
      if (!column.known)
        Note(QStringLiteral("Die Spalte %1 der Tabelle %2 enthält keine Texte oder Zahlen; sie kam nicht mit.")
                 .arg(column.field.name, old.name));
      if (!column.known ||
          std::find(table.sources.begin(), table.sources.end(), static_cast<int>(i)) != table.sources.end())
        continue;
      if (column.counts) Tell_Counter(old.name, column.field.name);
      table.def.fields.push_back(column.field);
      table.sources.push_back(static_cast<int>(i));
    }
    return table;
  }

  void Write_Table(size_t number) {
    const OldTable& old = file.Tables()[number];
    const NewTable table = Plan(old);
    if (table.def.fields.empty()) return Note(QStringLiteral("Die Tabelle %1 ist ohne Spalten.").arg(old.name));
    database->CreateTable(table.def);
    const auto rows = database->OpenRecordset(table.def.name);
    int written = 0;
    changed = 0;
    bool headed = !table.entries;
    const int unread = file.Read_Rows(number, [&](const std::vector<Value>& values) {
      if (!std::exchange(headed, true)) Put_Header(*rows, table, values);
      rows->AddNew();
      for (size_t i = 0; i < table.sources.size(); ++i) {
        const Value value = table.sources[i] < 0 ? Value() : values[static_cast<size_t>(table.sources[i])];
        const bool own = table.entries && i < static_cast<size_t>(column::fixedCount);
        rows->Set(static_cast<int>(i), Fitted(table.def.fields[i], value, own));
      }
      rows->Update();
      ++written;
    });
    lines << QStringLiteral("tabelle\t%1\t%2").arg(old.name).arg(written);
    if (unread > 0 || written < old.rows)
      Note(QStringLiteral("Die Tabelle %1 ist beschädigt: %2 von %3 Zeilen wurden gelesen.")
               .arg(old.name)
               .arg(written)
               .arg(std::max(old.rows, written + unread)));
    if (changed > 0)
      Note(QStringLiteral("In der Tabelle %1 hatten %2 Zahlen keinen Platz in ihrer Spalte.")
               .arg(old.name)
               .arg(changed));
  }

  // The first row becomes the header when the table is loaded: no entry shall be lost to it.
  void Put_Header(Recordset& rows, const NewTable& table, const std::vector<Value>& first) {
    const int source = table.sources[column::ID];
    const auto* id = source < 0 ? nullptr : std::get_if<QString>(&first[static_cast<size_t>(source)]);
    if (id && EntryId::StoredIsHeader(*id)) return;
    rows.AddNew();
    Write_Entry(rows, HeaderRow{}.ToEntry());
    rows.Update();
    Note(QStringLiteral("Die Kopfzeile der Tabelle fehlte und wurde ergänzt."));
  }

  // What the column can hold. Columns of the program's own have no empty fields.
  Value Fitted(const FieldInfo& field, const Value& value, bool own) {
    if (field.type == FieldType::Text) return Fitted_Text(field, value, own);
    double number = 0;
    if (const auto* whole = std::get_if<qint64>(&value))
      number = static_cast<double>(*whole);
    else if (const auto* fraction = std::get_if<double>(&value))
      number = *fraction;
    else if (const auto* text = std::get_if<QString>(&value))
      number = Val_Comma(*text);
    else if (!own)
      return {};
    if (!std::isfinite(number)) number = 0;
    if (field.type == FieldType::Double) return number;
    const double rounded = std::nearbyint(number);
    const auto wide = static_cast<qint64>(std::clamp(rounded, -2147483648.0, 2147483647.0));
    const qint64 fitting = field.type == FieldType::Long ? wide : Stored_Number(wide);
    if (static_cast<double>(fitting) != rounded) ++changed;
    return fitting;
  }

  Value Fitted_Text(const FieldInfo& field, const Value& value, bool own) const {
    QString text;
    if (const auto* it = std::get_if<QString>(&value))
      text = *it;
    else if (const auto* whole = std::get_if<qint64>(&value))
      text = QString::number(*whole);
    else if (const auto* number = std::get_if<double>(&value))
      text = Number_Text(*number);
    else if (!own)
      return {};
    return field.size > 0 ? Cut_Text(text, field.size) : text;
  }

  OldTableFile file;
  std::unique_ptr<Database> database;
  QStringList lines, notes;
  int changed = 0;
};

}  // namespace

QStringList Write_Old_Table(const QString& source, const QString& target) { return Writer(source, target).Write(); }
