#pragma once
#include "batch_exit.h"
#include "batch_order.h"

// The works of flurax-batch on the open map, and of kalibriere, which needs none.

// Raises what reading and writing raise.
ExitStatus Do_Batch_Work(const BatchOrder& order);
