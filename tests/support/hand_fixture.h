#pragma once
#include "hand/tool_state.h"
#include "maps/map_open.h"
#include "support/map_room.h"
#include "support/rows.h"
#include "tools/drag.h"
#include "tools/mouse.h"

// An open map of 1600 x 1200 pixels in a window of 820 x 620, and the ways of a user's hand on it.
class HandTest : public FluraxTest, public RowsOfTable {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
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
    return {"Text", text, "Arial", 12, 0, 14, -100, x, y, 0, 0, typ};
  }
  static EntryRow Figure_Row(int kind, QRect box) {
    return {"Figur1", "Figur", "F 1", 12, 0, 14, -100, box.x(), box.y(), box.width(), box.height(), kind};
  }
  // A line or area; without vertices its table is missing.
  static EntryRow Poly_Row(const QString& name, int labelX, int labelY, const std::vector<QPoint>& vertices) {
    if (!vertices.empty()) Create_Vertex_Table(name);
    if (!vertices.empty()) Write_Vertices(name, vertices);
    return {name, name, "Arial", 12, 0, 14, -100, labelX, labelY, 1, 1, 4};
  }

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
  // What the tools paint over the map, as one path.
  static QPainterPath Painted_Over() {
    QPainterPath path;
    for (const OverLine& line : Map_Paint_Over()) path.addPath(line.path);
    return path;
  }
  static QRect Box(const LiveControl& control) { return {control.Left, control.Top, control.Width, control.Height}; }
};
