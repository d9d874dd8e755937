#pragma once
#include <QDeadlineTimer>
#include <QImage>
#include <QRect>
#include <memory>
#include <vector>

// Reduced copies of the scan by averaging: each target pixel is the mean of the source area it covers, so that thin
// lines of a map stay visible. `factor` is above 1; the result is RGB32 and at least 1 x 1 pixel. Error 7 if the memory
// is not there.
QImage Reduced_Picture(const QImage& source, double factor);

// One that is made where it is looked at: of a large scan that is shown for the first time the window's part alone.
class ReducedPicture {
 public:
  ReducedPicture(const QImage& source, double factor);
  // Of another one, whose parts are made as they are needed.
  ReducedPicture(std::shared_ptr<ReducedPicture> source, double factor);

  // Its size holds, its pixels where they were prepared. It stays the same image while they are.
  const QImage& Image() const { return target; }
  void Prepare(const QRect& part);
  // Some tiles of all of it, one at least, until the time is over; true if there are more.
  bool Prepare_Some(const QDeadlineTimer& end);
  // Pixels of the scan that preparing it would read.
  qint64 Work_For(const QRect& part) const;

 private:
  // The source pixels that one target pixel covers along one axis: the first, how many, and where their weights stand
  // (sum 256).
  struct Span {
    int first = 0, count = 0;
    size_t weights = 0;
  };
  struct Axis {
    std::vector<Span> spans;
    std::vector<uint16_t> weights;
    void Cover(int sourceSize, int targetSize, double factor);
    int First(int from) const { return spans[static_cast<size_t>(from)].first; }
    int Behind(int last) const {
      return spans[static_cast<size_t>(last)].first + spans[static_cast<size_t>(last)].count;
    }
  };

  void Take_Source(double factor);
  QRect Source_Of(const QRect& part) const;
  std::vector<QRect> Missing_Tiles(const QRect& part) const;
  void Make(const QRect& tile) const;
  void Halve(const QRect& tile) const;
  void Average(const QRect& tile) const;
  QRgb* Target_Line(int y) const;

  std::shared_ptr<ReducedPicture> base;
  QImage source, target;
  uchar* bits = nullptr;  // of the target: it is written to while others show it
  bool halved = false;
  Axis across, down;
  int tilesAcross = 0;
  std::vector<char> ready;  // by tile
};
