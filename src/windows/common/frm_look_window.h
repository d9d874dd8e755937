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

// One window of its kind is enough. `corner` is the distance of its upper right corner from that of the main window.
template <typename Window>
Window* Show_Beside(QWidget* parent, QPoint corner) {
  auto* window = parent ? parent->findChild<Window*>() : nullptr;
  const bool fresh = !window;
  if (fresh) {
    window = new Window(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
  }
  window->show();
  if (fresh && parent)
    window->move(parent->mapToGlobal(QPoint(parent->width() - window->width() - corner.x(), corner.y())));
  window->raise();
  window->activateWindow();
  return window;
}
