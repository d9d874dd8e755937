#pragma once
#include <QString>

#include "batch_order.h"

// The works of flurax-batch on the open map, and of kalibriere, which needs none.

enum ExitStatus { done = 0, failed = 1, wrongCall = 2 };

// To the standard error output.
void Tell(const QString& text);
// Raises what reading and writing raise.
ExitStatus Do_Batch_Work(const BatchOrder& order);
