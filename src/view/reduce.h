#pragma once
#include <QImage>

// Reduced copies of the scan by averaging: each target pixel is the mean of the source area it covers, so that thin
// lines of a map stay visible. `factor` is above 1; the result is RGB32 and at least 1 x 1 pixel. 8-bit indexed and
// 32-bit sources. Error 7 if the memory is not there.
QImage Reduced_Picture(const QImage& source, double factor);
