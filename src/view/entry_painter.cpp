#include "view/entry_painter.h"

#include <algorithm>

#include "objects/figure.h"
#include "objects/north_arrow.h"
#include "objects/polygon.h"
#include "objects/reference_line.h"
#include "objects/rotated_text.h"
#include "objects/scale_bar.h"
#include "plansquares/raster_rows.h"
#include "platform/message_box.h"
#include "state/dialog_hooks.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/vertex_table.h"
#include "view/picture_cache.h"

namespace {

constexpr double smallestOwnSize = 3;  // sizes up to it are drawn at 12 points at every zoom
constexpr double standardSize = 12;
constexpr double overviewBox = 5;
constexpr double smallestRegion = 3;
constexpr int hiddenGrey = 160;

ReferenceStyle Set_Reference_Style() {
  return {static_cast<double>(Map.ReferenceWidth), Map.ReferenceCircle, Map.ReferenceArrow};
}

QRgb Greyed(QRgb color) {
  const auto mix = [](int part) { return (part + 3 * hiddenGrey) / 4; };
  return qRgb(mix(qRed(color)), mix(qGreen(color)), mix(qBlue(color)));
}

}  // namespace

EntryPainter::EntryPainter(DrawContext& drawContext)
    : context(drawContext), surface(drawContext.surface), onMap(drawContext.regions != nullptr) {
  const ViewTransform& view = context.view;
  rightLimit = (context.window.right() - view.originX) * view.Zoom + view.Left;
  bottomLimit = (context.window.bottom() - view.originY) * view.Zoom + view.Top;
  if (!onMap) return;
  Map.PlanLabels.clear();
  Map.lblPLQ.Visible = false;  // until the mouse moves over a square again
}

QRgb EntryPainter::Color(qint64 number) const { return greyed ? Greyed(Color_Of(number)) : Color_Of(number); }

const FontSpec& EntryPainter::Font_Of(const QString& schrift) {
  const auto found = fonts.constFind(schrift);
  return found != fonts.constEnd() ? *found : *fonts.insert(schrift, FontSpec::Parse(schrift));
}

void EntryPainter::Draw_Row(Recordset& rows) {
  Row row;
  row.type = EntryType::Parse(rows.Integer(column::Typ));
  row.id = rows.Text(column::ID);
  const bool northArrow = row.type.Kind() == EntryKind::NorthArrow && EntryId::Parse(row.id).IsNorthArrow();
  context.key = rows.Key();
  if (row.type.Kind() == EntryKind::PlanSquare || row.type.Kind() == EntryKind::PlanDesign) Note_Plan_Row(rows, row);
  greyed = row.type.hidden && !northArrow;
  if (greyed) {
    ++counts.hidden;
    if (!frmMDI.showHidden || surface.IsPaper()) return;
  }
  context.inactive = EntryId::StoredIsInactive(row.id);
  // Inactive and marked rows count wherever they lie: the numbers must not change with the scroll position.
  if (context.inactive && !greyed) ++counts.inactive;
  if (row.type.mark != Mark::None && !greyed) ++counts.marked;
  // Hidden rows shown for looking cannot be hit.
  RegionSet* const regions = context.regions;
  if (greyed) context.regions = nullptr;
  row.colors = {Color(rows.Integer(column::VG)), Color(rows.Integer(column::HG)), 0};
  row.frame = FrameWord::Parse(rows.Integer(column::RA));
  row.colors.RA = Color(row.frame.color);
  if (row.type.IsPolygon()) Draw_Polygon_Row(rows, row);
  const bool labelOff = row.type.IsPolygon() && rows.Number(column::Groesse) < 0;
  ++counts.drawn;
  if (!labelOff && Read_Row(rows, row)) {
    switch (row.type.Kind()) {
      case EntryKind::Text:
      case EntryKind::TextLine:
      case EntryKind::TextArrow:
      case EntryKind::TextCircle:
      case EntryKind::Polygon:
      case EntryKind::PolygonRound:
      case EntryKind::Reference:
        Draw_Text_Row(rows, row);
        break;
      case EntryKind::Picture:
        Draw_Picture_Row(rows, row);
        break;
      case EntryKind::Scale:
        Draw_Scale_Row(rows, row);
        break;
      case EntryKind::NorthArrow:
        if (northArrow) {
          const QRectF box = Draw_North_Arrow(context, Read_Entry(rows), row.colors);
          if (!box.isEmpty()) Add_Region(row, box, box);
        }
        break;
      case EntryKind::PlanSquare:
        Draw_Plan_Square(rows, row);
        break;
      default:
        if (row.type.IsFigure()) Draw_Shape_Row(rows, row);
    }
  }
  context.regions = regions;
}

