#pragma once
#include <QString>

class QWidget;

// Overlay files in the window of imports.

void Import_OVL(QWidget* parent);  // asks for the file
// Shows what is in the file and what of it can come; "Weiter >>" takes it. Tells what is wrong with it.
void Open_Overlay(QWidget* parent, const QString& path);
