#pragma once
#include <QSize>
#include <QString>
#include <optional>

#include "calibration/calibration_writer.h"
#include "platform/geodesy.h"
#include "platform/pixel_affine.h"

// Pictures that know where they lie: by a world file beside them (.bpw, .jgw, .pgw, .gfw, .tfw, .wld; the reference
// system in a .prj), or by the tags of a TIFF file, be it the picture itself or one of the same name and size beside.

// The six lines of a world file. The last two are the middle of the upper left pixel. Error 5000 with a German text
// that names the line: missing or no numbers, zeros, a picture that would be mirrored.
PixelAffine Parse_World_File(const QString& text);
// Error 5000 if no pixel of a picture can lie so: zeros, mirrored, not finite. `lines`: name the lines of a world file.
void Check_Affine(const PixelAffine& affine, bool lines = false);

struct GeoReference {
  PixelAffine place;
  std::optional<ReferenceSystem> system;  // nothing where neither tags nor a .prj name one
  bool foreignSystem = false;             // they name one the program does not count in
  QSize size;                             // of the picture
  QString source;                         // the file that tells the place
  bool LooksLikeDegrees() const;          // by the size of the numbers
};
// Nothing where no file tells. Errors of the files that do.
std::optional<GeoReference> Find_Reference(const QString& picture);

// What the user says of the system; a zone of 0 and an empty datum say nothing.
struct ReferenceWish {
  int zone = 0;
  QString datum;  // "WGS-84", "ETRS89", "Potsdam"
};
// The system of the files, else the one wished for: Potsdam with a zone is Gauß-Krüger, other datums UTM. Error 5000
// with a German text where one is missing, contradicts the files or does not exist.
ReferenceSystem System_To_Use(const GeoReference& reference, const ReferenceWish& wish);

// Zone and datum as calibration files write them, the kind of net and the distance of its lines. Pixels that are no
// squares make a net in kilometres.
CalibrationPlan Plan_Of_Reference(const GeoReference& reference, const ReferenceSystem& system, const QString& mapName);

// The system of a net's kind, zone and datum; nothing where the program does not know it.
std::optional<ReferenceSystem> System_Of_Net(const NetDescription& net);
// Why a place cannot lie in that zone: "Länge 13,2° gehört zur Zone 33, nicht zu 32."; empty if it can.
QString Zone_Flaw(const ReferenceSystem& system, QPointF place);
