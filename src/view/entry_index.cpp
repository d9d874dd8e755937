#include "view/entry_index.h"

#include <algorithm>
#include <cmath>

#include "objects/draw_context.h"
#include "state/map_state.h"
#include "store/entry.h"
#include "store/vertex_table.h"

namespace {

constexpr int smallTable = 2000;   // rows; below it looking at all of them takes no time
constexpr float widestLetter = 3;  // widths and heights of a line in sizes of its font, whatever the font
constexpr float pixelsPerPoint = 4.0F / 3;
constexpr float largestOwn = 3, ownPixels = 16;  // sizes up to it are drawn in so many pixels at every zoom
constexpr int handRoom = 12;                     // marks, hit strips, rounding
constexpr int shapeRoom = 20;                    // the same, with a pen of a pixel at least and its corners
constexpr double penRoom = 3;                    // widths of a pen that its corners reach beyond an outline

// Letters of unknown width or direction.
bool Is_Plain(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar letter) {
    const char16_t code = letter.unicode();
    return code < 0x0600 || (code >= 0x2000 && code < 0x3000);
  });
}

struct TextExtent {
  int letters = 0, lines = 1;
};
TextExtent Extent_Of(const QString& text) {
  TextExtent extent;
  int letters = 0;
  for (const QChar letter : text) {
    if (letter != u'\r' && letter != u'\n') {
      extent.letters = std::max(extent.letters, ++letters);
      continue;
    }
    letters = 0;
    ++extent.lines;
  }
  return extent;
}

bool Is_Text_Kind(EntryKind kind) {
  return kind == EntryKind::Text || kind == EntryKind::TextLine || kind == EntryKind::TextArrow ||
         kind == EntryKind::TextCircle || kind == EntryKind::Reference;
}

// Round a foot point, at 100 % and for each map pixel a surface pixel shows.
double Foot_Size() { return Map.ReferenceCircle + Map.ReferenceArrow + 2 * Map.ReferenceWidth; }
double Foot_Room(double zoom) { return Foot_Size() + handRoom * zoom; }

}  // namespace

EntryReach EntryReach::Of(const Recordset& row) {
  EntryReach reach;
  const EntryType type = EntryType::Parse(row.Integer(column::Typ));
  const QString id = row.Text(column::ID);
  const bool northArrow = type.Kind() == EntryKind::NorthArrow && EntryId::Parse(id).IsNorthArrow();
  reach.hidden = type.hidden && !northArrow;
  reach.inactive = !reach.hidden && EntryId::StoredIsInactive(id);
  reach.marked = !reach.hidden && type.mark != Mark::None;
  reach.planRow = type.Kind() == EntryKind::PlanSquare || type.Kind() == EntryKind::PlanDesign;
  const auto schrift = [&] { return Font_Text(type, row.Text(column::Schrift)); };
  if (Is_Text_Kind(type.Kind()))
    reach.everywhere = !reach.Take_Text(row, schrift());
  else if (type.IsPolygon())  // without a label where its size is negative
    reach.everywhere =
        !reach.Take_Outline(row) || !(row.Number(column::Groesse) < 0 || reach.Take_Text(row, schrift()));
  else if (type.IsFigure())
    reach.everywhere = !reach.Take_Figure(row, type);
  return reach;
}

namespace {

int Stored(const Recordset& row, int where) { return Stored_Number(row.Integer(where)); }

// Null without a vertex.
QRectF Bounds_Of(const std::vector<QPoint>& points) {
  if (points.empty()) return {};
  int left = points[0].x(), right = left, top = points[0].y(), bottom = top;
  for (const QPoint& point : points) {
    left = std::min(left, point.x()), right = std::max(right, point.x());
    top = std::min(top, point.y()), bottom = std::max(bottom, point.y());
  }
  return {QPointF(left, top), QPointF(right, bottom)};
}

// What turning it about a point can cover.
QRectF Turned_About(const QRectF& box, QPointF centre) {
  double radius = 0;
  for (const QPointF& corner : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight()})
    radius = std::max(radius, std::hypot(corner.x() - centre.x(), corner.y() - centre.y()));
  return {centre - QPointF(radius, radius), centre + QPointF(radius, radius)};
}

}  // namespace

void EntryReach::Take_Shape(const QRectF& box, double room) {
  hasShape = true;
  left = static_cast<float>(box.left() - room);
  top = static_cast<float>(box.top() - room);
  right = static_cast<float>(box.right() + room);
  bottom = static_cast<float>(box.bottom() + room);
  pad = std::max<qint16>(pad, shapeRoom);
}

