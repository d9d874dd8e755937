#pragma once
#include <QDialog>
#include <QSize>
#include <memory>

#include "edit/copy.h"

namespace Ui {
class DlgBMP;
}
class QLineEdit;

// Width and height of a picture from what was typed, in map pixels.
class PictureSizeNumbers {
 public:
  explicit PictureSizeNumbers(QSize now) : original(now), size(now) {}
  // Original: the picture's own size again; proportional: the height follows the width.
  void Set_Sizing(PictureSizing how);
  // While the sizing is proportional the other number follows.
  void Set_Width(int width);
  // The same the other way round.
  void Set_Height(int height);
  QSize Size() const { return size; }
  bool Usable() const;  // can a picture of that size be made?

 private:
  QSize original, size;
  PictureSizing sizing = PictureSizing::Proportional;
};

// The size of the picture in hand.
class DlgBMP : public QDialog {
  Q_OBJECT

 public:
  explicit DlgBMP(QSize now = {100, 100}, QWidget* parent = nullptr);
  ~DlgBMP() override;

 public Q_SLOTS:
  void accept() override;

 private:
  PictureSizing Sizing() const;
  void Sizing_Chosen();
  void Show_Numbers(const QLineEdit* except);

  std::unique_ptr<Ui::DlgBMP> ui;
  PictureSizeNumbers numbers;
};

// Size of the picture in hand.
void Show_dlgBMP(QWidget* parent);
