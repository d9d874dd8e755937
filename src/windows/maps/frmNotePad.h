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
  QString Text() const;                 // what stands in it now
  void Show_Text(const QString& text);  // in place of what stands in it; nothing is left to save
  void Show_Title();                    // the file's name, and whether it is saved
  void Save();                          // what cannot be saved is told
  void Save_As();                       // asks for a name
  void Find();                          // asks what to look for
  void Find_Next();                     // from the caret on; a message if there is none
  // By the clipboard; nothing happens where nothing is marked.
  void Cut();
  void Copy();   // the text stays
  void Paste();  // in place of what is marked
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
