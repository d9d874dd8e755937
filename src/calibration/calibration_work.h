#pragma once
#include <QImage>
#include <QStringList>
#include <optional>

#include "calibration/calibration_plan.h"
#include "calibration/calibration_sheet.h"
#include "calibration/calibration_writer.h"

// The calibration of one map at work: its picture, the net, the points, and what comes of them.
class CalibrationWork {
 public:
  // Begins with the map: with its calibration file if it has one, else with what world file or tags propose, else with
  // nothing. What was found is said in Notice(). Errors of the picture; a file that cannot be read is a notice.
  void Open(const QString& mapFile);
  bool Is_Open() const { return !picture.isNull(); }

  const QString& Map_File() const { return mapFile; }
  const QString& Cal_File() const { return calFile; }  // where it is saved
  const QImage& Picture() const { return picture; }
  const QString& Notice() const { return notice; }  // a German sentence, or nothing
  CalibrationSheet& Sheet() { return sheet; }
  const ControlPoints& Points() const { return sheet.Points(); }
  const NetDescription& Net() const { return net; }
  NetShape Shape() const { return shape; }

  // Other kind, zone, datum or spacing. Places stay as they are, so that a wrong kind can be taken back.
  void Describe(const NetDescription& described, NetShape lines);
  // Works all out anew, after the points have changed.
  void Refit();

  const std::optional<NetFit>& Fit() const { return fit; }
  const QString& Fault() const { return fault; }          // why there is no fit, or no file of it; empty if there is
  const QStringList& Remarks() const { return remarks; }  // what is odd about it
  // The net as the program will read it; nothing where there is none.
  const std::optional<CalibrationProof>& Proof() const { return proof; }

  // The coordinates of a crossing, by all that is known so far: the fit, two points, or the last point and the
  // direction from it. Nothing before the first point.
  std::optional<QPointF> Guess_Place(QPointF pixel) const;
  // The printed crossing next to a place, at most `reach` pixels away, else the place itself.
  QPointF Snap(QPointF pixel, int reach) const;

  // Writes the file. Errors of Save_Calibration.
  void Save();
  // The same under another name, which is the file's from then on. After an error it keeps the former one.
  void Save_As(const QString& file);
  // Whether a program that opens the map finds the file.
  bool Is_Found_By_Map() const;
  bool Changed() const { return sheet.Changed() || net != savedNet; }

 private:
  void Begin();
  CalibrationPlan Plan() const;

  QString mapFile, calFile, notice, fault;
  QImage picture;
  CalibrationSheet sheet;
  NetDescription net, savedNet;
  NetStyle style;
  NetShape shape = NetShape::Automatic;
  std::optional<NetFit> fit;
  std::optional<CalibrationProof> proof;
  QStringList remarks;
};
