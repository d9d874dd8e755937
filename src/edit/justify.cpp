#include <QHash>
#include <cmath>
#include <limits>
#include <memory>

#include "edit/bulk_change.h"
#include "edit/figure_extras.h"
#include "edit/marks.h"
#include "edit/move.h"
#include "hand/hand_controls.h"
#include "objects/rotated_text.h"
#include "objects/text_box.h"
#include "platform/message_box.h"
#include "platform/surface.h"
#include "platform/text.h"
#include "state/events.h"
#include "state/map_state.h"
#include "store/table_file.h"
#include "store/vertex_table.h"
#include "view/picture_cache.h"

// Aligning the marked entries with the one marked last.

namespace {

const QString title = QStringLiteral("Justieren");

// Map pixels. Of a text its position, whatever its angle; right and lower edge as it is drawn at 100 %.
struct Extent {
  int left = 0, top = 0, right = 0, bottom = 0;
};

// Measures with the fonts of the redraw.
class Measure {
 public:
  Extent Of(const EntryRow& row);

 private:
  Extent Of_Text(const EntryRow& row);
  static Extent Of_Picture(const EntryRow& row);
  static Extent Of_Free_Figure(const EntryRow& row);

  QImage ground = Make_Canvas(1, 1);
  std::unique_ptr<Surface> surface = Make_Surface(ground);
  QHash<QString, FontSpec> fonts;
};

Extent Measure::Of(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.IsText() || type.IsPolygon()) return Of_Text(row);
  if (type.Kind() == EntryKind::Picture) return Of_Picture(row);
  if (type.IsFreeFigure()) return Of_Free_Figure(row);
  if (type.IsFigure() || type.Kind() == EntryKind::PlanSquare) {
    const EntryBox box = entry_box(row);
    return {box.x, box.y, box.x + box.width, box.y + box.height};
  }
  if (type.Kind() == EntryKind::Scale) {
    const int length = std::abs(row.Xline - row.Xmap), thickness = std::abs(row.Yline - row.Ymap);
    const bool standing = row.HG == 1;
    return {row.Xmap, row.Ymap, row.Xmap + (standing ? thickness : length), row.Ymap + (standing ? length : thickness)};
  }
  if (type.Kind() == EntryKind::NorthArrow && (row.Xline != 0 || row.Yline != 0))
    return {std::min(row.Xmap, row.Xline), std::min(row.Ymap, row.Yline), std::max(row.Xmap, row.Xline),
            std::max(row.Ymap, row.Yline)};
  return {row.Xmap, row.Ymap, row.Xmap, row.Ymap};
}

Extent Measure::Of_Text(const EntryRow& row) {
  const QString schrift = Font_Text(EntryType::Parse(row.Typ), row.Schrift);
  auto font = fonts.find(schrift);
  if (font == fonts.end()) font = fonts.insert(schrift, FontSpec::Parse(schrift));
  constexpr double smallestOwnSize = 3, standardSize = 12;
  const double size = std::abs(row.Groesse);  // a label that is switched off keeps its size
  FontKey key;
  if (!font->family.isEmpty()) key.family = font->family;
  key.points = size > smallestOwnSize ? size : standardSize;
  key.bold = font->bold;
  key.italic = font->italic;
  key.underline = font->underline;
  key.charset = font->charset;
  surface->SetFont(key);
  const QSizeF text(surface->TextWidth(row.Eintrag), surface->TextHeight(row.Eintrag));
  const QPointF at(row.Xmap, row.Ymap);
  double right = 0, bottom = 0;
  if (font->angle > 0) {
    right = at.x();
    bottom = at.y();
    for (const QPointF& corner : Rotated_Box(at, text, font->angle)) {
      right = std::max(right, corner.x());
      bottom = std::max(bottom, corner.y());
    }
  } else {
    const QRectF box = Text_Box(at, text, FrameWord::Parse(row.RA));
    right = box.right();
    bottom = box.bottom();
  }
  return {row.Xmap, row.Ymap, static_cast<int>(std::lrint(right)), static_cast<int>(std::lrint(bottom))};
}

Extent Measure::Of_Picture(const EntryRow& row) {
  const QSize size = Entry_Picture(row.Eintrag).size();
  return {row.Xmap, row.Ymap, row.Xmap + size.width(), row.Ymap + size.height()};
}

Extent Measure::Of_Free_Figure(const EntryRow& row) {
  const std::vector<QPoint> vertices = Load_Vertices(EntryId::Parse(row.ID).TableName());
  if (vertices.empty()) return {row.Xmap, row.Ymap, row.Xmap, row.Ymap};
  const EntryBox box = Vertex_Box(vertices);
  return {box.x, box.y, box.x + box.width, box.y + box.height};
}

bool Has_Size(const EntryRow& row) {
  const EntryType type = EntryType::Parse(row.Typ);
  return type.IsFigure() || type.Kind() == EntryKind::PlanSquare;
}

