#include "view/view.h"

#include "maps/map_close.h"
#include "maps/map_open.h"
#include "platform/for_now.h"
#include "support/looks.h"
#include "support/map_room.h"
#include "support/pixels.h"
#include "view/map_copies.h"
#include "view/reduce.h"

namespace {

// A map of 3000 x 2000 pixels in a window of 820 x 620.
class View : public FluraxTest {
 protected:
  void SetUp() override {
    FluraxTest::SetUp();
    Open(3000, 2000);
  }
  void Open(int width, int height) {
    Map.ScaleWidth = frmMDI.InnerWidth = 820;
    Map.ScaleHeight = frmMDI.InnerHeight = 620;
    Open_Map(Make_Map("Karte.bmp", width, height));
    ASSERT_TRUE(frmMDI.MapOpen);
    Give_Map_Room(820, 620);
  }
  const MapClipState& Clip() const { return Map.MapClip[static_cast<size_t>(Map.ClipLevel)]; }
};

TEST_F(View, BandsUseTheRightClipAndPercent) {
  const std::tuple<double, int, int, float> cases[] = {{0.5, 0, 200, 1}, {100.0 / 75, 1, 75, 100.0F / 75},
                                                       {2.0, 1, 50, 1},  {3.0, 2, 33, 1.5F},
                                                       {4.0, 2, 25, 1},  {10.0, 3, 10, 2.5F}};
  for (const auto& [zoom, level, percent, factor] : cases) {
    Set_Zoom(zoom);
    EXPECT_EQ(Map.ClipLevel, level) << zoom;
    EXPECT_EQ(Zoom_Percent(), percent) << zoom;
    EXPECT_FLOAT_EQ(Clip().factor, factor) << zoom;
    EXPECT_EQ(frmMDI.Caption, u"FLURAX - %1%"_s.arg(percent));
    EXPECT_NEAR(Clip().image.width(), std::min(3000.0, 3000 / zoom), 1.0) << zoom;
  }
  const int built = Clip_Builds();
  EXPECT_GT(built, 0);
  for (const double zoom : {4.0, 3.0, 2.0, 1.0, 0.5, 4.0}) Set_Zoom(zoom);
  EXPECT_EQ(Clip_Builds(), built) << "going back builds nothing";
  Map.Zoom = 0.0F;
  Layout_Map();
  EXPECT_EQ(Map.Zoom, 1.0F);
  for (const auto& [wanted, limit] : {std::pair{1000.0, 20.0F}, {0.0001, 0.125F}}) {
    Set_Zoom(wanted);
    EXPECT_EQ(Map.Zoom, limit);
  }
}

TEST_F(View, BarsStandOnlyWhereTheScanDoesNotFit) {
  const auto bars = [] { return std::pair(Map.HScroller.Visible, Map.VScroller.Visible); };
  const std::pair both(true, true), none(false, false);
  Set_Zoom(1.0);
  EXPECT_EQ(bars(), both);
  EXPECT_EQ(QSize(Map.ViewWidth, Map.ViewHeight), QSize(800, 600));
  Set_Zoom(10.0);
  EXPECT_EQ(bars(), none);
  EXPECT_EQ(QPoint(Clip().ClipX, Clip().ClipY), QPoint(0, 0));
  Close_Map();
  Open(823, 623);  // three pixels over: no bar; four: both, since each takes the other's room
  EXPECT_EQ(bars(), none);
  Close_Map();
  Open(824, 610);
  EXPECT_EQ(bars(), both);
}

TEST_F(View, EveryPixelIsReachedAtEveryZoom) {
  for (const double zoom : {0.5, 1.0, 100.0 / 75, 2.0}) {
    Set_Zoom(zoom);
    Scroll_Changed(true, 100);
    Scroll_Changed(false, 100);
    EXPECT_NEAR(Map.ViewLeft + Map.ViewWidth * zoom, 3000, zoom + 1) << zoom;
    EXPECT_NEAR(Map.ViewTop + Map.ViewHeight * zoom, 2000, zoom + 1) << zoom;
    Scroll_Changed(true, 0);
    Scroll_Changed(false, 0);
    EXPECT_EQ(QPoint(Map.ViewLeft, Map.ViewTop), QPoint(0, 0));
    for (const QPoint p : {QPoint(0, 0), QPoint(1500, 1000), QPoint(2999, 1999)}) {
      ScrollMap(p.x(), p.y());
      const QRectF view(Map.ViewLeft, Map.ViewTop, Map.ViewWidth * zoom + 1, Map.ViewHeight * zoom + 1);
      EXPECT_TRUE(view.contains(p)) << zoom << ": " << p.x() << ' ' << p.y();
    }
  }
}

TEST_F(View, MenusFitTheMap) {
  Set_Zoom_By_Menu(QStringLiteral("mnuZoomBreite"));
  EXPECT_FALSE(Map.HScroller.Visible);
  EXPECT_NEAR(3000 / static_cast<double>(Map.Zoom), Map.ScaleWidth - Map.ScrollBarW, 1);
  Set_Zoom_By_Menu(QStringLiteral("mnuZoomHoehe"));
  EXPECT_FALSE(Map.VScroller.Visible);
}

// The table takes its room while the map is being laid out; the map begins at its upper edge all the same.
TEST_F(View, FreshMapStandsAtItsCorner) {
  Close_Map();
  int told = 0;
  bool inside = false;
  const int listener = events.StateChanged.Connect([&] {
    if (!frmMDI.MapOpen || inside) return;
    const ForNow once(inside, true);
    Map.ScaleWidth = 700 - (told > 1 ? 20 : 0);
    Map.ScaleHeight = 560 - (told > 1 ? 120 : 0);
    ++told;
    Map_Resized();
  });
  ASSERT_TRUE(Open_Map(Make_Map(u"Zweite.bmp"_s, 3000, 2000)));
  EXPECT_GT(told, 2);
  EXPECT_EQ(QPoint(Map.ViewLeft, Map.ViewTop), QPoint(0, 0));
  EXPECT_EQ(Map.VScroller.Value, 0);
  events.StateChanged.Disconnect(listener);
}

TEST_F(View, WindowInNormalStateTakesTheSizeOfTheScan) {
  frmMDI.TblVisible = false;
  Set_Window_Layout();
  EXPECT_EQ(QSize(Map.WantWidth, Map.WantHeight), QSize(820, 620));  // wider than the main window: all of it
  frmMDI.TblVisible = true;
  Layout_Map();
  EXPECT_EQ(Map.WantHeight, 620 * 75 / 100);
  Tbl.Minimized = true;
  Layout_Map();
  EXPECT_EQ(Map.WantHeight, 620);
  Set_Zoom(10);
  EXPECT_EQ(QSize(Map.WantWidth, Map.WantHeight), QSize(300, 200));
}

// Made part by part, in any order and from any format, it is what it is as a whole.
TEST(Reduce, PartsMakeTheWhole) {
  const QImage noise = Motley(9000, 401);
  std::mt19937 random(5);
  for (const auto format :
       {QImage::Format_RGB32, QImage::Format_Indexed8, QImage::Format_RGB888, QImage::Format_Mono}) {
    const QImage scan = noise.convertToFormat(format, Qt::ThresholdDither | Qt::AvoidDither);
    const QImage whole = Reduced_Picture(Reduced_Picture(scan.convertToFormat(QImage::Format_RGB32), 2), 1.7);
    ReducedPicture copy(std::make_shared<ReducedPicture>(scan, 2), 1.7);
    const QImage shown = copy.Image();
    for (int i = 0; i < 40; ++i) {
      const QRect part(static_cast<int>(random() % 1400), static_cast<int>(random() % 110), 60, 40);
      copy.Prepare(part);
      ASSERT_EQ(shown.copy(part & whole.rect()), whole.copy(part & whole.rect())) << format;
    }
    EXPECT_GT(copy.Work_For(whole.rect()), 0) << "nothing else was made";
    while (copy.Prepare_Some(QDeadlineTimer(1))) continue;
    EXPECT_EQ(shown, whole) << format;
    EXPECT_EQ(copy.Work_For(whole.rect()), 0);
  }
}

// Each pixel is the mean of what it covers, channel by channel and whatever the format.
TEST(Reduce, EachChannelIsTheMeanOfWhatItCovers) {
  const QImage motley = Motley(61, 47);
  for (const QImage& picture : {motley, motley.convertToFormat(QImage::Format_Indexed8)})
    for (const double factor : {1.25, 2.0, 2.5, 3.7}) {
      const QImage small = Reduced_Picture(picture, factor);
      ASSERT_EQ(small.size(), QSize(static_cast<int>(61 / factor), static_cast<int>(47 / factor)));
      const auto part = [factor](int at, int pixel) {
        return std::max(0.0, std::min((at + 1) * factor, pixel + 1.0) - std::max(at * factor, 1.0 * pixel));
      };
      for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x) {
          std::array<double, 3> mean{};
          for (int v = 0; v < 47; ++v)
            for (int u = 0; u < 61; ++u) {
              const double share = part(x, u) * part(y, v) / (factor * factor);
              const QRgb color = picture.pixel(u, v);
              mean[0] += share * qRed(color), mean[1] += share * qGreen(color), mean[2] += share * qBlue(color);
            }
          const QRgb is = small.pixel(x, y);
          ASSERT_NEAR(qRed(is), mean[0], 3) << factor;
          ASSERT_NEAR(qGreen(is), mean[1], 3) << factor;
          ASSERT_NEAR(qBlue(is), mean[2], 3) << factor;
        }
    }
  // Plain areas stay exactly what they are, the white of paper above all.
  for (const double factor : {1.3333333, 1.5, 2.0, 7.3})
    EXPECT_EQ(Extent_Of(Reduced_Picture(Make_Canvas(90, 60), factor), Is_Ink), QRect()) << factor;
}

}  // namespace
