#pragma once
#include <utility>

// Gives a variable a value for the life of the object; afterwards it has its former one again, also when an error
// passes through.
template <typename T>
class ForNow {
 public:
  ForNow(T& target, T value) : variable(target), former(std::exchange(target, std::move(value))) {}
  ~ForNow() { variable = std::move(former); }
  ForNow(const ForNow&) = delete;
  ForNow& operator=(const ForNow&) = delete;

 private:
  T& variable;
  T former;
};
