#include "analysis/german_order.h"

GermanKey::GermanKey(const QString& text) : folded(text.toCaseFolded()), exact(text) {
  folded.replace(QChar(0x00DF), QLatin1String("ss"));
  plain.reserve(folded.size());
  for (const QChar letter : folded.normalized(QString::NormalizationForm_D))
    if (letter.category() != QChar::Mark_NonSpacing) plain += letter;
}
