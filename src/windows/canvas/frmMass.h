#pragma once
#include <QDialog>
#include <memory>
#include <optional>

#include "edit/scale_edit.h"
#include "tools/scale_tool.h"

namespace Ui {
class FrmMass;
}

// The scale of the map: how long a measured line is in nature. It stays open beside the map while the user draws the
// line. "OK" puts the scale bar where the line began; a length that was only typed waits for a click on the map.
class FrmMass : public QDialog {
  Q_OBJECT

 public:
  explicit FrmMass(QWidget* parent = nullptr);
  ~FrmMass() override;

  void MassLinie(bool on);                         // starts or ends the drawing of the measuring line
  void Mass_Zeichnen(const MeasuringLine& drawn);  // takes over what was drawn
  void Mass_Show();                                // number, picture and "Maßstab = 1 : ..." by the fields

 public Q_SLOTS:
  void accept() override;
  void reject() override;
  void done(int result) override;

 private:
  void Fill();
  ScaleInput Input() const;
  double Typed_Length() const;
  void Length_Typed();
  void Kind_Chosen();
  void Show_Length();
  void Show_Picture(const ScaleInput& input);
  void Save(const ScaleInput& input);
  bool Refuse(const QString& text, QWidget* field);

  std::unique_ptr<Ui::FrmMass> ui;
  std::optional<QPoint> at;  // where the bar will stand, map pixels
  int lengthPx = 0;
  bool changed = false, waiting = false;
  int filling = 0, closedListener = 0;
};

// One window is enough: another call brings it to the front.
void Show_frmMass(QWidget* parent, bool drawLine);
