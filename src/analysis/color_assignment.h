#pragma once
#include <QColor>
#include <QImage>
#include <QPoint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "store/entry.h"

// Which species stands on which colour of the scan.

// What is counted; the first that fits a row decides: hidden, inactive, marked, else plain.
struct ColorOptions {
  bool plain = true, marked = false, inactive = true, hidden = false;
  bool leadingNumbers = false;  // numbers in front of texts are individuals
};

struct ColorEntry {
  int row = 0;     // number of the entry's row
  QString text;    // trimmed, at most 80 characters
  QRgb color = 0;  // of the scan at its place
  bool counted = false;
  int count = 1;
  QString name;  // of the species
};

struct ColorSpecies {
  QString name;
  int row = 0;  // the first row of the species: its look is that of the species
  qint64 total = 0;
  std::vector<qint64> perColor;  // as many as there are colours
};

struct ColorAssignment {
  std::vector<ColorEntry> entries;    // all texts and symbols, in table order
  std::vector<QRgb> colors;           // of the counted ones: brightest (sum of red, green, blue) first
  std::vector<ColorSpecies> species;  // in the order of a German word list
  std::vector<qint64> perColor;       // of all species
  qint64 total = 0;
  bool leftOut = false;  // some entries are not counted
};

// Where the entry stands: the foot point of its reference line, else its position. Map pixels.
QPoint Entry_Place(const EntryRow& row);
// Colour of the picture at a place; white beyond it.
QRgb Scan_Color(const QImage& picture, QPoint at);

constexpr int maxColors = 500;
// `colorAt` tells the colour of the scan at a map position. Error 5000 at the 501st distinct colour. `step` is called
// once per row; false ends the work with nothing.
std::optional<ColorAssignment> Assign_To_Colors(std::span<const EntryRow> rows, const ColorOptions& options,
                                                const std::function<QRgb(QPoint)>& colorAt,
                                                const std::function<bool()>& step = {});
