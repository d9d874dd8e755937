#include "store/settings.h"
#include "fuzz/driver.h"
#include "state/mdi_state.h"

// "Flurax.ini" and the tips, read and written again.

namespace {

QByteArrayList Seeds() {
  return {"TLB: vbAlignLeft\r\nTipps: TippsNo\r\nDGS:12.5\r\nMPG: C:\\Malen\\malen.exe\r\nMPG: /usr/bin/malen\r\n",
          "Templates:\r\nFL: Wald|VG=3|HG=10|RA=-100|TX=4|SB=2|\r\nFL: Wiese|VG=1|HG=14|RA=12|TX=-8|SB=1|\r\n",
          "Tipp 1\r\nErste Zeile\r\nZweite\r\n\r\nTipp 2\r\nGro\xDF\r\n  Tipp 3  \r\n", ""};
}

bool Run(const QByteArray& input) {
  Put_File(QStringLiteral("Programm/Flurax.ini"), input);
  Put_File(QStringLiteral("Programm/Tipps.txt"), input);
  AreaTemplate area;
  try {
    Read_Ini();
    const bool found = Read_Template(area);
    if (found && (area.VG < 0 || area.VG > 15 || area.HG < 0 || area.HG > 15))
      throw std::runtime_error("a colour beyond the palette");
    const QStringList programs = Paint_Programs();
    for (int number = 0; number < 4; ++number) Tip_Text(number);
    Write_Ini(QStringLiteral("Tipps: TippsNo"));
    Write_Ini(QStringLiteral("DGS:1.25"));
    Write_Template(QStringLiteral("Neu|\r\n"), area);
    Set_Paint_Programs(programs);
    Read_Ini();
    if (frmMDI.Tips || !frmMDI.HasTemplate) throw std::runtime_error("what was written is not read again");
    // A program whose path looks like another line is not one of those compared.
    if (Paint_Programs().size() > programs.size()) throw std::runtime_error("more programs than were set");
    return found || !programs.isEmpty();
  } catch (const Error&) {
    return false;
  }
}

}  // namespace

FuzzTarget Make_Target() {
  return {"settings",
          Seeds(),
          {"Tipps", "TippsYes", "TLB:", "FL:", "DGS:", "MPG:", "|VG=", "|HG=", "|RA=", "|TX=", "|SB=", "|", "\r\n",
           "Tipp ", "\xEF\xBB\xBF"},
          Run,
          {}};
}
