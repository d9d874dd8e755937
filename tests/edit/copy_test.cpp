#include "edit/copy.h"

#include "hand/leave_hand.h"
#include "support/bulk_fixture.h"
#include "support/refused_writes.h"
#include "view/picture_cache.h"

namespace {

class Copies : public BulkTest {
 protected:
  // The current row after a copy.
  static EntryRow Copied(QString key) {
    Go(key);
    Copy_Entry();
    EXPECT_NE(Map.CurBookmark, key);
    return Read_Entry(*rsEntries);
  }
};

TEST_F(Copies, TextIsPrefixedOnceAndCutToItsColumn) {
  const QString text = Add(Make(203, "-Text>Flaeche1<7", "Fund", 100, 100, 150, 160));
  EXPECT_EQ(Copied(text), Make(3, "-Text>Flaeche1", "Kopie: Fund", 130, 130, 180, 190));
  EXPECT_EQ(Copied(Map.CurBookmark).Eintrag, QString("Kopie: Fund"));
  EXPECT_EQ(Copied(Add_Text(QString(73, 'x'))).Eintrag, QStringLiteral("Kopie: ") + QString(72, 'x'));
  const QString bird = QStringLiteral("🐦");  // two surrogates, one character of the column
  EXPECT_EQ(Copied(Add_Text(QString(71, 'x') + bird + bird)).Eintrag,
            QStringLiteral("Kopie: ") + QString(71, 'x') + bird);
  EXPECT_EQ(Copied(Add(Make(5, "Bild", "Bild.bmp", 10, 10))).Eintrag, QString("Bild.bmp"));
  EXPECT_EQ(Copied(Add({"Text", "J", "Wingdings", 10, 0, 0, -1, 10, 10, 0, 0, 0})).Eintrag, QString("J"));
}

TEST_F(Copies, CopiesStayInsideTheWindow) {
  const int right = Map.ScaleWidth, low = Map.ScaleHeight;
  const std::pair<QPoint, QPoint> cases[] = {{{0, 0}, {30, 30}},
                                             {{right - 10, low - 10}, {right - 40, low - 40}},
                                             {{right - 45, low - 50}, {right - 30, low - 30}},
                                             {{right + 500, -200}, {right - 30, 0}}};
  for (const auto& [source, copy] : cases) {
    const EntryRow made = Copied(Add_Text("a", source.x(), source.y()));
    EXPECT_EQ(QPoint(made.Xmap, made.Ymap), copy);
  }
}

TEST_F(Copies, ShapesGetTheirOwnNumberAndVertices) {
  ASSERT_TRUE(Add_Column({QStringLiteral("Komment"), FieldType::Text, 30}, {}));
  const QString line = Add_Polygon("Linie0", {{10, 10}, {60, 20}, {stopMark, 0}, {1, 1}});
  Set_Field(column::ID, QStringLiteral("Linie0 - P0110L2.5B1.0"));
  Set_Field(rsEntries->FieldIndex(QStringLiteral("Komment")), QStringLiteral("eigene Spalte"));
  EXPECT_EQ(Copied(line).ID, QString("Linie1 - P0110L2.5B1.0"));
  EXPECT_EQ(rsEntries->Text(QStringLiteral("Komment")), QString("eigene Spalte"));
  const auto& points = *dbEntries->Points("Linie1");
  ASSERT_EQ(points.size(), 4U);
  EXPECT_EQ(points[1].x, 90);
  EXPECT_EQ(points[2].x, stopMark);
  EXPECT_EQ(Load_Vertices("Linie0"), (std::vector<QPoint>{{10, 10}, {60, 20}}));
  Add(Make(20, "Figur6", "", 1, 1, 9, 9));
  const QString free = Add_Polygon("Figur2", {{50, 60}, {80, 70}, {50, 90}}, 25);
  Go(free);
  Place_Duplicate(free, {200, 100});
  EXPECT_EQ(rsEntries->Text(column::ID), QString("Figur7"));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), QString("Figur2"));
  EXPECT_EQ(Load_Vertices("Figur7"), (std::vector<QPoint>{{200, 100}, {230, 110}, {200, 130}}));
}

