#include "state/table_state.h"

TableState Tbl;
