#pragma once
#include "state/coordinate_state.h"

// Makes the lines and labels of the net (NetBLines, NetLLines, NetBLabels, NetLLabels) once after a file was read.

// Metric nets. Errors 5000 (more than 500 lines), 6000, 6010, 6020 (no line meets the map).
void Build_Metric_Net(CoordinateState& state);
// Geographic nets, by state.NetDiv. Faults are shown with the titles "Fehler: geogr. Breitengrade unterteilen",
// "Fehler: geogr. Längengrade unterteilen", "Fehler: geografische Koordinaten unterteilen"; what was built stays.
void Net_Divide(CoordinateState& state);
// 0: no division, 1: degrees and pixels are proportional (`perDegree`), 2: bent.
int Teilmodus(const CoordinateState& state, char letter, double& perDegree);
// Circle through three points.
struct Circle {
  double x = 0, y = 0, r = 0;
};
// Error 6 where they have none.
Circle Calc_Circle(double x1, double y1, double x2, double y2, double x3, double y3);
