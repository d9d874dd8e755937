#pragma once
#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace workbook_inner {

// The parts of a workbook: a ZIP archive in memory. What is not put or removed comes out as it went in, compressed
// bytes included. Names are compared without case.
class Package {
 public:
  // No bytes: an empty one. Error 321 for what is no archive.
  explicit Package(QByteArray content);
  bool Has(const QString& part) const;
  // Error 321 for a missing or damaged part. `limit`: no more than that many bytes from its start.
  QByteArray Read(const QString& part, qint64 limit = -1) const;
  // Adds the part, or takes the place of the one of that name.
  void Put(const QString& part, QByteArray content);
  // Nothing happens where there is none.
  void Remove(const QString& part);
  // The archive with all changes. Error 321 if a part that is kept cannot be carried over.
  QByteArray Bytes() const;

 private:
  QByteArray original;
  QHash<QString, QString> names;   // lower case -> as it stands in the archive or was put
  QHash<QString, QByteArray> put;  // by the name in the archive
  QSet<QString> removed;
};

}  // namespace workbook_inner