// Rounded ones lie within the hull of their vertices. One without vertices is told of wherever the user looks.
bool EntryReach::Take_Outline(const Recordset& row) {
  const EntryId id = EntryId::Parse(row.Text(column::ID));
  const std::vector<QPoint>& vertices = Load_Vertices(id.TableName());
  if (vertices.empty()) return false;
  double room = penRoom * std::max(0, Stored(row, column::Xline));
  if (id.ends) room += (id.ends->lengthMm + id.ends->widthMm) * pixelsPerMm;
  Take_Shape(Bounds_Of(vertices), room);
  return true;
}

bool EntryReach::Take_Figure(const Recordset& row, const EntryType& type) {
  const QString schrift = row.Text(column::Schrift);
  const bool turned = FillCode::IsFill(schrift) && FillCode::AngleOf(schrift) != 0;
  const double wide = Stored(row, column::Xline), high = Stored(row, column::Yline);
  const QPointF corner(Stored(row, column::Xmap), Stored(row, column::Ymap));
  const QPointF centre = corner + QPointF(wide, high) / 2;
  QRectF box;
  if (type.IsFreeFigure()) {
    const std::vector<QPoint>& vertices = Load_Vertices(EntryId::Parse(row.Text(column::ID)).TableName());
    if (vertices.empty()) return false;
    box = Bounds_Of(vertices);
  } else {
    // A circle is as wide as it is high, an ellipse follows its longer side.
    const double longer = std::max(std::abs(wide), std::abs(high));
    box = QRectF(corner, QSizeF(wide, high)).normalized() | QRectF(corner, QSizeF(longer, longer));
  }
  Take_Shape(turned ? Turned_About(box, centre) : box, penRoom * FrameWord::Parse(row.Integer(column::RA)).width);
  return true;
}

bool EntryReach::Take_Text(const Recordset& row, const QString& schrift) {
  const QString text = Shown_Text(row.Text(column::Eintrag));
  if (!Is_Plain(text)) return false;
  const auto number = [&row](int where) { return static_cast<qint16>(Stored(row, where)); };
  hasText = true;
  allRound = schrift.contains(u'<');
  x = number(column::Xmap);
  y = number(column::Ymap);
  if (!hasShape) {  // lines and areas keep their width and style there
    footX = std::max<qint16>(number(column::Xline), 0);
    footY = number(column::Yline);
  }
  const FrameWord frame = FrameWord::Parse(row.Integer(column::RA));
  pad = std::max(pad, static_cast<qint16>(2 * (frame.width + 1) + handRoom));
  const auto size = static_cast<float>(Stored_Size(row.Number(column::Groesse)));
  const bool own = !(size > largestOwn);
  const TextExtent extent = Extent_Of(text);
  const auto take = [&](float(&reach)[2], int count) {
    const float times = widestLetter * static_cast<float>(count);
    reach[0] = own ? 0 : times * size * pixelsPerPoint;
    reach[1] = own ? times * ownPixels : times;
  };
  take(width, extent.letters);
  take(height, extent.lines);
  return true;
}

QRectF EntryReach::At(double zoom) const {
  const auto room = [zoom](const float(&reach)[2]) {
    return static_cast<double>(reach[0]) + static_cast<double>(reach[1]) * zoom;
  };
  const double out = pad * zoom;
  QRectF shape;
  if (hasShape)
    shape = QRectF(QPointF(static_cast<double>(this->left), static_cast<double>(this->top)),
                   QPointF(static_cast<double>(this->right), static_cast<double>(this->bottom)))
                .adjusted(-out, -out, out, out);
  if (!hasText) return shape;
  const double wide = room(width), high = room(height);
  const double round = allRound ? wide + high : 0;
  QRectF text(QPointF(x - out - round, y - out - round),
              QPointF(x + out + (allRound ? round : wide), y + out + (allRound ? round : high)));
  if (footX > 0) {
    const double foot = Foot_Room(zoom);
    text |= QRectF(footX - foot, footY - foot, 2 * foot, 2 * foot);
  }
  return hasShape ? text | shape : text;
}

// Each side of the reach is the farther one of two places that move evenly with the zoom: at most as far as the farther
// of their beginnings, and as fast as the faster one.
NearReach::NearReach(const EntryReach& reach) : everywhere(reach.Everywhere()) {
  if (everywhere) return;
  // Zooms at which a side stands as good as where it began, without the box being empty, and at which that makes no
  // difference any more.
  constexpr double in = 1e-3, out = 1e6;
  const QRectF near = reach.At(in), wide = reach.At(out);
  const auto whole = [](double at) { return static_cast<qint16>(std::clamp(at, -32000.0, 32000.0)); };
  x = whole(near.center().x());
  y = whole(near.center().y());
  const auto farthest = [this](const QRectF& box) {
    return std::max({x - box.left(), box.right() - x, y - box.top(), box.bottom() - y});
  };
  first = static_cast<float>(farthest(near)) + 1;
  second = static_cast<float>(std::max(0.0, farthest(wide) / out)) + 1;
}

