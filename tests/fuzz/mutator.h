#pragma once
#include <QByteArray>
#include <QByteArrayList>
#include <random>

// Makes damaged inputs from sound ones: flipped bits, splices, cuts, repetitions, words of the format, and numbers,
// binary or written, at the ends of their ranges. The same seed gives the same inputs.
class Mutator {
 public:
  explicit Mutator(quint64 seed, QByteArrayList formatWords = {}) : random(seed), words(std::move(formatWords)) {}
  // 0 to below `limit`.
  quint64 Number(quint64 limit) { return limit == 0 ? 0 : random() % limit; }
  qsizetype Place(qsizetype size) { return static_cast<qsizetype>(Number(static_cast<quint64>(size))); }
  QByteArray Next(const QByteArrayList& pool);

 private:
  void Change(QByteArray& bytes, const QByteArrayList& pool);
  void Flip(QByteArray& bytes);
  void Put_Number(QByteArray& bytes);
  void Write_Number(QByteArray& bytes);
  void Cut(QByteArray& bytes);
  void Repeat(QByteArray& bytes);
  QByteArray Some_Bytes();
  qint64 Some_End();

  std::mt19937_64 random;
  QByteArrayList words;
};
