#pragma once
#include "support/rows.h"

// A row at the end of a table file that is not the open one.
inline void Append_Row(Database& database, const EntryRow& row) {
  const auto rows = database.OpenRecordset(QStringLiteral("MapData"));
  rows->AddNew();
  Write_Entry(*rows, row);
  rows->Update();
}

// A new table file of a map of 400 x 300 pixels.
inline std::unique_ptr<Database> Make_Table_File(const QString& path, const QString& map) {
  auto database = Workspace::CreateDatabase(path);
  Make_Template(*database);
  HeaderRow header;
  header.mapName = map;
  header.width = 400;
  header.height = 300;
  Append_Row(*database, header.ToEntry());
  return database;
}

// All rows, the header first.
inline std::vector<EntryRow> Rows_Of(Database& database) {
  const auto rows = database.OpenRecordset(QStringLiteral("MapData"));
  std::vector<EntryRow> all;
  for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) all.push_back(Read_Entry(*rows));
  return all;
}

// A map whose table is loaded, without a window.
class TableTest : public FluraxTest {
 protected:
  void Name_Map(const QString& name = QStringLiteral("Karte.bmp")) {
    MapFile = Path(name);
    MapWidthPx = 400;
    MapHeightPx = 300;
    Map.Caption = QStringLiteral("Map: ") + Capitals(MapFile);
  }
  void Open_Table(const QString& name = QStringLiteral("Karte.bmp")) {
    Name_Map(name);
    ASSERT_TRUE(Load_Table(LoadMode::First));
  }
  void TearDown() override {
    Close_Table(CloseMode::CloseOnly);
    FluraxTest::TearDown();
  }
  static EntryRow Text(const QString& text, int x = 10, int y = 20) {
    return {.ID = "Text", .Eintrag = text, .Schrift = "Arial", .Groesse = 10, .HG = 15, .Xmap = x, .Ymap = y};
  }
  static EntryRow Entry(const QString& id, int typ, const QString& text = QStringLiteral("x")) {
    EntryRow row = Text(text);
    row.ID = id;
    row.Typ = typ;
    return row;
  }
  static void Add(const EntryRow& row) {
    Append_Entry(row);
    rsEntries->MoveLast();
    Map.CurBookmark = rsEntries->Bookmark();
  }
  static QStringList Texts_Of(Recordset& rows) {
    QStringList texts;
    rows.MoveFirst();
    for (rows.MoveNext(); !rows.Eof(); rows.MoveNext()) texts.append(rows.Text(column::Eintrag));
    return texts;
  }
  static QStringList Texts() {
    const KeepCurrentRow keep;
    return Texts_Of(*rsEntries);
  }
  // Texts of a table file that is not open.
  static QStringList Texts_In(const QString& path) {
    return Texts_Of(*Workspace::OpenDatabase(path)->OpenRecordset(QStringLiteral("MapData")));
  }
  static void Go_To(int position) {
    rsEntries->MoveTo(position);
    Map.CurBookmark = rsEntries->Bookmark();
  }
};

// One whose table is open from the start.
class OpenTableTest : public TableTest {
 protected:
  void SetUp() override {
    TableTest::SetUp();
    Open_Table();
  }
};
