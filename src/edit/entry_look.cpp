#include "edit/entry_look.h"

#include <algorithm>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "hand/next_shape.h"
#include "objects/palette.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "view/redraw.h"

namespace {

const QString colorTitle = QStringLiteral("Farbe");
const QString rahmenTitle = QStringLiteral("Error: Change_Rahmen");
const QString frameTitle = QStringLiteral("Rahmen");
const QString fillTitle = QStringLiteral("Füllen");
const QString widthTitle = QStringLiteral("Strichbreite");

const QString squareUndo = QStringLiteral("Rückgängig: Planquadrat ändern");

using Change = std::function<void(EntryRow& row)>;

bool Is_Color(int number) { return number >= 0 && number < 16; }
int Color_Number(int stored) { return Is_Color(stored) ? stored : 0; }

LookOf Look_Kind(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  const EntryId id = EntryId::Parse(row.ID);
  if (type.IsPolygon()) return id.IsArea() ? LookOf::Area : id.IsLine() ? LookOf::Line : LookOf::Other;
  if (type.IsFigure() || type.Kind() == EntryKind::PlanSquare) return LookOf::Figure;
  if (type.Kind() == EntryKind::Picture) return LookOf::Picture;
  if (!type.IsText()) return LookOf::Other;
  return FontSpec::Parse(row.Schrift).IsSymbol() ? LookOf::Symbol : LookOf::Text;
}

// A scale bar keeps its direction where others keep the background colour.
bool Is_Scale(const EntryRow& row) { return EntryType::Parse(row.Typ).Kind() == EntryKind::Scale; }

void Read_Look(EntryLook& look, const EntryRow& row) {
  look.of = Look_Kind(row);
  look.id = EntryId::Parse(row.ID).name;
  const bool byText = look.of == LookOf::Text || look.of == LookOf::Symbol || look.of == LookOf::Picture;
  look.name = byText ? row.Eintrag : look.id;
  look.VG = Color_Number(row.VG);
  look.HG = Color_Number(row.HG);
  look.frame = FrameWord::Parse(row.RA);
  look.width = look.Has_Width() ? std::clamp(row.Xline, 1, widestPen) : look.frame.width;
  if (look.of == LookOf::Area) look.fill = FillCode::Parse(row.Yline);
  if (look.of == LookOf::Figure) look.fill = FillCode::FromSchrift(row.Schrift);
}

void Load_Next_Colors() {
  EntVGColor = Color_Of(CurVG);
  EntHGColor = Color_Of(CurHG);
}

// A new text and the outline of the map's edit box follow.
void Show_Next() {
  Load_Next_Colors();
  if (Entry_In_Hand()) {
    Map_Redraw();
    events.HandChanged.Emit();
  }
  events.StateChanged.Emit();
}

// The row in hand, else the values of the next entry.
bool Change_Look(const QString& title, const Change& ofRow, const std::function<void()>& ofNext) {
  if (Map.InHand.isEmpty() || !Entry_In_Hand()) {
    ofNext();
    Show_Next();
    return true;
  }
  if (!Store_Pending_Text()) return false;
  Map.CurBookmark = Map.InHand;
  const auto changes = Change_Of_Current([&ofRow](EntryRow& row, qint64) { ofRow(row); });
  if (changes.empty()) return true;
  // A square is one of a set that was made together: the former look comes back by the menu.
  const bool square = EntryType::Parse(changes[0].after.Typ).Kind() == EntryKind::PlanSquare;
  return Write_Changes(changes, title, square ? squareUndo : QString()) > 0;
}

// A figure without a fill is outlined in VG, whatever its frame says: its own frame takes over as it is.
void Give_Frame(EntryRow& row) {
  if (!EntryType::Parse(row.Typ).IsFigure() || FillCode::IsFill(row.Schrift)) return;
  row.Schrift = FillCode{}.ToSchrift();
  FrameWord frame;
  frame.color = Color_Number(row.VG);
  frame.width = 2;
  row.RA = frame.ToNumber();
}

bool Row_Has(const EntryRow& row, bool (EntryLook::*has)() const) {
  EntryLook look;
  look.of = Look_Kind(row);
  return (look.*has)();
}

}  // namespace

bool EntryLook::Has_Color(ColorOf which) const {
  if (of == LookOf::Picture) return which == ColorOf::RA;
  return of != LookOf::Other || which != ColorOf::RA;
}

bool EntryLook::Has_Fill() const { return of == LookOf::Area || of == LookOf::Figure || of == LookOf::Next; }

bool EntryLook::Has_Width() const { return of == LookOf::Line || of == LookOf::Area || of == LookOf::Next; }

bool EntryLook::Has_Frame() const { return of != LookOf::Other; }

