#include "store/csv_cell.h"

#include <QRegularExpression>

namespace {

constexpr QChar guard = u'\'';

// The sign of a formula behind any number of guards.
bool Begins_Like_Formula(QStringView text) {
  qsizetype at = 0;
  while (at < text.size() && text[at] == guard) ++at;
  return at < text.size() && QStringView(u"=+-@\t").contains(text[at]);
}

bool Is_Number(const QString& text) {
  static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]+(?:[.,][0-9]+)?$"));
  return number.match(text).hasMatch();
}

}  // namespace

QString Csv_Guarded(const QString& text) { return Begins_Like_Formula(text) && !Is_Number(text) ? guard + text : text; }

QStringView Csv_Unguarded(QStringView cell) {
  return cell.startsWith(guard) && Begins_Like_Formula(cell) ? cell.mid(1) : cell;
}

QString Csv_One_Line(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String(" "));
  for (const QChar c : {u'\r', u'\n'}) text.replace(c, u' ');
  return text;
}
