#include "hand/hand_controls.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "hand/in_hand.h"
#include "hand/turned_shape.h"
#include "objects/reference_line.h"
#include "objects/rotated_text.h"
#include "objects/text_box.h"
#include "platform/surface.h"
#include "state/events.h"
#include "state/global_state.h"
#include "store/stored_number.h"
#include "store/vertex_table.h"
#include "view/picture_cache.h"

namespace {

constexpr double smallestOwnSize = 3, standardSize = 12;  // as the redraw draws small sizes
constexpr int footMarker = 16, smallestText = 8, newTextWidth = 80;

QSize Text_Size(const QString& text) {
  static QImage pixel = Make_Canvas(1, 1);
  const auto surface = Make_Surface(pixel);
  const EditBox& box = Map.Text2;
  surface->SetFont({box.FontName, box.ShownSize, box.FontBold, box.FontItalic, box.FontUnderline, EntCharset});
  const QString& measured = text.isEmpty() ? QStringLiteral("A") : text;
  return {surface->TextWidth(measured), surface->TextHeight(measured)};
}

void Place(LiveControl& control, const QRect& box) {
  control.Left = box.left();
  control.Top = box.top();
  control.Width = std::max(1, box.width());
  control.Height = std::max(1, box.height());
  control.Visible = true;
}

QRect Window_Box(const EntryBox& box) {
  return {QPoint(Window_X(box.x), Window_Y(box.y)), QSize(std::max(1, Window_X(box.x + box.width) - Window_X(box.x)),
                                                          std::max(1, Window_Y(box.y + box.height) - Window_Y(box.y)))};
}

void Place_Handles(const QRect& box, double angle) {
  const int x[] = {box.left(), box.center().x(), box.left() + box.width()};
  const int y[] = {box.top(), box.center().y(), box.top() + box.height()};
  // Upper left, clockwise.
  const std::array<QPoint, 8> middle = {QPoint(x[0], y[0]), {x[1], y[0]}, {x[2], y[0]}, {x[2], y[1]},
                                        QPoint(x[2], y[2]), {x[1], y[2]}, {x[0], y[2]}, {x[0], y[1]}};
  for (size_t i = 0; i < middle.size(); ++i) {
    const QPoint at = angle == 0 ? middle[i] : Turned(middle[i], QRectF(box).center(), angle).toPoint();
    Place(Map.lblHandle[i], {at.x() - handleSize / 2, at.y() - handleSize / 2, handleSize, handleSize});
  }
}

void Place_Picture(const EntryRow& row) {
  const QString name = Shown_Text(row.Eintrag);
  const QImage& picture = Entry_Picture(name);
  const auto zoom = static_cast<double>(Map.Zoom);
  QRect box(Window_X(row.Xmap), Window_Y(row.Ymap), qRound(picture.width() / zoom), qRound(picture.height() / zoom));
  if (picture.isNull()) {
    const QRectF region = Region_Bounds(rsEntries->Key());  // the text that stands for a missing picture
    box.setSize(region.isEmpty() ? QSize(40, 20) : region.size().toSize());
  }
  Place(Map.imgBild, box);
  Map.imgBild.Text = name;
  if (!picture.isNull())
    Place(Map.imgHandle, {box.left() + box.width() - handleSize / 2, box.top() + box.height() - handleSize / 2,
                          handleSize, handleSize});
}

// Scale bars and north arrows have no box of their own: the frame lies where they were drawn.
void Place_Shape(const EntryRow& row, const EntryType& type) {
  if (type.IsFigure() || type.Kind() == EntryKind::PlanSquare) {
    const QRect box = Window_Box(Figure_Box(row));
    Place(Map.lblShape, box);
    Map.lblShape.Angle = Turn_Of(row).angle;
    if (type.IsFigure()) Place_Handles(box, Map.lblShape.Angle);
    return;
  }
  const QRectF region = Region_Bounds(rsEntries->Key());
  Map.lblShape.Angle = 0;
  if (!region.isEmpty()) Place(Map.lblShape, region.toAlignedRect());
}

}  // namespace

QRect Control_Box(const LiveControl& control) { return {control.Left, control.Top, control.Width, control.Height}; }

QRectF Region_Bounds(qint64 key) {
  QRectF bounds;
  for (int i = 1; i <= Map.EntryRegions.Count(); ++i) {
    const EntryRegion& region = Map.EntryRegions.Row(i);
    if (region.key == key && region.kind != footRegion) bounds |= region.bounds;
  }
  return bounds;
}

QRectF Group_Bounds() {
  QSet<qint64> keys;
  for (const QString& bookmark : Map.GroupInHand) keys.insert(bookmark.toLongLong());
  QRectF bounds;
  for (int i = 1; i <= Map.EntryRegions.Count(); ++i) {
    const EntryRegion& region = Map.EntryRegions.Row(i);
    if (region.kind != footRegion && keys.contains(region.key)) bounds |= region.bounds;
  }
  return bounds;
}