EntryLook Next_Look() {
  EntryLook look;
  look.VG = Color_Number(CurVG);
  look.HG = Color_Number(CurHG);
  look.frame = FrameWord::Parse(CurRA);
  look.fill = FillCode::Parse(NextShape.fill);
  look.width = std::clamp(NextShape.width, 1, widestPen);
  return look;
}

EntryLook Look_In_Hand() {
  EntryLook look = Next_Look();
  if (const auto row = Row_In_Hand()) {
    Read_Look(look, *row);
  } else if (Map.InHand.isEmpty() && Entry_In_Hand()) {
    look.of = LookOf::NewText;
    look.name = Map.Text2.Text;
    look.width = look.frame.width;
  }
  return look;
}

void Set_Next_Color(ColorOf which, int color) {
  if (!Is_Color(color)) return;
  if (which == ColorOf::RA)
    CurRA = Frame_With_Color(CurRA, color);
  else
    (which == ColorOf::VG ? CurVG : CurHG) = color;
}

bool Change_Color(ColorOf which, int color) {
  if (which == ColorOf::RA) return Change_Rahmen(color);
  if (!Is_Color(color)) return true;
  const auto change = [which, color](EntryRow& row) {
    if (Look_Kind(row) == LookOf::Picture || (which == ColorOf::HG && Is_Scale(row))) return;
    (which == ColorOf::VG ? row.VG : row.HG) = color;
  };
  return Change_Look(colorTitle, change, [which, color] { Set_Next_Color(which, color); });
}

bool Change_Rahmen(int color) {
  if (!Is_Color(color)) return true;
  const auto change = [color](EntryRow& row) {
    if (!Row_Has(row, &EntryLook::Has_Frame)) return;
    Give_Frame(row);
    row.RA = Frame_With_Color(row.RA, color);
  };
  return Change_Look(rahmenTitle, change, [color] { Set_Next_Color(ColorOf::RA, color); });
}

bool Switch_Frame(bool on) {
  const auto change = [on](EntryRow& row) {
    if (!Row_Has(row, &EntryLook::Has_Frame)) return;
    Give_Frame(row);
    row.RA = Frame_Switched(row.RA, on);
  };
  return Change_Look(frameTitle, change, [on] { CurRA = Frame_Switched(CurRA, on); });
}

bool Change_Frame(const FrameWord& frame) {
  if (frame.width < 1 || frame.width > widestFrame || frame.pattern < 1 || frame.pattern > 9) return true;
  const auto styled = [&frame](int stored) {
    FrameWord word = FrameWord::Parse(stored);
    word.framed = frame.framed;
    word.width = frame.width;
    word.pattern = frame.pattern;
    return word.ToNumber();
  };
  const auto change = [&styled](EntryRow& row) {
    if (!Row_Has(row, &EntryLook::Has_Frame)) return;
    Give_Frame(row);
    row.RA = styled(row.RA);
  };
  return Change_Look(frameTitle, change, [&styled] { CurRA = styled(CurRA); });
}

bool Change_Fill(FillCode fill) {
  if (fill.code < -8 || fill.code > 8) return true;
  const auto change = [fill](EntryRow& row) {
    const LookOf of = Look_Kind(row);
    if (of == LookOf::Area) row.Yline = fill.ToNumber();
    if (of != LookOf::Figure) return;
    const double angle = FillCode::IsFill(row.Schrift) ? FillCode::AngleOf(row.Schrift) : 0;
    Give_Frame(row);
    row.Schrift = fill.ToSchrift(angle);
  };
  return Change_Look(fillTitle, change, [fill] { NextShape.fill = fill.ToNumber(); });
}

bool Change_Width(double width) {
  const int pixels = static_cast<int>(std::clamp(Int(width + 0.5), 1.0, static_cast<double>(widestPen)));
  const auto change = [pixels](EntryRow& row) {
    if (Row_Has(row, &EntryLook::Has_Width)) row.Xline = pixels;
  };
  return Change_Look(widthTitle, change, [pixels] { NextShape.width = pixels; });
}

void Change_Palette(const std::array<QRgb, 16>& colors) {
  if (colors == Palette) return;
  Palette = colors;
  EntVGColor = Color_Of(EntVG);
  EntHGColor = Color_Of(EntHG);
  if (Map.InHand.isEmpty() && Entry_In_Hand()) {
    Load_Next_Colors();
  }
  // Shown before it is written: a file that cannot be written must not hide the change.
  if (frmMDI.MapOpen) Map_Redraw();
  events.HandChanged.Emit();
  events.StateChanged.Emit();
  Guarded(colorTitle, [] { Save_Palette(); });
}
