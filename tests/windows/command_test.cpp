#include "edit/visibility.h"
#include "maps/step_walk.h"

class Commands : public CommandTest {
 protected:
  // What has to be so that the command has something to do.
  void Prepare(const QString& key) {
    if (key == "mnuBildDunkel") frmMDI.Light = true;
    if (key == "mnuObjVisNein") Hide_Current();
    if (key == "mnuObjActivNein") Deactivate_Current();
    if (key == "mnuSpaltShow") Tbl.HiddenColumns << "Finder";
    if (key == "mnuReset" || key == "mnuTableRe" || key.startsWith("mnuStep"))
      Append_Entry({"Text", "Neu", "Arial", 10, 0, 14, -1, 10, 10, 0, 0, 0});
    if (key == "mnuStepForward") Step_Back();
    if (key == "mnuSpaceDel") Append_Entry({"Text", " Roter Milan", "Arial", 10, 0, 14, -1, 10, 10, 0, 0, 0});
    if (key == "mnuWEinpass" || key == "MapButton") Table_On_Off("Off");
    if (key == "mnuTextSave")
      window->findChild<FrmNotePad*>()->findChild<QPlainTextEdit*>("Text1")->insertPlainText("Neues");
    if (key == "mnuRecentFile") window->findChild<FrmNotePad*>()->parentWidget()->close();
    if (key == "mnuChooseGrid") {
      Write_Lines(Path("Karte neu.cal"), Utm_Calibration({100, 300}, 80));
      CalFileChoice = {Path("Karte.cal"), Path("Karte neu.cal")};
    }
  }
  // Menus and buttons show what is so now.
  void Expect_Bars(const QString& after) {
    for (const Command& command : Command_Table()) {
      const QAction* action = window->Action(command.key);
      if (!action) continue;
      EXPECT_EQ(action->isEnabled(), Needs_Met(command.needs)) << command.key << " after " << after;
      EXPECT_EQ(action->text(), Command_Text(command)) << " after " << after;
      EXPECT_EQ(action->isChecked(), action->isCheckable() && Command_Checked(command.key)) << command.key << after;
    }
    QStringList shown, wanted;
    for (const QAction* action : Child<QToolBar>("Toolbar1")->actions())
      shown << u"%1 %2 %3"_s.arg(action->objectName()).arg(action->isVisible()).arg(action->isChecked());
    for (const ToolButton& button : Toolbar_Now())
      wanted << u"%1 %2 %3"_s.arg(button.Key).arg(button.Visible).arg(button.Value);
    EXPECT_EQ(shown, wanted) << after;
  }
};

// What is taken in hand first, and what the user sees come of the command; "*" stands for anything.
struct Expected {
  const char *command, *hand, *effect;
};

