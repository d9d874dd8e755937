#include "analysis/matrix_sheet.h"

#include "analysis/analysis_texts.h"
#include "analysis/result_cells.h"
#include "platform/text.h"
#include "store/csv_cell.h"

namespace {

const QStringList& Heads() {
  static const QStringList heads = {
      QStringLiteral("Art"),          QStringLiteral("ID"),           QStringLiteral("Eintrag"),
      QStringLiteral("Individuen N"), QStringLiteral("Arten S"),      QStringLiteral("Shannon-Wiener H'"),
      QStringLiteral("Evenness"),     QStringLiteral("Simpson 1-D"),  QStringLiteral("Simpson 1/D"),
      QStringLiteral("Chao1"),        QStringLiteral("Berger-Parker")};
  return heads;
}
constexpr int firstIndex = 4, firstSpecies = 12;

// The columns from "Individuen N" on; empty where there is no value.
std::array<std::optional<double>, 8> Index_Values(const DiversityIndices& indices) {
  return {static_cast<double>(indices.individuals),
          static_cast<double>(indices.species),
          indices.shannon,
          indices.evenness,
          indices.simpson,
          indices.inverse,
          indices.chao1,
          indices.bergerParker};
}

struct Looks {
  int head, whole, fraction;
};

template <class Counts>
void Put_Row(Sheet& sheet, int row, const DiversityIndices& indices, const Counts& counts, const Looks& looks) {
  const auto values = Index_Values(indices);
  for (size_t i = 0; i < values.size(); ++i)
    if (values[i]) sheet.Put(row, firstIndex + static_cast<int>(i), *values[i], i < 2 ? looks.whole : looks.fraction);
  for (size_t i = 0; i < counts.size(); ++i)
    sheet.Put(row, firstSpecies + static_cast<int>(i), static_cast<double>(counts[i]), looks.whole);
}

QString Quoted(const QString& cell) {
  QString text = Csv_Guarded(Csv_One_Line(cell));
  if (!text.contains(u';') && !text.contains(u'"')) return text;
  return u'"' + text.replace(u'"', QLatin1String("\"\"")) + u'"';
}

template <class Counts>
QStringList Csv_Numbers(const DiversityIndices& indices, const Counts& counts) {
  QStringList fields;
  for (const auto& value : Index_Values(indices)) fields += value ? Number_Text(*value).replace(u'.', u',') : QString();
  for (const auto count : counts) fields += QString::number(count);
  return fields;
}

}  // namespace

Sheet Matrix_Sheet(const SpeciesMatrix& matrix) {
  Sheet sheet(QStringLiteral("Matrix"));
  CellStyle head, whole, fraction;
  head.bold = head.wrap = true;
  whole.format = QStringLiteral("0");
  fraction.format = QStringLiteral("0.0000");
  const Looks looks = {sheet.Style_Number(head), sheet.Style_Number(whole), sheet.Style_Number(fraction)};
  Put_Cell(sheet, 1, 1, QStringLiteral("Arten je Fläche, Figur, Linie und Gruppe"), {.bold = true});
  constexpr int headRow = 3;
  for (int i = 0; i < Heads().size(); ++i) sheet.Put(headRow, i + 1, Heads()[i], looks.head);
  for (const int column : {2, 3}) sheet.SetColumnWidth(column, 22);
  for (int column = firstIndex; column < firstSpecies; ++column) sheet.SetColumnWidth(column, 14);
  for (size_t i = 0; i < matrix.species.size(); ++i) {
    const int column = firstSpecies + static_cast<int>(i);
    sheet.Put(headRow, column, Species_Shown(matrix.species[i]), looks.head);
    sheet.SetColumnWidth(column, 12);
  }
  int row = headRow;
  for (const MatrixRow& one : matrix.rows) {
    ++row;
    sheet.Put(row, 1, Matrix_Kind_Word(one.kind));
    sheet.Put(row, 2, one.id);
    sheet.Put(row, 3, one.name);
    Put_Row(sheet, row, one.indices, one.counts, looks);
  }
  ++row;
  sheet.Put(row, 1, QStringLiteral("Insgesamt"));
  Put_Row(sheet, row, matrix.all, matrix.totals, looks);
  sheet.Change({row, 1, row, std::max(firstSpecies - 1, sheet.ColumnCount())},
               [](CellStyle& style) { style.bold = true; });
  const QString note = analysis_texts::Too_Large(matrix.tooLarge);
  if (!note.isEmpty()) Put_Note(sheet, row + 2, firstSpecies - 1, note);
  return sheet;
}

QByteArray Matrix_Csv(const SpeciesMatrix& matrix) {
  QStringList fields = Heads();
  for (const QString& name : matrix.species) fields += Quoted(Species_Shown(name));
  QString text = fields.join(u';') + QStringLiteral("\r\n");
  for (const MatrixRow& row : matrix.rows) {
    fields = {Matrix_Kind_Word(row.kind), Quoted(row.id), Quoted(row.name)};
    text += (fields + Csv_Numbers(row.indices, row.counts)).join(u';') + QStringLiteral("\r\n");
  }
  fields = {QStringLiteral("Insgesamt"), QString(), QString()};
  text += (fields + Csv_Numbers(matrix.all, matrix.totals)).join(u';') + QStringLiteral("\r\n");
  return "\xEF\xBB\xBF" + text.toUtf8();
}
