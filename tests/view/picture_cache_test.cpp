#include "view/picture_cache.h"

#include <sys/stat.h>

#include "maps/map_close.h"
#include "maps/map_open.h"
#include "view/redraw.h"

namespace {

constexpr qint64 pictureBytes = 100 * 100 * 4;

class PictureCache : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    Forget_Entry_Pictures();
    former = Bound_Entry_Pictures(qint64{1} << 30);
  }
  void TearDown() override {
    Forget_Entry_Pictures();
    Bound_Entry_Pictures(former);
    FluraxTest::TearDown();
  }
  QString Put(int number) {
    const QString name = Path(QString("Bild%1.bmp").arg(number));
    EXPECT_TRUE(Make_Canvas(100, 100, qRgb(number % 256, number / 256, 9)).save(name));
    return name;
  }
  qint64 former = 0;
};

TEST_F(PictureCache, KeepsWhatWasAskedLastWithinItsBound) {
  QStringList names;
  for (int i = 0; i < 5; ++i) names << Put(i);
  Bound_Entry_Pictures(3 * pictureBytes);
  std::vector<QImage> shown;
  for (int i = 0; i < 3; ++i) shown.push_back(Entry_Picture(names[i]));
  EXPECT_EQ(Entry_Pictures_Kept(), 3 * pictureBytes);
  EXPECT_EQ(Entry_Picture(names[0]).cacheKey(), shown[0].cacheKey());
  Entry_Picture(names[3]);  // in the place of the second, which was not asked for the longest
  EXPECT_EQ(Entry_Pictures_Kept(), 3 * pictureBytes);
  EXPECT_EQ(Entry_Picture(names[0]).cacheKey(), shown[0].cacheKey());
  EXPECT_EQ(Entry_Picture(names[2]).cacheKey(), shown[2].cacheKey());
  EXPECT_NE(Entry_Picture(names[1]).cacheKey(), shown[1].cacheKey());
  EXPECT_EQ(shown[1].pixel(50, 50), qRgb(1, 0, 9));  // who still has it is not disturbed
  // Reduced copies count as well, and one picture is kept however large it is.
  EXPECT_EQ(Entry_Picture(names[4], 2.0).size(), QSize(50, 50));
  EXPECT_LE(Entry_Pictures_Kept(), 3 * pictureBytes);
  Bound_Entry_Pictures(1);
  const QImage large = Entry_Picture(names[2]);
  EXPECT_EQ(Entry_Picture(names[2], 2.0).size(), QSize(50, 50));
  EXPECT_EQ(Entry_Picture(names[2]).cacheKey(), large.cacheKey());
  EXPECT_EQ(Entry_Pictures_Kept(), pictureBytes + pictureBytes / 4);
}

TEST_F(PictureCache, ManySmallOnesAreDroppedOneByOneAndAllWithTheMap) {
  std::vector<QImage> shown;
  for (int i = 0; i < 520; ++i) {
    const QString name = Put(i);
    shown.push_back(Entry_Picture(name));
    ASSERT_EQ(Entry_Picture(name, 4.0).width(), 25) << i;
  }
  EXPECT_EQ(Entry_Pictures_Kept(), 500 * (pictureBytes + pictureBytes / 16));
  for (size_t i = 0; i < shown.size(); ++i)
    ASSERT_EQ(shown[i].pixel(99, 99), qRgb(static_cast<int>(i % 256), static_cast<int>(i / 256), 9));
  Open_Map(Make_Map());
  Entry_Picture(Put(1));
  Entry_Picture(Put(2), 3.0);
  EXPECT_GT(Entry_Pictures_Kept(), 0);
  Close_Map();
  EXPECT_EQ(Entry_Pictures_Kept(), 0);
}

TEST_F(PictureCache, AFailureNamesThePictureUntilItIsPutRight) {
  ASSERT_EQ(::mkfifo(Path("Leitung.bmp").toUtf8().constData(), 0600), 0);
  Replace_File(Path("kaputt.png"), "kein Bild");
  for (const auto& [file, why] :
       {std::pair{"Leitung.bmp", "Leitung"}, {"kaputt.png", "kein Bild"}, {"fehlt.bmp", "Bild fehlt: "}})
    for (int round = 0; round < 2; ++round) {
      const QString name = Path(file);
      EXPECT_TRUE(Entry_Picture(name).isNull() && Entry_Picture(name, 2.0).isNull()) << file;
      const QString flaw = Entry_Picture_Flaw(name);
      EXPECT_TRUE(flaw.contains(name) && flaw.contains(why)) << flaw;
    }
  // A file that is put right is read anew.
  Make_Canvas(7, 5).save(Path("heil.png"));
  Kill(Path("kaputt.png"));
  EXPECT_TRUE(Entry_Picture(Path("kaputt.png")).isNull());
  File_Rename(Path("heil.png"), Path("kaputt.png"));
  EXPECT_EQ(Entry_Picture(Path("kaputt.png")).size(), QSize(7, 5));
  EXPECT_TRUE(Entry_Picture_Flaw(Path("kaputt.png")).isEmpty());
}

}  // namespace
