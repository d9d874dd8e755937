#pragma once
#include <QImage>
#include <QPoint>
#include <QString>
#include <functional>
#include <vector>

// From a click into a coloured patch of the scan to its outline. Two ways: a follower that steps along the edge on
// rings of pixels and so over grain and print screens, and a filler for patches with symbols and thin lines in them.
// Only values: a picture of 32 bits a pixel (QImage::Format_RGB32), positions in its pixels.

struct TraceRequest {
  QImage picture;
  QPoint click;
  int tolerance = 10;  // percent, 0..100
  // Asked at each point of the edge found by the follower, with its place; false ends the work.
  std::function<bool(QPoint)> step;
};

struct TraceResult {
  std::vector<QPoint> outline;  // closed: the last vertex joins the first; empty after a fault
  QString fault;                // what to tell the user; empty if there is an outline, or if the step ended the work
  std::vector<QRgb> sampled;    // colours round the click
  int edgePoints = 0;           // before the outline was thinned
  double part = 0;              // of the picture that lies within the outline, 0 to 1
  bool Found() const { return !outline.empty(); }
};
// How much of a picture of that size lies within an outline, 0 to 1.
double Part_Of_Picture(const std::vector<QPoint>& outline, QSize picture);

// The follower. Its colours are those on rings of up to 2..5 pixels round the click, widened by the tolerance; it goes
// up from the click to the edge and steps from ring to ring to the first point of the longest run of such colours.
TraceResult Digi_Trace_RGB(const TraceRequest& request);

// The filler: all that is joined to the click by colours that are those round it, grain included, widened by the
// tolerance as the follower does; single pixels of such a colour in another one do not join. Gaps of up to four pixels
// are closed first (morphological closing with a square, Serra 1982); holes belong to it. The outline runs along pixel
// sides; of its corners as few are kept as leave the middles of these sides at most 0.7 pixels off it (a cone of
// directions from vertex to vertex, Williams 1978: the better known halving of lines keeps each step of a slanted
// edge).
TraceResult Digi_Fill(const TraceRequest& request);

// Parts of the follower that others can look at.

// Offsets of the points of a ring, radius 1 to 5. It runs round once and a half, so that no run of points is cut.
const std::vector<QPoint>& Digi_Ring(int radius);
// Red, green, blue by channel 1, 2, 3; -1 for another channel or what is no colour (below 0, above 0xFFFFFF; red
// lowest).
int GetRGB(int color, int channel);
// Distance rounded to a whole number; along one axis the signed difference itself: a negative one counts as short.
int Entfernung(float dx, float dy);
