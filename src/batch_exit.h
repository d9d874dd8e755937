#pragma once
#include <QString>

// What flurax-batch tells whoever called it.

enum ExitStatus { done = 0, failed = 1, wrongCall = 2 };

// To the standard error output.
void Tell(const QString& text);
