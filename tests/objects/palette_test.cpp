#include "objects/palette.h"

using PaletteFile = FluraxTest;

TEST_F(PaletteFile, ComesBackAndIsWrittenWhenMissing) {
  const QString file = Program_File("MAP-Farb");
  Palette.fill(0);
  Load_Palette();
  EXPECT_EQ(Palette[12], QBColor(12));
  ASSERT_EQ(Read_Lines(file).size(), 16);
  EXPECT_EQ(Read_Lines(file)[15], "16777215");
  Palette[0] = qRgb(1, 2, 3);
  Save_Palette();
  EXPECT_EQ(Read_Lines(file)[0], QString::number(1 + 2 * 256 + 3 * 65536));
  Standard_Palette();
  EXPECT_EQ(Palette[0], QBColor(0));
  Load_Palette();
  EXPECT_EQ(Palette[0], qRgb(1, 2, 3));
}

TEST_F(PaletteFile, DamageLeavesStandardColours) {
  const QString file = Program_File("MAP-Farb");
  Replace_File(file, " 255 , 65280\r\n\r\nrot\r\n-1\r16777216\n16711680");
  Load_Palette();
  const std::pair<size_t, QRgb> sound[] = {{0, qRgb(255, 0, 0)}, {1, qRgb(0, 255, 0)}, {5, qRgb(0, 0, 255)}};
  for (const auto& [number, color] : sound) EXPECT_EQ(Palette[number], color) << number;
  for (const int i : {2, 3, 4, 6, 15}) EXPECT_EQ(Palette[static_cast<size_t>(i)], QBColor(i)) << i;
  Kill(file);
  File_Write_Fault = [](const QString&, qint64) { return errors::noPermission; };
  Load_Palette();  // no error: the colours are there
  EXPECT_EQ(Palette[9], QBColor(9));
  EXPECT_THROW(Save_Palette(), Error);
  EXPECT_FALSE(File_Exists(file));
}