// Moves along only what belongs to the aligned corner: a text leaves its foot point where it is, a line its vertices.
void Shift_Aligned(EntryRow& row, int dx, int dy) {
  const EntryType type = EntryType::Parse(row.Typ);
  if (type.IsText() || type.IsPolygon() || type.Kind() == EntryKind::Picture) {
    row.Xmap = To_Int16(row.Xmap + dx);
    row.Ymap = To_Int16(row.Ymap + dy);
  } else {
    Shift_Row(row, dx, dy);
  }
}

struct VertexChange {
  QString table;
  std::vector<QPoint> points;
};

struct Alignment {
  JustifyMode mode;
  Extent anchor;
  Measure measure;
  std::vector<VertexChange> vertices;

  void Align(EntryRow& row);
  void Keep_Vertices(EntryRow& row, const Extent& is, const Extent& will);
  void Resize(EntryRow& row);
};

void Alignment::Align(EntryRow& row) {
  if (mode == JustifyMode::Equal) return Resize(row);
  const Extent is = measure.Of(row);
  int dx = 0, dy = 0;
  switch (mode) {
    case JustifyMode::Left:
      dx = anchor.left - is.left;
      break;
    case JustifyMode::Right:
      dx = anchor.right - is.right;
      break;
    case JustifyMode::Top:
      dy = anchor.top - is.top;
      break;
    default:
      dy = anchor.bottom - is.bottom;
  }
  Shift_Aligned(row, dx, dy);
  Keep_Vertices(row, is, {is.left + dx, is.top + dy, is.right + dx, is.bottom + dy});
}

// Vertices of a free figure from one box into another; its row follows them.
void Alignment::Keep_Vertices(EntryRow& row, const Extent& is, const Extent& will) {
  if (!EntryType::Parse(row.Typ).IsFreeFigure()) return;
  const QString table = EntryId::Parse(row.ID).TableName();
  const auto into = [](int value, int from, int to, int newFrom, int newTo) {
    const double part = to > from ? static_cast<double>(value - from) / (to - from) : 0;
    return To_Int16(newFrom + part * (newTo - newFrom));
  };
  VertexChange change{table, Load_Vertices(table)};
  for (QPoint& point : change.points)
    point = {into(point.x(), is.left, is.right, will.left, will.right),
             into(point.y(), is.top, is.bottom, will.top, will.bottom)};
  if (change.points.empty()) return;
  set_entry_box(row, Vertex_Box(change.points));
  if (change.points != Load_Vertices(table)) vertices.push_back(std::move(change));
}

// Squares and circles take the height alone: it decides how they are drawn.
void Alignment::Resize(EntryRow& row) {
  if (!Has_Size(row)) return;
  const EntryType type = EntryType::Parse(row.Typ);
  const Extent is = measure.Of(row);
  const int height = anchor.bottom - anchor.top;
  const bool even = type.Kind() == EntryKind::Square || type.Kind() == EntryKind::Circle;
  const int width = even ? height : anchor.right - anchor.left;
  if (type.IsFreeFigure())
    Keep_Vertices(row, is, {is.left, is.top, is.left + width, is.top + height});
  else
    set_entry_box(row, {is.left, is.top, width, height});
}

// Of the marked rows that can be seen the one marked last; without one, as in a foreign table, the last of them.
struct Anchor {
  int marked = 0;
  EntryRow row;
};

Anchor Find_Anchor() {
  Anchor anchor;
  bool found = false;
  For_Each_Entry([&] {
    const EntryType type = Type_Here();
    if (!type.Chosen()) return;
    ++anchor.marked;
    if (found) return;
    anchor.row = Read_Entry(*rsEntries);
    found = type.mark == Mark::Last;
  });
  return anchor;
}

}  // namespace

void Justify(JustifyMode mode) {
  if (!Table_Is_Open()) return;
  try {
    const Anchor anchor = Find_Anchor();
    if (anchor.marked < 2) return;
    if (mode == JustifyMode::Equal && !Has_Size(anchor.row)) {
      Message_Box(
          QStringLiteral("Der zuletzt markierte Eintrag ist keine Figur und kein Planquadrat.\nSeine Größe kann "
                         "nicht übernommen werden."),
          MsgButtons::Ok, MsgIcon::Information, title);
      return;
    }
    const BusyPointer busy;
    Alignment alignment{mode, {}, {}, {}};
    alignment.anchor = alignment.measure.Of(anchor.row);
    const auto changes = Collect_Changes([&alignment](EntryRow& row, qint64) {
      if (EntryType::Parse(row.Typ).Chosen()) alignment.Align(row);
    });
    if (changes.empty() && alignment.vertices.empty()) return Tell_Done_Of_Marked();
    const UndoPoint point(QStringLiteral("Rückgängig: Justieren"));
    const bool written = In_Told_Transaction(title, [&] {
      for (const RowChange& change : changes) Write_Change(change);
      for (const VertexChange& change : alignment.vertices) Write_Vertices(change.table, change.points);
      for (const RowChange& change : changes) Extras_Follow(change.before, change.after);
    });
    if (!written) return;
    Show_Changed_Entries();
    Tell_Done_Of_Marked();
  } catch (const Error&) {
    Message_Box(QStringLiteral("Ein Eintrag würde zu weit verschoben.\nEs wurde nichts verändert."), MsgButtons::Ok,
                MsgIcon::Warning, title);
  }
}
