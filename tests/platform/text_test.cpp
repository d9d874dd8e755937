#include "platform/text.h"

TEST(Text, FormatFillsThePatternFromTheRight) {
  struct Case {
    const char* pattern;
    std::vector<std::pair<double, const char*>> texts;
  };
  const Case cases[] = {
      // Surplus digits go to the first place.
      {"### ### ##0",
       {{5, "  5"},
        {0, "  0"},
        {1234, " 1 234"},
        {1234567, "1 234 567"},
        {12345678901.0, "12345 678 901"},
        {-1234567, "-1 234 567"}}},
      {"### ### ##0.00", {{1234567.891, "1 234 567,89"}}},
      {"### ###.##0", {{42, " 42,000"}}},
      {"#0.0", {{-5, "-5,0"}, {99.96, "100,0"}, {0.96, "1,0"}}},
      {"#.0", {{0.04, ",0"}}},
      // Halves go up as they stand in the text, although the doubles of 1.005 and 2.675 are a little below.
      {"0.00", {{0, "0,00"}, {-0.001, "0,00"}, {0.005, "0,01"}, {1.005, "1,01"}, {2.675, "2,68"}, {0.125, "0,13"}}},
      {"0.00", {{-0.125, "-0,13"}, {9.995, "10,00"}}},
      {"0.000", {{0.0000001, "0,000"}}},
      {"0", {{0.5, "1"}, {1e15, "1000000000000000"}}},
      {"##0", {{2.5, "3"}}},
      {"#0.0######", {{12.3456789, "12,3456789"}, {12.3, "12,3"}}},
      {"##0.000000", {{8.0615, "8,061500"}}},
      {"#0.000 000", {{51.123456, "51,123 456"}}},
      {"00000", {{213, "00213"}, {-213, "-00213"}}},
      {"000", {{7, "007"}}},
      {"0###", {{5, "0005"}}},
      {"###", {{0, ""}}},
  };
  for (const auto& [pattern, texts] : cases)
    for (const auto& [value, text] : texts) EXPECT_EQ(Format(value, pattern), text) << value << ' ' << pattern;
}

TEST(Text, ValReadsTheNumberAtTheStartATypedOneIsTheWholeText) {
  struct Case {
    const char* text;
    double value;
  };
  const Case cases[] = {{"", 0},     {"   ", 0},    {"abc", 0},         {"12", 12},      {"  -12.5abc", -12.5},
                        {"+3", 3},   {"1e3", 1000}, {"2.5E-2x", 0.025}, {"1e", 1},       {"1,5", 1},
                        {".5", 0.5}, {"-.5", -0.5}, {"5.", 5},          {"1 234", 1234}, {"--3", 0},
                        {"-", 0},    {".", 0},      {"inf", 0},         {"nan", 0},      {"1.2.3", 1.2},
                        {"0x10", 0}, {"1e-999", 0}, {"32°", 32}};
  for (const Case& c : cases) EXPECT_EQ(Val(QString::fromUtf8(c.text)), c.value) << c.text;
  EXPECT_GT(Val(QStringLiteral("1e999")), 1e300);
  EXPECT_TRUE(std::isfinite(Val(QStringLiteral("-1e999"))));
  // Beyond the range without a power, or with one that reaches it only with the digits.
  const QString zeros(400, u'0');
  for (const QString& large :
       {u'1' + zeros, zeros + u'9' + zeros, "1" + zeros + "e-50", QString("1e99999999999999999999")})
    EXPECT_GT(Val(large), 1e300) << qPrintable(large);
  for (const QString& small : {"0." + zeros + u'1', "." + zeros + "9e20", "0." + zeros + "1e-999", "-0." + zeros + u'1',
                               QString("1e-99999999999999999999")})
    EXPECT_EQ(Val(small), 0) << qPrintable(small);
  EXPECT_EQ(Val_Comma(QStringLiteral("1,5")), 1.5);
  EXPECT_EQ(Val_Comma(QStringLiteral("1.5")), 1.5);
  EXPECT_EQ(Val_Comma(QStringLiteral("1,5,7")), 1.5);
  for (const auto& [text, number] : {std::pair{" 2,5", 2.5}, {"2.5 ", 2.5}, {"-3", -3.0}, {"1e2", 100.0}})
    EXPECT_EQ(Number_Typed(QString::fromUtf8(text)), number) << text;
  for (const char* bad : {"", " ", "zwei", "1.000,5", "1,5,7", "1e999", "nan", "inf", "5 km", "1 000"})
    EXPECT_FALSE(Number_Typed(QString::fromUtf8(bad))) << bad;
}

TEST(Text, AssignmentToWholeNumbersTakesHalvesToTheEvenNeighbour) {
  const std::pair<double, int> cases[] = {{0.5, 0},  {1.5, 2},  {2.5, 2},         {-0.5, 0},         {-1.5, -2},
                                          {2.51, 3}, {2.49, 2}, {32767.4, 32767}, {-32768.5, -32768}};
  for (const auto& [value, whole] : cases) {
    EXPECT_EQ(To_Int16(value), whole) << value;
    EXPECT_EQ(To_Int32(value), whole) << value;
  }
  for (const double value : {32767.5, -32769.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    const Error error = Raised([&] { To_Int16(value); });
    EXPECT_EQ(error.number, 6) << value;
    EXPECT_EQ(error.text, "Überlauf");
  }
  EXPECT_EQ(To_Int32(2147483647.0), 2147483647);
  EXPECT_THROW(To_Int32(2147483648.0), Error);
  EXPECT_EQ(Fix(-1.7), -1);
  EXPECT_EQ(Int(-1.2), -2);
}

TEST(Text, NumbersComeBackFromTheirTextAndFillColumns) {
  EXPECT_EQ(Pad_Left(" ab ", 5) + Pad_Left("abcdefg", 5), "   ababcdefg");
  EXPECT_EQ(Pad_Right(" ab ", 5) + Pad_Right("abcdefg", 5), "ab   abcde");
  const QString bird = QStringLiteral("🐦");
  EXPECT_EQ(Cut_Text("a" + bird + "b", 2) + Cut_Text("ab", 5) + Cut_Text(bird, 0), "a" + bird + "ab");
  EXPECT_EQ(Cut_Text(bird.left(1) + "ab", 2), bird.left(1) + "a") << "half a pair is a character of its own";
  const std::pair<double, const char*> cases[] = {
      {0.1 + 0.2, "0.3"}, {-0.0, "0"}, {1e16, "10000000000000000"}, {0.00001234, "0.00001234"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(Number_Text(value), text);
  std::mt19937 random(7);
  std::uniform_real_distribution<double> mantissa(-1, 1), power(-30, 30);
  for (int i = 0; i < 2000; ++i) {
    const double value = mantissa(random) * std::pow(10, power(random));
    const double back = Val(Number_Text(value));
    EXPECT_LE(std::fabs(back - value), std::fabs(value) * 1e-14) << Number_Text(value);
  }
}
