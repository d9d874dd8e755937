#include <QBuffer>
#include <QFile>
#include <QPageLayout>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QTextDocument>

#include "demo_sets.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

// The help page about the settings as a sheet to print, which the start window names.
void Make_Settings_Sheet(const QString& page, const QString& target) {
  QTextDocument document;
  document.setDefaultFont(QFont(u"Liberation Sans"_s, 11));
  document.setHtml(QString::fromUtf8(Read_Bytes(page)));
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setPageSize(QPageSize(QPageSize::A4));
  writer.setPageMargins(QMarginsF(20, 20, 20, 20), QPageLayout::Millimeter);
  writer.setTitle(u"Flurax-Einstellungen"_s);
  document.print(&writer);
  buffer.close();
  // The hour of the build does not belong into the delivered folder.
  QString text = QString::fromLatin1(buffer.data());
  static const QRegularExpression made(u"/CreationDate \\(D:[0-9]+[^)]*\\)"_s);
  const QRegularExpressionMatch match = made.match(text);
  QByteArray bytes = buffer.data();
  if (match.hasMatch()) {
    const QByteArray fixed = "/CreationDate (D:20260101000000)";
    bytes.replace(match.capturedStart(), match.capturedLength(),
                  fixed + QByteArray(std::max<qsizetype>(0, match.capturedLength() - fixed.size()), ' '));
  }
  Replace_File(target, bytes);
}
