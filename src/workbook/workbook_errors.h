#pragma once
#include "platform/error.h"

// Numbers of the errors that workbooks raise beside those of files.
namespace workbook_errors {
inline constexpr int openElsewhere = 55, changed = 75, damaged = 321, bounds = 1004;
}
