#pragma once
#include "batch_exit.h"
#include "batch_order.h"

// The works of flurax-batch on the open map.

// Raises what reading and writing raise.
ExitStatus Do_Batch_Work(const BatchOrder& order);
