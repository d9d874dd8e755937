class MapWindowTest : public WindowTest {
 protected:
  // A map whose colour tells the position: red grows with x, green with y.
  void Open_Colored(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x) picture.setPixel(x, y, qRgb(x / 16, y / 16, 0));
    const QString path = Path("Farbkarte.bmp");
    ASSERT_TRUE(picture.save(path));
    Open(path);
  }
  void Wheel(QPoint at, QPoint delta, Qt::KeyboardModifiers keys) {
    QWidget* pic = &window->Map_Window();  // where the canvas passes it on to
    QWheelEvent event(at, pic->mapToGlobal(at), {}, delta, Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QApplication::sendEvent(pic, &event);
    Settle();
  }
  QMdiSubWindow* Frame() { return qobject_cast<QMdiSubWindow*>(window->Map_Window().parentWidget()); }
  // The window shows the map position it says it shows.
  void Check_Picture() {
    const QImage shown = Canvas()->grab().toImage();
    for (const QPoint at : {QPoint(5, 5), QPoint(Map.ViewWidth / 2, Map.ViewHeight / 2)}) {
      const QRgb color = shown.pixel(at);
      EXPECT_NEAR(qRed(color), Map_X(at.x()) / 16, 2) << at.x();
      EXPECT_NEAR(qGreen(color), Map_Y(at.y()) / 16, 2) << at.y();
    }
  }
};

TEST_F(MapWindowTest, ScrollBarsMoveTheView) {
  Open_Colored(3200, 2400);
  auto* right = Child<QScrollBar>("HScroller");
  auto* down = Child<QScrollBar>("VScroller");
  ASSERT_TRUE(right->isVisible() && down->isVisible());
  EXPECT_EQ(std::tuple(right->maximum(), right->value()), std::tuple(100, Map.HScroller.Value));
  right->setValue(100);
  down->setValue(100);
  Settle();
  EXPECT_EQ(QPoint(Map.ViewLeft + Map.ViewWidth, Map.ViewTop + Map.ViewHeight), QPoint(MapWidthPx, MapHeightPx));
  Check_Picture();
  right->setValue(37);
  EXPECT_NEAR(Map.ViewLeft, (MapWidthPx - Map.ViewWidth) * 0.37, 2);
  EXPECT_EQ(right->value(), 37);
  Check_Picture();
}

TEST_F(MapWindowTest, WheelAndKeysScrollAndStopAtTheRim) {
  Open_Colored(3200, 2400);
  Scroll_By(-10000, -10000);
  Wheel({100, 100}, {0, -120}, Qt::NoModifier);
  const int notch = Map.ViewTop;
  EXPECT_GT(notch, 20);
  Wheel({100, 100}, {0, -240}, Qt::NoModifier);
  EXPECT_EQ(QPoint(Map.ViewLeft, Map.ViewTop), QPoint(0, 3 * notch));
  Wheel({100, 100}, {0, -120}, Qt::ShiftModifier);
  EXPECT_EQ(Map.ViewLeft, notch);
  EXPECT_GT(Child<QScrollBar>("VScroller")->value(), 0);
  Check_Picture();
  Wheel({100, 100}, {0, 12000}, Qt::NoModifier);
  EXPECT_EQ(Map.ViewTop, 0);
  QTest::keyClick(&window->Map_Window(), Qt::Key_PageDown);
  EXPECT_EQ(Map.ViewTop, Map.ViewHeight);
  QTest::keyClick(&window->Map_Window(), Qt::Key_Right);
  EXPECT_GT(Map.ViewLeft, notch);
  // With Ctrl it zooms and keeps the map position under the pointer.
  ScrollMap(1600, 1200);
  const QPoint at(300, 200);
  for (const int delta : {120, 120, -120, -120, -60}) {
    const QPoint before(Map_X(at.x()), Map_Y(at.y()));
    const float zoom = Map.Zoom;
    Wheel(at, {0, delta}, Qt::ControlModifier);
    EXPECT_EQ(Map.Zoom<zoom, delta> 0);
    EXPECT_NEAR(Map_X(at.x()), before.x(), 2 + 2 * Map.Zoom);
    EXPECT_NEAR(Map_Y(at.y()), before.y(), 2 + 2 * Map.Zoom);
    Check_Picture();
  }
}

