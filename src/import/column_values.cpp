#include "import/column_values.h"

#include <QSet>
#include <algorithm>

#include "platform/text.h"
#include "store/entry_id.h"
#include "store/sql_translate.h"

namespace {

const QString mapData = QStringLiteral("MapData");

const FieldInfo& Field_Named(const std::vector<FieldInfo>& fields, const QString& name) {
  const auto found = std::find_if(fields.begin(), fields.end(), [&name](const FieldInfo& field) {
    return field.name.compare(name, Qt::CaseInsensitive) == 0;
  });
  if (found == fields.end()) Raise(errors::fieldNotFound, QStringLiteral("Die Spalte '%1' gibt es nicht.").arg(name));
  return *found;
}

QString Literal(const FieldInfo& field, const QString& value) {
  if (field.type != FieldType::Text && !value.contains(u'*')) {
    const Value number = Value_For(field, value);
    if (const auto* whole = std::get_if<qint64>(&number)) return QString::number(*whole);
    return QString::number(std::get<double>(number), 'g', 17);
  }
  return u'\'' + QString(value).replace(u'\'', QLatin1String("''")) + u'\'';
}

}  // namespace

bool ColumnValue::Is_Set() const { return !value.isEmpty() && value != QLatin1String("*"); }

QString ColumnValue::ToText() const { return column + QStringLiteral("= ") + (Is_Set() ? value : QStringLiteral("*")); }

ColumnValue ColumnValue::Parse(const QString& line) {
  const qsizetype at = line.indexOf(u'=');
  if (at < 0) return {};
  return {line.left(at).trimmed(), line.mid(at + 1).trimmed()};
}

Value Value_For(const FieldInfo& field, const QString& typed) {
  if (field.type == FieldType::Text) return typed;
  const auto number = Number_Typed(typed);
  if (!number)
    Raise(errors::typeMismatch,
          QStringLiteral("Die Spalte '%1' enthält Zahlen; '%2' ist keine.").arg(field.name, typed));
  if (field.type == FieldType::Double) return *number;
  if (field.type == FieldType::Integer) return qint64{To_Int16(*number)};
  return qint64{To_Int32(*number)};
}

QString Filter_Statement(const std::vector<ColumnValue>& conditions, const std::vector<FieldInfo>& fields) {
  QStringList parts;
  for (const ColumnValue& condition : conditions) {
    if (!condition.Is_Set()) continue;
    const FieldInfo& field = Field_Named(fields, condition.column);
    const QString sign = condition.value.contains(u'*') ? QStringLiteral(" LIKE ") : QStringLiteral(" = ");
    parts << u'[' + field.name + u']' + sign + Literal(field, condition.value);
  }
  const QString all = QStringLiteral("SELECT * FROM MapData");
  return parts.isEmpty() ? all : all + QStringLiteral(" WHERE ") + parts.join(QStringLiteral(" AND "));
}

std::vector<qint64> Filtered_Rows(Database& source, const std::vector<ColumnValue>& conditions, FilterMode mode) {
  const auto all = source.OpenRecordset(mapData);
  const QString statement = Filter_Statement(conditions, all->Fields());
  const SqlTranslation translated = Translate_Sql(statement, source.TableDefs());
  if (!translated.Good()) Raise(errors::sqlSyntax, translated.error);
  QSet<qint64> matching;
  const auto found = source.OpenRecordset(translated.sql);
  matching.reserve(found->RecordCount());
  for (; !found->Eof(); found->MoveNext()) matching.insert(found->Key());
  std::vector<qint64> keys;
  const int idColumn = all->FieldIndex(u"ID");
  for (; !all->Eof(); all->MoveNext())
    if (matching.contains(all->Key()) == (mode == FilterMode::Matching) &&
        !EntryId::StoredIsHeader(all->Text(idColumn)))
      keys.push_back(all->Key());
  return keys;
}
