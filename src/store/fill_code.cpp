#include "store/fill_code.h"

#include <algorithm>
#include <cstdlib>

#include "platform/text.h"
#include "store/stored_number.h"

FillCode FillCode::Parse(qint64 stored) { return FillCode{Stored_Number(stored)}; }

bool FillCode::IsFill(const QString& schrift) {
  const auto digit = [](QChar c) { return c >= u'0' && c <= u'9'; };
  if (schrift.size() < 3 || schrift[0] != u'F' || !digit(schrift[2])) return false;
  return schrift[1] == u' ' || schrift[1] == u'-' || digit(schrift[1]);
}

FillCode FillCode::FromSchrift(const QString& schrift) {
  if (!IsFill(schrift)) return {};
  return FillCode{static_cast<int>(Val(QStringView(schrift).mid(1, 2)))};
}

double FillCode::AngleOf(const QString& schrift) { return Stored_Angle(schrift); }

// The code has two places: a sign or blank and one digit, or two digits.
QString FillCode::ToSchrift(double angle) const {
  const int size = std::min(std::abs(code), code < 0 ? 9 : 99);
  QString text = QStringLiteral("F");
  if (size < 10) text += code < 0 ? u'-' : u' ';
  text += QString::number(size);
  if (angle != 0) text += u'<' + Number_Text(angle);
  return text;
}

FillStyle FillCode::Hatch() const {
  const int size = std::abs(code);
  return size >= 2 && size <= 7 ? static_cast<FillStyle>(size) : FillStyle::None;
}
