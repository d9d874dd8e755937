#include "windows/dialog_parts.h"

namespace {

// What is to be seen of a part, for a message.
QString State_Of(const QWidget& part) {
  const auto* button = qobject_cast<const QAbstractButton*>(&part);
  return QStringLiteral("%1, %2, %3")
      .arg(part.isEnabled() ? "on" : "off", button && button->isChecked() ? "checked" : "unchecked",
           part.isVisible() ? "shown" : "hidden");
}

bool Is_Like(const QString& text, const QString& wanted) {
  if (!wanted.endsWith(u'*')) return text == wanted;
  const QString part = wanted.chopped(1);
  return part.startsWith(u'*') ? text.contains(part.mid(1)) : text.startsWith(part);
}

void Choose_Row(QWidget* part, int row) {
  if (auto* box = qobject_cast<QComboBox*>(part)) {
    box->setCurrentIndex(row);
    Q_EMIT box->activated(row);
  }
  if (auto* list = qobject_cast<QListWidget*>(part)) list->setCurrentRow(row);
}

}  // namespace

void Walk(const QWidget& window, const QString& steps, std::source_location from) {
  static const QRegularExpression form("^(\\w+) ?(=|<|:|!|on|off|checked|unchecked|shown|hidden) ?(.*)$",
                                       QRegularExpression::DotMatchesEverythingOption);
  for (const QString& step : steps.split(QStringLiteral("; "))) {
    const testing::ScopedTrace trace(from.file_name(), static_cast<int>(from.line()), step.toStdString());
    const auto match = form.match(step);
    ASSERT_TRUE(match.hasMatch());
    const QByteArray name = match.captured(1).toLatin1();
    const QString deed = match.captured(2), text = match.captured(3);
    auto* part = Part<QWidget>(window, name);
    ASSERT_NE(part, nullptr);
    if (deed == "=") {
      const QString now = Text_In(window, name);
      EXPECT_TRUE(Is_Like(now, text)) << now;
    } else if (deed == "<") {
      Type(window, name, text);
    } else if (deed == ":") {
      text.startsWith(u'#') ? Choose_Row(part, text.mid(1).toInt()) : Fill(window, name, text);
    } else if (deed == "!") {
      Press(window, name);
    } else {
      EXPECT_TRUE(State_Of(*part).split(QStringLiteral(", ")).contains(deed)) << State_Of(*part);
    }
  }
}
