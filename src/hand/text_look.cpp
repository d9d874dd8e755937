#include "hand/text_look.h"

#include <cmath>

#include "platform/surface.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "store/stored_number.h"

namespace {

constexpr double standardSize = 10;

}  // namespace

bool Is_Sign_Font(const FontSpec& font) { return font.IsSymbol() || Is_Symbol_Font(font.family); }

FontChoice Font_Choice_Of(const QString& schrift, double size) {
  FontChoice choice{FontSpec::Parse(schrift), std::abs(Stored_Size(size))};
  if (choice.font.family.isEmpty()) choice.font.family = QStringLiteral("Arial");
  if (choice.size == 0) choice.size = standardSize;
  return choice;
}

FontChoice Font_Of_New_Text() {
  if (NextText.font) return *NextText.font;
  if (!On_Current_Entry()) return {};
  const EntryType type = Type_Here();
  FontChoice choice = Font_Choice_Of(rsEntries->Text(column::Schrift), rsEntries->Number(column::Groesse));
  if (!type.IsText() || Is_Sign_Font(choice.font)) return {};
  choice.font.angle = 0;  // the next one stands elsewhere
  return choice;
}

void Remember_Text_Look(int typ, const QString& schrift, double size, const QString& text) {
  if (!EntryType::Parse(typ).IsText()) return;
  const FontChoice choice = Font_Choice_Of(schrift, size);
  if (!Is_Sign_Font(choice.font)) {
    NextText.font.reset();
  } else {
    NextText.symbol = choice;
    if (!text.isEmpty()) NextText.sign = text.left(1);
  }
}

FontChoice Font_Of_Box() {
  const EditBox& box = Map.Text2;
  return {{.family = EntFont.isEmpty() ? box.FontName : EntFont,
           .bold = box.FontBold,
           .italic = box.FontItalic,
           .underline = box.FontUnderline,
           .transparent = box.FontTransparent,
           .charset = EntCharset,
           .angle = EntAngle},
          box.FontSize > 0 ? box.FontSize : EntFontSize};
}

void Load_Font_Into_Box(const FontChoice& choice) {
  EditBox& box = Map.Text2;
  EntFont = choice.font.family;
  EntAngle = choice.font.angle;
  EntCharset = choice.font.charset;
  EntFontSize = box.FontSize = choice.size;
  box.FontName = Font_Installed(EntFont) ? EntFont : QStringLiteral("Arial");
  box.FontBold = choice.font.bold;
  box.FontItalic = choice.font.italic;
  box.FontUnderline = choice.font.underline;
  box.FontTransparent = choice.font.transparent;
}