TEST_F(MapWindowTest, MaximisedWindowFollowsTheMainWindow) {
  Open_Colored(3200, 2400);
  for (const QSize size : {QSize(800, 600), QSize(1300, 900), QSize(640, 480)}) {
    window->resize(size);
    Settle();
    EXPECT_EQ(QSize(Map.ScaleWidth, Map.ScaleHeight), window->Map_Window().size());
    EXPECT_EQ(QSize(Map.ViewWidth, Map.ViewHeight), Canvas()->size());
    EXPECT_EQ(frmMDI.InnerWidth, Map.ScaleWidth);
    Check_Picture();
  }
  Frame()->showNormal();
  Settle();
  EXPECT_FALSE(Map.Maximized);
  Frame()->showMinimized();
  Settle();
  EXPECT_TRUE(Map.Minimized);
  Frame()->showMaximized();
  Settle();
  EXPECT_TRUE(Map.Maximized && !Map.Minimized);
  EXPECT_EQ(Map.ScaleWidth, window->Map_Window().width());
  Check_Picture();
}

TEST_F(MapWindowTest, NormalWindowShrinksToASmallMapAndObeysTheUser) {
  Open_Colored(400, 320);
  Choose("mnuWEinpass");
  EXPECT_FALSE(Frame()->isMaximized() || Map.HScroller.Visible);
  EXPECT_EQ(Canvas()->size(), QSize(400, 320));
  EXPECT_EQ(Frame()->pos(), QPoint(0, 0));
  // Dragging the frame smaller brings the bars, and the frame stays where the user leaves it.
  Frame()->resize(260, 220);
  Settle();
  EXPECT_EQ(Frame()->size(), QSize(260, 220));
  EXPECT_EQ(Map.ScaleWidth, window->Map_Window().width());
  EXPECT_TRUE(Child<QScrollBar>("HScroller")->isVisible() && Child<QScrollBar>("VScroller")->isVisible());
  Check_Picture();
  // Larger than the map: grey around it.
  Frame()->resize(600, 500);
  Settle();
  EXPECT_FALSE(Child<QScrollBar>("HScroller")->isVisible());
  const QImage shown = Canvas()->grab().toImage();
  EXPECT_EQ(shown.pixel(shown.width() - 2, shown.height() - 2), QBColor(7));
  EXPECT_EQ(shown.pixel(398, 318), qRgb(398 / 16, 318 / 16, 0));
}

TEST_F(MapWindowTest, FittingGivesTheNoteInFrontAllTheRoom) {
  Open(3000, 2000);
  Write_Lines(Path("Notiz.txt"), {"Horst"});
  dialogHooks.NotePad(Path("Notiz.txt"));
  Settle();
  Choose("mnuWEinpass");
  const auto* pad = window->findChild<FrmNotePad*>()->parentWidget();
  EXPECT_EQ(pad->geometry(), QRect(QPoint(0, 0), Child<QMdiArea>("area")->viewport()->size()));
  EXPECT_FALSE(Map.Maximized);
}

TEST_F(MapWindowTest, AZoomPaintsTheMapOnceAndTellsOfTheWork) {
  Open_Colored(1200, 900);
  int painted = 0;
  QStringList told;
  const int painting = events.MapPainted.Connect([&painted] { ++painted; });
  const int telling = events.InfoBarChanged.Connect([&told] { told << InfoBar.Zoom; });
  for (const bool normal : {false, true}) {
    if (normal) Choose("mnuWEinpass");
    for (const char* zoom : {"mnuZoom50", "mnuZoom25", "mnuZoom100", "mnuZoom200", "mnuZoomBreite", "mnuZoom75"}) {
      painted = 0;
      Choose(QLatin1String(zoom));
      EXPECT_EQ(painted, 1) << zoom << normal;
      EXPECT_EQ(Map.ScaleWidth, window->Map_Window().width());
      Check_Picture();
    }
  }
  EXPECT_TRUE(told.contains("Karte wird gezoomt. Bitte warten."));
  EXPECT_EQ(Child<QLabel>("Zm")->text(), "75 %");
  painted = 0;
  Wheel({200, 200}, {0, -120}, Qt::NoModifier);
  EXPECT_EQ(painted, 1);
  painted = 0;
  Set_Zoom(20);  // smaller than a window can be
  Settle();
  EXPECT_EQ(std::pair(painted, Map.ScaleWidth), std::pair(1, window->Map_Window().width()));
  events.MapPainted.Disconnect(painting);
  events.InfoBarChanged.Disconnect(telling);
}

TEST_F(MapWindowTest, TextStandsThereWhileAMapIsBeingOpened) {
  QImage loading;
  events.BackgroundText.Connect([&](const QString& text) {
    if (!text.isEmpty()) loading = Canvas()->grab().toImage();
  });
  Open_Colored(400, 320);
  ASSERT_FALSE(loading.isNull());
  EXPECT_GT(Count_Pixels(loading, loading.rect(), [](QRgb color) { return qGray(color) < 80; }), 300);
  EXPECT_EQ(loading.pixel(loading.width() - 3, loading.height() - 3), QBColor(7));
  Check_Picture();  // afterwards the map alone
}
