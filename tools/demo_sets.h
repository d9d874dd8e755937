#pragma once
#include <QImage>
#include <QString>

class DemoTable;

// The entries of the demo tables, all on the map "Karte.bmp" of 3000 x 2200 pixels, 472.5 pixels a kilometre.

void Add_Overview(DemoTable& table);  // every kind of entry, more than a hundred
void Add_First_Try(DemoTable& table);
void Add_Editing(DemoTable& table);
void Add_Texts_And_Symbols(DemoTable& table);
void Add_Justifying(DemoTable& table);

// Parts of the overview.
void Add_Overview_Shapes(DemoTable& table);
void Add_Overview_Texts(DemoTable& table);
void Add_Species(DemoTable& table);  // what the evaluations count, on its areas, figures and lines

// A small drawing of a kingfisher, the demo picture.
inline const QString birdPicture = QStringLiteral("Eisvogel.bmp");
QImage Draw_Bird();

// The help page about the settings as a PDF to print, the same bytes every time.
void Make_Settings_Sheet(const QString& page, const QString& target);
