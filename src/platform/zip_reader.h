#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

// Single files out of a ZIP archive, and packed single files.

struct ZipPart {
  QString name;
  QByteArray content;
};

bool Is_Zip(const QByteArray& bytes);  // by its first bytes
// The first file in the archive with one of the endings (small letters, without point), unpacked. Nothing where there
// is none, for a damaged archive, and for a file that would be larger than `limit` bytes.
std::optional<ZipPart> First_In_Zip(const QByteArray& bytes, const QStringList& endings, qint64 limit);

bool Is_Gzip(const QByteArray& bytes);  // by its first bytes
// What is packed in it. Nothing for a damaged or cut file, and where it would be larger than `limit` bytes.
std::optional<QByteArray> Unpack_Gzip(const QByteArray& bytes, qint64 limit);
