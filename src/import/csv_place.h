#pragma once
#include <QHash>
#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringView>
#include <optional>

#include "coordinates/placing.h"
#include "import/csv_file.h"
#include "state/coordinate_state.h"

// Where a line of a CSV table lies on the map.

// Is the type of the file that of the map's net?
bool Csv_Fits_Net(const CsvTable& table, const CoordinateState& state);

struct CsvPlace {
  bool onMap = false, cancelled = false;
  QPoint at;             // map pixels
  bool outside = false;  // the coordinate could be read, but is off the map or in another zone
  QString reason;        // why it is not on the map
};
// Raises what the conversion raises. `name` stands at the head of the reasons.
CsvPlace Csv_Place_Of(const CsvTable& table, const CoordinateState& state, const CsvRecord& record);
// The same by a service that transforms the coordinates.
CsvPlace Csv_Place_Of(const CsvTable& table, Placing& placing, const CsvRecord& record);
// The kind of the table's coordinates. It names no datum: WGS-84 where the map is of another kind, Potsdam for
// Gauß-Krüger.
GivenSystem Csv_System(const CsvTable& table);

// A number without its decimals; nothing if the text is none. Blanks between the digits are passed over.
struct WholeNumber {
  qint64 value = 0;  // without its sign
  int digits = 0;
  bool negative = false;
  std::optional<int> Value() const;  // nothing beyond 32 bits
};
std::optional<WholeNumber> Read_Whole(QStringView text);  // decimals behind a comma or point are cut
// Degrees as decimals or as degrees, minutes, seconds.
std::optional<double> Read_Degrees(QStringView text);

// The positions taken in one run, and the shift that keeps two entries from lying on each other: by the step until a
// position is free, or the other way where that would leave the map.
class TakenPositions {
 public:
  TakenPositions(QPoint stepWidth, QSize mapSize);  // 0/0 counts as 1/1
  // Takes the position or the next free one of its diagonal. Where the map has no room on either side of it, an entry
  // lies on the other: a sound coordinate is never refused.
  QPoint Take(QPoint wanted);
  void Reserve(int count);  // room for as many positions

 private:
  using Chain = QHash<quint64, quint64>;
  QPoint Free_Along(Chain& chain, QPoint from, QPoint by) const;

  QPoint step;
  QSize map;
  Chain forward;   // every taken position -> the next one to try
  Chain backward;  // the same the other way, of those that were asked for
};
