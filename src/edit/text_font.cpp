#include "edit/text_font.h"

#include <algorithm>
#include <cmath>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "platform/message_box.h"
#include "state/map_state.h"
#include "state/table_state.h"
#include "view/redraw.h"

namespace {

const QString title = QStringLiteral("Schrift");

// Lines and areas have the font of their label there.
bool Has_Font(const EntryType& type) { return type.IsText() || type.IsPolygon(); }

void Write_Font(const FontChoice& choice) {
  Write_Changes(Change_Of_Current([&](EntryRow& row, qint64) {
                  if (!Has_Font(EntryType::Parse(row.Typ))) return;
                  row.Schrift = choice.font.ToText();
                  row.Groesse = row.Groesse < 0 ? -choice.size : choice.size;  // below 0: the label is switched off
                }),
                title);
}

bool Can_Be_Stored(const FontChoice& choice) {
  if (Family_Fits(choice.font.family) && choice.font.ToText().size() <= textColumnWidth) return true;
  Message_Box(QStringLiteral("Die Schriftart \"%1\" kann nicht gespeichert werden.\nBitte wählen Sie eine andere.")
                  .arg(choice.font.family),
              MsgButtons::Ok, MsgIcon::Warning, title);
  return false;
}

}  // namespace

FontTarget Font_Target() {
  if (!Entry_In_Hand()) return FontTarget::Next;
  if (Map.InHand.isEmpty()) return FontTarget::Typed;
  const auto row = Row_In_Hand();
  return row && Has_Font(EntryType::Parse(row->Typ)) ? FontTarget::Entry : FontTarget::Next;
}

FontChoice Load_Font_Spec() {
  switch (Font_Target()) {
    case FontTarget::Typed:
      return Font_Of_Box();
    case FontTarget::Entry: {
      const EntryRow row = *Row_In_Hand();
      return Font_Choice_Of(Font_Text(EntryType::Parse(row.Typ), row.Schrift), row.Groesse);
    }
    case FontTarget::Next:
      break;
  }
  return Font_Of_New_Text();
}

bool Take_Font(FontChoice choice) {
  FontSpec& font = choice.font;
  font.family = font.family.trimmed();
  font.angle = std::fmod(font.angle, 360.0);
  if (font.angle < 0) font.angle += 360;
  choice.size = std::clamp(choice.size, smallestFontSize, largestFontSize);
  if (!Can_Be_Stored(choice)) return false;
  switch (Font_Target()) {
    case FontTarget::Entry:
      if (!Store_Pending_Text()) return false;
      Map.CurBookmark = Map.InHand;
      Write_Font(choice);
      Remember_Text_Look(0, font.ToText(), choice.size, {});
      return true;
    case FontTarget::Typed:
      Load_Font_Into_Box(choice);
      Map_Redraw();
      return true;
    case FontTarget::Next:
      if (Is_Sign_Font(font))
        NextText.symbol = choice;
      else
        NextText.font = choice;
      return true;
  }
  return false;
}

bool Family_Fits(const QString& family) {
  return !family.trimmed().isEmpty() && !family.contains(u'-') && !family.contains(u'<');
}

QString Sample_Text() {
  QString text;
  if (Font_Target() != FontTarget::Next) text = Map.Text2.Text;
  if (Font_Target() == FontTarget::Entry && !Text_Pending()) text = Row_In_Hand()->Eintrag;
  const auto end = std::find_if(text.cbegin(), text.cend(), [](QChar c) { return c == u'\r' || c == u'\n'; });
  text.truncate(end - text.cbegin());
  return text.trimmed().isEmpty() ? QStringLiteral("TTT") : text;
}

void Set_Perspex(bool on) {
  if (Map.Perspex == on) return;
  Map.Perspex = on;
  Map_Redraw();
}
