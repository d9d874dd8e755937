#pragma once
// From now on rows that the condition holds for cannot be written into MapData, as if the medium refused them. No row
// may be such yet. An index whose value cannot be computed: it stays over closing and opening, and triggers do not run.
inline void Refuse_Rows(Database& database, const QString& condition) {
  database.Execute(
      QStringLiteral("CREATE INDEX refused ON MapData(abs(CASE WHEN %1 THEN -9223372036854775807 - 1 END))")
          .arg(condition));
}
