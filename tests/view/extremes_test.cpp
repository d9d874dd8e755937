#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include "plansquares/raster_rows.h"
#include "printing/page_preview.h"
#include "printing/print_map.h"
#include "printing/sheet_painter.h"
#include "store/transaction.h"
#include "support/bulk_fixture.h"
#include "support/recording_surface.h"

// Rows that another program has written: texts of megabytes, the largest fonts. They are drawn, taken in hand and
// printed in no time. Numbers beyond all columns: tests/fuzz/table_rows.cpp.

namespace {

class ExtremeRows : public BulkTest {
 protected:
  // A row as the file takes it; the program itself could not write it.
  static void Insert(int typ, const QString& column, const QString& value, const QString& id = QStringLiteral("Text")) {
    dbEntries->Execute(QStringLiteral("INSERT INTO MapData VALUES ('%1', 'Käfer', 'Arial', 12, 1, 14, 0, 40, 50, 90, "
                                      "80, %2)")
                           .arg(id)
                           .arg(typ));
    dbEntries->Execute(QStringLiteral("UPDATE MapData SET \"%1\" = %2 WHERE rowid = (SELECT max(rowid) FROM MapData)")
                           .arg(column, value));
    rsEntries->Requery();
  }
  // The ways every row goes: the window, the hand, the small picture of the sheets, paper.
  static void Show_Everywhere() {
    Map_Redraw();
    QStringList keys;
    For_Each_Entry([&keys] { keys << rsEntries->Bookmark(); });
    for (qsizetype i = 0; i < keys.size(); i += 10) {
      Take_Entry(keys[i]);
      Drop_Hand();
    }
    const Paper paper;
    const PrintGeometry geometry = Print_Geometry({}, paper, Map_To_Print());
    Draw_Preview(Make_Preview_Map(), geometry, paper, QSize(200, 200));
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QPdfWriter writer(&file);
    QPainter page(&writer);
    SheetLook look;
    look.background = false;
    Draw_Sheet(page, writer.resolution(), geometry, Sheet_Walk(geometry).front(), look);
  }
};

// Each of these took seconds, and the largest font had no end.
TEST_F(ExtremeRows, MegabytesAndHugeFonts) {
  MessageScript script(MsgAnswer::No);
  Write_Vertices("Flaeche1", {{10, 10}, {60, 10}, {60, 60}});
  const QString letters = "replace(hex(zeroblob(1000000)), '0', 'W')";
  In_Transaction([&letters] {
    for (const int typ : {0, 2, 4, 5, 11, 16, 20})
      for (const char* column : {"ID", "Eintrag", "Schrift"})
        Insert(typ, QString::fromUtf8(column), letters,
               typ == 4    ? u"Flaeche1"_s
               : typ == 16 ? Plan_Id("A-1")
                           : u"Text"_s);
    for (int row = 1; row <= 20; ++row)
      for (int col = 1; col <= 20; ++col) Insert(16, "Xmap", QString::number(40 * col), Plan_Id(Square_Name(col, row)));
    Insert(17, "Größe", "1e17", Plan_Id("Raster"));
    dbEntries->Execute("UPDATE MapData SET Xmap = 101, Ymap = 2 WHERE Typ = 17");
  });
  rsEntries->Requery();
  Show_Everywhere();
  RecordingSurface paper(QRectF(0, 0, 800, 600));
  DrawContext context{.surface = paper, .view = {}, .window = paper.Extent()};
  Draw_Entries(context);
  for (const auto& call : paper.calls) {
    const double width = call.points.size() == 2 ? call.points[1].x() - call.points[0].x() : 0;
    EXPECT_LE(width, 8.0 * longestShown) << call.what;
  }
}

}  // namespace
