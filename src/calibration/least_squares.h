#pragma once
#include <QPointF>
#include <optional>
#include <vector>

// A pair of values as a sum of a few known terms, by least squares. Terms should be of size 1.
class LeastSquares {
 public:
  explicit LeastSquares(size_t termCount);
  // One observation: its terms and both values.
  void Add(const std::vector<double>& terms, QPointF value);
  // The coefficients; nothing where the observations do not determine them.
  std::optional<std::vector<QPointF>> Solve();
  // After Solve: how far the solution follows this one observation, 0 (not at all) to 1 (wholly).
  double Leverage(const std::vector<double>& terms) const;

 private:
  double& Gram(size_t row, size_t column) { return gram[row * count + column]; }
  double Factor(size_t row, size_t column) const { return gram[row * count + column]; }
  std::vector<double> Forward(const std::vector<double>& right) const;

  size_t count;
  std::vector<double> gram;  // after Solve its lower triangle is the root
  std::vector<double> rightX, rightY;
};
