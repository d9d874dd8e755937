#pragma once
#include <QDialog>
#include <memory>

#include "edit/text_font.h"

namespace Ui {
class FrmSymbol;
}

// The symbol in hand, or the next one: font, size and character, picked from the table. A pick is seen on the map at
// once. It stays open beside the map.
class FrmSymbol : public QDialog {
  Q_OBJECT

 public:
  explicit FrmSymbol(QWidget* parent = nullptr);
  ~FrmSymbol() override;

 private:
  void Sync();       // the symbol in hand -> controls
  void Font_Show();  // the table of the chosen font
  void Pick(QChar character);
  void Take_Look();  // size and script of a symbol in hand

  FontChoice Read_Controls() const;
  std::unique_ptr<Ui::FrmSymbol> ui;
  FontChoice shown;
  int syncing = 0;
  int closedListener = 0, stateListener = 0;
};

// Font and character of symbols; stays open beside the map.
void Show_frmSymbol(QWidget* parent);
