#pragma once
class QMainWindow;
class QWidget;

// The windows of printing. `parent` is the main window.

void Show_frmSeiten(QWidget* parent);     // the preview; stays open beside the map
void Show_frmRand(QWidget* parent);       // margins of the sheets
void Show_frmDruckpfad(QWidget* parent);  // the path of printing
void Print_Whole_Map(QWidget* parent);    // mnuPrintMap: asks for the sheets and prints them
