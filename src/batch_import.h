#pragma once
#include "batch_exit.h"
#include "batch_order.h"

// The works of flurax-batch that take what other files hold into the table of the map. They ask nothing, and raise what
// reading and writing raise, with the name of the file.
ExitStatus Take_Gps(const BatchOrder& order);
ExitStatus Take_Table(const BatchOrder& order);
ExitStatus Take_Overlay(const BatchOrder& order);
