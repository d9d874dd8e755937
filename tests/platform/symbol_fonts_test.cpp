#include "platform/symbol_fonts.h"

#include <QRawFont>

namespace {

using symbol_fonts::Table;

TEST(SymbolFonts, KnownPicturesStandAtTheirCodes) {
  struct Case {
    const char* family;
    char16_t code;
    char32_t wanted;
  };
  const Case cases[] = {
      {"Wingdings", 'J', 0x263A},    {"Wingdings", 'Q', 0x2708},    {"Wingdings", 'l', 0x25CF},
      {"Wingdings", 'n', 0x25A0},    {"wingdings", '(', 0x1F57F},   {"Wingdings", 0xFC, 0x2714},
      {"Wingdings", 0xAB, 0x2605},   {"Wingdings", 0xE0, 0x1F86A},  {"Wingdings", 0x81, 0x2460},
      {"Wingdings", 0x2030, 0x2468}, {"Wingdings", 0xF0FC, 0x2714}, {"Symbol", 'a', 0x03B1},
      {"Symbol", 'W', 0x03A9},       {"Symbol", 0xA3, 0x2264},      {"Symbol", 0xF0A5, 0x221E},
      {"SYMBOL", 0x20AC, ' '},
  };
  for (const auto& [family, code, wanted] : cases)
    EXPECT_EQ(Symbol_Text(family, QString(QChar(code))), QString::fromUcs4(&wanted, 1)) << family << int{code};
  EXPECT_EQ(Symbol_Text("Arial", QStringLiteral("Jäger")), "Jäger");
  EXPECT_EQ(Symbol_Text("Wingdings", QStringLiteral("✔")), "✔");
  EXPECT_TRUE(Is_Symbol_Font("wingdings") && Is_Symbol_Font("Symbol"));
  EXPECT_FALSE(Is_Symbol_Font("Arial"));
  // All 224 codes through the characters a text file gives for them.
  QSet<int> codes;
  for (int c = 0x20; c < 0x3000; ++c)
    if (const int code = symbol_fonts::Code_Of(QChar(c))) codes.insert(code);
  EXPECT_EQ(codes.size(), 224);
  for (int code = 0x20; code <= 0xFF; ++code) EXPECT_EQ(symbol_fonts::Code_Of(symbol_fonts::Character_Of(code)), code);
  EXPECT_EQ(symbol_fonts::Code_Of(QChar(0x0416)), 0);
  EXPECT_EQ(symbol_fonts::Code_Of(QChar('\n')), 0);
}

TEST(SymbolFonts, TablesAreFullAndHaveGlyphs) {
  const std::tuple<Table, int, QStringList> cases[] = {
      {Table::Wingdings, 223, {"Symbola"}}, {Table::Symbol, 184, {"Liberation Serif", "Symbola", "DejaVu Sans"}}};
  for (const auto& [table, different, fonts] : cases) {
    QSet<char32_t> seen;
    for (int code = 0x20; code <= 0xFF; ++code) {
      const char32_t unicode = symbol_fonts::Unicode_Of(table, code);
      if (unicode == 0) continue;
      seen.insert(unicode);
      EXPECT_TRUE(std::any_of(
          fonts.begin(), fonts.end(),
          [unicode](const QString& family) { return QRawFont::fromFont(QFont(family)).supportsCharacter(unicode); }))
          << "code " << std::hex << code << " U+" << static_cast<unsigned>(unicode);
    }
    EXPECT_GE(seen.size(), different);
  }
}

}  // namespace
