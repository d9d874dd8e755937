#pragma once
#include <QRect>

// The reduced copies of the scan, kept by their factor against it so that going back to a zoom makes nothing. A copy
// has its size at once, and its pixels where the window has shown them.

void Choose_Clip();                    // makes the zoom's copy the current clip; error 7 if the memory is not there
void Prepare_Clip(const QRect& part);  // before it is painted: that part of the current clip, in its pixels
// While nobody waits: of a large scan the halves that every far zoom begins with, for so many milliseconds. True if
// there is more to do.
bool Prepare_Ahead(int milliseconds);
void Forget_Copies();  // of a scan that goes
int Clip_Builds();     // reduced copies made since the scan was taken
