#include "calibration/least_squares.h"

#include <cmath>

LeastSquares::LeastSquares(size_t termCount)
    : count(termCount), gram(termCount * termCount, 0.0), rightX(termCount, 0.0), rightY(termCount, 0.0) {}

void LeastSquares::Add(const std::vector<double>& terms, QPointF value) {
  for (size_t row = 0; row < count; ++row) {
    for (size_t column = 0; column <= row; ++column) Gram(row, column) += terms[row] * terms[column];
    rightX[row] += terms[row] * value.x();
    rightY[row] += terms[row] * value.y();
  }
}

std::optional<std::vector<QPointF>> LeastSquares::Solve() {
  constexpr double leastPart = 1e-9;  // of a term that the others do not give already
  for (size_t column = 0; column < count; ++column) {
    const double whole = Factor(column, column);
    double rest = whole;
    for (size_t k = 0; k < column; ++k) rest -= Factor(column, k) * Factor(column, k);
    if (!(rest > whole * leastPart)) return std::nullopt;
    const double root = std::sqrt(rest);
    Gram(column, column) = root;
    for (size_t row = column + 1; row < count; ++row) {
      double sum = Factor(row, column);
      for (size_t k = 0; k < column; ++k) sum -= Factor(row, k) * Factor(column, k);
      Gram(row, column) = sum / root;
    }
  }
  std::vector<double> x = Forward(rightX), y = Forward(rightY);
  for (size_t row = count; row-- > 0;) {
    for (size_t k = row + 1; k < count; ++k) {
      x[row] -= Factor(k, row) * x[k];
      y[row] -= Factor(k, row) * y[k];
    }
    x[row] /= Factor(row, row);
    y[row] /= Factor(row, row);
  }
  std::vector<QPointF> coefficients(count);
  for (size_t i = 0; i < count; ++i) coefficients[i] = {x[i], y[i]};
  return coefficients;
}

double LeastSquares::Leverage(const std::vector<double>& terms) const {
  double sum = 0;
  for (const double value : Forward(terms)) sum += value * value;
  return sum;
}

std::vector<double> LeastSquares::Forward(const std::vector<double>& right) const {
  std::vector<double> solved = right;
  for (size_t row = 0; row < count; ++row) {
    for (size_t k = 0; k < row; ++k) solved[row] -= Factor(row, k) * solved[k];
    solved[row] /= Factor(row, row);
  }
  return solved;
}
