#include "store/table_state.h"

TableState Tbl;
