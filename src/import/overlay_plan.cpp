#include <algorithm>
#include <array>
#include <cmath>

#include "coordinates/placing.h"
#include "import/overlay_import.h"
#include "platform/progress.h"
#include "state/coordinate_state.h"
#include "state/global_state.h"
#include "store/vertex_table.h"

// What an object of an overlay becomes, and where.

namespace {

constexpr double usualSize = 10, labelSize = 8;
constexpr int black = 0, white = 15;

int Color_Index(int color) {
  switch (color) {
    case 1:
      return 12;
    case 2:
      return 10;
    case 3:
      return 9;
    case 4:
      return 14;
    case 6:
      return 15;
    default:
      return black;
  }
}

QString Font_Name(int font) {
  return font == 2 ? QStringLiteral("Symbol") : font == 3 ? QStringLiteral("Courier") : QStringLiteral("Arial");
}

QString Fill_Text(int fill) {
  constexpr std::array<const char*, 9> texts = {"F 1", "F-1", "F 8", "F-3", "F-4", "F-5", "F-6", "F-7", "F-2"};
  const auto known = fill >= 1 && fill < static_cast<int>(texts.size()) ? static_cast<size_t>(fill) : 0;
  return QString::fromLatin1(texts[known]);
}

int Width_Of(const OverlayRecord& record) { return std::clamp(record.size.value_or(1), 1, 100); }

// Fill and colours of areas and figures: hatches are drawn in the foreground on white.
void Fill_Row(EntryRow& row, const OverlayRecord& record, int color) {
  row.Schrift = Fill_Text(record.fill);
  const FillCode fill = FillCode::FromSchrift(row.Schrift);
  row.HG = fill.Solid() && !fill.InForeground() ? color : white;
  if (row.Schrift == QLatin1String("F-1"))
    row.RA = FrameWord{.width = std::min(Width_Of(record), 8), .color = color}.ToNumber();
}

EntryRow Row_Of(const OverlayRecord& record) {
  const int color = Color_Index(record.color);
  EntryRow row;
  row.VG = row.HG = color;
  row.RA = FrameWord{.framed = false, .color = color}.ToNumber();
  row.Groesse = -labelSize;  // the label of a shape is not shown
  row.Schrift = QStringLiteral("Arial");
  switch (record.kind) {
    case OverlayKind::Text:
      row.ID = QStringLiteral("Text");
      row.Eintrag = record.text;
      row.Groesse = record.size.value_or(0) > 0 ? *record.size : usualSize;
      row.Schrift = FontSpec{.family = Font_Name(record.font), .transparent = true}.ToText();
      row.HG = white;  // the letters would not be seen on their own colour
      row.Typ = static_cast<int>(EntryKind::Text);
      break;
    case OverlayKind::Line:
    case OverlayKind::Area:
      row.ID = record.kind == OverlayKind::Area ? QStringLiteral("Flaeche") : QStringLiteral("Linie");
      row.Xline = Width_Of(record);
      row.Typ = static_cast<int>(EntryKind::Polygon);
      if (record.kind == OverlayKind::Area) {
        Fill_Row(row, record, color);
        row.Yline = FillCode::FromSchrift(row.Schrift).ToNumber();
      }
      break;
    case OverlayKind::Rectangle:
    case OverlayKind::Ellipse:
      row.ID = QStringLiteral("Figur");
      row.Eintrag = QStringLiteral("Ellipse");
      row.RA = FrameWord{.color = color}.ToNumber();
      Fill_Row(row, record, color);
      row.Typ = static_cast<int>(record.kind == OverlayKind::Ellipse ? EntryKind::Ellipse : EntryKind::Rectangle);
      break;
  }
  return row;
}

bool Is_Figure(const OverlayRecord& record) {
  return record.kind == OverlayKind::Rectangle || record.kind == OverlayKind::Ellipse;
}

// Centre and, of sizes in degrees, both corners.
std::vector<GivenPlace> Places_Of(const OverlayRecord& record) {
  std::vector<GivenPlace> places;
  for (const QPointF point : record.points) places.push_back({point.x(), point.y()});
  if (!Is_Figure(record)) return places;
  const QPointF centre = record.points.front();
  const double across = record.width < 1 ? record.width / 2 : 0, down = record.height < 1 ? record.height / 2 : 0;
  return {places.front(), {centre.x() - across, centre.y() + down}, {centre.x() + across, centre.y() - down}};
}

class Planner {
 public:
  Planner(PlacingWay way, bool existing) : placing(Overlay_System(), Coord, way), existingToo(existing) {
    if (existingToo) return;
    For_Each_Entry([this] {
      const auto row = Read_Sound_Entry();
      if (!row) return;
      CarriedEntry entry{*row, {}};
      if (entry.Type().HasVertices()) {
        entry.vertices = Load_Vertices(entry.TableName());
        entry.row.Eintrag.clear();  // lines and areas are named after their tables
      }
      known.Add(entry);
    });
  }

  OverlayPlan Run(const OverlayFile& file) {
    for (const OverlayRecord& record : file.records) {
      CarriedEntry entry{Row_Of(record), {}};
      ImportMark mark;
      mark.status = Place(record, entry);
      if (mark.Usable() && !existingToo && known.Has(entry)) {
        mark.status = ImportStatus::Exists;
        mark.sameName = mark.samePosition = true;
      }
      plan.counts.Count(mark);
      plan.marks.push_back(mark);
      plan.entries.push_back(std::move(entry));
      if (plan.cancelled) break;
    }
    return std::move(plan);
  }

 private:
  ImportStatus Place(const OverlayRecord& record, CarriedEntry& entry) {
    const std::vector<PlacedPoint> placed = placing.Place(Places_Of(record));
    for (const PlacedPoint& point : placed)
      if (!point.Here()) {
        plan.cancelled = plan.cancelled || point.code == conversionCancelled;
        return Import_Status(point);
      }
    const QPoint first = placed.front().at;
    entry.row.Xmap = first.x();
    entry.row.Ymap = first.y();
    if (Is_Figure(record)) {
      const QPoint upper = placed[1].at, lower = placed[2].at;
      const auto span = [](double size, int from, int to) {
        return std::max(1, size < 1 ? std::abs(to - from) : static_cast<int>(std::lround(size)));
      };
      const int width = span(record.width, upper.x(), lower.x()), height = span(record.height, upper.y(), lower.y());
      const int left = record.width < 1 ? std::min(upper.x(), lower.x()) : first.x() - width / 2;
      const int top = record.height < 1 ? std::min(upper.y(), lower.y()) : first.y() - height / 2;
      set_entry_box(entry.row, {left, top, width, height});
    } else if (record.kind != OverlayKind::Text) {
      for (const PlacedPoint& point : placed) entry.vertices.push_back(point.at);
    }
    return ImportStatus::Ok;
  }

  Placing placing;
  bool existingToo;
  KnownEntries known;
  OverlayPlan plan;
};

}  // namespace

GivenSystem Overlay_System() { return {ReferenceSystem::Kind::Geographic, QStringLiteral("WGS-84")}; }

OverlayPlan Plan_Overlay(const OverlayFile& file, PlacingWay way, bool existingToo) {
  return Planner(way, existingToo).Run(file);
}
