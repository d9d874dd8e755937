TEST_F(WindowTest, ACalibrationIsChosenOfThoseThatAreThere) {
  for (const char* name : {"Karte.cal", "Karte neu.cal"}) Write_Lines(Path(name), Utm_Calibration({100, 150}, 80));
  When_Shown([](QWidget& dialog) {
    EXPECT_EQ(Part<QComboBox>(dialog, "cmbFiles")->count(), 3);
    const MessageScript script("Bitte wählen Sie aus der Auflistung eine Datei aus.");
    Walk(dialog, "btnOK!; btnCancel!");
  });
  Open(400, 300);
  EXPECT_EQ(Coord.Grid, gridNone);
  Choose_And("mnuChooseGrid", [](QWidget& dialog) {
    EXPECT_EQ(dialog.pos(), QPoint(1, 1));
    Walk(dialog, "cmbFiles : #2; btnOK!");
  });
  EXPECT_EQ(Coord.CalFile, Path("Karte.cal"));
}
