#include <QDateTime>
#include <array>
#include <cmath>
#include <cstring>
#include <numeric>

#include "old_table_file.h"

namespace old_table {

QString Unicode_Text(const QByteArray& bytes) {
  const auto at = [&bytes](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
  QString text;
  const bool packed = bytes.size() >= 2 && at(0) == 0xFF && at(1) == 0xFE;
  bool single = packed;
  for (qsizetype i = packed ? 2 : 0; i < bytes.size();) {
    if (packed && at(i) == 0) {  // goes over to the other way
      single = !single;
      ++i;
    } else if (single) {
      text += QChar(at(i++));
    } else {
      if (i + 1 >= bytes.size()) break;
      text += QChar(static_cast<char16_t>(at(i) | at(i + 1) << 8));
      i += 2;
    }
  }
  return text;
}

QString Date_Text(double days) {
  constexpr double farthest = 2'958'466;  // the year 10000
  constexpr qint64 secondsOfDay = 86400;
  if (!(std::fabs(days) < farthest)) return {};
  // Before the first day the time still counts forward.
  const double whole = std::trunc(days);
  const qint64 seconds = std::llround(std::fabs(days - whole) * static_cast<double>(secondsOfDay));
  const QDate first(1899, 12, 30);
  const QDate date = first.addDays(static_cast<qint64>(whole) + seconds / secondsOfDay);
  const QTime time = QTime(0, 0).addSecs(static_cast<int>(seconds % secondsOfDay));
  const QString day = date.toString(QStringLiteral("dd.MM.yyyy")), clock = time.toString(QStringLiteral("HH:mm:ss"));
  if (date == first) return clock;
  return time == QTime(0, 0) ? day : day + u' ' + clock;
}

bool Has_Password(const QByteArray& firstPage) {
  constexpr int maskedFrom = 0x18, maskedTo = 0x98, passwordAt = 0x42, dateAt = 0x72, versionAt = 0x14;
  if (firstPage.size() < maskedTo) return false;
  // The head of every file is masked by one and the same stream.
  constexpr std::array<unsigned char, 4> key{0xC7, 0xDA, 0x39, 0x6B};
  std::array<unsigned char, 256> state{};
  std::iota(state.begin(), state.end(), static_cast<unsigned char>(0));
  for (size_t i = 0, j = 0; i < state.size(); ++i) {
    j = (j + state[i] + key[i % key.size()]) % state.size();
    std::swap(state[i], state[j]);
  }
  QByteArray head = firstPage.left(maskedTo);
  for (size_t i = 0, j = 0, at = maskedFrom; at < maskedTo; ++at) {
    i = (i + 1) % state.size();
    j = (j + state[i]) % state.size();
    std::swap(state[i], state[j]);
    const auto where = static_cast<qsizetype>(at);
    head[where] = static_cast<char>(head[where] ^ static_cast<char>(state[(state[i] + state[j]) % state.size()]));
  }
  const bool newer = head[versionAt] != 0;
  double made = 0;
  std::memcpy(&made, head.constData() + dateAt, sizeof made);
  const auto day = newer && std::fabs(made) < 1e9 ? static_cast<quint32>(static_cast<qint32>(made)) : 0U;
  const int length = newer ? 40 : 20;
  for (int i = 0; i < length; ++i) {
    const auto mask = static_cast<unsigned char>(day >> 8 * (i % 4));
    if (static_cast<unsigned char>(head[passwordAt + i]) != mask) return true;
  }
  return false;
}

}  // namespace old_table