// clang-format off
const Expected expected[] = {
    {"mnuMapNeu", "", "FrmMapNeu 'Neue Karte'"},
    {"mnuFOpen", "", "Datei 'Karte laden'"},
    {"mnuMapGeo", "", "FrmGeodaten 'Karte aus Geodaten'"},
    {"mnuMapLoad", "", "Karte geöffnet; *"},
    {"mnuNoTable", "", "Frage 'Karten im abgesicherten Modus öffnen|Wählen Sie diese Option,'; abgesichert=an"},
    {"mnuMapClose", "", "Karte=; *"},
    {"mnuMapSize", "", "FrmMapSize 'Kartengröße'"},
    {"mnuMalprgOpen", "", "FrmMalprgOpen 'Malprogramm'"},
    {"mnuMalprg", "", "FrmMalprg 'Malprogramm'"},
    {"mnuOptionen", "", "FrmOptions 'Optionen'"},
    {"mnuMapFile", "", "Karte geöffnet; *Karte=Andere.bmp; *"},
    {"mnuFluraxFini", "", "Ende"},
    {"mnuZoomIn", "", "Zoom=112; Zoommenü="},
    {"mnuZoomOut", "", "Zoom=72; Zoommenü="},
    {"mnuZoom200", "", "Zoom=200; Zoommenü=mnuZoom200"},
    {"mnuZoom100", "", "Zoom=100"},
    {"mnuZoom75", "", "Zoom=75; Zoommenü=mnuZoom75"},
    {"mnuZoom50", "", "Zoom=50; Zoommenü=mnuZoom50"},
    {"mnuZoom25", "", "Zoom=25; Zoommenü=mnuZoom25"},
    {"mnuZoom10", "", "Zoom=10; Zoommenü=mnuZoom10"},
    {"mnuZoomBreite", "", "Zoom=*; Zoommenü=mnuZoomBreite"},
    {"mnuZoomHoehe", "", "Zoom=*; Zoommenü=mnuZoomHoehe"},
    {"mnuZoomFak", "", "FrmBildZoom 'Zoom-Faktor'"},
    {"mnuBildHell", "", "hell=an"},
    {"mnuBildDunkel", "", "hell=aus"},
    {"mnuWEinpass", "", "Karte maximiert=aus"},
    {"mnuWindow", "", "vorn=Map"},
    {"mnuBlattschnitt", "", "FrmSeiten 'Druckvorschau'"},
    {"mnuRand", "", "FrmRand 'Seitenränder'"},
    {"mnuDruckpfad", "", "FrmDruckpfad 'Druckpfad'"},
    {"mnuPrintMap", "", "Drucken 'Karte drucken'"},
    {"mnuPrintScreen", "", "Drucken 'Bildschirm drucken'"},
    {"mnuMapExport", "", "Datei 'Karte mit Einträgen als BITMAP exportieren'"},
    {"mnuHelpIndex", "", "HelpWindow 'Hilfe' index.htm"},
    {"mnuHelpSettings", "", "HelpWindow 'Hilfe' Einstellungen.htm"},
    {"mnuTipps", "", "FrmTipps 'Tipps & Tricks'"},
    {"mnuInfo", "", "FrmInfo 'Info'"},
    {"mnuStepBack", "", "-Neu; Status=Rückgängig: Text eingefügt (Neu)"},
    {"mnuStepForward", "", "+Neu; Status=Wiederherstellen: Text eingefügt (Neu)"},
    {"mnuVerlauf", "", "FrmVerlauf 'Verlauf'"},
    {"mnuStaende", "", "FrmStaende 'Frühere Stände'"},
    {"mnuReset", "",
     "Frage 'Karteneinträge sichern|Karteneinträge wieder hergestellt.'; Tabelle geladen; -Neu; Rückgängig="},
    {"mnuTableNeu", "",
     "Frage 'Karteneinträge sichern|Möchten Sie die Karteneinträge unter einem eigenen Namen sichern?'; "
     "Tabelle geladen; keine Einträge; Raster aktiv=aus; Rückgängig=Rückgängig: Einträge neu"},
    {"mnuTableLoad", "", "Datei 'Einträge laden'"},
    {"mnuTableSave", "", "gesichert=an"},
    {"mnuTableSaveAs", "", "Datei 'Karteneinträge sichern'"},
    {"mnuTableRe", "", "Frage 'Karteneinträge sichern|Karteneinträge wieder hergestellt.'; Tabelle geladen; -Neu"},
    {"mnuOverlay", "", "Tabelle geladen; Rückgängig=Rückgängig: Einträge laden"},
    {"mnuImportCSV", "", "FrmCSVImport 'CSV-Tabelle Import:'"},
    {"mnuImportGPS", "", "FrmGPS 'Karteneinträge importieren'"},
    {"mnuImportXL", "", "Frage 'Import|Bitte speichern Sie die Tabelle,'"},
    {"mnuOVL_Import", "", "Datei 'OVL-Datei importieren'"},
    {"mnuImportMDB", "", "FrmImport 'Einträge aus anderer Datenbank zu den aktuellen Einträgen hinzufügen.'"},
    {"mnuImporttkr", "", "Datei 'Name der Importdatei:'"},
    {"mnuImporttkrAll", "", "Datei 'Name der Importdatei, alle Objekte:'"},
    {"mnuExportCSV", "", "Frage 'Export der Karteneinträge in eine CSV-Datei'"},
    {"mnuExportCSVTable", "", "FrmCSVExport 'CSV-Tabelle exportieren'"},
    {"mnuExporttkr", "", "Datei 'Name der Exportdatei:'"},
    {"mnuExportxls", "", "Frage 'Fehler - Export der Einträge nach EXCEL|*"},
    {"mnuExChangeXL", "", "Frage 'Fehler - Export der Einträge nach EXCEL|*"},
    {"mnuExChangeAVI", "", ""},
    {"mnuDBGridOn", "", "Karte maximiert=an; Tabelle=aus; vorn=Map"},
    {"mnuSpaltAppend", "", "FrmSpalteApp 'Spalte hinzufügen'"},
    {"mnuSpaltDelete", "", "FrmSpalteDel 'Spalte in der Tabelle löschen'"},
    {"mnuSpaltHide", "", "FrmSpltHide 'Tabellenspalte verbergen'"},
    {"mnuSpaltShow", "", "Spalten verborgen=0"},
    {"mnuTabComp", "", "Frage 'Tabelle komprimieren'; Tabelle geladen"},
    {"mnuTabRep", "", "Tabelle geladen; Status=Tabelle geprüft und in Ordnung*"},
    {"mnuTblPrint", "", "Drucken 'Tabelle drucken'"},
    {"mnuTextNew", "", "Notizen=Notiz.txt Notiz 2 "},
    {"mnuTextOpen", "", "Datei 'Text öffnen'"},
    {"mnuTextSave", "", "Notiz=Neues; Notizen=Notiz.txt "},
    {"mnuResultSaveAs", "", "Datei 'Text speichern unter'"},
    {"mnuPrintTxt", "", "Drucken 'Notiz.txt'"},
    {"mnuTextFind", "", "Eingabe 'Geben Sie den Suchtext ein:'"},
    {"mnuTextCut", "", "Ablage=Text der Notiz; Notizen=Notiz.txt * ; Text der Notiz="},
    {"mnuTextCopy", "", "Ablage=Text der Notiz"},
    {"mnuTextPaste", "", "Notizen=Notiz.txt * ; Text der Notiz=Ablage"},
    {"mnuRecentFile", "", "Notizen=Notiz.txt ; Text der Notiz=Text der Notiz; vorn=frmNotePad"},
    {"mnuOverView", "", "Notizen=Notiz.txt OverView.inf "},
    {"mnuKataster", "", "Frage 'Arbeitsmappe gesichert|Das Blatt \"Kataster\" steht in der Arbeitsmappe:'; *"},
    {"mnuPopParm", "", "FrmPopOptions 'Optionen - Populationsparameter berechnen'"},
    {"mnuMatrixXL", "", "Frage 'Arbeitsmappe gesichert|Das Blatt \"Matrix\" steht in der Arbeitsmappe:'; *"},
    {"mnuMatrixCSV", "", "Datei 'Matrix der Arten als CSV sichern'"},
    {"mnuZuordBackgdColor", "", "FrmZuord 'Texteinträge -> Excel'"},
    {"mnuDist_Einfach", "", "FrmDistanz 'Distanz der Einträge' Einfach; Status=Mauscursor auf einen Ein*; Werkzeug=Distanz"},
    {"mnuDistPoly", "", "FrmDistanz 'Distanz der Einträge' Polygon; Status=Mauscursor auf einen Ein*; Werkzeug=Distanz"},
    {"mnuDistBundle", "", "FrmDistanz 'Distanz der Einträge' Bündel; Status=Mauscursor auf einen Ein*; Werkzeug=Distanz"},
    {"mnuNachbar", "", "FrmNachbar 'Nachbarschaft'"},
    {"mnuDiagramme", "", "FrmDiagramme 'Diagramme'"},
    {"mnuLaengeTxt", "", "Notizen=Notiz.txt Linien.stk "},
    {"mnuLaengeXL", "", "Frage 'Arbeitsmappe gesichert|Das Blatt \"Linien\" steht in der Arbeitsmappe:'; *"},
    {"mnuFlGrosTxt", "", "Notizen=Notiz.txt Flaechen.stk "},
    {"mnuFlExcel", "", "Frage 'Arbeitsmappe gesichert|Das Blatt \"Flächen\" steht in der Arbeitsmappe:'; *"},
    {"mnuCalc", "Moor", "Frage 'Flächenstatistik|Flaeche1'"},
    {"mnuMoveObjects", "", "FrmMoveObjects 'Einträge verschieben'"},
    {"mnuReplace", "", "FrmReplace 'Karteneintrag suchen und ersetzen'"},
    {"mnuPropTransfer", "", "FrmPropTransfer 'Eigenschaften übertragen'"},
    {"mnuSql", "", "FrmSql 'SQL-Abfrage'"},
    {"mnuSpaceDel", "",
     "Frage 'Leerzeichen entfernen|Sollen aus den Texten aller Einträge sämtliche Leerzeichen entfernt werden,'; "
     "- Roter Milan; +RoterMilan; Rückgängig=Rückgängig: Leerzeichen entfernen; Status=Leerzeichen entfernt: 1 Eintrag"},
    {"mnuObjVisX", "", "*Biber.Typ=-101; Stall.Typ=-120; Turm.Typ=-220; Rückgängig=Rückgängig: Sichtbarkeit ändern"},
    {"mnuObjVisAll", "", "*Geist.Typ=1; Rückgängig=Rückgängig: Sichtbarkeit ändern"},
    {"mnuObjActX", "",
     "*Biber.ID=-Text; Stall.ID=-Figur3>Linie1; Turm.ID=-Figur4; Rückgängig=Rückgängig: Aktivität ändern; "
     "Status=De-aktiviert: 3 Einträge"},
    {"mnuObjActAll", "", "*Stein.ID=Text; Rückgängig=Rückgängig: Aktivität ändern; Status=Aktiviert: 1 Eintrag"},
    {"mnuUnmark", "", "Biber.Typ=0; Stall.Typ=20; Turm.Typ=20"},
    {"mnuMarkDel", "",
     "Frage 'Markierte löschen|Sollen die 3 markierten Einträge gelöscht werden?'; -Biber; "
     "-Stall; -Turm; Rückgängig=Rückgängig: Markierte löschen"},
    {"mnuGroup", "", "*Biber.ID=Text<1; Stall.ID=Figur3>Linie1<1; Turm.ID=Figur4<1; Rückgängig=Rückgängig: Gruppieren; "
     "Status=Gruppiert: 3 Einträge"},
    {"mnuJustLinks", "", "*Biber.Xmap=250; Stall.Xmap=250; Rückgängig=Rückgängig: Justieren"},
    {"mnuJustRechts", "", "*Biber.Xmap=238; Stall.Xmap=230; Rückgängig=Rückgängig: Justieren"},
    {"mnuJustOben", "", "*Biber.Ymap=310; Stall.Ymap=310; Rückgängig=Rückgängig: Justieren"},
    {"mnuJustUnten", "", "*Biber.Ymap=343; Stall.Ymap=330; Rückgängig=Rückgängig: Justieren"},
    {"mnuJustGleich", "", "*Stall.Xline=20; Stall.Yline=50; Rückgängig=Rückgängig: Justieren"},
    {"mnuInsText", "", "Status=Text: Klicken Sie auf die St*; Werkzeug=Text"},
    {"mnuInsSymbol", "", "FrmSymbol 'Schriftart: Wingdings'; Status=Symbol: Klicken Sie auf die *; Werkzeug=Symb"},
    {"mnuInsBild", "", "Status=Bild: Klicken Sie auf die St*; Werkzeug=Bild"},
    {"mnuInsLinie", "", "Status=Linie: Klicken setzt einen E*; Werkzeug=Linie"},
    {"mnuInsFl", "", "Status=Fläche: Klicken setzt einen *; Werkzeug=Fl"},
    {"mnuInsDigi", "", "FrmDigi 'Fläche digitalisieren'; Status=Fläche digitalisieren: Kli*; Werkzeug=Fd"},
    {"mnuInsMass", "", "FrmMass 'Maßstab'; Status=Maßstab: Ziehen Sie eine Mes*; Werkzeug=Scale"},
    {"mnuInsFigur", "", "FrmFigur 'Figur'; Status=Rechteck: Linke Maustaste dr*; Werkzeug=Fig"},
    {"mnuInsNord", "", "Nordpfeil.*"},
    {"mnuMass", "", "FrmMass 'Maßstab'"},
    {"mnuSchrift", "Otter", "FrmSchrift 'Schrift ändern: Text'"},
    {"mnuFarbe", "", "FrmFarb 'Farbe für Text'"},
    {"mnuFigFill", "Haus", "FrmFill 'Figur1 füllen'"},
    {"mnuBreite", "", "FrmDrawBreite 'Linienbreite'"},
    {"mnuRahmen", "Otter", "FrmDrawBreite 'Rahmenbreite'; FrmFarb 'Rahmenfarbe für Text: Otter'"},
    {"mnuRfline", "", "FrmRfline 'Bezugslinie'"},
    {"mnuObjFore", "Moor", "*Reihenfolge ReOtJBiBaHaMoZaMaNoBiStTuGeStA-B-50; Rückgängig=Rückgängig: Verschieben"},
    {"mnuObjBack", "Moor", "*Reihenfolge ReOtJBiMoBaHaZaMaNoBiStTuGeStA-B-50; Rückgängig=Rückgängig: Verschieben"},
    {"mnuLnStil", "Bach", "FrmLnStil 'Linienstil'"},
    {"mnuLnEnd", "Bach", "FrmLineEndpunkte 'Linienendpunkte'"},
    {"mnuKanten", "Zaun", "Zaun.Typ=25"},
    {"mnuFigur", "Haus", "FrmFigur 'Figur'"},
    {"mnuEigenschaften", "Haus", "FrmEigenschaften 'Eigenschaften'"},
    {"mnuFigKorr", "Zaun", "FrmFlKord 'Figur2 Korrektur'"},
    {"mnuFlTemplateSave", "Moor", "Status=Flächenvorlage gesichert: Flaeche1; Vorlage=FL: Flaeche1|VG=0|HG=14|RA=-101|TX=1|SB=1|"},
    {"mnuFlTemplateGet", "Moor", "Moor.VG=3; Moor.HG=5; Moor.RA=2; Moor.Xline=6; Moor.Yline=4"},
    {"mnuPicSize", "Bild", "DlgBMP 'Bildgröße'"},
    {"mnuFootDel", "Otter", "Frage 'Fußpunkt|Fußpunkt für den Text: Otter entfernen?'; Otter.Xline=0; Otter.Yline=0"},
    {"mnuObjDel", "Otter", "Frage 'Eintrag löschen|Text'; -Otter; Hand="},
    {"mnuEintrDupl", "Otter", "Status=Duplikat: Klicken Sie auf di*; Werkzeug=Dupl"},
    {"mnuEintrCopy", "Otter", "+Kopie: Otter; Ablage=Otter; Hand=Kopie: Otter"},
    {"mnuEintrPaste", "", "FrmClipboard 'Zwischenablage'"},
    {"mnuObjVisJa", "Otter", "Otter.Typ=-1"},
    {"mnuObjVisNein", "Otter", "Otter.Typ=1"},
    {"mnuObjVisNo", "Otter", "Otter.Typ=-1"},
    {"mnuObjActivJa", "Otter", "Otter.ID=-Text>Flaeche1; Status=deaktiviert"},
    {"mnuObjActivNein", "Otter", "Otter.ID=Text>Flaeche1"},
    {"mnuObjActNo", "Otter", "Otter.ID=-Text>Flaeche1; Status=deaktiviert"},
    {"mnuMarkObj", "Otter", "Otter.Typ=201; Turm.Typ=120"},
    {"AdMark", "Moor",
     "*Biber.ID=Text>Flaeche1; Stall.ID=Figur3>Flaeche1; Turm.ID=Figur4>Flaeche1; Hand=; "
     "Rückgängig=Rückgängig: Zuordnen; Status=Zugeordnet zu Flaeche1: 3 Einträge"},
    {"AdMarkLin", "Bach", "*Biber.ID=Text>Linie1; Turm.ID=Figur4>Linie1; Hand=; Rückgängig=Rückgängig: Zuordnen; *"},
    {"AdObj", "Otter", "Status=Zuordnen: Bitte klicken Sie *; Werkzeug=AdObj"},
    {"AdObjLin", "Otter", "Status=Zuordnen: Bitte klicken Sie *; Werkzeug=AdObjLin"},
    {"AdNo", "Otter", "*Stall.ID=Figur3; Rückgängig=Rückgängig: Zuordnen; Status=Zuordnung aufgehoben: 1 Eintrag"},
    {"mnuGridmake", "", "Frage 'Fehler:    Koordinatennetz|Datei nicht gefunden'"},
    {"mnuChooseGrid", "", "FrmDialog 'Kalibrierungsdatei auswählen'"},
    {"mnuGridonoff", "", "Netz=aus"},
    {"mnuGridDel", "", "Koordinaten=aus; Netz=aus"},
    {"mnuGridXYShow", "", "Koordinaten=aus"},
    {"mnuGridXYInput", "", "FrmGPSData 'UTM - Koordinateneingabe'"},
    {"mnuRasterErstellen", "", "FrmRaster 'Raster-  oder Planquadrate erstellen' Größe"},
    {"mnuRasterBearbeiten", "", "FrmRaster 'Raster-  oder Planquadrate erstellen' 50"},
    {"mnuRasterEinblenden", "",
     "50.Typ=-17; A-1.Typ=-16; B-1.Typ=-16; Rückgängig=Rückgängig: Planquadrat ändern"},
    {"mnuRasterAktiv", "", "Raster aktiv=aus"},
    {"mnuRasterDelete", "", "*-50; -A-1; -B-1; Raster aktiv=aus; Rückgängig=Rückgängig: Planquadrate löschen"},
    {"Ok", "Otter", "Hand="},
    {"ObjForeAll", "Moor", "*Reihenfolge ReOtJBiBaHaZaMaNoBiStTuGeStA-B-50Mo; Rückgängig=Rückgängig: Verschieben"},
    {"ObjBackAll", "Moor", "*Reihenfolge MoReOtJBiBaHaZaMaNoBiStTuGeStA-B-50; Rückgängig=Rückgängig: Verschieben"},
    {"FrameOnOff", "Otter", "Otter.RA=101"},
    {"FootPoint", "Reh", "Status=Bezugspunkt verschieben: lin*; Werkzeug=Rfline"},
    {"Label", "Bach", "Bach.Größe=-10"},
    {"Lupe", "", "Lupe=an; Status=Lupe: Klicken vergrößert die*"},
    {"ZoomMenu", "", "Menü mnuZoom"},
    {"MapButton", "", "Karte maximiert=aus"},
    {"DataMenu", "", "Menü mnuDaten"},
};
// clang-format on

