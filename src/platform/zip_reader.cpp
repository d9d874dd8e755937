#include "platform/zip_reader.h"

#include <zip.h>
#include <zlib.h>

#include <QFileInfo>
#include <algorithm>
#include <memory>

namespace {

struct CloseArchive {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct CloseFile {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

}  // namespace

bool Is_Zip(const QByteArray& bytes) { return bytes.startsWith("PK\x03\x04"); }

std::optional<ZipPart> First_In_Zip(const QByteArray& bytes, const QStringList& endings, qint64 limit) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* source =
      zip_source_buffer_create(bytes.constData(), static_cast<zip_uint64_t>(bytes.size()), 0, &error);
  const std::unique_ptr<zip_t, CloseArchive> archive(
      source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error));
  if (!archive && source != nullptr) zip_source_free(source);
  zip_error_fini(&error);
  if (!archive) return std::nullopt;
  const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t info;
    zip_stat_init(&info);
    if (zip_stat_index(archive.get(), static_cast<zip_uint64_t>(i), 0, &info) != 0) continue;
    if ((info.valid & (ZIP_STAT_NAME | ZIP_STAT_SIZE)) != (ZIP_STAT_NAME | ZIP_STAT_SIZE)) continue;
    const QString name = QString::fromUtf8(info.name);
    if (!endings.contains(QFileInfo(name).suffix().toLower()) || static_cast<qint64>(info.size) > limit) continue;
    const std::unique_ptr<zip_file_t, CloseFile> file(zip_fopen_index(archive.get(), info.index, 0));
    if (!file) continue;
    ZipPart part{name, QByteArray(static_cast<qsizetype>(info.size), '\0')};
    if (zip_fread(file.get(), part.content.data(), info.size) == static_cast<zip_int64_t>(info.size)) return part;
  }
  return std::nullopt;
}

bool Is_Gzip(const QByteArray& bytes) { return bytes.startsWith("\x1F\x8B\x08"); }

// Several members behind each other are one content.
std::optional<QByteArray> Unpack_Gzip(const QByteArray& bytes, qint64 limit) {
  constexpr int gzipOnly = 16 + MAX_WBITS;
  constexpr qsizetype portion = 1 << 16;
  z_stream stream{};
  if (inflateInit2(&stream, gzipOnly) != Z_OK) return std::nullopt;
  const std::unique_ptr<z_stream, decltype(&inflateEnd)> end(&stream, inflateEnd);
  QByteArray content, part(portion, '\0');
  qsizetype at = 0;
  while (true) {
    // Its lengths have 32 bits.
    const qsizetype given = std::min<qsizetype>(bytes.size() - at, portion);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData() + at));
    stream.avail_in = static_cast<uInt>(given);
    stream.next_out = reinterpret_cast<Bytef*>(part.data());
    stream.avail_out = static_cast<uInt>(part.size());
    const int state = inflate(&stream, Z_NO_FLUSH);
    if (state != Z_OK && state != Z_STREAM_END) return std::nullopt;
    at += given - stream.avail_in;
    content.append(part.constData(), part.size() - stream.avail_out);
    if (content.size() > limit) return std::nullopt;
    if (state != Z_STREAM_END) continue;
    if (!Is_Gzip(bytes.mid(at, 3))) return content;
    if (inflateReset(&stream) != Z_OK) return std::nullopt;
  }
}
