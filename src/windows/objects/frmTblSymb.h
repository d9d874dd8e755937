#pragma once
#include <QDialog>
#include <memory>

namespace Ui {
class FrmTblSymb;
}

// The characters of a font, to be picked for a text. It stays in front of the window it was opened from.
class FrmTblSymb : public QDialog {
  Q_OBJECT

 public:
  explicit FrmTblSymb(QWidget* parent = nullptr);
  ~FrmTblSymb() override;
  void Show_Font(const QString& family, int charset);  // the characters of that font

 Q_SIGNALS:
  void Picked(QChar character);  // by a click or a key

 private:
  std::unique_ptr<Ui::FrmTblSymb> ui;
};
