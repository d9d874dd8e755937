#pragma once
#include <QDialog>
#include <QImage>
#include <memory>

namespace Ui {
class FrmClipboard;
}

// What lies on the clipboard, and whether it shall come into the map.
class FrmClipboard : public QDialog {
  Q_OBJECT

 public:
  explicit FrmClipboard(QWidget* parent = nullptr);
  ~FrmClipboard() override;

  QString Tag;  // "Txt", "Img", or empty if there is nothing usable
  QString text;
  QImage picture;

 private:
  void Show_Text();
  void Show_Picture();

  std::unique_ptr<Ui::FrmClipboard> ui;
};

// What of the clipboard shall come into the map: kind "Txt", "Img", or "" for nothing.
struct ClipboardChoice {
  QString kind, text;
  QImage picture;
};
// Asks what of the clipboard becomes an entry; waits.
ClipboardChoice Show_frmClipboard(QWidget* parent);
