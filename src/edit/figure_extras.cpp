#include "edit/figure_extras.h"

#include <algorithm>
#include <cmath>

#include "edit/bulk_change.h"
#include "hand/activation.h"
#include "objects/figure.h"
#include "state/events.h"
#include "state/map_state.h"
#include "store/anchor.h"
#include "store/entry_edit.h"
#include "store/table_file.h"
#include "store/vertex_table.h"

namespace {

const QString title = QStringLiteral("Eigenschaften");
const QString undoCaption = QStringLiteral("Rückgängig: Figur ändern");
const QString axisName = QStringLiteral("Achse");
const QString alongText = QStringLiteral("Längsachse"), acrossText = QStringLiteral("Querachse");
const QString centreText = QStringLiteral("M"), focusText = QStringLiteral("F");
constexpr double textSize = 10, textDistance = 10;
const QStringList pointTexts = {QStringLiteral("M"), QStringLiteral("F1"), QStringLiteral("F2")};

bool Has_Foci(const EntryRow& figure) {
  const EntryKind kind = EntryType::Parse(figure.Typ).Kind();
  return kind == EntryKind::Ellipse || kind == EntryKind::Circle;
}

QString Name_Of(const EntryRow& figure) { return EntryId::Parse(figure.ID).name; }

// Behind the end of an axis that is farther to the right, or lower where both are as far.
QPointF Label_Place(const std::array<QPointF, 2>& axis, double distance) {
  const QPointF way = axis[1] - axis[0];
  const double length = std::hypot(way.x(), way.y());
  return length > 0 ? axis[1] + way * (distance / length) : axis[1];
}

EntryRow Extra_Row(const EntryRow& figure, EntryKind kind, const QString& text, QPointF at) {
  EntryRow row;
  EntryId id;
  id.inactive = true;
  id.name = Name_Of(figure);
  if (kind == EntryKind::Reference) {
    id.assignment = id.name;
    id.name = axisName;
  }
  row.ID = id.ToText();
  row.Eintrag = text;
  FontSpec font;
  font.family = QStringLiteral("Arial");
  font.transparent = true;  // the figure stays to be seen behind it
  row.Schrift = font.ToText();
  row.Groesse = textSize;
  row.VG = figure.VG;
  row.HG = figure.HG;
  row.RA = figure.RA;
  row.Xmap = static_cast<int>(std::lrint(at.x()));
  row.Ymap = static_cast<int>(std::lrint(at.y()));
  row.Typ = static_cast<int>(kind);
  return row;
}

// The foot point has to lie right of the map's edge to be one: the right end takes it.
EntryRow Axis_Row(const EntryRow& figure, std::array<QPointF, 2> axis) {
  if (std::lrint(axis[0].x()) > std::lrint(axis[1].x())) std::swap(axis[0], axis[1]);
  EntryRow row = Extra_Row(figure, EntryKind::Reference, {}, axis[0]);
  FrameWord frame = FrameWord::Parse(figure.RA);
  frame.framed = false;  // there is no text to be framed
  row.RA = frame.ToNumber();
  row.Xline = static_cast<int>(std::lrint(axis[1].x()));
  row.Yline = static_cast<int>(std::lrint(axis[1].y()));
  return row;
}

enum class ExtraPart { None, Point, Along, Across, Label };

// What a row is to the figure of that name.
ExtraPart Part_Of(const QString& name, const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  const EntryId id = EntryId::Parse(row.ID);
  const bool axis = id.name == axisName && id.assignment == name;
  if (!type.IsText() || (!axis && id.name != name)) return ExtraPart::None;
  if (axis) return ExtraPart::Along;
  if (pointTexts.contains(row.Eintrag)) return ExtraPart::Point;
  return id.inactive ? ExtraPart::Label : ExtraPart::None;
}

// Rows that cannot be read belong to the repair.
template <typename Work>
void For_Each_Extra(const QString& name, Work&& work) {
  For_Each_Entry([&] {
    if (!rsEntries->Text(column::ID).contains(name)) return;  // cheaper than the whole row
    const std::optional<EntryRow> row = Read_Sound_Entry();
    if (!row) return;
    if (const ExtraPart part = Part_Of(name, *row); part != ExtraPart::None) work(*row, part);
  });
}

std::vector<EntryRow> Rows_Of(const QString& name) {
  std::vector<EntryRow> rows;
  For_Each_Extra(name, [&rows](const EntryRow& row, ExtraPart) { rows.push_back(row); });
  return rows;
}

}  // namespace

