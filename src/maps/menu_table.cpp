#include "maps/menu_table.h"

#include <algorithm>

// clang-format off

const QStringList& Menu_Bar() {
  static const QStringList keys = {"mnuKarte", "mnuEintraege", "mnuObjekt", "mnu_Grid", "mnuDaten", "mnuFenster",
                                   "mnuHilfe"};
  return keys;
}

const std::vector<MenuRow>& Menu_Table() {
  static const std::vector<MenuRow> menus = {
      {"mnuKarte", "&Karte",
       {"mnuMapNeu", "mnuFOpen", "mnuMapGeo", "mnuMapLoad", "mnuNoTable", "mnuMapClose",
        "-", "mnuMapSize", "mnuMalprogramm", "mnuZoom", "mnuBildHell", "mnuBildDunkel",
        "-", "mnuBlattschnitt", "mnuRand", "mnuDruckpfad", "mnuPrintMap", "mnuPrintScreen", "mnuMapExport",
        "-", "mnuOptionen",
        "-", "mnuMapFile",
        "-", "mnuFluraxFini"}, Needs::Nothing},
      {"mnuMalprogramm", "&Malprogramm", {"mnuMalprgOpen", "mnuMalprg"}},
      {"mnuZoom", "&Zoom",
       {"mnuZoomIn", "mnuZoomOut",
        "-", "mnuZoom200", "mnuZoom100", "mnuZoom75", "mnuZoom50", "mnuZoom25", "mnuZoom10",
        "-", "mnuZoomBreite", "mnuZoomHoehe", "mnuZoomFak"}, Needs::OpenMap, "zoom"},

      {"mnuEintraege", "&Einträge",
       {"mnuStepBack", "mnuStepForward", "mnuReset", "mnuVerlauf", "mnuStaende",
        "-", "mnuTableNeu", "mnuTableLoad", "mnuTableSave", "mnuTableSaveAs", "mnuTableRe",
        "-", "mnuImportMenu", "mnuExportMenu", "mnuExchangeMenu",
        "-", "mnuEintrDupl", "mnuEintrCopy", "mnuEintrPaste", "mnuMoveObjects", "mnuReplace", "mnuPropTransfer",
        "mnuSql", "mnuSpaceDel",
        "-", "mnuTabelle",
        "-", "mnuOverlay"}},
      {"mnuImportMenu",
       "&importieren",
       {"mnuImportCSV", "mnuImportXL", "mnuImportGPS", "mnuOVL_Import", "mnuImportMDB", "mnuImporttkr", "mnuImporttkrAll"}},
      {"mnuExportMenu", "e&xportieren", {"mnuExportCSV", "mnuExportCSVTable", "mnuExportxls", "mnuExporttkr"}},
      {"mnuExchangeMenu", "austauschen", {"mnuExChangeXL", "mnuExChangeAVI"}},
      {"mnuTabelle", "&Tabelle",
       {"mnuDBGridOn", "mnuSpaltAppend", "mnuSpaltDelete", "mnuSpaltHide", "mnuSpaltShow",
        "-", "mnuTabComp", "mnuTabRep", "mnuTblPrint"}},

      {"mnuObjekt", "&Objekt",
       {"mnuObjInsert", "mnuMass",
        "-", "mnuSchrift", "mnuFarbe", "mnuFigFill", "mnuBreite", "mnuRahmen", "mnuRfline",
        "-", "mnuObjFore", "mnuObjBack", "mnuLnStil", "mnuLnEnd", "mnuKanten", "mnuFigur", "mnuEigenschaften",
        "mnuFigKorr", "mnuFlTemplateSave", "mnuFlTemplateGet", "mnuPicSize", "mnuFootDel", "mnuCalc",
        "-", "mnuObjVis", "mnuObjActiv",
        "-", "mnuMark", "mnuJust", "mnuAssign",
        "-", "mnuObjDel"}},
      {"mnuObjInsert", "Objekt &einfügen",
       {"mnuInsText", "mnuInsSymbol", "mnuInsBild", "mnuInsLinie", "mnuInsFl", "mnuInsDigi", "mnuInsMass", "mnuInsFigur",
        "mnuInsNord"}, Needs::NoEntryInHand},
      {"mnuObjVis", "&unsichtbar",
       {"mnuObjVisJa", "mnuObjVisNein", "-", "mnuObjVisNo", "mnuObjVisX", "mnuObjVisAll"}},
      {"mnuObjActiv", "&inaktiv",
       {"mnuObjActivJa", "mnuObjActivNein", "-", "mnuObjActNo", "mnuObjActX", "mnuObjActAll"}},
      {"mnuMark", "&Markieren", {"mnuMarkObj", "mnuUnmark", "mnuMarkDel", "mnuGroup"}},
      {"mnuJust", "&Justieren", {"mnuJustLinks", "mnuJustRechts", "mnuJustOben", "mnuJustUnten", "mnuJustGleich"},
       Needs::TwoMarks},
      {"mnuAssign", "&Zuordnen", {"AdMark", "AdMarkLin", "AdObj", "AdObjLin", "AdNo"}},

      {"mnu_Grid", "&Grid",
       {"- Koordinatennetz", "mnuGridmake", "mnuChooseGrid", "mnuGridonoff", "mnuGridDel",
        "-", "mnuGridXYShow", "mnuGridXYInput",
        "-", "mnuRaster"}},
      {"mnuRaster", "&Planquadrate",
       {"mnuRasterErstellen", "mnuRasterBearbeiten", "mnuRasterEinblenden", "mnuRasterAktiv", "mnuRasterDelete"}},

      {"mnuDaten", "&Daten",
       {"mnuOverView", "mnuKataster", "mnuPopParm", "mnuMatrix", "mnuZuordBackgdColor",
        "-", "mnuDistanz", "mnuNachbar", "mnuDiagramme",
        "-", "mnuLaengen", "mnuFlaechen",
        "-", "mnuText",
        "-", "mnuRecentFile"}},
      {"mnuMatrix", "&Matrix der Arten", {"mnuMatrixXL", "mnuMatrixCSV"}, Needs::Entries},
      {"mnuDistanz", "Di&stanz", {"mnuDist_Einfach", "mnuDistPoly", "mnuDistBundle"}, Needs::Entries},
      {"mnuLaengen", "Linien&längen", {"mnuLaengeTxt", "mnuLaengeXL"}, Needs::Entries},
      {"mnuFlaechen", "&Flächengrößen", {"mnuFlGrosTxt", "mnuFlExcel"}, Needs::Entries},
      {"mnuText", "&Text",
       {"mnuTextNew", "mnuTextOpen", "mnuTextSave", "mnuResultSaveAs",
        "-", "mnuPrintTxt", "mnuTextFind", "mnuTextCut", "mnuTextCopy", "mnuTextPaste"}, Needs::OpenMap, "note"},

      {"mnuFenster", "&Fenster", {"mnuWEinpass", "-", "mnuWindow"}},
      {"mnuHilfe", "&Hilfe", {"mnuHelpIndex", "mnuHelpSettings", "mnuTipps", "-", "mnuInfo"}, Needs::Nothing},
  };
  return menus;
}

