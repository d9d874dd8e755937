#pragma once
#include "support/hand_fixture.h"

// Rows of every kind, and the whole table as text.
class BulkTest : public HandTest {
 protected:
  static EntryRow Make(int typ, const QString& id, const QString& text, int x, int y, int x2 = 0, int y2 = 0) {
    return {id, text, "Arial", 10, 0, 0, -1, x, y, x2, y2, typ};
  }
  // The row is current afterwards; its key.
  static QString Add(const EntryRow& row) {
    const QString key = HandTest::Add(row);
    Go(key);
    return key;
  }
  static QString Add_Text(const QString& text, int x = 10, int y = 20, int typ = 0) {
    return Add(Make(typ, QStringLiteral("Text"), text, x, y));
  }
  static QString Add_Polygon(const QString& name, const std::vector<QPoint>& points, int typ = 4) {
    Write_Vertices(name, points);
    return Add(Make(typ, name, name, points[0].x(), points[0].y(), 2, 1));
  }
  static void Go(const QString& key) {
    rsEntries->SetBookmark(key);
    Map.CurBookmark = key;
  }
  static int Typ(const QString& key) { return Row(key).Typ; }
  static QStringList Whole_Table() { return Content_Of(*dbEntries); }
};
