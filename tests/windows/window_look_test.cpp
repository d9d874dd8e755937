TEST_F(FluraxTest, EveryLinkOfTheHelpLeadsToAPage) {
  const QString delivered = QStringLiteral(FLURAX_SOURCE_DIR "/data/Hilfe");
  ASSERT_TRUE(QFile::link(delivered, Program_File("Hilfe")));
  HelpWindow window;
  const QStringList pages = Find_Files(delivered, "*.htm*");
  ASSERT_GE(pages.size(), 14);
  const QRegularExpression link("href=\"([^\"]+)\"");
  for (const QString& page : pages) {
    const QString text = Read_Lines(page).join(QLatin1Char('\n'));
    for (auto found = link.globalMatch(text); found.hasNext();) {
      const QString target = found.next().captured(1);
      window.Show_Page(target);
      EXPECT_EQ(window.Page(), target.section(QLatin1Char('#'), 0, 0)) << page;
    }
    window.Show_Page(QFileInfo(page).fileName());
    EXPECT_GT(window.Browser()->toPlainText().size(), 40) << page;
    EXPECT_FALSE(window.Browser()->toPlainText().contains(QChar::ReplacementCharacter)) << page;
    EXPECT_NE(window.windowTitle(), "Hilfe") << page;
  }
  window.Show_Page("TABLEREP.HTM");
  EXPECT_EQ(window.Page(), "tableRep.htm");
  window.Show_Page("gibtesnicht.htm");
  EXPECT_TRUE(window.Browser()->toPlainText().contains("gibtesnicht.htm"));
  window.Show_Page("tableRep.htm");  // the page that stood there before
  EXPECT_TRUE(window.Browser()->toPlainText().contains("abgesicherten Modus"));
}
