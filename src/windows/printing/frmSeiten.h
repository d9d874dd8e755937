#pragma once
#include <QDialog>
#include <memory>

#include "printing/page_setup.h"

namespace Ui {
class FrmSeiten;
}

// How the map falls on the sheets, and how large it is printed. It stays open beside the map.
class FrmSeiten : public QDialog {
  Q_OBJECT

 public:
  explicit FrmSeiten(QWidget* parent = nullptr);
  ~FrmSeiten() override;
  const PageSetup& Setup() const { return setup; }
  void Begin();      // shows the window, then makes the preview
  void Offer();      // asks whether changed settings shall be kept
  void Close_Now();  // asks nothing

 public Q_SLOTS:
  void reject() override;

 private:
  void Connect_Boxes();
  void Connect_Buttons();
  void Set_Anzeige();
  void Show_Boxes(const QObject* typedInto = nullptr);
  void Make_Picture();
  void Show_Preview();
  void Show_Choices();
  void Set_btnShow(bool waiting);
  void Choose_Format();
  void Choose_Margins();
  bool Take_Font();
  void Ok_Butt_Click();
  void Table_Changed();

  std::unique_ptr<Ui::FrmSeiten> ui;
  PageSetup setup;
  // The picture of the map: being made, which btnShow stops; there.
  enum class Picture { None, Making, Stopped, There } picture = Picture::None;
  int closedListener = 0, tableListener = 0, syncing = 0;
};
