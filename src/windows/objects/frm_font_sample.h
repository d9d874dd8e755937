#pragma once
#include <QWidget>

#include "edit/text_font.h"
#include "objects/text_box.h"

// How a text will look on the map, before it does: drawn by the same procedures.
class FontSample : public QWidget {
  Q_OBJECT

 public:
  explicit FontSample(QWidget* parent = nullptr);
  // The text as it will stand on the map.
  void Show_Sample(const FontChoice& choice, const QString& text, const TextLook& look);
  // In the picture of the angle the text starts at the rim; else it lies straight in its box.
  void Set_Turned(bool on) { turned = on; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Dreh_Text(Surface& surface);
  void Draw_Straight(Surface& surface);

  FontChoice shown;
  QString sample;
  TextLook colors;
  bool turned = false;
};
