#pragma once
// What every test of windows may use without naming it; compiled once and put in front of each test file.
#include "support/prelude.h"

#include "edit/table_edit.h"
#include "maps/map_choose.h"
#include "support/nets.h"
#include "view/view.h"
#include "windows/command_fixture.h"
#include "windows/maps/frmNotePad.h"
#include "windows/store/tbl_window.h"
