TEST(EntryType, TakesTheNumberApart) {
  const std::tuple<int, int, Mark, bool> cases[] = {
      {0, 0, Mark::None, false},      {40, 40, Mark::None, false},  {100, 0, Mark::Marked, false},
      {140, 40, Mark::Marked, false}, {200, 0, Mark::Last, false},  {223, 23, Mark::Last, false},
      {-103, 3, Mark::Marked, true},  {-240, 40, Mark::Last, true}, {-12, 12, Mark::None, true}};
  for (const auto& [stored, base, mark, hidden] : cases) {
    const EntryType type = EntryType::Parse(stored);
    EXPECT_EQ(type, (EntryType{base, mark, hidden})) << stored;
    EXPECT_EQ(type.ToNumber(), stored);
  }
}

TEST(EntryType, HidingAndShowingNeverLosesARow) {
  // A plain text has no negative number of its own; the sign of a north arrow means nothing.
  const std::tuple<int, int, int> cases[] = {{0, -1, 1},       {100, -101, 101}, {200, -201, 201}, {40, -40, 40},
                                             {103, -103, 103}, {-4, -4, 4},      {-12, -12, -12},  {-112, -112, -112}};
  for (const auto& [stored, hidden, shownAgain] : cases) {
    EXPECT_EQ(EntryType::Parse(stored).Hidden().ToNumber(), hidden) << stored;
    EXPECT_EQ(EntryType::Parse(stored).Hidden().Shown().ToNumber(), shownAgain) << stored;
  }
  EXPECT_EQ(EntryType::Parse(-240).Marked(Mark::Marked).ToNumber(), -140);
  EXPECT_EQ(EntryType::Parse(-12).Marked(Mark::Last).ToNumber(), -212);
  EXPECT_EQ(EntryType::Parse(203).Marked(Mark::None).ToNumber(), 3);
}

TEST(FrameWord, ReadsAllParts) {
  const std::pair<int, FrameWord> cases[] = {{0, {true, false, 1, 1, 0}},       {15, {true, false, 1, 1, 15}},
                                             {215, {true, false, 1, 2, 15}},    {-215, {false, false, 1, 2, 15}},
                                             {-100, {false, false, 1, 1, 0}},   {13312, {true, true, 3, 3, 12}},
                                             {-3013, {false, false, 3, 1, 13}}, {10000, {true, true, 1, 1, 0}}};
  for (const auto& [stored, word] : cases) {
    EXPECT_EQ(FrameWord::Parse(stored), word) << stored;
    EXPECT_EQ(word.ToNumber(), stored);
  }
  EXPECT_EQ(FrameWord::Parse(116).color, 0);  // no such colour
  EXPECT_EQ(FrameWord::Parse(912).width, 8);  // widest frame
  EXPECT_EQ(FrameWord::Parse(-32768).pattern, 2);
  FrameWord off = FrameWord::Parse(0);
  off.framed = false;
  EXPECT_FALSE(FrameWord::Parse(off.ToNumber()).framed);
}

TEST(FillCode, StandsInTheFontColumnOfFigures) {
  struct Case {
    const char* schrift;
    bool fill;
    int code;
    double angle;
  };
  for (const Case& c : {Case{"F 1", true, 1, 0}, Case{"F-8", true, -8, 0}, Case{"F 3<45", true, 3, 45},
                        Case{"F 0", true, 0, 0}, Case{"F12", true, 12, 0}, Case{"F-2<22.5", true, -2, 22.5}}) {
    EXPECT_EQ(FillCode::IsFill(c.schrift), c.fill) << c.schrift;
    EXPECT_EQ(FillCode::FromSchrift(c.schrift).code, c.code) << c.schrift;
    EXPECT_EQ(FillCode::AngleOf(c.schrift), c.angle) << c.schrift;
    EXPECT_EQ(FillCode{c.code}.ToSchrift(c.angle), c.schrift);
  }
  for (const char* font : {"Futura", "F"}) EXPECT_FALSE(FillCode::IsFill(font));
  EXPECT_EQ(FillCode::FromSchrift("Futura 1").code, 0);
  EXPECT_EQ(FillCode::AngleOf("F 1<-90"), 270);
  EXPECT_EQ(FillCode{-5}.Hatch(), FillStyle::Downward);
  EXPECT_EQ(FillCode{12}.Hatch(), FillStyle::None);  // a foreign code draws no hatch
}

