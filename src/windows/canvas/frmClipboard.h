#pragma once
#include <QDialog>
#include <QImage>
#include <memory>

namespace Ui {
class FrmClipboard;
}

enum class ClipboardKind { Unusable, Text, Picture };

// What lies on the clipboard, and whether it shall come into the map.
class FrmClipboard : public QDialog {
  Q_OBJECT

 public:
  explicit FrmClipboard(QWidget* parent = nullptr);
  ~FrmClipboard() override;

  ClipboardKind kind = ClipboardKind::Unusable;
  QString text;
  QImage picture;

 private:
  void Show_Text();
  void Show_Picture();

  std::unique_ptr<Ui::FrmClipboard> ui;
};

// What of the clipboard shall come into the map: nothing while the kind is Unusable.
struct ClipboardChoice {
  ClipboardKind kind = ClipboardKind::Unusable;
  QString text;
  QImage picture;
};
// Asks what of the clipboard becomes an entry; waits.
ClipboardChoice Show_frmClipboard(QWidget* parent);
