#pragma once
#include <QString>
#include <cstdio>

// What flurax-batch says to the one who called it.

enum ExitStatus { done = 0, failed = 1, wrongCall = 2 };

// To the standard error output.
inline void Tell(const QString& text) { std::fprintf(stderr, "%s\n", qUtf8Printable(text)); }
