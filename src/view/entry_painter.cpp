#include "view/entry_painter.h"

#include "objects/figure.h"
#include "objects/north_arrow.h"
#include "objects/polygon.h"
#include "objects/scale_bar.h"
#include "platform/for_now.h"
#include "state/global_state.h"
#include "state/mdi_state.h"
#include "store/vertex_table.h"
#include "view/picture_cache.h"

namespace {

constexpr int hiddenGrey = 160;

QRgb Greyed(QRgb color) {
  const auto mix = [](int part) { return (part + 3 * hiddenGrey) / 4; };
  return qRgb(mix(qRed(color)), mix(qGreen(color)), mix(qBlue(color)));
}

}  // namespace

EntryPainter::EntryPainter(DrawContext& context) : pass(context), texts(pass), plan(pass) {
  const ViewTransform& view = context.view;
  rightLimit = (context.window.right() - view.originX) * view.Zoom + view.Left;
  bottomLimit = (context.window.bottom() - view.originY) * view.Zoom + view.Top;
}

QRgb EntryPainter::Color(qint64 number) const { return greyed ? Greyed(Color_Of(number)) : Color_Of(number); }

// Counts it as well. Inactive and marked rows count wherever they lie: the numbers must not change with the scroll
// position.
bool EntryPainter::Is_Shown(const PaintedRow& row, bool northArrow) {
  greyed = row.type.hidden && !northArrow;
  pass.context.inactive = EntryId::StoredIsInactive(row.id);
  if (greyed) {
    ++counts.hidden;
    return frmMDI.showHidden && !pass.surface.IsPaper();
  }
  if (pass.context.inactive) ++counts.inactive;
  if (row.type.mark != Mark::None) ++counts.marked;
  return true;
}

std::vector<QPoint> EntryPainter::Vertices_Of(const QString& table) {
  std::vector<QPoint> vertices = Load_Vertices(table);
  if (vertices.empty() && !dbEntries->HasTable(table)) lostTable = table;
  return vertices;
}

void EntryPainter::Draw_Row(Recordset& rows) {
  lostTable.clear();
  Draw_What_There_Is(rows);
  // Its label is on the map all the same.
  if (!lostTable.isEmpty()) Raise(errors::tableNotFound, QStringLiteral("Die Eckpunkte fehlen: ") + lostTable);
}

void EntryPainter::Draw_What_There_Is(Recordset& rows) {
  PaintedRow row;
  row.type = EntryType::Parse(rows.Integer(column::Typ));
  row.id = rows.Text(column::ID);
  const bool northArrow = row.type.Kind() == EntryKind::NorthArrow && EntryId::Parse(row.id).IsNorthArrow();
  pass.context.key = rows.Key();
  if (row.type.Kind() == EntryKind::PlanSquare || row.type.Kind() == EntryKind::PlanDesign)
    plan.Note(rows, row, counts);
  if (!Is_Shown(row, northArrow)) return;
  // Hidden rows shown for looking cannot be hit.
  const ForNow regions(pass.context.regions, greyed ? nullptr : pass.context.regions);
  row.colors = {Color(rows.Integer(column::VG)), Color(rows.Integer(column::HG)), 0};
  row.frame = FrameWord::Parse(rows.Integer(column::RA));
  row.colors.RA = Color(row.frame.color);
  if (row.type.IsPolygon()) Draw_Polygon_Row(rows, row);
  const bool labelOff = row.type.IsPolygon() && rows.Number(column::Groesse) < 0;
  ++counts.drawn;
  if (labelOff || !Read_Place(rows, row)) return;
  if (northArrow)
    Draw_North_Arrow_Row(rows, row);
  else
    Draw_Kind(rows, row);
}

void EntryPainter::Draw_Kind(Recordset& rows, PaintedRow& row) {
  switch (row.type.Kind()) {
    case EntryKind::Text:
    case EntryKind::TextLine:
    case EntryKind::TextArrow:
    case EntryKind::TextCircle:
    case EntryKind::Polygon:
    case EntryKind::PolygonRound:
    case EntryKind::Reference:
      return texts.Draw(rows, row);
    case EntryKind::Picture:
      return Draw_Picture_Row(rows, row);
    case EntryKind::Scale:
      return Draw_Scale_Row(rows, row);
    case EntryKind::PlanSquare:
      return plan.Draw(rows, row);
    default:
      if (row.type.IsFigure()) Draw_Shape_Row(rows, row);
  }
}

bool EntryPainter::Read_Place(const Recordset& rows, PaintedRow& row) const {
  const auto number = [&rows](int where) { return Stored_Number(rows.Integer(where)); };
  const int x = number(column::Xmap), y = number(column::Ymap);
  if (x > rightLimit || y > bottomLimit) return false;
  const ViewTransform& view = pass.context.view;
  row.at = view.Point(QPoint(x, y));
  row.xLine = number(column::Xline);
  // Lines and areas keep their width and style where others keep the foot point.
  if (row.xLine > 0 && !row.type.IsPolygon()) row.foot = view.Point(QPoint(row.xLine, number(column::Yline)));
  return true;
}

void EntryPainter::Draw_Polygon_Row(const Recordset& rows, const PaintedRow& row) {
  const EntryRow entry = Read_Entry(rows);
  const EntryId id = EntryId::Parse(entry.ID);
  LineOptions options;
  options.rounded = row.type.Kind() == EntryKind::PolygonRound;
  Draw_Line_Entry(pass.context, entry, id, Vertices_Of(id.TableName()), row.colors, options);
}

void EntryPainter::Draw_Picture_Row(const Recordset& rows, const PaintedRow& row) {
  if (!frmMDI.showPictures) return;
  if (frmMDI.overview) return pass.Draw_Overview_Box(row);
  DrawContext& context = pass.context;
  Surface& surface = pass.surface;
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
    const bool reduced = pass.onMap && zoom > 1;
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
  pass.Add_Region(row, box, box);
}

void EntryPainter::Draw_Shape_Row(const Recordset& rows, const PaintedRow& row) {
  const EntryRow entry = Read_Entry(rows);
  std::vector<QPoint> vertices;
  if (row.type.IsFreeFigure()) vertices = Vertices_Of(EntryId::Parse(entry.ID).TableName());
  const FigureShown shown = Draw_Figure(pass.context, entry, row.type.Kind(), vertices, row.colors);
  if (shown.drawn) pass.Add_Region(row, shown.box, shown.region);
}

void EntryPainter::Draw_Scale_Row(Recordset& rows, const PaintedRow& row) {
  EntryRow entry = Read_Entry(rows);
  if (pass.onMap && entry.HG != 0 && entry.HG != 1) {
    entry.HG = 0;
    Update_Entry(entry);
  }
  const QRectF box = Draw_Scale_Bar(pass.context, entry);
  if (!box.isEmpty()) pass.Add_Region(row, box, box);
}

void EntryPainter::Draw_North_Arrow_Row(const Recordset& rows, const PaintedRow& row) {
  const QRectF box = Draw_North_Arrow(pass.context, Read_Entry(rows), row.colors);
  if (!box.isEmpty()) pass.Add_Region(row, box, box);
}

void EntryPainter::Finish() { plan.Finish(); }
