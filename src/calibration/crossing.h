#pragma once
#include <QImage>
#include <QPointF>
#include <optional>

// The crossing of two printed lines next to a place of the picture: one that runs down, one that runs across, each
// turned by up to twelve degrees. Sought within `reach` pixels; found to parts of a pixel. Nothing where there are not
// two lines that are clearly darker than what lies beside them.
std::optional<QPointF> Find_Crossing(const QImage& picture, QPointF near, int reach = 14);