// One effect, told by two commands on purpose.
const QStringList alike = {"mnuObjVisJa", "mnuObjActivJa", "MapButton"};

class WithInHand : public Commands, public testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(EveryKind, WithInHand,
                         testing::Values("J", "Bild", "Bach", "Moor", "Haus", "Zaun", "Mass", "Nordpfeil", "A-1",
                                         "Geist", "Stein", "Turm"));

// Symbol, picture, line, area, figures, scale, arrow, square, one that is hidden, inactive or marked.
TEST_P(WithInHand, NoCommandGoesWrong) {
  for (const Command& command : Command_Table()) {
    if (command.hand == Hand::Free && command.key != "mnuMapClose") continue;  // the kind does not matter to it
    Begin_Again();
    ASSERT_TRUE(Take_Entry(Key_Of(QString::fromUtf8(GetParam())))) << command.key;
    Expect_Bars(QString::fromUtf8(GetParam()));
    Run_Command(command.key, {1, {}});
    Close_Windows();
    EXPECT_FALSE(seen.join(u' ').contains(QLatin1String("Programmfehler"))) << command.key << seen.join(u' ');
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << command.key;
    if (!frmMDI.MapOpen || MapFile != map) continue;
    EXPECT_TRUE(Map.InHand.isEmpty() || rsEntries->HasRow(Map.InHand)) << command.key;
    EXPECT_TRUE(!command.step.isEmpty() || Rows() == untouched) << command.key << " changes the table";
  }
}

