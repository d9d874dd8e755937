#pragma once
#include <QDialog>
#include <QElapsedTimer>
#include <memory>

namespace Ui {
class FrmPRN;
}

// The progress of printing the map, with its button to stop.
class FrmPRN : public QDialog {
  Q_OBJECT

 public:
  explicit FrmPRN(QWidget* parent = nullptr);
  ~FrmPRN() override;
  // One "*" a step; `note` is the sharpness of the path through pictures. False: the user wants to stop.
  bool Step(int sheet, const QString& note);
  void Set_Last(int sheet) { last = sheet; }
  bool Cancelled = false;

 public Q_SLOTS:
  void reject() override;

 private:
  std::unique_ptr<Ui::FrmPRN> ui;
  QElapsedTimer clock;
  int shownSheet = 0, last = 0;
};
