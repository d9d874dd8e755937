#pragma once
#include <QDialog>
#include <QString>

class TblWindow;

// What the windows that wait for a click on the head of a column share.

TblWindow* Table_Of(QWidget* mainWindow);  // nullptr where there is none
// Stays open beside the table, goes with the map.
void Prepare_Column_Window(QDialog& dialog, const QString& helpPage);
// Lower right, so that the heads of the columns stay free; the table is shown.
void Place_Column_Window(QDialog& dialog);

template <typename Window>
// Shows the one window of its kind, in front.
void Show_Column_Window(QWidget* parent) {
  auto* open = parent->findChild<Window*>();
  Place_Column_Window(open ? *open : *new Window(parent));
}

void Hide_Column(const QString& name);  // the last one shown stays
void Show_All_Columns();                // mnuSpaltShow