FigureMeasures GetAbmessungen(const EntryRow& row) {
  const EntryBox box = entry_box(row);
  FigureMeasures is;
  is.x = static_cast<float>(box.x);
  is.y = static_cast<float>(box.y);
  is.w = static_cast<float>(box.width);
  is.h = static_cast<float>(box.height);
  is.HalfW = box.width / 2.0;
  is.HalfH = box.height / 2.0;
  is.Radius = std::max(is.HalfW, is.HalfH);
  is.CenterX = box.x + is.HalfW;
  is.CenterY = box.y + is.HalfH;
  is.angle = FillCode::IsFill(row.Schrift) ? Normal_Angle(FillCode::AngleOf(row.Schrift)) : 0;
  return is;
}

FigureAxes Axes_Of(const FigureMeasures& is) {
  const QPointF centre(is.CenterX, is.CenterY);
  const double shorter = std::min(is.HalfW, is.HalfH);
  const double focus = std::sqrt(std::abs(is.HalfW * is.HalfW - is.HalfH * is.HalfH));
  const QPointF along = is.Upright() ? QPointF(0, 1) : QPointF(1, 0), across(along.y(), along.x());
  const auto pair = [&](QPointF direction, double half) {
    return std::array<QPointF, 2>{Turned(centre - direction * half, centre, is.angle),
                                  Turned(centre + direction * half, centre, is.angle)};
  };
  return {pair(along, is.Radius), pair(across, shorter), pair(along, focus)};
}

double GetWinkel(QPointF centre, QPointF to) {
  const QPointF way = to - centre;
  if (way.isNull()) return 0;
  return Normal_Angle(std::atan2(-way.y(), way.x()) * 180 / 3.14159265358979323846);
}

double Normal_Angle(double degrees) {
  if (!std::isfinite(degrees)) return 0;
  double angle = std::fmod(degrees, 360.0);
  if (angle < 0) angle += 360;
  angle = std::round(angle * 1000) / 1000;
  return angle >= 360 ? 0 : angle;
}

std::vector<EntryRow> Extra_Rows(const EntryRow& figure, const FigureExtras& extras) {
  const FigureMeasures is = GetAbmessungen(figure);
  const FigureAxes axes = Axes_Of(is);
  std::vector<EntryRow> rows;
  const auto text = [&](const QString& what, QPointF at) {
    rows.push_back(Extra_Row(figure, EntryKind::Text, what, at));
  };
  if (extras.Mittelpunkt) text(centreText, {is.CenterX, is.CenterY});
  if (extras.Fokus && Has_Foci(figure))
    for (size_t i = 0; i < 2; ++i) text(focusText + QString::number(i + 1), axes.foci[i]);
  if (extras.Laengsachse) rows.push_back(Axis_Row(figure, axes.along));
  if (extras.Querachse) rows.push_back(Axis_Row(figure, axes.across));
  if (extras.AchsenText && extras.Laengsachse) text(alongText, Label_Place(axes.along, textDistance));
  if (extras.AchsenText && extras.Querachse) text(acrossText, Label_Place(axes.across, textDistance));
  return rows;
}

bool Current_Is_Figure() { return On_Current_Entry() && Type_Here().IsFigure(); }

std::optional<EntryRow> Figure_In_Hand() {
  const std::optional<EntryRow> row = Row_In_Hand();
  return row && EntryType::Parse(row->Typ).IsFigure() ? row : std::nullopt;
}

