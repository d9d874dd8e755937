#pragma once
#include "batch_exit.h"
#include "batch_order.h"

// Writes the calibration file of a picture that knows where it lies. Opens no map. Errors of the files that tell it.
ExitStatus Calibrate_Picture(const BatchOrder& order);