TEST(FontSpec, WritesInOneOrderAndReadsInAny) {
  for (const char* text : {"Arial", "Times New Roman-B-I-U-T-C238<45", "Courier New-T", "Wingdings-C2<22.5", ""}) {
    EXPECT_EQ(FontSpec::Parse(text).ToText(), text);
  }
  struct Case {
    const char* stored;
    FontSpec font;
  };
  for (const Case& c : {Case{"Arial-U-I-B-T-C161<30", {"Arial", true, true, true, true, 161, 30}},
                        Case{"Arial -T-B ", {"Arial", true, false, false, true, 0, 0}},
                        Case{"Arial<-45", {"Arial", false, false, false, false, 0, 315}},
                        Case{"Arial<22,5", {"Arial", false, false, false, false, 0, 22.5}},
                        Case{"Arial<360", {"Arial", false, false, false, false, 0, 0}},
                        Case{"Arial-C-B<x", {"Arial", true, false, false, false, 0, 0}},
                        Case{"-B<90", {"", true, false, false, false, 0, 90}},
                        Case{"Arial<30-B", {"Arial", false, false, false, false, 0, 30}}}) {
    EXPECT_EQ(FontSpec::Parse(c.stored), c.font) << c.stored;
  }
  EXPECT_TRUE(FontSpec::Parse("Wingdings 2-B").IsSymbol());
}

TEST(EntryId, OwnAndForeignNamesComeBackUnchanged) {
  for (const char* text : {"Text", "-Text", "1Text", "Bild", "Linie12", "-Linie0 - P1101L5.0B2.5",
                           "Flaeche3 - R0010L12.B1.0", "Text>Flaeche0", "Text>Linie4<2", "Text<", "Text<7", "-Figur3",
                           "Plan\x1f"
                           "A-3",
                           "Achse>Figur2", "Np", "!Unbekannt", "Linie3 - C1000L1.0B9.9>Flaeche1<4", ""}) {
    EXPECT_EQ(EntryId::Parse(text).ToText(), text);
    EXPECT_TRUE(EntryId::Parse(text).asStored.isEmpty()) << text;
  }
  for (double mm : {1.0, 1.1, 4.5, 9.9, 10.0, 37.0, 99.0}) {
    EntryId id;
    id.name = "Linie1";
    id.ends = LineEnds{LineEnds::Shape::Circle, true, false, true, false, mm, mm};
    EXPECT_EQ(EntryId::Parse(id.ToText()), id) << mm;
  }
  for (const char* text :
       {"Feld-3 Amsel", "Linie0 - X", "Linie2-Nord", "Linie0 - P1101L0.5B 2 ", "Text>", "Text<3>Flaeche0", "--Linie0",
        " Linie7 ", "a>b>c", "a<b<c", ">Flaeche1", "Linie0- P1101L5,0B2.5"}) {
    EXPECT_EQ(EntryId::Parse(text).ToText(), text);
  }
  EXPECT_FALSE(EntryId::Parse("Feld-3 Amsel").ends);
  EXPECT_FALSE(EntryId::Parse("Text - P1101L5.0B2.5").ends);  // only lines and areas have ends
  EXPECT_FALSE(EntryId::Parse("Linie2-Nord").ends);
  // A change made to a foreign ID is not swallowed by what was read.
  EntryId id = EntryId::Parse("Text<3>Flaeche0");
  EXPECT_EQ(std::tuple(id.assignment, id.group), std::tuple("Flaeche0", "3"));
  id.assignment.clear();
  EXPECT_EQ(id.ToText(), "Text<3");
}

