#pragma once
#include <QSize>
#include <QString>
#include <functional>

// Windows that a procedure below the windows has to show and wait for. The program sets real windows, tests scripts;
// unset hooks give the careful answer.
struct SafeModeQuestion {
  QString map, table, backup;
};
struct DialogHooks {
  std::function<int(const SafeModeQuestion&)> Abgesichert;  // 1, 2, 3 as chosen, 0 or 4 = stop
  std::function<void(QSize map)> BigMapHint;                // frmTipps
  std::function<void(const QString& path)> NotePad;         // shows a text file in a note pad
  std::function<void()> FitNotePad;                         // the active note pad, if there is one, takes all the room
  std::function<void(const QString& page)> Help;            // a page of the help window
  std::function<void(const QString& bookmark, const QString& caption)> FontWindow;  // the font of an entry
  std::function<void()> ColorWindow;        // frmFarb, of the entry in hand or the next one
  std::function<void()> FillWindow;         // frmFill
  std::function<void()> WidthWindow;        // frmDrawBreite
  std::function<void()> ZoomWindow;         // frmBildZoom
  std::function<void()> ChooseCalibration;  // frmDialog: several calibration files
};
extern DialogHooks dialogHooks;