const QStringList& Popup_Table() {
  static const QStringList keys = {
      "mnuObjInsert",
      "-", "mnuObjVis", "mnuObjActiv", "mnuMark", "mnuJust", "mnuAssign",
      "-", "mnuSchrift", "mnuFigFill", "mnuObjFore", "mnuObjBack", "mnuKanten", "mnuFigKorr", "mnuPicSize",
      "mnuFootDel",
      "-", "mnuEintrDupl", "mnuEintrCopy", "mnuEintrPaste",
      "-", "mnuObjDel"};
  return keys;
}

// clang-format on

const MenuRow* Find_Menu(const QString& key) {
  const auto& menus = Menu_Table();
  const auto found = std::find_if(menus.begin(), menus.end(), [&](const MenuRow& menu) { return menu.key == key; });
  return found == menus.end() ? nullptr : &*found;
}

bool Shortcut_Of_Map(const QString& command) {
  return Find_Menu(QStringLiteral("mnuObjekt"))->rows.contains(command) ||
         Find_Menu(QStringLiteral("mnuMark"))->rows.contains(command) ||
         command.startsWith(QLatin1String("mnuEintr")) || command.startsWith(QLatin1String("mnuStep"));
}

QString Escaped_Caption(const QString& text) { return QString(text).replace(QLatin1Char('&'), QLatin1String("&&")); }
