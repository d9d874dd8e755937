#include "store/settings.h"

namespace {
class Settings : public FluraxTest {
 protected:
  static void Put_Ini(const QStringList& lines) { Write_Lines(Program_File("Flurax.ini"), lines); }
  static QStringList Ini() { return Read_Lines(Program_File("Flurax.ini")); }
};
}  // namespace

TEST_F(Settings, AreReadFromTheIni) {
  Read_Ini();  // no file: defaults
  EXPECT_TRUE(frmMDI.Tips);
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Top);
  EXPECT_FALSE(frmMDI.HasTemplate);
  Put_Ini({"TLB: vbAlignLeft", "Tipps: TippsNo", "DGS: 1.25", "Templates:", "FL: Wiese |VG=2|"});
  Read_Ini();
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Left);
  EXPECT_FALSE(frmMDI.Tips);
  EXPECT_EQ(frmMDI.Dgs, 1.25);
  EXPECT_TRUE(frmMDI.HasTemplate);
  Put_Ini({" TLB: vbAlignMitte", "x Tipps: TippsYes", "MPG: /opt/FL: TLB: vbAlignTop"});
  Read_Ini();
  EXPECT_EQ(frmMDI.toolbarPlace, ToolbarPlace::Left);  // any other value leaves it
  EXPECT_TRUE(frmMDI.Tips);
  EXPECT_FALSE(frmMDI.HasTemplate);
}

TEST_F(Settings, GarbageLeavesTheDefaults) {
  Put_Ini({"DGS: abc"});
  Read_Ini();
  EXPECT_EQ(frmMDI.Dgs, 0);
  QFile::remove(Program_File("Flurax.ini"));
  ASSERT_TRUE(QDir().mkpath(Program_File("Flurax.ini")));  // a folder in its place
  Read_Ini();
  EXPECT_TRUE(Paint_Programs().isEmpty());
  MessageScript script("Windows: Kein Dateizugriff erlaubt");
  Write_Ini("TLB: vbAlignTop");
}

TEST_F(Settings, ALineReplacesTheOneOfItsKeyAndAFullDiskLosesNone) {
  Write_Ini("TLB: vbAlignTop");  // no file yet: the line alone
  EXPECT_EQ(Ini(), QStringList("TLB: vbAlignTop"));
  Write_Ini("TippsNo");
  Write_Ini("DGS: 2");
  Write_Ini("TLB: vbAlignRight");
  Write_Ini("Tipps: TippsYes");
  EXPECT_EQ(Ini(), QStringList({"TLB: vbAlignRight", "Tipps: TippsYes", "DGS: 2"}));
  Write_Ini("FL: Wiese |VG=2|");
  EXPECT_EQ(Ini().mid(3), QStringList({"Templates:", "FL: Wiese |VG=2|"}));
  Put_Ini({"unbekannt", "FL: Tipps und TLB: |VG=2|", "FL: zweite |VG=3|", "MPG: /opt/DGS:/mal", "TLB: a", "TLB: b"});
  Write_Ini("Tipps: TippsNo");
  Write_Ini("TLB: vbAlignBottom");
  Write_Ini("DGS: 3");
  EXPECT_EQ(Ini(), QStringList({"unbekannt", "FL: Tipps und TLB: |VG=2|", "FL: zweite |VG=3|", "MPG: /opt/DGS:/mal",
                                "TLB: vbAlignBottom", "Tipps: TippsNo", "DGS: 3"}));
  Write_Ini("FL: dritte |VG=4|");  // the first template, whatever its name
  EXPECT_EQ(Ini().mid(1, 2), QStringList({"FL: dritte |VG=4|", "FL: zweite |VG=3|"}));
  EXPECT_FALSE(Ini().contains("Templates:"));
  Put_Ini({"TLB: vbAlignLeft", "FL: Wiese |VG=2|"});
  File_Write_Fault = [](const QString&, qint64) { return errors::diskFull; };
  MessageScript script("Datenträger voll");
  Write_Ini("Tipps: TippsNo");
  Write_Ini("DGS: 2");  // at every resizing: no box
  File_Write_Fault = nullptr;
  EXPECT_EQ(Ini(), QStringList({"TLB: vbAlignLeft", "FL: Wiese |VG=2|"}));
}

TEST_F(Settings, TemplatesOfAreas) {
  AreaTemplate area;
  EXPECT_FALSE(Read_Template(area));
  EXPECT_EQ(std::tuple(EntHG, EntRA, area.TX), std::tuple(15, 13, -3));
  Write_Template("Feuchte|Wiese VG=9", {2, 10, -113, 5, 4});
  EXPECT_TRUE(frmMDI.HasTemplate);
  EXPECT_EQ(Ini(), QStringList({"Templates:", "FL: Feuchte Wiese VG=9|VG=2|HG=10|RA=-113|TX=5|SB=4|"}));
  EXPECT_TRUE(Read_Template(area));
  EXPECT_EQ(std::tuple(EntVG, EntHG, EntRA, area.TX, area.SB), std::tuple(2, 10, -113, 5, 4));
  const struct {
    const char* line;
    AreaTemplate area;
  } cases[] = {
      {"FL: W |VG= 1 |HG=2|RA=3|TX=4", {1, 2, 3, 4, 1}},    // no SB, no closing bar
      {"FL: W |VG=1|RA=3|TX=4|SB=5|", {1, 15, 13, -3, 1}},  // ends at the missing HG
      {"FL: W |VG=1|HG=16|RA=3|", {1, 15, 13, -3, 1}},      // no colour of the palette
      {"FL: W |VG=1|HG=2|RA=99999|", {1, 2, 13, -3, 1}},   {"FL:", {0, 15, 13, -3, 1}},
  };
  for (const auto& c : cases) {
    Put_Ini({" FL: eingerückt |VG=7|", c.line, "FL: spätere |VG=8|"});
    EXPECT_TRUE(Read_Template(area));
    EXPECT_EQ(std::tie(area.VG, area.HG, area.RA, area.TX, area.SB),
              std::tie(c.area.VG, c.area.HG, c.area.RA, c.area.TX, c.area.SB))
        << c.line;
  }
}

TEST_F(Settings, TipsComeFromTheFileOrAreBuiltIn) {
  EXPECT_FALSE(Tip_Text(1).isEmpty());
  EXPECT_TRUE(Tip_Text(2).join(' ').contains("Farben"));
  EXPECT_TRUE(Tip_Text(3).isEmpty());
  Write_Lines(Program_File("Tipps.txt"), {"Vorwort", "Tipp 2", "Große Karte", "", "Ende", "", "Tipp 12", "zwölf"});
  EXPECT_EQ(Tip_Text(2), QStringList({"Große Karte", "", "Ende"}));
  EXPECT_EQ(Tip_Text(12), QStringList("zwölf"));
  EXPECT_FALSE(Tip_Text(1).isEmpty());
}