TEST_F(Copies, ACopyThatFailsLeavesNoTrace) {
  Add_Polygon("Linie0", {{10, 10}, {32760, 20}});
  const QString damaged = Add(Make(20, "Figur", "", 1, 1, 9, 9));
  const QStringList before = Whole_Table();
  MessageScript script("Keine Nummer");
  Go(damaged);
  Copy_Entry();
  rsEntries->MovePrevious();
  Map.CurBookmark = rsEntries->Bookmark();
  script.Expect("nichts verändert");
  Copy_Entry();
  EXPECT_EQ(Whole_Table(), before);
}

TEST_F(Copies, PicturesFromFileAndClipboard) {
  const QString file = Path("Bild.bmp");
  Save_Picture(Make_Canvas(20, 10), file);
  ASSERT_LE(file.size(), 79);
  ASSERT_TRUE(Add_Picture({30, 40}, file));
  EXPECT_EQ(Read_Entry(*rsEntries).Eintrag, file);
  EXPECT_EQ(Read_Entry(*rsEntries).Typ, 5);
  const QString longName = Path(QString(80, 'l') + ".bmp");
  Save_Picture(Make_Canvas(21, 10), longName);
  ASSERT_TRUE(Add_Picture({30, 40}, longName));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), QString("PicImport/Pic-1.bmp"));
  ASSERT_TRUE(Add_Picture({30, 40}, Make_Canvas(22, 10)));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), QString("PicImport/Pic-2.bmp"));
  EXPECT_EQ(Entry_Picture("PicImport/Pic-1.bmp").width(), 21);
  EXPECT_EQ(Entry_Picture("PicImport/Pic-2.bmp").width(), 22);
  Kill(Path("PicImport/Pic-1.bmp"));
  ASSERT_TRUE(Size_Picture(PictureSizing::Proportional, 44, 0));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), QString("PicImport/Pic-1.bmp")) << "the lowest free number";
  EXPECT_EQ(Entry_Picture("PicImport/Pic-1.bmp").size(), QSize(44, 20));
  ASSERT_TRUE(Size_Picture(PictureSizing::Free, 5, 60));
  EXPECT_EQ(Entry_Picture("PicImport/Pic-3.bmp").size(), QSize(5, 60));
}

TEST_F(Copies, PicturesThatCannotBeHadAddNoRow) {
  const QStringList before = Whole_Table();
  Write_Lines(Path("Text.bmp"), {"kein Bild"});
  MessageScript script("kein lesbares Bild");
  EXPECT_FALSE(Add_Picture({1, 1}, Path("Text.bmp")));
  File_Write_Fault = [](const QString& path, qint64) { return path.contains("PicImport") ? 61 : 0; };
  script.Expect("kann nicht gespeichert werden");
  EXPECT_FALSE(Add_Picture({1, 1}, Make_Canvas(9, 9)));
  File_Write_Fault = nullptr;
  script.Expect("zu groß");
  EXPECT_FALSE(Add_Picture({1, 1}, QImage(40000, 2000, QImage::Format_Mono)));
  EXPECT_EQ(Whole_Table(), before);
  EXPECT_TRUE(QDir(Path("PicImport")).entryList(QDir::Files).isEmpty());
}

TEST_F(Copies, PastedText) {
  ASSERT_TRUE(::Add_Text(QPoint(40, 50), QStringLiteral("eins\r\nzwei\r\n")));
  EXPECT_EQ(rsEntries->Text(column::Eintrag), QString("eins\r\nzwei"));
  EXPECT_EQ(Map.Text2.Tag, EditTag::Old);
  MessageScript script("5000000 Zeichen");
  EXPECT_FALSE(::Add_Text(QPoint(40, 50), QString(5'000'000, 'x')));
  // One that cannot be written leaves nothing behind.
  Refuse_Rows(*dbEntries, QStringLiteral("Eintrag = 'Zettel'"));
  EXPECT_NE(Error_Of([] { ::Add_Text({50, 50}, "Zettel"); }), 0);
  EXPECT_TRUE(Leave_Hand()) << "what was not pasted is not stored later";
  EXPECT_EQ(Texts(), QStringList("eins\r\nzwei"));
}

}  // namespace
