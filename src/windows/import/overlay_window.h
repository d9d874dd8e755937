#pragma once
#include <QString>

class QWidget;

// Overlay files in the window of imports.

void Import_OVL(QWidget* parent);  // asks for the file
// Shows what is in the file and what of it can come; "Weiter >>" takes it. Raises what reading raises.
void Open_Overlay(QWidget* parent, const QString& path);