bool EntryPainter::Read_Row(const Recordset& rows, Row& row) {
  const auto number = [&rows](int where) { return Stored_Number(rows.Integer(where)); };
  const int x = number(column::Xmap), y = number(column::Ymap);
  if (x > rightLimit || y > bottomLimit) return false;
  row.at = context.view.Point(QPoint(x, y));
  row.xLine = number(column::Xline);
  // Lines and areas keep their width and style where others keep the foot point.
  if (row.xLine > 0 && !row.type.IsPolygon())
    row.foot = context.view.Point(QPoint(row.xLine, number(column::Yline)));
  return true;
}

void EntryPainter::Draw_Polygon_Row(Recordset& rows, Row& row) {
  const EntryRow entry = Read_Entry(rows);
  const EntryId id = EntryId::Parse(entry.ID);
  LineOptions options;
  options.rounded = row.type.Kind() == EntryKind::PolygonRound;
  Draw_Line_Entry(context, entry, id, Load_Vertices(id.TableName()), row.colors, options);
}

bool EntryPainter::Set_Row_Font(const FontSpec& font, double size) {
  key.family = font.family.isEmpty() ? QStringLiteral("Arial") : font.family;
  const double scale = context.fontScale > 0 ? context.fontScale : 1 / context.view.Zoom;
  key.points = size > smallestOwnSize ? size * scale : standardSize;
  key.bold = font.bold;
  key.italic = font.italic;
  key.underline = font.underline;
  key.charset = font.charset;
  return surface.SetFont(key);
}

void EntryPainter::Draw_Text_Row(const Recordset& rows, Row& row) {
  if (!frmMDI.showTexts) return;
  if (frmMDI.overview) return Draw_Overview_Box(row);
  const FontSpec& font = Font_Of(rows.Text(column::Schrift));
  const bool fontFound = Set_Row_Font(font, Stored_Size(rows.Number(column::Groesse)));
  const QString text = Shown_Text(rows.Text(column::Eintrag));
  const QSizeF size(surface.TextWidth(text), surface.TextHeight(text));
  TextLook look;
  look.frame = row.frame;
  look.colors = row.colors;
  look.transparent = font.transparent;
  look.perspex = Map.Perspex;
  look.boxMode = Map.BoxMode == -1 ? DrawMode::NotXor : DrawMode::Copy;
  if (font.angle > 0) {
    Draw_Rotated_Row(font, text, row, look);
  } else {
    const QRectF box = Text_Box(row.at, size, row.frame);
    if (row.foot) {
      // Also from a box left of or above the view: its line may come into it.
      ReferenceLook reference{row.type.Kind(), row.colors.HG, Set_Reference_Style(), size.height()};
      if (row.type.Kind() == EntryKind::Reference) reference.color = row.colors.VG;
      reference.textHeight = surface.TextHeight(QStringLiteral("A"));
      Draw_Reference(context, *row.foot, box, reference);
    }
    if (!box.intersects(context.window)) return;
    Draw_Text_Box(context, row.at, text, size, look);
    if (row.type.Kind() == EntryKind::TextArrow)
      Add_Region(row, box, EllipseShape{box});
    else if (row.type.Kind() == EntryKind::Reference && row.foot)
      Add_Region(row, box, Reference_Strip(row.at, *row.foot));
    else
      Add_Region(row, box, box);
  }
  if (!fontFound) Ask_Missing_Font(text, font, row);
}

void EntryPainter::Draw_Rotated_Row(const FontSpec& font, const QString& text, const Row& row, const TextLook& look) {
  ReferenceLook reference{row.type.Kind(), row.colors.HG, Set_Reference_Style(),
                          static_cast<double>(surface.TextHeight(QStringLiteral("A")))};
  const QRectF box = Draw_Rotated_Text(context, text, font.angle, row.at, row.foot, look, reference);
  if (!box.isEmpty()) Draw_Marks(row, box);
}

