#pragma once
#include "hand/activation.h"
#include "hand/tool_state.h"
#include "maps/map_open.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry.h"
#include "store/vertex_table.h"
#include "support/fixture.h"
#include "support/map_room.h"
#include "tools/drag.h"
#include "tools/mouse.h"
#include "view/redraw.h"
#include "view/view.h"

// An open map of 1600 x 1200 pixels in a window of 820 x 620, and the ways of a user's hand on it.
class HandTest : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    Connect_Canvas();
    Map.ScaleWidth = frmMDI.InnerWidth = 820;
    Map.ScaleHeight = frmMDI.InnerHeight = 620;
    Open_Map(Make_Map(QStringLiteral("Karte.bmp"), 1600, 1200));
    ASSERT_TRUE(frmMDI.MapOpen);
    Give_Map_Room(820, 620);
  }
  void TearDown() override {
    Drop_Hand();
    FluraxTest::TearDown();
  }

  static EntryRow Text_Row(const QString& text, int x, int y, int typ = 0) {
    EntryRow row;
    row.ID = QStringLiteral("Text");
    row.Eintrag = text;
    row.Schrift = QStringLiteral("Arial");
    row.Groesse = 12;
    row.HG = 14;
    row.RA = -100;
    row.Xmap = x;
    row.Ymap = y;
    row.Typ = typ;
    return row;
  }
  static EntryRow Figure_Row(int kind, QRect box) {
    EntryRow row = Text_Row(QStringLiteral("Figur"), box.x(), box.y(), kind);
    row.ID = QStringLiteral("Figur1");
    row.Schrift = QStringLiteral("F 1");
    row.Xline = box.width();
    row.Yline = box.height();
    return row;
  }
  // A line or area; without vertices its table is missing.
  static EntryRow Poly_Row(const QString& name, int labelX, int labelY, const std::vector<QPoint>& vertices) {
    EntryRow row = Text_Row(name, labelX, labelY, 4);
    row.ID = name;
    row.Xline = row.Yline = 1;
    if (vertices.empty()) return row;
    Create_Vertex_Table(name);
    Write_Vertices(name, vertices);
    return row;
  }
  static QString Add(const EntryRow& row) {
    Append_Entry(row);
    const KeepCurrentRow keep;
    rsEntries->MoveLast();
    return rsEntries->Bookmark();
  }
  static EntryRow Row(const QString& bookmark) {
    const KeepCurrentRow keep;
    rsEntries->SetBookmark(bookmark);
    return Read_Entry(*rsEntries);
  }
  static QPoint At(const QString& bookmark) { return {Row(bookmark).Xmap, Row(bookmark).Ymap}; }

  static void Click(QPoint at, MouseKeys keys = {}) {
    Map_Mouse_Down(at, MouseButton::Left, keys);
    Map_Mouse_Up(at, MouseButton::Left);
  }
  static void Drag(QPoint from, QPoint to) {
    Map_Mouse_Down(from, MouseButton::Left, {});
    Map_Mouse_Move((from + to) / 2, true);
    Map_Mouse_Move(to, true);
    Map_Mouse_Up(to, MouseButton::Left);
  }
  static QRect Box(const LiveControl& control) { return {control.Left, control.Top, control.Width, control.Height}; }
};
