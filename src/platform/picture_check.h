#pragma once
#include <QString>

class QFile;

// What is wrong with a picture file that the image library would pass over in silence (rows cut off at the end, a
// picture part that is too short), as a German half sentence; empty if nothing was found. The file's position is kept.
QString Picture_Flaw(QFile& file);