TEST_F(Commands, WhatStaysOpenBesideTheMapGoesWithIt) {
  const auto open = [this] {
    QStringList names;
    for (const QDialog* dialog : window->findChildren<QDialog*>())
      if (dialog->isVisible()) names << dialog->metaObject()->className();
    return names;
  };
  int beside = 0;
  for (const Command& command : Command_Table()) {
    if (command.procedure || command.key == "mnuFluraxFini") continue;
    for (const char* hand : {"", "Otter", "Moor", "Haus", "Zaun"}) {
      Begin_Again();
      if (*hand) Take_Entry(Key_Of(QString::fromUtf8(hand)));
      if (!Run_Command(command.key, {1, {}}) || open().isEmpty()) continue;
      ++beside;
      Close_Map();
      Settle();
      EXPECT_EQ(open(), QStringList()) << command.key;
      break;
    }
  }
  EXPECT_GE(beside, 15);
}

// By the menu or, where it stands in none, as a button calls it.
TEST_F(Commands, EachDoesWhatItSays) {
  QMap<QString, QString> told;
  for (const auto& [key, hand, effect] : expected) {
    const Command* command = Find_Command(key);
    ASSERT_NE(command, nullptr) << key;
    Begin_Anew();
    if (*hand) {
      ASSERT_TRUE(Take_Entry(Key_Of(QString::fromUtf8(hand)))) << key;
    }
    Prepare(key);
    events.StateChanged.Emit();
    const auto before = Rows();
    const int steps = Step_Position();
    const int line = command->kind != CommandKind::List ? 0 : command->key == "mnuMapFile" ? 2 : 1;
    QAction* action = window->Action(key, line);
    const QString done = Effect_Of([&] { action ? action->trigger() : (void)Run_Command(key); });
    const QString wanted = QString::fromUtf8(effect);
    if (window->isVisible()) Expect_Bars(key);
    EXPECT_TRUE(QRegularExpression(QRegularExpression::wildcardToRegularExpression(wanted)).match(done).hasMatch())
        << key << ":\n  " << done.toStdString() << "\n  " << wanted.toStdString();
    EXPECT_TRUE(!command->step.isEmpty() || !frmMDI.MapOpen || MapFile != map || Rows() == before ||
                QString(key).startsWith("mnuStep"))
        << key << " changes the table without a name for its step";
    if (frmMDI.MapOpen && MapFile == map && !QString(key).startsWith("mnuStep") && Rows() != before) {
      const auto after = Rows();
      EXPECT_EQ(Step_Position(), steps + 1) << key;
      Run_Command("mnuStepBack");
      EXPECT_EQ(Rows(), before) << key << " is not taken back: " << Step_Forward_Text();
      Run_Command("mnuStepForward");
      EXPECT_EQ(Rows(), after) << key << " is not brought again";
    }
    // Exchanged wires are seen only where no two effects are the same.
    if (alike.contains(key)) continue;
    EXPECT_FALSE(told.contains(done)) << key << " does the same as " << told[done];
    told[done] = key;
  }
  EXPECT_EQ(std::size(expected), Command_Table().size());
}
