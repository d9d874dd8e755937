#pragma once
#include "platform/printer.h"

// The printer of the desktop with its dialogs; a PDF file where there is none, or where the user wants one.
PrinterFace Desktop_Printer();