void EntryPainter::Draw_Picture_Row(const Recordset& rows, const Row& row) {
  if (!frmMDI.showPictures) return;
  if (frmMDI.overview) return Draw_Overview_Box(row);
  const QString name = Shown_Text(rows.Text(column::Eintrag));
  const double zoom = context.view.Zoom;
  const QImage full = Entry_Picture(name);
  QRectF box(row.at, QSizeF(context.view.Length(full.width()), context.view.Length(full.height())));
  const QString missing = full.isNull() ? Entry_Picture_Flaw(name) : QString();
  if (full.isNull()) {
    surface.SetFont({});
    box.setSize(QSizeF(surface.TextWidth(missing) + 2, surface.TextHeight(missing) + 2));
  }
  if (row.foot && row.frame.color >= 1)
    Draw_Reference(context, *row.foot, box, {row.type.Kind(), row.colors.RA, Set_Reference_Style()});
  if (!box.intersects(context.window)) return;
  if (full.isNull()) {
    Draw_Text_Box(context, row.at, missing, box.size() - QSizeF(2, 2),
                  {FrameWord::Parse(-1), {QBColor(12), QBColor(15), 0}});
  } else {
    const bool reduced = onMap && zoom > 1;
    surface.PaintPicture(box, reduced ? Entry_Picture(name, zoom) : full);
  }
  if (row.frame.framed && !full.isNull()) {
    surface.pen = {};
    surface.pen.ForeColor = row.colors.RA;
    surface.pen.DrawWidth = row.frame.width;
    surface.pen.pen = Frame_Pattern(row.frame);
    const double out = row.frame.width;
    surface.Box(box.adjusted(-out, -out, out, out));
  }
  Add_Region(row, box, box);
}

void EntryPainter::Draw_Shape_Row(Recordset& rows, const Row& row) {
  const EntryRow entry = Read_Entry(rows);
  static const std::vector<QPoint> none;
  const std::vector<QPoint>& vertices =
      row.type.IsFreeFigure() ? Load_Vertices(EntryId::Parse(entry.ID).TableName()) : none;
  const FigureShown shown = Draw_Figure(context, entry, row.type.Kind(), vertices, row.colors);
  if (shown.drawn) Add_Region(row, shown.box, shown.region);
}

void EntryPainter::Draw_Scale_Row(Recordset& rows, const Row& row) {
  EntryRow entry = Read_Entry(rows);
  if (onMap && entry.HG != 0 && entry.HG != 1) {
    entry.HG = 0;
    Update_Entry(entry);
  }
  const QRectF box = Draw_Scale_Bar(context, entry);
  if (!box.isEmpty()) Add_Region(row, box, box);
}

void EntryPainter::Draw_Overview_Box(const Row& row) {
  const QRectF box(row.at, QSizeF(overviewBox, overviewBox));
  if (!box.intersects(context.window)) return;
  surface.FilledBox(box, row.colors.VG);
  Add_Region(row, box, box);
}

void EntryPainter::Ask_Missing_Font(const QString& text, const FontSpec& font, const Row& row) {
  if (!onMap || !dialogHooks.FontWindow) return;
  // Once for each entry: the next scroll shall not ask it all again.
  const QString asked = QString::number(context.key) + u' ' + font.family;
  if (Map.FontsAsked.contains(asked)) return;
  if (Map.FontMissingAnswer == QLatin1String("Later")) return;
  Map.FontsAsked.insert(asked);
  if (Map.FontMissingAnswer == QLatin1String("No")) return;
  const MsgAnswer answer = Message_Box(
      QStringLiteral("Der Eintrag \"%1\" (%3) verwendet die Schriftart \"%2\", die auf diesem Rechner nicht vorhanden "
                     "ist.\nMöchten Sie eine andere Schriftart wählen?")
          .arg(text, font.family, row.id),
      MsgButtons::YesNoCancel, MsgIcon::Question, QStringLiteral("Schrift nicht gefunden"));
  if (answer == MsgAnswer::Cancel) Map.FontMissingAnswer = QStringLiteral("No");
  if (answer != MsgAnswer::Yes) return;
  Map.FontMissingAnswer = QStringLiteral("Later");  // the others after this one
  dialogHooks.FontWindow(QString::number(context.key), QStringLiteral("Schrift ändern: ") + font.family);
}

void EntryPainter::Add_Region(const Row& row, const QRectF& box, RegionShape shape) {
  if (context.regions && !context.inactive) {
    // A box without extent would never be hit.
    if (QRectF* plain = std::get_if<QRectF>(&shape))
      plain->setSize({plain->width() < 1 ? smallestRegion : plain->width(),
                      plain->height() < 1 ? smallestRegion : plain->height()});
    context.regions->Add(std::move(shape), context.key, 0);
  }
  Draw_Marks(row, box);
}

