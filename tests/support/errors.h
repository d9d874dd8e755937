#pragma once
#include "platform/error.h"

// The error that the work raises; its number is 0 if it raises none.
template <class Work>
Error Raised(Work&& work) {
  try {
    work();
  } catch (const Error& error) {
    return error;
  }
  return {};
}

template <class Work>
int Error_Of(Work&& work) {
  return Raised(work).number;
}

// For EXPECT_THAT(Raised(..), ..): this error, and all of this stands in its text.
inline testing::Matcher<const Error&> Tells(int number, const QStringList& parts) {
  return testing::Truly([number, parts](const Error& error) {
    return error.number == number &&
           std::all_of(parts.begin(), parts.end(), [&](const QString& part) { return error.text.contains(part); });
  });
}
inline void PrintTo(const Error& error, std::ostream* out) { *out << error.number << ": " << qPrintable(error.text); }