TEST(EntryId, FindsTheVertexTable) {
  struct Case {
    const char* stored;
    const char* table;
    int number;
  };
  for (const Case& c :
       {Case{"Linie12", "Linie12", 12}, Case{"-Linie0 - P1101L5.0B2.5", "Linie0", 0}, Case{" -Linie3", "Linie3", 3},
        Case{"Flaeche4 - unlesbar", "Flaeche4", 4}, Case{"Flaeche5>Linie1", "Flaeche5", 5},
        Case{"Linie6<2", "Linie6", 6}, Case{"-Figur31", "Figur31", 31}, Case{"Figur", "Figur", -1},
        Case{"Text>Linie1", "Text", -1}, Case{"Linie7 - C1000L1.0B1.0>Flaeche0<1", "Linie7", 7}}) {
    EXPECT_EQ(EntryId::Parse(c.stored).TableName(), c.table);
    EXPECT_EQ(EntryId::Parse(c.stored).Number(), c.number) << c.stored;
  }
  EXPECT_FALSE(EntryId::Parse("Text>Linie1").IsLine());  // assigned to a line, not one
  EXPECT_TRUE(EntryId::Parse("-Flaeche0").IsArea());
}

TEST(EntryId, LineEndsAndReferenceDigit) {
  for (const auto& [text, ends] :
       {std::pair{"Linie0 - R0110L12.B2.5", LineEnds{LineEnds::Shape::Rectangle, false, true, true, false, 12.0, 2.5}},
        std::pair{"Linie0 - Q9001L0.2B   ", LineEnds{LineEnds::Shape::Arrow, true, false, false, true, 1.0, 1.0}}})
    EXPECT_EQ(EntryId::Parse(text).ends, ends) << text;
  for (const auto& [text, without] : {std::pair{"3Text>Linie1", "Text>Linie1"}, std::pair{"5Text", "5Text"},
                                      std::pair{"2Bild", "2Bild"}})  // only before a text
    EXPECT_EQ(EntryId::Parse(text).WithoutReferenceDigit().ToText(), without);
}

// What other programs write may be anything; the parts of it stay within what can be drawn and stored.
TEST(StoredValues, StayWithinBoundsWhateverIsStored) {
  constexpr qint64 least = std::numeric_limits<qint64>::min(), most = std::numeric_limits<qint64>::max();
  for (const qint64 stored : {least, qint64{-2147483648}, qint64{-32769}, qint64{32768}, qint64{2147483647}, most}) {
    const FrameWord frame = FrameWord::Parse(stored);
    EXPECT_TRUE(frame.color >= 0 && frame.color <= 15 && frame.width >= 1 && frame.width <= 8) << stored;
    EXPECT_EQ(FrameWord::Parse(frame.ToNumber()), frame) << stored;
    EXPECT_EQ(EntryType::Parse(stored).hidden, stored < 0);
    EXPECT_FALSE(EntryType::Parse(stored).IsText() || EntryType::Parse(stored).IsFigure());
    EXPECT_EQ(FillCode::Parse(stored).Hatch(), FillStyle::None);
    EXPECT_LE(std::abs(FillCode::Parse(stored).ToNumber()), 32768);
  }
  const int smallest = std::numeric_limits<int>::min();
  EXPECT_EQ(Frame_Switched(smallest, true), 32768);
  EXPECT_LE(Frame_With_Color(smallest, 3), 0);
  for (const char* text : {"Arial-C9e9", "Arial-C-99", "Arial<1e308", "Arial<-1e-300", "Arial<-0,000000000000000001"}) {
    const FontSpec font = FontSpec::Parse(text);
    EXPECT_TRUE(font.charset >= 0 && font.charset <= 255) << text;
    EXPECT_TRUE(font.angle >= 0 && font.angle < 360) << text << font.angle;
    EXPECT_EQ(FillCode::AngleOf(text), font.angle);
  }
  EXPECT_LE(FontSpec::Parse(QString(1'000'000, 'A')).family.size(), longestSchrift);
  EXPECT_EQ(Shown_Text(QString(1'000'000, 'A')).size(), longestShown);
  for (const double points : {1e17, HUGE_VAL, 2000.0}) EXPECT_EQ(Stored_Size(points), largestStoredSize);
  EXPECT_EQ(Stored_Size(-8), -8);
  EXPECT_EQ(Stored_Size(std::nan("")), 0);
  const EntryId id = EntryId::Parse("Linie99999999999 - P1111L9e9B9e9");
  EXPECT_EQ(id.ends->lengthMm, 99);
  EXPECT_EQ(id.ends->widthMm, 99);
  EXPECT_GT(id.Number(), 0);
}