namespace {

// Neighbours share the pixels of the line between them, at every zoom.
QRectF Square_Box(const ViewTransform& view, const EntryBox& box) {
  return {QPointF(view.X(box.x), view.Y(box.y)), QPointF(view.X(box.x + box.width), view.Y(box.y + box.height))};
}

}  // namespace

void EntryPainter::Note_Plan_Row(const Recordset& rows, const Row& row) {
  const EntryRow entry = Read_Entry(rows);
  ++counts.planRows;
  if (!row.type.hidden) ++counts.planShown;
  if (row.type.Kind() == EntryKind::PlanDesign) {
    const RasterDesign design = Design_Of(entry);
    planMode = static_cast<int>(design.labels) * (row.type.hidden ? -1 : 1);
    planLabels.Set_Design(design);
    return;
  }
  Square square;
  square.box = Square_Box(context.view, entry_box(entry));
  square.inactive = context.inactive;
  square.label.key = context.key;
  square.label.name = Plan_Name(row.id);
  const QString text = Shown_Text(entry.Eintrag);
  square.label.text = row.type.mark == Mark::None ? square.label.name : text;
  if (square.label.text.isEmpty()) square.label.text = text;
  if (row.type.hidden) square.label.text.clear();
  square.label.offsetX = static_cast<int>(square.box.x());
  square.label.offsetY = static_cast<int>(square.box.y());
  const bool inWindow = square.box.intersects(context.window);
  if (!row.type.hidden) planLabels.Add_Square(square.label.name, text, square.box, inWindow);
  if (onMap && inWindow) squares.push_back(std::move(square));
}

void EntryPainter::Draw_Plan_Square(Recordset& rows, const Row& row) {
  EntryRow entry = Read_Entry(rows);
  const QRectF box = Square_Box(context.view, entry_box(entry));
  // A wider frame counts like that of a figure.
  const double width = row.frame.width > 1 ? context.view.Pen(row.frame.width) : context.view.Zoom > 1.0 ? 1 : 2;
  const QRectF seen = context.window.adjusted(-2 * width, -2 * width, 2 * width, 2 * width);
  const QRectF outline = box.adjusted(0, 0, width, width) & seen;
  if (outline.isEmpty()) return;
  const bool filled = FillCode::IsFill(entry.Schrift);
  if (filled) {
    entry.RA = Frame_Switched(entry.RA, false);
    Draw_Figure(context, entry, row.type.Kind(), {}, row.colors);
  }
  if (!filled || row.frame.framed) {
    const KeepPen keep(surface);
    surface.pen = {};
    surface.pen.ForeColor = row.colors.RA;
    surface.pen.DrawWidth = width;
    surface.Box(outline);
  }
  Draw_Marks(row, box);
}

void EntryPainter::Finish() {
  planLabels.Print(context);
  if (onMap) Add_Plan_Regions();
}

// A square that was hidden by itself keeps its place: it can be found there and shown again.
void EntryPainter::Add_Plan_Regions() {
  Map.PlanMode = planMode;
  const bool active = Raster_Active() && planMode >= 0;
  for (Square& square : squares) {
    const bool hidden = square.label.text.isEmpty();
    if (active && context.regions && !square.inactive) context.regions->Add(square.box, square.label.key, planRegion);
    if (Map.PlanLabels.empty() && !hidden && !Map.lblPLQ.Visible) Map.lblPLQ.Text = square.label.text;
    if (!hidden || active) Map.PlanLabels.push_back(std::move(square.label));
  }
}

void EntryPainter::Draw_Marks(const Row& row, const QRectF& box) {
  if (row.type.mark == Mark::None || !onMap) return;
  surface.pen = {};
  surface.pen.mode = DrawMode::Invert;
  surface.pen.pen = PenStyle::Dot;
  surface.Box(box.adjusted(-2, -2, 2, 2));
  if (row.type.mark == Mark::Last) surface.Box(box.adjusted(-5, -5, 5, 5));
  surface.pen = {};
}

void Load_Rahmen_Style() {
  EntRA = Stored_Number(rsEntries->Integer(column::RA));
  const FrameWord frame = FrameWord::Parse(EntRA);
  EntRAColor = Color_Of(frame.color);
}

void Load_Entry_Colors() {
  const auto color = [](int col) {
    const qint64 number = rsEntries->Integer(col);
    return number >= 0 && number < 16 ? static_cast<int>(number) : 0;
  };
  EntVG = CurVG = color(column::VG);
  EntHG = CurHG = color(column::HG);
  EntVGColor = Color_Of(EntVG);
  EntHGColor = Color_Of(EntHG);
  Load_Rahmen_Style();
  CurRA = EntRA;
}
