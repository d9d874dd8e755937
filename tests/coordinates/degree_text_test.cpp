#include "coordinates/degree_text.h"

namespace {

using Numbers = std::vector<std::pair<const char*, double>>;

TEST(DegreeText, ReadsDegreesMinutesSeconds) {
  const Numbers cases = {{"48°30'", 48.5},
                         {"48°30'15,5¨", 48.5043056},
                         {"48°30'15,5\"", 48.5043056},
                         {"48°30'15.5″", 48.5043056},
                         {"-011°30'00,00¨", -11.5},
                         {"+ 49°45'00,00¨", 49.75},
                         {"1234°", 1234},
                         {"1234,56789012°", 1234.56789012},
                         {"-7°", -7},
                         {"48°15¨", 48},
                         {"48,5", 0},
                         {"", 0}};
  for (const auto& [text, degrees] : cases) EXPECT_DOUBLE_EQ(GMS_To_Dec(text), degrees) << text;
}

TEST(DegreeText, WritesDegreesMinutesSeconds) {
  const std::tuple<const char*, int, const char*> cases[] = {{"x11,5", 0, "011°30'00,00¨"},
                                                             {"x 11,5", 0, "011°30'00,00¨"},
                                                             {"y49,75", 0, "49°45'00,00¨"},
                                                             {"y-49,75", 0, "- 49°45'00,00¨"},
                                                             {"x-7,5", 0, "-007°30'00,00¨"},
                                                             {"x+0,0166667", 0, "+000°01'00,00¨"},
                                                             {"x11", 0, "011°00'00,00¨"},
                                                             {"y48.5043056", 0, "48°30'15,50¨"},
                                                             {"y48,5043056", 2, "48°30'00,00¨"},
                                                             {"y48,9999999", 0, "49°00'00,00¨"},
                                                             {"y48,9999", 2, "49°00'00,00¨"},
                                                             {"x0", 0, ""},
                                                             {"x-0", 0, "-"},
                                                             {"x0,0", 0, "000°00'00,00¨"}};
  for (const auto& [text, mode, shown] : cases) EXPECT_EQ(Dec_To_GMS(text, mode), shown) << text;
  for (const double degrees : {0.0001, 7.654321, 11.0166667, 47.9999, 89.5})
    EXPECT_NEAR(GMS_To_Dec(Dec_To_GMS(u'y' + QString::number(degrees, 'f', 7))), degrees, 0.005 / 3600 + 1e-7);
}

TEST(DegreeText, ValuesBeyondThePoleStopThere) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"y91", "Höchstwert Breite = 90°", "90°00'00,00¨"},
      {"y90,5", "Höchstwert Breite = 90°", "90°00'00,00¨"},
      {"x-181", "Höchstwert Länge = 180°", "-180°00'00,00¨"},
      {"z11", "Längen- oder Breitengrad?", "011°00'00,00¨"},
      {"xelf", "Falscher Dezimalwert, ohne Komma", ""}};
  for (const auto& [text, box, shown] : cases) {
    MessageScript script{{box}, {box, MsgAnswer::Cancel}};
    EXPECT_EQ(Dec_To_GMS(text), shown) << text;
    EXPECT_EQ(Dec_To_GMS(text), "") << text;
  }
}

TEST(DegreeText, ShortensForLabels) {
  const std::pair<const char*, const char*> cases[] = {{"011°30'00,00¨", "011°30'"},       {"011°00'00,00¨", "011°"},
                                                       {" 49°45'30,00¨", "49°45'30¨"},     {"00°05'30,00¨", "5'30¨"},
                                                       {"011°30'15,50¨", "011°30'15,50¨"}, {"00°00'07,00¨", "7¨"}};
  for (const auto& [text, shown] : cases) EXPECT_EQ(GMS_Short(text), shown) << text;
}

TEST(DegreeText, ChecksTheLayoutOfCoordinates) {
  const std::tuple<const char*, const char*, int> cases[] = {{"+ 49°46'00,00¨", "B_GMS", 1},
                                                             {" +011°01'00,00¨ ", "L_GMS", 1},
                                                             {"+011°01'00,00\"", "L_GMS", 1},
                                                             {"- 49,765000", "B_DEC", 1},
                                                             {"+011,020000", "L_DEC", 1},
                                                             {"+011.020000", "L_DEC", -2},
                                                             {" 011,020000", "L_DEC", -1},
                                                             {"+049,765000", "B_DEC", -2},
                                                             {"+011°01'00,00", "L_GMS", -2},
                                                             {"+011,020000", "X", -3},
                                                             {"", "B_DEC", -1}};
  for (const auto& [text, layout, result] : cases) EXPECT_EQ(Check_Koord_Format(text, layout), result) << text;
}

TEST(DegreeText, ReadsNumbersAndZones) {
  const Numbers cases = {{" 1000", 1000}, {"+ 49.75", 49.75}, {"- 7", -7}, {"12 34", 12},
                         {"3,5", 3},      {"- -3", 0},        {"x", 0}};
  for (const auto& [text, value] : cases) EXPECT_EQ(Coordinate_Number(text), value) << text;
  MessageScript script("Keine Zonennummer gefunden.");
  for (const auto& [text, zone] : Numbers{{"32U", 32}, {"U32", 32}, {"4", 4}, {"UTM32", -1}})
    EXPECT_EQ(getZoneNumber(text), zone) << text;
}

}  // namespace
