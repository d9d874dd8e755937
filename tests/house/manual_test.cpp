// The list of chapters of the manual leads to every chapter there is, in their order.
TEST(Manual, TheListOfChaptersIsComplete) {
  static const QRegularExpression line("^- \\[(.+)\\]\\(#(.+)\\)$"),
      sign("[^\\w\\- ]", QRegularExpression::UseUnicodePropertiesOption);
  QStringList listed, chapters;
  for (const QString& text : Read_Lines(FLURAX_SOURCE_DIR "/docs/handbuch.md")) {
    if (text.startsWith(QLatin1String("## "))) chapters << text.mid(3);
    const auto found = line.match(text);
    if (!found.hasMatch() || !chapters.isEmpty()) continue;
    listed << found.captured(1);
    EXPECT_EQ(found.captured(2), QString(found.captured(1)).toLower().remove(sign).replace(u' ', u'-'));
  }
  EXPECT_EQ(listed, chapters);
}
