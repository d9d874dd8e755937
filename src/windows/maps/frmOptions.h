#pragma once
#include <QDialog>
#include <array>
#include <memory>

#include "state/mdi_state.h"

namespace Ui {
class FrmOptions;
}

// What the options window changes.
struct OptionValues {
  ToolbarPlace toolbarPlace = ToolbarPlace::Top;
  bool raisedButtons = false, tips = true, showHidden = false, showTexts = true, showPictures = true, overview = false,
       trimInput = false, sheetFrame = false;
  MouseUnit mouseUnit = MouseUnit::Pixel;
  std::array<QRgb, 16> palette{};
  int versionRoom = 0;  // megabytes
  bool operator==(const OptionValues&) const = default;
};
OptionValues Current_Options();  // those in force
// Puts the values into the shared state, writes "TLB:", "Tipps:", the palette file and the room for versions, and has
// the windows and the map shown anew. Errors of the files.
void Take_Options(const OptionValues& values);

// The options of the program; closing asks about changes that were not applied.
class FrmOptions : public QDialog {
  Q_OBJECT

 public:
  explicit FrmOptions(QWidget* parent = nullptr);
  ~FrmOptions() override;
  bool Is_Changed() const { return changed; }  // are there changes that were not applied?

 public Q_SLOTS:
  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Show_Values();
  OptionValues Read_Values() const;
  void Changed();
  void Place_Toolbar();
  void Change_Color();
  void Standard_Colors();
  void Show_Palette();
  bool Apply();

  std::unique_ptr<Ui::FrmOptions> ui;
  std::array<QRgb, 16> palette;
  bool changed = false;
};

void Show_frmOptions(QWidget* parent);  // waits until it is closed
