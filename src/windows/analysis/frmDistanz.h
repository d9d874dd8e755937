#pragma once
#include <QDialog>
#include <memory>
#include <optional>

#include "analysis/distances.h"

namespace Ui {
class FrmDistanz;
}

// The distances between entries that the user clicks on the map. It stays open beside the map while it has the mouse.
class FrmDistanz : public QDialog {
  Q_OBJECT

 public:
  explicit FrmDistanz(QWidget* parent = nullptr);
  ~FrmDistanz() override;
  // Takes the mouse of the map, or measures on in another way. False if what is being typed could not be stored.
  bool Measure(DistanceMode mode);

 public Q_SLOTS:
  void done(int result) override;

 private:
  void Show_Distances(int points, const std::optional<Distances>& distances);

  std::unique_ptr<Ui::FrmDistanz> ui;
  int closedListener = 0;
  bool measuring = false;
};

// mnuDist_Einfach, mnuDistPoly, mnuDistBundle. One window is enough.
void Show_frmDistanz(QWidget* parent, DistanceMode mode);
