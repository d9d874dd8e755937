#pragma once
#include <QDialog>
#include <memory>

#include "import/gps_import.h"

namespace Ui {
class FrmWpImport;
}

enum class WpMode { All, Single, Marked };
struct WpChoice {
  WpMode mode = WpMode::All;
  Existing existing = Existing::Skipped;
  GpsLook look;
};

// How the imported entries look and which of them are taken. It stays open beside the list, in which the user marks
// some.
class FrmWpImport : public QDialog {
  Q_OBJECT

 public:
  explicit FrmWpImport(QWidget* parent = nullptr);
  ~FrmWpImport() override;
  void Set_Content(GpsContent content);  // tracks have no font and no comment
  WpChoice Choice() const;               // as it is chosen now

 Q_SIGNALS:
  void Import_Wanted();  // the button was pressed

 private:
  void Show_Look();
  void Choose_Font();

  std::unique_ptr<Ui::FrmWpImport> ui;
  FontChoice font{.size = 10};
  int closedListener = 0, stateListener = 0;
};
