#include <QComboBox>
#include <QLabel>

#include "dialog_parts.h"
#include "maps/map_coordinates.h"
#include "platform/files.h"
#include "state/coordinate_state.h"
#include "window_fixture.h"

namespace {

using CalibrationWindow = WindowTest;

TEST_F(CalibrationWindow, OffersTheFilesAndTakesTheChosenOne) {
  const QByteArray net =
      "Grid UTM Zone: 32U D: WGS-84 R: 646000 H: 5512000\nGwidth = 1000\nInclin = 0.01\nXmap = 100\nYmap = 150\n"
      "Xline = 80\nYline = 80\n";
  Replace_File(Path(QStringLiteral("Karte.cal")), net);
  Replace_File(Path(QStringLiteral("Karte neu.cal")), net);
  When_Shown([](QWidget& dialog) {
    EXPECT_EQ(Part<QComboBox>(dialog, "cmbFiles")->count(), 3);
    MessageScript script;
    script.Expect(QStringLiteral("Bitte wählen Sie aus der Auflistung eine Datei aus."));
    Press(dialog, "btnOK");
    Press(dialog, "btnCancel");
  });
  Open(400, 300);
  EXPECT_EQ(Coord.Grid, gridNone);
  When_Shown([](QWidget& dialog) {
    EXPECT_EQ(dialog.pos(), QPoint(1, 1));
    Part<QComboBox>(dialog, "cmbFiles")->setCurrentIndex(2);
    Press(dialog, "btnOK");
  });
  Choose(QStringLiteral("mnuChooseGrid"));
  EXPECT_EQ(Coord.CalFile, Path(QStringLiteral("Karte.cal")));
}

}  // namespace