EntryBox Vertex_Box(const std::vector<QPoint>& points) {
  const auto [left, right] =
      std::minmax_element(points.begin(), points.end(), [](QPoint a, QPoint b) { return a.x() < b.x(); });
  const auto [top, bottom] =
      std::minmax_element(points.begin(), points.end(), [](QPoint a, QPoint b) { return a.y() < b.y(); });
  return {left->x(), top->y(), right->x() - left->x(), bottom->y() - top->y()};
}

EntryBox Figure_Box(const EntryRow& row) {
  if (!EntryType::Parse(row.Typ).IsFreeFigure()) return entry_box(row);
  const std::vector<QPoint> points = Load_Vertices(EntryId::Parse(row.ID).TableName());
  return points.empty() ? entry_box(row) : Vertex_Box(points);
}

QPolygonF Text_Outline(double out) {
  if (EntAngle == 0 || Text_Pending()) return QRectF(Control_Box(Map.Text2)).adjusted(-out, -out, out, out);
  constexpr double drawnOut = 5;  // of the box round a turned text
  const auto corners =
      Rotated_Box(QPointF(Map.Text2.Left, Map.Text2.Top), Text_Size(Map.Text2.Text), EntAngle, drawnOut + out);
  return QPolygonF(QList<QPointF>(corners.begin(), corners.end()));
}

RegionShape Shape_In_Hand(EntryKind kind) {
  const QRectF box = Control_Box(Map.lblShape);
  const double angle = Map.lblShape.Angle;
  const bool round = kind == EntryKind::Ellipse || kind == EntryKind::Circle;
  if (!round) return angle == 0 ? RegionShape(box) : Turned_Rect(box, angle);
  if (angle == 0) return EllipseShape{box};
  QPolygonF ellipse;
  constexpr int corners = 64;
  for (int i = 0; i < corners; ++i) {
    const double t = i * 2 * std::numbers::pi / corners;
    const QPointF radius(box.width() / 2 * std::cos(t), box.height() / 2 * std::sin(t));
    ellipse << Turned(box.center() + radius, box.center(), angle);
  }
  return ellipse;
}

void Hide_Live_Controls() {
  Map.Text2.Visible = Map.imgBild.Visible = Map.imgRfLine.Visible = Map.lblShape.Visible = Map.imgHandle.Visible =
      false;
  for (LiveControl& handle : Map.lblHandle) handle.Visible = false;
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
  EntRA = CurRA = static_cast<int>(rsEntries->Integer(column::RA));
}

void Load_Text_Box(const EntryRow& row) {
  const FontSpec font = FontSpec::Parse(Font_Text(EntryType::Parse(row.Typ), row.Schrift));
  EntFont = font.family.isEmpty() ? Map.Text2.FontName : font.family;
  EntAngle = font.angle;
  EntCharset = font.charset;
  EntFontSize = row.Groesse > 0 ? Stored_Size(row.Groesse) : 10;
  EditBox& box = Map.Text2;
  box.FontName = Font_Installed(EntFont) ? EntFont : QStringLiteral("Arial");
  box.FontSize = EntFontSize;
  box.FontBold = font.bold;
  box.FontItalic = font.italic;
  box.FontUnderline = font.underline;
  box.FontTransparent = font.transparent;
  box.Text = Shown_Text(row.Eintrag);  // a longer one can be changed nowhere
  Map.TextAt = {row.Xmap, row.Ymap};
}

void Place_Text_Box(const EntryRow& row) {
  EditBox& box = Map.Text2;
  const bool small = row.Groesse <= smallestOwnSize && !row.ID.isEmpty();
  box.ShownSize = small ? standardSize : box.FontSize / static_cast<double>(Map.Zoom);
  const int space = static_cast<int>(Frame_Space(FrameWord::Parse(row.RA)));
  QSize size = Text_Size(box.Text).expandedTo({smallestText, smallestText});
  if (box.Tag == EditTag::New) size = size.expandedTo({newTextWidth, 0});
  Place(box, {Window_X(Map.TextAt.x()), Window_Y(Map.TextAt.y()), size.width() + 2 * space, size.height() + 2 * space});
}

namespace {

// An ellipse in hand is hit in itself, not in its box.
void Narrow_Region(EntryKind kind) {
  if (kind == EntryKind::Ellipse || kind == EntryKind::Circle)
    Map.EntryRegions.Narrow(rsEntries->Key(), Shape_In_Hand(kind));
}

}  // namespace

void Place_Controls(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  Hide_Live_Controls();
  if (type.hidden && !EntryId::Parse(row.ID).IsNorthArrow()) return;
  if (type.IsText() || (type.IsPolygon() && row.Groesse >= 0)) {
    Place_Text_Box(row);
  } else if (type.Kind() == EntryKind::Picture) {
    Place_Picture(row);
  } else if (!type.IsPolygon()) {
    Place_Shape(row, type);
    Narrow_Region(type.Kind());
  }
  const bool hasFoot = (type.IsText() || type.Kind() == EntryKind::Picture) && row.Xline > 0;
  if (!hasFoot) return;
  Place(Map.imgRfLine,
        {Window_X(row.Xline) - footMarker / 2, Window_Y(row.Yline) - footMarker / 2, footMarker, footMarker});
}
