#pragma once
#include <QPointF>
#include <QRectF>

// Cuts the segment to the area, edges included. False, and nothing is changed, if it lies outside as a whole.
bool Clip_Segment(QPointF& a, QPointF& b, const QRectF& area);
