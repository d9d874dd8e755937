#include "edit/symbols.h"

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/surface.h"
#include "state/map_state.h"

namespace {

const QString title = QStringLiteral("Symbol");

QSize Symbol_Size(const FontChoice& choice, const QString& sign) {
  QImage pixel = Make_Canvas(1, 1);
  const auto surface = Make_Surface(pixel);
  const FontSpec& font = choice.font;
  surface->SetFont(
      {font.family, choice.size / static_cast<double>(Map.Zoom), font.bold, font.italic, font.underline, font.charset});
  return {surface->TextWidth(sign), surface->TextHeight(sign)};
}

// The first symbol has no frame; others follow the one before.
int Frame_Of_Symbol() {
  FrameWord frame = FrameWord::Parse(CurRA);
  if (!On_Current_Entry() || !FontSpec::Parse(rsEntries->Text(column::Schrift)).IsSymbol()) frame.framed = false;
  return frame.ToNumber();
}

EntryRow Symbol_Row(QPoint window) {
  const FontChoice& choice = NextText.symbol;
  EntryRow row;
  row.RA = Frame_Of_Symbol();
  const double rim = FrameWord::Parse(row.RA).framed ? FrameWord::Parse(row.RA).width + 1 : 1;
  const QSize size = Symbol_Size(choice, NextText.sign);
  row.ID = QStringLiteral("Text");
  row.Eintrag = NextText.sign;
  row.Schrift = choice.font.ToText();
  row.Groesse = choice.size;
  row.VG = CurVG;
  row.HG = CurHG;
  row.Xmap = Map_X(window.x() - size.width() / 2.0 - rim);
  row.Ymap = Map_Y(window.y() - size.height() / 2.0 - rim);
  return row;
}

}  // namespace

bool Symbol_In_Hand() {
  const std::optional<EntryRow> row = Row_In_Hand();
  if (!row || !EntryType::Parse(row->Typ).IsText()) return false;
  const FontSpec font = FontSpec::Parse(row->Schrift);
  return font.IsSymbol() || Is_Symbol_Font(font.family);
}

FontChoice Symbol_Font() { return Symbol_In_Hand() ? Load_Font_Spec() : NextText.symbol; }

QString Symbol_Sign() { return Symbol_In_Hand() ? Row_In_Hand()->Eintrag : NextText.sign; }

bool Take_Symbol(const FontChoice& choice, const QString& sign) {
  if (sign.isEmpty()) return false;
  NextText.symbol = choice;
  NextText.sign = sign.left(1);
  if (!Symbol_In_Hand()) return true;
  if (!Store_Pending_Text()) return false;
  Map.CurBookmark = Map.InHand;
  Write_Changes(Change_Of_Current([&](EntryRow& row, qint64) {
                  row.Eintrag = sign;
                  row.Schrift = choice.font.ToText();
                  row.Groesse = choice.size;
                }),
                title);
  return true;
}

bool Place_Symbol(QPoint window) {
  if (!rsEntries || !dbEntries) return false;
  if (Entry_In_Hand() && !End_Entry()) return false;
  const EntryRow row = Symbol_Row(window);
  if (!Append_In_Transaction(title, [&row] { Append_Entry(row); })) return false;
  Show_Changed_Entries();
  Take_Entry(Map.CurBookmark);
  return true;
}

void Put_Character(QChar character) {
  const FontTarget target = Font_Target();
  if (target == FontTarget::Next) {
    NextText.sign = character;
    return;
  }
  const QString& text = Map.Text2.Text;
  const bool single = text.size() <= 1 && Is_Symbol_Font(Load_Font_Spec().font.family);
  if (target == FontTarget::Entry && single)
    Take_Symbol(Load_Font_Spec(), character);
  else
    Text_Typed(single ? QString(character) : text + character);
}
