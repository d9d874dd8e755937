#pragma once
#include <QDialog>
#include <memory>

#include "edit/search_replace.h"

class QPlainTextEdit;
namespace Ui {
class FrmReplace;
}

// Search by criteria, hit after hit in the map, and replacing. It stays open beside the map.
class FrmReplace : public QDialog {
  Q_OBJECT

 public:
  explicit FrmReplace(QWidget* parent = nullptr);
  ~FrmReplace() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Add_Lines(const QStringList& lines);
  void Read_Controls();
  void Show_State();
  void Run(const std::function<void()>& work);

  std::unique_ptr<Ui::FrmReplace> ui;
  SearchState state;
  QPlainTextEdit* list;  // the one that was used last; the buttons add to it
  int closedListener = 0;
};

// Search and replace; stays open beside the map.
void Show_frmReplace(QWidget* parent);
