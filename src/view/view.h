#pragma once
#include <QString>

// View geometry: zoom, reduced copies of the scan, scroll bars, layout of the map window. All sizes in window pixels
// unless "map" is said.

void Set_Map_Picture(const class QImage& picture);  // takes the scan as clip 0 and forgets the reduced copies
void Clear_Map_Picture();                           // no scan, no copies, view and scroll bars at 0
// Map pixels per window pixel, kept within 1/8..20. The zoom there is already only takes what floats over the map from
// sight.
void Set_Zoom(double factor);
void Clear_Zoom_Checks();                               // no zoom menu is checked
void Set_Zoom_By_Menu(const QString& menuName);         // "mnuZoom200", ..., "mnuZoomBreite", "mnuZoomHoehe"
void Zoom_Map();                                        // the current zoom once more: clip, layout, redraw
void Zoom_Map_From_Corner();                            // the same, scrolled to the map's upper left corner
void Zoom_At(double factor, int windowX, int windowY);  // keeps the map position under the pointer
void ReduceMap();          // makes the clip of the zoom; errors are told as "Karte zoomen: Reduce_Map"
void FensterSize();        // wanted size of a window: the clip, as far as there is room
void Layout_Map();         // the layout step: bars, clip size, window size; ends with a redraw
void Map_Resized();        // the window got another size: bars and clip anew, redraw
void Fit_Map_Window();     // the window takes all the room; not if maximised
void Set_Window_Layout();  // mnuWEinpass: the normal state; the active note pad takes all the room
void Scroll_Changed(bool horizontal, int value);  // Change of a scroll bar
void ScrollMap(int mapX, int mapY);               // brings a position to a fifth of the width and half the height
void Scroll_By(int dx, int dy);                   // window pixels
void Set_Light(bool light);                       // mnuBildHell, mnuBildDunkel
// Which part of the map the window shows, and how large.
struct ViewPlace {
  float zoom = 0;
  int left = 0, top = 0;  // map pixels
  bool operator==(const ViewPlace&) const = default;
};
ViewPlace View_Now();  // of the view as it stands in Map
int Zoom_Percent();    // Int(100 / Zoom)
