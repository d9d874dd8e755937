#pragma once
#include <QWidget>
#include <memory>

namespace Ui {
class FrmNotePad;
}

// The window of one note pad: the text of its slot.
class FrmNotePad : public QWidget {
  Q_OBJECT

 public:
  FrmNotePad(int slot, const QString& text, QWidget* parent = nullptr);
  ~FrmNotePad() override;

  int Slot() const { return slot; }
  QString Text() const;
  void Show_Title();
  void Save();
  void Save_As();
  void Find();  // asks what to look for
  void Find_Next();
  void Cut();
  void Copy();
  void Paste();
  // The map is gone: only yes and no are left. False if the text could not be saved; it stays open then.
  bool Close_With_Map();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  bool Key(int key, Qt::KeyboardModifiers modifiers, bool carryOut);

  std::unique_ptr<Ui::FrmNotePad> ui;
  int slot;
  QString wanted;
};
