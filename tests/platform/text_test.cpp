#include "platform/text.h"

#include <cmath>
#include <limits>
#include <random>

#include "platform/error.h"
#include "support/fixture.h"

TEST(Text, FormatFillsThePatternFromTheRight) {
  struct Case {
    double value;
    const char* pattern;
    const char* text;
  };
  const Case cases[] = {
      {5, "### ### ##0", "  5"},
      {1234, "### ### ##0", " 1 234"},
      {1234567, "### ### ##0", "1 234 567"},
      {12345678901.0, "### ### ##0", "12345 678 901"},  // surplus digits go to the first place
      {0, "### ### ##0", "  0"},
      {-1234567, "### ### ##0", "-1 234 567"},
      {-5, "#0.0", "-5,0"},
      {0, "0.00", "0,00"},
      {-0.001, "0.00", "0,00"},
      {0.005, "0.00", "0,01"},
      {1.005, "0.00", "1,01"},  // the double is a little below
      {2.675, "0.00", "2,68"},
      {0.125, "0.00", "0,13"},
      {-0.125, "0.00", "-0,13"},
      {0.5, "0", "1"},
      {2.5, "##0", "3"},
      {9.995, "0.00", "10,00"},
      {99.96, "#0.0", "100,0"},
      {0.96, "#0.0", "1,0"},
      {0.04, "#.0", ",0"},
      {12.3456789, "#0.0######", "12,3456789"},
      {12.3, "#0.0######", "12,3"},
      {8.0615, "##0.000000", "8,061500"},
      {51.123456, "#0.000 000", "51,123 456"},
      {213, "00000", "00213"},
      {-213, "00000", "-00213"},
      {7, "000", "007"},
      {5, "0###", "0005"},
      {0, "###", ""},
      {1234567.891, "### ### ##0.00", "1 234 567,89"},
      {42, "### ###.##0", " 42,000"},
      {1e15, "0", "1000000000000000"},
      {0.0000001, "0.000", "0,000"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Format(c.value, QString::fromUtf8(c.pattern)), QString::fromUtf8(c.text)) << c.value << ' ' << c.pattern;
}

TEST(Text, ValReadsTheNumberAtTheStart) {
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
  EXPECT_EQ(Val_Comma(QStringLiteral("1,5")), 1.5);
  EXPECT_EQ(Val_Comma(QStringLiteral("1.5")), 1.5);
  EXPECT_EQ(Val_Comma(QStringLiteral("1,5,7")), 1.5);
}

TEST(Text, AssignmentToWholeNumbersTakesHalvesToTheEvenNeighbour) {
  const std::pair<double, int> cases[] = {{0.5, 0},  {1.5, 2},  {2.5, 2},         {-0.5, 0},         {-1.5, -2},
                                          {2.51, 3}, {2.49, 2}, {32767.4, 32767}, {-32768.5, -32768}};
  for (const auto& [value, whole] : cases) {
    EXPECT_EQ(To_Int16(value), whole) << value;
    EXPECT_EQ(To_Int32(value), whole) << value;
  }
  for (const double value : {32767.5, -32769.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    try {
      To_Int16(value);
      ADD_FAILURE() << value << " should not fit";
    } catch (const Error& error) {
      EXPECT_EQ(error.number, 6);
      EXPECT_EQ(error.text, QStringLiteral("Überlauf"));
    }
  }
  EXPECT_EQ(To_Int32(2147483647.0), 2147483647);
  EXPECT_THROW(To_Int32(2147483648.0), Error);
  EXPECT_EQ(Fix(-1.7), -1);
  EXPECT_EQ(Int(-1.2), -2);
}

TEST(Text, PaddedColumns) {
  EXPECT_EQ(Pad_Left(QStringLiteral(" ab "), 5), QStringLiteral("   ab"));
  EXPECT_EQ(Pad_Left(QStringLiteral("abcdefg"), 5), QStringLiteral("abcdefg"));
  EXPECT_EQ(Pad_Right(QStringLiteral(" ab "), 5), QStringLiteral("ab   "));
  EXPECT_EQ(Pad_Right(QStringLiteral("abcdefg"), 5), QStringLiteral("abcde"));
}

TEST(Text, NumbersComeBackFromTheirText) {
  EXPECT_EQ(Number_Text(0.1 + 0.2), QStringLiteral("0.3"));
  EXPECT_EQ(Number_Text(-0.0), QStringLiteral("0"));
  EXPECT_EQ(Number_Text(1e16), QStringLiteral("10000000000000000"));
  EXPECT_EQ(Number_Text(0.00001234), QStringLiteral("0.00001234"));
  std::mt19937 random(7);
  std::uniform_real_distribution<double> mantissa(-1, 1), power(-30, 30);
  for (int i = 0; i < 2000; ++i) {
    const double value = mantissa(random) * std::pow(10, power(random));
    const double back = Val(Number_Text(value));
    EXPECT_LE(std::fabs(back - value), std::fabs(value) * 1e-14) << Number_Text(value);
  }
}
