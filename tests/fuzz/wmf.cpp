#include "fuzz/driver.h"
#include "platform/picture_bytes.h"
#include "platform/wmf_reader.h"

// Metafiles: their player is our own.

namespace {

QByteArrayList Seeds() {
  QByteArrayList seeds{Sample().Bytes(200, 100), Sample().Bytes(200, 100, false)};
  // Every record once, with words that mean something to most of them.
  for (const int number : Known_Records()) {
    Metafile file;
    file.Add(setOrg, {0, 0}).Add(setExt, {100, 200}).Add(createPen, {1, 3, 0, 0, 0}).Add(selectObject, {0});
    file.Add(createBrush, {2, 0xFF, 0, 3}).Add(selectObject, {1});
    file.Add(number, {3, 10, 20, 50, 60, 30, 90, 5, 70, 80, 12, 9}).Add(number, {2, 4, 4, 9, 9, 40, 9, 40, 40, 9, 40});
    seeds += file.Add(rectangle, {30, 40, 10, 20}).Bytes(200, 100);
  }
  Metafile nested;
  for (int i = 0; i < 20; ++i) nested.Add(saveState, {}).Add(offsetOrg, {i, -i}).Add(scaleExt, {2, 3, 3, 2});
  for (int i = 0; i < 20; ++i) nested.Add(ellipse, {90, 90, 50, 50}).Add(restoreState, {-1 - i % 3});
  seeds += nested.Bytes(200, 100);
  for (const int factor : {2, -32768}) {
    Metafile scaled;
    scaled.Add(setExt, {100, 200});
    for (int i = 0; i < 6; ++i)
      scaled.Add(scaleExt, {1, factor, 1, factor}).Add(offsetOrg, {3, 4}).Add(rectangle, {30, 40, 10, 20});
    for (const int divisor : {-1, 0}) scaled.Add(scaleExt, {divisor, -32768, divisor, -32768});
    seeds += scaled.Add(lineTo, {32767, -32768}).Bytes(200, 100);
  }
  return seeds;
}

// Records doubled, exchanged, and with words at the ends of their range.
void Shape(QByteArray& bytes, Mutator& dice) {
  constexpr int ends[] = {-32768, -1, 0, 1, 2, 100, 32767};
  constexpr qsizetype headAt = 22, head = 18, mostRecords = 200;
  const qsizetype start = bytes.startsWith("\xD7\xCD\xC6\x9A") ? headAt + head : head;
  QByteArrayList records;
  for (qsizetype at = start; at + 6 <= bytes.size() && records.size() < mostRecords;) {
    const auto length = static_cast<qsizetype>(qFromLittleEndian<quint32>(bytes.constData() + at)) * 2;
    records += bytes.mid(at, std::max<qsizetype>(length, 6));
    at += records.back().size();
  }
  if (records.isEmpty()) return;
  for (qsizetype i = records.size(); i > 0; --i) {
    QByteArray& record = records[dice.Place(records.size())];
    if (dice.Number(4) == 0) record = records[dice.Place(records.size())];
    const qsizetype words = (record.size() - 6) / 2;
    if (words > 0 && dice.Number(2) == 0)
      Put_Number(record, 6 + 2 * dice.Place(words), static_cast<qint16>(ends[dice.Place(std::size(ends))]));
    const int all = ends[dice.Place(std::size(ends))];
    for (qsizetype word = dice.Number(8) == 0 ? 0 : words; word < std::min<qsizetype>(words, 12); ++word)
      Put_Number(record, 6 + 2 * word, static_cast<qint16>(all));
  }
  bytes = bytes.left(start) + records.join();
}

bool Run(const QByteArray& input) {
  Is_Wmf(input.left(64));
  const QSize told = Wmf_Size(input);
  try {
    const QImage image = Read_Wmf(input, 500);
    if (image.size() != told) throw std::runtime_error("another size than was told");
    return true;
  } catch (const Error& error) {
    if (error.number != errors::fileNotFound && error.number != errors::badPicture) throw;
    return false;
  }
}

}  // namespace

FuzzTarget Make_Target() {
  QByteArrayList words;
  for (const int number : Known_Records())
    for (const int word : {1, 7, -1, 32767, -32768})
      words += Metafile().Add(number, {word, -word, word, 1, 2, word, word, 8}).Records();
  return {"wmf", Seeds(), words, Run, Shape};
}
