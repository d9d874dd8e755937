#pragma once
#include <QDialog>

#include "edit/entry_look.h"
#include "objects/draw_context.h"

// What the windows of colours, fills and widths have in common: they stay open beside the map, follow the entry in hand
// and go with the map.
class LookWindow : public QDialog {
  Q_OBJECT

 public:
  ~LookWindow() override;

 protected:
  LookWindow(QWidget* parent, const QString& helpPage);
  // The look has changed, or another entry is in hand.
  virtual void Show_Look() = 0;
  virtual EntryLook Read_Look() const { return Look_In_Hand(); }
  // Shows it if it is another one than shown.
  void Follow();
  void showEvent(QShowEvent* event) override;

  EntryLook look;
  std::array<QRgb, 16> shownPalette{};

 private:
  int closedListener = 0, stateListener = 0;
};

EntryColors Colors_Of(const EntryLook& look);  // as they are drawn
