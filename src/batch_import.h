#pragma once
#include "batch_exit.h"
#include "batch_order.h"

// The works of flurax-batch that carry entries between the table of the map and files of other programs. They ask
// nothing, and raise what reading and writing raise, with the name of the file.
ExitStatus Write_Exchange(const BatchOrder& order);
ExitStatus Take_Exchange(const BatchOrder& order);
ExitStatus Take_Gps(const BatchOrder& order);
ExitStatus Take_Table(const BatchOrder& order);
ExitStatus Take_Overlay(const BatchOrder& order);