FigureExtras Extras_Of(const EntryRow& figure) {
  FigureExtras found;
  std::vector<EntryRow> axes;
  QStringList labels;
  For_Each_Extra(Name_Of(figure), [&](const EntryRow& row, ExtraPart part) {
    if (part == ExtraPart::Along) axes.push_back(row);
    if (part == ExtraPart::Label) labels.append(row.Eintrag);
    if (part == ExtraPart::Point) (row.Eintrag == centreText ? found.Mittelpunkt : found.Fokus) = true;
  });
  found.AchsenText = !labels.isEmpty();
  if (axes.size() >= 2) {
    found.Laengsachse = found.Querachse = true;
  } else if (axes.size() == 1) {
    // Which of the two it is tells its label, else its length.
    const double length = std::hypot(axes[0].Xline - axes[0].Xmap, axes[0].Yline - axes[0].Ymap);
    const FigureMeasures is = GetAbmessungen(figure);
    const double longer = 2 * is.Radius, shorter = 2 * std::min(is.HalfW, is.HalfH);
    const bool across =
        labels.isEmpty() ? std::abs(length - shorter) < std::abs(length - longer) : labels.contains(acrossText);
    (across ? found.Querachse : found.Laengsachse) = true;
  }
  return found;
}

QSet<qint64> Extras_Of_All(const QSet<qint64>& keys) {
  const KeepCurrentRow keep;
  QSet<QString> names;
  for (const qint64 key : keys) {
    if (rsEntries->PositionOf(key) < 1) continue;
    rsEntries->MoveTo(rsEntries->PositionOf(key));
    if (Type_Here().IsFigure()) names.insert(EntryId::Parse(rsEntries->Text(column::ID)).name);
  }
  QSet<qint64> extras;
  if (names.isEmpty()) return extras;
  For_Each_Entry([&] {
    const EntryId id = EntryId::Parse(rsEntries->Text(column::ID));
    const QString& name = id.name == axisName ? id.assignment : id.name;
    if (!names.contains(name)) return;
    const std::optional<EntryRow> row = Read_Sound_Entry();
    if (row && Part_Of(name, *row) != ExtraPart::None) extras.insert(rsEntries->Key());
  });
  return extras;
}

void AddRowsX(const QString& id) {
  const KeepCurrentRow keep;
  QStringList keys;
  For_Each_Extra(id, [&](const EntryRow&, ExtraPart) { keys.append(rsEntries->Bookmark()); });
  for (const QString& key : keys) {
    rsEntries->SetBookmark(key);
    rsEntries->Delete();
  }
  if (!keys.isEmpty()) Promote_Anchor();
}

void DrawFigNeu(const EntryRow& figure, const FigureExtras& extras) {
  AddRowsX(Name_Of(figure));
  for (const EntryRow& row : Extra_Rows(figure, extras)) Append_Entry(row);
}

void Extras_Follow(const EntryRow& before, const EntryRow& after) {
  if (!EntryType::Parse(before.Typ).IsFigure()) return;
  const FigureExtras extras = Extras_Of(before);
  if (extras != FigureExtras{}) DrawFigNeu(after, extras);
}

void Copy_Extras(const EntryRow& figure, const EntryRow& copy) {
  if (!EntryType::Parse(figure.Typ).IsFigure() || Name_Of(figure) == Name_Of(copy)) return;
  for (const EntryRow& row : Extra_Rows(copy, Extras_Of(figure))) Append_Entry(row);
}

bool Delete_With_Extras(bool asked) {
  if (!rsEntries || !rsEntries->HasRow(Map.CurBookmark)) return Delete_Entry(asked);
  rsEntries->SetBookmark(Map.CurBookmark);
  const EntryRow row = Read_Entry(*rsEntries);
  if (!Delete_Entry(asked)) return false;
  if (!EntryType::Parse(row.Typ).IsFigure()) return true;
  AddRowsX(Name_Of(row));
  events.TableChanged.Emit();
  events.RedrawWanted.Emit();
  return true;
}

void Turn_Row(EntryRow& row, double angle) {
  angle = Normal_Angle(angle);
  if (!FillCode::IsFill(row.Schrift)) {
    if (angle == 0) return;
    // Such a figure is an outline of 2 pixels in VG.
    FrameWord frame;
    frame.width = 2;
    frame.color = std::clamp(row.VG, 0, 15);
    row.RA = frame.ToNumber();
    row.Schrift.clear();
  }
  row.Schrift = (row.Schrift.isEmpty() ? FillCode{0} : FillCode::FromSchrift(row.Schrift)).ToSchrift(angle);
}

