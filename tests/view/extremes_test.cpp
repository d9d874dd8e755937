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

// Rows that another program has written: numbers beyond all columns, texts of megabytes. They are drawn, taken in hand
// and printed as if they were none, or not at all, but in no time.

namespace {

class ExtremeRows : public BulkTest {
 protected:
  static constexpr qint64 least = std::numeric_limits<qint64>::min(), most = std::numeric_limits<qint64>::max();

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
  static QString Id_Of(int typ) {
    if (typ == 4 || typ == 40) return QStringLiteral("Flaeche1");
    if (typ >= 20 && typ <= 25) return QStringLiteral("Figur2");
    if (typ == -12) return QStringLiteral("Np");
    return typ == 16 || typ == 17 ? Plan_Id(QStringLiteral("A-1")) : QStringLiteral("Text");
  }
  // The ways every row goes: the window, the hand, the small picture of the sheets, paper.
  static void Show_Everywhere() {
    Map_Redraw();
    QStringList keys;
    For_Each_Entry([&keys] { keys << rsEntries->Bookmark(); });
    const qsizetype step = 1 + keys.size() / 40;  // some of many
    for (qsizetype i = 0; i < keys.size(); i += step) {
      try {
        Take_Entry(keys[i]);
      } catch (const Error& error) {
        EXPECT_EQ(error.number, errors::overflow) << error.text;  // such a row belongs to the repair
      }
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

constexpr int kinds[] = {0, 1, 2, 3, 4, 5, 7, 11, -12, 15, 16, 17, 18, 20, 21, 22, 23, 24, 25, 40};

TEST_F(ExtremeRows, NumbersBeyondEveryColumn) {
  MessageScript script(MsgAnswer::No);
  Write_Vertices("Flaeche1", {{10, 10}, {60, 10}, {60, 60}});
  Write_Vertices("Figur2", {{10, 10}, {60, 10}, {60, 60}});
  Map.ScaleWidth = Map.ScaleHeight = 120;  // less to paint for each row
  const QStringList values = {QString::number(least), QString::number(most), "-32768", "32767", "1e300", "-9e999"};
  for (const QString& value : values) {
    In_Transaction([&value] {
      for (const int typ : kinds)
        for (const char* column : {"Größe", "VG", "HG", "RA", "Xmap", "Ymap", "Xline", "Yline"})
          Insert(typ, QString::fromUtf8(column), value, Id_Of(typ));
      Insert(0, "Typ", value);
    });
    Show_Everywhere();
    dbEntries->Execute("DELETE FROM MapData WHERE rowid > 1");
    rsEntries->Requery();
  }
}

TEST_F(ExtremeRows, TextsThatMeanNothing) {
  MessageScript script(MsgAnswer::No);
  Write_Vertices("Linie1", {{10, 10}, {60, 10}, {60, 60}});
  Map.ScaleWidth = Map.ScaleHeight = 120;
  In_Transaction([] {
    for (const int typ : kinds) {
      for (const char* schrift : {"'Arial-C9e9<-1e308'", "'F9<9e999'", "'F-1'", "'<<<---'", "'1e999'"})
        Insert(typ, "Schrift", schrift, Id_Of(typ));
      for (const char* id : {"'Linie1 - P1111L9e9B9e9<9e99'", "'-!-'", "'Plan' || char(31) || 'A-99999999999'", "'<>'"})
        Insert(typ, "ID", id);
    }
  });
  Show_Everywhere();
}

TEST_F(ExtremeRows, VerticesBeyondTheMap) {
  const QString last = QString::number(std::numeric_limits<int>::max());
  const QString first = QString::number(std::numeric_limits<int>::min());
  for (const char* name : {"Flaeche1", "Figur2"}) {
    Create_Vertex_Table(name);
    for (const QString& pair : {"5, " + first, last + ", 5", "5, " + last, QString("0, 0"), first + ", 1"})
      dbEntries->Execute(QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(name, pair));
  }
  EXPECT_EQ(Load_Vertices("Flaeche1"),
            (std::vector<QPoint>{{5, -32768}, {32767, 5}, {5, 32767}, {0, 0}}));  // the last one ends it
  for (const int typ : {4, 40, 24, 25}) Insert(typ, "Yline", "3", Id_Of(typ));
  Show_Everywhere();
}

// Each of these took seconds, and the largest font had no end.
TEST_F(ExtremeRows, MegabytesAndHugeFonts) {
  MessageScript script(MsgAnswer::No);
  Write_Vertices("Flaeche1", {{10, 10}, {60, 10}, {60, 60}});
  const QString letters = "replace(hex(zeroblob(1000000)), '0', 'W')";
  In_Transaction([&letters] {
    for (const int typ : {0, 2, 4, 5, 11, 16, 20})
      for (const char* column : {"ID", "Eintrag", "Schrift"})
        Insert(typ, QString::fromUtf8(column), letters, Id_Of(typ));
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
