#pragma once
#include <QPoint>
#include <QString>

// What the status bar tells of the position under the mouse when it shows coordinates (frmMDI.mouseUnit).

// Which kind of position it is: "G" metric, "Ggr" geographic, "MK" map pixels or millimetres. What does not change with
// the position is written anew only when this changes.
QString Cursor_Tag();

struct PanelTexts {
  QString kind;      // panel 1: " UTM-Koordinaten "; empty without coordinates
  QString position;  // panel 2
  QString beside;    // panel 3: datum and zone, or the latitude
};
// Of a position in map pixels. Where it has no coordinates, `kind` and `beside` are empty and the position is in
// pixels.
PanelTexts Cursor_Texts(QPoint map);
// Of a coordinate as it was entered: Rechtswert and Hochwert in metres, or longitude and latitude in degrees.
PanelTexts Coordinate_Texts(double right, double high);
// The position alone, in map pixels or millimetres: "|_ 12 : 34 Pixel".
QString Pixel_Text(QPoint map);