void EntryIndex::Count(const EntryReach& reach, int by) {
  counts.hidden += reach.hidden ? by : 0;
  counts.inactive += reach.inactive ? by : 0;
  counts.marked += reach.marked ? by : 0;
  counts.planRows += reach.planRow ? by : 0;
}

bool EntryIndex::Follow() {
  changes.reset();
  try {
    if (rsEntries->RecordCount() < smallTable) {
      index.clear();
      return false;
    }
    const auto writes = index.empty() ? std::nullopt : rsEntries->Writes_Since(moment);
    const bool followed = writes && Follow_Writes(*writes);
    if (!followed && !Build()) {
      index.clear();
      changes.reset();
      return false;
    }
    moment = rsEntries->Write_Moment();
    return true;
  } catch (const Error&) {
    index.clear();
    changes.reset();
    return false;
  }
}

bool EntryIndex::Build() {
  changes.reset();
  counts = {};
  index.clear();
  vertexRows.clear();
  index.reserve(static_cast<size_t>(rsEntries->RecordCount()));
  index.push_back({});  // the header row, of no concern
  nearby.assign(1, {});
  nearby.reserve(index.capacity());
  bool ascending = true;
  For_Each_Entry([&] {
    const qint64 key = rsEntries->Key();
    ascending = ascending && (index.size() == 1 || index.back().key < key);
    index.push_back({key, EntryReach::Of(*rsEntries)});
    nearby.emplace_back(index.back().reach);
    Note_Table(key);
    Count(index.back().reach, 1);
  });
  return ascending && std::ssize(index) == rsEntries->RecordCount();
}

void EntryIndex::Note_Table(qint64 key) {
  const EntryType type = EntryType::Parse(rsEntries->Integer(column::Typ));
  if (!type.HasVertices()) return;
  const QString table = EntryId::Parse(rsEntries->Text(column::ID)).TableName().toLower();
  if (!vertexRows.contains(table, key)) vertexRows.insert(table, key);
}

// Those whose vertices were written among them; one that was written several times is there once.
std::vector<qint64> EntryIndex::Written_Rows(const WritesSince& writes) const {
  std::vector<qint64> keys;
  for (const RowWrite& write : writes.rows) keys.push_back(write.key);
  for (const QString& table : writes.otherTables) {
    const auto rows = vertexRows.equal_range(table);
    keys.insert(keys.end(), rows.first, rows.second);
  }
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

bool EntryIndex::Follow_Row(qint64 key) {
  EntryChange change;
  change.key = key;
  const int position = rsEntries->PositionOf(key);
  if (position == 0) return false;  // the header row
  if (position > 0) {
    rsEntries->MoveTo(position);
    change.after = EntryReach::Of(*rsEntries);
    Note_Table(key);
  }
  const auto place = std::lower_bound(index.begin() + 1, index.end(), key,
                                      [](const Row& row, qint64 wanted) { return row.key < wanted; });
  const bool known = place != index.end() && place->key == key;
  if (known) {
    change.before = place->reach;
    Count(place->reach, -1);
  }
  if (change.after) Count(*change.after, 1);
  const auto near = nearby.begin() + (place - index.begin());
  if (known && change.after) {
    place->reach = *change.after;
    *near = NearReach(*change.after);
  } else if (known) {
    index.erase(place);
    nearby.erase(near);
  } else if (change.after) {
    index.insert(place, {key, *change.after});
    nearby.insert(near, NearReach(*change.after));
  }
  changes->push_back(change);
  return true;
}

bool EntryIndex::Follow_Writes(const WritesSince& writes) {
  changes.emplace();
  const KeepCurrentRow keep;
  for (const qint64 key : Written_Rows(writes))
    if (!Follow_Row(key)) return false;
  // A table that is no entry's may concern all of them.
  const auto isVertexTable = [this](const QString& table) { return vertexRows.contains(table); };
  if (!std::all_of(writes.otherTables.begin(), writes.otherTables.end(), isVertexTable)) changes.reset();
  return std::ssize(index) == rsEntries->RecordCount();
}

std::vector<int> EntryIndex::Rows_In(const QRectF& area, double zoom) const {
  std::vector<int> found;
  const QPointF middle = area.center();
  const NearReach::Area wanted{
      static_cast<float>(middle.x()),        static_cast<float>(middle.y()), static_cast<float>(area.width() / 2),
      static_cast<float>(area.height() / 2), static_cast<float>(zoom),       static_cast<float>(Foot_Size())};
  for (size_t i = 1; i < index.size(); ++i)
    if (nearby[i].May_Touch(wanted) && (index[i].reach.Everywhere() || index[i].reach.At(zoom).intersects(area)))
      found.push_back(static_cast<int>(i));
  return found;
}
