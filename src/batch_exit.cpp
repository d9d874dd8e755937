#include "batch_exit.h"

#include <cstdio>

void Tell(const QString& text) { std::fprintf(stderr, "%s\n", qUtf8Printable(text)); }