bool Set_Figure_Properties(double angle, const FigureExtras& extras) {
  if (!Store_Pending_Text() || !Current_Is_Figure()) return false;
  const EntryRow before = Read_Entry(*rsEntries);
  EntryRow row = before;
  Turn_Row(row, angle);
  if (row == before && Rows_Of(Name_Of(row)) == Extra_Rows(row, extras)) return true;
  const UndoPoint point(undoCaption);
  if (!On_Current_Entry()) return false;
  const bool done = In_Told_Transaction(title, [&] {
    Update_Entry(row);
    DrawFigNeu(row, extras);
  });
  if (done) Show_Changed_Entries();
  return done;
}

// Preview ------------------------------------------------------------------------------------------------------------

namespace {

const QRgb axisColor = QBColor(12);

void Draw_Axis(Surface& surface, const ViewTransform& view, const std::array<QPointF, 2>& axis, const QString& label) {
  surface.pen = {.ForeColor = axisColor, .pen = PenStyle::Dash};
  surface.Line(view.Point(axis[0]), view.Point(axis[1]));
  if (label.isEmpty()) return;
  const QPointF at = Label_Place({view.Point(axis[0]), view.Point(axis[1])}, textDistance);
  const QRectF area = surface.Extent();
  const double width = surface.TextWidth(label), height = surface.TextHeight(label);
  surface.Print({std::clamp(at.x(), 0.0, std::max(0.0, area.width() - width)),
                 std::clamp(at.y() - height / 2, 0.0, std::max(0.0, area.height() - height))},
                label);
}

void Draw_Point(Surface& surface, QPointF at, const QString& text) {
  surface.pen = {.ForeColor = axisColor, .FillColor = axisColor, .fill = FillStyle::Solid};
  surface.Ellipse({at.x() - 2, at.y() - 2, 5, 5});
  surface.Print(at + QPointF(4, 2), text);
}

}  // namespace

void Draw_Figure_Preview(Surface& surface, const QRectF& area, const EntryRow& figure, const FigureExtras& extras) {
  const FigureMeasures is = GetAbmessungen(figure);
  const QPointF centre(is.CenterX, is.CenterY);
  DrawContext context{surface, {}, area};
  // The turned box and the labels have to find room.
  const double reach = std::max(1.0, std::hypot(is.HalfW, is.HalfH));
  context.view.Zoom = reach * 2.4 / std::min(area.width(), area.height());
  context.view.Left = centre.x();
  context.view.Top = centre.y();
  context.view.originX = area.center().x();
  context.view.originY = area.center().y();
  const EntryType type = EntryType::Parse(figure.Typ);
  EntryRow drawn = figure;
  EntryColors colors;
  colors = {Color_Of(figure.VG), Color_Of(figure.HG), Color_Of(FrameWord::Parse(figure.RA).color)};
  const std::vector<QPoint> vertices =
      type.IsFreeFigure() ? Load_Vertices(EntryId::Parse(figure.ID).TableName()) : std::vector<QPoint>();
  Draw_Figure(context, drawn, type.Kind(), vertices, colors);
  const FigureAxes axes = Axes_Of(is);
  surface.SetFont({QStringLiteral("Arial"), 8});
  const auto label = [&extras](const QString& text) { return extras.AchsenText ? text : QString(); };
  if (extras.Laengsachse) Draw_Axis(surface, context.view, axes.along, label(alongText));
  if (extras.Querachse) Draw_Axis(surface, context.view, axes.across, label(acrossText));
  if (extras.Mittelpunkt) Draw_Point(surface, context.view.Point(centre), centreText);
  if (!extras.Fokus || !Has_Foci(figure)) return;
  for (size_t i = 0; i < 2; ++i)
    Draw_Point(surface, context.view.Point(axes.foci[i]), focusText + QString::number(i + 1));
}
