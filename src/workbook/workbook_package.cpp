#include "workbook/workbook_package.h"

#include <zip.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "workbook/workbook_errors.h"
#include "workbook/workbook_xml.h"

namespace workbook_inner {
namespace {
constexpr qint64 largestPart = qint64{1} << 30;
// Sheets are long and alike: the fastest step makes them small enough.
constexpr zip_uint32_t compression = 1;

struct CloseArchive {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct CloseFile {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
struct FreeSource {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Archive = std::unique_ptr<zip_t, CloseArchive>;
using Source = std::unique_ptr<zip_source_t, FreeSource>;

[[noreturn]] void Raise_No_Archive() {
  Raise(workbook_errors::damaged, QStringLiteral("Die Datei ist keine Arbeitsmappe oder beschädigt."));
}

enum class Use { Read, Write };

// The archive and the bytes it lies in, which must outlive it. An archive that is written gets bytes of its own: of
// borrowed ones the library frees what it has not made when the first parts are kept.
struct OpenArchive {
  OpenArchive(const QByteArray& bytes, Use use) {
    zip_error_t error;
    zip_error_init(&error);
    const auto size = static_cast<size_t>(bytes.size());
    const bool own = use == Use::Write && size > 0;
    void* copy = own ? std::malloc(size) : nullptr;
    if (own && copy == nullptr) Raise(errors::outOfMemory);
    if (own) std::memcpy(copy, bytes.constData(), size);
    source.reset(zip_source_buffer_create(own || size == 0 ? copy : bytes.constData(), size, own ? 1 : 0, &error));
    if (!source) std::free(copy);
    if (source) archive.reset(zip_open_from_source(source.get(), size == 0 ? ZIP_CREATE : 0, &error));
    zip_error_fini(&error);
    if (!archive) Raise_No_Archive();
    zip_source_keep(source.get());  // the archive has taken one, this one is ours
  }
  Source source;
  Archive archive;
};

QString Key(const QString& part) { return part.toLower(); }

void Put_Part(zip_t* archive, const QString& part, const QByteArray& content) {
  zip_source_t* source = zip_source_buffer(archive, content.constData(), static_cast<zip_uint64_t>(content.size()), 0);
  if (source == nullptr) Raise(errors::outOfMemory);
  const zip_int64_t index =
      zip_file_add(archive, part.toUtf8().constData(), source, ZIP_FL_OVERWRITE | ZIP_FL_ENC_UTF_8);
  if (index < 0) {
    zip_source_free(source);
    Raise_Damaged(part);
  }
  zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, compression);
}

QByteArray Content_Of(zip_source_t* source) {
  zip_stat_t info;
  zip_stat_init(&info);
  if (zip_source_open(source) < 0) Raise_No_Archive();
  QByteArray bytes;
  const bool known = zip_source_stat(source, &info) == 0 && (info.valid & ZIP_STAT_SIZE) != 0;
  if (known) bytes.resize(static_cast<qsizetype>(info.size));
  const zip_int64_t read = zip_source_read(source, bytes.data(), static_cast<zip_uint64_t>(bytes.size()));
  zip_source_close(source);
  if (!known || read != bytes.size()) Raise_No_Archive();
  return bytes;
}
}  // namespace

Package::Package(QByteArray content) : original(std::move(content)) {
  if (original.isEmpty()) return;
  const OpenArchive open(original, Use::Read);
  const zip_int64_t count = zip_get_num_entries(open.archive.get(), 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    const char* name = zip_get_name(open.archive.get(), static_cast<zip_uint64_t>(i), ZIP_FL_ENC_GUESS);
    if (name == nullptr) Raise_No_Archive();
    const QString part = QString::fromUtf8(name);
    names.insert(Key(part), part);
  }
}

bool Package::Has(const QString& part) const { return names.contains(Key(part)); }

QByteArray Package::Read(const QString& part, qint64 limit) const {
  const QString name = names.value(Key(part));
  if (name.isEmpty()) Raise_Damaged(part);
  if (const auto changed = put.find(name); changed != put.end())
    return limit < 0 ? *changed : changed->left(static_cast<qsizetype>(limit));
  const OpenArchive open(original, Use::Read);
  zip_stat_t info;
  zip_stat_init(&info);
  if (zip_stat(open.archive.get(), name.toUtf8().constData(), ZIP_FL_ENC_UTF_8, &info) != 0) Raise_Damaged(part);
  auto size = static_cast<qint64>(info.size);
  if ((info.valid & ZIP_STAT_SIZE) == 0 || size < 0 || size > largestPart) Raise_Damaged(part);
  if (limit >= 0) size = std::min(size, limit);
  const std::unique_ptr<zip_file_t, CloseFile> file(zip_fopen_index(open.archive.get(), info.index, 0));
  if (!file) Raise_Damaged(part);
  QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
  // One byte more is asked for than there is: only at its end a part's check sum is looked at.
  char beyond = 0;
  if (zip_fread(file.get(), bytes.data(), static_cast<zip_uint64_t>(size)) != size) Raise_Damaged(part);
  if (limit < 0 && zip_fread(file.get(), &beyond, 1) != 0) Raise_Damaged(part);
  return bytes;
}

void Package::Put(const QString& part, QByteArray content) {
  QString& name = names[Key(part)];
  if (name.isEmpty()) name = part;
  removed.remove(name);
  put.insert(name, std::move(content));
}

void Package::Remove(const QString& part) {
  const QString name = names.take(Key(part));
  if (name.isEmpty()) return;
  put.remove(name);
  removed.insert(name);
}

QByteArray Package::Bytes() const {
  OpenArchive open(original, Use::Write);
  zip_t* archive = open.archive.get();
  for (const QString& name : removed) {
    const zip_int64_t index = zip_name_locate(archive, name.toUtf8().constData(), ZIP_FL_ENC_UTF_8);
    if (index >= 0) zip_delete(archive, static_cast<zip_uint64_t>(index));
  }
  QStringList parts = put.keys();
  parts.sort();  // the same changes make the same file
  for (const QString& name : parts) Put_Part(archive, name, *put.find(name));
  if (zip_close(archive) != 0) Raise_No_Archive();
  static_cast<void>(open.archive.release());
  return Content_Of(open.source.get());
}

}  // namespace workbook_inner
