#include "import/overlay.h"
#include "fuzz/calibrated.h"
#include "fuzz/driver.h"
#include "import/overlay_import.h"
#include "import/placing_question.h"
#include "store/table_file.h"

// Overlay files: read, planned on maps of every kind of net, and now and then imported.

namespace {

constexpr int betweenImports = 40;

QByteArrayList Seeds() {
  const QByteArray corners =
      "Punkte=3\r\nXKoord0=11.05\r\nYKoord0=49.75\r\nXKoord1=11.06\r\nYKoord1=49.75\r\nXKoord2=11.06\r\nYKoord2=49."
      "76\r\n";
  const QByteArray text =
      "[Symbol 1]\r\nTyp=2\r\nGroup=1\r\nCol=1\r\nFont=3\r\nSize=112\r\nText=B\xFC\x67\r\n"
      "XKoord=11.05\r\nYKoord=49.75\r\n";
  const QByteArray figure =
      "[Symbol 2]\r\nTyp=6\r\nCol=2\r\nArea=2\r\nXKoord=11.05\r\nYKoord=49.75\r\nWidth=20\r\n"
      "Height=0.01\r\n[Symbol 3]\r\nTyp=5\r\nWidth=40\r\nHeight=20\r\nXKoord=11.05\r\nYKoord=49.75\r\n";
  const QByteArray end = "[Overlay]\r\nSymbols=3\r\n[MapLage]\r\nMapName=x\r\n";
  return {
      text + figure + end,
      "[Symbol 1]\r\nTyp=3\r\nCol=3\r\nSize=105\r\n" + corners + "[Symbol 2]\r\nTyp=4\r\nArea=1\r\n" + corners + end,
      end + text + "[Symbol 4]\nTyp=1\n[Symbol 5]\nTyp=7\n[Symbol 6]\nTyp=99\n", "DOMGVCRD Ovlfile V2.0:\0\1\2"_ba};
}

void Import(const OverlayFile& file, const CoordinateState& net) {
  Open_Empty_Table();
  Coord = net;
  try {
    const auto way = Usual_Placing_Way(Overlay_System(), net);
    const OverlayPlan plan = Plan_Overlay(file, way.value_or(PlacingWay::AsWritten), false);
    const OverlayResult result = Import_Overlay(file, plan);
    if (result.imported > plan.counts.ok) throw std::runtime_error("more came than could");
    const ImportList list = Overlay_List(file, plan, u"x.ovl"_s, {});
    for (int row = 0; row < list.rows; ++row) list.text(row, row % 5);
    Overlay_Summary(file, plan, result);
    Overlay_Refusals(file, plan, result);
  } catch (const Error&) {
    // The net has no size of a pixel.
  }
  Close_Table(CloseMode::CloseOnly);
}

bool Run(const QByteArray& input) {
  static int number = 0;
  OverlayFile file;
  try {
    file = Read_Overlay(input);
  } catch (const Error&) {
    return false;
  }
  for (const OverlayRecord& record : file.records)
    if (record.points.empty()) throw std::runtime_error("an object without a place");
  ++number;
  const CoordinateState& net = Some_Nets()[static_cast<size_t>(number) % Some_Nets().size()];
  if (number % betweenImports == 0) Import(file, net);
  return !file.records.empty();
}

}  // namespace

FuzzTarget Make_Target() {
  return {"overlay",
          Seeds(),
          {"[Symbol 9]\n", "[Overlay]\n", "Typ=2\n", "Typ=3\n", "Typ=4\n", "Typ=5\n", "Typ=6\n", "Col=", "Area=",
           "Size=", "Font=", "Text=", "XKoord=11.05\nYKoord=49.75\n", "Width=", "Height=", "=", "1e999", "nan"},
          Run,
          {}};
}
