#include "view/text_painter.h"

#include "objects/rotated_text.h"
#include "platform/message_box.h"
#include "state/dialog_hooks.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry.h"

namespace {

constexpr double smallestOwnSize = 3;  // sizes up to it are drawn at 12 points at every zoom
constexpr double standardSize = 12;

ReferenceLook Reference_Of(const PaintedRow& row, double textHeight) {
  ReferenceLook look{row.type.Kind(), row.colors.HG, Set_Reference_Style(), textHeight};
  if (row.type.Kind() == EntryKind::Reference) look.color = row.colors.VG;
  return look;
}

}  // namespace

const FontSpec& TextPainter::Font_Of(const QString& schrift) {
  const auto found = fonts.constFind(schrift);
  return found != fonts.constEnd() ? *found : *fonts.insert(schrift, FontSpec::Parse(schrift));
}

bool TextPainter::Set_Row_Font(const FontSpec& font, double size) {
  key.family = font.family.isEmpty() ? QStringLiteral("Arial") : font.family;
  const DrawContext& context = pass.context;
  const double scale = context.fontScale > 0 ? context.fontScale : 1 / context.view.Zoom;
  key.points = size > smallestOwnSize ? size * scale : standardSize;
  key.bold = font.bold;
  key.italic = font.italic;
  key.underline = font.underline;
  key.charset = font.charset;
  return pass.surface.SetFont(key);
}

void TextPainter::Draw(const Recordset& rows, const PaintedRow& row) {
  if (!frmMDI.showTexts) return;
  if (frmMDI.overview) return pass.Draw_Overview_Box(row);
  const FontSpec& font = Font_Of(Font_Text(row.type, rows.Text(column::Schrift)));
  const bool fontFound = Set_Row_Font(font, Stored_Size(rows.Number(column::Groesse)));
  const QString text = Shown_Text(rows.Text(column::Eintrag));
  TextLook look;
  look.frame = row.frame;
  look.colors = row.colors;
  look.transparent = font.transparent;
  look.perspex = Map.Perspex;
  if (font.angle > 0)
    Draw_Rotated(font, text, row, look);
  else
    Draw_Upright(text, row, look);
  if (!fontFound) Ask_Missing_Font(text, font, row);
}

void TextPainter::Draw_Upright(const QString& text, const PaintedRow& row, const TextLook& look) {
  DrawContext& context = pass.context;
  const QSizeF size(pass.surface.TextWidth(text), pass.surface.TextHeight(text));
  const QRectF box = Text_Box(row.at, size, row.frame);
  // Also from a box left of or above the view: its line may come into it.
  if (row.foot)
    Draw_Reference(context, *row.foot, box, Reference_Of(row, pass.surface.TextHeight(QStringLiteral("A"))));
  if (!box.intersects(context.window)) return;
  Draw_Text_Box(context, row.at, text, size, look);
  if (row.type.Kind() == EntryKind::TextArrow)
    pass.Add_Region(row, box, EllipseShape{box});
  else if (row.type.Kind() == EntryKind::Reference && row.foot)
    pass.Add_Region(row, box, Reference_Strip(row.at, *row.foot));
  else
    pass.Add_Region(row, box, box);
}

void TextPainter::Draw_Rotated(const FontSpec& font, const QString& text, const PaintedRow& row, const TextLook& look) {
  const ReferenceLook reference{row.type.Kind(), row.colors.HG, Set_Reference_Style(),
                                static_cast<double>(pass.surface.TextHeight(QStringLiteral("A")))};
  const QRectF box = Draw_Rotated_Text(pass.context, text, font.angle, row.at, row.foot, look, reference);
  if (!box.isEmpty()) pass.Draw_Marks(row, box);
}

void TextPainter::Ask_Missing_Font(const QString& text, const FontSpec& font, const PaintedRow& row) {
  if (!pass.onMap || !dialogHooks.FontWindow) return;
  // Once for each entry: the next scroll shall not ask it all again.
  const QString entry = QString::number(pass.context.key), asked = entry + u' ' + font.family;
  if (Map.FontsAsked.contains(asked)) return;
  if (Map.FontMissing == FontQuestion::Later) return;
  Map.FontsAsked.insert(asked);
  if (Map.FontMissing == FontQuestion::Never) return;
  const MsgAnswer answer = Message_Box(
      QStringLiteral("Der Eintrag \"%1\" (%3) verwendet die Schriftart \"%2\", die auf diesem Rechner nicht vorhanden "
                     "ist.\nMöchten Sie eine andere Schriftart wählen?")
          .arg(text, font.family, row.id),
      MsgButtons::YesNoCancel, MsgIcon::Question, QStringLiteral("Schrift nicht gefunden"));
  if (answer == MsgAnswer::Cancel) Map.FontMissing = FontQuestion::Never;
  if (answer != MsgAnswer::Yes) return;
  Map.FontMissing = FontQuestion::Later;  // the others after this one
  dialogHooks.FontWindow(entry, QStringLiteral("Schrift ändern: ") + font.family);
}
