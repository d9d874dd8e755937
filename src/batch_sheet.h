#pragma once
#include "batch_exit.h"
#include "batch_order.h"

// flurax-batch tabelle-aus and tabelle-ein: the open table into a sheet of a workbook, and back. They raise what
// reading and writing raise.

// Into the sheet "MapData"; a file of the former binary kind is put aside, and that is told.
ExitStatus Write_Table_Sheet(const BatchOrder& order);
// Lists what is different, and takes it over unless it is only to be shown. `failed` if something could not be taken.
ExitStatus Take_Table_Sheet(const BatchOrder& order);
