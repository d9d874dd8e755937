#include "view/entry_index.h"

#include <algorithm>
#include <cmath>

#include "state/map_state.h"
#include "store/entry.h"

namespace {

constexpr int smallTable = 2000;   // rows; below it looking at all of them takes no time
constexpr float widestLetter = 3;  // widths and heights of a line in sizes of its font, whatever the font
constexpr float pixelsPerPoint = 4.0F / 3;
constexpr float largestOwn = 3, ownPixels = 16;  // sizes up to it are drawn in so many pixels at every zoom
constexpr int handRoom = 12;                     // marks, hit strips, rounding

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
double Foot_Room(double zoom) {
  return Map.ReferenceCircle + Map.ReferenceArrow + 2 * Map.ReferenceWidth + handRoom * zoom;
}

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
  if (Is_Text_Kind(type.Kind())) reach.Take_Text(row, row.Text(column::Schrift).contains(u'<'));
  return reach;
}

void EntryReach::Take_Text(const Recordset& row, bool turned) {
  const QString text = Shown_Text(row.Text(column::Eintrag));
  if (!Is_Plain(text)) return;
  const auto number = [&row](int where) { return static_cast<qint16>(Stored_Number(row.Integer(where))); };
  everywhere = false;
  allRound = turned;
  x = number(column::Xmap);
  y = number(column::Ymap);
  footX = std::max<qint16>(number(column::Xline), 0);
  footY = number(column::Yline);
  const FrameWord frame = FrameWord::Parse(row.Integer(column::RA));
  pad = static_cast<qint16>(2 * (frame.width + 1) + handRoom);
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
}

QRectF EntryReach::At(double zoom) const {
  const auto room = [zoom](const float(&reach)[2]) {
    return static_cast<double>(reach[0]) + static_cast<double>(reach[1]) * zoom;
  };
  const double wide = room(width), high = room(height), out = pad * zoom;
  const double round = allRound ? wide + high : 0;
  double left = x - out - round, right = x + out + (allRound ? round : wide);
  double top = y - out - round, bottom = y + out + (allRound ? round : high);
  if (footX > 0) {
    const double foot = Foot_Room(zoom);
    left = std::min(left, footX - foot);
    right = std::max(right, footX + foot);
    top = std::min(top, footY - foot);
    bottom = std::max(bottom, footY + foot);
  }
  return {QPointF(left, top), QPointF(right, bottom)};
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
  index.reserve(static_cast<size_t>(rsEntries->RecordCount()));
  index.push_back({});  // the header row, of no concern
  bool ascending = true;
  For_Each_Entry([&] {
    const qint64 key = rsEntries->Key();
    ascending = ascending && (index.size() == 1 || index.back().key < key);
    index.push_back({key, EntryReach::Of(*rsEntries)});
    Count(index.back().reach, 1);
  });
  return ascending && std::ssize(index) == rsEntries->RecordCount();
}

// A row that was written several times is looked at once.
bool EntryIndex::Follow_Writes(const std::vector<RowWrite>& writes) {
  std::vector<qint64> keys;
  for (const RowWrite& write : writes) keys.push_back(write.key);
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  changes.emplace();
  const KeepCurrentRow keep;
  for (const qint64 key : keys) {
    EntryChange change;
    change.key = key;
    const int position = rsEntries->PositionOf(key);
    if (position == 0) return false;  // the header row
    if (position > 0) {
      rsEntries->MoveTo(position);
      change.after = EntryReach::Of(*rsEntries);
    }
    const auto place = std::lower_bound(index.begin() + 1, index.end(), key,
                                        [](const Row& row, qint64 wanted) { return row.key < wanted; });
    const bool known = place != index.end() && place->key == key;
    if (known) {
      change.before = place->reach;
      Count(place->reach, -1);
    }
    if (change.after) Count(*change.after, 1);
    if (known && change.after)
      place->reach = *change.after;
    else if (known)
      index.erase(place);
    else if (change.after)
      index.insert(place, {key, *change.after});
    changes->push_back(change);
  }
  return std::ssize(index) == rsEntries->RecordCount();
}

std::vector<int> EntryIndex::Rows_In(const QRectF& area, double zoom) const {
  std::vector<int> found;
  for (size_t i = 1; i < index.size(); ++i)
    if (index[i].reach.Everywhere() || index[i].reach.At(zoom).intersects(area)) found.push_back(static_cast<int>(i));
  return found;
}
