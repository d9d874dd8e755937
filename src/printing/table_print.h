#pragma once
#include <memory>

#include "printing/page_job.h"

// The rows of the table of the entries on paper: headings on every page, the columns that the table window shows.

// Columns that do not fit beside each other go onto further pages, each led by the number of the row; a little too wide
// a table is printed smaller instead. Long texts wrap within their column.
std::unique_ptr<PageSource> Make_Table_Pages();
// mnuTblPrint; a wide table lies across.
void Print_Table();
